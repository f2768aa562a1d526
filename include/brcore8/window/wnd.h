// SWnd: the wrapper of one window of the platform. A window that the library made, or that was
// attached, has a permanent wrapper; FromHandle answers for any other with a temporary one, good
// until the next idle pass.
//
//     class SHello : public SWnd {
//         SDECLARE_MESSAGE_MAP(SHello);
//         void OnPaint();
//     };
//     SHello hello;
//     hello.CreateEx(0, "S_CliDrawWnd", "Hello", WS_OVERLAPPEDWINDOW, CW_USEDEFAULT, 0, 400, 300);
//
// Messages come to WindowProc; OnWndMsg finds the handler in the class's message maps. An exception
// that a handler lets escape ends there: it is shown, if the program switched that on, and -1
// answers WM_CREATE, 0 any other message.
//
// The operations that bear the platform's names are the platform's calls for this window, with its
// results; wrappers stand in the place of handles, null for null.
//
// Threads: a window, and what wraps it, belong to the thread that made it; only PostMessage may be
// called from others.
// Ownership: a wrapper destroys the window that it created at its own end, by the window's own
// procedure, which may tell the parent; of one that was subclassed or attached it lets go.
#ifndef BRCORE8_WINDOW_WND_H
#define BRCORE8_WINDOW_WND_H

#include <brcore8/routing/cmd_target.h>
#include <brcore8/strings/string.h>
#include <brcore8/window/handle_map.h>

namespace brcore8 {

// A number or a pointer as a parameter of a message; a number keeps its sign.
template <class Word, class T>
Word AsWord(T value) noexcept {
    if constexpr (std::is_pointer_v<T> || std::is_null_pointer_v<T>)
        return reinterpret_cast<Word>(value);
    else
        return static_cast<Word>(value);
}

}  // namespace brcore8

class BRCORE8_API SWnd : public SCmdTarget {
    SDECLARE_CREATABLE(SWnd);
    SDECLARE_MESSAGE_MAP(SWnd);

public:
    SWnd() noexcept = default;
    SWnd(const SWnd&) = delete;
    SWnd& operator=(const SWnd&) = delete;
    ~SWnd() override;

    // --- Handles and wrappers -----------------------------------------------------------------

    HWND GetHandle() const noexcept { return brcore8::LiveHandle(handle_); }

    // The wrapper of a handle: permanent, else temporary, made when there was none; null for null.
    static SWnd* FromHandle(HWND handle);
    // The permanent one or null.
    static SWnd* FromHandlePermanent(HWND handle);
    // Ends the temporary ones; the idle pass calls it.
    static void DeleteTempMap();
    static SHandleMap& GetHandleMap();

    // Makes this the permanent wrapper of the window: 0 for null, else 1.
    int Attach(HWND handle);
    // Lets go of the window, which lives on, and returns its handle.
    HWND Detach();
    // Attaches, and puts the library's window procedure in the place of the window's own, which
    // from now on does the default processing; a class whose GetSuperWndProc names another than the
    // window had leaves the window its own. 1 when attached.
    int SubclassWindow(HWND handle);
    // The same for the item `id` of this window; 0 when it is missing or `wrapper` null.
    int SubclassChild(int id, SWnd* wrapper);
    // Puts back the procedure that the window had, and lets go of it.
    HWND UnsubclassWindow();

    // --- Creation, in slot order after SCmdTarget's ---------------------------------------------

    // A child of `parent` with the identifier `id`. 1, or 0 when the platform or a handler of
    // WM_NCCREATE or WM_CREATE refuses.
    virtual int Create(const char* className, const char* text, DWORD style, const RECT& place,
                       SWnd* parent, UINT id, void* param = nullptr);
    // Any window; `menu` is a child's identifier. The wrapper has no window yet, or this throws
    // SEConstructor, as it does when the hook that attaches wrappers is refused.
    int CreateEx(DWORD exStyle, const char* className, const char* text, DWORD style, int x, int y,
                 int width, int height, HWND parent = nullptr, HMENU menu = nullptr,
                 void* param = nullptr);
    // 0 when there is no window, or the platform refuses. The wrapper is detached by then, and
    // may have deleted itself (PostNcDestroy).
    virtual int DestroyWindow();

    // Whether a modal loop of this window is to go on, and its end with a result.
    virtual int ContinueModal();
    virtual void EndModalLoop(int result);
    // Pumps messages until EndModalLoop, and returns its result; -1 when the program is to end.
    int RunModalLoop();

