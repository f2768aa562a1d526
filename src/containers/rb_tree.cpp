#include <brcore8/containers/rb_tree.h>

__STree::~__STree() = default;

// ---- Find -------------------------------------------------------------------------------------

__STree::Place __STree::PlaceOf(std::intptr_t key) const {
    return Descend([this, key](const void* element) { return CompareKey(key, GetKey(element)); });
}

__STree::Entry* __STree::GetEntry(std::intptr_t key) const {
    return PlaceOf(key).found;
}

void* __STree::Find(std::intptr_t key) const {
    Entry* entry = GetEntry(key);
    return entry != nullptr ? entry->Element() : nullptr;
}

// ---- Add --------------------------------------------------------------------------------------

void* __STree::AddVoid(std::intptr_t key) {
    const Place place = PlaceOf(key);
    Entry* entry = place.found;
    if (entry != nullptr) {
        Destroy(entry->Element());
    } else {
        entry = ::new (AllocateEntry()) Entry;
        LinkEntry(entry, place.parent, place.left);
    }
    return entry->Element();
}

void __STree::Abandon(void* storage) {
    Entry* entry = static_cast<Entry*>(storage) - 1;
    UnlinkEntry(entry);
    FreeEntry(entry);
}

void* __STree::AddCopy(std::intptr_t key, const void* value) {
    const Place place = PlaceOf(key);
    Entry* entry = NewCopy(value);
    if (place.found != nullptr) {
        ReplaceEntry(place.found, entry);
        DropEntry(place.found);
    } else {
        LinkEntry(entry, place.parent, place.left);
    }
    return entry->Element();
}

__STree::Entry* __STree::NewCopy(const void* value) {
    Entry* entry = ::new (AllocateEntry()) Entry{nullptr, nullptr, nullptr, red};
    try {
        CopyTo(entry->Element(), value);
    } catch (...) {
        FreeEntry(entry);
        throw;
    }
    return entry;
}

// Copies the other tree entry by entry in its very shape; nothing has to be compared or balanced.
__STree::Entry* __STree::CloneEntries(const __STree& other) {
    if (other.root_ == nullptr) return nullptr;
    Entry* const root = NewCopy(other.root_->Element());
    try {
        Entry* copy = root;
        for (const Entry* source = other.root_; source != nullptr;) {
            copy->color = source->color;
            if (source->left != nullptr && copy->left == nullptr) {
                source = source->left;
                copy->left = NewCopy(source->Element());
                copy->left->parent = copy;
                copy = copy->left;
            } else if (source->right != nullptr && copy->right == nullptr) {
                source = source->right;
                copy->right = NewCopy(source->Element());
                copy->right->parent = copy;
                copy = copy->right;
            } else {
                source = source->parent;
                copy = copy->parent;
            }
        }
    } catch (...) {
        DropAll(root);
        throw;
    }
    return root;
}

__STree& __STree::operator=(const __STree& other) {
    if (this == &other) return *this;
    Entry* copies = CloneEntries(other);
    Clear();
    root_ = copies;
    count_ = other.count_;
    return *this;
}

// ---- Remove -----------------------------------------------------------------------------------

int __STree::Remove(std::intptr_t key) {
    Entry* entry = GetEntry(key);
    if (entry == nullptr) return 0;
    UnlinkEntry(entry);
    DropEntry(entry);
    return 1;
}

__STree::iterator __STree::Remove(iterator at) {
    Entry* entry = at.entry;
    ++at;
    if (entry != nullptr) {
        UnlinkEntry(entry);
        DropEntry(entry);
    }
    return at;
}

void __STree::Clear() {
    Entry* root = std::exchange(root_, nullptr);
    count_ = 0;
    DropAll(root);
}

void __STree::DropEntry(Entry* entry) {
    Destroy(entry->Element());
    FreeEntry(entry);
}

// Leaf by leaf, climbing by the parents.
void __STree::DropAll(Entry* entry) {
    while (entry != nullptr) {
        if (entry->left != nullptr) {
            entry = std::exchange(entry->left, nullptr);
        } else if (entry->right != nullptr) {
            entry = std::exchange(entry->right, nullptr);
        } else {
            Entry* done = std::exchange(entry, entry->parent);
            DropEntry(done);
        }
    }
}

void __STree::SwapEntries(__STree& other) noexcept {
    std::swap(count_, other.count_);
    std::swap(root_, other.root_);
}

// ---- Link and unlink --------------------------------------------------------------------------

// The link that leads to a linked entry.
__STree::Entry*& __STree::LinkTo(Entry* entry) {
    Entry* parent = entry->parent;
    if (parent == nullptr) return root_;
    return parent->left == entry ? parent->left : parent->right;
}

void __STree::LinkEntry(Entry* entry, Entry* parent, int left) {
    entry->left = nullptr;
    entry->right = nullptr;
    entry->parent = parent;
    entry->color = red;
    (parent == nullptr ? root_ : left ? parent->left : parent->right) = entry;
    ++count_;
    FixAfterInsertion(entry);
}

void __STree::UnlinkEntry(Entry* entry) {
    // An entry with two children first changes places with its successor, which has no left one.
    if (entry->left != nullptr && entry->right != nullptr)
        SwapPosition(entry, GetMinimum(entry->right));
    Entry* child = entry->left != nullptr ? entry->left : entry->right;
    Entry* parent = entry->parent;
    LinkTo(entry) = child;
    if (child != nullptr) child->parent = parent;
    --count_;
    if (entry->color == black) FixAfterDelete(child, parent);
}

