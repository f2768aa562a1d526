// The platform's registry, the system's own and ours, by one list of expectations.
#include "platform/platform.h"

#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "support/page_scope.h"
#include "support/settings_home.h"

using namespace std::string_literals;

namespace {

class Registry : public SettingsTest {
protected:
    Registry() { key_ = Make(HKEY_CURRENT_USER, Path()); }
    ~Registry() override { RegCloseKey(key_); }

    static HKEY Make(HKEY root, const char* path, REGSAM access = KEY_ALL_ACCESS) {
        HKEY key = nullptr;
        char noClass[] = "";
        EXPECT_EQ(RegCreateKeyExA(root, path, 0, noClass, REG_OPTION_NON_VOLATILE, access, nullptr,
                                  &key, nullptr),
                  ERROR_SUCCESS)
            << path;
        return key;
    }
    static long Open(HKEY root, const char* path, HKEY* key = nullptr, REGSAM access = KEY_READ) {
        HKEY opened = nullptr;
        const long status = RegOpenKeyExA(root, path, 0, access, &opened);
        if (key != nullptr)
            *key = opened;
        else if (opened != nullptr)
            RegCloseKey(opened);
        return status;
    }
    long Set(const char* name, DWORD type, const std::string& data) const {
        return RegSetValueExA(key_, name, 0, type, reinterpret_cast<const BYTE*>(data.data()),
                              static_cast<DWORD>(data.size()));
    }
    // All names in the order of enumeration.
    static std::string Keys(HKEY key) {
        std::string names;
        char name[512];
        for (DWORD i = 0, size = sizeof name;
             RegEnumKeyExA(key, i, name, &size, nullptr, nullptr, nullptr, nullptr) == 0;
             ++i, size = sizeof name)
            names += std::string(name, size) + ";";
        return names;
    }
    static std::string Values(HKEY key) {
        std::string names;
        char name[512];
        for (DWORD i = 0, size = sizeof name;
             RegEnumValueA(key, i, name, &size, nullptr, nullptr, nullptr, nullptr) == 0;
             ++i, size = sizeof name)
            names += std::string(name, size) + ";";
        return names;
    }

