// Coordinate reference systems out of well-known texts and GeoTIFF keys: units, codes, names, and
// when two of them are the same.
#include "exchange/las/crs.h"
#include "core/referencesystem.h"
#include "exchange/bytes.h"
#include "exchange/las/geokeys.h"
#include "exchange/las/units.h"
#include "exchange/las/wkt.h"
#include "tests/exchange/lasbuilder.h"

#include <gtest/gtest.h>

#include <map>
#include <random>

namespace {

using namespace tarvo::exchange;
using namespace tarvo::exchange::tests;
using tarvo::core::isSame;
using tarvo::core::ReferenceSystem;

// Name, code, horizontal and vertical unit; behind "?" what was not understood.
std::string told(const std::optional<ReferenceSystem>& system) {
    return system
               ? system->name + "|" + system->code + "|" + system->horizontalUnit + "|" +
                     system->verticalUnit + (system->isUnderstood() ? "" : " ? " + system->unread)
               : "nothing";
}

const std::string geographic1 =
    R"(GEOGCS["WGS 84",DATUM["WGS_1984",SPHEROID["WGS 84",6378137,298.257223563,)"
    R"(AUTHORITY["EPSG","7030"]],AUTHORITY["EPSG","6326"]],PRIMEM["Greenwich",0],)"
    R"(UNIT["degree",0.0174532925199433,AUTHORITY["EPSG","9122"]],AUTHORITY["EPSG","4326"]])";

std::string projected1(const std::string& unit, const std::string& code) {
    return R"(PROJCS["Zone 32",)" + geographic1 +
           R"(,PROJECTION["Transverse_Mercator"],PARAMETER["scale_factor",0.9996],)" + unit +
           R"(,AXIS["Easting",EAST])" + code + "]";
}

std::string vertical1(const std::string& unit) {
    return R"(VERT_CS["Height",VERT_DATUM["Datum",2005],)" + unit +
           R"(,AXIS["Up",UP],AUTHORITY["EPSG","7837"]])";
}

const std::string metre = R"(UNIT["metre",1])";
const std::string projected2 =
    R"(PROJCRS["Zone 32 N",BASEGEOGCRS["B",DATUM["D",ELLIPSOID["E",6378137,298.25,)"
    R"(LENGTHUNIT["metre",1]]],ID["EPSG",4258]],CONVERSION["C",METHOD["M"]],CS[Cartesian,2],)"
    R"w(AXIS["easting (E)",east,ORDER[1]],AXIS["northing (N)",north,ORDER[2]],)w"
    R"(LENGTHUNIT["metre",1],ID["EPSG",25832]])";
const std::string vertical2 =
    R"w(VERTCRS["Heights",VDATUM["V"],CS[vertical,1],AXIS["height (H)",up,)w"
    R"(LENGTHUNIT["US survey foot",0.304800609601219]],ID["EPSG",6360]])";

TEST(Crs, WellKnownTextsTellUnitsCodesAndNames) {
    const std::pair<std::string, std::string> samples[] = {
        {geographic1, "WGS 84|EPSG:4326|deg|"},
        {projected1(metre, R"(,AUTHORITY["epsg","25832"])"), "Zone 32|EPSG:25832|m|"},
        // The unit of the system, not that of the system it is made from; no code but its own.
        {projected1(R"(UNIT["foot",0.3048])", ""), "Zone 32||ft|"},
        {projected1(R"(UNIT["Foot_US",0.3048006096012192])", ""), "Zone 32||ftUS|"},
        {projected1(R"(UNIT["German legal metre",1.0000135965])", ""),
         "Zone 32||German legal metre|"},
        {projected1(R"(UNIT["furlong"])", ""), "Zone 32||furlong|"},
        {R"(COMPD_CS["Both",)" + projected1(metre, R"(,AUTHORITY["EPSG","25832"])") + "," +
             vertical1(R"(UNIT["foot",0.3048])") + "]",
         "Both|EPSG:25832+7837|m|ft"},
        // A part without a code: that of the whole would be another system's.
        {R"(COMPD_CS["Both",)" + projected1(metre, "") + "," + vertical1(metre) + "]", "Both||m|m"},
        {R"(COMPD_CS["Both",)" + projected1(metre, "") + "," + vertical1(metre) +
             R"(,AUTHORITY["EPSG","5555"]])",
         "Both|EPSG:5555|m|m"},
        {R"(COMPD_CS["Both",)" + projected1(metre, R"(,AUTHORITY["LOCAL","102100"])") + "," +
             vertical1(metre) + "]",
         "Both|LOCAL:102100+EPSG:7837|m|m"},
        {projected1(metre, "") + ",\n" + R"(VERTCS["NAVD88",VDATUM["V"],UNIT["Foot",0.3048]])",
         "Zone 32 + NAVD88||m|ft"},
        {R"(GEOCCS["Earth",DATUM["D"],UNIT["metre",1],AUTHORITY["EPSG","4978"]])",
         "Earth|EPSG:4978|m|"},
        {R"w(LOCAL_CS("Site (old)", UNIT("metre", 1e0)))w", "Site (old)||m|"},
        {projected2, "Zone 32 N|EPSG:25832|m|"},
        {"compoundcrs[\"C\",\n " + projected2 + ",\n " + vertical2 + "\n]",
         "C|EPSG:25832+6360|m|ftUS"},
        {R"(BOUNDCRS[SOURCECRS[)" + projected2 + R"(],TARGETCRS[)" + geographic1 +
             R"(],ABRIDGEDTRANSFORMATION["T"]])",
         "Zone 32 N|EPSG:25832|m|"},
        {R"(GEOGCRS["3D",DATUM["D"],CS[ellipsoidal,3],AXIS["lat",north,ANGLEUNIT["degree",)"
         R"(0.0174532925199433]],AXIS["lon",east,ANGLEUNIT["degree",0.0174532925199433]],)"
         R"(AXIS["h",up,LENGTHUNIT["metre",1]],ID["EPSG",4979]])",
         "3D|EPSG:4979|deg|m"},
        {R"(GEODCRS["E",DATUM["D"],CS[Cartesian,3],AXIS["X",geocentricX],AXIS["Y",geocentricY],)"
         R"(AXIS["Z",geocentricZ],UNIT["metre",1]])",
         "E||m|m"},
        {R"(ENGCRS["Site",EDATUM["x"],CS[Cartesian,2],AXIS["x",east],UNIT["yard",0.9144]])",
         "Site||yd|"},
        {R"(VERTCRS["H",VDATUM["V"],CS[vertical,1],AXIS["h",up],LENGTHUNIT["metre",1]])", "H|||m"},
        {std::string("\xef\xbb\xbf \0", 5) + projected1(metre, "") + std::string(" \0\n", 3),
         "Zone 32||m|"},
        {R"(LOCAL_CS["5"" grid",UNIT["5"" rod",5.0]])", "5\" grid||5\" rod|"},
        {std::string(" \0\n", 3), "nothing"},
    };
    for (const auto& [text, expected] : samples)
        EXPECT_EQ(told(las::systemOfWkt(text)), expected) << text;
}

// What was told and not understood must neither count as "none", nor leave units that nobody told.
TEST(Crs, WhatIsDamagedInTextsIsNamedAndTheRestUsed) {
    const std::string cut = " ? the end of the well-known text, which is cut off";
    const std::string none = "the well-known text, which is no system of points in space";
    const auto factor = [](const std::string& text) {
        return std::pair{R"(LOCAL_CS["S",UNIT["metre",)" + text + "]]",
                         "S||| ? the unit \"metre\" with the factor \"" + text + "\""};
    };
    const std::pair<std::string, std::string> samples[] = {
        {projected1(metre, "") + " junk", "Zone 32||m| ? the well-known text from \"junk\" on"},
        {projected1(metre, "") + ",FOO[1]", "Zone 32||m| ? what stands behind the well-known text"},
        {R"(PROJCS["closed"]])", "closed||| ? the well-known text from \"]\" on"},
        {R"(PROJCS["open",UNIT["metre",1])", "open||m|" + cut},
        {R"(PROJCS["open",UNIT["foot",0.30)", "open|||" + cut},  // a third of it is another unit
        {R"(COMPD_CS["Both",)" + projected1(metre, "") + R"(,VERT_CS["H",UNIT["foot",0.3048])",
         "Both||m|" + cut},
        {R"(PROJCS["Z",UNIT["metre",1},AUTHORITY["EPSG","25832"]])",
         "Z||| ? the well-known text from \"},AUTHORITY[\"EPSG\",\"2583\" on"},
        {"PROJCS", "||| ? the well-known text from \"PROJCS\" on"},
        {R"(TIMECRS["t",TDATUM["x"]])", "t||| ? " + none},
        {R"(COMPD_CS["empty"])", "empty||| ? " + none},
        {R"(BOUNDCRS[BOUNDCRS[]])", "||| ? the well-known text"},
        factor("0"),
        factor("-1"),
        factor("nan"),
        factor("inf"),
        factor("1e999"),
        factor("one"),
    };
    for (const auto& [text, expected] : samples)
        EXPECT_EQ(told(las::systemOfWkt(text)), expected) << text;
}

struct Key {
    std::uint16_t id;
    std::uint16_t code = 0;
    std::string text = {};
    std::vector<double> numbers = {};
};

struct Keys {
    Bytes directory, doubles, ascii;
    explicit Keys(const std::vector<Key>& keys) {
        const auto add = [&](std::initializer_list<std::size_t> words) {
            for (const std::size_t word : words)
                put(directory, directory.size(), static_cast<std::uint16_t>(word));
        };
        add({1, 1, 0, keys.size()});
        for (const Key& key : keys) {
            if (!key.text.empty()) {
                add({key.id, 34737, key.text.size() + 1, ascii.size()});
                ascii.insert(ascii.end(), key.text.begin(), key.text.end());
                ascii.push_back('|');
            } else if (!key.numbers.empty()) {
                add({key.id, 34736, key.numbers.size(), doubles.size() / 8});
                for (const double number : key.numbers)
                    put(doubles, doubles.size(), number);
            } else {
                add({key.id, 0, 1, key.code});
            }
        }
    }
    std::optional<ReferenceSystem> system() const {
        return las::systemOfKeys(directory, doubles, ascii);
    }
};

TEST(Crs, GeoKeysTellUnitsCodesAndNames) {
    const std::pair<std::vector<Key>, std::string> samples[] = {
        {{{1024, 2}, {2048, 4326}, {2049, 0, "WGS 84"}, {2054, 9102}}, "WGS 84|EPSG:4326|deg|"},
        {{{1024, 1}, {1026, 0, "UTM 32"}, {3072, 25832}, {3076, 9001}, {4096, 7837}, {4099, 9001}},
         "UTM 32|EPSG:25832+7837|m|m"},
        // The angular unit of a projected system is not that of its coordinates.
        {{{1024, 1}, {2048, 4152}, {2054, 9102}, {3072, 2903}, {3076, 9003}}, "|EPSG:2903|ftUS|"},
        {{{1024, 1}, {3072, 32767}, {3073, 0, "PCS Name = Feet|Datum = D"}, {3076, 9002}},
         "Feet||ft|"},
        {{{1024, 1}, {3072, 32767}, {3076, 32767}, {3077, 0, "", {1200.0 / 3937}}}, "||ftUS|"},
        {{{1024, 2}, {2048, 32767}, {2054, 32767}, {2055, 0, "", {0.015707963267949}}}, "||gon|"},
        {{{1024, 3}, {2048, 4978}, {2052, 9001}}, "|EPSG:4978|m|m"},
        {{{1024, 3}, {2048, 4326}, {2052, 9001}},
         "||m|m ? the geographic system 4326 for geocentric coordinates"},
        {{{3072, 32632}}, "|EPSG:32632|m|"},
        // Heights had numbers of their own once; the register has one per unit.
        {{{1024, 1}, {1026, 0, "unknown"}, {3072, 2903}, {3076, 9003}, {4096, 5103}, {4099, 9003}},
         "|EPSG:2903+6360|ftUS|ftUS"},
        {{{1024, 1}, {3072, 26915}, {4096, 5703}}, "|EPSG:26915+5703|m|m"},
        {{{1024, 1}, {3072, 27700}, {3076, 9005}, {4096, 5701}, {4099, 9014}},
         "|EPSG:27700+5701|Clarke's foot|fathom"},
        // Codes and sizes that nobody knows, an angle for a length: no unit is made up for them.
        {{{1024, 1}, {3072, 32632}, {3076, 4711}},
         "|EPSG:32632|| ? the unit with the code 4711 (GeoTIFF key 3076)"},
        {{{1024, 1}, {3072, 32632}, {3076, 9102}},
         "|EPSG:32632|| ? the unit with the code 9102 (GeoTIFF key 3076)"},
        {{{1024, 1}, {3072, 32632}, {3076, 32767}, {3077, 0, "", {0}}},
         "|EPSG:32632|| ? the unit of the size 0 (GeoTIFF key 3077)"},
        {{{1024, 1}, {3072, 32632}, {4096, 32767}, {4099, 4711}},
         "||m| ? the unit with the code 4711 (GeoTIFF key 4099)"},
        {{{1024, 1}, {3072, 32632}, {4096, 5703}, {4099, 32767}},
         "|EPSG:32632+5703|m| ? the unit with the code 32767 (GeoTIFF key 4099)"},
        {{{4096, 32767}, {4099, 4711}},
         "||| ? the unit with the code 4711 (GeoTIFF key 4099); GeoTIFF keys that name neither a "
         "system nor a unit"},
        {{{1024, 1}, {3072, 40000}, {3076, 9001}}, "||m| ? the code 40000 of GeoTIFF key 3072"},
        {{{1024, 1}, {3072, 32767}}, "||| ? GeoTIFF keys that name neither a system nor a unit"},
        // Heights of which no code is known make another system than the map alone.
        {{{1024, 1}, {3072, 26915}, {4096, 5030}, {4097, 0, "Ellipsoid"}, {1026, 0, "Z15"}},
         "Z15 + Ellipsoid||m|"},
        {{{1024, 1}, {1025, 1}, {3072, 0}}, "nothing"},
        {{}, "nothing"},
    };
    for (const auto& [keys, expected] : samples)
        EXPECT_EQ(told(Keys(keys).system()), expected);
    Keys cut({{1024, 1}, {3072, 32632}, {1026, 0, "Zone 32"}});
    cut.ascii.clear();
    EXPECT_EQ(told(cut.system()), "|EPSG:32632|m|") << "no text of the length told";
    cut.directory.resize(20);
    EXPECT_EQ(told(cut.system()),
              "||| ? GeoTIFF keys from number 2 on; GeoTIFF keys that name "
              "neither a system nor a unit");
    cut.directory.resize(3);
    EXPECT_EQ(told(cut.system()),
              "||| ? the directory of the GeoTIFF keys, which is cut off; "
              "GeoTIFF keys that name neither a system nor a unit");
}

TEST(Crs, UnitsAreToldByTheirFactorsAndNoOthers) {
    using las::lengthUnit;
    EXPECT_EQ(lengthUnit(0.3048006, "f"), "ftUS") << "as writers cut it off";
    EXPECT_EQ(lengthUnit(0.3048007491, "f"), "British foot (1936)") << "half a millionth beside it";
    EXPECT_EQ(lengthUnit(12 / 39.370113, "f"), "British foot (Benoit 1895 B)");
    EXPECT_EQ(lengthUnit(0.304799733333333, "f"), "British foot (Benoit 1895 A)");
    EXPECT_EQ(lengthUnit(0.30479, "f"), "f");
    for (const int code : {9001, 9005, 9014, 9030, 9036, 9037, 9043, 9051, 9084, 9099, 9300, 9302})
        EXPECT_NE(las::lengthUnitOfCode(code), "") << code;
}

TEST(Crs, TheSameSystemIsKnownByCodeElseByTextElseByKeys) {
    const auto text = [](const std::string& wkt) { return las::systemOfWkt(wkt).value(); };
    const auto keys = [](const std::vector<Key>& list) { return Keys(list).system().value(); };
    const std::string coded = R"(,AUTHORITY["EPSG","25832"])";
    const auto byCode = keys({{1024, 1}, {3072, 25832}, {3076, 9001}});
    EXPECT_TRUE(isSame(text(projected1(metre, coded)), byCode));
    EXPECT_TRUE(isSame(text(projected2), byCode)) << "either form of the text";
    EXPECT_FALSE(isSame(byCode, keys({{1024, 1}, {3072, 25833}, {3076, 9001}})));
    EXPECT_FALSE(isSame(byCode, keys({{1024, 1}, {3072, 25832}, {4096, 7837}})));
    EXPECT_FALSE(isSame(byCode, text(projected1(metre, ""))));
    // Codes of other registers have no number that could be compared.
    const auto foreign = [&](const std::string& code) {
        return text(projected1(metre, R"(,AUTHORITY["LOCAL",")" + code + R"("])"));
    };
    EXPECT_TRUE(isSame(foreign("102100"), foreign("102100")));
    EXPECT_FALSE(isSame(foreign("102100"), foreign("102101")));
    EXPECT_FALSE(isSame(foreign("102100"), byCode));

    const std::string own = projected1(metre, "");
    std::string other = own;  // by a writer of other habits
    for (const auto& [from, to] : {std::pair{"[", " ( "},
                                   {"]", ")\r\n"},
                                   {"PROJCS", "ProjCS"},
                                   {"0.0174532925199433", "0.01745329251994328"},
                                   {"6378137,", "+6378137.0 ,"},
                                   {"0.9996", "9.996E-1"}}) {
        for (std::size_t at = 0; (at = other.find(from, at)) != std::string::npos;
             at += std::string(to).size())
            other.replace(at, std::string(from).size(), to);
    }
    EXPECT_TRUE(isSame(text(own), text(other))) << other;
    for (const auto& [from, to] : {std::pair{"0.9996", "0.9997"}, {"Zone 32", "zone 32"}}) {
        other = own;
        other.replace(other.find(from), std::string(from).size(), to);
        EXPECT_FALSE(isSame(text(own), text(other))) << other;
    }
    // The units of the axes are part of what coordinates mean.
    const auto utm = [&](std::uint16_t unit, std::uint16_t heights, std::uint16_t heightUnit) {
        return keys({{1024, 1}, {3072, 25832}, {3076, unit}, {4096, heights}, {4099, heightUnit}});
    };
    EXPECT_FALSE(isSame(byCode, utm(9002, 0, 0)));
    EXPECT_FALSE(isSame(byCode, utm(9001, 0, 9002))) << "heights in the unit of the map";
    EXPECT_TRUE(isSame(byCode, utm(9001, 0, 9001)));
    EXPECT_TRUE(isSame(byCode, utm(0, 0, 0))) << "not told";
    EXPECT_FALSE(isSame(utm(9001, 7837, 9001), utm(9001, 7837, 9002)));
    EXPECT_TRUE(isSame(utm(9001, 8051, 9002), utm(9001, 8051, 0)));
    EXPECT_TRUE(isSame(
        utm(9001, 7837, 9001),
        text(R"(COMPD_CS["Both",)" + projected1(metre, coded) + "," + vertical1(metre) + "]")));
    // What was not understood is the same where it was told alike.
    EXPECT_FALSE(isSame(byCode, utm(4711, 0, 0)));
    EXPECT_FALSE(isSame(utm(4712, 0, 0), utm(4711, 0, 0)));
    EXPECT_TRUE(isSame(utm(4711, 0, 0), utm(4711, 0, 0)));
    EXPECT_FALSE(isSame(text(projected2), text(projected2 + "]")));
    EXPECT_TRUE(isSame(text(projected2 + "]"), text(" " + projected2 + "]")));

    const std::vector<Key> defined = {
        {1024, 1}, {3072, 32767}, {3076, 9001}, {3078, 0, "", {43.5}}};
    std::vector<Key> turned(defined.rbegin(), defined.rend());
    EXPECT_TRUE(isSame(keys(defined), keys(turned)));
    turned[0].numbers[0] = 43.25;
    EXPECT_FALSE(isSame(keys(defined), keys(turned)));
}

TEST(Crs, TheHeaderSaysWhetherTextOrKeysCount) {
    const auto told2 = [](std::uint16_t encoding, const std::string& wkt,
                          const std::vector<Key>& keys) {
        const Keys data(keys);
        las::Header header;
        header.globalEncoding = encoding;
        std::vector<las::Record> records(4);
        records[0] = {"liblas", 2112, "", 1, Bytes{'x'}};
        records[1] = {"LASF_Projection", 34735, "", data.directory.size(), data.directory};
        records[2] = {"LASF_Projection", 34737, "", data.ascii.size(), data.ascii};
        records[3] = {"LASF_Projection", 2112, "", wkt.size(), Bytes(wkt.begin(), wkt.end())};
        return las::referenceSystem(header, records);
    };
    const std::vector<Key> keys = {{1024, 1}, {3072, 25832}};
    EXPECT_EQ(told(told2(0, geographic1, keys)), "|EPSG:25832|m|");
    EXPECT_EQ(told(told2(16, geographic1, keys)), "WGS 84|EPSG:4326|deg|");
    EXPECT_EQ(told(told2(0, geographic1, {})), "WGS 84|EPSG:4326|deg|");
    const std::string damaged = " ? the well-known text from \"damaged\" on";
    EXPECT_EQ(told(told2(16, "damaged", keys)), "|EPSG:25832|m|" + damaged);
    EXPECT_EQ(told(told2(16, "damaged", {})), "|||" + damaged);
    EXPECT_EQ(told(told2(0, "damaged", {})), "|||" + damaged);
    EXPECT_EQ(told2(16, "damaged", {})->wkt, "damaged");
    EXPECT_EQ(told(told2(0, "damaged", keys)), "|EPSG:25832|m|");
    EXPECT_EQ(told(told2(16, std::string("\0\0", 2) + geographic1, {})), "WGS 84|EPSG:4326|deg|");
    // A text that agrees describes what keys without a code say nothing of.
    const std::vector<Key> feet = {{1024, 1}, {3072, 32767}, {3076, 9002}};
    EXPECT_EQ(told2(0, geographic1, feet)->wkt, "");
    const std::string text = projected1(R"(UNIT["foot",0.3048])", "");
    EXPECT_EQ(told2(0, text + std::string(3, '\0'), feet)->wkt, text);
}

// Sizes and nesting that no system has must cost neither stack nor memory, whatever they claim.
TEST(Crs, HostileTextsAndKeysTellNothingOrLittle) {
    std::string deep;
    for (int i = 0; i < 200000; ++i)
        deep += "BOUNDCRS[SOURCECRS[";
    const std::string tooMuch = "||| ? the well-known text from ";
    EXPECT_TRUE(told(las::systemOfWkt(deep)).starts_with(tooMuch));
    EXPECT_TRUE(told(las::systemOfWkt(deep + std::string(400000, ']'))).starts_with(tooMuch));
    std::string wide = "PROJCS[\"" + std::string(100000, 'n') + "\"";
    const std::string start = wide;
    for (int i = 0; i < 100000; ++i)
        wide += ",A[1]";
    EXPECT_FALSE(las::systemOfWkt(wide + "]")->isUnderstood());
    EXPECT_LE(las::systemOfWkt("A[\"" + std::string(1 << 20, '"') + "\"]")->name.size(), 200u);
    EXPECT_LE(las::systemOfWkt(start + "]")->name.size(), 200u);
    EXPECT_EQ(las::shortText("a\x1b[2J\n\xe4\xe4", 7), "a[2J\xc3\xa4");

    // Every key claims all numbers and the whole text.
    Bytes directory;
    for (std::size_t i = 0; i < 65536; ++i)
        for (const std::size_t word : {i == 0 ? 1 : i,
                                       i == 0  ? 1
                                       : i % 2 ? 34736ul
                                               : 34737ul,
                                       i == 0 ? 0 : 65535ul, i == 0 ? 65535ul : 0})
            put(directory, directory.size(), static_cast<std::uint16_t>(word));
    const auto system = las::systemOfKeys(directory, Bytes(1 << 20), Bytes(1 << 20, 'a'));
    EXPECT_LE(system ? system->keys.size() : 0, 1u << 20);

    const char* const given = std::getenv("QRB_SEED");
    const unsigned seed = given ? static_cast<unsigned>(std::atoi(given)) : std::random_device{}();
    SCOPED_TRACE("QRB_SEED=" + std::to_string(seed));
    std::mt19937 random(seed);
    const std::string whole = "COMPOUNDCRS[\"C\"," + projected2 + "," + vertical2 + "]";
    for (int round = 0; round < 3000; ++round) {
        std::string text = whole;
        for (int i = 0; i < 3; ++i)
            text[random() % text.size()] = "[]()\",A1\xff\0 "[random() % 11];
        text.resize(random() % 2 ? text.size() : random() % text.size());
        if (const auto found = las::systemOfWkt(text)) {
            EXPECT_TRUE(isSame(*found, *found)) << text;
        }
        Bytes noise(random() % 200);
        for (std::uint8_t& byte : noise)
            byte = static_cast<std::uint8_t>(random());
        put(noise, 0, std::uint64_t{0xffff'0000'0001'0001});
        (void)las::systemOfKeys(noise, Bytes(random() % 40), Bytes(random() % 40, 'a'));
    }
}

}  // namespace
