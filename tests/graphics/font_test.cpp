#include <brcore8/graphics/font.h>

#include <brcore8/core/module.h>
#include <brcore8/settings/registry.h>

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

#include "settings_system.h"
#include "support/failing_allocator.h"
#include "system_fonts.h"

namespace {

namespace fs = std::filesystem;

constexpr const char* kUi = "UI";
constexpr const char* kRtf = "RTF";
constexpr const char* kFixed = "fixed";

struct Font {
    const LOGFONTA& (*get)() noexcept;
    void (*set)(const LOGFONTA&) noexcept;
    int (*load)() noexcept;
};

Font FontOf(const std::string& name) {
    if (name == kUi)
        return {SFont::GetDefaultUIFontInfo, SFont::SetDefaultUIFontInfo, SFont::LoadDefaultUIFont};
    if (name == kRtf) return {SFont::GetRtfFontInfo, SFont::SetRtfFontInfo, SFont::LoadRtfFont};
    return {SFont::GetFixedUIFontInfo, SFont::SetFixedUIFontInfo, SFont::LoadFixedUIFont};
}

long HeightOf(double points) {
    return -std::lround(points * ScreenDpi() / 72);
}

LOGFONTA Described(const char* face, long weight, bool italic, long height) {
    LOGFONTA info = {};
    info.lfHeight = static_cast<decltype(info.lfHeight)>(height);
    info.lfWeight = static_cast<decltype(info.lfWeight)>(weight);
    info.lfItalic = italic;
    std::string_view(face).copy(info.lfFaceName, sizeof info.lfFaceName);  // perhaps without end
    return info;
}

std::string Words(const LOGFONTA& info) {
    return std::string(info.lfFaceName) + " " + std::to_string(info.lfWeight) +
           (info.lfItalic ? " italic " : " upright ") + std::to_string(info.lfHeight);
}

// The user's own settings, which are what they were afterwards.
class FontSettings : public ::testing::Test {
protected:
    void SetUp() override {
        folder_ = fs::temp_directory_path() / "brcore8-font-settings";
        fs::remove_all(folder_);
        fs::create_directory(folder_);
        SetVariable("BRCORE8_SETTINGS", (folder_ / "user.db").string().c_str());
        SetVariable("BRCORE8_MACHINE_SETTINGS", (folder_ / "machine.db").string().c_str());
        existed_ = SRegistry(User(), Path(""), 0).ExportText(&saved_) >= 0;
        Clear();
        for (const char* name : {kUi, kRtf, kFixed})
            FontOf(name).set(Described("Before", 500, false, -17));
    }
    void TearDown() override {
        Clear();
        if (existed_) {
            EXPECT_EQ(SRegistry(User(), Path(""), 1).ImportText(saved_), 0);
        }
        SetVariable("BRCORE8_SETTINGS", "");
        SetVariable("BRCORE8_MACHINE_SETTINGS", "");
        fs::remove_all(folder_);
    }

