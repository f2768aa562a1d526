#include <brcore8/graphics/font.h>

#include <brcore8/core/exception.h>
#include <brcore8/core/module.h>
#include <brcore8/settings/registry.h>
#include <brcore8/strings/string_table.h>

#include <climits>
#include <cstring>

#include "platform/platform.h"
#include "strings/mbs.h"

namespace {

using namespace brcore8;

enum Style : long { Bold = 1, Italic = 2 };

constexpr long kPointsPerInch = 72;
constexpr long kUsualSize = 8;
constexpr long kGreatestSize = 4096;

// --- sizes ---------------------------------------------------------------------------------------

int ScreenDpi() noexcept {
    const HDC screen = GetDC(nullptr);
    const int dpi = GetDeviceCaps(screen, LOGPIXELSY);
    ReleaseDC(nullptr, screen);
    return dpi;
}

void SetSize(LOGFONTA& info, long points) noexcept {
    if (points < 1 || points > kGreatestSize) points = kUsualSize;
    info.lfHeight = -MulDiv(static_cast<int>(points), ScreenDpi(), kPointsPerInch);
}

long SizeOf(const LOGFONTA& info) noexcept {
    const int points = MulDiv(info.lfHeight, kPointsPerInch, ScreenDpi());
    return points >= 0 ? points : points > INT_MIN ? -points : INT_MAX;
}

// --- the fonts of the process --------------------------------------------------------------------

// Cuts before a character that would not fit whole.
void SetFace(LOGFONTA& info, const char* face) noexcept {
    const CodePage& page = CodePage::Ansi();
    char* const end = info.lfFaceName + sizeof info.lfFaceName - 1;
    char* out = info.lfFaceName;
    for (const char* next; *face != '\0' && (next = mbs::Next(page, face)) - face <= end - out;)
        for (; face != next; ++face)
            *out++ = *face;
    std::memset(out, 0, static_cast<std::size_t>(end - out) + 1);
}

LOGFONTA BuiltIn(const char* face, long points) noexcept {
    LOGFONTA info = {};
    SetFace(info, face);
    SetSize(info, points);
    info.lfWeight = FW_NORMAL;
    info.lfCharSet = 1;  // whatever suits the user's language
    return info;
}

struct Fonts {
    LOGFONTA ui = BuiltIn("Tahoma", 8);
    LOGFONTA fixed = BuiltIn("Courier New", 10);
    LOGFONTA rtf = BuiltIn("Arial", 10);
};

Fonts& TheFonts() noexcept {
    static Fonts fonts;
    return fonts;
}

void Store(LOGFONTA& font, LOGFONTA info) noexcept {
    info.lfFaceName[sizeof info.lfFaceName - 1] = '\0';
    font = info;
}

// --- what is saved -------------------------------------------------------------------------------

// The library's own resources while it lives.
class OwnModuleState {
public:
    OwnModuleState() : previous_(SSetModuleState(SCoreGetModuleState())) {}
    ~OwnModuleState() { SSetModuleState(previous_); }
    OwnModuleState(const OwnModuleState&) = delete;
    OwnModuleState& operator=(const OwnModuleState&) = delete;

private:
    SModuleState* previous_;
};

// Settings are no reason to stop: without memory what was done so far is done.
template <class Work>
int AtLeastTry(Work work) noexcept {
    try {
        const OwnModuleState own;
        work();
    } catch (const SEOutOfMemory&) {
    }
    return 1;
}

SString KeyPath(const char* below) {
    return SRegistry::ApplicationRoot() + below;
}

void LoadFace(const SRegistry& key, const SString& name, LOGFONTA& info) {
    SString face;
    if (key.GetProfile(name, &face, SString()) >= 0 && !face.IsEmpty()) SetFace(info, face);
}

// False when there is none.
bool LoadNumber(const SRegistry& key, const SString& name, long& number) {
    return key.GetProfile(name, &number, 0L) >= 0;
}

void SetBold(LOGFONTA& info, bool isBold) noexcept {
    info.lfWeight = isBold ? FW_BOLD : FW_NORMAL;
}

LOGFONTA LoadControlsFont(const SString& font, LOGFONTA info) {
    const SRegistry key(nullptr, KeyPath("Controls"), 0);
    LoadFace(key, font + " Font Name", info);
    long number;
    if (LoadNumber(key, font + " Font Style", number)) {
        SetBold(info, (number & Bold) != 0);
        info.lfItalic = (number & Italic) != 0;
    }
    if (LoadNumber(key, font + " Font Size", number)) SetSize(info, number);
    return info;
}

LOGFONTA LoadEditorFont(LOGFONTA info) {
    const SRegistry key(nullptr, KeyPath("Controls\\Editor\\Default\\Font"), 0);
    LoadFace(key, "Facename", info);
    long number;
    if (LoadNumber(key, "Bold", number)) SetBold(info, number != 0);
    if (LoadNumber(key, "Italic", number)) info.lfItalic = number != 0;
    if (LoadNumber(key, "Size", number)) SetSize(info, number);
    return info;
}

void SaveControlsFont(SRegistry& key, const SString& font, const LOGFONTA& info) {
    const long style =
        (info.lfWeight == FW_BOLD ? long{Bold} : 0L) | (info.lfItalic ? long{Italic} : 0L);
    key.WriteProfile(font + " Font Name", SString(info.lfFaceName));
    key.WriteProfile(font + " Font Style", style, 1);
    key.WriteProfile(font + " Font Size", SizeOf(info), 1);
}

void SaveEditorFont(const SString& path, const LOGFONTA& info) {
    SRegistry key(SRegistry::CurrentUser(), path + "\\Font", 1);
    key.WriteProfile("Facename", SString(info.lfFaceName));
    key.WriteProfile("Bold", long{info.lfWeight == FW_BOLD}, 1);
    key.WriteProfile("Italic", long{info.lfItalic != 0}, 1);
    key.WriteProfile("Size", SizeOf(info), 1);
}

// The kinds of editors that the user has settings of.
SStringTable EditorKinds() {
    SStringTable kinds;
    const SRegistry editors(SRegistry::CurrentUser(), KeyPath("Controls\\Editor"), 0);
    SString name;
    SString ofClass;
    for (long i = 0; editors.GetEnumKey(i, &name, ofClass) >= 0; ++i)
        if (name.Compare("Default") != 0) kinds.Add(name);
    return kinds;
}

void TellGrids() {
    const HMODULE grids = LoadLibraryA(SString(SGetCoreInstance(), 115u));
    if (grids == nullptr) return;
    void* const changed =
        reinterpret_cast<void*>(GetProcAddress(grids, "BRGRID_SGridSetFontChanged"));
    if (changed != nullptr) reinterpret_cast<void (*)()>(changed)();
    FreeLibrary(grids);
}

}  // namespace

