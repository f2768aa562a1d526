#include <brcore8/settings/command_line.h>

#include <brcore8/strings/string_views.h>

#include <string_view>
#include <utility>

namespace {

bool IsSwitch(std::string_view word) {
    return word.starts_with('-') || word.starts_with('/');
}

}  // namespace

SCommandLine::SCommandLine(const char* cmdLine) {
    SetCmdLineString(cmdLine);
}

void SCommandLine::SetCmdLineString(const char* cmdLine) {
    // Always a text of its own, by which ParseParams knows the line.
    SString line(cmdLine);
    shellCommand_ = None;
    embedding_ = automation_ = 0;
    showSplash_ = 1;
    fileName_.Done();
    cmdLine_ = std::move(line);
    ParseParams();
}

void SCommandLine::ParseParams() {
    const SString line = cmdLine_;  // a share: the words lie in it
    const SWords words(line.View());
    for (auto word = words.begin(); word != words.end();) {
        std::string_view param = *word++;
        const bool isFlag = IsSwitch(param);
        if (isFlag) param.remove_prefix(1);
        ParseParam(SString(param), isFlag, word == words.end());
        const bool parsedAnother = line.GetSafePointer() != cmdLine_.GetSafePointer();
        if (parsedAnother) return;
    }
}

void SCommandLine::ParseParam(const SString& param, int isFlag, int isLast) {
    if (isFlag)
        ParseParamFlag(param);
    else
        ParseParamNotFlag(param);
    if (isLast) ParseLast();
}

void SCommandLine::ParseParamFlag(const SString& param) {
    if (param == "pt")
        shellCommand_ = PrintTo;
    else if (param == "p")
        shellCommand_ = Print;
    else if (param.CompareNoCase("Unregister") == 0 || param.CompareNoCase("Unregserver") == 0)
        shellCommand_ = Unregister;
    else if (param == "dde")
        shellCommand_ = Dde;
    else if (param == "workspace")
        shellCommand_ = OpenWorkspace;
    else if (param.CompareNoCase("Embedding") == 0)
        embedding_ = 1, showSplash_ = 0;
    else if (param.CompareNoCase("Automation") == 0)
        automation_ = 1, showSplash_ = 0;
}

void SCommandLine::ParseParamNotFlag(const SString& param) {
    if (fileName_.IsEmpty()) fileName_ = param;
}

void SCommandLine::ParseLast() {
    if (shellCommand_ == None && !fileName_.IsEmpty()) shellCommand_ = Open;
    showSplash_ = !embedding_ && !automation_;
}
