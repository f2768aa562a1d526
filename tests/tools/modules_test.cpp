#include "support/program_image.h"
#include "tools/run_command.h"

namespace {

class ModulesCommand : public CommandTest {
protected:
    // A full path as rows have it: a backslash is written as two.
    static std::string Field(const std::filesystem::path& path) {
        std::string field = absolute(path).make_preferred().string();
        for (std::size_t at = 0; (at = field.find('\\', at)) != std::string::npos; at += 2)
            field.insert(at, 1, '\\');
        return field;
    }
};

TEST_F(ModulesCommand, ListsWhatIsFoundAndWhatIsMissing) {
    std::filesystem::create_directory("more");
    ProgramImage({"first.dll", "none.dll", "LAST.dll"}).Write("program.exe");
    ProgramImage({"last.dll", "None.DLL"}, ProgramImage::Kind::Bits64).Write("first.dll");
    ProgramImage({"program.exe"}).Write("more/last.dll");
    const std::string program =
        "found\tprogram.exe\tprogram.exe\n"
        "missing\tnone.dll\tprogram.exe\n";
    const std::string first = "found\tfirst.dll\t" + Field("first.dll") + "\n";
    Result result = Run("modules program.exe");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out, program + "missing\tLAST.dll\tprogram.exe\n" + first +
                              "missing\tlast.dll\tfirst.dll\nmissing\tNone.DLL\tfirst.dll\n");
    result = Run("modules --path nowhere --path=more program.exe");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, program + first + "missing\tNone.DLL\tfirst.dll\nfound\tlast.dll\t" +
                              Field("more/last.dll") + "\n");
}

TEST_F(ModulesCommand, EscapesWhatWouldBreakARow) {
    ProgramImage({"a\tb\r\n\\.dll"}).Write("program.exe");
    EXPECT_EQ(Run("modules program.exe").out,
              "found\tprogram.exe\tprogram.exe\n"
              "missing\ta\\tb\\r\\n\\\\.dll\tprogram.exe\n");
}

TEST_F(ModulesCommand, ListsDelayedImportsWhenAsked) {
    ProgramImage({}, ProgramImage::Kind::Bits32, {"late.dll"}).Write("program.exe");
    const std::string program = "found\tprogram.exe\tprogram.exe\n";
    EXPECT_EQ(Run("modules program.exe").out, program);
    EXPECT_EQ(Run("modules --delayed program.exe").out,
              program + "missing\tlate.dll\tprogram.exe\n");
}

TEST_F(ModulesCommand, FailsWithTheTextOfTheStatus) {
    WriteFile("text", "no program");
    WriteFile("empty", "");
    const struct {
        const char* arguments;
        int status;
        const char* err;
    } rows[] = {
        {"modules none.exe", 1, "brcore8: none.exe: File not found\n"},
        {"modules .", 1, "brcore8: .: File not found\n"},
        {"modules empty", 1, "brcore8: empty: File not found\n"},
        {"modules text", 1, "brcore8: text: Not a PE file\n"},
        {"modules", 2, nullptr},
        {"modules text --path", 2, nullptr},
        {"modules text text", 2, nullptr},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.arguments);
        const Result result = Run(row.arguments);
        EXPECT_EQ(result.status, row.status);
        EXPECT_EQ(result.out, "");
        if (row.err != nullptr) {
            EXPECT_EQ(result.err, row.err);
        }
    }
}

}  // namespace
