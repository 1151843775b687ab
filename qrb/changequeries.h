// Queries that change points that exist already: by their ids (update, remove), or all that a
// filter picks (fill, invert). They need a pending transaction. Copies share one query; the last
// one ends it. A closed query does nothing: next returns 0, bind is ignored. Everything throws
// Error.
#pragma once

#include "qrb/pointattribute.h"
#include "qrb/pointclouddata.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace tarvo::qrb::pointcloud {

// Gives the points that a bound "tarvo.id" names other values. Buffers belong to the caller and
// must stay valid until the last next.
class QueryUpdate {
public:
    QueryUpdate() = default;  // closed
    explicit QueryUpdate(std::shared_ptr<PointcloudData> data);

    // attribute: "NAME" (all elements) or "NAME[I]"; stride: bytes between two points.
    void bind(const std::string& attribute, DataType type, const void* buffer, std::int32_t stride);
    // Takes count points from the buffers; returns how many of them exist. The others are passed
    // over.
    std::uint32_t next(std::uint32_t count);
    void close();

private:
    class Private;
    std::shared_ptr<Private> d;
};

// Removes points by their ids. The buffer belongs to the caller and must stay valid until the last
// next.
class QueryRemove {
public:
    QueryRemove() = default;  // closed
    explicit QueryRemove(std::shared_ptr<PointcloudData> data);

    void bind(DataType type, const void* ids, std::int32_t stride);
    // Takes count ids from the buffer; returns how many points were removed.
    std::uint32_t next(std::uint32_t count);
    void close();

private:
    class Private;
    std::shared_ptr<Private> d;
};

// Gives all points of a selection the same values. What is selected is settled when the query is
// made.
class QueryFill {
public:
    QueryFill() = default;  // closed
    // Null nodes: all points; else the points stored in these nodes (none listed: none).
    QueryFill(std::shared_ptr<PointcloudData> data, const std::vector<std::uint32_t>* nodes,
              const std::string& filter);

    // The value of an element, or the values of all elements one after another.
    void bind(const std::string& attribute, DataType type, const void* value);
    // Changes at most count further points; 0: none left.
    std::uint32_t next(std::uint32_t count);
    // Per cent of the work done.
    std::uint32_t progress() const;
    void close();

private:
    class Private;
    std::shared_ptr<Private> d;
};

// Gives an attribute of two values the other one in all points of a selection, which is settled
// when the query is made.
class QueryInvert {
public:
    QueryInvert() = default;  // closed
    // Null nodes: all points; else the points stored in these nodes (none listed: none).
    QueryInvert(std::shared_ptr<PointcloudData> data, const std::vector<std::uint32_t>* nodes,
                const std::string& filter);

    void attribute(const std::string& name);
    // Changes at most count further points; 0: none left.
    std::uint32_t next(std::uint32_t count);
    // Per cent of the work done.
    std::uint32_t progress() const;
    void close();

private:
    class Private;
    std::shared_ptr<Private> d;
};

}  // namespace tarvo::qrb::pointcloud
