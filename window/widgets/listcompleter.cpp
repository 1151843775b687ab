#include "window/widgets/listcompleter.h"

#include <QLineEdit>

namespace tarvo::window {

ListCompleter::ListCompleter(const QStringList& texts, QObject* parent)
    : QCompleter(texts, parent) {
    setCaseSensitivity(Qt::CaseInsensitive);
}

QString ListCompleter::pathFromIndex(const QModelIndex& index) const {
    const QString text = QCompleter::pathFromIndex(index);
    const auto* edit = qobject_cast<const QLineEdit*>(widget());
    const QString list = edit ? edit->text() : QString();
    const qsizetype comma = list.lastIndexOf(',');
    return comma < 0 ? text : list.left(comma + 1) + ' ' + text;
}

QStringList ListCompleter::splitPath(const QString& path) const {
    return {path.section(',', -1).trimmed()};
}

}  // namespace tarvo::window
