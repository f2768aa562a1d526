// Builds archives byte by byte, sound ones and damaged ones.
//
//     ZipBuilder zip;
//     zip.Add({.name = "a.txt", .data = "text", .method = 8});
//     std::string bytes = zip.Bytes();
//     FlipByte(bytes, zip.DataAt(0));
#ifndef BRCORE8_TESTS_ARCHIVE_ZIP_BUILDER_H
#define BRCORE8_TESTS_ARCHIVE_ZIP_BUILDER_H

#include <zlib.h>

#include <cstdint>
#include <string>
#include <vector>

inline std::string Deflated(const std::string& data, int level = 6) {
    z_stream stream{};
    deflateInit2(&stream, level, Z_DEFLATED, -15, 8, Z_DEFAULT_STRATEGY);
    std::string packed(deflateBound(&stream, static_cast<uLong>(data.size())) + 16, '\0');
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(data.data()));
    stream.avail_in = static_cast<uInt>(data.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    deflate(&stream, Z_FINISH);
    packed.resize(stream.total_out);
    deflateEnd(&stream);
    return packed;
}

inline std::uint32_t Crc(const std::string& data) {
    return static_cast<std::uint32_t>(
        crc32_z(0, reinterpret_cast<const Bytef*>(data.data()), data.size()));
}

// Little-endian fields, written and changed.
inline std::string Number(std::uint64_t value, int bytes) {
    std::string text;
    for (; bytes > 0; --bytes, value >>= 8)
        text += static_cast<char>(value & 255);
    return text;
}
inline void SetNumber(std::string& bytes, std::size_t at, std::uint64_t value, int size) {
    bytes.replace(at, static_cast<std::size_t>(size), Number(value, size));
}

// The verbs of damage.
inline void Truncate(std::string& bytes, std::size_t size) {
    bytes.resize(size);
}
inline void FlipByte(std::string& bytes, std::size_t at) {
    bytes[at] = static_cast<char>(~bytes[at]);
}

struct ZipItem {
    std::string name;
    std::string data = "";
    int method = 0;
    int flags = 0;
    std::string comment = "";
    std::string extra = "";
    std::uint32_t external = 0;
    std::uint16_t madeBy = 20;
    std::uint16_t date = 58 << 9 | 2 << 5 | 28;  // 2038-02-28
    std::uint16_t time = 12 << 11 | 30 << 5 | 4;
    int level = 6;
};

class ZipBuilder {
public:
    void Add(const ZipItem& item) {
        const std::string packed = item.method == 8 ? Deflated(item.data, item.level) : item.data;
        const std::string sums =
            Number(Crc(item.data), 4) + Number(packed.size(), 4) + Number(item.data.size(), 4);
        const bool descriptor = (item.flags & 8) != 0;
        const std::string common = Number(20, 2) + Number(static_cast<unsigned>(item.flags), 2) +
                                   Number(static_cast<unsigned>(item.method), 2) +
                                   Number(item.time, 2) + Number(item.date, 2);
        const std::string lengths = Number(item.name.size(), 2) + Number(item.extra.size(), 2);
        offsets_.push_back(body_.size());
        body_ += "PK\3\4" + common + (descriptor ? std::string(12, '\0') : sums) + lengths +
                 item.name + item.extra;
        data_.push_back(body_.size());
        body_ += packed;
        if (descriptor) body_ += "PK\7\10" + sums;
        heads_.push_back(directory_.size());
        directory_ += "PK\1\2" + Number(item.madeBy, 2) + common + sums + lengths +
                      Number(item.comment.size(), 2) + Number(0, 4) + Number(item.external, 4) +
                      Number(offsets_.back(), 4) + item.name + item.extra + item.comment;
    }

    // Another directory entry for the data of entry `index`, under another name.
    void AddHead(std::size_t index, const std::string& name) {
        std::string head = directory_.substr(heads_[index], 46);
        SetNumber(head, 28, name.size(), 2);
        SetNumber(head, 30, 0, 4);
        heads_.push_back(directory_.size());
        directory_ += head + name;
    }

    std::string Bytes(const std::string& comment = "") const {
        return body_ + directory_ + "PK\5\6" + Number(0, 4) + Number(heads_.size(), 2) +
               Number(heads_.size(), 2) + Number(directory_.size(), 4) + Number(body_.size(), 4) +
               Number(comment.size(), 2) + comment;
    }

    // Where things stand in those bytes.
    std::size_t LocalAt(std::size_t index) const { return offsets_[index]; }
    std::size_t DataAt(std::size_t index) const { return data_[index]; }
    std::size_t HeadAt(std::size_t index) const { return body_.size() + heads_[index]; }
    std::size_t DirectoryAt() const { return body_.size(); }
    std::size_t EndAt() const { return body_.size() + directory_.size(); }

    // Makes the directory and the local header give the CRC-32 of other data.
    void FixCrc(std::string& bytes, std::size_t index, const std::string& data) const {
        SetNumber(bytes, HeadAt(index) + 16, Crc(data), 4);
        SetNumber(bytes, LocalAt(index) + 14, Crc(data), 4);
    }

private:
    std::string body_;
    std::string directory_;
    std::vector<std::size_t> offsets_;
    std::vector<std::size_t> data_;
    std::vector<std::size_t> heads_;
};

#endif
