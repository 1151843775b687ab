#include "engine/index/node.h"

#include "engine/base/interruption.h"
#include "engine/base/zstd.h"
#include "engine/index/shape.h"

#include <algorithm>

namespace tarvo::engine::index {

namespace {

constexpr std::uint64_t maximumPageSize = 256u << 20;
// In memory: some bytes of a page may stand for fifty times as many.
constexpr std::uint64_t maximumHeldSize = std::uint64_t(2) << 30;
constexpr unsigned maximumDepth = 128;

enum NodeFlags : std::uint8_t { hasInlineChildren = 1, hasChildPage = 2 };
enum ElementFlags : std::uint8_t { hasValid = 1, hasInvalid = 2, hasBlock = 4 };

void writeReference(ByteWriter& out, const BlobRef& reference) {
    out.varint(reference.blob);
    out.varint(reference.offset);
    out.varint(reference.length);
    out.number(reference.checksum);
}

BlobRef readReference(ByteReader& in) {
    BlobRef reference;
    reference.blob = in.varint(INT64_MAX);
    if (reference.blob == 0)
        in.fail("a reference to nothing");
    reference.offset = in.varint(UINT32_MAX);
    reference.length = static_cast<std::uint32_t>(in.varint(UINT32_MAX));
    reference.checksum = in.number<std::uint64_t>();
    return reference;
}

void writeNode(ByteWriter& out, const Node& node) {
    out.varint(node.id);
    out.number(node.level);
    out.number<std::uint8_t>(node.childPage           ? hasChildPage
                             : !node.children.empty() ? hasInlineChildren
                                                      : 0);
    out.varint(node.revision);
    for (const Key key : {node.first, node.last}) {
        out.number(static_cast<std::uint64_t>(key));
        out.number(static_cast<std::uint64_t>(key >> 64));
    }
    out.varint(node.totalCount);
    out.varint(node.ownCount);
    out.varint(node.attributes.size());
    for (const AttributeData& attribute : node.attributes) {
        out.varint(attribute.uid);
        out.varint(attribute.revision);
        out.varint(attribute.elements.size());
        for (const ElementData& element : attribute.elements) {
            const schema::ElementStatistics& statistics = element.statistics;
            out.number(static_cast<std::uint8_t>((statistics.hasValid ? hasValid : 0) |
                                                 (statistics.hasInvalid ? hasInvalid : 0) |
                                                 (element.block ? hasBlock : 0)));
            if (statistics.hasValid) {
                out.varint(statistics.minimum);
                out.varint(statistics.maximum - statistics.minimum);
            }
            if (element.block)
                writeReference(out, element.block);
        }
    }
    if (node.childPage) {
        writeReference(out, node.childPage);
    } else if (!node.children.empty()) {
        out.varint(node.children.size());
        for (const Node& child : node.children)
            writeNode(out, child);
    }
}

Key readKey(ByteReader& in) {
    const auto low = in.number<std::uint64_t>();
    const auto high = in.number<std::uint64_t>();
    return static_cast<Key>(high) << 64 | low;
}

// What was read takes so much more memory.
void hold(std::uint64_t& held, std::uint64_t bytes, const ByteReader& in) {
    held += bytes;
    if (held > maximumHeldSize)
        in.fail("more than fits in memory");
}

ElementData readElement(ByteReader& in) {
    ElementData element;
    const auto bits = in.number<std::uint8_t>();
    schema::ElementStatistics& statistics = element.statistics;
    statistics.hasValid = bits & hasValid;
    statistics.hasInvalid = bits & hasInvalid;
    if (statistics.hasValid) {
        statistics.minimum = in.varint();
        statistics.maximum = statistics.minimum + in.varint(UINT64_MAX - statistics.minimum);
    }
    if (bits & hasBlock)
        element.block = readReference(in);
    return element;
}

// The same checks for an outline, which keeps nothing of what it reads.
void readAttributes(ByteReader& in, Node& node, PageContents contents, std::uint64_t& held) {
    const bool kept = contents == PageContents::All;
    const std::uint64_t attributes = in.varint(in.left() / 3);
    if (kept) {
        hold(held, attributes * sizeof(AttributeData), in);
        node.attributes.reserve(attributes);
    }
    std::uint32_t last = 0;
    for (std::uint64_t i = 0; i < attributes; ++i) {
        AttributeData attribute;
        attribute.uid = static_cast<std::uint32_t>(in.varint(UINT32_MAX));
        if (i > 0 && attribute.uid <= last)
            in.fail("attributes out of order");
        last = attribute.uid;
        attribute.revision = static_cast<std::uint32_t>(in.varint(UINT32_MAX));
        const std::uint64_t elements = in.varint(schema::maximumLength);
        if (kept) {
            hold(held, elements * sizeof(ElementData), in);
            attribute.elements.reserve(elements);
        }
        for (std::uint64_t e = 0; e < elements; ++e) {
            const ElementData element = readElement(in);
            if (kept)
                attribute.elements.push_back(element);
        }
        if (kept)
            node.attributes.push_back(std::move(attribute));
    }
}

Node readNode(ByteReader& in, unsigned depth, PageContents contents, std::uint64_t& held) {
    if (depth > maximumDepth)
        in.fail("nodes too deep below each other");
    Node node;
    node.id = static_cast<std::uint32_t>(in.varint(UINT32_MAX));
    node.level = in.number<std::uint8_t>();
    const auto flags = in.number<std::uint8_t>();
    if (node.id == 0 || node.level > maximumDepth || flags > hasChildPage)
        in.fail("a node that can't be");
    node.revision = static_cast<std::uint32_t>(in.varint(UINT32_MAX));
    node.first = readKey(in);
    node.last = readKey(in);
    node.totalCount = in.varint(INT64_MAX);
    node.ownCount = in.varint(UINT32_MAX);
    if (node.last < node.first || node.ownCount > node.totalCount ||
        (flags == 0 && node.totalCount != node.ownCount))
        in.fail("a node that can't be");
    readAttributes(in, node, contents, held);
    if (flags == hasChildPage) {
        node.childPage = readReference(in);
    } else if (flags == hasInlineChildren) {
        const std::uint64_t count = in.varint(in.left() / 40);
        if (count == 0)
            in.fail("a node that can't be");
        hold(held, count * sizeof(Node), in);
        node.children.reserve(count);
        for (std::uint64_t i = 0; i < count; ++i)
            node.children.push_back(readNode(in, depth + 1, contents, held));
    }
    return node;
}

}  // namespace

const AttributeData* Node::find(std::uint32_t uid) const {
    const auto found =
        std::lower_bound(attributes.begin(), attributes.end(), uid,
                         [](const AttributeData& data, std::uint32_t u) { return data.uid < u; });
    return found != attributes.end() && found->uid == uid ? &*found : nullptr;
}

schema::ElementStatistics statisticsOf(const Node& node, const schema::Attribute& attribute,
                                       std::uint32_t element) {
    const AttributeData* data = node.find(attribute.uid);
    if (data && element < data->elements.size())
        return data->elements[element].statistics;
    const std::uint64_t code = attribute.absentCode(element);
    if (attribute.grid.isInvalid(code))
        return {0, 0, false, true};
    return {code, code, true, false};
}

Bytes encodePage(const Page& page) {
    Bytes plain;
    ByteWriter out(plain);
    out.varint(page.size());
    for (const Node& node : page)
        writeNode(out, node);
    if (plain.size() > maximumPageSize || heldBytes(page) > maximumHeldSize)
        throw Failure(ErrorCode::State,
                      "The index can't be stored: too many points lie at one place for leaves so "
                      "small.",
                      "Copy the points into a database with larger chunks.");
    Bytes packed(ZSTD_compressBound(plain.size()));
    const std::size_t size =
        ZSTD_compress(packed.data(), packed.size(), plain.data(), plain.size(), 3);
    requireCompressed(size);
    packed.resize(size);
    return packed;
}

Page decodePage(ByteSpan bytes, PageContents contents) {
    constexpr const char* what = "a page of the index";
    const unsigned long long size = ZSTD_getFrameContentSize(bytes.data(), bytes.size());
    if (size > maximumPageSize)  // also the two values that mean "not known"
        ByteReader(bytes, what).fail("an impossible size");
    Bytes plain(size);
    const std::size_t result =
        ZSTD_decompress(plain.data(), plain.size(), bytes.data(), bytes.size());
    requireMemory(result);
    if (ZSTD_isError(result) || result != size)
        ByteReader(bytes, what).fail("contents that can't be unpacked");
    ByteReader in(plain, what);
    Page page;
    const std::uint64_t count = in.varint(in.left() / 40);
    std::uint64_t held = 0;
    hold(held, count * sizeof(Node), in);
    page.reserve(count);
    for (std::uint64_t i = 0; i < count; ++i)
        page.push_back(readNode(in, 0, contents, held));
    in.finish();
    return page;
}

std::size_t heldBytes(const Page& page) {
    std::size_t bytes = page.capacity() * sizeof(Node);
    for (const Node& node : page) {
        bytes += node.attributes.capacity() * sizeof(AttributeData) + heldBytes(node.children);
        for (const AttributeData& attribute : node.attributes)
            bytes += attribute.elements.capacity() * sizeof(ElementData);
    }
    return bytes;
}

TreeCursor::TreeCursor(const Node& root, PageReader reader) : m_reader(std::move(reader)) {
    m_stack.push_back({&root, &root + 1, nullptr});
}

void TreeCursor::enter() {
    Interruption::check();
    const Node* node = m_stack.back().node;
    if (node->childPage) {
        std::shared_ptr<const Page> page = m_reader(node->childPage);
        requireTree(*node, *page);
        const Node* first = page->data();
        const Node* end = first + page->size();
        m_stack.push_back({first, end, std::move(page)});
    } else if (!node->children.empty()) {
        requireTree(*node, node->children);
        const Node* first = node->children.data();
        m_stack.push_back({first, first + node->children.size(), m_stack.back().page});
    } else {
        skip();
    }
}

void TreeCursor::skip() {
    while (!m_stack.empty() && ++m_stack.back().node == m_stack.back().end)
        m_stack.pop_back();
}

}  // namespace tarvo::engine::index
