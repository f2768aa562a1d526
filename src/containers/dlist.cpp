#include <brcore8/containers/dlist.h>

#include <brcore8/core/throw.h>

#include "containers/visit_pass.h"

#include <algorithm>
#include <cstddef>
#include <utility>

// ---- Visits under way -------------------------------------------------------------------------

namespace brcore8 {

namespace {

constinit thread_local VisitPass* t_innermost = nullptr;

}  // namespace

constinit std::atomic<int> VisitPass::underWay_{0};

VisitPass::VisitPass() noexcept : outer_(t_innermost) {
    t_innermost = this;
    underWay_.fetch_add(1, std::memory_order_relaxed);
}

VisitPass::~VisitPass() {
    underWay_.fetch_sub(1, std::memory_order_relaxed);
    t_innermost = outer_;
}

void VisitPass::PassOver(const SDList& list, const SDListItem* item) noexcept {
    for (VisitPass* pass = t_innermost; pass != nullptr; pass = pass->outer_) {
        if (pass->next == item) pass->next = item->GetNext();
        if (pass->whole == &list) pass->whole = nullptr;
    }
}

void VisitPass::EndBelow(const SDListItem* item) noexcept {
    for (VisitPass* pass = t_innermost; pass != nullptr; pass = pass->outer_) {
        if (pass->above == item) pass->next = pass->above = nullptr;
    }
}

}  // namespace brcore8

namespace {

// Gives the scratch memory of a sort back when the comparison throws.
class Scratch {
public:
    explicit Scratch(std::size_t items)
        : items_(static_cast<SDListItem**>(brcore8::Allocate(items * sizeof(SDListItem*)))) {}
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;
    ~Scratch() { brcore8::Release(items_); }
    SDListItem** Items() const { return items_; }

private:
    SDListItem** items_;
};

// Merges the sorted runs [from, middle) and [middle, end) to `to`. Every step consumes an item, so
// the merge ends whatever the comparison says.
template <class Compare>
void Merge(SDListItem** from, SDListItem** middle, SDListItem** end, SDListItem** to,
           const Compare& compare) {
    SDListItem** right = middle;
    if (from < middle && middle < end && compare(middle[-1], *middle) > 0) {
        while (from < middle && right < end)
            *to++ = compare(*from, *right) <= 0 ? *from++ : *right++;
    }
    to = std::copy(from, middle, to);
    std::copy(right, end, to);
}

}  // namespace

SDListItem::~SDListItem() = default;

// ---- Links ------------------------------------------------------------------------------------

void SDList::LinkBefore(SDListItem* item, SDListItem* next) {
    SDListItem* previous = next != nullptr ? next->previous_ : tail_;
    item->next_ = next;
    item->previous_ = previous;
    (previous != nullptr ? previous->next_ : head_) = item;
    (next != nullptr ? next->previous_ : tail_) = item;
    ++count_;
}

SDListItem* SDList::Unlink(SDListItem* item) {
    if (item == nullptr || head_ == nullptr) return nullptr;
    brcore8::VisitPass::OnUnlink(*this, item);
    (item->previous_ != nullptr ? item->previous_->next_ : head_) = item->next_;
    (item->next_ != nullptr ? item->next_->previous_ : tail_) = item->previous_;
    item->next_ = nullptr;
    item->previous_ = nullptr;
    --count_;
    return item;
}

void SDList::TakeAtHead(SDList& other) {
    if (other.head_ == nullptr) return;
    other.tail_->next_ = head_;
    (head_ != nullptr ? head_->previous_ : tail_) = other.tail_;
    head_ = std::exchange(other.head_, nullptr);
    other.tail_ = nullptr;
    count_ += std::exchange(other.count_, 0);
}

// The item `index` steps from the head, or the last one before the steps end.
SDListItem* SDList::Reach(long index) const {
    SDListItem* item = head_;
    for (; item != nullptr && item->next_ != nullptr && index > 0; --index)
        item = item->next_;
    return item;
}

// ---- Create and empty -------------------------------------------------------------------------

void SDList::Init(SDListItem* item, int reset) {
    SDListItem* inside = head_;
    while (inside != nullptr && inside != item)
        inside = inside->next_;
    Unlink(inside);
    if (reset == 1) Done();
    AddAtHead(item);
}

void SDList::Done() {
    while (head_ != nullptr)
        DeleteAtHead();
}

// ---- Add, detach, delete ----------------------------------------------------------------------

SDListItem* SDList::GetAt(long index) const {
    if (index < 0 || index >= count_) return nullptr;
    return Reach(index);
}

void SDList::AddAtHead(SDListItem* item) {
    if (item != nullptr) LinkBefore(item, head_);
}

void SDList::AddAtTail(SDListItem* item) {
    if (item != nullptr) LinkBefore(item, nullptr);
}

void SDList::AddAt(SDListItem* item, long index) {
    if (item == nullptr) return;
    const SDListItem* reached = Reach(index);
    LinkBefore(item, reached != nullptr ? reached->next_ : nullptr);
}

SDListItem* SDList::DetachAtHead() {
    return Unlink(head_);
}

SDListItem* SDList::DetachAtTail() {
    return Unlink(tail_);
}

SDListItem* SDList::DetachAt(long index) {
    return index >= 0 ? Unlink(Reach(index)) : nullptr;
}

void SDList::DeleteAtHead() {
    delete DetachAtHead();
}

void SDList::DeleteAtTail() {
    delete DetachAtTail();
}

void SDList::DeleteAt(long index) {
    delete DetachAt(index);
}

// ---- Visit and reorder ------------------------------------------------------------------------

