// LOGFONTA, the platform's description of a font. On Windows <windows.h> defines it; who fills one
// in there includes that.
#ifndef BRCORE8_PLATFORM_FONT_INFO_H
#define BRCORE8_PLATFORM_FONT_INFO_H

struct tagLOGFONTA;
using LOGFONTA = tagLOGFONTA;

#if !defined(_WIN32)
#include <cstdint>

struct tagLOGFONTA {
    std::int32_t lfHeight;  // pixels: negative of the characters, positive of the lines
    std::int32_t lfWidth;   // of an average character; 0: as it goes with the height
    std::int32_t lfEscapement;
    std::int32_t lfOrientation;
    std::int32_t lfWeight;  // 400 is normal, 700 bold
    std::uint8_t lfItalic;
    std::uint8_t lfUnderline;
    std::uint8_t lfStrikeOut;
    std::uint8_t lfCharSet;
    std::uint8_t lfOutPrecision;
    std::uint8_t lfClipPrecision;
    std::uint8_t lfQuality;
    std::uint8_t lfPitchAndFamily;
    char lfFaceName[32];  // with its terminator
};
static_assert(sizeof(tagLOGFONTA) == 60);
#endif

#endif
