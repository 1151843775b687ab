// Maintenance of one open database.
#pragma once

#include "qrb/findings.h"
#include "qrb/pointclouddata.h"
#include "qrb/transactions.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace tarvo::qrb::pointcloud {

class Management {
public:
    explicit Management(std::shared_ptr<PointcloudData> data);

    // Forgets every transaction but the first and the current one.
    void finalize();
    // Gives unused disk space back.
    void vacuum(const Progress& progress = {});
    // About how many bytes of the file that would give back now; none from a library that does not
    // tell.
    std::optional<std::uint64_t> unusedSize() const;
    // Compares the database with a file schema (JSON text); findings are thrown as one Error with
    // a line each in its details.
    void validate(const std::string& schema, bool strict) const;
    // The same; what does not agree is no failure.
    Findings findings(const std::string& schema, bool strict) const;

    std::uint32_t getLodMode() const;
    void setLodMode(std::uint32_t mode);
    std::uint32_t getChunkSizeLOD() const;
    void setChunkSizeLOD(std::uint32_t size);

private:
    std::shared_ptr<PointcloudData> m_data;
};

}  // namespace tarvo::qrb::pointcloud
