// Visits of list and tree items under way. The function that a visit calls may change what is
// visited: the place where the visit goes on is moved when its item leaves.
#ifndef BRCORE8_SRC_CONTAINERS_VISIT_PASS_H
#define BRCORE8_SRC_CONTAINERS_VISIT_PASS_H

#include <brcore8/containers/dlist.h>

#include <atomic>

namespace brcore8 {

// One visit of this thread; visits nest.
class VisitPass {
public:
    VisitPass() noexcept;
    ~VisitPass();
    VisitPass(const VisitPass&) = delete;
    VisitPass& operator=(const VisitPass&) = delete;

    SDListItem* next = nullptr;     // the sibling to go on with; null when there is none
    SDListItem* above = nullptr;    // in a tree, the parent, which follows its last child
    const SDList* whole = nullptr;  // a list to be watched; null as soon as any item has left it

    // An item is about to leave the list.
    static void OnUnlink(const SDList& list, const SDListItem* item) noexcept {
        if (underWay_.load(std::memory_order_relaxed) != 0) PassOver(list, item);
    }
    // An item of a tree is about to end, with its children: nothing there can be gone on with.
    static void OnDestroy(const SDListItem* item) noexcept {
        if (underWay_.load(std::memory_order_relaxed) != 0) EndBelow(item);
    }

private:
    static void PassOver(const SDList& list, const SDListItem* item) noexcept;
    static void EndBelow(const SDListItem* item) noexcept;

    VisitPass* outer_;
    // Of all threads: mostly there is none, and nobody has to look for its own.
    static std::atomic<int> underWay_;
};

}  // namespace brcore8

#endif
