#include <brcore8/streams/input_buffer.h>
#include <brcore8/streams/output_memory.h>

#include "streams/support.h"
#include "support/failing_allocator.h"

namespace {

TEST(InputBuffer, ReadsMarksAndSkips) {
    SInputBuffer in("0123456789", 10);
    EXPECT_EQ(in.Available(), 10u);
    EXPECT_EQ(in.Read(), '0');
    in.Mark(1);
    char block[4];
    EXPECT_EQ(in.Read(block, 4), 4u);
    EXPECT_EQ(std::string(block, 4), "1234");
    in.Reset();
    EXPECT_EQ(in.Skip(3), 3u);
    EXPECT_EQ(in.Available(), 0u) << "a skip exhausts the buffer";
    EXPECT_EQ(in.Read(), -1);
    EXPECT_EQ(in.Read(block, 4), 0u);
    in.Reset();
    EXPECT_EQ(in.Skip(100), 9u);
    in.Reset();
    EXPECT_EQ(SReadAll(in), "123456789");
    EXPECT_TRUE(in.IsEOF());
    in.Close();
    in.Reset();
    EXPECT_EQ(in.Read(), -1);
}

TEST(InputBuffer, TakesNoLengthForEmpty) {
    for (const int length : {0, -1}) {
        SInputBuffer in("x", length);
        EXPECT_TRUE(in.IsEOF()) << length;
        EXPECT_EQ(in.Read(), -1) << length;
    }
}

SHGlobal BlockOf(std::string_view text) {
    SHGlobal block = SHGlobal::Allocate(text.size());
    std::memcpy(block.Lock(), text.data(), text.size());
    block.Unlock();
    return block;
}

TEST(InputGlobal, ReadsABlockOrItsBeginning) {
    const SHGlobal block = BlockOf("global");
    SInputGlobal whole(block);
    EXPECT_EQ(SReadAll(whole), "global");
    SInputGlobal part(block, 4);
    EXPECT_EQ(SReadAll(part), "glob");
    SInputGlobal more(block, 400);
    EXPECT_EQ(SReadAll(more), "global") << "never more than there is";
    SInputGlobal none(SHGlobal(block).Detach(), 0);
    EXPECT_EQ(SReadAll(none), "");
    SInputGlobal taken(SHGlobal(block).Detach());
    EXPECT_EQ(SReadAll(taken), "global");
    SInputGlobal null(static_cast<void*>(nullptr));
    EXPECT_EQ(null.Read(), -1);
}

TEST(Global, CopiesMovesAndResizes) {
    SHGlobal block = BlockOf("abc");
    SHGlobal copy = block;
    EXPECT_NE(copy.Handle(), block.Handle());
    copy.Resize(5);
    EXPECT_EQ(copy.Size(), 5u);
    EXPECT_EQ(std::string_view(static_cast<char*>(copy.Lock()), 5), "abc\0\0"sv);
    copy.Unlock();
    void* const handle = block.Handle();
    copy = std::move(block);
    EXPECT_EQ(copy.Handle(), handle);
    EXPECT_EQ(block.Handle(), nullptr);
    copy = *&copy;
    EXPECT_EQ(copy.Size(), 3u);
    copy.Lock();
    copy.Free();
    EXPECT_EQ(copy.Size(), 0u);
    EXPECT_EQ(copy.Lock(), nullptr);
}

// ---- Output -----------------------------------------------------------------------------------

TEST(OutputGlobal, GrowsByUnitsAndEndsExact) {
    SOutputGlobal out;
    EXPECT_EQ(out.BlockSize(), 8192u);
    for (int i = 0; i < 8192; ++i)
        out.Write(i);
    EXPECT_EQ(out.BlockSize(), 8192u);
    out.Write(7);
    EXPECT_EQ(out.BlockSize(), 16384u);
    EXPECT_EQ(out.UsedSize(), 8193u);
    SHGlobal block(out.Detach());
    EXPECT_EQ(block.Size(), 8193u);
    EXPECT_EQ(out.UsedSize(), 0u);
    EXPECT_EQ(out.Detach(), nullptr);
}

TEST(OutputGlobal, RoundsBlocksUp) {
    const std::string bytes(20000, 'x');
    SOutputGlobal out;
    EXPECT_EQ(out.Write(bytes.data(), 20000), 20000u);
    EXPECT_EQ(out.BlockSize(), 24576u);
    EXPECT_EQ(out.Write(bytes.data(), 4576), 4576u);
    EXPECT_EQ(out.BlockSize(), 24576u);
    SInputGlobal in(out.Detach());
    EXPECT_EQ(SReadAll(in), bytes + bytes.substr(0, 4576));
}

TEST(OutputGlobal, KeepsTheWholeBlockWhenNothingWasWritten) {
    SOutputGlobal out;
    EXPECT_EQ(SHGlobal(out.Detach()).Size(), 8192u);
    out.Write('x');
    EXPECT_EQ(out.UsedSize(), 1u) << "a detached stream begins anew";
    out.Close();
    out.Close();
    EXPECT_EQ(out.UsedSize(), 0u);
}

TEST(OutputGlobal, WritesOverAnAttachedBlock) {
    SOutputGlobal out;
    out.Attach(BlockOf("abcdef").Detach());
    out.Write("XY", 2);
    EXPECT_EQ(out.UsedSize(), 2u);
    SInputGlobal in(out.Detach());
    EXPECT_EQ(SReadAll(in), "XY");
}

TEST(OutputGlobal, StaysWhatItWasWithoutMemory) {
    SOutputGlobal out;
    const std::string bytes(8192, 'x');
    out.Write(bytes.data(), 8192);
    {
        FailNthAllocation fail(1, true);
        EXPECT_EQ(Thrown([&] { out.Write('y'); }), "SEOutOfMemory");
        EXPECT_EQ(Thrown([&] { out.Write("yy", 2); }), "SEOutOfMemory");
        EXPECT_EQ(Thrown([] { SOutputGlobal none; }), "SEOutOfMemory");
    }
    EXPECT_EQ(Thrown([&] { out.Write("yy", static_cast<unsigned long>(-1) - 5); }),
              "SEOutOfMemory");
    out.Write("z", 1);
    SInputGlobal in(out.Detach());
    EXPECT_EQ(SReadAll(in), bytes + "z");
}

TEST(OutputGlobal, AThirtyMegabyteBlockGrowsInProportion) {
    SOutputGlobal out;
    const std::string bytes(1000, 'x');
    int moves = 0;
    for (int i = 0; i < 30000; ++i) {
        const unsigned long before = out.BlockSize();
        out.Write(bytes.data(), 1000);
        moves += out.BlockSize() != before;
    }
    EXPECT_EQ(out.UsedSize(), 30000000u);
    EXPECT_LT(moves, 200);
}

}  // namespace
