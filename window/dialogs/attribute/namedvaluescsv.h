// CSV files of the named values of a point attribute.
#pragma once

#include "core/namedvalues.h"

#include <QByteArray>
#include <vector>

namespace tarvo::window {

// UTF-8, the header "value,name", quotes by RFC 4180, lines end with CR LF. Lines that aren't
// understood are left out.
QByteArray namedValuesToCsv(const std::vector<core::NamedValue>& values);
// The header may be missing. Throws std::runtime_error that begins with the line ("Line 3: ...").
std::vector<core::NamedValue> namedValuesFromCsv(const QByteArray& csv);

}  // namespace tarvo::window
