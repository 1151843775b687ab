// Every function of the library does its work on a real database, and says so when it can't: the
// list of calls is made by the run itself.
#include "tests/qrb/library.h"
#include "tests/qrb/recorder.h"

#include <cmath>
#include <cstring>
#include <fstream>
#include <type_traits>
#include <vector>

namespace {

using namespace tarvo;

// Arguments for functions on records, by their types.
struct RecordArguments {
    qrb_context* context = nullptr;
    qrb_create_settings* create = nullptr;
    qrb_open_settings* open = nullptr;
    qrb_point_attribute* attribute = nullptr;
    const char* text = "{}";

    // What the last call wrote.
    double number = NAN;
    std::uint64_t whole[2] = {};
    std::int64_t element = 0;
    const char* given = nullptr;
    char* owned = nullptr;

    template <typename T>
    T get() {
        using Bare = std::remove_cv_t<std::remove_pointer_t<T>>;
        if constexpr (std::is_same_v<Bare, qrb_context>)
            return context;
        else if constexpr (std::is_same_v<Bare, qrb_create_settings>)
            return create;
        else if constexpr (std::is_same_v<Bare, qrb_open_settings>)
            return open;
        else if constexpr (std::is_same_v<Bare, qrb_point_attribute>)
            return attribute;
        else if constexpr (std::is_same_v<T, const char*>)
            return text;
        else if constexpr (std::is_same_v<T, const char**>)
            return &given;
        else if constexpr (std::is_same_v<T, char**>)
            return &owned;
        else if constexpr (std::is_same_v<T, double*>)
            return &number;
        else if constexpr (std::is_same_v<T, std::int64_t*>)
            return &element;
        else if constexpr (std::is_pointer_v<T> && std::is_integral_v<Bare>)
            return reinterpret_cast<T>(&whole[0]);
        else if constexpr (std::is_arithmetic_v<T>)
            return T(1);
        else
            return T{};
    }
};

template <typename Result, typename... Parameters>
Result callRecordFunction(Result (*function)(Parameters...), RecordArguments& arguments) {
    const Result result = function(arguments.get<Parameters>()...);
    if (arguments.owned) {
        EXPECT_EQ(qrb::functions().qrb_string_delete_cf(arguments.owned), nullptr);
        arguments.owned = nullptr;
    }
    return result;
}

// The functions that get or set one field, load, save or ask a record.
bool isRecordFunction(const std::string& name) {
    for (const char* family : {"qrb_pointcloud_create_settings_", "qrb_pointcloud_open_settings_",
                               "qrb_pointcloud_point_attribute_"})
        if (name.rfind(family, 0) == 0)
            return name.find("_new") == std::string::npos &&
                   name.find("_delete") == std::string::npos &&
                   name != "qrb_pointcloud_point_attribute_decode_descriptor";
    return false;
}

template <typename Result>
void expectFailure(Result result, const std::string& name) {
    EXPECT_FALSE(recorder::isSuccess(result)) << name;
    if constexpr (std::is_same_v<Result, qrb_result*>)
        if (result)
            qrb::functions().qrb_result_delete_cf(result);
}

template <typename Result, typename... Parameters>
auto callWithNothing(Result (*function)(Parameters...)) {
    return function(Parameters{}...);
}

class EveryFunction : public LibraryTest {
protected:
    EveryFunction() { recordCalls(); }

    const qrb::FunctionTable& t = qrb::functions();
    const qrb::OptionalFunctionTable& optional = qrb::optionalFunctions();
    qrb_context* c = nullptr;

    void ok(qrb_status status) {
        if (status == QRB_SUCCESS)
            return;
        std::int32_t code = 0;
        const char* text = nullptr;
        const char* details = nullptr;
        t.qrb_context_get_last_error(c, &code, &text, &details);
        ADD_FAILURE() << code << ": " << text << "\n" << details;
    }
    void no(qrb_status status, std::int32_t expected) {
        ASSERT_NE(status, QRB_SUCCESS);
        std::int32_t code = 0;
        const char* text = nullptr;
        const char* details = nullptr;
        ASSERT_EQ(t.qrb_context_get_last_error(c, &code, &text, &details), QRB_SUCCESS);
        EXPECT_EQ(code, expected) << text;
        EXPECT_STRNE(text, "");
    }

