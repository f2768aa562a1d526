// STree: an n-ary hierarchy of objects derived from STreeItem.
//
// An item holds the ordered list of its children; the tree owns its root and everything below.
// What is detached belongs to the caller, with all below it. A null item makes an operation
// return null or do nothing, and so does a place that does not exist.
// Nothing here recurses: depth costs no stack. Threads: one at a time.
//
//     STree tree;
//     tree.Init(new Folder("root"), 1);         // struct Folder : STreeItem
//     tree.InsertChildAtTail(tree.GetRoot(), new Folder("a"));
//     for (STreeIterator it(&tree); it.GetCurrent() != nullptr; it.Next()) { ... }
#ifndef BRCORE8_CONTAINERS_TREE_H
#define BRCORE8_CONTAINERS_TREE_H

#include <brcore8/containers/dlist.h>

// The base of everything that can be put in an STree. Destroying an item takes it out of its
// parent's children first and then destroys its descendants, each item before its children.
class BRCORE8_API STreeItem : public SDListItem {
public:
    STreeItem() = default;
    // A copy has neither parent nor children; assignment leaves both alone.
    STreeItem(const STreeItem& other) : SDListItem(other), children_() {}
    STreeItem& operator=(const STreeItem&) { return *this; }
    ~STreeItem() override;

    // Null for a root and for an item in no tree.
    STreeItem* GetParent() const { return parent_; }
    const SXDList& GetChildren() const { return children_; }

private:
    friend class STree;

    STreeItem* parent_ = nullptr;
    SXDList children_;
};
static_assert(sizeof(void*) != 4 || sizeof(STreeItem) == 28);

// Invariants, checked by AssertValid: 1. the root has no parent; 2. every child list is valid (see
// SDList); 3. the parent of each child is the item that lists it.
class BRCORE8_API STree {
public:
    // The place of an operation relative to a reference item.
    enum FLAGS {
        Root = 0,
        FirstChild = 1,
        LastChild = 2,
        FirstSibling = 3,  // the first child of the reference's parent
        LastSibling = 4,
        PreviousSibling = 5,
        NextSibling = 6,
    };
    // Called with the tree, an item and the caller's data; returns 0 to be called no more.
    using Visitor = int(BRCORE8_STDCALL*)(STree* tree, STreeItem* item, std::intptr_t data);

    // ---- Create and empty ---------------------------------------------------------------------

    STree() = default;
    STree(const STree&) = delete;
    STree& operator=(const STree&) = delete;
    ~STree() { Done(); }

    // Runs Done when `reset` is non-zero (sparing the new root, should it be in the tree already),
    // then makes the item the root. Without reset the old root is left to the caller.
    void Init(STreeItem* root, int reset);
    // Deletes all descendants of the root, each after its own, then the root.
    void Done();

    // ---- Insert: return the item, or null when it was refused ---------------------------------
    // The tree takes the item with all below it. An item that has a parent is moved. Refused is
    // what would close a circle: the root, the reference itself, and an item above the reference.
    // The sibling forms refuse a reference without parent. Indices are those of SDList::AddAt.

    STreeItem* InsertChildAtHead(STreeItem* parent, STreeItem* item);
    STreeItem* InsertChildAtTail(STreeItem* parent, STreeItem* item);
    STreeItem* InsertChildAt(STreeItem* parent, STreeItem* item, long index);
    STreeItem* InsertAtHead(STreeItem* sibling, STreeItem* item);
    STreeItem* InsertAtTail(STreeItem* sibling, STreeItem* item);
    STreeItem* InsertAt(STreeItem* sibling, STreeItem* item, long index);
    STreeItem* InsertBefore(STreeItem* sibling, STreeItem* item);
    STreeItem* InsertAfter(STreeItem* sibling, STreeItem* item);
    // One of the above by flag. Root makes the item the new root, whatever the reference, and
    // leaves the old root to the caller. An unknown flag returns null.
    STreeItem* InsertItem(STreeItem* reference, STreeItem* item, FLAGS place);

    // ---- Delete: the item chosen, with its descendants ----------------------------------------
    // The plain forms destroy an item before its descendants, the SubTree forms after them.
    // Indices are those of SDList::DetachAt. Root deletes the root and leaves the tree empty.

    void DeleteChildAtHead(STreeItem* parent) { delete DetachChildAtHead(parent); }
    void DeleteChildAtTail(STreeItem* parent) { delete DetachChildAtTail(parent); }
    void DeleteChildAt(STreeItem* parent, long index) { delete DetachChildAt(parent, index); }
    void DeleteAtHead(STreeItem* sibling) { delete DetachAtHead(sibling); }
    void DeleteAtTail(STreeItem* sibling) { delete DetachAtTail(sibling); }
    void DeleteAt(STreeItem* sibling, long index) { delete DetachAt(sibling, index); }
    void DeleteBefore(STreeItem* sibling) { delete DetachBefore(sibling); }
    void DeleteAfter(STreeItem* sibling) { delete DetachAfter(sibling); }
    void DeleteItem(STreeItem* reference, FLAGS place) { delete DetachItem(reference, place); }

