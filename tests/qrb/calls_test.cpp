// What calls of the C interface say and leave alone: arguments that are missing, other contexts,
// order of refusals, the log.
#include "tests/qrb/library.h"

#include "catalogue/catalogue.h"

#include <cmath>
#include <fstream>
#include <iterator>

namespace {

using namespace tarvo;
using namespace tarvo::qrb::pointcloud;

class Calls : public LibraryTest {
protected:
    Calls() {
        EXPECT_EQ(t.qrb_context_new(&c, nullptr, nullptr), QRB_SUCCESS);
        EXPECT_EQ(t.qrb_pointcloud_new(c, &cloud), QRB_SUCCESS);
        const qrb::Context context{"", ""};
        CreateSettings settings(context);
        settings.primaryAttribute = attribute("xyz", -100, 100, 0.001, 3);
        settings.primaryAttribute.unitSymbol = "m";
        EXPECT_EQ(t.qrb_pointcloud_create(c, cloud, file("a.qrbx").c_str(), settings.transfer()),
                  QRB_SUCCESS);
    }
    ~Calls() override { EXPECT_EQ(t.qrb_context_delete(c), QRB_SUCCESS); }

    // Code, text and details of the last error, or what succeeded.
    std::string told(qrb_status status) {
        std::int32_t code = 0;
        const char* text = "";
        const char* details = "";
        if (status == QRB_SUCCESS)
            return "done";
        EXPECT_EQ(t.qrb_context_get_last_error(c, &code, &text, &details), QRB_SUCCESS);
        return std::to_string(code) + ": " + text + "\n" + details;
    }
    std::string told(qrb_result* result) {
        if (!result)
            return "done";
        std::int32_t code = 0;
        char* text = nullptr;
        EXPECT_EQ(t.qrb_result_get_error_code_cf(result, &code), nullptr);
        EXPECT_EQ(t.qrb_result_get_error_text_cf(result, &text), nullptr);
        const std::string all = std::to_string(code) + ": " + text;
        EXPECT_EQ(t.qrb_string_delete_cf(text), nullptr);
        EXPECT_EQ(t.qrb_result_delete_cf(result), nullptr);
        return all;
    }
    static std::string error(std::int32_t code, const std::string& text,
                             const std::string& details = {}) {
        return std::to_string(code) + ": " + text + "\n" + details;
    }
    static std::string missing(const std::string& what) {
        return error(QRB_ERROR_ARGUMENT, "The argument \"" + what + "\" is missing.");
    }
    std::string contents(const std::string& name) const {
        std::ifstream in(file(name));
        return {std::istreambuf_iterator<char>(in), {}};
    }

