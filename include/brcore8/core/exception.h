// The exceptions of the library: thrown by value, caught by reference, all derived from SException.
//
//     try {
//         ...
//     } catch (const SEIOException& error) {
//         SExceptionDialog(__FILE__, __LINE__, error.GetText());
//     }
//
// Threads: an exception belongs to the thread that threw it; GetText and copying may nevertheless
// be used by several threads on one object (an exception carried over by std::exception_ptr).
// Code that only throws needs brcore8/core/throw.h alone.
#ifndef BRCORE8_CORE_EXCEPTION_H
#define BRCORE8_CORE_EXCEPTION_H

#include <brcore8/platform/export.h>
#include <brcore8/strings/string.h>

#include <cstdint>

// The root. It is no SObject and has no base.
class BRCORE8_API SException {
public:
    explicit SException(const char* text);
    SException(const SException& other) noexcept;
    SException& operator=(const SException& other) noexcept;

    // Virtual operations, in slot order.
    virtual ~SException();
    // The text, valid as long as the exception lives. Never null, never throws.
    virtual const char* GetText() const noexcept;

protected:
    SException() noexcept = default;

    // The text if there is one, else the platform's message for `code`, asked for once and kept.
    // Its final line feed is dropped, the carriage return before it stays. Empty when the platform
    // knows no text or memory is short.
    const char* GetMessageText(std::uint32_t code) const noexcept;

private:
    mutable SString text_;
};
static_assert(sizeof(SException) == 2 * sizeof(void*));

// --- Failures with a code -------------------------------------------------------------------
// Their text is the platform's message for the code, in the system's language.

// A COM result code.
class BRCORE8_API SECOMException : public SException {
public:
    explicit SECOMException(std::int32_t code) noexcept;
    SECOMException(const SECOMException&) noexcept = default;
    SECOMException& operator=(const SECOMException&) noexcept = default;
    ~SECOMException() override;

    const char* GetText() const noexcept override;
    std::int32_t GetCode() const noexcept { return code_; }

private:
    std::int32_t code_;
};

// Memory is refused: code 0x8007000E.
class BRCORE8_API SEOutOfMemory : public SECOMException {
public:
    SEOutOfMemory() noexcept;
    SEOutOfMemory(const SEOutOfMemory&) noexcept = default;
    SEOutOfMemory& operator=(const SEOutOfMemory&) noexcept = default;
    ~SEOutOfMemory() override;
};

// The operation is declared but not provided: code 0x80004001.
class BRCORE8_API SENotImplemented : public SECOMException {
public:
    SENotImplemented() noexcept;
    SENotImplemented(const SENotImplemented&) noexcept = default;
    SENotImplemented& operator=(const SENotImplemented&) noexcept = default;
    ~SENotImplemented() override;
};

// A Windows error number.
class BRCORE8_API SEWinError : public SException {
public:
    explicit SEWinError(std::uint32_t code) noexcept;
    SEWinError(const SEWinError&) noexcept = default;
    SEWinError& operator=(const SEWinError&) noexcept = default;
    ~SEWinError() override;

    const char* GetText() const noexcept override;
    std::uint32_t GetCode() const noexcept { return code_; }

private:
    std::uint32_t code_;
};

// --- Failures with a text -------------------------------------------------------------------

// The platform refused to make what a wrapper's constructor wraps: "Constructor exception".
class BRCORE8_API SEConstructor : public SException {
public:
    SEConstructor();
    SEConstructor(const SEConstructor&) noexcept = default;
    SEConstructor& operator=(const SEConstructor&) noexcept = default;
    ~SEConstructor() override;
};

// A stream or file operation failed.
class BRCORE8_API SEIOException : public SException {
public:
    explicit SEIOException(const char* text);
    SEIOException(const SEIOException&) noexcept = default;
    SEIOException& operator=(const SEIOException&) noexcept = default;
    ~SEIOException() override;
};

// The user stopped an operation: "User aborted."
class BRCORE8_API SEIOAbortedException : public SEIOException {
public:
    SEIOAbortedException();
    SEIOAbortedException(const SEIOAbortedException&) noexcept = default;
    SEIOAbortedException& operator=(const SEIOAbortedException&) noexcept = default;
    ~SEIOAbortedException() override;
};

// The data ended too early: "Unexpected end of file".
class BRCORE8_API SEEOFException : public SEIOException {
public:
    SEEOFException();
    SEEOFException(const SEEOFException&) noexcept = default;
    SEEOFException& operator=(const SEEOFException&) noexcept = default;
    ~SEEOFException() override;
};

// A byte sequence is no UTF-8: "Unexpected UTF encoding!"
class BRCORE8_API SEUTFException : public SEIOException {
public:
    // The units of the offending sequence as read: 0 for one not yet read, the stream's
    // end-of-data value where reading it failed.
    SEUTFException(std::int32_t first, std::int32_t second, std::int32_t third);
    SEUTFException(const SEUTFException&) noexcept = default;
    SEUTFException& operator=(const SEUTFException&) noexcept = default;
    ~SEUTFException() override;

    std::int32_t GetFirst() const noexcept { return first_; }
    std::int32_t GetSecond() const noexcept { return second_; }
    std::int32_t GetThird() const noexcept { return third_; }

private:
    std::int32_t first_;
    std::int32_t second_;
    std::int32_t third_;
};

// A ZIP archive or its compressed data is not what it should be.
class BRCORE8_API SEZipException : public SException {
public:
    explicit SEZipException(const char* text);
    SEZipException(const SEZipException&) noexcept = default;
    SEZipException& operator=(const SEZipException&) noexcept = default;
    ~SEZipException() override;
};

static_assert(sizeof(void*) != 4 || sizeof(SECOMException) == 12);
static_assert(sizeof(void*) != 4 || sizeof(SEWinError) == 12);
static_assert(sizeof(void*) != 4 || sizeof(SEUTFException) == 20);

// --- Showing --------------------------------------------------------------------------------

// Shows an error box that names a source position, unless showing is switched off, as it is when
// the library is loaded. Null stands for "Unexpected exception!". Returns 1 when the box was shown
// (or should have been and something failed), 0 when showing is off or a box of this thread is
// still open (a window that fails whenever it is painted would open one over the other). Without a
// user interface the same text goes to standard error. At most 1,023 bytes are shown.
extern "C" BRCORE8_API int SExceptionDialog(const char* file, long line, const char* text) noexcept;

// Switches showing on (non-zero) or off and returns 1 when it was on before, else 0.
extern "C" BRCORE8_API int SExceptionActivateDialog(int activate) noexcept;

// 1 when showing is on, else 0.
extern "C" BRCORE8_API int SExceptionHasDialog() noexcept;

#endif
