#include "exchange/las/dimensions.h"

#include "exchange/table/names.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <string_view>

namespace tarvo::exchange::las {

namespace {

class Builder {
public:
    // A number as it is stored.
    Dimension& plain(const char* attribute, DataType type, std::uint32_t offset,
                     const char* title = "") {
        Dimension dimension;
        dimension.column.attribute = attribute;
        dimension.column.type = type;
        dimension.column.title = title;
        dimension.field.raw = type;
        dimension.field.offset = offset;
        setLimits(dimension.column, type);
        m_dimensions.push_back(dimension);
        return m_dimensions.back();
    }
    // Some bits of a byte.
    void bits(const char* attribute, std::uint32_t offset, std::uint8_t shift, std::uint8_t width,
              const char* title = "") {
        Dimension& dimension = plain(attribute, DataType::UINT8, offset, title);
        dimension.field.kind = Field::Kind::Bits;
        dimension.field.shift = shift;
        dimension.field.mask = static_cast<std::uint8_t>((1u << width) - 1);
        dimension.column.highest = dimension.field.mask;
    }
    // A whole number that stands for raw * scale + offset.
    Dimension& affine(const char* attribute, DataType raw, std::uint32_t offset, double scale,
                      double shift, const char* title = "") {
        Dimension& dimension = plain(attribute, DataType::DOUBLE, offset, title);
        dimension.field.kind = Field::Kind::Affine;
        dimension.field.raw = raw;
        dimension.field.affine = Affine(scale, shift);
        Column limits;
        setLimits(limits, raw);
        if (limits.lowest <= limits.highest) {
            const double first = dimension.field.affine(static_cast<std::int64_t>(limits.lowest));
            const double last = dimension.field.affine(static_cast<std::int64_t>(limits.highest));
            dimension.column.lowest = std::min(first, last);
            dimension.column.highest = std::max(first, last);
        }
        return dimension;
    }
    std::vector<Dimension> take() { return std::move(m_dimensions); }

private:
    // Of whole numbers of at most 32 bits.
    static void setLimits(Column& column, DataType type) {
        const std::size_t bits = 8 * dataTypeSize(type);
        if (type == DataType::UINT8 || type == DataType::UINT16 || type == DataType::UINT32) {
            column.highest = std::ldexp(1.0, static_cast<int>(bits)) - 1;
        } else if (type == DataType::INT8 || type == DataType::INT16 || type == DataType::INT32) {
            column.highest = std::ldexp(1.0, static_cast<int>(bits) - 1) - 1;
            column.lowest = -column.highest - 1;
        }
    }

