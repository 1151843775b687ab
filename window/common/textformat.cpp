#include "window/common/textformat.h"

#include "core/valueformat.h"
#include "numbers/sizetext.h"
#include "version.h"
#include "window/common/localnumbers.h"

#include <QLocale>
#include <QRegularExpression>
#include <QTextDocument>

namespace tarvo::window {

QString humanReadableSize(std::uint64_t bytes) {
    return localNumber(QString::fromStdString(numbers::sizeText(bytes)));
}

QString grouped(std::uint64_t count) {
    return QLocale().toString(static_cast<qulonglong>(count));
}

QString durationText(std::int64_t milliseconds) {
    const qint64 seconds = milliseconds / 1000;
    return localNumber(QString("%1:%2:%3.%4")
                           .arg(seconds / 3600)
                           .arg(seconds / 60 % 60, 2, 10, QChar('0'))
                           .arg(seconds % 60, 2, 10, QChar('0'))
                           .arg(milliseconds % 1000, 3, 10, QChar('0')));
}

QString shortLibraryVersion(const QString& libraryVersion) {
    static const QRegularExpression pattern(
        R"(\A(?:QRB Library (\d+\.\d+\.\d+\-[a-fA-F0-9]+).*)\z)",
        QRegularExpression::DotMatchesEverythingOption);
    const auto match = pattern.match(libraryVersion);
    return match.hasMatch() ? match.captured(1) : QString("2.x.x");
}

QString libraryTitle(const QString& name, const QString& version) {
    return version.startsWith(name) ? version : name + ' ' + version;
}

QString shortened(const QString& text, int count) {
    return text.size() > count ? text.left(count) + "..." : text;
}

QStringList textList(const std::vector<std::string>& texts) {
    QStringList list;
    for (const std::string& text : texts)
        list += QString::fromStdString(text);
    return list;
}

QString oneLine(QString text) {
    text.replace("\r\n", "\n");
    for (QChar& c : text) {
        if (c == '\n' || c == '\r' || c == QChar::LineSeparator || c == QChar::ParagraphSeparator)
            c = QChar(0x21b5);  // the arrow of the return key
        else if (c == '\t')
            c = ' ';
    }
    return text;
}

QString firstLine(const QString& text) {
    static const QRegularExpression lineEnd("[\\n\\r\\x{2028}\\x{2029}]");
    const qsizetype end = text.indexOf(lineEnd);
    return end < 0 ? text : text.left(end) + "...";
}

QString plainToolTip(const QString& text) {
    if (!Qt::mightBeRichText(text))
        return text;
    return "<html>" + text.toHtmlEscaped().replace('\n', "<br/>") + "</html>";
}

QStringList shownElements(const QString& name, std::uint32_t length) {
    QStringList names;
    for (const std::string& element :
         core::elementNames(name.toStdString(), length, mostShownElements))
        names += QString::fromStdString(element);
    return names;
}

QString programVersionText() {
    return QString(QRB_VERSION) + '-' + QRB_COMMIT;
}

QString transactionAgentText() {
    return programName() + ' ' + programVersionText();
}

QString programName() {
    return "qrbadmin";
}

}  // namespace tarvo::window
