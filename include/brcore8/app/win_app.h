// SWinApp: the application object. It runs the message loop and the idle passes, knows the main
// window and the command line, and counts the wait cursor.
//
//     class SViewer : public SWinApp {
//     public:
//         SViewer() : SWinApp("Viewer") {}
//         int InitInstance() override;      // makes the main window and calls SetMainWnd
//     };
//     SViewer app;
//     app.Init(instance, nullptr, commandLine, SW_SHOWNORMAL);
//     if (!app.InitApplication() || !app.InitInstance()) return app.ExitInstance();
//     return app.Run();
//
// Threads: one, the one that runs the user interface; messages may be posted to it from others.
#ifndef BRCORE8_APP_WIN_APP_H
#define BRCORE8_APP_WIN_APP_H

#include <brcore8/settings/command_line.h>
#include <brcore8/window/wnd.h>

class BRCORE8_API SWinApp : public SCmdTarget {
    SDECLARE_CREATABLE(SWinApp);
    SDECLARE_MESSAGE_MAP(SWinApp);

public:
    // The application of the process from now on, the last one constructed; at its end the one
    // before it is again. The name, which may be null, is copied.
    explicit SWinApp(const char* name = nullptr);
    SWinApp(const SWinApp&) = delete;
    SWinApp& operator=(const SWinApp&) = delete;
    ~SWinApp() override;

    // What the program was started with; the command line stays the caller's and is taken apart
    // (GetCommmandLine). The instance becomes that of the process's resources. Returns 1.
    int Init(HINSTANCE instance, HINSTANCE previous, char* commandLine, int show);

    // --- Virtual operations, in slot order after SCmdTarget's
    // -------------------------------------

    // Once a program, and once an instance; 0 gives up. 1 here.
    virtual int InitApplication();
    virtual int InitInstance();
    // The end: the code of the quit message, for main to return.
    virtual int ExitInstance();
    // The message loop: idle passes while no message waits, then messages. ExitInstance's answer.
    virtual int Run();
    // Whether the message was dealt with before it is translated and dispatched: the windows from
    // its own up to the main window are asked.
    virtual int PreTranslateMessage(MSG* message);
    // Waits for a message and deals with it. 0 for the quit message.
    virtual int PumpMessage();
    // One idle pass. The first, with `count` 0, brings what shows commands up to date and asks for
    // another; the second ends temporary wrappers and does not.
    virtual int OnIdle(long count);
    // Whether idle passes ought to follow this message: not after repeated moves of the mouse to
    // one place, painting and the blinking caret.
    virtual int IsIdleMessage(MSG* message);
    virtual SWnd* GetMainWnd();
    // Adds `delta` to the wait count, or with 0 sets it to 0; the wait cursor shows while it is
    // above 0, then the cursor from before the first wait is put back.
    virtual void DoWaitCursor(int delta);
    virtual int GetWaitCount() const;
    // A command that came from another program; 0 here.
    virtual int OnDDECommand(char* command);

    // --- Questions
    // --------------------------------------------------------------------------------

    void SetMainWnd(SWnd* window) noexcept { mainWnd_ = window; }
    void SetModal(int on) noexcept { modal_ = on; }
    int GetModal() const noexcept { return modal_; }
    const char* GetName() const noexcept { return name_; }
    HINSTANCE GetInstance() const noexcept { return instance_; }
    int GetShowCommand() const noexcept { return show_; }
    // The command line taken apart, under the name that programs know, and as it was given.
    SCommandLine& GetCommmandLine() noexcept { return commandLine_; }
    const char* GetCmdLineString() const noexcept { return commandLineText_; }
    // The message that PumpMessage dealt with last.
    const MSG& GetCurrentMessage() const noexcept { return message_; }

private:
    void UpdateVisibleFrames();
    static void UpdateWindowTree(SWnd* window);

    MSG message_{};
    POINT idlePoint_{};
    UINT idleMessage_ = 0;
    SCommandLine commandLine_;
    char* name_ = nullptr;
    SWinApp* previousApp_ = nullptr;
    HINSTANCE instance_ = nullptr;
    HINSTANCE previous_ = nullptr;
    char* commandLineText_ = nullptr;
    int show_ = -1;
    [[maybe_unused]] std::int32_t reserved_ = 0;
    SWnd* mainWnd_ = nullptr;
    int modal_ = 0;
    int waitCount_ = 0;
    HCURSOR savedCursor_ = nullptr;
};

// The application of the process, or null.
BRCORE8_API SWinApp* SGetApp() noexcept;

#endif
