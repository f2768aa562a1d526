// INI files by their sections and keys. The system lays a file out in its own way when it writes,
// so what is compared here is what reads back; posix/profile_bytes_test.cpp compares bytes.
#include <brcore8/settings/profile.h>
#include <brcore8/strings/string_table.h>

#include <climits>
#include <string>
#include <vector>

#include "settings/profile_file.h"
#include "support/page_scope.h"

namespace {

using Profile = ProfileFile;

std::string Text(const SProfile& profile, const SString& key, const char* otherwise = "?") {
    SString value;
    EXPECT_EQ(profile.GetProfile(key, &value, otherwise), 0);
    return std::string(value.View());
}

std::vector<std::string> Names(const SStringTable& table) {
    std::vector<std::string> names;
    for (const SString& name : table)
        names.emplace_back(name.View());
    return names;
}

struct KeyRow {
    const char* name;
    const char* section;
    const char* key;
    const char* value;
};

TEST_F(Profile, ReadsKeys) {
    const std::string file =
        "top=1\n[One]\r\nplain=v\r\n  Spaced  =  two words \t\r\nquoted=\"  q  \"\r\n"
        "single='s'\r\nunpaired=\"x'\r\nlone=\"\r\ntwice=\"\"x\"\"\r\nempty=\r\nnothing\r\n"
        ";remark=1\r\n#no=remark\r\nequals=a=b\r\nbehind=a ; b\r\nplain=second\r\nPLAIN=third\r\n"
        "\r\n[ two ]  behind\n  k = 2\n[One]\nlate=1\n[old]\rk=3\r[b]r]\nk=4\n[open\n[last]\nk=5";
    const KeyRow rows[] = {
        {"plain-and-first-of-repeats", "One", "plain", "v"},
        {"without-case", "oNE", "PLAIN", "v"},
        {"blanks-around-the-value", "One", "spaced", "two words"},
        {"blanks-around-the-names", " One ", "\tspaced ", "two words"},
        {"quotes-keep-blanks", "One", "quoted", "  q  "},
        {"single-quotes", "One", "single", "s"},
        {"quotes-of-two-kinds-stay", "One", "unpaired", "\"x'"},
        {"one-quote-stays", "One", "lone", "\""},
        {"one-pair-goes", "One", "twice", "\"x\""},
        {"empty-value", "One", "empty", "?"},
        {"no-equals-sign", "One", "nothing", "?"},
        {"hash-is-no-remark", "One", "#no", "remark"},
        {"first-equals-sign", "One", "equals", "a=b"},
        {"text-behind-a-value", "One", "behind", "a ; b"},
        {"before-the-first-section", "", "top", "1"},
        {"not-in-the-second-of-a-name", "One", "late", "?"},
        {"blanks-in-the-header", "two", "k", "2"},
        {"old-line-ends", "old", "k", "3"},
        {"last-bracket-ends-the-name", "b]r", "k", "4"},
        {"unclosed-header-is-none", "open", "k", "?"},
        {"no-final-line-end", "last", "k", "5"},
        {"no-such-section", "Three", "k", "?"},
        {"no-such-key", "two", "plain", "?"},
    };
    Put(file);
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const SProfile profile(Path(), row.section, 0);
        EXPECT_EQ(Text(profile, row.key), row.value);
    }
    const SProfile one(Path(), "One", 0);
    EXPECT_EQ(one.HasProfile("EMPTY"), 1);
    EXPECT_EQ(one.HasProfile("plain"), 1);
    EXPECT_EQ(one.HasProfile("nothing"), 0);
    EXPECT_EQ(one.HasProfile("late"), 0);
}

