#include <brcore8/containers/tree.h>

#include "containers/visit_pass.h"

#include <utility>

// ---- STreeItem --------------------------------------------------------------------------------

// Descendants are destroyed without recursion: the outermost item, marked by a previous link that
// leads to itself, deletes its first child until it has none, and each of them, when its turn has
// come to destroy its own children, hands these over to the front of the outermost item's list
// instead. So a derived destructor finds its item linked among those that are yet to go.
STreeItem::~STreeItem() {
    brcore8::VisitPass::OnDestroy(this);
    STreeItem* const above = std::exchange(parent_, nullptr);
    if (above != nullptr) above->children_.Detach(this);
    if (above != nullptr && above->previous_ == above) {
        for (SDListItem* child = children_.GetHead(); child != nullptr; child = child->GetNext())
            static_cast<STreeItem*>(child)->parent_ = above;
        above->children_.TakeAtHead(children_);
        return;
    }
    previous_ = this;
    while (SDListItem* child = children_.GetHead())
        delete child;
}

namespace {

STreeItem* AsTree(SDListItem* item) {
    return static_cast<STreeItem*>(item);
}

STreeItem* ParentOf(const STreeItem* item) {
    return item != nullptr ? item->GetParent() : nullptr;
}

// The first item in post-order of the subtree under `item`.
STreeItem* Deepest(STreeItem* item) {
    while (SDListItem* child = item->GetChildren().GetHead())
        item = AsTree(child);
    return item;
}

}  // namespace

// ---- Create and empty -------------------------------------------------------------------------

void STree::Init(STreeItem* root, int reset) {
    Unparent(root);
    if (root_ == root) root_ = nullptr;
    if (reset != 0) Done();
    root_ = root;
    visitor_ = nullptr;
    visitorData_ = 0;
}

void STree::Done() {
    DeleteWhole(std::exchange(root_, nullptr));
}

// ---- Insert -----------------------------------------------------------------------------------

STreeItem* STree::Unparent(STreeItem* item) {
    if (item != nullptr && item->parent_ != nullptr) {
        item->parent_->children_.Detach(item);
        item->parent_ = nullptr;
    }
    return item;
}

// Makes the item a child of the parent, yet in no list, unless that would close a circle. Whether
// the item is above the parent is asked upwards and downwards at once, a step each, so that neither
// a deep place nor a large item makes building a tree slow.
STreeItem* STree::Adopt(STreeItem* parent, STreeItem* item) {
    if (parent == nullptr || item == nullptr || item == root_) return nullptr;
    const STreeItem* above = parent;
    const STreeItem* below = item;
    while (above != nullptr && below != nullptr) {
        if (above == item || below == parent) return nullptr;
        above = above->parent_;
        below = WalkSubTree(item, below);
    }
    Unparent(item)->parent_ = parent;
    return item;
}

STreeItem* STree::InsertChildAtHead(STreeItem* parent, STreeItem* item) {
    if (Adopt(parent, item) == nullptr) return nullptr;
    parent->children_.AddAtHead(item);
    return item;
}

STreeItem* STree::InsertChildAtTail(STreeItem* parent, STreeItem* item) {
    if (Adopt(parent, item) == nullptr) return nullptr;
    parent->children_.AddAtTail(item);
    return item;
}

STreeItem* STree::InsertChildAt(STreeItem* parent, STreeItem* item, long index) {
    if (Adopt(parent, item) == nullptr) return nullptr;
    parent->children_.AddAt(item, index);
    return item;
}

STreeItem* STree::InsertAtHead(STreeItem* sibling, STreeItem* item) {
    return sibling == item ? nullptr : InsertChildAtHead(ParentOf(sibling), item);
}

STreeItem* STree::InsertAtTail(STreeItem* sibling, STreeItem* item) {
    return sibling == item ? nullptr : InsertChildAtTail(ParentOf(sibling), item);
}

STreeItem* STree::InsertAt(STreeItem* sibling, STreeItem* item, long index) {
    return sibling == item ? nullptr : InsertChildAt(ParentOf(sibling), item, index);
}

