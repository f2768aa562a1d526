// SString: the one text type of every interface.
//
// A handle of one pointer onto a shared, reference-counted, copy-on-write buffer of bytes in the
// process's code page (see multibyte.h). Copying shares the buffer; writing first makes it one's
// own. The text is followed by a zero byte and is never null: an empty string, also a moved-from
// one, points at one shared empty buffer.
//
// Positions and counts are characters: under a double-byte page a lead byte and its trail byte
// are one, under a single-byte page every byte is one. A string may hold zero bytes: its lengths
// count them, and what takes another SString or a std::string_view sees them. What takes a
// `const char*`, and every comparison and search, ends at the first zero byte.
//
// Threads: handles on one buffer may be copied and destroyed by several threads at once; one
// handle that is written needs the caller's lock.
// Errors: every operation that needs memory throws SEOutOfMemory when there is none, or when the
// text would exceed MaxBytes; the string is then what it was before.
//
//     SString greeting = "Hello";
//     greeting += ", world";
//     greeting.ReplaceAll("o", "0");          // "Hell0, w0rld"
//     if (greeting.Match("Hell*")) { ... }
#ifndef BRCORE8_STRINGS_STRING_H
#define BRCORE8_STRINGS_STRING_H

#include <brcore8/platform/export.h>
#include <brcore8/platform/threads.h>
#include <brcore8/platform/types.h>

#include <atomic>
#include <compare>
#include <concepts>
#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <string_view>
#include <type_traits>
#include <utility>

class SStringBuffer;
namespace brcore8 {
class CodePage;
}

// What stands in front of the text. The text follows at once, then its zero byte.
struct SStringData {
    std::int32_t references;  // handles on this buffer; 1 = exclusively owned; -1 = locked
    std::int32_t bytes;       // text bytes, without the terminator
    std::int32_t capacity;    // text bytes there is room for, without the terminator
    std::int32_t characters;  // characters of the text; equals bytes under a single-byte page;
                              // 0 beside bytes: not counted yet
};
static_assert(sizeof(SStringData) == 16);

class BRCORE8_API SString {
public:
    class const_iterator;
    class item_iterator;
    class line_iterator;
    class word_iterator;
    class parts_iterator;

    // The longest text, in bytes: header, text and terminator stay below 2^31.
    enum : std::int32_t { MaxBytes = 0x7FFFFFFF - 17 };

    // ---- Create -------------------------------------------------------------------------------

    SString() noexcept : text_(EmptyText()) {}
    SString(std::nullptr_t) noexcept : SString() {}
    // A copy of the text; null is empty. A value below 0x10000 is no address but the identifier
    // of a string resource, which is loaded (see LoadString).
    SString(const char* text);
    // The bytes from `begin` up to `end`, zero bytes included; empty when either is null or
    // end <= begin.
    SString(const char* begin, const char* end);
    // The first `count` characters of the text, or all of it when it is shorter.
    SString(const char* text, int count);
    // Exactly the bytes of the view.
    explicit SString(std::string_view text);
    // UTF-16 text, converted to the process's code page; null is empty. The second form stops at
    // the terminator or after `count` units, whichever comes first.
    SString(const unsigned short* text);
    SString(const unsigned short* text, int count);
    // Shares the buffer, or copies the text when the other is locked.
    SString(const SString& other) : text_(other.text_) {
        if (text_ != EmptyText() && !AddReference()) CopyLocked();
    }
    // Takes the buffer over (a locked one stays locked) and leaves the other empty.
    SString(SString&& other) noexcept : text_(std::exchange(other.text_, EmptyText())) {}
    // A right-sized copy of its own, never a share of the growing buffer.
    SString(const SStringBuffer& buffer);
    // A character `repeat` times (two bytes each when it is double-byte); empty when repeat < 1.
    SString(unsigned int character, int repeat);
    SString(int character, int repeat) : SString(static_cast<unsigned int>(character), repeat) {}
    SString(char character, int repeat);
    // "Yes" for non-zero, "No" for zero.
    explicit SString(int truth);
    // Formatted with "%ld", "%lu" and "%g".
    explicit SString(long value);
    explicit SString(unsigned long value);
    explicit SString(double value);
    // The string resource `id` of a module; see LoadString.
    SString(HINSTANCE module, unsigned int id);
    ~SString() {
        if (text_ != EmptyText()) Drop(text_);
    }

