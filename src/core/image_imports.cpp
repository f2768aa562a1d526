// The parts of an image that lead to its imports, all numbers with their low byte first:
//
//     0x00 "MZ" ...  0x3C offset of the new header
//     "PE" 0 0, machine u16, sections u16, 12 bytes, size of the optional header u16, u16
//     optional header: magic u16 (0x10B: 32 bits, 0x20B: 64 bits) ... image base ...
//         count of directories u32, directories { address u32, size u32 } ...
//     sections { name 8 bytes, virtual size, address, raw size, raw offset u32, 16 bytes } ...
//
// Addresses are relative to the loaded image; the section around one tells where in the file it
// is. An import table is a run of descriptors that ends with one without a name.

#include "core/image_imports.h"

#include <brcore8/streams/file.h>

#include "platform/platform.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace brcore8 {

namespace {

constexpr std::size_t MostDescriptors = 100'000;

std::uint32_t Number16(const unsigned char* bytes) {
    return static_cast<std::uint32_t>(bytes[0] | bytes[1] << 8);
}

std::uint32_t Number32(const unsigned char* bytes) {
    return Number16(bytes) | Number16(bytes + 2) << 16;
}

// A file that is read here and there, through a window of its content. What others take away from
// it meanwhile is outside of it.
class ImageFile {
public:
    // False for what is no regular file with something in it.
    bool Open(const char* path) {
        const DWORD attributes = GetFileAttributesA(path);
        if (attributes == INVALID_FILE_ATTRIBUTES ||
            (attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_DEVICE)) != 0) {
            return false;
        }
        if (file_.Open(path) < 0) return false;
        size_ = file_.GetSize();
        return size_ > 0;
    }
    // Whether reading failed: what is there was not told.
    bool Failed() const { return failed_; }
    std::uint64_t Size() const { return static_cast<std::uint64_t>(size_); }

    // The bytes at `offset`, valid until the next call; null when they are not all in the file.
    // At most a window's worth.
    const unsigned char* At(std::uint64_t offset, std::size_t count) {
        if (offset > Size() || count > Size() - offset) return nullptr;
        if (offset < start_ || offset + count > start_ + filled_) {
            Fill(offset);
            if (filled_ < count) return nullptr;
        }
        return window_ + (offset - start_);
    }

private:
    void Fill(std::uint64_t offset) {
        std::int64_t read = file_.Seek(static_cast<std::int64_t>(offset), SFile::Origin::Begin);
        if (read >= 0) read = file_.Read(window_, sizeof window_);
        failed_ = failed_ || read < 0;
        filled_ = read < 0 ? 0 : static_cast<std::size_t>(read);
        start_ = offset;
    }

    SFile file_;
    bool failed_ = false;
    std::int64_t size_ = 0;
    std::uint64_t start_ = 0;
    std::size_t filled_ = 0;
    unsigned char window_[16384];
};

// A piece of the file.
struct Extent {
    std::uint64_t offset;
    std::uint64_t size;
};

class Image {
public:
    ImageStatus Open(const char* path);
    bool Failed() const { return file_.Failed(); }
    // Adds the names of the directory's table.
    void ReadTable(unsigned directory, ImportedNames& names);

    static constexpr unsigned ImportDirectory = 1;
    static constexpr unsigned DelayedDirectory = 13;

private:
    struct Section {
        std::uint32_t address;
        Extent extent;
    };

    void ReadSections(std::uint64_t at, std::uint32_t count);
    std::uint32_t DirectoryAddress(unsigned directory);
    // What the section holds from the address on; nothing outside of all sections.
    Extent Resolve(std::uint32_t address) const;
    std::uint32_t NameReference(unsigned directory, const unsigned char* descriptor) const;
    bool ReadName(std::uint32_t address, ImportedNames& names);

    ImageFile file_;
    std::uint64_t optional_ = 0;  // where the optional header is
    std::uint32_t imageBase_ = 0;
    CheckedVector<Section> sections_;  // by address
};

ImageStatus Image::Open(const char* path) {
    if (!file_.Open(path)) return ImageStatus::NotFound;
    const unsigned char* const old = file_.At(0, 64);
    if (old == nullptr || std::memcmp(old, "MZ", 2) != 0) return ImageStatus::NotPE;
    const std::uint64_t header = Number32(old + 0x3C);
    const unsigned char* const signature = file_.At(header, 4);
    if (signature == nullptr || std::memcmp(signature, "PE\0\0", 4) != 0) return ImageStatus::NotPE;
    optional_ = header + 24;
    if (const unsigned char* const fields = file_.At(header, 24)) {
        const std::uint32_t count = Number16(fields + 6);
        ReadSections(optional_ + Number16(fields + 20), count);
    }
    return ImageStatus::Good;
}

