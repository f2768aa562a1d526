#include "platform/posix/desktop/recording.h"

#include <brcore8/platform/posix/desktop_testing.h>

#include <charconv>
#include <optional>
#include <sstream>

#include "platform/posix/desktop/thread.h"

namespace brcore8::desktop {

namespace {

struct Recording {
    bool isRunning = false;
    std::uint64_t began = 0;
    std::string text;
};

Recording& TheRecording() {
    static Recording& recording = *new Recording;
    return recording;
}

struct Word {
    const char* name;
    UINT message;
};

// What follows the time in a line. Keys tell their number, scan code, whether they are the later of
// two, and their character; the mouse its place and the wheel's turn.
constexpr Word kWords[] = {{"key-down", WM_KEYDOWN},    {"key-up", WM_KEYUP},
                           {"move", WM_MOUSEMOVE},      {"left-down", WM_LBUTTONDOWN},
                           {"left-up", WM_LBUTTONUP},   {"right-down", WM_RBUTTONDOWN},
                           {"right-up", WM_RBUTTONUP},  {"middle-down", WM_MBUTTONDOWN},
                           {"middle-up", WM_MBUTTONUP}, {"wheel", WM_MOUSEWHEEL}};

bool IsKeyWord(UINT message) noexcept {
    return message == WM_KEYDOWN || message == WM_KEYUP;
}

BYTE ButtonOf(UINT message) noexcept {
    if (message == WM_LBUTTONDOWN || message == WM_LBUTTONUP) return VK_LBUTTON;
    if (message == WM_RBUTTONDOWN || message == WM_RBUTTONUP) return VK_RBUTTON;
    return message == WM_MBUTTONDOWN || message == WM_MBUTTONUP ? VK_MBUTTON : 0;
}

struct Step {
    std::uint64_t at = 0;
    Input input;
};

std::optional<Step> ParseLine(const std::string& line) {
    std::istringstream in(line);
    Step step;
    std::string word, rest;
    in >> step.at >> word;
    for (const Word& each : kWords)
        if (word == each.name) step.input.message = each.message;
    if (!in || step.input.message == 0) return std::nullopt;
    if (IsKeyWord(step.input.message)) {
        unsigned key = 0, isExtended = 0, text = 0;
        in >> key >> step.input.scan >> isExtended >> text;
        if (key == 0 || key > 255 || isExtended > 1 || text > 0x10FFFF) return std::nullopt;
        step.input.key = static_cast<BYTE>(key);
        step.input.isExtended = isExtended != 0;
        step.input.text = text;
    } else {
        in >> step.input.at.x >> step.input.at.y >> step.input.wheel;
        step.input.key = ButtonOf(step.input.message);
    }
    if (!in || in >> rest) return std::nullopt;
    return step;
}

}  // namespace

void RecordInput(const Input& input) {
    Recording& recording = TheRecording();
    if (!recording.isRunning) return;
    std::ostringstream line;
    line << Milliseconds() - recording.began << ' ';
    for (const Word& each : kWords)
        if (input.message == each.message) line << each.name;
    if (IsKeyWord(input.message))
        line << ' ' << unsigned{input.key} << ' ' << input.scan << ' ' << input.isExtended << ' '
             << static_cast<unsigned>(input.text);
    else
        line << ' ' << input.at.x << ' ' << input.at.y << ' ' << input.wheel;
    recording.text += line.str() + '\n';
}

}  // namespace brcore8::desktop

using namespace brcore8::desktop;

void SRecordInput() {
    const std::lock_guard guard(Lock());
    TheRecording() = {true, Milliseconds(), ""};
}

std::string SStopRecordingInput() {
    const std::lock_guard guard(Lock());
    TheRecording().isRunning = false;
    return std::move(TheRecording().text);
}

int SReplayInput(const std::string& text, void (*pump)()) {
    std::istringstream lines(text);
    std::string line;
    std::uint64_t now = 0;
    for (int number = 1; std::getline(lines, line); ++number) {
        if (line.empty()) continue;
        const std::optional<Step> step = ParseLine(line);
        if (!step || step->at < now || step->at - now > 86'400'000) return number;
        SAdvanceDesktopClock(static_cast<unsigned>(step->at - now));
        now = step->at;
        AddInput(step->input);
        if (pump != nullptr) pump();
    }
    return 0;
}
