#include "tests/exchange/sourcetest.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace {

using namespace tarvo::exchange;
using namespace tarvo::exchange::tests;

class Ply : public SourceTest {};

// Values in the byte order of the file.
class Binary {
public:
    explicit Binary(bool isBig) : m_isBig(isBig) {}
    template <typename T>
    Binary& put(T value) {
        char bytes[sizeof value];
        std::memcpy(bytes, &value, sizeof value);
        if (m_isBig) {
            std::reverse(bytes, bytes + sizeof value);
        }
        m_bytes.append(bytes, sizeof value);
        return *this;
    }
    const std::string& bytes() const { return m_bytes; }

private:
    bool m_isBig;
    std::string m_bytes;
};

std::string header(const std::string& format, const std::string& elements) {
    return "ply\nformat " + format + " 1.0\ncomment A comment \nobj_info 17\n" + elements +
           "end_header\n";
}

const std::string allTypes =
    "element face 2\nproperty list uchar int16 vertex_indices\nproperty char flag\n"
    "element empty 3\nelement vertex 2\n"
    "property float64 x\nproperty float y\nproperty int32 z\nproperty list uint8 ushort parts\n"
    "property uchar red\nproperty int8 green\nproperty uint8 diffuse_blue\nproperty char small\n"
    "property short middle\nproperty ushort big\nproperty uint large\nproperty float nx\n"
    "property float32 ny\nproperty double nz\nproperty float Scalar_Thing\nproperty float alpha\n"
    "element edge 1\nproperty int32 a\n";

std::string asciiBody() {
    return "3 1 2 3 -1\n0 5\n"
           "1.5 2.5 -3 2 7 8 255 -1 1 -128 -32768 65535 4294967295 0 0.5 1 0.25 0.5\n"
           "-1.5 1e3 4 0 0 127 2 127 32767 0 1 1 0 0 8 0.75\n9\n";
}

std::string binaryBody(bool isBig) {
    Binary body(isBig);
    for (const int length : {3, 0}) {
        body.put(static_cast<std::uint8_t>(length));
        for (int i = 0; i < length; ++i) {
            body.put(std::int16_t{1});
        }
        body.put(std::int8_t{-1});
    }
    body.put(1.5).put(2.5f).put(std::int32_t{-3});
    body.put(std::uint8_t{2}).put(std::uint16_t{7}).put(std::uint16_t{8});
    body.put(std::uint8_t{255}).put(std::int8_t{-1}).put(std::uint8_t{1}).put(std::int8_t{-128});
    body.put(std::int16_t{-32768}).put(std::uint16_t{65535}).put(std::uint32_t{4294967295u});
    body.put(0.0f).put(0.5f).put(1.0).put(0.25f).put(0.5f);
    body.put(-1.5).put(1000.0f).put(std::int32_t{4});
    body.put(std::uint8_t{0});
    body.put(std::uint8_t{0}).put(std::int8_t{127}).put(std::uint8_t{2}).put(std::int8_t{127});
    body.put(std::int16_t{32767}).put(std::uint16_t{0}).put(std::uint32_t{1});
    body.put(1.0f).put(0.0f).put(0.0).put(8.0f).put(0.75f);
    body.put(std::int32_t{9});
    return body.bytes();
}

TEST_F(Ply, EachEncodingHoldsTheSameValues) {
    for (const auto& [format, body] : {std::pair<std::string, std::string>{"ascii", asciiBody()},
                                       {"binary_little_endian", binaryBody(false)},
                                       {"binary_big_endian", binaryBody(true)}}) {
        Table table = read(header(format, allTypes) + body);
        const auto expect = [&, &encoding = format](const char* name, double first, double second) {
            EXPECT_EQ(table[name], (std::vector<double>{first, second})) << name << " " << encoding;
        };
        expect("tarvo.xyz[0]", 1.5, -1.5);
        expect("tarvo.xyz[1]", 2.5, 1000);
        expect("tarvo.xyz[2]", -3, 4);
        expect("tarvo.rgba[0]", 255, 0);
        expect("tarvo.rgba[1]", 255, 127);
        expect("tarvo.rgba[2]", 1, 2);
        expect("ply.small", -128, 127);
        expect("ply.middle", -32768, 32767);
        expect("ply.big", 65535, 0);
        expect("ply.large", 4294967295, 1);
        expect("tarvo.surface_normal[1]", 0.5, 0);
        expect("tarvo.surface_normal[2]", 1, 0);
        expect("ply.scalar_thing", 0.25, 8);
        expect("ply.alpha", 0.5, 0.75);
        EXPECT_EQ(table.size(), 15u);
        EXPECT_NE(notes.find("2 of the element \"face\""), std::string::npos) << notes;
        EXPECT_NE(notes.find("lists \"parts\""), std::string::npos) << notes;
        EXPECT_NE(metaData.find("A comment"), std::string::npos) << metaData;
    }
}

TEST_F(Ply, RecordsWithoutListsAreReadInPieces) {
    const std::uint32_t count = 150000;
    Binary body(true);
    for (std::uint32_t i = 0; i < count; ++i) {
        body.put(static_cast<float>(i)).put(std::uint8_t{1}).put(0.5f).put(std::int16_t{-2});
    }
    Table table = read(
        header("binary_big_endian", "element vertex " + std::to_string(count) +
                                        "\nproperty float x\nproperty uchar a\nproperty float y\n"
                                        "property short z\n") +
        body.bytes());
    ASSERT_EQ(table["tarvo.xyz[0]"].size(), count);
    for (std::uint32_t i = 0; i < count; ++i) {
        ASSERT_EQ(table["tarvo.xyz[0]"][i], i);
    }
    EXPECT_EQ(table["tarvo.xyz[2]"][count - 1], -2);
}

