#include <brcore8/core/object.h>

#include <brcore8/platform/light_lock.h>

#include "core/memory.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <new>

// All of this is constant-initialised: descriptors register themselves during the dynamic
// initialisation of other files and leave after main.
constinit SClassInfo* g_pClassInfo = nullptr;

namespace {

constinit SClassInfo* g_tail = nullptr;
constinit brcore8::LightLock g_registryLock;
constinit unsigned g_changes = 0;  // counts what comes, goes and is assigned

// Follows one of the links and ends even where assignments have closed them to a ring: a mark is
// put down at ever longer intervals, and meeting it again means that everything was seen.
template <SClassInfo* SClassInfo::*Link>
class Walk {
public:
    explicit Walk(SClassInfo* first) noexcept : current_(first), mark_(first) {}

    SClassInfo* Current() const noexcept { return current_; }

    void Advance() noexcept {
        current_ = current_->*Link;
        if (current_ == mark_) {
            current_ = nullptr;
        } else if (++steps_ == interval_) {
            mark_ = current_;
            steps_ = 0;
            interval_ *= 2;
        }
    }

private:
    SClassInfo* current_;
    SClassInfo* mark_;
    std::size_t steps_ = 0;
    std::size_t interval_ = 1;
};

// Takes `leaving` out behind every descriptor that leads to it (one, unless assignments rewired the
// chain, when a second would be left dangling). Returns the first that did, else the last visited.
SClassInfo* UnlinkBehind(SClassInfo* leaving, SClassInfo* successor) noexcept {
    SClassInfo* predecessor = nullptr;
    SClassInfo* last = nullptr;
    for (Walk<&SClassInfo::next> walk(g_pClassInfo); walk.Current() != nullptr; walk.Advance()) {
        last = walk.Current();
        if (last->next == leaving) {
            last->next = last != successor ? successor : nullptr;
            if (predecessor == nullptr) predecessor = last;
        }
    }
    return predecessor != nullptr ? predecessor : last;
}

// The chain's classes by name, those of one name in the order of the chain. Used under the lock.
class NameIndex {
public:
    constexpr NameIndex() noexcept = default;

    // Null also when no class has the name; false when there is no memory for the index.
    bool Find(const char* name, SClassInfo** found) noexcept {
        if ((entries_ == nullptr || changes_ != g_changes) && !Build()) return false;
        Entry* const end = entries_ + count_;
        const Entry* const entry =
            std::lower_bound(entries_, end, name, [](const Entry& left, const char* right) {
                return std::strcmp(left.info->className, right) < 0;
            });
        const bool hit = entry != end && std::strcmp(entry->info->className, name) == 0;
        *found = hit ? entry->info : nullptr;
        return true;
    }

private:
    struct Entry {
        SClassInfo* info;
        std::size_t position;
    };

    bool Build() noexcept {
        std::size_t count = 0;
        for (Walk<&SClassInfo::next> walk(g_pClassInfo); walk.Current() != nullptr; walk.Advance())
            ++count;
        if (count > capacity_ && !Reserve(count)) return false;
        count_ = 0;
        for (Walk<&SClassInfo::next> walk(g_pClassInfo); walk.Current() != nullptr;
             walk.Advance()) {
            if (walk.Current()->className == nullptr) continue;
            entries_[count_] = {walk.Current(), count_};
            ++count_;
        }
        std::sort(entries_, entries_ + count_, [](const Entry& left, const Entry& right) {
            const int order = std::strcmp(left.info->className, right.info->className);
            return order != 0 ? order < 0 : left.position < right.position;
        });
        changes_ = g_changes;
        return true;
    }

    // The block stays to the end of the process: static objects may ask while they are destroyed.
    bool Reserve(std::size_t count) noexcept {
        const std::size_t bytes = 2 * count * sizeof(Entry);
        void* const block =
            brcore8::MayAllocate(bytes) ? ::operator new(bytes, std::nothrow) : nullptr;
        if (block == nullptr) return false;
        ::operator delete(entries_);
        entries_ = static_cast<Entry*>(block);
        capacity_ = 2 * count;
        return true;
    }

    Entry* entries_ = nullptr;
    std::size_t capacity_ = 0;
    std::size_t count_ = 0;
    unsigned changes_ = 0;
};
constinit NameIndex g_names;

}  // namespace

SClassInfo::SClassInfo(const char* name, unsigned long schemaNumber, unsigned int size,
                       SClassInfo* baseInfo, Factory create) noexcept
    : className(name),
      schema(static_cast<std::uint32_t>(schemaNumber)),
      objectSize(size),
      base(baseInfo),
      next(nullptr),
      factory(create) {
    const brcore8::LightLockGuard guard(g_registryLock);
    if (g_pClassInfo == nullptr) {
        g_pClassInfo = this;
    } else {
        g_tail->next = this;
    }
    g_tail = this;
    ++g_changes;
}

SClassInfo::~SClassInfo() {
    const brcore8::LightLockGuard guard(g_registryLock);
    SClassInfo* const successor = next == this ? nullptr : next;
    if (g_pClassInfo == this) g_pClassInfo = successor;
    SClassInfo* const predecessor = UnlinkBehind(this, successor);
    if (g_tail == this) g_tail = predecessor;
    ++g_changes;
}

SClassInfo::SClassInfo(const SClassInfo& other) noexcept = default;

SClassInfo& SClassInfo::operator=(const SClassInfo& other) noexcept {
    const brcore8::LightLockGuard guard(g_registryLock);
    className = other.className;
    schema = other.schema;
    objectSize = other.objectSize;
    base = other.base;
    next = other.next;
    factory = other.factory;
    ++g_changes;
    return *this;
}

SObject* SClassInfo::CreateObject() const {
    return factory != nullptr ? factory() : nullptr;
}

int SClassInfo::IsDerivedFrom(const SClassInfo* other) const noexcept {
    for (Walk<&SClassInfo::base> walk(base); walk.Current() != nullptr; walk.Advance()) {
        if (walk.Current() == other) return 1;
    }
    return 0;
}

SClassInfo* SFindClass(const char* name) noexcept {
    if (name == nullptr) return nullptr;
    const brcore8::LightLockGuard guard(g_registryLock);
    SClassInfo* found = nullptr;
    if (g_names.Find(name, &found)) return found;
    for (Walk<&SClassInfo::next> walk(g_pClassInfo); walk.Current() != nullptr; walk.Advance()) {
        const char* const className = walk.Current()->className;
        if (className != nullptr && std::strcmp(className, name) == 0) return walk.Current();
    }
    return nullptr;
}

SClassInfo SObject::m_SObject("SObject", 1, sizeof(SObject), nullptr, nullptr);

SClassInfo* SObject::GetClassInfoA() const {
    return &m_SObject;
}

SObject::~SObject() = default;

void SObject::Dump(SDump&) const {}

int SObject::AssertValid() const {
    return 1;
}

int SObject::IsA(const SClassInfo* info) const {
    return GetClassInfoA() == info ? 1 : 0;
}

int SObject::IsDerivedFrom(const SClassInfo* info) const {
    return GetClassInfoA()->IsDerivedFrom(info);
}

int SObject::IsKindOf(const SClassInfo* info) const {
    return IsA(info) != 0 || IsDerivedFrom(info) != 0 ? 1 : 0;
}

int SAssertValidObject(const SObject*, const char*, long) {
    return 1;
}

int SAssertValidObject(const SCOMObject*, const char*, long) {
    return 1;
}

int SAssertValidInterface(IUnknown*, const char*, long) {
    return 1;
}
