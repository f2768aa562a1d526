// SProgressIndicatorEx: what a file source tells about how far it is, and asks whether to go on.
// STerminalProgress: one that draws a bar on a terminal. SCallbackProgress: one that calls a
// function.
//
// Threads: an indicator belongs to the thread that reads; only the abort flag that a terminal
// indicator watches may be set from another thread or from a signal handler.
// Ownership: a source keeps a pointer and never owns the indicator.
#ifndef BRCORE8_STREAMS_PROGRESS_H
#define BRCORE8_STREAMS_PROGRESS_H

#include <brcore8/platform/export.h>

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <stop_token>
#include <string>
#include <utility>

class BRCORE8_API SProgressIndicatorEx {
public:
    virtual ~SProgressIndicatorEx();
    // The first and the last position; a file source gives 0 and the file's size in bytes, which
    // is 0 when the file cannot tell.
    virtual void SetRange(std::uint64_t first, std::uint64_t last) = 0;
    virtual void SetPosition(std::uint64_t position) = 0;
    virtual std::uint64_t GetPosition() = 0;
    // Whether the user asked to stop: 1 or 0. The source then throws SEIOAbortedException.
    virtual int IsAborted() = 0;
};

// Tells a function how far it is, and stops when a token says so.
//
//     std::stop_source stop;                                   // another thread may ask it
//     SCallbackProgress progress([](std::uint64_t done, std::uint64_t total) { Show(done, total);
//     },
//                                stop.get_token());
//     SInputFile file(path, &progress);
class SCallbackProgress : public SProgressIndicatorEx {
public:
    // Called with the bytes done and the bytes in all (0: unknown); what it throws reaches whoever
    // reads.
    using Callback = std::function<void(std::uint64_t done, std::uint64_t total)>;

    // Either may be empty.
    explicit SCallbackProgress(Callback callback, std::stop_token stop = {})
        : callback_(std::move(callback)), stop_(std::move(stop)) {}

    void SetRange(std::uint64_t first, std::uint64_t last) override {
        first_ = position_ = first;
        total_ = last > first ? last - first : 0;
    }
    void SetPosition(std::uint64_t position) override {
        position_ = position;
        if (callback_) callback_(position > first_ ? position - first_ : 0, total_);
    }
    std::uint64_t GetPosition() override { return position_; }
    int IsAborted() override { return stop_.stop_requested() ? 1 : 0; }

private:
    Callback callback_;
    std::stop_token stop_;
    std::uint64_t first_ = 0;
    std::uint64_t total_ = 0;
    std::uint64_t position_ = 0;
};

// Draws one line on standard error: nothing when that is no terminal, nothing in the first half
// second, never wider than the terminal. The line is cleared when the indicator goes.
//
//     std::atomic<bool> interrupted = false;           // set by the program's SIGINT handler
//     STerminalProgress progress("reading", &interrupted);
//     SInputFile file(path, &progress);
class BRCORE8_API STerminalProgress : public SProgressIndicatorEx {
public:
    // `label` stands before the bar. `abort`, when given, must outlive the indicator.
    explicit STerminalProgress(const char* label = "", const std::atomic<bool>* abort = nullptr);
    STerminalProgress(const STerminalProgress&) = delete;
    STerminalProgress& operator=(const STerminalProgress&) = delete;
    ~STerminalProgress() override;

    void SetRange(std::uint64_t first, std::uint64_t last) override;
    void SetPosition(std::uint64_t position) override;
    std::uint64_t GetPosition() override;
    int IsAborted() override;

    // Removes the line now; it comes back with the next SetPosition.
    void Clear() noexcept;

    // The text drawn for `done` of `total` in `width` columns: label, bar and percentage, or what
    // of them there is room for.
    static std::string Line(const std::string& label, std::uint64_t done, std::uint64_t total,
                            int width);

private:
    void Draw();

    std::string label_;
    const std::atomic<bool>* abort_;
    std::chrono::steady_clock::time_point start_;
    std::uint64_t first_ = 0;
    std::uint64_t last_ = 0;
    std::uint64_t position_ = 0;
    bool terminal_;
    int drawnPercent_ = -1;  // -1: no line on the terminal
};

#endif
