// INI files as the platform has them, edited in place: what a file means and how it is written is
// told in brcore8/settings/profile.h. Any thread.
#ifndef BRCORE8_PLATFORM_POSIX_PROFILE_H
#define BRCORE8_PLATFORM_POSIX_PROFILE_H

#include "platform/posix/files.h"

// The key's value, or the default, null being the empty text. Without a key the names of the
// section's keys, without a section those of all sections, each with a terminator and one more
// behind the last. What does not fit into `size` bytes is cut and terminated. Returns the bytes
// written without the last terminator: at most size - 1, for names size - 2.
DWORD GetPrivateProfileStringA(const char* section, const char* key, const char* fallback,
                               char* out, DWORD size, const char* file) noexcept;

// Gives the key the value; with a null value deletes the key, with a null key the section. 1, also
// when there was nothing to delete; 0 when the file could not be written: it is then what it was.
BOOL WritePrivateProfileStringA(const char* section, const char* key, const char* value,
                                const char* file) noexcept;

#endif
