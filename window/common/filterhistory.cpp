#include "window/common/filterhistory.h"

#include "window/common/programsettings.h"

#include <QComboBox>
#include <QLineEdit>
#include <QSignalBlocker>

namespace tarvo::window {

QStringList FilterHistory::list() {
    return ProgramSettings().value("RecentFilters").toStringList();
}

void FilterHistory::add(const QString& filter) {
    ProgramSettings settings;
    settings.setValue("RecentFilters", movedToFront(settings.value("RecentFilters").toStringList(),
                                                    filter.trimmed(), maximum));
}

void FilterHistory::clear() {
    ProgramSettings().setValue("RecentFilters", QStringList());
}

void FilterHistory::show(QComboBox* combo) {
    const QSignalBlocker blocker(combo);
    // The edit tells of every text on the way on its own, which would end a running query.
    const QSignalBlocker editBlocker(combo->lineEdit());
    const QString text = combo->currentText();
    combo->clear();
    combo->addItems(list());
    combo->setInsertPolicy(QComboBox::NoInsert);
    // The entry of the edit text has to be the current one: the combo box would select it at the
    // next loss of focus and signal a choice.
    combo->setCurrentIndex(combo->findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive));
    combo->setEditText(text);
}

}  // namespace tarvo::window
