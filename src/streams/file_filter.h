// The filter that makes file operations fail (see file.h), as the sources ask it.
#ifndef BRCORE8_SRC_STREAMS_FILE_FILTER_H
#define BRCORE8_SRC_STREAMS_FILE_FILTER_H

#include <brcore8/streams/file.h>

namespace brcore8 {

bool MayUseFile(FileOperation operation, const char* path) noexcept;

}  // namespace brcore8

#endif