    const qrb::FunctionTable& t = qrb::functions();
    qrb_context* c = nullptr;
    qrb_pointcloud* cloud = nullptr;
};

TEST_F(Calls, RefusedSettingsLeaveTheRecordsAsTheyWere) {
    qrb_create_settings* settings = nullptr;
    ASSERT_EQ(t.qrb_pointcloud_create_settings_new(c, &settings), QRB_SUCCESS);
    const auto saved = [&] {
        const char* json = nullptr;
        EXPECT_EQ(t.qrb_pointcloud_create_settings_json_save(c, settings, &json), QRB_SUCCESS);
        return std::string(json);
    };
    const std::string before = saved();
    const char* const wrong[] = {
        R"({"primary_attribute": {"name": "other"}, "chunk_size": 7, "point_insert_mode": 5})",
        R"({"primary_attribute": {"name": "other", "length": "x"}, "chunk_size": 7})",
        R"({"chunk_mode": 2, "lod_mode": 2, "cache_size": -1})",
    };
    for (const char* const json : wrong) {
        EXPECT_NE(told(t.qrb_pointcloud_create_settings_json_load(c, settings, json)), "done");
        EXPECT_EQ(saved(), before) << json;
        EXPECT_NE(told(t.qrb_pointcloud_create_settings_json_load_cf(settings, json)), "done");
        EXPECT_EQ(saved(), before) << json;
    }
    qrb_point_attribute* record = nullptr;
    ASSERT_EQ(t.qrb_pointcloud_point_attribute_new(c, &record), QRB_SUCCESS);
    const char* json = nullptr;
    ASSERT_EQ(t.qrb_pointcloud_point_attribute_json_save(c, record, &json), QRB_SUCCESS);
    const std::string kept = json;
    EXPECT_NE(told(t.qrb_pointcloud_point_attribute_json_load(
                  c, record, R"({"name": "other", "length": 3, "unit_symbol": 5})")),
              "done");
    ASSERT_EQ(t.qrb_pointcloud_point_attribute_json_save(c, record, &json), QRB_SUCCESS);
    EXPECT_EQ(json, kept);
    EXPECT_EQ(t.qrb_pointcloud_point_attribute_delete(c, record), QRB_SUCCESS);
    EXPECT_EQ(t.qrb_pointcloud_create_settings_delete(c, settings), QRB_SUCCESS);
}

TEST_F(Calls, NameTheArgumentThatIsMissingOrOfAnotherKind) {
    std::uint32_t id = 0;
    std::uint64_t bytes = 0;
    std::uint8_t valid = 0;
    ASSERT_EQ(t.qrb_pointcloud_transaction_begin(c, cloud, "t", "a", "", "", &id), QRB_SUCCESS);
    ASSERT_EQ(t.qrb_pointcloud_meta_data_set(c, cloud, "item", "1"), QRB_SUCCESS);
    EXPECT_EQ(told(t.qrb_pointcloud_meta_data_create_signature(c, cloud, "item", 1, 3, nullptr)),
              missing("key"));
    EXPECT_EQ(
        told(t.qrb_pointcloud_meta_data_verify_signature(c, cloud, "item", 1, 3, nullptr, &valid)),
        missing("key"));
    EXPECT_EQ(told(t.qrb_pointcloud_transaction_commit_with_signature(c, cloud, nullptr, nullptr, 1,
                                                                      3, nullptr)),
              missing("key"));
    EXPECT_EQ(told(t.qrb_pointcloud_transaction_rollback(c, cloud)), "done");
    EXPECT_EQ(told(t.qrb_pointcloud_transaction_discard(c, cloud, 2, nullptr)), missing("ids"));
    EXPECT_EQ(told(t.qrb_pointcloud_transaction_size(c, cloud, 2, nullptr, &bytes)),
              missing("ids"));
    EXPECT_EQ(told(t.qrb_pointcloud_transaction_size(c, cloud, 0, nullptr, &bytes)), "done");
    qrb_query_select* query = nullptr;
    EXPECT_EQ(told(t.qrb_pointcloud_query_select_nodes_new(c, cloud, nullptr, 1, "", &query)),
              missing("nodes"));
    const char* const notOne = "The argument \"pointcloud\" is not a database handle.";
    EXPECT_EQ(told(t.qrb_pointcloud_close(c, reinterpret_cast<qrb_pointcloud*>(c))),
              error(QRB_ERROR_ARGUMENT, notOne, "It is a handle of another kind."));
    EXPECT_EQ(told(t.qrb_pointcloud_close(c, reinterpret_cast<qrb_pointcloud*>(&id))),
              error(QRB_ERROR_ARGUMENT, notOne,
                    "It was deleted already, or is no handle of this library."));
    EXPECT_EQ(told(t.qrb_pointcloud_open(c, cloud, "other", nullptr)),
              error(QRB_ERROR_STATE, "A database is open already.", "Close it first."));
}

TEST_F(Calls, RefuseWhatNeedsATransactionBeforeTheyLookAtFiles) {
    const std::string none = error(QRB_ERROR_STATE, "No transaction is pending.",
                                   "Begin a transaction before changing the database.");
    EXPECT_EQ(told(t.qrb_pointcloud_changelog_import_from_database(c, cloud, "no such")), none);
    EXPECT_EQ(told(t.qrb_pointcloud_changelog_append_log_message(c, cloud, "")), none);
    EXPECT_EQ(told(t.qrb_pointcloud_management_set_lod_mode(c, cloud, 9)), none);
    EXPECT_EQ(told(t.qrb_pointcloud_changelog_export_to_textfile(c, cloud, "")),
              error(QRB_ERROR_FILE, "The file \"\" can't be written.", "Name a file."));
}

TEST_F(Calls, TakeAwayNoLockThatIsNotThere) {
    qrb_create_settings* settings = nullptr;
    ASSERT_EQ(t.qrb_pointcloud_create_settings_new(c, &settings), QRB_SUCCESS);
    auto* const object = reinterpret_cast<qrb_object*>(settings);
    const std::string none =
        std::to_string(QRB_ERROR_STATE) + ": The object has no lock to take away.";
    EXPECT_EQ(told(t.qrb_object_unlock_cf(object)), none);
    for (int i = 0; i < 2; ++i)
        EXPECT_EQ(told(t.qrb_object_lock_cf(object)), "done");
    EXPECT_EQ(told(t.qrb_object_unlock_cf(object)), "done");
    const std::string locked = error(QRB_ERROR_STATE, "The object is locked and can't be deleted.",
                                     "Take its locks away first.");
    EXPECT_EQ(told(t.qrb_pointcloud_create_settings_delete(c, settings)), locked);
    EXPECT_EQ(told(t.qrb_object_unlock_cf(object)), "done");
    EXPECT_EQ(told(t.qrb_object_unlock_cf(object)), none);
    EXPECT_EQ(told(t.qrb_pointcloud_create_settings_delete(c, settings)), "done");
}

// A context goes with what is its own; another one's work neither keeps it nor goes.
TEST_F(Calls, OfOneContextLeaveTheOthersAlone) {
    qrb_context* second = nullptr;
    qrb_graph_node* node = nullptr;
    qrb_graph_node* kept = nullptr;
    ASSERT_EQ(t.qrb_context_new(&second, nullptr, nullptr), QRB_SUCCESS);
    ASSERT_EQ(t.qrb_pointcloud_graph_node_new(second, &node), QRB_SUCCESS);
    ASSERT_EQ(t.qrb_pointcloud_graph_node_new(c, &kept), QRB_SUCCESS);
    struct Work {
        const qrb::FunctionTable& t;
        qrb_context* second;
        qrb_status status = QRB_FAILURE;
    } work{t, second};
    const qrb_progress_function deletes = [](std::uint8_t percent, void* data) -> std::uint8_t {
        auto& of = *static_cast<Work*>(data);
        if (percent == 0)
            of.status = of.t.qrb_context_delete(of.second);
        return 1;
    };
    EXPECT_EQ(told(t.qrb_pointcloud_management_vacuum(c, cloud, deletes, &work)), "done");
    EXPECT_EQ(work.status, QRB_SUCCESS);
    EXPECT_NE(told(t.qrb_pointcloud_graph_node_delete(c, node)), "done");
    EXPECT_EQ(told(t.qrb_pointcloud_graph_node_delete(c, kept)), "done");
    std::uint8_t open = 0;
    EXPECT_EQ(told(t.qrb_pointcloud_is_open(c, cloud, &open)), "done");
    EXPECT_EQ(open, 1);
}

TEST_F(Calls, ThatAreStoppedAtTheirBeginDoNothing) {
    std::uint32_t id = 0;
    std::uint8_t pending = 0;
    const qrb_progress_function stop = [](std::uint8_t, void* data) -> std::uint8_t {
        ++*static_cast<int*>(data);
        return 0;
    };
    int asked = 0;
    ASSERT_EQ(t.qrb_pointcloud_transaction_begin(c, cloud, "t", "a", "", "", &id), QRB_SUCCESS);
    EXPECT_EQ(told(t.qrb_pointcloud_transaction_commit_with_progress(c, cloud, stop, &asked)),
              error(QRB_ERROR_CANCELLED, "The commit was cancelled.",
                    "The transaction is still pending."));
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(told(t.qrb_pointcloud_transaction_pending(c, cloud, &pending)), "done");
    EXPECT_EQ(pending, 1);
}

// Nodes tell the transaction that changed them last, and a reading that fails leaves them.
TEST_F(Calls, ThatReadTheIndexFillANodeWhollyOrNotAtAll) {
    qrb_query_stat* stat = nullptr;
    qrb_graph_node* node = nullptr;
    ASSERT_EQ(t.qrb_pointcloud_query_stat_new(c, cloud, &stat), QRB_SUCCESS);
    ASSERT_EQ(t.qrb_pointcloud_graph_node_new(c, &node), QRB_SUCCESS);
    for (std::uint32_t transaction = 2; transaction < 4; ++transaction) {
        std::uint32_t id = 0;
        std::uint32_t done = 0;
        qrb_query_insert* query = nullptr;
        const double xyz[] = {1, 2, 3};
        ASSERT_EQ(t.qrb_pointcloud_transaction_begin(c, cloud, "t", "a", "", "", &id), QRB_SUCCESS);
        ASSERT_EQ(t.qrb_pointcloud_query_insert_new(c, cloud, &query), QRB_SUCCESS);
        ASSERT_EQ(t.qrb_pointcloud_query_insert_bind(c, query, "xyz", QRB_DATA_TYPE_DOUBLE, xyz, 0),
                  QRB_SUCCESS);
        ASSERT_EQ(t.qrb_pointcloud_query_insert_next(c, query, 1, &done), QRB_SUCCESS);
        ASSERT_EQ(t.qrb_pointcloud_transaction_commit(c, cloud), QRB_SUCCESS);
        ASSERT_EQ(t.qrb_pointcloud_query_stat_index(c, stat, node), QRB_SUCCESS);
        EXPECT_NE(told(t.qrb_pointcloud_query_stat_index_filter(c, stat, node, "no >")), "done");
        EXPECT_EQ(node->id, 1u);
        EXPECT_EQ(node->revision, transaction);
        EXPECT_EQ(node->point_count_total, transaction - 1);
        EXPECT_EQ(node->point_count_node, 0);
        ASSERT_EQ(node->child_count, 1u);
        const qrb_graph_node& leaf = *node->children[0];
        EXPECT_GT(leaf.id, 1u);
        EXPECT_EQ(leaf.revision, transaction);
        EXPECT_EQ(leaf.point_count_total, transaction - 1);
        EXPECT_EQ(leaf.point_count_node, transaction - 1);
        EXPECT_EQ(leaf.child_count, 0u);
    }
}

// Line by line, for whoever looks at it while the program goes on.
TEST_F(Calls, AreLoggedBeforeTheirContextGoes) {
    const auto lines = [&](const char* level) {
        qrb_context* logged = nullptr;
        std::uint8_t open = 0;
        const std::string name = std::string("log-") + level;
        EXPECT_EQ(t.qrb_context_new(&logged, level, file(name).c_str()), QRB_SUCCESS) << level;
        EXPECT_EQ(t.qrb_pointcloud_is_open(logged, cloud, &open), QRB_SUCCESS);
        EXPECT_EQ(t.qrb_pointcloud_is_open(logged, cloud, nullptr), QRB_FAILURE);
        if (!std::filesystem::exists(file(name)))
            return std::string("no file");
        std::string text = contents(name);
        EXPECT_EQ(t.qrb_context_delete(logged), QRB_SUCCESS);
        // Without the times.
        std::string result;
        for (std::size_t at = 0; at < text.size();) {
            const std::size_t end = text.find('\n', at);
            result += text.substr(text.find(' ', at) + 1, end - text.find(' ', at));
            at = end + 1;
        }
        return result;
    };
    const std::string failure =
        "ERROR qrb_pointcloud_is_open: The argument \"is_open\" is missing.\n";
    const std::string call = "TRACE qrb_pointcloud_is_open\n";
    EXPECT_EQ(lines("trace"), call + call + failure);
    for (const char* const level : {"DEBUG", "Info", "warning", "ERROR"})
        EXPECT_EQ(lines(level), failure) << level;
    for (const char* const level : {"OFF", ""})
        EXPECT_EQ(lines(level), "no file") << level;
}

TEST_F(Calls, AboutAttributesTellThoseOfTheirName) {
    qrb::Pointcloud other{qrb::Context("OFF", "")};
    other.open(file("a.qrbx"), OpenSettings(other.context()));
    const PointAttributes& attributes = other.pointAttributes();
    EXPECT_EQ(attributes.pointIdUnit(), attributes.get("tarvo.id").unitSymbol);
    EXPECT_EQ(attributes.pointIdType(), attributes.get("tarvo.id").dataType());
    EXPECT_NE(attributes.pointIdType(), attributes.get("xyz").dataType());
    for (const char* const name : {"xyz", "tarvo.id"})
        EXPECT_EQ(attributes.getMerged({&other.pointAttributes()}, name).toJson(),
                  attributes.get(name).toJson());
    for (const catalogue::AttributeEntry& entry : catalogue::attributes()) {
        SCOPED_TRACE(entry.name);
        const PointAttribute given = attributes.getDefault(entry.name);
        EXPECT_EQ(given.name + given.title + given.tags + given.description + given.unitSymbol +
                      given.namedValues + given.lodSettings,
                  entry.name + entry.title + entry.tags + entry.description + entry.unitSymbol +
                      entry.namedValues + entry.lodSettings);
        EXPECT_EQ(given.length, entry.length);
        const double numbers[][2] = {
            {given.resolution, entry.resolution},     {given.minimumValue, entry.minimumValue},
            {given.maximumValue, entry.maximumValue}, {given.defaultValue, entry.defaultValue},
            {given.invalidValue, entry.invalidValue}, {given.scaleFactor, entry.scaleFactor}};
        for (const auto& [got, expected] : numbers)
            EXPECT_TRUE(got == expected || (std::isnan(got) && std::isnan(expected)))
                << got << " for " << expected;
        EXPECT_EQ(static_cast<std::uint8_t>(given.storageClass), entry.storageClass);
        EXPECT_EQ(static_cast<std::uint8_t>(given.compressionOptions), entry.compressionOptions);
    }
}

}  // namespace
