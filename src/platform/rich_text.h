// The platform's rich-text engine, which reads and writes RTF. windows/rich_text.cpp asks the
// system's rich-edit control, posix/rich_text.cpp the library's own reader and writer; the same
// documents give the same text on both.
//
// One engine serves one thread: the one that opened it. Everything here throws SEOutOfMemory and
// then leaves the output as far as it got.
#ifndef BRCORE8_PLATFORM_RICH_TEXT_H
#define BRCORE8_PLATFORM_RICH_TEXT_H

#include <brcore8/core/throw.h>

#include <cstddef>
#include <cstring>
#include <string_view>

namespace brcore8 {

// A growing array of bytes, units or the like, in memory of which every allocation is checked.
template <class T>
class RichBuffer {
public:
    RichBuffer() = default;
    ~RichBuffer() { Release(data_); }
    RichBuffer(const RichBuffer&) = delete;
    RichBuffer& operator=(const RichBuffer&) = delete;

    T* Data() noexcept { return data_; }
    const T* Data() const noexcept { return data_; }
    T& operator[](std::size_t index) noexcept { return data_[index]; }
    std::size_t Size() const noexcept { return size_; }

    // Room for `count` more, uninitialised; the first of them. SetEnd says how far it was filled.
    T* Reserve(std::size_t count) {
        if (capacity_ - size_ < count) Grow(size_ + count);
        return data_ + size_;
    }
    void SetEnd(const T* end) noexcept { size_ = static_cast<std::size_t>(end - data_); }

    void Append(const T* values, std::size_t count) {
        if (count == 0) return;
        std::memcpy(Reserve(count), values, count * sizeof(T));
        size_ += count;
    }
    void Append(const T& value) { Append(&value, 1); }
    void RemoveLast() noexcept { --size_; }

private:
    void Grow(std::size_t needed) {
        const std::size_t larger = capacity_ + capacity_ / 2;
        const std::size_t capacity = needed < larger ? larger : needed;
        data_ = static_cast<T*>(Reallocate(data_, capacity * sizeof(T)));
        capacity_ = capacity;
    }

    T* data_ = nullptr;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
};

struct RichText;

// A new engine, to be closed by the same thread; null when the system refuses one.
RichText* OpenRichText();
void CloseRichText(RichText* engine) noexcept;

// The plain text of a document that begins with `{\rtf`. Paragraphs are set apart by CR LF, the
// last one has none; zero units are left out. Malformed documents are read as far as they go.
void ReadRtf(RichText& engine, std::string_view rtf, RichBuffer<char16_t>& text);

// A document that reads back as `text`, in which CR LF sets paragraphs apart.
void WriteRtf(RichText& engine, std::u16string_view text, RichBuffer<char>& rtf);

// A document as the engine writes it after having read it: whole, and with the same text.
void RewriteRtf(RichText& engine, std::string_view rtf, RichBuffer<char>& written);

}  // namespace brcore8

#endif
