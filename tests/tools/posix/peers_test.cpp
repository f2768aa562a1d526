// What other programs say of the same files.
#include "tools/run_command.h"

namespace {

using CommandPeers = CommandTest;

TEST_F(CommandPeers, SayTheSame) {
    const struct {
        const char* name;
        const char* ours;
        const char* theirs;
    } rows[] = {
        {"utf8 to utf16", "$B convert --from utf8 --to utf16 text",
         "iconv -f UTF-8 -t UTF-16LE text"},
        {"utf16 to utf8", "$B convert --from utf16 --to utf8 wide", "cat text"},
        {"utf8 to cyrillic", "$B --code-page 1251 convert --from utf8 --to ansi cyrillic",
         "iconv -f UTF-8 -t CP1251 cyrillic"},
        {"japanese to utf8", "$B --code-page 932 convert --from ansi --to utf8 japanese",
         "iconv -f CP932 -t UTF-8 japanese"},
        {"numbers in order", "$B sort -n names", "LC_ALL=C sort -V names"},
        {"imports of 32 bits", "$B modules $M/real32.exe | sed 1d | cut -f 2",
         "objdump -p $M/real32.exe | sed -n 's/.*DLL Name: //p'"},
        {"imports of 64 bits", "$B modules $M/real64.dll | sed 1d | cut -f 2",
         "objdump -p $M/real64.dll | sed -n 's/.*DLL Name: //p'"},
        {"entries", "$B zip list --tsv a.zip | awk -F '\\t' '{print $4, $3, $5, $1}'",
         "unzip -v a.zip | awk 'NF == 8 && /[0-9]:[0-9]/ {print $1, $3, $7, $8}'"},
        {"entries of another packer", "$B zip list --tsv b.zip | cut -f 1", "unzip -Z1 b.zip"},
        {"stored and deflated bytes",
         "for n in $(unzip -Z1 a.zip '*.rtf'); do $B zip cat a.zip $n; done",
         "unzip -p a.zip '*.rtf'"},
        {"extracted, with times and permissions",
         "$B zip extract a.zip -d ours; find ours -mindepth 1 -printf '%P %m %T@\\n' | sort",
         "unzip -q a.zip -d theirs; find theirs -mindepth 1 -printf '%P %m %T@\\n' | sort"},
        {"extracted of another packer",
         "$B zip extract b.zip -d two && diff -r files two/files && pwd", "pwd"},
    };
    WriteFile("prepare",
              "set -e; umask 022; mkdir -p files/deep/er; cp $D/*.rtf files/deep\n"
              "cp $D/report.txt files/deep/er; chmod 755 files/deep/er/*; chmod 640 files/deep/a*\n"
              "touch -d '2021-03-04 05:06:08' files/deep/er/* files/deep/er files/deep\n"
              "zip -qrX a.zip files -n .txt; cmake -E tar cf b.zip --format=zip files\n"
              "lines() { awk '{ sub(/\\r$/, \"\"); printf \"%s\\r\\n\", $0 }' \"$@\"; }\n"
              "lines $D/*.txt >text; iconv -f UTF-8 -t UTF-16LE text >wide\n"
              "lines $D/edit_control.txt >cyrillic\n"
              "lines $D/editor_japanese.txt | iconv -f UTF-8 -t CP932 >japanese\n"
              "seq 3000 | awk '{print \"part\" $1 * 7919 % 3000 \".txt\"}' >names\n");
    const std::string variables =
        "B=" + Program() + " D=" BRCORE8_DOCUMENTS " M=" BRCORE8_REAL_PROGRAMS " ";
    ASSERT_EQ(std::system((variables + "sh prepare").c_str()), 0);
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const auto answer = [&](const std::string& line) {
            WriteFile("script", line);
            EXPECT_EQ(std::system((variables + "TZ=UTC sh script >answer").c_str()), 0);
            return ReadFile("answer");
        };
        const std::string theirs = answer(row.theirs);
        EXPECT_NE(theirs, "");
        EXPECT_EQ(answer(row.ours), theirs);
    }
}

}  // namespace
