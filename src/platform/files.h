// What the streams ask of the C library and the system beyond the names of platform.h: files
// above 2 GiB, links, terminals. posix/stdio.cpp and windows/stdio.cpp answer.
#ifndef BRCORE8_PLATFORM_FILES_H
#define BRCORE8_PLATFORM_FILES_H

#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

namespace brcore8 {

// fopen that refuses folders on every platform; null on failure.
std::FILE* OpenStream(const char* path, const char* mode) noexcept;

// fseek and ftell with 64 bits. Tell returns -1 where there is no position.
bool SeekStream(std::FILE* stream, std::int64_t offset, int origin) noexcept;
std::int64_t TellStream(std::FILE* stream) noexcept;

// The file that a path names once every symbolic link is followed; the path itself where that
// cannot be told. Throws std::bad_alloc.
std::string FinalPath(const char* path);

// The content of a regular file as memory that can only be read, and its size; null, and 0, when
// there is none. The file itself is closed. Opening waits for nobody.
const void* MapFile(const char* path, std::int64_t& size) noexcept;
bool UnmapFile(const void* data, std::int64_t size) noexcept;

// The characters that separate folders in a path.
extern const char kFolderSeparators[];

// Whether the path is a symbolic link, or another entry that leads elsewhere.
bool IsLink(const char* path) noexcept;

// Permissions are those of owner, group and others, rwxrwxrwx in nine bits; where files have none
// such they mean nothing.

// Makes an empty file that is not there yet, with these permissions less those that new files do
// not get, but open to its owner; false when it is there, even as a link to nowhere, or cannot be
// made.
bool MakeNewFile(const char* path, unsigned permissions) noexcept;
// Takes all other permissions from a file.
void LimitPermissions(const char* path, unsigned permissions) noexcept;
// Gives a folder that is no link its time of change, in steps of 100 ns since 1601-01-01, unless it
// is 0, and takes all other permissions from it but its owner's. What cannot be set stays.
void FinishFolder(const char* path, std::uint64_t fileTime, unsigned permissions) noexcept;

// Whether a file can bear this name, without slashes, and a listing of its folder then shows it.
bool IsPlainFileName(std::string_view name) noexcept;

// The columns of the terminal that standard error is; 0 when it is none.
int ErrorTerminalWidth() noexcept;

}  // namespace brcore8

#endif
