// An INI file in a folder of its own for every case.
#ifndef BRCORE8_TESTS_SETTINGS_PROFILE_FILE_H
#define BRCORE8_TESTS_SETTINGS_PROFILE_FILE_H

#include <brcore8/strings/string.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

class ProfileFile : public ::testing::Test {
protected:
    void SetUp() override {
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        folder_ = std::filesystem::current_path() / ("profile-" + std::string(info->name()));
        std::filesystem::remove_all(folder_);
        std::filesystem::create_directory(folder_);
        path_ = (folder_ / "test.ini").string();
    }
    void TearDown() override { std::filesystem::remove_all(folder_); }

    SString Path() const { return SString(std::string_view(path_)); }
    SString Folder() const { return SString(std::string_view(folder_.string())); }
    void Put(const std::string& bytes) const { std::ofstream(path_, std::ios::binary) << bytes; }
    std::string Bytes() const {
        std::ifstream file(path_, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    void Remove() const { std::filesystem::remove(path_); }

private:
    std::filesystem::path folder_;
    std::string path_;
};

#endif