    static HKEY User() { return SRegistry::CurrentUser(); }
    static SString Path(const char* below) {
        SString path = SRegistry::ApplicationRoot() + "Controls";
        return *below != '\0' ? path + "\\" + below : path;
    }
    // The lines of a key as text; below it too.
    static std::string Saved(const char* below) {
        SString text;
        SRegistry(User(), Path(below), 0).ExportText(&text);
        return std::string(text.View());
    }
    static void Import(const std::string& lines) {
        const std::string text = "brcore8-settings 1\n" + lines;
        ASSERT_EQ(SRegistry(User(), Path(""), 1).ImportText(SString(std::string_view(text))), 0)
            << lines;
    }
    static void Clear() {
        SRegistry(User(), SRegistry::ApplicationRoot(), 0).DeleteTree("Controls");
    }

private:
    fs::path folder_;
    SString saved_;
    bool existed_ = false;
};

TEST(FontObject, HoldsAFont) {
    SFont font;
    LOGFONTA info = Described("Arial", 700, true, -13);
    EXPECT_EQ(font.GetInfo(&info), 0);
    EXPECT_EQ(font.Create(info), 1);
    LOGFONTA got = {};
    EXPECT_EQ(font.GetInfo(&got), 1);
    EXPECT_EQ(Words(got), "Arial 700 italic -13");
    const HGDIOBJ before = font.GetHandle();
    EXPECT_EQ(font.Create(got), 1);
    EXPECT_NE(font.GetHandle(), before);
    const SFont moved(font.Detach());
    EXPECT_EQ(font.GetInfo(&got), 0);
    EXPECT_EQ(moved.GetInfo(&got), 1);
}

TEST(FontObject, BuiltInFonts) {
    EXPECT_EQ(Words(SFont::GetDefaultUIFontInfo()),
              "Tahoma 400 upright " + std::to_string(HeightOf(8)));
    EXPECT_EQ(Words(SFont::GetFixedUIFontInfo()),
              "Courier New 400 upright " + std::to_string(HeightOf(10)));
    EXPECT_EQ(Words(SFont::GetRtfFontInfo()), "Arial 400 upright " + std::to_string(HeightOf(10)));
}

TEST(FontObject, FaceWithoutAnEnd) {
    SFont::SetRtfFontInfo(Described(std::string(40, 'x').c_str(), 400, false, -9));
    EXPECT_EQ(SFont::GetRtfFontInfo().lfFaceName, std::string(31, 'x'));
}

TEST_F(FontSettings, Load) {
    const std::string longFace(40, 'y');
    const struct {
        const char* name;
        const char* font;
        std::string saved;
        std::string face;
        long weight;
        bool italic;
        long height;
    } rows[] = {
        {"nothing-saved", kUi, "", "Before", 500, false, -17},
        {"all-of-ui", kUi,
         "\"UI Font Name\" = string \"Verdana\"\n\"UI Font Style\" = dword 3\n"
         "\"UI Font Size\" = dword 11\n",
         "Verdana", 700, true, HeightOf(11)},
        {"all-of-rtf", kRtf,
         "\"RTF Font Name\" = string \"Times\"\n\"RTF Font Style\" = dword 1\n"
         "\"RTF Font Size\" = dword 7\n",
         "Times", 700, false, HeightOf(7)},
        {"of-another-font", kRtf, "\"UI Font Name\" = string \"Verdana\"\n", "Before", 500, false,
         -17},
        {"all-of-fixed", kFixed,
         "key \"Editor\\\\Default\\\\Font\"\n\"Facename\" = string \"Fixedsys\"\n"
         "\"Bold\" = dword 1\n\"Italic\" = dword 1\n\"Size\" = dword 13\n",
         "Fixedsys", 700, true, HeightOf(13)},
        {"fixed-neither", kFixed,
         "key \"Editor\\\\Default\\\\Font\"\n\"Bold\" = dword 0\n\"Italic\" = dword 0\n", "Before",
         400, false, -17},
        {"size-0-is-8", kUi, "\"UI Font Size\" = dword 0\n", "Before", 500, false, HeightOf(8)},
        {"absurd-size-is-8", kUi, "\"UI Font Size\" = dword 4294967295\n", "Before", 500, false,
         HeightOf(8)},
        {"style-0-is-normal", kUi, "\"UI Font Style\" = dword 0\n", "Before", 400, false, -17},
        {"style-2-is-italic", kUi, "\"UI Font Style\" = dword 2\n", "Before", 400, true, -17},
        {"empty-name-changes-nothing", kUi, "\"UI Font Name\" = string \"\"\n", "Before", 500,
         false, -17},
        {"long-name-is-cut", kUi, "\"UI Font Name\" = string \"" + longFace + "\"\n",
         longFace.substr(0, 31), 500, false, -17},
        {"numbers-as-text", kUi, "\"UI Font Size\" = string \" 9\"\n", "Before", 500, false,
         HeightOf(9)},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        Clear();
        if (!row.saved.empty())
            Import((row.saved.starts_with("key") ? "" : "key \"\"\n") + row.saved);
        const Font font = FontOf(row.font);
        font.set(Described("Before", 500, false, -17));
        EXPECT_EQ(font.load(), 1);
        EXPECT_EQ(Words(font.get()),
                  Words(Described(row.face.c_str(), row.weight, row.italic, row.height)));
    }
}

// Read where the user has no such key, and not beside one.
TEST_F(FontSettings, LoadTheMachines) {
    if (SRegistry(SRegistry::LocalMachine(), Path(""), 0).IsOpen())
        GTEST_SKIP() << "this machine has settings of its own, which stay";
    MakeMachineKey(Path(""), "RTF Font Name", "Machine");
    MakeMachineKey(Path(""), "RTF Font Size", "9");
    EXPECT_EQ(SFont::LoadRtfFont(), 1);
    EXPECT_EQ(Words(SFont::GetRtfFontInfo()), Words(Described("Machine", 500, false, HeightOf(9))));
    Import("key \"\"\n\"RTF Font Size\" = dword 20\n");
    SFont::SetRtfFontInfo(Described("Before", 500, false, -17));
    EXPECT_EQ(SFont::LoadRtfFont(), 1);
    EXPECT_EQ(Words(SFont::GetRtfFontInfo()), Words(Described("Before", 500, false, HeightOf(20))));
    SRegistry(SRegistry::LocalMachine(), SRegistry::ApplicationRoot(), 0).DeleteTree("Controls");
}

std::string Saving(const char* name, const char* style, const char* size) {
    const std::string font = std::string("\"") + name + " Font ";
    return font + "Name\" = string \"Verdana\"\n" + font + "Size\" = dword " + size + "\n" + font +
           "Style\" = dword " + style + "\n";
}

// The values as a set: their order is the system's.
void ExpectSaved(const std::string& text, const std::string& wanted) {
    for (std::size_t at = 0; at < wanted.size();) {
        const std::string line = wanted.substr(at, wanted.find('\n', at) + 1 - at);
        EXPECT_NE(text.find(line), std::string::npos) << line << "in\n" << text;
        at += line.size();
    }
}

TEST_F(FontSettings, SaveUI) {
    const struct {
        const char* name;
        long weight;
        bool italic;
        long height;
        const char* style;
        const char* size;
    } rows[] = {
        {"bold-italic", 700, true, HeightOf(11), "3", "11"},
        {"nearly-bold-is-not", 699, false, HeightOf(8), "0", "8"},
        {"heavier-than-bold-is-not", 900, true, HeightOf(20), "2", "20"},
        {"height-of-the-line", 700, false, -HeightOf(12), "1", "12"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        SFont::SetDefaultUIFontInfo(Described("Verdana", row.weight, row.italic, row.height));
        SModuleState program;
        SModuleState* const previous = SSetModuleState(&program);
        EXPECT_EQ(SFont::SaveDefaultUIFont(), 1);
        EXPECT_EQ(SSetModuleState(previous), &program);
        ExpectSaved(Saved(""), Saving("UI", row.style, row.size));
        for (const char* grid : {"Header", "Row", "Grid"})
            ExpectSaved(Saved("Grid"), Saving(grid, row.style, row.size));
    }
    EXPECT_EQ(Saved("").find("RTF"), std::string::npos);
}

TEST_F(FontSettings, SaveFixedForEveryEditor) {
    const std::string font =
        "\"Bold\" = dword 1\n\"Facename\" = string \"Courier\"\n\"Italic\" = dword 0\n"
        "\"Size\" = dword 9\n";
    SFont::SetFixedUIFontInfo(Described("Courier", 700, false, HeightOf(9)));
    EXPECT_EQ(SFont::SaveFixedUIFont(), 1);
    ExpectSaved(Saved("Editor\\Default\\Font"), font);

    Import(
        "key \"Editor\\\\C++\"\n\"Tab\" = dword 4\nkey \"Editor\\\\SQL\\\\Font\"\n"
        "\"Facename\" = string \"Old\"\n");
    EXPECT_EQ(SFont::SaveFixedUIFont(), 1);
    for (const char* kind : {"Editor\\Default\\Font", "Editor\\C++\\Font", "Editor\\SQL\\Font"}) {
        SCOPED_TRACE(kind);
        ExpectSaved(Saved(kind), font);
    }
    ExpectSaved(Saved("Editor\\C++"), "\"Tab\" = dword 4\n");

    SFont::SetFixedUIFontInfo(Described("Other", 400, true, -1));
    EXPECT_EQ(SFont::LoadFixedUIFont(), 1);
    EXPECT_EQ(Words(SFont::GetFixedUIFontInfo()),
              Words(Described("Courier", 700, false, HeightOf(9))));
}

// The module is put where the program finds it, under the name that the library looks for.
class GridModule : public FontSettings {
protected:
    void SetUp() override {
        FontSettings::SetUp();
        fs::remove("grids.txt");
        fs::remove(kPlace);
    }
    void TearDown() override {
        fs::remove("grids.txt");
        fs::remove(kPlace);
        FontSettings::TearDown();
    }
    static std::string Told() {
        std::ifstream file("grids.txt");
        return {std::istreambuf_iterator<char>(file), {}};
    }

    static constexpr const char* kPlace = BRCORE8_GRIDS_PLACE;
};

TEST_F(GridModule, IsToldAndUnloaded) {
    fs::copy_file(BRCORE8_GRIDS, kPlace);
    EXPECT_EQ(SFont::SaveFixedUIFont(), 1);
    EXPECT_EQ(Told(), "");
    EXPECT_EQ(SFont::SaveDefaultUIFont(), 1);
    EXPECT_EQ(Told(), "changed;unloaded;");
    EXPECT_EQ(SFont::SaveDefaultUIFont(), 1);
    EXPECT_EQ(Told(), "changed;unloaded;changed;unloaded;");
}

TEST_F(GridModule, WithoutTheFunctionOrTheModule) {
    EXPECT_EQ(SFont::SaveDefaultUIFont(), 1);
    EXPECT_EQ(Told(), "");
    fs::copy_file(BRCORE8_GRIDS_OF_OLD, kPlace);
    EXPECT_EQ(SFont::SaveDefaultUIFont(), 1);
    EXPECT_EQ(Told(), "unloaded;");
    ExpectSaved(Saved(""), "\"UI Font Name\" = string \"Before\"\n");
}

// Whatever is refused, the operations end, and nothing is half a font.
TEST_F(FontSettings, NthAllocationRefused) {
    for (int nth = 1;; ++nth) {
        SCOPED_TRACE(nth);
        SFont::SetDefaultUIFontInfo(Described("Verdana", 700, true, HeightOf(11)));
        FailNthAllocation fail(nth);
        EXPECT_EQ(SFont::SaveDefaultUIFont(), 1);
        EXPECT_EQ(SFont::LoadDefaultUIFont(), 1);
        EXPECT_EQ(SFont::SaveFixedUIFont(), 1);
        EXPECT_EQ(SFont::LoadFixedUIFont(), 1);
        EXPECT_EQ(Words(SFont::GetDefaultUIFontInfo()),
                  Words(Described("Verdana", 700, true, HeightOf(11))));
        if (!fail.Triggered()) break;
    }
}

}  // namespace
