// Where the characters of an edit field are, and how they are painted.
//
// Characters are measured one by one, each once: a line's width is a sum. Only the lines that show
// are measured for painting, and of them only what shows is drawn.

#include <brcore8/platform/posix/control_calls.h>

#include <algorithm>

#include "platform/posix/desktop/controls/edit.h"
#include "strings/mbs.h"

namespace brcore8::desktop {

namespace {

// No line is wider.
constexpr int kFarthest = 1 << 30;

}  // namespace

bool Edit::IsWrapping() const noexcept {
    return HasLines() && (Style() & ES_AUTOHSCROLL) == 0;
}

void Edit::Remeasure() {
    const TEXTMETRICA metrics = ControlMeasure(Font()).Metrics();
    lineHeight_ = std::max<int>(metrics.tmHeight, 1);
    averageWidth_ = std::max<int>(metrics.tmAveCharWidth, 1);
    widths_.fill(-1);
    pairWidths_.clear();
    LayOut();
}

void Edit::LayOut() {
    if (!IsAlive()) return;
    EditText::Fit fit;
    if (IsWrapping())
        fit = [this](std::size_t begin, std::size_t end) { return FitLine(begin, end); };
    text_.SetLayout(HasLines(), std::move(fit));
    text_.LayOut();
    firstLine_ = std::min(firstLine_, text_.LineCount() - 1);
    UpdateBars();
    Repaint();
    PlaceCaret();
}

// --- Measures -----------------------------------------------------------------------------------

int Edit::WidthOf(std::size_t at, std::size_t bytes) const {
    const char* const text = password_ != 0 ? &password_ : text_.Get().data() + at;
    const auto byte = static_cast<unsigned char>(*text);
    if (bytes == 1 || password_ != 0) {
        short& width = widths_[byte];
        if (width < 0) width = static_cast<short>(ControlMeasure(Font()).Width(text, 1));
        return width;
    }
    const unsigned code = byte * 256u + static_cast<unsigned char>(text[1]);
    const auto known = std::lower_bound(pairWidths_.begin(), pairWidths_.end(), std::pair(code, 0));
    if (known != pairWidths_.end() && known->first == code) return known->second;
    return pairWidths_.insert(known, {code, ControlMeasure(Font()).Width(text, 2)})->second;
}

int Edit::NextTab(int x) const noexcept {
    const auto pixels = [this](std::int64_t units) {
        return static_cast<int>(std::clamp<std::int64_t>(units * averageWidth_ / 4, 1, kFarthest));
    };
    constexpr int kUsual = 32;
    if (tabStops_.size() > 1) {
        for (const int stop : tabStops_)
            if (pixels(stop) > x) return pixels(stop);
        return std::min(x + averageWidth_, kFarthest);
    }
    const int every = pixels(tabStops_.empty() ? kUsual : tabStops_[0]);
    return static_cast<int>(
        std::min<std::int64_t>((x / every + std::int64_t{1}) * every, kFarthest));
}

int Edit::Advance(int x, std::size_t at, std::size_t bytes) const {
    if (text_.Get()[at] == '\t' && password_ == 0) return NextTab(x);
    return std::min(x + WidthOf(at, bytes), kFarthest);
}

int Edit::WidthUpTo(std::size_t line, std::size_t at) const {
    int x = 0;
    for (std::size_t each = text_.LineStart(line); each < at;) {
        const std::size_t bytes = text_.Next(each) - each;
        x = Advance(x, each, bytes);
        each += bytes;
    }
    return x;
}

// Behind the last space before what is too long, else in the middle of the word.
std::size_t Edit::FitLine(std::size_t begin, std::size_t end) const {
    const RECT format = FormatRect();
    const int width = format.right - format.left;
    const std::string& text = text_.Get();
    const CodePage& page = CodePage::Ansi();
    std::size_t space = begin;
    int x = 0;
    for (std::size_t at = begin; at < end;) {
        const std::size_t bytes = mbs::CharBytes(page, text.data() + at, text.data() + end);
        x = Advance(x, at, bytes);
        const bool isSpace = text[at] == ' ' || text[at] == '\t';
        // Spaces may hang over.
        if (x > width && !isSpace && at > begin) return space > begin ? space : at;
        at += bytes;
        if (isSpace) space = at;
    }
    return end;
}

RECT Edit::FormatRect() const noexcept {
    if (format_) return *format_;
    RECT rect = ClientRect();
    InflateRect(&rect, -1, -1);
    rect.left += marginLeft_;
    rect.right = std::max(rect.right - marginRight_, rect.left);
    return rect;
}

int Edit::VisibleLines() const noexcept {
    const RECT format = FormatRect();
    return std::max((format.bottom - format.top) / lineHeight_, 1);
}

std::int64_t Edit::LastFirstLine() const noexcept {
    return std::max(static_cast<std::int64_t>(text_.LineCount()) - VisibleLines(),
                    static_cast<std::int64_t>(firstLine_));
}

int Edit::LineLeft(std::size_t line) const {
    const RECT format = FormatRect();
    const DWORD alignment = Style() & (ES_CENTER | ES_RIGHT);
    if (alignment == 0) return format.left - scrollX_;
    const int rest = std::max(format.right - format.left - WidthUpTo(line, text_.LineEnd(line)), 0);
    return format.left - scrollX_ + (alignment == ES_CENTER ? rest / 2 : rest);
}

POINT Edit::PlaceOf(std::size_t at) const {
    const std::size_t line = text_.LineOf(at);
    const auto below = static_cast<std::int64_t>(line) - static_cast<std::int64_t>(firstLine_);
    return {LineLeft(line) + WidthUpTo(line, at),
            static_cast<LONG>(FormatRect().top +
                              std::clamp<std::int64_t>(below, -10000, 10000) * lineHeight_)};
}

// The nearest gap between characters.
std::size_t Edit::CharacterInLine(std::size_t line, int x) const {
    const int left = LineLeft(line);
    const std::size_t end = text_.LineEnd(line);
    int from = 0;
    for (std::size_t at = text_.LineStart(line); at < end;) {
        const std::size_t bytes = text_.Next(at) - at;
        const int to = Advance(from, at, bytes);
        if (left + from + (to - from) / 2 > x) return at;
        from = to;
        at += bytes;
    }
    return text_.LastPlace(line);
}

std::size_t Edit::CharacterAt(POINT point) const {
    const int rows = point.y - FormatRect().top;
    const std::int64_t line = static_cast<std::int64_t>(firstLine_) +
                              (rows < 0 ? (rows + 1) / lineHeight_ - 1 : rows / lineHeight_);
    const auto last = static_cast<std::int64_t>(text_.LineCount()) - 1;
    return CharacterInLine(static_cast<std::size_t>(std::clamp<std::int64_t>(line, 0, last)),
                           point.x);
}

// --- Scrolling ----------------------------------------------------------------------------------

void Edit::ScrollTo(std::int64_t line, int x) {
    const auto last = static_cast<std::int64_t>(text_.LineCount()) - 1;
    const auto wanted = static_cast<std::size_t>(std::clamp<std::int64_t>(line, 0, last));
    const int across = std::max(x, 0);
    if (wanted == firstLine_ && across == scrollX_) return;
    const bool goesAlong = wanted != firstLine_;
    firstLine_ = wanted;
    scrollX_ = across;
    UpdateBars();
    Repaint();
    PlaceCaret();
    if (HasLines()) Notify(goesAlong ? EN_VSCROLL : EN_HSCROLL);
}

void Edit::ScrollCaret() {
    const RECT format = FormatRect();
    const auto line = static_cast<std::int64_t>(text_.LineOf(caret_));
    auto first = static_cast<std::int64_t>(firstLine_);
    const std::int64_t rows = VisibleLines();
    first = std::clamp(first, std::max<std::int64_t>(line - rows + 1, 0), line);
    int across = scrollX_;
    const int width = format.right - format.left;
    if (!IsWrapping() && width > 0) {
        const int x = LineLeft(text_.LineOf(caret_)) + scrollX_ - format.left +
                      WidthUpTo(text_.LineOf(caret_), caret_);
        // A third of the field shows beyond the caret.
        if (x < across) across = std::max(x - width / 3, 0);
        if (x > across + width) across = x - width + width / 3;
    }
    ScrollTo(first, across);
}

// How many lines it went, and that it may.
LRESULT Edit::ScrollBy(WPARAM what) {
    const auto old = static_cast<std::int64_t>(firstLine_);
    const std::int64_t rows = VisibleLines();
    const auto last =
        std::max<std::int64_t>(static_cast<std::int64_t>(text_.LineCount()) - rows, 0);
    std::int64_t wanted = old;
    switch (what) {
        case SB_LINEUP:
            wanted -= 1;
            break;
        case SB_LINEDOWN:
            wanted += 1;
            break;
        case SB_PAGEUP:
            wanted -= rows;
            break;
        case SB_PAGEDOWN:
            wanted += rows;
            break;
        case SB_TOP:
            wanted = 0;
            break;
        case SB_BOTTOM:
            wanted = last;
            break;
        default:
            return 0;
    }
    ScrollTo(std::clamp<std::int64_t>(wanted, 0, std::max(last, old)), scrollX_);
    return MAKELONG(static_cast<WORD>(static_cast<std::int64_t>(firstLine_) - old), 1);
}

void Edit::ScrollAcross(WPARAM what) {
    const RECT format = FormatRect();
    const int page = format.right - format.left;
    int x = scrollX_;
    switch (LOWORD(what)) {
        case SB_LINELEFT:
            x -= averageWidth_;
            break;
        case SB_LINERIGHT:
            x += averageWidth_;
            break;
        case SB_PAGELEFT:
            x -= page;
            break;
        case SB_PAGERIGHT:
            x += page;
            break;
        case SB_THUMBTRACK:
        case SB_THUMBPOSITION:
            x = TrackOf(SB_HORZ, HIWORD(what));
            break;
        default:
            return;
    }
    ScrollTo(static_cast<std::int64_t>(firstLine_), AcrossWithin(x));
}

int Edit::AcrossWithin(std::int64_t x) {
    const RECT format = FormatRect();
    const int last = std::max({WidestLine() - (format.right - format.left), scrollX_, 0});
    return static_cast<int>(std::clamp<std::int64_t>(x, 0, last));
}

int Edit::WidestLine() {
    return text_.Widest([this](std::size_t line) { return WidthUpTo(line, text_.LineEnd(line)); });
}

// Where the user holds the thumb, of which the message carries 16 bits; a message that a program
// made up is meant as it says.
int Edit::TrackOf(int bar, WORD carried) const noexcept {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_TRACKPOS;
    const bool isKnown = GetScrollInfo(Handle(), bar, &info) != 0;
    return isKnown && static_cast<WORD>(info.nTrackPos) == carried ? info.nTrackPos : carried;
}

// The bars stay, grey when there is nothing to scroll.
void Edit::UpdateBars() {
    const DWORD style = Style();
    if (!HasLines()) return;
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_ALL | SIF_DISABLENOSCROLL;
    if ((style & WS_VSCROLL) != 0) {
        info.nMax = static_cast<int>(std::min<std::size_t>(text_.LineCount() - 1, INT32_MAX));
        info.nPage = static_cast<UINT>(VisibleLines());
        info.nPos = static_cast<int>(firstLine_);
        SetScrollInfo(Handle(), SB_VERT, &info, 1);
    }
    if ((style & WS_HSCROLL) != 0) {
        const RECT format = FormatRect();
        info.nMax = WidestLine();
        info.nPage = static_cast<UINT>(std::max(format.right - format.left, 1));
        info.nPos = scrollX_;
        SetScrollInfo(Handle(), SB_HORZ, &info, 1);
    }
}

// --- Painting -----------------------------------------------------------------------------------

void Edit::Paint(WPARAM context) const {
    const ControlPaint paint(Handle(), Font(), context);
    const DWORD style = Style();
    const bool isField = (style & (ES_READONLY | WS_DISABLED)) == 0;
    const HBRUSH back = AskColors(paint.dc, isField ? WM_CTLCOLOREDIT : WM_CTLCOLORSTATIC);
    if (!IsAlive()) return;
    FillRect(paint.dc, &paint.client, back);
    if ((style & WS_DISABLED) != 0) SetTextColor(paint.dc, GetSysColor(COLOR_GRAYTEXT));
    SetBkMode(paint.dc, TRANSPARENT);
    const RECT format = FormatRect();
    IntersectClipRect(paint.dc, format.left, format.top, format.right, format.bottom);
    const bool showsSelection = hasFocus_ || (style & ES_NOHIDESEL) != 0;
    RECT box{};
    GetClipBox(paint.dc, &box);
    int top = format.top;
    for (std::size_t line = firstLine_; line < text_.LineCount() && top < box.bottom; ++line) {
        if (top + lineHeight_ > box.top) DrawLine(paint.dc, line, top, showsSelection);
        top += lineHeight_;
    }
}

// From the first character that shows to the last one, in runs that end where the selection does.
void Edit::DrawLine(HDC dc, std::size_t line, int top, bool showsSelection) const {
    const RECT format = FormatRect();
    const std::size_t end = text_.LineEnd(line);
    std::size_t at = text_.LineStart(line);
    int x = LineLeft(line);
    const int left = x;
    while (at < end) {
        const std::size_t next = text_.Next(at);
        const int right = left + Advance(x - left, at, next - at);
        if (right > format.left) break;
        x = right;
        at = next;
    }
    const std::size_t from = SelectionBegin();
    const std::size_t to = SelectionEnd();
    const std::string& text = text_.Get();
    while (at < end && x < format.right) {
        const bool isSelected = showsSelection && at >= from && at < to;
        const std::size_t edge = at < from ? from : at < to ? to : end;
        const std::size_t until = showsSelection ? std::min(edge, end) : end;
        if (text[at] == '\t' && password_ == 0) {
            const int right = left + NextTab(x - left);
            if (isSelected) FillWith(dc, {x, top, right, top + lineHeight_}, COLOR_HIGHLIGHT);
            x = right;
            ++at;
            continue;
        }
        std::size_t stop = at;
        int width = 0;
        while (stop < until && x + width < format.right && (text[stop] != '\t' || password_ != 0)) {
            const std::size_t next = text_.Next(stop);
            width += WidthOf(stop, next - stop);
            stop = next;
        }
        x = DrawRun(dc, at, stop, x, top, isSelected);
        at = stop;
    }
}

int Edit::DrawRun(HDC dc, std::size_t begin, std::size_t end, int x, int top,
                  bool isSelected) const {
    std::string run;
    int right = x;
    for (std::size_t at = begin; at < end;) {
        const std::size_t next = text_.Next(at);
        right += WidthOf(at, next - at);
        if (password_ != 0)
            run += password_;
        else
            run.append(text_.Get(), at, next - at);
        at = next;
    }
    const COLORREF old = SetTextColor(dc, 0);
    SetTextColor(dc, isSelected ? GetSysColor(COLOR_HIGHLIGHTTEXT) : old);
    if (isSelected) FillWith(dc, {x, top, right, top + lineHeight_}, COLOR_HIGHLIGHT);
    TextOutA(dc, x, top, run.data(), static_cast<int>(run.size()));
    SetTextColor(dc, old);
    return right;
}

}  // namespace brcore8::desktop