TEST_F(Ply, FaultsAreNamed) {
    const std::string xyz = "property float x\nproperty float y\nproperty float z\n";
    expectFailure("ply\nformat ascii 1.0\nend_header\n", "no vertices");
    expectFailure("ply\nformat ascii 2.0\nend_header\n", "ascii 2.0");
    expectFailure("ply\nformat ascii 1.0\nelement vertex 1\nproperty quad x\n", "quad");
    expectFailure("ply\nformat ascii 1.0\nelement vertex -1\n", "-1");
    expectFailure("ply\nformat ascii 1.0\nelement vertex 1\n" + xyz, "no end");
    expectFailure(header("ascii", "element vertex 3\n" + xyz) + "1 2 3\n4 5 6\n", "2 of 3");
    expectFailure(header("ascii", "element vertex 1\n" + xyz) + "1 2\n", "too few");
    const std::string face = "element face 1\nproperty int a\n";
    read(header("ascii", "element vertex 1\n" + xyz + face) + "1 2 3\n7\n");
    EXPECT_EQ(notes.find("follow"), std::string::npos) << notes;
    read(header("ascii", "element vertex 1\n" + xyz + face) + "1 2 3\n7\n4 5 6\n7 8 9\n");
    EXPECT_NE(notes.find("tells 1 vertices, but 2 more lines follow"), std::string::npos) << notes;
    expectFailure(header("ascii", "element vertex 1\n" + xyz) + "1 2 3 4\n", "too many");
    expectFailure(header("ascii", "element vertex 1\n" + xyz) + "1 2 b\n", "\"b\" for \"z\"");
    expectFailure(header("ascii", "element vertex 1\nproperty uchar x\n") + "256\n", "\"256\"");
    expectFailure(header("ascii", "element vertex 1\nproperty list int int x\n") + "0\n",
                  "no numbers");
    expectFailure(header("ascii", "element vertex 0\nelement vertex 0\n"), "twice");
    expectFailure(header("ascii", "element vertex 1\n" + xyz + xyz) + "1 2 3 4 5 6\n", "twice");
    for (const char* count : {"18446744073709551615", "2000000000"}) {
        expectFailure(
            header("binary_little_endian", "element vertex " + std::string(count) + "\n" + xyz) +
                "0000",
            "take 12 bytes each");
        expectFailure(header("ascii", "element vertex " + std::string(count) + "\n" + xyz), "0 of");
    }
    // A list of 2^31 numbers, and one of fewer than none.
    for (const std::int32_t length : {0x7fffffff, -1}) {
        expectFailure(
            header("binary_little_endian",
                   "element face 1\nproperty list int float l\nelement vertex 0\n" + xyz) +
                Binary(false).put(length).bytes(),
            "longer than the file");
    }
    expectFailure("ply\nformat ascii 1.0\ncomment " + std::string(3 << 20, 'a'), "longer than");
    expectFailure(
        header("ascii", "element vertex 0\nproperty int " + std::string(9999, 'n') + "\n"),
        "a name of 10003 characters");
    std::string many = "element vertex 0\n";
    for (int i = 0; i < 5000; ++i) {
        many += "property int p" + std::to_string(i) + "\n";
    }
    expectFailure(header("ascii", many), "properties");
    expectSurvival(header("ascii", allTypes) + asciiBody(), 3);
    expectSurvival(header("binary_big_endian", allTypes) + binaryBody(true), 3);
}

TEST_F(Ply, RealFilesHaveTheirPoints) {
    if (realFile("").empty()) {
        GTEST_SKIP() << "QRB_TEST_DATA names no folder of real files.";
    }
    const auto table = [&](const char* name) { return realTable(name); };
    for (const char* name : {"simple_text.ply", "simple_binary.ply"}) {
        Table simple = table(name);
        EXPECT_EQ(simple["tarvo.xyz[0]"], (std::vector<double>{-1, 0, 1})) << name;
        EXPECT_EQ(simple["tarvo.xyz[1]"], (std::vector<double>{0, 1, 0})) << name;
        EXPECT_EQ(simple["tarvo.xyz[2]"], (std::vector<double>{0, 0, 0})) << name;
    }
    Table extra = table("text_extradim.ply");
    EXPECT_EQ(extra["tarvo.xyz[0]"][0], -2.64944);
    EXPECT_EQ(extra["tarvo.surface_normal[2]"][0], 0.999665);
    EXPECT_EQ(extra["tarvo.rgba[2]"][0], 64);
    EXPECT_EQ(extra["tarvo.rgba[3]"][0], 255);
    EXPECT_EQ(extra["ply.omg"][0], 1234);
    for (const char* name : {"sized_dims.ply", "unsized_dims.ply"}) {
        EXPECT_EQ(table(name)["tarvo.xyz[1]"][0], 12346) << name;
        EXPECT_EQ(table(name)["ply.i"][0], 1234567890) << name;
    }
    EXPECT_EQ(table("issue_2421.ply")["tarvo.xyz[2]"][0], 1234567890.12345);
    EXPECT_EQ(table("mesh.ply")["tarvo.xyz[1]"], (std::vector<double>{1, 1, 2, 2}));
    EXPECT_NE(notes.find("2 of the element \"face\""), std::string::npos);
    EXPECT_THROW(openSource(realFile("no_vertex.ply")), tarvo::core::Failure);
}

}  // namespace
