// A template is a record, texts, and an item after the other, each on a multiple of four bytes:
//
//     plain:     style exStyle count:16 x y cx cy  menu class title [points:16 face]
//         item:  style exStyle x y cx cy id:16  class title  size:16 data
//     extended:  1:16 FFFF:16 help exStyle style count:16 x y cx cy  menu class title
//                [points:16 weight:16 italic:8 charset:8 face]
//         item:  help exStyle style x y cx cy id:32  class title  size:16 data
//
// Numbers are little-endian; places and sizes are 16 bits. A text ends with 0; FFFF and a number
// stand in the place of one, 0 for none. The size of plain data counts itself.

#include "platform/dialog_template.h"

namespace brcore8 {

namespace {

constexpr std::uint32_t kSetFont = 0x40;  // DS_SETFONT, which DS_SHELLFONT includes

class Reader {
public:
    Reader(const void* bytes, std::size_t size)
        : bytes_(static_cast<const unsigned char*>(bytes)), size_(size) {}

    bool IsGood() const noexcept { return isGood_; }
    const void* Here() const noexcept { return bytes_ + at_; }

    void Skip(std::size_t count) {
        if (count > size_ - at_) isGood_ = false;
        at_ = isGood_ ? at_ + count : size_;
    }
    // The last padding may be missing.
    void Align() {
        const std::size_t padding = (4 - at_ % 4) % 4;
        at_ = padding <= size_ - at_ ? at_ + padding : size_;
    }
    std::uint16_t Word() {
        const std::size_t from = at_;
        Skip(2);
        if (!isGood_) return 0;
        return static_cast<std::uint16_t>(bytes_[from] | bytes_[from + 1] << 8);
    }
    std::uint32_t Long() {
        const std::uint32_t low = Word();
        return low | std::uint32_t{Word()} << 16;
    }
    std::int16_t Short() { return static_cast<std::int16_t>(Word()); }

    std::u16string String() {
        std::u16string text;
        while (const std::uint16_t unit = Word())
            text += static_cast<char16_t>(unit);
        return text;
    }
    DialogText Text() {
        const std::uint16_t first = Word();
        if (first == 0) return {};
        if (first == 0xFFFF) return {{}, Word()};
        return {static_cast<char16_t>(first) + String(), 0};
    }

private:
    const unsigned char* bytes_;
    std::size_t size_;
    std::size_t at_ = 0;
    bool isGood_ = true;
};

template <class Placed>
void ReadPlace(Reader& reader, Placed& placed) {
    placed.x = reader.Short();
    placed.y = reader.Short();
    placed.cx = reader.Short();
    placed.cy = reader.Short();
}

DialogItem ReadItem(Reader& reader, bool isExtended) {
    DialogItem item;
    reader.Align();
    if (isExtended) reader.Long();
    const std::uint32_t first = reader.Long();
    const std::uint32_t second = reader.Long();
    item.style = isExtended ? second : first;
    item.exStyle = isExtended ? first : second;
    ReadPlace(reader, item);
    item.id = isExtended ? reader.Long() : reader.Word();
    item.className = reader.Text();
    item.title = reader.Text();
    const void* const data = reader.Here();
    const std::uint16_t size = reader.Word();
    if (size == 0) return item;
    item.data = data;
    if (!isExtended && size < 2) return item;
    reader.Skip(isExtended ? size : size - 2u);
    return item;
}

void ReadFont(Reader& reader, bool isExtended, DialogTemplate& made) {
    made.pointSize = reader.Word();
    // The font of message boxes, which is ours.
    if (made.pointSize == 0x7FFF) {
        made.pointSize = 0;
        return;
    }
    if (isExtended) {
        made.weight = reader.Word();
        made.isItalic = (reader.Word() & 0xFF) != 0;
    }
    made.face = reader.String();
}

}  // namespace

std::optional<DialogTemplate> ReadDialogTemplate(const void* bytes, std::size_t size) {
    Reader reader(bytes, size);
    DialogTemplate made;
    const std::uint32_t first = reader.Long();
    const bool isExtended = first == 0xFFFF0001;
    if (isExtended) reader.Long();
    if (isExtended) made.exStyle = reader.Long();
    made.style = isExtended ? reader.Long() : first;
    if (!isExtended) made.exStyle = reader.Long();
    const std::uint16_t count = reader.Word();
    ReadPlace(reader, made);
    made.menu = reader.Text();
    made.className = reader.Text();
    made.title = reader.String();
    if ((made.style & kSetFont) != 0) ReadFont(reader, isExtended, made);
    for (unsigned i = 0; i < count && reader.IsGood(); ++i)
        made.items.push_back(ReadItem(reader, isExtended));
    if (!reader.IsGood()) return std::nullopt;
    return made;
}

}  // namespace brcore8
