// What the texts of settings mean.
#ifndef BRCORE8_SRC_SETTINGS_SETTING_TEXT_H
#define BRCORE8_SRC_SETTINGS_SETTING_TEXT_H

#include <brcore8/strings/string.h>

namespace brcore8 {

// Blanks at both ends do not count.
inline SString TrimmedSetting(const SString& text) {
    SString trimmed = text;
    trimmed.Trim(" \t\r\n");
    return trimmed;
}

inline bool IsYesOrTrue(const SString& text) noexcept {
    return text.CompareNoCase("Yes") == 0 || text.CompareNoCase("True") == 0;
}

// "Yes", "True" and "1" in any case.
inline int TruthOfSetting(const SString& text) {
    const SString word = TrimmedSetting(text);
    return IsYesOrTrue(word) || word.Compare("1") == 0;
}

// A text that begins with a digit or a sign as a decimal number, "Yes" and "True" as 1, others 0.
inline long NumberOfSetting(const SString& text) {
    const SString word = TrimmedSetting(text);
    const char first = *static_cast<const char*>(word);
    const bool isNumber = (first >= '0' && first <= '9') || first == '-' || first == '+';
    return isNumber ? static_cast<long>(word) : long{IsYesOrTrue(word)};
}

}  // namespace brcore8

#endif
