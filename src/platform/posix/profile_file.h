// The files of posix/profile.cpp. What makes something throws SEOutOfMemory or std::bad_alloc.
#ifndef BRCORE8_PLATFORM_POSIX_PROFILE_FILE_H
#define BRCORE8_PLATFORM_POSIX_PROFILE_FILE_H

#include <optional>
#include <string>
#include <string_view>

#include "platform/posix/ini_text.h"

namespace brcore8 {

// Where the file is: in the user's folder, which is made when `make` is set, unless the name has a
// folder of its own.
std::string ProfilePath(const char* file, bool make);

// Waits until no other writer is at work in the file's folder or at the file, at most five seconds.
class ProfileWriterLock {
public:
    explicit ProfileWriterLock(const std::string& path);
    ~ProfileWriterLock();
    ProfileWriterLock(const ProfileWriterLock&) = delete;
    ProfileWriterLock& operator=(const ProfileWriterLock&) = delete;

    bool IsHeld() const noexcept { return isHeld_; }

private:
    int folder_ = -1;
    int file_ = -1;
    bool isHeld_ = false;
};

enum class ProfileState { Whole, Missing, Unreadable };
ProfileState ReadProfileFile(const std::string& path, IniBytes& text);

// An empty file where there is none.
bool MakeProfileFile(const std::string& path) noexcept;

// The files read last, kept as long as they are the same. Any thread, one at a time.
class ProfileReader {
public:
    // Holds the reader's lock.
    explicit ProfileReader(const char* file);
    ~ProfileReader();
    ProfileReader(const ProfileReader&) = delete;
    ProfileReader& operator=(const ProfileReader&) = delete;

    // Nothing for a file that has no keys.
    std::string_view Text() const noexcept;
    std::optional<std::string_view> Find(const char* section, const char* key) const noexcept;

private:
    struct File;
    static File& FileOf(std::string path);

    File* file_ = nullptr;  // null for one that has no keys
};

}  // namespace brcore8

#endif
