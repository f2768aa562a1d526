#include <brcore8/platform/console.h>

#include <unistd.h>

void SBinaryStandardStreams() {}

bool SIsTerminal(std::FILE* stream) {
    return isatty(fileno(stream)) != 0;
}
