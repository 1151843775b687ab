// Every function of the library does its work on a real database, and says so when it can't: the
// list of calls is made by the run itself.
#include "tests/qrb/everyfunction.h"

#include <cstring>
#include <set>
#include <string>

namespace {

template <typename Result, typename... Parameters>
auto callWithNothing(Result (*function)(Parameters...)) {
    return function(Parameters{}...);
}

}  // namespace

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
