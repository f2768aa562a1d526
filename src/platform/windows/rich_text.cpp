#include "platform/rich_text.h"

#include "platform/platform.h"

#include <richedit.h>

#include <algorithm>
#include <memory>

#include "text/rtf_reader.h"

namespace brcore8 {

struct RichText {
    HWND window;
};

namespace {

// Deeper groups, which hardly a program writes, are more than some controls survive.
constexpr std::size_t kDeepestGroup = 30;
constexpr LPARAM kNoLimit = 0x7FFFFFFE;
constexpr LPARAM kNoWrapping = 1;

// The control's library stays loaded: its window class lives as long.
bool LoadControl() {
    static const HMODULE library = LoadLibraryA("riched20.dll");
    return library != nullptr;
}

DWORD CALLBACK Read(DWORD_PTR cookie, LPBYTE block, LONG size, LONG* taken) {
    auto& source = *reinterpret_cast<std::string_view*>(cookie);
    const std::size_t count = std::min(source.size(), static_cast<std::size_t>(size));
    std::memcpy(block, source.data(), count);
    source.remove_prefix(count);
    *taken = static_cast<LONG>(count);
    return 0;
}

// No exception may pass through the control.
struct Sink {
    RichBuffer<char>& bytes;
    bool outOfMemory = false;
};

DWORD CALLBACK Write(DWORD_PTR cookie, LPBYTE block, LONG size, LONG* taken) {
    auto& sink = *reinterpret_cast<Sink*>(cookie);
    try {
        sink.bytes.Append(reinterpret_cast<const char*>(block), static_cast<std::size_t>(size));
    } catch (...) {
        sink.outOfMemory = true;
        return ERROR_OUTOFMEMORY;
    }
    *taken = size;
    return 0;
}

// The mode can change only while the control is empty.
void SetContent(const RichText& engine, WPARAM format, std::string_view content) {
    SetWindowTextA(engine.window, "");
    SendMessageA(engine.window, EM_SETTEXTMODE, TM_RICHTEXT, 0);
    EDITSTREAM stream = {reinterpret_cast<DWORD_PTR>(&content), 0, Read};
    SendMessageA(engine.window, EM_STREAMIN, format, reinterpret_cast<LPARAM>(&stream));
}

void GetContent(const RichText& engine, WPARAM format, RichBuffer<char>& content) {
    Sink sink{content};
    EDITSTREAM stream = {reinterpret_cast<DWORD_PTR>(&sink), 0, Write};
    SendMessageA(engine.window, EM_STREAMOUT, format, reinterpret_cast<LPARAM>(&stream));
    if (sink.outOfMemory) ThrowOutOfMemory();
}

void GetText(const RichText& engine, RichBuffer<char16_t>& text) {
    RichBuffer<char> bytes;
    GetContent(engine, SF_TEXT | SF_UNICODE, bytes);
    const std::size_t units = bytes.Size() / sizeof(char16_t);
    char16_t* const out = text.Reserve(units);
    if (units > 0) std::memcpy(out, bytes.Data(), units * sizeof(char16_t));
    text.SetEnd(std::remove(out, out + units, u'\0'));
}

// Some controls end the document with a zero byte.
void GetRtf(const RichText& engine, RichBuffer<char>& rtf) {
    GetContent(engine, SF_RTF, rtf);
    while (rtf.Size() > 0 && rtf[rtf.Size() - 1] == 0)
        rtf.RemoveLast();
}

// Some controls write characters that their code page lacks as others that look alike.
bool Holds(const RichBuffer<char>& rtf, std::u16string_view text) {
    RichBuffer<char16_t> read;
    rtf::ReadText({rtf.Data(), rtf.Size()}, read);
    return std::u16string_view(read.Data(), read.Size()) == text;
}

bool IsTooDeep(std::string_view rtf) {
    return rtf::DeepestGroup(rtf) > kDeepestGroup;
}

}  // namespace

// A child of the message window is never seen and needs no desktop. Long paragraphs would cost the
// square of their length if they were broken into lines.
RichText* OpenRichText() {
    if (!LoadControl()) return nullptr;
    void* const memory = Allocate(sizeof(RichText));
    const HWND window = CreateWindowExA(0, "RichEdit20A", "", ES_MULTILINE, 0, 0, 0, 0,
                                        HWND_MESSAGE, nullptr, GetModuleHandleA(nullptr), nullptr);
    if (window == nullptr) {
        Release(memory);
        return nullptr;
    }
    SendMessageA(window, EM_EXLIMITTEXT, 0, kNoLimit);
    SendMessageA(window, EM_SETTARGETDEVICE, 0, kNoWrapping);
    return new (memory) RichText{window};
}

void CloseRichText(RichText* engine) noexcept {
    DestroyWindow(engine->window);
    Release(engine);
}

void ReadRtf(RichText& engine, std::string_view rtf, RichBuffer<char16_t>& text) {
    if (IsTooDeep(rtf)) {
        rtf::ReadText(rtf, text);
        return;
    }
    SetContent(engine, SF_RTF, rtf);
    GetText(engine, text);
}

void WriteRtf(RichText& engine, std::u16string_view text, RichBuffer<char>& rtf) {
    const std::string_view bytes(reinterpret_cast<const char*>(text.data()),
                                 text.size() * sizeof(char16_t));
    SetContent(engine, SF_TEXT | SF_UNICODE, bytes);
    GetRtf(engine, rtf);
    if (!Holds(rtf, text)) {
        rtf.SetEnd(rtf.Data());
        rtf::WriteText(text, rtf);
    }
}

void RewriteRtf(RichText& engine, std::string_view rtf, RichBuffer<char>& written) {
    RichBuffer<char16_t> text;
    if (!IsTooDeep(rtf)) {
        SetContent(engine, SF_RTF, rtf);
        GetText(engine, text);
        GetRtf(engine, written);
        if (Holds(written, {text.Data(), text.Size()})) return;
    }
    written.SetEnd(written.Data());
    rtf::WriteWhole(rtf, written);
}

}  // namespace brcore8
