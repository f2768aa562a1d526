// A module with message maps that is loaded and unloaded while the program runs. It is built twice,
// with other answers each: the second may come to lie where the first one was.
#include <brcore8/window/wnd.h>

#include "plugin.h"

namespace {

constexpr UINT kMessage = 0x400, kCommand = 100;

class STestGuest : public SWnd {
    SDECLARE_MESSAGE_MAP(STestGuest);

public:
    using SWnd::OnWndMsg;
    int answer = 0;

private:
    LRESULT OnMessage(WPARAM, LPARAM) { return GUEST_ANSWER; }
    void OnGo() { answer = GUEST_ANSWER; }
};
// The one has its rows where the other has none.
SIMPLEMENT_MESSAGE_MAP(STestGuest, SWnd,
                       SOnMessage<&STestGuest::OnMessage>(kMessage + GUEST_ANSWER),
                       SOnMessage<&STestGuest::OnMessage>(kMessage),
                       SOnCommand<&STestGuest::OnGo>(kCommand + GUEST_ANSWER),
                       SOnCommand<&STestGuest::OnGo>(kCommand));

}  // namespace

// The handler's answer, or 0 without one.
PLUGIN_FUNCTION int AskMessage(unsigned offset);
int AskMessage(unsigned offset) {
    STestGuest guest;
    LRESULT result = 0;
    return guest.OnWndMsg(kMessage + offset, 0, 0, &result) ? static_cast<int>(result) : 0;
}

PLUGIN_FUNCTION int AskCommand(unsigned offset);
int AskCommand(unsigned offset) {
    STestGuest guest;
    return guest.OnCmdMsg(kCommand + offset, 0, nullptr, nullptr) ? guest.answer : 0;
}
