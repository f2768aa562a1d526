// Archives as other programs write them: an archiver, a Java tool, Python with and without seeking
// (a document whose first entry is its stored type, and descriptors behind the entries).

#include <brcore8/archive/zip_file.h>
#include <brcore8/archive/zip_stream.h>
#include <brcore8/archive/zip_verifier.h>
#include <brcore8/core/exception.h>
#include <brcore8/streams/input_file.h>

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace {

std::string Lines() {
    std::string lines;
    for (int i = 0; i < 3000; ++i)
        lines += "line " + std::to_string(i) + "\n";
    return lines;
}

const std::map<std::string, std::string> kCommon = {{"hello.txt", "hello"},
                                                    {"folder/lines.txt", Lines()}};

class RealArchives : public testing::TestWithParam<const char*> {
protected:
    std::string Path() const { return std::string(BRCORE8_REAL_ARCHIVES) + GetParam(); }
};

TEST_P(RealArchives, AreReadByTheirDirectory) {
    SZipFile archive(Path().c_str());
    SZipVerifier verifier(archive);
    EXPECT_EQ(verifier.Verify([](const SZipFinding& finding) { ADD_FAILURE() << finding.text; }),
              0);
    std::size_t found = 0;
    for (const SZipEntry& entry : archive) {
        const auto common = kCommon.find(std::string(entry.GetName().View()));
        if (common == kCommon.end()) continue;
        EXPECT_EQ(SReadAll(*archive.Open(entry)), common->second);
        ++found;
    }
    EXPECT_EQ(found, kCommon.size());
}

// The document's first entry is one that a sequential reader cannot tell the end of.
TEST_P(RealArchives, AreReadInSequence) {
    SInputFile file(Path().c_str());
    SZipInputStream entries(file);
    if (std::string(GetParam()) == "document.odt") {
        EXPECT_THROW(entries.GetNextEntry(), SEZipException);
        return;
    }
    std::size_t found = 0;
    while (const SZipEntry* const entry = entries.GetNextEntry()) {
        const auto common = kCommon.find(std::string(entry->GetName().View()));
        if (common == kCommon.end()) continue;
        EXPECT_EQ(SReadAll(entries), common->second);
        ++found;
    }
    EXPECT_EQ(found, kCommon.size());
}

INSTANTIATE_TEST_SUITE_P(Of, RealArchives,
                         testing::Values("7zip.zip", "java.jar", "python.whl", "document.odt"));

}  // namespace
