// Handles that are stale, foreign or closed, and calls out of callbacks: errors that say so, and
// nothing is lost.
#include "tests/qrb/library.h"

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <stdexcept>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

namespace {

using namespace tarvo;

class Handles : public LibraryTest {
protected:
    Handles() {
        ok(t.qrb_context_new(&c, nullptr, nullptr));
        ok(t.qrb_pointcloud_new(c, &cloud));
        create(cloud, "points.qrbx");
    }
    ~Handles() override { ok(t.qrb_context_delete(c)); }

    void create(qrb_pointcloud* handle, const std::string& name) {
        const qrb::Context context{"", ""};
        qrb::pointcloud::CreateSettings settings(context);
        settings.primaryAttribute = attribute("xyz", -100, 100, 0.001, 3);
        settings.chunkSize = 100;
        ok(t.qrb_pointcloud_create(c, handle, file(name).c_str(), settings.transfer()));
    }
    std::uint32_t begin(qrb_pointcloud* handle) {
        std::uint32_t id = 0;
        ok(t.qrb_pointcloud_transaction_begin(c, handle, "t", "a", "", "", &id));
        return id;
    }
    void insert(std::uint32_t count) {
        std::vector<double> xyz(count * 3);
        for (std::uint32_t i = 0; i < count * 3; ++i)
            xyz[i] = i % 97;
        qrb_query_insert* query = nullptr;
        std::uint32_t done = 0;
        ok(t.qrb_pointcloud_query_insert_new(c, cloud, &query));
        ok(t.qrb_pointcloud_query_insert_bind(c, query, "xyz", QRB_DATA_TYPE_DOUBLE, xyz.data(),
                                              24));
        ok(t.qrb_pointcloud_query_insert_next(c, query, count, &done));
        ok(t.qrb_pointcloud_query_insert_delete(c, query));
        EXPECT_EQ(done, count);
    }
    void commitPoints(std::uint32_t count) {
        begin(cloud);
        insert(count);
        ok(t.qrb_pointcloud_transaction_commit(c, cloud));
    }
    // Whether somebody is writing the file.
    bool writerLocked() const {
        qrb_context* other = nullptr;
        qrb_pointcloud* beside = nullptr;
        std::uint32_t id = 0;
        EXPECT_EQ(t.qrb_context_new(&other, nullptr, nullptr), QRB_SUCCESS);
        EXPECT_EQ(t.qrb_pointcloud_new(other, &beside), QRB_SUCCESS);
        EXPECT_EQ(t.qrb_pointcloud_open(other, beside, file("points.qrbx").c_str(), nullptr),
                  QRB_SUCCESS);
        const bool begun =
            t.qrb_pointcloud_transaction_begin(other, beside, "", "", "", "", &id) == QRB_SUCCESS;
        EXPECT_EQ(t.qrb_context_delete(other), QRB_SUCCESS);
        return !begun;
    }

    void ok(qrb_status status) {
        if (status != QRB_SUCCESS)
            ADD_FAILURE() << error();
    }
    void refused(qrb_status status, std::int32_t code, const std::string& part = {}) {
        ASSERT_EQ(status, QRB_FAILURE);
        std::int32_t found = 0;
        const std::string text = error(&found);
        EXPECT_EQ(found, code) << text;
        EXPECT_NE(text.find(part), std::string::npos) << text;
    }
    std::string error(std::int32_t* code = nullptr) {
        std::int32_t number = 0;
        const char* text = "";
        const char* details = "";
        EXPECT_EQ(t.qrb_context_get_last_error(c, &number, &text, &details), QRB_SUCCESS);
        if (code)
            *code = number;
        return std::string(text) + " " + details;
    }

