// SRegistry: named values of one key of the settings store.
//
// The store is a tree of keys for the user and one for the machine. On Windows it is the system's
// registry. Elsewhere the user's tree is the file brcore8/settings.db in the user's configuration
// folder ($XDG_CONFIG_HOME, or ~/.config), or the file that the environment variable
// BRCORE8_SETTINGS names; the machine's is /etc/brcore8/settings.db, which ordinary users can read
// only, or the file that BRCORE8_MACHINE_SETTINGS names. Every write is on the disk when it
// returns; other processes see it at once and may write at the same time.
//
// A path names keys one below the other, with "\" between them: "Software\Quorbit\Brindle 8\Grid".
// Keys and values are found in any case. A key name has up to 255 bytes, a path up to 512 names.
//
// Status: every operation returns a code of brcore8/settings/status.h and throws nothing; one that
// fails leaves the caller's variables alone, but for a default that it was told to store.
// Threads: an object serves one thread at a time; different objects, also of one key, any threads.
// Ownership: the object owns its open key. Keys given as `root` stay the caller's.
//
//     SRegistry grid(nullptr, SRegistry::ApplicationRoot() + "Controls\\Grid", 1);
//     grid.WriteProfile("Row Font Name", "Tahoma");
//     SString name;
//     grid.GetProfile("Row Font Name", &name, "Arial", nullptr);
#ifndef BRCORE8_SETTINGS_REGISTRY_H
#define BRCORE8_SETTINGS_REGISTRY_H

#include <brcore8/platform/export.h>
#include <brcore8/platform/types.h>
#include <brcore8/settings/status.h>
#include <brcore8/strings/string.h>

namespace brcore8 {
struct SettingsBatch;
}

class BRCORE8_API SRegistry {
public:
    // What a value's type is reported as.
    enum Type : unsigned long {
        TypeString = 1,        // text with its terminator
        TypeExpandString = 2,  // text in which %NAME% stands for an environment variable
        TypeBinary = 3,
        TypeDword = 4,          // 32 bits, low byte first
        TypeDwordBigEndian = 5  // 32 bits, high byte first
    };
    // The tree that a key or a value stands in.
    enum class Origin { None, User, Machine };

    // ---- Open ---------------------------------------------------------------------------------

    SRegistry() noexcept = default;
    // Init, of which IsOpen tells the outcome.
    SRegistry(HKEY root, const SString& subKey, int create) { Init(root, subKey, create); }
    ~SRegistry() { Done(); }
    SRegistry(const SRegistry&) = delete;
    SRegistry& operator=(const SRegistry&) = delete;

    // Opens the key `subKey` (backslashes at its end do not count) below `root`, for reading; with
    // `create` for everything, and makes it and those above it where they are missing. Below
    // LocalMachine() keys are only ever opened for reading. With a null root it is the user's key,
    // else the machine's for reading, else, with `create`, a new one of the user. Does nothing when
    // a key is open under the very same path and flag, whatever its root; otherwise closes that
    // first.
    long Init(HKEY root, const SString& subKey, int create);
    // Closes the key; 0 also when none is open.
    long Done();

    // The two roots.
    static HKEY CurrentUser() noexcept;
    static HKEY LocalMachine() noexcept;
    // The path below which the suite keeps its settings, with its final backslash.
    static SString ApplicationRoot();

    int IsOpen() const noexcept { return key_ != nullptr; }
    // The open key, for as long as it is; a root for further keys.
    HKEY GetKey() const noexcept { return key_; }
    // In whose tree the open key stands, as far as it was opened from a root: None when no key is
    // open, or when its root was another key.
    Origin GetOrigin() const noexcept { return origin_; }

    // ---- Write --------------------------------------------------------------------------------
    // An empty name is the key's default value. Without an open key nothing is written and 0
    // returned: who writes does not care whether there are settings. Names end at a zero byte.

    // "Yes" or "No", as a string.
    long WriteProfile(const SString& name, int value);
    // The low 32 bits as a DWORD, or the number's decimal digits as a string.
    long WriteProfile(const SString& name, long value, int asDword);
    // A string, as it stands up to its first zero byte.
    long WriteProfile(const SString& name, const SString& value);

    // ---- Read ---------------------------------------------------------------------------------
    // The name's value, or the default together with SettingsFailed when there is none, when it is
    // neither text nor DWORD, or without an open key. A null `value` gives SettingsNullPointer.
    // `type`, when not null, receives the type of a value that was found.

