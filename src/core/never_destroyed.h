// An object in static storage that outlives the process: made by constant initialisation, so that
// the first static initialiser may use it, and never destroyed, so that the last static destructor
// still may.
//
//     constinit brcore8::NeverDestroyed<SFixedAlloc> pool(24u, 64u, nullptr, nullptr);
#ifndef BRCORE8_SRC_CORE_NEVER_DESTROYED_H
#define BRCORE8_SRC_CORE_NEVER_DESTROYED_H

namespace brcore8 {

template <class T>
union NeverDestroyed {
    template <class... Arguments>
    constexpr explicit(sizeof...(Arguments) == 1) NeverDestroyed(Arguments... arguments)
        : object(arguments...) {}
    NeverDestroyed(const NeverDestroyed&) = delete;
    NeverDestroyed& operator=(const NeverDestroyed&) = delete;
    ~NeverDestroyed() {}

    T object;
};

}  // namespace brcore8

#endif
