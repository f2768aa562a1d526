// Where the platform finds the file of a module. windows/module_search.cpp asks the system;
// posix/module_search.cpp looks for names in any case.
#ifndef BRCORE8_PLATFORM_MODULE_SEARCH_H
#define BRCORE8_PLATFORM_MODULE_SEARCH_H

#include "platform/folder_listing.h"
#include "platform/paths.h"

namespace brcore8 {

// Finds regular files only, by names without a folder, and answers with a path that fits. One
// thread at a time. Throws SEOutOfMemory.
class ModuleSearch {
public:
    bool FindIn(const char* folder, const char* name, char (&path)[PathSize]);
    // In the platform's own order.
    bool Find(const char* name, char (&path)[PathSize]);

private:
    FolderListings listings_;
    CheckedVector<CheckedText> folders_;  // the system's, once they are listed
    int misses_ = 0;                      // names that the system was asked for in vain
};

}  // namespace brcore8

#endif
