#include "window/widgets/filtercompleter.h"

#include <QComboBox>
#include <QLineEdit>

namespace tarvo::window {

namespace {

// The letters, digits, dots and underscores at the end, from a letter on.
qsizetype beginOfName(const QString& filter) {
    qsizetype begin = filter.size();
    while (begin > 0 && (filter[begin - 1].isLetterOrNumber() || filter[begin - 1] == '.' ||
                         filter[begin - 1] == '_'))
        --begin;
    while (begin < filter.size() && !filter[begin].isLetter())
        ++begin;
    return begin;
}

}  // namespace

FilterCompleter::FilterCompleter(const QStringList& names, QObject* parent)
    : QCompleter(names, parent) {
    setCaseSensitivity(Qt::CaseInsensitive);
    setFilterMode(Qt::MatchContains);
}

QString FilterCompleter::pathFromIndex(const QModelIndex& index) const {
    // A box takes the completer of its line for its own while it has the focus.
    const auto* box = qobject_cast<const QComboBox*>(widget());
    const auto* edit = box ? box->lineEdit() : qobject_cast<const QLineEdit*>(widget());
    const QString filter = edit ? edit->text() : QString();
    return filter.left(beginOfName(filter)) + QCompleter::pathFromIndex(index);
}

QStringList FilterCompleter::splitPath(const QString& path) const {
    const QString name = path.mid(beginOfName(path));
    // Where no name is begun none is offered.
    return {name.isEmpty() ? QString(QChar::Null) : name};
}

}  // namespace tarvo::window
