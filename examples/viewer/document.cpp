#include "document.h"

#include <brcore8/archive/zip_file.h>
#include <brcore8/core/exception.h>
#include <brcore8/streams/encodings.h>
#include <brcore8/streams/input_buffer.h>
#include <brcore8/streams/input_file.h>
#include <brcore8/strings/string_buffer.h>
#include <brcore8/text/rtf_document.h>

#include <string>
#include <string_view>

namespace viewer {

namespace {

using Format = SAbstractIO::SMultiFormatSupport::Format;

// More would fit no edit field.
constexpr std::uint64_t kLargest = 512u << 20;

// All that a stream gives, as it stands.
std::string ReadAll(SInputStream& stream, std::uint64_t total, const Progress& progress) {
    std::string bytes;
    char block[1 << 16];
    while (const unsigned long count = stream.Read(block, sizeof block)) {
        bytes.append(block, count);
        if (bytes.size() > kLargest) throw SEIOException("The file is too large to show");
        if (!progress(bytes.size(), total)) throw SEIOAbortedException();
    }
    return bytes;
}

SString ConvertText(std::string_view bytes, Format format) {
    SInputBuffer source(bytes.data(), static_cast<int>(bytes.size()));
    SInputForcedANSIStream text(source, 3, format, SKnownFormat());
    std::string result;
    char block[1 << 14];
    while (const unsigned long count = text.Read(block, sizeof block))
        result.append(block, count);
    return SString(result.data(), static_cast<int>(result.size()));
}

// UTF-8 without a mark is taken for what it is unless its bytes say otherwise.
void FillText(Document& document, std::string_view bytes) {
    document.kind = Document::Kind::Text;
    if (bytes.starts_with("\xFF\xFE")) {
        document.format = "UTF-16";
        document.text = ConvertText(bytes.substr(2), SInputMultiFormat::FormatUtf16);
        return;
    }
    const bool isMarked = bytes.starts_with("\xEF\xBB\xBF");
    try {
        document.text = ConvertText(bytes.substr(isMarked ? 3 : 0), SInputMultiFormat::FormatUtf8);
        document.format = "UTF-8";
    } catch (const SEUTFException&) {
        document.text = ConvertText(bytes, SInputMultiFormat::FormatAnsi);
        document.format = "8-bit";
    }
}

void FillDocument(Document& document, const std::string& bytes) {
    document.size = bytes.size();
    if (!std::string_view(bytes).starts_with("{\\rtf")) {
        FillText(document, bytes);
        return;
    }
    document.kind = Document::Kind::Rtf;
    document.format = "RTF";
    SString source(bytes.data(), static_cast<int>(bytes.size()));
    SRtfDocument().RtfToText(&document.text, source);
}

SString LineOf(const SZipEntry& entry) {
    const SCalendarTime time = entry.GetModified();
    SString line;
    line.Format("%12u  %04d-%02d-%02d %02d:%02d  ", entry.GetSize(), time.year, time.month,
                time.day, time.hour, time.minute);
    line += entry.GetDecodedName();
    line += "\r\n";
    return line;
}

bool IsArchive(const SString& path) {
    SInputFile file(path);
    char start[4] = {};
    const std::string_view read(start, file.Read(start, sizeof start));
    return read == "PK\3\4" || read == "PK\5\6";
}

Document ListArchive(const SString& path, const Progress& progress) {
    Document document;
    document.kind = Document::Kind::Archive;
    document.format = "ZIP";
    document.path = path;
    SZipFile archive(path);
    std::string text;
    const auto total = static_cast<std::uint64_t>(archive.GetEntryCount());
    for (const SZipEntry& entry : archive) {
        text += LineOf(entry).View();
        document.size += entry.GetSize();
        ++document.entries;
        if (!progress(static_cast<std::uint64_t>(document.entries), total))
            throw SEIOAbortedException();
    }
    document.text = SString(text.data(), static_cast<int>(text.size()));
    return document;
}

}  // namespace

Document ReadDocument(const SString& path, const Progress& progress) {
    if (IsArchive(path)) return ListArchive(path, progress);
    Document document;
    document.path = path;
    SInputFile file(path);
    FillDocument(document, ReadAll(file, file.Available(), progress));
    return document;
}

Document ReadEntry(const SString& path, int index, const Progress& progress) {
    SZipFile archive(path);
    for (auto at = archive.begin(); at != archive.end(); ++at) {
        if (at.GetIndex() != index) continue;
        Document document;
        document.path = path;
        document.entry = at->GetDecodedName();
        const auto stream = archive.Open(*at);
        FillDocument(document, ReadAll(*stream, at->GetSize(), progress));
        document.kind = Document::Kind::Entry;
        return document;
    }
    throw SEIOException("The archive has no such entry");
}

}  // namespace viewer
