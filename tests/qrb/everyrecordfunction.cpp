// The functions on records: settings of databases, and definitions of attributes.
#include "tests/qrb/everyfunction.h"

#include <cmath>
#include <cstring>
#include <string>
#include <type_traits>

using namespace tarvo;

namespace {

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

}  // namespace

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
