#include <brcore8/views/help.h>

#include <algorithm>

SIMPLEMENT_CLASS(SHelpModule, SObject, 2);
SIMPLEMENT_CLASS(SHelp, SObject, 2);

int SHelpModule::AddTopic(UINT id, const char* page) {
    if (!Covers(id)) return 0;
    topics_[id] = page;
    return 1;
}

SString SHelpModule::FindTopic(UINT id) const {
    const auto found = topics_.find(id);
    return found != topics_.end() ? found->second : SString();
}

void SHelp::AddModule(SHelpModule* module) {
    if (module != nullptr && std::find(modules_.begin(), modules_.end(), module) == modules_.end())
        modules_.push_back(module);
}

int SHelp::RemoveModule(SHelpModule* module) {
    const auto found = std::find(modules_.begin(), modules_.end(), module);
    if (found == modules_.end()) return 0;
    modules_.erase(found);
    return 1;
}

SHelpModule* SHelp::FindModule(UINT id) const {
    for (SHelpModule* const module : modules_)
        if (module->FindTopic(id).LengthByte() != 0) return module;
    return nullptr;
}

int SHelp::Show(UINT id) {
    const SHelpModule* const module = FindModule(id);
    return module != nullptr ? OnShow(module->GetFile(), module->FindTopic(id)) : 0;
}

int SHelp::OnShow(const SString&, const SString&) {
    return 0;
}
