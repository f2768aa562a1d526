// A pattern, a line end, a text: the wildcard match must agree with the textbook's table.
#include <brcore8/strings/string.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz.h"

namespace {

constexpr int AnyRun = -1;
constexpr int AnyOne = -2;

std::vector<int> ParsePattern(std::string_view pattern) {
    std::vector<int> parsed;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        if (pattern[i] == '*') {
            parsed.push_back(AnyRun);
        } else if (pattern[i] == '?') {
            parsed.push_back(AnyOne);
        } else if (pattern[i] != '\\') {
            parsed.push_back(static_cast<unsigned char>(pattern[i]));
        } else if (++i < pattern.size()) {
            parsed.push_back(static_cast<unsigned char>(pattern[i]));
        }
    }
    return parsed;
}

bool TextbookMatch(std::string_view pattern, std::string_view text) {
    std::vector<bool> reached(text.size() + 1, false);
    reached[0] = true;
    for (const int part : ParsePattern(pattern)) {
        std::vector<bool> next(text.size() + 1, false);
        if (part == AnyRun) next[0] = reached[0];
        for (std::size_t i = 0; i < text.size(); ++i) {
            if (part == AnyRun)
                next[i + 1] = reached[i + 1] || next[i];
            else if (part == AnyOne || part == static_cast<unsigned char>(text[i]))
                next[i + 1] = reached[i];
        }
        reached = next;
    }
    return reached[text.size()];
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string input(reinterpret_cast<const char*>(data), size);
    const std::size_t end = std::min(input.find('\n'), size);
    const std::string pattern = input.substr(0, end).c_str();  // up to a zero byte, as Match does
    const std::string text = input.substr(std::min(end + 1, size)).c_str();
    const bool matches = SString(text.c_str()).Match(pattern.c_str()) != 0;
    if (matches != TextbookMatch(pattern, text)) std::abort();
    return 0;
}
