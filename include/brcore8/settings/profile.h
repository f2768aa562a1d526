// SProfile: keys of one section of an INI file.
//
//     [Window]
//     Width = 640          ; blanks around names and values do not count
//     Title = "Drawing"    ; nor does one pair of quotes, " or ', around a value
//
// (Text behind a value belongs to it: only a line that begins with ";" is a remark.) Names are
// found in any case; of several sections or keys of one name the first counts. Keys before the
// first section belong to the section with the empty name.
//
// A file name without a folder means a file of the system's folder for INI files: the Windows
// folder there, elsewhere brcore8 in the user's configuration folder ($XDG_CONFIG_HOME, or
// ~/.config), which is made for the first file that is written there.
//
// On Windows the system's own functions read and write the file, and lay its blanks and line ends
// out anew when they write. Elsewhere a write changes the bytes of its key alone: byte-order mark,
// line ends, blanks, remarks, repeats and a missing last line end stay. A new key stands behind
// the last one of its section, a new section at the end of the file. What is deleted goes with its
// lines; an empty one stays at the file's beginning where the bytes behind it would become a
// byte-order mark. The file is replaced as one step and is on the disk when the write returns:
// whoever looks, and whatever breaks, finds the old content or the new one whole. Writers of this
// library, in any number of processes, wait for one another, each for at most five seconds, and
// lose nothing; readers never wait and see what was written last. A file of 2 GiB or more, or in
// UTF-16, has no keys and is not written.
//
// Names and values are bytes in the process's code page, up to their first zero byte. What could
// not be read back is refused: a line break in a name or a value; `]` in a section's name; `=` in a
// key's name, one that is empty or begins with `[`, `;` or a byte-order mark. Blanks at the ends of
// a value, and a pair of quotes around all of it, are written as they are and gone when it is read.
//
// Status: every operation returns a code of brcore8/settings/status.h and throws nothing. Where
// memory is short it is SettingsFailed, and the caller's variable stays as it was.
// Threads: an object serves one thread at a time; different objects, also on one file, any threads.
//
//     SProfile window("editor.ini", "Window", 0);
//     window.WriteProfile("Width", 640L);
//     long width = 0;
//     window.GetProfile("Width", &width, 320L);
#ifndef BRCORE8_SETTINGS_PROFILE_H
#define BRCORE8_SETTINGS_PROFILE_H

#include <brcore8/platform/export.h>
#include <brcore8/settings/status.h>
#include <brcore8/strings/string.h>

class SStringTable;

class BRCORE8_API SProfile {
public:
    // ---- Open ---------------------------------------------------------------------------------

    // Of no file: reading gives the defaults, writing fails.
    SProfile() noexcept = default;
    // Init. The last argument means nothing.
    SProfile(const SString& fileName, const SString& section, int create) {
        Init(fileName, section, create);
    }
    ~SProfile() { Done(); }
    SProfile(const SProfile&) = delete;
    SProfile& operator=(const SProfile&) = delete;

    // Takes the names; no file is touched. 0.
    long Init(const SString& fileName, const SString& section, int create);
    // Forgets the names. 0.
    long Done();

    const SString& GetFileName() const noexcept { return fileName_; }
    const SString& GetSection() const noexcept { return section_; }

    // ---- Write: 0 or SettingsNotWritten -------------------------------------------------------

    // "Yes" or "No".
    long WriteProfile(const SString& key, int value);
    // The number's decimal digits.
    long WriteProfile(const SString& key, long value);
    long WriteProfile(const SString& key, const SString& value);

    // Whether what would be written reads back, blanks and quotes at the ends of the value apart:
    // 1 or 0. Nothing else is written.
    int Accepts(const SString& key, const SString& value) const noexcept;

    // Takes the key's line away; the section with its keys. 0 also when there is none. Elsewhere
    // than on Windows, remarks behind the section's last key stay.
    long DeleteProfile(const SString& key);
    long DeleteSection();

    // ---- Read: 0; SettingsNullPointer for a null `value` --------------------------------------
    // Values longer than 255 bytes are cut, under a double-byte page before a character that would
    // be cut in two. The default stands for a value that is empty or not there.

    // Whether the value is "Yes", "True" or "1", in any case.
    long GetProfile(const SString& key, int* value, int defaultValue) const;
    // A value that begins with a digit or a sign as a decimal number, which stays within a long's
    // range; of others "Yes" and "True" in any case are 1 and the rest 0.
    long GetProfile(const SString& key, long* value, long defaultValue) const;
    long GetProfile(const SString& key, SString* value, const SString& defaultValue) const;
    // The same uncut.
    long GetWholeProfile(const SString& key, SString* value, const SString& defaultValue) const;

    // Whether the section has the key, be its value empty: 1 or 0.
    int HasProfile(const SString& key) const;

    // ---- Enumerate ----------------------------------------------------------------------------
    // The names as they stand in the file, repeats included, empty ones not, in place of what the
    // table held.

    long GetKeys(SStringTable* keys) const;
    long GetSections(SStringTable* sections) const;

private:
    long Write(const char* key, const char* value);
    long GetNames(const char* section, SStringTable* names) const;

    SString fileName_;
    SString section_;
};

#endif
