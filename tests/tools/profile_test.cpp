#include "tools/run_command.h"

namespace {

class ProfileCommand : public CommandTest {
protected:
    void SetUp() override {
        CommandTest::SetUp();
        WriteFile("a.ini",
                  "top=0\n; remark\n[Main]\nName = \"two words\" \nname=again\nEmpty=\n"
                  "Long=" +
                      std::string(300, 'x') + "\n");
    }
};

TEST_F(ProfileCommand, Get) {
    const std::string longValue(300, 'x');
    const struct {
        const char* name;
        const char* arguments;
        int status;
        std::string out;
        const char* err;
    } rows[] = {
        {"names-in-any-case", "a.ini MAIN name", 0, "two words", ""},
        {"before-the-first-section", "a.ini \"\" top", 0, "0", ""},
        {"uncut", "a.ini Main Long", 0, longValue, ""},
        {"empty", "a.ini Main Empty", 0, "", ""},
        {"empty-gives-the-default", "a.ini Main Empty other", 0, "other", ""},
        {"absent", "a.ini Main None", 1, "", "brcore8: a.ini: no key \"None\" in section \"Main\""},
        {"absent-with-default", "a.ini Main None \"a b\"", 0, "a b", ""},
        {"absent-with-empty-default", "a.ini Main None \"\"", 0, "", ""},
        {"no-file", "b.ini Main Name", 1, "", "brcore8: b.ini: Can't open for reading"},
        {"no-file-but-a-default", "b.ini Main Name x", 0, "x", ""},
        {"a-folder", ". Main Name x", 1, "", "brcore8: .: it is a folder"},
        {"too-few-names", "a.ini Main", 2, "", "KEY"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const Result result = Run(std::string("profile get ") + row.arguments);
        EXPECT_EQ(result.status, row.status);
        EXPECT_EQ(result.out, row.status == 0 ? row.out + "\n" : "");
        EXPECT_NE(result.err.find(row.err), std::string::npos) << result.err;
    }
}

TEST_F(ProfileCommand, Set) {
    const struct {
        const char* name;
        const char* section;
        const char* key;
        const char* value;
        int status;
    } rows[] = {
        {"present", "main", "NAME", "new", 0},    {"new-key", "Main", "other", "a=b", 0},
        {"new-section", "Next", "k", "1", 0},     {"before-any-section", "\"\"", "k", "2", 0},
        {"with-a-dash", "Main", "k", "-- -5", 0}, {"bracket-in-section", "M]", "k", "1", 1},
        {"equals-in-key", "Main", "k=l", "1", 1},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const std::string names = std::string("a.ini ") + row.section + " " + row.key + " ";
        const std::string before = ReadFile("a.ini");
        const Result set = Run("profile set " + names + row.value);
        EXPECT_EQ(set.status, row.status) << set.err;
        EXPECT_EQ(set.out, "");
        if (row.status == 0) {
            const std::string value = row.value;
            EXPECT_EQ(Run("profile get " + names).out, value.substr(value.rfind(' ') + 1) + "\n");
        } else {
            EXPECT_EQ(set.err,
                      "brcore8: a.ini: such a section, key or value would not read back\n");
            EXPECT_EQ(ReadFile("a.ini"), before);
        }
    }
    EXPECT_EQ(Run("profile get a.ini Main Empty x").out, "x\n");

    EXPECT_EQ(Run("profile set new.ini s k v").status, 0);
    EXPECT_EQ(Run("profile get new.ini s k").out, "v\n");
    const Result nowhere = Run("profile set none/new.ini s k v");
    EXPECT_EQ(nowhere.status, 1);
    EXPECT_EQ(nowhere.err, "brcore8: none/new.ini: the key could not be written\n");
}

}  // namespace
