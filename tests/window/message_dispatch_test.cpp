// What handlers of each kind are called with, and what becomes of their result.

#include <brcore8/window/menu.h>
#include <brcore8/window/wnd.h>

#include <brcore8/graphics/dc.h>
#include <gtest/gtest.h>

#include <sstream>

namespace {

constexpr LRESULT kAnswer = 41;

class STestListener : public SWnd {
    SDECLARE_MESSAGE_MAP(STestListener);

public:
    std::string called;
    int own = 0;

    using SWnd::OnWndMsg;

private:
    template <class T>
    static std::uintptr_t Shown(T* wrapper) {
        return wrapper != nullptr ? reinterpret_cast<std::uintptr_t>(wrapper->GetHandle()) : 0;
    }
    template <class T>
    static T Shown(T value) requires std::is_integral_v<T> {
        return value;
    }

    template <class... A>
    LRESULT Answer(A... arguments) {
        std::ostringstream text;
        ((text << Shown(arguments) << ' '), ...);
        called = text.str();
        return kAnswer;
    }
    template <class... A>
    void Silent(A... arguments) {
        Answer(arguments...);
    }
    template <class... A>
    LRESULT Zero(A... arguments) {
        Answer(arguments...);
        return 0;
    }
};

#define ANSWER(Kind, ...) \
    SOnMessageOfKind<Kind, LRESULT(__VA_ARGS__), &STestListener::Answer<__VA_ARGS__>>(0x400 + Kind)
#define SILENT(Kind, ...) \
    SOnMessageOfKind<Kind, void(__VA_ARGS__), &STestListener::Silent<__VA_ARGS__>>(0x400 + Kind)

UINT g_registered = 0;

SIMPLEMENT_MESSAGE_MAP(
    STestListener, SWnd, ANSWER(1, SDC*), ANSWER(2, WPARAM), ANSWER(3, SWnd*, int, UINT),
    ANSWER(5, SDC*, SWnd*), ANSWER(7, SDC*), ANSWER(8, UINT, SWnd*, UINT), ANSWER(9, UINT, UINT),
    ANSWER(10, SWnd*, int, UINT), ANSWER(11, LPARAM), ANSWER(12, WPARAM, LPARAM),
    ANSWER(13, UINT, UINT, SMenu*), ANSWER(14), SILENT(15), SILENT(16, WPARAM),
    SILENT(17, WPARAM, LPARAM), SILENT(18, UINT, UINT), SILENT(19, WPARAM, UINT, UINT),
    SILENT(20, WPARAM, UINT, UINT), SILENT(21, WPARAM, LPARAM), SILENT(22, int, SWnd*, SWnd*),
    SILENT(23, SDC*), SILENT(24, SMenu*), SILENT(25, SMenu*, UINT, UINT), SILENT(26, SWnd*),
    SILENT(27, SWnd*, UINT, UINT), SILENT(28, SWnd*, int, int), SILENT(29, SWnd*, LPARAM),
    SILENT(30, WPARAM, SWnd*), SILENT(31, UINT, SWnd*, UINT), SILENT(32, int, int, SWnd*),
    SILENT(33, int, int), SILENT(34, LPARAM), SILENT(35, WPARAM, LPARAM),
    ANSWER(36, WPARAM, LPARAM), ANSWER(37, int, int), ANSWER(38), SILENT(39, LPARAM),
    SILENT(40, WPARAM, LPARAM), ANSWER(45, LPARAM), SILENT(46, WPARAM, LPARAM), SILENT(47, SWnd*),
    ANSWER(48, UINT, UINT, UINT, UINT), SILENT(51, UINT, UINT, LPARAM),
    SILENT(52, WPARAM, int, int),
    SOnMessageOfKind<48, LRESULT(UINT, UINT, UINT, UINT),
                     &STestListener::Zero<UINT, UINT, UINT, UINT>>(0x500),
    SOnMove<&STestListener::Silent<int, int>>(),
    SOnRegisteredMessage<&STestListener::Answer<WPARAM, LPARAM>>(g_registered));

// wParam is 0xFFFE0003 and lParam 0xFFFC0005: each half tells whether it was read with its sign.
constexpr WPARAM kWord = 0xFFFE0003;
constexpr LPARAM kLong = 0xFFFC0005;

struct Row {
    UINT message;
    LRESULT result;
    const char* called;
};

// 4294836227 and 4294705157 are the parameters whole; halves are 3, 65534 (-2), 5, 65532 (-4).
const Row kRows[] = {
    {0x401, kAnswer, "4294836227 "},
    {0x402, kAnswer, "4294836227 "},
    {0x403, kAnswer, "4294836227 5 65532 "},
    {0x405, kAnswer, "4294836227 4294705157 "},
    {0x407, kAnswer, "4294836227 "},
    {0x408, kAnswer, "3 4294705157 65534 "},
    {0x409, kAnswer, "3 65534 "},
    {0x40A, kAnswer, "4294836227 5 65532 "},
    {0x40C, kAnswer, "4294836227 L "},
    {0x40D, kAnswer, "3 65534 4294705157 "},
    {0x40B, kAnswer, "L "},
    {0x40E, kAnswer, ""},
    {0x40F, 0, ""},
    {0x410, 0, "4294836227 "},
    {0x411, 0, "4294836227 L "},
    {0x412, 0, "5 65532 "},
    {0x413, 0, "4294836227 5 65532 "},
    {0x414, 0, "4294836227 5 65532 "},
    {0x415, 0, "4294836227 L "},
    {0x416, 0, "0 4294705157 4294836227 "},
    {0x417, 0, "4294836227 "},
    {0x418, 0, "4294836227 "},
    {0x419, 0, "4294836227 5 65532 "},
    {0x41A, 0, "4294836227 "},
    {0x41B, 0, "4294836227 5 65532 "},
    {0x41C, 0, "4294836227 5 -4 "},
    {0x41D, 0, "4294836227 L "},
    {0x41E, 0, "4294836227 4294705157 "},
    {0x41F, 0, "3 4294705157 65534 "},
    {0x420, 0, "3 -2 4294705157 "},
    {0x421, 0, "3 -2 "},
    {0x422, 0, "L "},
    {0x423, 1, "4294836227 L "},
    {0x424, kAnswer, "4294836227 L "},
    {0x425, kAnswer, "5 -4 "},
    {0x426, kAnswer, ""},
    {0x427, 0, "L "},
    {0x428, 0, "4294836227 L "},
    {0x42D, kAnswer, "L "},
    {0x42E, 1, "4294836227 L "},
    {0x42F, 0, "4294705157 "},
    {0x430, kAnswer, "3 65534 5 65532 "},
    {0x433, 0, "3 65534 L "},
    {0x434, 0, "4294836227 5 -4 "},
    {WM_MOVE, 0, "5 -4 "},
};

// As text; a long of 32 bits shows the same bits as a negative number.
std::string Expected(const Row& row) {
    std::string text = row.called;
    if (const std::size_t at = text.find('L'); at != std::string::npos)
        text.replace(at, 1, std::to_string(kLong));
    return text;
}

TEST(MessageDispatch, EachKindCarriesItsParameters) {
    STestListener listener;
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.message);
        LRESULT result = -1;
        EXPECT_EQ(listener.OnWndMsg(row.message, kWord, kLong, &result), 1);
        EXPECT_EQ(result, row.result);
        EXPECT_EQ(listener.called, Expected(row));
        EXPECT_EQ(listener.OnWndMsg(row.message, kWord, kLong, nullptr), 1);
    }
    SWnd::DeleteTempMap();
    SDC::DeleteTempMap();
    SMenu::DeleteTempMap();
}

