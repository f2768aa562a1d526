#include "text/rtf_words.h"

#include <array>
#include <cstddef>

namespace brcore8::rtf {
namespace {

constexpr Word kWords[] = {
    {"tab", Action::Unit, '\t'},
    {"line", Action::Unit, ' '},
    {"emspace", Action::Unit, ' '},
    {"enspace", Action::Unit, ' '},
    {"bullet", Action::Unit, 0x2022},
    {"emdash", Action::Unit, 0x2014},
    {"endash", Action::Unit, 0x2013},
    {"lquote", Action::Unit, 0x2018},
    {"rquote", Action::Unit, 0x2019},
    {"ldblquote", Action::Unit, 0x201C},
    {"rdblquote", Action::Unit, 0x201D},
    {"ltrmark", Action::Unit, 0x200E},
    {"rtlmark", Action::Unit, 0x200F},
    {"zwj", Action::Unit, 0x200D},
    {"zwnj", Action::Unit, 0x200C},

    {"par", Action::Break},
    {"sect", Action::Break},
    {"page", Action::Break},
    {"cell", Action::Cell},
    {"nestcell", Action::NestedCell},
    {"row", Action::Row},
    {"nestrow", Action::NestedRow},
    {"nesttableprops", Action::NestedRowProperties},
    {"trowd", Action::RowDefaults},
    {"cellx", Action::CellEdge},
    {"intbl", Action::InTable},
    {"itap", Action::Nesting},
    {"pard", Action::ParagraphDefaults},

    {"f", Action::Font},
    {"plain", Action::Plain},
    {"deff", Action::DefaultFont},
    {"fonttbl", Action::FontTable},
    {"fcharset", Action::FontCharset},
    {"cpg", Action::FontPage},
    {"ansicpg", Action::Page},
    {"urtf", Action::Page, 65001},
    {"mac", Action::Page, 10000},
    {"pc", Action::Page, 437},
    {"pca", Action::Page, 850},
    {"u", Action::Unicode},
    {"uc", Action::UnicodeSkip},
    {"bin", Action::Binary},
    {"pict", Action::Picture},

    {"object", Action::None},
    {"shppict", Action::None},
    {"field", Action::None},
    {"fldrslt", Action::None},
    {"result", Action::None},
    {"b", Action::None},
    {"i", Action::None},
    {"ul", Action::None},
    {"v", Action::None},
    {"fs", Action::None},
    {"cf", Action::None},
    {"cs", Action::None},
    {"lang", Action::None},

    {"aftncn", Action::Skip},
    {"aftnsep", Action::Skip},
    {"aftnsepc", Action::Skip},
    {"annotation", Action::Skip},
    {"atnauthor", Action::Skip},
    {"atnid", Action::Skip},
    {"atnref", Action::Skip},
    {"atrfend", Action::Skip},
    {"atrfstart", Action::Skip},
    {"author", Action::Skip},
    {"bkmkend", Action::Skip},
    {"bkmkstart", Action::Skip},
    {"colortbl", Action::Skip},
    {"comment", Action::Skip},
    {"datafield", Action::Skip},
    {"do", Action::Skip},
    {"doccomm", Action::Skip},
    {"falt", Action::Skip},
    {"filetbl", Action::Skip},
    {"fldinst", Action::Skip},
    {"fontfile", Action::Skip},
    {"footer", Action::Skip},
    {"footerf", Action::Skip},
    {"footerl", Action::Skip},
    {"footerr", Action::Skip},
    {"footnote", Action::Skip},
    {"ftncn", Action::Skip},
    {"ftnsep", Action::Skip},
    {"ftnsepc", Action::Skip},
    {"generator", Action::Skip},
    {"header", Action::Skip},
    {"headerf", Action::Skip},
    {"headerl", Action::Skip},
    {"headerr", Action::Skip},
    {"info", Action::Skip},
    {"keywords", Action::Skip},
    {"nextfile", Action::Skip},
    {"nonesttables", Action::Skip},
    {"nonshppict", Action::Skip},
    {"objalias", Action::Skip},
    {"objclass", Action::Skip},
    {"objdata", Action::Skip},
    {"objname", Action::Skip},
    {"operator", Action::Skip},
    {"pn", Action::Skip},
    {"pnseclvl", Action::Skip},
    {"pntext", Action::Skip},
    {"pntxta", Action::Skip},
    {"pntxtb", Action::Skip},
    {"revtbl", Action::Skip},
    {"rxe", Action::Skip},
    {"stylesheet", Action::Skip},
    {"subject", Action::Skip},
    {"tc", Action::Skip},
    {"template", Action::Skip},
    {"title", Action::Skip},
    {"txe", Action::Skip},
    {"version", Action::Skip},
    {"xe", Action::Skip},
};

constexpr std::size_t kSlots = 512;
constexpr std::uint8_t kFree = 0xFF;
static_assert(std::size(kWords) < kFree);

constexpr std::size_t SlotOf(std::uint32_t hash) {
    return (hash ^ hash >> 9) % kSlots;
}

// Indices into the words, each at the slot of its hash or the next free one.
constexpr std::array<std::uint8_t, kSlots> kIndex = [] {
    std::array<std::uint8_t, kSlots> index{};
    index.fill(kFree);
    for (std::size_t i = 0; i < std::size(kWords); ++i) {
        std::uint32_t hash = 0;
        for (const char letter : kWords[i].name)
            hash = HashLetter(hash, letter);
        std::size_t slot = SlotOf(hash);
        while (index[slot] != kFree)
            slot = (slot + 1) % kSlots;
        index[slot] = static_cast<std::uint8_t>(i);
    }
    return index;
}();

}  // namespace

const Word* FindWord(std::string_view name, std::uint32_t hash) noexcept {
    for (std::size_t slot = SlotOf(hash); kIndex[slot] != kFree; slot = (slot + 1) % kSlots)
        if (kWords[kIndex[slot]].name == name) return &kWords[kIndex[slot]];
    return nullptr;
}

}  // namespace brcore8::rtf