    const qrb::FunctionTable& t = qrb::functions();
    qrb_context* c = nullptr;
    qrb_pointcloud* cloud = nullptr;
};

// A query used after its database was closed or deleted.

TEST_F(Handles, ReadingQueriesOutliveTheirDatabase) {
    commitPoints(1000);
    for (const bool deleted : {false, true}) {
        qrb_query_select* select = nullptr;
        qrb_query_stat* stat = nullptr;
        qrb_graph_node* node = nullptr;
        double xyz[3 * 10];
        std::uint32_t done = 0;
        ok(t.qrb_pointcloud_query_select_new(c, cloud, 0, "xyz[0] >= 0", &select));
        ok(t.qrb_pointcloud_query_select_bind(c, select, "xyz", QRB_DATA_TYPE_DOUBLE, xyz, 24));
        ok(t.qrb_pointcloud_query_select_next(c, select, 10, &done));
        ok(t.qrb_pointcloud_query_stat_new(c, cloud, &stat));
        ok(t.qrb_pointcloud_graph_node_new(c, &node));
        begin(cloud);
        EXPECT_TRUE(writerLocked());
        ok(deleted ? t.qrb_pointcloud_delete(c, cloud) : t.qrb_pointcloud_close(c, cloud));
        EXPECT_FALSE(writerLocked());
        std::uint32_t count = done;
        for (done = 1; done > 0; count += done)
            ok(t.qrb_pointcloud_query_select_next(c, select, 10, &done));
        EXPECT_EQ(count, 1000u);
        ok(t.qrb_pointcloud_query_stat_index(c, stat, node));
        EXPECT_EQ(node->point_count_total, 1000);
        ok(t.qrb_pointcloud_query_select_delete(c, select));
        ok(t.qrb_pointcloud_query_stat_delete(c, stat));
        ok(t.qrb_pointcloud_graph_node_delete(c, node));
        if (!deleted)
            ok(t.qrb_pointcloud_open(c, cloud, file("points.qrbx").c_str(), nullptr));
    }
}

TEST_F(Handles, AQueryThatReadsAheadGoesOnBesideATransactionAndWithoutItsDatabase) {
    constexpr std::uint32_t count = 30'000;
    commitPoints(count);
    for (const bool closes : {false, true}) {
        qrb_query_select* select = nullptr;
        std::uint64_t id = 0;
        std::uint64_t sum = 0;
        std::uint32_t done = 0;
        ok(t.qrb_pointcloud_query_select_new(c, cloud, 0, "tarvo.id > 0", &select));
        ok(t.qrb_pointcloud_query_select_bind(c, select, "tarvo.id", QRB_DATA_TYPE_UINT64, &id, 0));
        const auto read = [&](std::uint32_t points) {
            done = 1;
            for (std::uint32_t i = 0; i < points && done == 1; ++i) {
                ok(t.qrb_pointcloud_query_select_next(c, select, 1, &done));
                sum += done * id;
            }
        };
        read(10);
        begin(cloud);
        read(1000);
        insert(2000);
        if (closes) {
            ok(t.qrb_pointcloud_close(c, cloud));
            EXPECT_FALSE(writerLocked());
        } else {
            read(1000);
            ok(t.qrb_pointcloud_transaction_rollback(c, cloud));
        }
        read(count);
        EXPECT_EQ(done, 0u);
        EXPECT_EQ(sum, std::uint64_t(count) * (count + 1) / 2);
        ok(t.qrb_pointcloud_query_select_delete(c, select));
    }
}

TEST_F(Handles, QueriesOfATransactionFailWhenItEndsWithItsDatabase) {
    commitPoints(100);
    begin(cloud);
    insert(100);
    const double value[3] = {};
    std::uint32_t done = 0;
    qrb_query_insert* insertion = nullptr;
    qrb_query_update* update = nullptr;
    qrb_query_remove* removal = nullptr;
    qrb_query_fill* fill = nullptr;
    qrb_query_invert* invert = nullptr;
    qrb_query_select* select = nullptr;
    ok(t.qrb_pointcloud_query_insert_new(c, cloud, &insertion));
    ok(t.qrb_pointcloud_query_insert_bind(c, insertion, "xyz", QRB_DATA_TYPE_DOUBLE, value, 0));
    ok(t.qrb_pointcloud_query_update_new(c, cloud, &update));
    ok(t.qrb_pointcloud_query_remove_new(c, cloud, &removal));
    ok(t.qrb_pointcloud_query_fill_new(c, cloud, 0, "", &fill));
    ok(t.qrb_pointcloud_query_invert_new(c, cloud, 0, "", &invert));
    ok(t.qrb_pointcloud_query_select_new(c, cloud, 0, "", &select));
    ok(t.qrb_pointcloud_close(c, cloud));
    // Another transaction of another session is not theirs.
    ok(t.qrb_pointcloud_open(c, cloud, file("points.qrbx").c_str(), nullptr));
    begin(cloud);
    const char* const closed = "was closed";
    refused(t.qrb_pointcloud_query_insert_next(c, insertion, 1, &done), QRB_ERROR_STATE, closed);
    refused(t.qrb_pointcloud_query_insert_bind(c, insertion, "xyz", 10, value, 0), QRB_ERROR_STATE,
            closed);
    refused(t.qrb_pointcloud_query_update_next(c, update, 1, &done), QRB_ERROR_STATE, closed);
    refused(t.qrb_pointcloud_query_remove_next(c, removal, 1, &done), QRB_ERROR_STATE, closed);
    refused(t.qrb_pointcloud_query_fill_next(c, fill, 1, &done), QRB_ERROR_STATE, closed);
    refused(t.qrb_pointcloud_query_invert_next(c, invert, 1, &done), QRB_ERROR_STATE, closed);
    refused(t.qrb_pointcloud_query_select_next(c, select, 1, &done), QRB_ERROR_STATE, closed);
    ok(t.qrb_pointcloud_query_insert_delete(c, insertion));
    ok(t.qrb_pointcloud_query_fill_delete(c, fill));
    // The others go with the context.
}

TEST_F(Handles, LayerQueriesOutliveTheirDatabase) {
    commitPoints(100);
    ok(t.qrb_pointcloud_close(c, cloud));
    qrb::pointcloud::QuerySelect select;
    qrb::pointcloud::QueryInsert insertion;
    std::vector<double> xyz(300);
    {
        qrb::Pointcloud own{qrb::Context("", "")};
        own.open(file("points.qrbx"), qrb::pointcloud::OpenSettings(own.context()));
        select = own.select();
        select.bind("xyz", qrb::pointcloud::DataType::DOUBLE, xyz.data(), 24);
        own.transactions().begin("t", "a");
        insertion = own.insert();
        own.close();
        EXPECT_EQ(select.next(50), 50u);
        EXPECT_FALSE(writerLocked());
    }
    EXPECT_EQ(select.next(100), 50u);
    failure([&] { insertion.next(1); }, QRB_ERROR_STATE);
}

// Calls out of callbacks.

using Callback = std::function<bool()>;
std::uint8_t progress(std::uint8_t, void* data) {
    return (*static_cast<Callback*>(data))();
}

class Callbacks : public Handles {
protected:
    // What a callback may ask, and what it may not.
    void callAll() {
        std::uint8_t flag = 0;
        std::uint32_t number = 0;
        const char* text = nullptr;
        ok(t.qrb_pointcloud_is_open(c, cloud, &flag));
        EXPECT_EQ(flag, 1);
        ok(t.qrb_pointcloud_get_uuid(c, cloud, &text));
        ok(t.qrb_pointcloud_transaction_pending(c, cloud, &flag));
        ok(t.qrb_pointcloud_transaction_current(c, cloud, &number));
        ok(t.qrb_pointcloud_transaction_list(c, cloud, &number, nullptr));
        ok(t.qrb_library_name(c, &text));
        ok(t.qrb_pointcloud_is_empty(c, other, &flag));

        const char* const busy = "a callback can't call this function";
        std::uint32_t done = 0;
        refused(t.qrb_pointcloud_transaction_rollback(c, cloud), QRB_ERROR_STATE, busy);
        refused(t.qrb_pointcloud_transaction_commit(c, cloud), QRB_ERROR_STATE, busy);
        refused(t.qrb_pointcloud_transaction_begin(c, cloud, "", "", "", "", &number),
                QRB_ERROR_STATE, busy);
        refused(t.qrb_pointcloud_management_vacuum(c, cloud, nullptr, nullptr), QRB_ERROR_STATE,
                busy);
        refused(t.qrb_pointcloud_close(c, cloud), QRB_ERROR_STATE, busy);
        refused(t.qrb_pointcloud_delete(c, cloud), QRB_ERROR_STATE, busy);
        refused(t.qrb_pointcloud_open(c, cloud, file("points.qrbx").c_str(), nullptr),
                QRB_ERROR_STATE, busy);
        refused(t.qrb_pointcloud_query_select_next(c, select, 1, &done), QRB_ERROR_STATE, busy);
        refused(t.qrb_pointcloud_query_select_delete(c, select), QRB_ERROR_STATE, busy);
        refused(t.qrb_context_delete(c), QRB_ERROR_STATE,
                "a callback can't call this function on it");
        ++calls;
    }
    void prepare() {
        ok(t.qrb_pointcloud_query_select_new(c, cloud, 0, "", &select));
        ok(t.qrb_pointcloud_new(c, &other));
        create(other, "other.qrbx");
    }
    void finish() {
        EXPECT_GT(calls, 0);
        std::uint32_t done = 0;
        ok(t.qrb_pointcloud_query_select_next(c, select, 1, &done));
        ok(t.qrb_pointcloud_query_select_delete(c, select));
    }