const LOGFONTA& SFont::GetDefaultUIFontInfo() noexcept {
    return TheFonts().ui;
}

const LOGFONTA& SFont::GetFixedUIFontInfo() noexcept {
    return TheFonts().fixed;
}

const LOGFONTA& SFont::GetRtfFontInfo() noexcept {
    return TheFonts().rtf;
}

void SFont::SetDefaultUIFontInfo(const LOGFONTA& info) noexcept {
    Store(TheFonts().ui, info);
}

void SFont::SetFixedUIFontInfo(const LOGFONTA& info) noexcept {
    Store(TheFonts().fixed, info);
}

void SFont::SetRtfFontInfo(const LOGFONTA& info) noexcept {
    Store(TheFonts().rtf, info);
}

int SFont::LoadDefaultUIFont() noexcept {
    return AtLeastTry([] { SetDefaultUIFontInfo(LoadControlsFont("UI", GetDefaultUIFontInfo())); });
}

int SFont::LoadFixedUIFont() noexcept {
    return AtLeastTry([] { SetFixedUIFontInfo(LoadEditorFont(GetFixedUIFontInfo())); });
}

int SFont::LoadRtfFont() noexcept {
    return AtLeastTry([] { SetRtfFontInfo(LoadControlsFont("RTF", GetRtfFontInfo())); });
}

int SFont::SaveDefaultUIFont() noexcept {
    return AtLeastTry([] {
        {
            SRegistry controls(SRegistry::CurrentUser(), KeyPath("Controls"), 1);
            SRegistryBatch batch(controls);
            SaveControlsFont(controls, "UI", GetDefaultUIFontInfo());
            SRegistry grid(SRegistry::CurrentUser(), KeyPath("Controls\\Grid"), 1);
            for (const char* font : {"Header", "Row", "Grid"})
                SaveControlsFont(grid, font, GetDefaultUIFontInfo());
            batch.Commit();
        }
        TellGrids();
    });
}

int SFont::SaveFixedUIFont() noexcept {
    return AtLeastTry([] {
        const SRegistry editor(SRegistry::CurrentUser(), KeyPath("Controls\\Editor"), 1);
        SRegistryBatch batch(editor);
        SaveEditorFont(KeyPath("Controls\\Editor\\Default"), GetFixedUIFontInfo());
        for (const SString& kind : EditorKinds())
            SaveEditorFont(KeyPath("Controls\\Editor\\") + kind, GetFixedUIFontInfo());
        batch.Commit();
    });
}
