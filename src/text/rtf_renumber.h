// Renumbering the references of a body, by whatever control words a caller knows.
#ifndef BRCORE8_SRC_TEXT_RTF_RENUMBER_H
#define BRCORE8_SRC_TEXT_RTF_RENUMBER_H

#include <brcore8/containers/map.h>
#include <brcore8/strings/string.h>

#include <span>
#include <string_view>

namespace brcore8::rtf {

// A control word whose number refers to a table.
struct Reference {
    enum Table { Font, Color };
    std::string_view word;
    Table to;
};

// The body with each number that its map holds replaced, and every other byte as it was.
SString Renumber(const SString& body, std::span<const Reference> references,
                 const SMap<int, int>& fonts, const SMap<int, int>& colors);

}  // namespace brcore8::rtf

#endif
