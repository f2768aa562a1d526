#include <brcore8/settings/profile.h>

#include <brcore8/core/exception.h>
#include <brcore8/core/throw.h>
#include <brcore8/strings/string_table.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string_view>
#include <utility>

#include "platform/platform.h"
#include "settings/setting_text.h"
#include "strings/mbs.h"

using namespace brcore8;

namespace {

constexpr std::size_t kLongestValue = 255;

// Room on the stack for most answers, in the heap for others.
class Answer {
public:
    Answer() noexcept = default;
    ~Answer() { Release(heap_); }
    Answer(const Answer&) = delete;
    Answer& operator=(const Answer&) = delete;

    // Asks for one key's value, or for names, until the room suffices.
    void Ask(const char* section, const char* key, const char* file) {
        const DWORD spare = key != nullptr ? 1 : 2;
        for (;;) {
            char* const room = heap_ != nullptr ? heap_ : stack_;
            size_ = GetPrivateProfileStringA(section, key, "", room, room_, file);
            if (size_ + spare < room_ || room_ >= kMostRoom) return;
            heap_ = static_cast<char*>(Reallocate(heap_, room_ * 4));
            room_ *= 4;
        }
    }
    std::string_view View() const noexcept { return {heap_ != nullptr ? heap_ : stack_, size_}; }

private:
    static constexpr DWORD kMostRoom = 1u << 30;

    char stack_[1024];
    char* heap_ = nullptr;
    DWORD room_ = sizeof stack_;
    std::size_t size_ = 0;
};

template <class Work>
long Guarded(Work work) noexcept {
    try {
        return long{work()};
    } catch (const SEOutOfMemory&) {
        return SettingsFailed;
    }
}

void TakeNames(const Answer& answer, SStringTable& names) {
    SStringTable taken;
    for (std::string_view rest = answer.View(); !rest.empty();) {
        const std::string_view name = rest.substr(0, rest.find('\0'));
        if (!name.empty()) taken.Add(SString(name));
        rest.remove_prefix(std::min(name.size() + 1, rest.size()));
    }
    names = std::move(taken);
}

// A name as it is read back: without the blanks at its ends.
std::string_view Trimmed(const char* name) noexcept {
    constexpr char blanks[] = " \t\v\f\x1A";
    name += std::strspn(name, blanks);
    const std::string_view text(name);
    return text.substr(0, text.find_last_not_of(blanks) + 1);
}

// Whether the text holds the character, of which a trail byte is none, or ends in half a one,
// which would swallow what follows it in the file.
bool HoldsOrEndsInHalf(std::string_view text, char character) noexcept {
    const CodePage& page = CodePage::Ansi();
    const char* const end = text.data() + text.size();
    for (const char* p = text.data(); p != end; p += mbs::CharBytes(page, p, end))
        if (*p == character || (page.IsLead(mbs::Byte(p)) && end - p == 1)) return true;
    return false;
}

// The bytes of a cut text without the first half of a character at its end.
std::size_t WholeCharacters(const char* text) noexcept {
    const CodePage& page = CodePage::Ansi();
    const char* p = text;
    while (*p != '\0' && !(page.IsLead(mbs::Byte(p)) && p[1] == '\0'))
        p = mbs::Next(page, p);
    return static_cast<std::size_t>(p - text);
}

// What ends a line, or a key, does so behind a lead byte too.
bool IsSectionName(const char* name) noexcept {
    return std::strpbrk(name, "\r\n") == nullptr && !HoldsOrEndsInHalf(Trimmed(name), ']');
}

bool BeginsLikeAMark(std::string_view text) noexcept {
    return text.starts_with("\xEF\xBB\xBF") || text.starts_with("\xFF\xFE") ||
           text.starts_with("\xFE\xFF");
}

// A key may become the first in its file.
bool IsKeyName(const char* name) noexcept {
    const std::string_view key = Trimmed(name);
    return !BeginsLikeAMark(key) && !key.empty() && key.front() != '[' && key.front() != ';' &&
           std::strpbrk(name, "=\r\n") == nullptr && !HoldsOrEndsInHalf(key, '=');
}

bool IsValue(const char* value) noexcept {
    return std::strpbrk(value, "\r\n") == nullptr;
}

}  // namespace

