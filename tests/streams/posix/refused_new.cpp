// Streams that hold text in strings of the standard library say SEOutOfMemory when those get none.
#include <brcore8/streams/binary_stream.h>
#include <brcore8/streams/encodings.h>
#include <brcore8/streams/find.h>
#include <brcore8/streams/input_buffer.h>
#include <brcore8/streams/output_memory.h>
#include <brcore8/streams/output_on_change.h>

#include "streams/support.h"

#include "failing_new.h"

namespace {

using Format = SAbstractIO::SMultiFormatSupport::Format;

TEST(RefusedNew, ReadersAndWritersThrow) {
    const Folder folder;
    const std::string pattern = folder / "*";
    Put(folder / "file", "x");
    const std::string text = std::string(3000, 'x') + "\n";
    const SString line(std::string_view(text).substr(0, 3000));
    std::string wide;
    for (const char byte : text)
        (wide += byte) += '\0';
    // Lengths of two bytes: this one is that of the text with a zero byte.
    const std::string binary = "\xFF\xB9\x0B"s + std::string(3000, 'x') + '\0';
    const auto source = [](const std::string& bytes) {
        return SInputBuffer(bytes.data(), static_cast<int>(bytes.size()));
    };
    const auto readLine = [&](const std::string& bytes, Format format) -> std::size_t {
        SInputBuffer in = source(bytes);
        return SInputStringStream(in, 3, format, SKnownFormat()).ReadLn().View().size();
    };
    // What comes out at last; nothing is expected while memory is refused, which would need some.
    const struct {
        const char* name;
        std::function<std::size_t()> run;
        std::size_t result;
    } rows[] = {
        {"everything",
         [&] {
             SInputBuffer in = source(text);
             return SReadAll(in).size();
         },
         3001},
        {"a line of bytes", [&] { return readLine(text, Format::FormatAnsi); }, 3000},
        {"a line of UTF-8", [&] { return readLine(text, Format::FormatUtf8); }, 3000},
        {"a line of UTF-16", [&] { return readLine(wide, Format::FormatUtf16); }, 3000},
        {"UTF-16 written",
         [&] {
             SOutputGlobal out;
             SOutputStringStream(out, Format::FormatUtf16).Write(line);
             return std::size_t{out.UsedSize()};
         },
         6000},
        {"a string of a binary stream",
         [&] {
             SInputBuffer in = source(binary);
             return SInputBinaryStream(in).ReadUtf8().size();
         },
         3000},
        {"the entries of a folder",
         [&] {
             SFileFind find;
             return static_cast<std::size_t>(find.FindFile(pattern.c_str()));
         },
         1},
    };
    for (const auto& row : rows) {
        std::size_t result = 0;
        RefuseEachNew(
            row.name, [&] { result = row.run(); }, [](bool) {});
        EXPECT_EQ(result, row.result) << row.name;
    }
}

// Without memory for its own parts the object has nothing to write to, and says that instead.
TEST(RefusedNew, ARewriteIsWholeOrNotAtAll) {
    const Folder folder;
    const std::string path = folder / "file";
    const SString target(path.c_str());
    for (int nth = 1;; ++nth) {
        SCOPED_TRACE(nth);
        ASSERT_LT(nth, 100);
        Put(path, "old");
        bool refused = true, thrown = false;
        {
            const FailNthNew fail(nth, true);
            try {
                SOutputFileOnChange out(target);
                out.Write("new!", 4);
                out.Close();
            } catch (const SEOutOfMemory&) {
                thrown = true;
            } catch (const SEIOException&) {
                thrown = true;
            }
            refused = fail.Triggered();
        }
        EXPECT_TRUE(refused || !thrown);
        EXPECT_EQ(Get(path), thrown ? "old" : "new!");
        EXPECT_EQ(folder.Entries(), 1);
        if (!refused) break;
    }
}

}  // namespace
