// The plain record that describes one point attribute, and the types of its values.
#pragma once

#include "qrb/qrb.h"

#include <cstdint>
#include <limits>
#include <memory>
#include <string>

namespace tarvo::qrb::pointcloud {

enum class DataType : std::uint32_t {
    NONE = 0,
    UINT8 = 1,
    INT8 = 2,
    UINT16 = 3,
    INT16 = 4,
    UINT32 = 5,
    INT32 = 6,
    UINT64 = 7,
    INT64 = 8,
    SINGLE = 9,
    DOUBLE = 10
};

// The enumerator's name, "unknown" for any other value.
const char* dataTypeName(DataType type);
// Bytes of one value; 0 for NONE and unknown types.
std::size_t dataTypeSize(DataType type);

// Owns a library attribute object while a record is transferred; holds it locked.
class AttributeHandle;

struct PointAttribute {
    enum StorageClass : std::uint8_t { CONSTANT = 1, VARIABLE = 2, DYNAMIC = 3 };
    enum CompressionOptions : std::uint8_t { DEFAULT = 0, DELTA = 1, SHUFFLE = 2, DELTA_SHUFFLE = 3 };

    std::string name = "none";
    std::string title = "none";
    std::string tags;
    std::string description;
    std::string unitSymbol;
    std::uint32_t length = 0;
    double resolution = 1.0;
    double minimumValue = 0.0;
    double maximumValue = 0.0;
    double defaultValue = 0.0;
    double invalidValue = std::numeric_limits<double>::quiet_NaN();  // NaN: none
    std::string namedValues;
    std::uint8_t storageClass = CONSTANT;
    std::uint8_t compressionOptions = DEFAULT;
    std::string lodSettings = "default";
    double scaleFactor = 1.0;

    // The type that the library derives from the record. Throws Error.
    DataType dataType() const;

    // The library's JSON text of the record, and the record from such a text. Throw Error.
    std::string toJson() const;
    void fromJson(const std::string& json);

    // "constant", "variable", "dynamic" or "unknown".
    static const char* storageClassName(std::uint8_t storageClass);
    // "default", "delta", "shuffle", "delta+shuffle" or "unknown".
    static const char* compressionOptionsName(std::uint8_t options);
};

// A library attribute object: made and locked on construction, unlocked and deleted at the end.
class AttributeHandle {
public:
    AttributeHandle();                                        // the library's defaults
    explicit AttributeHandle(const PointAttribute& attribute);  // a copy of the record
    ~AttributeHandle();
    AttributeHandle(const AttributeHandle&) = delete;
    AttributeHandle& operator=(const AttributeHandle&) = delete;

    qrb_point_attribute* get() const { return m_handle; }
    void write(const PointAttribute& attribute);
    PointAttribute read() const;

private:
    qrb_point_attribute* m_handle = nullptr;
};

}  // namespace tarvo::qrb::pointcloud
