#include "tests/window/treecells.h"

#include <QIcon>
#include <QImage>
#include <QTreeWidget>
#include <QtTest>

QStringList textsOf(const QTreeWidgetItem* row) {
    QStringList texts;
    for (int column = 0; column < row->columnCount(); ++column)
        texts += row->text(column);
    return texts;
}

QStringList headersOf(const QTreeWidget* tree) {
    QStringList texts;
    for (int column = 0; column < tree->columnCount(); ++column)
        texts += tree->headerItem()->text(column);
    return texts;
}

Qt::Alignment alignmentOf(const QTreeWidgetItem* row, int column) {
    const auto set = Qt::Alignment(row->textAlignment(column)) & Qt::AlignHorizontal_Mask;
    return set == 0 ? Qt::Alignment(Qt::AlignLeft) : set;
}

void compareAlignments(const QTreeWidgetItem* row, const QList<Qt::Alignment>& expected) {
    for (int column = 0; column < expected.size(); ++column)
        QVERIFY2(alignmentOf(row, column) == expected[column],
                 qPrintable(QString("column %0 of %1").arg(column).arg(row->text(0))));
}

bool shows(const QTreeWidgetItem* row, int column, const char* icon) {
    const QIcon expected(QString(":/resources/gui/%0.png").arg(icon));
    return row->icon(column).pixmap(32).toImage() == expected.pixmap(32).toImage();
}
