// The named values of a point attribute: lines "VALUE=NAME", and CSV files of them.
#pragma once

#include "qrb/pointattribute.h"

#include <QByteArray>
#include <QString>
#include <string>
#include <vector>

namespace tarvo::window {

struct NamedValue {
    QString value;
    QString name;
    // As it stood in the definition; empty: new or changed.
    std::string line = {};
    // False: the line is no "VALUE=NAME" and is kept as it stands; name shows it.
    bool understood = true;
};

// The lines of a definition; lines of nothing but blanks, which say nothing, are left out.
std::vector<NamedValue> readNamedValues(const std::string& text);
// The definition's text. Lines that didn't change are written as they stood.
std::string writeNamedValues(const std::vector<NamedValue>& values);

struct NamedValueFinding {
    std::size_t row = 0;
    bool error = true;  // else the value only has no effect now
    QString text;
};
// What can't be kept, or has no effect by the attribute's range and resolution. attribute: may be
// null; valid.
std::vector<NamedValueFinding> checkNamedValues(const std::vector<NamedValue>& values,
                                                const qrb::pointcloud::PointAttribute* attribute);

// By number; lines that aren't understood stay behind the others.
void sortNamedValues(std::vector<NamedValue>& values);

// UTF-8, the header "value,name", quotes by RFC 4180, lines end with CR LF. Lines that aren't
// understood are left out.
QByteArray namedValuesToCsv(const std::vector<NamedValue>& values);
// The header may be missing. Throws std::runtime_error that begins with the line ("Line 3: ...").
std::vector<NamedValue> namedValuesFromCsv(const QByteArray& csv);

}  // namespace tarvo::window
