#include "tests/window/samplestate.h"

#include "tests/window/samplewindow.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QtTest>

QStringList stateOf(const SampleWindow& window) {
    const auto& database = window.database();
    QStringList state = {QString::number(database.transactions().pending()),
                         QString::number(database.transactions().current()),
                         window.child<QLabel>("labelStatus")->text(),
                         window.child<QPlainTextEdit>("editChangelog")->toPlainText()};
    for (const std::string& name : database.metaData().list())
        state += QString::fromStdString(name + '=' + database.metaData().get(name));
    for (const std::uint32_t id : database.transactions().list())
        state += QString::number(id);
    for (const std::string& name : database.pointAttributes().list())
        state += QString::fromStdString(name);
    return state;
}

void select(const SampleWindow& window, const char* tab, const char* tree,
            const QStringList& rows) {
    window.driver().showTab(tab);
    for (const QString& row : rows)
        QVERIFY2(window.driver().select(tree, row, row != rows.first()), qUtf8Printable(row));
}
