#include "qrb/loader.h"

#include <gtest/gtest.h>

#include <dlfcn.h>
#include <algorithm>
#include <functional>
#include <stdexcept>
#include <string_view>
#include <vector>

extern "C" int qrb_header_is_plain_c(void);

namespace {

using namespace tarvo;

const std::vector<std::string_view> functionNames = {
#define QRB_FUNCTION(result, name, parameters) #name,
#include "qrb/functions.def"
};

const std::vector<std::string_view> optionalNames = {
#define QRB_OPTIONAL_FUNCTION(result, name, parameters) #name,
#include "qrb/optional.def"
};

// The slots of the table as plain pointers, in order.
std::vector<bool> filledSlots() {
    const qrb::FunctionTable& f = qrb::functions();
    return {
#define QRB_FUNCTION(result, name, parameters) f.name != nullptr,
#include "qrb/functions.def"
    };
}

class Loader : public testing::Test {
protected:
    ~Loader() override { qrb::free(); }
};

TEST(FunctionList, IsInByteOrderWithoutRepetition) {
    EXPECT_TRUE(std::is_sorted(functionNames.begin(), functionNames.end()));
    EXPECT_EQ(std::adjacent_find(functionNames.begin(), functionNames.end()), functionNames.end());
    EXPECT_EQ(functionNames.back(), "qrb_string_delete_cf");
    EXPECT_TRUE(qrb_header_is_plain_c());
}

#if defined(QRBLIB_FILE)
TEST(FunctionList, IsExportedWhollyByTheDatabaseLibrary) {
    void* const library = dlopen(QRBLIB_FILE, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(library, nullptr) << dlerror();
    for (const std::string_view name : functionNames) {
        EXPECT_NE(dlsym(library, name.data()), nullptr) << name;
    }
    for (const std::string_view name : optionalNames) {
        EXPECT_NE(dlsym(library, name.data()), nullptr) << name;
    }
    dlclose(library);
}

TEST_F(Loader, FindsTheDefaultLibraryBesideTheProgram) {
    for (const char* name : {static_cast<const char*>(nullptr), ""}) {
        ASSERT_EQ(qrb::load(name), nullptr);
        EXPECT_NE(qrb::functions().qrb_context_new, nullptr);
        EXPECT_NE(qrb::optionalFunctions().qrb_context_set_interrupt_function, nullptr);
        qrb::freeLibrary();
        EXPECT_EQ(qrb::optionalFunctions().qrb_context_set_interrupt_function, nullptr);
    }
}
#endif

TEST_F(Loader, TakesALibraryWithoutWhatItMayLack) {
    EXPECT_EQ(qrb::load(STUB_FILE), nullptr);
    EXPECT_EQ(qrb::optionalFunctions().qrb_context_set_interrupt_function, nullptr);
}

TEST_F(Loader, FillsAndClearsEverySlot) {
    EXPECT_EQ(qrb::load(STUB_FILE), nullptr);
    const auto filled = filledSlots();
    EXPECT_EQ(std::count(filled.begin(), filled.end(), true),
              static_cast<std::ptrdiff_t>(functionNames.size()));
    EXPECT_EQ(qrb::free(), nullptr);
    const auto cleared = filledSlots();
    EXPECT_EQ(std::count(cleared.begin(), cleared.end(), true), 0);
    EXPECT_EQ(qrb::free(), nullptr) << "freeing nothing succeeds";
}

TEST_F(Loader, ReportsAMissingFileAndStaysUnloaded) {
    EXPECT_STREQ(qrb::load("/nowhere/missing.so"), "Failed to load QRB library.");
    EXPECT_EQ(qrb::functions().qrb_context_new, nullptr);
    EXPECT_EQ(qrb::load(STUB_FILE), nullptr) << "a failed load does not block the next";
}

TEST_F(Loader, ReportsTheLastNameAfterFillingAllOthers) {
    EXPECT_STREQ(qrb::load(STUB_WITHOUT_LAST_FILE),
                 "Failed to load QRB function \"qrb_string_delete_cf()\".");
    const auto filled = filledSlots();
    EXPECT_EQ(std::find(filled.begin(), filled.end(), false), filled.end() - 1);
    EXPECT_EQ(qrb::load("anything"), nullptr) << "the module is loaded, so nothing is looked up";
}

TEST_F(Loader, StopsAtTheFirstMissingName) {
    EXPECT_STREQ(qrb::load(STUB_WITHOUT_CLOSE_FILE),
                 "Failed to load QRB function \"qrb_pointcloud_close()\".");
    const auto filled = filledSlots();
    const auto missing = std::find(filled.begin(), filled.end(), false);
    EXPECT_EQ(functionNames[static_cast<std::size_t>(missing - filled.begin())],
              "qrb_pointcloud_close");
    EXPECT_EQ(std::find(missing, filled.end(), true), filled.end());
}

TEST_F(Loader, KeepsTheFirstLibraryUntilItIsFreed) {
    ASSERT_EQ(qrb::load(STUB_FILE), nullptr);
    const auto before = qrb::functions().qrb_context_new;
    EXPECT_EQ(qrb::load("/nowhere/missing.so"), nullptr);
    EXPECT_EQ(qrb::functions().qrb_context_new, before);
    ASSERT_EQ(qrb::free(), nullptr);
    EXPECT_THROW(qrb::loadLibrary("/nowhere/missing.so"), std::runtime_error);
}

}  // namespace
