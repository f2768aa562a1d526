#include <brcore8/core/dump.h>

#include <brcore8/core/object.h>
#include <brcore8/streams/output_stream.h>

#include "platform/platform.h"

#include <cstdio>
#include <cstring>

namespace {

// Holds every number: 20 digits and a sign, "-1.79769e+308", "0x" and 16 digits.
class NumberText {
public:
    template <typename Number>
    NumberText(const char* format, Number number) noexcept {
        std::snprintf(text_, sizeof text_, format, number);
    }
    operator const char*() const noexcept { return text_; }

private:
    char text_[32];
};

}  // namespace

SDump::~SDump() = default;

void SDump::Clear() {}
void SDump::Show() {}
void SDump::Flush() {}

void SDump::EndLine() {
    *this << "\n";
}

SDump& operator<<(SDump& dump, int value) {
    return dump << NumberText("%i", value);
}

SDump& operator<<(SDump& dump, long value) {
    return dump << NumberText("%li", value);
}

SDump& operator<<(SDump& dump, long long value) {
    return dump << NumberText("%lli", value);
}

SDump& operator<<(SDump& dump, unsigned int value) {
    return dump << NumberText("%u", value);
}

SDump& operator<<(SDump& dump, unsigned long value) {
    return dump << NumberText("%lu", value);
}

SDump& operator<<(SDump& dump, unsigned long long value) {
    return dump << NumberText("%llu", value);
}

SDump& operator<<(SDump& dump, double value) {
    return dump << NumberText("%g", value);
}

SDump& operator<<(SDump& dump, const void* pointer) {
    const auto address = reinterpret_cast<std::uintptr_t>(pointer);
    return dump << NumberText("0x%08llx", static_cast<unsigned long long>(address));
}

SDump& operator<<(SDump& dump, const GUID& guid) {
    const std::uint8_t* const d = guid.Data4;
    char text[40];
    std::snprintf(text, sizeof text, "{%08X-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X}",
                  static_cast<unsigned>(guid.Data1), unsigned{guid.Data2}, unsigned{guid.Data3},
                  d[0], d[1], d[2], d[3], d[4], d[5], d[6], d[7]);
    return dump << text;
}

SDump& operator<<(SDump& dump, const char* text) {
    try {
        dump.Output(text);
    } catch (...) {
        // A sink of the program's own failed: diagnostics have nobody to tell.
    }
    return dump;
}

SDump& operator<<(SDump& dump, const SString& text) {
    return dump << static_cast<const char*>(text);
}

SDump& operator<<(SDump& dump, const SObject* object) {
    if (object == nullptr) return dump << "NULL Pointer";
    try {
        object->Dump(dump);
    } catch (...) {
        // What it wrote so far must do.
    }
    return dump;
}

// --- SDumpStream and SDumpDebug --------------------------------------------------------------

SDumpStream::~SDumpStream() = default;

const char* SDumpStream::GetDumperName() const {
    return "SDumpStream";
}

void SDumpStream::Output(const char* text) {
    if (text == nullptr) return;
    try {
        stream_.Write(text, static_cast<unsigned long>(std::strlen(text)));
    } catch (...) {
        // The stream's failures are for those who write to it, not for those who describe.
    }
}

SDumpDebug::~SDumpDebug() = default;

const char* SDumpDebug::GetDumperName() const {
    return "SDumpDebug";
}

void SDumpDebug::Output(const char* text) {
    if (text != nullptr) OutputDebugStringA(text);
}
