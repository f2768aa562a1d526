// A set of characters of one code page, for asking about every character of a long text.
#ifndef BRCORE8_STRINGS_CHAR_SET_H
#define BRCORE8_STRINGS_CHAR_SET_H

#include <brcore8/containers/table.h>

#include <algorithm>
#include <string_view>

#include "strings/mbs.h"

namespace brcore8 {

class CharSet {
public:
    // Throws SEOutOfMemory.
    CharSet(const CodePage& page, std::string_view characters) {
        const char* const end = characters.data() + characters.size();
        for (const char* p = characters.data(); p < end; p += mbs::CharBytes(page, p, end)) {
            const unsigned code = mbs::UnsignedCodeAt(page, p, end);
            if (code < 256)
                bytes_[code] = true;
            else
                pairs_.Add(code);
        }
        std::sort(pairs_.begin(), pairs_.end());
    }

    // By unsigned code: a byte, or lead * 256 + trail.
    bool Contains(unsigned code) const noexcept {
        return code < 256 ? bytes_[code] : std::binary_search(pairs_.begin(), pairs_.end(), code);
    }

private:
    bool bytes_[256] = {};
    STable<unsigned> pairs_;
};

}  // namespace brcore8

#endif
