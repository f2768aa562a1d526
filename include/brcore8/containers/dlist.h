// SDList: an intrusive doubly linked list of objects derived from SDListItem.
//
// The links live inside the items. An item in a list belongs to it: the list deletes it through
// its virtual destructor, until it is detached. An item must be in at most one list when it is
// added. Null items are ignored. Indices count from 0 at the head.
// Threads: one at a time.
//
//     SDList list;
//     list.AddAtTail(new Task("a"));            // struct Task : SDListItem
//     list.ForEach([](SDListItem* item) { return static_cast<Task*>(item)->Run(); });
#ifndef BRCORE8_CONTAINERS_DLIST_H
#define BRCORE8_CONTAINERS_DLIST_H

#include <brcore8/platform/export.h>

#include <cstdint>
#include <memory>
#include <type_traits>

// The base of everything that can be put in an SDList. A copy is linked nowhere, and assignment
// leaves the links of its target alone.
class BRCORE8_API SDListItem {
public:
    SDListItem() = default;
    SDListItem(const SDListItem&) noexcept {}
    SDListItem& operator=(const SDListItem&) noexcept { return *this; }
    virtual ~SDListItem();

    // The neighbours in the list; null past its ends and in an item that is in none.
    SDListItem* GetNext() const { return next_; }
    SDListItem* GetPrevious() const { return previous_; }

private:
    friend class SDList;
    friend class SXDList;
    friend class SDListIterator;
    friend class STreeItem;

    SDListItem* next_ = nullptr;
    SDListItem* previous_ = nullptr;
};
static_assert(sizeof(void*) != 4 || sizeof(SDListItem) == 12);

// Invariants, checked by AssertValid: 1. head and tail are both null or neither is; 2. the head
// has no previous and the tail no next item; 3. the next item's previous one is the item itself;
// 4. the tail is reached from the head in exactly count - 1 steps.
class BRCORE8_API SDList {
public:
    // Called with an item (two items): returns 0 to stop, or the order as strcmp does.
    using Visitor = int(BRCORE8_STDCALL*)(SDListItem* item);
    using Comparison = int(BRCORE8_STDCALL*)(SDListItem* left, SDListItem* right);

    // ---- Create and empty ---------------------------------------------------------------------

    SDList() = default;
    SDList(const SDList&) = delete;
    SDList& operator=(const SDList&) = delete;
    ~SDList() { Done(); }

    // Empties the list with Done when `reset` is 1, then adds the item at the head. An item that
    // is already in this list is moved there, never deleted.
    void Init(SDListItem* item, int reset);
    // Deletes every item from head to tail. The destructors may use the list.
    void Done();

    // ---- Read ---------------------------------------------------------------------------------

    SDListItem* GetHead() const { return head_; }
    SDListItem* GetTail() const { return tail_; }
    long GetCount() const { return count_; }
    int IsEmpty() const { return count_ == 0; }
    // The item at the index; null when the index is negative or past the tail.
    SDListItem* GetAt(long index) const;

    // ---- Add ----------------------------------------------------------------------------------

    void AddAtHead(SDListItem* item);
    void AddAtTail(SDListItem* item);
    // Links the item *after* the one at the index (so index 0 makes it the second item), or after
    // the tail when the index lies past it; a negative index counts as 0. On an empty list it
    // becomes the only item.
    void AddAt(SDListItem* item, long index);

    // ---- Detach: unlinks the item and hands it to the caller ----------------------------------

    // Null on an empty list.
    SDListItem* DetachAtHead();
    SDListItem* DetachAtTail();
    // An index past the end detaches the tail; null on an empty list and for a negative index.
    SDListItem* DetachAt(long index);

    // ---- Delete: detaches the item as above and deletes it ------------------------------------

    void DeleteAtHead();
    void DeleteAtTail();
    void DeleteAt(long index);

    // ---- Visit and reorder --------------------------------------------------------------------

    // Calls the function on each item from the head until it returns 0. It may add, detach and
    // delete any item, or end the list: what has left before its turn is not visited, and the visit
    // goes on with the item that was the next one of the current item, or with the one after that.
    void ForEach(Visitor visit);
    template <class F>
    requires std::is_invocable_r_v<int, F&, SDListItem*>
    void ForEach(F&& visit);

    // Sorts with n log n comparisons; equal items keep their order. Any comparison ends, however
    // inconsistent; one that throws leaves the list as it was. One that adds or takes out items, or
    // ends the list, ends the sort, and the order is as the comparison left it.
    // Throws SEOutOfMemory without two pointers an item of scratch memory. A null comparison
    // does nothing.
    void Sort(Comparison compare);
    template <class F>
    requires std::is_invocable_r_v<int, F&, SDListItem*, SDListItem*>
    void Sort(F&& compare);

