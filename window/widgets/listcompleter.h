// Completes the text at the end of a comma-separated list.
#pragma once

#include <QCompleter>
#include <QStringList>

namespace tarvo::window {

class ListCompleter : public QCompleter {
    Q_OBJECT

public:
    ListCompleter(const QStringList& texts, QObject* parent);
    QString pathFromIndex(const QModelIndex& index) const override;
    QStringList splitPath(const QString& path) const override;
};

}  // namespace tarvo::window