    void Init(std::nullptr_t) noexcept { Done(); }
    void Init(const char* text) { *this = text; }
    void Init(const unsigned short* text) { *this = text; }
    void Init(const SString& text) { *this = text; }

    // Shares the other's buffer, or copies its text when either of the two is locked.
    SString& operator=(const SString& other);
    // Takes the other's buffer and leaves it empty; a locked string on either side is copied.
    SString& operator=(SString&& other);
    SString& operator=(const SStringBuffer& buffer);
    // Null is empty.
    SString& operator=(std::nullptr_t) noexcept { return Done(), *this; }
    SString& operator=(const char* text);
    SString& operator=(const unsigned short* text);
    SString& operator=(std::string_view text);
    // The single character.
    SString& operator=(unsigned int character);
    SString& operator=(int character) { return *this = static_cast<unsigned int>(character); }
    SString& operator=(char character);

    // ---- Read ---------------------------------------------------------------------------------

    // Characters, bytes, and whether there are none.
    int Length() const noexcept {
        const SStringData& data = *GetData();
        return data.characters != 0 || data.bytes == 0 ? data.characters : CountCharacters();
    }
    int LengthByte() const noexcept { return GetData()->bytes; }
    int IsEmpty() const noexcept { return GetData()->bytes == 0; }

    // The text, never null; valid until this handle is written, assigned or destroyed.
    operator const char*() const noexcept { return text_; }
    // All its bytes, zero bytes included; valid as long as the above.
    operator std::string_view() const noexcept { return View(); }
    std::string_view View() const noexcept {
        return {text_, static_cast<std::size_t>(LengthByte())};
    }
    // The text, or null when the string is empty.
    const char* GetSafePointer() const noexcept { return IsEmpty() ? nullptr : text_; }
    // Where character `index` stands; Length() gives the terminator; null outside 0..Length().
    const char* GetPointerAt(int index) const noexcept;

    // The character code at `index`: under a single-byte page the byte sign-extended; under a
    // double-byte page the byte, or the lead byte taken as signed times 256 plus the trail byte.
    // 0 outside 0..Length()-1.
    int GetAt(int index) const noexcept;
    int operator[](int index) const noexcept { return GetAt(index); }
    // For an index of another type, which would index the `const char*` as well as this string.
    template <std::integral Index>
    int operator[](Index index) const noexcept {
        return std::in_range<int>(+index) ? GetAt(static_cast<int>(index)) : 0;
    }
    // Replaces the character at `index`, which may change the byte length; nothing outside
    // 0..Length()-1.
    void SetAt(int index, unsigned int character);

    // The class of the character at `index` in the process's code page. IsASCII: its code taken
    // unsigned is below 128.
    int IsAlpha(int index) const noexcept;
    int IsDigit(int index) const noexcept;
    int IsAlphaNum(int index) const noexcept;
    int IsLower(int index) const noexcept;
    int IsUpper(int index) const noexcept;
    int IsWhitespace(int index) const noexcept;
    int IsASCII(int index) const noexcept;

    // To long and double: the text as a number, as atol and atof read it. To int: a truth value, 1
    // for "Yes" in any case, else whether the number is not 0. Templates, so that to no other
    // number type, nor to a character code, a string turns unasked.
    template <typename Number>
    requires(std::same_as<Number, long> || std::same_as<Number, double> ||
             std::same_as<Number, int>)
    operator Number() const noexcept {
        if constexpr (std::same_as<Number, long>)
            return ToLong();
        else if constexpr (std::same_as<Number, double>)
            return ToDouble();
        else
            return ToTruth();
    }
    // A condition would ask whether the text's address is null, which it never is: see IsEmpty.
    explicit operator bool() const = delete;
    // Whether the whole text is: an optional sign, digits, optionally one "," or "." and digits.
    // A lone sign or separator counts as a number too; an empty text does not.
    int IsNumber() const noexcept;
    // Whether the text begins as an RTF document does; false for null.
    int IsRtf() const noexcept { return IsRtfText(text_); }
    static int IsRtfText(const char* text) noexcept;

    // Copies the text with its terminator into a buffer of at least LengthByte() + 1 bytes, or
    // units; nothing for null.
    void ToAnsi(char* buffer) const noexcept;
    void ToUnicode(unsigned short* buffer) const;

