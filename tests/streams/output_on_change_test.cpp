#include <brcore8/streams/output_on_change.h>

#include "streams/support.h"

#include <chrono>

namespace fs = std::filesystem;

namespace {

// Writes the content to the path and returns what Close reports.
int Save(const std::string& path, std::string_view content) {
    SOutputFileOnChange out(path.c_str());
    const std::size_t half = content.size() / 2;
    for (std::size_t i = 0; i < half; ++i)
        out.Write(content[i]);
    out.Write(content.data() + half, static_cast<unsigned long>(content.size() - half));
    out.Flush();
    int changed = -1;
    out.Close(&changed);
    int again = -1;
    out.Close(&again);
    EXPECT_EQ(again, changed);
    EXPECT_EQ(Thrown([&] { out.Write('x'); }), "SEIOException: Write failed");
    return changed;
}

TEST(OutputFileOnChange, RewritesOnlyWhatDiffers) {
    const std::string large(50000, 'x');
    const struct {
        const char* name;
        std::string before;
        std::string after;
    } rows[] = {
        {"one byte different", "abc", "abd"},
        {"longer", "abc", "abcd"},
        {"shorter", "abc", "ab"},
        {"emptied", "abc", ""},
        {"filled", "", "abc"},
        {"differs at the very end", large + "a", large + "b"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const Folder folder;
        const std::string path = folder / "file";
        EXPECT_EQ(Save(path, row.before), 1) << "a new file";
        const auto old = fs::last_write_time(path) - std::chrono::hours(1);
        fs::last_write_time(path, old);
        EXPECT_EQ(Save(path, row.before), 0) << "the same content";
        EXPECT_EQ(fs::last_write_time(path), old);
        EXPECT_EQ(Save(path, row.after), 1);
        EXPECT_EQ(Get(path), row.after);
        EXPECT_NE(fs::last_write_time(path), old);
        EXPECT_EQ(folder.Entries(), 1);
    }
}

TEST(OutputFileOnChange, AbandonedItLeavesTheOldFileAndNoNewOne) {
    const Folder folder;
    Put(folder / "old", "old");
    for (const char* name : {"old", "new"}) {
        SOutputFileOnChange out((folder / name).c_str());
        out.Write("content", 7);
        out.Flush();
        EXPECT_EQ(Get(folder / name), name == "old"s ? "old" : "content") << "new: as it comes";
    }
    EXPECT_EQ(Get(folder / "old"), "old");
    EXPECT_EQ(folder.Entries(), 1);
}

// What happens to the file between the stream's beginning and its end.
TEST(OutputFileOnChange, TheFileMayChangeMeanwhile) {
    const struct {
        const char* name;
        const char* before;  // null: none
        std::function<void(const std::string&)> meanwhile;
        int changed;
    } rows[] = {
        {"deleted", "old", [](const std::string& path) { fs::remove(path); }, 1},
        {"changed to the same", "old", [](const std::string& path) { Put(path, "new"); }, 0},
        {"changed from the same", "new", [](const std::string& path) { Put(path, "other"); }, 1},
        {"read all the while", "old", [](const std::string& path) { EXPECT_EQ(Get(path), "old"); },
         1},
        {"a new one deleted", nullptr, [](const std::string& path) { fs::remove(path); }, 1},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const Folder folder;
        const std::string path = folder / "file";
        if (row.before != nullptr) Put(path, row.before);
        SOutputFileOnChange out(path.c_str());
        out.Write("ne", 2);
        // Not every system lets go of a file that is being written.
        if (row.before == nullptr && !fs::exists(path)) ADD_FAILURE() << "it is made at once";
        try {
            row.meanwhile(path);
        } catch (const fs::filesystem_error&) {
            EXPECT_EQ(row.before, nullptr);
        }
        out.Write('w');
        int changed = -1;
        out.Close(&changed);
        EXPECT_EQ(changed, row.changed);
        if (row.before != nullptr) {
            EXPECT_EQ(Get(path), "new");
        }
    }
}

TEST(OutputFileOnChange, SaysWhatItCannotWrite) {
    const Folder folder;
    const std::string path = folder.Path().string();
    EXPECT_EQ(Thrown([&] { Save(path, "x"); }), "SEIOException: Can't open for writing");
    EXPECT_EQ(Thrown([&] { Save(folder / "no/file", "x"); }),
              "SEIOException: Can't open for writing");
}

// Whatever single operation fails, the file holds the old content or the new one, nothing else
// lies beside it, and success is reported exactly when the new content is there.
TEST(OutputFileOnChange, SurvivesEveryFailure) {
    const std::string before(40000, 'o');
    const std::string after(50000, 'n');
    std::string texts;
    for (int nth = 1;; ++nth) {
        SCOPED_TRACE("operation " + std::to_string(nth));
        const Folder folder;
        const std::string path = folder / "file";
        Put(path, before);
        bool triggered = false;
        std::string thrown;
        {
            SOutputFileOnChange out(path.c_str());
            out.Write(after.data(), 50000);
            FailNthFileOperation fail(nth);
            thrown = Thrown([&] { out.Close(); });
            triggered = fail.Triggered();
        }
        EXPECT_EQ(Get(path), thrown.empty() ? after : before);
        EXPECT_EQ(folder.Entries(), 1);
        texts += thrown + "\n";
        if (!triggered) break;
    }
    for (const char* text : {"Can't open for writing", "Write failed", "Could not trunc file!"}) {
        EXPECT_NE(texts.find(text), std::string::npos) << text << " in\n" << texts;
    }
}

// From the n-th operation on nothing works any more, the tidying neither: as if the machine died.
TEST(OutputFileOnChange, LeavesAWholeFileWhenTheMachineDies) {
    const std::string before(40000, 'o');
    const std::string after(50000, 'n');
    bool replaced = false;
    for (int nth = 1; !replaced; ++nth) {
        SCOPED_TRACE("operation " + std::to_string(nth));
        const Folder folder;
        const std::string path = folder / "file";
        Put(path, before);
        {
            SOutputFileOnChange out(path.c_str());
            out.Write(after.data(), 50000);
            FailNthFileOperation fail(nth, true);
            replaced = Thrown([&] { out.Close(); }).empty();
        }
        EXPECT_EQ(Get(path), replaced ? after : before);
        ASSERT_LT(nth, 100);
    }
}

TEST(OutputFileOnChange, ANewFileThatFailsIsRemoved) {
    const Folder folder;
    int nth = 1;
    for (bool triggered = true; triggered; ++nth) {
        SCOPED_TRACE("operation " + std::to_string(nth));
        FailNthFileOperation fail(nth);
        const std::string thrown = Thrown([&] {
            SOutputFileOnChange out((folder / "new").c_str());
            out.Write("content", 7);
            out.Close();
        });
        triggered = fail.Triggered();
        EXPECT_EQ(folder.Entries(), thrown.empty() ? 1 : 0);
        EXPECT_EQ(thrown.empty(), !triggered);
    }
    EXPECT_GT(nth, 3);
}

// ---- What else bears the file's name ----------------------------------------------------------

TEST(OutputFileOnChange, WritesThroughHardLinks) {
    const Folder folder;
    Put(folder / "file", "old");
    fs::create_hard_link(folder / "file", folder / "other");
    EXPECT_EQ(Save(folder / "file", "new content"), 1);
    EXPECT_EQ(Get(folder / "other"), "new content");
    EXPECT_EQ(Get(folder / "file"), "new content");
}

// What the folder holds of the content: in the file itself, or in the sibling that is left of a
// rewrite that was cut short.
std::vector<std::string> Contents(const Folder& folder) {
    std::vector<std::string> contents;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder.Path()))
        contents.push_back(Get(entry.path().string()));
    return contents;
}