void Image::ReadSections(std::uint64_t at, std::uint32_t count) {
    for (; count > 0; --count, at += 40) {
        const unsigned char* const fields = file_.At(at, 40);
        if (fields == nullptr) break;
        const Extent raw = {Number32(fields + 20), Number32(fields + 16)};
        if (raw.offset >= file_.Size()) continue;
        sections_.push_back(
            {Number32(fields + 12), {raw.offset, std::min(raw.size, file_.Size() - raw.offset)}});
    }
    std::stable_sort(sections_.begin(), sections_.end(),
                     [](const Section& a, const Section& b) { return a.address < b.address; });
}

std::uint32_t Image::DirectoryAddress(unsigned directory) {
    const unsigned char* const magic = file_.At(optional_, 2);
    if (magic == nullptr) return 0;
    const bool wide = Number16(magic) == 0x20B;
    if (!wide && Number16(magic) != 0x10B) return 0;
    const std::uint64_t directories = optional_ + (wide ? 112 : 96);
    const unsigned char* const count = file_.At(directories - 4, 4);
    if (count == nullptr || Number32(count) <= directory) return 0;
    const unsigned char* const base = file_.At(optional_ + 28, 4);
    imageBase_ = wide || base == nullptr ? 0 : Number32(base);
    const unsigned char* const address = file_.At(directories + 8 * directory, 4);
    return address != nullptr ? Number32(address) : 0;
}

Extent Image::Resolve(std::uint32_t address) const {
    const auto after = std::upper_bound(
        sections_.begin(), sections_.end(), address,
        [](std::uint32_t wanted, const Section& section) { return wanted < section.address; });
    if (after == sections_.begin()) return {0, 0};
    const Section& section = *std::prev(after);
    const std::uint64_t inside = address - section.address;
    if (inside >= section.extent.size) return {0, 0};
    return {section.extent.offset + inside, section.extent.size - inside};
}

// Early linkers wrote addresses of the loaded image into delayed tables of 32 bits.
std::uint32_t Image::NameReference(unsigned directory, const unsigned char* descriptor) const {
    if (directory == ImportDirectory) return Number32(descriptor + 12);
    const std::uint32_t name = Number32(descriptor + 4);
    const bool relative = (Number32(descriptor) & 1) != 0;
    return relative || name == 0 ? name : name - imageBase_;
}

bool Image::ReadName(std::uint32_t address, ImportedNames& names) {
    const Extent extent = Resolve(address);
    const auto room =
        static_cast<std::size_t>(std::min<std::uint64_t>(extent.size, ImportedNames::LongestName));
    const unsigned char* const bytes = room > 0 ? file_.At(extent.offset, room) : nullptr;
    if (bytes == nullptr) return false;
    const void* const end = std::memchr(bytes, 0, room);
    if (end == nullptr && room < ImportedNames::LongestName) return false;
    const auto* const name = reinterpret_cast<const char*>(bytes);
    names.Add(name, end != nullptr ? static_cast<std::size_t>(static_cast<const char*>(end) - name)
                                   : room);
    return true;
}

void Image::ReadTable(unsigned directory, ImportedNames& names) {
    const std::size_t size = directory == ImportDirectory ? 20 : 32;
    const std::uint32_t address = DirectoryAddress(directory);
    Extent table = address != 0 ? Resolve(address) : Extent{0, 0};
    // The names use the file's window too, so the table is read in runs.
    unsigned char run[64 * 32];
    for (std::size_t seen = 0; table.size >= size && seen < MostDescriptors;) {
        const auto count = static_cast<std::size_t>(
            std::min<std::uint64_t>({64, table.size / size, MostDescriptors - seen}));
        const unsigned char* const bytes = file_.At(table.offset, count * size);
        if (bytes == nullptr) return;
        std::memcpy(run, bytes, count * size);
        for (std::size_t i = 0; i < count; ++i) {
            const std::uint32_t name = NameReference(directory, run + i * size);
            if (name == 0 || !ReadName(name, names)) return;
        }
        table = {table.offset + count * size, table.size - count * size};
        seen += count;
    }
}

}  // namespace

void ImportedNames::Add(const char* name, std::size_t length) {
    text_.insert(text_.end(), name, name + length);
    text_.push_back('\0');
}

const char* ImportedNames::Next() noexcept {
    if (next_ == text_.size()) return nullptr;
    const char* const name = text_.data() + next_;
    next_ += std::strlen(name) + 1;
    return name;
}

ImageStatus ReadImports(const char* path, bool delayed, ImportedNames& names) {
    Image image;
    const ImageStatus status = image.Open(path);
    if (status != ImageStatus::Good) return image.Failed() ? ImageStatus::NotFound : status;
    image.ReadTable(Image::ImportDirectory, names);
    if (delayed) image.ReadTable(Image::DelayedDirectory, names);
    return image.Failed() ? ImageStatus::NotFound : status;
}

}  // namespace brcore8
