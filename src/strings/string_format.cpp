// Formatting walks the format itself: the platform's own function would take wide text in units
// of another size on some systems, and reads some size prefixes as something else. Numbers are
// written by it, one conversion at a time.
#include <brcore8/strings/string.h>

#include <brcore8/core/throw.h>

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstring>

#include "strings/code_page.h"
#include "strings/short_number.h"

using brcore8::CodePage;

namespace {

// The text so far: short ones never touch the heap.
class Output {
public:
    Output() = default;
    ~Output() {
        if (data_ != stack_) brcore8::Release(data_);
    }
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    // Room for so many bytes behind the text, and a terminator; Grow then makes them text.
    char* Room(std::size_t bytes) {
        if (bytes > static_cast<std::size_t>(SString::MaxBytes) - size_) {
            brcore8::ThrowOutOfMemory();
        }
        const std::size_t needed = size_ + bytes + 1;
        if (needed > capacity_) Enlarge(std::max(needed, 2 * capacity_));
        return data_ + size_;
    }
    void Grow(std::size_t bytes) { size_ += bytes; }

    void Append(const char* text, std::size_t bytes) {
        if (bytes == 0) return;
        std::memcpy(Room(bytes), text, bytes);
        Grow(bytes);
    }
    // The text in a field of `width`.
    void AppendField(const char* text, std::size_t bytes, std::size_t width, bool left) {
        hasZero_ = hasZero_ || (bytes == 1 && *text == 0);
        if (!left) Pad(bytes, width);
        Append(text, bytes);
        if (left) Pad(bytes, width);
    }

    std::size_t Free() const { return capacity_ - size_; }
    const char* Text() const { return data_; }
    // Up to the first zero byte, where the platform's functions see the end.
    std::size_t Bytes() const { return hasZero_ ? strnlen(data_, size_) : size_; }

private:
    void Pad(std::size_t bytes, std::size_t width) {
        if (width <= bytes) return;
        std::memset(Room(width - bytes), ' ', width - bytes);
        Grow(width - bytes);
    }
    void Enlarge(std::size_t capacity) {
        if (data_ == stack_) {
            data_ = static_cast<char*>(std::memcpy(brcore8::Allocate(capacity), stack_, size_));
        } else {
            data_ = static_cast<char*>(brcore8::Reallocate(data_, capacity));
        }
        capacity_ = capacity;
    }

    char stack_[512];
    char* data_ = stack_;
    std::size_t size_ = 0;
    std::size_t capacity_ = sizeof(stack_);
    bool hasZero_ = false;  // which only a character can be
};

enum class Size { Default, Char, Short, Long, LongLong, Max, Pointer, Int32 };

// What stands between "%" and the conversion letter.
struct Conversion {
    char flags[7] = {};
    bool left = false;
    std::int64_t width = 0;
    std::int64_t precision = -1;  // -1: none
    Size size = Size::Default;
    bool longDouble = false;
    char letter = 0;

    bool IsPlain() const { return flags[0] == 0 && width == 0 && precision < 0; }
    bool IsDecimal() const { return letter == 'd' || letter == 'i' || letter == 'u'; }
    // Whether a conversion may end here: not all letters, but most that stand alone.
    static bool IsLetter(char letter) {
        switch (letter) {
            case 'c':
            case 'd':
            case 'g':
            case 's':
            case 'u':
            case 'x':
                return true;
            default:
                return false;
        }
    }
    static bool IsFlag(char letter) {
        return letter == '#' || letter == '-' || letter == '+' || letter == '0' || letter == ' ' ||
               letter == '\'';
    }
    void AddFlag(char flag) {
        if (!std::strchr(flags, flag)) flags[std::strlen(flags)] = flag;
        left = left || flag == '-';
    }
};

class Formatter {
public:
    // To be started, or copied to, before the formatting: a copy made of them would cost as much as
    // a short number.
    std::va_list arguments;

    // The text lives as long as this does.
    std::string_view Run(const char* format) {
        while (format && *format) {
            const char* const plain = format;
            while (*format && *format != '%')
                ++format;
            output_.Append(plain, static_cast<std::size_t>(format - plain));
            if (*format == 0) break;
            const char* begin = format++;
            Conversion conversion;
            format = Parse(format, conversion);
            // What is no conversion is text like any other.
            if (!Convert(conversion))
                output_.Append(begin, static_cast<std::size_t>(format - begin));
        }
        return {output_.Text(), output_.Bytes()};
    }

private:
    const char* Parse(const char* p, Conversion& to);
    static const char* ParseSize(const char* p, Conversion& to);
    static const char* ParseNumber(const char* p, std::int64_t& value);

    bool Convert(const Conversion& conversion);
    void Signed(const Conversion& conversion);
    void Unsigned(const Conversion& conversion);
    void Fraction(const Conversion& conversion, double value);
    void Narrow(const Conversion& conversion, const char* text);
    void Wide(const Conversion& conversion, const unsigned short* text);
    void Character(const Conversion& conversion, bool wide);
    template <typename Value>
    void PrintWhole(const Conversion& conversion, Value value);
    template <typename Value>
    void Print(const Conversion& conversion, const char* size, Value value);

