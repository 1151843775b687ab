// The settings and attribute records: every field in both patterns, from one line each.
#include "engine/capi/handles.h"

#include <algorithm>

using namespace tarvo::engine;
using namespace tarvo::engine::capi;

namespace {

template <typename T>
uint32_t low32(T value) {
    return static_cast<uint32_t>(std::min<uint64_t>(value, UINT32_MAX));
}

}  // namespace

// A field that is read and written as it is.
#define NUMBER_FIELD(prefix, handle, object, field, type, member)                              \
    qrb_status prefix##_get_##field(qrb_context* context, const handle* object, type* field) { \
        return call(context, [&] {                                                             \
            given(field, #field) = static_cast<type>(given(object, #object)->value.member);    \
        });                                                                                    \
    }                                                                                          \
    qrb_result* prefix##_get_##field##_cf(const handle* object, type* field) {                 \
        return callFree([&] {                                                                  \
            given(field, #field) = static_cast<type>(given(object, #object)->value.member);    \
        });                                                                                    \
    }                                                                                          \
    NUMBER_SETTER(prefix, handle, object, field, type, member)

#define NUMBER_SETTER(prefix, handle, object, field, type, member)                      \
    qrb_status prefix##_set_##field(qrb_context* context, handle* object, type field) { \
        return call(context, [&] { given(object, #object)->value.member = field; });    \
    }                                                                                   \
    qrb_result* prefix##_set_##field##_cf(handle* object, type field) {                 \
        return callFree([&] { given(object, #object)->value.member = field; });         \
    }

// A field whose getter narrows with `read`.
#define NARROWED_FIELD(prefix, handle, object, field, type, member, read)                        \
    qrb_status prefix##_get_##field(qrb_context* context, const handle* object, type* field) {   \
        return call(context,                                                                     \
                    [&] { given(field, #field) = read(given(object, #object)->value.member); }); \
    }                                                                                            \
    qrb_result* prefix##_get_##field##_cf(const handle* object, type* field) {                   \
        return callFree(                                                                         \
            [&] { given(field, #field) = read(given(object, #object)->value.member); });         \
    }                                                                                            \
    NUMBER_SETTER(prefix, handle, object, field, type, member)

#define TEXT_FIELD(prefix, handle, object, field, member)                                      \
    qrb_status prefix##_get_##field(qrb_context* context, const handle* object,                \
                                    const char** field) {                                      \
        return call(context, [&](Context& bound) {                                             \
            giveText(bound, given(object, #object)->value.member, field);                      \
        });                                                                                    \
    }                                                                                          \
    qrb_result* prefix##_get_##field##_cf(const handle* object, char** field) {                \
        return callFree([&] { giveOwnText(given(object, #object)->value.member, field); });    \
    }                                                                                          \
    qrb_status prefix##_set_##field(qrb_context* context, handle* object, const char* field) { \
        return call(context, [&] { given(object, #object)->value.member = textOf(field); });   \
    }                                                                                          \
    qrb_result* prefix##_set_##field##_cf(handle* object, const char* field) {                 \
        return callFree([&] { given(object, #object)->value.member = textOf(field); });        \
    }

// New, delete and the JSON text of a record.
#define RECORD(prefix, handle, object, load, save)                                                 \
    qrb_status prefix##_new(qrb_context* context, handle** object) {                               \
        return call(context, [&] { make(object, #object, nullptr); });                             \
    }                                                                                              \
    qrb_result* prefix##_new_cf(handle** object) {                                                 \
        return callFree([&] { make(object, #object, nullptr); });                                  \
    }                                                                                              \
    qrb_status prefix##_delete(qrb_context* context, handle* object) {                             \
        return call(context, [&] { deleteRecord(object, #object); });                              \
    }                                                                                              \
    qrb_result* prefix##_delete_cf(handle* object) {                                               \
        return callFree([&] { deleteRecord(object, #object); });                                   \
    }                                                                                              \
    qrb_status prefix##_json_load(qrb_context* context, handle* object, const char* json) {        \
        return call(context, [&] { load(textOf(json), given(object, #object)->value); });          \
    }                                                                                              \
    qrb_result* prefix##_json_load_cf(handle* object, const char* json) {                          \
        return callFree([&] { load(textOf(json), given(object, #object)->value); });               \
    }                                                                                              \
    qrb_status prefix##_json_save(qrb_context* context, const handle* object, const char** json) { \
        return call(context, [&](Context& bound) {                                                 \
            giveText(bound, save(given(object, #object)->value), json);                            \
        });                                                                                        \
    }                                                                                              \
    qrb_result* prefix##_json_save_cf(const handle* object, char** json) {                         \
        return callFree([&] { giveOwnText(save(given(object, #object)->value), json); });          \
    }

extern "C" {

#define CREATE qrb_pointcloud_create_settings, qrb_create_settings, settings
#define EXPAND(macro, ...) macro(__VA_ARGS__)
EXPAND(RECORD, CREATE, session::fromJson, session::toJson)
EXPAND(NARROWED_FIELD, CREATE, cache_size, uint32_t, cacheSize, low32)
EXPAND(NUMBER_FIELD, CREATE, cache_size_64, uint64_t, cacheSize)
EXPAND(NUMBER_FIELD, CREATE, chunk_mode, uint32_t, chunkMode)
EXPAND(NUMBER_FIELD, CREATE, chunk_size, uint32_t, chunkSize)
EXPAND(NUMBER_FIELD, CREATE, chunk_size_lod, uint32_t, chunkSizeLod)
EXPAND(NUMBER_FIELD, CREATE, compression_level, uint8_t, compressionLevel)
EXPAND(NUMBER_FIELD, CREATE, lod_mode, uint32_t, lodMode)
EXPAND(NUMBER_FIELD, CREATE, optimize_point_id, uint8_t, optimizePointId)
EXPAND(TEXT_FIELD, CREATE, point_insert_mode, pointInsertMode)

qrb_status qrb_pointcloud_create_settings_get_primary_attribute(qrb_context* context,
                                                                const qrb_create_settings* settings,
                                                                qrb_point_attribute* attribute) {
    return call(context, [&] {
        given(attribute, "attribute")->value = given(settings, "settings")->value.primaryAttribute;
    });
}

qrb_result* qrb_pointcloud_create_settings_get_primary_attribute_cf(
    const qrb_create_settings* settings, qrb_point_attribute* attribute) {
    return callFree([&] {
        given(attribute, "attribute")->value = given(settings, "settings")->value.primaryAttribute;
    });
}

qrb_status qrb_pointcloud_create_settings_set_primary_attribute(
    qrb_context* context, qrb_create_settings* settings, const qrb_point_attribute* attribute) {
    return call(context, [&] {
        given(settings, "settings")->value.primaryAttribute = given(attribute, "attribute")->value;
    });
}

qrb_result* qrb_pointcloud_create_settings_set_primary_attribute_cf(
    qrb_create_settings* settings, const qrb_point_attribute* attribute) {
    return callFree([&] {
        given(settings, "settings")->value.primaryAttribute = given(attribute, "attribute")->value;
    });
}

#define OPEN qrb_pointcloud_open_settings, qrb_open_settings, settings
EXPAND(RECORD, OPEN, session::fromJson, session::toJson)
EXPAND(NARROWED_FIELD, OPEN, cache_size, uint32_t, cacheSize, low32)
EXPAND(NUMBER_FIELD, OPEN, cache_size_64, uint64_t, cacheSize)

#define ATTRIBUTE qrb_pointcloud_point_attribute, qrb_point_attribute, attribute
#define LOW8(value) static_cast<uint8_t>(std::min<uint32_t>(value, UINT8_MAX))
EXPAND(RECORD, ATTRIBUTE, schema::recordFromJson, schema::toJson)
EXPAND(NUMBER_FIELD, ATTRIBUTE, compression_options, uint8_t, compressionOptions)
EXPAND(NUMBER_FIELD, ATTRIBUTE, default_value, double, defaultValue)
EXPAND(TEXT_FIELD, ATTRIBUTE, description, description)
EXPAND(NUMBER_FIELD, ATTRIBUTE, invalid_value, double, invalidValue)
EXPAND(NARROWED_FIELD, ATTRIBUTE, length, uint8_t, length, LOW8)
EXPAND(NUMBER_FIELD, ATTRIBUTE, length_u32, uint32_t, length)
EXPAND(TEXT_FIELD, ATTRIBUTE, lod_settings, lodSettings)
EXPAND(NUMBER_FIELD, ATTRIBUTE, maximum_value, double, maximumValue)
EXPAND(NUMBER_FIELD, ATTRIBUTE, minimum_value, double, minimumValue)
EXPAND(TEXT_FIELD, ATTRIBUTE, name, name)
EXPAND(TEXT_FIELD, ATTRIBUTE, named_values, namedValues)
EXPAND(NUMBER_FIELD, ATTRIBUTE, resolution, double, resolution)
EXPAND(NUMBER_FIELD, ATTRIBUTE, scale_factor, double, scaleFactor)
EXPAND(NUMBER_FIELD, ATTRIBUTE, storage_class, uint8_t, storageClass)
EXPAND(TEXT_FIELD, ATTRIBUTE, tags, tags)
EXPAND(TEXT_FIELD, ATTRIBUTE, title, title)
EXPAND(TEXT_FIELD, ATTRIBUTE, unit_symbol, unitSymbol)

qrb_status qrb_pointcloud_point_attribute_data_type(qrb_context* context,
                                                    const qrb_point_attribute* attribute,
                                                    uint32_t* data_type) {
    return call(context, [&] {
        given(data_type, "data_type") = schema::dataType(given(attribute, "attribute")->value);
    });
}

qrb_result* qrb_pointcloud_point_attribute_data_type_cf(const qrb_point_attribute* attribute,
                                                        uint32_t* data_type) {
    return callFree([&] {
        given(data_type, "data_type") = schema::dataType(given(attribute, "attribute")->value);
    });
}

qrb_status qrb_pointcloud_point_attribute_decode_descriptor(qrb_context* context,
                                                            const char* descriptor,
                                                            const char** name, int64_t* element,
                                                            const char** property) {
    return call(context, [&](Context& bound) {
        given(name, "name");
        given(element, "element");
        given(property, "property");
        const schema::Descriptor parts = schema::decodeDescriptor(textOf(descriptor));
        bound.text = parts.name + '\0' + parts.property;
        *name = bound.text.c_str();
        *property = bound.text.c_str() + parts.name.size() + 1;
        *element = parts.element;
    });
}

}  // extern "C"
