#include <brcore8/core/object.h>

#include <brcore8/platform/light_lock.h>

#include <cstddef>

// All of this is constant-initialised: descriptors register themselves during the dynamic
// initialisation of other files and leave after main.
constinit SClassInfo* g_pClassInfo = nullptr;

namespace {

constinit SClassInfo* g_tail = nullptr;
constinit brcore8::LightLock g_registryLock;

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
}

SClassInfo::~SClassInfo() {
    const brcore8::LightLockGuard guard(g_registryLock);
    SClassInfo* const successor = next == this ? nullptr : next;
    if (g_pClassInfo == this) g_pClassInfo = successor;
    SClassInfo* const predecessor = UnlinkBehind(this, successor);
    if (g_tail == this) g_tail = predecessor;
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
