// Runs the program as a user does: through the system's command processor, with files.
#ifndef BRCORE8_TESTS_TOOLS_RUN_COMMAND_H
#define BRCORE8_TESTS_TOOLS_RUN_COMMAND_H

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

struct Result {
    int status;
    std::string out;
    std::string err;
};

// One row a case: the command line, its input, and all that the program must say.
struct CommandRow {
    const char* name;
    const char* arguments;
    std::string input;
    int status;
    std::string out;
    std::string err = "";  // a part of it; "" wants none at all
};

inline void Expect(const CommandRow& row, const Result& result) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(result.status, row.status) << result.err;
    EXPECT_EQ(result.out, row.out);
    if (row.err.empty())
        EXPECT_EQ(result.err, "");
    else
        EXPECT_NE(result.err.find(row.err), std::string::npos) << result.err;
}

// A folder of its own for every case, removed afterwards. The tests run in the folder where the
// program stands.
class CommandTest : public ::testing::Test {
protected:
    void SetUp() override {
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        home_ = std::filesystem::current_path();
        folder_ = home_ / (std::string("tools-") + info->name());
        std::filesystem::remove_all(folder_);
        std::filesystem::create_directory(folder_);
        std::filesystem::current_path(folder_);
    }
    void TearDown() override {
        std::filesystem::current_path(home_);
        std::filesystem::remove_all(folder_);
    }

    static void WriteFile(const std::string& name, const std::string& bytes) {
        std::ofstream(name, std::ios::binary) << bytes;
    }
    static std::string ReadFile(const std::string& name) {
        std::ifstream file(name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    std::string Program() const { return (home_ / "brcore8").string(); }

    // `arguments` as both command processors understand them: quoted with double quotes.
    Result Run(const std::string& arguments, const std::string& input = "",
               const std::string& output = "stdout") const {
        WriteFile("stdin", input);
        const std::string line = Program() + " " + arguments + " <stdin >" + output + " 2>stderr";
        const int status = std::system(line.c_str());
        // One system returns the exit status, the other keeps it in the second byte.
        return {status > 255 ? status >> 8 : status, ReadFile("stdout"), ReadFile("stderr")};
    }

    // Runs each row's command line on its input.
    template <std::size_t Count>
    void ExpectAll(const CommandRow (&rows)[Count]) const {
        for (const CommandRow& row : rows)
            Expect(row, Run(row.arguments, row.input));
    }

private:
    std::filesystem::path home_;
    std::filesystem::path folder_;
};

#endif