void __STree::ReplaceEntry(Entry* old, Entry* entry) {
    LinkTo(old) = entry;
    entry->parent = old->parent;
    entry->left = old->left;
    entry->right = old->right;
    entry->color = old->color;
    if (entry->left != nullptr) entry->left->parent = entry;
    if (entry->right != nullptr) entry->right->parent = entry;
}

// Entries change places and colours, elements stay where they are. `successor` is in the right
// subtree of `entry` and has no left child.
void __STree::SwapPosition(Entry* entry, Entry* successor) {
    const Entry before = *successor;
    Entry* const top = entry->parent;
    ReplaceEntry(entry, successor);
    // A successor directly under the entry has just become its own child and parent.
    if (before.parent == entry) {
        successor->right = entry;
        successor->parent = top;
        entry->parent = successor;
    } else {
        before.parent->left = entry;
        entry->parent = before.parent;
    }
    entry->left = nullptr;
    entry->right = before.right;
    if (entry->right != nullptr) entry->right->parent = entry;
    entry->color = before.color;
}

// ---- Balance ----------------------------------------------------------------------------------

void __STree::RotateLeft(Entry* entry) {
    Entry* up = entry->right;
    entry->right = up->left;
    if (up->left != nullptr) up->left->parent = entry;
    LinkTo(entry) = up;
    up->parent = entry->parent;
    up->left = entry;
    entry->parent = up;
}

void __STree::RotateRight(Entry* entry) {
    Entry* up = entry->left;
    entry->left = up->right;
    if (up->right != nullptr) up->right->parent = entry;
    LinkTo(entry) = up;
    up->parent = entry->parent;
    up->right = entry;
    entry->parent = up;
}

// A red entry may have got a red parent; the fault climbs by two or is rotated away.
void __STree::FixAfterInsertion(Entry* entry) {
    while (_Color(_Parent(entry)) == red) {
        Entry* parent = entry->parent;
        Entry* grandparent = parent->parent;
        const bool leftSide = grandparent->left == parent;
        Entry* uncle = leftSide ? grandparent->right : grandparent->left;
        if (_Color(uncle) == red) {
            parent->color = black;
            uncle->color = black;
            grandparent->color = red;
            entry = grandparent;
        } else if (leftSide) {
            if (parent->right == entry) {
                RotateLeft(parent);
                parent = entry;
            }
            parent->color = black;
            grandparent->color = red;
            RotateRight(grandparent);
            break;
        } else {
            if (parent->left == entry) {
                RotateRight(parent);
                parent = entry;
            }
            parent->color = black;
            grandparent->color = red;
            RotateLeft(grandparent);
            break;
        }
    }
    root_->color = black;
}

// The ways through `entry`, which may be null, are one black entry short; the fault climbs or is
// rotated away.
void __STree::FixAfterDelete(Entry* entry, Entry* parent) {
    while (entry != root_ && _Color(entry) == black) {
        const bool leftSide = parent->left == entry;
        Entry* sibling = leftSide ? parent->right : parent->left;
        if (_Color(sibling) == red) {
            sibling->color = black;
            parent->color = red;
            leftSide ? RotateLeft(parent) : RotateRight(parent);
            sibling = leftSide ? parent->right : parent->left;
        }
        Entry* inner = leftSide ? _Left(sibling) : _Right(sibling);
        Entry* outer = leftSide ? _Right(sibling) : _Left(sibling);
        if (_Color(inner) == black && _Color(outer) == black) {
            _SetColor(sibling, red);
            entry = parent;
            parent = entry->parent;
            continue;
        }
        if (_Color(outer) == black) {
            inner->color = black;
            sibling->color = red;
            leftSide ? RotateRight(sibling) : RotateLeft(sibling);
            outer = sibling;
            sibling = inner;
        }
        sibling->color = parent->color;
        parent->color = black;
        outer->color = black;
        leftSide ? RotateLeft(parent) : RotateRight(parent);
        return;
    }
    _SetColor(entry, black);
}

// ---- Check ------------------------------------------------------------------------------------

int __STree::AssertValid() const {
    if (_Color(root_) == red || _Parent(root_) != nullptr) return 0;
    std::int32_t seen = 0;
    int blackHeight = -1;
    const Entry* previous = nullptr;
    for (Entry* entry = GetFirstEntry(); entry != nullptr; entry = Successor(entry)) {
        for (const Entry* child : {entry->left, entry->right}) {
            if (child != nullptr && child->parent != entry) return 0;
            if (entry->color == red && _Color(child) == red) return 0;
        }
        if (entry->left == nullptr || entry->right == nullptr) {
            int height = 0;
            for (const Entry* up = entry; up != nullptr; up = up->parent)
                height += up->color == black;
            if (blackHeight < 0) blackHeight = height;
            if (height != blackHeight) return 0;
        }
        if (previous != nullptr &&
            CompareKey(GetKey(previous->Element()), GetKey(entry->Element())) >= 0)
            return 0;
        if (++seen > count_) return 0;
        previous = entry;
    }
    return seen == count_;
}
