// The dispatch workloads by Qt: events to an object whose classes handle some each, and signals
// that are connected directly.
#define QT_NO_KEYWORDS
#include <QCoreApplication>
#include <QEvent>
#include <QHash>
#include <QObject>

#include <memory>
#include <vector>

#include "dispatch.h"

namespace bench::qt {

namespace {

constexpr int kFirstMessage = QEvent::User + 1;
constexpr int kCommand = QEvent::User + 500;

// Events reach nobody without one.
void NeedApplication() {
    static char name[] = "bench";
    static char* arguments[] = {name, nullptr};
    static int count = 1;
    static QCoreApplication application(count, arguments);
}

struct Message : QEvent {
    explicit Message(unsigned kind)
        : QEvent(static_cast<Type>(kFirstMessage + static_cast<int>(kind))) {}
    long w = 1, l = 2;
};

struct Command : QEvent {
    explicit Command(unsigned number) : QEvent(static_cast<Type>(kCommand)), id(number) {}
    unsigned id;
};

// What stands in the place of a switch in a class's `event`: its handlers, from the first number.
using MessageHandler = void (*)(QObject* object, const Message& message);
using CommandHandler = void (*)(QObject* object);

template <std::size_t Messages, std::size_t Commands>
bool Handle(QObject* object, QEvent* event, int firstMessage,
            const MessageHandler (&messages)[Messages], unsigned firstCommand,
            const CommandHandler (&commands)[Commands]) {
    const unsigned kind = static_cast<unsigned>(event->type() - firstMessage);
    if (kind < Messages) {
        messages[kind](object, *static_cast<Message*>(event));
        return true;
    }
    if (event->type() != kCommand) return false;
    const unsigned command = static_cast<Command*>(event)->id - firstCommand;
    if (command >= Commands) return false;
    commands[command](object);
    return true;
}

// clang-format off
#define ON_MESSAGE(N) [](QObject* o, const Message& m) { static_cast<Self*>(o)->OnMessage<N>(static_cast<int>(m.w), 0); }
#define ON_COMMAND(N) [](QObject* o) { static_cast<Self*>(o)->OnCommand<N>(); }

class Root : public QObject {
public:
    template <int N>
    void OnMessage(int w, int) {
        benchmark::DoNotOptimize(N);
        sum += w;
    }
    template <int N>
    void OnCommand() {
        benchmark::DoNotOptimize(N);
        ++sum;
    }
    bool event(QEvent* event) override {
        using Self = Root;
        static constexpr MessageHandler messages[] = {BENCH_ROOT_MESSAGES(ON_MESSAGE)};
        static constexpr CommandHandler commands[] = {BENCH_ROOT_COMMANDS(ON_COMMAND)};
        return Handle(this, event, kFirstMessage, messages, 0, commands) || QObject::event(event);
    }
    long sum = 0;
};

class Middle : public Root {
public:
    bool event(QEvent* event) override {
        using Self = Middle;
        static constexpr MessageHandler messages[] = {BENCH_MIDDLE_MESSAGES(ON_MESSAGE)};
        static constexpr CommandHandler commands[] = {BENCH_MIDDLE_COMMANDS(ON_COMMAND)};
        return Handle(this, event, kFirstMessage + 6, messages, 30, commands) || Root::event(event);
    }
};

class Leaf : public Middle {
public:
    bool event(QEvent* event) override {
        using Self = Leaf;
        static constexpr MessageHandler messages[] = {BENCH_LEAF_MESSAGES(ON_MESSAGE)};
        static constexpr CommandHandler commands[] = {BENCH_LEAF_COMMANDS(ON_COMMAND)};
        return Handle(this, event, kFirstMessage + 11, messages, 60, commands) || Middle::event(event);
    }
};
// clang-format on

bool Send(QObject& object, QEvent&& event) {
    return QCoreApplication::sendEvent(&object, &event);
}

// --- Signals ------------------------------------------------------------------------------------

class Sender : public QObject {
    Q_OBJECT
public:
Q_SIGNALS:
    void s0(int w, int l);
    void s1(int w, int l);
    void s2(int w, int l);
    void s3(int w, int l);
    void s4(int w, int l);
    void s5(int w, int l);
    void s6(int w, int l);
    void s7(int w, int l);
    void s8(int w, int l);
    void s9(int w, int l);
    void s10(int w, int l);
    void s11(int w, int l);
    void s12(int w, int l);
    void s13(int w, int l);
    void s14(int w, int l);
    void s15(int w, int l);
    void ofNobody(int w, int l);
};

class Action : public QObject {
    Q_OBJECT
public:
Q_SIGNALS:
    void triggered();
};

using Signal = void (Sender::*)(int, int);
#define SIGNAL_OF(N) &Sender::s##N
constexpr Signal kSignals[] = {BENCH_ROOT_MESSAGES(SIGNAL_OF), BENCH_MIDDLE_MESSAGES(SIGNAL_OF),
                               BENCH_LEAF_MESSAGES(SIGNAL_OF)};

struct Connected {
    Connected() {
        using Slot = void (Root::*)(int, int);
#define SLOT_OF(N) &Root::OnMessage<N>
        constexpr Slot slots_[] = {BENCH_ROOT_MESSAGES(SLOT_OF), BENCH_MIDDLE_MESSAGES(SLOT_OF),
                                   BENCH_LEAF_MESSAGES(SLOT_OF)};
        for (unsigned i = 0; i < kMessages; ++i)
            QObject::connect(&sender, kSignals[i], static_cast<Root*>(&leaf), slots_[i],
                             Qt::DirectConnection);
    }
    Sender sender;
    Leaf leaf;
};

}  // namespace

void RootMessage(benchmark::State& state) {
    NeedApplication();
    Leaf leaf;
    SendOne(state, leaf.sum, [&] { Send(leaf, Message(3)); });
}

void MixedMessages(benchmark::State& state) {
    NeedApplication();
    Leaf leaf;
    SendMixed<kMessages>(state, leaf.sum, [&](unsigned kind) { Send(leaf, Message(kind)); });
}

void Unhandled(benchmark::State& state) {
    NeedApplication();
    Leaf leaf;
    // Qt answers that an event of the program's own was dealt with in any case.
    SendUnhandled(state, [&] { return Send(leaf, Message(kUnhandled)) && leaf.sum != 0; });
}

void MixedCommands(benchmark::State& state) {
    NeedApplication();
    Leaf leaf;
    SendMixed<kCommands>(state, leaf.sum, [&](unsigned id) { Send(leaf, Command(id)); });
}

void SignalRootMessage(benchmark::State& state) {
    Connected connected;
    SendOne(state, connected.leaf.sum, [&] { connected.sender.s3(1, 2); });
}

void SignalMixedMessages(benchmark::State& state) {
    Connected connected;
    SendMixed<kMessages>(state, connected.leaf.sum,
                         [&](unsigned kind) { (connected.sender.*kSignals[kind])(1, 2); });
}

void SignalUnhandled(benchmark::State& state) {
    Connected connected;
    SendUnhandled(state, [&] {
        connected.sender.ofNobody(1, 2);
        return false;
    });
}

// The command comes as a number; its action is looked up and triggered.
void SignalMixedCommands(benchmark::State& state) {
    Leaf leaf;
    std::vector<std::unique_ptr<Action>> actions;
    QHash<unsigned, Action*> byId;
    using Slot = void (Root::*)();
#define COMMAND_SLOT(N) &Root::OnCommand<N>
    constexpr Slot slots_[] = {BENCH_ROOT_COMMANDS(COMMAND_SLOT),
                               BENCH_MIDDLE_COMMANDS(COMMAND_SLOT),
                               BENCH_LEAF_COMMANDS(COMMAND_SLOT)};
    for (unsigned id = 0; id < kCommands; ++id) {
        actions.push_back(std::make_unique<Action>());
        byId.insert(id, actions.back().get());
        QObject::connect(actions.back().get(), &Action::triggered, static_cast<Root*>(&leaf),
                         slots_[id], Qt::DirectConnection);
    }
    SendMixed<kCommands>(state, leaf.sum, [&](unsigned id) { byId.value(id)->triggered(); });
}

// An event to each of a thousand children.
void Update1000(benchmark::State& state) {
    NeedApplication();
    QObject parent;
    std::vector<Leaf*> leaves;
    for (int i = 0; i < 1000; ++i) {
        leaves.push_back(new Leaf);
        leaves.back()->setParent(&parent);
    }
    for (auto _ : state)
        for (QObject* const child : parent.children())
            Send(*child, Message(3));
    Expect(leaves[999]->sum == static_cast<long>(state.iterations()), "every child was told");
}

}  // namespace bench::qt

#include "dispatch_qt.moc"
