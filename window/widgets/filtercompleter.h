// Completes the name that a filter expression ends with.
#pragma once

#include <QCompleter>
#include <QStringList>

namespace tarvo::window {

class FilterCompleter : public QCompleter {
    Q_OBJECT

public:
    FilterCompleter(const QStringList& names, QObject* parent);
    QString pathFromIndex(const QModelIndex& index) const override;
    QStringList splitPath(const QString& path) const override;
};

}  // namespace tarvo::window
