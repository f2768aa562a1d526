#include "platform/files.h"

#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <cstdlib>
#include <memory>

namespace brcore8 {

std::FILE* OpenStream(const char* path, const char* mode) noexcept {
    std::FILE* const stream = std::fopen(path, mode);
    if (stream == nullptr) return nullptr;
    struct stat facts;
    if (fstat(fileno(stream), &facts) == 0 && !S_ISDIR(facts.st_mode)) return stream;
    std::fclose(stream);
    return nullptr;
}

bool SeekStream(std::FILE* stream, std::int64_t offset, int origin) noexcept {
    return fseeko(stream, offset, origin) == 0;
}

std::int64_t TellStream(std::FILE* stream) noexcept {
    return ftello(stream);
}

std::string FinalPath(const char* path) {
    const std::unique_ptr<char, decltype(&std::free)> resolved(realpath(path, nullptr), &std::free);
    return resolved != nullptr ? resolved.get() : path;
}

int ErrorTerminalWidth() noexcept {
    if (isatty(STDERR_FILENO) == 0) return 0;
    winsize size{};
    return ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : 80;
}

}  // namespace brcore8
