// Where a command's result goes: standard output, or a file that is rewritten only when its
// content changes.
#ifndef BRCORE8_TOOLS_OUTPUT_H
#define BRCORE8_TOOLS_OUTPUT_H

#include "interrupt.h"

#include <memory>
#include <string>
#include <string_view>

class SOutputFileOnChange;

namespace tool {

class Output {
public:
    // "-" is standard output.
    explicit Output(const std::string& path = "-");
    // Without Finish an old file stays as it was and a new one is removed.
    ~Output();
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    // Throws Failure, ClosedPipe, or SEIOAbortedException after Ctrl-C.
    void Write(std::string_view bytes);
    // Everything is on its way out; for a file, standard error says whether it was written.
    void Finish();

private:
    void WriteStandard(std::string_view bytes);

    std::string path_;
    bool onTerminal_ = false;
    std::unique_ptr<DeferInterrupts> guard_;  // outlives the file, which cleans up when it goes
    std::unique_ptr<SOutputFileOnChange> file_;
};

}  // namespace tool

#endif
