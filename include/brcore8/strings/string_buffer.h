// SStringBuffer: a string for building long texts out of many appends.
//
// Its buffer grows by a factor, so that an append costs constant time on average, and stays its
// own: converting to SString hands out a right-sized copy. It is an SString and may be passed as
// one; appending leaves its characters uncounted, so that Length counts them at every call.
// Threads: one buffer serves one thread at a time.
// Errors: SEOutOfMemory when there is no memory or the text would exceed MaxBytes; the text is
// then what it was before.
//
//     SStringBuffer list(1024);               // small texts: start small
//     for (const char* name : names) (list += name) += '\n';
//     SString text = list;
#ifndef BRCORE8_STRINGS_STRING_BUFFER_H
#define BRCORE8_STRINGS_STRING_BUFFER_H

#include <brcore8/strings/string.h>

#include <concepts>
#include <string_view>

class BRCORE8_API SStringBuffer : public SString {
public:
    enum : std::uint32_t { DefaultInitialSize = 0x40000 };

    // ---- Create -------------------------------------------------------------------------------

    // Empty, with Reset of the given values; no buffer is allocated before the first append.
    SStringBuffer() { Reset(); }
    explicit SStringBuffer(unsigned int initial) { Reset(initial, 0, 0); }
    SStringBuffer(unsigned int initial, unsigned int numerator, unsigned int denominator) {
        Reset(initial, numerator, denominator);
    }
    SStringBuffer(unsigned int numerator, unsigned int denominator) {
        Reset(0, numerator, denominator);
    }
    // The same, then the text assigned.
    explicit SStringBuffer(const SString& text) : SStringBuffer() { *this = text; }
    SStringBuffer(const SString& text, unsigned int initial) : SStringBuffer(initial) {
        *this = text;
    }
    SStringBuffer(const SString& text, unsigned int initial, unsigned int numerator,
                  unsigned int denominator)
        : SStringBuffer(initial, numerator, denominator) {
        *this = text;
    }
    SStringBuffer(const SString& text, unsigned int numerator, unsigned int denominator)
        : SStringBuffer(numerator, denominator) {
        *this = text;
    }
    // The text in a buffer of just its length, and how the other grows.
    SStringBuffer(const SStringBuffer& other);
    SStringBuffer& operator=(const SStringBuffer& other);

    // ---- Set up -------------------------------------------------------------------------------

    // Empties the text and sets the size in bytes of the first buffer (0: DefaultInitialSize) and
    // the factor by which it grows, numerator / denominator (0: 5 and 3). A factor that would not
    // make the initial size greater is replaced by 5/3. The shorter forms keep what they do not
    // name; the one without arguments takes every default.
    void Reset() noexcept { Reset(0, 0, 0); }
    void Reset(unsigned int initial) noexcept;
    void Reset(unsigned int numerator, unsigned int denominator) noexcept;
    void Reset(unsigned int initial, unsigned int numerator, unsigned int denominator) noexcept;

    // ---- Change -------------------------------------------------------------------------------
    // The text may be a part of this buffer's own.

    // Replace the text; null is empty. A large enough buffer is kept.
    SStringBuffer& operator=(const SString& text) { return Assign(text.View()); }
    SStringBuffer& operator=(const char* text) { return Assign(ViewOf(text)); }
    SStringBuffer& operator=(std::string_view text) { return Assign(text); }

    // Append; null appends nothing.
    SStringBuffer& operator+=(const SString& text) { return Append(text.View()); }
    SStringBuffer& operator+=(const char* text) { return Append(ViewOf(text)); }
    SStringBuffer& operator+=(std::string_view text) { return Append(text); }
    SStringBuffer& operator+=(char character) {
        char* const text = text_;
        SStringData* const data = DataOf(text);
        const std::int32_t bytes = data->bytes;
        if (bytes >= data->capacity || IsShared()) return AppendByte(character);
        text[bytes] = character;
        text[bytes + 1] = 0;
        // After the text: in this order the next append has its header soonest.
        data->characters = 0;
        data->bytes = bytes + 1;
        return *this;
    }
    // One character, as SString takes it: two bytes for a double-byte code of the process's page.
    SStringBuffer& operator+=(unsigned int character);
    SStringBuffer& operator+=(int character) { return *this += static_cast<unsigned>(character); }
    // Append the bytes from `begin` up to `end`, or `bytes` bytes; nothing when a pointer is null
    // or there are none.
    void Concat(const char* begin, const char* end);
    void Concat(const char* text, int bytes);

    // Empties the text and keeps the buffer, so that appends need no new one.
    void Clear() noexcept;

    // ---- Read ---------------------------------------------------------------------------------

    // The text as a right-sized string of its own, its characters counted. The same as
    // constructing an SString from this buffer, which is what a conversion compiles to; a template
    // because compilers warn of a plain conversion function to a base class.
    template <std::same_as<SString> Text>
    operator Text() const {
        return SString(*this);
    }

    unsigned int GetInitialSize() const noexcept { return initial_; }
    int GetNumerator() const noexcept { return numerator_; }
    int GetDenominator() const noexcept { return denominator_; }

private:
    static std::string_view ViewOf(const char* text) noexcept {
        return text ? std::string_view(text) : std::string_view();
    }
    SStringBuffer& Assign(std::string_view text);
    SStringBuffer& Append(std::string_view text);
    SStringBuffer& AppendByte(char character);
    std::int64_t Grown(std::int64_t capacity, std::int64_t needed) const noexcept;

    std::uint32_t initial_ = 0;
    std::int32_t numerator_ = 0;
    std::int32_t denominator_ = 0;
};
static_assert(sizeof(void*) != 4 || sizeof(SStringBuffer) == 16);

#endif
