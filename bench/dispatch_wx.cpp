// The dispatch workloads by wxWidgets: static event tables of a handler's classes.
#include <wx/event.h>
#include <wx/init.h>

#include "dispatch.h"

namespace bench::wx {

namespace {

struct Message : wxEvent {
    explicit Message(wxEventType type, int id = 0) : wxEvent(id, type) {}
    wxEvent* Clone() const override { return new Message(*this); }
    long w = 1, l = 2;
};

wxEventType g_types[kUnhandled + 1];
wxEventType g_command;

[[maybe_unused]] const bool numbered = [] {
    for (wxEventType& type : g_types)
        type = wxNewEventType();
    g_command = wxNewEventType();
    return true;
}();

class Root : public wxEvtHandler {
public:
    template <int N>
    void OnMessage(Message& message) {
        benchmark::DoNotOptimize(N);
        sum += message.w;
    }
    template <int N>
    void OnCommand(Message&) {
        benchmark::DoNotOptimize(N);
        ++sum;
    }
    long sum = 0;

private:
    wxDECLARE_EVENT_TABLE();
};
class Middle : public Root {
    wxDECLARE_EVENT_TABLE();
};
class Leaf : public Middle {
    wxDECLARE_EVENT_TABLE();
};

using Function = void (wxEvtHandler::*)(Message&);
#define ENTRY(Type, Id, Method)                                                                   \
    wxDECLARE_EVENT_TABLE_ENTRY(Type, Id, wxID_ANY, wxEVENT_HANDLER_CAST(Function, Root::Method), \
                                nullptr)
#define MESSAGE(N) ENTRY(g_types[N], wxID_ANY, OnMessage<N>)
#define COMMAND(N) ENTRY(g_command, N, OnCommand<N>)

// clang-format off
wxBEGIN_EVENT_TABLE(Root, wxEvtHandler)
    BENCH_ROOT_MESSAGES(MESSAGE), BENCH_ROOT_COMMANDS(COMMAND),
wxEND_EVENT_TABLE()
wxBEGIN_EVENT_TABLE(Middle, Root)
    BENCH_MIDDLE_MESSAGES(MESSAGE), BENCH_MIDDLE_COMMANDS(COMMAND),
wxEND_EVENT_TABLE()
wxBEGIN_EVENT_TABLE(Leaf, Middle)
    BENCH_LEAF_MESSAGES(MESSAGE), BENCH_LEAF_COMMANDS(COMMAND),
wxEND_EVENT_TABLE()
    // clang-format on

    bool Send(wxEvtHandler& handler, Message&& message) {
    return handler.ProcessEvent(message);
}

// The library's start and end, and an object.
struct Target {
    const wxInitializer started;
    Leaf leaf;
};

}  // namespace

void RootMessage(benchmark::State& state) {
    Target target;
    SendOne(state, target.leaf.sum, [&] { Send(target.leaf, Message(g_types[3])); });
}

void MixedMessages(benchmark::State& state) {
    Target target;
    SendMixed<kMessages>(state, target.leaf.sum,
                         [&](unsigned kind) { Send(target.leaf, Message(g_types[kind])); });
}

void Unhandled(benchmark::State& state) {
    Target target;
    SendUnhandled(state, [&] { return Send(target.leaf, Message(g_types[kUnhandled])); });
}

void MixedCommands(benchmark::State& state) {
    Target target;
    SendMixed<kCommands>(state, target.leaf.sum, [&](unsigned id) {
        Send(target.leaf, Message(g_command, static_cast<int>(id)));
    });
}

}  // namespace bench::wx
