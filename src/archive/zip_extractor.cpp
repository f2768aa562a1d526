#include <brcore8/archive/zip_extractor.h>

#include <brcore8/core/exception.h>
#include <brcore8/core/throw.h>
#include <brcore8/streams/progress.h>

#include "archive/file_window.h"
#include "archive/zip_entry_pass.h"
#include "archive/zip_extents.h"
#include "archive/zip_names.h"
#include "platform/files.h"
#include "platform/platform.h"
#include "streams/file_filter.h"

#include <algorithm>
#include <atomic>
#include <string>

using brcore8::FileOperation;
using brcore8::MayUseFile;
using brcore8::Report;

namespace {

constexpr char kCannotOpen[] = "Can't open for writing";
constexpr unsigned kNewFile = 0666;
constexpr unsigned kNewFolder = 0777;

// When a clock here shows the entry's digits; 0 when no calendar has them.
std::uint64_t FileTimeOf(const SZipEntry& entry) noexcept {
    const STime time = entry.GetTime();
    return time != STime() ? time.GetFileTime() : 0;
}

// Those of the entry, or else what such files get.
unsigned PermissionsOf(const SZipEntry& entry, unsigned otherwise) noexcept {
    const unsigned permissions = entry.GetPermissions();
    return permissions != 0 ? permissions : otherwise;
}

const char* KindFault(const SZipEntry& entry) noexcept {
    if (entry.IsLink()) return "the entry is a link";
    return entry.IsSpecial() ? "the entry is no file" : nullptr;
}

// Whether the name is the one wanted, or lies in the folder of that name.
bool IsOf(std::string_view name, std::string_view wanted) noexcept {
    if (name == wanted) return true;
    if (wanted.ends_with('/')) wanted.remove_suffix(1);
    return name.starts_with(wanted) && name.substr(wanted.size()).starts_with('/');
}

// What the limits say to the sizes that the directory announces.
SString AnnouncedFault(const SZipLimits& limits, std::uint64_t before, const SZipEntry& entry) {
    try {
        brcore8::CheckZipLimits(limits, before, entry.GetCompressedSize(), entry.GetSize());
    } catch (const SEZipException& error) {
        return SString(error.GetText());
    }
    return SString();
}

// The folder that everything goes into, and the folders made in it.
class Target {
public:
    explicit Target(std::string_view folder) : root_(folder) {
        while (root_.size() > 1 && root_.ends_with('/'))
            root_.pop_back();
        for (std::size_t at = NextSeparator(1); at != root_.npos; at = NextSeparator(at + 1))
            CreateDirectoryA(root_.substr(0, at).c_str(), nullptr);
        CreateDirectoryA(root_.c_str(), nullptr);
        const DWORD attributes = GetFileAttributesA(root_.c_str());
        if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0)
            brcore8::ThrowIOException(kCannotOpen);
    }

    std::string PathOf(const std::string& path) const { return root_ + '/' + path; }

    // Makes the folders of a path below the target. Throws SEIOException "Can't open for writing"
    // where one cannot be made or is a link.
    void MakeFolders(const std::string& path) {
        if (path == made_ || path.empty()) return;
        for (std::size_t at = 0; at != path.npos;) {
            at = path.find('/', at + 1);
            const std::string folder = PathOf(path.substr(0, at));
            CreateDirectoryA(folder.c_str(), nullptr);
            const DWORD attributes = GetFileAttributesA(folder.c_str());
            if (attributes == INVALID_FILE_ATTRIBUTES || brcore8::IsLink(folder.c_str()) ||
                (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
                brcore8::ThrowIOException(kCannotOpen);
            }
        }
        made_ = path;
    }

private:
    std::size_t NextSeparator(std::size_t from) const noexcept {
        return root_.find_first_of(brcore8::kFolderSeparators, from);
    }

    std::string root_;
    std::string made_;  // the last one
};

// A file that takes its place only when it is whole.
class NewFile {
public:
    NewFile(std::string path, unsigned permissions)
        : path_(std::move(path)), permissions_(permissions) {
        static constinit std::atomic<unsigned> counter{0};
        const std::string folder = path_.substr(0, path_.rfind('/') + 1);
        constexpr int attempts = 100;  // leftovers of processes that bore the same number
        for (int i = 0; i < attempts && !file_.IsOpen(); ++i) {
            unfinished_ = folder + ".brcore8-" + std::to_string(GetCurrentProcessId()) + "-" +
                          std::to_string(counter.fetch_add(1)) + ".tmp";
            if (!MayUseFile(FileOperation::Create, unfinished_.c_str())) break;
            if (!brcore8::MakeNewFile(unfinished_.c_str(), permissions_)) continue;
            if (file_.Open(unfinished_.c_str(), SFile::WriteAccess) < 0) Remove();
        }
        if (!file_.IsOpen()) brcore8::ThrowIOException(kCannotOpen);
    }
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;
    ~NewFile() {
        if (unfinished_.empty()) return;
        file_.Close();
        Remove();
    }

    void Write(const void* data, unsigned long count) {
        if (file_.Write(data, count) < 0) brcore8::ThrowIOException("Write failed");
    }
    void Finish(std::uint64_t fileTime) {
        if (fileTime != 0) file_.SetModified(fileTime);  // not every file system can
        if (file_.Close() < 0) brcore8::ThrowIOException("Write failed");
        brcore8::LimitPermissions(unfinished_.c_str(), permissions_);
        if (!MayUseFile(FileOperation::Replace, path_.c_str()) ||
            !MoveFileExA(unfinished_.c_str(), path_.c_str(), MOVEFILE_REPLACE_EXISTING)) {
            brcore8::ThrowIOException(kCannotOpen);
        }
        unfinished_.clear();
    }

private:
    void Remove() noexcept { DeleteFileA(unfinished_.c_str()); }