STreeItem* STree::InsertBefore(STreeItem* sibling, STreeItem* item) {
    if (sibling == item || Adopt(ParentOf(sibling), item) == nullptr) return nullptr;
    sibling->parent_->children_.AddBefore(sibling, item);
    return item;
}

STreeItem* STree::InsertAfter(STreeItem* sibling, STreeItem* item) {
    if (sibling == item || Adopt(ParentOf(sibling), item) == nullptr) return nullptr;
    sibling->parent_->children_.AddAfter(sibling, item);
    return item;
}

STreeItem* STree::InsertItem(STreeItem* reference, STreeItem* item, FLAGS place) {
    switch (place) {
        case Root:
            if (item != nullptr) root_ = Unparent(item);
            return item;
        case FirstChild:
            return InsertChildAtHead(reference, item);
        case LastChild:
            return InsertChildAtTail(reference, item);
        case FirstSibling:
            return InsertAtHead(reference, item);
        case LastSibling:
            return InsertAtTail(reference, item);
        case PreviousSibling:
            return InsertBefore(reference, item);
        case NextSibling:
            return InsertAfter(reference, item);
    }
    return nullptr;
}

// ---- Detach -----------------------------------------------------------------------------------

STreeItem* STree::DetachChildAtHead(STreeItem* parent) {
    return Unparent(GetChildAtHead(parent));
}

STreeItem* STree::DetachChildAtTail(STreeItem* parent) {
    return Unparent(GetChildAtTail(parent));
}

STreeItem* STree::DetachChildAt(STreeItem* parent, long index) {
    if (parent == nullptr) return nullptr;
    STreeItem* item = AsTree(parent->children_.DetachAt(index));
    if (item != nullptr) item->parent_ = nullptr;
    return item;
}

STreeItem* STree::DetachAtHead(STreeItem* sibling) {
    return DetachChildAtHead(ParentOf(sibling));
}

STreeItem* STree::DetachAtTail(STreeItem* sibling) {
    return DetachChildAtTail(ParentOf(sibling));
}

STreeItem* STree::DetachAt(STreeItem* sibling, long index) {
    return DetachChildAt(ParentOf(sibling), index);
}

STreeItem* STree::DetachBefore(STreeItem* sibling) {
    return Unparent(GetBefore(sibling));
}

STreeItem* STree::DetachAfter(STreeItem* sibling) {
    return Unparent(GetAfter(sibling));
}

STreeItem* STree::DetachItem(STreeItem* reference, FLAGS place) {
    switch (place) {
        case Root:
            return std::exchange(root_, nullptr);
        case FirstChild:
            return DetachChildAtHead(reference);
        case LastChild:
            return DetachChildAtTail(reference);
        case FirstSibling:
            return DetachAtHead(reference);
        case LastSibling:
            return DetachAtTail(reference);
        case PreviousSibling:
            return DetachBefore(reference);
        case NextSibling:
            return DetachAfter(reference);
    }
    return nullptr;
}

// ---- Delete -----------------------------------------------------------------------------------

void STree::DelSubTree(STreeItem* item) {
    for (STreeItem* at = item; !item->children_.IsEmpty();) {
        STreeItem* leaf = Deepest(at);
        at = leaf->parent_;
        delete Unparent(leaf);
    }
}

void STree::DeleteWhole(STreeItem* item) {
    if (item == nullptr) return;
    DelSubTree(item);
    delete item;
}

// ---- Look up ----------------------------------------------------------------------------------

STreeItem* STree::GetChildAtHead(const STreeItem* parent) const {
    return parent != nullptr ? AsTree(parent->children_.GetHead()) : nullptr;
}

STreeItem* STree::GetChildAtTail(const STreeItem* parent) const {
    return parent != nullptr ? AsTree(parent->children_.GetTail()) : nullptr;
}

STreeItem* STree::GetChildAt(const STreeItem* parent, long index) const {
    return parent != nullptr ? AsTree(parent->children_.GetAt(index)) : nullptr;
}

STreeItem* STree::GetAtHead(const STreeItem* sibling) const {
    return GetChildAtHead(ParentOf(sibling));
}

