// The standard streams, where the platforms differ.
#ifndef BRCORE8_PLATFORM_CONSOLE_H
#define BRCORE8_PLATFORM_CONSOLE_H

#include <brcore8/platform/export.h>

#include <cstdio>

// Bytes pass through standard input, output and error as they are; on some platforms a line feed
// would become two characters without this.
BRCORE8_API void SBinaryStandardStreams();

// Whether a person sits at the other end of the stream.
BRCORE8_API bool SIsTerminal(std::FILE* stream);

#endif
