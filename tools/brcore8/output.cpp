#include "output.h"

#include "command.h"
#include "progress.h"

#include <brcore8/core/exception.h>
#include <brcore8/platform/console.h>
#include <brcore8/streams/output_on_change.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>

namespace tool {
namespace {

// Small enough that Ctrl-C is answered soon, large enough to cost nothing.
constexpr std::size_t WriteStep = 1 << 20;

void StandardFailed() {
    if (errno == EPIPE) throw ClosedPipe();
    throw Failure{"standard output", "Write failed"};
}

}  // namespace

Output::Output(const std::string& path) : path_(path) {
    if (path_ == "-") {
        onTerminal_ = SIsTerminal(stdout);
        return;
    }
    // There is nothing to clean up in a pipe or a device, and opening one may wait for long.
    std::error_code unknown;
    if (!std::filesystem::is_other(path_, unknown)) guard_ = std::make_unique<DeferInterrupts>();
    try {
        file_ = std::make_unique<SOutputFileOnChange>(path_.c_str());
    } catch (const SException& error) {
        throw Failure{path_, error.GetText()};
    }
}

Output::~Output() = default;

void Output::Write(std::string_view bytes) {
    if (!file_) return WriteStandard(bytes);
    try {
        for (; !bytes.empty(); bytes.remove_prefix(std::min(bytes.size(), WriteStep))) {
            ThrowIfInterrupted();
            const std::size_t step = std::min(bytes.size(), WriteStep);
            file_->Write(bytes.data(), static_cast<unsigned long>(step));
        }
    } catch (const SEIOAbortedException&) {
        throw;
    } catch (const SException& error) {
        throw Failure{path_, error.GetText()};
    }
}

void Output::Finish() {
    if (!file_) {
        if (std::fflush(stdout) != 0) StandardFailed();
        return;
    }
    ThrowIfInterrupted();
    int changed = 0;
    try {
        file_->Close(&changed);
    } catch (const SException& error) {
        throw Failure{path_, error.GetText()};
    }
    file_.reset();
    guard_.reset();
    Say(path_ + (changed ? ": written" : ": unchanged"));
}

void Output::WriteStandard(std::string_view bytes) {
    if (onTerminal_) HideBar();
    if (std::fwrite(bytes.data(), 1, bytes.size(), stdout) != bytes.size()) StandardFailed();
}

}  // namespace tool
