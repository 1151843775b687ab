// Coordinate reference systems of imported files: units, items, what mixing them says.
#include "tests/cli/admin.h"
#include "tests/exchange/lasbuilder.h"

namespace {

using namespace tarvo::cli::tests;
using namespace tarvo::exchange::tests;

const std::string feet =
    R"(COMPD_CS["Feet \ "" é",PROJCS["Map",GEOGCS["G",UNIT["degree",0.0174532925199433]],)"
    R"(UNIT["foot",0.3048]],VERT_CS["H",VERT_DATUM["V",2005],UNIT["metre",1]]])";
const std::string zone32 = R"(PROJCS["Zone 32",UNIT["metre",1],AUTHORITY["EPSG","25832"]])";

class Crs : public Admin {
protected:
    // A file of one point; wkt: what it tells, or nothing; date: its day of 2020, or 0.
    std::string las(const std::string& name, const std::string& wkt, std::uint16_t date = 0) const {
        LasBuilder builder(4, 6);
        if (!wkt.empty())
            builder.addExtendedRecord("LASF_Projection", 2112, Bytes(wkt.begin(), wkt.end()));
        builder.addPoint(1, 2, 3);
        Bytes bytes = builder.build();
        put(bytes, 6, std::uint16_t{17});  // standard time, well-known text
        putText(bytes, 58, "Maker 1");
        put(bytes, 90, date);
        put(bytes, 92, static_cast<std::uint16_t>(date ? 2020 : 0));
        return folder.write(name, bytes);
    }
    // keys: id and code of each.
    std::string keyed(const std::string& name,
                      const std::vector<std::pair<std::uint16_t, std::uint16_t>>& keys) const {
        LasBuilder builder(2, 0);
        Bytes directory;
        for (const std::size_t word : {std::size_t{1}, std::size_t{1}, std::size_t{0}, keys.size()})
            put(directory, directory.size(), static_cast<std::uint16_t>(word));
        for (const auto& [id, code] : keys)
            for (const std::uint16_t word : {id, std::uint16_t{0}, std::uint16_t{1}, code})
                put(directory, directory.size(), word);
        builder.addRecord("LASF_Projection", 34735, directory);
        builder.addPoint(1, 2, 3);
        return folder.write(name, builder.build());
    }
    // Besides the line that tells what was imported.
    static void expectNoNote(const std::string& words) {
        const std::string told = expectSuccess(words);
        EXPECT_TRUE(told.starts_with("qrbtool: 1 point") || told.starts_with("qrbtool: 2 point"))
            << told;
        EXPECT_EQ(std::ranges::count(told, '\n'), 1) << told;
    }
    Result expect(int code, const std::string& words, const std::vector<std::string>& texts = {}) {
        const Result result = run(words);
        EXPECT_EQ(result.code, code) << words << "\n" << result.output;
        for (const std::string& text : texts)
            EXPECT_NE(result.output.find(text), std::string::npos) << text << "\n" << result.output;
        return result;
    }
    std::string unit() {
        return json("attributes " + file + " show tarvo.xyz --json")["unit_symbol"].GetString();
    }
    // The database's system, as "info" tells it.
    std::string system() {
        const rapidjson::Document info = json("info --json " + file);
        const auto& told = info["reference_system"];
        return told.IsNull()
                   ? "none"
                   : std::string(told["name"].GetString()) + "|" + told["code"].GetString();
    }
};

TEST_F(Crs, WhatAFileTellsOfItsPointsReachesTheDatabase) {
    expect(0, "import " + las("a.las", feet, 60) + " " + file);
    EXPECT_EQ(unit(), "ft");
    expect(0, "attributes " + file + " show tarvo.xyz", {"; X and Y in ft, Z in m"});
    const rapidjson::Document tag = json("metadata " + file + " get tarvo.geo_tag");
    EXPECT_EQ(tag["crs"]["wkt"].GetString(), feet) << "byte for byte";
    EXPECT_EQ(system(), R"(Feet \ " é|)");
    expect(0, "info " + file, {"Coordinates   Feet \\ \" é\n"});
    const rapidjson::Document info = json("metadata " + file + " get tarvo.pointcloud_info");
    EXPECT_STREQ(info["comments"].GetString(),
                 "System identifier: test\nGenerating software: Maker 1\nCreated: 2020-02-29");
    EXPECT_FALSE(info.HasMember("project")) << "the identifier is all zeros";
    const rapidjson::Document base = json("metadata " + file + " get tarvo.time_base");
    EXPECT_STREQ(base["epoch"].GetString(), "2011-09-14T01:46:40Z");
    const std::string problems = run("validate " + file + " --schema qrbx").output;
    EXPECT_EQ(problems.find("metadata item"), std::string::npos) << problems;
    for (const char* item : {"geo_tag", "pointcloud_info", "time_base"})
        expect(0, "metadata " + file + " validate tarvo." + item);

    expect(0, "import --overwrite " + keyed("b.las", {{2048, 4326}}) + " " + file);
    EXPECT_EQ(unit(), "deg");
    EXPECT_EQ(system(), "|EPSG:4326");
    expect(0, "import --overwrite " + las("c.las", "") + " " + file);
    EXPECT_EQ(system(), "none");
    EXPECT_NE(run("validate " + file).output.find("\"tarvo.geo_tag\" is missing"),
              std::string::npos)
        << "nothing is invented";
    expect(0, "import --overwrite " + folder.write("t.csv", "x,y,z\n1,2,3\n") + " " + file);
    EXPECT_EQ(unit(), "m");
    expect(0, "info " + file, {"Coordinates   unknown system\n"});
}

TEST_F(Crs, DifferentSystemsAreRefusedUnlessAsked) {
    const std::string a = las("a.las", zone32, 1);
    const std::string same = keyed("same.las", {{3072, 25832}});
    const std::string other = keyed("other.las", {{2048, 4326}});
    const std::vector<std::string> words = {"\"a.las\" and \"other.las\" differ",
                                            "\"Zone 32 (EPSG:25832)\" and \"EPSG:4326\"",
                                            "--crs-as-is"};
    const std::size_t before = folder.count();
    expect(1, "import " + a + " " + other + " " + file, words);
    EXPECT_EQ(folder.count(), before);
    expectNoNote("import " + a + " " + same + " " + file);
    EXPECT_EQ(unit(), "m");
    EXPECT_EQ(run("metadata " + file + " get tarvo.pointcloud_info").output.find("Created"),
              std::string::npos)
        << "what only one of the files says";

    expect(1, "import --append " + other + " " + file,
           {"the database and \"other.las\" differ", words[1]});
    expect(0, "select --count " + file, {"2\n"});
    expect(0, "import --append --crs-as-is " + same + " " + other + " " + file);
    EXPECT_EQ(system(), "Zone 32|EPSG:25832") << "the first one stays";
    expect(0, "changelog " + file,
           {"into \"Zone 32 (EPSG:25832)\" from files in other coordinate reference systems: "
            "\"other.las\" (EPSG:4326)."});
    const rapidjson::Document last = json("transactions " + file + " show 3 --json");
    EXPECT_NE(std::string(last["settings"].GetString()).find("\"crs_as_is\":true"),
              std::string::npos);
    expect(0, "import --overwrite --crs-as-is " + other + " " + a + " " + file);
    EXPECT_EQ(unit() + system(), "deg|EPSG:4326");
    expect(0, "changelog " + file, {"\"a.las\" (Zone 32 (EPSG:25832))"});
    // Without codes it is the texts that count.
    expect(0, "import --overwrite " + las("b.las", feet) + " " + file);
    expect(0, "import --append " + las("c.las", "\n" + feet) + " " + file);
    std::string changed = feet;
    changed.replace(changed.find("0.3048"), 6, "0.3047");
    expect(1, "import --append " + las("d.las", changed) + " " + file, {"differ"});
}

// A system that is told and not understood is neither none nor any other, in files and databases.
TEST_F(Crs, WhatIsNotUnderstoodIsSaidKeptAndNotMixed) {
    const std::string a = las("a.las", zone32);
    const std::string cut = las("cut.las", zone32.substr(0, zone32.size() - 30));
    const std::string said =
        " is not understood in full: the end of the well-known text, which is cut off. ";
    expect(0, "import " + cut + " " + file, {"of \"cut.las\"" + said});
    EXPECT_EQ(unit() + "|" + system(), "|Zone 32|") << "no metres";
    const rapidjson::Document tag = json("metadata " + file + " get tarvo.geo_tag");
    EXPECT_EQ(tag["crs"]["wkt"].GetString(), zone32.substr(0, zone32.size() - 30));
    expect(0, "metadata " + file + " validate tarvo.geo_tag");
    expect(0, "info " + file, {"Zone 32, not understood in full\n"});
    expect(1, "import --append " + a + " " + file, {"differ: \"Zone 32, not understood in full\""});
    expect(1, "import --overwrite " + a + " " + cut + " " + file, {"differ"});
    expect(0, "import --append " + cut + " " + file);
    const std::string table = folder.write("t.csv", "x,y,z\n0.01,0.02,0.03\n");
    expect(0, "import --append " + table + " " + file, {"is told by \"t.csv\": taken as"});
    expect(0, "import --append --crs-as-is " + a + " " + file);

    const auto feet = [&](const char* name, std::uint16_t unit, std::uint16_t heights) {
        return keyed(name, {{1024, 1}, {3072, 25832}, {3076, unit}, {4099, heights}});
    };
    expect(0, "import --overwrite " + feet("b.las", 9002, 4711) + " " + file,
           {"the unit with the code 4711 (GeoTIFF key 4099)"});
    expect(0, "attributes " + file + " show tarvo.xyz", {"; X and Y in ft, Z in a unit that is"});
    expect(1, "import --append " + feet("c.las", 9002, 9002) + " " + file, {"differ"});
    // The same code over other axes.
    expect(0, "import --overwrite " + feet("d.las", 9002, 9001) + " " + file);
    expect(1, "import --append " + feet("e.las", 9003, 9001) + " " + file,
           {"\"EPSG:25832\" X and Y in ft, Z in m and \"EPSG:25832\" X and Y in ftUS, Z in m"});
    expect(1, "import --append " + feet("f.las", 9002, 9002) + " " + file, {"differ"});
    expect(0, "import --append " + feet("g.las", 9002, 9001) + " " + file);
}

TEST_F(Crs, TimesOfDifferentBasesAreNotMixedUnlessAsked) {
    LasBuilder builder(2, 1);  // seconds of a week that it doesn't tell
    builder.addPoint(1, 2, 3);
    const std::string week = folder.write("week.las", builder.build());
    const std::string standard = las("a.las", "");
    const std::string timeless = keyed("none.las", {});
    const std::string both =
        "\"GPS time since 2011-09-14T01:46:40Z\" and \"GPS time of an unknown epoch\"";
    const auto epoch = [&] {
        const rapidjson::Document item = json("metadata " + file + " get tarvo.time_base");
        return std::string(item["epoch"].GetString());
    };
    expect(1, "import " + standard + " " + week + " " + file,
           {"The time bases of \"a.las\" and \"week.las\" differ: " + both,
            "--leave-out tarvo.timestamp", "--crs-as-is"});
    expectNoNote("import " + timeless + " " + standard + " " + file);
    EXPECT_EQ(epoch(), "2011-09-14T01:46:40Z") << "whoever has no times";
    expect(1, "import --append " + week + " " + file, {"the database and \"week.las\" differ"});
    expect(0, "import --append --leave-out tarvo.timestamp " + week + " " + file);
    expect(0, "import --append " + timeless + " " + standard + " " + file);
    expect(0, "import --append --crs-as-is " + week + " " + file);
    expect(0, "changelog " + file,
           {"Times were taken as they are into \"GPS time since 2011-09-14T01:46:40Z\" from files "
            "in other time bases: \"week.las\" (GPS time of an unknown epoch)."});
    // A database learns it from the first file that has times.
    expect(0, "import --overwrite " + timeless + " " + file);
    expect(0, "import --append --only-known " + week + " " + file);
    expect(0, "import --append " + standard + " " + file);
    EXPECT_EQ(epoch(), "2011-09-14T01:46:40Z");
    expect(1, "import --append " + week + " " + file, {"differ"});
    const std::string table = folder.write("t.csv", "x,y,z,tarvo.timestamp\n0.01,0.02,0.03,7\n");
    expect(0, "import --append " + table + " " + file, {"No time base is told by \"t.csv\""});
    expect(0, "import --overwrite " + table + " " + file);
    expect(0, "metadata " + file + R"( set tarvo.time_base '{"epoch":"unknown","source":"RTC"}')");
    expect(0, "import --append " + standard + " " + file, {"No time base is told by the database"});
    EXPECT_EQ(epoch(), "2011-09-14T01:46:40Z");
    expect(0, "metadata " + file + " validate tarvo.time_base");
}

TEST_F(Crs, AFileWithoutASystemIsTakenAsInTheSame) {
    const std::string table = folder.write("t.csv", "x,y,z\n0.01,0.02,0.03\n");
    const std::string note = "No coordinate reference system is told by ";
    expect(0, "import " + table + " " + las("a.las", feet) + " " + file,
           {note + "\"t.csv\": taken as \"Feet"});
    EXPECT_EQ(unit(), "ft");
    expect(0, "import --append " + table + " " + file, {note + "\"t.csv\""});
    expectNoNote("import --overwrite " + table + " " + file);
    expect(0, "import --append " + las("a.las", feet) + " " + file, {note + "the database"});
    EXPECT_EQ(unit(), "ft") << "what was taken to be metres";
    EXPECT_EQ(system(), R"(Feet \ " é|)");
    // Points whose unit alone is told.
    expect(0, "metadata " + file + " remove tarvo.geo_tag");
    const std::string metres = keyed("m.las", {{1024, 1}, {3072, 25832}, {3076, 9001}});
    expect(1, "import --append " + metres + " " + file, {"are in ft, those of", "in m."});
    expect(0, "import --append --crs-as-is " + metres + " " + file);
    expect(0, "changelog " + file, {"in m: they were taken as they are."});
    EXPECT_EQ(unit() + " " + system(), "ft none");
    // What somebody wrote and signed there stays.
    expect(0, "import --overwrite " + table + " " + file);
    expect(0, "metadata " + file + R"( set tarvo.geo_tag '{"crs":{},"pose":[]}')");
    expect(0, "import --append " + las("a.las", feet) + " " + file, {"stays as it is"});
    EXPECT_EQ(unit(), "m");
}

}  // namespace
