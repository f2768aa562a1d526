// What a log asks of the C library and the system: a low-level file that only grows.
// posix/log_files.cpp and windows/log_files.cpp answer.
#ifndef BRCORE8_PLATFORM_LOG_FILES_H
#define BRCORE8_PLATFORM_LOG_FILES_H

#include <cstddef>

namespace brcore8 {

// Opens or makes a regular file for appending, emptied first where that is asked, without ever
// waiting for another process. Returns a descriptor, or -1.
int OpenLog(const char* path, bool truncate) noexcept;
void CloseLog(int descriptor) noexcept;

// Adds the bytes in one piece where the system takes them so. False when not all were written.
bool AppendToLog(int descriptor, const char* data, std::size_t size) noexcept;
// Moves to the beginning, where nothing is ever written.
void RewindLog(int descriptor) noexcept;
// Returns when the content is on the disk.
void CommitLog(int descriptor) noexcept;

}  // namespace brcore8

#endif
