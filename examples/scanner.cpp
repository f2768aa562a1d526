// A query cut into its keywords and what stands between them.
#include <brcore8/text/scanner.h>
#include <brcore8/text/symbol_table.h>
#include <iostream>

int main() {
    SKeywordTable keywords;
    keywords.AddKeyword("select", 1);
    keywords.AddKeyword("from", 2);
    SScanner scanner("SELECT (width) FROM shapes", &keywords);
    while (scanner.NextTokenID() != SScanner::NoID || !scanner.token.IsEmpty())
        std::cout << scanner.tokenID << ':' << scanner.token << ' ';
    std::cout << '\n';
}
