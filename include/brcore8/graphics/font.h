// SFont: owner of a font, and the fonts that the suite's controls use.
//
// There are three such fonts in a process, each a description: that of the user interface, the
// fixed one of the editors, and that of RTF text. A program loads them when it starts and saves
// those that its user changed. They are kept under SRegistry::ApplicationRoot(), sizes in points:
//
//     Controls                       UI Font Name, UI Font Style, UI Font Size;
//                                    RTF Font Name, RTF Font Style, RTF Font Size
//     Controls\Grid                  the same of the Header, Row and Grid Font, as copies
//     Controls\Editor\Default\Font   Facename, Bold, Italic, Size;
//                                    a copy for each kind of editor in Controls\Editor\KIND\Font
//
// Names are strings, the rest DWORDs; a style is 1 for bold, 2 for italic, or their sum. Points
// become pixels by the screen's pixels per inch, which are 96 on systems other than Windows.
//
// Threads: the thread of the user interface.
// Errors: these operations throw nothing and always return 1. What cannot be read, because nothing
// was saved or memory is short, leaves the description as it is; what cannot be written is lost.
//
//     SFont::LoadDefaultUIFont();
//     SFont font;
//     font.Create(SFont::GetDefaultUIFontInfo());
#ifndef BRCORE8_GRAPHICS_FONT_H
#define BRCORE8_GRAPHICS_FONT_H

#include <brcore8/graphics/gdi_object.h>
#include <brcore8/platform/font_info.h>

class BRCORE8_API SFont : public SGdiObject {
    SDECLARE_CREATABLE(SFont);

    // Takes the font over; null holds none.
    explicit SFont(HGDIOBJ font = nullptr) noexcept : SGdiObject(font) {}

    // Makes the font of that description in the place of what is held: 1, or 0 when the platform
    // refuses, and nothing changes.
    int Create(const LOGFONTA& info) noexcept;
    // The description that the font was made of: 1, or 0 when none is held.
    int GetInfo(LOGFONTA* info) const noexcept;

    // ---- The fonts of the process -------------------------------------------------------------

    // In use until something else is set or loaded: Tahoma and Arial, 8 and 10 points, and Courier
    // New, 10 points. A face name without an end is cut.
    static const LOGFONTA& GetDefaultUIFontInfo() noexcept;
    static const LOGFONTA& GetFixedUIFontInfo() noexcept;
    static const LOGFONTA& GetRtfFontInfo() noexcept;
    static void SetDefaultUIFontInfo(const LOGFONTA& info) noexcept;
    static void SetFixedUIFontInfo(const LOGFONTA& info) noexcept;
    static void SetRtfFontInfo(const LOGFONTA& info) noexcept;

    // Take what is saved over into the present description, from the user's key, or the machine's
    // when the user has none. A name that is empty, as one that is missing, changes nothing; one
    // of more than 31 bytes is cut. A size outside 1 .. 4096 points means 8.
    static int LoadDefaultUIFont() noexcept;
    static int LoadFixedUIFont() noexcept;
    static int LoadRtfFont() noexcept;

    // Save the present description for the user; only a weight of exactly 700 is bold.
    //
    // The first writes the copies of the grids and then tells these: if there is a module
    // "brgrid8.dll" that exports BRGRID_SGridSetFontChanged, it is loaded, that function called,
    // and the module unloaded. (Elsewhere than on Windows the module's file is libbrgrid8.so,
    // beside the program or where the system looks for libraries.)
    static int SaveDefaultUIFont() noexcept;
    // Kinds of editors are the keys below Controls\Editor that are there, Default apart.
    static int SaveFixedUIFont() noexcept;
};

#endif
