#include <brcore8/archive/zip_extractor.h>

#include <sys/stat.h>

#include "archive/zip_builder.h"
#include "streams/support.h"

namespace {

TEST(ZipPermissions, AreTheEntrysLessWhatNewFilesDoNotGet) {
    constexpr std::uint16_t unixSystem = 3 << 8;
    const struct {
        const char* name;
        std::uint16_t madeBy;
        std::uint32_t kept;
        mode_t files, folders;  // what a file and a folder of such an entry have in the end
    } rows[] = {
        {"program", unixSystem, 0755, 0755, 0755},
        {"for all", unixSystem, 0777, 0755, 0755},
        {"private", unixSystem, 0600, 0600, 0700},
        {"read-only", unixSystem, 0444, 0444, 0744},
        {"set-user", unixSystem, 07755, 0755, 0755},
        {"not kept", unixSystem, 0, 0644, 0755},
        {"another system's", 0, 0777, 0644, 0755},
    };
    const mode_t mask = umask(022);
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        ZipBuilder zip;
        for (const char* name : {"dir/", "dir/file", "file"})
            zip.Add({.name = name, .external = row.kept << 16, .madeBy = row.madeBy});
        Folder folder;
        Put(folder / "a.zip", zip.Bytes());
        SZipFile archive((folder / "a.zip").c_str());
        EXPECT_EQ(SZipExtractor(archive).Extract((folder / "out").c_str()), 0);
        struct stat facts;
        for (const char* name : {"out/file", "out/dir/file", "out/dir"}) {
            ASSERT_EQ(lstat((folder / name).c_str(), &facts), 0);
            EXPECT_EQ(facts.st_mode & 07777, S_ISDIR(facts.st_mode) ? row.folders : row.files);
        }
    }
    umask(mask);
}

}  // namespace
