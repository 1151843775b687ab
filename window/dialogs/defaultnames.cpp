#include "window/dialogs/defaultnames.h"

#include <QComboBox>
#include <QCompleter>
#include <QStandardItemModel>

namespace tarvo::window {

void suggestNames(QComboBox* box, const QStringList& names, const QStringList& taken) {
    QStringList free;
    box->clear();
    box->addItems(names);
    auto* model = qobject_cast<QStandardItemModel*>(box->model());
    for (int i = 0; i < box->count(); ++i) {
        if (!taken.contains(box->itemText(i))) {
            free += box->itemText(i);
            continue;
        }
        model->item(i)->setEnabled(false);
        box->setItemData(i, QObject::tr("exists already"), Qt::ToolTipRole);
    }
    auto* completer = new QCompleter(free, box);
    completer->setFilterMode(Qt::MatchContains);
    completer->setCaseSensitivity(Qt::CaseInsensitive);
    box->setCompleter(completer);
    box->setCurrentIndex(-1);
}

}  // namespace tarvo::window
