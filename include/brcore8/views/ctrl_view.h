// Views that are one of the platform's controls.
//
// Threads: the one that runs the user interface.
// Errors: Create answers 0 where the platform lacks the control (ERROR_CANNOT_FIND_WND_CLASS).
#ifndef BRCORE8_VIEWS_CTRL_VIEW_H
#define BRCORE8_VIEWS_CTRL_VIEW_H

#include <brcore8/streams/input_stream.h>
#include <brcore8/streams/output_stream.h>
#include <brcore8/views/view.h>

class BRCORE8_API SCtrlView : public SView {
    SDECLARE_CLASS(SCtrlView);

public:
    // The control's class and style, where none is named.
    int PreCreateWindow(CREATESTRUCT& create) override;

protected:
    // The name is not copied.
    SCtrlView(const char* className, DWORD style) noexcept : class_(className), style_(style) {}
    // The control draws itself.
    void OnDraw(SDC& dc) override;
    void OnPaint() override;

private:
    const char* class_;
    DWORD style_;
};

// A text of many lines.
class BRCORE8_API SEditView : public SCtrlView {
    SDECLARE_CREATABLE(SEditView);

public:
    SEditView() noexcept;
    // Whole texts in the process's code page; lines end with a line feed in the stream, after a
    // carriage return or not, and with both in the control. Throw what the stream throws.
    void Load(SInputStream& from);
    void Save(SOutputStream& to) const;
    int GetLineCount() const { return Ask(EM_GETLINECOUNT); }
    int GetModify() const { return Ask(EM_GETMODIFY); }
    void SetModify(int on) { Ask(EM_SETMODIFY, on); }
    void SetSel(int from, int to) { Ask(EM_SETSEL, from, to); }
    void ReplaceSel(const char* text) { Ask(EM_REPLACESEL, 1, text); }
    // Selects the next place behind the selection where the text stands: 0 when there is none.
    int FindNext(const char* text);
};

class BRCORE8_API SRichEditView : public SCtrlView {
    SDECLARE_CREATABLE(SRichEditView);

public:
    SRichEditView() noexcept;
    int PreCreateWindow(CREATESTRUCT& create) override;
    int GetLineCount() const { return Ask(EM_GETLINECOUNT); }
    void SetSel(LONG from, LONG to);
    void ReplaceSel(const char* text) { Ask(EM_REPLACESEL, 1, text); }
};

// A list in columns.
class BRCORE8_API SListView : public SCtrlView {
    SDECLARE_CREATABLE(SListView);

public:
    SListView() noexcept;
    // -1 when refused.
    int AddColumn(const char* title, int width);
    int AddItem(const char* text);
    int SetItemText(int item, int column, const char* text);
    int GetItemCount() const { return Ask(LVM_GETITEMCOUNT); }
    int GetSelectedItem() const { return Ask(LVM_GETNEXTITEM, -1, LVIS_SELECTED); }

private:
    int columns_ = 0;
};

class BRCORE8_API STreeView : public SCtrlView {
    SDECLARE_CREATABLE(STreeView);

public:
    STreeView() noexcept;
    // Null when refused.
    HTREEITEM AddItem(const char* text, HTREEITEM parent = TVI_ROOT, LPARAM data = 0);
    int GetItemCount() const { return Ask(TVM_GETCOUNT); }
    HTREEITEM GetSelectedItem() const { return Ask<HTREEITEM>(TVM_GETNEXTITEM, TVGN_CARET); }
    int SelectItem(HTREEITEM item) { return Ask(TVM_SELECTITEM, TVGN_CARET, item); }
};

#endif
