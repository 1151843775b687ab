#include "window/dialogs/attribute/namedvalues.h"

#include "window/dialogs/attribute/attributechecks.h"
#include "window/dialogs/attribute/numbertext.h"

#include <QSet>
#include <QStringDecoder>
#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace tarvo::window {

namespace {

// The library reads no plus sign.
std::optional<double> namedNumber(const QString& text) {
    return text.trimmed().startsWith('+') ? std::nullopt : readNumber(text);
}

NamedValue readLine(const std::string& line) {
    const QString text = QString::fromStdString(line);
    const qsizetype equals = text.indexOf('=');
    const QString value = text.left(std::max<qsizetype>(equals, 0)).trimmed();
    if (equals < 0 || !namedNumber(value))
        return {{}, text.trimmed(), line, false};
    return {value, text.mid(equals + 1).trimmed(), line, true};
}

bool hasLineBreak(const QString& text) {
    return text.contains('\n') || text.contains('\r');
}

// The records of a CSV text, each with the line on which it begins.
class CsvReader {
public:
    explicit CsvReader(const QString& text) : m_text(text) {}

    bool atEnd() const { return m_at == m_text.size(); }
    int line() const { return m_line; }

    QStringList record() {
        m_line = m_nextLine;
        QStringList fields{field()};
        while (take(','))
            fields += field();
        take('\r');
        if (!atEnd() && !take('\n'))
            fail("expected a comma or the end of the line behind a quoted field.");
        ++m_nextLine;
        return fields;
    }

    [[noreturn]] void fail(const QString& what) const {
        throw std::runtime_error(QString("Line %0: %1").arg(m_line).arg(what).toStdString());
    }

private:
    bool take(QChar c) {
        if (atEnd() || m_text[m_at] != c)
            return false;
        ++m_at;
        return true;
    }
    QString field() {
        QString result;
        if (!take('"')) {
            while (!atEnd() && m_text[m_at] != ',' && m_text[m_at] != '\n' &&
                   m_text[m_at] != '\r') {
                if (m_text[m_at] == '"')
                    fail("a quote stands within a field that does not begin with one.");
                result += m_text[m_at++];
            }
            return result;
        }
        for (;;) {
            if (atEnd())
                fail("a quoted field does not end.");
            if (take('"')) {
                if (!take('"'))
                    return result;
                result += '"';
                continue;
            }
            if (m_text[m_at] == '\n')
                ++m_nextLine;
            result += m_text[m_at++];
        }
    }

    const QString& m_text;
    qsizetype m_at = 0;
    int m_line = 1;
    int m_nextLine = 1;
};

QString csvField(const QString& text) {
    if (!text.contains('"') && !text.contains(',') && !hasLineBreak(text))
        return text;
    return '"' + QString(text).replace("\"", "\"\"") + '"';
}

}  // namespace

std::vector<NamedValue> readNamedValues(const std::string& text) {
    std::vector<NamedValue> values;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        const std::string line = text.substr(begin, end - begin);
        if (line.find_first_not_of(" \t\r") != std::string::npos)
            values.push_back(readLine(line));
        begin = end + 1;
    }
    return values;
}

std::string writeNamedValues(const std::vector<NamedValue>& values) {
    std::string text;
    for (const NamedValue& each : values) {
        if (!text.empty())
            text += '\n';
        text += each.line.empty() ? (each.value + '=' + each.name).toStdString() : each.line;
    }
    return text;
}

std::vector<NamedValueFinding> checkNamedValues(const std::vector<NamedValue>& values,
                                                const qrb::pointcloud::PointAttribute* attribute) {
    std::vector<NamedValueFinding> findings;
    QSet<double> known;
    for (std::size_t row = 0; row < values.size(); ++row) {
        const NamedValue& each = values[row];
        const auto add = [&](bool error, const QString& text) {
            findings.push_back({row, error, text});
        };
        if (!each.understood) {
            add(false,
                QString("\"%0\" is no \"VALUE=NAME\"; it is kept as it stands.").arg(each.name));
            continue;
        }
        const std::optional<double> value = namedNumber(each.value);
        if (!value) {
            add(true, each.value.trimmed().isEmpty()
                          ? QString("A value is missing.")
                          : QString("\"%0\" is no number.").arg(each.value));
            continue;
        }
        if (hasLineBreak(each.name))
            add(true, QString("The name of %0 holds a line break.").arg(each.value));
        else if (each.name.trimmed().isEmpty())
            add(false, QString("%0 has no name.").arg(each.value));
        const ValuePlace place = attribute ? placeOf(*value, *attribute) : ValuePlace::ON_GRID;
        if (place == ValuePlace::OUTSIDE)
            add(false, QString("%0 is out of the range.").arg(each.value));
        else if (place == ValuePlace::OFF_GRID)
            add(false, QString("%0 is no multiple of the resolution.").arg(each.value));
        const double stored =
            place == ValuePlace::OFF_GRID ? nearestValue(*value, *attribute) : *value;
        if (known.contains(stored))
            add(true, QString("%0 has a name already.").arg(each.value));
        known.insert(stored);
    }
    return findings;
}

void sortNamedValues(std::vector<NamedValue>& values) {
    std::stable_sort(values.begin(), values.end(), [](const NamedValue& a, const NamedValue& b) {
        const auto first = namedNumber(a.value);
        const auto second = namedNumber(b.value);
        return first && (!second || *first < *second);
    });
}

QByteArray namedValuesToCsv(const std::vector<NamedValue>& values) {
    QString csv = "value,name\r\n";
    for (const NamedValue& each : values)
        if (each.understood)
            csv += csvField(each.value) + ',' + csvField(each.name) + "\r\n";
    return csv.toUtf8();
}

std::vector<NamedValue> namedValuesFromCsv(const QByteArray& csv) {
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder(csv);
    if (decoder.hasError())
        throw std::runtime_error("The file is no UTF-8 text.");
    std::vector<NamedValue> values;
    QSet<double> known;
    CsvReader reader(text);
    while (!reader.atEnd()) {
        const QStringList fields = reader.record();
        if (fields == QStringList{QString()})
            continue;  // an empty line
        if (reader.line() == 1 && fields == QStringList{"value", "name"})
            continue;
        if (fields.size() != 2)
            reader.fail(
                QString("expected a value and a name, found %0 fields.").arg(fields.size()));
        const std::optional<double> value = readNumber(fields[0]);
        if (!value)
            reader.fail(QString("\"%0\" is no number.").arg(fields[0]));
        if (hasLineBreak(fields[1]))
            reader.fail("a name can't hold a line break.");
        if (known.contains(*value))
            reader.fail(QString("%0 has a name already.").arg(fields[0].trimmed()));
        known.insert(*value);
        QString digits = fields[0].trimmed();
        if (digits.startsWith('+'))
            digits.remove(0, 1);
        values.push_back({digits, fields[1].trimmed()});
    }
    return values;
}

}  // namespace tarvo::window
