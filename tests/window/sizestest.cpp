// With a large font nothing is cut: in every tab and dialog labels and buttons have the room that
// they ask for, and dialogs stay on the screen with their buttons. CTest runs this again under
// other scales of the screen.

#include "qrb/loader.h"
#include "tests/window/alldialogs.h"
#include "tests/window/guitestmain.h"
#include "tests/window/samplewindow.h"

#include <QAbstractButton>
#include <QLabel>
#include <QLayout>
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

// Of the application, while this lives.
class LargeFont {
public:
    explicit LargeFont(double points) : m_before(QApplication::font()) {
        QFont large = m_before;
        large.setPointSizeF(points);
        QApplication::setFont(large);
    }
    ~LargeFont() { QApplication::setFont(m_before); }
    LargeFont(const LargeFont&) = delete;
    LargeFont& operator=(const LargeFont&) = delete;

private:
    QFont m_before;
};

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
    void dialogsStayOnTheScreen_data() { nothingIsCut_data(); }
    void dialogsStayOnTheScreen();

private:
    std::unique_ptr<SampleDatabase> m_sample;
};

void SizesTest::initTestCase() {
    tarvo::qrb::loadLibrary("");
    m_sample = std::make_unique<SampleDatabase>();
    QVERIFY2(m_sample->error().isEmpty(), qUtf8Printable(m_sample->error()));
}

void SizesTest::nothingIsCut_data() {
    QTest::addColumn<double>("points");
    const double usual = QApplication::font().pointSizeF();
    for (const double points : {usual, usual * 1.5, 16.0, usual * 2})
        QTest::newRow(qPrintable(QString("%1 pt").arg(points))) << points;
}

void SizesTest::nothingIsCut() {
    QFETCH(double, points);
    const LargeFont font(points);
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
    QVERIFY2(cut.isEmpty(), qUtf8Printable(cut.join('\n')));
}

void SizesTest::dialogsStayOnTheScreen() {
    QFETCH(double, points);
    const LargeFont font(points);
    QStringList faults;
    for (const auto& [group, open] : allDialogs()) {
        const SampleWindow window(m_sample->copy());
        open(window, [&faults, name = group](QDialog* dialog) {
            // The last row can be seen as a whole, without scrolling.
            const auto* buttons = dialog->layout()->itemAt(dialog->layout()->count() - 1);
            const QMargins margins = dialog->layout()->contentsMargins();
            // Buttons with very large letters may need more than there is.
            const QSize room = dialog->screen()->availableSize().expandedTo(
                {buttons->minimumSize().width() + margins.left() + margins.right(), 0});
            if (dialog->width() > room.width() || dialog->height() > room.height())
                faults +=
                    QString("%1 has %2 x %3").arg(name).arg(dialog->width()).arg(dialog->height());
            if (!dialog->rect().contains(buttons->geometry()) ||
                buttons->geometry().height() < buttons->minimumSize().height())
                faults += name + ": its buttons are cut";
            dialog->reject();
        });
    }
    QVERIFY2(faults.isEmpty(), qUtf8Printable(faults.join('\n')));
}

GUI_TEST_MAIN(SizesTest)
#include "sizestest.moc"
