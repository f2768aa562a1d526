#include "text/rtf_reader.h"

#include <algorithm>
#include <array>

#include "platform/code_pages.h"
#include "text/rtf_bytes.h"
#include "text/rtf_control.h"
#include "text/rtf_picture.h"
#include "text/rtf_rows.h"

namespace brcore8::rtf {
namespace {

constexpr char16_t kNoBreakSpace = 0xA0;
constexpr char16_t kNoBreakHyphen = 0x2011;
constexpr std::size_t kMargin = 16;
constexpr std::int64_t kMostSkipped = UINT16_MAX;

// Bytes that stand for themselves in every page but those of symbol fonts.
constexpr std::array<bool, 256> kPlain = [] {
    std::array<bool, 256> plain{};
    for (int c = 1; c < 0x80; ++c)
        plain[static_cast<std::size_t>(c)] = true;
    for (const unsigned char c : {'{', '}', '\\', '\r', '\n'})
        plain[c] = false;
    return plain;
}();

// What a closing brace takes back.
struct State {
    std::uint16_t page = kNoPage;
    std::uint16_t skippedAfterUnicode = 1;
    bool inTable = false;
    bool describesNestedRow = false;
    std::uint8_t nesting = 0;

    bool operator==(const State&) const = default;
    int RowDepth() const { return inTable ? std::max<int>(1, nesting) : 0; }
};

// The states to return to. Groups that change nothing share one entry, so that braces alone,
// however deep, take no memory.
class States {
public:
    void Open(const State& state) {
        ++depth_;
        if (saved_.Size() > 0 && Last().state == state)
            ++Last().groups;
        else
            saved_.Append(Saved{state, 1});
    }
    State Close() noexcept {
        --depth_;
        const State state = Last().state;
        if (--Last().groups == 0) saved_.RemoveLast();
        return state;
    }
    std::size_t Depth() const noexcept { return depth_; }

private:
    struct Saved {
        State state;
        std::size_t groups;
    };
    Saved& Last() noexcept { return saved_[saved_.Size() - 1]; }

    RichBuffer<Saved> saved_;
    std::size_t depth_ = 0;
};

// Every unit of the text answers for a byte of the document, so room for as many units as there
// are bytes left is always enough, and the loops over text never look at the room; only rows of
// tables, which add units of their own, do.
class Reader {
public:
    Reader(std::string_view rtf, RichBuffer<char16_t>& text)
        : at_(rtf.data()), end_(at_ + rtf.size()), text_(text), documentPage_(SystemPage()) {
        state_.page = documentPage_;
        decoder_.SetPage(documentPage_);
        MakeRoom(0);
    }

    void Read();

private:
    static std::uint16_t SystemPage() { return static_cast<std::uint16_t>(DefaultAnsiCodePage()); }

    // --- text
    void ReadText();
    void PutByte(unsigned char byte);
    void PutUnit(char16_t unit);
    void EndParagraph();
    void EndLine() noexcept;
    void MakeRoom(std::size_t more);
    void FlushBytes() noexcept { out_ = decoder_.Flush(out_); }

    // --- groups
    void Open() { states_.Open(state_), ++at_; }
    bool Close();
    void SkipGroup() noexcept { at_ = FindGroupEnd(at_, end_); }

    // --- controls
    void ReadControl();
    void ReadSymbol(char symbol);
    void ReadHex();
    void ReadStarred();
    void Obey(const Word& word, const ControlWord& control);
    void ObeyFont(const Word& word, const ControlWord& control);
    void ObeyTable(const Word& word, const ControlWord& control);
    void PutUnicode(std::int64_t number);
    void PutPicture();

    // --- fonts
    bool InFontTable() const noexcept { return fontTableDepth_ != 0; }
    void DescribeFont(const Word& word, std::int64_t number);
    void SetFont(std::int64_t font);
    void SetPage(std::uint16_t page);
    void SetDocumentPage(std::int64_t page);
    std::uint16_t PageOf(std::int64_t font) const noexcept;

