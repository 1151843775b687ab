// Completes a filter expression at the cursor, while one types or with Ctrl+Space: names of
// attributes and their elements, and behind a comparison the named values of the attribute. Nothing
// changes until an entry is chosen.
#pragma once

#include "qrb/pointattribute.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <QStringList>
#include <optional>
#include <vector>

class QCompleter;
class QLineEdit;
class QModelIndex;
class QStandardItemModel;

namespace tarvo::window {

class FilterCompletion : public QObject {
    Q_OBJECT

public:
    // Belongs to the field.
    explicit FilterCompletion(QLineEdit* edit);

    void setAttributes(const std::vector<qrb::pointcloud::PointAttribute>& attributes);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Entry {
        QString shown;
        QString inserted;
    };

    QList<Entry> entries(bool isAsked) const;
    QList<Entry> matchingNames(const QString& text) const;
    void offer(bool isAsked);
    void insert(const QModelIndex& index);

    QLineEdit* m_edit;
    QStandardItemModel* m_model;
    QCompleter* m_completer;
    QStringList m_names;
    QHash<QString, QList<Entry>> m_values;  // by attribute
    bool m_inserting = false;
};

}  // namespace tarvo::window