    static int SafeStrlen(const char* text) noexcept;  // 0 for null

    // ---- Compare ------------------------------------------------------------------------------
    // Negative, zero or positive. Each family has four members: with the whole text, with at most
    // `bytes` bytes of it, and both again starting at character `start` of this string (the empty
    // text beyond its end). The text must not be null.

    // By character code.
    int Compare(const char* text) const noexcept;
    int Compare(const char* text, int bytes) const noexcept;
    int Compare(int start, const char* text) const noexcept;
    int Compare(int start, const char* text, int bytes) const noexcept;
    // The same with every letter of the code page folded to lower case.
    int CompareNoCase(const char* text) const noexcept;
    int CompareNoCase(const char* text, int bytes) const noexcept;
    int CompareNoCase(int start, const char* text) const noexcept;
    int CompareNoCase(int start, const char* text, int bytes) const noexcept;
    // In the order of the user's language.
    int Collate(const char* text) const;
    int Collate(const char* text, int bytes) const;
    int Collate(int start, const char* text) const;
    int Collate(int start, const char* text, int bytes) const;
    int CollateNoCase(const char* text) const;
    int CollateNoCase(const char* text, int bytes) const;
    int CollateNoCase(int start, const char* text) const;
    int CollateNoCase(int start, const char* text, int bytes) const;
    // Runs of digits by their value: "x9" < "x10" (see _tcscmpi).
    int CompareNb(const char* text) const noexcept;
    int CompareNb(const char* text, int bytes) const noexcept;
    int CompareNb(int start, const char* text) const noexcept;
    int CompareNb(int start, const char* text, int bytes) const noexcept;
    int CompareNbNoCase(const char* text) const noexcept;
    int CompareNbNoCase(const char* text, int bytes) const noexcept;
    int CompareNbNoCase(int start, const char* text) const noexcept;
    int CompareNbNoCase(int start, const char* text, int bytes) const noexcept;

    // Whether the whole text matches a pattern: "*" any run, "?" any one character, "\" takes the
    // next character literally (at the pattern's end it is ignored). A zero byte of this string is
    // a character like any other here. Costs at most the product of the lengths. Null is the
    // empty pattern.
    int Match(const char* pattern) const noexcept;
    int MatchNoCase(const char* pattern) const noexcept;

    // ---- Search -------------------------------------------------------------------------------
    // Pointers into this text, or null; `from` must point into this text. An empty text is found
    // at once; so is null by Find, while FindNoCase finds it nowhere.

    const char* Find(unsigned int character) const noexcept;
    const char* Find(unsigned int character, const char* from) const noexcept;
    const char* ReverseFind(unsigned int character) const noexcept;
    const char* Find(const char* what) const noexcept;
    const char* Find(const char* what, const char* from) const noexcept;
    const char* FindNoCase(const char* what) const noexcept;
    const char* FindNoCase(const char* what, const char* from) const noexcept;
    // The character index of the first match at or after `start`, or -1. The start position is
    // compared as a whole character; after it every character by its first byte alone,
    // sign-extended, so that a double-byte character is found at the start position only.
    int FindPos(unsigned int character, int start = 0) const noexcept;
    // The last match at or before `last` (-1: anywhere), or -1; compares whole characters.
    int ReverseFindPos(unsigned int character, int last = -1) const noexcept;

    // ---- Take parts ---------------------------------------------------------------------------
    // Counts are clamped to what there is; negative counts as 0.

    SString Left(int count) const;
    SString Right(int count) const;
    SString Mid(int first, int count) const;

    // ---- Change -------------------------------------------------------------------------------

    SString& operator+=(const SString& text);
    SString& operator+=(const char* text);  // null appends nothing
    SString& operator+=(std::string_view text);
    SString& operator+=(char character) {
        char* const text = text_;
        SStringData* const data = DataOf(text);
        const std::int32_t bytes = data->bytes;
        const std::int32_t characters = data->characters;
        // Building a text byte by byte: ASCII behind ASCII is a character more under every page.
        if (bytes >= data->capacity || characters == 0 || IsShared() ||
            static_cast<signed char>(text[bytes - 1] | character) < 0)
            return AppendByte(character);
        text[bytes] = character;
        text[bytes + 1] = 0;
        // After the text: in this order the next append has its header soonest.
        data->characters = characters + 1;
        data->bytes = bytes + 1;
        return *this;
    }
    SString& operator+=(unsigned int character);
    SString& operator+=(int character) { return *this += static_cast<unsigned int>(character); }

