// Views of a text for range-for: its characters, lines, words and parts, cut by the same rules as
// SString's iterators (see string_iterators.h) in the process's code page.
//
// A view refers to the text, which must outlive it and stay as it is; nothing is copied. The text
// is any std::string_view; a zero byte in it is a character like any other.
// Threads: any number may walk one text. Nothing here throws.
//
//     for (std::string_view line : SLines(text)) Use(line);
//     for (std::string_view field : SParts("a,,b", ',')) Use(field);       // "a", "", "b"
#ifndef BRCORE8_STRINGS_STRING_VIEWS_H
#define BRCORE8_STRINGS_STRING_VIEWS_H

#include <brcore8/platform/export.h>

#include <cstddef>
#include <iterator>
#include <string_view>

namespace brcore8 {

// How a text is cut: where the item that starts at `p` ends, and where the one after an item that
// ends at `p` starts. `end` is the end of the text.
struct BRCORE8_API LineCut {
    static const char* EndOf(const char* p, const char* end) noexcept;
    static const char* After(const char* p, const char* end) noexcept;
    bool operator==(const LineCut&) const = default;
};
struct BRCORE8_API WordCut {
    static const char* EndOf(const char* p, const char* end) noexcept;
    static const char* After(const char* p, const char* end) noexcept;
    bool operator==(const WordCut&) const = default;
};
struct BRCORE8_API PartCut {
    const char* EndOf(const char* p, const char* end) const noexcept;
    const char* After(const char* p, const char* end) const noexcept;
    bool operator==(const PartCut&) const = default;

    unsigned int separator = 0;
};

// The items of a text as string views.
template <class Cut>
class ItemView {
public:
    class iterator {
    public:
        using iterator_category = std::forward_iterator_tag;
        using value_type = std::string_view;
        using difference_type = std::ptrdiff_t;
        using reference = std::string_view;
        using pointer = const std::string_view*;

        iterator() = default;
        iterator(const Cut& cut, const char* start, const char* end)
            : cut_(cut), start_(start), stop_(cut.EndOf(start, end)), end_(end) {}

        std::string_view operator*() const {
            return {start_, static_cast<std::size_t>(stop_ - start_)};
        }
        iterator& operator++() {
            start_ = cut_.After(stop_, end_);
            stop_ = cut_.EndOf(start_, end_);
            return *this;
        }
        iterator operator++(int) {
            iterator old = *this;
            ++*this;
            return old;
        }
        bool operator==(const iterator& other) const = default;

    private:
        [[no_unique_address]] Cut cut_;
        const char* start_ = nullptr;
        const char* stop_ = nullptr;
        const char* end_ = nullptr;
    };
    using const_iterator = iterator;

    explicit ItemView(std::string_view text, const Cut& cut = Cut()) : text_(text), cut_(cut) {}
    iterator begin() const { return iterator(cut_, text_.data(), text_.data() + text_.size()); }
    iterator end() const {
        return iterator(cut_, text_.data() + text_.size(), text_.data() + text_.size());
    }

private:
    std::string_view text_;
    [[no_unique_address]] Cut cut_;
};

}  // namespace brcore8

// Lines without their ends: CR, LF or CR LF. A line end at the very end yields no further line.
using SLines = brcore8::ItemView<brcore8::LineCut>;

// Words between spaces; spaces at the start yield a first empty word.
using SWords = brcore8::ItemView<brcore8::WordCut>;

// Parts between single separator characters; one at the very end yields no further part.
class SParts : public brcore8::ItemView<brcore8::PartCut> {
public:
    SParts(std::string_view text, unsigned int separator) : ItemView(text, {separator}) {}
    SParts(std::string_view text, char separator)
        : SParts(text, static_cast<unsigned int>(static_cast<unsigned char>(separator))) {}
};

// Character codes: the byte, or the lead byte taken as signed times 256 plus the trail byte.
class SCharacters {
public:
    class BRCORE8_API iterator {
    public:
        using iterator_category = std::forward_iterator_tag;
        using value_type = int;
        using difference_type = std::ptrdiff_t;
        using reference = int;
        using pointer = const int*;

        iterator() = default;
        iterator(const char* position, const char* end) : position_(position), end_(end) {}

        int operator*() const noexcept;
        iterator& operator++() noexcept;
        iterator operator++(int) noexcept {
            iterator old = *this;
            ++*this;
            return old;
        }
        bool operator==(const iterator& other) const = default;
        // Where the character stands.
        const char* GetPointer() const noexcept { return position_; }

    private:
        const char* position_ = nullptr;
        const char* end_ = nullptr;
    };
    using const_iterator = iterator;

    explicit SCharacters(std::string_view text) : text_(text) {}
    iterator begin() const { return iterator(text_.data(), text_.data() + text_.size()); }
    iterator end() const {
        return iterator(text_.data() + text_.size(), text_.data() + text_.size());
    }

private:
    std::string_view text_;
};

#endif
