#include "archive/zip_builder.h"
#include "tools/run_command.h"

namespace {

using CommandZipPosix = CommandTest;

// An archive of one entry, nearly 1 GiB of zeros, of which little is meant to be written.
std::string LongArchive() {
    z_stream stream{};
    deflateInit2(&stream, 9, Z_DEFLATED, -15, 8, Z_DEFAULT_STRATEGY);
    std::string zeros(1 << 20, '\0'), block(1 << 16, '\0');
    stream.next_in = reinterpret_cast<Bytef*>(zeros.data());
    stream.avail_in = static_cast<uInt>(zeros.size());
    stream.next_out = reinterpret_cast<Bytef*>(block.data());
    stream.avail_out = static_cast<uInt>(block.size());
    deflate(&stream, Z_FULL_FLUSH);  // what follows refers to nothing before: it can be repeated
    block.resize(stream.total_out);
    deflateEnd(&stream);
    std::string packed;
    for (int i = 1; i < 1024; ++i)
        packed += block;
    ZipBuilder zip;
    zip.Add({.name = "long", .data = packed});
    std::string bytes = zip.Bytes();
    for (const std::size_t method : {zip.LocalAt(0) + 8, zip.HeadAt(0) + 10}) {
        SetNumber(bytes, method, 8, 2);
        SetNumber(bytes, method + 14, 1023u << 20, 4);
    }
    return bytes;
}

TEST_F(CommandZipPosix, InterruptLeavesNoUnfinishedFile) {
    WriteFile("long.zip", LongArchive());
    WriteFile("script", Program() +
                            " zip extract long.zip -d out 2>err &\n"
                            "until ls out/.brcore8* >/dev/null 2>&1; do sleep 0.01; done\n"
                            "kill -INT $!; wait $!; echo $? >status");
    ASSERT_EQ(std::system("timeout 60 sh script"), 0);
    EXPECT_EQ(ReadFile("status"), "130\n");
    EXPECT_EQ(ReadFile("err"), "");
    EXPECT_TRUE(std::filesystem::is_empty("out"));
}

}  // namespace
