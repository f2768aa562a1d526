// A byte for the code page, a command line. What is parsed must agree with the words that an
// override saw, of which exactly one is the last.
#include <brcore8/settings/command_line.h>
#include <brcore8/strings/multibyte.h>

#include <cstdlib>
#include <string>

#include "fuzz.h"

namespace {

void Require(bool holds) {
    if (!holds) std::abort();
}

class Checked : public SCommandLine {
public:
    Checked() : SCommandLine("") {}

    void Check(const char* line) {
        SetCmdLineString(line);
        Require(words_ == 0 || last_);
        Require(GetFileName() == file_);
        Require(GetShellCommand() <= Unregister);
        Require((GetShellCommand() == Open) == (!command_ && !file_.IsEmpty()));
        Require(ShowSplash() == !(IsEmbedding() || IsAutomation()));
        Require(GetCmdLineString() == line);
    }

protected:
    void ParseParam(const SString& param, int isFlag, int isLast) override {
        Require(!last_);
        ++words_;
        last_ = isLast != 0;
        if (!isFlag && file_.IsEmpty()) file_ = param;
        const unsigned before = GetShellCommand();
        SCommandLine::ParseParam(param, isFlag, 0);
        command_ = command_ || GetShellCommand() != before;
        if (isLast) ParseLast();
    }

private:
    int words_ = 0;
    bool last_ = false;
    bool command_ = false;
    SString file_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 1) return 0;
    _setmbcp(data[0] & 1 ? 932 : 1252);
    const std::string line(reinterpret_cast<const char*>(data) + 1, size - 1);
    Checked().Check(line.c_str());
    return 0;
}
