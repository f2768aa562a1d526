// zip: archives listed, read, extracted and tested.

#include "command.h"
#include "interrupt.h"
#include "output.h"
#include "progress.h"

#include <brcore8/archive/zip_extractor.h>
#include <brcore8/archive/zip_file.h>
#include <brcore8/archive/zip_verifier.h>
#include <brcore8/core/exception.h>

#include <CLI/CLI.hpp>

#include <cstdio>
#include <memory>
#include <string_view>
#include <vector>

namespace tool {
namespace {

struct ZipOptions {
    std::string archive;
    std::string name;
    std::vector<std::string> names;
    std::string folder;
    bool tsv = false;
};

std::string WhyOf(const SException& error) {
    const std::string why = error.GetText();
    return why.empty() ? "it cannot be opened, or is no ZIP archive" : why;
}

// Runs `call` over the archive, and tells of which archive its failures are.
template <typename Call>
int WithArchive(const std::string& path, Call call) {
    try {
        SZipFile archive(path.c_str());
        return call(archive);
    } catch (const SEIOAbortedException&) {
        throw;
    } catch (const SEOutOfMemory&) {
        throw;
    } catch (const SException& error) {
        throw Failure{path, WhyOf(error)};
    }
}

// For people: nothing that moves a terminal's cursor.
std::string Visible(std::string_view text) {
    std::string visible(text);
    for (char& c : visible) {
        if (static_cast<unsigned char>(c) < ' ' || c == '\x7F') c = '?';
    }
    return visible;
}

std::string MethodOf(const SZipEntry& entry) {
    if (entry.GetMethod() == SZipEntry::Stored) return "stored";
    return entry.GetMethod() == SZipEntry::Deflated ? "deflated"
                                                    : std::to_string(entry.GetMethod());
}

// Archives list tens of thousands of these: printf would take most of the time.
std::string ModifiedOf(const SZipEntry& entry) {
    const SCalendarTime time = entry.GetModified();
    std::string text = "0000-00-00 00:00:00";
    const auto put = [&text](std::size_t end, int number) {
        for (; number > 0 && end > 0; number /= 10)
            text[--end] = static_cast<char>('0' + number % 10);
    };
    put(4, time.year);
    put(7, time.month);
    put(10, time.day);
    put(13, time.hour);
    put(16, time.minute);
    put(19, time.second);
    return text;
}

std::string HexOf(std::uint32_t number) {
    std::string text(8, '0');
    for (std::size_t at = 8; number != 0; number >>= 4)
        text[--at] = "0123456789abcdef"[number & 15];
    return text;
}

std::string TsvRow(const SZipEntry& entry) {
    return Row({entry.GetName(), MethodOf(entry), std::to_string(entry.GetCompressedSize()),
                std::to_string(entry.GetSize()), HexOf(entry.GetCrc32()), ModifiedOf(entry),
                entry.GetComment()});
}

std::string TableRow(const SZipEntry& entry) {
    char facts[80];
    std::snprintf(facts, sizeof facts, "%10lu  %10lu  %-8s  ",
                  static_cast<unsigned long>(entry.GetSize()),
                  static_cast<unsigned long>(entry.GetCompressedSize()), MethodOf(entry).c_str());
    std::string row = facts + ModifiedOf(entry) + "  " + Visible(entry.GetName());
    if (!entry.GetComment().IsEmpty()) row += "  (" + Visible(entry.GetComment()) + ")";
    return row + "\n";
}

int List(const ZipOptions& options) {
    return WithArchive(options.archive, [&](SZipFile& archive) {
        Output output;
        if (!options.tsv)
            output.Write("      Size  Compressed  Method    Modified             Name\n");
        BeginStep(static_cast<std::uint64_t>(archive.GetEntryCount()));
        try {
            for (auto entry = archive.begin(); entry != archive.end(); ++entry) {
                StepDone(static_cast<std::uint64_t>(entry.GetIndex()));
                output.Write(options.tsv ? TsvRow(*entry) : TableRow(*entry));
            }
        } catch (const SEZipException&) {
            output.Finish();
            throw;
        }
        output.Finish();
        return int{Done};
    });
}

void CopyEntry(SZipFile& archive, const SZipEntry& entry) {
    Output output;
    std::vector<char> block(256 * 1024);
    const auto stream = archive.Open(entry);
    const std::uint64_t total = entry.GetSize();
    BeginStep(total);
    while (const unsigned long count =
               stream->Read(block.data(), static_cast<unsigned long>(block.size()))) {
        output.Write({block.data(), count});
        StepDone(total - stream->Available());
    }
    output.Finish();
}

int Cat(const ZipOptions& options) {
    return WithArchive(options.archive, [&](SZipFile& archive) {
        bool isFolder = options.name.ends_with('/');
        for (const SZipEntry& entry : archive) {
            const std::string_view name = entry.GetName();
            isFolder = isFolder || name.starts_with(options.name + "/");
            if (name != options.name || entry.IsDirectory()) continue;
            try {
                CopyEntry(archive, entry);
            } catch (const SEZipException& error) {
                throw Failure{Visible(options.name), WhyOf(error)};
            }
            return int{Done};
        }
        throw Failure{Visible(options.name),
                      isFolder ? "it is a folder" : "there is no such entry"};
    });
}

// Tells how far a long work is, and ends it at Ctrl-C.
class ZipStep : public ReadingStep {
public:
    void SetPosition(std::uint64_t position) override {
        ReadingStep::SetPosition(position);
        ThrowIfInterrupted();
    }
};

std::string FindingLine(const SZipFinding& finding) {
    std::string name = Visible(finding.name);
    if (name.empty() && finding.index >= 0) name = "entry " + std::to_string(finding.index + 1);
    return (name.empty() ? "the archive" : name) + ": " + std::string(finding.text.View());
}

// "3 of 10 entries are bad", or what is wrong with the archive as a whole.
std::string Verdict(const SZipFile& archive, int seen, int faults) {
    const std::string count = std::to_string(archive.GetEntryCount());
    if (seen < archive.GetEntryCount())
        return "the directory ends after " + std::to_string(seen) + " of " + count + " entries";
    return std::to_string(faults) + " of " + count +
           (faults == 1 ? " entries is bad" : " entries are bad");
}

int Test(const ZipOptions& options) {
    return WithArchive(options.archive, [&](SZipFile& archive) {
        Output output;
        ZipStep progress;
        SZipVerifier verifier(archive);
        const int faults = verifier.Verify(
            [&](const SZipFinding& finding) { output.Write(FindingLine(finding) + "\n"); },
            &progress);
        if (faults == 0)
            output.Write(std::to_string(archive.GetEntryCount()) + " entries are sound\n");
        output.Finish();
        if (faults == 0) return int{Done};
        throw Failure{options.archive, Verdict(archive, verifier.GetEntriesSeen(), faults)};
    });
}

int Extract(const ZipOptions& options) {
    return WithArchive(options.archive, [&](SZipFile& archive) {
        // Ctrl-C must leave no file half written.
        const DeferInterrupts guard;
        SZipExtractor extractor(archive);
        for (const std::string& name : options.names)
            extractor.Choose(SString(std::string_view(name)));
        ZipStep progress;
        const auto tell = [](const SZipFinding& finding) {
            Say("brcore8: " + FindingLine(finding));
        };
        return extractor.Extract(options.folder.c_str(), tell, &progress) == 0 ? int{Done}
                                                                               : int{Failed};
    });
}

using ZipWork = int (*)(const ZipOptions& options);

// A part of the command: what all have alike, and what `add` adds to it.
template <typename Add>
Action PreparePart(CLI::App& parser, ZipWork work, Add add) {
    auto options = std::make_shared<ZipOptions>();
    parser.add_option("ARCHIVE", options->archive, "A ZIP archive")->required();
    add(*options);
    return [options, work] { return work(*options); };
}

Action PrepareZipList(CLI::App& parser, const Settings&) {
    return PreparePart(parser, List, [&](ZipOptions& options) {
        parser.add_flag("--tsv", options.tsv,
                        "A row an entry: name, method, compressed size, size, CRC-32, modified, "
                        "comment");
    });
}

Action PrepareZipCat(CLI::App& parser, const Settings&) {
    return PreparePart(parser, Cat, [&](ZipOptions& options) {
        parser.add_option("NAME", options.name, "The entry's name; of several, the first")
            ->required();
    });
}

Action PrepareZipExtract(CLI::App& parser, const Settings&) {
    return PreparePart(parser, Extract, [&](ZipOptions& options) {
        parser.add_option("-d,--directory", options.folder, "The folder that the files go under")
            ->type_name("DIR")
            ->required();
        parser.add_option("NAME", options.names, "Only these entries, or what is in these folders")
            ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
        parser.footer(
            "Nothing is written when one of the archive's names is refused: it is\n"
            "absolute or has a drive, a .. part, a backslash or a reserved name; it is a\n"
            "link; it stands twice, differs from another in case alone, or is a file's\n"
            "and a folder's. An entry that fails its check leaves no file, and so does\n"
            "one that Ctrl-C finds unfinished. Files and folders take the times of their\n"
            "entries and, from archives of Unix systems, the permissions that the umask\n"
            "leaves of theirs; a folder's owner keeps all.");
    });
}

Action PrepareZipTest(CLI::App& parser, const Settings&) {
    return PreparePart(parser, Test, [](ZipOptions&) {});
}

constexpr Command Parts[] = {
    {"list", "List the entries", PrepareZipList},
    {"cat", "Print the bytes of an entry", PrepareZipCat},
    {"extract", "Write the entries as files; every name is vetted first", PrepareZipExtract},
    {"test", "Read everything and compare sizes, CRC-32, headers and directory", PrepareZipTest},
};

}  // namespace

Action PrepareZip(CLI::App& parser, const Settings& settings) {
    return PrepareParts(parser, settings, Parts);
}

}  // namespace tool
