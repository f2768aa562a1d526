// Windows that hold other windows in panes or on pages, which they make from class descriptors:
// splitters and tab windows.
//
//     SSplitterWnd splitter;
//     splitter.CreateStatic(&frame, 1, 2, place, SFrameWnd::ViewId);
//     splitter.CreatePane(0, 0, &SEditView::m_SEditView, {150, 0});
//     splitter.CreatePane(0, 1, &SAboutView::m_SAboutView, {0, 0});
//
// A pane's class must be derived from SWnd, have a factory, and name its window class itself
// (PreCreateWindow), as views do; otherwise it is not made and the answer is null.
//
// Threads: the one that runs the user interface.
// Ownership: panes and pages belong to the window that made them.
#ifndef BRCORE8_VIEWS_PANE_WINDOWS_H
#define BRCORE8_VIEWS_PANE_WINDOWS_H

#include <brcore8/controls/drawn_ctrls.h>
#include <brcore8/window/wnd.h>

#include <memory>
#include <vector>

// Rows and columns of panes, with bars between them that the mouse drags. The last row and column
// take what the others leave.
class BRCORE8_API SSplitterWnd : public SWnd {
    SDECLARE_CREATABLE(SSplitterWnd);
    SDECLARE_MESSAGE_MAP(SSplitterWnd);

public:
    // Pixels of 96 an inch: SScaled makes them the screen's.
    static constexpr int kBar = 5;
    static constexpr int kSmallest = 10;
    // The platform's windows are no larger, in pixels of the screen.
    static constexpr int kLargest = 0x7FFF;

    SSplitterWnd() noexcept = default;
    ~SSplitterWnd() override;

    // 1 to 16 rows and columns. 1 or 0.
    int CreateStatic(SWnd* parent, int rows, int columns, const RECT& place, UINT id);
    // The size is that of the pane's row and column from then on; 0 leaves one as it is. Null for a
    // place that there is not or that is taken.
    SWnd* CreatePane(int row, int column, const SClassInfo* info, SIZE size);
    // Null where there is none.
    SWnd* GetPane(int row, int column) const;
    int GetRowCount() const noexcept { return static_cast<int>(rows_.size()); }
    int GetColumnCount() const noexcept { return static_cast<int>(columns_.size()); }
    int GetRowHeight(int row) const;
    int GetColumnWidth(int column) const;
    // 0 for one that there is not; the last's follows from the others'. Sizes lie between kSmallest
    // and kLargest.
    int SetRowHeight(int row, int height);
    int SetColumnWidth(int column, int width);
    void RecalcLayout();

private:
    int Ends(const std::vector<int>& sizes, int room, int index, int* begin) const;
    int BarAt(const std::vector<int>& sizes, int room, int at) const;
    void Clear();
    void OnSize(UINT how, int width, int height);
    void OnLButtonDown(UINT keys, int x, int y);
    void OnMouseMove(UINT keys, int x, int y);
    void OnLButtonUp(UINT keys, int x, int y);
    void OnCaptureChanged(SWnd*) { dragRow_ = dragColumn_ = -1; }
    void OnDestroy();

    std::vector<int> rows_;
    std::vector<int> columns_;
    std::vector<std::unique_ptr<SWnd>> panes_;
    int dragRow_ = -1;
    int dragColumn_ = -1;
};

// Pages behind tabs, of which one shows. The two classes derived from it differ in when a page's
// window is made.
class BRCORE8_API STabPages : public SWnd {
    SDECLARE_MESSAGE_MAP(STabPages);

public:
    STabPages() noexcept = default;
    ~STabPages() override;

    using SWnd::Create;
    int Create(DWORD style, const RECT& place, SWnd* parent, UINT id) {
        return SWnd::Create("S_CtrlWnd", nullptr, style, place, parent, id);
    }
    int GetPageCount() const noexcept { return static_cast<int>(pages_.size()); }
    // Null for a page that there is not, or whose window was not made yet.
    SWnd* GetPage(int index) const;
    int GetCurPage() const { return beam_.GetCurTab(); }
    // 0 for a page that there is not, or whose window the platform refuses.
    int SetCurPage(int index);
    STabBeam& GetTabs() noexcept { return beam_; }

protected:
    struct Page {
        const SClassInfo* info;
        std::unique_ptr<SWnd> window;
    };

    // The page's place, or -1.
    int AppendPage(const char* text, const SClassInfo* info, bool madeAtOnce);
    int ErasePage(int index);

private:
    bool Make(std::size_t at);
    void Arrange();
    int OnCreate(CREATESTRUCT* create);
    void OnDestroy();
    void OnSize(UINT how, int width, int height);
    void OnTabChanged() { SetCurPage(beam_.GetCurTab()); }

    STabBeam beam_;
    std::vector<Page> pages_;
};

// Pages whose windows are made when they are added.
class BRCORE8_API STabWnd : public STabPages {
    SDECLARE_CREATABLE(STabWnd);

    STabWnd() noexcept = default;
    int AddPage(const char* text, const SClassInfo* info) { return AppendPage(text, info, true); }
};

// Pages whose windows are made when they show for the first time, and that may be closed.
class BRCORE8_API STabExWnd : public STabPages {
    SDECLARE_CREATABLE(STabExWnd);

    STabExWnd() noexcept = default;
    int AddPage(const char* text, const SClassInfo* info) { return AppendPage(text, info, false); }
    int ClosePage(int index) { return ErasePage(index); }
};

#endif
