// Items: the texts that a command takes in or gives out, each ended by LF, or by a zero byte.
#ifndef BRCORE8_TOOLS_ITEMS_H
#define BRCORE8_TOOLS_ITEMS_H

#include "command.h"
#include "text_input.h"

#include <string>
#include <string_view>

class SStringTable;

namespace tool {

enum class ItemEnd { Line, Zero };

// The option that asks for zero bytes.
void AddItemEnd(CLI::App& parser, ItemEnd& end);

// All items of INPUT, in the code page of text or in UTF-8. Lines are cut as everywhere; between
// zero bytes everything is kept.
SStringTable ReadItems(const std::string& input, const Settings& settings, ItemEnd end,
                       TextFormat as = TextFormat::Ansi);

// Prints the items. Throws Failure, before anything is printed, when one cannot be told from
// several: it holds a line end, or a zero byte where these end items.
void PrintItems(const SStringTable& items, ItemEnd end);

// The code of an option's one character of the code page, or 0 where the option may be empty and
// is. Anything else is a wrong command line.
enum class MayBeEmpty { No, Yes };
unsigned OneCharacter(const std::string& option, const std::string& text,
                      MayBeEmpty empty = MayBeEmpty::No);

}  // namespace tool

#endif