    HKEY key_ = nullptr;
};

TEST_F(Registry, KeysAreFoundByPathInAnyCase) {
    RegCloseKey(Make(key_, "One\\Two Words\\\xC9t\xE9"));
    RegCloseKey(Make(key_, "..\\/"));
    const struct {
        const char* name;
        std::string path;
        long status;
    } rows[] = {
        {"the-key-itself", "", ERROR_SUCCESS},
        {"as-made", "One\\Two Words", ERROR_SUCCESS},
        {"ascii-case", "oNE\\TWO words", ERROR_SUCCESS},
        {"case-of-the-page", "One\\Two Words\\\xE9T\xC9", ERROR_SUCCESS},
        {"trailing-backslash", "One\\", ERROR_SUCCESS},
        {"missing", "One\\Three", ERROR_FILE_NOT_FOUND},
        {"below-missing", "Three\\Four", ERROR_FILE_NOT_FOUND},
        {"dots-are-a-name", "..", ERROR_SUCCESS},
        {"so-is-a-slash", "..\\/", ERROR_SUCCESS},
        {"slash-does-not-part", "One/Two Words", ERROR_FILE_NOT_FOUND},
        {"dots-do-not-climb", "One\\..", ERROR_FILE_NOT_FOUND},
        {"doubled-backslash", "One\\\\Two Words", ERROR_SUCCESS},
        {"longest-name", std::string(255, 'x'), ERROR_FILE_NOT_FOUND},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Open(key_, row.path.c_str()), row.status) << row.name;
    HKEY same = nullptr;
    EXPECT_EQ(Open(key_, nullptr, &same), ERROR_SUCCESS);
    EXPECT_EQ(Keys(same), "..;One;");
    RegCloseKey(same);
}

TEST_F(Registry, CreatingTellsWhatWasMade) {
    DWORD disposition = 0;
    HKEY key = nullptr;
    for (const DWORD expected : {REG_CREATED_NEW_KEY, REG_OPENED_EXISTING_KEY}) {
        EXPECT_EQ(RegCreateKeyExA(key_, "a\\b", 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key,
                                  &disposition),
                  ERROR_SUCCESS);
        EXPECT_EQ(disposition, expected);
        RegCloseKey(key);
    }
    RegCloseKey(Make(key_, std::string(255, 'n').c_str()));
    EXPECT_NE(RegCreateKeyExA(key_, std::string(300, 'n').c_str(), 0, nullptr, 0, KEY_ALL_ACCESS,
                              nullptr, &key, nullptr),
              ERROR_SUCCESS);
    std::string deep;
    for (int level = 0; level < 20000; ++level)
        deep += "d\\";
    EXPECT_NE(
        RegCreateKeyExA(key_, deep.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key, nullptr),
        ERROR_SUCCESS);
    EXPECT_NE(Open(key_, std::string(100000, 'x').c_str()), ERROR_SUCCESS);
    EXPECT_EQ(Open(key_, "d"), ERROR_FILE_NOT_FOUND) << "nothing of what failed";
}

TEST_F(Registry, RightsAndHandlesAreChecked) {
    RegCloseKey(Make(key_, "a"));
    HKEY reader = nullptr;
    ASSERT_EQ(Open(key_, "a", &reader), ERROR_SUCCESS);
    const BYTE data[] = "x";
    EXPECT_EQ(RegSetValueExA(reader, "v", 0, REG_SZ, data, 2), ERROR_ACCESS_DENIED);
    EXPECT_EQ(RegDeleteValueA(reader, "v"), ERROR_ACCESS_DENIED);
    EXPECT_EQ(RegDeleteKeyA(key_, "a"), ERROR_SUCCESS);
    EXPECT_EQ(RegQueryValueExA(reader, "v", nullptr, nullptr, nullptr, nullptr), ERROR_KEY_DELETED);
    char name[8];
    DWORD size = sizeof name;
    EXPECT_EQ(RegEnumKeyExA(reader, 0, name, &size, nullptr, nullptr, nullptr, nullptr),
              ERROR_KEY_DELETED);
    EXPECT_EQ(Open(reader, ""), ERROR_KEY_DELETED);
    EXPECT_EQ(RegCloseKey(reader), ERROR_SUCCESS);
    EXPECT_EQ(RegCloseKey(reader), ERROR_INVALID_HANDLE);
    EXPECT_EQ(Open(reader, ""), ERROR_INVALID_HANDLE);
    EXPECT_EQ(RegCloseKey(HKEY_CURRENT_USER), ERROR_SUCCESS);
    EXPECT_EQ(Open(HKEY_CURRENT_USER, ""), ERROR_SUCCESS);
}

TEST_F(Registry, KeysAreDeletedWhenNothingIsBelow) {
    RegCloseKey(Make(key_, "a\\b"));
    HKEY reader = nullptr;
    ASSERT_EQ(Open(HKEY_CURRENT_USER, Path(), &reader), ERROR_SUCCESS);
    EXPECT_EQ(RegDeleteKeyA(reader, "A"), ERROR_ACCESS_DENIED);
    EXPECT_EQ(RegDeleteKeyA(reader, "a\\c"), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(RegDeleteKeyA(reader, "a\\B"), ERROR_SUCCESS)
        << "the rights of the handle are not asked";
    EXPECT_EQ(RegDeleteKeyA(reader, "a"), ERROR_SUCCESS);
    EXPECT_EQ(RegDeleteKeyA(reader, "a"), ERROR_FILE_NOT_FOUND);
    EXPECT_NE(RegDeleteKeyA(reader, nullptr), ERROR_SUCCESS);
    RegCloseKey(reader);
}

TEST_F(Registry, ValuesKeepTypeAndBytes) {
    const struct {
        const char* name;
        DWORD type;
        std::string data;
    } rows[] = {
        {"text", REG_SZ, "Tahoma\0"s},
        {"", REG_SZ, "the default\0"s},
        {"empty-text", REG_SZ, "\0"s},
        {"variables", REG_EXPAND_SZ, "%PATH%\0"s},
        {"number", REG_DWORD, "\1\2\3\4"},
        {"high-first", REG_DWORD_BIG_ENDIAN, "\1\2\3\4"},
        {"bytes", REG_BINARY, "\0\xFF\0"s},
        {"no-bytes", REG_BINARY, ""},
        {"unknown-type", 77, "abc"},
        {"\xC9t\xE9 \x80", REG_SZ, "\xC9t\xE9 \x80\0"s},
        {"a\\b", REG_SZ, "a backslash in a name\0"s},
        {"long", REG_SZ, std::string(100000, 'x') + '\0'},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        ASSERT_EQ(Set(row.name, REG_BINARY, "before"), ERROR_SUCCESS);
        ASSERT_EQ(Set(row.name, row.type, row.data), ERROR_SUCCESS);
        DWORD type = 0, size = 0;
        ASSERT_EQ(RegQueryValueExA(key_, row.name, nullptr, &type, nullptr, &size), ERROR_SUCCESS);
        EXPECT_EQ(type, row.type);
        EXPECT_EQ(size, row.data.size());
        std::string data(size + 8, '?');
        auto* const room = reinterpret_cast<BYTE*>(data.data());
        if (size > 0) {
            DWORD small = size - 1;
            EXPECT_EQ(RegQueryValueExA(key_, row.name, nullptr, &type, room, &small),
                      ERROR_MORE_DATA);
            EXPECT_EQ(small, size);
        }
        size = static_cast<DWORD>(data.size());
        ASSERT_EQ(RegQueryValueExA(key_, row.name, nullptr, nullptr, room, &size), ERROR_SUCCESS);
        EXPECT_EQ(data.substr(0, size), row.data);
    }
    EXPECT_EQ(RegQueryValueExA(key_, "TEXT", nullptr, nullptr, nullptr, nullptr), ERROR_SUCCESS);
    EXPECT_EQ(RegQueryValueExA(key_, "none", nullptr, nullptr, nullptr, nullptr),
              ERROR_FILE_NOT_FOUND);
    BYTE room[4];
    EXPECT_EQ(RegQueryValueExA(key_, "text", nullptr, nullptr, room, nullptr),
              ERROR_INVALID_PARAMETER);
    EXPECT_EQ(RegDeleteValueA(key_, "TeXt"), ERROR_SUCCESS);
    EXPECT_EQ(RegDeleteValueA(key_, "text"), ERROR_FILE_NOT_FOUND);
}

TEST_F(Registry, UnterminatedTextGetsATerminatorWhereThereIsRoom) {
    ASSERT_EQ(Set("v", REG_SZ, std::string("abc!").substr(0, 3)), ERROR_SUCCESS);
    BYTE room[] = "??????";
    DWORD size = 6;
    ASSERT_EQ(RegQueryValueExA(key_, "v", nullptr, nullptr, room, &size), ERROR_SUCCESS);
    EXPECT_EQ(std::memcmp(room, "abc", 4), 0);
}

TEST_F(Registry, EnumerationIsInTheOrderOfNamesWithoutCase) {
    for (const char* name : {"b", "A", "c", "Z", "_", "a1", "[", "a"})
        RegCloseKey(Make(key_, name));
    EXPECT_EQ(Keys(key_), "[;_;A;a1;b;c;Z;");
    for (const char* name : {"b", "A", "", "c"})
        Set(name, REG_SZ, "\0"s);
    EXPECT_EQ(Values(key_), ";A;b;c;");
}

TEST_F(Registry, EnumerationSeesChangesBetweenItsSteps) {
    for (const char* name : {"a", "c", "e", "g", "i"})
        RegCloseKey(Make(key_, name));
    char name[64];
    const auto at = [&](DWORD index) {
        DWORD size = sizeof name;
        const long status =
            RegEnumKeyExA(key_, index, name, &size, nullptr, nullptr, nullptr, nullptr);
        return status == ERROR_SUCCESS ? std::string(name) : std::to_string(status);
    };
    EXPECT_EQ(at(1), "c");
    EXPECT_EQ(at(1), "c") << "the same index again";
    RegDeleteKeyA(key_, "a");
    EXPECT_EQ(at(2), "g") << "one before it is gone";
    RegCloseKey(Make(key_, "b"));
    EXPECT_EQ(at(3), "g") << "one came before it";
    RegDeleteKeyA(key_, "i");
    EXPECT_EQ(at(4), std::to_string(ERROR_NO_MORE_ITEMS));
    EXPECT_EQ(at(0), "b");
    DWORD small = 1;
    EXPECT_EQ(RegEnumKeyExA(key_, 1, name, &small, nullptr, nullptr, nullptr, nullptr),
              ERROR_MORE_DATA);
    EXPECT_EQ(at(2), "e");
    for (const char* value : {"m", "o", "q"})
        Set(value, REG_SZ, "\0"s);
    EXPECT_EQ(Values(key_), "m;o;q;");
    DWORD size = sizeof name;
    RegEnumValueA(key_, 1, name, &size, nullptr, nullptr, nullptr, nullptr);
    Set("n", REG_SZ, "\0"s);
    Set("O", REG_SZ, "again\0"s);
    RegDeleteValueA(key_, "m");
    size = sizeof name;
    RegEnumValueA(key_, 2, name, &size, nullptr, nullptr, nullptr, nullptr);
    EXPECT_STREQ(name, "q");
}

TEST_F(Registry, EnumeratedValuesComeWithTheirData) {
    Set("name", REG_DWORD, "\1\2\3\4");
    char name[16];
    BYTE data[16];
    DWORD type = 0, nameSize = sizeof name, size = sizeof data;
    EXPECT_EQ(RegEnumValueA(key_, 0, name, &nameSize, nullptr, &type, data, &size), ERROR_SUCCESS);
    EXPECT_EQ(std::string(name, nameSize), "name");
    EXPECT_EQ(type, REG_DWORD);
    EXPECT_EQ(std::string(reinterpret_cast<char*>(data), size), "\1\2\3\4");
    nameSize = 4;
    EXPECT_EQ(RegEnumValueA(key_, 0, name, &nameSize, nullptr, nullptr, nullptr, nullptr),
              ERROR_MORE_DATA);
    nameSize = sizeof name;
    size = 3;
    EXPECT_EQ(RegEnumValueA(key_, 0, name, &nameSize, nullptr, nullptr, data, &size),
              ERROR_MORE_DATA);
    nameSize = sizeof name;
    EXPECT_EQ(RegEnumValueA(key_, 1, name, &nameSize, nullptr, nullptr, nullptr, nullptr),
              ERROR_NO_MORE_ITEMS);
}

TEST_F(Registry, ClassesAreEmpty) {
    RegCloseKey(Make(key_, "a"));
    char name[16], kind[16] = "?";
    DWORD size = sizeof name, kindSize = sizeof kind;
    EXPECT_EQ(RegEnumKeyExA(key_, 0, name, &size, nullptr, kind, &kindSize, nullptr),
              ERROR_SUCCESS);
    EXPECT_STREQ(kind, "");
    EXPECT_EQ(kindSize, 0u);
}

TEST_F(Registry, EnvironmentVariablesAreExpanded) {
    SetVariable("BRCORE8_SETTINGS_TEST", "value");
    const struct {
        const char* name;
        const char* source;
        const char* expanded;
    } rows[] = {
        {"none", "plain", "plain"},
        {"empty", "", ""},
        {"between", "<%BRCORE8_SETTINGS_TEST%>", "<value>"},
        {"any-case", "%brcore8_Settings_Test%", "value"},
        {"unknown", "a%BRCORE8_NO_SUCH%b", "a%BRCORE8_NO_SUCH%b"},
        {"unknown-takes-both-its-signs", "%no%BRCORE8_SETTINGS_TEST%", "%no%BRCORE8_SETTINGS_TEST%"},
        {"lone-sign", "100%", "100%"},
        {"two-signs-are-a-pair", "%%BRCORE8_SETTINGS_TEST%%", "%%BRCORE8_SETTINGS_TEST%%"},
    };
    for (const auto& row : rows) {
        char out[64];
        const DWORD needed = ExpandEnvironmentStringsA(row.source, out, sizeof out);
        EXPECT_STREQ(out, row.expanded) << row.name;
        EXPECT_GE(needed, std::strlen(row.expanded) + 1) << row.name;
    }
    SetVariable("BRCORE8_SETTINGS_TEST", "");
}

}  // namespace
