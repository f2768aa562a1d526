#ifndef BRCORE8_TESTS_DIALOGS_TEMPLATE_H
#define BRCORE8_TESTS_DIALOGS_TEMPLATE_H

#include <brcore8/platform/windows.h>

#include <cstring>
#include <initializer_list>
#include <vector>

// Templates, built as the platform reads them.
class Template {
public:
    explicit Template(bool isExtended, const char16_t* title = u"Test", DWORD style = 0)
        : isExtended_(isExtended) {
        style |= WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_SETFONT;
        if (isExtended_) Words({1, 0xFFFF, 0, 0});
        if (isExtended_) Long(0);
        Long(style);
        if (!isExtended_) Long(0);
        count_ = bytes.size();
        Words({0, 10, 10, 150, 80, 0, 0});
        Text(title);
        Words({8});
        if (isExtended_) Words({400, 0x0100});
        Text(u"DejaVu Sans");
    }
    Template& Item(WORD classNumber, DWORD style, WORD id, const char16_t* title, WORD x = 5) {
        while (bytes.size() % 4 != 0)
            bytes.push_back(0);
        style |= WS_CHILD | WS_VISIBLE;
        if (isExtended_) Long(0);
        Long(isExtended_ ? 0 : style);
        Long(isExtended_ ? style : 0);
        Words({x, 5, 40, 14, id});
        if (isExtended_) Words({0});
        Words({0xFFFF, classNumber});
        Text(title);
        Words({0});
        ++bytes[count_];
        return *this;
    }
    void SetCount(WORD count) { std::memcpy(bytes.data() + count_, &count, 2); }

    std::vector<unsigned char> bytes;

private:
    void Words(std::initializer_list<int> words) {
        for (const int word : words) {
            bytes.push_back(static_cast<unsigned char>(word & 0xFF));
            bytes.push_back(static_cast<unsigned char>(word >> 8 & 0xFF));
        }
    }
    void Long(DWORD value) {
        Words({static_cast<int>(value & 0xFFFF), static_cast<int>(value >> 16)});
    }
    void Text(const char16_t* text) {
        for (; *text != 0; ++text)
            Words({*text});
        Words({0});
    }

    bool isExtended_;
    std::size_t count_ = 0;
};

#endif
