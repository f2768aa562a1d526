// Arguments that only one of the command processors can hand over.
#include "tools/run_command.h"

using namespace std::string_literals;

namespace {

using ListsPosix = CommandTest;

TEST_F(ListsPosix, LineEndsInItems) {
    ExpectAll({
        {"LF", "list parse \"a;b\nc\"", "", 1, "", "brcore8: item 2: it holds a line end"},
        {"CR", "list parse \"$(printf 'a\\rb')\"", "", 1, "",
         "brcore8: item 1: it holds a line end"},
        {"between zero bytes", "list parse -z \"a;b\nc\"", "", 0, "a\0b\nc\0"s},
        {"in a row of fields", "map parse \"$(printf 'a\\tb=c\\rd\ne')\"", "", 0,
         "a\\tb\tc\\rd\\ne\n"},
    });
}

}  // namespace
