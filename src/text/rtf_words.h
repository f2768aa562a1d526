// The control words that matter to plain text.
#ifndef BRCORE8_SRC_TEXT_RTF_WORDS_H
#define BRCORE8_SRC_TEXT_RTF_WORDS_H

#include <cstdint>
#include <string_view>

namespace brcore8::rtf {

enum class Action : std::uint8_t {
    None,   // nothing to do, but known: `\*` before it hides nothing
    Unit,   // the word is text: its value
    Break,  // ends a paragraph
    Cell,
    NestedCell,
    Row,
    NestedRow,
    NestedRowProperties,
    RowDefaults,
    CellEdge,
    InTable,
    Nesting,
    ParagraphDefaults,
    Font,
    Plain,
    DefaultFont,
    FontTable,
    FontCharset,
    FontPage,
    Page,         // the document's code page: its value, or its number
    Unicode,      // a UTF-16 unit
    UnicodeSkip,  // how many characters stand for it where it is unknown
    Binary,       // bytes of which nothing is RTF follow
    Picture,
    Skip  // the group holds something other than text
};

struct Word {
    std::string_view name;
    Action action;
    std::uint16_t value = 0;
};

// To be fed the letters of a word one by one.
constexpr std::uint32_t HashLetter(std::uint32_t hash, char letter) {
    return hash * 31 + static_cast<unsigned char>(letter);
}

// Null for a word that says nothing about plain text; `hash` is that of all its letters, from 0.
const Word* FindWord(std::string_view name, std::uint32_t hash) noexcept;

}  // namespace brcore8::rtf

#endif
