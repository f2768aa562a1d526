#include <brcore8/containers/list.h>

__SList::~__SList() = default;

__SList& __SList::operator=(const __SList& other) {
    if (this == &other) return *this;
    // The copies are appended before the old elements go: a copy that throws then costs nothing.
    Node* const lastOld = sentinel_->previous;
    try {
        for (const Node* node = other.sentinel_->next; node != other.sentinel_; node = node->next)
            Insert(sentinel_, node->Element());
    } catch (...) {
        while (sentinel_->previous != lastOld)
            Erase(sentinel_->previous);
        throw;
    }
    if (lastOld != sentinel_) {
        Node* const firstNew = lastOld->next;
        while (sentinel_->next != firstNew)
            Erase(sentinel_->next);
    }
    return *this;
}

void __SList::Clear() {
    while (sentinel_->next != sentinel_)
        Erase(sentinel_->next);
}

void* __SList::GetFront() const {
    return count_ > 0 ? sentinel_->next->Element() : nullptr;
}

void* __SList::GetBack() const {
    return count_ > 0 ? sentinel_->previous->Element() : nullptr;
}

void* __SList::GetAt(int index) const {
    if (index < 0 || index >= count_) return nullptr;
    Node* node = sentinel_->next;
    while (index-- > 0)
        node = node->next;
    return node->Element();
}

__SList::Node* __SList::Insert(Node* before, const void* value) {
    Node* node = AllocateNode(before, before->previous);
    try {
        CopyElement(node->Element(), value);
    } catch (...) {
        FreeNode(node);
        throw;
    }
    Link(node, before);
    return node;
}

__SList::Node* __SList::Erase(Node* node) {
    Node* next = node->next;
    next->previous = node->previous;
    node->previous->next = next;
    --count_;
    DestroyElement(node->Element());
    FreeNode(node);
    return next;
}

void __SList::Link(Node* node, Node* before) {
    node->next = before;
    node->previous = before->previous;
    before->previous->next = node;
    before->previous = node;
    ++count_;
}

void __SList::MoveBefore(Node* node, Node* before) {
    if (node == before || node->next == before) return;
    node->next->previous = node->previous;
    node->previous->next = node->next;
    --count_;
    Link(node, before);
}

void __SList::SwapNodes(__SList& other) noexcept {
    std::swap(count_, other.count_);
    std::swap(ends_, other.ends_);
    // The ends still point at the sentinel they came from; so do the nodes beside them.
    for (__SList* list : {this, &other}) {
        if (list->count_ == 0) list->ends_ = {&list->ends_, &list->ends_};
        list->ends_.next->previous = list->ends_.previous->next = &list->ends_;
    }
}

int __SList::AssertValid() const {
    std::int32_t seen = 0;
    const Node* node = sentinel_;
    do {
        if (node->next->previous != node || seen > count_) return 0;
        node = node->next;
        ++seen;
    } while (node != sentinel_);
    return sentinel_ == &ends_ && seen == count_ + 1;
}
