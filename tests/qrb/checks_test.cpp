#include "qrb/error.h"
#include "qrb/loader.h"
#include "qrb/pointcloud.h"
#include "tests/qrb/stubstate.h"

#include <gtest/gtest.h>

#include <dlfcn.h>
#include <stdexcept>

namespace {

using namespace tarvo;
using qrb::pointcloud::OpenSettings;

// The layer on the stub library, whose state starts afresh for every test.
class Checks : public testing::Test {
protected:
    Checks() {
        qrb::loadLibrary(STUB_FILE);
        m_module = dlopen(STUB_FILE, RTLD_NOW | RTLD_NOLOAD);
        state = reinterpret_cast<StubState* (*)()>(dlsym(m_module, "stub_state"))();
        *state = StubState{};
        state->status = QRB_SUCCESS;
    }
    ~Checks() override {
        EXPECT_EQ(state->resultsAlive, 0);
        EXPECT_EQ(state->textsAlive, 0);
        EXPECT_EQ(state->contextsAlive, 0);
        EXPECT_EQ(state->cloudsAlive, 0);
        EXPECT_EQ(state->selectsAlive, 0);
        dlclose(m_module);
        qrb::freeLibrary();
    }

    void* m_module = nullptr;
    StubState* state = nullptr;
};

template <typename Call>
void expectError(Call call, std::int32_t code, const std::string& text,
                 const std::string& details) {
    try {
        call();
        FAIL() << "nothing was thrown";
    } catch (const qrb::Error& error) {
        EXPECT_EQ(error.code(), code);
        EXPECT_EQ(error.what(), text);
        EXPECT_EQ(error.details(), details);
    }
}

TEST_F(Checks, EveryStatusButOneIsAFailureWithTheContextsLastError) {
    const qrb::Context context("TRACE", "");
    EXPECT_EQ(context.libraryName(), "") << "a null text is the empty one";
    state->errorCode = 7;
    state->errorText = "text";
    state->errorDetails = "details";
    for (const std::int32_t status : {0, 2, -1}) {
        state->status = status;
        expectError([&] { context.libraryName(); }, 7, "text", "details");
        expectError([] { qrb::Context("TRACE", ""); }, 7, "text", "details");
        EXPECT_EQ(state->contextsAlive, 1) << "one that was refused is left";
    }
    state->errorText = state->errorDetails = nullptr;
    expectError([&] { context.libraryName(); }, 7, "unknown", "");
    expectError([] { qrb::checkStatus(nullptr, 0); }, 0, "unknown", "");
    const int calls = state->lastErrorCalls;
    EXPECT_NO_THROW(qrb::checkStatus(context.handle(), 0, true));
    EXPECT_EQ(state->lastErrorCalls, calls) << "a silent check asks nothing";
}

TEST_F(Checks, AResultIsReadReleasedAndThrown) {
    const qrb::Context context("TRACE", "");
    state->failResult = 1;
    state->errorCode = 12;
    state->errorText = "text";
    state->errorDetails = "details";
    expectError([&] { OpenSettings settings(context); }, 12, "text", "details");
    state->errorText = nullptr;
    expectError([&] { OpenSettings settings(context); }, 12, "unknown", "details");
    // A library that can't even tell its errors must not keep the layer busy for ever.
    state->failReadingError = 1;
    expectError([&] { OpenSettings settings(context); }, 0, "unknown", "");
    qrb_open_settings* none = nullptr;
    EXPECT_NO_THROW(
        qrb::checkResult(qrb::functions().qrb_pointcloud_open_settings_new_cf(&none), true));
}

TEST_F(Checks, CopiesOfAnErrorKeepEverything) {
    const qrb::ErrorImpl original(3, "text", "details");
    const qrb::ErrorImpl copy = original;  // NOLINT
    EXPECT_EQ(copy.code(), 3);
    EXPECT_STREQ(copy.what(), "text");
    EXPECT_STREQ(copy.details(), "details");
}

TEST_F(Checks, TheContextTellsWhichInterfaceItIsAndLivesAsLongAsAnyHolder) {
    std::shared_ptr<qrb::pointcloud::Transactions> kept;
    {
        auto cloud = std::make_unique<qrb::Pointcloud>(qrb::Context("TRACE", ""));
        EXPECT_STREQ(state->api, "QRB Interface 2.5.2-473fcd2e (C++, Jan 30 2025, 11:58:06)");
        auto query = cloud->select();
        cloud.reset();
        EXPECT_EQ(state->cloudsAlive, 1) << "the query holds it";
        EXPECT_EQ(state->contextsAlive, 1);
    }
    EXPECT_EQ(state->contextsAlive, 0);
}

TEST_F(Checks, NodeListsChooseTheFormOfTheSelect) {
    const qrb::Pointcloud cloud{qrb::Context("TRACE", "")};
    auto all = cloud.select("");
    EXPECT_EQ(state->selectNewCalls, 1);
    auto none = cloud.select(std::vector<std::uint32_t>{}, "");
    EXPECT_EQ(state->selectNodesNewCalls, 1);
    EXPECT_EQ(state->selectNodesCount, 0u);
    auto two = cloud.select(std::vector<std::uint32_t>{4, 9}, "");
    EXPECT_EQ(state->selectNodesCount, 2u);
}

TEST_F(Checks, AClosedQueryDoesNothing) {
    const qrb::Pointcloud cloud{qrb::Context("TRACE", "")};
    auto query = cloud.select("");
    auto copy = query;
    EXPECT_EQ(query.next(5), 5u);
    query.close();
    EXPECT_EQ(state->selectsAlive, 1) << "the copy still holds it";
    EXPECT_EQ(query.next(5), 0u);
    EXPECT_EQ(query.progress(), 0u);
    EXPECT_NO_THROW(query.bind("a", qrb::pointcloud::DataType::DOUBLE, nullptr, 8));
    EXPECT_EQ(state->selectNextCalls, 1);
    copy.close();
    EXPECT_EQ(state->selectsAlive, 0);
    qrb::pointcloud::QueryInsert insert;
    EXPECT_EQ(insert.next(1), 0u);
    insert.close();
}

TEST_F(Checks, FindingsOfALibraryWithoutRecordsAreTheLinesOfItsError) {
    const qrb::Pointcloud cloud{qrb::Context("TRACE", "")};
    const auto lines = [&](const char* text, const char* details) {
        state->errorCode = QRB_ERROR_VALIDATION;
        state->errorText = text;
        state->errorDetails = details;
        std::string found;
        for (const auto& finding : cloud.management().findings("schema", true).list)
            found += finding.line + "|";
        return found;
    };
    EXPECT_EQ(lines("2 problems", "first\nsecond"), "first|second|");
    EXPECT_EQ(lines("first\nsecond", ""), "first|second|");
    EXPECT_EQ(lines("only", nullptr), "only|");
}

TEST_F(Checks, WhatAProgressFunctionThrowsStopsTheWorkAndArrivesUnchanged) {
    const qrb::Pointcloud cloud{qrb::Context("TRACE", "")};
    state->callProgress = 5;
    std::vector<int> seen;
    const auto progress = [&](int percent) {
        seen.push_back(percent);
        if (percent >= 20) {
            throw std::out_of_range("enough");
        }
    };
    EXPECT_THROW(cloud.management().vacuum(progress), std::out_of_range);
    EXPECT_EQ(seen, (std::vector<int>{0, 10, 20})) << "not called again after it threw";
    EXPECT_EQ(state->progressCalls, 5);
    EXPECT_EQ(state->progressStopped, 1);
    state->progressStopped = 0;
    EXPECT_NO_THROW(cloud.management().vacuum());
}

}  // namespace