    std::string path_;
    unsigned permissions_;
    std::string unfinished_;
    SFile file_;
};

class Writer : public brcore8::ZipEntryPass {
public:
    Writer(SZipFile& archive, const SZipLimits& limits, std::string_view folder,
           SProgressIndicatorEx* progress)
        : ZipEntryPass(archive, limits, progress), target_(folder) {}

    void Write(const SZipEntry& entry, const std::string& path) {
        if (entry.IsDirectory()) return target_.MakeFolders(path);
        Reader().Start(entry);
        const std::size_t slash = path.rfind('/');
        if (slash != path.npos) target_.MakeFolders(path.substr(0, slash));
        NewFile file(target_.PathOf(path), PermissionsOf(entry, kNewFile));
        while (const unsigned long count = ReadBlock())
            file.Write(Block(), count);
        file.Finish(FileTimeOf(entry));
    }
    // Once nothing more is written into it.
    void FinishFolder(const SZipEntry& entry, const std::string& path) {
        brcore8::FinishFolder(target_.PathOf(path).c_str(), FileTimeOf(entry),
                              PermissionsOf(entry, kNewFolder));
    }

private:
    Target target_;
};

}  // namespace

void SZipExtractor::Choose(const SString& name) {
    chosen_.Add(name);
}

SString SZipExtractor::NameOf(const SZipEntry& entry) const {
    return decode_ ? entry.GetDecodedName() : entry.GetName();
}

bool SZipExtractor::IsChosen(std::string_view name) const {
    return chosen_.GetCount() == 0 ||
           std::ranges::any_of(chosen_, [&](const SString& wanted) { return IsOf(name, wanted); });
}

int SZipExtractor::Vet(const SZipReport& report) {
    brcore8::ZipExtents extents;
    int faults = extents.Read(archive_, report, [](const SZipEntry&, int) {});
    try {
        brcore8::ZipNameSet names;
        std::vector<bool> found(static_cast<std::size_t>(chosen_.GetCount()));
        Sizes sizes;
        SZipFile::const_iterator entry;
        for (int index = 0; index < extents.GetCount(); ++index) {
            if (index == 0)
                entry = archive_.begin();
            else
                ++entry;
            const SString fault = VetEntry(*entry, extents.GetBoundary(index), sizes);
            if (!fault.IsEmpty()) {
                Report(report, index, entry->GetName(), fault);
                ++faults;
                continue;
            }
            names.Add(brcore8::PlainPath(NameOf(*entry)), entry->IsDirectory(), index);
            MarkChosen(entry->GetName(), found);
        }
        packed_ = sizes.packed;
        return faults + names.FindClashes(report) + ReportMissing(found, report);
    } catch (const std::bad_alloc&) {
        brcore8::ThrowOutOfMemory();
    }
}

SString SZipExtractor::VetEntry(const SZipEntry& entry, std::uint64_t boundary,
                                Sizes& sizes) const {
    const SString name = NameOf(entry);
    const std::uint64_t end = std::uint64_t{entry.GetOffset()} + brcore8::ZipRecords::LocalSize +
                              entry.GetName().View().size() + entry.GetCompressedSize();
    if (const char* const fault = SZipNameFault(name)) return fault;
    if (const char* const fault = KindFault(entry)) return fault;
    if (end > boundary) return brcore8::kOverlaps;
    if (!IsChosen(entry.GetName())) return SString();
    const SString fault = AnnouncedFault(limits_, sizes.announced, entry);
    sizes.announced += entry.GetSize();
    sizes.packed += entry.GetCompressedSize();
    return fault;
}

void SZipExtractor::MarkChosen(std::string_view name, std::vector<bool>& found) const {
    for (std::size_t i = 0; i < found.size(); ++i) {
        if (!found[i]) found[i] = IsOf(name, chosen_[static_cast<int>(i)]);
    }
}

int SZipExtractor::ReportMissing(const std::vector<bool>& found, const SZipReport& report) const {
    int missing = 0;
    for (std::size_t i = 0; i < found.size(); ++i) {
        if (found[i]) continue;
        Report(report, -1, chosen_[static_cast<int>(i)], "there is no such entry");
        ++missing;
    }
    return missing;
}

int SZipExtractor::Extract(const SString& folder, const SZipReport& report,
                           SProgressIndicatorEx* progress) {
    int faults = Vet(report);
    if (faults != 0) return faults;
    if (progress != nullptr) progress->SetRange(0, packed_);
    SString name = folder;
    int index = -1;
    try {
        Writer writer(archive_, limits_, folder, progress);
        for (auto entry = archive_.begin(); entry != archive_.end(); ++entry) {
            if (!IsChosen(entry->GetName())) continue;
            index = entry.GetIndex();
            name = entry->GetName();
            try {
                writer.Write(*entry, brcore8::PlainPath(NameOf(*entry)));
            } catch (const SEZipException& error) {
                Report(report, index, name, error.GetText());
                ++faults;
            }
            writer.EntryDone(*entry);
        }
        for (const SZipEntry& entry : archive_) {
            if (entry.IsDirectory() && IsChosen(entry.GetName()))
                writer.FinishFolder(entry, brcore8::PlainPath(NameOf(entry)));
        }
    } catch (const SEIOAbortedException&) {
        throw;
    } catch (const SEIOException& error) {
        Report(report, index, name, error.GetText());
        ++faults;
    } catch (const std::bad_alloc&) {
        brcore8::ThrowOutOfMemory();
    }
    return faults;
}
