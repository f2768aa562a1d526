#include "progress.h"

#include <brcore8/platform/console.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>

namespace tool {
namespace {

constexpr std::chrono::milliseconds PaintEvery(50);

std::atomic<std::uint64_t> stepTotal = 0;
std::atomic<std::uint64_t> stepDone = 0;

std::mutex painting;               // guards the bar and what is below
STerminalProgress* bar = nullptr;  // null without a terminal
bool hidden = false;

void Paint(const std::stop_token& stop) {
    std::unique_lock lock(painting);
    std::condition_variable_any never;
    while (!stop.stop_requested()) {
        never.wait_for(lock, stop, PaintEvery, [] { return false; });
        if (hidden) continue;
        bar->SetRange(0, stepTotal);
        bar->SetPosition(stepDone);
    }
}

}  // namespace

ProgressBar::ProgressBar(const char* label) : line_(label) {
    if (!SIsTerminal(stderr)) return;
    bar = &line_;
    painter_ = std::jthread(Paint);
}

ProgressBar::~ProgressBar() {
    if (!bar) return;
    painter_.request_stop();
    painter_.join();
    bar = nullptr;
}

void BeginStep(std::uint64_t total) {
    const std::lock_guard lock(painting);
    stepTotal = total;
    stepDone = 0;
    hidden = false;
}

void StepDone(std::uint64_t done) {
    stepDone.store(done, std::memory_order_relaxed);
}

void HideBar() {
    const std::lock_guard lock(painting);
    if (bar) bar->Clear();
    hidden = true;
}

void ReadingStep::SetRange(std::uint64_t first, std::uint64_t last) {
    BeginStep(last - first);
}

void ReadingStep::SetPosition(std::uint64_t position) {
    StepDone(position);
}

std::uint64_t ReadingStep::GetPosition() {
    return stepDone;
}

int ReadingStep::IsAborted() {
    return 0;
}

}  // namespace tool
