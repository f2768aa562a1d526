// The n-th allocation inside SQLite fails, then the n-th use of the disk, for every n: each
// operation does all of its work or none of it, says which, and leaks nothing.
#include <brcore8/settings/registry.h>

#include <sqlite3.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>

#include "support/settings_home.h"

namespace {

using brcore8::SettingsDone;
using brcore8::SettingsFailed;

// What fails next: counted down by every allocation, or by every use of the disk.
struct Fault {
    enum Way { None, Memory, Once, Always, Full };

    Way way = None;
    int countdown = 0;
    int met = 0;  // how often something was refused

    bool Comes(bool memory) {
        if (way == None || memory != (way == Memory)) return false;
        if (countdown > 0) --countdown;
        if (countdown != 0 || (met != 0 && way != Always && way != Full)) return false;
        ++met;
        return true;
    }
};
Fault fault;
int allocated = 0;
int openFiles = 0;

// --- memory --------------------------------------------------------------------------------------

sqlite3_mem_methods memory;  // SQLite's own

void* Allocate(int size) {
    void* const block = fault.Comes(true) ? nullptr : memory.xMalloc(size);
    allocated += block != nullptr;
    return block;
}
void* Reallocate(void* block, int size) {
    return fault.Comes(true) ? nullptr : memory.xRealloc(block, size);
}
void Release(void* block) {
    allocated -= block != nullptr;
    memory.xFree(block);
}

// SQLite takes other memory only before its first use.
class CountedMemory : public ::testing::Environment {
    void SetUp() override {
        ASSERT_EQ(sqlite3_config(SQLITE_CONFIG_GETMALLOC, &memory), SQLITE_OK);
        sqlite3_mem_methods counted = memory;
        counted.xMalloc = Allocate;
        counted.xRealloc = Reallocate;
        counted.xFree = Release;
        ASSERT_EQ(sqlite3_config(SQLITE_CONFIG_MALLOC, &counted), SQLITE_OK);
        // Every allocation is asked for, none comes from a block that a connection keeps.
        ASSERT_EQ(sqlite3_config(SQLITE_CONFIG_LOOKASIDE, 0, 0), SQLITE_OK);
    }
};
const auto* const countedMemory = ::testing::AddGlobalTestEnvironment(new CountedMemory);

// --- disk ----------------------------------------------------------------------------------------

sqlite3_vfs* disk = nullptr;  // the system's

struct File {
    sqlite3_file base;
    sqlite3_file* real;  // right behind
};
sqlite3_file* Real(sqlite3_file* file) {
    return reinterpret_cast<File*>(file)->real;
}
const sqlite3_io_methods& Methods(sqlite3_file* file) {
    return *Real(file)->pMethods;
}

// The code of a use of the disk: the fault's when it comes, else `use`'s.
template <class Use>
int OnDisk(int error, Use use) {
    return fault.Comes(false) ? error : use();
}

int CloseFile(sqlite3_file* file) {
    --openFiles;
    return Methods(file).xClose(Real(file));
}
int Read(sqlite3_file* file, void* data, int size, sqlite3_int64 place) {
    return OnDisk(SQLITE_IOERR_READ,
                  [=] { return Methods(file).xRead(Real(file), data, size, place); });
}
// The half of what it should write is there when a write fails.
int Write(sqlite3_file* file, const void* data, int size, sqlite3_int64 place) {
    const bool fails = fault.Comes(false);
    const int code = Methods(file).xWrite(Real(file), data, fails ? size / 2 : size, place);
    return !fails ? code : fault.way == Fault::Full ? SQLITE_FULL : SQLITE_IOERR_WRITE;
}
int Truncate(sqlite3_file* file, sqlite3_int64 size) {
    return OnDisk(SQLITE_IOERR_TRUNCATE, [=] { return Methods(file).xTruncate(Real(file), size); });
}
// Whether it really gets there is the disk's business, and would cost the time of one.
int Sync(sqlite3_file*, int) {
    return OnDisk(SQLITE_IOERR_FSYNC, [] { return SQLITE_OK; });
}
int FileSize(sqlite3_file* file, sqlite3_int64* size) {
    return OnDisk(SQLITE_IOERR_FSTAT, [=] { return Methods(file).xFileSize(Real(file), size); });
}
int Lock(sqlite3_file* file, int level) {
    return OnDisk(SQLITE_IOERR_LOCK, [=] { return Methods(file).xLock(Real(file), level); });
}
int Unlock(sqlite3_file* file, int level) {
    return Methods(file).xUnlock(Real(file), level);
}
int IsReserved(sqlite3_file* file, int* reserved) {
    return OnDisk(SQLITE_IOERR_CHECKRESERVEDLOCK,
                  [=] { return Methods(file).xCheckReservedLock(Real(file), reserved); });
}
int Control(sqlite3_file* file, int operation, void* data) {
    return Methods(file).xFileControl(Real(file), operation, data);
}
int SectorSize(sqlite3_file* file) {
    return Methods(file).xSectorSize(Real(file));
}
int Traits(sqlite3_file* file) {
    return Methods(file).xDeviceCharacteristics(Real(file));
}

constexpr sqlite3_io_methods kFileMethods = {
    1,       CloseFile,  Read,   Write,   Truncate, Sync,    FileSize, Lock,    Unlock, IsReserved,
    Control, SectorSize, Traits, nullptr, nullptr,  nullptr, nullptr,  nullptr, nullptr};

int OpenFile(sqlite3_vfs*, const char* path, sqlite3_file* file, int flags, int* given) {
    auto* const opened = reinterpret_cast<File*>(file);
    opened->base.pMethods = nullptr;
    opened->real = reinterpret_cast<sqlite3_file*>(opened + 1);
    const int code = OnDisk(SQLITE_CANTOPEN,
                            [=] { return disk->xOpen(disk, path, opened->real, flags, given); });
    if (code != SQLITE_OK) return code;
    opened->base.pMethods = &kFileMethods;
    ++openFiles;
    return code;
}
int DeleteFile(sqlite3_vfs*, const char* path, int sync) {
    return OnDisk(SQLITE_IOERR_DELETE, [=] { return disk->xDelete(disk, path, sync); });
}
int Access(sqlite3_vfs*, const char* path, int flags, int* answer) {
    return OnDisk(SQLITE_IOERR_ACCESS, [=] { return disk->xAccess(disk, path, flags, answer); });
}

// SQLite's files are on a disk that fails, while one lives.
class FailingDisk {
public:
    FailingDisk() {
        disk = sqlite3_vfs_find(nullptr);
        vfs_ = *disk;
        vfs_.zName = "failing";
        vfs_.szOsFile += int{sizeof(File)};
        vfs_.xOpen = OpenFile;
        vfs_.xDelete = DeleteFile;
        vfs_.xAccess = Access;
        sqlite3_vfs_register(&vfs_, 1);
    }
    ~FailingDisk() {
        sqlite3_vfs_unregister(&vfs_);
        sqlite3_vfs_register(disk, 1);
    }
    FailingDisk(const FailingDisk&) = delete;
    FailingDisk& operator=(const FailingDisk&) = delete;

private:
    sqlite3_vfs vfs_;
};

// --- the operations ------------------------------------------------------------------------------

const HKEY kUser = SRegistry::CurrentUser();

using Operation = long (*)(SRegistry& key);

constexpr struct Row {
    const char* name;
    Operation run;
    bool onNothing = false;  // there is no file yet
} kRows[] = {
    {"first keys", [](SRegistry&) -> long { return SettingsDone; }, true},
    {"set", [](SRegistry& key) { return key.WriteProfile("A", "new"); }},
    {"set over pages", [](SRegistry& key) { return key.WriteProfile("a", SString('n', 20000)); }},
    {"delete value", [](SRegistry& key) { return key.DeleteProfile("a", 0); }},
    {"create key",
     [](SRegistry& key) -> long {
         return SRegistry(key.GetKey(), "new\\below", 1).IsOpen() ? SettingsDone : SettingsFailed;
     }},
    {"delete key", [](SRegistry& key) { return key.DeleteProfile("leaf", 1); }},
    {"delete tree", [](SRegistry& key) { return key.DeleteTree("tree"); }},
    {"batch",
     [](SRegistry& key) {
         SRegistryBatch batch(key);
         if (batch.GetStatus() < 0) return batch.GetStatus();
         key.WriteProfile("a", "new");
         key.WriteProfile("b", SString('n', 20000));
         key.DeleteProfile("c", 0);
         return batch.Commit();
     }},
    {"import",
     [](SRegistry& key) {
         return key.ImportText(
             "brcore8-settings 1\nkey \"new\"\n\"a\" = string \"x\"\n"
             "key \"tree\\\\one\"\n\"v\" = dword 1\n");
     }},
    {"export",
     [](SRegistry& key) {
         SString text;
         const long status = key.ExportText(&text);
         return status < 0 || text.View().ends_with("\"v\" = dword 7\n") ? status : 1;
     }},
};

class RegistryFaults : public SettingsTest {
protected:
    // SQLite's own memory, too, goes with the last connection.
    void TearDown() override { Disconnect(); }

