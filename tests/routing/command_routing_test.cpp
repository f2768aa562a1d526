// Commands, notifications and updates: which handler gets them, with what, and what it results in.

#include <brcore8/routing/cmd_target.h>
#include <brcore8/routing/cmd_ui.h>

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace {

// Writes down what its handlers are called with.
class STestTarget : public SCmdTarget {
    SDECLARE_MESSAGE_MAP(STestTarget);

public:
    std::string called;
    int answer = 7;

protected:
    void Note(const std::string& what) { called += what + ";"; }

private:
    void OnPlain() { Note("plain"); }
    void OnRange(UINT id) { Note("range " + std::to_string(id)); }
    int OnPlainEx() {
        Note("plainEx");
        return answer;
    }
    int OnRangeEx(UINT id) {
        Note("rangeEx " + std::to_string(id));
        return answer;
    }
    void OnNote(NMHDR* header, LRESULT* result) {
        Note("note " + std::to_string(header->idFrom));
        *result = 5;
    }
    int OnNoteEx(NMHDR*, LRESULT* result) {
        Note("noteEx");
        *result = 6;
        return answer;
    }
    void OnNotes(UINT id, NMHDR*, LRESULT*) { Note("notes " + std::to_string(id)); }
    int OnNotesEx(UINT id, NMHDR*, LRESULT*) {
        Note("notesEx " + std::to_string(id));
        return answer;
    }
    void OnAsk(SCmdUI* ui) {
        Note("ask");
        if (answer == 0) ui->ContinueRouting();
    }
    void OnAskRange(SCmdUI*, UINT id) { Note("ask " + std::to_string(id)); }
    void OnExtra(void* extra) { Note("extra " + *static_cast<std::string*>(extra)); }
    int OnExtraEx(void*) {
        Note("extraEx");
        return answer;
    }
    void OnThrow() { throw std::runtime_error("escapes"); }
    void OnGone() { delete this; }
};
SIMPLEMENT_MESSAGE_MAP(
    STestTarget, SCmdTarget, SOnCommand<&STestTarget::OnPlain>(10),
    SOnCommandRange<&STestTarget::OnRange>(20, 29), SOnCommandEx<&STestTarget::OnPlainEx>(30),
    SOnCommandRangeEx<&STestTarget::OnRangeEx>(31, 39), SOnCommandExtra<&STestTarget::OnExtra>(40),
    SOnCommandExtraEx<&STestTarget::OnExtraEx>(41), SOnUpdate<&STestTarget::OnAsk>(50),
    SOnUpdateRange<&STestTarget::OnAskRange>(51, 59), SOnControl<&STestTarget::OnPlain>(3, 60),
    SOnControlRange<&STestTarget::OnRange>(3, 61, 62),
    SOnNotify<&STestTarget::OnNote>(static_cast<UINT>(-2), 70),
    SOnNotifyEx<&STestTarget::OnNoteEx>(1, 71), SOnNotifyRange<&STestTarget::OnNotes>(2, 72, 79),
    SOnNotifyRangeEx<&STestTarget::OnNotesEx>(3, 72, 79), SOnCommand<&STestTarget::OnThrow>(80),
    SOnCommand<&STestTarget::OnGone>(81));

// A class whose rows come before those of its base.
class STestDerived : public STestTarget {
    SDECLARE_MESSAGE_MAP(STestDerived);

private:
    void OnOwn() { Note("derived"); }
};
SIMPLEMENT_MESSAGE_MAP(STestDerived, STestTarget, SOnCommand<&STestDerived::OnOwn>(10));

// An element that remembers what it was told.
struct Element : SCmdUI {
    void Enable(int on) override { told += on ? "on " : "off "; }
    void SetCheck(int state) override { told += "check" + std::to_string(state) + " "; }
    void SetRadio(int) override {}
    void SetText(const char* text) override { told += text; }
    std::string told;
};

int Notification(UINT code) {
    return static_cast<int>((code & 0xFFFF) | UINT{WM_NOTIFY} << 16);
}

struct Row {
    UINT id;
    int packed;
    int answer;  // of the handlers that answer
    int result;
    const char* called;
};

constexpr int kMinusTwo = 0xFFFE;
const Row kRows[] = {
    {10, 0, 7, 1, "plain;"},
    {10, 1, 7, 0, ""},
    {10, kUpdateRequest, 7, 0, ""},  // an update is no command
    {20, 0, 7, 1, "range 20;"},
    {29, 0, 7, 1, "range 29;"},
    {30, 0, 7, 7, "plainEx;"},
    {30, 0, 0, 0, "plainEx;"},
    {39, 0, -3, -3, "rangeEx 39;"},
    {40, 0, 7, 1, "extra me;"},
    {41, 0, 7, 7, "extraEx;"},
    {50, 0, 7, 0, ""},  // nor the reverse
    {50, kUpdateRequest, 7, 1, "ask;"},
    {50, kUpdateRequest, 0, 0, "ask;"},
    {59, kUpdateRequest, 7, 1, "ask 59;"},
    {60, 3, 7, 1, "plain;"},
    {62, 3, 7, 1, "range 62;"},
    {63, 3, 7, 0, ""},
    {70, Notification(kMinusTwo), 7, 1, "note 70;"},
    {71, Notification(1), 7, 7, "noteEx;"},
    {71, Notification(1), 0, 0, "noteEx;"},
    {79, Notification(2), 7, 1, "notes 79;"},
    {72, Notification(3), 9, 9, "notesEx 72;"},
    {19, 0, 7, 0, ""},
    {0xFFFFFFFF, 0, 7, 0, ""},
};

TEST(CommandRouting, EachKindIsCalledWithItsArguments) {
    for (const Row& row : kRows) {
        SCOPED_TRACE(testing::Message() << row.id << ' ' << row.packed << ' ' << row.answer);
        STestTarget target;
        target.answer = row.answer;
        std::string me = "me";
        NMHDR header{nullptr, row.id, 0};
        LRESULT noteResult = 0;
        S_NOTIFICATION note{&noteResult, &header};
        Element element;
        void* extra = &me;
        if (row.packed == kUpdateRequest) extra = static_cast<SCmdUI*>(&element);
        if (row.packed >> 16 == WM_NOTIFY) extra = &note;
        EXPECT_EQ(target.OnCmdMsg(row.id, row.packed, extra, nullptr), row.result);
        EXPECT_EQ(target.called, row.called);
        EXPECT_EQ(element.TakeContinueRouting(), 0);
    }
}

TEST(CommandRouting, TheDerivedRowComesFirstAndTheBaseStillAnswers) {
    STestDerived target;
    EXPECT_EQ(target.OnCmdMsg(10, 0, nullptr, nullptr), 1);
    EXPECT_EQ(target.OnCmdMsg(25, 0, nullptr, nullptr), 1);
    EXPECT_EQ(target.called, "derived;range 25;");
}

TEST(CommandRouting, AskingWhoHandlesCallsNobody) {
    STestDerived target;
    S_CMDHANDLERINFO info{};
    EXPECT_EQ(target.OnCmdMsg(25, 0, nullptr, &info), 1);
    EXPECT_EQ(info.target, &target);
    EXPECT_NE(info.handler.word, nullptr);
    EXPECT_EQ(target.called, "");
    EXPECT_EQ(target.OnCmdMsg(99, 0, nullptr, &info), 0);
}

TEST(CommandRouting, NothingIsReadWhereNothingWasPassed) {
    STestTarget target;
    for (const int packed :
         {kUpdateRequest, Notification(1), Notification(2), Notification(kMinusTwo)})
        for (const UINT id : {50u, 51u, 70u, 71u, 72u})
            EXPECT_EQ(target.OnCmdMsg(id, packed, nullptr, nullptr), 0) << id << ' ' << packed;
    EXPECT_EQ(target.called, "");
}

int g_escapes = 0;
UINT g_escapedId = 0;

TEST(CommandRouting, AnExceptionEndsHereAndIsObserved) {
    STestTarget target;
    const SEscapeObserver old = SSetEscapeObserver([](UINT, UINT id) noexcept {
        ++g_escapes;
        g_escapedId = id;
    });
    EXPECT_EQ(target.OnCmdMsg(80, 0, nullptr, nullptr), 1);
    SSetEscapeObserver(old);
    EXPECT_EQ(g_escapes, 1);
    EXPECT_EQ(g_escapedId, 80u);
    EXPECT_EQ(target.OnCmdMsg(80, 0, nullptr, nullptr), 1);
    EXPECT_EQ(g_escapes, 1);
}

TEST(CommandRouting, AHandlerMayEndItsObject) {
    auto* const target = new STestTarget;
    EXPECT_EQ(target->OnCmdMsg(81, 0, nullptr, nullptr), 1);
}

// Kinds that are none, also where a pointer stands in the kind's place.
TEST(CommandRouting, UnknownKindsAreNotCalled) {
    struct Strange : SCmdTarget {
        const SMsgMap* GetMessageMap() const override { return &map; }
        SMsgEntry rows[2];
        SMsgMap map{[]() -> const SMsgMap* { return nullptr; }, rows};
    };
    for (const std::uintptr_t kind : {std::uintptr_t{1}, std::uintptr_t{53}, ~std::uintptr_t{0}}) {
        Strange target;
        target.rows[0] = {WM_COMMAND, 0, 1, 1, SMsgSignature(kind), SMsgHandler()};
        EXPECT_EQ(target.OnCmdMsg(1, 0, nullptr, nullptr), 0) << kind;
    }
}

TEST(CommandRouting, NoApplicationNoWaitCursor) {
    SCmdTarget target;
    target.BeginWaitCursor();
    target.EndWaitCursor();
    target.RestoreWaitCursor();
}

static_assert(std::is_trivially_destructible_v<SMsgEntry>);

}  // namespace
