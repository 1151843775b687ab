// With a large font nothing is cut: in every tab and dialog labels and buttons have the room that
// they ask for. CTest runs this again under another scale of the screen.

#include "qrb/loader.h"
#include "tests/window/alldialogs.h"
#include "tests/window/guitestmain.h"
#include "tests/window/samplewindow.h"

#include <QAbstractButton>
#include <QLabel>
#include <QScreen>
#include <QTabBar>
#include <QTabWidget>
#include <QtTest>
#include <memory>

using namespace tarvo::window;

namespace {

// A pixel less is what rounding at other scales takes.
bool isCut(const QWidget* widget) {
    const QSize wanted = widget->sizeHint();
    if (const auto* label = qobject_cast<const QLabel*>(widget)) {
        if (label->text().isEmpty() ||
            label->sizePolicy().horizontalPolicy() == QSizePolicy::Ignored)
            return false;
        if (label->wordWrap())
            return label->heightForWidth(label->width()) > label->height() + 1;
    } else if (!qobject_cast<const QAbstractButton*>(widget) ||
               qobject_cast<const QTabBar*>(widget->parent())) {
        // The arrows of a row of tabs are as narrow as the style has them.
        return false;
    }
    return widget->width() + 1 < wanted.width() || widget->height() + 1 < wanted.height();
}

QStringList cutParts(const QWidget* window, const QString& name) {
    QStringList cut;
    for (const QWidget* widget : window->findChildren<QWidget*>())
        if (widget->isVisible() && isCut(widget))
            cut += QString("%1: %2 %3 has %4 x %5, wants %6 x %7")
                       .arg(name, widget->metaObject()->className(), widget->objectName())
                       .arg(widget->width())
                       .arg(widget->height())
                       .arg(widget->sizeHint().width())
                       .arg(widget->sizeHint().height());
    return cut;
}

}  // namespace

class SizesTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase() { tarvo::qrb::freeLibrary(); }

    void nothingIsCut_data();
    void nothingIsCut();

private:
    std::unique_ptr<SampleDatabase> m_sample;
};

void SizesTest::initTestCase() {
    tarvo::qrb::loadLibrary("");
    m_sample = std::make_unique<SampleDatabase>();
    QVERIFY2(m_sample->error().isEmpty(), qUtf8Printable(m_sample->error()));
}

void SizesTest::nothingIsCut_data() {
    QTest::addColumn<double>("factor");
    for (const double factor : {1.0, 1.5, 2.0})
        QTest::newRow(qPrintable(QString::number(factor))) << factor;
}

void SizesTest::nothingIsCut() {
    QFETCH(double, factor);
    const QFont before = QApplication::font();
    QFont large = before;
    large.setPointSizeF(before.pointSizeF() * factor);
    QApplication::setFont(large);
    QStringList cut;
    {
        const SampleWindow window(m_sample->copy());
        const auto* tabs = window.child<QTabWidget>("tabWidget");
        for (int i = 0; i < tabs->count(); ++i) {
            const QString name = tabs->widget(i)->objectName();
            window.child<QTabWidget>("tabWidget")->setCurrentIndex(i);
            QCoreApplication::processEvents();
            cut += cutParts(&window.window(), name);
        }
    }
    for (const auto& [group, open] : allDialogs()) {
        const SampleWindow window(m_sample->copy());
        open(window, [&cut, name = group](QDialog* dialog) {
            cut += cutParts(dialog, name);
            dialog->reject();
        });
    }
    QApplication::setFont(before);
    QVERIFY2(cut.isEmpty(), qUtf8Printable(cut.join('\n')));
}

GUI_TEST_MAIN(SizesTest)
#include "sizestest.moc"