    void DeleteChildSubTreeAtHead(STreeItem* parent) { DeleteWhole(DetachChildAtHead(parent)); }
    void DeleteChildSubTreeAtTail(STreeItem* parent) { DeleteWhole(DetachChildAtTail(parent)); }
    void DeleteChildSubTreeAt(STreeItem* parent, long index) {
        DeleteWhole(DetachChildAt(parent, index));
    }
    void DeleteSubTreeAtHead(STreeItem* sibling) { DeleteWhole(DetachAtHead(sibling)); }
    void DeleteSubTreeAtTail(STreeItem* sibling) { DeleteWhole(DetachAtTail(sibling)); }
    void DeleteSubTreeAt(STreeItem* sibling, long index) { DeleteWhole(DetachAt(sibling, index)); }
    void DeleteSubTreeBefore(STreeItem* sibling) { DeleteWhole(DetachBefore(sibling)); }
    void DeleteSubTreeAfter(STreeItem* sibling) { DeleteWhole(DetachAfter(sibling)); }
    void DeleteSubTree(STreeItem* reference, FLAGS place) {
        DeleteWhole(DetachItem(reference, place));
    }

    // ---- Detach: the item chosen, now the caller's and without parent -------------------------

    STreeItem* DetachChildAtHead(STreeItem* parent);
    STreeItem* DetachChildAtTail(STreeItem* parent);
    STreeItem* DetachChildAt(STreeItem* parent, long index);
    STreeItem* DetachAtHead(STreeItem* sibling);
    STreeItem* DetachAtTail(STreeItem* sibling);
    STreeItem* DetachAt(STreeItem* sibling, long index);
    STreeItem* DetachBefore(STreeItem* sibling);
    STreeItem* DetachAfter(STreeItem* sibling);
    STreeItem* DetachItem(STreeItem* reference, FLAGS place);

    // ---- Look up ------------------------------------------------------------------------------

    STreeItem* GetRoot() const { return root_; }
    STreeItem* GetChildAtHead(const STreeItem* parent) const;
    STreeItem* GetChildAtTail(const STreeItem* parent) const;
    STreeItem* GetChildAt(const STreeItem* parent, long index) const;
    STreeItem* GetAtHead(const STreeItem* sibling) const;
    STreeItem* GetAtTail(const STreeItem* sibling) const;
    STreeItem* GetAt(const STreeItem* sibling, long index) const;
    STreeItem* GetBefore(const STreeItem* sibling) const;
    STreeItem* GetAfter(const STreeItem* sibling) const;
    // The root for Root, and null for every other place: use the lookups by name.
    STreeItem* GetItem(STreeItem* reference, FLAGS place) const;
    // The number of items below the root, which is not counted itself.
    long GetCount();

    // ---- Visit --------------------------------------------------------------------------------

    // Visits all items, each after its children, children in order, until the function returns 0.
    // The function may insert, detach and delete items and start another visit. What has left
    // before its turn is not visited; deleting an item above the current one, or replacing the
    // root, ends the visit. It must not end the tree. What the function throws passes through.
    void ForEach(Visitor visit, std::intptr_t data);

    // Non-zero when the invariants above hold. Linear.
    int AssertValid() const;

private:
    STreeItem* Adopt(STreeItem* parent, STreeItem* item);
    static STreeItem* Unparent(STreeItem* item);
    static STreeItem* WalkSubTree(const STreeItem* top, const STreeItem* item);
    static void DelSubTree(STreeItem* item);
    static void DeleteWhole(STreeItem* item);
    friend class STreeIterator;

    STreeItem* root_ = nullptr;
    std::int32_t countScratch_ = 0;
    Visitor visitor_ = nullptr;  // set only while ForEach runs, as is its data
    std::intptr_t visitorData_ = 0;
};
static_assert(sizeof(void*) != 4 || sizeof(STree) == 16);

// A cursor over a tree that must outlive it. It walks in pre-order: an item before its children.
class BRCORE8_API STreeIterator {
public:
    // Stands on the root; a null tree is an empty one.
    explicit STreeIterator(STree* tree);

    STreeItem* GetCurrent() const { return current_; }
    // Any item of the tree, or null.
    void SetCurrent(STreeItem* item) { current_ = item; }
    // Each returns the new current item; null past the last one, where the cursor then stays.
    STreeItem* First();
    STreeItem* Next();
    // Next, n times.
    STreeItem* Skip(long n);
    // Delete the current item with its descendants (see the forms of STree). The cursor does not
    // advance: it still holds the address of what was deleted, so give it a new place before use.
    void DeleteCurrent();
    void DeleteCurrentSubTree();

private:
    STree* tree_;
    STreeItem* current_;
};
static_assert(sizeof(void*) != 4 || sizeof(STreeIterator) == 8);

#endif
