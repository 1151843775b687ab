// The window in another language: nothing in it stays English, and keys fit.

#include "qrb/loader.h"
#include "tests/window/alldialogs.h"
#include "tests/window/guitestmain.h"
#include "tests/window/samplewindow.h"
#include "window/app/language.h"
#include "window/frame/commandline.h"

#include <QAction>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFile>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>
#include <QProcess>
#include <QPushButton>
#include <QSet>
#include <QTabWidget>
#include <QXmlStreamReader>
#include <QtTest>
#include <memory>

using namespace tarvo::window;

// The English texts that have another translation.
class EnglishTexts {
public:
    explicit EnglishTexts(const QString& fileName) {
        QFile file(fileName);
        if (!file.open(QIODevice::ReadOnly))
            qFatal("no file of translations");
        QXmlStreamReader xml(&file);
        QString source, context;
        while (!xml.atEnd()) {
            xml.readNext();
            if (xml.isStartElement() && xml.name() == u"name")
                context = xml.readElementText();
            else if (xml.isStartElement() && xml.name() == u"source")
                source = xml.readElementText();
            else if (xml.isStartElement() && xml.name() == u"translation")
                add(context, source, xml.readElementText());
        }
    }

    qsizetype size() const { return m_texts.size(); }

    bool contains(const QString& text) const {
        return m_texts.contains(text) ||
               std::any_of(m_patterns.begin(), m_patterns.end(),
                           [&](const auto& pattern) { return pattern.match(text).hasMatch(); });
    }

private:
    void add(const QString& context, const QString& source, const QString& translation) {
        static const QRegularExpression placeholder(R"(%\d)");
        static const QRegularExpression word("[a-z]{3}");
        // Settings that are no texts have some of these words, too.
        if (source == translation || context == "PointAttribute")
            return;
        // Short ones look like what databases and plugins hold; parts of messages above all.
        const qsizetype least = context == "Messages" ? 20 : 8;
        m_texts += source;
        const QStringList pieces = source.split(placeholder);
        if (pieces.size() == 1 || !pieces.join("").contains(word) || pieces.join("").size() < least)
            return;
        QStringList escaped;
        for (const QString& piece : pieces)
            escaped += QRegularExpression::escape(piece);
        m_patterns += QRegularExpression(QRegularExpression::anchoredPattern(escaped.join(".*")),
                                         QRegularExpression::DotMatchesEverythingOption);
    }

    QSet<QString> m_texts;
    QList<QRegularExpression> m_patterns;
};

// What an object shows, what users type or databases hold left out.
static QStringList textsOf(QObject* object) {
    QStringList texts;
    for (const char* name : {"text", "title", "toolTip", "placeholderText", "windowTitle",
                             "accessibleName", "prefix", "suffix", "specialValueText", "format"})
        if (!(qobject_cast<QLineEdit*>(object) && qstrcmp(name, "text") == 0))
            texts += object->property(name).toString();
    if (const auto* tabs = qobject_cast<QTabWidget*>(object))
        for (int i = 0; i < tabs->count(); ++i)
            texts += {tabs->tabText(i), tabs->tabToolTip(i)};
    if (const auto* box = qobject_cast<QComboBox*>(object))
        for (int i = 0; i < box->count(); ++i)
            texts += {box->itemText(i), box->itemData(i, Qt::ToolTipRole).toString()};
    if (const auto* header = qobject_cast<QHeaderView*>(object); header && header->model())
        for (int i = 0; i < header->count(); ++i)
            for (const int role : {Qt::DisplayRole, Qt::ToolTipRole})
                texts += header->model()->headerData(i, header->orientation(), role).toString();
    return texts;
}

// Menus are filled when they come up.
static void openMenus(QWidget* window) {
    for (QMenu* menu : window->findChildren<QMenu*>())
        emit menu->aboutToShow();
}

class LanguageTest : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanup() { useLanguage("en"); }
    void cleanupTestCase() { tarvo::qrb::freeLibrary(); }

    void languageIsChosen();
    void unknownLanguageEndsTheProgram();
    void nothingStaysEnglish();
    void keysLeadToOneControlEach();
    void toolkitSpeaksItToo();

private:
    // Of the window or a dialog of it.
    void lookAt(QWidget* widget, const QString& name);

    std::unique_ptr<SampleDatabase> m_sample;
    std::unique_ptr<EnglishTexts> m_english;
    QStringList m_stillEnglish;
    qsizetype m_seen = 0;
};

void LanguageTest::initTestCase() {
    tarvo::qrb::loadLibrary("");
    m_sample = std::make_unique<SampleDatabase>();
    QVERIFY2(m_sample->error().isEmpty(), qUtf8Printable(m_sample->error()));
    m_english = std::make_unique<EnglishTexts>(QRB_TRANSLATIONS "/qrbadmin_de.ts");
    QVERIFY(m_english->size() > 500);
}

