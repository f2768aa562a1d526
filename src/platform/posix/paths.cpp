#include "platform/paths.h"

#include <unistd.h>
#include <cstring>

namespace brcore8 {

namespace {

// A path that grows by one component at a time.
class PathBuilder {
public:
    explicit PathBuilder(char (&path)[PathSize]) noexcept : path_(path) {}

    bool Append(const char* path) noexcept {
        while (*path != '\0') {
            const char* const end = strchrnul(path, '/');
            if (!AppendComponent(path, static_cast<std::size_t>(end - path))) return false;
            path = *end != '\0' ? end + 1 : end;
        }
        return true;
    }

    void Finish() noexcept {
        if (length_ == 0) path_[length_++] = '/';
        path_[length_] = '\0';
    }

private:
    bool AppendComponent(const char* name, std::size_t length) noexcept {
        if (length == 0 || (length == 1 && name[0] == '.')) return true;
        if (length == 2 && name[0] == '.' && name[1] == '.') {
            while (length_ > 0 && path_[--length_] != '/') {
            }
            return true;
        }
        if (length_ + 1 + length >= PathSize) return false;
        path_[length_] = '/';
        std::memcpy(path_ + length_ + 1, name, length);
        length_ += 1 + length;
        return true;
    }

    char (&path_)[PathSize];
    std::size_t length_ = 0;
};

}  // namespace

bool FullPath(const char* path, char (&full)[PathSize]) noexcept {
    full[0] = '\0';
    char folder[4096] = "";
    if (*path != '/' && getcwd(folder, sizeof folder) == nullptr) return false;
    PathBuilder builder(full);
    const bool fits = builder.Append(folder) && builder.Append(path);
    if (fits) builder.Finish();
    if (!fits) full[0] = '\0';
    return fits;
}

}  // namespace brcore8