    void FailEvery(Fault::Way way) {
        for (const Row& row : kRows) {
            SCOPED_TRACE(row.name);
            Prepare(row);
            FailEvery(row, way);
        }
    }

private:
    void Prepare(const Row& row) {
        RemoveStore();
        bytes_.clear();
        if (row.onNothing) return;
        Connect();
        SRegistry key(kUser, Path(), 1);
        for (const char* name : {"a", "b", "c"})
            ASSERT_EQ(key.WriteProfile(name, "old"), SettingsDone);
        for (const char* below : {"leaf", "tree\\one\\deeper", "tree\\two"})
            ASSERT_EQ(SRegistry(key.GetKey(), below, 1).WriteProfile("v", 7, 1), SettingsDone);
        Disconnect();
        std::ifstream file(UserStore(), std::ios::binary);
        bytes_.assign(std::istreambuf_iterator<char>(file), {});
    }
    // The operation on the store as it was prepared.
    long Run(const Row& row, Fault::Way way, int nth) {
        RemoveStore();
        if (!bytes_.empty()) std::ofstream(UserStore(), std::ios::binary) << bytes_;
        Connect();
        fault = {way, nth};
        long status = SettingsFailed;
        {
            SRegistry key(kUser, Path(), 1);
            if (key.IsOpen()) status = row.run(key);
        }
        fault.way = Fault::None;
        Disconnect();
        return status;
    }
    // What a process that comes next sees.
    std::string State() const {
        Connect();
        SString text;
        SRegistry(kUser, Path(), 0).ExportText(&text);
        Disconnect();
        return std::string(text.View());
    }
    std::string Integrity() const {
        sqlite3* store = nullptr;
        std::string answer;
        sqlite3_open(UserStore().c_str(), &store);
        sqlite3_exec(
            store, "PRAGMA integrity_check",
            [](void* out, int, char** row, char**) {
                *static_cast<std::string*>(out) += row[0];
                return 0;
            },
            &answer, nullptr);
        sqlite3_close(store);
        return answer;
    }
    void FailEvery(const Row& row, Fault::Way way) {
        const int baseline = allocated;
        const std::string old = State();
        ASSERT_EQ(Run(row, Fault::None, 0), SettingsDone);
        const std::string made = State();
        for (int nth = 1;; ++nth) {
            SCOPED_TRACE(std::to_string(nth));
            const long status = Run(row, way, nth);
            EXPECT_EQ(allocated, baseline);
            EXPECT_EQ(openFiles, 0);
            if (fault.met == 0) break;
            EXPECT_EQ(Integrity(), "ok");
            const std::string state = State();
            EXPECT_TRUE(state == made || (status < 0 && state == old)) << status << "\n" << state;
            if (HasFailure()) break;
        }
    }
    void RemoveStore() const {
        for (const char* end : {"", "-journal"})
            std::filesystem::remove(UserStore() + end);
    }
    // A store is let go of when the path names another.
    void Connect() const { SetVariable("BRCORE8_SETTINGS", UserStore().c_str()); }
    void Disconnect() const {
        SetVariable("BRCORE8_SETTINGS", (UserStore() + ".none").c_str());
        SRegistry(kUser, "none", 0);
    }

    const FailingDisk failing_;
    std::string bytes_;
};

TEST_F(RegistryFaults, MemoryEndsAnywhere) {
    FailEvery(Fault::Memory);
}
TEST_F(RegistryFaults, TheDiskFailsOnce) {
    FailEvery(Fault::Once);
}
TEST_F(RegistryFaults, TheDiskFailsFromThenOn) {
    FailEvery(Fault::Always);
}
TEST_F(RegistryFaults, TheDiskIsFull) {
    FailEvery(Fault::Full);
}

}  // namespace
