#include <brcore8/core/module.h>
#include <brcore8/platform/resources.h>
#include <brcore8/strings/string.h>
#include <gtest/gtest.h>

namespace {

HINSTANCE Handle(std::uintptr_t value) {
    return reinterpret_cast<HINSTANCE>(value);
}

TEST(ModuleState, IsInitialisedOnce) {
    SModuleState state;
    EXPECT_EQ(state.IsInitialized(), 0);
    EXPECT_EQ(state.GetInstance(), nullptr);
    EXPECT_EQ(state.GetResInstance(), nullptr);
    EXPECT_EQ(state.GetLangResInstance(), nullptr);
    state.Init(Handle(0x10000));
    state.Init(Handle(0x20000));
    EXPECT_NE(state.IsInitialized(), 0);
    EXPECT_EQ(state.GetInstance(), Handle(0x10000));
    EXPECT_EQ(state.GetResInstance(), Handle(0x10000));
    EXPECT_EQ(state.GetLangResInstance(), nullptr);
}

TEST(ModuleState, ResourceHandlesAreExchanged) {
    SModuleState state;
    EXPECT_EQ(state.SetResInstance(Handle(0x10000)), nullptr);
    EXPECT_EQ(state.SetResInstance(Handle(0x20000)), Handle(0x10000));
    EXPECT_EQ(state.SetResInstance(nullptr), nullptr);
    EXPECT_EQ(state.GetResInstance(), Handle(0x20000));
    EXPECT_EQ(state.SetLangResInstance(Handle(0x30000)), nullptr);
    EXPECT_EQ(state.SetLangResInstance(Handle(0x40000)), Handle(0x30000));
    EXPECT_EQ(state.SetLangResInstance(nullptr), nullptr);
    EXPECT_EQ(state.GetLangResInstance(), Handle(0x40000));
    EXPECT_EQ(state.IsInitialized(), 0);
}

TEST(ModuleState, TheLibrarysOwnIsCurrentUntilAnotherIs) {
    SModuleState* const own = SCoreGetModuleState();
    EXPECT_NE(SGetCoreInstance(), nullptr);
    EXPECT_NE(SGetCoreInstance(), SThisModule());
    EXPECT_EQ(own->GetInstance(), SGetCoreInstance());
    EXPECT_EQ(SGetModuleState(), own);
    EXPECT_EQ(brcore8::ResourceInstance(), SGetCoreInstance());
    SModuleState program;
    EXPECT_EQ(SSetModuleState(&program), own);
    EXPECT_EQ(SGetModuleState(), &program);
    EXPECT_EQ(brcore8::ResourceInstance(), SGetCoreInstance());
    program.Init(SThisModule());
    EXPECT_EQ(brcore8::ResourceInstance(), SThisModule());
    EXPECT_EQ(SSetModuleState(nullptr), &program);
    EXPECT_EQ(SGetModuleState(), own);
}

TEST(ModuleState, StringsComeFromTheModuleThatIsCurrent) {
    EXPECT_STREQ(SString(SGetCoreInstance(), 114), "Software\\Quorbit\\Brindle 8\\");
    EXPECT_STREQ(SString(SThisModule(), 7), "seven");
    EXPECT_STREQ(SString(SThisModule(), 115), "");
    SString text;
    EXPECT_EQ(text.LoadString(115), 1);
    EXPECT_STREQ(text, "brgrid8.dll");
    SModuleState program;
    program.Init(SThisModule());
    SSetModuleState(&program);
    EXPECT_EQ(text.LoadString(7), 1);
    EXPECT_STREQ(text, "seven");
    EXPECT_EQ(text.LoadString(115), 0);
    EXPECT_STREQ(text, "");
    SSetModuleState(nullptr);
}

}  // namespace
