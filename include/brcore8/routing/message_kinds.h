// What each signature kind carries from a message to its handler, and what becomes of the handler's
// result. Commands and other messages have a table each; a number may stand in both with two
// meanings. Rows (message_rows.h) are made from these, and the dispatchers go by the same numbers.
#ifndef BRCORE8_ROUTING_MESSAGE_KINDS_H
#define BRCORE8_ROUTING_MESSAGE_KINDS_H

#include <brcore8/routing/message_map.h>

#include <type_traits>

namespace brcore8 {

// A member handler's class, and its form: the function type of its result and arguments.
template <class>
struct MemberHandler {
    using Class = void;
    using Form = void;
};
template <class C, class R, class... A>
struct MemberHandler<R (C::*)(A...)> {
    using Class = C;
    using Form = R(A...);
};
template <class C, class R, class... A>
struct MemberHandler<R (C::*)(A...) noexcept> : MemberHandler<R (C::*)(A...)> {};
template <class C, class R, class... A>
struct MemberHandler<R (C::*)(A...) const> : MemberHandler<R (C::*)(A...)> {};
template <class C, class R, class... A>
struct MemberHandler<R (C::*)(A...) const noexcept> : MemberHandler<R (C::*)(A...)> {};

// From what a message carries to what its handler is declared with. Half of a parameter that is
// declared as int is a number with a sign.
template <class To, class From>
To MessageArgument(From carried) noexcept {
    if constexpr (std::is_same_v<To, From>)
        return carried;
    else if constexpr (std::is_pointer_v<To>)
        return reinterpret_cast<To>(carried);
    else if constexpr (std::is_same_v<To, int> && std::is_same_v<From, UINT>)
        return static_cast<std::int16_t>(carried);
    else
        return static_cast<To>(carried);
}

template <class R>
LRESULT MessageResult(R result) noexcept {
    if constexpr (std::is_pointer_v<R>)
        return reinterpret_cast<LRESULT>(result);
    else
        return static_cast<LRESULT>(result);
}

// The call that a row holds, for a handler of the form `Declared`.
template <class Carried, class Declared>
struct HandlerCall;
template <class... Carried, class R, class... Declared>
struct HandlerCall<void(Carried...), R(Declared...)> {
    template <auto Handler>
    static LRESULT Call(SCmdTarget* target, Carried... carried) {
        using Class = typename MemberHandler<decltype(Handler)>::Class;
        static_assert(std::is_base_of_v<SCmdTarget, Class>,
                      "a message handler is a member of a class derived from SCmdTarget");
        Class* const self = static_cast<Class*>(target);
        if constexpr (std::is_void_v<R>) {
            (self->*Handler)(MessageArgument<Declared>(carried)...);
            return 0;
        } else {
            return MessageResult((self->*Handler)(MessageArgument<Declared>(carried)...));
        }
    }
};

template <unsigned Kind, unsigned... Kinds>
inline constexpr bool kIsOneOf = ((Kind == Kinds) || ...);

template <class... Argument>
struct Carries {
    using Form = void(Argument...);
};

// What a kind carries to the handler of a plain message: WPARAM and LPARAM are the parameters as
// they are, UINT and int unsigned and signed halves of them, low half first.
template <unsigned Kind>
constexpr auto CarriedByMessage() {
    // wParam as a device context, and lParam as a window.
    if constexpr (kIsOneOf<Kind, 1, 7, 23>) return Carries<SDC*>{};
    if constexpr (Kind == 5) return Carries<SDC*, SWnd*>{};
    // The parameters as they are. 35 and 46 result in 1.
    if constexpr (kIsOneOf<Kind, 14, 15, 38>) return Carries<>{};
    if constexpr (kIsOneOf<Kind, 2, 16>) return Carries<WPARAM>{};
    if constexpr (kIsOneOf<Kind, 11, 34, 39, 45>) return Carries<LPARAM>{};
    if constexpr (kIsOneOf<Kind, 12, 17, 21, 35, 36, 40, 46>) return Carries<WPARAM, LPARAM>{};
    // Halves: of wParam in 9, 33 and 51, of lParam in 18 to 20, 37 and 52, of both in 48, where a
    // result of 0 leaves the message unhandled.
    if constexpr (kIsOneOf<Kind, 9, 18>) return Carries<UINT, UINT>{};
    if constexpr (kIsOneOf<Kind, 33, 37>) return Carries<int, int>{};
    if constexpr (kIsOneOf<Kind, 19, 20>) return Carries<WPARAM, UINT, UINT>{};
    if constexpr (Kind == 52) return Carries<WPARAM, int, int>{};
    if constexpr (Kind == 51) return Carries<UINT, UINT, LPARAM>{};
    if constexpr (Kind == 48) return Carries<UINT, UINT, UINT, UINT>{};
    // A menu in wParam, or in lParam behind the halves of wParam.
    if constexpr (Kind == 24) return Carries<SMenu*>{};
    if constexpr (Kind == 25) return Carries<SMenu*, UINT, UINT>{};
    if constexpr (Kind == 13) return Carries<UINT, UINT, SMenu*>{};
    // A window in wParam (26 to 29, 3, 10), or in lParam: 8 and 31 have the halves of wParam around
    // it, 32 signed before it.
    if constexpr (kIsOneOf<Kind, 26, 47>) return Carries<SWnd*>{};
    if constexpr (kIsOneOf<Kind, 3, 10>) return Carries<SWnd*, int, UINT>{};
    if constexpr (Kind == 27) return Carries<SWnd*, UINT, UINT>{};
    if constexpr (Kind == 28) return Carries<SWnd*, int, int>{};
    if constexpr (Kind == 29) return Carries<SWnd*, LPARAM>{};
    if constexpr (Kind == 30) return Carries<WPARAM, SWnd*>{};
    if constexpr (kIsOneOf<Kind, 8, 31>) return Carries<UINT, SWnd*, UINT>{};
    if constexpr (Kind == 32) return Carries<int, int, SWnd*>{};
    // Whether lParam names the window itself, then the windows of lParam and wParam.
    if constexpr (Kind == 22) return Carries<int, SWnd*, SWnd*>{};
}

// What a kind carries to the handler of a command, whose identifier is the WPARAM here, of a
// notification (41 to 44), of an update (47, 48), or of what the sender passed along (49, 50).
template <unsigned Kind>
constexpr auto CarriedByCommand() {
    if constexpr (kIsOneOf<Kind, 15, 38>) return Carries<>{};
    if constexpr (kIsOneOf<Kind, 2, 16>) return Carries<WPARAM>{};
    if constexpr (kIsOneOf<Kind, 41, 42>) return Carries<NMHDR*, LRESULT*>{};
    if constexpr (kIsOneOf<Kind, 43, 44>) return Carries<UINT, NMHDR*, LRESULT*>{};
    if constexpr (Kind == 47) return Carries<SCmdUI*>{};
    if constexpr (Kind == 48) return Carries<SCmdUI*, UINT>{};
    if constexpr (kIsOneOf<Kind, 49, 50>) return Carries<void*>{};
}

template <unsigned Kind, class Carried, class Declared, auto Handler>
constexpr SMsgEntry MakeRow(UINT message, UINT code, UINT firstId, UINT lastId) noexcept {
    static_assert(std::is_same_v<typename MemberHandler<decltype(Handler)>::Form, Declared>,
                  "this handler has not the form that its message is bound with: see the row's "
                  "line in brcore8/routing/message_rows.h");
    return {message,
            code,
            firstId,
            lastId,
            SMsgSignature(std::uintptr_t{Kind}),
            SMsgHandler(&HandlerCall<typename Carried::Form, Declared>::template Call<Handler>)};
}

// The row of a plain message, or of a command; Declared is the form of its handlers.
template <unsigned Kind, class Declared, auto Handler>
constexpr SMsgEntry WindowRow(UINT message) noexcept {
    return MakeRow<Kind, decltype(CarriedByMessage<Kind>()), Declared, Handler>(message, 0, 0, 0);
}
template <unsigned Kind, class Declared, auto Handler>
constexpr SMsgEntry CommandRow(UINT code, UINT firstId, UINT lastId,
                               UINT message = WM_COMMAND) noexcept {
    return MakeRow<Kind, decltype(CarriedByCommand<Kind>()), Declared, Handler>(message, code,
                                                                                firstId, lastId);
}

}  // namespace brcore8

#endif
