// A list from which several entries are chosen by check boxes, with a search line.
#pragma once

#include <QStringList>
#include <QWidget>

class QLabel;
class QLineEdit;
class QListWidget;

namespace tarvo::window {

class CheckList : public QWidget {
    Q_OBJECT

public:
    explicit CheckList(QWidget* parent = nullptr);

    // title: what the list holds, its accessible name; searchTitle: that of the field above it. All
    // entries are checked.
    void setEntries(const QString& title, const QString& searchTitle, const QStringList& entries);
    // In the order of the list.
    QStringList checked() const;

private:
    void check(bool checked);
    void showMatches(const QString& text);
    void updateCount();

    QLineEdit* m_search = nullptr;
    QListWidget* m_list = nullptr;
    QLabel* m_count = nullptr;
};

}  // namespace tarvo::window
