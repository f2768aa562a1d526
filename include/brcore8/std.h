// A bridge for programs that catch std::exception only: the library's exceptions have no base of
// their own kind. And SString's formatter, where the compiler has <format>.
//
//     const int exitCode = SWithStdExceptions([&] { return Run(arguments); });
//
// Threads: like the exceptions themselves. Ownership: the adaptor keeps the original alive.
#ifndef BRCORE8_STD_H
#define BRCORE8_STD_H

#include <brcore8/core/exception.h>
#include <brcore8/strings/string.h>

#include <exception>
#include <string_view>
#include <utility>
#include <version>

#if defined(__cpp_lib_format)
#include <format>

// The text as a string of its length, zero bytes included.
template <>
struct std::formatter<SString> : std::formatter<std::string_view> {
    template <class Context>
    auto format(const SString& text, Context& context) const {
        return std::formatter<std::string_view>::format(std::string_view(text), context);
    }
};
#endif

// Stands for an SException that is being handled; what() is its text.
class SStdException : public std::exception {
public:
    // Call it in the handler that caught `error`.
    explicit SStdException(const SException& error) noexcept
        : original_(std::current_exception()), text_(error.GetText()) {}

    // The original's own text, not a copy: std::current_exception shares the object.
    const char* what() const noexcept override { return text_; }

    // Throws the original again, for a caller that knows the library after all.
    [[noreturn]] void RethrowOriginal() const { std::rethrow_exception(original_); }

private:
    std::exception_ptr original_;
    const char* text_;
};

// Calls `function` and returns its result; an SException that leaves it becomes an SStdException.
// Everything else passes unchanged.
template <class Function>
auto SWithStdExceptions(Function&& function) -> decltype(std::forward<Function>(function)()) {
    try {
        return std::forward<Function>(function)();
    } catch (const SException& error) {
        throw SStdException(error);
    }
}

#endif