    void walkLibrary();
    void walkRecords();
    void walkDatabase();
    void walkDefinitions(qrb_pointcloud* p);
    void walkPoints(qrb_pointcloud* p);
    void walkChanges(qrb_pointcloud* p);
    void walkIndex(qrb_pointcloud* p);
    void walkMetaData(qrb_pointcloud* p);
    void walkHistory(qrb_pointcloud* p);
    std::uint32_t begin(qrb_pointcloud* p) {
        std::uint32_t id = 0;
        ok(t.qrb_pointcloud_transaction_begin(c, p, "title", "agent", "comments", "{}", &id));
        return id;
    }
};

void EveryFunction::walkLibrary() {
    qrb_context* plain = nullptr;
    EXPECT_EQ(t.qrb_context_new(&plain, "ERROR", ""), QRB_SUCCESS);
    EXPECT_EQ(t.qrb_context_delete(plain), QRB_SUCCESS);
    EXPECT_EQ(t.qrb_context_new_with_api(&c, "tests", "OFF", ""), QRB_SUCCESS);
    const char* text = nullptr;
    for (const auto function :
         {t.qrb_database_file_type_suffix, t.qrb_database_file_type_title, t.qrb_library_filename,
          t.qrb_library_license, t.qrb_library_name, t.qrb_library_version}) {
        ok(function(c, &text));
        EXPECT_STRNE(text, "");
    }
    std::uint8_t is = 1;
    ok(t.qrb_database_file_type_check(c, file("absent").c_str(), &is));
    EXPECT_EQ(is, 0);
}

void EveryFunction::walkRecords() {
    RecordArguments a;
    a.context = c;
    ok(t.qrb_pointcloud_create_settings_new(c, &a.create));
    ok(t.qrb_pointcloud_open_settings_new(c, &a.open));
    ok(t.qrb_pointcloud_point_attribute_new(c, &a.attribute));
    a.text = "name";
#define QRB_FUNCTION(result, function, parameters)                                        \
    if (isRecordFunction(#function)) {                                                    \
        const bool json = std::strstr(#function, "json_load") != nullptr;                 \
        a.text = json ? "{}" : std::strstr(#function, "lod_settings") ? "first" : "name"; \
        EXPECT_TRUE(recorder::isSuccess(callRecordFunction(t.function, a))) << #function; \
    }
#include "qrb/functions.def"
    const char* name = nullptr;
    const char* property = nullptr;
    std::int64_t element = 0;
    ok(t.qrb_pointcloud_point_attribute_decode_descriptor(c, "a.b[2]:minimum", &name, &element,
                                                          &property));
    EXPECT_EQ(std::string(name) + property, "a.bminimum");
    EXPECT_EQ(element, 2);
    no(t.qrb_pointcloud_point_attribute_json_load(c, a.attribute, "{\"name\": 5}"),
       QRB_ERROR_ARGUMENT);

    // Locked records can't be deleted.
    const auto locked = [&](auto* record, auto deletes, auto deletesFree) {
        auto* object = reinterpret_cast<qrb_object*>(record);
        EXPECT_EQ(t.qrb_object_lock_cf(object), nullptr);
        no(deletes(c, record), QRB_ERROR_STATE);
        expectFailure(deletesFree(record), "delete of a locked object");
        EXPECT_EQ(t.qrb_object_unlock_cf(object), nullptr);
        ok(deletes(c, record));
    };
    locked(a.create, t.qrb_pointcloud_create_settings_delete,
           t.qrb_pointcloud_create_settings_delete_cf);
    locked(a.open, t.qrb_pointcloud_open_settings_delete, t.qrb_pointcloud_open_settings_delete_cf);
    locked(a.attribute, t.qrb_pointcloud_point_attribute_delete,
           t.qrb_pointcloud_point_attribute_delete_cf);
    EXPECT_EQ(t.qrb_pointcloud_create_settings_new_cf(&a.create), nullptr);
    EXPECT_EQ(t.qrb_pointcloud_create_settings_delete_cf(a.create), nullptr);
    EXPECT_EQ(t.qrb_pointcloud_open_settings_new_cf(&a.open), nullptr);
    EXPECT_EQ(t.qrb_pointcloud_open_settings_delete_cf(a.open), nullptr);
    EXPECT_EQ(t.qrb_pointcloud_point_attribute_new_cf(&a.attribute), nullptr);

    qrb_result* result = t.qrb_pointcloud_point_attribute_json_load_cf(a.attribute, "[");
    ASSERT_NE(result, nullptr);
    std::int32_t code = 0;
    char* text = nullptr;
    char* details = nullptr;
    EXPECT_EQ(t.qrb_result_get_error_code_cf(result, &code), nullptr);
    EXPECT_EQ(t.qrb_result_get_error_text_cf(result, &text), nullptr);
    EXPECT_EQ(t.qrb_result_get_error_details_cf(result, &details), nullptr);
    EXPECT_EQ(code, QRB_ERROR_ARGUMENT);
    EXPECT_STRNE(text, "");
    EXPECT_EQ(t.qrb_string_delete_cf(text), nullptr);
    EXPECT_EQ(t.qrb_string_delete_cf(details), nullptr);
    EXPECT_EQ(t.qrb_result_delete_cf(result), nullptr);
    EXPECT_EQ(t.qrb_pointcloud_point_attribute_delete_cf(a.attribute), nullptr);
}

void EveryFunction::walkDefinitions(qrb_pointcloud* p) {
    qrb_point_attribute* attribute = nullptr;
    ok(t.qrb_pointcloud_point_attribute_new(c, &attribute));
    ok(t.qrb_pointcloud_point_attributes_get_default(c, p, "tarvo.class", attribute));
    no(t.qrb_pointcloud_point_attributes_add(c, p, attribute), QRB_ERROR_STATE);
    begin(p);
    ok(t.qrb_pointcloud_point_attributes_add(c, p, attribute));
    no(t.qrb_pointcloud_point_attributes_add(c, p, attribute), QRB_ERROR_EXISTS);
    ok(t.qrb_pointcloud_point_attributes_add_default(c, p, "tarvo.reflectance"));
    ok(t.qrb_pointcloud_point_attributes_add_default(c, p, "tarvo.selected"));
    no(t.qrb_pointcloud_point_attributes_add_default(c, p, "tarvo.nonsense"), QRB_ERROR_NOT_FOUND);
    ok(t.qrb_pointcloud_point_attribute_set_title(c, attribute, "Another title"));
    ok(t.qrb_pointcloud_point_attributes_put(c, p, attribute));
    ok(t.qrb_pointcloud_point_attributes_get(c, p, "tarvo.class", attribute));
    const char* text = nullptr;
    ok(t.qrb_pointcloud_point_attribute_get_title(c, attribute, &text));
    EXPECT_STREQ(text, "Another title");
    ok(t.qrb_pointcloud_point_attributes_duplicate(c, p, "tarvo.class", "own.class"));
    ok(t.qrb_pointcloud_point_attributes_discard(c, p, "own.class"));
    ok(t.qrb_pointcloud_point_attributes_remove(c, p, "own.class"));
    no(t.qrb_pointcloud_point_attributes_remove(c, p, "own.class"), QRB_ERROR_NOT_FOUND);
    ok(t.qrb_pointcloud_transaction_commit(c, p));

    std::uint32_t count = 0;
    std::uint32_t rank = 0;
    std::uint32_t type = 0;
    std::uint8_t exists = 0;
    ok(t.qrb_pointcloud_point_attributes_list(c, p, &count, &text));
    EXPECT_EQ(count, 5u);
    ok(t.qrb_pointcloud_point_attributes_list_default(c, p, &count, &text));
    EXPECT_EQ(count, 247u);
    ok(t.qrb_pointcloud_point_attributes_list_filtered(c, p, "tarvo.*s*", &count, &text));
    EXPECT_EQ(count, 2u);
    ok(t.qrb_pointcloud_point_attributes_exists(c, p, "tarvo.class", &exists));
    EXPECT_EQ(exists, 1);
    ok(t.qrb_pointcloud_point_attributes_group(c, p, "tarvo.xyz", &text, &rank));
    EXPECT_STREQ(text, "Coordinates/Vectors");
    ok(t.qrb_pointcloud_point_attributes_group_default(c, p, "tarvo.xyz", &text, &rank));
    EXPECT_EQ(rank, 0u);
    ok(t.qrb_pointcloud_point_attributes_point_id_name(c, p, &text));
    EXPECT_STREQ(text, "tarvo.id");
    ok(t.qrb_pointcloud_point_attributes_point_id_type(c, p, &type));
    ok(t.qrb_pointcloud_point_attributes_point_id_unit(c, p, &text));
    ok(t.qrb_pointcloud_point_attributes_primary_attribute_name(c, p, &text));
    EXPECT_STREQ(text, "tarvo.xyz");
    ok(t.qrb_pointcloud_point_attributes_get_merged(c, p, &p, 1, "tarvo.class", attribute));
    ok(t.qrb_pointcloud_point_attributes_get_merged_all(c, p, &p, 1, &count, &text));
    EXPECT_EQ(count, 5u);
    ok(t.qrb_pointcloud_point_attribute_delete(c, attribute));
}

void EveryFunction::walkPoints(qrb_pointcloud* p) {
    std::vector<double> xyz;
    std::vector<std::uint8_t> classes;
    for (int i = 0; i < 1000; ++i) {
        xyz.insert(xyz.end(), {i % 10 * 1.0, i / 10 % 10 * 1.0, i / 100 * 1.0});
        classes.push_back(static_cast<std::uint8_t>(i % 7));
    }
    std::vector<std::uint64_t> ids(1000);
    qrb_query_insert* insert = nullptr;
    no(t.qrb_pointcloud_query_insert_new(c, p, &insert), QRB_ERROR_STATE);
    begin(p);
    ok(t.qrb_pointcloud_query_insert_new(c, p, &insert));
    ok(t.qrb_pointcloud_query_insert_bind(c, insert, "tarvo.xyz", QRB_DATA_TYPE_DOUBLE, xyz.data(),
                                          24));
    ok(t.qrb_pointcloud_query_insert_bind(c, insert, "tarvo.class", QRB_DATA_TYPE_UINT8,
                                          classes.data(), 1));
    ok(t.qrb_pointcloud_query_insert_bind_id(c, insert, QRB_DATA_TYPE_UINT64, ids.data(), 8));
    std::uint32_t count = 0;
    ok(t.qrb_pointcloud_query_insert_next(c, insert, 1000, &count));
    EXPECT_EQ(count, 1000u);
    EXPECT_EQ(ids[999], 1000u);
    xyz[5] = 1e9;
    no(t.qrb_pointcloud_query_insert_next(c, insert, 1000, &count), QRB_ERROR_RANGE);
    ok(t.qrb_pointcloud_query_insert_delete(c, insert));
    int last = -1;
    ok(t.qrb_pointcloud_transaction_commit_with_progress(
        c, p,
        [](std::uint8_t percent, void* data) -> std::uint8_t {
            *static_cast<int*>(data) = percent;
            return 1;
        },
        &last));
    EXPECT_EQ(last, 100);

    qrb_query_select* select = nullptr;
    no(t.qrb_pointcloud_query_select_new(c, p, 0, "tarvo.class ==", &select), QRB_ERROR_FILTER);
    ok(t.qrb_pointcloud_query_select_new(c, p, 0, "tarvo.class == 3", &select));
    ok(t.qrb_pointcloud_query_select_bind(c, select, "tarvo.class", QRB_DATA_TYPE_UINT8,
                                          classes.data(), 1));
    ok(t.qrb_pointcloud_query_select_next(c, select, 1000, &count));
    EXPECT_EQ(count, 143u);
    ok(t.qrb_pointcloud_query_select_next(c, select, 1000, &count));
    EXPECT_EQ(count, 0u);
    std::uint32_t percent = 0;
    ok(t.qrb_pointcloud_query_select_progress(c, select, &percent));
    EXPECT_EQ(percent, 100u);
    std::uint64_t skipped = 0, whole = 0, read = 0;
    ok(optional.qrb_pointcloud_query_select_nodes_passed(c, select, &skipped, &whole, &read));
    EXPECT_EQ(skipped + whole + read, 1u);
    no(optional.qrb_pointcloud_query_select_nodes_passed(c, select, &skipped, nullptr, &read),
       QRB_ERROR_ARGUMENT);
    ok(t.qrb_pointcloud_query_select_delete(c, select));
    ok(t.qrb_pointcloud_query_select_nodes_new(c, p, nullptr, 0, "", &select));
    ok(t.qrb_pointcloud_query_select_next(c, select, 1000, &count));
    EXPECT_EQ(count, 0u);
    ok(t.qrb_pointcloud_query_select_delete(c, select));
    std::uint8_t empty = 1;
    ok(t.qrb_pointcloud_is_empty(c, p, &empty));
    EXPECT_EQ(empty, 0);
    ok(t.qrb_pointcloud_clear_cache(c, p));
    for (const std::uint8_t format : {1, 2, 3, 4}) {
        const char* report = nullptr;
        ok(t.qrb_pointcloud_inspect(c, p, format, &report));
        EXPECT_NE(std::string(report).find("tarvo.class"), std::string::npos) << int(format);
    }
    const char* report = nullptr;
    ok(t.qrb_pointcloud_inspect(c, p, 5, &report));
    EXPECT_EQ(std::string(report).find("{\"fault_count\":0,\"faults\":[],"), 0u) << report;
    no(t.qrb_pointcloud_inspect(c, p, 9, &report), QRB_ERROR_ARGUMENT);
}

void EveryFunction::walkChanges(qrb_pointcloud* p) {
    const std::uint64_t ids[] = {1, 2, 5000};
    const std::uint8_t classes[] = {20, 21, 22};
    const std::uint8_t nine = 9;
    std::uint32_t count = 0;
    std::uint32_t percent = 0;
    const auto counted = [&](const char* filter) {
        qrb_query_select* select = nullptr;
        std::uint32_t hits = 0;
        ok(t.qrb_pointcloud_query_select_new(c, p, 0, filter, &select));
        ok(t.qrb_pointcloud_query_select_next(c, select, 100000, &hits));
        ok(t.qrb_pointcloud_query_select_delete(c, select));
        return hits;
    };
    begin(p);
    qrb_query_update* update = nullptr;
    ok(t.qrb_pointcloud_query_update_new(c, p, &update));
    ok(t.qrb_pointcloud_query_update_bind(c, update, "tarvo.class", QRB_DATA_TYPE_UINT8, classes,
                                          1));
    no(t.qrb_pointcloud_query_update_next(c, update, 3, &count), QRB_ERROR_STATE);
    ok(t.qrb_pointcloud_query_update_delete(c, update));
    ok(t.qrb_pointcloud_query_update_new(c, p, &update));
    ok(t.qrb_pointcloud_query_update_bind(c, update, "tarvo.id", QRB_DATA_TYPE_UINT64, ids, 8));
    ok(t.qrb_pointcloud_query_update_bind(c, update, "tarvo.class", QRB_DATA_TYPE_UINT8, classes,
                                          1));
    ok(t.qrb_pointcloud_query_update_next(c, update, 3, &count));
    EXPECT_EQ(count, 2u);
    ok(t.qrb_pointcloud_query_update_delete(c, update));
    EXPECT_EQ(counted("tarvo.class >= 20"), 2u);

    qrb_query_fill* fill = nullptr;
    ok(t.qrb_pointcloud_query_fill_new(c, p, 0, "tarvo.class == 3", &fill));
    ok(t.qrb_pointcloud_query_fill_bind(c, fill, "tarvo.class", QRB_DATA_TYPE_UINT8, &nine, 0));
    ok(t.qrb_pointcloud_query_fill_next(c, fill, 100, &count));
    EXPECT_EQ(count, 100u);
    ok(t.qrb_pointcloud_query_fill_progress(c, fill, &percent));
    ok(t.qrb_pointcloud_query_fill_next(c, fill, 100, &count));
    EXPECT_EQ(count, 43u);
    ok(t.qrb_pointcloud_query_fill_delete(c, fill));
    EXPECT_EQ(counted("tarvo.class == 9"), 143u);
    const std::uint32_t absent = 4000000;
    no(t.qrb_pointcloud_query_fill_nodes_new(c, p, &absent, 1, "", &fill), QRB_ERROR_NOT_FOUND);
    ok(t.qrb_pointcloud_query_fill_nodes_new(c, p, nullptr, 0, "", &fill));
    ok(t.qrb_pointcloud_query_fill_delete(c, fill));

    qrb_query_invert* invert = nullptr;
    ok(t.qrb_pointcloud_query_invert_new(c, p, 0, "tarvo.class == 9", &invert));
    no(t.qrb_pointcloud_query_invert_attribute(c, invert, "tarvo.class"), QRB_ERROR_ARGUMENT);
    ok(t.qrb_pointcloud_query_invert_attribute(c, invert, "tarvo.selected"));
    ok(t.qrb_pointcloud_query_invert_next(c, invert, 1000, &count));
    EXPECT_EQ(count, 143u);
    ok(t.qrb_pointcloud_query_invert_progress(c, invert, &percent));
    ok(t.qrb_pointcloud_query_invert_delete(c, invert));
    ok(t.qrb_pointcloud_query_invert_nodes_new(c, p, nullptr, 0, "", &invert));
    ok(t.qrb_pointcloud_query_invert_delete(c, invert));
    EXPECT_EQ(counted("tarvo.selected == 1 && tarvo.class == 9"), 143u);

    qrb_query_remove* remove = nullptr;
    ok(t.qrb_pointcloud_query_remove_new(c, p, &remove));
    ok(t.qrb_pointcloud_query_remove_bind(c, remove, QRB_DATA_TYPE_UINT64, ids, 8));
    ok(t.qrb_pointcloud_query_remove_next(c, remove, 3, &count));
    EXPECT_EQ(count, 2u);
    ok(t.qrb_pointcloud_query_remove_next(c, remove, 3, &count));
    EXPECT_EQ(count, 0u);
    ok(t.qrb_pointcloud_query_remove_delete(c, remove));
    EXPECT_EQ(counted(""), 998u);
    ok(t.qrb_pointcloud_transaction_rollback(c, p));
    EXPECT_EQ(counted(""), 1000u);
}

void EveryFunction::walkIndex(qrb_pointcloud* p) {
    qrb_query_stat* stat = nullptr;
    qrb_graph_node* node = nullptr;
    ok(t.qrb_pointcloud_query_stat_new(c, p, &stat));
    ok(t.qrb_pointcloud_graph_node_new(c, &node));
    ok(t.qrb_pointcloud_query_stat_index(c, stat, node));
    EXPECT_EQ(node->point_count_total, 1000);
    ok(t.qrb_pointcloud_query_stat_index_filter(c, stat, node, "find fullest leaf"));
    no(t.qrb_pointcloud_query_stat_index_filter(c, stat, node, "nonsense ==="), QRB_ERROR_FILTER);
    ok(t.qrb_pointcloud_graph_node_delete(c, node));
    double least[3];
    double most[3];
    for (const auto minimum :
         {t.qrb_pointcloud_query_stat_minimum, t.qrb_pointcloud_query_stat_minimum_cleaned})
        ok(minimum(c, stat, 1, "tarvo.xyz", QRB_DATA_TYPE_DOUBLE, least));
    for (const auto maximum :
         {t.qrb_pointcloud_query_stat_maximum, t.qrb_pointcloud_query_stat_maximum_cleaned})
        ok(maximum(c, stat, 1, "tarvo.xyz", QRB_DATA_TYPE_DOUBLE, most));
    EXPECT_EQ(least[2], 0);
    EXPECT_EQ(most[2], 9);
    std::uint32_t revision = 0;
    std::uint32_t current = 0;
    ok(t.qrb_pointcloud_query_stat_revision(c, stat, 1, "tarvo.xyz", &revision));
    ok(t.qrb_pointcloud_transaction_current(c, p, &current));
    EXPECT_EQ(revision, current);
    no(t.qrb_pointcloud_query_stat_revision(c, stat, 77777, "tarvo.xyz", &revision),
       QRB_ERROR_NOT_FOUND);
    ok(t.qrb_pointcloud_query_stat_delete(c, stat));
}

void EveryFunction::walkMetaData(qrb_pointcloud* p) {
    const std::uint8_t key[] = {1, 2, 3};
    std::uint8_t is = 0;
    const char* text = nullptr;
    std::uint32_t count = 0;
    ok(t.qrb_factory_set_authentication_function(
        c,
        [](const std::uint8_t* challenge, std::uint32_t size, std::uint8_t* answer, std::uint32_t,
           void*) -> std::uint8_t {
            for (std::uint32_t i = 0; i < size; ++i)
                answer[i] = static_cast<std::uint8_t>(challenge[i] + 1);
            return 1;
        },
        nullptr));
    begin(p);
    ok(t.qrb_pointcloud_meta_data_set(c, p, "own.item", "{\"a\": 5}"));
    no(t.qrb_pointcloud_meta_data_set(c, p, "", "{}"), QRB_ERROR_ARGUMENT);
    ok(t.qrb_pointcloud_meta_data_list(c, p, &count, &text));
    EXPECT_EQ(count, 1u);
    ok(t.qrb_pointcloud_meta_data_exists(c, p, "own.item", &is));
    EXPECT_EQ(is, 1);
    ok(t.qrb_pointcloud_meta_data_get(c, p, "absent", &text, "default"));
    EXPECT_STREQ(text, "default");
    const char* schema = "{\"properties\": {\"a\": {\"type\": \"integer\"}}}";
    ok(t.qrb_pointcloud_meta_data_validate(c, p, "own.item", schema));
    ok(t.qrb_pointcloud_meta_data_validate_json(c, p, "{\"a\": 1}", schema));
    no(t.qrb_pointcloud_meta_data_validate_json(c, p, "{\"a\": \"b\"}", schema),
       QRB_ERROR_VALIDATION);
    for (const std::uint32_t method : {1, 2}) {
        ok(t.qrb_pointcloud_meta_data_create_signature(c, p, "own.item", method, 3, key));
        ok(t.qrb_pointcloud_meta_data_verify_signature(c, p, "own.item", method, 3, key, &is));
        EXPECT_EQ(is, 1);
        ok(t.qrb_pointcloud_meta_data_verify_signature(c, p, "own.item", 3 - method, 3, key, &is));
        EXPECT_EQ(is, 0);
    }
    ok(t.qrb_pointcloud_meta_data_remove(c, p, "own.item"));
    no(t.qrb_pointcloud_meta_data_remove(c, p, "own.item"), QRB_ERROR_NOT_FOUND);

    ok(t.qrb_pointcloud_changelog_append_log_message(c, p, "a message"));
    no(t.qrb_pointcloud_changelog_import_from_database(c, p, file("absent").c_str()),
       QRB_ERROR_NOT_FOUND);
    ok(t.qrb_pointcloud_transaction_commit_with_signature(c, p, nullptr, nullptr, 1, 3, key));
    const std::string log = file("log.txt");
    ok(t.qrb_pointcloud_changelog_export_to_textfile(c, p, log.c_str()));
    no(t.qrb_pointcloud_changelog_export_to_textfile(c, p, (file("no") + "/log").c_str()),
       QRB_ERROR_FILE);
    std::ifstream stream(log);
    std::string entry;
    for (std::string line; std::getline(stream, line);)
        entry = line.rfind("[#", 0) == 0 ? line + "\n" : entry + line + "\n";
    EXPECT_NE(entry.find("Message: a message\n"), std::string::npos) << entry;
    EXPECT_EQ(t.qrb_pointcloud_changelog_verify_log_entry_cf(entry.c_str(), 1, 3, key, &is),
              nullptr);
    EXPECT_EQ(is, 1);
    EXPECT_EQ(t.qrb_pointcloud_changelog_verify_log_entry_cf(entry.c_str(), 1, 2, key, &is),
              nullptr);
    EXPECT_EQ(is, 0);
}

void EveryFunction::walkHistory(qrb_pointcloud* p) {
    std::uint32_t number = 0;
    std::uint8_t is = 0;
    begin(p);
    ok(t.qrb_pointcloud_transaction_pending(c, p, &is));
    EXPECT_EQ(is, 1);
    no(t.qrb_pointcloud_management_set_lod_mode(c, p, 7), QRB_ERROR_ARGUMENT);
    ok(t.qrb_pointcloud_management_set_lod_mode(c, p, 2));
    ok(t.qrb_pointcloud_management_set_chunk_size_lod(c, p, 3));
    ok(t.qrb_pointcloud_transaction_commit(c, p));
    ok(t.qrb_pointcloud_management_get_lod_mode(c, p, &number));
    EXPECT_EQ(number, 2u);
    ok(t.qrb_pointcloud_management_get_chunk_size_lod(c, p, &number));
    EXPECT_EQ(number, 3u);
    const char* schema =
        R"({"identifier":"own","extension":"own","attributes":["tarvo.xyz*"],"metadata":[]})";
    ok(t.qrb_pointcloud_management_validate(c, p, schema, 0));
    no(t.qrb_pointcloud_management_validate(c, p, schema, 1), QRB_ERROR_VALIDATION);

    std::uint32_t count = 0;
    ok(t.qrb_pointcloud_transaction_list(c, p, &count, nullptr));
    std::vector<std::uint32_t> ids(count);
    ok(t.qrb_pointcloud_transaction_list(c, p, &count, ids.data()));
    qrb_transaction* record = nullptr;
    ok(t.qrb_pointcloud_transaction_new(c, &record));
    ok(t.qrb_pointcloud_transaction_details(c, p, ids[1], record));
    ok(t.qrb_pointcloud_transaction_get_id(c, record, &number));
    EXPECT_EQ(number, ids[1]);
    const char* text = nullptr;
    for (const auto getter :
         {t.qrb_pointcloud_transaction_get_qrb, t.qrb_pointcloud_transaction_get_title,
          t.qrb_pointcloud_transaction_get_agent, t.qrb_pointcloud_transaction_get_comments,
          t.qrb_pointcloud_transaction_get_settings, t.qrb_pointcloud_transaction_get_start,
          t.qrb_pointcloud_transaction_get_stop}) {
        ok(getter(c, record, &text));
        EXPECT_STRNE(text, "");
    }
    ok(t.qrb_pointcloud_transaction_delete(c, record));
    std::uint64_t bytes = 0;
    ok(t.qrb_pointcloud_transaction_size(c, p, 1, &ids[1], &bytes));
    EXPECT_GT(bytes, 0u);
    ok(t.qrb_pointcloud_transaction_restore(c, p, ids[2]));
    no(t.qrb_pointcloud_transaction_restore(c, p, 777), QRB_ERROR_NOT_FOUND);
    no(t.qrb_pointcloud_transaction_discard(c, p, 1, &ids[0]), QRB_ERROR_ARGUMENT);
    ok(t.qrb_pointcloud_transaction_discard(c, p, 1, &ids[1]));
    ok(t.qrb_pointcloud_management_finalize(c, p));
    ok(t.qrb_pointcloud_management_vacuum(c, p, nullptr, nullptr));
    no(t.qrb_pointcloud_management_vacuum(
           c, p, [](std::uint8_t, void*) -> std::uint8_t { return 0; }, nullptr),
       QRB_ERROR_CANCELLED);
    ok(t.qrb_pointcloud_transaction_list(c, p, &count, nullptr));
    EXPECT_EQ(count, 2u);
}

void EveryFunction::walkDatabase() {
    const std::string name = file("a.qrbx");
    const std::string other = file("b.qrbx");
    qrb_pointcloud* p = nullptr;
    ok(t.qrb_pointcloud_new(c, &p));
    ok(t.qrb_pointcloud_create(c, p, name.c_str(), nullptr));
    no(t.qrb_pointcloud_create(c, p, name.c_str(), nullptr), QRB_ERROR_STATE);
    ok(t.qrb_pointcloud_close(c, p));
    no(t.qrb_pointcloud_create(c, p, name.c_str(), nullptr), QRB_ERROR_EXISTS);
    no(t.qrb_pointcloud_open(c, p, other.c_str(), nullptr), QRB_ERROR_NOT_FOUND);
    ok(t.qrb_pointcloud_open(c, p, name.c_str(), nullptr));
    std::uint8_t is = 0;
    ok(t.qrb_pointcloud_is_open(c, p, &is));
    EXPECT_EQ(is, 1);
    ok(t.qrb_database_file_type_check(c, name.c_str(), &is));
    EXPECT_EQ(is, 1);
    const char* uuid = nullptr;
    ok(t.qrb_pointcloud_get_uuid(c, p, &uuid));
    EXPECT_EQ(std::strlen(uuid), 36u);

    walkDefinitions(p);
    walkPoints(p);
    walkChanges(p);
    walkIndex(p);
    walkMetaData(p);
    walkHistory(p);

    qrb_pointcloud* second = nullptr;
    ok(t.qrb_pointcloud_new(c, &second));
    const char* schema =
        R"({"identifier":"own","extension":"own","attributes":["tarvo.xyz*"],"metadata":[]})";
    no(t.qrb_pointcloud_create_with_schema(c, second, other.c_str(), nullptr, "[]", 0),
       QRB_ERROR_ARGUMENT);
    ok(t.qrb_pointcloud_create_with_schema(c, second, other.c_str(), nullptr, schema, 0));
    begin(second);
    ok(t.qrb_pointcloud_changelog_import_from_database(c, second, name.c_str()));
    ok(t.qrb_pointcloud_transaction_commit(c, second));
    ok(t.qrb_pointcloud_delete(c, second));
    ok(t.qrb_pointcloud_delete(c, p));
}

TEST_F(EveryFunction, IsCalledWithSuccessAndWithFailure) {
    walkLibrary();
    walkRecords();
    walkDatabase();
    // Without anything each fails, but for those that may always be given nothing.
#define QRB_FUNCTION(result, function, parameters)                 \
    if constexpr (std::is_same_v<result, qrb_status>) {            \
        if (std::strcmp(#function, "qrb_context_delete") != 0)     \
            expectFailure(callWithNothing(t.function), #function); \
    } else if (std::strstr(#function, "_delete_cf") == nullptr) {  \
        expectFailure(callWithNothing(t.function), #function);     \
    }
#include "qrb/functions.def"
    ok(t.qrb_context_delete(c));

    const std::set<std::string> cannotFail{"qrb_context_delete", "qrb_result_delete_cf",
                                           "qrb_string_delete_cf"};
    EXPECT_GE(callRecord().all.size(), 277u);
    for (const std::string& name : callRecord().all) {
        EXPECT_EQ(callRecord().succeeded.count(name), 1u) << name << " never succeeded";
        if (cannotFail.count(name) == 0) {
            EXPECT_EQ(callRecord().failed.count(name), 1u) << name << " never failed";
        }
    }
}

}  // namespace
