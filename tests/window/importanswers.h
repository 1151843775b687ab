// What tests of imports and exports of points do alike: answer what comes up, and see the points.
#pragma once

#include "qrb/pointcloud.h"
#include "tests/window/filecontents.h"
#include "tests/window/modalscript.h"
#include "tests/window/windowdriver.h"

#include <QApplication>
#include <QFile>
#include <QLineEdit>
#include <QMessageBox>
#include <QProgressDialog>
#include <QRadioButton>
#include <QTimer>
#include <QtTest>
#include <algorithm>
#include <array>
#include <vector>

using Row = std::array<double, 4>;

// Place and class of every point, sorted.
inline std::vector<Row> rowsOf(const tarvo::qrb::Pointcloud& cloud) {
    std::vector<Row> rows;
    Row values{};
    auto query = cloud.select();
    const char* const names[] = {"tarvo.xyz[0]", "tarvo.xyz[1]", "tarvo.xyz[2]", "tarvo.class"};
    for (std::size_t i = 0; i < values.size(); ++i)
        query.bind(names[i], tarvo::qrb::pointcloud::DataType::DOUBLE, &values[i], 0);
    while (query.next(1) == 1)
        rows.push_back(values);
    std::sort(rows.begin(), rows.end());
    return rows;
}

// Answers what an import brings up, in whatever order: how long work takes decides whether its
// progress is seen.
class Answers {
public:
    explicit Answers(std::vector<ModalScript::Step> offers) : m_offers(std::move(offers)) {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { look(); });
        m_timer.start(10);
    }

    QString fileName;       // for a file dialog
    QString cancelled;      // the progress whose text begins so is cancelled
    QString button = "OK";  // of boxes
    QStringList texts;      // of boxes
    std::size_t offered = 0;
    int cancels = 0;

private:
    void look() {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (!dialog || !takesKeys(dialog) || m_seen.contains(dialog))
            return;
        if (const auto* progress = qobject_cast<QProgressDialog*>(dialog)) {
            if (cancelled.isEmpty() || !progress->labelText().startsWith(cancelled))
                return;
            m_seen += dialog;
            ++cancels;
            ModalScript::press("Cancel")(dialog);
            return;
        }
        m_seen += dialog;
        // Boxes open within a step.
        QTimer::singleShot(0, &m_timer, [this, dialog = QPointer<QDialog>(dialog)] {
            if (dialog)
                answer(dialog);
        });
    }
    void answer(QDialog* dialog) {
        if (const auto* box = qobject_cast<QMessageBox*>(dialog)) {
            texts += box->text();
            ModalScript::press(button)(dialog);
        } else if (dialog->objectName() == "DialogImportPoints") {
            const std::size_t i = offered++;
            i < m_offers.size() ? m_offers[i](dialog) : dialog->reject();
            // It comes up again after a refusal.
            m_seen.removeAll(dialog);
        } else {
            ModalScript::chooseFile(fileName)(dialog);
        }
    }

    QTimer m_timer;
    std::vector<ModalScript::Step> m_offers;
    QList<QPointer<QDialog>> m_seen;
};

inline ModalScript::Step importInto(const QString& location, const ModalScript::Step& before = {}) {
    return [location, before](QDialog* dialog) {
        if (before)
            before(dialog);
        auto* edit = in<QLineEdit>(dialog, "editLocation");
        edit->selectAll();
        QTest::keyClicks(edit, location);
        ModalScript::press("Import")(dialog);
    };
}

inline const ModalScript::Step intoOpen = [](QDialog* dialog) {
    QTest::mouseClick(in<QRadioButton>(dialog, "radioOpen"), Qt::LeftButton, {}, QPoint(8, 8));
    QVERIFY(in<QRadioButton>(dialog, "radioOpen")->isChecked());
    ModalScript::press("Import")(dialog);
};
