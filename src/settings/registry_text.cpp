#include "settings/registry_text.h"

#include <brcore8/settings/registry.h>

#include <algorithm>
#include <charconv>

namespace brcore8 {
namespace {

constexpr char kHeading[] = "brcore8-settings 1";
constexpr char kHex[] = "0123456789abcdef";
constexpr std::uint32_t kMaxDword = 0xFFFFFFFF;

// The escapes of one letter, each before the byte that it stands for.
constexpr std::string_view kEscapes = "\\\\\"\"t\tr\rn\n";

int HexDigit(char digit) {
    if (digit >= '0' && digit <= '9') return digit - '0';
    if (digit >= 'a' && digit <= 'f') return digit - 'a' + 10;
    return digit >= 'A' && digit <= 'F' ? digit - 'A' + 10 : -1;
}

// The byte that two digits at the front stand for; -1 when they are none.
int HexByte(std::string_view text) {
    if (text.size() < 2) return -1;
    const int high = HexDigit(text[0]), low = HexDigit(text[1]);
    return high < 0 || low < 0 ? -1 : high * 16 + low;
}

bool IsControl(char byte) {
    return static_cast<unsigned char>(byte) < 0x20 || byte == 0x7F;
}

std::uint32_t LowFirst(std::string_view bytes) {
    std::uint32_t number = 0;
    for (int place = 3; place >= 0; --place)
        number = number << 8 | static_cast<unsigned char>(bytes[static_cast<std::size_t>(place)]);
    return number;
}

void Append(SStringBuffer& out, unsigned long number) {
    char digits[24];
    const auto end = std::to_chars(digits, digits + sizeof digits, number);
    out.Concat(digits, end.ptr);
}

}  // namespace

// --- writing -------------------------------------------------------------------------------------

SettingsTextWriter::SettingsTextWriter(SStringBuffer& out) : out_(out) {
    (out_ += kHeading) += '\n';
}

void SettingsTextWriter::Key(std::string_view path) {
    out_ += "key ";
    Quoted(path);
    out_ += '\n';
}

void SettingsTextWriter::Value(std::string_view name, unsigned long type, std::string_view data) {
    Quoted(name);
    out_ += " = ";
    const bool isText = type == SRegistry::TypeString || type == SRegistry::TypeExpandString;
    if (isText && data.ends_with('\0')) {
        out_ += type == SRegistry::TypeString ? "string " : "expand ";
        Quoted(data.substr(0, data.size() - 1));
    } else if (type == SRegistry::TypeDword && data.size() == 4) {
        out_ += "dword ";
        Append(out_, LowFirst(data));
    } else {
        out_ += type == SRegistry::TypeBinary ? "binary" : "type ";
        if (type != SRegistry::TypeBinary) Append(out_, type);
        Bytes(data);
    }
    out_ += '\n';
}

void SettingsTextWriter::Quoted(std::string_view text) {
    out_ += '"';
    for (const char byte : text) {
        std::size_t place = 1;
        while (place < kEscapes.size() && kEscapes[place] != byte)
            place += 2;
        if (place < kEscapes.size())
            (out_ += '\\') += kEscapes[place - 1];
        else if (IsControl(byte))
            ((out_ += "\\x") += kHex[byte >> 4 & 15]) += kHex[byte & 15];
        else
            out_ += byte;
    }
    out_ += '"';
}

void SettingsTextWriter::Bytes(std::string_view data) {
    for (const char byte : data)
        ((out_ += ' ') += kHex[byte >> 4 & 15]) += kHex[byte & 15];
}

// --- reading -------------------------------------------------------------------------------------

SettingsTextReader::Item SettingsTextReader::Next() {
    if (!begun_) {
        begun_ = true;
        if (!NextLine() || text_ != kHeading) return Item::Fault;
    }
    while (NextLine())
        if (!text_.empty() && text_[0] != '#') return TakeItem();
    return Item::End;
}

bool SettingsTextReader::NextLine() {
    if (rest_.empty()) return false;
    const std::size_t end = rest_.find('\n');
    text_ = rest_.substr(0, end);
    rest_.remove_prefix(std::min(text_.size() + 1, rest_.size()));
    if (text_.ends_with('\r')) text_.remove_suffix(1);
    ++line_;
    return true;
}

SettingsTextReader::Item SettingsTextReader::TakeItem() {
    if (Take("key ")) {
        inKey_ = true;
        return TakeName() && text_.empty() ? Item::Key : Item::Fault;
    }
    const bool whole = inKey_ && TakeName() && Take(" = ") && TakeData() && text_.empty();
    return whole ? Item::Value : Item::Fault;
}

bool SettingsTextReader::Take(std::string_view word) {
    if (!text_.starts_with(word)) return false;
    text_.remove_prefix(word.size());
    return true;
}

// A name cannot hold a zero byte.
bool SettingsTextReader::TakeName() {
    data_.Clear();
    if (!TakeQuoted(data_) || data_.View().find('\0') != std::string_view::npos) return false;
    name_ = data_;
    return true;
}

bool SettingsTextReader::TakeData() {
    data_.Clear();
    if (Take("string ")) {
        type_ = SRegistry::TypeString;
    } else if (Take("expand ")) {
        type_ = SRegistry::TypeExpandString;
    } else if (Take("dword ")) {
        unsigned long number = 0;
        type_ = SRegistry::TypeDword;
        if (!TakeNumber(number)) return false;
        for (int place = 0; place < 4; ++place)
            data_ += static_cast<char>(number >> 8 * place);
        return true;
    } else if (Take("binary")) {
        type_ = SRegistry::TypeBinary;
        return TakeBytes();
    } else {
        return Take("type ") && TakeNumber(type_) && TakeBytes();
    }
    if (!TakeQuoted(data_)) return false;
    data_ += '\0';
    return true;
}

bool SettingsTextReader::TakeQuoted(SStringBuffer& out) {
    if (!Take("\"")) return false;
    for (;;) {
        const std::size_t plain = std::min(text_.find_first_of("\"\\"), text_.size());
        out += text_.substr(0, plain);
        text_.remove_prefix(plain);
        if (text_.empty()) return false;
        if (Take("\"")) return true;
        text_.remove_prefix(1);
        if (text_.empty()) return false;
        const char letter = text_[0];
        text_.remove_prefix(1);
        std::size_t place = 0;
        while (place < kEscapes.size() && kEscapes[place] != letter)
            place += 2;
        const int byte = place < kEscapes.size() ? kEscapes[place + 1]
                         : letter == 'x'         ? HexByte(text_)
                                                 : -1;
        if (byte < 0) return false;
        if (letter == 'x') text_.remove_prefix(2);
        out += static_cast<char>(byte);
    }
}

bool SettingsTextReader::TakeNumber(unsigned long& number) {
    std::uint64_t value = 0;
    const auto read = std::from_chars(text_.data(), text_.data() + text_.size(), value);
    if (read.ec != std::errc() || value > kMaxDword) return false;
    text_.remove_prefix(static_cast<std::size_t>(read.ptr - text_.data()));
    number = static_cast<unsigned long>(value);
    return true;
}

bool SettingsTextReader::TakeBytes() {
    while (!text_.empty()) {
        const int byte = text_[0] == ' ' ? HexByte(text_.substr(1)) : -1;
        if (byte < 0) return false;
        data_ += static_cast<char>(byte);
        text_.remove_prefix(3);
    }
    return true;
}

}  // namespace brcore8