void LanguageTest::languageIsChosen() {
    QCOMPARE(languages(), QStringList({"de", "en"}));
    QCOMPARE(spokenLanguage({"fr-FR", "fr", "de-AT", "en"}), "de-AT");
    QCOMPARE(spokenLanguage({"C"}), "en");
    QCOMPARE(spokenLanguage({"en-GB", "de"}), "en-GB");
    const std::pair<QStringList, QString> options[] = {{{"a.qrbx", "--lang", "de"}, "de"},
                                                       {{"--lang=fr", "--lang=DE"}, "DE"},
                                                       {{"--lang"}, ""},
                                                       {{"--language", "de"}, "none"}};
    for (const auto& [arguments, language] : options)
        QCOMPARE(languageOption(arguments).value_or("none"), language);
    QVERIFY(speaks("DE") && speaks("de_CH") && !speaks("") && !speaks("*") && !speaks("d"));
    QCOMPARE(fileArguments({"--lang", "de", "de", "--window=1,2,3,4", "-x", "--lang=en"}),
             QStringList({"de", "-x"}));
    for (const auto& [language, number] :
         {std::pair("de", "1.000,5"), {"en-GB", "1,000.5"}, {"de-CH", "1’000.5"}}) {
        useLanguage(language);
        QCOMPARE(QLocale().toString(1000.5, 'f', 1), QString(number));
    }
}

void LanguageTest::unknownLanguageEndsTheProgram() {
    QProcess program;
    program.start(QCoreApplication::applicationDirPath() + "/qrbadmin", {"--lang", "xx"});
    QVERIFY(program.waitForFinished());
    QCOMPARE(program.exitCode(), 2);
    QCOMPARE(program.readAllStandardError(), unknownLanguage("xx").toUtf8());
}

void LanguageTest::lookAt(QWidget* widget, const QString& name) {
    openMenus(widget);
    QObjectList objects = widget->findChildren<QObject*>();
    objects += widget;
    for (QObject* object : objects)
        for (const QString& text : textsOf(object)) {
            m_seen += !text.isEmpty();
            if (m_english->contains(text))
                m_stillEnglish += name + ' ' + object->objectName() + ": " + text;
        }
}

void LanguageTest::nothingStaysEnglish() {
    useLanguage("de");
    {
        const SampleWindow empty{QString()};
        lookAt(&empty.window(), "empty");
    }
    {
        const SampleWindow window(m_sample->copy());
        auto* tabs = window.child<QTabWidget>("tabWidget");
        for (int i = 0; i < tabs->count(); ++i) {
            tabs->setCurrentIndex(i);
            QCoreApplication::processEvents();
        }
        window.child<QAction>("actionQuerySelectNext")->trigger();
        window.begin();
        lookAt(&window.window(), "window");
    }
    for (const auto& [group, open] : allDialogs()) {
        const SampleWindow window(m_sample->copy());
        open(window, [this, name = group](QDialog* dialog) {
            lookAt(dialog, name);
            dialog->reject();
        });
    }
    QVERIFY(m_seen > 1000);
    m_stillEnglish.removeDuplicates();
    QVERIFY2(m_stillEnglish.isEmpty(), qUtf8Printable(m_stillEnglish.join('\n')));
}

void LanguageTest::keysLeadToOneControlEach() {
    useLanguage("de");
    QStringList taken;
    for (const auto& [group, open] : allDialogs()) {
        const SampleWindow window(m_sample->copy());
        open(window, [&taken, name = group](QDialog* dialog) {
            for (const QString& key : keysClaimedTwice(dialog))
                taken += name + ": " + key;
            dialog->reject();
        });
    }
    QVERIFY2(taken.isEmpty(), qUtf8Printable(taken.join('\n')));
}

void LanguageTest::toolkitSpeaksItToo() {
    useLanguage("de");
    const QDialogButtonBox german(QDialogButtonBox::Cancel);
    if (!QFile::exists(QLibraryInfo::path(QLibraryInfo::TranslationsPath) + "/qtbase_de.qm"))
        QSKIP("the toolkit's translations are not installed");
    QCOMPARE(german.button(QDialogButtonBox::Cancel)->text(), "Abbrechen");
    useLanguage("en");
    const QDialogButtonBox english(QDialogButtonBox::Cancel);
    QCOMPARE(english.button(QDialogButtonBox::Cancel)->text(), "Cancel");
}

GUI_TEST_MAIN(LanguageTest)
#include "languagetest.moc"
