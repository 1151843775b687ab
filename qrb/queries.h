// Queries read, write and examine points in batches. Copies share one query; the last one ends
// it. A closed query does nothing: next returns 0, bind is ignored. Buffers that are bound belong
// to the caller and must stay valid until the last next. Everything throws Error.
#pragma once

#include "qrb/pointattribute.h"
#include "qrb/pointclouddata.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tarvo::qrb::pointcloud {

// What has become of the index's nodes so far; a subtree that is decided at once counts as one.
struct NodesPassed {
    std::uint64_t skipped = 0;  // without a hit, by the bounds in the index
    std::uint64_t whole = 0;    // every point a hit, by them
    std::uint64_t read = 0;     // point by point
};

class QuerySelect {
public:
    QuerySelect() = default;  // closed
    // Null nodes: all points; else the points stored in these nodes (none listed: none).
    QuerySelect(std::shared_ptr<PointcloudData> data, const std::vector<std::uint32_t>* nodes,
                const std::string& filter);

    // attribute: "NAME" (all elements) or "NAME[I]"; stride: bytes between two points.
    void bind(const std::string& attribute, DataType type, void* buffer, std::int32_t stride);
    // Reads at most count points into the buffers; 0: none left.
    std::uint32_t next(std::uint32_t count);
    // Per cent of the work done.
    std::uint32_t progress() const;
    // None from a library that does not tell.
    std::optional<NodesPassed> nodesPassed() const;
    void close();
    explicit operator bool() const { return d != nullptr; }

private:
    class Private;
    std::shared_ptr<Private> d;
};

class QueryInsert {
public:
    QueryInsert() = default;  // closed
    explicit QueryInsert(std::shared_ptr<PointcloudData> data);

    void bind(const std::string& attribute, DataType type, const void* buffer, std::int32_t stride);
    // The buffer receives the ids of the inserted points.
    void bindId(DataType type, void* buffer, std::int32_t stride);
    // Inserts count points from the buffers; returns how many were inserted.
    std::uint32_t next(std::uint32_t count);
    void close();

private:
    class Private;
    std::shared_ptr<Private> d;
};

// A node of the point index with its children.
struct IndexNode {
    std::uint32_t id = 0;  // 0: absent
    std::uint32_t revision = 0;
    std::int64_t pointCountTotal = 0;  // of the node and everything below
    std::int64_t pointCountNode = 0;   // of the node itself
    std::vector<IndexNode> children;
};

class QueryStat {
public:
    QueryStat() = default;  // closed
    explicit QueryStat(std::shared_ptr<PointcloudData> data);

    // Fills root with the index, narrowed by a filter (empty: all nodes).
    void index(IndexNode& root, const std::string& filter = {}) const;
    // The root alone, without children: its id and counts, whatever the size of the index.
    IndexNode root() const;
    // One value per element of the attribute goes into the buffer; cleaned leaves invalid values
    // out.
    void minimum(std::uint32_t nodeId, const std::string& attribute, DataType type, void* buffer,
                 bool cleaned) const;
    void maximum(std::uint32_t nodeId, const std::string& attribute, DataType type, void* buffer,
                 bool cleaned) const;
    std::uint32_t revision(std::uint32_t nodeId, const std::string& attribute) const;
    void close();

private:
    class Private;
    std::shared_ptr<Private> d;
};

}  // namespace tarvo::qrb::pointcloud