    // Whether the message was dealt with before it is dispatched; 0 here.
    virtual int PreTranslateMessage(MSG* message);
    // From a client rectangle to that of the window around it.
    virtual void CalcWindowRect(RECT* rect);
    // The scroll bar window that stands in for a bar of this window; null here.
    virtual SWnd* GetScrollBarCtrl(int bar);
    // For controls that can be read only; 0 here.
    virtual int SetReadOnly(int on);

    // --- Procedures
    // -------------------------------------------------------------------------------

    // The procedure behind every window of the class; null here.
    virtual WNDPROC GetSuperWndProc() const;
    // Keeps the procedure that this window had.
    virtual void SetSuperWndProc(WNDPROC procedure);

protected:
    // OnWndMsg, and DefWindowProc where nothing handled the message.
    virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    // Calls the handler of the message. Non-zero when one ran; *result, when given, is then its
    // result. A process-wide cache of 256 slots remembers what each class does with a message.
    virtual int OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result);

public:
    // A last word before the window is made; 0 refuses.
    virtual int PreCreateWindow(CREATESTRUCT& create);

protected:
    // WM_COMMAND and WM_NOTIFY: offered to the control that sent them first, then to OnCmdMsg.
    virtual int OnCommand(WPARAM wParam, LPARAM lParam);
    virtual int OnNotify(WPARAM wParam, NMHDR* header, LRESULT* result);

public:
    // What the window would do without the library.
    virtual LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam);

protected:
    // The window that was made is this wrapper's to destroy.
    void Own() noexcept { bits_ |= kOwnsWindow; }
    // The window is gone and this wrapper detached; a wrapper may delete itself here.
    virtual void PostNcDestroy();
    // A message that this control sent to its parent comes back to it first: 1 when it dealt with
    // it. 0 here.
    virtual int OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result);

