#include "exchange/database/source.h"

#include <algorithm>
#include <cmath>

namespace tarvo::exchange::database {

namespace {

// Of all columns together.
constexpr std::size_t valuesAtOnce = 8u << 20;

}  // namespace

DatabaseSource::DatabaseSource(const qrb::Pointcloud& database, std::string fileName,
                               core::PointSelection selection,
                               const std::vector<std::string>& attributes)
    : m_database(database), m_fileName(std::move(fileName)), m_selection(std::move(selection)) {
    for (const std::string& name : attributes) {
        addColumns(database.pointAttributes().get(name));
    }
    m_largestBatch = static_cast<std::uint32_t>(std::clamp<std::size_t>(
        valuesAtOnce / std::max<std::size_t>(m_columns.size(), 1), 1, batchSize));
    for (const Column& column : m_columns) {
        m_values.emplace_back(std::size_t{m_largestBatch} * dataTypeSize(column.type));
    }
    rewind();
}

void DatabaseSource::addColumns(const qrb::pointcloud::PointAttribute& definition) {
    std::uint32_t element = 0;
    for (core::PointColumn& format : core::columnsOf(definition)) {
        Column column;
        column.attribute = definition.name;
        column.element = element++;
        column.length = definition.length;
        column.name = format.name;
        column.type = format.format.narrowType();
        column.title = definition.title;
        column.description = definition.description;
        column.hasInvalid = !std::isnan(definition.invalidValue);
        column.invalidValue = column.hasInvalid ? definition.invalidValue : 0;
        column.lowest = definition.minimumValue;
        column.highest = definition.maximumValue;
        column.resolution = definition.resolution;
        column.gridBegin = definition.minimumValue;
        m_columns.push_back(std::move(column));
        m_formats.push_back(std::move(format));
    }
}

void DatabaseSource::rewind() {
    m_query = m_selection.query(m_database);
    for (std::size_t i = 0; i < m_columns.size(); ++i) {
        const DataType type = m_columns[i].type;
        m_query.bind(m_formats[i].name, type, m_values[i].data(),
                     static_cast<std::int32_t>(dataTypeSize(type)));
    }
}

Origin DatabaseSource::origin() const {
    Origin origin;
    origin.system = core::referenceSystem(m_database.metaData());
    origin.timeBase = core::timeBase(m_database.metaData());
    return origin;
}

std::vector<std::pair<std::string, std::string>> DatabaseSource::metaData() const {
    std::vector<std::pair<std::string, std::string>> items;
    for (const std::string& name : m_database.metaData().list()) {
        if (name.starts_with("las.")) {
            items.emplace_back(name, m_database.metaData().get(name));
        }
    }
    return items;
}

}  // namespace tarvo::exchange::database
