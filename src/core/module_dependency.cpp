#include <brcore8/core/module_dependency.h>

#include <brcore8/core/throw.h>
#include <brcore8/strings/string_table.h>

#include "core/checked_allocator.h"
#include "core/image_imports.h"
#include "platform/module_search.h"
#include "strings/mbs.h"

#include <cstring>
#include <functional>
#include <new>
#include <string_view>
#include <unordered_map>
#include <utility>

static_assert(SModuleFileInfo::PathSize == brcore8::PathSize);

namespace {

constexpr std::string_view Separators = "/\\";

// Copies as much as fits.
void CopyText(char (&to)[SModuleFileInfo::PathSize], std::string_view text) {
    const std::size_t length = text.copy(to, sizeof to - 1);
    to[length] = '\0';
}

std::string_view FileNameOf(std::string_view path) {
    return path.substr(path.find_last_of(Separators) + 1);
}

std::string_view FolderOf(std::string_view path) {
    const std::size_t separator = path.find_last_of(Separators);
    return separator == std::string_view::npos ? "." : path.substr(0, separator + 1);
}

// Without a folder or a drive, and not too long for those who look for it.
bool IsPlainName(std::string_view name) {
    return !name.empty() && name.size() < SModuleFileInfo::PathSize &&
           name.find_first_of("/\\:") == std::string_view::npos;
}

SString FoldedName(std::string_view name) {
    SString folded(name);
    folded.ToLower();
    return folded;
}

}  // namespace

// The walk keeps its own stack: how deep modules import one another is up to whoever made them.
class SModuleDependencyList::Walk {
public:
    Walk(SModuleDependencyList& list, const char* program, const SStringTable* folders,
         unsigned options)
        : list_(list), folders_(folders), options_(options) {
        const brcore8::CheckedText folder(FolderOf(program));
        brcore8::FullPath(folder.c_str(), programFolder_);
    }

    Status Run(const char* program) {
        const Status status = Enter(program);
        while (!stack_.empty()) {
            if (const char* const name = stack_.back().names.Next()) {
                Follow(*stack_.back().module, name);
            } else {
                stack_.pop_back();
            }
        }
        return status;
    }

private:
    // What became of an imported name.
    enum class Fate { New, Settled, NotFound };

    struct Frame {
        SModuleFileInfo* module;
        brcore8::ImportedNames names;
    };

    using Fates = std::unordered_map<SString, Fate, std::hash<SString>, std::equal_to<SString>,
                                     brcore8::CheckedAllocator<std::pair<const SString, Fate>>>;

    // Reads a module; its imports are next.
    Status Enter(const char* path) {
        if (std::strlen(path) >= SModuleFileInfo::PathSize) return FileNotFound;
        brcore8::ImportedNames names;
        switch (brcore8::ReadImports(path, (options_ & DelayedImports) != 0, names)) {
            case brcore8::ImageStatus::NotFound:
                return FileNotFound;
            case brcore8::ImageStatus::NotPE:
                return NotPE;
            case brcore8::ImageStatus::Good:
                break;
        }
        fates_[FoldedName(FileNameOf(path))] = Fate::Settled;
        stack_.push_back({nullptr, std::move(names)});
        stack_.back().module = list_.Add(path);
        return Done;
    }

    void Follow(SModuleFileInfo& importer, const char* name) {
        Fate& fate = fates_[FoldedName(name)];
        char path[brcore8::PathSize];
        if (fate == Fate::New) {
            const bool found = IsPlainName(name) && Find(name, path);
            fate = found ? Fate::Settled : Fate::NotFound;
            if (found) {
                Enter(path);
                return;
            }
        }
        if (fate == Fate::NotFound) list_.AddNotFound(importer, name);
    }

    bool Find(const char* name, char (&path)[brcore8::PathSize]) {
        if (programFolder_[0] != '\0' && search_.FindIn(programFolder_, name, path)) return true;
        for (int i = 0; folders_ != nullptr && i < folders_->GetCount(); ++i) {
            char folder[brcore8::PathSize];
            if (brcore8::FullPath((*folders_)[i], folder) && search_.FindIn(folder, name, path))
                return true;
        }
        return (options_ & FoldersOnly) == 0 && search_.Find(name, path);
    }

    SModuleDependencyList& list_;
    const SStringTable* folders_;
    unsigned options_;
    char programFolder_[brcore8::PathSize];
    brcore8::ModuleSearch search_;
    Fates fates_;  // of every name seen, folded
    brcore8::CheckedVector<Frame> stack_;
};

SModuleDependencyList::SModuleDependencyList(const char* path) noexcept
    : SModuleDependencyList(path, SStringTable()) {}

SModuleDependencyList::SModuleDependencyList(const char* path, const SStringTable& folders,
                                             unsigned options) noexcept {
    const char* const program = path != nullptr ? path : "";
    try {
        status_ = Walk(*this, program, &folders, options).Run(program);
    } catch (...) {
        status_ = GeneralFailure;
    }
}

SModuleDependencyList::~SModuleDependencyList() {
    while (first_ != nullptr) {
        SModuleFileInfo* const module = std::exchange(first_, first_->next_);
        while (SModuleFileInfo* const missing = module->firstNotFound_) {
            module->firstNotFound_ = missing->firstNotFound_;
            brcore8::Release(missing);
        }
        brcore8::Release(module);
    }
}

const char* SModuleDependencyList::GetErrorString() const noexcept {
    constexpr const char* texts[] = {"No error", "File not found", "Not a PE file",
                                     "General failure"};
    return status_ >= Done && status_ <= GeneralFailure ? texts[status_] : "Unknown Error";
}

const SModuleFileInfo* SModuleDependencyList::LookupModule(const char* name,
                                                           int byFullPath) const noexcept {
    if (name == nullptr) return nullptr;
    for (const SModuleFileInfo& module : *this) {
        const char* const text = byFullPath != 0 ? module.GetFullPath() : module.GetFileName();
        if (brcore8::mbs::CompareNoCase(text, name) == 0) return &module;
    }
    return nullptr;
}

SModuleFileInfo* SModuleDependencyList::Add(const char* path) {
    auto* const module = ::new (brcore8::Allocate(sizeof(SModuleFileInfo))) SModuleFileInfo;
    CopyText(module->fileName_, FileNameOf(path));
    CopyText(module->fullPath_, path);
    module->next_ = std::exchange(first_, module);
    ++count_;
    return module;
}

void SModuleDependencyList::AddNotFound(SModuleFileInfo& importer, const char* name) {
    auto* const missing = ::new (brcore8::Allocate(sizeof(SModuleFileInfo))) SModuleFileInfo;
    CopyText(missing->fileName_, name);
    missing->firstNotFound_ = std::exchange(importer.firstNotFound_, missing);
}
