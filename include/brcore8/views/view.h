// Views: child windows that show something of the program's and draw it themselves.
//
//     class SGraphView : public SBufferizedView {
//         void OnDraw(SDC& dc) override { dc.FillSolidRect(GetClientRect(), RGB(255, 255, 255)); }
//     };
//     view.Create(WS_VISIBLE, place, &frame, SFrameWnd::ViewId);
//
// A view names its window class itself (PreCreateWindow), so that who knows only its descriptor can
// make it: SWnd::Create with a null class name.
//
// Threads: the one that runs the user interface.
// Errors: Create answers 0 where the platform refuses.
#ifndef BRCORE8_VIEWS_VIEW_H
#define BRCORE8_VIEWS_VIEW_H

#include <brcore8/graphics/dc.h>
#include <brcore8/graphics/preview_dc.h>
#include <brcore8/window/wnd.h>

#include <vector>

class BRCORE8_API SView : public SWnd {
    SDECLARE_CLASS(SView);
    SDECLARE_MESSAGE_MAP(SView);

public:
    using SWnd::Create;
    int Create(DWORD style, const RECT& place, SWnd* parent, UINT id) {
        return SWnd::Create(nullptr, nullptr, style, place, parent, id);
    }
    // "S_CliDrawWnd" where no class is named.
    int PreCreateWindow(CREATESTRUCT& create) override;

protected:
    SView() noexcept = default;
    // Before each drawing: origin, font and the like.
    virtual void OnPrepareDC(SDC& dc);
    // Draws the view in client coordinates.
    virtual void OnDraw(SDC& dc) = 0;
    virtual void OnPaint();
};

// Draws into a picture in memory and shows that at once: nothing flickers. What OnDraw leaves is
// the background colour.
class BRCORE8_API SBufferizedView : public SView {
    SDECLARE_CLASS(SBufferizedView);
    SDECLARE_MESSAGE_MAP(SBufferizedView);

public:
    void SetBkColor(COLORREF color);
    COLORREF GetBkColor() const noexcept { return back_; }

protected:
    SBufferizedView() noexcept = default;
    void OnPaint() override;
    int OnEraseBkgnd(SDC*) { return 1; }

private:
    SBitmap picture_;
    SIZE size_{};
    COLORREF back_ = ::GetSysColor(COLOR_WINDOW);
};

// Shows a part of something larger, which the window's scroll bars, the keys and the wheel move.
// OnDraw draws all of it from its own left upper corner.
class BRCORE8_API SScrollView : public SView {
    SDECLARE_CLASS(SScrollView);
    SDECLARE_MESSAGE_MAP(SScrollView);

public:
    // How large it is, and the steps of lines and pages; those that are 0 are a tenth of the page,
    // and the page is what the window shows.
    void SetScrollSizes(SIZE total, SIZE page = {}, SIZE line = {});
    SIZE GetTotalSize() const noexcept { return total_; }
    POINT GetScrollPosition() const noexcept { return at_; }
    // As far as there is something to show.
    void ScrollToPosition(POINT point);

protected:
    SScrollView() noexcept = default;
    void OnPrepareDC(SDC& dc) override;
    void OnSize(UINT how, int width, int height);
    void OnHScroll(UINT code, SWnd* bar, UINT position);
    void OnVScroll(UINT code, SWnd* bar, UINT position);
    int OnMouseWheel(UINT keys, int delta, int x, int y);

private:
    int Target(int bar, UINT code, UINT position) const;
    void TellBars();

    SIZE total_{};
    SIZE page_{};
    SIZE line_{};
    POINT at_{};
};

// Shows the pages of a document as they would be printed, one at a time.
class BRCORE8_API SPreviewView : public SView {
    SDECLARE_CREATABLE(SPreviewView);

public:
    SPreviewView() noexcept = default;
    // Pages of that size in pixels, counted from 0.
    void SetPages(int count, SIZE size);
    int GetPageCount() const noexcept { return count_; }
    int GetCurPage() const noexcept { return page_; }
    // 0 for a page that is not there.
    int SetCurPage(int page);

protected:
    // Draws a page; here it stays white.
    virtual void OnDrawPage(SDC& dc, int page);
    void OnDraw(SDC& dc) override;

private:
    int count_ = 1;
    int page_ = 0;
    SIZE size_{595, 842};
};

// The name and version of a program, and lines of text below them.
class BRCORE8_API SAboutView : public SBufferizedView {
    SDECLARE_CREATABLE(SAboutView);

public:
    SAboutView() noexcept = default;
    void SetTitle(const char* title);
    void AddLine(const char* line);
    const SString& GetTitle() const noexcept { return title_; }
    int GetLineCount() const noexcept { return static_cast<int>(lines_.size()); }

protected:
    void OnDraw(SDC& dc) override;

private:
    SString title_;
    std::vector<SString> lines_;
};

#endif
