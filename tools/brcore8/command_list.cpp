// list: a list string as items, items as a list string.

#include "command.h"
#include "items.h"

#include <brcore8/strings/string_table.h>

#include <CLI/CLI.hpp>

#include <memory>

namespace tool {
namespace {

struct ListOptions {
    std::string separator = ";";
    std::string escape = "\\";
    std::string text;
    std::string input = "-";
    ItemEnd end = ItemEnd::Line;
};

void AddEscape(CLI::App& parser, ListOptions& options) {
    parser
        .add_option("-e,--escape", options.escape,
                    "Takes the next character literally (\\); none when empty")
        ->type_name("ESCAPE");
}

int ParseList(const ListOptions& options) {
    SStringTable items;
    items.SetFromList(SString(std::string_view(options.text)),
                      SString(std::string_view(options.separator)),
                      OneCharacter("--escape", options.escape, MayBeEmpty::Yes));
    PrintItems(items, options.end);
    return Done;
}

int FormatList(const ListOptions& options, const Settings& settings) {
    const unsigned separator = OneCharacter("--separator", options.separator);
    const unsigned escape = OneCharacter("--escape", options.escape, MayBeEmpty::Yes);
    const SStringTable items = ReadItems(options.input, settings, options.end);
    return Print(std::string(items.GetAsList(separator, escape).View()) + '\n');
}

Action PrepareListParse(CLI::App& parser, const Settings&) {
    auto options = std::make_shared<ListOptions>();
    AddItemEnd(parser, options->end);
    parser.add_option("-s,--separators", options->separator, "Characters between items (;)")
        ->type_name("SEPARATORS");
    AddEscape(parser, *options);
    parser.add_option("TEXT", options->text, "The list")->required();
    parser.footer("Without -z an item that holds a line end fails.");
    return [options] { return ParseList(*options); };
}

Action PrepareListFormat(CLI::App& parser, const Settings& settings) {
    auto options = std::make_shared<ListOptions>();
    AddItemEnd(parser, options->end);
    parser.add_option("-s,--separator", options->separator, "The character between items (;)")
        ->type_name("SEPARATOR");
    AddEscape(parser, *options);
    parser.add_option("INPUT", options->input, "A text file; standard input when missing or -");
    parser.footer("Empty lines behind the first do not come back from the list.");
    return [options, &settings] { return FormatList(*options, settings); };
}

constexpr Command Parts[] = {
    {"parse", "Print a list string's items", PrepareListParse},
    {"format", "Make a list string of items", PrepareListFormat},
};

}  // namespace

Action PrepareList(CLI::App& parser, const Settings& settings) {
    return PrepareParts(parser, settings, Parts);
}

}  // namespace tool
