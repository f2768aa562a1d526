#include <sys/stat.h>

#include <array>
#include <cstdint>
#include <ctime>
#include <mutex>
#include <new>

#include "platform/posix/profile_file.h"
#include "strings/code_page.h"

namespace brcore8 {
namespace {

// Greater texts are read anew each time, and as far as needed, so that no memory stays behind.
constexpr std::size_t kMostKept = 16 << 20;
constexpr std::size_t kFilesKept = 4;

std::int64_t Nanoseconds(const timespec& time) noexcept {
    return std::int64_t{time.tv_sec} * 1000000000 + time.tv_nsec;
}

// What a file has that changes when it does.
struct Stamp {
    dev_t device = 0;
    ino_t node = 0;
    off_t size = -1;
    std::int64_t written = 0;
    std::int64_t changed = 0;

    bool operator==(const Stamp&) const = default;

    // Whether a later change would have another time. Clocks of file systems advance in steps, by
    // some milliseconds, or by two seconds where there are no fractions.
    bool IsSettled() const noexcept {
        timespec now;
        clock_gettime(CLOCK_REALTIME, &now);
        const bool coarse = written % 1000000000 == 0 && changed % 1000000000 == 0;
        const std::int64_t step = coarse ? 2100000000 : 50000000;
        return Nanoseconds(now) - std::max(written, changed) > step;
    }
};

bool TakeStamp(const std::string& path, Stamp& stamp) noexcept {
    struct stat facts;
    if (stat(path.c_str(), &facts) != 0 || !S_ISREG(facts.st_mode)) return false;
    stamp = {facts.st_dev, facts.st_ino, facts.st_size, Nanoseconds(facts.st_mtim),
             Nanoseconds(facts.st_ctim)};
    return true;
}

}  // namespace

struct ProfileReader::File {
    std::string path;
    std::uint64_t lastUse = 0;
    IniBytes text;
    IniIndex index;
    const CodePage* page = nullptr;  // null: there is no index
    Stamp stamp;
    bool isSettled = false;

    bool IsCurrent(const Stamp& now) const noexcept {
        return isSettled && page == &CodePage::Ansi() && stamp == now;
    }
    void Read(const Stamp& now);
};

void ProfileReader::File::Read(const Stamp& now) {
    isSettled = false;
    const bool settled = now.IsSettled();
    IniBytes bytes;
    if (ReadProfileFile(path, bytes) != ProfileState::Whole || IsIniUtf16(bytes.View())) {
        bytes = IniBytes();
    }
    const bool keeps = page == &CodePage::Ansi() && bytes.View() == text.View();
    if (!keeps) {
        page = nullptr;
        if (bytes.View().size() <= kMostKept) {
            index = IniIndex(bytes.View());
            page = &CodePage::Ansi();
        }
        text = std::move(bytes);
    }
    stamp = now;
    isSettled = settled && page != nullptr;
}

namespace {

struct Cache {
    std::mutex mutex;
    std::uint64_t uses = 0;
};
constinit Cache g_cache;

}  // namespace

// Never destroyed: static objects may read settings when they go.
ProfileReader::File& ProfileReader::FileOf(std::string path) {
    using Files = std::array<File, kFilesKept>;
    alignas(Files) static unsigned char storage[sizeof(Files)];
    static Files& files = *::new (storage) Files;
    File* oldest = &files[0];
    for (File& file : files) {
        if (file.path == path) oldest = &file;
        if (oldest->path != path && file.lastUse < oldest->lastUse) oldest = &file;
    }
    if (oldest->path != path) {
        *oldest = File();
        oldest->path = std::move(path);
    }
    oldest->lastUse = ++g_cache.uses;
    return *oldest;
}

ProfileReader::ProfileReader(const char* name) {
    std::string path = ProfilePath(name, false);
    std::unique_lock lock(g_cache.mutex);
    Stamp now;
    if (TakeStamp(path, now)) {
        File& file = FileOf(std::move(path));
        if (!file.IsCurrent(now)) file.Read(now);
        file_ = &file;
    }
    lock.release();
}

ProfileReader::~ProfileReader() {
    if (file_ != nullptr && file_->page == nullptr) file_->text = IniBytes();
    g_cache.mutex.unlock();
}

std::string_view ProfileReader::Text() const noexcept {
    return file_ != nullptr ? file_->text.View() : std::string_view();
}

std::optional<std::string_view> ProfileReader::Find(const char* section,
                                                    const char* key) const noexcept {
    if (file_ == nullptr) return std::nullopt;
    if (file_->page == nullptr) return FindIniKey(Text(), section, key);
    return file_->index.Find(Text(), section, key);
}

}  // namespace brcore8
