#include <strings.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

#include "platform/posix/registry.h"

namespace {

constexpr std::size_t kMaxExpanded = 32767;

// The value of a variable: of the very name, else of one in another case; null when there is none.
const char* ValueOf(std::string_view name) noexcept {
    const char* other = nullptr;
    for (char** entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
        if (strncasecmp(*entry, name.data(), name.size()) != 0 || (*entry)[name.size()] != '=')
            continue;
        const char* const value = *entry + name.size() + 1;
        if (std::memcmp(*entry, name.data(), name.size()) == 0) return value;
        if (other == nullptr) other = value;
    }
    return other;
}

// Writes what fits and counts everything.
class Writer {
public:
    Writer(char* out, std::size_t room) noexcept : out_(out), room_(out != nullptr ? room : 0) {}
    void Put(std::string_view text) noexcept {
        if (total_ < room_)
            std::memcpy(out_ + total_, text.data(), std::min(text.size(), room_ - total_));
        total_ += text.size();
    }
    std::size_t Total() const noexcept { return total_; }

private:
    char* out_;
    std::size_t room_;
    std::size_t total_ = 0;
};

}  // namespace

DWORD ExpandEnvironmentStringsA(const char* source, char* out, DWORD size) noexcept {
    Writer writer(out, size);
    std::string_view rest(source);
    while (!rest.empty() && writer.Total() < kMaxExpanded) {
        const std::size_t plain = std::min(rest.find('%'), rest.size());
        writer.Put(rest.substr(0, plain));
        rest.remove_prefix(plain);
        if (rest.empty()) break;
        const std::size_t end = rest.find('%', 1);
        const char* const value =
            end != std::string_view::npos && end > 1 ? ValueOf(rest.substr(1, end - 1)) : nullptr;
        const std::size_t taken = end != std::string_view::npos ? end + 1 : rest.size();
        writer.Put(value != nullptr ? std::string_view(value) : rest.substr(0, taken));
        rest.remove_prefix(taken);
    }
    writer.Put(std::string_view("", 1));
    return writer.Total() <= kMaxExpanded ? static_cast<DWORD>(writer.Total()) : 0;
}
