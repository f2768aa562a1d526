// Text on devices: bytes of the process's code page.

#include <brcore8/platform/posix/window_calls.h>
#include <brcore8/strings/multibyte.h>
#include <brcore8/strings/unicode.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <utility>

#include "platform/posix/desktop/device.h"

using namespace brcore8::desktop;

namespace {

std::string Utf8Of(const char* text, int length) {
    const std::string_view bytes = length < 0
                                       ? std::string_view(text)
                                       : std::string_view(text, static_cast<std::size_t>(length));
    return SUtf8FromUtf16(SUtf16FromText(bytes));
}

struct Line {
    std::string text;                      // without its ampersands
    std::size_t mark = std::string::npos;  // the byte to underline
};

// Takes single ampersands out; two stand for one.
Line WithoutPrefix(std::string_view text) {
    Line line;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '&' && i + 1 < text.size() && text[++i] != '&') line.mark = line.text.size();
        line.text += text[i];
    }
    return line;
}

// Spaces up to the next eighth column, in the place of every tab.
std::string WithoutTabs(std::string_view text) {
    std::string expanded;
    for (const char c : text)
        c == '\t' ? expanded.append(8 - expanded.size() % 8, ' ') : expanded.append(1, c);
    return expanded;
}

// Breaks a line between its words where it gets wider than that; a wider word stays whole.
void Break(const Line& line, const LOGFONTA& font, int width, std::vector<Line>& out) {
    std::size_t begin = 0;
    std::size_t end = std::min(line.text.find(' '), line.text.size());
    while (end < line.text.size()) {
        const std::size_t next = std::min(line.text.find(' ', end + 1), line.text.size());
        const std::string_view longer(line.text.data() + begin, next - begin);
        if (TheDisplay()->MeasureText(font, longer).cx > width) {
            out.push_back({line.text.substr(begin, end - begin), line.mark - begin});
            begin = end + 1;
        }
        end = next;
    }
    out.push_back({line.text.substr(begin), line.mark - begin});
}

std::vector<Line> LinesOf(const std::string& text, UINT format) {
    std::vector<Line> lines;
    std::size_t begin = 0;
    while (begin <= text.size()) {
        std::size_t end =
            (format & DT_SINGLELINE) != 0 ? std::string::npos : text.find('\n', begin);
        if (end == std::string::npos) end = text.size();
        std::string_view part(text.data() + begin, end - begin);
        if (!part.empty() && part.back() == '\r') part.remove_suffix(1);
        const std::string expanded =
            (format & DT_EXPANDTABS) != 0 ? WithoutTabs(part) : std::string(part);
        lines.push_back((format & DT_NOPREFIX) != 0 ? Line{expanded} : WithoutPrefix(expanded));
        begin = end + 1;
    }
    return lines;
}

std::vector<Line> BrokenLines(const std::vector<Line>& lines, const LOGFONTA& font, int width) {
    std::vector<Line> broken;
    for (const Line& line : lines)
        Break(line, font, width, broken);
    return broken;
}

// Shortens a line from its end until it fits with three dots behind it.
void Shorten(std::string& text, const LOGFONTA& font, int width) {
    if (TheDisplay()->MeasureText(font, text).cx <= width) return;
    std::size_t low = 0;
    std::size_t high = text.size();
    while (low < high) {
        std::size_t middle = (low + high + 1) / 2;
        // Whole characters alone can be measured.
        while (middle < high && (static_cast<unsigned char>(text[middle]) & 0xC0) == 0x80)
            ++middle;
        const bool fits =
            TheDisplay()->MeasureText(font, text.substr(0, middle) + "...").cx <= width;
        (fits ? low : high) = fits ? middle : middle - 1;
    }
    while (low > 0 && (static_cast<unsigned char>(text[low]) & 0xC0) == 0x80)
        --low;
    text.resize(low);
    text += "...";
}

void DrawRun(Device& device, const Region& clip, POINT at, const std::string& text) {
    const LOGFONTA& font = device.font;
    if (device.backMode == OPAQUE) {
        const SIZE size = TheDisplay()->MeasureText(font, text);
        device.surface->Fill(clip, {at.x, at.y, at.x + size.cx, at.y + size.cy}, device.backColor);
    }
    device.surface->Text(clip, at, font, text, device.textColor);
}

int Aligned(UINT format, UINT center, UINT far, int begin, int end, int size) noexcept {
    if ((format & center) != 0) return begin + (end - begin - size) / 2;
    return (format & far) != 0 ? end - size : begin;
}

void DrawLines(Device& device, const std::vector<Line>& lines, const RECT& rect, int height,
               UINT format) {
    const LOGFONTA& font = device.font;
    const RECT area = OnSurface(device, rect);
    Region clip = device.clip;
    if ((format & DT_NOCLIP) == 0) Intersect(clip, area);
    int y = area.top;
    if ((format & DT_SINGLELINE) != 0)
        y = Aligned(format, DT_VCENTER, DT_BOTTOM, area.top, area.bottom, height);
    for (const Line& line : lines) {
        std::string text = line.text;
        if ((format & DT_END_ELLIPSIS) != 0) Shorten(text, font, area.right - area.left);
        const int width = TheDisplay()->MeasureText(font, text).cx;
        const int x = Aligned(format, DT_CENTER, DT_RIGHT, area.left, area.right, width);
        DrawRun(device, clip, {x, y}, text);
        if (line.mark < text.size()) {
            const int from = TheDisplay()->MeasureText(font, text.substr(0, line.mark)).cx;
            const int wide = TheDisplay()->MeasureText(font, text.substr(line.mark, 1)).cx;
            const int under = y + TheDisplay()->MeasureFont(font).ascent + 1;
            device.surface->Fill(clip, {x + from, under, x + from + wide, under + 1},
                                 device.textColor);
        }
        y += height;
    }
}