long SProfile::Init(const SString& fileName, const SString& section, int) {
    return Guarded([&] {
        SString file = fileName;
        section_ = section;
        fileName_ = std::move(file);
        return SettingsDone;
    });
}

long SProfile::Done() {
    fileName_.Done();
    section_.Done();
    return SettingsDone;
}

// --- write ---------------------------------------------------------------------------------------

// A null key means the section, a null value the key.
long SProfile::Write(const char* key, const char* value) {
    const bool isSound = !fileName_.IsEmpty() && IsSectionName(section_) &&
                         (key == nullptr || IsKeyName(key)) && (value == nullptr || IsValue(value));
    const bool isWritten = isSound && WritePrivateProfileStringA(section_, key, value, fileName_);
    return isWritten ? SettingsDone : SettingsNotWritten;
}

int SProfile::Accepts(const SString& key, const SString& value) const noexcept {
    return IsSectionName(section_) && IsKeyName(key) && IsValue(value);
}

long SProfile::WriteProfile(const SString& key, int value) {
    return Write(key, value != 0 ? "Yes" : "No");
}

long SProfile::WriteProfile(const SString& key, long value) {
    char text[24];
    std::snprintf(text, sizeof text, "%ld", value);
    return Write(key, text);
}

long SProfile::WriteProfile(const SString& key, const SString& value) {
    return Write(key, value);
}

long SProfile::DeleteProfile(const SString& key) {
    return Write(key, nullptr);
}

long SProfile::DeleteSection() {
    return Write(nullptr, nullptr);
}

// --- read ----------------------------------------------------------------------------------------

long SProfile::GetProfile(const SString& key, int* value, int defaultValue) const {
    if (value == nullptr) return SettingsNullPointer;
    return Guarded([&] {
        SString text;
        const long status = GetProfile(key, &text, SString());
        if (status >= 0) *value = text.IsEmpty() ? defaultValue : TruthOfSetting(text);
        return status;
    });
}

long SProfile::GetProfile(const SString& key, long* value, long defaultValue) const {
    if (value == nullptr) return SettingsNullPointer;
    return Guarded([&] {
        SString text;
        const long status = GetProfile(key, &text, SString());
        if (status >= 0) *value = text.IsEmpty() ? defaultValue : NumberOfSetting(text);
        return status;
    });
}

long SProfile::GetProfile(const SString& key, SString* value, const SString& defaultValue) const {
    if (value == nullptr) return SettingsNullPointer;
    return Guarded([&] {
        char text[kLongestValue + 1] = "";
        std::size_t size = 0;
        if (!fileName_.IsEmpty())
            size = GetPrivateProfileStringA(section_, key, "", text, sizeof text, fileName_);
        if (size == kLongestValue) size = WholeCharacters(text);
        if (size == 0)
            *value = defaultValue;
        else
            *value = std::string_view(text, size);
        return SettingsDone;
    });
}

long SProfile::GetWholeProfile(const SString& key, SString* value,
                               const SString& defaultValue) const {
    if (value == nullptr) return SettingsNullPointer;
    return Guarded([&] {
        Answer answer;
        if (!fileName_.IsEmpty()) answer.Ask(section_, key, fileName_);
        if (answer.View().empty())
            *value = defaultValue;
        else
            *value = answer.View();
        return SettingsDone;
    });
}

// A key that is there gives the same whatever the default.
int SProfile::HasProfile(const SString& key) const {
    if (fileName_.IsEmpty()) return 0;
    char first[2];
    char second[2];
    GetPrivateProfileStringA(section_, key, "1", first, sizeof first, fileName_);
    GetPrivateProfileStringA(section_, key, "2", second, sizeof second, fileName_);
    return first[0] == second[0];
}

// --- enumerate -----------------------------------------------------------------------------------

long SProfile::GetKeys(SStringTable* keys) const {
    return GetNames(section_, keys);
}

long SProfile::GetSections(SStringTable* sections) const {
    return GetNames(nullptr, sections);
}

long SProfile::GetNames(const char* section, SStringTable* names) const {
    if (names == nullptr) return SettingsNullPointer;
    return Guarded([&] {
        Answer answer;
        if (!fileName_.IsEmpty()) answer.Ask(section, nullptr, fileName_);
        TakeNames(answer, *names);
        return SettingsDone;
    });
}