TEST_F(Profile, ConvertsValues) {
    const struct {
        const char* name;
        const char* text;
        int truth;    // with the default 7
        long number;  // with the default 7
    } rows[] = {
        {"yes", "Yes", 1, 1},
        {"true-in-capitals", "TRUE", 1, 1},
        {"one", "1", 1, 1},
        {"on-is-no-truth", "on", 0, 0},
        {"no", "No", 0, 0},
        {"other-numbers-are-no-truth", "2", 0, 2},
        {"blanks-and-sign", "\"  -12 \"", 0, -12},
        {"plus", "+5", 0, 5},
        {"digits-then-letters", "12px", 0, 12},
        {"blanks-around-truth", "' yes\t'", 1, 1},
        {"empty-gives-the-default", "", 7, 7},
        {"only-blanks-in-quotes", "\"  \"", 0, 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        Put(std::string("[s]\nk=").append(row.text).append("\n"));
        const SProfile profile(Path(), "s", 0);
        int truth = -1;
        long number = -1;
        EXPECT_EQ(profile.GetProfile("k", &truth, 7), 0);
        EXPECT_EQ(profile.GetProfile("k", &number, 7L), 0);
        EXPECT_EQ(truth, row.truth);
        EXPECT_EQ(number, row.number);
    }
}

TEST_F(Profile, WritesWhatItReads) {
    SProfile profile(Path(), "Window", 1);
    EXPECT_EQ(profile.WriteProfile("text", SString("a = [b] ; c")), 0);
    EXPECT_EQ(profile.WriteProfile("on", 5), 0);
    EXPECT_EQ(profile.WriteProfile("off", 0), 0);
    EXPECT_EQ(profile.WriteProfile("least", long{INT_MIN}), 0);
    EXPECT_EQ(profile.WriteProfile(" blanks ", SString(" v ")), 0);
    EXPECT_EQ(Text(profile, "text"), "a = [b] ; c");
    EXPECT_EQ(Text(profile, "on"), "Yes");
    EXPECT_EQ(Text(profile, "off"), "No");
    EXPECT_EQ(Text(profile, "least"), "-2147483648");
    EXPECT_EQ(Text(profile, "blanks"), "v");

    EXPECT_EQ(profile.WriteProfile("TEXT", SString("other")), 0);
    EXPECT_EQ(Text(profile, "text"), "other");
    EXPECT_EQ(profile.WriteProfile("text", SString()), 0);
    EXPECT_EQ(Text(profile, "text"), "?");
    EXPECT_EQ(profile.HasProfile("text"), 1);
    EXPECT_EQ(profile.DeleteProfile("Text"), 0);
    EXPECT_EQ(profile.HasProfile("text"), 0);
    EXPECT_EQ(profile.DeleteProfile("text"), 0);

    SProfile unnamed(Path(), "", 0);
    EXPECT_EQ(unnamed.WriteProfile("k", 7L), 0);
    EXPECT_EQ(Text(unnamed, "K"), "7");
    EXPECT_EQ(Text(profile, "on"), "Yes");
}

TEST_F(Profile, ListsAndDeletes) {
    Put("[One]\na=1\nb=2\nB=3\n; c=4\n\n[two]\nx=\n[]\ny=1\n[one]\nz=1\n");
    SProfile one(Path(), "one", 0);
    SStringTable names;
    EXPECT_EQ(one.GetSections(&names), 0);
    EXPECT_EQ(Names(names), (std::vector<std::string>{"One", "two", "one"}));
    EXPECT_EQ(one.GetKeys(&names), 0);
    EXPECT_EQ(Names(names), (std::vector<std::string>{"a", "b", "B"}));
    EXPECT_EQ(one.DeleteSection(), 0);
    EXPECT_EQ(one.GetKeys(&names), 0);
    EXPECT_EQ(Names(names), (std::vector<std::string>{"z"}));
    EXPECT_EQ(one.GetKeys(nullptr), brcore8::SettingsNullPointer);
    EXPECT_EQ(SProfile(Path(), "none", 0).GetKeys(&names), 0);
    EXPECT_EQ(names.GetCount(), 0);

    std::string many = "[s]\n";
    for (int i = 0; i < 5000; ++i)
        many += "key" + std::to_string(i) + "=" + std::to_string(i) + "\n";
    Put(many);
    EXPECT_EQ(SProfile(Path(), "s", 0).GetKeys(&names), 0);
    ASSERT_EQ(names.GetCount(), 5000);
    EXPECT_EQ(names[4999], "key4999");
}

TEST_F(Profile, RefusesWhatWouldNotReadBack) {
    const KeyRow rows[] = {
        {"line-feed-in-value", "s", "k", "a\nx=1"},
        {"return-in-value", "s", "k", "a\rx=1"},
        {"line-feed-in-key", "s", "k\nx", "1"},
        {"line-feed-in-section", "s]\n[t", "k", "1"},
        {"bracket-in-section", "s]", "k", "1"},
        {"equals-in-key", "s", "k=x", "1"},
        {"key-like-a-header", "s", " [t]", "1"},
        {"key-like-a-remark", "s", ";k", "1"},
        {"empty-key", "s", "", "1"},
        {"blank-key", "s", " \t", "1"},
    };
    Put("[s]\nk=old\n");
    const std::string before = Bytes();
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        SProfile profile(Path(), row.section, 0);
        EXPECT_EQ(profile.Accepts(row.key, row.value), 0);
        EXPECT_EQ(profile.WriteProfile(row.key, SString(row.value)), brcore8::SettingsNotWritten);
        EXPECT_EQ(Bytes(), before);
    }
    SProfile nothing;
    EXPECT_EQ(nothing.WriteProfile("k", 1L), brcore8::SettingsNotWritten);
    EXPECT_EQ(Text(nothing, "k"), "?");
    EXPECT_EQ(nothing.HasProfile("k"), 0);
    SProfile folder(Folder(), "s", 0);
    EXPECT_EQ(folder.WriteProfile("k", 1L), brcore8::SettingsNotWritten);
    EXPECT_EQ(Text(folder, "k"), "?");
}

