#include "platform/posix/profile.h"

#include <brcore8/core/exception.h>

#include <algorithm>
#include <cstring>
#include <new>

#include "platform/files.h"
#include "platform/posix/profile_file.h"
#include "streams/file_rewrite.h"

namespace {

using namespace brcore8;

DWORD CopyText(std::string_view text, char* out, DWORD size) noexcept {
    const std::size_t most = size - 1;
    const std::size_t bytes = std::min(text.substr(0, text.find('\0')).size(), most);
    out[text.copy(out, bytes)] = '\0';
    return static_cast<DWORD>(bytes);
}

// Names with a terminator each, cut so that two more fit behind them.
class NameList {
public:
    NameList(char* out, DWORD size) noexcept : out_(out), size_(size) {}

    void Add(std::string_view name) noexcept {
        if (name.empty()) return;
        Put(name);
        Put({"", 1});
    }
    DWORD Finish() noexcept {
        std::memset(out_ + used_, 0, std::min<std::size_t>(size_ - used_, 2));
        return static_cast<DWORD>(used_);
    }

private:
    void Put(std::string_view bytes) noexcept {
        if (size_ > 2) used_ += bytes.copy(out_ + used_, size_ - 2 - used_);
    }

    char* out_;
    std::size_t size_;
    std::size_t used_ = 0;
};

DWORD CopyNames(std::string_view text, const char* section, char* out, DWORD size) noexcept {
    NameList names(out, size);
    const std::string_view wanted = section != nullptr ? TrimIniBlanks(section) : "";
    bool isInside = section != nullptr && wanted.empty();
    IniLines lines(text);
    for (IniLine line; lines.Next(line);) {
        if (line.kind == IniLine::Header) {
            if (section == nullptr)
                names.Add(line.name);
            else if (isInside)
                break;
            else
                isInside = SameIniName(line.name, wanted);
        } else if (line.kind == IniLine::Key && isInside) {
            names.Add(line.name);
        }
    }
    return names.Finish();
}

// The edit that the arguments of the platform's function mean.
void MakeEdit(std::string_view text, const char* section, const char* key, const char* value,
              IniEdit& edit) {
    if (key == nullptr) return EraseIniSection(text, section, edit);
    if (value == nullptr) return EraseIniKey(text, section, key, edit);
    SetIniKey(text, section, key, value, edit);
}

// A file that is not there is made empty first, which means the same, so that its content too
// comes as one step.
bool Rewrite(const std::string& path, std::string_view text, bool isNew) {
    if (isNew && !MakeProfileFile(path)) return false;
    try {
        RewriteFile(path.c_str(), text.data(), text.size());
        return true;
    } catch (const SEIOException&) {
    } catch (const SEOutOfMemory&) {
    }
    if (isNew) RemoveFile(path.c_str());
    return false;
}

bool Write(const char* section, const char* key, const char* value, const char* file) {
    const std::string path = FinalPath(ProfilePath(file, true).c_str());
    const ProfileWriterLock lock(path);
    if (!lock.IsHeld()) return false;
    IniBytes text;
    const ProfileState state = ReadProfileFile(path, text);
    if (state == ProfileState::Unreadable || IsIniUtf16(text.View())) return false;
    IniEdit edit;
    MakeEdit(text.View(), section, key, value, edit);
    if (edit.ChangesNothing(text.View())) return true;
    const IniBytes result = edit.Apply(text.View());
    return Rewrite(path, result.View(), state == ProfileState::Missing);
}

}  // namespace

DWORD GetPrivateProfileStringA(const char* section, const char* key, const char* fallback,
                               char* out, DWORD size, const char* file) noexcept {
    if (size == 0) return 0;
    const std::string_view otherwise = fallback != nullptr ? fallback : "";
    try {
        const ProfileReader reader(file);
        if (section == nullptr || key == nullptr)
            return CopyNames(reader.Text(), section, out, size);
        return CopyText(reader.Find(section, key).value_or(otherwise), out, size);
    } catch (const SEOutOfMemory&) {
    } catch (const std::bad_alloc&) {
    }
    return CopyText(otherwise, out, size);
}

BOOL WritePrivateProfileStringA(const char* section, const char* key, const char* value,
                                const char* file) noexcept {
    try {
        return Write(section, key, value, file);
    } catch (const SEOutOfMemory&) {
    } catch (const std::bad_alloc&) {
    }
    return 0;
}
