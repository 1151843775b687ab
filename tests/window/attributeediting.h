// Drives the editor of point attribute definitions and the dialogs that it opens, as a user does.
#pragma once

#include "tests/window/attributesamples.h"
#include "tests/window/filecontents.h"
#include "tests/window/modalscript.h"
#include "tests/window/windowdriver.h"
#include "window/dialogs/attribute/dialogpointattribute.h"

#include <QDialogButtonBox>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QtTest>
#include <vector>

using Purpose = tarvo::window::DialogPointAttribute::Purpose;
using Step = ModalScript::Step;

inline QPushButton* okButton(QDialog* dialog) {
    return in<QDialogButtonBox>(dialog, "buttonBox")->button(QDialogButtonBox::Ok);
}

// As a user does: click, select all, type.
inline void type(QWidget* field, const QString& text) {
    field->setFocus();
    QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(field, Qt::Key_Delete);
    QTest::keyClicks(field, text);
}

inline void typeInto(QDialog* dialog, const char* field, const QString& text) {
    type(in<QWidget>(dialog, field), text);
}

inline QString shown(QDialog* dialog, const char* label) {
    const auto* check = in<QLabel>(dialog, label);
    return check->isVisible() ? check->text() : QString();
}

// Steps after which no dialog stays open where one of them failed.
inline std::vector<Step> ending(std::vector<Step> steps) {
    for (Step& step : steps)
        step = [inner = step](QDialog* dialog) {
            inner(dialog);
            if (QTest::currentTestFailed())
                dialog->reject();
        };
    return steps;
}

inline void writeTo(const QString& fileName, const QByteArray& bytes) {
    QFile file(fileName);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

// Runs the editor while the steps answer it and what it opens.
inline bool edit(PointAttribute& attribute, Purpose purpose, std::vector<Step> steps,
                 const QStringList& takenNames = {}, QStringList* texts = nullptr) {
    const std::size_t expected = steps.size();
    ModalScript script(ending(std::move(steps)));
    const bool accepted =
        tarvo::window::DialogPointAttribute::edit(attribute, purpose, takenNames, nullptr);
    if (script.answered() != expected)
        QTest::qFail(
            qPrintable(QString("of %1 dialogs %2 came").arg(expected).arg(script.answered())),
            __FILE__, __LINE__);
    if (texts)
        *texts = script.texts();
    return accepted;
}
