// Writes a text whose length is known beforehand into the buffer of the string it becomes.
#ifndef BRCORE8_SRC_STRINGS_TEXT_WRITER_H
#define BRCORE8_SRC_STRINGS_TEXT_WRITER_H

#include <brcore8/strings/string.h>

#include <cstdint>
#include <string_view>
#include <utility>

#include "strings/copy_bytes.h"
#include "strings/mbs.h"

namespace brcore8 {

// Exactly so many bytes must be put before the text is taken.
class TextWriter : private SString {
public:
    // Throws SEOutOfMemory, also above SString::MaxBytes.
    explicit TextWriter(std::int64_t bytes) {
        AllocBuffer(bytes);
        out_ = text_;
    }

    void Put(std::string_view text) noexcept {
        CopyBytes(out_, text.data(), text.size());
        out_ += text.size();
    }

    SString Take() && noexcept {
        if (!IsEmpty()) {
            const auto bytes = static_cast<std::size_t>(LengthByte());
            GetData()->characters = mbs::Count(CodePage::Ansi(), text_, bytes);
        }
        return std::move(*this);
    }

private:
    char* out_;
};

}  // namespace brcore8

#endif
