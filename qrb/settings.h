// The parameters of a new file and of an open. Both records start with what the library proposes.
#pragma once

#include "qrb/context.h"
#include "qrb/pointattribute.h"

#include <cstdint>
#include <memory>
#include <string>

namespace tarvo::qrb::pointcloud {

// Copies are deep: each record owns a library settings object.
class CreateSettings {
public:
    explicit CreateSettings(const Context& context);
    CreateSettings(const CreateSettings& other);
    CreateSettings& operator=(const CreateSettings& other);
    ~CreateSettings();

    PointAttribute primaryAttribute;
    std::uint32_t chunkMode = 0;      // 1 point count, 2 edge length
    std::uint32_t chunkSize = 0;      // points, or level of the edge length
    std::uint32_t lodMode = 0;        // 1 thinout, 2 combine
    std::uint32_t chunkSizeLOD = 0;   // per cent, or level; 0 is off
    std::uint64_t cacheSize = 0;      // bytes
    std::uint8_t compressionLevel = 0;  // 0 to 100
    bool optimizePointID = false;
    std::string pointInsertMode;      // "single-pass" or "multi-pass"

    // JSON text by the library. Throw Error; a failed load changes nothing.
    std::string toJson() const;
    void fromJson(const std::string& json);

    // Writes every field into the library object and returns it; owned by the record.
    const qrb_create_settings* transfer() const;

private:
    void read();
    Context m_context;
    qrb_create_settings* m_handle = nullptr;
};

class OpenSettings {
public:
    explicit OpenSettings(const Context& context);
    OpenSettings(const OpenSettings& other);
    OpenSettings& operator=(const OpenSettings& other);
    ~OpenSettings();

    std::uint64_t cacheSize = 0;    // bytes
    std::uint32_t transaction = 0;  // a kept one, to be read; 0: the current one
    bool readOnly = false;          // in any case with a transaction; such a file can't be changed

    std::string toJson() const;
    void fromJson(const std::string& json);

    const qrb_open_settings* transfer() const;

private:
    void read();
    Context m_context;
    qrb_open_settings* m_handle = nullptr;
    mutable bool m_wished = false;  // the library object holds more than it proposes
};

}  // namespace tarvo::qrb::pointcloud