    // `index` beyond the end appends, below 0 inserts in front; null inserts nothing.
    void Insert(const char* text, int index);
    // Removes `count` characters from `index` on; a negative count, or one beyond the end,
    // removes to the end. Nothing when index lies outside 0..Length()-1.
    void Delete(int index, int count = 1);

    // Remove leading and trailing runs of one character (0: none), or of any character of a set
    // (null: none).
    void TrimLeft(unsigned int character);
    void TrimRight(unsigned int character);
    void Trim(unsigned int character);
    void TrimLeft(const char* set = " \t\r\n");
    void TrimRight(const char* set = " \t\r\n");
    void Trim(const char* set = " \t\r\n");

    // Replace the first occurrence, or all: a replacement is never itself searched. Return 1 when
    // something was replaced. Null or "" is found nowhere; a null replacement is empty.
    int Replace(const char* from, const char* to);
    int ReplaceNoCase(const char* from, const char* to);
    int ReplaceAll(const char* from, const char* to);
    int ReplaceAllNoCase(const char* from, const char* to);
    int Replace(unsigned int from, unsigned int to);
    int ReplaceNoCase(unsigned int from, unsigned int to);
    int ReplaceAll(unsigned int from, unsigned int to);
    int ReplaceAllNoCase(unsigned int from, unsigned int to);
    // ReplaceAll for each pair of characters of two texts walked in step, one pass a pair, to
    // the end of the shorter; 1 when any pass replaced something.
    int Translate(const char* from, const char* to);

    void ToUpper();
    void ToLower();
    void ToUpper(int index);
    void ToLower(int index);
    // In place between the process's ANSI and OEM code pages.
    void CharToOemA();
    void OemToCharA();

    // ---- Format -------------------------------------------------------------------------------

    // printf-style formatting into this string; arguments may point into its own text. Whatever
    // the result's length, it is whole, to its first zero byte. Numbers come out as the C library
    // writes them. Beyond that:
    // - "%s" and "%c" take text of the process's code page, with "l" and as "%S" and "%C" UTF-16
    //   text of 16-bit units on every system; "h" means code page text. A precision counts bytes,
    //   of which wide text gives whole characters only. A null text prints as "(null)".
    // - Size prefixes are those of C and "I", "I32", "I64"; "N" is ignored. "L" before a whole
    //   number means "ll".
    // - "%n" takes its argument and writes nothing.
    // - What is no conversion (an unknown letter, "%1$s", a lone "%" at the end) is plain text.
    // - A width, precision or result above MaxBytes throws SEOutOfMemory.
    BRCORE8_PRINTF(2, 3) void Format(const char* format, ...);
    // The same with a string resource as the format.
    void Format(unsigned int id, ...);
    void FormatV(const char* format, std::va_list arguments);

    // Loads a string resource: of `module`, or, when that is null, of the current resource module
    // (see module.h). Returns 1 when the loaded text is not empty; a failed load gives "".
    int LoadString(unsigned int id, HINSTANCE module = nullptr);
    int LoadStringA(unsigned int id, HINSTANCE module = nullptr) { return LoadString(id, module); }
    int LoadStringW(unsigned int id, HINSTANCE module = nullptr) { return LoadString(id, module); }

    // ---- Write into the buffer ----------------------------------------------------------------

    // An exclusively owned buffer with room for `characters` characters (0 counts as 1) and a
    // terminator, holding the old text, cut to that room. Valid until the next operation on this
    // string, normally Unlock.
    char* Lock(int characters);
    // Ends writing: the length is taken from the terminator (-1), or is so many characters, at
    // most what the buffer has room for.
    void Unlock(int characters = -1);
    // Lock, and the length set at once to `characters` (twice as many bytes under a double-byte
    // page), terminated.
    char* GetBufferSetLength(int characters);
    // Lock for the present text and mark the buffer locked: until UnlockBuffer, copies of this
    // string get buffers of their own, and assignments to it write into this one.
    char* LockBuffer();
    void UnlockBuffer() noexcept;
    // Empties the string; a locked buffer is kept, any other one given back.
    void Done() noexcept;
    // Points at the empty buffer without giving the present one back: for a handle whose buffer
    // was handed on.
    void SetNull() noexcept { text_ = EmptyText(); }

