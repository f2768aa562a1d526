// The viewer's window: a menu, an edit field that shows the document, and a status bar.
#ifndef BRCORE8_EXAMPLES_VIEWER_VIEWER_FRAME_H
#define BRCORE8_EXAMPLES_VIEWER_VIEWER_FRAME_H

#include <brcore8/app/frame_wnd.h>
#include <brcore8/app/main_wnd_settings.h>
#include <brcore8/bars/progress_status_bar.h>
#include <brcore8/graphics/font.h>

#include <chrono>

#include "document.h"

namespace viewer {

enum Command : UINT {
    kOpen = 100,
    kReload,
    kClose,
    kExit,
    kCopy,
    kSelectAll,
    kLarger,
    kSmaller,
    kDetails,
    kShowEntry,
    kBack,
    kAbout,
    // Panes of the status bar.
    kPosition = 200,
    kFormat,
    kSize,
    kEntries,
};

class SViewerFrame : public SFrameWnd {
    SDECLARE_MESSAGE_MAP(SViewerFrame);

public:
    SViewerFrame();
    ~SViewerFrame() override { ::DestroyAcceleratorTable(GetAccelTable()); }

    // The window with all that is in it, hidden, where it was the last time. 1 or 0.
    int Make();
    // Shows the file; a fault is told in a box. 1 or 0.
    int OpenFile(const SString& path);
    // The `index`-th entry of the archive that is shown.
    int ShowEntry(int index);
    const Document& GetDocument() const noexcept { return document_; }
    SProgressStatusBar& GetStatusBar() noexcept { return status_; }
    SWnd& GetText() noexcept { return view_; }
    // What is there sooner shows no progress.
    void SetPatience(std::chrono::milliseconds patience) noexcept { patience_ = patience; }
    const SMainWndSettings& GetSettings() const noexcept { return settings_; }

private:
    int MakeMenu();
    void MakeKeys();
    int MakeView();
    int MakeStatusBar();
    void ShowDocument(Document&& document);
    int Read(const SString& path, int entry);
    void ChangeFont(int pixels);
    void UseFont();
    int CaretLine() const;
    int HasDocument() const noexcept { return document_.kind != Document::Kind::None; }

    void OnClose();
    void OnDestroy();
    void OnSetFocus(SWnd* from);

    void OnOpen();
    void OnReload();
    void OnCloseDocument();
    void OnExit() { SendMessage(WM_CLOSE); }
    void OnCopy() { view_.SendMessage(WM_COPY); }
    void OnSelectAll() { view_.SendMessage(EM_SETSEL, 0, -1); }
    void OnLarger() { ChangeFont(2); }
    void OnSmaller() { ChangeFont(-2); }
    void OnDetails();
    void OnShowEntry() { ShowEntry(CaretLine()); }
    void OnBack();
    void OnAbout();

    void OnUpdateDocument(SCmdUI* ui);
    void OnUpdateCopy(SCmdUI* ui);
    void OnUpdateDetails(SCmdUI* ui);
    void OnUpdateShowEntry(SCmdUI* ui);
    void OnUpdateBack(SCmdUI* ui);
    void OnUpdatePosition(SCmdUI* ui);
    void OnUpdateFormat(SCmdUI* ui);
    void OnUpdateSize(SCmdUI* ui);
    void OnUpdateEntries(SCmdUI* ui);

    SMainWndSettings settings_;
    SFont font_;
    SWnd view_;
    SProgressStatusBar status_;
    SStatusBarLayout details_;
    Document document_;
    Document list_;  // the archive whose entry is shown
    std::chrono::milliseconds patience_{100};
};

}  // namespace viewer

#endif
