#include "archive/zip_names.h"

#include <brcore8/core/throw.h>
#include <brcore8/strings/multibyte.h>
#include <brcore8/strings/unicode.h>

#include "archive/zip_extents.h"
#include "platform/files.h"

#include <algorithm>
#include <functional>

namespace {

constexpr std::size_t kLongestName = 4095;
constexpr std::size_t kLongestPart = 255;

char ToUpper(char c) noexcept {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

bool EqualNoCase(std::string_view left, std::string_view right) noexcept {
    return std::ranges::equal(left, right, {}, ToUpper, ToUpper);
}

bool IsDriveLetter(char c) noexcept {
    return ToUpper(c) >= 'A' && ToUpper(c) <= 'Z';
}

// The system looks at what stands before the first dot, without blanks at its end.
bool IsDevice(std::string_view part) noexcept {
    std::string_view stem = part.substr(0, part.find_first_of(".:"));
    while (stem.ends_with(' '))
        stem.remove_suffix(1);
    for (const std::string_view name :
         {"CON", "PRN", "AUX", "NUL", "CONIN$", "CONOUT$", "CLOCK$"}) {
        if (EqualNoCase(stem, name)) return true;
    }
    if (stem.size() < 4 ||
        (!EqualNoCase(stem.substr(0, 3), "COM") && !EqualNoCase(stem.substr(0, 3), "LPT"))) {
        return false;
    }
    // Besides the digits their raised forms, in both encodings.
    const std::string_view number = stem.substr(3);
    if (number.size() == 1 && number[0] >= '0' && number[0] <= '9') return true;
    for (const std::string_view raised :
         {"\xB9", "\xB2", "\xB3", "\xC2\xB9", "\xC2\xB2", "\xC2\xB3"}) {
        if (number == raised) return true;
    }
    return false;
}

const char* PartFault(std::string_view part) noexcept {
    if (part.empty() || part == ".") return nullptr;
    if (part == "..") return "the name leads out of the folder";
    if (part.find_first_not_of(". ") == part.npos) return "a part of the name is only dots";
    if (part.size() > kLongestPart) return "the name is too long";
    if (IsDevice(part)) return "the name is reserved for a device";
    return brcore8::IsPlainFileName(part) ? nullptr : "no file can have this name";
}

// Calls `visit` with each part until it returns something.
template <typename Visit>
const char* VisitParts(std::string_view name, Visit visit) {
    for (std::size_t at = 0; at <= name.size();) {
        const std::size_t end = std::min(name.find('/', at), name.size());
        if (const char* const result = visit(name.substr(at, end - at))) return result;
        at = end + 1;
    }
    return nullptr;
}

// Letters whose cases file systems do not tell apart: Latin, Greek, Cyrillic.
char16_t Fold(char16_t c) noexcept {
    if ((c >= u'A' && c <= u'Z') || (c >= 0xC0 && c <= 0xDE && c != 0xD7) ||
        (c >= 0x391 && c <= 0x3A9) || (c >= 0x410 && c <= 0x42F)) {
        return static_cast<char16_t>(c + 0x20);
    }
    if (c >= 0x400 && c <= 0x40F) return static_cast<char16_t>(c + 0x50);
    const bool odd = (c >= 0x139 && c <= 0x148) || (c >= 0x179 && c <= 0x17E);
    if (odd) return static_cast<char16_t>(c + (c & 1));
    const bool pair = (c >= 0x100 && c <= 0x177) || (c >= 0x460 && c <= 0x481) ||
                      (c >= 0x48A && c <= 0x4BF) || (c >= 0x1E00 && c <= 0x1EFF);
    return pair ? static_cast<char16_t>(c | 1) : c;
}

std::string Folded(std::string_view path) {
    std::size_t malformed;
    std::u16string wide = SUtf16FromUtf8(path, &malformed);
    if (malformed != std::string_view::npos) wide = SUtf16FromText(path);
    std::ranges::transform(wide, wide.begin(), Fold);
    std::string folded = SUtf8FromUtf16(wide);
    std::ranges::replace(folded, '/', '\0');
    return folded;
}

}  // namespace

const char* SZipNameFault(std::string_view name) noexcept {
    if (name.empty()) return "the name is empty";
    if (name.size() > kLongestName) return "the name is too long";
    if (name.find('\0') != name.npos) return "the name holds a zero byte";
    if (name.front() == '/' || name.front() == '\\') return "the name is absolute";
    if (name.size() > 1 && name[1] == ':' && IsDriveLetter(name[0])) return "the name has a drive";
    if (name.find('\\') != name.npos) return "the name holds a backslash";
    if (const char* const fault = VisitParts(name, PartFault)) return fault;
    const bool nothing = name.find_first_not_of("./") == name.npos && !name.ends_with('/');
    return nothing ? "the name is empty" : nullptr;
}

namespace brcore8 {

std::string PlainPath(std::string_view name) {
    std::string path;
    VisitParts(name, [&](std::string_view part) -> const char* {
        if (part.empty() || part == ".") return nullptr;
        if (!path.empty()) path += '/';
        path += part;
        return nullptr;
    });
    return path;
}

void ZipNameSet::Add(std::string_view path, bool folder, int index) {
    constexpr std::size_t most = 24 << 20;
    std::string folded = Folded(path);
    bytes_ += folded.size();
    if (bytes_ > most) ThrowZipException("the names take too much memory");
    folded.shrink_to_fit();
    names_.push_back({std::move(folded), std::hash<std::string_view>()(path), index, folder});
}

// `next` comes after `name` in the order of the folded paths.
const char* ZipNameSet::Clash(const Name& name, const Name& next) noexcept {
    static constexpr char both[] = "the name is a file's and a folder's";
    if (name.folded == next.folded) {
        if (name.folder != next.folder) return both;
        if (name.folder) return nullptr;
        return name.hash == next.hash ? "the name stands twice"
                                      : "the name differs from another one in case alone";
    }
    const std::string_view beginning = std::string_view(next.folded).substr(0, name.folded.size());
    const bool within = beginning == name.folded && next.folded[name.folded.size()] == '\0';
    return within && !name.folder ? both : nullptr;
}

int ZipNameSet::FindClashes(const SZipReport& report) {
    std::ranges::sort(names_, [](const Name& left, const Name& right) {
        const int order = left.folded.compare(right.folded);
        return order != 0 ? order < 0 : left.index < right.index;
    });
    int clashes = 0;
    for (std::size_t i = 1; i < names_.size(); ++i) {
        const char* const clash = Clash(names_[i - 1], names_[i]);
        if (clash == nullptr) continue;
        std::string path = names_[i].folded;
        std::ranges::replace(path, '\0', '/');
        Report(report, names_[i].index, path, clash);
        ++clashes;
    }
    return clashes;
}

}  // namespace brcore8
