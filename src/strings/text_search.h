// Looking for one text in another, once or for every place where it stands.
#ifndef BRCORE8_SRC_STRINGS_TEXT_SEARCH_H
#define BRCORE8_SRC_STRINGS_TEXT_SEARCH_H

#include <cstddef>
#include <string_view>

#include "strings/code_page.h"

namespace brcore8::mbs {

// What a zero byte in the searched text is: a character like any other, or its end. In the latter
// case one must also stand where the text's length ends.
enum class Zero { IsText, EndsText };

// Takes time linear in both lengths. It learns how common the sought text's first byte is, so that
// going on with the same search is faster than beginning another.
class ExactSearch {
public:
    // `what` is not empty.
    ExactSearch(const CodePage& page, std::string_view what, const char* text, const char* end,
                Zero zero) noexcept
        : page_(page),
          what_(what),
          text_(text),
          end_(end),
          clean_(text),
          tries_(end - text < kRare ? 1 : 0),
          endsAtZero_(zero == Zero::EndsText) {}

    // The first place at or behind `from`, where a character begins; null when there is none.
    const char* Next(const char* from) noexcept;

private:
    // The C library's search for one byte is the fastest there is where that byte stands this far
    // from the next such byte, but not worth its call in a text as short.
    static constexpr int kRare = 256;

    const char* Candidate(const char* p, const char* last) noexcept;
    const char* Confirmed(const char* found) const noexcept;

    const CodePage& page_;
    std::string_view what_;
    const char* text_;
    const char* end_;
    const char* clean_;  // no zero byte stands before it
    std::size_t tries_;  // searches for the first byte alone
    std::size_t spent_ = 0;
    bool limited_ = true;
    bool endsAtZero_;
};

}  // namespace brcore8::mbs

#endif
