// Keys, rows and pages of the index.
#include "engine/index/rows.h"
#include "engine/index/key.h"
#include "engine/index/node.h"
#include "tests/engine/hostile.h"

#include <sys/resource.h>
#include <zstd.h>
#include <csignal>

namespace tarvo::engine::index {
namespace {

using namespace testing;

schema::Attribute primaryOf(std::uint32_t length, double maximum, double invalid) {
    schema::AttributeRecord definition = record("p", 0, maximum, 1, length);
    definition.invalidValue = invalid;
    return schema::Attribute(definition, 1);
}

TEST(Keys, InterleaveAsManyBitsOfEachCoordinateAsThereIsRoomFor) {
    std::mt19937_64 random(5);
    const double none = std::numeric_limits<double>::quiet_NaN();
    struct Case {
        std::uint32_t length;
        double maximum, invalid;
        unsigned dimensions, bits, depth;
    };
    const Case cases[] = {
        {1, 0, none, 1, 1, 1},
        {1, 255, none, 1, 8, 8},
        {1, 255, -1, 1, 9, 9},
        {1, 255, 7, 1, 8, 8},
        {1, 1.8e19, none, 1, 64, 64},
        {2, 4294967295.0, none, 2, 32, 32},
        {2, 1.8e19, none, 2, 64, 64},
        {3, 1048575, none, 3, 20, 20},
        {3, 1099511627775.0, none, 3, 40, 40},
        {3, 1.8e19, none, 3, 64, 42},
        {4, 4294967295.0, -1, 4, 33, 32},
        {4, 1.8e19, none, 4, 64, 32},
        {9, 1.8e19, none, 4, 64, 32},
    };
    for (const Case& one : cases) {
        SCOPED_TRACE(std::to_string(one.length) + " of " + std::to_string(one.maximum));
        const schema::Attribute primary = primaryOf(one.length, one.maximum, one.invalid);
        const KeySpace space(primary);
        EXPECT_EQ(space.dimensions(), one.dimensions);
        EXPECT_EQ(space.bits(), one.bits);
        EXPECT_EQ(space.depth(), one.depth);
        EXPECT_EQ(space.fanout(), 1u << one.dimensions);
        for (int round = 0; round < 50; ++round) {
            std::uint64_t codes[4] = {};
            for (std::uint64_t& code : codes)
                code = round == 0 ? 0 : random() >> (64 - one.bits);
            Key expected = 0;
            for (unsigned level = 1; level <= one.depth; ++level) {
                unsigned child = 0;
                for (unsigned d = 0; d < one.dimensions; ++d)
                    child = child << 1 | (codes[d] >> (one.bits - level) & 1);
                expected = expected << one.dimensions | child;
                EXPECT_EQ(space.child(space.key(codes), level), child);
            }
            const Key key = space.key(codes);
            EXPECT_TRUE(key == expected);
            for (unsigned level = 0; level <= one.depth; ++level) {
                const unsigned levels = std::min(level, 32 / one.dimensions);
                std::uint32_t cell = 0;
                space.cells({codes, one.dimensions}, level, levels, {&cell, 1});
                const Key whole = level == 0 ? 0 : key >> ((one.depth - level) * one.dimensions);
                EXPECT_EQ(cell, static_cast<std::uint32_t>(
                                    whole & ((Key(1) << (levels * one.dimensions)) - 1)));
            }
            EXPECT_TRUE(space.first(key, 0) == 0 && space.last(key, one.depth) == key);
            for (unsigned level = 0; level < one.depth; ++level) {
                const Key first = space.first(key, level);
                const unsigned child = space.child(key, level + 1);
                EXPECT_TRUE(space.childFirst(first, level, child) == space.first(key, level + 1));
                EXPECT_TRUE(space.childFirst(first, level, space.fanout() - 1) <=
                            space.last(key, level));
            }
        }
    }
}

// Attributes of one value for the whole file have no place, the point id's is known.
TEST(Rows, HoldEveryElementOfWhatDiffers) {
    schema::AttributeTable table;
    table.all().emplace_back(record("xyz", 0, 1000, 1, 3), 7);
    schema::AttributeRecord constant = record("constant", 0, 255);
    constant.storageClass = 1;
    table.all().emplace_back(constant, 2);
    schema::AttributeRecord id = record("tarvo.id", 0, 1e10);
    id.storageClass = 3;
    table.all().emplace_back(id, 9);
    table.all().emplace_back(record("class", 0, 255, 1, 2), 4);
    const RowLayout layout(table);
    std::string text = std::to_string(layout.stride()) + ":";
    for (const RowLayout::Field& field : layout.fields())
        text += " " + std::to_string(field.uid) + "[" + std::to_string(field.element) + "]@" +
                std::to_string(field.offset) + "+" + std::to_string(field.width);
    EXPECT_EQ(text, "16: 7[0]@0+2 7[1]@2+2 7[2]@4+2 9[0]@6+8 4[0]@14+1 4[1]@15+1");
    EXPECT_EQ(layout.fields()[layout.idField()].uid, 9u);
    EXPECT_EQ(layout.fieldOf(0), 0u);
    EXPECT_EQ(layout.fieldOf(2), 3u);
    EXPECT_EQ(layout.fieldOf(3), 4u);
}

// A node as it is written, with what a test makes of it.
struct Written {
    std::uint64_t id = 5;
    std::uint8_t level = 3;
    std::uint8_t flags = 0;
    Key first = 8, last = 15;
    std::uint64_t total = 4, own = 4;
    std::function<void(ByteWriter&)> attributes = [](ByteWriter& out) { out.varint(0); };
    std::function<void(ByteWriter&)> rest = [](ByteWriter&) {};
};

Bytes pageOf(const Written& node, const std::function<void(Bytes&)>& change = {}) {
    Bytes plain;
    ByteWriter out(plain);
    out.varint(1);
    out.varint(node.id);
    out.number(node.level);
    out.number(node.flags);
    out.varint(9);
    for (const Key key : {node.first, node.last}) {
        out.number(static_cast<std::uint64_t>(key));
        out.number(static_cast<std::uint64_t>(key >> 64));
    }
    out.varint(node.total);
    out.varint(node.own);
    node.attributes(out);
    node.rest(out);
    if (change)
        change(plain);
    Bytes packed(ZSTD_compressBound(plain.size()));
    packed.resize(ZSTD_compress(packed.data(), packed.size(), plain.data(), plain.size(), 1));
    return packed;
}

std::string refusalOf(const Bytes& page) {
    try {
        (void)decodePage(page);
    } catch (const Failure& failure) {
        EXPECT_EQ(failure.code(), ErrorCode::Damaged);
        EXPECT_STREQ(failure.what(), "The file is damaged: a page of the index is not readable.");
        return failure.details();
    }
    return {};
}

void writeAttribute(ByteWriter& out, std::uint32_t uid,
                    const std::function<void(ByteWriter&)>& elements) {
    out.varint(uid);
    out.varint(1);
    elements(out);
}

TEST(HostilePage, NumbersThatNoNodeHasAreRefused) {
    const auto with = [](const std::function<void(Written&)>& change) {
        Written node;
        change(node);
        return refusalOf(pageOf(node));
    };
    const std::string impossible = "Found a node that can't be.";
    EXPECT_EQ(with([](Written&) {}), "");
    EXPECT_EQ(with([](Written& n) { n.level = 128; }), "");
    EXPECT_EQ(with([](Written& n) { n.first = n.last; }), "");
    EXPECT_EQ(with([](Written& n) { n.id = 0; }), impossible);
    EXPECT_EQ(with([](Written& n) { n.id = 1ull << 32; }),
              "Found the number 4294967296 where at most 4294967295 is possible.");
    EXPECT_EQ(with([](Written& n) { n.level = 129; }), impossible);
    EXPECT_EQ(with([](Written& n) { n.flags = 3; }), impossible);
    EXPECT_EQ(with([](Written& n) { n.first = n.last + 1; }), impossible);
    EXPECT_EQ(with([](Written& n) { n.first = Key(1) << 64; }), impossible);
    EXPECT_EQ(with([](Written& n) { n.own = 5; }), impossible);
    EXPECT_EQ(with([](Written& n) { n.own = 3; }), impossible);
    EXPECT_EQ(with([](Written& n) { n.flags = 2, n.own = 5; }), impossible);
    EXPECT_EQ(with([](Written& n) {
                  n.flags = 1;
                  n.rest = [](ByteWriter& out) { out.varint(0), out.bytes(Bytes(100)); };
              }),
              impossible);
    const auto reference = [](std::uint64_t blob) {
        return [blob](ByteWriter& out) {
            for (const std::uint64_t number : {blob, std::uint64_t(1), std::uint64_t(2)})
                out.varint(number);
            out.number(std::uint64_t(3));
        };
    };
    EXPECT_EQ(with([&](Written& n) { n.flags = 2, n.own = 0, n.rest = reference(7); }), "");
    EXPECT_EQ(with([&](Written& n) { n.flags = 2, n.own = 0, n.rest = reference(0); }),
              "Found a reference to nothing.");

    const auto attributes = [&](const std::vector<std::uint32_t>& uids,
                                const std::function<void(ByteWriter&)>& elements) {
        return with([&](Written& n) {
            n.attributes = [&](ByteWriter& out) {
                out.varint(uids.size());
                for (const std::uint32_t uid : uids)
                    writeAttribute(out, uid, elements);
            };
        });
    };
    const auto none = [](ByteWriter& out) { out.varint(0); };
    EXPECT_EQ(attributes({1, 2, 9}, none), "");
    EXPECT_EQ(attributes({1, 2, 2}, none), "Found attributes out of order.");
    EXPECT_EQ(attributes({2, 1}, none), "Found attributes out of order.");
    const auto elements = [](std::uint64_t count) {
        return [count](ByteWriter& out) {
            out.varint(count);
            out.bytes(Bytes(count));
        };
    };
    EXPECT_EQ(attributes({1}, elements(255)), "");
    EXPECT_EQ(attributes({1}, elements(256)),
              "Found the number 256 where at most 255 is possible.");
    const auto range = [&](std::uint64_t minimum, std::uint64_t width) {
        return attributes({1}, [&](ByteWriter& out) {
            out.varint(1);
            out.number<std::uint8_t>(1);
            out.varint(minimum);
            out.varint(width);
        });
    };
    EXPECT_EQ(range(1, ~0ull - 1), "");
    EXPECT_EQ(range(~0ull, 0), "");
    EXPECT_EQ(range(2, ~0ull - 1),
              "Found the number 18446744073709551614 where at most 18446744073709551613 is "
              "possible.");
    EXPECT_EQ(refusalOf(pageOf({}, [](Bytes& plain) { plain.push_back(0); })),
              "Found bytes behind its end.");
    EXPECT_EQ(attributes({1},
                         [](ByteWriter& out) {
                             out.varint(2);
                             out.number<std::uint8_t>(0);
                         }),
              "Found its end too early.");
    Bytes cut = pageOf({});
    cut.pop_back();
    EXPECT_EQ(refusalOf(cut), "Found contents that can't be unpacked.");
    EXPECT_EQ(refusalOf(Bytes{1, 2, 3}), "Found an impossible size.");
    EXPECT_EQ(refusalOf({}), "Found an impossible size.");
}

// Every member of a node comes back; a page that could not be read again is not made.
TEST(Pages, HoldEveryMemberOfTheirNodes) {
    Node leaf;
    leaf.id = 7;
    leaf.level = 2;
    leaf.revision = 3;
    leaf.first = Key(5) << 80;
    leaf.last = (Key(5) << 80) + 9;
    leaf.totalCount = leaf.ownCount = 11;
    leaf.attributes = {{4, 2, {{{1, ~0ull, true, false}, {9, 8, 7, 6}}, {{0, 0, false, true}, {}}}},
                       {5, 3, {{{3, 3, true, true}, {}}}}};
    Node node;
    node.id = 4294967295u;
    node.revision = 4;
    node.last = ~Key(0);
    node.totalCount = 11;
    node.ownCount = 2;
    node.attributes = leaf.attributes;
    node.children = {leaf};
    Node far = leaf;
    far.childPage = {1, 2, 3, ~0ull};
    far.ownCount = 0;
    const auto same = [](auto&& self, const Node& a, const Node& b) -> void {
        EXPECT_EQ(a.id, b.id);
        EXPECT_EQ(a.level, b.level);
        EXPECT_EQ(a.revision, b.revision);
        EXPECT_TRUE(a.first == b.first && a.last == b.last);
        EXPECT_EQ(a.totalCount, b.totalCount);
        EXPECT_EQ(a.ownCount, b.ownCount);
        EXPECT_TRUE(a.childPage == b.childPage);
        ASSERT_EQ(a.attributes.size(), b.attributes.size());
        for (std::size_t i = 0; i < a.attributes.size(); ++i) {
            EXPECT_EQ(a.attributes[i].uid, b.attributes[i].uid);
            EXPECT_EQ(a.attributes[i].revision, b.attributes[i].revision);
            ASSERT_EQ(a.attributes[i].elements.size(), b.attributes[i].elements.size());
            for (std::size_t e = 0; e < a.attributes[i].elements.size(); ++e) {
                EXPECT_EQ(a.attributes[i].elements[e].statistics,
                          b.attributes[i].elements[e].statistics);
                EXPECT_TRUE(a.attributes[i].elements[e].block == b.attributes[i].elements[e].block);
            }
        }
        ASSERT_EQ(a.children.size(), b.children.size());
        for (std::size_t i = 0; i < a.children.size(); ++i)
            self(self, a.children[i], b.children[i]);
    };
    const Page page{node, far};
    const Page read = decodePage(encodePage(page));
    ASSERT_EQ(read.size(), 2u);
    same(same, read[0], node);
    same(same, read[1], far);
    EXPECT_TRUE(decodePage(encodePage({})).empty());

    // An outline is the same without the attributes.
    const auto bare = [](const auto& self, Node of) -> Node {
        of.attributes.clear();
        for (Node& child : of.children)
            child = self(self, child);
        return of;
    };
    const Page outline = decodePage(encodePage(page), PageContents::Outline);
    ASSERT_EQ(outline.size(), 2u);
    same(same, outline[0], bare(bare, node));
    same(same, outline[1], bare(bare, far));

    // What they take counts below each other, too.
    Page nested{node}, flat{leaf};
    nested[0].attributes.clear();
    EXPECT_EQ(heldBytes(flat), sizeof(Node) + 2 * sizeof(AttributeData) + 3 * sizeof(ElementData));
    EXPECT_EQ(heldBytes(nested), sizeof(Node) + node.attributes.size() * sizeof(AttributeData) +
                                     heldBytes(nested[0].children));

    // Room that is not touched.
    Page large;
    large.reserve((std::size_t(2) << 30) / sizeof(Node) + 1);
    EXPECT_EQ(outcomeOf([&] { (void)encodePage(large); }).text,
              "The index can't be stored: too many points lie at one place for leaves so small.");
}

TEST(Pages, TellOfAnAbsentAttributeWhatItsDefaultIs) {
    schema::AttributeRecord definition = record("a", 0, 10);
    definition.invalidValue = definition.defaultValue = 7;
    schema::Attribute attribute(definition, 3);
    using Statistics = schema::ElementStatistics;
    EXPECT_EQ(statisticsOf(Node(), attribute, 0), (Statistics{0, 0, false, true}));
    attribute.constant = {4};
    EXPECT_EQ(statisticsOf(Node(), attribute, 0), (Statistics{4, 4, true, false}));
    EXPECT_EQ(statisticsOf(Node(), attribute, 1), (Statistics{0, 0, false, true}));
    Node node;
    node.attributes = {{2, 1, {{{9, 9, true, false}, {}}}}, {3, 1, {{{1, 2, true, true}, {}}}}};
    EXPECT_EQ(statisticsOf(node, attribute, 0), (Statistics{1, 2, true, true}));
    EXPECT_EQ(statisticsOf(node, attribute, 1), (Statistics{0, 0, false, true}));
}

// Whoever holds the page that the walk names keeps its nodes.
TEST(Walks, ShareThePagesTheyStandIn) {
    Node leaf;
    leaf.id = 3;
    leaf.level = 2;
    leaf.last = 15;
    leaf.totalCount = leaf.ownCount = 5;
    Node inner;
    inner.id = 2;
    inner.level = 1;
    inner.last = 255;
    inner.totalCount = 5;
    inner.children = {leaf};
    Node root;
    root.id = 1;
    root.last = 255;
    root.totalCount = 5;
    root.childPage = {1, 0, 1, 0};
    std::shared_ptr<const Page> held;
    const Node* node = nullptr;
    {
        TreeCursor cursor(
            root, [&](const BlobRef&) { return std::make_shared<const Page>(Page{inner}); });
        std::string walked;
        for (; cursor.node(); cursor.enter()) {
            walked += std::to_string(cursor.node()->id) + "@" + std::to_string(cursor.depth()) +
                      (cursor.page() ? "+ " : " ");
            if (cursor.node()->id == 3) {
                node = cursor.node();
                held = cursor.page();
            }
        }
        EXPECT_EQ(walked, "1@0 2@1+ 3@2+ ");
    }
    ASSERT_TRUE(held);
    EXPECT_EQ(node, &held->at(0).children[0]);

    // Past what is below a node.
    Node wide = root;
    Node second = leaf;
    second.id = 4;
    second.level = 1;
    second.first = 256;
    second.last = 300;
    wide.last = 511;
    wide.totalCount = 10;
    wide.childPage = {};
    wide.children = {inner, second};
    TreeCursor past(wide, {});
    past.enter();
    past.skip();
    ASSERT_TRUE(past.node());
    EXPECT_EQ(past.node()->id, 4u);
    past.enter();
    EXPECT_FALSE(past.node());

    // Where the nodes below are none of a tree, the walk ends, in a page and beside it.
    leaf.totalCount = leaf.ownCount = 4;
    inner.children = {leaf};
    for (const bool inPage : {true, false}) {
        Node start = root;
        if (!inPage) {
            start.childPage = {};
            start.children = {inner};
        }
        TreeCursor cursor(
            start, [&](const BlobRef&) { return std::make_shared<const Page>(Page{inner}); });
        cursor.enter();
        EXPECT_EQ(outcomeOf([&] { cursor.enter(); }).code, ErrorCode::Damaged);
        Node other = start;
        other.totalCount = 6;
        TreeCursor second(
            other, [&](const BlobRef&) { return std::make_shared<const Page>(Page{inner}); });
        EXPECT_EQ(outcomeOf([&] { second.enter(); }).code, ErrorCode::Damaged);
    }
}

}  // namespace
}  // namespace tarvo::engine::index