    SStringData* GetData() const noexcept { return reinterpret_cast<SStringData*>(text_) - 1; }
    // Gives unused blocks of the string pools back to the heap.
    static void DeleteEmptyStrings() noexcept;
    // Whether header and text agree: terminator in place, lengths within the capacity, the
    // character count, unless open, that of the text. For tests and debugging. False between
    // GetBufferSetLength and Unlock, and after a change of page, when the count is another.
    int AssertValid() const noexcept;

protected:
    // Buffer handling for this class and SStringBuffer. Those that throw leave the string as it
    // was; sources may lie in the string's own text.

    // A fresh exclusive buffer of `bytes` bytes, its content to be copied in by the caller;
    // bytes <= 0 gives the empty buffer. AllocBuffer does not give the old buffer back.
    static char* NewText(std::int64_t bytes);
    void AllocBuffer(std::int64_t bytes) { text_ = NewText(bytes); }
    // The same with a copy of so many bytes of a text, its characters counted.
    static char* CopyText(std::int64_t bytes, const char* text);
    // A buffer of one's own with room for `bytes` bytes, whose old content is given up; with
    // exactly the old content.
    void AllocBeforeWrite(std::int64_t bytes);
    void CopyBeforeWrite();
    void AssignCopy(std::int64_t bytes, const char* text);
    void ConcatInPlace(std::int64_t bytes, const char* text);
    // A buffer of one's own with the present text and at least so much room; returns where the
    // source stands then, which may be a part of the text.
    const char* Enlarge(std::int64_t capacity, const char* source);
    SString& AppendByte(char character);
    void Release() noexcept;
    // Writes the terminator and both lengths; at most the capacity, nothing on the empty buffer.
    void SetLength(std::int32_t bytes) noexcept;
    // Takes a buffer from NewText in place of the present one and keeps the locked state.
    void Adopt(char* text) noexcept;
    static void FreeData(SStringData* data) noexcept;
    static SString Join(std::string_view left, std::string_view right);

    bool IsShared() const noexcept { return References().load(std::memory_order_acquire) > 1; }
    bool IsLocked() const noexcept {
        return text_ != EmptyText() && References().load(std::memory_order_relaxed) < 0;
    }
    std::atomic_ref<std::int32_t> References() const noexcept { return References(text_); }
    static std::atomic_ref<std::int32_t> References(char* text) noexcept {
        return std::atomic_ref<std::int32_t>(DataOf(text)->references);
    }
    static SStringData* DataOf(char* text) noexcept {
        return reinterpret_cast<SStringData*>(text) - 1;
    }

    char* text_;

private:
    friend class SStringBuffer;
    friend BRCORE8_API SString operator+(const SString& left, const SString& right);
    friend BRCORE8_API SString operator+(const SString& left, const char* right);
    friend BRCORE8_API SString operator+(const char* left, const SString& right);

    struct EmptyBuffer {
        SStringData data;
        char terminator[4];
    };
    static EmptyBuffer empty_;
    static char* EmptyText() noexcept { return reinterpret_cast<char*>(&empty_.data + 1); }

    // One handle more on this buffer, unless it is locked or its count is nearly full.
    bool AddReference() const noexcept {
        const auto references = References();
        const std::int32_t count = references.load(std::memory_order_relaxed);
        if (static_cast<std::uint32_t>(count) >= 0x7FFF0000u) return false;
        if (brcore8::IsSingleThreaded())
            references.store(count + 1, std::memory_order_relaxed);
        else
            references.fetch_add(1, std::memory_order_relaxed);
        return true;
    }
    // One handle fewer on a buffer that is not the empty one.
    static void Drop(char* text) noexcept {
        const auto references = References(text);
        const std::int32_t count = references.load(std::memory_order_acquire);
        if (count > 1 && brcore8::IsSingleThreaded())
            references.store(count - 1, std::memory_order_relaxed);
        else if (count <= 1 || references.fetch_sub(1, std::memory_order_acq_rel) <= 1)
            FreeData(DataOf(text));
    }
    int CountCharacters() const noexcept;
    void CopyLocked();
    long ToLong() const noexcept;
    double ToDouble() const noexcept;
    int ToTruth() const noexcept;
    const char* From(int start) const noexcept;
    bool Owns(const char* text) const noexcept;
    char* LockBytes(std::int64_t capacity);
    const char* End() const noexcept { return text_ + LengthByte(); }
    int ByteOffset(int index) const noexcept;
    void Splice(std::int64_t offset, std::int64_t removed, std::string_view inserted);
    void Keep(const char* begin, const char* end);
    void Recode(const brcore8::CodePage& from, const brcore8::CodePage& to);
    void AssignWide(const unsigned short* text, std::size_t units);
    int ReplaceFirst(const char* from, const char* to, bool noCase);
    int ReplaceEvery(const char* from, const char* to, bool noCase);
    int ReplaceCharacters(unsigned int from, unsigned int to, bool noCase, bool all);
};
static_assert(sizeof(SString) == sizeof(void*));

