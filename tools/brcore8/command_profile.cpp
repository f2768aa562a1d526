// profile: keys of INI files.

#include "command.h"

#include <brcore8/settings/profile.h>

#include <CLI/CLI.hpp>

#include <filesystem>
#include <fstream>
#include <memory>

namespace tool {
namespace {

struct ProfileOptions {
    std::string file;
    std::string section;
    std::string key;
    std::string value;  // or the default
    bool hasDefault = false;

    SString Section() const { return SString(std::string_view(section)); }
    SString Key() const { return SString(std::string_view(key)); }
    SString Value() const { return SString(std::string_view(value)); }
    // A name without a folder is a file of the current one here, as for every command.
    SString Path() const {
        const std::string path = std::filesystem::absolute(file).string();
        return SString(std::string_view(path));
    }
};

void AddNames(CLI::App& parser, ProfileOptions& options) {
    parser.add_option("FILE", options.file, "An INI file")->required();
    parser.add_option("SECTION", options.section, "The section's name; '' is what precedes any")
        ->required();
    parser.add_option("KEY", options.key, "The key's name")->required();
}

// The library takes a file that it cannot read for one without keys.
void CheckReadable(const std::string& file) {
    if (std::filesystem::is_directory(file)) throw Failure{file, "it is a folder"};
    if (!std::ifstream(file)) throw Failure{file, "Can't open for reading"};
}

int Get(const ProfileOptions& options) {
    const SProfile profile(options.Path(), options.Section(), 0);
    if (!options.hasDefault || std::filesystem::exists(options.file)) CheckReadable(options.file);
    if (!options.hasDefault && !profile.HasProfile(options.Key())) {
        throw Failure{options.file,
                      "no key \"" + options.key + "\" in section \"" + options.section + "\""};
    }
    SString value;
    if (profile.GetWholeProfile(options.Key(), &value, options.Value()) < 0)
        throw Failure{options.file, "there is not enough memory"};
    return Print(std::string(value.View()) + "\n");
}

int Set(const ProfileOptions& options) {
    SProfile profile(options.Path(), options.Section(), 1);
    if (!profile.Accepts(options.Key(), options.Value()))
        throw Failure{options.file, "such a section, key or value would not read back"};
    if (profile.WriteProfile(options.Key(), options.Value()) < 0)
        throw Failure{options.file, "the key could not be written"};
    return Done;
}

Action PrepareGet(CLI::App& parser, const Settings&) {
    auto options = std::make_shared<ProfileOptions>();
    AddNames(parser, *options);
    CLI::Option* const otherwise =
        parser.add_option("DEFAULT", options->value, "What to print for a key that is not there");
    parser.footer(
        "The value stands without the blanks and the pair of quotes around it. Names\n"
        "are found in any case; of repeats the first counts. DEFAULT stands for an\n"
        "empty value too.");
    return [options, otherwise] {
        options->hasDefault = otherwise->count() != 0;
        return Get(*options);
    };
}

Action PrepareSet(CLI::App& parser, const Settings&) {
    auto options = std::make_shared<ProfileOptions>();
    AddNames(parser, *options);
    parser.add_option("VALUE", options->value, "The key's new value")->required();
    parser.footer(
        "Every other byte of the file stays as it was (on Windows the system lays the\n"
        "file out anew). A line break, a ] in SECTION and an = in KEY are refused. A\n"
        "VALUE that begins with a dash stands behind --.");
    return [options] { return Set(*options); };
}

constexpr Command Parts[] = {
    {"get", "Print the value of a key", PrepareGet},
    {"set", "Give a key a value, and make it where it is missing", PrepareSet},
};

}  // namespace

Action PrepareProfile(CLI::App& parser, const Settings& settings) {
    return PrepareParts(parser, settings, Parts);
}

}  // namespace tool