STreeItem* STree::GetAtTail(const STreeItem* sibling) const {
    return GetChildAtTail(ParentOf(sibling));
}

STreeItem* STree::GetAt(const STreeItem* sibling, long index) const {
    return GetChildAt(ParentOf(sibling), index);
}

STreeItem* STree::GetBefore(const STreeItem* sibling) const {
    return ParentOf(sibling) != nullptr ? AsTree(sibling->GetPrevious()) : nullptr;
}

STreeItem* STree::GetAfter(const STreeItem* sibling) const {
    return ParentOf(sibling) != nullptr ? AsTree(sibling->GetNext()) : nullptr;
}

STreeItem* STree::GetItem(STreeItem*, FLAGS place) const {
    return place == Root ? root_ : nullptr;
}

long STree::GetCount() {
    countScratch_ = 0;
    STreeIterator walk(this);
    for (const STreeItem* item = walk.First(); item != nullptr; item = walk.Next())
        countScratch_ += static_cast<std::int32_t>(item->children_.GetCount());
    return countScratch_;
}

// ---- Walk ------------------------------------------------------------------------------------

// The item after another in the pre-order of the subtree under `top`; null after the last one.
STreeItem* STree::WalkSubTree(const STreeItem* top, const STreeItem* item) {
    if (SDListItem* child = item->children_.GetHead()) return AsTree(child);
    while (item != nullptr && item != top && item->GetNext() == nullptr)
        item = item->parent_;
    return item != nullptr && item != top ? AsTree(item->GetNext()) : nullptr;
}

void STree::ForEach(Visitor visit, std::intptr_t data) {
    // A visit may be started from within another one, whose fields come back at the end.
    struct Visit {
        STree& tree;
        Visitor outerVisitor;
        std::intptr_t outerData;
        ~Visit() {
            tree.visitor_ = outerVisitor;
            tree.visitorData_ = outerData;
        }
    } const restore{*this, std::exchange(visitor_, visit), std::exchange(visitorData_, data)};

    if (root_ == nullptr || visit == nullptr) return;
    const STreeItem* const root = root_;
    brcore8::VisitPass pass;
    for (STreeItem* item = Deepest(root_); item != nullptr;) {
        // The item may be gone after the call.
        pass.next = item == root ? nullptr : item->GetNext();
        pass.above = item == root ? nullptr : item->parent_;
        if (visit(this, item, data) == 0 || root_ != root) return;
        item = pass.next != nullptr ? Deepest(AsTree(pass.next)) : AsTree(pass.above);
    }
}

int STree::AssertValid() const {
    if (root_ == nullptr) return 1;
    if (root_->parent_ != nullptr) return 0;
    STreeIterator walk(const_cast<STree*>(this));
    for (const STreeItem* item = walk.First(); item != nullptr; item = walk.Next()) {
        if (!item->children_.AssertValid()) return 0;
        for (SDListItem* at = item->children_.GetHead(); at != nullptr; at = at->GetNext()) {
            if (AsTree(at)->parent_ != item) return 0;
        }
    }
    return 1;
}

// ---- STreeIterator ----------------------------------------------------------------------------

STreeIterator::STreeIterator(STree* tree) : tree_(tree), current_(nullptr) {
    First();
}

STreeItem* STreeIterator::First() {
    current_ = tree_ != nullptr ? tree_->root_ : nullptr;
    return current_;
}

STreeItem* STreeIterator::Next() {
    if (current_ != nullptr && tree_ != nullptr)
        current_ = STree::WalkSubTree(tree_->root_, current_);
    return current_;
}

STreeItem* STreeIterator::Skip(long n) {
    for (; n > 0 && current_ != nullptr; --n)
        Next();
    return current_;
}

void STreeIterator::DeleteCurrent() {
    if (current_ == nullptr || tree_ == nullptr) return;
    if (current_ == tree_->root_) tree_->root_ = nullptr;
    delete STree::Unparent(current_);
}

void STreeIterator::DeleteCurrentSubTree() {
    if (current_ == nullptr) return;
    STree::DelSubTree(current_);
    DeleteCurrent();
}
