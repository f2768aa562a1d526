// SOutputFileOnChange: rewrites a file only when its content changes, so that an unchanged file
// keeps its time stamp.
//
//     SOutputFileOnChange out(path);
//     out.Write(text, size);
//     int changed = 0;
//     out.Close(&changed);
#ifndef BRCORE8_STREAMS_OUTPUT_ON_CHANGE_H
#define BRCORE8_STREAMS_OUTPUT_ON_CHANGE_H

#include <brcore8/streams/output_stream.h>
#include <brcore8/strings/string.h>

// A file that exists is touched by Close alone; until then the new content is held in memory. Close
// compares and, when they differ, replaces the file as one step: whoever looks, and whatever
// breaks, finds the old content or the new one whole. Links are followed; permissions, and the
// owner where the system allows, stay.
//
// Where a replacement cannot serve (the file has other hard links, its folder cannot be written, it
// is a device) the file itself is written. Of a file with other hard links a sibling,
// ".brcore8-PROCESS-NUMBER.tmp", has the new content whole before the first byte is changed. It is
// removed at the end, and left to the user when the writing was cut short.
//
// A file that does not exist is written as the data comes.
//
// Destroyed without Close, or when Close fails, the output is abandoned: an old file stays as it
// is, a new one is removed. No temporary file is left behind, but the one just named.
class BRCORE8_API SOutputFileOnChange : public SOutputStream {
    SDECLARE_CLASS(SOutputFileOnChange);

    // Throws SEIOException "Can't open for writing" when a new file cannot be made.
    explicit SOutputFileOnChange(const SString& path);
    ~SOutputFileOnChange() override;

    // Throw SEIOException "Write failed", also after Close, and SEOutOfMemory.
    unsigned long Write(const void* data, unsigned long count) override;
    void Write(int byte) override;
    void Flush() override;

    // `changed`, when given, receives 1 when the file was written, 0 when it held the same bytes;
    // called again, the same once more. Throws SEIOException: "Can't open for writing" when the
    // file cannot be created or replaced, "Write failed", "Could not trunc file!".
    void Close(int* changed);
    void Close() override { Close(nullptr); }

private:
    SOutputStream& Inner() const;
    bool Rewrite();
    void Abandon() noexcept;

    SString path_;
    int existed_;
    SOutputStream* inner_ = nullptr;
    int changed_ = 0;
};

#endif
