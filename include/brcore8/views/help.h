// SHelp and SHelpModule: which page of which help file explains what the user looks at.
//
//     SHelpModule pages("viewer.chm", 1000, 1999);
//     pages.AddTopic(1001, "open.htm");
//     SHelp help;
//     help.AddModule(&pages);
//     help.Show(1001);
//
// The library knows topics; how a page is shown is the program's (OnShow).
//
// Threads: the one that runs the user interface. Ownership: modules stay the caller's and must
// outlive the help.
#ifndef BRCORE8_VIEWS_HELP_H
#define BRCORE8_VIEWS_HELP_H

#include <brcore8/core/object.h>
#include <brcore8/platform/windows.h>
#include <brcore8/strings/string.h>

#include <map>
#include <vector>

// The help file of one module of a program, and its topics: of the numbers `first` to `last`.
class BRCORE8_API SHelpModule : public SObject {
    SDECLARE_CLASS(SHelpModule);

    SHelpModule(const char* file, UINT first, UINT last)
        : file_(file), first_(first), last_(last) {}

    const SString& GetFile() const noexcept { return file_; }
    int Covers(UINT id) const noexcept { return id >= first_ && id <= last_; }
    // In the place of the page before; 0 for a number of another module.
    int AddTopic(UINT id, const char* page);
    // Empty where there is none.
    SString FindTopic(UINT id) const;

private:
    SString file_;
    UINT first_;
    UINT last_;
    std::map<UINT, SString> topics_;
};

class BRCORE8_API SHelp : public SObject {
    SDECLARE_CLASS(SHelp);

    SHelp() noexcept = default;

    // Those added first are asked first; a second time changes nothing.
    void AddModule(SHelpModule* module);
    // 0 when it was not added.
    int RemoveModule(SHelpModule* module);
    // The module of the number that has a page for it, or null.
    SHelpModule* FindModule(UINT id) const;
    // Shows the page: what OnShow answers, 0 when nobody has one.
    int Show(UINT id);

protected:
    // Shows a page of a file: 1, or 0 when it cannot. 0 here.
    virtual int OnShow(const SString& file, const SString& page);

private:
    std::vector<SHelpModule*> modules_;
};

#endif
