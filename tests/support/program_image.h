// Builds the files of small Windows programs and damages them:
//
//     ProgramImage({"kernel32.dll", "user32.dll"}).Truncate(0x90).Write("short.exe");
//
// One section, behind headers of 0x200 bytes, holds the import table, the delayed one and the
// names.
#ifndef BRCORE8_TESTS_SUPPORT_PROGRAM_IMAGE_H
#define BRCORE8_TESTS_SUPPORT_PROGRAM_IMAGE_H

#include <cstdint>
#include <fstream>
#include <string>
#include <vector>

class ProgramImage {
public:
    enum class Kind { Bits32, Bits64 };

    // Where things are in the file.
    static constexpr std::size_t NewHeader = 0x80;
    static constexpr std::size_t SectionCount = NewHeader + 6;
    static constexpr std::size_t OptionalSize = NewHeader + 20;
    static constexpr std::size_t Magic = NewHeader + 24;
    static constexpr std::size_t Tables = 0x200;
    static constexpr std::uint32_t TablesAddress = 0x1000;
    static constexpr std::uint32_t ImageBase = 0x400000;
    std::size_t DirectoryCount() const { return Magic + (wide_ ? 108 : 92); }
    std::size_t Directory(unsigned index) const { return DirectoryCount() + 4 + 8 * index; }
    std::size_t Section() const { return Magic + (wide_ ? 240 : 224); }
    // The field of the n-th descriptor that leads to its name.
    static constexpr std::size_t NameField(std::size_t n) { return Tables + 20 * n + 12; }

    explicit ProgramImage(const std::vector<std::string>& imports, Kind kind = Kind::Bits32,
                          const std::vector<std::string>& delayed = {})
        : wide_(kind == Kind::Bits64) {
        bytes_.resize(Tables + 20 * (imports.size() + 1) + 32 * (delayed.size() + 1));
        std::size_t descriptor = Tables;
        for (const std::string& name : imports) {
            Put32(descriptor + 12, AddName(name));
            descriptor += 20;
        }
        delayedTable_ = descriptor += 20;
        for (const std::string& name : delayed) {
            Put32(descriptor, 1);
            Put32(descriptor + 4, AddName(name));
            descriptor += 32;
        }
        WriteHeaders(!delayed.empty());
    }

    // The delayed table by addresses of the loaded image, as early linkers made it.
    ProgramImage& Absolute(std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) {
            const std::size_t at = delayedTable_ + 32 * i;
            Put32(at, 0);
            Put32(at + 4, Get32(at + 4) + ImageBase);
        }
        return *this;
    }
    ProgramImage& Truncate(std::size_t size) {
        bytes_.resize(size);
        return *this;
    }
    ProgramImage& Flip(std::size_t at, int mask = 0xFF) {
        bytes_[at] = static_cast<char>(bytes_[at] ^ mask);
        return *this;
    }
    ProgramImage& Put32(std::size_t at, std::uint32_t value) {
        Put16(at, value);
        return Put16(at + 2, value >> 16);
    }
    ProgramImage& Put16(std::size_t at, std::uint32_t value) {
        bytes_[at] = static_cast<char>(value);
        bytes_[at + 1] = static_cast<char>(value >> 8);
        return *this;
    }

    const std::string& Bytes() const { return bytes_; }
    void Write(const std::string& path) const { std::ofstream(path, std::ios::binary) << bytes_; }

private:
    std::uint32_t AddName(const std::string& name) {
        const std::size_t at = bytes_.size();
        bytes_.append(name).push_back('\0');
        return AddressOf(at);
    }
    static std::uint32_t AddressOf(std::size_t at) {
        return static_cast<std::uint32_t>(at - Tables) + TablesAddress;
    }
    std::uint32_t Get32(std::size_t at) const {
        std::uint32_t value = 0;
        for (std::size_t i = 4; i-- > 0;)
            value = value << 8 | static_cast<unsigned char>(bytes_[at + i]);
        return value;
    }
    void WriteHeaders(bool delayed) {
        bytes_.replace(0, 2, "MZ").replace(NewHeader, 2, "PE");
        Put32(0x3C, NewHeader);
        Put16(NewHeader + 4, wide_ ? 0x8664 : 0x14C);
        Put16(SectionCount, 1);
        Put16(OptionalSize, wide_ ? 240 : 224);
        Put16(NewHeader + 22, 0x2102);  // a library
        Put16(Magic, wide_ ? 0x20B : 0x10B);
        Put32(Magic + (wide_ ? 24 : 28), ImageBase);
        Put32(Magic + 32, 0x1000);  // alignments: loaded, in the file
        Put32(Magic + 36, 0x200);
        Put32(DirectoryCount(), 16);
        Put32(Directory(1), TablesAddress);
        Put32(Directory(1) + 4, static_cast<std::uint32_t>(delayedTable_ - Tables));
        if (delayed) Put32(Directory(13), AddressOf(delayedTable_));
        bytes_.replace(Section(), 6, ".idata");
        const auto size = static_cast<std::uint32_t>(bytes_.size() - Tables);
        Put32(Section() + 8, size);
        Put32(Section() + 12, TablesAddress);
        Put32(Section() + 16, size);
        Put32(Section() + 20, Tables);
        Put32(Section() + 36, 0xC0000040);  // data to read and write
    }

    bool wide_;
    std::size_t delayedTable_ = 0;
    std::string bytes_;
};

#endif
