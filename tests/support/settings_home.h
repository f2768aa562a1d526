// Settings of its own for every case: store files in a folder of its own where stores are files,
// elsewhere a key of its own below the application root. Both are gone afterwards.
#ifndef BRCORE8_TESTS_SUPPORT_SETTINGS_HOME_H
#define BRCORE8_TESTS_SUPPORT_SETTINGS_HOME_H

#include <brcore8/settings/registry.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <random>
#include <string>

#include "settings_system.h"

class SettingsTest : public ::testing::Test {
protected:
    SettingsTest() {
        const auto* const info = ::testing::UnitTest::GetInstance()->current_test_info();
        name_ = std::string("test-") + info->test_suite_name() + "-" + info->name();
        std::random_device random;
        do {
            folder_ = std::filesystem::temp_directory_path() /
                      ("brcore8-" + name_ + "-" + std::to_string(random()));
        } while (!std::filesystem::create_directory(folder_));
        SetVariable("BRCORE8_SETTINGS", UserStore().c_str());
        SetVariable("BRCORE8_MACHINE_SETTINGS", MachineStore().c_str());
        Clean();
    }
    ~SettingsTest() override {
        Clean();
        SetVariable("BRCORE8_SETTINGS", "");
        SetVariable("BRCORE8_MACHINE_SETTINGS", "");
        std::filesystem::remove_all(folder_);
    }

    // This case's own, empty at first.
    const std::filesystem::path& Folder() const { return folder_; }
    // Where the stores are, if they are files.
    std::string UserStore() const { return (folder_ / "user.db").string(); }
    std::string MachineStore() const { return (folder_ / "machine.db").string(); }
    // The path of a key below this case's own.
    SString Path(const char* below = "") const {
        SString path = SRegistry::ApplicationRoot() + name_.c_str();
        if (*below != '\0') (path += '\\') += below;
        return path;
    }

private:
    void Clean() const {
        for (const HKEY root : {SRegistry::CurrentUser(), SRegistry::LocalMachine()})
            SRegistry(root, SRegistry::ApplicationRoot(), 0).DeleteTree(name_.c_str());
    }

    std::string name_;
    std::filesystem::path folder_;
};

#endif
