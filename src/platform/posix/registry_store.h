// One tree of the registry in one SQLite file.
//
//     keys(id, parent, fold, name)          parent 0: a key right below the root, which has no row
//     vals(key, fold, name, type, data)     key 0: a value of the root itself
//
// Names are found by `fold`, the name in lower case. Identifiers are never used again, so that an
// open key that was deleted is never mistaken for another. A write is one transaction with a
// rollback journal, on the disk when it returns; a writer that meets another one waits.
//
// A store that is not there yet reads as an empty one; the first write makes its folders and file.
// Everything here runs under the registry's one lock (registry_keys.h).
#ifndef BRCORE8_PLATFORM_POSIX_REGISTRY_STORE_H
#define BRCORE8_PLATFORM_POSIX_REGISTRY_STORE_H

#include <sys/types.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/posix/registry.h"
#include "platform/posix/sqlite_calls.h"

namespace brcore8 {

enum class StoreSql {
    BeginRead,
    BeginWrite,
    Commit,
    Rollback,
    DataVersion,
    FindKey,
    KeyExists,
    HasKeys,
    PlaceOfKey,
    AddKey,
    DropKey,
    DropValuesOf,
    NthKey,
    FindValue,
    PutValue,
    DropValue,
    NthValue,
    Count
};

class RegistryStore {
public:
    // `shared`: a file and folders made are readable for everybody. Throws std::bad_alloc.
    RegistryStore(std::string path, bool shared) : path_(std::move(path)), shared_(shared) {}
    ~RegistryStore() { Disconnect(); }
    RegistryStore(const RegistryStore&) = delete;
    RegistryStore& operator=(const RegistryStore&) = delete;

    const std::string& Path() const { return path_; }
    // Whether the path still names the file that this store was opened on.
    bool IsCurrent() const;

    // Opens the file unless it is open. ERROR_FILE_NOT_FOUND when it is not there, or empty, and
    // `write` is not set; with it, it is made and must be writable.
    LSTATUS Connect(bool write);
    // In a child of fork: the connection belongs to the parent and is left to it.
    void Abandon();

    // Statements between Begin and End see one state, and change it in one step. Begins and ends
    // may be nested; then the outermost counts, and after a store's failure inside it everything
    // is taken back. End returns `status`, or why it could not be made to last.
    LSTATUS Begin(bool write);
    LSTATUS End(LSTATUS status);
    bool IsBusy() const { return depth_ > 0; }
    // A failure that is none of SQLite's: like one of its own it ends a write. Returns the status.
    LSTATUS Fail(LSTATUS status);
    // While this stays the same no key disappears unnoticed; KeyDropped changes it, as every
    // outermost Begin does.
    std::uint64_t Now() const { return now_; }
    void KeyDropped() { ++now_; }

    bool IsReadOnly() const { return db_ != nullptr && Sqlite().db_readonly(db_, "main") != 0; }

    // Differs from the last answer when positions in the store may have changed meanwhile other
    // than by this process's own writes. Between Begin and End.
    std::uint64_t Epoch();

private:
    friend class StoreQuery;

    LSTATUS Open(bool write);
    LSTATUS CheckFormat(bool write);
    LSTATUS Run(const char* sql);
    LSTATUS RunStatement(StoreSql which);
    LSTATUS Failed(int code);
    void TakeBack();
    void Forget();
    void Disconnect();

    std::string path_;
    bool shared_;
    sqlite3* db_ = nullptr;
    sqlite3_stmt* statements_[static_cast<int>(StoreSql::Count)] = {};
    bool hasTables_ = false;
    dev_t device_ = 0;
    ino_t file_ = 0;
    int depth_ = 0;
    bool writing_ = false;
    LSTATUS broken_ = 0;  // why the outermost transaction cannot be kept any more
    std::int64_t dataVersion_ = -1;
    std::uint64_t epoch_ = 1;
    std::uint64_t now_ = 1;
};

// One use of a prepared statement, which it leaves ready for the next.
//
//     StoreQuery query(store, StoreSql::FindKey);
//     query.Bind(1, parent).Bind(2, fold);
//     if (query.Next()) id = query.Number(0);
//     return query.Status();
class StoreQuery {
public:
    StoreQuery(RegistryStore& store, StoreSql which);
    ~StoreQuery();
    StoreQuery(const StoreQuery&) = delete;
    StoreQuery& operator=(const StoreQuery&) = delete;

    // Texts and data are not copied: they outlive the query.
    StoreQuery& Bind(int place, std::int64_t number);
    StoreQuery& Bind(int place, std::string_view text);
    StoreQuery& BindData(int place, const void* data, std::size_t size);

    // Whether there is a row, or one more. False after a failure too.
    bool Next();
    // Runs a statement that gives no row.
    LSTATUS Run();
    LSTATUS Status() const { return status_; }

    // Of the row; texts and data until the next step.
    std::int64_t Number(int column) { return Sqlite().column_int64(statement_, column); }
    // Fails the query when there is no memory for them.
    std::string_view Text(int column);
    // The row that a statement without a row has added; how many rows it has changed.
    std::int64_t NewRow() const { return Sqlite().last_insert_rowid(store_.db_); }
    int Changes() const { return Sqlite().changes(store_.db_); }

private:
    RegistryStore& store_;
    sqlite3_stmt* statement_ = nullptr;
    LSTATUS status_ = ERROR_SUCCESS;
};

}  // namespace brcore8

#endif
