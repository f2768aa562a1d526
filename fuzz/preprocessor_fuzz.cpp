// A byte for the code page, the directive character, a text. Preprocessing must end, copy nothing
// that opens a directive, and find nothing more to do in its own output; the tokenizer must move
// on with every token.
#include <brcore8/strings/multibyte.h>
#include <brcore8/strings/tokenizer.h>
#include <brcore8/text/preprocessor.h>
#include <brcore8/text/symbol_table.h>

#include <cstdlib>
#include <string_view>

#include "fuzz.h"

namespace {

void CheckPreprocessor(const SString& text, char directive, bool doubleByte) {
    SPreprocessor preprocessor(directive);
    SSymbolTable symbols;
    symbols.AddSymbol("GIVEN", 1, -1);
    const SString output = preprocessor.Preprocess(text, &symbols);
    if (!output.AssertValid()) std::abort();
    if (output.LengthByte() > 4 * text.LengthByte()) std::abort();
    // Under a double-byte page the blank after a lone lead byte becomes its trail byte.
    if (directive == '#' && !doubleByte &&
        preprocessor.Preprocess(output, &symbols).View() != output.View())
        std::abort();
}

void CheckTokenizer(const SString& text, int flags) {
    SStringTokenizer tokenizer;
    tokenizer.AddSimpleToken("/*", 1);
    tokenizer.AddSimpleToken("+++", 2);
    tokenizer.AddDelimitedToken("quoted", "\"", "\"", flags & 1, 3);
    tokenizer.Init(text, "+-\"", flags & 2, flags & 4);
    for (unsigned int before = 0;;) {
        std::string_view token;
        const SDelimitedToken* matched = nullptr;
        const long id = tokenizer.NextTokenView(&token, &matched);
        const unsigned int after = tokenizer.SaveState();
        if ((matched != nullptr) != (id != SStringTokenizer::NoId)) std::abort();
        if (token.empty() && !matched) break;
        if (after <= before || after - before < token.size()) std::abort();
        before = after;
        if (flags & 8) tokenizer.RetrieveUntil("*/", nullptr);
    }
    if (tokenizer.NextToken().LengthByte() != 0) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) return 0;
    const bool doubleByte = data[0] & 1;
    _setmbcp(doubleByte ? 932 : 1252);
    const SString text(std::string_view(reinterpret_cast<const char*>(data) + 2, size - 2));
    CheckPreprocessor(text, static_cast<char>(data[1]), doubleByte);
    CheckTokenizer(text, data[0] >> 1);
    return 0;
}
