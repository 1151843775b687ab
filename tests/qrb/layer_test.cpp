// The interface layer over a library that writes down what it is asked: each call reaches its
// function with its arguments, takes its outputs from their places, throws what fails, and gives
// back what it opened exactly once, whichever call fails.
#include "qrb/error.h"
#include "qrb/namelist.h"
#include "qrb/pointcloud.h"
#include "tests/qrb/spy.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <sstream>

namespace {

using namespace tarvo;
using namespace tarvo::qrb::pointcloud;

struct Subject {
    qrb::Context context{"OFF", "log"};
    qrb::Pointcloud cloud{context};
    qrb::Pointcloud other{context};
};

std::string shown(const std::string& text) {
    return text;
}
std::string shown(bool yes) {
    return yes ? "yes" : "no";
}
template <typename T>
requires std::is_arithmetic_v<T> std::string shown(T number) {
    std::ostringstream out;
    out << +number;
    return out.str();
}
std::string shown(DataType type) {
    return shown(static_cast<std::uint32_t>(type));
}
template <typename T>
std::string shown(const std::vector<T>& all) {
    std::string text;
    for (const T& one : all)
        text += shown(one) + " ";
    return text;
}
std::string shown(const PointAttribute& a) {
    std::string text;
    for (const std::string& part :
         {shown(a.name), shown(a.title), shown(a.tags), shown(a.description), shown(a.unitSymbol),
          shown(a.length), shown(a.resolution), shown(a.minimumValue), shown(a.maximumValue),
          shown(a.defaultValue), shown(a.invalidValue), shown(a.namedValues), shown(a.storageClass),
          shown(a.compressionOptions), shown(a.lodSettings), shown(a.scaleFactor)})
        text += part + " ";
    return text;
}
std::string shown(const Transaction& t) {
    return shown(t.id) + " " + t.qrb + " " + t.title + " " + t.agent + " " + t.comments + " " +
           t.settings + " " + t.start + " " + t.stop;
}
std::string shown(const IndexNode& node) {
    std::string text = "{" + shown(node.id) + " " + shown(node.revision) + " " +
                       shown(node.pointCountTotal) + " " + shown(node.pointCountNode);
    for (const IndexNode& child : node.children)
        text += " " + shown(child);
    return text + "}";
}
std::string shown(const PointAttributes::Group& group) {
    return group.name + " " + shown(group.rank);
}

PointAttribute someAttribute() {
    PointAttribute a;
    a.name = "name";
    a.title = "title";
    a.tags = "tags";
    a.description = "description";
    a.unitSymbol = "unit";
    a.length = 3;
    a.resolution = 0.5;
    a.minimumValue = -1;
    a.maximumValue = 2;
    a.defaultValue = 1.5;
    a.invalidValue = 99;
    a.namedValues = "0=none";
    a.storageClass = PointAttribute::DYNAMIC;
    a.compressionOptions = PointAttribute::SHUFFLE;
    a.lodSettings = "average";
    a.scaleFactor = 4;
    return a;
}

// What a caller does, and what it gets.
struct Action {
    const char* name;
    std::function<std::string(Subject&)> run;
};

template <typename Function>
Action returning(const char* name, Function function) {
    return {name, [function](Subject& s) { return shown(function(s)); }};
}
template <typename Function>
Action doing(const char* name, Function function) {
    return {name, [function](Subject& s) {
                function(s);
                return std::string();
            }};
}

char s_buffer[64];

const std::vector<Action>& actions() {
    const std::vector<std::uint8_t> key{5, 6, 7};
    const std::vector<std::uint32_t> nodes{3, 4};
    static const std::vector<Action> all{
        returning("library name", [](Subject& s) { return s.context.libraryName(); }),
        returning("library file", [](Subject& s) { return s.context.libraryFilename(); }),
        returning("library version", [](Subject& s) { return s.context.libraryVersion(); }),
        returning("library licence", [](Subject& s) { return s.context.libraryLicense(); }),
        returning("suffix", [](Subject& s) { return s.context.databaseFileTypeSuffix(); }),
        returning("is database", [](Subject& s) { return s.context.databaseFileTypeCheck("f"); }),
        doing("open",
              [](Subject& s) {
                  OpenSettings settings(s.context);
                  settings.cacheSize = 123;
                  s.cloud.open("file", settings);
              }),
        doing("open an older transaction",
              [](Subject& s) {
                  OpenSettings settings(s.context);
                  settings.transaction = 12;  // the one that the library tells of
                  s.cloud.open("file", settings);
              }),
        returning("open settings as JSON",
                  [](Subject& s) { return OpenSettings(s.context).toJson(); }),
        returning("open settings from JSON",
                  [](Subject& s) {
                      OpenSettings settings(s.context);
                      settings.fromJson("json");
                      OpenSettings copy(settings);
                      OpenSettings assigned(s.context);
                      assigned = copy;
                      return assigned.cacheSize;
                  }),
        doing("create",
              [](Subject& s) {
                  CreateSettings settings(s.context);
                  settings.primaryAttribute = someAttribute();
                  settings.chunkMode = 1;
                  settings.chunkSize = 2;
                  settings.lodMode = 3;
                  settings.chunkSizeLOD = 4;
                  settings.cacheSize = 5;
                  settings.compressionLevel = 6;
                  settings.optimizePointID = true;
                  settings.pointInsertMode = "mode";
                  s.cloud.create("file", settings);
              }),
        doing(
            "create with schema",
            [](Subject& s) { s.cloud.create("file", CreateSettings(s.context), "schema", true); }),
        returning("create settings",
                  [](Subject& s) {
                      CreateSettings settings(s.context);
                      settings.fromJson("json");
                      CreateSettings copy(settings);
                      CreateSettings c(s.context);
                      c = copy;
                      return c.toJson() + " " + shown(c.primaryAttribute) + shown(c.chunkMode) +
                             " " + shown(c.chunkSize) + " " + shown(c.lodMode) + " " +
                             shown(c.chunkSizeLOD) + " " + shown(c.cacheSize) + " " +
                             shown(c.compressionLevel) + " " + shown(c.optimizePointID) + " " +
                             c.pointInsertMode;
                  }),
        doing("close", [](Subject& s) { s.cloud.close(); }),
        returning("is open", [](Subject& s) { return s.cloud.isOpen(); }),
        returning("uuid", [](Subject& s) { return s.cloud.getUuid(); }),
        returning("inspect", [](Subject& s) { return s.cloud.inspect(4); }),
        returning("select",
                  [](Subject& s) {
                      QuerySelect query = s.cloud.select("filter");
                      query.bind("a", DataType::DOUBLE, s_buffer, 24);
                      const std::uint32_t count = query.next(9);
                      const std::string result = shown(count) + " " + shown(query.progress());
                      query.close();
                      return result + " " + shown(query.next(9)) + shown(query.progress());
                  }),
        returning("select nodes",
                  [nodes](Subject& s) { return s.cloud.select(nodes, "filter").next(8); }),
        returning("select no nodes",
                  [](Subject& s) { return s.cloud.select({}, "filter").next(8); }),
        returning("insert",
                  [](Subject& s) {
                      QueryInsert query = s.cloud.insert();
                      query.bind("a", DataType::INT8, s_buffer, 1);
                      query.bindId(DataType::UINT64, s_buffer, 8);
                      const std::uint32_t count = query.next(7);
                      QueryInsert copy = query;
                      query.close();
                      copy.close();
                      copy.close();
                      return count;
                  }),
        returning("index",
                  [](Subject& s) {
                      IndexNode root;
                      s.cloud.stat().index(root, "filter");
                      return root;
                  }),
        doing(
            "minimum",
            [](Subject& s) { s.cloud.stat().minimum(6, "a", DataType::SINGLE, s_buffer, false); }),
        doing("minimum of valid values",
              [](Subject& s) { s.cloud.stat().minimum(6, "a", DataType::SINGLE, s_buffer, true); }),
        doing(
            "maximum",
            [](Subject& s) { s.cloud.stat().maximum(6, "a", DataType::SINGLE, s_buffer, false); }),
        doing("maximum of valid values",
              [](Subject& s) { s.cloud.stat().maximum(6, "a", DataType::SINGLE, s_buffer, true); }),
        returning("revision",
                  [](Subject& s) {
                      QueryStat query = s.cloud.stat();
                      const std::uint32_t revision = query.revision(6, "a");
                      query.close();
                      return shown(revision) + " " + shown(query.revision(6, "a"));
                  }),
        returning("update",
                  [](Subject& s) {
                      QueryUpdate query = s.cloud.update();
                      query.bind("a", DataType::UINT8, s_buffer, 2);
                      const std::uint32_t count = query.next(5);
                      query.close();
                      return shown(count) + " " + shown(query.next(5));
                  }),
        returning("remove",
                  [](Subject& s) {
                      QueryRemove query = s.cloud.remove();
                      query.bind(DataType::UINT32, s_buffer, 4);
                      const std::uint32_t count = query.next(5);
                      query.close();
                      return shown(count) + " " + shown(query.next(5));
                  }),
        returning("fill",
                  [](Subject& s) {
                      QueryFill query = s.cloud.fill("filter");
                      query.bind("a", DataType::UINT16, s_buffer);
                      const std::uint32_t count = query.next(5);
                      const std::string result = shown(count) + " " + shown(query.progress());
                      query.close();
                      return result;
                  }),
        returning("fill nodes",
                  [nodes](Subject& s) { return s.cloud.fill(nodes, "filter").next(5); }),
        returning("invert",
                  [](Subject& s) {
                      QueryInvert query = s.cloud.invert("filter");
                      query.attribute("a");
                      const std::uint32_t count = query.next(5);
                      const std::string result = shown(count) + " " + shown(query.progress());
                      query.close();
                      return result;
                  }),
        returning("invert nodes",
                  [nodes](Subject& s) { return s.cloud.invert(nodes, "filter").next(5); }),
        doing("append message", [](Subject& s) { s.cloud.changelog().appendMessage("m"); }),
        doing("export changelog", [](Subject& s) { s.cloud.changelog().exportToTextfile("f"); }),
        doing("import changelog", [](Subject& s) { s.cloud.changelog().importFromDatabase("f"); }),
        returning("verify entry",
                  [key](Subject&) { return Changelog::verifyLogEntry("entry", 1, key); }),
        doing("finalize", [](Subject& s) { s.cloud.management().finalize(); }),
        doing("vacuum", [](Subject& s) { s.cloud.management().vacuum(); }),
        doing("vacuum with progress", [](Subject& s) { s.cloud.management().vacuum([](int) {}); }),
        doing("validate", [](Subject& s) { s.cloud.management().validate("schema", true); }),
        returning("detail mode", [](Subject& s) { return s.cloud.management().getLodMode(); }),
        doing("set detail mode", [](Subject& s) { s.cloud.management().setLodMode(2); }),
        returning("detail size", [](Subject& s) { return s.cloud.management().getChunkSizeLOD(); }),
        doing("set detail size", [](Subject& s) { s.cloud.management().setChunkSizeLOD(3); }),
        returning("items", [](Subject& s) { return s.cloud.metaData().list(); }),
        returning("item exists", [](Subject& s) { return s.cloud.metaData().exists("n"); }),
        returning("item", [](Subject& s) { return s.cloud.metaData().get("n", "default"); }),
        doing("set item", [](Subject& s) { s.cloud.metaData().set("n", "v"); }),
        doing("remove item", [](Subject& s) { s.cloud.metaData().remove("n"); }),
        doing("validate item", [](Subject& s) { s.cloud.metaData().validate("n", "schema"); }),
        doing("validate value", [](Subject& s) { s.cloud.metaData().validateJson("v", "schema"); }),
        // Of a library that has no records.
        doing("findings", [](Subject& s) { (void)s.cloud.management().findings("schema", true); }),
        doing("findings of item",
              [](Subject& s) { (void)s.cloud.metaData().findings("n", "schema"); }),
        doing("findings of value",
              [](Subject& s) { (void)s.cloud.metaData().findingsOfJson("v", "schema"); }),
        doing("sign item", [key](Subject& s) { s.cloud.metaData().createSignature("n", 2, key); }),
        returning("verify item",
                  [key](Subject& s) { return s.cloud.metaData().verifySignature("n", 1, key); }),
        returning("verify item without a key",
                  [](Subject& s) { return s.cloud.metaData().verifySignature("n", 2, {}); }),
        returning("attributes", [](Subject& s) { return s.cloud.pointAttributes().list(); }),
        returning("default attributes",
                  [](Subject& s) { return s.cloud.pointAttributes().listDefault(); }),
        returning("filtered attributes",
                  [](Subject& s) { return s.cloud.pointAttributes().listFiltered("*"); }),
        returning("attribute exists",
                  [](Subject& s) { return s.cloud.pointAttributes().exists("a"); }),
        returning("attribute", [](Subject& s) { return s.cloud.pointAttributes().get("a"); }),
        returning("default attribute",
                  [](Subject& s) { return s.cloud.pointAttributes().getDefault("a"); }),
        doing("add attribute", [](Subject& s) { s.cloud.pointAttributes().add(someAttribute()); }),
        doing("add default attribute",
              [](Subject& s) { s.cloud.pointAttributes().addDefault("a"); }),
        doing("put attribute", [](Subject& s) { s.cloud.pointAttributes().put(someAttribute()); }),
        doing("remove attribute", [](Subject& s) { s.cloud.pointAttributes().remove("a"); }),
        doing("duplicate attribute",
              [](Subject& s) { s.cloud.pointAttributes().duplicate("a", "b"); }),
        doing("discard attribute", [](Subject& s) { s.cloud.pointAttributes().discard("a"); }),
        returning("primary attribute",
                  [](Subject& s) { return s.cloud.pointAttributes().primaryAttributeName(); }),
        returning("id name", [](Subject& s) { return s.cloud.pointAttributes().pointIdName(); }),
        returning("id type", [](Subject& s) { return s.cloud.pointAttributes().pointIdType(); }),
        returning("id unit", [](Subject& s) { return s.cloud.pointAttributes().pointIdUnit(); }),
        returning("merged attribute",
                  [](Subject& s) {
                      return s.cloud.pointAttributes().getMerged({&s.other.pointAttributes()}, "a");
                  }),
        returning("merged attributes",
                  [](Subject& s) {
                      return s.cloud.pointAttributes().listMerged({&s.other.pointAttributes()});
                  }),
        returning("group", [](Subject& s) { return s.cloud.pointAttributes().group("a"); }),
        returning("default group",
                  [](Subject& s) { return s.cloud.pointAttributes().groupDefault("a"); }),
        returning("type of attribute", [](Subject&) { return someAttribute().dataType(); }),
        returning("attribute as JSON", [](Subject&) { return someAttribute().toJson(); }),
        returning("attribute from JSON",
                  [](Subject&) {
                      PointAttribute a = someAttribute();
                      a.fromJson("json");
                      return a;
                  }),
        returning("begin",
                  [](Subject& s) { return s.cloud.transactions().begin("t", "a", "c", "s"); }),
        doing("commit", [](Subject& s) { s.cloud.transactions().commit(); }),
        doing("commit with signature",
              [key](Subject& s) {
                  s.cloud.transactions().commit({1, key}, [](int) {});
              }),
        doing("rollback", [](Subject& s) { s.cloud.transactions().rollback(); }),
        returning("transactions", [](Subject& s) { return s.cloud.transactions().list(); }),
        returning("current", [](Subject& s) { return s.cloud.transactions().current(); }),
        returning("pending", [](Subject& s) { return s.cloud.transactions().pending(); }),
        doing("restore", [](Subject& s) { s.cloud.transactions().restore(4); }),
        doing("discard", [nodes](Subject& s) { s.cloud.transactions().discard(nodes); }),
        returning("size", [nodes](Subject& s) { return s.cloud.transactions().size(nodes); }),
        returning("details", [](Subject& s) { return s.cloud.transactions().details(4); }),
        doing("guard that commits",
              [](Subject& s) {
                  TransactionGuard guard(s.cloud.transactions(), "t", "a", "c", "s");
                  guard.commit();
              }),
        doing(
            "guard that rolls back",
            [](Subject& s) { TransactionGuard guard(s.cloud.transactions(), "t", "a", "c", "s"); }),
    };
    return all;
}

class Layer : public testing::Test {
protected:
    ~Layer() override { qrb::free(); }

