// The layer on the database library itself, with a folder for the files of a test.
#pragma once

#include "qrb/error.h"
#include "qrb/loader.h"
#include "qrb/pointcloud.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <cstdint>
#include <filesystem>
#include <string>

class LibraryTest : public testing::Test {
protected:
    LibraryTest() {
        tarvo::qrb::loadLibrary(QRBLIB_FILE);
        m_folder =
            std::filesystem::temp_directory_path() /
            ("qrb_" + std::string(testing::UnitTest::GetInstance()->current_test_info()->name()) +
             "-" + std::to_string(getpid()));
        std::filesystem::create_directories(m_folder);
    }
    ~LibraryTest() override {
        std::filesystem::remove_all(m_folder);
        tarvo::qrb::freeLibrary();
    }

    std::string file(const std::string& name) const { return (m_folder / name).string(); }

    static tarvo::qrb::pointcloud::PointAttribute attribute(const std::string& name, double minimum,
                                                            double maximum, double resolution,
                                                            std::uint32_t length = 1) {
        tarvo::qrb::pointcloud::PointAttribute result;
        result.name = name;
        result.title = name;
        result.length = length;
        result.minimumValue = minimum;
        result.maximumValue = maximum;
        result.resolution = resolution;
        result.defaultValue = minimum;
        result.storageClass = tarvo::qrb::pointcloud::PointAttribute::VARIABLE;
        return result;
    }

    // The code, text and details of what a call throws.
    template <typename Function>
    static std::string failure(Function&& function, std::int32_t code) {
        try {
            function();
        } catch (const tarvo::qrb::Error& error) {
            EXPECT_EQ(error.code(), code) << error.what();
            return std::string(error.what()) + "\n" + error.details();
        }
        ADD_FAILURE() << "nothing was thrown";
        return {};
    }

    std::filesystem::path m_folder;
};
