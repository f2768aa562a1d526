// The four iterators of SString: characters, lines, words and parts.
//
// Each refers to the string itself, not to a copy, and must not outlive it. The string may change:
// an iterator whose place is no longer in the text stands at its end. Assigning an iterator
// takes over the other's position and writes the other's string into the string it refers to;
// that is why they are no iterators of the standard library. For range-for, string_views.h has
// views of the same items.
//
//     for (SString::line_iterator line(text); line; ++line) Use(*line);
#ifndef BRCORE8_STRINGS_STRING_ITERATORS_H
#define BRCORE8_STRINGS_STRING_ITERATORS_H

#include <brcore8/strings/string.h>

// Walks the characters.
class BRCORE8_API SString::const_iterator {
public:
    // At character `index`, clamped to the text; below 1 is the start.
    const_iterator(const SString& text, int index = 0) noexcept;
    const_iterator(const const_iterator&) noexcept = default;
    // Takes the position, then assigns the other's string to the string referred to.
    const_iterator& operator=(const const_iterator& other);

    // The character code: the byte taken unsigned, or the lead byte taken signed times 256 plus
    // the trail byte; 0 at the end.
    int operator*() const noexcept;
    // One character on, never beyond the terminator.
    const_iterator& operator++() noexcept;
    const_iterator operator++(int) noexcept;
    const_iterator& operator+=(unsigned long count) noexcept;
    // Whether there is a character here: its byte is not zero.
    operator bool() const noexcept;

    bool operator==(const const_iterator& other) const noexcept;
    bool operator!=(const const_iterator& other) const noexcept;
    bool operator<(const const_iterator& other) const noexcept;
    bool operator<=(const const_iterator& other) const noexcept;
    bool operator>(const const_iterator& other) const noexcept;
    bool operator>=(const const_iterator& other) const noexcept;

    const char* GetPointer() const noexcept;
    void reset() noexcept;
    int IsWhitespace() const noexcept;
    int IsEoln() const noexcept;  // carriage return or line feed
    // The position as a byte offset from the start, and back, limited to the text.
    unsigned int SaveState() const noexcept;
    void RestoreState(unsigned int offset) noexcept;

private:
    friend class SString::item_iterator;

    const char* End() const noexcept { return string_->text_ + string_->LengthByte(); }
    // Where it stands now: the end when a change of the string took its place away.
    const char* Position() const noexcept;

    SString* string_;
    const char* position_;
};

// What the three that follow share: an item of the text, from its start to its end. `++` goes to
// the next item, `reset` back to the first.
class BRCORE8_API SString::item_iterator {
public:
    // The item as a string of its own.
    SString operator*() const;
    // Whether there is an item here: it does not start at the end of the text.
    operator bool() const noexcept;
    bool operator==(const item_iterator& other) const noexcept;
    bool operator!=(const item_iterator& other) const noexcept;
    const char* GetPointer() const noexcept;

protected:
    explicit item_iterator(const SString& text) noexcept : start_(text), end_(text) {}
    template <class Cut>
    void First(const Cut& cut) noexcept;
    template <class Cut>
    void Advance(const Cut& cut) noexcept;

    const_iterator start_;
    const_iterator end_;
};

// Walks the lines. A line ends before a CR or LF; stepping on skips one CR, if it stands there,
// then one LF. A text that ends with a line end yields no further empty line.
class BRCORE8_API SString::line_iterator : public item_iterator {
public:
    explicit line_iterator(const SString& text) noexcept;
    line_iterator& operator++() noexcept;
    line_iterator operator++(int) noexcept;
    void reset() noexcept;
};

// Walks the words: maximal runs of characters that are no spaces. The first word starts at the
// very beginning, so that leading spaces give a first empty word.
class BRCORE8_API SString::word_iterator : public item_iterator {
public:
    explicit word_iterator(const SString& text) noexcept;
    word_iterator& operator++() noexcept;
    word_iterator operator++(int) noexcept;
    void reset() noexcept;
};

// Walks the parts between single separator characters: "a,,b" has three, the second one empty. A
// separator at the very end yields no final empty part.
class BRCORE8_API SString::parts_iterator : public item_iterator {
public:
    parts_iterator(const SString& text, unsigned int separator) noexcept;
    parts_iterator& operator++() noexcept;
    parts_iterator operator++(int) noexcept;
    void reset() noexcept;

private:
    std::uint32_t separator_;
};

#endif
