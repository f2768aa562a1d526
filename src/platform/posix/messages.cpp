#include "platform/posix/messages.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace {

struct Message {
    unsigned code;
    const char* text;
};

#define BRMESSAGE(code, text) {code, text "\r\n"},
constexpr Message kMessages[] = {
#include "platform/posix/messages.def"
};
#undef BRMESSAGE

constexpr bool ByCode(const Message& left, const Message& right) {
    return left.code < right.code;
}
static_assert(std::is_sorted(std::begin(kMessages), std::end(kMessages), ByCode));

}  // namespace

unsigned FormatMessageA(unsigned flags, const void*, unsigned code, unsigned, char* buffer,
                        unsigned size, void*) {
    if (flags != FORMAT_MESSAGE_FROM_SYSTEM) return 0;
    const unsigned errorNumber = code >> 16 == 0x8007 ? code & 0xFFFF : code;
    const Message wanted{errorNumber, nullptr};
    const Message* const found =
        std::lower_bound(std::begin(kMessages), std::end(kMessages), wanted, ByCode);
    if (found == std::end(kMessages) || found->code != errorNumber) return 0;
    const std::size_t length = std::strlen(found->text);
    if (length >= size) return 0;
    std::memcpy(buffer, found->text, length + 1);
    return static_cast<unsigned>(length);
}