template <class Call>
auto Guarded(Call call) noexcept -> decltype(call()) {
    try {
        return call();
    } catch (...) {
        return 0;
    }
}

}  // namespace

COLORREF SetTextColor(HDC context, COLORREF color) noexcept {
    Device* const device = DeviceOf(context);
    return device != nullptr ? std::exchange(device->textColor, color) : CLR_INVALID;
}

COLORREF SetBkColor(HDC context, COLORREF color) noexcept {
    Device* const device = DeviceOf(context);
    return device != nullptr ? std::exchange(device->backColor, color) : CLR_INVALID;
}

int SetBkMode(HDC context, int mode) noexcept {
    Device* const device = DeviceOf(context);
    return device != nullptr ? std::exchange(device->backMode, mode) : 0;
}

BOOL TextOutA(HDC context, int x, int y, const char* text, int length) noexcept {
    return ExtTextOutA(context, x, y, 0, nullptr, text, static_cast<UINT>(std::max(length, 0)),
                       nullptr);
}

BOOL ExtTextOutA(HDC context, int x, int y, UINT options, const RECT* rect, const char* text,
                 UINT length, const int*) noexcept {
    Device* const device = DrawableOf(context);
    if (device == nullptr) return 0;
    return Guarded([&] {
        Region clip = device->clip;
        if (rect != nullptr && (options & ETO_OPAQUE) != 0)
            device->surface->Fill(clip, OnSurface(*device, *rect), device->backColor);
        if (rect != nullptr && (options & ETO_CLIPPED) != 0)
            Intersect(clip, OnSurface(*device, *rect));
        if (length > 0)
            DrawRun(*device, clip, OnSurface(*device, POINT{x, y}),
                    Utf8Of(text, static_cast<int>(length)));
        return 1;
    });
}

int DrawTextA(HDC context, const char* text, int length, RECT* rect, UINT format) noexcept {
    Device* const device = DeviceOf(context);
    if (device == nullptr || TheDisplay() == nullptr) return 0;
    return Guarded([&] {
        std::vector<Line> lines = LinesOf(Utf8Of(text, length), format);
        const LOGFONTA& font = device->font;
        if ((format & DT_WORDBREAK) != 0 && (format & DT_SINGLELINE) == 0) {
            const RECT area = OnSurface(*device, *rect);
            lines = BrokenLines(lines, font, area.right - area.left);
        }
        int width = 0;
        for (const Line& line : lines)
            width = std::max<int>(width, TheDisplay()->MeasureText(font, line.text).cx);
        const FontMeasure measure = TheDisplay()->MeasureFont(font);
        const int height = measure.ascent + measure.descent;
        const int total = height * static_cast<int>(lines.size());
        if ((format & DT_CALCRECT) != 0) {
            rect->right = rect->left + width;
            rect->bottom = rect->top + total;
        } else if (device->surface != nullptr) {
            DrawLines(*device, lines, *rect, height, format);
        }
        return total;
    });
}

BOOL GetTextExtentPoint32A(HDC context, const char* text, int length, SIZE* size) noexcept {
    const Device* const device = DeviceOf(context);
    if (device == nullptr || TheDisplay() == nullptr) return 0;
    return Guarded([&] {
        const FontMeasure measure = TheDisplay()->MeasureFont(device->font);
        *size = TheDisplay()->MeasureText(device->font, Utf8Of(text, length));
        size->cy = measure.ascent + measure.descent;
        return 1;
    });
}

BOOL GetTextMetricsA(HDC context, TEXTMETRICA* metrics) noexcept {
    const Device* const device = DeviceOf(context);
    if (device == nullptr || TheDisplay() == nullptr) return 0;
    return Guarded([&] {
        const LOGFONTA& font = device->font;
        const FontMeasure measure = TheDisplay()->MeasureFont(font);
        *metrics = {};
        metrics->tmHeight = measure.ascent + measure.descent;
        metrics->tmAscent = measure.ascent;
        metrics->tmDescent = measure.descent;
        metrics->tmInternalLeading = static_cast<LONG>(
            std::max<std::int64_t>(0, metrics->tmHeight - std::abs(std::int64_t{font.lfHeight})));
        metrics->tmAveCharWidth = measure.averageWidth;
        metrics->tmMaxCharWidth = measure.averageWidth * 2;
        metrics->tmWeight = font.lfWeight > 0 ? font.lfWeight : 400;
        metrics->tmItalic = font.lfItalic;
        metrics->tmUnderlined = font.lfUnderline;
        metrics->tmStruckOut = font.lfStrikeOut;
        metrics->tmDigitizedAspectX = metrics->tmDigitizedAspectY =
            GetDeviceCaps(context, LOGPIXELSY);
        metrics->tmFirstChar = 32;
        metrics->tmLastChar = 255;
        metrics->tmBreakChar = 32;
        return 1;
    });
}
