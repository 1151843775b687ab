#include "window/panels/valuenames.h"

#include "core/namedvalues.h"
#include "core/valueformat.h"
#include "window/common/textformat.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <optional>

namespace tarvo::window {

namespace {

using qrb::pointcloud::DataType;

// The number in 8 bytes of the type; nothing where that would be another one.
std::optional<std::uint64_t> bitsOf(const core::NamedNumber& named, DataType type) {
    const double number = named.value;
    if (type == DataType::DOUBLE)
        return std::bit_cast<std::uint64_t>(number);
    const bool isSigned = type == DataType::INT64;
    if (named.magnitude != 0) {
        const bool isNegative = number < 0;
        const std::uint64_t largest = !isSigned    ? isNegative ? 0 : UINT64_MAX
                                      : isNegative ? std::uint64_t{1} << 63
                                                   : INT64_MAX;
        if (named.magnitude > largest)
            return std::nullopt;
        return isNegative ? std::uint64_t{0} - named.magnitude : named.magnitude;
    }
    const double most = std::ldexp(1.0, isSigned ? 63 : 64);
    if (std::trunc(number) != number || !(number < most) || number < (isSigned ? -most : 0.0))
        return std::nullopt;
    return isSigned ? static_cast<std::uint64_t>(static_cast<std::int64_t>(number))
                    : static_cast<std::uint64_t>(number);
}

QHash<QString, QString> namesOf(const qrb::pointcloud::PointAttribute& attribute) {
    QHash<QString, QString> names;
    const core::ValueFormat format(attribute);
    for (const core::NamedValue& value : core::readNamedValues(attribute.namedValues)) {
        const auto number = value.understood ? core::namedNumber(value.value) : std::nullopt;
        const auto bits = number ? bitsOf(*number, format.type()) : std::nullopt;
        if (bits)
            names[QString::fromStdString(format.text(*bits))] =
                oneLine(QString::fromStdString(value.name).trimmed());
    }
    return names;
}

}  // namespace

ValueNames::ValueNames(const QStringList& columns,
                       const std::vector<qrb::pointcloud::PointAttribute>& attributes) {
    QHash<QString, QHash<QString, QString>> named;
    for (const auto& attribute : attributes)
        if (!attribute.namedValues.empty())
            named[QString::fromStdString(attribute.name)] = namesOf(attribute);
    for (const QString& column : columns)
        m_names.push_back(named.value(column.section('[', 0, 0)));
}

bool ValueNames::any(int column) const {
    return !m_names[static_cast<std::size_t>(column)].isEmpty();
}

QString ValueNames::of(int column, const QString& value) const {
    return m_names[static_cast<std::size_t>(column)].value(value);
}

QString ValueNames::with(int column, const QString& value) const {
    const QString name = of(column, value);
    return name.isEmpty() ? value : value + ' ' + name;
}

}  // namespace tarvo::window
