// Docked windows: a host gives its docked windows strips at its four sides and what is left to the
// window in the middle; a docked window can be torn off into a small frame of its own, and put
// back.
//
//     SDockHostWnd host;
//     host.Create(WS_VISIBLE, place, &frame, SFrameWnd::ViewId);
//     host.CreateCenter(&SEditView::m_SEditView);
//     SDockWnd tree("Contents");
//     tree.CreateDock(&host, &STreeView::m_STreeView);
//     host.Dock(&tree, SDockHostWnd::kLeft, 150);
//     tree.Float({100, 100, 300, 400});
//
// Threads: the one that runs the user interface.
// Ownership: the content of a docked window and the middle belong to who holds them; a docked
// window is the program's. Host and docked windows may end in any order; without its host a docked
// window neither docks nor floats any more.
#ifndef BRCORE8_VIEWS_DOCKING_H
#define BRCORE8_VIEWS_DOCKING_H

#include <brcore8/views/frames.h>

#include <memory>
#include <vector>

class SDockWnd;

// The frame of a docked window while it floats. Closing it puts the window back to where it was
// docked.
class BRCORE8_API SMiniDockFrameWnd : public SFloatFrameWnd {
    SDECLARE_CREATABLE(SMiniDockFrameWnd);
    SDECLARE_MESSAGE_MAP(SMiniDockFrameWnd);

public:
    SMiniDockFrameWnd() noexcept = default;

private:
    void OnClose();
};

class BRCORE8_API SDockHostWnd : public SWnd {
    SDECLARE_CREATABLE(SDockHostWnd);
    SDECLARE_MESSAGE_MAP(SDockHostWnd);

public:
    enum Side : int { kLeft, kTop, kRight, kBottom };

    SDockHostWnd() noexcept = default;
    ~SDockHostWnd() override;

    using SWnd::Create;
    int Create(DWORD style, const RECT& place, SWnd* parent, UINT id) {
        return SWnd::Create("S_CtrlWnd", nullptr, style | WS_CLIPCHILDREN, place, parent, id);
    }
    // The window in the middle, of a class as pane_windows.h asks for. Null when it is not made.
    SWnd* CreateCenter(const SClassInfo* info);
    SWnd* GetCenter() const noexcept { return center_.get(); }

    // Gives the window a strip of that size; those docked first lie outside. 0 for one of another
    // host, and without a window of its own.
    int Dock(SDockWnd* window, Side side, int size);
    // 0 for one that is not docked here.
    int Undock(SDockWnd* window);
    int GetDockedCount() const noexcept { return static_cast<int>(strips_.size()); }
    void RecalcLayout();

private:
    friend class SDockWnd;

    struct Strip {
        SDockWnd* window;
        Side side;
        int size;
    };

    void OnSize(UINT how, int width, int height);
    void OnDestroy();
    void Forget(SDockWnd* window);

    std::unique_ptr<SWnd> center_;
    std::vector<Strip> strips_;
    std::vector<SDockWnd*> windows_;  // all that were made on it, also those that float
};

// There is no factory: a docked window is made for its title.
class BRCORE8_API SDockWnd : public SWnd {
    SDECLARE_CLASS(SDockWnd);
    SDECLARE_MESSAGE_MAP(SDockWnd);

public:
    // Pixels of 96 an inch: SScaled makes them the screen's.
    static constexpr int kCaption = 18;

    explicit SDockWnd(const char* title) : title_(title) {}
    ~SDockWnd() override;

    // Hidden, until it is docked or floats. 0 when it or its content is not made.
    int CreateDock(SDockHostWnd* host, const SClassInfo* content);
    SWnd* GetContent() const noexcept { return content_.get(); }
    const SString& GetTitle() const noexcept { return title_; }
    // In a frame of its own at that place on the screen.
    int Float(const RECT& place);
    int IsFloating() const;
    // To where it was docked last; 0 when it never was.
    int DockBack();

private:
    friend class SDockHostWnd;

    void OnSize(UINT how, int width, int height);
    void OnPaint();
    void OnLButtonDblClk(UINT, int x, int y);
    void OnDestroy();

    SString title_;
    SDockHostWnd* host_ = nullptr;
    std::unique_ptr<SWnd> content_;
    SMiniDockFrameWnd frame_;
    SDockHostWnd::Side side_ = SDockHostWnd::kLeft;
    int size_ = 0;  // 0: never docked
};

#endif
