// The documents of tests/text/documents, in the styles of different writers, and their plain text
// as the platform's rich-edit control answered it.
#ifndef BRCORE8_TESTS_SUPPORT_RTF_DOCUMENTS_H
#define BRCORE8_TESTS_SUPPORT_RTF_DOCUMENTS_H

#include <brcore8/strings/unicode.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

struct RtfDocumentFile {
    std::string name;
    std::string rtf;
    std::u16string text;
};

inline std::string ReadWholeFile(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// In the order of their names.
inline std::vector<RtfDocumentFile> RtfDocumentFiles() {
    std::vector<RtfDocumentFile> documents;
    for (const auto& entry : std::filesystem::directory_iterator(BRCORE8_DOCUMENTS)) {
        std::filesystem::path path = entry.path();
        if (path.extension() != ".rtf") continue;
        const std::string rtf = ReadWholeFile(path);
        const std::string name = path.stem().string();
        documents.push_back(
            {name, rtf, SUtf16FromUtf8(ReadWholeFile(path.replace_extension("txt")))});
    }
    std::sort(documents.begin(), documents.end(),
              [](const auto& left, const auto& right) { return left.name < right.name; });
    return documents;
}

#endif
