#include <brcore8/platform/console.h>

#include <fcntl.h>
#include <io.h>

void SBinaryStandardStreams() {
    _setmode(_fileno(stdin), _O_BINARY);
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
}

bool SIsTerminal(std::FILE* stream) {
    return _isatty(_fileno(stream)) != 0;
}
