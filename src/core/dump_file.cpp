#include <brcore8/core/dump.h>

#include <brcore8/core/exception.h>
#include <brcore8/core/throw.h>

#include "platform/log_files.h"
#include "platform/paths.h"
#include "platform/platform.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>

namespace {

constexpr char ClosedName[] = "SDumpFile";
constexpr int ShowNormal = 1;
constexpr std::intptr_t LastShellError = 32;

constexpr char BackupEnding[] = ".bak";

bool IsRegularFile(const char* path) {
    const DWORD attributes = GetFileAttributesA(path);
    return attributes != INVALID_FILE_ATTRIBUTES &&
           (attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_DEVICE)) == 0;
}

// Puts the log, if it is a file, in the place of its backup: its path with the last dot, wherever
// that is, as an underscore, and the ending behind.
void BackUp(const char* path) {
    if (!IsRegularFile(path)) return;
    char backup[brcore8::PathSize + sizeof BackupEnding];
    std::strcpy(backup, path);
    if (char* const dot = std::strrchr(backup, '.')) *dot = '_';
    std::strcat(backup, BackupEnding);
    MoveFileExA(path, backup, MOVEFILE_REPLACE_EXISTING);
}

bool OpenByShell(const char* file, const char* parameters) {
    return reinterpret_cast<std::intptr_t>(ShellExecuteA(nullptr, "open", file, parameters, nullptr,
                                                         ShowNormal)) > LastShellError;
}

// Translates line ends into `lines`, whose room is twice the text's size, and returns their size.
std::size_t TranslateLines(const char* text, std::size_t size, char* lines) {
    char* end = lines;
    for (const char* at = text; at != text + size; ++at) {
        if (*at == '\n') *end++ = '\r';
        *end++ = *at;
    }
    return static_cast<std::size_t>(end - lines);
}

struct ReleaseBlock {
    void operator()(char* block) const { brcore8::Release(block); }
};

}  // namespace

SDumpFile::SDumpFile() : SDumpFile("TVCORE.LOG", 0) {}

SDumpFile::SDumpFile(const char* name, int backup) {
    Init(name, backup);
}

SDumpFile::~SDumpFile() {
    Done();
}

void SDumpFile::Init(const char* name, int backup) {
    Done();
    try {
        Open(name, backup);
    } catch (const SException&) {
        Done();
    }
}

void SDumpFile::Open(const char* name, int backup) {
    path_ = "";
    name_ = ClosedName;
    char full[brcore8::PathSize];
    if (name == nullptr || *name == '\0' || !brcore8::FullPath(name, full)) return;
    path_ = full;
    const SString openName = SString(ClosedName) + " - " + path_;
    if (backup != 0) BackUp(path_);
    descriptor_ = brcore8::OpenLog(path_, backup != 0);
    if (IsOpen()) name_ = openName;
}

void SDumpFile::Done() {
    if (!IsOpen()) return;
    brcore8::CloseLog(descriptor_);
    descriptor_ = -1;
}

const char* SDumpFile::GetDumperName() const {
    return IsOpen() ? static_cast<const char*>(name_) : ClosedName;
}

void SDumpFile::Clear() {
    if (!IsOpen()) return;
    brcore8::RewindLog(descriptor_);
    brcore8::CommitLog(descriptor_);
}

void SDumpFile::Show() {
    if (IsOpen()) brcore8::CommitLog(descriptor_);
    if (path_.LengthByte() == 0) return;
    if (!OpenByShell(path_, nullptr)) OpenByShell("notepad.exe", path_);
}

void SDumpFile::Output(const char* text) {
    if (text == nullptr || !IsOpen()) return;
    const std::size_t size = std::strlen(text);
    char small[2048];
    char* room = small;
    std::unique_ptr<char, ReleaseBlock> large;
    std::size_t step = sizeof small / 2;
    if (size > step) {
        try {
            large.reset(static_cast<char*>(brcore8::Allocate(2 * size)));
            room = large.get();
            step = size;
        } catch (const SException&) {
            // Without memory it goes in pieces.
        }
    }
    for (std::size_t at = 0; at < size; at += step) {
        const std::size_t part = std::min(step, size - at);
        if (!brcore8::AppendToLog(descriptor_, room, TranslateLines(text + at, part, room))) return;
    }
}