void SDList::ForEach(Visitor visit) {
    if (visit == nullptr) return;
    ForEach([visit](SDListItem* item) { return visit(item); });
}

void SDList::VisitWith(AnyVisitor visit, void* context) {
    brcore8::VisitPass pass;
    for (SDListItem* item = head_; item != nullptr; item = pass.next) {
        pass.next = item->next_;
        if (visit(context, item) == 0) return;
    }
}

void SDList::Sort(Comparison compare) {
    if (compare == nullptr) return;
    Sort([compare](SDListItem* left, SDListItem* right) { return compare(left, right); });
}

// Merges runs of doubling length over an array of pointers and links the items only at the end, so
// that a comparison that throws finds and leaves the list whole. One that changes the list is not
// called again: what it was called with may be gone.
void SDList::SortWith(AnyComparison compare, void* context) {
    if (count_ < 2) return;
    brcore8::VisitPass pass;
    pass.whole = this;
    const auto order = [&pass, compare, context](SDListItem* left, SDListItem* right) {
        return pass.whole != nullptr ? compare(context, left, right) : 0;
    };
    // A list in order is left alone after one pass.
    SDListItem* last = head_;
    while (last->next_ != nullptr && order(last, last->next_) <= 0 && pass.whole != nullptr)
        last = last->next_;
    if (pass.whole == nullptr || last->next_ == nullptr) return;
    const auto count = static_cast<std::size_t>(count_);
    const Scratch scratch(2 * count);
    SDListItem** from = scratch.Items();
    SDListItem** to = from + count;
    std::size_t filled = 0;
    for (SDListItem* item = head_; item != nullptr; item = item->next_)
        from[filled++] = item;
    for (std::size_t run = 1; run < count; run *= 2) {
        for (std::size_t start = 0; start < count; start += 2 * run) {
            const std::size_t middle = std::min(start + run, count);
            const std::size_t end = std::min(middle + run, count);
            Merge(from + start, from + middle, from + end, to + start, order);
        }
        std::swap(from, to);
    }
    if (pass.whole == nullptr || static_cast<std::size_t>(count_) != count) return;
    head_ = tail_ = nullptr;
    count_ = 0;
    for (std::size_t i = 0; i < count; ++i)
        AddAtTail(from[i]);
}

void SDList::Swap(SDListItem* a, SDListItem* b) {
    if (a == nullptr || b == nullptr || a == b) return;
    if (b->next_ == a) std::swap(a, b);
    SDListItem* afterA = a->next_ == b ? a : a->next_;
    SDListItem* afterB = b->next_;
    Unlink(a);
    Unlink(b);
    // When the two are neighbours, `a` itself follows where `a` was: link it first.
    LinkBefore(a, afterB);
    LinkBefore(b, afterA);
}

int SDList::AssertValid() const {
    std::int32_t seen = 0;
    const SDListItem* previous = nullptr;
    for (const SDListItem* item = head_; item != nullptr; item = item->next_) {
        if (item->previous_ != previous || ++seen > count_) return 0;
        previous = item;
    }
    return previous == tail_ && seen == count_;
}

// ---- SXDList ----------------------------------------------------------------------------------

void SXDList::AddBefore(SDListItem* reference, SDListItem* item) {
    if (item == nullptr || item == reference) return;
    LinkBefore(item, reference);
}

void SXDList::AddAfter(SDListItem* reference, SDListItem* item) {
    if (item == nullptr || item == reference) return;
    LinkBefore(item, reference != nullptr ? reference->next_ : GetHead());
}

SDListItem* SXDList::DetachBefore(SDListItem* reference) {
    if (reference == nullptr) {
        DetachAtTail();
        return nullptr;
    }
    return Unlink(reference->previous_);
}

SDListItem* SXDList::DetachAfter(SDListItem* reference) {
    if (reference == nullptr) {
        DetachAtHead();
        return nullptr;
    }
    return Unlink(reference->next_);
}

SDListItem* SXDList::GetBefore(SDListItem* reference) const {
    return reference != nullptr ? reference->previous_ : nullptr;
}

SDListItem* SXDList::GetAfter(SDListItem* reference) const {
    return reference != nullptr ? reference->next_ : nullptr;
}

// ---- SDListIterator ---------------------------------------------------------------------------

SDListIterator::SDListIterator(SDList* list, long index)
    : index_(static_cast<std::int32_t>(index)),
      list_(list),
      current_(list != nullptr ? list->GetAt(index) : nullptr) {}

SDListItem* SDListIterator::First() {
    current_ = list_ != nullptr ? list_->head_ : nullptr;
    index_ = 0;
    return current_;
}

SDListItem* SDListIterator::Last() {
    current_ = list_ != nullptr ? list_->tail_ : nullptr;
    index_ = list_ != nullptr ? list_->count_ - 1 : -1;
    return current_;
}

SDListItem* SDListIterator::Next() {
    if (current_ == nullptr) return nullptr;
    current_ = current_->next_;
    ++index_;
    return current_;
}

SDListItem* SDListIterator::Previous() {
    if (current_ == nullptr) return nullptr;
    current_ = current_->previous_;
    --index_;
    return current_;
}

SDListItem* SDListIterator::Skip(long n) {
    long steps = 0;
    for (; steps < n && current_ != nullptr; ++steps)
        current_ = current_->next_;
    index_ += static_cast<std::int32_t>(steps == n ? steps - 1 : steps);
    return current_;
}

void SDListIterator::DeleteCurrent() {
    if (current_ == nullptr) return;
    const long index = index_;
    brcore8::VisitPass pass;
    pass.next = Next();
    list_->DeleteAt(index);
    current_ = pass.next;
}
