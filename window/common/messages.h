// What the rooms below the window tell people, in the language of the window. These rooms know no
// languages: they hand up English texts, which are recognised here by their patterns.
#pragma once

#include <QString>
#include <QStringList>
#include <string>
#include <vector>

namespace tarvo::window {

// The text in the language of the window, as far as it is made by patterns that are known: as a
// whole, else line by line, sentence by sentence, behind a number and behind ": ". What is put into
// a pattern is translated if it is a message, too; names, values and whatever stands in quotation
// marks stay as they are. In English, and where nothing is known, it is the text itself. Only for
// texts that were made for people: a value may happen to read like a message. Takes less than a
// second for a text of any length, of which it may leave the rest untranslated.
QString translatedMessage(const QString& english);
QString translatedMessage(const std::string& utf8);
QString translatedMessage(const char* utf8);
QStringList translatedMessages(const std::vector<std::string>& utf8);

// The same for a report with a line each for what it tells: only whole lines are messages, because
// others show what databases hold.
QString translatedReport(const std::string& utf8);

}  // namespace tarvo::window
