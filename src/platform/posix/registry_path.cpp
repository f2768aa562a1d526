#include "platform/posix/registry_path.h"

#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>

namespace brcore8 {
namespace {

constexpr char kFile[] = "/brcore8/settings.db";

const char* Variable(const char* name) {
    const char* const value = secure_getenv(name);
    return value != nullptr && *value != '\0' ? value : nullptr;
}

LSTATUS StatusOfErrno() {
    switch (errno) {
        case ENOENT:
            return ERROR_FILE_NOT_FOUND;
        case ENOSPC:
        case EDQUOT:
            return ERROR_DISK_FULL;
        case EIO:
            return ERROR_REGISTRY_IO_FAILED;
        default:
            return ERROR_ACCESS_DENIED;
    }
}

void Flush(const std::string& folder) {
    const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0) return;
    (void)fsync(descriptor);
    close(descriptor);
}

}  // namespace

std::string ConfigurationFolder() {
    const char* const folder = Variable("XDG_CONFIG_HOME");
    if (folder != nullptr && *folder == '/') return folder;
    const char* home = Variable("HOME");
    if (home == nullptr) {
        const passwd* const user = getpwuid(getuid());
        home = user != nullptr ? user->pw_dir : "";
    }
    return std::string(home) + "/.config";
}

// What was made must outlast a loss of power as what is put there does.
LSTATUS MakeFolders(const std::string& path, mode_t mode) {
    for (std::size_t end = path.find('/', 1); end != std::string::npos;
         end = path.find('/', end + 1)) {
        const std::string folder = path.substr(0, end);
        if (mkdir(folder.c_str(), mode) == 0)
            Flush(folder.substr(0, folder.rfind('/') + 1));
        else if (errno != EEXIST && access(folder.c_str(), F_OK) != 0)
            return StatusOfErrno();
    }
    return ERROR_SUCCESS;
}

std::string StorePath(bool machine) {
    const char* const file = Variable(machine ? "BRCORE8_MACHINE_SETTINGS" : "BRCORE8_SETTINGS");
    // A name without a folder must not mean anything special to SQLite.
    if (file != nullptr) return *file == '/' ? file : std::string("./") + file;
    return (machine ? "/etc" : ConfigurationFolder()) + kFile;
}

LSTATUS PrepareStoreFile(const std::string& path, bool shared, bool make) {
    struct stat facts;
    if (stat(path.c_str(), &facts) == 0)
        return S_ISREG(facts.st_mode) ? ERROR_SUCCESS : ERROR_BADDB;
    if (errno != ENOENT && errno != ENOTDIR) return StatusOfErrno();
    if (!make) return ERROR_FILE_NOT_FOUND;
    const LSTATUS status = MakeFolders(path, shared ? 0755 : 0700);
    if (status != ERROR_SUCCESS) return status;
    const int descriptor =
        open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, shared ? 0644 : 0600);
    if (descriptor < 0 && errno != EEXIST) return StatusOfErrno();
    if (descriptor >= 0) close(descriptor);
    return ERROR_SUCCESS;
}

}  // namespace brcore8