public:
    // The message that this thread's innermost window procedure runs for.
    static const MSG& GetLastMessage();
    // Offers the current message to the wrapper of the control that sent it.
    static int ReflectLastMsg(HWND child, LRESULT* result);
    int SendChildNotifyLastMsg(LRESULT* result);
    // Default processing of the current message, for its handler.
    LRESULT Default();
    // Asks the wrappers from the message's window up to `stop`, whether one deals with it.
    static int WalkPreTranslateTree(HWND stop, MSG* message);
    // Sends to all children, and theirs when `deep`; with `permanentOnly` straight to the wrappers.
    void SendMessageToDescendants(UINT message, WPARAM wParam, LPARAM lParam, int deep,
                                  int permanentOnly);
    // What the library's procedure does for this window: the message comes to WindowProc, and the
    // exceptions of its handlers end here.
    LRESULT CallWndProc(UINT message, WPARAM wParam, LPARAM lParam);

    // --- The platform's calls
    // ---------------------------------------------------------------------

    LRESULT SendMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
        return ::SendMessageA(handle_, message, wParam, lParam);
    }
    // The same with numbers and pointers as they are, and the answer as an R.
    template <class R = int, class W = int, class L = int>
    R Ask(UINT message, W wParam = {}, L lParam = {}) const {
        const LRESULT answer = ::SendMessageA(handle_, message, brcore8::AsWord<WPARAM>(wParam),
                                              brcore8::AsWord<LPARAM>(lParam));
        if constexpr (std::is_pointer_v<R>)
            return reinterpret_cast<R>(answer);
        else
            return static_cast<R>(answer);
    }
    BOOL PostMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
        return ::PostMessageA(handle_, message, wParam, lParam);
    }
    BOOL IsWindow() const { return ::IsWindow(handle_); }

    DWORD GetStyle() const { return static_cast<DWORD>(::GetWindowLongA(handle_, GWL_STYLE)); }
    DWORD GetExStyle() const { return static_cast<DWORD>(::GetWindowLongA(handle_, GWL_EXSTYLE)); }
    // Takes bits away and adds others; with `flags` the frame follows at once (SetWindowPos). 0
    // when nothing changed.
    int ModifyStyle(DWORD remove, DWORD add, UINT flags = 0);
    int GetDlgCtrlID() const { return ::GetDlgCtrlID(handle_); }

    void SetWindowText(const char* text) { ::SetWindowTextA(handle_, text != nullptr ? text : ""); }
    SString GetWindowText() const;
    int GetWindowTextLength() const { return ::GetWindowTextLengthA(handle_); }

    BOOL ShowWindow(int how) { return ::ShowWindow(handle_, how); }
    BOOL IsWindowVisible() const { return ::IsWindowVisible(handle_); }
    BOOL IsIconic() const { return ::IsIconic(handle_); }
    BOOL IsZoomed() const { return ::IsZoomed(handle_); }
    BOOL EnableWindow(BOOL on = 1) { return ::EnableWindow(handle_, on); }
    BOOL IsWindowEnabled() const { return ::IsWindowEnabled(handle_); }

    BOOL MoveWindow(const RECT& place, BOOL repaint = 1) {
        return ::MoveWindow(handle_, place.left, place.top, place.right - place.left,
                            place.bottom - place.top, repaint);
    }
    BOOL SetWindowPos(HWND after, int x, int y, int width, int height, UINT flags) {
        return ::SetWindowPos(handle_, after, x, y, width, height, flags);
    }
    BOOL BringWindowToTop() { return ::BringWindowToTop(handle_); }
    RECT GetWindowRect() const;
    RECT GetClientRect() const;
    BOOL ClientToScreen(POINT* point) const { return ::ClientToScreen(handle_, point); }
    BOOL ScreenToClient(POINT* point) const { return ::ScreenToClient(handle_, point); }

    void Invalidate(BOOL erase = 1) { ::InvalidateRect(handle_, nullptr, erase); }
    void InvalidateRect(const RECT* rect, BOOL erase = 1) {
        ::InvalidateRect(handle_, rect, erase);
    }
    void ValidateRect(const RECT* rect) { ::ValidateRect(handle_, rect); }
    BOOL UpdateWindow() { return ::UpdateWindow(handle_); }

    SWnd* GetParent() const { return FromHandle(::GetParent(handle_)); }
    SWnd* GetWindow(UINT which) const { return FromHandle(::GetWindow(handle_, which)); }
    SWnd* GetTopWindow() const { return FromHandle(::GetTopWindow(handle_)); }
    SWnd* GetDlgItem(int id) const { return FromHandle(::GetDlgItem(handle_, id)); }
    SWnd* SetParent(SWnd* parent) {
        return FromHandle(::SetParent(handle_, parent != nullptr ? parent->handle_ : nullptr));
    }
    BOOL IsChild(const SWnd* window) const {
        return ::IsChild(handle_, window != nullptr ? window->handle_ : nullptr);
    }

    SWnd* SetFocus() { return FromHandle(::SetFocus(handle_)); }
    static SWnd* GetFocus() { return FromHandle(::GetFocus()); }
    SWnd* SetActiveWindow() { return FromHandle(::SetActiveWindow(handle_)); }
    static SWnd* GetActiveWindow() { return FromHandle(::GetActiveWindow()); }
    SWnd* SetCapture() { return FromHandle(::SetCapture(handle_)); }
    static SWnd* GetCapture() { return FromHandle(::GetCapture()); }

    // The window owns its menu from then on; the one before is the caller's.
    SMenu* GetMenu() const;
    BOOL SetMenu(SMenu* menu);
    void DrawMenuBar() { ::DrawMenuBar(handle_); }

    UINT_PTR SetTimer(UINT_PTR id, UINT milliseconds) {
        return ::SetTimer(handle_, id, milliseconds, nullptr);
    }
    BOOL KillTimer(UINT_PTR id) { return ::KillTimer(handle_, id); }
    int MessageBox(const char* text, const char* caption = nullptr, UINT style = 0) {
        return ::MessageBoxA(handle_, text, caption, style);
    }

private:
    template <class>
    friend class brcore8::WrapperMap;

    enum Bits : std::int32_t { kOwnsWindow = 1, kSubclassed = 2, kInModalLoop = 4 };

    void OnNcDestroy();
    int OnControlMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result);
    int Dispatch(const SMsgEntry& row, WPARAM wParam, LPARAM lParam, LRESULT* answer);

    HWND handle_ = nullptr;
    std::int32_t bits_ = 0;
    WNDPROC superProc_ = nullptr;
    std::int32_t modalResult_ = 0;
    [[maybe_unused]] std::int32_t reserved_ = 0;
};
static_assert(sizeof(void*) != 4 || sizeof(SWnd) == 24);

// The procedure of all the library's windows.
BRCORE8_API LRESULT CALLBACK SCallWndProc(HWND handle, UINT message, WPARAM wParam, LPARAM lParam);

// How often the cache of message maps was asked, and answered without walking the maps.
struct SMessageCacheStats {
    unsigned long long asked;
    unsigned long long hits;
};
BRCORE8_API SMessageCacheStats SGetMessageCacheStats() noexcept;

#endif