    // --- tables
    void EnterRows();
    void EndPart(Action action);
    void EndCell();
    void EndRow();
    bool InRow() const noexcept { return state_.RowDepth() > 0 || rows_.Depth() > 0; }

    const char* at_;
    const char* const end_;
    RichBuffer<char16_t>& text_;
    char16_t* out_ = nullptr;
    std::size_t paragraph_ = 0;      // where the paragraph at hand begins
    std::size_t lastParagraph_ = 0;  // where the last one that a mark ended does; 0 when none did

    State state_;
    States states_;
    ByteDecoder decoder_;
    FontPages fonts_;
    std::size_t fontTableDepth_ = 0;
    std::int64_t tableFont_ = 0;  // that which the font table describes
    bool tableFontHasPage_ = false;
    std::int64_t defaultFont_ = 0;
    std::uint16_t documentPage_;
    bool fontChosen_ = false;
    std::size_t skip_ = 0;  // characters that stand for a UTF-16 unit already taken
    Rows rows_;
};

void Reader::Read() {
    while (at_ < end_) {
        if (*at_ == '\\')
            ReadControl();
        else if (*at_ == '{')
            skip_ = 0, Open();
        else if (*at_ != '}')
            ReadText();
        else if (!Close())
            break;
    }
    FlushBytes();
    std::size_t size = static_cast<std::size_t>(out_ - text_.Data());
    // The last paragraph's own mark sets nothing apart.
    if (lastParagraph_ != 0 && size == lastParagraph_) size -= 2;
    text_.SetEnd(text_.Data() + size);
}

// --- text --------------------------------------------------------------------------------------

void Reader::ReadText() {
    const bool asIs =
        skip_ == 0 && decoder_.TakesAscii() && !InFontTable() && rows_.Depth() >= state_.RowDepth();
    if (asIs && kPlain[static_cast<unsigned char>(*at_)]) {
        const char* p = at_;
        char16_t* out = out_;
        do
            *out++ = static_cast<unsigned char>(*p++);
        while (p < end_ && kPlain[static_cast<unsigned char>(*p)]);
        at_ = p;
        out_ = out;
        return;
    }
    const char byte = *at_++;
    if (byte != '\r' && byte != '\n') PutByte(static_cast<unsigned char>(byte));
}

void Reader::PutByte(unsigned char byte) {
    if (skip_ > 0) {
        --skip_;
        return;
    }
    if (byte == 0 || InFontTable()) return;
    EnterRows();
    out_ = decoder_.Put(byte, out_);
}

void Reader::PutUnit(char16_t unit) {
    if (InFontTable()) return;
    FlushBytes();
    EnterRows();
    *out_++ = unit;
}

// A paragraph that ends between rows is text, and one inside a row is text of its cell.
void Reader::EndParagraph() {
    if (InFontTable()) return;
    FlushBytes();
    EnterRows();
    EndLine();
    lastParagraph_ = paragraph_;
}

void Reader::EndLine() noexcept {
    *out_++ = '\r';
    *out_++ = '\n';
    paragraph_ = static_cast<std::size_t>(out_ - text_.Data());
}

void Reader::MakeRoom(std::size_t more) {
    if (out_) text_.SetEnd(out_);
    out_ = text_.Reserve(static_cast<std::size_t>(end_ - at_) + more + kMargin);
}

// --- groups ------------------------------------------------------------------------------------

// False at the brace that ends the document.
bool Reader::Close() {
    ++at_;
    skip_ = 0;
    if (states_.Depth() <= 1) return false;
    const bool fontTableEnds = states_.Depth() == fontTableDepth_;
    const State outer = states_.Close();
    SetPage(outer.page);
    state_ = outer;
    if (!fontTableEnds) return true;
    fontTableDepth_ = 0;
    if (!fontChosen_) SetPage(PageOf(defaultFont_));
    return true;
}

// --- controls ----------------------------------------------------------------------------------

void Reader::ReadControl() {
    if (end_ - at_ < 2) {
        at_ = end_;
        return;
    }
    if (!IsLetter(at_[1])) {
        ReadSymbol(at_[1]);
        return;
    }
    const ControlWord control = ReadWord(at_, end_);
    at_ = control.end;
    skip_ = 0;
    FlushBytes();
    if (const Word* word = FindWord(control.name, control.hash)) Obey(*word, control);
}

void Reader::ReadSymbol(char symbol) {
    if (symbol == '\'') {
        ReadHex();
        return;
    }
    at_ += 2;
    switch (symbol) {
        case '\\':
        case '{':
        case '}':
        case ':':
            PutByte(static_cast<unsigned char>(symbol));
            return;
        case '*':
            ReadStarred();
            return;
        case '\r':
            if (at_ < end_ && *at_ == '\n') ++at_;
            [[fallthrough]];
        case '\n':
            EndParagraph();
            break;
        case '~':
            PutUnit(kNoBreakSpace);
            break;
        case '_':
            PutUnit(kNoBreakHyphen);
            break;
        default:
            break;
    }
    skip_ = 0;
}

void Reader::ReadHex() {
    const int high = end_ - at_ > 2 ? HexValue(at_[2]) : -1;
    const int low = end_ - at_ > 3 ? HexValue(at_[3]) : -1;
    if (high < 0 || low < 0) {
        at_ += 2;
        return;
    }
    at_ += 4;
    const auto byte = static_cast<unsigned char>(high * 16 + low);
    // Line ends have a meaning as controls only.
    PutByte(byte == '\r' || byte == '\n' ? 0 : byte);
}

// Behind `\*`: what is unknown, or no text, hides the rest of its group.
void Reader::ReadStarred() {
    skip_ = 0;
    while (at_ < end_ && (*at_ == '\r' || *at_ == '\n'))
        ++at_;
    const bool word = end_ - at_ > 1 && *at_ == '\\' && IsLetter(at_[1]);
    const ControlWord control = word ? ReadWord(at_, end_) : ControlWord();
    if (!word || !FindWord(control.name, control.hash)) SkipGroup();
}

void Reader::Obey(const Word& word, const ControlWord& control) {
    switch (word.action) {
        case Action::None:
            break;
        case Action::Unit:
            PutUnit(word.value);
            break;
        case Action::Break:
            EndParagraph();
            break;
        case Action::Unicode:
            PutUnicode(control.number);
            break;
        case Action::UnicodeSkip:
            state_.skippedAfterUnicode = static_cast<std::uint16_t>(
                std::clamp<std::int64_t>(control.number, 0, kMostSkipped));
            break;
        case Action::Binary:
            at_ += control.Count(static_cast<std::size_t>(end_ - at_));
            break;
        case Action::Picture:
            PutPicture();
            break;
        case Action::Skip:
            SkipGroup();
            break;
        default:
            ObeyFont(word, control);
            break;
    }
}

void Reader::PutUnicode(std::int64_t number) {
    const auto unit = static_cast<char16_t>(static_cast<std::uint64_t>(number) & 0xFFFF);
    if (unit == '\r' || unit == '\n')
        EndParagraph();
    else if (unit != 0)
        PutUnit(unit);
    skip_ = state_.skippedAfterUnicode;
}

// A blank stands for a picture, as it does for any object in a control's plain text.
void Reader::PutPicture() {
    const char* const picture = at_;
    SkipGroup();
    if (HoldsPicture(picture, at_)) PutUnit(' ');
}

// --- fonts -------------------------------------------------------------------------------------

void Reader::ObeyFont(const Word& word, const ControlWord& control) {
    switch (word.action) {
        case Action::Font:
            SetFont(control.number);
            break;
        case Action::Plain:
            if (!InFontTable()) SetPage(PageOf(defaultFont_));
            break;
        case Action::DefaultFont:
            defaultFont_ = control.number;
            break;
        case Action::FontTable:
            if (!InFontTable()) fontTableDepth_ = states_.Depth();
            break;
        case Action::FontCharset:
        case Action::FontPage:
            if (InFontTable()) DescribeFont(word, control.number);
            break;
        case Action::Page:
            SetDocumentPage(word.value != 0 ? word.value : control.number);
            break;
        default:
            ObeyTable(word, control);
            break;
    }
}

// The page that a font names itself is known better than that of its character set.
void Reader::DescribeFont(const Word& word, std::int64_t number) {
    if (word.action == Action::FontPage && HasPage(number)) {
        fonts_.Set(tableFont_, static_cast<std::uint16_t>(number));
        tableFontHasPage_ = true;
    } else if (word.action == Action::FontCharset && !tableFontHasPage_) {
        const std::uint16_t page = PageOfCharset(number);
        fonts_.Set(tableFont_, page != kNoPage ? page : documentPage_);
    }
}

void Reader::SetFont(std::int64_t font) {
    if (InFontTable()) {
        tableFont_ = font;
        tableFontHasPage_ = false;
        fonts_.Set(font, documentPage_);
    } else if (const std::uint16_t page = fonts_.Find(font)) {
        fontChosen_ = true;
        SetPage(page);
    }
}

void Reader::SetPage(std::uint16_t page) {
    if (page != decoder_.Page()) {
        FlushBytes();
        decoder_.SetPage(page);
    }
    state_.page = page;
}

void Reader::SetDocumentPage(std::int64_t page) {
    if (!HasPage(page)) return;
    documentPage_ = static_cast<std::uint16_t>(page);
    if (!fontChosen_) SetPage(documentPage_);
}

std::uint16_t Reader::PageOf(std::int64_t font) const noexcept {
    const std::uint16_t page = fonts_.Find(font);
    return page != kNoPage ? page : documentPage_;
}

// --- tables ------------------------------------------------------------------------------------

void Reader::ObeyTable(const Word& word, const ControlWord& control) {
    switch (word.action) {
        case Action::ParagraphDefaults:
            state_.inTable = false;
            state_.nesting = 0;
            break;
        case Action::InTable:
            state_.inTable = true;
            break;
        case Action::Nesting:
            state_.nesting = static_cast<std::uint8_t>(
                std::clamp<std::int64_t>(control.number, 0, Rows::kDeepest));
            break;
        case Action::NestedRowProperties:
            state_.describesNestedRow = true;
            break;
        case Action::RowDefaults:
            rows_.StartEdges(state_.describesNestedRow);
            break;
        case Action::CellEdge:
            rows_.AddEdge();
            break;
        default:
            if (InRow()) EndPart(word.action);
            break;
    }
}

void Reader::EndPart(Action action) {
    EnterRows();
    const bool nested = action == Action::NestedCell || action == Action::NestedRow;
    if (!nested) rows_.LeaveTo(1);
    if (action == Action::Cell || action == Action::NestedCell)
        EndCell();
    else if (!nested || rows_.Depth() > 1)
        EndRow();
}

// A row begins before its first paragraph, with a paragraph mark of its own.
void Reader::EnterRows() {
    const int depth = state_.RowDepth();
    if (rows_.Depth() >= depth) return;
    const auto marks = static_cast<std::size_t>(depth - rows_.Depth());
    MakeRoom(2 * marks);
    char16_t* const start = text_.Data() + paragraph_;
    std::copy_backward(start, out_, out_ + 2 * marks);
    for (std::size_t i = 0; i < marks; ++i) {
        start[2 * i] = '\r';
        start[2 * i + 1] = '\n';
        rows_.Enter();
    }
    out_ += 2 * marks;
    paragraph_ += 2 * marks;
}

void Reader::EndCell() {
    rows_.CountCell();
    EndLine();
}

// Cells that the row has by its edges and nobody filled are empty ones.
void Reader::EndRow() {
    const bool open = out_ != text_.Data() + paragraph_;
    if (open) rows_.CountCell();
    const std::size_t marks = (open ? 1 : 0) + rows_.MissingCells() + 1;
    MakeRoom(2 * marks);
    for (std::size_t i = 0; i < marks; ++i)
        EndLine();
    rows_.Leave();
}

}  // namespace

void ReadText(std::string_view rtf, RichBuffer<char16_t>& text) {
    Reader(rtf, text).Read();
}

}  // namespace brcore8::rtf
