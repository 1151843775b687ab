#include "qrb/settings.h"

#include "catalogue/jsonmemory.h"
#include "qrb/error.h"
#include "qrb/loader.h"

namespace tarvo::qrb::pointcloud {

namespace {

qrb_create_settings* newCreateSettings() {
    qrb_create_settings* handle = nullptr;
    checkResult(functions().qrb_pointcloud_create_settings_new_cf(&handle));
    return handle;
}

void deleteCreateSettings(qrb_create_settings* handle) {
    checkResult(functions().qrb_pointcloud_create_settings_delete_cf(handle), true);
}

qrb_open_settings* newOpenSettings() {
    qrb_open_settings* handle = nullptr;
    checkResult(functions().qrb_pointcloud_open_settings_new_cf(&handle));
    return handle;
}

void deleteOpenSettings(qrb_open_settings* handle) {
    checkResult(functions().qrb_pointcloud_open_settings_delete_cf(handle), true);
}

}  // namespace

CreateSettings::CreateSettings(const Context& context)
    : m_context(context), m_handle(newCreateSettings()) {
    try {
        read();
    } catch (...) {
        deleteCreateSettings(m_handle);
        throw;
    }
}

CreateSettings::CreateSettings(const CreateSettings& other)
    : primaryAttribute(other.primaryAttribute),
      chunkMode(other.chunkMode),
      chunkSize(other.chunkSize),
      lodMode(other.lodMode),
      chunkSizeLOD(other.chunkSizeLOD),
      cacheSize(other.cacheSize),
      compressionLevel(other.compressionLevel),
      optimizePointID(other.optimizePointID),
      pointInsertMode(other.pointInsertMode),
      m_context(other.m_context),
      m_handle(newCreateSettings()) {}

CreateSettings& CreateSettings::operator=(const CreateSettings& other) {
    primaryAttribute = other.primaryAttribute;
    chunkMode = other.chunkMode;
    chunkSize = other.chunkSize;
    lodMode = other.lodMode;
    chunkSizeLOD = other.chunkSizeLOD;
    cacheSize = other.cacheSize;
    compressionLevel = other.compressionLevel;
    optimizePointID = other.optimizePointID;
    pointInsertMode = other.pointInsertMode;
    m_context = other.m_context;
    return *this;
}

CreateSettings::~CreateSettings() {
    deleteCreateSettings(m_handle);
}

void CreateSettings::read() {
    const FunctionTable& f = functions();
    AttributeHandle attribute;
    checkResult(
        f.qrb_pointcloud_create_settings_get_primary_attribute_cf(m_handle, attribute.get()));
    primaryAttribute = attribute.read();
    checkResult(f.qrb_pointcloud_create_settings_get_chunk_mode_cf(m_handle, &chunkMode));
    checkResult(f.qrb_pointcloud_create_settings_get_chunk_size_cf(m_handle, &chunkSize));
    checkResult(f.qrb_pointcloud_create_settings_get_lod_mode_cf(m_handle, &lodMode));
    checkResult(f.qrb_pointcloud_create_settings_get_chunk_size_lod_cf(m_handle, &chunkSizeLOD));
    checkResult(f.qrb_pointcloud_create_settings_get_cache_size_64_cf(m_handle, &cacheSize));
    checkResult(
        f.qrb_pointcloud_create_settings_get_compression_level_cf(m_handle, &compressionLevel));
    std::uint8_t optimize = 0;
    checkResult(f.qrb_pointcloud_create_settings_get_optimize_point_id_cf(m_handle, &optimize));
    optimizePointID = optimize != 0;
    StringHolder insertMode;
    checkResult(
        f.qrb_pointcloud_create_settings_get_point_insert_mode_cf(m_handle, insertMode.slot()));
    pointInsertMode = insertMode.str();
}

const qrb_create_settings* CreateSettings::transfer() const {
    const FunctionTable& f = functions();
    const AttributeHandle attribute(primaryAttribute);
    checkResult(
        f.qrb_pointcloud_create_settings_set_primary_attribute_cf(m_handle, attribute.get()));
    checkResult(f.qrb_pointcloud_create_settings_set_chunk_mode_cf(m_handle, chunkMode));
    checkResult(f.qrb_pointcloud_create_settings_set_chunk_size_cf(m_handle, chunkSize));
    checkResult(f.qrb_pointcloud_create_settings_set_lod_mode_cf(m_handle, lodMode));
    checkResult(f.qrb_pointcloud_create_settings_set_chunk_size_lod_cf(m_handle, chunkSizeLOD));
    checkResult(f.qrb_pointcloud_create_settings_set_cache_size_64_cf(m_handle, cacheSize));
    checkResult(
        f.qrb_pointcloud_create_settings_set_compression_level_cf(m_handle, compressionLevel));
    checkResult(f.qrb_pointcloud_create_settings_set_optimize_point_id_cf(m_handle,
                                                                          optimizePointID ? 1 : 0));
    checkResult(f.qrb_pointcloud_create_settings_set_point_insert_mode_cf(m_handle,
                                                                          pointInsertMode.c_str()));
    return m_handle;
}

std::string CreateSettings::toJson() const {
    StringHolder json;
    checkResult(functions().qrb_pointcloud_create_settings_json_save_cf(transfer(), json.slot()));
    return json.str();
}

void CreateSettings::fromJson(const std::string& json) {
    transfer();
    checkResult(functions().qrb_pointcloud_create_settings_json_load_cf(m_handle, json.c_str()));
    read();
}

OpenSettings::OpenSettings(const Context& context)
    : m_context(context), m_handle(newOpenSettings()) {
    try {
        read();
    } catch (...) {
        deleteOpenSettings(m_handle);
        throw;
    }
}

OpenSettings::OpenSettings(const OpenSettings& other)
    : cacheSize(other.cacheSize),
      transaction(other.transaction),
      readOnly(other.readOnly),
      m_context(other.m_context),
      m_handle(newOpenSettings()) {}

OpenSettings& OpenSettings::operator=(const OpenSettings& other) {
    cacheSize = other.cacheSize;
    transaction = other.transaction;
    readOnly = other.readOnly;
    m_context = other.m_context;
    return *this;
}

OpenSettings::~OpenSettings() {
    deleteOpenSettings(m_handle);
}

void OpenSettings::read() {
    checkResult(
        functions().qrb_pointcloud_open_settings_get_cache_size_64_cf(m_handle, &cacheSize));
}

const qrb_open_settings* OpenSettings::transfer() const {
    checkResult(functions().qrb_pointcloud_open_settings_set_cache_size_64_cf(m_handle, cacheSize));
    // There are no functions for these. A library that knows nothing of them is not to be bothered.
    if (transaction != 0 || readOnly || m_wished) {
        const std::string json = "{\"transaction\": " + std::to_string(transaction) +
                                 ", \"readOnly\": " + (readOnly ? "true" : "false") + "}";
        m_wished = true;
        checkResult(
            functions().qrb_pointcloud_open_settings_json_load_cf(m_handle, json.c_str()));
    }
    return m_handle;
}

std::string OpenSettings::toJson() const {
    StringHolder json;
    checkResult(functions().qrb_pointcloud_open_settings_json_save_cf(transfer(), json.slot()));
    return json.str();
}

void OpenSettings::fromJson(const std::string& json) {
    transfer();
    checkResult(functions().qrb_pointcloud_open_settings_json_load_cf(m_handle, json.c_str()));
    read();
    StringHolder saved;
    checkResult(functions().qrb_pointcloud_open_settings_json_save_cf(m_handle, saved.slot()));
    rapidjson::Document told;
    told.Parse(saved.str().c_str());
    if (told.HasParseError() || !told.IsObject())
        return;
    if (const auto member = told.FindMember("transaction");
        member != told.MemberEnd() && member->value.IsUint())
        transaction = member->value.GetUint();
    if (const auto member = told.FindMember("readOnly");
        member != told.MemberEnd() && member->value.IsBool())
        readOnly = member->value.GetBool();
    m_wished = transaction != 0 || readOnly;
}

}  // namespace tarvo::qrb::pointcloud
