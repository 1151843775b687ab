#include "engine/capi/handletable.h"

#include <algorithm>
#include <chrono>
#include <mutex>
#include <new>
#include <utility>

#if !defined(_WIN32)
#include <unistd.h>
#endif

namespace tarvo::engine::capi {

namespace {

// A handle: the top byte 0x80, which no address in a program's memory has, then 28 bits generation
// and 28 bits place, mixed with the salt.
static_assert(sizeof(void*) == 8, "handles are numbers of 64 bits");
constexpr std::uint64_t mark = 0x80ull << 56;
constexpr unsigned placeBits = 28;
constexpr std::uint32_t placeMask = (1u << placeBits) - 1;
constexpr std::uint32_t lastGeneration = (1u << 28) - 1;
constexpr std::uint32_t none = placeMask;  // no place

long currentProcess() {
#if defined(_WIN32)
    return 0;  // none is forked
#else
    return getpid();
#endif
}

void deleteChildren(qrb_graph_node& node) {
    for (std::uint32_t i = 0; i < node.child_count; ++i) {
        deleteChildren(*node.children[i]);
        delete node.children[i];
    }
    delete[] node.children;
    node = {};
}

}  // namespace

GraphNode::~GraphNode() {
    deleteChildren(root);
}

HandleTable& HandleTable::instance() {
    // A forked process inherits sessions whose threads it does not have, and whose locks and
    // pending transactions are not its own to end.
    struct Holder {
        Holder() { new (&place) HandleTable; }
        ~Holder() {
            if (currentProcess() == process)
                table().~HandleTable();
        }
        HandleTable& table() { return *std::launder(reinterpret_cast<HandleTable*>(&place)); }
        alignas(HandleTable) unsigned char place[sizeof(HandleTable)];
        const long process = currentProcess();
    };
    static Holder holder;
    return holder.table();
}

HandleTable::HandleTable() : m_firstFree(none) {
    const auto now =
        static_cast<std::uint64_t>(std::chrono::steady_clock::now().time_since_epoch().count());
    m_salt = ((now ^ reinterpret_cast<std::uintptr_t>(this)) * 0x9e3779b97f4a7c15u) >> 8;
}

void* HandleTable::handleOf(std::uint32_t index) const noexcept {
    const std::uint64_t number =
        std::uint64_t(m_places[index].generation) << placeBits | std::uint64_t(index);
    return reinterpret_cast<void*>(mark | (number ^ m_salt));
}

std::optional<std::uint32_t> HandleTable::indexOf(const void* handle) const noexcept {
    const auto value = reinterpret_cast<std::uint64_t>(handle);
    const auto index = static_cast<std::uint32_t>(value ^ m_salt) & placeMask;
    if (index >= m_places.size() || !m_places[index].object || handleOf(index) != handle)
        return std::nullopt;
    return index;
}

void* HandleTable::add(std::shared_ptr<Object> object, const void* owner) {
    const std::unique_lock lock(m_mutex);
    std::uint32_t index = m_firstFree;
    if (index == none) {
        if (m_places.size() >= none)
            throw std::bad_alloc();
        index = static_cast<std::uint32_t>(m_places.size());
        m_places.emplace_back();
    } else {
        m_firstFree = m_places[index].nextFree;
    }
    m_places[index].object = std::move(object);
    m_places[index].owner = owner;
    return handleOf(index);
}

qrb_graph_node* HandleTable::addNode(std::shared_ptr<GraphNode> node, const void* owner) {
    qrb_graph_node* const address = &node->root;
    const std::unique_lock lock(m_mutex);
    m_nodes.emplace(address, Node{std::move(node), owner});
    return address;
}

std::shared_ptr<Object> HandleTable::find(const void* handle) const noexcept {
    const std::shared_lock lock(m_mutex);
    const auto index = indexOf(handle);
    return index ? m_places[*index].object : nullptr;
}

std::shared_ptr<GraphNode> HandleTable::findNode(const qrb_graph_node* node) const noexcept {
    const std::shared_lock lock(m_mutex);
    const auto found = m_nodes.find(node);
    return found == m_nodes.end() ? nullptr : found->second.node;
}

// Gives the object back: it must not end within the lock, for it may take long.
std::shared_ptr<Object> HandleTable::clear(std::uint32_t index) noexcept {
    Place& place = m_places[index];
    // A place whose generations are used up is not used again.
    if (place.generation < lastGeneration) {
        ++place.generation;
        place.nextFree = std::exchange(m_firstFree, index);
    }
    place.owner = nullptr;
    return std::exchange(place.object, nullptr);
}

bool HandleTable::remove(const void* handle) noexcept {
    std::shared_ptr<Object> ended;
    const std::unique_lock lock(m_mutex);
    const auto index = indexOf(handle);
    if (index)
        ended = clear(*index);
    return index.has_value();
}

bool HandleTable::removeNode(const qrb_graph_node* node) noexcept {
    std::shared_ptr<GraphNode> ended;
    const std::unique_lock lock(m_mutex);
    const auto found = m_nodes.find(node);
    if (found == m_nodes.end())
        return false;
    ended = std::move(found->second.node);
    m_nodes.erase(found);
    return true;
}

bool HandleTable::anyOwnedBy(const void* owner, bool (*isSo)(const Object&)) const noexcept {
    const std::shared_lock lock(m_mutex);
    return std::any_of(m_places.begin(), m_places.end(), [&](const Place& place) {
        return place.object && place.owner == owner && isSo(*place.object);
    });
}

void HandleTable::removeOwnedBy(const void* owner) noexcept {
    for (std::uint32_t index = 0;; ++index) {
        std::shared_ptr<Object> ended;
        const std::unique_lock lock(m_mutex);
        if (index >= m_places.size())
            break;
        if (m_places[index].object && m_places[index].owner == owner)
            ended = clear(index);
    }
    const std::unique_lock lock(m_mutex);
    std::erase_if(m_nodes, [owner](const auto& entry) { return entry.second.owner == owner; });
}

}  // namespace tarvo::engine::capi
