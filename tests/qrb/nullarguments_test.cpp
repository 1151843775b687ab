// Every function of the library with its arguments left out: an error with a text, never a crash.
#include "qrb/loader.h"
#include "qrb/pointcloud.h"

#include <gtest/gtest.h>

#include <unistd.h>
#include <algorithm>
#include <filesystem>
#include <iterator>
#include <string>
#include <type_traits>

namespace {

using namespace tarvo;

// What each kind of argument is given; everything else is null or 0.
struct Arguments {
    qrb_context* context = nullptr;
    qrb_pointcloud* pointcloud = nullptr;

    template <typename T>
    T get() const {
        if constexpr (std::is_same_v<T, qrb_context*>)
            return context;
        else if constexpr (std::is_same_v<T, qrb_pointcloud*>)
            return pointcloud;
        else
            return T{};
    }
};

template <typename Result, typename... Parameters>
Result callWith(Result (*function)(Parameters...), const Arguments& arguments) {
    return function(arguments.get<Parameters>()...);
}

void check(const std::string& name, qrb_status status, qrb_context* context) {
    // Where there is no context, or the context's own error is asked for, the status is all.
    if (status == QRB_SUCCESS || !context || name.starts_with("qrb_context_"))
        return;
    int32_t code = 0;
    const char* text = nullptr;
    const char* details = nullptr;
    ASSERT_EQ(qrb::functions().qrb_context_get_last_error(context, &code, &text, &details),
              QRB_SUCCESS);
    EXPECT_NE(code, 0) << name;
    EXPECT_NE(std::string(text), "") << name;
}

void check(const std::string& name, qrb_result* result, qrb_context*) {
    if (!result)
        return;
    int32_t code = 0;
    char* text = nullptr;
    EXPECT_EQ(qrb::functions().qrb_result_get_error_code_cf(result, &code), nullptr);
    EXPECT_EQ(qrb::functions().qrb_result_get_error_text_cf(result, &text), nullptr);
    EXPECT_NE(code, 0) << name;
    EXPECT_NE(std::string(text), "") << name;
    EXPECT_EQ(qrb::functions().qrb_string_delete_cf(text), nullptr);
    EXPECT_EQ(qrb::functions().qrb_result_delete_cf(result), nullptr);
}

void callAll(const Arguments& arguments) {
    const qrb::FunctionTable& table = qrb::functions();
    const std::string gone[] = {"qrb_context_delete", "qrb_pointcloud_delete",
                                "qrb_pointcloud_close"};
#define QRB_FUNCTION(result, name, parameters)                                \
    if (!arguments.context ||                                                 \
        std::find(std::begin(gone), std::end(gone), #name) == std::end(gone)) \
        check(#name, callWith(table.name, arguments), arguments.context);
#include "qrb/functions.def"
}

TEST(NullArguments, GiveErrorsInEveryFunction) {
    qrb::loadLibrary(QRBLIB_FILE);
    const qrb::FunctionTable& table = qrb::functions();
    callAll({});

    Arguments arguments;
    ASSERT_EQ(table.qrb_context_new(&arguments.context, nullptr, nullptr), QRB_SUCCESS);
    callAll(arguments);

    ASSERT_EQ(table.qrb_pointcloud_new(arguments.context, &arguments.pointcloud), QRB_SUCCESS);
    callAll(arguments);  // closed

    const std::string file = (std::filesystem::temp_directory_path() /
                              ("qrb-null-" + std::to_string(getpid()) + ".qrbx"))
                                 .string();
    ASSERT_EQ(
        table.qrb_pointcloud_create(arguments.context, arguments.pointcloud, file.c_str(), nullptr),
        QRB_SUCCESS);
    callAll(arguments);
    uint8_t open = 0;
    ASSERT_EQ(table.qrb_pointcloud_is_open(arguments.context, arguments.pointcloud, &open),
              QRB_SUCCESS);
    EXPECT_EQ(open, 1);

    EXPECT_EQ(table.qrb_pointcloud_delete(arguments.context, arguments.pointcloud), QRB_SUCCESS);
    EXPECT_EQ(table.qrb_context_delete(arguments.context), QRB_SUCCESS);
    {
        // Nobody holds the lock of the file any more.
        qrb::Pointcloud again(qrb::Context("", ""));
        again.open(file, qrb::pointcloud::OpenSettings(again.context()));
        EXPECT_NO_THROW(again.transactions().begin("", "", "", ""));
    }
    std::filesystem::remove(file);
    qrb::freeLibrary();
}

}  // namespace
