#include <brcore8/brcore8.h>
#include <iostream>

int main() {
    SSymbolTable symbols;
    symbols.AddSymbol("EUROPE", "", -1);
    SPreprocessor preprocessor('#');
    const SString text = preprocessor.Preprocess("#ifdef EUROPE metre #else foot #endif", &symbols);
    SOutputFileOnChange file("unit.txt");  // rewritten only when its content changes
    file.Write(text, static_cast<unsigned long>(text.LengthByte()));
    file.Close();
    std::cout << text << '\n';  // "metre "
}
