#include <brcore8/core/module.h>
#include <brcore8/core/trace.h>
#include <brcore8/core/version.h>
#include <brcore8/platform/resources.h>
#include <gtest/gtest.h>

#include <climits>
#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

#include "support/failing_allocator.h"

namespace {

// Sets a mask for as long as it lives.
class MaskScope {
public:
    MaskScope(std::int32_t group, std::uint32_t mask) : group_(group) {
        EXPECT_EQ(SSetTraceMask(group, mask), 1);
    }
    ~MaskScope() { EXPECT_EQ(SSetTraceMask(group_, 0), 1); }

private:
    std::int32_t group_;
};

TEST(Trace, ComparesTheLowBitsWithTheMaskOfTheGroup) {
    const MaskScope none(7, 0), zero(0, 2), minus(-1, 16), high(INT_MAX / 32, 1);
    const struct {
        const char* name;
        int category, level, expected;
    } rows[] = {
        {"bit not in the mask", 1, 0, 0},
        {"bit in the mask", 2, 0, 1},
        {"one of two bits in the mask", 3, 0, 1},
        {"level above", 2, 1, 0},
        {"highest level", 2, INT_MAX, 0},
        {"lowest level", 2, INT_MIN, 1},
        {"no bits", 0, 0, 0},
        {"no bits in another group", 64, 0, 0},
        {"group without a mask", 66, 0, 0},
        {"group whose mask was taken out", 7 * 32 + 1, 0, 0},
        {"cut towards zero: -30 is group 0", -30, 0, 1},
        {"negative group", -48, 0, 1},
        {"greatest category", INT_MAX, 0, 1},
        {"least category", INT_MIN, 0, 0},
    };
    for (const auto& row : rows)
        EXPECT_EQ(STrace(row.category, row.level), row.expected) << row.name;
}

TEST(Trace, IsSilentWithoutMasks) {
    for (const int category : {INT_MIN, -33, -1, 0, 1, 31, 32, 33, INT_MAX})
        EXPECT_EQ(STrace(category, 0), 0) << category;
}

TEST(Trace, MasksAreReadFromText) {
    const struct {
        const char* name;
        const char* text;
        int count;
        std::uint32_t zero, minusFive;
    } rows[] = {
        {"null", nullptr, 0, 0, 0},
        {"empty", "", 0, 0, 0},
        {"two", "0=2;-5=0x1F", 2, 2, 31},
        {"other separators", " 0=2,\t-5=3 ", 2, 2, 3},
        {"later ones replace", "0=2;0=4", 2, 4, 0},
        {"all bits", "0=4294967295;-5=0xffffffff", 2, 0xFFFFFFFF, 0xFFFFFFFF},
        {"too large", "0=4294967296;2147483648=1;-5=1", 1, 0, 1},
        {"half a part", "0;0=;=2;0=2x;0==2;0=-1;0x0=1;0=0x;-5=1", 1, 0, 1},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(SReadTraceMasks(row.text), row.count);
        EXPECT_EQ(SGetTraceMask(0), row.zero);
        EXPECT_EQ(SGetTraceMask(-5), row.minusFive);
        EXPECT_EQ(SReadTraceMasks("0=0;-5=0"), 2);
    }
}

TEST(Trace, WithoutMemoryTheTableStays) {
    const MaskScope kept(1, 1);
    {
        FailNthAllocation fail(1);
        EXPECT_EQ(SSetTraceMask(2, 1), 0);
        EXPECT_TRUE(fail.Triggered());
    }
    EXPECT_EQ(SGetTraceMask(1), 1u);
    EXPECT_EQ(SGetTraceMask(2), 0u);
}

TEST(TraceThreads, MasksChangeWhileOthersTrace) {
    const MaskScope kept(0, 1);
    std::vector<std::jthread> threads;
    for (int i = 1; i <= 4; ++i) {
        threads.emplace_back([i] {
            for (int round = 0; round < 2000; ++round) {
                SSetTraceMask(i, 1);
                EXPECT_EQ(STrace(1, 0), 1);
                EXPECT_EQ(STrace(32 * i + 1, 0), 1);
                SSetTraceMask(i, 0);
            }
        });
    }
}

TEST(Trace, HooksDoNothing) {
    EXPECT_EQ(STraceEx(1, 2, 3, 4), 0);
    EXPECT_EQ(SAssert(0, INT_MIN), 0);
    STraceAssert(0, 1, 2);
    STraceWarning(0, 1, 2);
    SWarning(0, 1, 2);
}

const int constant = 7;  // in memory that is not writable

TEST(Probes, AddressesAndStrings) {
    int variable = 0;
    auto* const lowest = reinterpret_cast<const char*>(std::uintptr_t{8});
    EXPECT_EQ(SIsValidAddress(nullptr, 0, 0), 0);
    EXPECT_EQ(SIsValidAddress(lowest, 1, 0), 0);
    EXPECT_EQ(SIsValidAddress(&variable, sizeof variable, 0), 1);
    EXPECT_EQ(SIsValidAddress(&variable, sizeof variable, 1), 1);
    EXPECT_EQ(SIsValidAddress(&variable, UINT_MAX, 0), 0);
    EXPECT_EQ(SIsValidAddress(&constant, sizeof constant, 0), 1);
    EXPECT_EQ(SIsValidAddress(&constant, sizeof constant, 1), 0);
    EXPECT_EQ(SIsValidAddress(reinterpret_cast<const void*>(UINTPTR_MAX - 4), 64, 0), 0);

    EXPECT_EQ(SIsValidString(static_cast<const char*>(nullptr), 5), 0);
    EXPECT_EQ(SIsValidString(static_cast<const wchar_t*>(nullptr), 5), 0);
    EXPECT_EQ(SIsValidString("text", 2), 1);
    EXPECT_EQ(SIsValidString("text", -1), 1);
    EXPECT_EQ(SIsValidString(L"text", INT_MAX), 1);
    EXPECT_EQ(SIsValidString(lowest, 5), 0);
    EXPECT_EQ(SIsValidString(reinterpret_cast<const wchar_t*>(lowest), 5), 0);
}

// --- The library's start-up ------------------------------------------------------------------

TEST(StartUp, RecordsTheLibraryAndItsPlatform) {
    EXPECT_EQ(SCoreAttachCount(), 1);
    EXPECT_EQ(SGetCoreInstance(), SCoreGetModuleState()->GetInstance());
    EXPECT_GT(SMajorVersion(), 2u);
    EXPECT_TRUE(SPlatform() == SPlatformWindows || SPlatform() == SPlatformPosix);
    const std::string report = SVersionReport();
    const std::string version =
        std::to_string(SMajorVersion()) + "." + std::to_string(SMinorVersion());
    EXPECT_NE(report.find(version), std::string::npos) << report;
    EXPECT_NE(report.find(std::to_string(SBuildNumber())), std::string::npos) << report;
}

TEST(StartUp, LoadingReadsTheEnvironmentAndCounts) {
    static char setting[] = "BRCORE8_TRACE=3=4", unset[] = "BRCORE8_TRACE=";
    putenv(setting);
    EXPECT_EQ(CoreLibMain(SGetCoreInstance(), 1, nullptr), 1);
    EXPECT_EQ(SCoreAttachCount(), 2);
    EXPECT_EQ(STrace(3 * 32 + 4, 0), 1);
    EXPECT_EQ(CoreLibMain(SGetCoreInstance(), 2, nullptr), 1);
    EXPECT_EQ(CoreLibMain(SGetCoreInstance(), 0, nullptr), 1);
    EXPECT_EQ(SCoreAttachCount(), 1);
    EXPECT_EQ(STrace(3 * 32 + 4, 0), 1);
    putenv(unset);
    SSetTraceMask(3, 0);
}

TEST(StartUp, TheLastUnloadingEmptiesTheTraceTable) {
    SSetTraceMask(3, 4);
    CoreLibMain(SGetCoreInstance(), 0, nullptr);
    EXPECT_EQ(SGetTraceMask(3), 0u);
    CoreLibMain(SGetCoreInstance(), 1, nullptr);
    EXPECT_EQ(SCoreAttachCount(), 1);
}

TEST(StartUp, FunctionsAreFoundByTheirPlainNames) {
    for (const char* name :
         {"CoreLibMain", "STrace", "STraceEx", "SAssert", "STraceAssert", "STraceWarning",
          "SWarning", "SIsValidAddress", "SExceptionDialog", "SExceptionActivateDialog",
          "SExceptionHasDialog", "SGetCoreInstance", "SMajorVersion", "SMinorVersion", "SPlatform",
          "SBuildNumber", "SGetProcAddress"})
        EXPECT_NE(SGetProcAddress(nullptr, name), nullptr) << name;
    using Trace = int(BRCORE8_STDCALL*)(int, int, int, int);
    EXPECT_EQ(reinterpret_cast<Trace>(SGetProcAddress(nullptr, "STraceEx"))(1, 2, 3, 4), 0);
    EXPECT_EQ(SGetProcAddress(nullptr, nullptr), nullptr);
    EXPECT_EQ(SGetProcAddress(nullptr, "SNoSuchFunction"), nullptr);
    EXPECT_EQ(SGetProcAddress("no such module", "STrace"), nullptr);
}

}  // namespace