    qrb_query_select* select = nullptr;
    qrb_pointcloud* other = nullptr;
    int calls = 0;
    Callback callback = [this] {
        callAll();
        return true;
    };
};

TEST_F(Callbacks, OfACommitAreRefusedAllButQuestions) {
    prepare();
    const std::uint32_t id = begin(cloud);
    insert(1000);
    ok(t.qrb_pointcloud_transaction_commit_with_progress(c, cloud, progress, &callback));
    std::uint32_t now = 0;
    ok(t.qrb_pointcloud_transaction_current(c, cloud, &now));
    EXPECT_EQ(now, id);
    finish();
}

TEST_F(Callbacks, OfAVacuumAreRefusedAllButQuestions) {
    commitPoints(1000);
    prepare();
    ok(t.qrb_pointcloud_management_vacuum(c, cloud, progress, &callback));
    finish();
}

TEST_F(Callbacks, OfAnAuthenticationAreRefusedAllButQuestions) {
    prepare();
    ok(t.qrb_factory_set_authentication_function(
        c,
        [](const std::uint8_t*, std::uint32_t, std::uint8_t* answer, std::uint32_t size,
           void* data) -> std::uint8_t {
            std::fill_n(answer, size, std::uint8_t(1));
            return (*static_cast<Callback*>(data))();
        },
        &callback));
    begin(cloud);
    ok(t.qrb_pointcloud_meta_data_set(c, cloud, "item", "1"));
    ok(t.qrb_pointcloud_meta_data_create_signature(c, cloud, "item", 2, 0, nullptr));
    std::uint8_t valid = 0;
    ok(t.qrb_pointcloud_meta_data_verify_signature(c, cloud, "item", 2, 0, nullptr, &valid));
    EXPECT_EQ(valid, 1);
    ok(t.qrb_pointcloud_transaction_commit_with_signature(c, cloud, nullptr, nullptr, 2, 0,
                                                          nullptr));
    EXPECT_EQ(calls, 3);
    finish();
}

// The context of the database may not go, also where the call is made on another one.
TEST_F(Callbacks, CantDeleteTheContextOfTheDatabaseAtWork) {
    qrb_context* caller = nullptr;
    ok(t.qrb_context_new(&caller, nullptr, nullptr));
    begin(cloud);
    callback = [&] {
        refused(t.qrb_context_delete(c), QRB_ERROR_STATE);
        EXPECT_EQ(t.qrb_context_delete(caller), QRB_FAILURE);
        return true;
    };
    EXPECT_EQ(t.qrb_pointcloud_transaction_commit_with_progress(caller, cloud, progress, &callback),
              QRB_SUCCESS);
    ok(t.qrb_context_delete(caller));
}

// A stop at the end doesn't make a change look undone.
TEST_F(Callbacks, ThatThrowAtTheEndDontFailWhatWasDone) {
    ok(t.qrb_pointcloud_close(c, cloud));
    qrb::Pointcloud own{qrb::Context("", "")};
    own.open(file("points.qrbx"), qrb::pointcloud::OpenSettings(own.context()));
    const auto stopAt = [](int limit) {
        return [limit](int percent) {
            if (percent >= limit)
                throw std::runtime_error("stopped");
        };
    };
    qrb::pointcloud::TransactionGuard early(own.transactions(), "t", "a");
    EXPECT_THROW(early.commit({}, stopAt(50)), std::runtime_error);
    EXPECT_EQ(own.transactions().current(), 1u);
    EXPECT_NO_THROW(early.commit({}, stopAt(100)));
    EXPECT_EQ(own.transactions().current(), early.id());
    EXPECT_FALSE(own.transactions().pending());
}

// Stale, foreign and twice deleted handles, and those of another kind.

// Gives every handle parameter the wrong handle, but for the context.
struct WrongHandles {
    qrb_context* context;
    void* wrong;
    template <typename T>
    T get() {
        using Bare = std::remove_cv_t<std::remove_pointer_t<T>>;
        if constexpr (std::is_same_v<T, qrb_context*>)
            return context;
        else if constexpr (std::is_pointer_v<T> && std::is_class_v<Bare>)
            return static_cast<T>(wrong);
        else
            return T{};
    }
};

template <typename Result, typename... Parameters>
constexpr bool takesHandle(Result (*)(Parameters...)) {
    return ((std::is_pointer_v<Parameters> &&
             std::is_class_v<std::remove_cv_t<std::remove_pointer_t<Parameters>>> &&
             !std::is_same_v<Parameters, qrb_context*>) ||
            ...);
}

template <typename Result, typename... Parameters>
Result callWrong(Result (*function)(Parameters...), WrongHandles handles) {
    return function(handles.get<Parameters>()...);
}

class StaleHandles : public Handles {
protected:
    void expectRefusal(const std::string& name, qrb_status status) {
        EXPECT_EQ(status, QRB_FAILURE) << name;
        std::int32_t code = 0;
        const std::string text = error(&code);
        EXPECT_EQ(code, QRB_ERROR_ARGUMENT) << name << ": " << text;
    }
    void expectRefusal(const std::string& name, qrb_result* result) {
        ASSERT_NE(result, nullptr) << name;
        std::int32_t code = 0;
        EXPECT_EQ(t.qrb_result_get_error_code_cf(result, &code), nullptr);
        EXPECT_EQ(code, QRB_ERROR_ARGUMENT) << name;
        EXPECT_EQ(t.qrb_result_delete_cf(result), nullptr);
    }
    void refuseEverywhere(void* wrong) {
#define QRB_FUNCTION(result, name, parameters)                               \
    if (takesHandle(t.name) && std::string(#name) != "qrb_object_unlock_cf") \
        expectRefusal(#name, callWrong(t.name, {c, wrong}));
#include "qrb/functions.def"
    }
};

TEST_F(StaleHandles, AreRefusedByEveryFunction) {
    qrb_pointcloud* deleted = nullptr;
    ok(t.qrb_pointcloud_new(c, &deleted));
    ok(t.qrb_pointcloud_delete(c, deleted));
    refuseEverywhere(deleted);
    refuseEverywhere(c);  // of another kind
    int notOurs = 0;
    refuseEverywhere(&notOurs);
    refuseEverywhere(reinterpret_cast<void*>(std::uintptr_t(8)));
}

TEST_F(StaleHandles, OfAContextFailEverywhere) {
    qrb_context* gone = nullptr;
    ok(t.qrb_context_new(&gone, nullptr, nullptr));
    ok(t.qrb_context_delete(gone));
    for (qrb_context* context : {gone, reinterpret_cast<qrb_context*>(cloud)}) {
        std::int32_t code = 0;
        const char* text = nullptr;
        EXPECT_EQ(t.qrb_context_get_last_error(context, &code, &text, &text), QRB_FAILURE);
        EXPECT_EQ(t.qrb_context_delete(context), QRB_FAILURE);
        EXPECT_EQ(t.qrb_library_name(context, &text), QRB_FAILURE);
        EXPECT_EQ(t.qrb_pointcloud_close(context, cloud), QRB_FAILURE);
    }
}

TEST_F(StaleHandles, AreNotTakenForWhatCameAfterThem) {
    std::vector<qrb_create_settings*> used;
    for (int i = 0; i < 100; ++i) {
        qrb_create_settings* settings = nullptr;
        ASSERT_EQ(t.qrb_pointcloud_create_settings_new_cf(&settings), nullptr);
        EXPECT_EQ(std::count(used.begin(), used.end(), settings), 0);
        used.push_back(settings);
        ASSERT_EQ(t.qrb_pointcloud_create_settings_delete_cf(settings), nullptr);
    }
    qrb_create_settings* living = nullptr;
    ok(t.qrb_pointcloud_create_settings_new(c, &living));
    for (qrb_create_settings* settings : used)
        refused(t.qrb_pointcloud_create_settings_set_chunk_size(c, settings, 1), QRB_ERROR_ARGUMENT,
                "deleted already");
    refused(t.qrb_pointcloud_create_settings_delete(c, used[0]), QRB_ERROR_ARGUMENT);
    ok(t.qrb_pointcloud_create_settings_delete(c, living));
}

TEST_F(StaleHandles, ResultsAndNodesAreDeletedOnce) {
    qrb_result* result = t.qrb_object_lock_cf(nullptr);
    ASSERT_NE(result, nullptr);
    EXPECT_EQ(t.qrb_result_delete_cf(result), nullptr);
    expectRefusal("a result deleted twice", t.qrb_result_delete_cf(result));

    commitPoints(1000);
    qrb_graph_node* node = nullptr;
    qrb_graph_node own{};
    qrb_query_stat* stat = nullptr;
    ok(t.qrb_pointcloud_graph_node_new(c, &node));
    ok(t.qrb_pointcloud_query_stat_new(c, cloud, &stat));
    ok(t.qrb_pointcloud_query_stat_index(c, stat, node));
    ASSERT_GT(node->child_count, 0u);
    refused(t.qrb_pointcloud_graph_node_delete(c, node->children[0]), QRB_ERROR_ARGUMENT);
    refused(t.qrb_pointcloud_query_stat_index(c, stat, &own), QRB_ERROR_ARGUMENT);
    ok(t.qrb_pointcloud_graph_node_delete(c, node));
    refused(t.qrb_pointcloud_graph_node_delete(c, node), QRB_ERROR_ARGUMENT);
}

TEST_F(StaleHandles, LockTakesEveryRecordAndNothingElse) {
    qrb_create_settings* create = nullptr;
    qrb_open_settings* open = nullptr;
    qrb_point_attribute* attribute = nullptr;
    ok(t.qrb_pointcloud_create_settings_new(c, &create));
    ok(t.qrb_pointcloud_open_settings_new(c, &open));
    ok(t.qrb_pointcloud_point_attribute_new(c, &attribute));
    for (void* record :
         {static_cast<void*>(create), static_cast<void*>(open), static_cast<void*>(attribute)}) {
        auto* object = static_cast<qrb_object*>(record);
        EXPECT_EQ(t.qrb_object_lock_cf(object), nullptr);
        refused(record == create ? t.qrb_pointcloud_create_settings_delete(c, create)
                : record == open ? t.qrb_pointcloud_open_settings_delete(c, open)
                                 : t.qrb_pointcloud_point_attribute_delete(c, attribute),
                QRB_ERROR_STATE);
        EXPECT_EQ(t.qrb_object_unlock_cf(object), nullptr);
    }
    expectRefusal("lock", t.qrb_object_lock_cf(reinterpret_cast<qrb_object*>(cloud)));
    expectRefusal("unlock", t.qrb_object_unlock_cf(reinterpret_cast<qrb_object*>(cloud)));
    ok(t.qrb_pointcloud_create_settings_delete(c, create));
    ok(t.qrb_pointcloud_open_settings_delete(c, open));
    ok(t.qrb_pointcloud_point_attribute_delete(c, attribute));
}

TEST_F(StaleHandles, OfADeletedContextGoWithItAndReleaseTheirLocks) {
    qrb_context* second = nullptr;
    qrb_pointcloud* lost = nullptr;
    qrb_transaction* record = nullptr;
    qrb_point_attribute* attribute = nullptr;
    qrb_query_insert* query = nullptr;
    std::uint32_t id = 0;
    ok(t.qrb_pointcloud_close(c, cloud));
    ok(t.qrb_context_new(&second, nullptr, nullptr));
    EXPECT_EQ(t.qrb_pointcloud_new(second, &lost), QRB_SUCCESS);
    EXPECT_EQ(t.qrb_pointcloud_transaction_new(second, &record), QRB_SUCCESS);
    EXPECT_EQ(t.qrb_pointcloud_point_attribute_new(second, &attribute), QRB_SUCCESS);
    EXPECT_EQ(t.qrb_pointcloud_open(second, lost, file("points.qrbx").c_str(), nullptr),
              QRB_SUCCESS);
    EXPECT_EQ(t.qrb_pointcloud_transaction_begin(second, lost, "", "", "", "", &id), QRB_SUCCESS);
    EXPECT_EQ(t.qrb_pointcloud_query_insert_new(second, lost, &query), QRB_SUCCESS);
    EXPECT_TRUE(writerLocked());
    ok(t.qrb_context_delete(second));
    EXPECT_FALSE(writerLocked());
    refused(t.qrb_pointcloud_query_insert_delete(c, query), QRB_ERROR_ARGUMENT);
    refused(t.qrb_pointcloud_delete(c, lost), QRB_ERROR_ARGUMENT);
    refused(t.qrb_pointcloud_transaction_delete(c, record), QRB_ERROR_ARGUMENT);
    // A record stands alone.
    EXPECT_EQ(t.qrb_pointcloud_point_attribute_set_length_cf(attribute, 2), nullptr);
    EXPECT_EQ(t.qrb_pointcloud_point_attribute_delete_cf(attribute), nullptr);
}

// What was not deleted goes when the process ends, whatever of the library has gone before it.
TEST_F(StaleHandles, OfAProcessThatEndsReleaseTheirLocks) {
    EXPECT_EXIT(
        {
            begin(cloud);
            insert(10);
            std::exit(0);
        },
        testing::ExitedWithCode(0), "");
    EXPECT_FALSE(writerLocked());
}

TEST_F(StaleHandles, RecordsAreUsedBySeveralThreadsAtOnce) {
    std::vector<std::thread> threads;
    for (std::uint32_t n = 0; n < 4; ++n)
        threads.emplace_back([this, n] {
            for (std::uint32_t i = 0; i < 2000; ++i) {
                qrb_create_settings* settings = nullptr;
                std::uint32_t size = 0;
                ASSERT_EQ(t.qrb_pointcloud_create_settings_new_cf(&settings), nullptr);
                ASSERT_EQ(t.qrb_pointcloud_create_settings_set_chunk_size_cf(settings, n + i),
                          nullptr);
                ASSERT_EQ(t.qrb_pointcloud_create_settings_get_chunk_size_cf(settings, &size),
                          nullptr);
                ASSERT_EQ(size, n + i);
                ASSERT_EQ(t.qrb_pointcloud_create_settings_delete_cf(settings), nullptr);
            }
        });
    for (std::thread& thread : threads)
        thread.join();
}

}  // namespace
