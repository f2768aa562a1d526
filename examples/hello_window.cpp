// A window that says hello and counts clicks. With a number as its argument it clicks itself that
// often and closes. Prints "3 clicks, then closed" for 3.
#include <brcore8/brcore8.h>
#include <cstdlib>
#include <cstring>
#include <iostream>

class SHelloWindow : public SFrameWnd {
    SDECLARE_MESSAGE_MAP(SHelloWindow);

public:
    int clicks = 0;

private:
    void OnPaint() {
        PAINTSTRUCT paint;
        const HDC dc = BeginPaint(GetHandle(), &paint);
        SString text;
        text.Format("Hello. Clicks: %d", clicks);
        TextOutA(dc, 20, 20, text, static_cast<int>(text.LengthByte()));
        EndPaint(GetHandle(), &paint);
    }
    void OnLButtonDown(UINT, int, int) {
        ++clicks;
        Invalidate();
    }
    void OnDestroy() { PostQuitMessage(0); }
};
SIMPLEMENT_MESSAGE_MAP(SHelloWindow, SFrameWnd,
    SOnPaint<&SHelloWindow::OnPaint>(),
    SOnLButtonDown<&SHelloWindow::OnLButtonDown>(),
    SOnDestroy<&SHelloWindow::OnDestroy>());

int main(int count, char** arguments) {
    SWinApp app("Hello");
    SHelloWindow window;
    if (!window.CreateFrame("Hello")) return 1;
    app.SetMainWnd(&window);
    window.ShowWindow(SW_SHOWNORMAL);
    for (int left = count > 1 ? std::atoi(arguments[1]) : 0; left > 0; --left) {
        window.PostMessage(WM_LBUTTONDOWN);
        if (left == 1) window.PostMessage(WM_CLOSE);
    }
    app.Run();
    std::cout << window.clicks << " clicks, then closed\n";
}