    // Runs an action with a fresh library; returns what it did and got, and leaves the log.
    static std::string run(const Action& action, int failing, bool& threw) {
        qrb::free();
        qrb::loadLibrary(STUB_FILE);
        spy::installAll();
        threw = false;
        std::string result;
        std::size_t before = 0;
        {
            Subject subject;
            before = spy::log().live.size();
            spy::log().calls.clear();
            spy::log().names.clear();
            spy::log().failing = failing;
            try {
                result = action.run(subject);
            } catch (const qrb::Error& error) {
                threw = true;
                EXPECT_EQ(error.code(), 77) << action.name;
                EXPECT_STREQ(error.what(), "broken") << action.name;
                EXPECT_STREQ(error.details(), "here") << action.name;
            }
            spy::log().failing = -1;
            EXPECT_EQ(spy::log().live.size(), before) << action.name << ": something is left open";
            std::string calls;
            for (const std::string& call : spy::log().calls)
                calls += "    " + call + "\n";
            result =
                std::string(action.name) + (result.empty() ? "" : ": " + result) + "\n" + calls;
        }
        EXPECT_TRUE(spy::log().live.empty()) << action.name;
        EXPECT_TRUE(spy::log().texts.empty()) << action.name << ": a text is left";
        EXPECT_TRUE(spy::log().results.empty()) << action.name << ": a result is left";
        for (const auto& [handle, locks] : spy::log().locks)
            EXPECT_EQ(locks, 0) << action.name << ": something is left locked";
        for (const std::string& fault : spy::log().faults)
            ADD_FAILURE() << action.name << ": " << fault;
        return result;
    }
};

// The calls stand in a file beside this one. Compare what is new in it with qrb/functions.def.
TEST_F(Layer, PassesEachCallToItsFunctionAndTakesOutputsFromTheirPlaces) {
    std::string all;
    bool threw = false;
    for (const Action& action : actions()) {
        all += run(action, -1, threw);
        EXPECT_FALSE(threw) << action.name;
    }
    std::ifstream file(LAYER_CALLS);
    std::stringstream expected;
    expected << file.rdbuf();
    std::istringstream found(all);
    std::string wanted;
    std::string action;
    for (std::string line; std::getline(found, line);) {
        if (line[0] != ' ')
            action = line;
        std::getline(expected, wanted);
        EXPECT_EQ(line, wanted) << "of \"" << action << "\"";
    }
    EXPECT_FALSE(std::getline(expected, wanted)) << wanted;
    if (const char* const place = std::getenv("QRB_LAYER_CALLS"))
        std::ofstream(place) << all;
}

TEST_F(Layer, ThrowsWhatFailsAndGivesBackWhatItOpened) {
    for (const Action& action : actions()) {
        bool threw = false;
        run(action, -1, threw);
        const std::vector<std::string> names = spy::log().names;
        std::size_t own = 0;  // those of the action itself
        while (own < names.size() && names[own] != "qrb_pointcloud_delete" &&
               names[own] != "qrb_context_delete")
            ++own;
        for (std::size_t i = 0; i < own; ++i) {
            SCOPED_TRACE(names[i] + " fails, call " + std::to_string(i));
            run(action, static_cast<int>(i), threw);
            EXPECT_EQ(spy::log().failures, 1);
            const bool silent = names[i].find("_delete") != std::string::npos ||
                                names[i] == "qrb_object_unlock_cf" ||
                                (names[i].find("rollback") != std::string::npos &&
                                 std::string_view(action.name) != "rollback");
            if (!silent) {
                EXPECT_TRUE(threw) << action.name;
            }
        }
    }
}

// Somebody may discard a transaction between the two calls.
TEST_F(Layer, ListsNoTransactionThatWentAwayMeanwhile) {
    qrb::loadLibrary(STUB_FILE);
    spy::installAll();
    Subject subject;
    EXPECT_EQ(subject.cloud.transactions().list(), (std::vector<std::uint32_t>{70, 71}));
    spy::log().listsShrink = true;
    EXPECT_EQ(subject.cloud.transactions().list(), (std::vector<std::uint32_t>{70}));
    spy::log().listsShrink = false;
}

TEST_F(Layer, RefusesALibraryThatOpensAnotherTransaction) {
    qrb::loadLibrary(STUB_FILE);
    spy::installAll();
    Subject subject;
    OpenSettings settings(subject.context);
    settings.transaction = 99;
    try {
        subject.cloud.open("file", settings);
        ADD_FAILURE() << "nothing was thrown";
    } catch (const qrb::Error& error) {
        EXPECT_EQ(error.code(), QRB_ERROR_NOT_AVAILABLE);
        EXPECT_STREQ(error.what(), "The library can't open transaction 99 to be read.");
    }
    EXPECT_EQ(spy::log().names.back(), "qrb_pointcloud_close");
    // A wish that is taken back is told, too.
    settings.transaction = 0;
    subject.cloud.open("file", settings);
    EXPECT_NE(std::find(spy::log().calls.begin(), spy::log().calls.end(),
                        "pointcloud_open_settings_json_load_cf(#4, '{\"transaction\": 0, "
                        "\"readOnly\": false}')"),
              spy::log().calls.end());
}

TEST_F(Layer, AGuardRollsBackWhatWasBegunAndNotCommitted) {
    const auto rollbacks = [](const char* name, int failing) {
        for (const Action& action : actions())
            if (std::string_view(action.name) == name) {
                bool threw = false;
                run(action, failing, threw);
                EXPECT_EQ(threw, failing == 0 || failing == 1);
            }
        const auto& names = spy::log().names;
        return std::count(names.begin(), names.end(), "qrb_pointcloud_transaction_rollback");
    };
    EXPECT_EQ(rollbacks("guard that rolls back", -1), 1);
    EXPECT_EQ(rollbacks("guard that rolls back", 0), 0);  // nothing was begun
    EXPECT_EQ(rollbacks("guard that commits", -1), 0);
    EXPECT_EQ(rollbacks("guard that commits", 0), 0);
    EXPECT_EQ(rollbacks("guard that commits", 1), 1);  // the commit failed
}

TEST(Names, OfTypesAndStorageAreThoseOfTheirNumbers) {
    const char* const names[] = {"NONE",  "UINT8",  "INT8",  "UINT16", "INT16", "UINT32",
                                 "INT32", "UINT64", "INT64", "SINGLE", "DOUBLE"};
    const std::size_t sizes[] = {0, 1, 1, 2, 2, 4, 4, 8, 8, 4, 8};
    for (std::uint32_t i = 0; i < 11; ++i) {
        EXPECT_STREQ(dataTypeName(static_cast<DataType>(i)), names[i]);
        EXPECT_EQ(dataTypeSize(static_cast<DataType>(i)), sizes[i]) << names[i];
    }
    EXPECT_STREQ(dataTypeName(static_cast<DataType>(11)), "unknown");
    EXPECT_EQ(dataTypeSize(static_cast<DataType>(11)), 0u);
    const char* const classes[] = {"unknown", "constant", "variable", "dynamic", "unknown"};
    const char* const options[] = {"default", "delta", "shuffle", "delta+shuffle", "unknown"};
    for (std::uint8_t i = 0; i < 5; ++i) {
        EXPECT_STREQ(PointAttribute::storageClassName(i), classes[i]);
        EXPECT_STREQ(PointAttribute::compressionOptionsName(i), options[i]);
    }
}

TEST(Names, OfAListMayBeEmptyTexts) {
    EXPECT_EQ(qrb::unpackNames(3, "a\0\0b"), (std::vector<std::string>{"a", "", "b"}));
    EXPECT_TRUE(qrb::unpackNames(0, nullptr).empty());
}

// Ending these queries may do the work, so its failure must not be lost.
TEST_F(Layer, TellsWhenAQueryFailsAtItsEnd) {
    for (const Action& action : actions()) {
        const std::string_view name = action.name;
        if (name != "insert" && name != "update" && name != "remove" && name != "fill" &&
            name != "invert")
            continue;
        bool threw = false;
        run(action, -1, threw);
        const auto& names = spy::log().names;
        const std::string end = "qrb_pointcloud_query_" + std::string(name) + "_delete";
        const auto at = std::find(names.begin(), names.end(), end);
        ASSERT_NE(at, names.end()) << name;
        run(action, static_cast<int>(at - names.begin()), threw);
        EXPECT_TRUE(threw) << name;
    }
}

}  // namespace