// A file with two names cannot be replaced in one step. Whatever fails, and whether or not anything
// works afterwards, the file is the old one or the new content lies whole in the folder.
TEST(OutputFileOnChange, HardLinkedContentIsNeverLost) {
    const std::string before(40000, 'o');
    const std::string after(30000, 'n');
    for (const bool forGood : {false, true}) {
        int untouched = 0, left = 0;
        bool triggered = true;
        for (int nth = 1; triggered; ++nth) {
            SCOPED_TRACE("operation " + std::to_string(nth) + (forGood ? " and all others" : ""));
            ASSERT_LT(nth, 100);
            const Folder folder;
            Put(folder / "file", before);
            fs::create_hard_link(folder / "file", folder / "other");
            std::string thrown;
            {
                SOutputFileOnChange out((folder / "file").c_str());
                out.Write(after.data(), 30000);
                FailNthFileOperation fail(nth, forGood);
                thrown = Thrown([&] { out.Close(); });
                triggered = fail.Triggered();
            }
            EXPECT_EQ(Get(folder / "file"), Get(folder / "other"));
            const std::vector<std::string> contents = Contents(folder);
            if (thrown.empty()) {
                EXPECT_EQ(Get(folder / "file"), after);
                EXPECT_TRUE(triggered || contents.size() == 2) << contents.size();
            } else if (Get(folder / "file") == before) {
                ++untouched;
                for (const std::string& content : contents)
                    EXPECT_TRUE(forGood || content == before || content == after);
            } else {
                ++left;
                EXPECT_NE(std::find(contents.begin(), contents.end(), after), contents.end());
            }
        }
        EXPECT_GT(untouched, 3);
        EXPECT_GT(left, 1);
    }
}

TEST(OutputFileOnChange, KeepsPermissions) {
    const Folder folder;
    const std::string path = folder / "file";
    Put(path, "old");
    // Systems keep different bits; whatever they made of these must stay.
    fs::permissions(path, fs::perms(0750));
    const fs::perms before = fs::status(path).permissions();
    EXPECT_EQ(Save(path, "new"), 1);
    EXPECT_EQ(fs::status(path).permissions(), before);
}

}  // namespace
