#include "items.h"

#include "output.h"
#include "progress.h"

#include <brcore8/streams/text_lines.h>
#include <brcore8/strings/string_table.h>

#include <CLI/CLI.hpp>

#include <algorithm>

namespace tool {
namespace {

void CheckItems(const SStringTable& items, ItemEnd end) {
    int number = 0;
    for (const SString& item : items) {
        const std::string_view text = item.View();
        const std::string what = "item " + std::to_string(++number);
        if (end == ItemEnd::Zero && text.find('\0') != text.npos)
            throw Failure{what, "it holds a zero byte"};
        if (end == ItemEnd::Line && text.find_first_of("\r\n") != text.npos)
            throw Failure{what, "it holds a line end; -z ends items with a zero byte"};
    }
}

}  // namespace

void AddItemEnd(CLI::App& parser, ItemEnd& end) {
    parser.add_flag_callback(
        "-z,--zero", [&end] { end = ItemEnd::Zero; }, "Items end with a zero byte, not with LF");
}

SStringTable ReadItems(const std::string& input, const Settings& settings, ItemEnd end,
                       TextFormat as) {
    SStringTable items;
    const TextInput source(input, settings);
    const std::string text = end == ItemEnd::Line ? source.Text(as, "\n") : source.Uncut(as);
    BeginStep(text.size());
    if (end == ItemEnd::Line) {
        for (const std::string_view line : STextLines(text))
            items.Add(SString(line));
        return items;
    }
    std::string_view rest = text;
    while (!rest.empty()) {
        const std::size_t length = std::min(rest.find('\0'), rest.size());
        items.Add(SString(rest.substr(0, length)));
        rest.remove_prefix(std::min(length + 1, rest.size()));
    }
    return items;
}

void PrintItems(const SStringTable& items, ItemEnd end) {
    CheckItems(items, end);
    Output output;
    for (const SString& item : items) {
        output.Write(item.View());
        output.Write(std::string_view(end == ItemEnd::Zero ? "\0" : "\n", 1));
    }
    output.Finish();
}

unsigned OneCharacter(const std::string& option, const std::string& text, MayBeEmpty empty) {
    if (text.empty() && empty == MayBeEmpty::Yes) return 0;
    const SString character{std::string_view(text)};
    if (character.Length() != 1) throw CLI::ValidationError(option, "one character is wanted");
    return static_cast<unsigned>(character.GetAt(0));
}

}  // namespace tool
