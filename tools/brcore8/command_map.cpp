// map: the pairs of a map's list string.

#include "command.h"
#include "items.h"
#include "output.h"

#include <brcore8/strings/string_map.h>

#include <CLI/CLI.hpp>

#include <memory>

namespace tool {
namespace {

struct MapOptions {
    std::string assign = "=";
    std::string separators = ";";
    std::string escape = "\\";
    std::string keyFormat = "%d";
    int first = 1;
    bool noCase = false;
    bool unsorted = false;
    std::string text;
};

SString Text(const std::string& text) {
    return SString(std::string_view(text));
}

template <class Map>
int ParseAs(const MapOptions& options) {
    Map map;
    map.AddFromList(Text(options.text), Text(options.separators),
                    OneCharacter("--assign", options.assign),
                    OneCharacter("--escape", options.escape, MayBeEmpty::Yes),
                    Text(options.keyFormat), options.first);
    Output output;
    for (const auto& [key, value] : map)
        output.Write(Row({key.View(), value.View()}));
    output.Finish();
    return Done;
}

int ParseMap(const MapOptions& options) {
    if (options.unsorted)
        return options.noCase ? ParseAs<SStringUnsortedMapNoCase>(options)
                              : ParseAs<SStringUnsortedMap>(options);
    return options.noCase ? ParseAs<SStringMapNoCase>(options) : ParseAs<SStringMap>(options);
}

std::string WrongKeyFormat(const std::string& format) {
    return SIsIndexFormat(format) ? "" : "one conversion of an integer is wanted";
}

Action PrepareMapParse(CLI::App& parser, const Settings&) {
    auto options = std::make_shared<MapOptions>();
    parser.add_option("-a,--assign", options->assign, "The character after a key (=)")
        ->type_name("ASSIGN");
    parser.add_option("-s,--separators", options->separators, "Characters between pairs (;)")
        ->type_name("SEPARATORS");
    parser
        .add_option("-e,--escape", options->escape,
                    "Takes the next character literally (\\); none when empty")
        ->type_name("ESCAPE");
    parser
        .add_option("--key-format", options->keyFormat,
                    "Makes the key of a value without one from the pair's number (%d)")
        ->type_name("F")
        ->check(CLI::Validator(WrongKeyFormat, ""));
    parser.add_option("--first", options->first, "The number of the first pair (1)")
        ->type_name("N");
    parser.add_flag("-i,--ignore-case", options->noCase, "Keys without case");
    parser.add_flag("-u,--unsorted", options->unsorted, "Pairs in the order of their keys' coming");
    parser.add_option("TEXT", options->text, "The list, as in name=Tower;height=12")->required();
    parser.footer(
        "A row a pair, KEY and VALUE with a tab between them, in the order of keys. A\n"
        "later pair of a key takes the place of an earlier one. F is text with one\n"
        "conversion of an integer, as printf has them.");
    return [options] { return ParseMap(*options); };
}

constexpr Command Parts[] = {
    {"parse", "Print the pairs of a map's list string", PrepareMapParse},
};

}  // namespace

Action PrepareMap(CLI::App& parser, const Settings& settings) {
    return PrepareParts(parser, settings, Parts);
}

}  // namespace tool