    // Whether the value, blanks at its ends apart, is "Yes", "True" or "1", in any case.
    long GetProfile(const SString& name, int* value, int defaultValue) const;
    // A value that begins with a digit or a sign, after blanks, as a decimal number; of others
    // "Yes" and "True" in any case are 1 and the rest 0.
    long GetProfile(const SString& name, long* value, long defaultValue,
                    unsigned long* type = nullptr) const;
    // Text; TypeExpandString with the environment's variables put in, which serves texts of up to
    // 32,766 bytes, before and after; a DWORD of either kind as a signed decimal number.
    long GetProfile(const SString& name, SString* value, const SString& defaultValue,
                    unsigned long* type = nullptr) const;

    // Where a value comes from when the user's comes before the machine's: User when the user's key
    // `subKey` has one of this name, else Machine when the machine's has, else None.
    static Origin FindProfile(const SString& subKey, const SString& name);

    // ---- Enumerate ----------------------------------------------------------------------------
    // By index from 0, until SettingsFailed. Keys come in the order of their names without case.
    // A change meanwhile moves the indices of those behind it.

    // The name of a key below, and its class, which is empty for keys that this library made.
    long GetEnumKey(long index, SString* name, SString& className) const;
    // The name of a value and what it holds: text as it stands, a DWORD of either kind as an
    // unsigned decimal number, anything else as its bytes.
    long GetEnumValue(long index, SString* name, SString& value, unsigned long* type) const;

    // ---- Delete -------------------------------------------------------------------------------

    // Deletes the value `name`. When there is none and `recursive` is set, deletes keys: walks the
    // keys below the key `name` by rising index and deletes each of them in the same way, then the
    // key itself. Since a deletion moves the others down, every second key is passed over, and a
    // key that still has one below it stays: 0 only when `name` itself is gone. An empty name, or
    // only backslashes, names no key to delete.
    long DeleteProfile(const SString& name, int recursive) const;
    // Deletes the key `name` with everything below it; an empty name, or only backslashes, is
    // refused. On Windows a failure may leave a part of it, elsewhere it leaves all.
    long DeleteTree(const SString& name) const;

    // ---- As text ------------------------------------------------------------------------------
    // A line each, LF after it; empty lines and lines that begin with "#" mean nothing, and CR may
    // stand before an LF. The same text on every system:
    //
    //     brcore8-settings 1
    //     key ""                                  the key itself; then those below it
    //     "UI Font Name" = string "Tahoma"
    //     "Home" = expand "%HOME%\\x"
    //     "UI Font Size" = dword 8
    //     "Place" = binary 00 ff 1e
    //     "Other" = type 7 61 00 00               any type by its number; its bytes
    //     key "Grid\\Colors"                      a path below the key
    //
    // In quotes \\ \" \t \r \n and \xHH stand for a byte; all others but control characters may
    // stand as they are. A value belongs to the key line before it.

    // The key with all its values and everything below it.
    long ExportText(SString* text) const;
    // Makes the keys and sets the values of such a text below the open key, where others stay. A
    // text with a fault changes nothing. On Windows a failure may leave a part of it, elsewhere
    // all is written or nothing.
    long ImportText(const SString& text);
    // What ImportText says of the text itself; `line`, when not null, receives the number of the
    // first wrong line, 0 when there is none.
    static long CheckText(const SString& text, long* line);

private:
    long Open(HKEY root, const SString& path, int create);

    HKEY key_ = nullptr;
    SString path_;
    int create_ = 0;
    Origin origin_ = Origin::None;
};

// Several writes as one. Where the store is this library's own, everything that this thread writes
// into the user's or the machine's tree between the construction and Commit becomes visible and
// lasting at once, or, destroyed without Commit, not at all; and it costs one transaction. Writes
// of other threads and processes wait meanwhile. On Windows each write is done as it comes and a
// batch changes nothing.
//
// A batch within a batch is part of the outer one. It must be destroyed on its own thread, and
// outlived by no batch that was made after it.
//
//     SRegistryBatch batch(settings);
//     for (const auto& [name, value] : values) settings.WriteProfile(name, value);
//     batch.Commit();
class BRCORE8_API SRegistryBatch {
public:
    // On the tree that the key stands in. Without an open key it does nothing, successfully.
    explicit SRegistryBatch(const SRegistry& registry) : SRegistryBatch(registry.GetKey()) {}
    explicit SRegistryBatch(HKEY key);
    ~SRegistryBatch();
    SRegistryBatch(const SRegistryBatch&) = delete;
    SRegistryBatch& operator=(const SRegistryBatch&) = delete;

    // 0, or SettingsFailed when the batch could not begin: each write is then one of its own.
    long GetStatus() const noexcept { return status_; }
    // Ends the batch; once. SettingsFailed: nothing of it was kept, since one of its writes met a
    // full disk or the like, or it never began.
    long Commit();

private:
    brcore8::SettingsBatch* batch_ = nullptr;
    long status_ = brcore8::SettingsDone;
};

#endif
