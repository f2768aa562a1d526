// Frames besides SFrameWnd: small ones that float, a splash, and those of documents inside a frame.
//
// Threads: the one that runs the user interface.
// Errors: what creates a window answers 0 where the platform refuses.
#ifndef BRCORE8_VIEWS_FRAMES_H
#define BRCORE8_VIEWS_FRAMES_H

#include <brcore8/app/frame_wnd.h>
#include <brcore8/graphics/bitmap.h>

#include <memory>
#include <vector>

// A small frame above its owner, which one child fills.
class BRCORE8_API SFloatFrameWnd : public SFrameWnd {
    SDECLARE_CREATABLE(SFloatFrameWnd);
    SDECLARE_MESSAGE_MAP(SFloatFrameWnd);

public:
    SFloatFrameWnd() noexcept = default;
    // Hidden, at that place on the screen.
    int CreateFloat(const char* text, const RECT& place, SWnd* owner);
    // A window of whatever parent becomes the frame's child and fills it; null gives the one before
    // back to nobody. It stays the caller's.
    void SetContent(SWnd* content);
    SWnd* GetContent() const;

protected:
    void OnFill(UINT how, int width, int height);

private:
    HWND content_ = nullptr;
};

// A picture, or a text, in the middle of the screen while a program starts. A click or the end of
// its time closes it.
class BRCORE8_API SSplashWnd : public SFrameWnd {
    SDECLARE_CREATABLE(SSplashWnd);
    SDECLARE_MESSAGE_MAP(SSplashWnd);

public:
    SSplashWnd() noexcept = default;
    // Shows it for so many milliseconds, 0 until it is closed. The picture stays the caller's and
    // must outlive it; without one, there is the text alone.
    int ShowSplash(const char* text, const SBitmap* picture, UINT milliseconds,
                   SWnd* owner = nullptr);

private:
    void OnPaint();
    void OnTimer(UINT_PTR) { DestroyWindow(); }
    void OnLButtonDown(UINT, int, int) { DestroyWindow(); }

    const SBitmap* picture_ = nullptr;
};

class SMDIChildWnd;

// A frame with documents inside. Off Windows there are no such frames: CreateClient answers 0 with
// ERROR_CANNOT_FIND_WND_CLASS.
class BRCORE8_API SMDIFrameWnd : public SFrameWnd {
    SDECLARE_CREATABLE(SMDIFrameWnd);
    SDECLARE_MESSAGE_MAP(SMDIFrameWnd);

public:
    static constexpr UINT kFirstDocument = 0xFF00;

    SMDIFrameWnd() noexcept = default;
    // The window in which the documents live, once a frame.
    int CreateClient();
    HWND GetClient() const noexcept { return client_; }
    // The active document, or null.
    SMDIChildWnd* GetActiveChild() const;
    void Cascade() { SendClient(WM_MDICASCADE); }
    void Tile() { SendClient(WM_MDITILE); }
    void ActivateNext() { SendClient(WM_MDINEXT); }

    // The frame's keys, and those for its documents: with Ctrl, F4 closes the active one, F6 and
    // Tab go to the next, and with Shift to the one before.
    int PreTranslateMessage(MSG* message) override;
    LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

protected:
    int OnCmdMsg(UINT id, int packed, void* extra, S_CMDHANDLERINFO* info) override;
    // The window of the documents, where there is one.
    HWND FindFiller() const override;

private:
    LRESULT SendClient(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
        return client_ != nullptr ? ::SendMessageA(client_, message, wParam, lParam) : 0;
    }

    HWND client_ = nullptr;
};

class BRCORE8_API SMDIChildWnd : public SFrameWnd {
    SDECLARE_CREATABLE(SMDIChildWnd);

public:
    SMDIChildWnd() noexcept = default;
    // 0 for a frame without a client.
    int CreateDocument(const char* text, SMDIFrameWnd* frame);
    void Activate();

    LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

protected:
    // The document and its view alone: its frame asks them first, and the application afterwards.
    int OnCmdMsg(UINT id, int packed, void* extra, S_CMDHANDLERINFO* info) override;
};

#endif
