// The bar on standard error that tells how far a command is: only on a terminal, and only for work
// that takes over half a second.
#ifndef BRCORE8_TOOLS_PROGRESS_H
#define BRCORE8_TOOLS_PROGRESS_H

#include <brcore8/streams/progress.h>

#include <thread>

namespace tool {

// While one lives, a thread of its own draws how far the command is, so that steps that cannot
// tell have a bar too. There is at most one at a time.
class ProgressBar {
public:
    explicit ProgressBar(const char* label);
    ~ProgressBar();
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

private:
    STerminalProgress line_;
    std::jthread painter_;
};

// The command's next step has so much to do; then, how much of it is done.
void BeginStep(std::uint64_t total);
void StepDone(std::uint64_t done);

// The terminal is needed for something else: no bar until the next step.
void HideBar();

// Tells how far a file source is.
class ReadingStep : public SProgressIndicatorEx {
public:
    void SetRange(std::uint64_t first, std::uint64_t last) override;
    void SetPosition(std::uint64_t position) override;
    std::uint64_t GetPosition() override;
    int IsAborted() override;
};

}  // namespace tool

#endif
