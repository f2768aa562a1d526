#include <brcore8/containers/list.h>
#include <brcore8/core/idle.h>
#include <brcore8/core/throw.h>

#include <algorithm>
#include <iterator>
#include <memory>
#include <new>

namespace brcore8 {

class IdleConsumers final : public SList<SIdleConsumer*> {
public:
    // The place of a consumer that is here. Sought from both ends, since most leave in the order
    // in which they came or in the opposite one.
    iterator PlaceOf(const SIdleConsumer* consumer) {
        iterator front = begin(), back = end();
        while (*front != consumer && *--back != consumer)
            ++front;
        return *front == consumer ? front : back;
    }
};

// A call of OnIdleAll or OnIdleNext under way. OnIdle may change the list as it likes: every change
// keeps the passes right, and the list's end is noted in them.
struct IdlePass {
    using Place = IdleConsumers::iterator;

    // Not inlined: seen together with its caller, the compiler takes the link to this local object
    // for a dangling one, although the destructor takes it back.
    [[gnu::noinline]] explicit IdlePass(SIdleConsumerList& owner)
        : list(&owner),
          outer(owner.passes_),
          next(owner.consumers_->begin()),
          stop(owner.consumers_->end()) {
        owner.passes_ = this;
    }
    ~IdlePass() {
        if (list != nullptr) list->passes_ = outer;
    }
    IdlePass(const IdlePass&) = delete;
    IdlePass& operator=(const IdlePass&) = delete;

    // The next consumer of those that were there when the pass began; null after the last.
    SIdleConsumer* Take() {
        if (list == nullptr || next == stop) return nullptr;
        current = *next;
        ++next;
        return current;
    }

    // A consumer is about to leave its place.
    static void OnLeave(IdlePass* passes, Place place) {
        for (IdlePass* pass = passes; pass != nullptr; pass = pass->outer) {
            if (pass->next == place) ++pass->next;
            if (pass->stop == place) ++pass->stop;
        }
    }
    // A consumer has come to the back: the first to come ends the passes.
    static void OnAppend(IdlePass* passes, IdleConsumers& consumers) {
        const Place last = std::prev(consumers.end());
        for (IdlePass* pass = passes; pass != nullptr; pass = pass->outer) {
            if (pass->next == consumers.end()) pass->next = last;
            if (pass->stop == consumers.end()) pass->stop = last;
        }
    }

    SIdleConsumerList* list;  // null once it is destroyed
    IdlePass* outer;
    Place next;
    Place stop;                        // the first that came after the pass began
    SIdleConsumer* current = nullptr;  // null once it is unregistered
};

}  // namespace brcore8

using brcore8::IdleConsumers;
using brcore8::IdlePass;

// --- SIdleConsumer --------------------------------------------------------------------------

SIdleConsumer::~SIdleConsumer() {
    if (list_ != nullptr) list_->Unregister(this);
}

int SIdleConsumer::OnIdle(int) {
    return 0;
}

void SIdleConsumer::Join(SIdleConsumerList& list) {
    list.Register(this);
}

// --- SIdleConsumerList ----------------------------------------------------------------------

SIdleConsumerList::~SIdleConsumerList() {
    for (IdlePass* pass = passes_; pass != nullptr; pass = pass->outer)
        pass->list = nullptr;
    if (consumers_ == nullptr) return;
    for (SIdleConsumer* consumer : *consumers_)
        consumer->list_ = nullptr;
    std::destroy_at(consumers_);
    brcore8::Release(consumers_);
}

IdleConsumers& SIdleConsumerList::EnsureConsumers() {
    if (consumers_ == nullptr) {
        consumers_ = ::new (brcore8::Allocate(sizeof(IdleConsumers))) IdleConsumers;
    }
    return *consumers_;
}

void SIdleConsumerList::Register(SIdleConsumer* consumer) {
    if (consumer == nullptr || consumer->list_ == this) return;
    IdleConsumers& consumers = EnsureConsumers();
    consumers.PushBack(consumer);
    IdlePass::OnAppend(passes_, consumers);
    if (consumer->list_ != nullptr) consumer->list_->Unregister(consumer);
    consumer->list_ = this;
}

void SIdleConsumerList::Unregister(SIdleConsumer* consumer) noexcept {
    if (consumer == nullptr || consumer->list_ != this) return;
    const IdlePass::Place place = consumers_->PlaceOf(consumer);
    IdlePass::OnLeave(passes_, place);
    for (IdlePass* pass = passes_; pass != nullptr; pass = pass->outer) {
        if (pass->current == consumer) pass->current = nullptr;
    }
    consumers_->Erase(place);
    consumer->list_ = nullptr;
}

int SIdleConsumerList::GetCount() const noexcept {
    return consumers_ != nullptr ? consumers_->GetCount() : 0;
}

SIdleConsumer* SIdleConsumerList::GetNext() noexcept {
    if (GetCount() == 0) return nullptr;
    SIdleConsumer* const front = *consumers_->begin();
    MoveToBack(front);
    return front;
}

void SIdleConsumerList::MoveToBack(SIdleConsumer* consumer) noexcept {
    const IdlePass::Place place = consumers_->PlaceOf(consumer);
    IdlePass::OnLeave(passes_, place);
    consumers_->MoveToBack(place);
    IdlePass::OnAppend(passes_, *consumers_);
}

int SIdleConsumerList::OnIdleAll(int arg) {
    if (arg == 0 || GetCount() == 0) return 0;
    IdlePass pass(*this);
    int wantsMore = 0;
    while (SIdleConsumer* const consumer = pass.Take()) {
        if (consumer->OnIdle(arg) != 0) wantsMore = 1;
    }
    return wantsMore;
}

int SIdleConsumerList::OnIdleNext(int arg) {
    if (arg != 0 || turns_ <= 0) turns_ = GetCount();
    if (GetCount() == 0) return 0;
    IdlePass pass(*this);
    if (pass.Take()->OnIdle(arg) != 0) return 1;
    if (pass.list == nullptr) return 0;
    if (pass.current != nullptr) MoveToBack(pass.current);
    turns_ = std::max(turns_ - 1, 0);
    return turns_ == 0 ? 1 : 0;
}
