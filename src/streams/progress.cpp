#include <brcore8/streams/progress.h>

#include "platform/files.h"

#include <algorithm>
#include <cstdio>

SProgressIndicatorEx::~SProgressIndicatorEx() = default;

STerminalProgress::STerminalProgress(const char* label, const std::atomic<bool>* abort)
    : label_(label != nullptr ? label : ""),
      abort_(abort),
      start_(std::chrono::steady_clock::now()),
      terminal_(brcore8::ErrorTerminalWidth() > 0) {}

STerminalProgress::~STerminalProgress() {
    Clear();
}

void STerminalProgress::SetRange(std::uint64_t first, std::uint64_t last) {
    first_ = first;
    last_ = last;
}

void STerminalProgress::SetPosition(std::uint64_t position) {
    position_ = position;
    if (terminal_) Draw();
}

std::uint64_t STerminalProgress::GetPosition() {
    return position_;
}

int STerminalProgress::IsAborted() {
    return abort_ != nullptr && abort_->load(std::memory_order_relaxed);
}

namespace {

int Percent(std::uint64_t done, std::uint64_t total) noexcept {
    if (done >= total) return 100;
    // Without the product, which could wrap.
    return static_cast<int>(static_cast<double>(done) / static_cast<double>(total) * 100);
}

}  // namespace

std::string STerminalProgress::Line(const std::string& label, std::uint64_t done,
                                    std::uint64_t total, int width) {
    const int percent = Percent(done, total);
    char number[8];
    const int digits = std::snprintf(number, sizeof number, "%3d%%", percent);
    if (width < digits) return {};
    std::size_t room = static_cast<std::size_t>(width - digits);
    std::string line;
    if (!label.empty() && label.size() < room) {
        line = label;
        line += ' ';
        room -= line.size();
    }
    constexpr std::size_t least = 10;
    constexpr std::size_t most = 50;
    constexpr std::size_t frame = 3;  // brackets and a blank
    if (room >= least + frame) {
        const std::size_t cells = std::min(room - frame, most);
        const std::size_t full = cells * static_cast<std::size_t>(percent) / 100;
        line += '[';
        line.append(full, '#').append(cells - full, '.').append("] ");
    }
    return line.append(number);
}

void STerminalProgress::Draw() {
    constexpr std::chrono::milliseconds quiet(500);
    const std::uint64_t done = position_ > first_ ? position_ - first_ : 0;
    const std::uint64_t total = last_ > first_ ? last_ - first_ : 0;
    const int percent = Percent(done, total);
    if (percent == drawnPercent_ || std::chrono::steady_clock::now() - start_ < quiet) return;
    // One column stays free: a full line would scroll on some terminals.
    const std::string line = Line(label_, done, total, brcore8::ErrorTerminalWidth() - 1);
    std::fprintf(stderr, "\r%s", line.c_str());
    std::fflush(stderr);
    drawnPercent_ = percent;
}

void STerminalProgress::Clear() noexcept {
    if (drawnPercent_ < 0) return;
    const int width = brcore8::ErrorTerminalWidth() - 1;
    if (width > 0) std::fprintf(stderr, "\r%*s\r", width, "");
    std::fflush(stderr);
    drawnPercent_ = -1;
}
