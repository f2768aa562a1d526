// Diagnostic sinks: what objects describe themselves to (SObject::Dump) and programs log to.
//
//     SDumpFile log("program.log", 1);       // the last run's log becomes program_log.bak
//     log << "opened " << count << " files\n";
//     log << &object << "\n";                // whatever its Dump writes
//     log.Show();                            // in the user's viewer
//
// Errors: no operation here throws or reports; what cannot be written is lost silently.
// Threads: a sink belongs to one thread at a time, but for SDumpFile::Output, which several may
// call on one open log: the text of each call arrives in one piece. So a thread that shares a log
// writes a line with one <<.
#ifndef BRCORE8_CORE_DUMP_H
#define BRCORE8_CORE_DUMP_H

#include <brcore8/platform/export.h>
#include <brcore8/platform/types.h>
#include <brcore8/strings/string.h>

#include <cstdint>

class SObject;
class SOutputStream;

// The abstract sink.
class BRCORE8_API SDump {
public:
    // Virtual operations, in slot order.
    virtual ~SDump();
    // What kind of sink it is, for people; valid as long as the sink and until its next change.
    virtual const char* GetDumperName() const = 0;
    // Empties the sink; nothing by default.
    virtual void Clear();
    // Presents the content to the user; nothing by default.
    virtual void Show();
    // Nothing in every sink of the library.
    virtual void Flush();
    // Writes "\n".
    virtual void EndLine();

    // Each writes the text of its operand through Output and returns the sink. Decimal numbers as
    // printf has them ("%i", "%li", "%u", "%lu"), a double with at most six significant digits
    // ("%g").
    friend BRCORE8_API SDump& operator<<(SDump& dump, int value);
    friend BRCORE8_API SDump& operator<<(SDump& dump, long value);
    friend BRCORE8_API SDump& operator<<(SDump& dump, long long value);
    friend BRCORE8_API SDump& operator<<(SDump& dump, unsigned int value);
    friend BRCORE8_API SDump& operator<<(SDump& dump, unsigned long value);
    friend BRCORE8_API SDump& operator<<(SDump& dump, unsigned long long value);
    friend BRCORE8_API SDump& operator<<(SDump& dump, double value);
    // "0x" and at least eight hexadecimal digits.
    friend BRCORE8_API SDump& operator<<(SDump& dump, const void* pointer);
    // "{00021401-0000-0000-C000-000000000046}"
    friend BRCORE8_API SDump& operator<<(SDump& dump, const GUID& guid);
    // The text up to its first zero byte; nothing for null.
    friend BRCORE8_API SDump& operator<<(SDump& dump, const char* text);
    friend BRCORE8_API SDump& operator<<(SDump& dump, const SString& text);
    // What the object's Dump writes until it is done or throws; "NULL Pointer" for null.
    friend BRCORE8_API SDump& operator<<(SDump& dump, const SObject* object);

protected:
    SDump() noexcept = default;
    SDump(const SDump&) noexcept = default;
    SDump& operator=(const SDump&) noexcept = default;

    // Writes a text that ends with a zero byte; null is nothing.
    virtual void Output(const char* text) = 0;
};
static_assert(sizeof(SDump) == sizeof(void*));

// A log file. Every "\n" reaches it as CR LF, on every system.
//
// Only regular files are logs: a folder, pipe or device is not opened (nor waited for), nor is
// a path of more than 259 bytes once it is complete. The sink is then closed: it swallows output
// and can be opened again.
class BRCORE8_API SDumpFile : public SDump {
public:
    // Opens TVCORE.LOG in the current folder, and adds to it.
    SDumpFile();
    explicit SDumpFile(const char* name, int backup = 0);
    SDumpFile(const SDumpFile&) = delete;
    SDumpFile& operator=(const SDumpFile&) = delete;
    ~SDumpFile() override;

    // Closes the present log and opens another, with the name completed by the current folder. New
    // output goes to the end of what the file holds. With `backup` the file begins empty, and what
    // was there becomes the backup, in one step, over an older one: the path with its last dot
    // (anywhere in it) as "_", and ".bak". Where that cannot be done, the old content is lost.
    void Init(const char* name, int backup);
    void Done();

    bool IsOpen() const noexcept { return descriptor_ >= 0; }
    // The full path of the last log that Init was asked for; empty when it was too long.
    const SString& GetPath() const noexcept { return path_; }

    // "SDumpFile", followed by " - " and the path while a log is open.
    const char* GetDumperName() const override;
    // Has the content written to the disk. It empties nothing: a log only grows, and later output
    // still goes to its end.
    void Clear() override;
    // Has the content written to the disk and the log opened by the user's viewer, or else by a
    // text editor: what the shell has for it and Notepad on Windows; elsewhere xdg-open, or the
    // editor that VISUAL or EDITOR name (else vi) in x-terminal-emulator.
    void Show() override;

protected:
    void Output(const char* text) override;

private:
    void Open(const char* name, int backup);

    SString name_;
    SString path_;
    std::int32_t descriptor_ = -1;
};
static_assert(sizeof(void*) != 4 || sizeof(SDumpFile) == 16);

// Writes to a stream, which must outlive it; what the stream throws goes no further.
class BRCORE8_API SDumpStream : public SDump {
public:
    explicit SDumpStream(SOutputStream& stream) noexcept : stream_(stream) {}
    ~SDumpStream() override;

    // "SDumpStream"
    const char* GetDumperName() const override;

protected:
    void Output(const char* text) override;

private:
    SOutputStream& stream_;
};

// Writes to the debugger's output: OutputDebugString on Windows, elsewhere standard error.
class BRCORE8_API SDumpDebug : public SDump {
public:
    ~SDumpDebug() override;

    // "SDumpDebug"
    const char* GetDumperName() const override;

protected:
    void Output(const char* text) override;
};

#endif
