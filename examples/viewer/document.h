// What the viewer shows: the text of a file, whatever kind it is of.
#ifndef BRCORE8_EXAMPLES_VIEWER_DOCUMENT_H
#define BRCORE8_EXAMPLES_VIEWER_DOCUMENT_H

#include <brcore8/strings/string.h>

#include <cstdint>
#include <functional>

namespace viewer {

// Told how much is done of how much; false stops the work.
using Progress = std::function<bool(std::uint64_t done, std::uint64_t total)>;

struct Document {
    enum class Kind { None, Text, Rtf, Archive, Entry };

    Kind kind = Kind::None;
    SString path;
    SString entry;  // of an archive, the one shown
    SString text;   // lines end with CR LF
    const char* format = "";
    std::uint64_t size = 0;  // bytes read; of an archive, those of all entries
    int entries = 0;
};

// Reads a file. Text is recognised by its mark, or as UTF-8 by its bytes; RTF and archives by how
// they begin. Throws what the library throws, SEIOAbortedException when it was stopped.
Document ReadDocument(const SString& path, const Progress& progress);

// Reads one entry of an archive, by its number in the list.
Document ReadEntry(const SString& path, int index, const Progress& progress);

}  // namespace viewer

#endif
