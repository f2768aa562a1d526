#include <brcore8/strings/string.h>

#include <brcore8/core/throw.h>

#include <cstdio>

void SString::Format(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    FormatV(format, arguments);
    va_end(arguments);
}

void SString::Format(unsigned int id, ...) {
    SString format;
    format.LoadString(id);
    std::va_list arguments;
    va_start(arguments, id);
    FormatV(format, arguments);
    va_end(arguments);
}

void SString::FormatV(const char* format, std::va_list arguments) {
    std::va_list measured;
    va_copy(measured, arguments);
    const int bytes = std::vsnprintf(nullptr, 0, format, measured);
    va_end(measured);
    if (bytes < 0) brcore8::ThrowOutOfMemory();
    SString result;
    result.AllocBuffer(bytes);
    if (bytes > 0)
        std::vsnprintf(result.text_, static_cast<std::size_t>(bytes) + 1, format, arguments);
    result.SetLength(bytes);
    *this = std::move(result);
}
