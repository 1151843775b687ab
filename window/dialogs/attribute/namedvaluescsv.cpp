#include "window/dialogs/attribute/namedvaluescsv.h"

#include "window/dialogs/attribute/numbertext.h"

#include <QSet>
#include <QString>
#include <QStringDecoder>
#include <QStringList>
#include <optional>
#include <stdexcept>

namespace tarvo::window {

namespace {

using core::NamedValue;

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
            fail(QObject::tr("expected a comma or the end of the line behind a quoted field."));
        ++m_nextLine;
        return fields;
    }

    [[noreturn]] void fail(const QString& what) const {
        throw std::runtime_error(
            QObject::tr("Line %0: %1").arg(QString::number(m_line), what).toStdString());
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
                    fail(
                        QObject::tr("a quote stands within a field that does not begin with one."));
                result += m_text[m_at++];
            }
            return result;
        }
        for (;;) {
            if (atEnd())
                fail(QObject::tr("a quoted field does not end."));
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

QByteArray namedValuesToCsv(const std::vector<NamedValue>& values) {
    QString csv = "value,name\r\n";
    for (const NamedValue& each : values)
        if (each.understood)
            csv += csvField(QString::fromStdString(each.value)) + ',' +
                   csvField(QString::fromStdString(each.name)) + "\r\n";
    return csv.toUtf8();
}

std::vector<NamedValue> namedValuesFromCsv(const QByteArray& csv) {
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder(csv);
    if (decoder.hasError())
        throw std::runtime_error(QObject::tr("The file is no UTF-8 text.").toStdString());
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
                QObject::tr("expected a value and a name, found %0 fields.").arg(fields.size()));
        const std::optional<double> value = readNumber(fields[0]);
        if (!value)
            reader.fail(QObject::tr("\"%0\" is no number.").arg(fields[0]));
        if (hasLineBreak(fields[1]))
            reader.fail(QObject::tr("a name can't hold a line break."));
        if (known.contains(*value))
            reader.fail(QObject::tr("%0 has a name already.").arg(fields[0].trimmed()));
        known.insert(*value);
        QString digits = fields[0].trimmed();
        if (digits.startsWith('+'))
            digits.remove(0, 1);
        values.push_back({digits.toStdString(), fields[1].trimmed().toStdString()});
    }
    return values;
}

}  // namespace tarvo::window
