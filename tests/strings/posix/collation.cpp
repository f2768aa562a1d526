// The order of the user's language, which a process takes from its environment once: this program
// runs itself again in a language that is made for the test, and has it compare texts.
#include <brcore8/core/exception.h>
#include <brcore8/strings/string.h>

#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <string>
#include <utility>

namespace {

constexpr char kCompare[] = "BRCORE8_TEST_COMPARE";

char Sign(int order) {
    return order < 0 ? '<' : order > 0 ? '>' : '=';
}

// "<=..." for all that is compared, told on standard output by the second process.
std::string Comparisons() {
    const SString a = "\xC4pfel";  // an umlaut in the usual page
    const SString run('x', 3000);
    std::string signs;
    signs += Sign(SString("a").Collate("B"));
    signs += Sign(a.Collate("Birnen"));
    signs += Sign(a.Collate("Zitronen"));
    signs += Sign(SString("apfel").Collate("Apfel"));
    signs += Sign(SString("apfel").CollateNoCase("APFEL"));
    signs += Sign(SString("\xE4pfel").CollateNoCase(a));
    signs += Sign(a.Collate("\xC4ste", 1));
    signs +=
        Sign(a.CollateNoCase("\xE4"
                             "PZ",
                             2));
    signs += Sign(a.Collate(1, "pfel"));
    signs += Sign((run + "a").Collate(run + "B"));
    signs += Sign(run.Collate(run));
    return signs;
}

// Before the tests begin, in the process that has been asked for it.
const struct SecondProcess {
    SecondProcess() {
        if (std::getenv(kCompare) == nullptr) return;
        std::puts(Comparisons().c_str());
        std::fflush(stdout);
        _exit(0);
    }
} g_secondProcess;

std::string OutputOf(const std::string& command) {
    std::string output;
    std::FILE* const pipe = popen(command.c_str(), "r");
    if (pipe == nullptr) return output;
    std::array<char, 256> block;
    while (const std::size_t got = std::fread(block.data(), 1, block.size(), pipe))
        output.append(block.data(), got);
    pclose(pipe);
    return output;
}

TEST(Collation, FollowsTheUsersLanguage) {
    namespace fs = std::filesystem;
    const fs::path folder =
        fs::temp_directory_path() / ("brcore8-language-" + std::to_string(std::random_device()()));
    ASSERT_TRUE(fs::create_directory(folder));
    const std::string made = (folder / "de_DE.UTF-8").string();
    OutputOf("localedef --no-archive -c -i de_DE -f UTF-8 '" + made + "' 2>/dev/null");
    const bool exists = fs::exists(made);
    const std::string self = fs::read_symlink("/proc/self/exe").string();
    const std::string run =
        std::string(kCompare) + "=1 LOCPATH='" + folder.string() + "' LANG= LC_COLLATE= LC_ALL=";
    const std::string german = OutputOf(run + "de_DE.UTF-8 '" + self + "'");
    const std::string byBytes = OutputOf(run + "C '" + self + "'");
    fs::remove_all(folder);
    EXPECT_EQ(byBytes, ">>>>=====>=\n") << "without a language, by character code";
    if (!exists) GTEST_SKIP() << "this system has no sources of languages (Debian: locales)";
    EXPECT_EQ(german, "<<<<=====<=\n");
}

}  // namespace
