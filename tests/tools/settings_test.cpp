// settings: values of the current user, through the program.
#include <brcore8/settings/registry.h>

#include "settings_system.h"
#include "tools/run_command.h"

namespace {

class Settings : public CommandTest {
protected:
    Settings() {
        SetVariable("BRCORE8_SETTINGS", "store.db");
        Clean();
    }
    ~Settings() override {
        Clean();
        SetVariable("BRCORE8_SETTINGS", "");
    }

private:
    // Where the store is no file, what the tests write goes.
    static void Clean() {
        SRegistry(SRegistry::CurrentUser(), SRegistry::ApplicationRoot(), 0)
            .DeleteTree("Tool test");
    }
};

TEST_F(Settings, ValuesAreWrittenReadAndDeleted) {
    const std::string tooLong = "settings set \"Tool test\\" + std::string(300, 'x') + "\" n 1";
    ExpectAll({
        {"no store yet", "settings get \"Tool test\" a", "", 1, "",
         "brcore8: Tool test: there is no such key"},
        {"text", "settings set \"Tool test\\Sub\" Name \"Tahoma 8\"", "", 0, ""},
        {"the same again", "settings set \"tool TEST\\sub\" NAME Tahoma", "", 0, ""},
        {"number", "settings set --dword \"Tool test\" Size 4294967295", "", 0, ""},
        {"negative number", "settings set --dword -- \"Tool test\" Least -2147483648", "", 0, ""},
        {"default value", "settings set \"Tool test\" \"\" default", "", 0, ""},
        {"tab in a value", "settings set \"Tool test\" tab \"a\tb\\c\"", "", 0, ""},
        {"as read", "settings get \"Tool test\\Sub\" name", "", 0, "Tahoma\n"},
        {"signed", "settings get \"Tool test\" size", "", 0, "-1\n"},
        {"default", "settings get \"Tool test\\\\\" \"\"", "", 0, "default\n"},
        {"all", "settings list \"Tool test\"", "", 0,
         "key\tSub\nstring\t\tdefault\ndword\tLeast\t2147483648\ndword\tSize\t4294967295\n"
         "string\ttab\ta\\tb\\\\c\n"},
        {"missing value", "settings get \"Tool test\" none", "", 1, "",
         "brcore8: Tool test\\none: there is no such value"},
        {"missing key", "settings list \"Tool test\\none\"", "", 1, "",
         "brcore8: Tool test\\none: there is no such key"},
        {"deleted", "settings delete \"Tool test\" SIZE", "", 0, ""},
        {"deleted before", "settings delete \"Tool test\" Size", "", 1, "",
         "brcore8: Tool test\\Size: there is no such value"},
        {"a key is no value", "settings delete \"Tool test\" Sub", "", 1, "", "no such value"},
        {"no number", "settings set --dword \"Tool test\" n 1x", "", 2, "", "a number of 32 bits"},
        {"too great", "settings set --dword \"Tool test\" n 4294967296", "", 2, "", "32 bits"},
        {"too long a key name", tooLong.c_str(), "", 1, "", "it could not be written"},
        {"no part", "settings", "", 2, "", "Usage: brcore8 settings"},
        {"no value given", "settings set \"Tool test\" n", "", 2, "", "VALUE"},
    });
}

TEST_F(Settings, DeletingRepeatsUntilTheKeyIsGone) {
    for (const char* key : {"k\\1", "k\\2\\a", "k\\2\\b", "k\\3", "k\\4\\x\\y", "k\\5", "other"})
        Run("settings set \"Tool test\\" + std::string(key) + "\" v 1");
    Run("settings set \"Tool test\" k \"a value of the same name\"");
    ExpectAll({
        {"empty name", "settings delete -r \"Tool test\" \"\"", "", 1, "", "no such value or key"},
        {"only backslashes", "settings delete -r \"Tool test\" \\\\", "", 1, "", "no such value"},
        {"missing", "settings delete -r \"Tool test\" none", "", 1, "", "no such value or key"},
        {"all of it", "settings delete --recursive \"Tool test\" K", "", 0, ""},
        {"the others stay", "settings list \"Tool test\"", "", 0, "key\tother\n"},
        {"by path", "settings delete -r \"\" \"Tool test\\other\"", "", 0, ""},
        {"nothing left", "settings list \"Tool test\"", "", 0, ""},
    });
}

}  // namespace
