// The settings store beside SQLite itself; the INI files beside QSettings, GKeyFile and one write.
#include <brcore8/settings/profile.h>
#include <brcore8/settings/registry.h>
#include <brcore8/strings/string.h>

#include <fcntl.h>
#include <glib.h>
#include <sqlite3.h>
#include <unistd.h>

#include <QtCore/QSettings>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "bench.h"

namespace {

using bench::DataFile;
using bench::Expect;

// ---- INI files ----------------------------------------------------------------------------------

constexpr int kSections = 100;
constexpr int kKeys = 100;

// Names made beforehand: how fast a program makes them is not the question.
const std::vector<std::string>& Names(const char* prefix) {
    static std::vector<std::string> names[2];
    std::vector<std::string>& made = names[*prefix == 's'];
    for (int i = static_cast<int>(made.size()); i < kKeys; ++i)
        made.push_back(prefix + std::to_string(i));
    return made;
}

void ReadIni(benchmark::State& state) {
    const SString path(std::string_view(DataFile("settings_10k.ini")));
    for (auto _ : state) {
        std::size_t bytes = 0;
        for (const std::string& section : Names("section")) {
            const SProfile profile(path, SString(std::string_view(section)), 0);
            SString value;
            for (const std::string& key : Names("key")) {
                profile.GetProfile(SString(std::string_view(key)), &value, "");
                bytes += static_cast<std::size_t>(value.LengthByte());
            }
        }
        Expect(bytes > kSections * kKeys * 10, "INI values");
    }
}
BENCHMARK(ReadIni)->Name("settings/ini_read_10k:brcore8")->Unit(benchmark::kMillisecond);

void ReadIniWithQt(benchmark::State& state) {
    const QString path = QString::fromStdString(DataFile("settings_10k.ini"));
    std::vector<QString> keys;
    for (const std::string& section : Names("section"))
        for (const std::string& key : Names("key"))
            keys.push_back(QString::fromStdString(section + "/" + key));
    for (auto _ : state) {
        const QSettings settings(path, QSettings::IniFormat);
        qsizetype characters = 0;
        for (const QString& key : keys)
            characters += settings.value(key).toString().size();
        Expect(characters > kSections * kKeys * 10, "QSettings values");
    }
}
BENCHMARK(ReadIniWithQt)->Name("settings/ini_read_10k:QSettings")->Unit(benchmark::kMillisecond);

void ReadIniWithGlib(benchmark::State& state) {
    const std::string path = DataFile("settings_10k.ini");
    for (auto _ : state) {
        GKeyFile* const file = g_key_file_new();
        Expect(g_key_file_load_from_file(file, path.c_str(), G_KEY_FILE_NONE, nullptr), "GKeyFile");
        std::size_t bytes = 0;
        for (const std::string& section : Names("section"))
            for (const std::string& key : Names("key")) {
                char* const value =
                    g_key_file_get_string(file, section.c_str(), key.c_str(), nullptr);
                bytes += std::char_traits<char>::length(value);
                g_free(value);
            }
        g_key_file_free(file);
        Expect(bytes > kSections * kKeys * 10, "GKeyFile values");
    }
}
BENCHMARK(ReadIniWithGlib)->Name("settings/ini_read_10k:GKeyFile")->Unit(benchmark::kMillisecond);

constexpr int kWrites = 100;

std::string CopyOfIni(const char* name) {
    const std::filesystem::path copy = bench::DataFolder() / name;
    std::filesystem::copy_file(DataFile("settings_1k.ini"), copy,
                               std::filesystem::copy_options::overwrite_existing);
    return copy.string();
}

void WriteIni(benchmark::State& state) {
    const SString path(std::string_view(CopyOfIni("write_ours.ini")));
    long value = 0;
    for (auto _ : state) {
        SProfile profile(path, "section5", 0);
        for (int i = 0; i < kWrites; ++i)
            Expect(profile.WriteProfile("key50", ++value) == 0, "INI write");
    }
}
BENCHMARK(WriteIni)
    ->Name("settings/ini_write_through_100:brcore8")
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

// The least that keeps a file whole: the same bytes beside it, on the disk, renamed over it.
void WriteAndRename(benchmark::State& state) {
    const std::string path = CopyOfIni("write_once.ini");
    const std::string text = bench::ReadWhole(path);
    const std::string sibling = path + ".new";
    for (auto _ : state) {
        for (int i = 0; i < kWrites; ++i) {
            const int file = open(sibling.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
            const auto written = write(file, text.data(), text.size());
            Expect(written == static_cast<ssize_t>(text.size()) && fsync(file) == 0, "write");
            close(file);
            Expect(std::rename(sibling.c_str(), path.c_str()) == 0, "rename");
        }
    }
}
BENCHMARK(WriteAndRename)
    ->Name("settings/ini_write_through_100:one write and a rename")
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

// ---- The store ----------------------------------------------------------------------------------

constexpr int kValues = 10000;
constexpr const char* kKey = "Bench\\Values";

const std::vector<SString>& ValueNames() {
    static const std::vector<SString> names = [] {
        std::vector<SString> made;
        for (int i = 0; i < kValues; ++i)
            made.push_back(SString(std::string_view("value " + std::to_string(i))));
        return made;
    }();
    return names;
}

// Another text at every call: what does not change need not be written.
SString NextValue() {
    static int round = 0;
    return SString(std::string_view("the value of round " + std::to_string(++round)));
}

void WriteValues(SRegistry& settings, std::size_t count) {
    const SString value = NextValue();
    for (std::size_t i = 0; i < count; ++i)
        Expect(settings.WriteProfile(ValueNames()[i], value) == 0, "store write");
}

void StoreWrite(benchmark::State& state) {
    SRegistry settings(SRegistry::CurrentUser(), kKey, 1);
    Expect(settings.IsOpen(), "store");
    for (auto _ : state) {
        SRegistryBatch batch(settings);
        WriteValues(settings, kValues);
        Expect(batch.Commit() == 0, "batch");
    }
}
BENCHMARK(StoreWrite)
    ->Name("settings/store_write_10k:brcore8")
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

void StoreWriteThrough(benchmark::State& state) {
    SRegistry settings(SRegistry::CurrentUser(), kKey, 1);
    for (auto _ : state)
        WriteValues(settings, kWrites);
}
BENCHMARK(StoreWriteThrough)
    ->Name("settings/store_write_through_100:brcore8")
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

void StoreRead(benchmark::State& state) {
    SRegistry settings(SRegistry::CurrentUser(), kKey, 1);
    {
        SRegistryBatch batch(settings);
        WriteValues(settings, kValues);
        Expect(batch.Commit() == 0, "batch");
    }
    for (auto _ : state) {
        SString value;
        std::size_t bytes = 0;
        for (const SString& name : ValueNames()) {
            settings.GetProfile(name, &value, "");
            bytes += static_cast<std::size_t>(value.LengthByte());
        }
        Expect(bytes > kValues * 7, "store values");
    }
}
BENCHMARK(StoreRead)->Name("settings/store_read_10k:brcore8")->Unit(benchmark::kMillisecond);

// A table of names and values in a file of its own, as safe against a crash as the store.
class Database {
public:
    explicit Database(const char* file) {
        const std::string path = (bench::DataFolder() / file).string();
        std::filesystem::remove(path);
        Expect(sqlite3_open(path.c_str(), &handle_) == SQLITE_OK, "sqlite3_open");
        Run("PRAGMA journal_mode=DELETE; PRAGMA synchronous=FULL;"
            "CREATE TABLE vals(name TEXT COLLATE NOCASE PRIMARY KEY, data TEXT) WITHOUT ROWID;");
        write_ = Prepare("INSERT OR REPLACE INTO vals VALUES(?1, ?2)");
        read_ = Prepare("SELECT data FROM vals WHERE name = ?1");
    }
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;
    ~Database() {
        sqlite3_finalize(write_);
        sqlite3_finalize(read_);
        sqlite3_close(handle_);
    }

    void Run(const char* sql) {
        Expect(sqlite3_exec(handle_, sql, nullptr, nullptr, nullptr) == SQLITE_OK, sql);
    }
    void Write(const SString& name, const SString& value) {
        sqlite3_bind_text(write_, 1, name, name.LengthByte(), SQLITE_STATIC);
        sqlite3_bind_text(write_, 2, value, value.LengthByte(), SQLITE_STATIC);
        Expect(sqlite3_step(write_) == SQLITE_DONE, "insert");
        sqlite3_reset(write_);
    }
    std::size_t Read(const SString& name, std::string& value) {
        sqlite3_bind_text(read_, 1, name, name.LengthByte(), SQLITE_STATIC);
        Expect(sqlite3_step(read_) == SQLITE_ROW, "select");
        value = reinterpret_cast<const char*>(sqlite3_column_text(read_, 0));
        sqlite3_reset(read_);
        return value.size();
    }

private:
    sqlite3_stmt* Prepare(const char* sql) {
        sqlite3_stmt* made = nullptr;
        Expect(sqlite3_prepare_v2(handle_, sql, -1, &made, nullptr) == SQLITE_OK, sql);
        return made;
    }

    sqlite3* handle_ = nullptr;
    sqlite3_stmt* write_ = nullptr;
    sqlite3_stmt* read_ = nullptr;
};

void WriteValues(Database& database, std::size_t count) {
    const SString value = NextValue();
    for (std::size_t i = 0; i < count; ++i)
        database.Write(ValueNames()[i], value);
}

void WriteAll(Database& database) {
    database.Run("BEGIN IMMEDIATE");
    WriteValues(database, kValues);
    database.Run("COMMIT");
}

void SqliteWrite(benchmark::State& state) {
    Database database("write.db");
    for (auto _ : state)
        WriteAll(database);
}
BENCHMARK(SqliteWrite)
    ->Name("settings/store_write_10k:SQLite")
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

void SqliteWriteThrough(benchmark::State& state) {
    Database database("write_through.db");
    for (auto _ : state)
        WriteValues(database, kWrites);
}
BENCHMARK(SqliteWriteThrough)
    ->Name("settings/store_write_through_100:SQLite")
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

void SqliteRead(benchmark::State& state) {
    Database database("read.db");
    WriteAll(database);
    std::string value;
    for (auto _ : state) {
        std::size_t bytes = 0;
        for (const SString& name : ValueNames())
            bytes += database.Read(name, value);
        Expect(bytes > kValues * 7, "SQLite values");
    }
}
BENCHMARK(SqliteRead)->Name("settings/store_read_10k:SQLite")->Unit(benchmark::kMillisecond);

}  // namespace
