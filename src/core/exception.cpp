#include <brcore8/core/exception.h>
#include <brcore8/platform/light_lock.h>

#include "core/exception_text.h"
#include "platform/platform.h"

#include <atomic>
#include <cstdio>
#include <cstring>

namespace {

constexpr auto kOutOfMemory = static_cast<std::int32_t>(0x8007000E);
constexpr auto kNotImplemented = static_cast<std::int32_t>(0x80004001);
constexpr unsigned kMessageSize = 512;
constexpr unsigned kNeutralLanguage = 0x400;
constexpr std::size_t kLongestTextOnFirstLine = 60;
constexpr unsigned kErrorIcon = 16;

// Guards the texts that GetText fills in later. Few objects ever need it, so one is enough.
constinit brcore8::LightLock g_textLock;

constinit std::atomic<int> g_dialogSuppressed{1};
constinit thread_local bool t_boxOpen = false;

}  // namespace

// --- SException -----------------------------------------------------------------------------

SException::SException(const char* text) : text_(text) {}

SException::SException(const SException& other) noexcept {
    const brcore8::LightLockGuard guard(g_textLock);
    text_ = other.text_;
}

SException& SException::operator=(const SException& other) noexcept {
    const brcore8::LightLockGuard guard(g_textLock);
    text_ = other.text_;
    return *this;
}

SException::~SException() = default;

const char* SException::GetText() const noexcept {
    return text_;
}

const char* SException::GetMessageText(std::uint32_t code) const noexcept {
    const brcore8::LightLockGuard guard(g_textLock);
    if (text_.LengthByte() == 0) {
        char message[kMessageSize] = "";
        FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM, nullptr, code, kNeutralLanguage, message,
                       kMessageSize, nullptr);
        const std::size_t length = std::strlen(message);
        if (length > 1 && message[length - 1] == '\n') message[length - 1] = '\0';
        try {
            text_ = message;
        } catch (const SException&) {
            // Without memory for its text an exception has none; the next request tries again.
        }
    }
    return text_;
}

// --- The classes with a code ----------------------------------------------------------------

SECOMException::SECOMException(std::int32_t code) noexcept : code_(code) {}
SECOMException::~SECOMException() = default;

const char* SECOMException::GetText() const noexcept {
    return GetMessageText(static_cast<std::uint32_t>(code_));
}

SEOutOfMemory::SEOutOfMemory() noexcept : SECOMException(kOutOfMemory) {}
SEOutOfMemory::~SEOutOfMemory() = default;

SENotImplemented::SENotImplemented() noexcept : SECOMException(kNotImplemented) {}
SENotImplemented::~SENotImplemented() = default;

SEWinError::SEWinError(std::uint32_t code) noexcept : code_(code) {}
SEWinError::~SEWinError() = default;

const char* SEWinError::GetText() const noexcept {
    return GetMessageText(code_);
}

// --- The classes with a text ----------------------------------------------------------------

SEConstructor::SEConstructor() : SException("Constructor exception") {}
SEConstructor::~SEConstructor() = default;

SEIOException::SEIOException(const char* text) : SException(text) {}
SEIOException::~SEIOException() = default;

SEIOAbortedException::SEIOAbortedException() : SEIOException("User aborted.") {}
SEIOAbortedException::~SEIOAbortedException() = default;

SEEOFException::SEEOFException() : SEIOException("Unexpected end of file") {}
SEEOFException::~SEEOFException() = default;

SEUTFException::SEUTFException(std::int32_t first, std::int32_t second, std::int32_t third)
    : SEIOException("Unexpected UTF encoding!"), first_(first), second_(second), third_(third) {}
SEUTFException::~SEUTFException() = default;

SEZipException::SEZipException(const char* text) : SException(text) {}
SEZipException::~SEZipException() = default;

// --- Showing --------------------------------------------------------------------------------

void brcore8::FormatExceptionText(char (&buffer)[kExceptionTextSize], const char* file, long line,
                                  const char* text) noexcept {
    const char* format = "%s (%i) : %s";
    if (text == nullptr) {
        text = "Unexpected exception!";
    } else if (text[0] == '\n' || std::strlen(text) > kLongestTextOnFirstLine) {
        format = "%s (%i) :\n%s";
    }
    std::snprintf(buffer, kExceptionTextSize, format, file != nullptr ? file : "(null)",
                  static_cast<int>(line), text);
}

constinit brcore8::ErrorBox brcore8::g_showErrorBox = [](const char* text, const char* caption,
                                                         unsigned style) {
    MessageBoxA(nullptr, text, caption, style);
};

int SExceptionDialog(const char* file, long line, const char* text) noexcept {
    if (g_dialogSuppressed.load(std::memory_order_relaxed) != 0 || t_boxOpen) return 0;
    t_boxOpen = true;
    try {
        char buffer[brcore8::kExceptionTextSize];
        brcore8::FormatExceptionText(buffer, file, line, text);
        brcore8::g_showErrorBox(buffer, "Unexpected exception", kErrorIcon);
    } catch (...) {
        // Whoever reports a failure can do nothing about another one.
    }
    t_boxOpen = false;
    return 1;
}

int SExceptionActivateDialog(int activate) noexcept {
    return g_dialogSuppressed.exchange(activate != 0 ? 0 : 1, std::memory_order_relaxed) == 0 ? 1
                                                                                              : 0;
}

int SExceptionHasDialog() noexcept {
    return g_dialogSuppressed.load(std::memory_order_relaxed) == 0 ? 1 : 0;
}
