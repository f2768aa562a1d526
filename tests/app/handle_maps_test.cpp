// The six handle maps, and the idle pass that empties them.

#include <brcore8/app/win_app.h>
#include <brcore8/graphics/drawing_objects.h>
#include <brcore8/graphics/font_old.h>
#include <brcore8/graphics/image_list.h>
#include <brcore8/window/menu.h>

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

namespace {

template <class Wrapper>
SObject* From(std::uintptr_t value) {
    using Handle = decltype(std::declval<Wrapper>().GetHandle());
    return Wrapper::FromHandle(reinterpret_cast<Handle>(value));
}

struct Kind {
    const char* name;
    SObject* (*from)(std::uintptr_t handle);
    SHandleMap& (*map)();
};

constexpr Kind kKinds[] = {
    {"windows", &From<SWnd>, &SWnd::GetHandleMap},
    {"image lists", &From<SImageList>, &SImageList::GetHandleMap},
    {"menus", &From<SMenu>, &SMenu::GetHandleMap},
    {"contexts", &From<SDC>, &SDC::GetHandleMap},
    {"drawing objects", &From<SGdiObject>, &SGdiObject::GetHandleMap},
    {"old fonts", &From<SFontOld>, &SFontOld::GetHandleMap},
};

constexpr std::uintptr_t kFirstHandle = 0x70000;

TEST(HandleMaps, AMillionTemporaryWrappersLeaveTheMemoryWhereItWas) {
    SWinApp app;
    const auto pass = [&app] {
        for (const Kind& kind : kKinds)
            for (std::uintptr_t i = 0; i < 100; ++i)
                kind.from(kFirstHandle + i);
        app.OnIdle(1);
    };
    // What a pass needs, and what debug builds keep of the last ones.
    for (int i = 0; i < 10; ++i)
        pass();
    const std::size_t nodes = SHandleMapAllocator::m_Nodes.GetStats().chunks;
    std::vector<std::size_t> chunks;
    for (const Kind& kind : kKinds)
        chunks.push_back(kind.map().GetPoolStats().chunks);
    const unsigned long long made = SWnd::GetHandleMap().GetMadeCount();
    for (int i = 0; i < 1700; ++i)
        pass();
    EXPECT_EQ(SWnd::GetHandleMap().GetMadeCount() - made, 170000u);
    EXPECT_EQ(SHandleMapAllocator::m_Nodes.GetStats().chunks, nodes);
    for (const Kind& kind : kKinds) {
        SCOPED_TRACE(kind.name);
        EXPECT_EQ(kind.map().GetTemporaryCount(), 0);
        EXPECT_EQ(kind.map().GetPoolStats().chunks,
                  chunks[static_cast<std::size_t>(&kind - kKinds)]);
    }
}

TEST(HandleMaps, TheFirstPassAndALockKeepThem) {
    SWinApp app;
    for (const Kind& kind : kKinds) {
        SCOPED_TRACE(kind.name);
        SObject* const wrapper = kind.from(kFirstHandle);
        app.OnIdle(0);
        EXPECT_EQ(kind.from(kFirstHandle), wrapper);
        {
            const SHandleMapLock held;
            app.OnIdle(1);
            EXPECT_EQ(kind.from(kFirstHandle), wrapper);
        }
        app.OnIdle(1);
        EXPECT_EQ(kind.map().GetTemporaryCount(), 0);
    }
}

#ifndef NDEBUG
TEST(HandleMapsDeathTest, AWrapperUsedAfterItsPassIsFound) {
    SWinApp app;
    SWnd* const window = SWnd::FromHandle(reinterpret_cast<HWND>(kFirstHandle));
    const SGdiObject* const object =
        SGdiObject::FromHandle(reinterpret_cast<HGDIOBJ>(kFirstHandle));
    EXPECT_NE(window->GetHandle(), nullptr);
    app.OnIdle(1);
    EXPECT_DEATH(window->GetHandle(), "after its idle pass");
    EXPECT_DEATH(object->GetHandle(), "after its idle pass");
}
#endif

// --- Owners of drawing objects ------------------------------------------------------------------

TEST(HandleMaps, OwnersAreThePermanentWrappersOfTheirObjects) {
    const int before = SGdiObject::GetHandleMap().GetPermanentCount();
    SPen pen(PS_SOLID, 1, 0);
    const HGDIOBJ handle = pen.GetHandle();
    EXPECT_EQ(SGdiObject::FromHandle(handle), &pen);
    EXPECT_EQ(SGdiObject::FromHandlePermanent(handle), &pen);
    SPen moved(std::move(pen));
    EXPECT_EQ(SGdiObject::FromHandle(handle), &moved);
    EXPECT_EQ(SGdiObject::GetHandleMap().GetPermanentCount(), before + 1);
    EXPECT_EQ(moved.Detach(), handle);
    EXPECT_EQ(SGdiObject::FromHandlePermanent(handle), nullptr);
    // A temporary wrapper's end leaves the object alone.
    EXPECT_NE(SGdiObject::FromHandle(handle), nullptr);
    SGdiObject::DeleteTempMap();
    LOGPEN info{};
    EXPECT_EQ(moved.Attach(handle), 1);
    EXPECT_EQ(moved.GetLogPen(&info), 1);
    EXPECT_EQ(moved.Attach(nullptr), 0);
    EXPECT_EQ(SGdiObject::GetHandleMap().GetPermanentCount(), before);
}

TEST(HandleMaps, OwnersComeAndGoInManyThreads) {
    std::vector<std::thread> threads;
    std::atomic<int> made{0};
    for (int i = 0; i < 4; ++i)
        threads.emplace_back([&made] {
            for (int k = 0; k < 2000; ++k) {
                SBrush brush(RGB(1, 2, 3));
                SBrush other(std::move(brush));
                made += !other.IsNull();
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(made, 8000);
}

}  // namespace