    std::vector<Dimension> m_dimensions;
};

void addCoordinates(Builder& builder, const Header& header) {
    for (std::uint32_t i = 0; i < 3; ++i) {
        Column& column =
            builder.affine("tarvo.xyz", DataType::INT32, 4 * i, header.scale[i], header.offset[i])
                .column;
        column.element = i;
        column.length = 3;
    }
    builder.plain("tarvo.intensity", DataType::UINT16, 12);
}

// Point formats 0 to 5.
void addOldFields(Builder& builder) {
    builder.bits("tarvo.target_index", 14, 0, 3);
    builder.bits("tarvo.target_count", 14, 3, 3);
    builder.bits("tarvo.scan_direction", 14, 6, 1);
    builder.bits("las.edge_of_flight_line", 14, 7, 1, "Edge of Flight Line");
    builder.bits("tarvo.class", 15, 0, 5);
    builder.bits("las.synthetic", 15, 5, 1, "Synthetic");
    builder.bits("las.key_point", 15, 6, 1, "Key Point");
    builder.bits("las.withheld", 15, 7, 1, "Withheld");
    builder.plain("tarvo.scan_angle", DataType::INT8, 16);
    builder.plain("las.user_data", DataType::UINT8, 17, "User Data");
    builder.plain("las.point_source_id", DataType::UINT16, 18, "Point Source ID");
}

// Point formats 6 to 10.
void addNewFields(Builder& builder) {
    builder.bits("tarvo.target_index", 14, 0, 4);
    builder.bits("tarvo.target_count", 14, 4, 4);
    builder.bits("las.synthetic", 15, 0, 1, "Synthetic");
    builder.bits("las.key_point", 15, 1, 1, "Key Point");
    builder.bits("las.withheld", 15, 2, 1, "Withheld");
    builder.bits("las.overlap", 15, 3, 1, "Overlap");
    builder.bits("las.scanner_channel", 15, 4, 2, "Scanner Channel");
    builder.bits("tarvo.scan_direction", 15, 6, 1);
    builder.bits("las.edge_of_flight_line", 15, 7, 1, "Edge of Flight Line");
    builder.plain("tarvo.class", DataType::UINT8, 16);
    builder.plain("las.user_data", DataType::UINT8, 17, "User Data");
    builder.affine("tarvo.scan_angle", DataType::INT16, 18, 0.006, 0);
    builder.plain("las.point_source_id", DataType::UINT16, 20, "Point Source ID");
    builder.plain("tarvo.timestamp", DataType::DOUBLE, 22);
}

void addColour(Builder& builder, std::uint32_t offset) {
    for (std::uint32_t i = 0; i < 3; ++i) {
        Column& column = builder.plain("tarvo.rgba", DataType::UINT16, offset + 2 * i).column;
        column.element = i;
        column.length = 4;
    }
}

void addWavePacket(Builder& builder, std::uint32_t offset) {
    builder.plain("las.wave_descriptor_index", DataType::UINT8, offset,
                  "Wave Packet Descriptor Index");
    builder.plain("las.wave_offset", DataType::UINT64, offset + 1, "Wave Packet Offset");
    builder.plain("las.wave_size", DataType::UINT32, offset + 9, "Wave Packet Size");
    builder.plain("las.wave_return_location", DataType::SINGLE, offset + 13,
                  "Return Point Waveform Location");
    builder.plain("las.wave_x_t", DataType::SINGLE, offset + 17, "Parametric dx");
    builder.plain("las.wave_y_t", DataType::SINGLE, offset + 21, "Parametric dy");
    builder.plain("las.wave_z_t", DataType::SINGLE, offset + 25, "Parametric dz");
}

void addExtra(Builder& builder, const std::vector<ExtraDimension>& extra) {
    std::set<std::string> taken;
    for (const ExtraDimension& dimension : extra) {
        const std::string name = uniqueName(
            "las.extra." + safeName(dimension.name.empty() ? "undocumented" : dimension.name),
            taken);
        for (std::uint32_t i = 0; i < dimension.length; ++i) {
            const auto size = static_cast<std::uint32_t>(dataTypeSize(dimension.type));
            const std::uint32_t offset = dimension.offset + i * size;
            const std::size_t axis = i < 3 ? i : 0;
            Column& column = dimension.scaled
                                 ? builder
                                       .affine(name.c_str(), dimension.type, offset,
                                               dimension.scale[axis], dimension.shift[axis])
                                       .column
                                 : builder.plain(name.c_str(), dimension.type, offset).column;
            column.element = i;
            column.length = dimension.length;
            column.title = validUtf8(dimension.name.empty() ? "Undocumented" : dimension.name);
            column.description = validUtf8(dimension.description);
            column.hasInvalid = dimension.hasNoData;
            column.invalidValue = dimension.scaled
                                      ? dimension.noData * dimension.scale[0] + dimension.shift[0]
                                      : dimension.noData;
        }
    }
}

// The fields of the format that have no title of their own.
void nameColumns(std::vector<Dimension>& dimensions) {
    static const std::map<std::string_view, std::vector<const char*>> names = {
        {"tarvo.xyz", {"X", "Y", "Z"}},
        {"tarvo.intensity", {"Intensity"}},
        {"tarvo.target_index", {"Return Number"}},
        {"tarvo.target_count", {"Number of Returns"}},
        {"tarvo.scan_direction", {"Scan Direction Flag"}},
        {"tarvo.class", {"Classification"}},
        {"tarvo.scan_angle", {"Scan Angle"}},
        {"tarvo.timestamp", {"GPS Time"}},
        {"tarvo.rgba", {"Red", "Green", "Blue"}},
        {"tarvo.nir", {"NIR"}}};
    for (Dimension& dimension : dimensions) {
        Column& column = dimension.column;
        column.name = column.title.empty() ? names.at(column.attribute)[column.element]
                      : column.length == 1
                          ? column.title
                          : column.title + "[" + std::to_string(column.element) + "]";
    }
}

template <typename Raw, typename Value, typename Convert>
void takeEach(const std::uint8_t* from, std::size_t recordLength, std::size_t count, void* values,
              Convert convert) {
    auto* const to = static_cast<Value*>(values);
    for (std::size_t i = 0; i < count; ++i, from += recordLength) {
        Raw raw;
        __builtin_memcpy(&raw, from, sizeof raw);
        to[i] = convert(raw);
    }
}

template <typename Raw>
void takePlain(const std::uint8_t* from, std::size_t recordLength, std::size_t count,
               void* values) {
    takeEach<Raw, Raw>(from, recordLength, count, values, [](Raw raw) { return raw; });
}

template <typename Raw>
void takeAffine(const Affine& affine, const std::uint8_t* from, std::size_t recordLength,
                std::size_t count, void* values) {
    takeEach<Raw, double>(from, recordLength, count, values, [&affine](Raw raw) {
        if constexpr (std::is_floating_point_v<Raw>) {
            return static_cast<double>(raw) * affine.scale() + affine.offset();
        } else if constexpr (std::is_same_v<Raw, std::uint64_t>) {
            return raw >> 63 ? static_cast<double>(raw) * affine.scale() + affine.offset()
                             : affine(static_cast<std::int64_t>(raw));
        } else {
            return affine(raw);
        }
    });
}

}  // namespace

std::vector<Dimension> dimensions(const Header& header, const std::vector<ExtraDimension>& extra) {
    Builder builder;
    addCoordinates(builder, header);
    const int format = header.pointFormat;
    if (format <= 5) {
        addOldFields(builder);
        const bool timed = format == 1 || format >= 3;
        if (timed) {
            builder.plain("tarvo.timestamp", DataType::DOUBLE, 20);
        }
        if (format == 2 || format == 3 || format == 5) {
            addColour(builder, timed ? 28 : 20);
        }
    } else {
        addNewFields(builder);
        if (format == 7 || format == 8 || format == 10) {
            addColour(builder, 30);
        }
        if (format == 8 || format == 10) {
            builder.plain("tarvo.nir", DataType::UINT16, 36);
        }
    }
    if (format == 4 || format == 5 || format >= 9) {
        addWavePacket(builder, pointSize(format) - 29u);
    }
    addExtra(builder, extra);
    std::vector<Dimension> dimensions = builder.take();
    nameColumns(dimensions);
    return dimensions;
}

void decode(const Field& field, const std::uint8_t* records, std::size_t recordLength,
            std::size_t count, void* values) {
    const std::uint8_t* const from = records + field.offset;
    if (field.kind == Field::Kind::Bits) {
        takeEach<std::uint8_t, std::uint8_t>(
            from, recordLength, count, values,
            [shift = field.shift, mask = field.mask](std::uint8_t byte) {
                return static_cast<std::uint8_t>((byte >> shift) & mask);
            });
        return;
    }
    const auto take = [&]<typename Raw>(Raw) {
        if (field.kind == Field::Kind::Affine) {
            takeAffine<Raw>(field.affine, from, recordLength, count, values);
        } else {
            takePlain<Raw>(from, recordLength, count, values);
        }
    };
    switch (field.raw) {
        case DataType::NONE:
        case DataType::UINT8:
            return take(std::uint8_t{});
        case DataType::INT8:
            return take(std::int8_t{});
        case DataType::UINT16:
            return take(std::uint16_t{});
        case DataType::INT16:
            return take(std::int16_t{});
        case DataType::UINT32:
            return take(std::uint32_t{});
        case DataType::INT32:
            return take(std::int32_t{});
        case DataType::UINT64:
            return take(std::uint64_t{});
        case DataType::INT64:
            return take(std::int64_t{});
        case DataType::SINGLE:
            return take(float{});
        case DataType::DOUBLE:
            return take(double{});
    }
}

}  // namespace tarvo::exchange::las
