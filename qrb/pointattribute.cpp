#include "qrb/pointattribute.h"

#include "qrb/error.h"
#include "qrb/loader.h"

namespace tarvo::qrb::pointcloud {

const char* dataTypeName(DataType type) {
    switch (type) {
        case DataType::NONE:
            return "NONE";
        case DataType::UINT8:
            return "UINT8";
        case DataType::INT8:
            return "INT8";
        case DataType::UINT16:
            return "UINT16";
        case DataType::INT16:
            return "INT16";
        case DataType::UINT32:
            return "UINT32";
        case DataType::INT32:
            return "INT32";
        case DataType::UINT64:
            return "UINT64";
        case DataType::INT64:
            return "INT64";
        case DataType::SINGLE:
            return "SINGLE";
        case DataType::DOUBLE:
            return "DOUBLE";
    }
    return "unknown";
}

std::size_t dataTypeSize(DataType type) {
    switch (type) {
        case DataType::NONE:
            return 0;
        case DataType::UINT8:
        case DataType::INT8:
            return 1;
        case DataType::UINT16:
        case DataType::INT16:
            return 2;
        case DataType::UINT32:
        case DataType::INT32:
        case DataType::SINGLE:
            return 4;
        case DataType::UINT64:
        case DataType::INT64:
        case DataType::DOUBLE:
            return 8;
    }
    return 0;
}

DataType PointAttribute::dataType() const {
    const AttributeHandle handle(*this);
    std::uint32_t type = 0;
    checkResult(functions().qrb_pointcloud_point_attribute_data_type_cf(handle.get(), &type));
    return static_cast<DataType>(type);
}

std::string PointAttribute::toJson() const {
    const AttributeHandle handle(*this);
    StringHolder json;
    checkResult(functions().qrb_pointcloud_point_attribute_json_save_cf(handle.get(), json.slot()));
    return json.str();
}

void PointAttribute::fromJson(const std::string& json) {
    AttributeHandle handle(*this);
    checkResult(
        functions().qrb_pointcloud_point_attribute_json_load_cf(handle.get(), json.c_str()));
    *this = handle.read();
}

const char* PointAttribute::storageClassName(std::uint8_t storageClass) {
    switch (storageClass) {
        case CONSTANT:
            return "constant";
        case VARIABLE:
            return "variable";
        case DYNAMIC:
            return "dynamic";
    }
    return "unknown";
}

const char* PointAttribute::compressionOptionsName(std::uint8_t options) {
    switch (options) {
        case DEFAULT:
            return "default";
        case DELTA:
            return "delta";
        case SHUFFLE:
            return "shuffle";
        case DELTA_SHUFFLE:
            return "delta+shuffle";
    }
    return "unknown";
}

AttributeHandle::AttributeHandle() {
    const FunctionTable& f = functions();
    checkResult(f.qrb_pointcloud_point_attribute_new_cf(&m_handle));
    try {
        checkResult(f.qrb_object_lock_cf(reinterpret_cast<qrb_object*>(m_handle)));
    } catch (...) {
        checkResult(f.qrb_pointcloud_point_attribute_delete_cf(m_handle), true);
        throw;
    }
}

AttributeHandle::AttributeHandle(const PointAttribute& attribute) : AttributeHandle() {
    write(attribute);
}

AttributeHandle::~AttributeHandle() {
    const FunctionTable& f = functions();
    checkResult(f.qrb_object_unlock_cf(reinterpret_cast<qrb_object*>(m_handle)), true);
    checkResult(f.qrb_pointcloud_point_attribute_delete_cf(m_handle), true);
}

void AttributeHandle::write(const PointAttribute& a) {
    const FunctionTable& f = functions();
    qrb_point_attribute* const h = m_handle;
    checkResult(f.qrb_pointcloud_point_attribute_set_name_cf(h, a.name.c_str()));
    checkResult(f.qrb_pointcloud_point_attribute_set_title_cf(h, a.title.c_str()));
    checkResult(f.qrb_pointcloud_point_attribute_set_tags_cf(h, a.tags.c_str()));
    checkResult(f.qrb_pointcloud_point_attribute_set_description_cf(h, a.description.c_str()));
    checkResult(f.qrb_pointcloud_point_attribute_set_unit_symbol_cf(h, a.unitSymbol.c_str()));
    checkResult(f.qrb_pointcloud_point_attribute_set_length_u32_cf(h, a.length));
    checkResult(f.qrb_pointcloud_point_attribute_set_resolution_cf(h, a.resolution));
    checkResult(f.qrb_pointcloud_point_attribute_set_minimum_value_cf(h, a.minimumValue));
    checkResult(f.qrb_pointcloud_point_attribute_set_maximum_value_cf(h, a.maximumValue));
    checkResult(f.qrb_pointcloud_point_attribute_set_default_value_cf(h, a.defaultValue));
    checkResult(f.qrb_pointcloud_point_attribute_set_invalid_value_cf(h, a.invalidValue));
    checkResult(f.qrb_pointcloud_point_attribute_set_named_values_cf(h, a.namedValues.c_str()));
    checkResult(f.qrb_pointcloud_point_attribute_set_storage_class_cf(h, a.storageClass));
    checkResult(
        f.qrb_pointcloud_point_attribute_set_compression_options_cf(h, a.compressionOptions));
    checkResult(f.qrb_pointcloud_point_attribute_set_lod_settings_cf(h, a.lodSettings.c_str()));
    checkResult(f.qrb_pointcloud_point_attribute_set_scale_factor_cf(h, a.scaleFactor));
}

PointAttribute AttributeHandle::read() const {
    const FunctionTable& f = functions();
    const qrb_point_attribute* const h = m_handle;
    PointAttribute a;
    // Declared in the order of receipt, so that they are released in reverse.
    StringHolder name, title, tags, description, unitSymbol, namedValues, lodSettings;
    checkResult(f.qrb_pointcloud_point_attribute_get_name_cf(h, name.slot()));
    checkResult(f.qrb_pointcloud_point_attribute_get_title_cf(h, title.slot()));
    checkResult(f.qrb_pointcloud_point_attribute_get_tags_cf(h, tags.slot()));
    checkResult(f.qrb_pointcloud_point_attribute_get_description_cf(h, description.slot()));
    checkResult(f.qrb_pointcloud_point_attribute_get_unit_symbol_cf(h, unitSymbol.slot()));
    checkResult(f.qrb_pointcloud_point_attribute_get_length_u32_cf(h, &a.length));
    checkResult(f.qrb_pointcloud_point_attribute_get_resolution_cf(h, &a.resolution));
    checkResult(f.qrb_pointcloud_point_attribute_get_minimum_value_cf(h, &a.minimumValue));
    checkResult(f.qrb_pointcloud_point_attribute_get_maximum_value_cf(h, &a.maximumValue));
    checkResult(f.qrb_pointcloud_point_attribute_get_default_value_cf(h, &a.defaultValue));
    checkResult(f.qrb_pointcloud_point_attribute_get_invalid_value_cf(h, &a.invalidValue));
    checkResult(f.qrb_pointcloud_point_attribute_get_named_values_cf(h, namedValues.slot()));
    checkResult(f.qrb_pointcloud_point_attribute_get_storage_class_cf(h, &a.storageClass));
    checkResult(
        f.qrb_pointcloud_point_attribute_get_compression_options_cf(h, &a.compressionOptions));
    checkResult(f.qrb_pointcloud_point_attribute_get_lod_settings_cf(h, lodSettings.slot()));
    checkResult(f.qrb_pointcloud_point_attribute_get_scale_factor_cf(h, &a.scaleFactor));
    a.name = name.str();
    a.title = title.str();
    a.tags = tags.str();
    a.description = description.str();
    a.unitSymbol = unitSymbol.str();
    a.namedValues = namedValues.str();
    a.lodSettings = lodSettings.str();
    return a;
}

}  // namespace tarvo::qrb::pointcloud
