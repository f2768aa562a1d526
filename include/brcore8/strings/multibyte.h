// The process's code pages and the free helpers over byte text in them.
//
// All text of the library is in the process's code page, single-byte or double-byte. The page
// starts as the system's own on Windows and as 1252 elsewhere; the OEM page as the system's and
// as 437. Changing a page leaves existing text as it is; only its reading changes. Every function
// may be called from any thread, but a page should be chosen before other threads read text.
// Null text counts as empty, unless said otherwise. Texts end with a zero byte.
#ifndef BRCORE8_STRINGS_MULTIBYTE_H
#define BRCORE8_STRINGS_MULTIBYTE_H

#include <brcore8/platform/export.h>

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

// --- the process's code pages ----------------------------------------------------------------

extern "C" {
// Chooses the page of all text: 0 when done, -1 when this platform has no such page, and then
// nothing changes. Special values: 0 the default single-byte page, 1252; -2 the process's OEM
// page; -3 and -4 the page that the process started with. On Windows the C run-time is told too,
// and this function takes the place of its own of that name for programs that link this library
// before it.
BRCORE8_API int _setmbcp(int page);

// The number of the page of all text, for single-byte pages too.
BRCORE8_API int _getmbcp(void);
}

// The page of OEM text: 0 when chosen, -1 when this platform has no such page.
BRCORE8_API int SSetOemCodePage(int page);
BRCORE8_API int SGetOemCodePage();

// 1 when the process's page has lead bytes.
BRCORE8_API bool SIsDoubleByteCodePage();

// The numbers of the pages that every build has, in ascending order; Windows may know others.
BRCORE8_API std::span<const int> SSupportedCodePages();

// --- search and case -------------------------------------------------------------------------

// The first place where `what` occurs in any case; null when nowhere, or when either is null. An
// empty `what` occurs at the start. The length of `what` is found by itself: the third argument
// of the second form changes nothing.
BRCORE8_API const char* _tcsistr(const char* text, const char* what);
BRCORE8_API const char* _tcsistr(const char* text, const char* what, int length);

// The first occurrence of the character in either case; null when there is none.
BRCORE8_API const char* _tcsichr(const char* text, unsigned int ch);

// Swaps the case of every character in place and returns the text. A character stays when its
// other case needs another number of bytes.
BRCORE8_API char* CharToggle(char* text);

// --- numeric-aware comparison ----------------------------------------------------------------

// Digit runs compare as numbers: "a2" < "a10", and of equal numbers the one with more leading
// zeros is greater: "a01" > "a1". Negative, zero or positive; differences wrap at 32 bits. The
// forms with an `i` fold both sides to lower case, the forms with an `n` stop after that many
// bytes of either text (none when n < 1).
BRCORE8_API int _tcscmpi(const char* left, const char* right);
BRCORE8_API int _tcsicmpi(const char* left, const char* right);
BRCORE8_API int _tcsncmpi(const char* left, const char* right, int bytes);
BRCORE8_API int _tcsnicmpi(const char* left, const char* right, int bytes);

// The order above is that of users' lists and no consistent one: "00x" equals "00", and differences
// wrap. This one is strict, so that it may order keys and be handed to std::sort: digit runs
// compare as numbers of any length, characters by their unsigned codes, a text that ends before one
// that goes on; texts that are then equal by the leading zeros of their first run that differs in
// them, fewer first. 0 means equal in every byte; the second, without case, means equal but for
// case. A zero byte is a character.
//
//     std::map<SString, int, decltype([](const auto& left, const auto& right) {
//         return SCompareNumbered(left, right) < 0;
//     })> pages;
BRCORE8_API int SCompareNumbered(std::string_view left, std::string_view right);
BRCORE8_API int SCompareNumberedNoCase(std::string_view left, std::string_view right);

// --- wide text -------------------------------------------------------------------------------

// Converts zero-terminated wide text to the process's page, or back, and returns the count
// written with the terminator. With a null `out` nothing is written and the result is the count
// needed. When `outSize` is too small the result is 0 and `out` holds what fits, terminated.
BRCORE8_API int Swcstombsz(char* out, const unsigned short* wide, unsigned int outSize);
BRCORE8_API int Smbstowcsz(unsigned short* out, const char* text, unsigned int outSize);

// Writes at most `count` UTF-16 units of the text as UTF-8, terminated, and returns `out`, which
// must hold 3 * count + 1 bytes. Units from U+0400 on take three bytes each, although standard
// UTF-8 begins with that at U+0800; SUtf8FromUtf16 writes the standard form.
BRCORE8_API char* ST2UTF8Helper(char* out, const char* text, int count);

// Decodes UTF-8, standard or as above, to text of the process's page and returns `out`, of which
// it fills at most `outSize` bytes, whole characters and the terminator (strlen(utf8) + 1 is
// always enough). Each malformed sequence becomes one default character.
BRCORE8_API char* SUTF82THelper(char* out, const char* utf8, int outSize);

// --- conversion that reports what it could not keep -------------------------------------------

enum class SCodePageKind { Ansi, Oem };

// Characters that became a best fit or the default character, as the platform chooses them, or
// that the page does not have at all; a surrogate pair is one. `first` is where the first stands
// in the text converted, in units or bytes; npos when all survived.
struct SConversionLoss {
    std::size_t count = 0;
    std::size_t first = std::u16string_view::npos;
};

// Between UTF-16 and text of one of the process's pages. Zero units and bytes are characters like
// any other. Throw SEOutOfMemory.
BRCORE8_API std::string STextFromUtf16(std::u16string_view wide, SConversionLoss* loss = nullptr,
                                       SCodePageKind kind = SCodePageKind::Ansi);
BRCORE8_API std::u16string SUtf16FromText(std::string_view text, SConversionLoss* loss = nullptr,
                                          SCodePageKind kind = SCodePageKind::Ansi);

#endif
