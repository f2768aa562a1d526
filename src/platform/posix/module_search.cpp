#include "platform/module_search.h"

#include <dirent.h>
#include <sys/stat.h>
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <string_view>

#include "core/checked_allocator.h"

namespace brcore8 {

namespace {

// File names are bytes of no known code page: letters of ASCII alone have a case.
char Fold(char byte) {
    return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte + ('a' - 'A')) : byte;
}

int CompareFolded(std::string_view left, std::string_view right) {
    const std::size_t common = std::min(left.size(), right.size());
    for (std::size_t i = 0; i < common; ++i) {
        if (Fold(left[i]) != Fold(right[i])) return Fold(left[i]) < Fold(right[i]) ? -1 : 1;
    }
    return left.size() == right.size() ? 0 : left.size() < right.size() ? -1 : 1;
}

// By folded names; names that differ in case alone by their bytes.
bool NameLess(std::string_view left, std::string_view right) {
    const int order = CompareFolded(left, right);
    return order != 0 ? order < 0 : left < right;
}

bool Join(std::string_view folder, std::string_view name, char (&path)[PathSize]) {
    const bool slash = !folder.ends_with('/');
    if (folder.size() + slash + name.size() >= PathSize) return false;
    char* const end = std::copy(folder.begin(), folder.end(), path);
    if (slash) *end = '/';
    *std::copy(name.begin(), name.end(), end + slash) = '\0';
    return true;
}

bool IsRegularFile(const char* path) {
    struct stat facts;
    return stat(path, &facts) == 0 && S_ISREG(facts.st_mode);
}

// The names in a folder, in order.
class Listing {
public:
    explicit Listing(const CheckedText& folder) : folder_(folder) {
        DIR* const stream = opendir(folder.c_str());
        if (stream == nullptr) return;
        try {
            while (const dirent* const entry = readdir(stream))
                names_.emplace_back(entry->d_name);
        } catch (...) {
            closedir(stream);
            throw;
        }
        closedir(stream);
        std::sort(names_.begin(), names_.end(), NameLess);
    }

    const CheckedText& Folder() const { return folder_; }

    // The name itself, else the first that differs in case alone; regular files only.
    bool Find(const char* name, char (&path)[PathSize]) const {
        if (std::binary_search(names_.begin(), names_.end(), name, NameLess) &&
            Join(folder_, name, path) && IsRegularFile(path)) {
            return true;
        }
        auto at = std::lower_bound(names_.begin(), names_.end(), std::string_view(name),
                                   [](std::string_view left, std::string_view right) {
                                       return CompareFolded(left, right) < 0;
                                   });
        for (; at != names_.end() && CompareFolded(*at, name) == 0; ++at) {
            if (Join(folder_, *at, path) && IsRegularFile(path)) return true;
        }
        return false;
    }

private:
    CheckedText folder_;
    CheckedVector<CheckedText> names_;
};

}  // namespace

struct ModuleSearch::Folders {
    CheckedVector<Listing> listings;
};

ModuleSearch::ModuleSearch() noexcept = default;

ModuleSearch::~ModuleSearch() {
    if (folders_ == nullptr) return;
    folders_->~Folders();
    Release(folders_);
}

bool ModuleSearch::FindIn(const char* folder, const char* name, char (&path)[PathSize]) {
    if (folders_ == nullptr) folders_ = ::new (Allocate(sizeof(Folders))) Folders;
    CheckedVector<Listing>& listings = folders_->listings;
    auto at = std::find_if(listings.begin(), listings.end(),
                           [folder](const Listing& listing) { return listing.Folder() == folder; });
    if (at == listings.end()) at = listings.insert(at, Listing(folder));
    return at->Find(name, path);
}

bool ModuleSearch::Find(const char* name, char (&path)[PathSize]) {
    const char* const variable = std::getenv("PATH");
    std::string_view folders = variable != nullptr ? variable : "";
    while (!folders.empty()) {
        const std::string_view folder = folders.substr(0, folders.find(':'));
        folders.remove_prefix(std::min(folder.size() + 1, folders.size()));
        const CheckedText text(folder.empty() ? "." : folder);
        char full[PathSize];
        if (FullPath(text.c_str(), full) && FindIn(full, name, path)) return true;
    }
    return false;
}

}  // namespace brcore8
