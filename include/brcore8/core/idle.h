// Idle consumers share the time in which a message loop has nothing to do. A consumer registers
// with a list; a program drives the list from its idle processing, all consumers at once or one a
// turn.
//
// Threads: no lock; a list and its consumers belong to the thread that drives it (and to start-up
// and shut-down). Ownership: the list owns no consumer; either may die first.
// OnIdle may do anything: unregister, register or delete consumers (itself included), drive the
// list again, delete the list, throw. The list stays whole.
#ifndef BRCORE8_CORE_IDLE_H
#define BRCORE8_CORE_IDLE_H

#include <brcore8/platform/export.h>

class SIdleConsumerList;

namespace brcore8 {
class IdleConsumers;
struct IdlePass;
}  // namespace brcore8

// A consumer of idle time. It is on at most one list.
class BRCORE8_API SIdleConsumer {
public:
    // Registers with the list; null registers nowhere. Throws SEOutOfMemory.
    constexpr explicit SIdleConsumer(SIdleConsumerList* list) {
        if (list != nullptr) Join(*list);
    }
    SIdleConsumer(const SIdleConsumer&) = delete;
    SIdleConsumer& operator=(const SIdleConsumer&) = delete;

    // Virtual operations, in slot order. The destructor unregisters.
    virtual ~SIdleConsumer();

    // Uses a slice of idle time; `arg` is what the driver of the list was given. Non-zero asks to
    // be called again. This version wants nothing and returns 0.
    virtual int OnIdle(int arg);

private:
    friend class SIdleConsumerList;

    void Join(SIdleConsumerList& list);

    SIdleConsumerList* list_ = nullptr;
};
static_assert(sizeof(void*) != 4 || sizeof(SIdleConsumer) == 8);

// The list that hands idle time to its consumers.
class BRCORE8_API SIdleConsumerList {
public:
    constexpr SIdleConsumerList() noexcept = default;
    SIdleConsumerList(const SIdleConsumerList&) = delete;
    SIdleConsumerList& operator=(const SIdleConsumerList&) = delete;

    // Lets go of the consumers, which live on without a list.
    ~SIdleConsumerList();

    // Appends the consumer at the back. A consumer already on this list keeps its place; one that
    // is on another list leaves that first. Null does nothing. Throws SEOutOfMemory, and the
    // consumer then stays where it was.
    void Register(SIdleConsumer* consumer);

    // Takes the consumer out wherever it stands; one that is not on this list stays untouched.
    void Unregister(SIdleConsumer* consumer) noexcept;

    // How many consumers there are.
    int GetCount() const noexcept;

    // Moves the front consumer to the back and returns it; null when there is none.
    SIdleConsumer* GetNext() noexcept;

    // With 0 calls nobody and returns 0. Otherwise calls OnIdle(arg) of every consumer from front
    // to back and returns 1 if any of them asked for more, else 0. Consumers that join meanwhile
    // wait for the next call; no consumer is called twice. An exception of OnIdle ends the pass.
    int OnIdleAll(int arg);

    // Calls the front consumer's OnIdle(arg). One that asks for more keeps the front (1 is
    // returned); otherwise it moves to the back and one turn of the round is used up: 1 when the
    // round is complete, else 0. A non-zero `arg` starts a new round of as many turns as there are
    // consumers. Returns 0 when there are none. When OnIdle throws nothing moves.
    int OnIdleNext(int arg);

private:
    friend struct brcore8::IdlePass;

    brcore8::IdleConsumers& EnsureConsumers();
    void MoveToBack(SIdleConsumer* consumer) noexcept;

    int turns_ = -1;                               // left in this round
    brcore8::IdleConsumers* consumers_ = nullptr;  // made by the first registration
    brcore8::IdlePass* passes_ = nullptr;          // the calls under way, innermost first
};

#endif