    // Exchanges the places of two items by relinking them; nothing when either is missing. The
    // second form takes items of this list.
    void Swap(long i, long j) { Swap(GetAt(i), GetAt(j)); }
    void Swap(SDListItem* a, SDListItem* b);

    // Non-zero when the invariants above hold. Linear.
    int AssertValid() const;

protected:
    // Links an unlinked item before `next`, or at the tail when that is null.
    void LinkBefore(SDListItem* item, SDListItem* next);
    // Unlinks an item of this list; null does nothing and returns null.
    SDListItem* Unlink(SDListItem* item);

private:
    friend class STreeItem;
    friend class SDListIterator;

    using AnyVisitor = int (*)(void* context, SDListItem* item);
    using AnyComparison = int (*)(void* context, SDListItem* left, SDListItem* right);
    void VisitWith(AnyVisitor visit, void* context);
    void SortWith(AnyComparison compare, void* context);
    // Moves every item of the other list, in order, in front of this list's.
    void TakeAtHead(SDList& other);
    SDListItem* Reach(long index) const;

    SDListItem* head_ = nullptr;
    SDListItem* tail_ = nullptr;
    std::int32_t count_ = 0;
};
static_assert(sizeof(void*) != 4 || sizeof(SDList) == 12);

// The list with operations relative to an item `reference` of it.
class BRCORE8_API SXDList : public SDList {
public:
    // With a null reference at the tail (AddBefore) or the head (AddAfter).
    void AddBefore(SDListItem* reference, SDListItem* item);
    void AddAfter(SDListItem* reference, SDListItem* item);

    // Unlinks and returns the item before (after) the reference; null when there is none. With a
    // null reference the tail (head) is unlinked and null returned: that item is then the
    // caller's, who must have kept a pointer to it.
    SDListItem* DetachBefore(SDListItem* reference);
    SDListItem* DetachAfter(SDListItem* reference);
    // Unlinks and returns the reference itself; null for null.
    SDListItem* Detach(SDListItem* reference) { return Unlink(reference); }

    // Detach as above and delete what it returns.
    void DeleteBefore(SDListItem* reference) { delete DetachBefore(reference); }
    void DeleteAfter(SDListItem* reference) { delete DetachAfter(reference); }
    void Delete(SDListItem* reference) { delete Detach(reference); }

    // The neighbours of the reference; null for null and past the ends.
    SDListItem* GetBefore(SDListItem* reference) const;
    SDListItem* GetAfter(SDListItem* reference) const;
};
static_assert(sizeof(SXDList) == sizeof(SDList));

// A cursor over a list that must outlive it. Its index is the caller's bookkeeping: it starts as
// given and follows the steps as each operation says, right or not. Copies stand where it stands.
class BRCORE8_API SDListIterator {
public:
    // Stands on GetAt(index); a null list is an empty one.
    SDListIterator(SDList* list, long index);

    SDListItem* GetCurrent() const { return current_; }
    long GetIndex() const { return index_; }

    // First: the head, index 0. Last: the tail, index count - 1. Both return the item, or null.
    SDListItem* First();
    SDListItem* Last();
    // Steps and moves the index by one; null past either end, where the cursor then stays.
    SDListItem* Next();
    SDListItem* Previous();
    // Steps forward up to n items, stopping past the tail, and returns the current item. The index
    // grows by the steps taken, but by one less when all n were taken.
    SDListItem* Skip(long n);
    // Moves to the next item, then deletes the item at the index that the cursor had before. The
    // index is left one greater than the new item's position: reset it with a new cursor before
    // deleting again. Should the new current item be deleted, or go with the one deleted, the
    // cursor moves past it.
    void DeleteCurrent();

private:
    std::int32_t index_;
    SDList* list_;
    SDListItem* current_;
};
static_assert(sizeof(void*) != 4 || sizeof(SDListIterator) == 12);

template <class F>
requires std::is_invocable_r_v<int, F&, SDListItem*>
void SDList::ForEach(F&& visit) {
    auto* callable = std::addressof(visit);
    VisitWith(
        [](void* context, SDListItem* item) -> int {
            return (**static_cast<decltype(callable)*>(context))(item);
        },
        &callable);
}

template <class F>
requires std::is_invocable_r_v<int, F&, SDListItem*, SDListItem*>
void SDList::Sort(F&& compare) {
    auto* callable = std::addressof(compare);
    SortWith(
        [](void* context, SDListItem* left, SDListItem* right) -> int {
            return (**static_cast<decltype(callable)*>(context))(left, right);
        },
        &callable);
}

#endif
