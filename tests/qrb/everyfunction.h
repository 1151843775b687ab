// The walk through every function of the library, on a real database.
#pragma once

#include "tests/qrb/library.h"
#include "tests/qrb/recorder.h"

#include <cstdint>
#include <type_traits>

template <typename Result>
void expectFailure(Result result, const std::string& name) {
    EXPECT_FALSE(recorder::isSuccess(result)) << name;
    if constexpr (std::is_same_v<Result, qrb_result*>)
        if (result)
            tarvo::qrb::functions().qrb_result_delete_cf(result);
}

class EveryFunction : public LibraryTest {
protected:
    EveryFunction() { recordCalls(); }

    const tarvo::qrb::FunctionTable& t = tarvo::qrb::functions();
    const tarvo::qrb::OptionalFunctionTable& optional = tarvo::qrb::optionalFunctions();
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
