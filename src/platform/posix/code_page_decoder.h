// Code pages and character facts expanded from recorded data (see tools/codepages), the same on
// every system: this is how a system without the platform's own tables gives its answers, and
// how a test on the platform proves them.
#ifndef BRCORE8_PLATFORM_POSIX_CODE_PAGE_DECODER_H
#define BRCORE8_PLATFORM_POSIX_CODE_PAGE_DECODER_H

#include "platform/code_pages.h"

namespace brcore8 {

// A sequence of 16-bit values as text. Each number is written in digits of five bits, lowest
// first, 0x20 marking that another digit follows; the digits are "0-9A-Za-z_~".
//   number = 2 * zigzag(step)  the next value is the last one plus step
//   number = 2 * count + 1     the last step is repeated count times
// The value before the first and the first step are 0.
struct CodePageData {
    unsigned page;
    const char* leads;  // 256 values, 1 for a lead byte
    const char* wide;   // units of the 256 bytes, then of the 256 trail bytes of each lead byte
    const char* codes;  // for all units, code minus the one that `wide` alone would give
};

struct CharacterData {
    const char* lower;  // for all units, lower case minus unit
    const char* upper;
    const char* types;
};

extern const CodePageData kCodePageData[];
extern const std::size_t kCodePageDataCount;
extern const CharacterData kCharacterData;

// As LoadCodePageTables and LoadCharacterFacts.
bool DecodeCodePage(unsigned page, CodePageTables& tables);
CharacterFacts DecodeCharacterFacts(std::span<const std::uint16_t> units);

// The code that each unit has when the first of several codes for one unit wins and every other
// unit becomes '?'. What the platform answers differently is recorded as a difference.
void DeriveCodes(CodePageTables& tables);

}  // namespace brcore8

#endif
