#include "core/databasecopy.h"

#include "core/error.h"
#include "core/utf8.h"
#include "qrb/error.h"

#include <algorithm>
#include <list>
#include <optional>
#include <utility>

namespace tarvo::core {

namespace {

using qrb::pointcloud::DataType;
using qrb::pointcloud::PointAttribute;

// Values that are read and written at a time, of all attributes together.
constexpr std::size_t batchValues = 4 << 20;
constexpr std::size_t largestBatch = 1 << 16;
constexpr const char* coordinates = "tarvo.xyz";

// Points between two queries: a buffer for each attribute, bound to both.
class Batch {
public:
    Batch(const std::vector<PointAttribute>& attributes, qrb::pointcloud::QuerySelect& from,
          qrb::pointcloud::QueryInsert& to) {
        std::size_t values = 0;
        for (const PointAttribute& attribute : attributes)
            values += attribute.length;
        m_size = std::clamp<std::size_t>(batchValues / std::max<std::size_t>(values, 1), 1,
                                         largestBatch);
        for (const PointAttribute& attribute : attributes) {
            // Single precision would lose digits of ranges that are large for their resolution.
            const DataType derived = attribute.dataType();
            const DataType type = derived == DataType::SINGLE ? DataType::DOUBLE : derived;
            const std::size_t stride = dataTypeSize(type) * attribute.length;
            auto& [ignored, buffer] = m_buffers.emplace_back(
                stride, std::vector<std::uint64_t>((m_size * stride + 7) / 8));
            from.bind(attribute.name, type, buffer.data(), static_cast<std::int32_t>(stride));
            to.bind(attribute.name, type, buffer.data(), static_cast<std::int32_t>(stride));
        }
    }
    std::uint32_t size() const { return static_cast<std::uint32_t>(m_size); }
    // Rows are ascending.
    void keep(const std::vector<std::uint32_t>& rows) {
        for (auto& [stride, buffer] : m_buffers) {
            auto* const bytes = reinterpret_cast<std::uint8_t*>(buffer.data());
            copyRows(bytes, bytes, stride, rows);
        }
    }

private:
    std::size_t m_size = 0;
    std::list<std::pair<std::size_t, std::vector<std::uint64_t>>> m_buffers;  // with their strides
};

// The points of a batch that a shape leaves.
class ShapedRows {
public:
    ShapedRows(Shaper& shaper, std::size_t size, qrb::pointcloud::QuerySelect& from)
        : m_shaper(shaper) {
        if (!shaper.shape().needsCoordinates())
            return;
        m_places.resize(3 * size);
        for (std::size_t axis = 0; axis < 3; ++axis)
            from.bind(coordinates + ("[" + std::to_string(axis) + "]"), DataType::DOUBLE,
                      m_places.data() + axis, 3 * sizeof(double));
    }
    const std::vector<std::uint32_t>& of(std::uint32_t count) {
        m_shaper.pick(count, m_places.data(), m_rows);
        return m_rows;
    }

private:
    Shaper& m_shaper;
    std::vector<double> m_places;  // x, y, z point by point
    std::vector<std::uint32_t> m_rows;
};

// The definitions that the source has of the selected attributes.
std::vector<PointAttribute> definitions(const qrb::Pointcloud& source, const Selection& selection) {
    std::vector<PointAttribute> result;
    for (const std::string& name : selection.attributes)
        result.push_back(definitionForCopy(source, name));
    return result;
}

void addAttributes(qrb::Pointcloud& target, const std::vector<PointAttribute>& attributes) {
    auto& present = target.pointAttributes();
    const std::string primary = present.primaryAttributeName();
    const auto found = std::find_if(attributes.begin(), attributes.end(),
                                    [&](const auto& each) { return each.name == primary; });
    if (found == attributes.end())
        throw qrb::ErrorImpl(0,
                             "The primary attribute \"" + primary + "\" is not among the copied.",
                             "Copy it, too, or choose another primary attribute for the copy.");
    for (const PointAttribute& attribute : attributes)
        if (!present.exists(attribute.name))
            present.add(attribute);
}

void requireCoordinates(const qrb::Pointcloud& source) {
    if (!source.pointAttributes().exists(coordinates) ||
        source.pointAttributes().get(coordinates).length < 3)
        throw Failure("The database has no coordinates \"" + std::string(coordinates) +
                          "\" by which its points could be chosen.",
                      "Leave --bounds, --polygon and --thin out.");
}

}  // namespace

PointAttribute definitionForCopy(const qrb::Pointcloud& source, const std::string& name) {
    return definitionForCopy(source.pointAttributes().get(name));
}

PointAttribute definitionForCopy(PointAttribute attribute) {
    for (std::string* const text :
         {&attribute.title, &attribute.tags, &attribute.description, &attribute.unitSymbol,
          &attribute.namedValues, &attribute.lodSettings})
        *text = validUtf8(*text);
    return attribute;
}

std::uint64_t copyDatabase(const qrb::Pointcloud& source, qrb::Pointcloud& target,
                           const Selection& selection, const qrb::pointcloud::Progress& progress) {
    const std::vector<PointAttribute> attributes = definitions(source, selection);
    addAttributes(target, attributes);
    for (const std::string& name : selection.metaData)
        target.metaData().set(validUtf8(name), validUtf8(source.metaData().get(name)));

    std::string filter = selection.filter;
    if (selection.shaper && selection.shaper->shape().needsCoordinates()) {
        requireCoordinates(source);
        filter = selection.shaper->shape().narrowed(filter, coordinates);
    }
    auto from = selection.nodes ? source.select(*selection.nodes, filter) : source.select(filter);
    auto to = target.insert();
    Batch batch(attributes, from, to);
    std::optional<ShapedRows> rows;
    if (selection.shaper)
        rows.emplace(*selection.shaper, batch.size(), from);
    std::uint64_t copied = 0;
    while (std::uint32_t count = from.next(batch.size())) {
        if (rows) {
            const std::vector<std::uint32_t>& kept = rows->of(count);
            batch.keep(kept);
            count = static_cast<std::uint32_t>(kept.size());
        }
        if (count > 0 && to.next(count) != count)
            throw qrb::ErrorImpl(0, "The new database took fewer points than it was given.", {});
        copied += count;
        if (progress)
            progress(static_cast<int>(from.progress()));
    }
    to.close();
    return copied;
}

}  // namespace tarvo::core
