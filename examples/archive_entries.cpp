// Lists a ZIP archive and reads one of its entries.
#include <brcore8/brcore8.h>
#include <iostream>

int main(int, char** arguments) {
    SZipFile archive(arguments[1]);
    for (const SZipEntry& entry : archive)
        std::cout << entry.GetName() << ' ' << entry.GetSize() << ", ";
    std::cout << SReadAll(*archive.Open(*archive.begin())) << '\n';  // every check made on the way
}
