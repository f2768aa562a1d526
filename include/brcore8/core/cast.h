// SCast: a cast down the class tree, checked by the run-time descriptors.
//
//     void Print(SObject* object) {
//         if (auto* const file = SCast<SInputFile>(object)) Copy(*file);
//     }
//
// It answers from the descriptors alone, so that it also works where dynamic_cast does not: on
// objects of a plug-in that was compiled without run-time type information, or that carries a type
// of its own under the same name. The class must declare a descriptor itself; that is checked when
// it is compiled. Any thread; nothing is thrown.
#ifndef BRCORE8_CORE_CAST_H
#define BRCORE8_CORE_CAST_H

#include <brcore8/core/object.h>

#include <type_traits>

// The object as a T, or null when it is none, or is null.
template <class T>
T* SCast(SObject* object) {
    static_assert(std::is_same_v<typename T::DescribedClass, T>,
                  "SCast needs a class with a descriptor of its own: SDECLARE_CLASS(T)");
    return object != nullptr && object->IsKindOf(&T::Descriptor()) != 0 ? static_cast<T*>(object)
                                                                        : nullptr;
}

template <class T>
const T* SCast(const SObject* object) {
    return SCast<T>(const_cast<SObject*>(object));
}

#endif
