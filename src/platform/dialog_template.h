// Dialog templates taken apart: both forms that the platform has, plain and extended. A template is
// foreign bytes: nothing is read behind its end.
#ifndef BRCORE8_PLATFORM_DIALOG_TEMPLATE_H
#define BRCORE8_PLATFORM_DIALOG_TEMPLATE_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace brcore8 {

// A text, or the number of a resource or class in its place.
struct DialogText {
    std::u16string text;
    std::uint16_t number = 0;  // 0: the text counts
};

struct DialogItem {
    std::uint32_t style = 0;
    std::uint32_t exStyle = 0;
    std::int16_t x = 0, y = 0, cx = 0, cy = 0;  // dialog units
    std::uint32_t id = 0;
    DialogText className;
    DialogText title;
    const void* data = nullptr;  // for the control's creation, inside the template
};

struct DialogTemplate {
    std::uint32_t style = 0;
    std::uint32_t exStyle = 0;
    std::int16_t x = 0, y = 0, cx = 0, cy = 0;
    DialogText menu;
    DialogText className;
    std::u16string title;
    int pointSize = 0;  // 0: the system's font
    int weight = 400;
    bool isItalic = false;
    std::u16string face;
    std::vector<DialogItem> items;
};

// Nothing when the template is not whole, or is none.
std::optional<DialogTemplate> ReadDialogTemplate(const void* bytes, std::size_t size);

}  // namespace brcore8

#endif
