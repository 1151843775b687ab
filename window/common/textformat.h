// Numbers and texts as the panels show them.
#pragma once

#include <QString>
#include <QStringList>
#include <cstdint>
#include <string>
#include <vector>

namespace tarvo::window {

// "1023 B", "1.50 KB", ... up to TB, in English; factor 1024.
QString humanReadableSize(std::uint64_t bytes);

// "26,107", as the locale groups digits.
QString grouped(std::uint64_t count);

// "1:05:09.250" in English: hours, minutes, seconds and milliseconds.
QString durationText(std::int64_t milliseconds);

// The version and build hash in a library's version text, "2.x.x" where there is none.
QString shortLibraryVersion(const QString& libraryVersion);

// Name and version of a library; versions that begin with the name stand alone.
QString libraryTitle(const QString& name, const QString& version);

// The first count characters, followed by "..." where the text is longer.
QString shortened(const QString& text, int count);

// Texts of the library and the layer as those of widgets.
QStringList textList(const std::vector<std::string>& texts);

// The text in one line: line ends are shown as a sign, tabulators as spaces.
QString oneLine(QString text);

// The first line of the text, with "..." where there are more.
QString firstLine(const QString& text);

// The text as a tooltip that shows it as it stands, tags included.
QString plainToolTip(const QString& text);

// Of longer attributes only the first elements are shown.
constexpr std::uint32_t mostShownElements = 10;
// The names of the elements that are shown of an attribute.
QStringList shownElements(const QString& name, std::uint32_t length);

// The version and build of this program, for example "0.1.0-1a2b3c4d".
QString programVersionText();
// The agent of the transactions that this program begins.
QString transactionAgentText();

QString programName();

}  // namespace tarvo::window
