// Message maps: constant tables that bind messages, commands and notifications to member handlers.
//
// A class with handlers derives from SCmdTarget, declares its map, and writes it once in its
// source:
//
//     class SGraph : public SWnd {
//         SDECLARE_CREATABLE(SGraph);
//         SDECLARE_MESSAGE_MAP(SGraph);
//         void OnSize(UINT how, int width, int height);
//         void OnZoom();
//         void OnUpdateZoom(SCmdUI* ui);
//     };
//
//     SIMPLEMENT_MESSAGE_MAP(SGraph, SWnd,
//         SOnSize<&SGraph::OnSize>(),
//         SOnCommand<&SGraph::OnZoom>(ID_ZOOM),
//         SOnUpdate<&SGraph::OnUpdateZoom>(ID_ZOOM));
//
// Each row is made by a function named after its message (message_rows.h), which takes the handler
// as a template argument: a handler of the wrong form does not compile. The first row that matches
// wins, the class's own before those of its ancestors.
//
// A row's signature kind says what the handler is called with and what its call results in; the
// numbers are an interface between modules and stay. Maps are constant data, made by the compiler,
// and what is found in them is remembered by their addresses, process-wide; a module that has maps
// makes that forgotten when it is loaded and when it is unloaded.
// Threads: any may read them.
#ifndef BRCORE8_ROUTING_MESSAGE_MAP_H
#define BRCORE8_ROUTING_MESSAGE_MAP_H

#include <brcore8/platform/export.h>
#include <brcore8/platform/windows.h>

#include <cstddef>
#include <cstdint>

class SCmdTarget;
class SCmdUI;
class SDC;
class SMenu;
class SWnd;

// How the dispatchers call a handler: a free function made from the member by the rows' templates,
// one form for each list of arguments. What returns nothing returns 0.
union SMsgHandler {
    template <class... Args>
    using Call = LRESULT (*)(SCmdTarget*, Args...);

    constexpr SMsgHandler() noexcept : none(nullptr) {}
    constexpr SMsgHandler(Call<> f) noexcept : none(f) {}
    constexpr SMsgHandler(Call<WPARAM> f) noexcept : word(f) {}
    constexpr SMsgHandler(Call<LPARAM> f) noexcept : value(f) {}
    constexpr SMsgHandler(Call<WPARAM, LPARAM> f) noexcept : both(f) {}
    constexpr SMsgHandler(Call<SDC*> f) noexcept : dc(f) {}
    constexpr SMsgHandler(Call<SDC*, SWnd*> f) noexcept : dcWindow(f) {}
    constexpr SMsgHandler(Call<SMenu*> f) noexcept : menu(f) {}
    constexpr SMsgHandler(Call<SMenu*, UINT, UINT> f) noexcept : menuTwo(f) {}
    constexpr SMsgHandler(Call<UINT, UINT, SMenu*> f) noexcept : twoMenu(f) {}
    constexpr SMsgHandler(Call<SWnd*> f) noexcept : window(f) {}
    constexpr SMsgHandler(Call<SWnd*, LPARAM> f) noexcept : windowValue(f) {}
    constexpr SMsgHandler(Call<WPARAM, SWnd*> f) noexcept : wordWindow(f) {}
    constexpr SMsgHandler(Call<SWnd*, UINT, UINT> f) noexcept : windowTwo(f) {}
    constexpr SMsgHandler(Call<SWnd*, int, int> f) noexcept : windowPoint(f) {}
    constexpr SMsgHandler(Call<SWnd*, int, UINT> f) noexcept : windowHit(f) {}
    constexpr SMsgHandler(Call<UINT, SWnd*, UINT> f) noexcept : oneWindowOne(f) {}
    constexpr SMsgHandler(Call<int, SWnd*, SWnd*> f) noexcept : windows(f) {}
    constexpr SMsgHandler(Call<int, int> f) noexcept : point(f) {}
    constexpr SMsgHandler(Call<int, int, SWnd*> f) noexcept : pointWindow(f) {}
    constexpr SMsgHandler(Call<WPARAM, int, int> f) noexcept : wordPoint(f) {}
    constexpr SMsgHandler(Call<UINT, UINT> f) noexcept : two(f) {}
    constexpr SMsgHandler(Call<WPARAM, UINT, UINT> f) noexcept : wordTwo(f) {}
    constexpr SMsgHandler(Call<UINT, UINT, LPARAM> f) noexcept : twoValue(f) {}
    constexpr SMsgHandler(Call<UINT, UINT, UINT, UINT> f) noexcept : four(f) {}
    constexpr SMsgHandler(Call<NMHDR*, LRESULT*> f) noexcept : notify(f) {}
    constexpr SMsgHandler(Call<UINT, NMHDR*, LRESULT*> f) noexcept : notifyRange(f) {}
    constexpr SMsgHandler(Call<SCmdUI*> f) noexcept : update(f) {}
    constexpr SMsgHandler(Call<SCmdUI*, UINT> f) noexcept : updateRange(f) {}
    constexpr SMsgHandler(Call<void*> f) noexcept : extra(f) {}

