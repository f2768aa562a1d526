// SCommandLine: what a program was asked for when it was started.
//
// Words that begin with "-" or "/" are switches: "p" prints the file, "pt" prints it to a printer,
// "dde" answers a DDE request, "workspace" opens a workspace (these four as they stand);
// "Unregister" or "Unregserver" undoes the registration, "Embedding" and "Automation" tell that
// the object system started the program (in any case). Of the first four and "Unregister" the
// last one counts. Other switches are ignored. The first other word is the file's name. Words are
// those between spaces (see SWords); quotes are characters like any other.
//
// Threads: one command line serves one thread at a time.
// Errors: SEOutOfMemory; what was parsed so far then stays.
//
//     SCommandLine line("-p plan.brn");
//     line.GetShellCommand();                  // SCommandLine::Print
//     line.GetFileName();                      // "plan.brn"
#ifndef BRCORE8_SETTINGS_COMMAND_LINE_H
#define BRCORE8_SETTINGS_COMMAND_LINE_H

#include <brcore8/platform/export.h>
#include <brcore8/strings/string.h>

class BRCORE8_API SCommandLine {
public:
    enum ShellCommand : unsigned int {
        None = 0,
        Open = 1,  // a file's name and no switch that says what to do with it
        Print = 2,
        PrintTo = 3,
        Dde = 4,
        OpenWorkspace = 5,
        Unregister = 6
    };

    // Parses the line; null is empty. An override of ParseParam is not called from here, where the
    // derived class does not exist yet: its own constructor calls SetCmdLineString.
    explicit SCommandLine(const char* cmdLine);
    SCommandLine(const SCommandLine& other) = default;
    SCommandLine& operator=(const SCommandLine& other) = default;

    // Forgets everything and parses this line, which may be a part of the present one. An override
    // of ParseParam may call it too: the rest of the old line is then left.
    void SetCmdLineString(const char* cmdLine);

    // The whole line.
    const SString& GetCmdLineString() const noexcept { return cmdLine_; }
    const SString& GetFileName() const noexcept { return fileName_; }
    unsigned int GetShellCommand() const noexcept { return shellCommand_; }
    // 1 or 0.
    int IsEmbedding() const noexcept { return embedding_; }
    int IsAutomation() const noexcept { return automation_; }
    // 0 after "Embedding" or "Automation".
    int ShowSplash() const noexcept { return showSplash_; }

protected:
    void ParseParams();
    // Takes one word, a switch (`isFlag`) without its first character; `isLast` says that no word
    // follows. Derived classes take theirs and call this for the others, always for the last one.
    // Spaces in front of the line make a first word that is empty.
    virtual void ParseParam(const SString& param, int isFlag, int isLast);
    void ParseParamFlag(const SString& param);
    void ParseParamNotFlag(const SString& param);
    // Settles what depends on all words.
    void ParseLast();

public:
    virtual ~SCommandLine() = default;

private:
    unsigned int shellCommand_ = None;
    int embedding_ = 0;
    int automation_ = 0;
    int showSplash_ = 1;
    SString fileName_;
    SString cmdLine_;
};
static_assert(sizeof(void*) != 4 || sizeof(SCommandLine) == 28);

#endif
