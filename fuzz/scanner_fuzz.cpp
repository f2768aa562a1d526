// A byte for the code page, a byte of flags, a line of delimiters, keywords one a line up to an
// empty one, a text. Scanning must end, invent no bytes, and name only keywords of the table.
#include <brcore8/strings/multibyte.h>
#include <brcore8/text/scanner.h>
#include <brcore8/text/symbol_table.h>

#include <algorithm>
#include <cstdlib>
#include <string_view>

#include "fuzz.h"

namespace {

void Require(bool holds) {
    if (!holds) std::abort();
}

std::string_view TakeLine(std::string_view& text) {
    const std::size_t length = std::min(text.find('\n'), text.size());
    const std::string_view line = text.substr(0, length);
    text.remove_prefix(std::min(length + 1, text.size()));
    return line;
}

// Scans to the end and returns how many calls that took.
std::size_t ScanAll(SScanner& scanner, const SKeywordTable& keywords, std::size_t bytes) {
    std::size_t calls = 0;
    for (std::size_t left = bytes;; ++calls) {
        const long id = scanner.NextTokenID();
        const SString& token = scanner.token;
        Require(token.AssertValid() && id == scanner.tokenID && calls <= bytes + 1);
        if (id == SScanner::NoID && token.IsEmpty()) return calls;
        Require(token.View().size() <= left);
        left -= token.View().size();
        Require(id == SScanner::NoID || (id > 0 && id <= keywords.GetCount()));
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) return 0;
    _setmbcp(data[0] & 1 ? 932 : 1252);
    const int returned = data[1] & 1;
    const int added = data[1] >> 1 & 1;
    std::string_view rest(reinterpret_cast<const char*>(data) + 2, size - 2);
    SString delimiters(TakeLine(rest));
    SKeywordTable keywords;
    for (std::string_view word = TakeLine(rest); !word.empty(); word = TakeLine(rest))
        if (const SString key(word); !keywords.IsKeywordDefined(key))
            keywords.AddKeyword(key, keywords.GetCount() + 1);
    const SString text(rest);

    SScanner scanner;
    scanner.Init(text, &keywords, delimiters, returned, added);
    const std::size_t calls = ScanAll(scanner, keywords, rest.size());
    scanner.Init(text, &keywords, delimiters, returned, added);
    Require(ScanAll(scanner, keywords, rest.size()) == calls);
    scanner.Init(text, &keywords);
    scanner.NextTokenID();
    keywords.RemoveKeyword(scanner.token);
    scanner.SetDelimiters(delimiters, added, returned);
    keywords.Clear();
    ScanAll(scanner, keywords, rest.size());
    return 0;
}
