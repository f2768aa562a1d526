// Where the registry's two stores are, and their files and folders.
#ifndef BRCORE8_PLATFORM_POSIX_REGISTRY_PATH_H
#define BRCORE8_PLATFORM_POSIX_REGISTRY_PATH_H

#include <sys/types.h>

#include <string>

#include "platform/posix/registry.h"

namespace brcore8 {

// The file of the user's store, or of the machine's. Programs that run with more rights than their
// caller do not listen to the environment. Throws std::bad_alloc.
std::string StorePath(bool machine);

// The folder of the user's settings, without its final slash. Throws std::bad_alloc.
std::string ConfigurationFolder();

// Makes the folders above the path that are missing.
LSTATUS MakeFolders(const std::string& path, mode_t mode);

// That there is a regular file at the path: ERROR_FILE_NOT_FOUND when there is nothing and `make`
// is not set; with it file and folders are made, for their owner alone unless `shared`.
LSTATUS PrepareStoreFile(const std::string& path, bool shared, bool make);

}  // namespace brcore8

#endif
