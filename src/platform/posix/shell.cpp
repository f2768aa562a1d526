#include "platform/posix/shell.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <string>
#include <string_view>

namespace {

const HINSTANCE Started = reinterpret_cast<HINSTANCE>(std::intptr_t{33});
const HINSTANCE NotFound = reinterpret_cast<HINSTANCE>(std::intptr_t{2});

constexpr int WaitSteps = 100;
constexpr int WaitStepMilliseconds = 20;

// Where PATH has a program; empty when it has not.
std::string FindProgram(std::string_view name) {
    const char* const variable = std::getenv("PATH");
    std::string_view folders = variable != nullptr ? variable : "/usr/local/bin:/usr/bin:/bin";
    while (!folders.empty()) {
        const std::string_view folder = folders.substr(0, folders.find(':'));
        folders.remove_prefix(std::min(folder.size() + 1, folders.size()));
        std::string path(folder.empty() ? "." : folder);
        path.append("/").append(name);
        if (access(path.c_str(), X_OK) == 0) return path;
    }
    return "";
}

// The rest runs between fork and exec, where only what a signal handler may call is allowed.

[[noreturn]] void RunProgram(const char* program, const char* const* arguments) noexcept {
    const int nothing = open("/dev/null", O_RDWR);
    if (nothing >= 0) dup2(nothing, STDIN_FILENO);
    execv(program, const_cast<char* const*>(arguments));
    _exit(127);
}

// Starts the program and tells through the pipe whether it still ran, or had ended well, after
// the time it is given; then leaves it alone.
[[noreturn]] void Launch(const char* program, const char* const* arguments, int report) noexcept {
    setsid();
    signal(SIGCHLD, SIG_DFL);
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    const pid_t child = fork();
    if (child == 0) RunProgram(program, arguments);
    int status = child < 0 ? -1 : 0;
    for (int step = 0; child > 0 && step < WaitSteps; ++step) {
        if (waitpid(child, &status, WNOHANG) != 0) break;
        poll(nullptr, 0, WaitStepMilliseconds);
    }
    const char well = status == 0 ? 1 : 0;
    (void)!write(report, &well, 1);
    _exit(0);
}

bool Start(const char* program, const char* const* arguments) noexcept {
    int report[2];
    if (pipe2(report, O_CLOEXEC) != 0) return false;
    const pid_t launcher = fork();
    if (launcher == 0) Launch(program, arguments, report[1]);
    close(report[1]);
    char well = 0;
    if (launcher > 0) {
        while (read(report[0], &well, 1) < 0 && errno == EINTR) {
        }
        while (waitpid(launcher, nullptr, 0) < 0 && errno == EINTR) {
        }
    }
    close(report[0]);
    return well != 0;
}

}  // namespace

void OutputDebugStringA(const char* text) noexcept {
    std::size_t size = std::strlen(text);
    while (size > 0) {
        const ssize_t written = write(STDERR_FILENO, text, size);
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return;
        text += written;
        size -= static_cast<std::size_t>(written);
    }
}

HINSTANCE ShellExecuteA(void*, const char*, const char* file, const char* parameters, const char*,
                        int) noexcept {
    const bool edit = std::string_view(file) == "notepad.exe";
    const char* const viewer = edit ? "x-terminal-emulator" : "xdg-open";
    // The shell cuts the variables' words as their users expect, options and all.
    const char* const edits[] = {
        viewer, "-e",       "/bin/sh", "-c", "exec ${VISUAL:-${EDITOR:-vi}} \"$1\"",
        "sh",   parameters, nullptr};
    const char* const views[] = {viewer, file, nullptr};
    try {
        const std::string program = FindProgram(viewer);
        return !program.empty() && Start(program.c_str(), edit ? edits : views) ? Started
                                                                                : NotFound;
    } catch (const std::exception&) {
        return NotFound;
    }
}
