// Settings of a program: read with defaults, written as one, moved as text.
#include <brcore8/settings/registry.h>

#include <iostream>

int main() {
    const SString path = SRegistry::ApplicationRoot() + "Example";
    SRegistry settings(SRegistry::CurrentUser(), path, 1);

    SString font;
    long size = 0;
    settings.GetProfile("Font", &font, "Arial", nullptr);
    settings.GetProfile("Size", &size, 8);
    std::cout << "before: " << font << ", " << size << '\n';

    {
        SRegistryBatch batch(settings);  // both or none
        settings.WriteProfile("Font", "Tahoma");
        settings.WriteProfile("Size", 9, 1);
        batch.Commit();
    }
    settings.GetProfile("Font", &font, "Arial", nullptr);
    settings.GetProfile("Size", &size, 8);
    std::cout << "after: " << font << ", " << size << '\n';

    SString text;
    settings.ExportText(&text);
    std::cout << text;

    SRegistry(SRegistry::CurrentUser(), SRegistry::ApplicationRoot(), 0).DeleteTree("Example");
    return 0;
}
