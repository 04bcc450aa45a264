#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

namespace kelo::meshgen::test {

/// A parameter file of a test's own, which is read by `readFile`.
template<auto readFile>
class ParameterFileTest : public ::testing::Test
{
protected:
    void TearDown() override { std::filesystem::remove(path); }

    auto read(const std::string &text)
    {
        std::ofstream(path, std::ios::binary) << text;
        return readFile(path.string());
    }
    /// The message without the file's path.
    std::string messageFor(const std::string &text)
    {
        try {
            read(text);
        } catch (const std::runtime_error &error) {
            const std::string message = error.what();
            EXPECT_TRUE(message.starts_with(path.string())) << message;
            return message.substr(path.string().size());
        }
        return "nothing was thrown";
    }

    const std::filesystem::path path =
        std::filesystem::temp_directory_path() /
        (std::string(::testing::UnitTest::GetInstance()->current_test_info()->test_suite_name()) +
         '-' + ::testing::UnitTest::GetInstance()->current_test_info()->name() + ".csv");
};

} // namespace kelo::meshgen::test
