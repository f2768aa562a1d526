// Giving an existing file new content so that whoever looks, and whatever breaks, finds the old
// content or the new one whole.
#ifndef BRCORE8_SRC_STREAMS_FILE_REWRITE_H
#define BRCORE8_SRC_STREAMS_FILE_REWRITE_H

#include <cstddef>

namespace brcore8 {

// Writes a sibling file and puts it in the place of `path`, with that one's permissions; follows
// links. Where that cannot serve, the file itself is written: it has other hard links, something
// holds its place, its folder may not be written, or it is a device. In the first two cases the
// sibling is there until all is written, and stays when it could not be: it has the content whole.
// Makes a file that is not there.
// Throws SEIOException "Can't open for writing" when the file may not be written, no sibling can be
// made or it cannot be put in place; "Write failed"; "Could not trunc file!"; SEOutOfMemory. The
// sibling is then gone, and the file is what it was, unless it had to be written itself.
void RewriteFile(const char* path, const void* data, std::size_t size);

// Whether the file does not hold exactly these bytes, or cannot be read.
bool FileDiffers(const char* path, const void* data, std::size_t size) noexcept;

// Deletes the file that the path names once links are followed; failures stay unnoticed.
void RemoveFile(const char* path) noexcept;

}  // namespace brcore8

#endif