    Output output_;
};

// --- Reading a conversion ----------------------------------------------------------------------

const char* Formatter::ParseNumber(const char* p, std::int64_t& value) {
    // Beyond what any text can hold the exact number no longer matters.
    for (value = 0; *p >= '0' && *p <= '9'; ++p)
        value = std::min<std::int64_t>(value * 10 + (*p - '0'), INT64_C(0xFFFFFFFF));
    return p;
}

const char* Formatter::Parse(const char* p, Conversion& to) {
    if (Conversion::IsLetter(*p)) {
        to.letter = *p;
        return p + 1;
    }
    while (Conversion::IsFlag(*p))
        to.AddFlag(*p++);
    if (*p == '*') {
        to.width = va_arg(arguments, int);
        if (to.width < 0) {
            to.width = -to.width;
            to.AddFlag('-');
        }
        ++p;
    } else {
        p = ParseNumber(p, to.width);
    }
    if (*p == '.' && p[1] == '*') {
        to.precision = std::max(va_arg(arguments, int), -1);
        p += 2;
    } else if (*p == '.') {
        p = ParseNumber(p + 1, to.precision);
    }
    p = ParseSize(p, to);
    to.letter = *p;
    return *p ? p + 1 : p;
}

const char* Formatter::ParseSize(const char* p, Conversion& to) {
    for (;; ++p) {
        switch (*p) {
            case 'N':
                break;
            case 'L':
                to.size = Size::LongLong;
                to.longDouble = true;
                break;
            case 'h':
                to.size = to.size == Size::Short ? Size::Char : Size::Short;
                break;
            case 'l':
                to.size = to.size == Size::Long ? Size::LongLong : Size::Long;
                break;
            case 'j':
                to.size = Size::Max;
                break;
            case 'z':
            case 't':
                to.size = Size::Pointer;
                break;
            case 'I':
                if (std::strncmp(p, "I64", 3) == 0 || std::strncmp(p, "I32", 3) == 0) {
                    to.size = p[1] == '6' ? Size::LongLong : Size::Int32;
                    p += 2;
                } else {
                    to.size = Size::Pointer;
                }
                break;
            default:
                return p;
        }
    }
}

// --- Writing it --------------------------------------------------------------------------------

bool Formatter::Convert(const Conversion& conversion) {
    const char letter = conversion.letter;
    const bool wide = conversion.size == Size::Long ||
                      (conversion.size != Size::Short && (letter == 'S' || letter == 'C'));
    switch (letter) {
        case '%':
            output_.Append("%", 1);
            return true;
        case 'd':
        case 'i':
            Signed(conversion);
            return true;
        case 'u':
        case 'x':
        case 'X':
        case 'o':
            Unsigned(conversion);
            return true;
        case 'a':
        case 'A':
        case 'e':
        case 'E':
        case 'f':
        case 'F':
        case 'g':
        case 'G':
            if (conversion.longDouble)
                Print(conversion, "L", va_arg(arguments, long double));
            else
                Fraction(conversion, va_arg(arguments, double));
            return true;
        case 'c':
        case 'C':
            Character(conversion, wide);
            return true;
        case 's':
        case 'S':
            if (wide)
                Wide(conversion, va_arg(arguments, const unsigned short*));
            else
                Narrow(conversion, va_arg(arguments, const char*));
            return true;
        case 'p':
            Print(conversion, "", va_arg(arguments, void*));
            return true;
        case 'n':
            static_cast<void>(va_arg(arguments, void*));
            return true;
        default:
            return false;
    }
}

void Formatter::Signed(const Conversion& conversion) {
    long long value = 0;
    switch (conversion.size) {
        case Size::Default:
            value = va_arg(arguments, int);
            break;
        case Size::Char:
            value = static_cast<signed char>(va_arg(arguments, int));
            break;
        case Size::Short:
            value = static_cast<short>(va_arg(arguments, int));
            break;
        case Size::Long:
            value = va_arg(arguments, long);
            break;
        case Size::LongLong:
            value = va_arg(arguments, long long);
            break;
        case Size::Max:
            value = va_arg(arguments, std::intmax_t);
            break;
        case Size::Pointer:
            value = va_arg(arguments, std::ptrdiff_t);
            break;
        case Size::Int32:
            value = va_arg(arguments, std::int32_t);
            break;
    }
    PrintWhole(conversion, value);
}

void Formatter::Unsigned(const Conversion& conversion) {
    unsigned long long value = 0;
    switch (conversion.size) {
        case Size::Default:
            value = va_arg(arguments, unsigned);
            break;
        case Size::Char:
            value = static_cast<unsigned char>(va_arg(arguments, unsigned));
            break;
        case Size::Short:
            value = static_cast<unsigned short>(va_arg(arguments, unsigned));
            break;
        case Size::Long:
            value = va_arg(arguments, unsigned long);
            break;
        case Size::LongLong:
            value = va_arg(arguments, unsigned long long);
            break;
        case Size::Max:
            value = va_arg(arguments, std::uintmax_t);
            break;
        case Size::Pointer:
            value = va_arg(arguments, std::size_t);
            break;
        case Size::Int32:
            value = va_arg(arguments, std::uint32_t);
            break;
    }
    PrintWhole(conversion, value);
}

template <typename Value>
void Formatter::PrintWhole(const Conversion& conversion, Value value) {
    if (!conversion.IsPlain() || !conversion.IsDecimal()) return Print(conversion, "ll", value);
    constexpr std::size_t kDigits = 20;
    char* room = output_.Room(kDigits);
    output_.Grow(static_cast<std::size_t>(std::to_chars(room, room + kDigits, value).ptr - room));
}

void Formatter::Fraction(const Conversion& conversion, double value) {
    if (conversion.IsPlain() && conversion.letter == 'g') {
        char* const room = output_.Room(brcore8::kShortNumber);
        if (const char* const end = brcore8::PutShortNumber(value, room))
            return output_.Grow(static_cast<std::size_t>(end - room));
    }
    Print(conversion, "", value);
}

template <typename Value>
void Formatter::Print(const Conversion& conversion, const char* size, Value value) {
    if (std::max(conversion.width, conversion.precision) > SString::MaxBytes)
        brcore8::ThrowOutOfMemory();
    char format[48] = "%";
    char* end = format + 1;
    char* const limit = format + sizeof(format);
    end = std::copy_n(conversion.flags, std::strlen(conversion.flags), end);
    if (conversion.width > 0) end = std::to_chars(end, limit, conversion.width).ptr;
    if (conversion.precision >= 0) {
        *end++ = '.';
        end = std::to_chars(end, limit, conversion.precision).ptr;
    }
    end = std::copy_n(size, std::strlen(size), end);
    *end = conversion.letter;
    int written = std::snprintf(output_.Room(0), output_.Free(), format, value);
    if (written >= 0 && static_cast<std::size_t>(written) >= output_.Free()) {
        char* room = output_.Room(static_cast<std::size_t>(written));
        written = std::snprintf(room, output_.Free(), format, value);
    }
    if (written < 0) brcore8::ThrowOutOfMemory();
    output_.Grow(static_cast<std::size_t>(written));
}

void Formatter::Narrow(const Conversion& conversion, const char* text) {
    if (!text) text = "(null)";
    const std::size_t bytes = conversion.precision < 0
                                  ? std::strlen(text)
                                  : strnlen(text, static_cast<std::size_t>(conversion.precision));
    output_.AppendField(text, bytes, static_cast<std::size_t>(conversion.width), conversion.left);
}

void Formatter::Wide(const Conversion& conversion, const unsigned short* text) {
    if (!text) return Narrow(conversion, nullptr);
    // Under a precision the text may lack its terminator: no more units than bytes are read.
    const std::int64_t limit = conversion.precision < 0 ? INT64_MAX : conversion.precision;
    std::int64_t units = 0;
    while (units < limit && text[units] != 0)
        ++units;
    const CodePage& page = CodePage::Ansi();
    const auto count = static_cast<std::size_t>(units);
    const std::size_t bytes = page.FromWide(text, count, nullptr, 0);
    if (bytes > static_cast<std::size_t>(SString::MaxBytes)) brcore8::ThrowOutOfMemory();
    Output converted;
    page.FromWide(text, count, converted.Room(bytes), bytes);
    std::size_t kept = bytes;
    if (static_cast<std::uint64_t>(limit) < bytes) {
        // Whole characters only.
        const char* all = converted.Text();
        for (kept = 0; static_cast<std::int64_t>(kept) < limit;) {
            const std::size_t width = page.IsLead(static_cast<unsigned char>(all[kept])) ? 2 : 1;
            if (static_cast<std::int64_t>(kept + width) > limit) break;
            kept += width;
        }
    }
    output_.AppendField(converted.Text(), kept, static_cast<std::size_t>(conversion.width),
                        conversion.left);
}

void Formatter::Character(const Conversion& conversion, bool wide) {
    const int code = va_arg(arguments, int);
    char bytes[4] = {static_cast<char>(code)};
    std::size_t count = 1;
    if (wide) {
        const auto unit = static_cast<std::uint16_t>(code);
        count = std::min(CodePage::Ansi().FromWide(&unit, 1, bytes, sizeof(bytes)), sizeof(bytes));
    }
    output_.AppendField(bytes, count, static_cast<std::size_t>(conversion.width), conversion.left);
}

}  // namespace

// --- SString -----------------------------------------------------------------------------------

// The result grows apart from the target, whose text the arguments may point into.

void SString::Format(const char* format, ...) {
    Formatter formatter;
    va_start(formatter.arguments, format);
    *this = formatter.Run(format);
    va_end(formatter.arguments);
}

void SString::Format(unsigned int id, ...) {
    SString format;
    format.LoadString(id);
    Formatter formatter;
    va_start(formatter.arguments, id);
    *this = formatter.Run(format);
    va_end(formatter.arguments);
}

void SString::FormatV(const char* format, std::va_list arguments) {
    Formatter formatter;
    va_copy(formatter.arguments, arguments);
    *this = formatter.Run(format);
    va_end(formatter.arguments);
}
