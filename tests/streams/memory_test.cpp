// Every stream that asks for memory is refused its first, second, third ... allocation, and all
// later ones.
#include <brcore8/streams/encodings.h>
#include <brcore8/streams/find.h>
#include <brcore8/streams/global.h>
#include <brcore8/streams/input_buffer.h>
#include <brcore8/streams/input_file.h>
#include <brcore8/streams/output_filters.h>
#include <brcore8/streams/output_memory.h>
#include <brcore8/streams/output_on_change.h>

#include "streams/support.h"
#include "support/failing_allocator.h"

namespace {

using Format = SAbstractIO::SMultiFormatSupport::Format;

void ReadLines(const std::string& bytes, Format format) {
    SInputBuffer source(bytes.data(), static_cast<int>(bytes.size()));
    SInputStringStream lines(source, 3, format, SKnownFormat());
    for (const int length : {6000, 3000})
        EXPECT_EQ(lines.ReadLn().LengthByte(), length);
}

// Blocks this large come from the heap and not from a pool that has one left.
TEST(StreamMemory, RefusedItThrowsAndLosesNothing) {
    const std::string text = std::string(6000, 'x') + "\n" + std::string(3000, 'y');
    std::string wide;
    for (const char byte : text)
        (wide += byte) += '\0';
    const SString line(std::string_view(text).substr(0, 6000));
    const Folder folder;
    const std::string path = folder / "file";
    const struct {
        const char* name;
        std::function<void()> run;
    } rows[] = {
        {"a line of a file",
         [&] {
             SSeekableInputANSIFile file(path.c_str());
             EXPECT_EQ(file.ReadLn().LengthByte(), 6000);
         }},
        {"lines of 8-bit text", [&] { ReadLines(text, Format::FormatAnsi); }},
        {"lines of UTF-16", [&] { ReadLines(wide, Format::FormatUtf16); }},
        {"lines of UTF-8", [&] { ReadLines(text, Format::FormatUtf8); }},
        {"any text as ANSI",
         [&] {
             Source source(wide);
             SInputForcedANSIStream in(source, 3, Format::FormatUtf16, SKnownFormat());
             EXPECT_EQ(SReadAll(in).size(), 9002u);
         }},
        {"text written in every format",
         [&] {
             for (const Format format : {Format::FormatAnsi, Format::FormatOem, Format::FormatUtf16,
                                         Format::FormatUtf8}) {
                 SOutputGlobal out;
                 SOutputStringStream(out, format).WriteLn(line);
                 EXPECT_EQ(out.UsedSize(), format == Format::FormatUtf16 ? 12004u : 6002u);
             }
         }},
        {"a buffered sink",
         [&] {
             Sink sink;
             SOutputBufferStream out(sink, 300);
             out.Write(text.data(), 200);
             out.Close();
             EXPECT_EQ(sink.bytes.size(), 200u);
         }},
        {"a block and its copy",
         [&] {
             SHGlobal block = SHGlobal::Allocate(100);
             SHGlobal copy = block;
             copy.Resize(5000);
             EXPECT_EQ(block.Size() + copy.Size(), 5100u);
         }},
        {"a rewrite",
         [&] {
             SOutputFileOnChange out(path.c_str());
             out.Write((text + "!").data(), 9002);
             int changed = 0;
             out.Close(&changed);
             EXPECT_EQ(changed, 1);
         }},
        {"the entries of a folder",
         [&] {
             SFileFind find;
             EXPECT_NE(find.FindFile((folder / "*").c_str()), 0);
             EXPECT_STREQ(find.GetFileName(), "file");
         }},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        for (int nth = 1; nth < 100; ++nth) {
            Put(path, text);
            FailNthAllocation fail(nth, true);  // a string tries twice
            const std::string thrown = Thrown(row.run);
            if (thrown.empty()) {
                EXPECT_FALSE(fail.Triggered()) << nth;
                break;
            }
            EXPECT_EQ(thrown, "SEOutOfMemory") << nth;
            EXPECT_EQ(Get(path), text) << nth;
            EXPECT_EQ(folder.Entries(), 1);
            EXPECT_LT(nth, 99);
        }
    }
}

}  // namespace
