// SOutputFile: bytes into a file, through the C library's buffer.
#ifndef BRCORE8_STREAMS_OUTPUT_FILE_H
#define BRCORE8_STREAMS_OUTPUT_FILE_H

#include <brcore8/streams/output_stream.h>
#include <brcore8/strings/string.h>

#include <cstdio>

class BRCORE8_API SOutputFile : public SOutputStream {
    SDECLARE_CLASS(SOutputFile);

    // Flag words. Every other value means a new or emptied file too.
    enum Flags : int { Truncate = 0, TruncateToo = 1, Append = 2 };

    // Throws SEIOException "Can't open for writing".
    explicit SOutputFile(const SString& path, int flags = Truncate);
    // Closes; a failure then goes unnoticed, so call Close before.
    ~SOutputFile() override;

    // Throw SEIOException "Write failed", also when the stream is closed.
    unsigned long Write(const void* data, unsigned long count) override;
    void Write(int byte) override;

    // Throw SEIOException "Write failed" when buffered bytes cannot be written: a full disk may be
    // noticed only here. The file is closed then too.
    void Close() override;
    void Flush() override;

    // Where the next byte goes; -1 where the file cannot tell, never above the greatest long.
    long GetPosition();

protected:
    // Opens another file, after closing the one that is open. Throws what both throw.
    virtual void Init(const SString& path, int flags);

private:
    std::FILE* stream_ = nullptr;
};

#endif