TEST(MessageDispatch, AZeroOfTheWheelKindLeavesTheMessageUnhandled) {
    STestListener listener;
    LRESULT result = 17;
    EXPECT_EQ(listener.OnWndMsg(0x500, kWord, kLong, &result), 0);
    EXPECT_EQ(listener.called, "3 65534 5 65532 ");
    EXPECT_EQ(result, 17);
}

TEST(MessageDispatch, ARegisteredMessageIsFoundByItsNumber) {
    STestListener listener;
    EXPECT_EQ(listener.OnWndMsg(0xC123, 1, 2, nullptr), 0);
    SFlushMessageCache();
    g_registered = 0xC123;
    LRESULT result = 0;
    EXPECT_EQ(listener.OnWndMsg(0xC123, 1, 2, &result), 1);
    EXPECT_EQ(result, kAnswer);
    EXPECT_EQ(listener.called, "1 2 ");
    SFlushMessageCache();
}

TEST(MessageDispatch, NobodyAnswersWhatHasNoHandler) {
    STestListener listener;
    NMHDR nobody{};
    EXPECT_EQ(listener.OnWndMsg(WM_NOTIFY, 0, 0, nullptr), 0);
    EXPECT_EQ(listener.OnWndMsg(WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&nobody), nullptr), 0);
    EXPECT_EQ(listener.OnWndMsg(WM_COMMAND, 0, 0, nullptr), 0);
    // A control that is no window any more.
    EXPECT_EQ(listener.OnWndMsg(WM_COMMAND, MAKEWPARAM(77, 0), 0x7654321, nullptr), 0);
    EXPECT_EQ(listener.OnWndMsg(0x404, 0, 0, nullptr), 0);
    EXPECT_EQ(listener.OnWndMsg(0xFFFFFFFF, 0, 0, nullptr), 0);
}

