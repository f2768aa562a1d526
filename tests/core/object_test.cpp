#include <brcore8/core/cast.h>
#include <brcore8/core/object.h>
#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include "plugin.h"
#include "support/failing_allocator.h"

namespace {

class STestShape : public SObject {
    SDECLARE_CREATABLE(STestShape);
    STestShape() = default;
    int sides = 3;
};
SIMPLEMENT_CREATABLE(STestShape, SObject, 2);

class STestSquare : public STestShape {
    SDECLARE_CLASS(STestSquare);
};
SIMPLEMENT_CLASS(STestSquare, STestShape, 3);

class STestOther : public SObject {
    SDECLARE_CLASS(STestOther);
};
SIMPLEMENT_CLASS(STestOther, SObject, 0);

// Overrides nothing, so it passes for its base.
class STestPlain : public STestSquare {};

TEST(Object, TypeTests) {
    const STestShape shape;
    const STestSquare square;
    const STestPlain plain;
    const STestOther other;
    SClassInfo twin("STestShape", 2, sizeof(STestShape), &SObject::m_SObject, nullptr);
    const struct {
        const char* name;
        const SObject& object;
        const SClassInfo* info;
        int isA, isDerivedFrom;
    } rows[] = {
        {"own descriptor", shape, &STestShape::m_STestShape, 1, 0},
        {"direct base", square, &STestShape::m_STestShape, 0, 1},
        {"root", square, &SObject::m_SObject, 0, 1},
        {"descendant", shape, &STestSquare::m_STestSquare, 0, 0},
        {"sibling", other, &STestShape::m_STestShape, 0, 0},
        {"class without a descriptor", plain, &STestSquare::m_STestSquare, 1, 0},
        {"same name, other descriptor", shape, &twin, 0, 0},
        {"null", square, nullptr, 0, 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(row.object.IsA(row.info), row.isA);
        EXPECT_EQ(row.object.IsDerivedFrom(row.info), row.isDerivedFrom);
        EXPECT_EQ(row.object.IsKindOf(row.info), row.isA | row.isDerivedFrom);
        EXPECT_EQ(row.object.IsKindOf(&SObject::m_SObject), 1);
        EXPECT_EQ(SObject::m_SObject.IsDerivedFrom(row.info), 0);
        EXPECT_NE(row.object.AssertValid(), 0);
    }
}

TEST(Object, CastsGoByTheDescriptors) {
    STestSquare square;
    STestOther other;
    SObject* const object = &square;
    EXPECT_EQ(SCast<STestSquare>(object), &square);
    EXPECT_EQ(SCast<STestShape>(object), &square);
    EXPECT_EQ(SCast<SObject>(object), &square);
    EXPECT_EQ(SCast<STestOther>(object), nullptr);
    EXPECT_EQ(SCast<STestSquare>(static_cast<const SObject*>(&other)), nullptr);
    EXPECT_EQ(SCast<STestShape>(static_cast<SObject*>(nullptr)), nullptr);
}

TEST(Object, DescriptorsSayWhatTheMacrosWereTold) {
    const SClassInfo& info = STestSquare::m_STestSquare;
    EXPECT_STREQ(info.className, "STestSquare");
    EXPECT_EQ(info.schema, 3u);
    EXPECT_EQ(info.objectSize, sizeof(STestSquare));
    EXPECT_EQ(info.base, &STestShape::m_STestShape);
    EXPECT_EQ(info.factory, nullptr);
    EXPECT_EQ(info.CreateObject(), nullptr);

    const std::unique_ptr<SObject> made(STestShape::m_STestShape.CreateObject());
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(made->GetClassInfo(), &STestShape::m_STestShape);
    const std::unique_ptr<STestShape> typed(STestShape::CreateObject());
    EXPECT_EQ(typed->sides, 3);
}

TEST(Object, ValidationHooksSayYes) {
    EXPECT_EQ(SAssertValidObject(static_cast<const SObject*>(nullptr), __FILE__, __LINE__), 1);
    EXPECT_EQ(SAssertValidObject(static_cast<const SCOMObject*>(nullptr), __FILE__, __LINE__), 1);
    EXPECT_EQ(SAssertValidInterface(nullptr, __FILE__, __LINE__), 1);
}

// --- The chain ------------------------------------------------------------------------------

// The names of the chain's descriptors behind `start`, which must be bounded.
std::string After(const SClassInfo* start) {
    std::string names;
    int steps = 0;
    for (const SClassInfo* info = start->next; info != nullptr && ++steps < 50; info = info->next)
        names += info->className + std::string(" ");
    return names;
}

SClassInfo* Tail() {
    SClassInfo* tail = g_pClassInfo;
    while (tail->next != nullptr)
        tail = tail->next;
    return tail;
}

struct Named : SClassInfo {
    explicit Named(const char* name) : SClassInfo(name, 0, 4, nullptr, nullptr) {}
};

TEST(ClassChain, LosesDescriptorsInAnyOrder) {
    const struct {
        const char* name;
        int order[3];  // which of A, B, C goes
        const char* left[2];
    } rows[] = {
        {"last first", {2, 1, 0}, {"A B ", "A "}},   {"first first", {0, 1, 2}, {"B C ", "C "}},
        {"middle first", {1, 0, 2}, {"A C ", "C "}}, {"middle, last", {1, 2, 0}, {"A C ", "A "}},
        {"first, last", {0, 2, 1}, {"B C ", "B "}},
    };
    const SClassInfo* const tail = Tail();
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        std::optional<Named> infos[3];
        infos[0].emplace("A");
        infos[1].emplace("B");
        infos[2].emplace("C");
        EXPECT_EQ(After(tail), "A B C ");
        infos[row.order[0]].reset();
        EXPECT_EQ(After(tail), row.left[0]);
        infos[row.order[1]].reset();
        EXPECT_EQ(After(tail), row.left[1]);
        {
            const Named late("D");
            EXPECT_EQ(After(tail), row.left[1] + std::string("D "));
        }
        infos[row.order[2]].reset();
        EXPECT_EQ(After(tail), "");
    }
}

TEST(ClassChain, IsEmptyWithoutDescriptors) {
    SClassInfo* const libraryFirst = g_pClassInfo;
    SClassInfo* const libraryTail = Tail();
    g_pClassInfo = nullptr;
    {
        const Named only("A");
        EXPECT_EQ(g_pClassInfo, &only);
    }
    EXPECT_EQ(g_pClassInfo, nullptr);
    {
        Named first("B");
        const Named second("C");
        EXPECT_EQ(g_pClassInfo, &first);
        EXPECT_EQ(After(&first), "C ");
        // Back to the library's chain, whose tail becomes known again when these two leave it.
        libraryTail->next = &first;
        g_pClassInfo = libraryFirst;
    }
    const Named late("D");
    EXPECT_EQ(After(libraryTail), "D ");
}

TEST(ClassChain, IsIndexedByName) {
    EXPECT_EQ(SFindClass("STestSquare"), &STestSquare::m_STestSquare);
    EXPECT_EQ(SFindClass("SObject"), &SObject::m_SObject);
    for (const char* name : {"", "STestSquar", "STestSquares", "sobject"})
        EXPECT_EQ(SFindClass(name), nullptr) << name;
    EXPECT_EQ(SFindClass(nullptr), nullptr);

    auto first = std::make_unique<Named>("Twin");
    const Named second("Twin"), unnamed(nullptr);
    EXPECT_EQ(SFindClass("Twin"), first.get());
    first.reset();
    EXPECT_EQ(SFindClass("Twin"), &second);
    {
        std::vector<std::unique_ptr<Named>> many;  // the index needs a larger block
        for (int i = 0; i < 1000; ++i)
            many.push_back(std::make_unique<Named>("Many"));
        const FailNthAllocation refused(1, true);
        EXPECT_EQ(SFindClass("Many"), many.front().get()) << "without memory";
        EXPECT_EQ(SFindClass("None"), nullptr) << "without memory";
    }
    EXPECT_EQ(SFindClass("Many"), nullptr);
}

TEST(ClassChain, CopiesAreNotRegistered) {
    const SClassInfo* const tail = Tail();
    Named first("A"), second("B");
    {
        const SClassInfo copy(first);
        EXPECT_STREQ(copy.className, "A");
        EXPECT_EQ(copy.next, &second);
        EXPECT_EQ(After(tail), "A B ");
    }
    EXPECT_EQ(After(tail), "A B ");
}

TEST(ClassChain, AssignmentTakesTheLinkToo) {
    const SClassInfo* const tail = Tail();
    std::optional<Named> first("A"), second("B"), third("C");
    static_cast<SClassInfo&>(*first) = *second;
    EXPECT_EQ(After(tail), "B C ");
    third.reset();
    EXPECT_EQ(After(tail), "B ");
    second.reset();  // no longer in the chain
    const Named late("D");
    EXPECT_EQ(After(tail), "B D ");
}

TEST(ClassChain, RingsEndWhenTheirDescriptorsGo) {
    const SClassInfo* const tail = Tail();
    {
        std::optional<Named> first("A"), second("B");
        static_cast<SClassInfo&>(*second) = *first;  // leads to itself
        { const SClassInfo stranger(*first); }
        second.reset();
        EXPECT_EQ(After(tail), "A ");
    }
    EXPECT_EQ(After(tail), "");
    {
        std::optional<Named> a("A"), b("B"), c("C"), d("D");
        static_cast<SClassInfo&>(*d) = *a;  // B C D B ...
        c.reset();
        b.reset();  // two descriptors led to it
        EXPECT_EQ(After(tail), "A A ");
    }
    const Named late("E");
    EXPECT_EQ(After(tail), "E ");
}

TEST(ClassChain, BasesThatFormARingAreWalkedOnce) {
    SClassInfo top("Top", 0, 4, nullptr, nullptr), middle("Middle", 0, 4, &top, nullptr),
        bottom("Bottom", 0, 4, &middle, nullptr), low("Low", 0, 4, &bottom, nullptr);
    top = bottom;  // whose base is middle, whose base is top
    for (const SClassInfo* info : {&top, &middle, &bottom, &low}) {
        EXPECT_EQ(info->IsDerivedFrom(&top), 1);
        EXPECT_EQ(info->IsDerivedFrom(&middle), 1);
        EXPECT_EQ(info->IsDerivedFrom(&SObject::m_SObject), 0);
        EXPECT_EQ(info->IsDerivedFrom(nullptr), 0);
    }
}

TEST(ClassChainThreads, LoadAndUnloadLibraries) {
    const SClassInfo* const tail = Tail();
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 8; ++thread) {
        threads.emplace_back([] {
            for (int round = 0; round < 200; ++round) {
                auto first = std::make_unique<Named>("A");
                auto second = std::make_unique<Named>("B");
                if (round % 2 != 0) first.reset();
                second.reset();
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(After(tail), "");
    const Named late("C");
    EXPECT_EQ(After(tail), "C ");
}

// Two modules, each with a class of one name, which eight threads load and unload out of order. Not
// in a suite for ThreadSanitizer: it does not see the lock of the system's loader, under which one
// thread makes a module's objects where another one's were.
TEST(ClassChain, ModulesComeAndGoEightAtOnce) {
    namespace fs = std::filesystem;
    const SClassInfo* const tail = Tail();
    const fs::path original = BRCORE8_PLUGIN;
    const fs::path folder =
        fs::temp_directory_path() / ("brcore8-modules-" + std::to_string(std::random_device()()));
    ASSERT_TRUE(fs::create_directory(folder));
    std::string paths[2];
    for (int i = 0; i < 2; ++i) {
        const fs::path copy = folder / ("copy" + std::to_string(i) + original.extension().string());
        fs::copy_file(original, copy);
        paths[i] = copy.string();
    }
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 8; ++thread) {
        threads.emplace_back([&paths, thread] {
            for (int round = 0; round < 20; ++round) {
                auto first = std::make_unique<Plugin>(paths[thread % 2].c_str());
                const auto second = std::make_unique<Plugin>(paths[(thread + 1) % 2].c_str());
                if (round % 2 != 0) first.reset();
                EXPECT_NE(second->Find<void(int)>("ThrowInPlugin"), nullptr);
                EXPECT_NE(SFindClass("STestPlugin"), nullptr);
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(After(tail), "");
    EXPECT_EQ(SFindClass("STestPlugin"), nullptr);
    fs::remove_all(folder);
}

}  // namespace
