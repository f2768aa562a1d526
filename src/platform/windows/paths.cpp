#include "platform/paths.h"

#include <cstdlib>

namespace brcore8 {

bool FullPath(const char* path, char (&full)[PathSize]) noexcept {
    if (_fullpath(full, path, PathSize) != nullptr) return true;
    full[0] = '\0';
    return false;
}

}  // namespace brcore8
