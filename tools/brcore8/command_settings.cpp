// settings: the values that programs of the suite keep for the current user.

#include "command.h"
#include "output.h"

#include <brcore8/settings/registry.h>

#include <CLI/CLI.hpp>

#include <cstdint>
#include <memory>
#include <vector>

namespace tool {
namespace {

struct SettingsOptions {
    std::string key;
    std::string name;
    std::string value;
    bool asDword = false;
    bool recursive = false;

    std::string Place() const { return key + "\\" + name; }
};

SString Text(const std::string& text) {
    return SString(std::string_view(text));
}

SString PathOf(const std::string& key) {
    return SRegistry::ApplicationRoot() + Text(key);
}

// The key of that name for reading; fails when there is none.
void Open(SRegistry& key, const std::string& name) {
    if (key.Init(SRegistry::CurrentUser(), PathOf(name), 0) < 0)
        throw Failure{name.empty() ? "settings" : name, "there is no such key"};
}

// --- list ----------------------------------------------------------------------------------------

std::string Hex(std::string_view bytes) {
    constexpr char digits[] = "0123456789abcdef";
    std::string text;
    for (const char byte : bytes) {
        if (!text.empty()) text += ' ';
        text += {digits[byte >> 4 & 15], digits[byte & 15]};
    }
    return text;
}

std::string ValueRow(unsigned long type, const SString& name, const SString& value) {
    switch (type) {
        case SRegistry::TypeString:
            return Row({"string", name.View(), value.View()});
        case SRegistry::TypeExpandString:
            return Row({"expand", name.View(), value.View()});
        case SRegistry::TypeDword:
        case SRegistry::TypeDwordBigEndian:
            return Row({"dword", name.View(), value.View()});
        case SRegistry::TypeBinary:
            return Row({"binary", name.View(), Hex(value.View())});
        default:
            return Row({"type " + std::to_string(type), name.View(), Hex(value.View())});
    }
}

int List(const SettingsOptions& options) {
    SRegistry key;
    Open(key, options.key);
    Output output;
    SString name, text;
    for (long index = 0; key.GetEnumKey(index, &name, text) >= 0; ++index)
        output.Write(Row({"key", name.View()}));
    unsigned long type = 0;
    for (long index = 0; key.GetEnumValue(index, &name, text, &type) >= 0; ++index)
        output.Write(ValueRow(type, name, text));
    output.Finish();
    return Done;
}

// --- get and set ---------------------------------------------------------------------------------

int Get(const SettingsOptions& options) {
    SRegistry key;
    Open(key, options.key);
    SString value;
    unsigned long type = 0;
    if (key.GetProfile(Text(options.name), &value, "", &type) >= 0)
        return Print(std::string(value.View()) + "\n");
    throw Failure{options.Place(),
                  type == 0 ? "there is no such value" : "the value is neither text nor a number"};
}

std::string DwordText(const std::string& text) {
    std::size_t end = 0;
    long long number = 0;
    try {
        number = std::stoll(text, &end);
    } catch (const std::exception&) {
        end = 0;
    }
    const bool whole = end != 0 && end == text.size();
    return whole && number >= INT32_MIN && number <= UINT32_MAX ? "" : "a number of 32 bits";
}

int Set(const SettingsOptions& options) {
    if (options.asDword && !DwordText(options.value).empty())
        throw CLI::ValidationError("VALUE", DwordText(options.value));
    SRegistry key(SRegistry::CurrentUser(), PathOf(options.key), 1);
    const SString name = Text(options.name);
    const long status =
        !key.IsOpen()     ? brcore8::SettingsFailed
        : options.asDword ? key.WriteProfile(name, static_cast<long>(std::stoll(options.value)), 1)
                          : key.WriteProfile(name, Text(options.value));
    if (status < 0) throw Failure{options.Place(), "it could not be written"};
    return Done;
}

// --- delete --------------------------------------------------------------------------------------

// The keys below a path, on all levels.
std::size_t CountKeys(const std::string& path) {
    std::size_t count = 0;
    std::vector<std::string> open{path};
    while (!open.empty()) {
        const std::string next = std::move(open.back());
        open.pop_back();
        const SRegistry key(SRegistry::CurrentUser(), Text(next), 0);
        SString name, kind;
        for (long index = 0; key.GetEnumKey(index, &name, kind) >= 0; ++index, ++count)
            open.push_back(next + "\\" + std::string(name.View()));
    }
    return count;
}

// One deletion passes over every second key: as long as some go, the rest may.
void DeleteKey(const SRegistry& key, const SettingsOptions& options) {
    const SString name = Text(options.name);
    if (!key.IsOpen()) throw Failure{options.Place(), "it could not be deleted"};
    const std::string path(PathOf(options.Place()).View());
    std::size_t before = CountKeys(path) + 1;
    while (SRegistry(key.GetKey(), name, 0).IsOpen()) {
        const long status = key.DeleteProfile(name, 1);
        const std::size_t left = CountKeys(path);
        if (status < 0 && left >= before) throw Failure{options.Place(), "it could not be deleted"};
        before = left;
    }
}

int Delete(const SettingsOptions& options) {
    SRegistry key;
    const SString path = PathOf(options.key), name = Text(options.name);
    Open(key, options.key);
    const bool isValue = SRegistry::FindProfile(path, name) == SRegistry::Origin::User;
    // A name of nothing but backslashes would be the key itself.
    const bool isKey = options.recursive && SRegistry(key.GetKey(), name, 0).IsOpen() &&
                       options.name.find_first_not_of('\\') != std::string::npos;
    if (!isValue && !isKey) {
        const char* const what = options.recursive ? "value or key" : "value";
        throw Failure{options.Place(), std::string("there is no such ") + what};
    }
    // It is there: opened for writing, not made.
    key.Init(SRegistry::CurrentUser(), path, 1);
    if (isValue && key.DeleteProfile(name, 0) < 0)
        throw Failure{options.Place(), "it could not be deleted"};
    if (isKey) DeleteKey(key, options);
    return Done;
}

// --- options -------------------------------------------------------------------------------------

void AddPlace(CLI::App& parser, SettingsOptions& options) {
    parser.add_option("KEY", options.key, "The key, with \\ between its levels; \"\" is the root")
        ->required();
    parser.add_option("NAME", options.name, "The value; \"\" is the key's default")->required();
}

Action PrepareSettingsList(CLI::App& parser, const Settings&) {
    auto options = std::make_shared<SettingsOptions>();
    parser.add_option("KEY", options->key, "The key, with \\ between its levels; \"\" is the root")
        ->required();
    parser.footer(
        "Rows of key and a name, then rows of TYPE, NAME and VALUE with tabs between\n"
        "them. TYPE is string, expand, dword, binary or type and a number; bytes are\n"
        "hexadecimal digits.");
    return [options] { return List(*options); };
}

Action PrepareSettingsGet(CLI::App& parser, const Settings&) {
    auto options = std::make_shared<SettingsOptions>();
    AddPlace(parser, *options);
    parser.footer("The environment's variables are put in where the value asks for them.");
    return [options] { return Get(*options); };
}

Action PrepareSettingsSet(CLI::App& parser, const Settings&) {
    auto options = std::make_shared<SettingsOptions>();
    parser.add_flag("--dword", options->asDword, "A number of 32 bits, not a text");
    AddPlace(parser, *options);
    parser.add_option("VALUE", options->value, "The text or the number")->required();
    return [options] { return Set(*options); };
}

Action PrepareSettingsDelete(CLI::App& parser, const Settings&) {
    auto options = std::make_shared<SettingsOptions>();
    parser.add_flag("-r,--recursive", options->recursive, "Also the key NAME and all below it");
    AddPlace(parser, *options);
    return [options] { return Delete(*options); };
}

constexpr Command Parts[] = {
    {"list", "Print a key's keys and values", PrepareSettingsList},
    {"get", "Print a value", PrepareSettingsGet},
    {"set", "Write a value", PrepareSettingsSet},
    {"delete", "Delete a value, or a key", PrepareSettingsDelete},
};

}  // namespace

Action PrepareSettings(CLI::App& parser, const Settings& settings) {
    parser.footer("The settings of the current user; BRCORE8_SETTINGS names another store file.");
    return PrepareParts(parser, settings, Parts);
}

}  // namespace tool
