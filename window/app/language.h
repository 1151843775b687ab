// The language of the window's texts, and with it that of numbers and dates.
#pragma once

#include <QString>
#include <QStringList>

namespace tarvo::window {

// Those that the program speaks, "de" for example, sorted. English needs no translation.
QStringList languages();

// Whether the program speaks the language; a country may stand behind it: "de", "de-AT", "de_AT".
bool speaks(const QString& language);

// The sentence, with its line end, that tells at the terminal which languages there are.
QString unknownLanguage(const QString& language);

// The first of the languages that the program speaks, with its country; "en" where it speaks none.
QString spokenLanguage(const QStringList& languages);

// Has the program's texts, and those of the toolkit where they are installed, be in the language
// from now on; numbers and dates are written as its country does. Needs the application object.
// What is shown already stays as it is.
void useLanguage(const QString& language);

}  // namespace tarvo::window
