// Cutting text in memory into lines, by the rules of the text streams, without losing a byte.
//
// One line end is: LF, or LF CR; a run of CR of any length, with one LF or none after it; in UTF-16
// text also U+2028. Every other unit, zero and 0xFF and 0x1A among them, is text. Text after the
// last line end is a line; nothing after it is none.
//
//     const std::string text = SReadAll(file);             // must outlive the lines
//     for (std::string_view line : STextLines(text)) ...
//
// Pure functions of their arguments: any thread, no memory, no errors.
#ifndef BRCORE8_STREAMS_TEXT_LINES_H
#define BRCORE8_STREAMS_TEXT_LINES_H

#include <brcore8/platform/export.h>

#include <cstddef>
#include <iterator>
#include <string_view>
#include <type_traits>

// Whether a line end may begin with this unit.
constexpr bool SIsLineEnd(char unit) noexcept {
    return unit == '\n' || unit == '\r';
}
constexpr bool SIsLineEnd(char16_t unit) noexcept {
    return unit == u'\n' || unit == u'\r' || unit == u'\u2028';
}

namespace brcore8 {

// SFindLineEnd at run time.
BRCORE8_API std::size_t FindLineEnd(std::string_view text, std::size_t from) noexcept;
BRCORE8_API std::size_t FindLineEnd(std::u16string_view text, std::size_t from) noexcept;

}  // namespace brcore8

// Where the first line end at or after `from` begins; the text's size when there is none.
template <typename Char>
constexpr std::size_t SFindLineEnd(std::basic_string_view<Char> text,
                                   std::size_t from = 0) noexcept {
    if (!std::is_constant_evaluated()) return brcore8::FindLineEnd(text, from);
    while (from < text.size() && !SIsLineEnd(text[from]))
        ++from;
    return from < text.size() ? from : text.size();
}

// How many units the line end at `at` has; 0 when none begins there.
template <typename Char>
constexpr std::size_t SLineEndLength(std::basic_string_view<Char> text, std::size_t at) noexcept {
    if (at >= text.size() || !SIsLineEnd(text[at])) return 0;
    std::size_t next = at + 1;
    if (text[at] == Char('\n')) {
        if (next < text.size() && text[next] == Char('\r')) ++next;
    } else if (text[at] == Char('\r')) {
        while (next < text.size() && text[next] == Char('\r'))
            ++next;
        if (next < text.size() && text[next] == Char('\n')) ++next;
    }
    return next - at;
}

// The lines of a text, without their ends, as a forward range of views into it.
template <typename Char>
class SBasicTextLines {
public:
    using View = std::basic_string_view<Char>;

    class iterator {
    public:
        using iterator_category = std::forward_iterator_tag;
        using value_type = View;
        using difference_type = std::ptrdiff_t;
        using pointer = const View*;
        using reference = View;

        constexpr iterator() noexcept = default;
        constexpr View operator*() const noexcept { return text_.substr(start_, end_ - start_); }
        constexpr iterator& operator++() noexcept {
            start_ = end_ + Terminator().size();
            end_ = SFindLineEnd(text_, start_);
            return *this;
        }
        constexpr iterator operator++(int) noexcept {
            const iterator old = *this;
            ++*this;
            return old;
        }
        constexpr bool operator==(const iterator& other) const noexcept {
            return start_ == other.start_;
        }

        // Where the line begins in the text, and its line end as written; empty only for a last
        // line without one.
        constexpr std::size_t Offset() const noexcept { return start_; }
        constexpr View Terminator() const noexcept {
            return text_.substr(end_, SLineEndLength(text_, end_));
        }

    private:
        friend class SBasicTextLines;
        constexpr iterator(View text, std::size_t start) noexcept
            : text_(text), start_(start), end_(SFindLineEnd(text, start)) {}

        View text_;
        std::size_t start_ = 0;
        std::size_t end_ = 0;
    };
    using const_iterator = iterator;

    constexpr explicit SBasicTextLines(View text) noexcept : text_(text) {}
    constexpr iterator begin() const noexcept { return iterator(text_, 0); }
    constexpr iterator end() const noexcept { return iterator(text_, text_.size()); }

private:
    View text_;
};

using STextLines = SBasicTextLines<char>;
using SWideTextLines = SBasicTextLines<char16_t>;

#endif
