// The formatter of SString for programs that use the {fmt} library. The text is formatted as a
// string of its length, zero bytes included. (That of <format> is in std.h.)
//
//     fmt::print("{:>10}|\n", name);
//
// This header needs {fmt}; the library itself does not, and brcore8.h leaves it out.
#ifndef BRCORE8_FMT_H
#define BRCORE8_FMT_H

#include <brcore8/strings/string.h>

#include <fmt/format.h>

#include <string_view>

namespace fmt {

template <>
struct formatter<SString> : formatter<std::string_view> {
    template <class Context>
    auto format(const SString& text, Context& context) const {
        return formatter<std::string_view>::format(std::string_view(text), context);
    }
};

}  // namespace fmt

#endif
