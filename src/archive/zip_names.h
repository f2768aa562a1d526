// Names of entries as names of files.
#ifndef BRCORE8_SRC_ARCHIVE_ZIP_NAMES_H
#define BRCORE8_SRC_ARCHIVE_ZIP_NAMES_H

#include <brcore8/archive/zip_extractor.h>

#include <string>
#include <string_view>
#include <vector>

namespace brcore8 {

// The parts of a name that passed SZipNameFault, joined with "/".
std::string PlainPath(std::string_view name);

// The names of an archive, to be compared with one another. Throws SEZipException "the names take
// too much memory", std::bad_alloc.
class ZipNameSet {
public:
    void Add(std::string_view path, bool folder, int index);
    // Reports every name that cannot stand beside another one, and returns how many.
    int FindClashes(const SZipReport& report);

private:
    struct Name {
        std::string folded;  // zero bytes in the place of slashes: a folder stands before its files
        std::size_t hash;    // of the path as it is
        int index;
        bool folder;
    };
    static const char* Clash(const Name& name, const Name& next) noexcept;

    std::vector<Name> names_;
    std::size_t bytes_ = 0;
};

}  // namespace brcore8

#endif
