// The platform's rich-text engine, which reads and writes RTF. windows/rich_text.cpp asks the
// system's rich-edit control, posix/rich_text.cpp has a reader and a writer of its own; the same
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

// A growing array of bytes or units, in memory of which every allocation is checked.
template <class T>
class RichBuffer {
public:
    RichBuffer() = default;
    ~RichBuffer() { Release(data_); }
    RichBuffer(const RichBuffer&) = delete;
    RichBuffer& operator=(const RichBuffer&) = delete;

    const T* Data() const noexcept { return data_; }
    std::size_t Size() const noexcept { return size_; }
    std::basic_string_view<T> View() const noexcept { return {data_, size_}; }

    // Room for `count` more, uninitialised; Commit says how many were filled in.
    T* Reserve(std::size_t count) {
        if (capacity_ - size_ < count) Grow(size_ + count);
        return data_ + size_;
    }
    void Commit(std::size_t count) noexcept { size_ += count; }

    void Append(const T* values, std::size_t count) {
        if (count == 0) return;
        std::memcpy(Reserve(count), values, count * sizeof(T));
        size_ += count;
    }
    void Append(std::basic_string_view<T> values) { Append(values.data(), values.size()); }
    void Clear() noexcept { size_ = 0; }

private:
    void Grow(std::size_t needed) {
        const std::size_t larger = capacity_ + capacity_ / 2;
        capacity_ = needed < larger ? larger : needed;
        data_ = static_cast<T*>(Reallocate(data_, capacity_ * sizeof(T)));
    }

    T* data_ = nullptr;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
};

struct RichText;

// A new engine, to be closed by the same thread; null when the system has none.
RichText* OpenRichText();
void CloseRichText(RichText* engine) noexcept;

// The plain text of a document that begins with `{\rtf`. Paragraphs are set apart by CR LF, the
// last one has none; zero units are left out. Malformed documents are read as far as they go.
void ReadRtf(RichText& engine, std::string_view rtf, RichBuffer<char16_t>& text);

// A document that reads back as `text`.
void WriteRtf(RichText& engine, std::u16string_view text, RichBuffer<char>& rtf);

// A document as the engine writes it after having read it: whole, and with the same text.
void RewriteRtf(RichText& engine, std::string_view rtf, RichBuffer<char>& written);

}  // namespace brcore8

#endif
