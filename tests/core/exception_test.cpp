#include <brcore8/core/cast.h>
#include <brcore8/core/exception.h>
#include <brcore8/core/object.h>
#include <brcore8/core/throw.h>
#include <brcore8/std.h>
#include <gtest/gtest.h>

#include <cstring>
#include <exception>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "support/failing_allocator.h"

// Last: on one system its global names shadow ours.
#include "plugin.h"

namespace {

enum Caught : unsigned {
    kCOM = 1,
    kOutOfMemory = 2,
    kNotImplemented = 4,
    kWinError = 8,
    kConstructor = 16,
    kIO = 32,
    kAborted = 64,
    kEOF = 128,
    kUTF = 256,
    kZip = 512
};

template <class Exception>
unsigned Catches(const std::function<void()>& thrower, unsigned bit) {
    try {
        thrower();
    } catch (const Exception&) {
        return bit;
    } catch (...) {
    }
    return 0;
}

// Which handlers take what `thrower` throws.
unsigned CaughtBy(const std::function<void()>& thrower) {
    return Catches<SECOMException>(thrower, kCOM) | Catches<SEOutOfMemory>(thrower, kOutOfMemory) |
           Catches<SENotImplemented>(thrower, kNotImplemented) |
           Catches<SEWinError>(thrower, kWinError) | Catches<SEConstructor>(thrower, kConstructor) |
           Catches<SEIOException>(thrower, kIO) | Catches<SEIOAbortedException>(thrower, kAborted) |
           Catches<SEEOFException>(thrower, kEOF) | Catches<SEUTFException>(thrower, kUTF) |
           Catches<SEZipException>(thrower, kZip);
}

// All but the constructor's exception are thrown inside the shared library.
TEST(Exception, IsCaughtByItsBasesAndKeepsItsText) {
    const struct {
        const char* name;
        std::function<void()> thrower;
        unsigned caught;
        const char* text;
    } rows[] = {
        {"SException", [] { brcore8::ThrowException("Resetting to invalid mark"); }, 0,
         "Resetting to invalid mark"},
        {"SException, null text", [] { brcore8::ThrowException(nullptr); }, 0, ""},
        {"SECOMException, unknown code", [] { brcore8::ThrowCOMException(0x12345678); }, kCOM, ""},
        {"SEOutOfMemory", [] { brcore8::ThrowOutOfMemory(); }, kCOM | kOutOfMemory,
         "Out of memory.\r"},
        {"SENotImplemented", [] { brcore8::ThrowNotImplemented(); }, kCOM | kNotImplemented,
         "Not implemented.\r"},
        {"SEWinError", [] { brcore8::ThrowWinError(2); }, kWinError, "File not found.\r"},
        {"SEWinError, message with inserts", [] { brcore8::ThrowWinError(107); }, kWinError, ""},
        {"SEConstructor", [] { throw SEConstructor(); }, kConstructor, "Constructor exception"},
        {"SEIOException", [] { brcore8::ThrowIOException("Write failed"); }, kIO, "Write failed"},
        {"SEIOAbortedException", [] { brcore8::ThrowIOAborted(); }, kIO | kAborted,
         "User aborted."},
        {"SEEOFException", [] { brcore8::ThrowEndOfFile(); }, kIO | kEOF, "Unexpected end of file"},
        {"SEUTFException", [] { brcore8::ThrowUTFException(0xE2, 0x41, 0); }, kIO | kUTF,
         "Unexpected UTF encoding!"},
        {"SEZipException", [] { brcore8::ThrowZipException("not a ZIP"); }, kZip, "not a ZIP"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(CaughtBy(row.thrower), row.caught);
        try {
            row.thrower();
        } catch (const SException& error) {
            const char* const text = error.GetText();
            EXPECT_STREQ(text, row.text);
            EXPECT_EQ(error.GetText(), text);
        }
    }
}

// A module that shares nothing with the program but the library.
TEST(Exception, IsCaughtByTypeAcrossAPlugin) {
    ASSERT_EQ(SFindClass("STestPlugin"), nullptr);
    {
        const Plugin plugin(BRCORE8_PLUGIN);
        auto* const throwInPlugin = plugin.Find<void(int)>("ThrowInPlugin");
        auto* const catchInPlugin = plugin.Find<void(void (*)(), char*, unsigned)>("CatchInPlugin");
        ASSERT_TRUE(throwInPlugin != nullptr && catchInPlugin != nullptr);
        const struct {
            unsigned caught;
            const char* text;
            const char* said;
        } rows[] = {
            {0, "thrown by a plugin", "other: thrown by a plugin"},
            {kIO, "thrown by a plugin", "IO: thrown by a plugin"},
            {kIO | kEOF, "Unexpected end of file", "IO: Unexpected end of file"},
            {kCOM | kOutOfMemory, "Out of memory.\r", "other: Out of memory.\r"},
            {kIO | kUTF, "Unexpected UTF encoding!", "IO: Unexpected UTF encoding!"},
        };
        for (int which = 0; which < 5; ++which) {
            SCOPED_TRACE(which);
            EXPECT_EQ(CaughtBy([&] { throwInPlugin(which); }), rows[which].caught);
            try {
                throwInPlugin(which);
            } catch (const SException& error) {
                EXPECT_STREQ(error.GetText(), rows[which].text);
            }
            // The plugin catches what it has thrown itself, through the program's frames.
            static int number;
            static void (*thrower)(int);
            number = which;
            thrower = throwInPlugin;
            char said[100] = "";
            catchInPlugin([] { thrower(number); }, said, sizeof said);
            EXPECT_STREQ(said, rows[which].said);
        }
        char said[100] = "";
        catchInPlugin([] { throw SEEOFException(); }, said, sizeof said);
        EXPECT_STREQ(said, "IO: Unexpected end of file") << "thrown by the program";

        const SClassInfo* const info = SFindClass("STestPlugin");
        ASSERT_NE(info, nullptr);
        EXPECT_EQ(info->schema, 7u);
        const std::unique_ptr<SObject> object(info->CreateObject());
        EXPECT_EQ(SCast<SObject>(object.get()), object.get());
    }
    EXPECT_EQ(SFindClass("STestPlugin"), nullptr) << "it left the chain with its module";
}

TEST(Exception, CopiesTextAndCode) {
    const SEWinError known(5);
    const SEWinError before(known);  // before the text was asked for
    EXPECT_STREQ(known.GetText(), "Access denied.\r");
    SEWinError after(known);
    EXPECT_STREQ(after.GetText(), known.GetText());
    EXPECT_STREQ(before.GetText(), known.GetText());
    after = SEWinError(2);
    EXPECT_EQ(after.GetCode(), 2u);
    EXPECT_STREQ(after.GetText(), "File not found.\r");

    const SEUTFException units(0xE2, 0x82, -1);
    const SEUTFException copy(units);
    EXPECT_EQ(copy.GetFirst(), 0xE2);
    EXPECT_EQ(copy.GetSecond(), 0x82);
    EXPECT_EQ(copy.GetThird(), -1);
    EXPECT_EQ(SEOutOfMemory().GetCode(), static_cast<std::int32_t>(0x8007000E));
    EXPECT_EQ(SENotImplemented().GetCode(), static_cast<std::int32_t>(0x80004001));
}

TEST(Exception, OutlivesTheTextItWasGiven) {
    std::string text = "gone";
    const SException error(text.c_str());
    text = "xxxx";
    EXPECT_STREQ(error.GetText(), "gone");
}

TEST(Exception, HasNoTextWhenMemoryIsShort) {
    const SEWinError error(1223);
    {
        FailNthAllocation fail(1, true);
        // Uses up the blocks that the text could have without new memory.
        std::vector<SString> blocks;
        blocks.reserve(100000);
        try {
            for (;;)
                blocks.emplace_back("of the size of that message");
        } catch (const SEOutOfMemory&) {
        }
        EXPECT_STREQ(error.GetText(), "");
    }
    EXPECT_STREQ(error.GetText(), "Operation canceled by user.\r");
    const std::string large(5000, 'x');  // no pool has a block for it
    const FailNthAllocation fail(1, true);  // a string tries twice
    EXPECT_THROW(brcore8::ThrowIOException(large.c_str()), SEOutOfMemory);
}

TEST(ExceptionThreads, AskOneObject) {
    const SEWinError error(32);
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i) {
        threads.emplace_back([&error] {
            const SEWinError copy(error);
            EXPECT_STREQ(error.GetText(), "Sharing violation.\r");
            EXPECT_STREQ(copy.GetText(), "Sharing violation.\r");
        });
    }
    for (std::thread& thread : threads)
        thread.join();
}

TEST(ExceptionDialog, IsOffUntilSwitchedOn) {
    EXPECT_EQ(SExceptionHasDialog(), 0);
    EXPECT_EQ(SExceptionDialog("file.cpp", 1, "never shown"), 0);
    EXPECT_EQ(SExceptionActivateDialog(1), 0);
    EXPECT_EQ(SExceptionHasDialog(), 1);
    EXPECT_EQ(SExceptionActivateDialog(-7), 1);
    EXPECT_EQ(SExceptionActivateDialog(0), 1);
    EXPECT_EQ(SExceptionHasDialog(), 0);
    EXPECT_EQ(SExceptionActivateDialog(0), 0);
}

TEST(StdBridge, TurnsExceptionsIntoStandardOnes) {
    EXPECT_EQ(SWithStdExceptions([] { return 7; }), 7);
    int value = 0;
    EXPECT_EQ(&SWithStdExceptions([&value]() -> int& { return value; }), &value);
    EXPECT_THROW(SWithStdExceptions([] { throw 5; }), int);
    try {
        SWithStdExceptions([] { brcore8::ThrowEndOfFile(); });
        FAIL() << "nothing was thrown";
    } catch (const std::exception& error) {
        EXPECT_STREQ(error.what(), "Unexpected end of file");
        const auto& bridge = dynamic_cast<const SStdException&>(error);
        EXPECT_THROW(bridge.RethrowOriginal(), SEEOFException);
    }
}

TEST(CheckedMemory, ThrowsWhenRefused) {
    EXPECT_THROW((void)brcore8::Allocate(static_cast<std::size_t>(-1)), SEOutOfMemory);
    void* block = brcore8::Allocate(0);
    ASSERT_NE(block, nullptr);
    block = brcore8::Reallocate(block, 4);
    std::memcpy(block, "abc", 4);
    {
        FailNthAllocation fail(1);
        EXPECT_THROW((void)brcore8::Reallocate(block, 100), SEOutOfMemory);
        EXPECT_TRUE(fail.Triggered());
    }
    block = brcore8::Reallocate(block, 100);
    EXPECT_STREQ(static_cast<const char*>(block), "abc");
    brcore8::Release(block);
    brcore8::Release(nullptr);
}

}  // namespace
