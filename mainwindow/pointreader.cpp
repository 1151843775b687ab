#include "mainwindow/pointreader.h"

#include "common/textformat.h"

#include <algorithm>
#include <cstring>

namespace {

namespace pointcloud = tarvo::qrb::pointcloud;

template <typename Value>
Value valueAt(const void* bytes) {
    Value value;
    std::memcpy(&value, bytes, sizeof value);
    return value;
}

}  // namespace

pointcloud::QuerySelect PointReader::Selection::query(
    const tarvo::qrb::Pointcloud& database) const {
    return nodes ? database.select(*nodes, filter) : database.select(filter);
}

PointReader::PointReader(const tarvo::qrb::Pointcloud& database, const Selection& selection)
    : m_query(selection.query(database)) {
    const auto names = database.pointAttributes().list();
    // The query keeps pointers into the bindings' buffers: those may be moved, never resized.
    m_bindings.reserve(names.size());
    for (const std::string& name : names)
        bind(database.pointAttributes().get(name));
}

void PointReader::bind(const pointcloud::PointAttribute& attribute) {
    Binding binding{displayType(attribute),
                    std::min(attribute.length, maximumElements),
                    tarvo::common::decimalsOfResolution(attribute.resolution),
                    {}};
    binding.buffer.resize(std::size_t{pageSize} * binding.length);
    const auto stride = static_cast<std::int32_t>(sizeof(std::uint64_t) * binding.length);
    const QStringList elements =
        elementNames(QString::fromStdString(attribute.name), attribute.length);
    for (std::uint32_t i = 0; i < binding.length; ++i) {
        m_query.bind(elements[i].toStdString(), binding.type, binding.buffer.data() + i, stride);
        m_cells.push_back({m_bindings.size(), i});
    }
    m_columns += elements;
    m_bindings.push_back(std::move(binding));
}

std::uint32_t PointReader::next() {
    return m_query.next(pageSize);
}

QString PointReader::text(std::uint32_t row, int column) const {
    const Cell& cell = m_cells[static_cast<std::size_t>(column)];
    const Binding& binding = m_bindings[cell.binding];
    return valueText(&binding.buffer[std::size_t{row} * binding.length + cell.element],
                     binding.type, binding.decimals);
}

pointcloud::DataType displayType(const pointcloud::PointAttribute& attribute) {
    if (attribute.resolution != 1.0)
        return pointcloud::DataType::DOUBLE;
    return attribute.minimumValue >= 0.0 ? pointcloud::DataType::UINT64
                                         : pointcloud::DataType::INT64;
}

QStringList elementNames(const QString& name, std::uint32_t length, std::uint32_t maximum) {
    if (length == 1)
        return {name};
    QStringList names;
    for (std::uint32_t i = 0; i < std::min(length, maximum); ++i)
        names += QString("%1[%2]").arg(name, QString::number(i));
    return names;
}

QString valueText(const void* value, pointcloud::DataType type, int decimals) {
    switch (type) {
        case pointcloud::DataType::UINT64:
            return QString::number(valueAt<quint64>(value));
        case pointcloud::DataType::INT64:
            return QString::number(valueAt<qint64>(value));
        case pointcloud::DataType::DOUBLE:
            return QString::number(valueAt<double>(value), 'f', decimals);
        default:
            return {};
    }
}
