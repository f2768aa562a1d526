// Paths of registry keys: names with "\" between them.
#ifndef BRCORE8_PLATFORM_KEY_PATH_H
#define BRCORE8_PLATFORM_KEY_PATH_H

#include <cstddef>
#include <string_view>

namespace brcore8 {

constexpr std::size_t kMaxKeyName = 255;
constexpr int kMaxLevels = 512;

// Takes the next name off the path; false at its end. Backslashes in a row are one. A trail byte of
// the process's code page is none.
bool NextName(const char*& path, std::string_view& name) noexcept;

// The number of names in the path; -1 when one is too long, or when there are too many.
int CountNames(const char* path) noexcept;

}  // namespace brcore8

#endif