// --- The cache -----------------------------------------------------------------------------------

TEST(MessageCache, RemembersHandlersAndTheirAbsence) {
    STestListener listener;
    SFlushMessageCache();
    const auto hitsOf = [&](UINT message) {
        const auto before = SGetMessageCacheStats().hits;
        listener.OnWndMsg(message, 0, 0, nullptr);
        return SGetMessageCacheStats().hits - before;
    };
    EXPECT_EQ(hitsOf(0x40F), 0u);
    EXPECT_EQ(hitsOf(0x40F), 1u);
    EXPECT_EQ(hitsOf(0x777), 0u);
    EXPECT_EQ(hitsOf(0x777), 1u);
    // The same slot, another message: each drives the other out.
    EXPECT_EQ(hitsOf(0x50F), 0u);
    EXPECT_EQ(hitsOf(0x40F), 0u);
    SFlushMessageCache();
    EXPECT_EQ(hitsOf(0x40F), 0u);
}

// Two maps whose addresses end in the same 16 bits share their slots.
TEST(MessageCache, MapsOfOneSlotAreToldApart) {
    struct Other : SWnd {
        explicit Other(const SMsgMap* m) : map(m) {}
        const SMsgMap* GetMessageMap() const override { return map; }
        void On() {}
        using SWnd::OnWndMsg;
        const SMsgMap* map;
    };
    static const SMsgEntry rows[] = {SOnMessageOfKind<15, void(), &Other::On>(0x400),
                                     SMsgEntry{}};
    static const SMsgEntry none[] = {SMsgEntry{}};
    constexpr std::size_t kApart = 0x10000 / sizeof(SMsgMap);
    static SMsgMap maps[kApart + 1];
    const auto noBase = []() -> const SMsgMap* { return nullptr; };
    maps[0] = {noBase, rows};
    maps[kApart] = {noBase, none};
    Other handles(&maps[0]);
    Other ignores(&maps[kApart]);
    for (int round = 0; round < 3; ++round) {
        EXPECT_EQ(handles.OnWndMsg(0x400, 0, 0, nullptr), 1);
        EXPECT_EQ(ignores.OnWndMsg(0x400, 0, 0, nullptr), 0);
    }
}

}  // namespace
