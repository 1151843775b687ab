// One database file: opened or created on a context, factory of its interfaces and queries.
// Interfaces and queries share the library's handle, so they may outlive the Pointcloud; all must
// be gone before the library is freed. Everything throws Error.
#pragma once

#include "qrb/changelog.h"
#include "qrb/changequeries.h"
#include "qrb/context.h"
#include "qrb/management.h"
#include "qrb/metadata.h"
#include "qrb/pointattributes.h"
#include "qrb/queries.h"
#include "qrb/settings.h"
#include "qrb/transactions.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace tarvo::qrb {

class Pointcloud {
public:
    // A handle in the closed state.
    explicit Pointcloud(const Context& context);

    // Also throws where the library can't open the transaction that the settings name.
    void open(const std::string& fileName, const pointcloud::OpenSettings& settings);
    void create(const std::string& fileName, const pointcloud::CreateSettings& settings);
    // With the attributes and metadata items of a file schema (JSON text); optionals includes
    // those that the schema marks optional.
    void create(const std::string& fileName, const pointcloud::CreateSettings& settings,
                const std::string& schema, bool optionals);
    void close();

    // From now on filters of queries pass through the reader on their way to the library; empty: as
    // they are. So a program can take more than libraries do.
    void readFilters(FilterReader reader);

    bool isOpen() const;
    std::string getUuid() const;
    // A report: 1 plain text, 2 JSON, 3 HTML, 4 attribute histograms (HTML).
    std::string inspect(std::uint8_t format) const;

    // All points that pass the filter (empty: all), or those stored in the given nodes.
    pointcloud::QuerySelect select(const std::string& filter = {}) const;
    pointcloud::QuerySelect select(const std::vector<std::uint32_t>& nodes,
                                   const std::string& filter) const;
    pointcloud::QueryInsert insert() const;
    pointcloud::QueryStat stat() const;
    // Change points that exist; the selections of fill and invert are made as those of select.
    pointcloud::QueryUpdate update() const;
    pointcloud::QueryRemove remove() const;
    pointcloud::QueryFill fill(const std::string& filter = {}) const;
    pointcloud::QueryFill fill(const std::vector<std::uint32_t>& nodes,
                               const std::string& filter) const;
    pointcloud::QueryInvert invert(const std::string& filter = {}) const;
    pointcloud::QueryInvert invert(const std::vector<std::uint32_t>& nodes,
                                   const std::string& filter) const;

    pointcloud::Changelog& changelog() const { return *m_changelog; }
    pointcloud::Management& management() const { return *m_management; }
    pointcloud::MetaData& metaData() const { return *m_metaData; }
    pointcloud::PointAttributes& pointAttributes() const { return *m_pointAttributes; }
    pointcloud::Transactions& transactions() const { return *m_transactions; }

    const Context& context() const;

private:
    std::shared_ptr<PointcloudData> m_data;
    std::shared_ptr<pointcloud::Changelog> m_changelog;
    std::shared_ptr<pointcloud::Management> m_management;
    std::shared_ptr<pointcloud::MetaData> m_metaData;
    std::shared_ptr<pointcloud::PointAttributes> m_pointAttributes;
    std::shared_ptr<pointcloud::Transactions> m_transactions;
};

}  // namespace tarvo::qrb
