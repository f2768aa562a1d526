// What folders hold, read once: for those who look for many names in the same few folders.
#ifndef BRCORE8_PLATFORM_FOLDER_LISTING_H
#define BRCORE8_PLATFORM_FOLDER_LISTING_H

#include <span>

#include "core/checked_allocator.h"

namespace brcore8 {

// The names in a folder as the system has them, in no order; none when it cannot be read.
// posix/module_search.cpp and windows/module_search.cpp answer. Throws SEOutOfMemory.
CheckedVector<CheckedText> ReadFolder(const char* folder);

// One thread at a time. What changes in a folder after it was read first is not seen. Throws
// SEOutOfMemory.
class FolderListings {
public:
    // The names in the folder that are this one but for the case of letters of ASCII (of others
    // nobody knows the code page), in the order of their bytes.
    std::span<const CheckedText> Find(const char* folder, const char* name);

private:
    struct Listing {
        CheckedText folder;
        CheckedVector<CheckedText> names;  // by folded names, then by bytes
    };
    const Listing& Of(const char* folder);

    CheckedVector<Listing> listings_;
};

}  // namespace brcore8

#endif