// ---- Free operators ---------------------------------------------------------------------------

// A new string of exactly the joined length; null counts as empty.
BRCORE8_API SString operator+(const SString& left, const SString& right);
BRCORE8_API SString operator+(const SString& left, const char* right);
BRCORE8_API SString operator+(const char* left, const SString& right);
inline SString operator+(const SString& left, char right) {
    return left + SString(right, 1);
}
inline SString operator+(char left, const SString& right) {
    return SString(left, 1) + right;
}
// Neither an offset nor a character code: take the `const char*` for the one, `+=` for the other.
template <class Number>
requires std::is_arithmetic_v<Number> SString operator+(const SString&, Number) = delete;
template <class Number>
requires std::is_arithmetic_v<Number> SString operator+(Number, const SString&) = delete;

// By character code, as Compare; null counts as empty.
BRCORE8_API bool operator==(const SString& left, const SString& right) noexcept;
BRCORE8_API bool operator==(const SString& left, const char* right) noexcept;
BRCORE8_API bool operator==(const char* left, const SString& right) noexcept;
BRCORE8_API bool operator!=(const SString& left, const SString& right) noexcept;
BRCORE8_API bool operator!=(const SString& left, const char* right) noexcept;
BRCORE8_API bool operator!=(const char* left, const SString& right) noexcept;
BRCORE8_API bool operator<(const SString& left, const SString& right) noexcept;
BRCORE8_API bool operator<(const SString& left, const char* right) noexcept;
BRCORE8_API bool operator<(const char* left, const SString& right) noexcept;
BRCORE8_API bool operator>(const SString& left, const SString& right) noexcept;
BRCORE8_API bool operator>(const SString& left, const char* right) noexcept;
BRCORE8_API bool operator>(const char* left, const SString& right) noexcept;
BRCORE8_API bool operator<=(const SString& left, const SString& right) noexcept;
BRCORE8_API bool operator<=(const SString& left, const char* right) noexcept;
BRCORE8_API bool operator<=(const char* left, const SString& right) noexcept;
BRCORE8_API bool operator>=(const SString& left, const SString& right) noexcept;
BRCORE8_API bool operator>=(const SString& left, const char* right) noexcept;
BRCORE8_API bool operator>=(const char* left, const SString& right) noexcept;
// The same order for std::pair, std::vector and others that would compare pointers without it.
inline std::weak_ordering operator<=>(const SString& left, const SString& right) noexcept {
    return left.Compare(right) <=> 0;
}
// Whether the text is this one byte.
inline bool operator==(const SString& left, char right) noexcept {
    return left.View() == std::string_view(&right, 1);
}
// A number would be compared with the truth value of the text: convert explicitly.
template <class Number>
requires std::is_arithmetic_v<Number>
bool operator==(const SString&, Number) = delete;
template <class Number>
requires std::is_arithmetic_v<Number>
bool operator<=>(const SString&, Number) = delete;

// The bytes of the text, zero bytes included; width and fill apply as to a std::string_view.
BRCORE8_API std::ostream& operator<<(std::ostream& stream, const SString& text);

// Of the text up to its first zero byte, so that what compares equal hashes alike.
template <>
struct std::hash<SString> {
    std::size_t operator()(const SString& text) const noexcept {
        return std::hash<std::string_view>()(std::string_view(static_cast<const char*>(text)));
    }
};

#include <brcore8/strings/string_iterators.h>

#endif
