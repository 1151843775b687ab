// What stands behind the opaque handles that the C interface hands out. A handle is no address but
// a number that tells a place in a table and which of the place's objects, one after another, is
// meant; so a handle that is stale, twice deleted, of another kind or made up is told from a good
// one without a look at memory that may be gone. Any thread may use the table; it holds an object
// until its deletion, a call as long as it lasts.
#pragma once

#include "qrb/qrb.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <shared_mutex>
#include <unordered_map>
#include <vector>

namespace tarvo::engine::capi {

// Base of everything that has a handle. The type of the object is the kind of the handle.
class Object {
public:
    Object() = default;
    virtual ~Object() = default;
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;
};

// A node that was handed out, the one thing with a real address: callers read it.
class GraphNode final : public Object {
public:
    ~GraphNode() override;
    qrb_graph_node root{};
};

class HandleTable {
public:
    // The table of the library. What was not deleted goes with it.
    static HandleTable& instance();

    // Takes the object and gives its handle, never null. owner: the handle with which it goes;
    // null: it stands alone. Throws std::bad_alloc and then keeps nothing.
    void* add(std::shared_ptr<Object> object, const void* owner);
    qrb_graph_node* addNode(std::shared_ptr<GraphNode> node, const void* owner);

    // Null for what is no handle of an object that is there.
    std::shared_ptr<Object> find(const void* handle) const noexcept;
    std::shared_ptr<GraphNode> findNode(const qrb_graph_node* node) const noexcept;

    // Deletes the handle; the object goes with the last call that uses it. Whether it was there.
    bool remove(const void* handle) noexcept;
    bool removeNode(const qrb_graph_node* node) noexcept;

    // Whether something that goes with the owner is so.
    bool anyOwnedBy(const void* owner, bool (*isSo)(const Object&)) const noexcept;
    // Deletes all that goes with the owner.
    void removeOwnedBy(const void* owner) noexcept;

private:
    struct Place {
        std::shared_ptr<Object> object;  // null: free
        const void* owner = nullptr;
        std::uint32_t generation = 0;  // of the object, or of the next one
        std::uint32_t nextFree = 0;
    };
    struct Node {
        std::shared_ptr<GraphNode> node;
        const void* owner;
    };

    HandleTable();
    void* handleOf(std::uint32_t index) const noexcept;
    std::optional<std::uint32_t> indexOf(const void* handle) const noexcept;
    std::shared_ptr<Object> clear(std::uint32_t index) noexcept;

    mutable std::shared_mutex m_mutex;
    std::uint64_t m_salt;  // other handles in each run: nobody counts on their values
    std::uint32_t m_firstFree;
    std::vector<Place> m_places;
    std::unordered_map<const qrb_graph_node*, Node> m_nodes;
};

}  // namespace tarvo::engine::capi
