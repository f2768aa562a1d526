// Run-time class identity: every polymorphic class of the library derives from SObject and carries
// one static descriptor, an SClassInfo. The descriptors form one process-wide chain in the order of
// their construction. They serve type tests and creation of objects from a descriptor.
//
// Threads: descriptors may be constructed and destroyed by several threads (libraries loading and
// unloading); a program that walks the chain must know that no library comes or goes meanwhile.
// Ownership: descriptors are static and own nothing; created objects belong to the caller.
#ifndef BRCORE8_CORE_OBJECT_H
#define BRCORE8_CORE_OBJECT_H

#include <brcore8/platform/export.h>
#include <brcore8/platform/types.h>

#include <cstdint>
#include <new>

class SCOMObject;
class SDump;
class SObject;
struct IUnknown;

// The descriptor of a class. Descriptors are compared by address: two with one name are two
// classes.
struct BRCORE8_API SClassInfo {
    using Factory = SObject* (*)();

    // Fills the fields and appends the descriptor to the chain. `name` must outlive it.
    SClassInfo(const char* name, unsigned long schema, unsigned int size, SClassInfo* base,
               Factory factory) noexcept;

    // Takes the descriptor out of the chain; a copy, which is not in it, is just dropped.
    virtual ~SClassInfo();

    // Copies take all six fields, `next` included, and register nothing. Assigning to a registered
    // descriptor therefore rewires the chain behind it, to a ring perhaps; only the library's own
    // walks end there.
    SClassInfo(const SClassInfo& other) noexcept;
    SClassInfo& operator=(const SClassInfo& other) noexcept;

    // A default-constructed object, the caller's; null when the class has no factory.
    SObject* CreateObject() const;

    // 1 when `other` is a strict ancestor of this class, else 0; null is nobody's ancestor.
    int IsDerivedFrom(const SClassInfo* other) const noexcept;

    const char* className;     // as written in source, not owned
    std::uint32_t schema;      // the class's own number, compared by nobody here
    std::uint32_t objectSize;  // bytes of one instance
    SClassInfo* base;          // the direct base; null for SObject alone
    SClassInfo* next;          // the next in the chain; null for the last
    Factory factory;           // null when the class cannot be created by its descriptor
};
static_assert(sizeof(void*) != 4 || sizeof(SClassInfo) == 28);

// The first descriptor of the chain, null while none is registered.
extern BRCORE8_API SClassInfo* g_pClassInfo;

// The registered class of that name, the first where several bear it; null when there is none, or
// `name` is null. It goes by an index that is made anew after classes came or went, so that asking
// again costs a few comparisons; where memory for the index is refused, the chain is walked.
BRCORE8_API SClassInfo* SFindClass(const char* name) noexcept;

// The root of the library's polymorphic classes. It holds no data.
class BRCORE8_API SObject {
public:
    static SClassInfo m_SObject;

    // What SCast asks of a class; the macros below declare it for the others.
    using DescribedClass = SObject;
    static SClassInfo& Descriptor() noexcept { return m_SObject; }

    // Virtual operations, in slot order.

    // The class's static descriptor. The platform's header makes GetClassInfo a macro for one of
    // the two decorated spellings, so the virtual bears the first of them and the other two
    // spellings lead to it: a program sees the same class whichever header comes first.
    virtual SClassInfo* GetClassInfoA() const;
    virtual ~SObject();
    // Writes a diagnostic description; this version writes nothing.
    virtual void Dump(SDump& dump) const;
    // Non-zero when the object is consistent; this version always says so.
    virtual int AssertValid() const;

    SClassInfo* GetClassInfo() const { return GetClassInfoA(); }
    SClassInfo* GetClassInfoW() const { return GetClassInfoA(); }

    // Type tests: exactly `info`; a strict descendant of `info`; one of the two. 1 or 0.
    int IsA(const SClassInfo* info) const;
    int IsDerivedFrom(const SClassInfo* info) const;
    int IsKindOf(const SClassInfo* info) const;

protected:
    SObject() noexcept = default;
    SObject(const SObject&) noexcept {}
    // Copies nothing: derived classes decide what a copy is.
    SObject& operator=(const SObject&) noexcept { return *this; }
};
static_assert(sizeof(SObject) == sizeof(void*));

// Validation hooks: they inspect nothing here and return 1. The last two arguments are the source
// file and line of the caller.
BRCORE8_API int SAssertValidObject(const SObject* object, const char* file, long line);
BRCORE8_API int SAssertValidObject(const SCOMObject* object, const char* file, long line);
BRCORE8_API int SAssertValidInterface(IUnknown* object, const char* file, long line);

// --- The pattern that gives a class its descriptor ------------------------------------------
//
// First in the class (the section in force afterwards is public; no need to say it again):
//
//     class SShape : public SObject {
//         SDECLARE_CREATABLE(SShape);         // or SDECLARE_CLASS when it has no factory
//         SShape();
//         ...
//     };
//
// and once in its source, with the direct base and the schema number:
//
//     SIMPLEMENT_CREATABLE(SShape, SObject, 2);   // or SIMPLEMENT_CLASS
//
// This gives the class `static SClassInfo m_SShape`, an override of GetClassInfoA and, when it is
// creatable, `static SShape* CreateObject()`: a new default-constructed object, the caller's, or
// null if memory for it is refused. Programs use the same macros for classes of their own; the
// base must be the direct one, since the descriptor is that of the class named.

#define SDECLARE_CLASS(Class)                  \
public:                                        \
    static SClassInfo m_##Class;               \
    using DescribedClass = Class;              \
    static SClassInfo& Descriptor() noexcept { \
        return m_##Class;                      \
    }                                          \
    SClassInfo* GetClassInfoA() const override

#define SDECLARE_CREATABLE(Class) \
    SDECLARE_CLASS(Class);        \
    static Class* CreateObject()

#define SIMPLEMENT_DESCRIPTOR_(Class, Base, Schema, Create)                               \
    SClassInfo Class::m_##Class(#Class, Schema, static_cast<unsigned int>(sizeof(Class)), \
                                &Base::m_##Base, Create);                                 \
    SClassInfo* Class::GetClassInfoA() const {                                            \
        return &Class::m_##Class;                                                         \
    }                                                                                     \
    static_assert(true)

#define SIMPLEMENT_CLASS(Class, Base, Schema) SIMPLEMENT_DESCRIPTOR_(Class, Base, Schema, nullptr)

#define SIMPLEMENT_CREATABLE(Class, Base, Schema) \
    Class* Class::CreateObject() {                \
        return new (std::nothrow) Class;          \
    }                                             \
    SIMPLEMENT_DESCRIPTOR_(Class, Base, Schema,   \
                           [] { return static_cast<SObject*>(Class::CreateObject()); })

#endif
