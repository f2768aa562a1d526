#include <brcore8/core/throw.h>
#include <brcore8/text/rtf_document.h>

#include <exception>

#include "platform/rich_text.h"
#include "strings/code_page.h"

namespace {

using brcore8::CodePage;
using brcore8::RichBuffer;

using WideText = RichBuffer<char16_t>;

std::u16string_view View(const WideText& text) {
    return {text.Data(), text.Size()};
}

bool IsRtf(std::string_view text) {
    return text.starts_with("{\\rtf") || text.starts_with("{\\urtf");
}

// Every line end as CR LF; zero units, which no document holds, are left out.
void AppendLines(std::u16string_view text, WideText& lines) {
    char16_t* out = lines.Reserve(2 * text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char16_t unit = text[i];
        if (unit == '\r' || unit == '\n') {
            *out++ = '\r';
            *out++ = '\n';
            if (unit == '\r' && i + 1 < text.size() && text[i + 1] == '\n') ++i;
        } else if (unit != 0) {
            *out++ = unit;
        }
    }
    lines.SetEnd(out);
}

void AppendWide(std::string_view text, WideText& wide) {
    static_assert(sizeof(char16_t) == sizeof(std::uint16_t));
    char16_t* const out = wide.Reserve(text.size());
    const std::size_t units = CodePage::Ansi().ToWide(
        text.data(), text.size(), reinterpret_cast<std::uint16_t*>(out), text.size());
    wide.SetEnd(out + units);
}

// In the process's page.
SString TextOf(const WideText& wide) {
    const CodePage& page = CodePage::Ansi();
    const auto* units = reinterpret_cast<const std::uint16_t*>(wide.Data());
    const std::size_t most = wide.Size() * (page.IsDoubleByte() ? 2 : 1);
    RichBuffer<char> bytes;
    char* const out = bytes.Reserve(most);
    return SString(std::string_view(out, page.FromWide(units, wide.Size(), out, most)));
}

// The plain text of a document, or of what is none and so is text already.
void ReadPlain(brcore8::RichText& engine, std::string_view source, WideText& text) {
    if (IsRtf(source)) {
        brcore8::ReadRtf(engine, source, text);
        return;
    }
    WideText wide;
    AppendWide(source, wide);
    AppendLines(View(wide), text);
}

SString WriteDocument(brcore8::RichText& engine, std::u16string_view text) {
    WideText lines;
    AppendLines(text, lines);
    RichBuffer<char> rtf;
    brcore8::WriteRtf(engine, View(lines), rtf);
    return SString(std::string_view(rtf.Data(), rtf.Size()));
}

}  // namespace

SRtfDocument::~SRtfDocument() {
    DeleteEditCtrl();
}

int SRtfDocument::CreateEditCtrl() {
    if (control_ == nullptr) control_ = brcore8::OpenRichText();
    return control_ != nullptr;
}

void SRtfDocument::DeleteEditCtrl() {
    if (control_ != nullptr) brcore8::CloseRichText(control_);
    control_ = nullptr;
}

int SRtfDocument::RtfToText(SString* text, SString& rtf) {
    if (text == nullptr || !CreateEditCtrl()) return 0;
    WideText plain;
    const bool empty = rtf.View().empty();
    if (!empty) ReadPlain(*control_, rtf.View(), plain);
    *text = TextOf(plain);
    return empty || plain.Size() > 0;
}

int SRtfDocument::TextToRtf(SString* rtf, SString& text) {
    if (rtf == nullptr || !CreateEditCtrl()) return 0;
    const std::string_view source = text.View();
    if (source.empty()) {
        *rtf = SString();
    } else if (IsRtf(source)) {
        RichBuffer<char> written;
        brcore8::RewriteRtf(*control_, source, written);
        *rtf = SString(std::string_view(written.Data(), written.Size()));
    } else {
        WideText wide;
        AppendWide(source, wide);
        *rtf = WriteDocument(*control_, View(wide));
    }
    return source.empty() || !rtf->View().empty();
}

int SRtfDocument::RtfToUtf16(std::u16string* text, std::string_view rtf) {
    if (text == nullptr || !CreateEditCtrl()) return 0;
    WideText plain;
    if (!rtf.empty()) ReadPlain(*control_, rtf, plain);
    try {
        text->assign(View(plain));
    } catch (const std::exception&) {
        brcore8::ThrowOutOfMemory();
    }
    return rtf.empty() || plain.Size() > 0;
}

int SRtfDocument::Utf16ToRtf(SString* rtf, std::u16string_view text) {
    if (rtf == nullptr || !CreateEditCtrl()) return 0;
    *rtf = WriteDocument(*control_, text);
    return 1;
}