    Call<> none;
    Call<WPARAM> word;
    Call<LPARAM> value;
    Call<WPARAM, LPARAM> both;
    Call<SDC*> dc;
    Call<SDC*, SWnd*> dcWindow;
    Call<SMenu*> menu;
    Call<SMenu*, UINT, UINT> menuTwo;
    Call<UINT, UINT, SMenu*> twoMenu;
    Call<SWnd*> window;
    Call<SWnd*, LPARAM> windowValue;
    Call<WPARAM, SWnd*> wordWindow;
    Call<SWnd*, UINT, UINT> windowTwo;
    Call<SWnd*, int, int> windowPoint;
    Call<SWnd*, int, UINT> windowHit;
    Call<UINT, SWnd*, UINT> oneWindowOne;
    Call<int, SWnd*, SWnd*> windows;
    Call<int, int> point;
    Call<int, int, SWnd*> pointWindow;
    Call<WPARAM, int, int> wordPoint;
    Call<UINT, UINT> two;
    Call<WPARAM, UINT, UINT> wordTwo;
    Call<UINT, UINT, LPARAM> twoValue;
    Call<UINT, UINT, UINT, UINT> four;
    Call<NMHDR*, LRESULT*> notify;
    Call<UINT, NMHDR*, LRESULT*> notifyRange;
    Call<SCmdUI*> update;
    Call<SCmdUI*, UINT> updateRange;
    Call<void*> extra;
};
static_assert(sizeof(SMsgHandler) == sizeof(void*));

// A signature kind, or, in the row of a registered message, where its number is kept.
union SMsgSignature {
    constexpr SMsgSignature() noexcept : kind(0) {}
    constexpr SMsgSignature(std::uintptr_t number) noexcept : kind(number) {}
    constexpr SMsgSignature(const UINT* message) noexcept : registered(message) {}

    std::uintptr_t kind;
    const UINT* registered;
};

// The library's own messages: idle windows bring what shows commands up to date; the other only
// wakes the message loop.
inline constexpr UINT kIdleUpdateMessage = 867;
inline constexpr UINT kWakeUpMessage = 874;
// From a frame to its children: each bar takes its strip of the RECT that the second parameter
// points at, in the frame's client coordinates.
inline constexpr UINT kLayoutBarsMessage = 868;

// What stands in a row's `message` for a registered message, and in its `code` for updates.
inline constexpr UINT kRegisteredMessage = 0xC000;
inline constexpr UINT kUpdateCode = 0xFFFFFFFF;

// A row of a map. A map's rows end with one whose signature is 0.
struct SMsgEntry {
    UINT message = 0;  // WM_COMMAND for commands and their updates, WM_NOTIFY for notifications
    UINT code = 0;     // a control's notification code, of WM_NOTIFY the low 16 bits; kUpdateCode
    UINT firstId = 0;  // of commands and controls, both ends included; 0 for plain messages
    UINT lastId = 0;
    SMsgSignature signature;
    SMsgHandler handler;
};
static_assert(sizeof(void*) != 4 || sizeof(SMsgEntry) == 24);

// A class's map.
struct SMsgMap {
    const SMsgMap* (*base)();  // of the class it derives from; null ends the chain
    const SMsgEntry* entries;
};
static_assert(sizeof(SMsgMap) == 2 * sizeof(void*));

// The first of the rows with this message and code whose range holds `id`, or null.
BRCORE8_API const SMsgEntry* SFindMessageEntry(const SMsgEntry* rows, UINT message, UINT code,
                                               UINT id) noexcept;

// Forgets what was found in message maps. SIMPLEMENT_MESSAGE_MAP calls it as its module comes and
// goes; call it for maps that are written by hand, before one is changed or its memory given back.
BRCORE8_API void SFlushMessageCache() noexcept;

namespace brcore8 {

// Stands beside a map: another module's may have been at its address, and may come there after it.
class MapOfThisModule {
public:
    MapOfThisModule() noexcept { SFlushMessageCache(); }
    MapOfThisModule(const MapOfThisModule&) = delete;
    MapOfThisModule& operator=(const MapOfThisModule&) = delete;
    ~MapOfThisModule() { SFlushMessageCache(); }
};

}  // namespace brcore8

// The library itself stays as long as what it remembers.
#if defined(BRCORE8_BUILDING)
#define SMAP_OF_THIS_MODULE_(Line)
#else
#define SMAP_NAME_(Line) g_mapOfThisModule##Line
#define SMAP_OF_THIS_MODULE_(Line) static const brcore8::MapOfThisModule SMAP_NAME_(Line);
#endif

#define SDECLARE_MESSAGE_MAP(Class)                \
protected:                                         \
    static const SMsgMap msgMap;                   \
    static const SMsgMap* _GetBaseMessageMap();    \
    const SMsgMap* GetMessageMap() const override; \
                                                   \
private:                                           \
    static const SMsgEntry msgEntries_[]

#define SIMPLEMENT_MESSAGE_MAP(Class, Base, ...)                                               \
    SMAP_OF_THIS_MODULE_(__LINE__)                                                             \
    const SMsgMap* Class::_GetBaseMessageMap() {                                               \
        return &Base::msgMap;                                                                  \
    }                                                                                          \
    constinit const SMsgEntry Class::msgEntries_[] = {__VA_ARGS__ __VA_OPT__(, ) SMsgEntry{}}; \
    constinit const SMsgMap Class::msgMap = {&Class::_GetBaseMessageMap, Class::msgEntries_};  \
    const SMsgMap* Class::GetMessageMap() const {                                              \
        return &Class::msgMap;                                                                 \
    }                                                                                          \
    static_assert(true)

#endif
