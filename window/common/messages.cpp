#include "window/common/messages.h"

#include "window/common/messageindex.h"

#include <QCoreApplication>
#include <QLocale>
#include <algorithm>

namespace tarvo::window {

namespace {

constexpr qint64 mostWork = 10'000'000;  // characters compared, roughly
constexpr int deepest = 8;               // messages within messages
constexpr qsizetype mostTried = 5;       // patterns for one text

const char* const context = "Messages";
const char* const quotation = QT_TRANSLATE_NOOP("Messages", "\"%1\"");

struct Translation {
    QString text;
    qsizetype known = 0;  // how many characters belong to patterns
};

QString filled(const QString& pattern, const QStringList& parts) {
    QString text;
    for (qsizetype i = 0; i < pattern.size(); ++i) {
        const int number =
            pattern[i] == '%' && i + 1 < pattern.size() ? pattern[i + 1].digitValue() : -1;
        if (number > 0 && number <= parts.size()) {
            text += parts[number - 1];
            ++i;
        } else {
            text += pattern[i];
        }
    }
    return text;
}

QString withOwnQuotes(QStringView value) {
    if (value.size() < 2 || !value.startsWith('"') || value.indexOf('"', 1) != value.size() - 1)
        return value.toString();
    return filled(QCoreApplication::translate(context, quotation),
                  {value.sliced(1, value.size() - 2).toString()});
}

// Where parts of a text begin behind the mark, outside of quotation marks.
QList<QStringView> divided(QStringView text, bool (*endsAt)(QStringView, qsizetype)) {
    QList<QStringView> parts;
    bool quoted = false;
    qsizetype begin = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        quoted ^= text[i] == '"';
        if (!quoted && endsAt(text, i)) {
            parts += text.sliced(begin, i + 1 - begin);
            begin = i + 1;
        }
    }
    return parts << text.sliced(begin);
}

bool endsPart(QStringView text, qsizetype i) {
    return text[i] == ' ' && i > 0 && text[i - 1] == ';';
}

bool endsSentence(QStringView text, qsizetype i) {
    return text[i] == ' ' && i > 0 && QStringView(u".?!").contains(text[i - 1]);
}

bool isEnglish() {
    return QLocale().language() == QLocale::English;
}

class Translator {
public:
    Translation inParts(QStringView text, int depth = 0) {
        m_work -= text.size() / 8 + 16;
        if (m_work < 0)
            return {text.toString()};
        const QStringView bare = text.trimmed();
        Translation best = asWhole(bare, depth);
        if (best.known < bare.size() && depth < deepest) {
            const Translation divided = ofParts(bare, depth);
            if (divided.known > best.known)
                best = divided;
        }
        const qsizetype begin = bare.data() - text.data();
        best.text =
            text.first(begin).toString() + best.text + text.sliced(begin + bare.size()).toString();
        return best;
    }

    QString ofLines(const QString& text) {
        QStringList lines = text.split('\n');
        for (QString& line : lines)
            line = inParts(line, deepest).text;
        return lines.join('\n');
    }

private:
    Translation asWhole(QStringView text, int depth) {
        static const MessageIndex index(messagePatterns());
        Translation best{withOwnQuotes(text), 0};
        QList<MessageIndex::Match> matches = index.matches(text, m_work);
        if (matches.size() > mostTried)
            matches.resize(mostTried);
        for (const MessageIndex::Match& match : matches) {
            Translation one = ofMatch(match, depth);
            if (one.known > best.known)
                best = std::move(one);
        }
        return best;
    }

    Translation ofMatch(const MessageIndex::Match& match, int depth) {
        Translation result{{}, match.pattern->letters};
        QStringList parts;
        for (qsizetype i = 0; i < match.captures.size(); ++i) {
            if (match.pattern->source->kinds[i] != 'm' || depth >= deepest) {
                parts += withOwnQuotes(match.captures[i]);
                continue;
            }
            const Translation part = inParts(match.captures[i], depth + 1);
            result.known += part.known;
            parts += part.text;
        }
        result.text =
            filled(QCoreApplication::translate(context, match.pattern->source->text), parts);
        return result;
    }

    Translation ofParts(QStringView text, int depth) {
        Translation result;
        QList<QStringView> parts = text.split('\n');
        const QString between = parts.size() > 1 ? "\n" : "";
        if (parts.size() == 1)
            parts = divided(text, endsSentence);
        if (parts.size() == 1)
            parts = divided(text, endsPart);
        if (parts.size() == 1) {
            Translation behind = rest(text, depth);
            if (!text.endsWith('.') && !text.endsWith(';'))
                return behind;
            Translation before = withoutEnd(text, depth);
            return before.known > behind.known ? before : behind;
        }
        for (qsizetype i = 0; i < parts.size(); ++i) {
            const Translation part = inParts(parts[i], depth + 1);
            result.text += (i == 0 ? QString() : between) + part.text;
            result.known += part.known;
        }
        return result;
    }

    // A message that became a sentence, or a part of one.
    Translation withoutEnd(QStringView text, int depth) {
        Translation result = inParts(text.chopped(1), depth + 1);
        result.text += text.back();
        result.known += 1;
        return result;
    }

    // Behind a number, or behind ": ", before which the name of a file may stand.
    Translation rest(QStringView text, int depth) {
        const qsizetype blank = text.indexOf(u' ');
        const qsizetype colon = text.indexOf(u": ");
        const bool counts = blank > 0 && std::all_of(text.begin(), text.begin() + blank,
                                                     [](QChar c) { return c.isDigit(); });
        const qsizetype begin = counts ? blank + 1 : colon + 2;
        if (!counts && colon < 0)
            return {};
        Translation result = inParts(text.sliced(begin), depth + 1);
        result.text.prepend(text.first(begin));
        return result;
    }

    qint64 m_work = mostWork;
};

}  // namespace

QString translatedMessage(const QString& english) {
    return isEnglish() ? english : Translator().inParts(english).text;
}

QString translatedMessage(const std::string& utf8) {
    return translatedMessage(QString::fromStdString(utf8));
}

QString translatedMessage(const char* utf8) {
    return translatedMessage(QString::fromUtf8(utf8));
}

QStringList translatedMessages(const std::vector<std::string>& utf8) {
    QStringList texts;
    for (const std::string& text : utf8)
        texts += translatedMessage(text);
    return texts;
}

QString translatedReport(const std::string& utf8) {
    const QString english = QString::fromStdString(utf8);
    return isEnglish() ? english : Translator().ofLines(english);
}

}  // namespace tarvo::window
