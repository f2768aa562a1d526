#include <brcore8/settings/registry.h>

#include <string>
#include <string_view>
#include <vector>

#include "support/page_scope.h"
#include "support/settings_home.h"

using namespace std::string_literals;

namespace {

using brcore8::SettingsDone;
using brcore8::SettingsFailed;
using brcore8::SettingsNullPointer;
using Origin = SRegistry::Origin;

const HKEY kUser = SRegistry::CurrentUser();
const HKEY kMachine = SRegistry::LocalMachine();

class RegistryTest : public SettingsTest {
protected:
    bool Exists(const char* below) const { return SRegistry(kUser, Path(below), 0).IsOpen(); }
    void Make(const char* below) const { ASSERT_TRUE(SRegistry(kUser, Path(below), 1).IsOpen()); }
    // Sets values of any type by their text form.
    static void Import(SRegistry& key, const std::string& lines) {
        ASSERT_EQ(key.ImportText(SString(std::string_view("brcore8-settings 1\n" + lines))),
                  SettingsDone)
            << lines;
    }
    static std::string Keys(const SRegistry& key) {
        std::string names;
        SString name, kind;
        for (long i = 0; key.GetEnumKey(i, &name, kind) >= 0; ++i)
            names += std::string(name) + ";";
        return names;
    }
};

TEST_F(RegistryTest, CodesAreThoseThatCallersTestFor) {
    EXPECT_EQ(static_cast<std::uint32_t>(SettingsFailed), 0x80004005u);
    EXPECT_EQ(static_cast<std::uint32_t>(SettingsNullPointer), 0x80004003u);
    EXPECT_LT(SettingsFailed, 0);
    EXPECT_STREQ(SRegistry::ApplicationRoot(), "Software\\Quorbit\\Brindle 8\\");
}

TEST_F(RegistryTest, OpeningFollowsRootAndFlag) {
    MakeMachineKey(Path("machine"), "Who", "machine");
    MakeMachineKey(Path("both"), "Who", "machine");
    SRegistry(kUser, Path("both"), 1).WriteProfile("Who", "user");
    const struct {
        const char* name;
        HKEY root;
        const char* below;
        int create;
        const char* who;  // null: not opened
        Origin origin;
    } rows[] = {
        {"nowhere", nullptr, "none", 0, nullptr, Origin::None},
        {"user-before-machine", nullptr, "both", 0, "user", Origin::User},
        {"machine-when-user-has-none", nullptr, "machine", 0, "machine", Origin::Machine},
        {"machine-even-with-create", nullptr, "machine", 1, "machine", Origin::Machine},
        {"machine-is-never-made", kMachine, "none", 1, nullptr, Origin::None},
        {"machine-alone", kMachine, "both", 1, "machine", Origin::Machine},
        {"user-alone", kUser, "machine", 0, nullptr, Origin::None},
        {"made-for-the-user", nullptr, "made\\below", 1, "", Origin::User},
        {"made-below-a-root", kUser, "made too\\\\", 1, "", Origin::User},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        SRegistry key;
        EXPECT_EQ(key.Init(row.root, Path(row.below), row.create),
                  row.who != nullptr ? SettingsDone : SettingsFailed);
        EXPECT_EQ(key.IsOpen(), row.who != nullptr);
        EXPECT_EQ(key.GetOrigin(), row.origin);
        SString who;
        if (row.who != nullptr) {
            key.GetProfile("Who", &who, "");
            EXPECT_STREQ(who, row.who);
        }
    }
    EXPECT_TRUE(Exists("made\\below"));
    EXPECT_FALSE(SRegistry(kMachine, Path("made"), 0).IsOpen());
    EXPECT_EQ(SRegistry::FindProfile(Path("both"), "Who"), Origin::User);
    EXPECT_EQ(SRegistry::FindProfile(Path("machine\\"), "who"), Origin::Machine);
    EXPECT_EQ(SRegistry::FindProfile(Path("both"), "Nobody"), Origin::None);
}

TEST_F(RegistryTest, ReopeningTheSameKeyDoesNothing) {
    SRegistry key(kUser, Path("a"), 1);
    const HKEY first = key.GetKey();
    EXPECT_EQ(key.Init(kUser, Path("a"), 1), SettingsDone);
    EXPECT_EQ(key.Init(kMachine, Path("a"), 1), SettingsDone) << "the root is not compared";
    EXPECT_EQ(key.GetKey(), first);
    EXPECT_EQ(key.Init(kUser, Path("A"), 0), SettingsDone) << "found in any case, but opened anew";
    EXPECT_EQ(key.WriteProfile("v", 1), SettingsFailed) << "for reading only";
    EXPECT_EQ(key.Init(kUser, Path("b"), 0), SettingsFailed);
    EXPECT_FALSE(key.IsOpen());
    EXPECT_EQ(key.Init(kUser, Path("a"), 1), SettingsDone);
    EXPECT_EQ(key.WriteProfile("v", 1), SettingsDone);
    EXPECT_EQ(key.Done(), 0);
    EXPECT_EQ(key.Done(), 0);
}

TEST_F(RegistryTest, WithoutAKeyWritesAreForgottenAndReadsFail) {
    SRegistry key;
    SString text = "before", kind;
    long number = 7;
    int truth = 7;
    EXPECT_EQ(key.WriteProfile("v", 1), SettingsDone);
    EXPECT_EQ(key.WriteProfile("v", 1L, 1), SettingsDone);
    EXPECT_EQ(key.WriteProfile("v", "text"), SettingsDone);
    EXPECT_EQ(key.GetProfile("v", &text, "default"), SettingsFailed);
    EXPECT_STREQ(text, "default");
    EXPECT_EQ(key.GetProfile("v", &number, 3L), SettingsFailed);
    EXPECT_EQ(number, 3);
    EXPECT_EQ(key.GetProfile("v", &truth, 1), SettingsFailed);
    EXPECT_EQ(truth, 1);
    EXPECT_EQ(key.GetEnumKey(0, &text, kind), SettingsFailed);
    EXPECT_EQ(key.GetEnumValue(0, &text, kind, nullptr), SettingsFailed);
    EXPECT_EQ(key.DeleteProfile("v", 1), SettingsFailed);
    EXPECT_EQ(key.DeleteTree("v"), SettingsFailed);
    EXPECT_EQ(key.ExportText(&text), SettingsFailed);
    EXPECT_EQ(key.ImportText("brcore8-settings 1\n"), SettingsFailed);
    EXPECT_STREQ(text, "default");
}

TEST_F(RegistryTest, NullPointersAreReported) {
    SRegistry key(kUser, Path(), 1);
    key.WriteProfile("v", "1");
    SString text;
    EXPECT_EQ(key.GetProfile("v", static_cast<int*>(nullptr), 0), SettingsNullPointer);
    EXPECT_EQ(key.GetProfile("v", static_cast<long*>(nullptr), 0), SettingsNullPointer);
    EXPECT_EQ(key.GetProfile("v", static_cast<SString*>(nullptr), ""), SettingsNullPointer);
    EXPECT_EQ(key.GetEnumKey(0, nullptr, text), SettingsNullPointer);
    EXPECT_EQ(key.GetEnumValue(0, nullptr, text, nullptr), SettingsNullPointer);
    EXPECT_EQ(key.ExportText(nullptr), SettingsNullPointer);
}

TEST_F(RegistryTest, ValuesReadAsTextNumberAndTruth) {
    SetVariable("BRCORE8_SETTINGS_TEST", "12");
    const struct {
        const char* stored;  // as the text form has it
        const char* text;    // null: cannot be read
        long number;
        int truth;
        unsigned long type;
    } rows[] = {
        {"string \"\"", "", 0, 0, 1},
        {"string \"Yes\"", "Yes", 1, 1, 1},
        {"string \"TRUE\"", "TRUE", 1, 1, 1},
        {"string \"YES\"", "YES", 1, 1, 1},
        {"string \"1\"", "1", 1, 1, 1},
        {"string \"on\"", "on", 0, 0, 1},
        {"string \"No\"", "No", 0, 0, 1},
        {"string \"True story\"", "True story", 0, 0, 1},
        {"string \" \\t-12\\r\\n \"", " \t-12\r\n ", -12, 0, 1},
        {"string \"+7 of 9\"", "+7 of 9", 7, 0, 1},
        {"string \"007\"", "007", 7, 0, 1},
        {"string \"1.9\"", "1.9", 1, 0, 1},
        {"string \"-\"", "-", 0, 0, 1},
        {"string \"ab\\x00cd\"", "ab", 0, 0, 1},
        {"expand \"<%BRCORE8_SETTINGS_TEST%>\"", "<12>", 0, 0, 2},
        {"expand \"%BRCORE8_SETTINGS_TEST%\"", "12", 12, 0, 2},
        {"expand \"%BRCORE8_NO_SUCH%\"", "%BRCORE8_NO_SUCH%", 0, 0, 2},
        {"dword 0", "0", 0, 0, 4},
        {"dword 1", "1", 1, 1, 4},
        {"dword 2147483647", "2147483647", 2147483647, 0, 4},
        {"dword 4294967295", "-1", -1, 0, 4},
        {"type 5 00 00 01 02", "258", 258, 0, 5},
        {"type 4 01 02", nullptr, 0, 0, 4},
        {"binary 31", nullptr, 0, 0, 3},
        {"type 7 31 00 00", nullptr, 0, 0, 7},
    };
    SRegistry key(kUser, Path(), 1);
    for (const auto& row : rows) {
        SCOPED_TRACE(row.stored);
        Import(key, "key \"\"\n\"v\" = "s + row.stored);
        const long status = row.text != nullptr ? SettingsDone : SettingsFailed;
        SString text;
        long number = 0;
        int truth = 0;
        unsigned long type = 0;
        EXPECT_EQ(key.GetProfile("V", &text, "default", &type), status);
        EXPECT_STREQ(text, row.text != nullptr ? row.text : "default");
        EXPECT_EQ(type, row.type);
        EXPECT_EQ(key.GetProfile("v", &number, -5), status);
        EXPECT_EQ(number, row.text != nullptr ? row.number : -5);
        EXPECT_EQ(key.GetProfile("v", &truth, 1), status);
        EXPECT_EQ(truth, row.text != nullptr ? row.truth : 1);
    }
    SetVariable("BRCORE8_SETTINGS_TEST", "");
}

TEST_F(RegistryTest, WritesStoreTheStatedForms) {
    SRegistry key(kUser, Path(), 1);
    EXPECT_EQ(key.WriteProfile("a", 5), SettingsDone);
    EXPECT_EQ(key.WriteProfile("b", 0), SettingsDone);
    EXPECT_EQ(key.WriteProfile("c", -12L, 0), SettingsDone);
    EXPECT_EQ(key.WriteProfile("d", -1L, 1), SettingsDone);
    EXPECT_EQ(key.WriteProfile("e", "text"), SettingsDone);
    EXPECT_EQ(key.WriteProfile("", "default"), SettingsDone);
    EXPECT_EQ(key.WriteProfile("f", SString(std::string_view("cut\0off", 7))), SettingsDone);
    SString text;
    EXPECT_EQ(key.ExportText(&text), SettingsDone);
    EXPECT_STREQ(text,
                 "brcore8-settings 1\n"
                 "key \"\"\n"
                 "\"\" = string \"default\"\n"
                 "\"a\" = string \"Yes\"\n"
                 "\"b\" = string \"No\"\n"
                 "\"c\" = string \"-12\"\n"
                 "\"d\" = dword 4294967295\n"
                 "\"e\" = string \"text\"\n"
                 "\"f\" = string \"cut\"\n");
}

TEST_F(RegistryTest, LongTextsComeBackWhole) {
    SRegistry key(kUser, Path(), 1);
    for (const int length : {1022, 1023, 1024, 1025, 2048, 100000}) {
        const SString value('x', length);
        SString read;
        ASSERT_EQ(key.WriteProfile("v", value), SettingsDone);
        ASSERT_EQ(key.GetProfile("v", &read, ""), SettingsDone);
        EXPECT_TRUE(read == value) << length;
        const std::string text(static_cast<std::size_t>(length), 'y');
        Import(key, "key \"\"\n\"e\" = expand \"" + text + "\"\n\"x\" = expand \"%" + text + "\"");
        ASSERT_EQ(key.GetProfile("e", &read, ""), SettingsDone);
        EXPECT_TRUE(read.View() == text) << length;
        const bool expands = length < 32766;
        EXPECT_EQ(key.GetProfile("x", &read, "-"), expands ? SettingsDone : SettingsFailed);
        EXPECT_TRUE(read.View() == (expands ? "%" + text : "-")) << length;
    }
    // A variable that makes the text too long.
    SetVariable("BRCORE8_SETTINGS_TEST", std::string(8000, 'z').c_str());
    SString read;
    for (const int times : {4, 5}) {
        std::string text;
        for (int i = 0; i < times; ++i)
            text += "%BRCORE8_SETTINGS_TEST%";
        Import(key, "key \"\"\n\"e\" = expand \"" + text + "\"");
        key.GetProfile("e", &read, "-");
        EXPECT_EQ(read.LengthByte(), times == 4 ? 32000 : 1);
    }
    SetVariable("BRCORE8_SETTINGS_TEST", "");
}

TEST_F(RegistryTest, EnumerationGivesNamesAndValues) {
    SRegistry key(kUser, Path(), 1);
    Import(key,
           "key \"\"\n\"n\" = dword 4294967295\n\"b\" = type 5 ff ff ff fe\n"
           "\"x\" = expand \"%PATH%\"\n\"y\" = binary 00 41\nkey \"Sub\"\nkey \"aLso\"");
    EXPECT_EQ(Keys(key), "aLso;Sub;");
    const struct {
        const char* name;
        std::string value;
        unsigned long type;
    } rows[] = {
        {"b", "4294967294", 5}, {"n", "4294967295", 4}, {"x", "%PATH%", 2}, {"y", "\0A"s, 3}};
    SString name, value;
    long index = 0;
    for (const auto& row : rows) {
        unsigned long type = 0;
        EXPECT_EQ(key.GetEnumValue(index++, &name, value, &type), SettingsDone);
        EXPECT_STREQ(name, row.name);
        EXPECT_EQ(value.View(), row.value);
        EXPECT_EQ(type, row.type);
    }
    for (const long beyond : {index, -1L, 2147483647L})
        EXPECT_EQ(key.GetEnumValue(beyond, &name, value, nullptr), SettingsFailed) << beyond;
    EXPECT_EQ(key.GetEnumKey(-1, &name, value), SettingsFailed);
    EXPECT_STREQ(name, "y") << "failures leave what was there";
}

TEST_F(RegistryTest, DeletingPassesOverEverySecondKey) {
    for (const char* name : {"k\\1", "k\\2\\below", "k\\3\\a", "k\\3\\b", "k\\4"})
        Make(name);
    SRegistry key(kUser, Path(), 1);
    EXPECT_EQ(key.DeleteProfile("k", 0), SettingsFailed) << "no value of that name";
    EXPECT_EQ(key.DeleteProfile("k", 1), SettingsFailed);
    EXPECT_EQ(Keys(SRegistry(kUser, Path("k"), 0)), "2;3;") << "3 keeps b, its second";
    EXPECT_EQ(Keys(SRegistry(kUser, Path("k\\3"), 0)), "b;");
    key.WriteProfile("k", "a value of the key's name goes first");
    EXPECT_EQ(key.DeleteProfile("k", 1), SettingsDone);
    EXPECT_TRUE(Exists("k\\2\\below"));
    int rounds = 1;
    while (key.DeleteProfile("k", 1) < 0 && rounds < 9)
        ++rounds;
    EXPECT_EQ(rounds, 2);
    EXPECT_FALSE(Exists("k"));
}

TEST_F(RegistryTest, FirstAndThirdOfFourGo) {
    for (const char* name : {"k\\a", "k\\b", "k\\c", "k\\d"})
        Make(name);
    EXPECT_EQ(SRegistry(kUser, Path(), 0).DeleteProfile("k", 1), SettingsFailed);
    EXPECT_EQ(Keys(SRegistry(kUser, Path("k"), 0)), "b;d;");
}

TEST_F(RegistryTest, NoNameDeletesTheKeyItself) {
    Make("a\\b");
    SRegistry key(kUser, Path("a"), 1);
    for (const char* name : {"", "\\", "\\\\\\"}) {
        EXPECT_EQ(key.DeleteProfile(name, 1), SettingsFailed) << name;
        EXPECT_EQ(key.DeleteTree(name), SettingsFailed) << name;
        SRegistry root(kUser, name, 0);
        EXPECT_EQ(root.DeleteProfile(name, 1), SettingsFailed) << name;
        EXPECT_EQ(root.DeleteTree(name), SettingsFailed) << name;
    }
    EXPECT_TRUE(Exists("a\\b"));
}

TEST_F(RegistryTest, DeleteTreeLeavesNothing) {
    for (const char* name : {"k\\1\\x\\y", "k\\2", "k\\3\\a", "k\\3\\b", "other"})
        Make(name);
    SRegistry key(kUser, Path(), 1);
    EXPECT_EQ(key.DeleteTree("k\\1"), SettingsDone);
    EXPECT_EQ(key.DeleteTree("K\\"), SettingsDone);
    EXPECT_EQ(key.DeleteTree("k"), SettingsFailed);
    EXPECT_EQ(Keys(key), "other;");
}

TEST_F(RegistryTest, HostilePathsStayInside) {
    std::string deep;
    for (int level = 0; level < 20000; ++level)
        deep += "d\\";
    SRegistry key(kUser, Path(), 1);
    for (const std::string& path : {deep, std::string(100000, 'x'), std::string(100000, '/')}) {
        EXPECT_FALSE(SRegistry(key.GetKey(), path.c_str(), 1).IsOpen());
        EXPECT_EQ(key.DeleteProfile(path.c_str(), 1), SettingsFailed);
        EXPECT_EQ(key.DeleteTree(path.c_str()), SettingsFailed);
    }
    EXPECT_EQ(Keys(key), "");
    const std::string backslashes(100000, '\\');
    EXPECT_TRUE(SRegistry(key.GetKey(), backslashes.c_str(), 1).IsOpen()) << "the key itself";
    SRegistry odd(key.GetKey(), "..\\..\\/", 1);
    EXPECT_EQ(odd.WriteProfile("v", "x"), SettingsDone);
    EXPECT_EQ(Keys(key), "..;");
    EXPECT_EQ(SRegistry(key.GetKey(), "..", 0).DeleteTree(".."), SettingsDone);
}

// As deep as a store goes below this case's key: what walks it must not recurse.
TEST_F(RegistryTest, DeepTreesAreWalkedAndDeleted) {
    constexpr int kLevels = 500;
    std::string path = "d";
    for (int level = 1; level < kLevels; ++level)
        path += "\\d";
    Make(path.c_str());
    SRegistry key(kUser, Path(), 1);
    SString text;
    ASSERT_EQ(key.ExportText(&text), SettingsDone);
    EXPECT_GT(text.LengthByte(), kLevels * kLevels);
    EXPECT_EQ(key.DeleteProfile("d", 1), SettingsDone) << "only first keys: none is passed over";
    ASSERT_EQ(key.ImportText(text), SettingsDone);
    EXPECT_TRUE(Exists(path.c_str()));
    EXPECT_EQ(key.DeleteTree("d"), SettingsDone);
}

TEST_F(RegistryTest, NamesAreFoundInAnyCaseOfTheCodePage) {
    const PageScope page(1252);
    SRegistry key(kUser, Path("\xC9\\x"), 1);
    key.WriteProfile("\xE0", "found");
    SString text;
    EXPECT_EQ(SRegistry(kUser, Path("\xE9\\X"), 0).GetProfile("\xC0", &text, ""), SettingsDone);
}

// --- text ----------------------------------------------------------------------------------------

TEST_F(RegistryTest, TextRestoresATree) {
    const std::string text =
        "brcore8-settings 1\n"
        "key \"\"\n"
        "\"\" = string \"\\\"quoted\\\" \\\\ \\t\\r\\n \\x01 \xE9\"\n"
        "\"a=b\" = expand \"%HOME%\\\\x\"\n"
        "\"bytes\" = binary 00 ff 1e\n"
        "\"none\" = binary\n"
        "\"number\" = dword 42\n"
        "\"open\" = type 77 61 62\n"
        "\"other\" = type 7 61 00 00\n"
        "key \"A\"\n"
        "key \"A\\\\B c\"\n"
        "\"v\" = string \"\"\n"
        "key \"\\\"\"\n";
    SRegistry key(kUser, Path("from"), 1), copy(kUser, Path("to"), 1);
    const SString given{std::string_view(text)};
    ASSERT_EQ(key.ImportText(given), SettingsDone);
    SString first, second;
    ASSERT_EQ(key.ExportText(&first), SettingsDone);
    ASSERT_EQ(copy.ImportText(first), SettingsDone);
    ASSERT_EQ(copy.ExportText(&second), SettingsDone);
    EXPECT_STREQ(second, first);
    // The keys of the text stand in the order of their names.
    std::string sorted = text;
    const std::string quote = "key \"\\\"\"\n";
    sorted.erase(sorted.find(quote), quote.size());
    sorted.insert(sorted.find("key \"A\"\n"), quote);
    EXPECT_EQ(first.View(), sorted);
}

TEST_F(RegistryTest, ImportAddsToWhatIsThere) {
    SRegistry key(kUser, Path(), 1);
    Import(key, "key \"\"\n\"a\" = dword 1\n\"b\" = dword 2\nkey \"x\"\n");
    Import(key, "# a remark\r\n\r\nkey \"\"\r\n\"B\" = string \"new\"\r\nkey \"y\"");
    SString text;
    key.ExportText(&text);
    EXPECT_STREQ(text,
                 "brcore8-settings 1\nkey \"\"\n\"a\" = dword 1\n\"b\" = string \"new\"\n"
                 "key \"x\"\nkey \"y\"\n");
}

TEST_F(RegistryTest, FaultsInATextChangeNothing) {
    const struct {
        const char* name;
        std::string lines;
        long line;
    } rows[] = {
        {"value-before-any-key", "\"v\" = dword 1", 3},
        {"unknown-word", "key \"\"\nkeys \"\"", 4},
        {"open-quote", "key \"a", 3},
        {"escape-at-the-end", "key \"a\\", 3},
        {"unknown-escape", "key \"\\q\"", 3},
        {"half-a-byte", "key \"\\x1\"", 3},
        {"zero-byte-in-a-name", "key \"\\x00\"", 3},
        {"more-behind", "key \"a\" b", 3},
        {"no-sign", "key \"\"\n\"v\" dword 1", 4},
        {"number-too-great", "key \"\"\n\"v\" = dword 4294967296", 4},
        {"number-of-30-digits", "key \"\"\n\"v\" = dword 999999999999999999999999999999", 4},
        {"negative", "key \"\"\n\"v\" = dword -1", 4},
        {"hex-of-one-digit", "key \"\"\n\"v\" = binary 0", 4},
        {"hex-without-blanks", "key \"\"\n\"v\" = binary 0000", 4},
        {"type-without-number", "key \"\"\n\"v\" = type", 4},
    };
    SRegistry key(kUser, Path(), 1);
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const SString text(std::string_view("brcore8-settings 1\n\n" + row.lines));
        long line = 0;
        EXPECT_EQ(SRegistry::CheckText(text, &line), SettingsFailed);
        EXPECT_EQ(line, row.line);
        EXPECT_EQ(key.ImportText(text), SettingsFailed);
    }
    for (const char* heading : {"", "\n", "brcore8-settings 2\n", "brcore8-settings 1 \n"})
        EXPECT_EQ(SRegistry::CheckText(heading, nullptr), SettingsFailed) << heading;
    SString text;
    key.ExportText(&text);
    EXPECT_STREQ(text, "brcore8-settings 1\nkey \"\"\n");
}

// --- batch ---------------------------------------------------------------------------------------

TEST_F(RegistryTest, BatchesKeepWhatTheyCommit) {
    SRegistry key(kUser, Path(), 1);
    {
        SRegistryBatch batch(key);
        EXPECT_EQ(batch.GetStatus(), SettingsDone);
        for (long i = 0; i < 100; ++i)
            EXPECT_EQ(key.WriteProfile(SString(i), i, 1), SettingsDone);
        Make("made\\inside");
        EXPECT_EQ(key.DeleteProfile("7", 0), SettingsDone);
        SRegistryBatch inner(key);
        key.WriteProfile("inner", "x");
        EXPECT_EQ(inner.Commit(), SettingsDone);
        EXPECT_EQ(batch.Commit(), SettingsDone);
        EXPECT_EQ(batch.Commit(), SettingsDone) << "once more does nothing";
    }
    SString name, value;
    EXPECT_EQ(key.GetEnumValue(99, &name, value, nullptr), SettingsDone);
    EXPECT_STREQ(name, "inner");
    EXPECT_TRUE(Exists("made\\inside"));
    SRegistryBatch none{SRegistry()};
    EXPECT_EQ(none.Commit(), SettingsDone);
}

}  // namespace