TEST_F(Profile, CutsLongValues) {
    for (const int page : {1252, 932}) {
        const PageScope scope(page);
        for (const int length : {254, 255, 256, 1 << 20}) {
            SCOPED_TRACE(std::to_string(page) + " " + std::to_string(length));
            const std::string value(static_cast<std::size_t>(length), 'y');
            Put("[s]\nlong=" + value + "\nnext=1\n");
            const SProfile profile(Path(), "s", 0);
            EXPECT_EQ(Text(profile, "long"), value.substr(0, 255));
            EXPECT_EQ(Text(profile, "next"), "1");
            SString whole;
            EXPECT_EQ(profile.GetWholeProfile("long", &whole, ""), 0);
            EXPECT_TRUE(whole.View() == value);
        }
    }
}

TEST_F(Profile, InitAndDone) {
    Put("[s]\nk=1\n[t]\nk=2\n");
    SProfile profile(Path(), "s", 0);
    EXPECT_EQ(profile.Init(Path(), "t", 0), 0);
    EXPECT_EQ(Text(profile, "k"), "2");
    EXPECT_EQ(profile.Init(profile.GetFileName(), profile.GetSection(), 0), 0);
    EXPECT_EQ(Text(profile, "k"), "2");
    EXPECT_EQ(profile.Done(), 0);
    EXPECT_EQ(Text(profile, "k"), "?");
    EXPECT_TRUE(profile.GetFileName().IsEmpty() && profile.GetSection().IsEmpty());
    EXPECT_EQ(profile.GetProfile("k", static_cast<int*>(nullptr), 0), brcore8::SettingsNullPointer);
    EXPECT_EQ(profile.GetProfile("k", static_cast<long*>(nullptr), 0),
              brcore8::SettingsNullPointer);
    EXPECT_EQ(profile.GetProfile("k", static_cast<SString*>(nullptr), ""),
              brcore8::SettingsNullPointer);
    EXPECT_EQ(profile.GetWholeProfile("k", nullptr, ""), brcore8::SettingsNullPointer);
}

// Who writes sees it, whoever writes: another object, another program.
TEST_F(Profile, SeesOtherWriters) {
    Put("[s]\nk=0\n");
    const SProfile reader(Path(), "s", 0);
    SProfile writer(Path(), "s", 0);
    for (int i = 1; i <= 9; ++i) {
        EXPECT_EQ(writer.WriteProfile("k", long{i}), 0);
        EXPECT_EQ(Text(reader, "k"), std::to_string(i));
    }
    Remove();
    EXPECT_EQ(Text(reader, "k"), "?");
}

}  // namespace
