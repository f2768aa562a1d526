// Paths in the platform's own sense. posix/paths.cpp and windows/paths.cpp answer.
#ifndef BRCORE8_PLATFORM_PATHS_H
#define BRCORE8_PLATFORM_PATHS_H

#include <cstddef>

namespace brcore8 {

// The longest path of the interfaces that keep one in an array, and its terminator.
constexpr std::size_t PathSize = 260;

// Completes a path with the current folder and takes "." and ".." out of it. False, and an empty
// text, when it does not fit.
bool FullPath(const char* path, char (&full)[PathSize]) noexcept;

}  // namespace brcore8

#endif
