#include "window/app/language.h"

#include <QCoreApplication>
#include <QDir>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>
#include <algorithm>

// Outside of all namespaces, as the toolkit wants it.
static void initTranslations() {
    Q_INIT_RESOURCE(translations);
}

namespace tarvo::window {

namespace {

const QString folder = ":/translations";
const QString program = "qrbadmin";
const QString english = "en";

QString withoutCountry(const QString& language) {
    return QString(language).replace('_', '-').section('-', 0, 0).toLower();
}

// In place of what was used before.
void translate(QTranslator& translator, const QLocale& locale, const QString& name,
               const QString& place) {
    QCoreApplication::removeTranslator(&translator);
    if (translator.load(locale, name, "_", place))
        QCoreApplication::installTranslator(&translator);
}

}  // namespace

QStringList languages() {
    initTranslations();
    QStringList names(english);
    for (const QString& file : QDir(folder).entryList({program + "_*.qm"}))
        names += file.section('.', 0, 0).section('_', 1);
    names.sort();
    return names;
}

bool speaks(const QString& language) {
    return languages().contains(withoutCountry(language));
}

QString unknownLanguage(const QString& language) {
    return QString("The window does not speak \"%1\"; choose one of: %2.\n")
        .arg(language, languages().join(", "));
}

QString spokenLanguage(const QStringList& languages) {
    const auto spoken = std::find_if(languages.begin(), languages.end(), speaks);
    return spoken == languages.end() ? english : *spoken;
}

void useLanguage(const QString& language) {
    initTranslations();
    // English numbers are the same in all countries.
    const bool isEnglish = withoutCountry(language) == english;
    const QLocale locale(isEnglish ? english : QString(language).replace('-', '_'));
    QLocale::setDefault(locale);
    static QTranslator own;
    static QTranslator toolkit;
    translate(toolkit, locale, "qtbase", QLibraryInfo::path(QLibraryInfo::TranslationsPath));
    translate(own, locale, program, folder);
}

}  // namespace tarvo::window
