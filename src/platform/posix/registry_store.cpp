#include "platform/posix/registry_store.h"

#include <sys/stat.h>

#include <iterator>

#include "platform/posix/registry_path.h"

namespace brcore8 {
namespace {

constexpr int kBusyMilliseconds = 5000;
constexpr int kFormat = 1;

// A truncated journal lasts as a deleted one does once it is flushed, and costs no new file.
constexpr char kSetUp[] =
    "PRAGMA journal_mode=TRUNCATE;"
    "PRAGMA synchronous=FULL;"
    "PRAGMA trusted_schema=OFF;"
    "PRAGMA cell_size_check=ON;";

constexpr char kTables[] =
    "CREATE TABLE keys(id INTEGER PRIMARY KEY AUTOINCREMENT, parent INTEGER NOT NULL,"
    " fold TEXT NOT NULL, name TEXT NOT NULL, UNIQUE(parent, fold));"
    "CREATE TABLE vals(key INTEGER NOT NULL, fold TEXT NOT NULL, name TEXT NOT NULL,"
    " type INTEGER NOT NULL, data BLOB NOT NULL, PRIMARY KEY(key, fold)) WITHOUT ROWID;"
    "PRAGMA user_version=1;";

// In the order of StoreSql.
constexpr const char* kStatements[] = {
    "BEGIN",
    "BEGIN IMMEDIATE",
    "COMMIT",
    "ROLLBACK",
    "PRAGMA data_version",
    "SELECT id FROM keys WHERE parent=?1 AND fold=?2",
    "SELECT 1 FROM keys WHERE id=?1",
    "SELECT 1 FROM keys WHERE parent=?1",
    "SELECT parent, fold FROM keys WHERE id=?1",
    "INSERT INTO keys(parent, fold, name) VALUES(?1, ?2, ?3)",
    "DELETE FROM keys WHERE id=?1",
    "DELETE FROM vals WHERE key=?1",
    "SELECT fold, name FROM keys WHERE parent=?1 AND fold>=?2 ORDER BY fold LIMIT 1 OFFSET ?3",
    "SELECT type, data FROM vals WHERE key=?1 AND fold=?2",
    "INSERT INTO vals(key, fold, name, type, data) VALUES(?1, ?2, ?3, ?4, ?5)"
    " ON CONFLICT(key, fold) DO UPDATE SET type=excluded.type, data=excluded.data",
    "DELETE FROM vals WHERE key=?1 AND fold=?2",
    "SELECT fold, name, type, data FROM vals WHERE key=?1 AND fold>=?2 ORDER BY fold"
    " LIMIT 1 OFFSET ?3",
};
static_assert(std::size(kStatements) == static_cast<std::size_t>(StoreSql::Count));

LSTATUS StatusOf(int code) {
    switch (code & 0xFF) {
        case SQLITE_OK:
            return ERROR_SUCCESS;
        case SQLITE_NOMEM:
            return ERROR_NOT_ENOUGH_MEMORY;
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
            return ERROR_BUSY;
        case SQLITE_FULL:
            return ERROR_DISK_FULL;
        case SQLITE_READONLY:
        case SQLITE_CANTOPEN:
        case SQLITE_PERM:
        case SQLITE_AUTH:
            return ERROR_ACCESS_DENIED;
        case SQLITE_TOOBIG:
        case SQLITE_RANGE:
            return ERROR_INVALID_PARAMETER;
        case SQLITE_IOERR:
            return code == SQLITE_IOERR_NOMEM ? ERROR_NOT_ENOUGH_MEMORY : ERROR_REGISTRY_IO_FAILED;
        default:
            return ERROR_BADDB;
    }
}

}  // namespace

// --- the connection ------------------------------------------------------------------------------

bool RegistryStore::IsCurrent() const {
    struct stat facts;
    if (stat(path_.c_str(), &facts) != 0) return db_ == nullptr;
    return db_ == nullptr || (facts.st_dev == device_ && facts.st_ino == file_);
}

LSTATUS RegistryStore::Connect(bool write) {
    if (db_ == nullptr) {
        const LSTATUS status = Open(write);
        if (status != ERROR_SUCCESS) {
            Disconnect();
            return status;
        }
    }
    return write && IsReadOnly() ? ERROR_ACCESS_DENIED : ERROR_SUCCESS;
}

LSTATUS RegistryStore::Open(bool write) {
    const LSTATUS status = PrepareStoreFile(path_, shared_, write);
    if (status != ERROR_SUCCESS) return status;
    struct stat facts;
    if (stat(path_.c_str(), &facts) != 0) return ERROR_FILE_NOT_FOUND;
    device_ = facts.st_dev;
    file_ = facts.st_ino;
    if (Sqlite().open_v2 == nullptr) return ERROR_CALL_NOT_IMPLEMENTED;
    const int opened =
        Sqlite().open_v2(path_.c_str(), &db_, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
    if (opened != SQLITE_OK) return StatusOf(opened);
    Sqlite().extended_result_codes(db_, 1);
    Sqlite().busy_timeout(db_, kBusyMilliseconds);
    Sqlite().db_config(db_, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    return Run(kSetUp);
}

void RegistryStore::Forget() {
    for (sqlite3_stmt*& statement : statements_) {
        Sqlite().finalize(statement);
        statement = nullptr;
    }
    hasTables_ = false;
}

void RegistryStore::Disconnect() {
    if (db_ == nullptr) return;
    Forget();
    Sqlite().close(db_);
    db_ = nullptr;
}

void RegistryStore::Abandon() {
    for (sqlite3_stmt*& statement : statements_)
        statement = nullptr;
    db_ = nullptr;
    hasTables_ = false;
    if (depth_ > 0) broken_ = ERROR_INVALID_HANDLE;
    ++epoch_;
}

LSTATUS RegistryStore::Run(const char* sql) {
    return Failed(Sqlite().exec(db_, sql, nullptr, nullptr, nullptr));
}

LSTATUS RegistryStore::RunStatement(StoreSql which) {
    return StoreQuery(*this, which).Run();
}

// Notes the failure of a statement, which ends the transaction for good.
LSTATUS RegistryStore::Failed(int code) {
    const LSTATUS status = Fail(StatusOf(code));
    // The tables went away: someone emptied the file. The next transaction looks anew.
    if (code == SQLITE_ERROR || code == SQLITE_SCHEMA) hasTables_ = false;
    return status;
}

LSTATUS RegistryStore::Fail(LSTATUS status) {
    if (depth_ > 0 && broken_ == ERROR_SUCCESS) broken_ = status;
    return status;
}

// --- transactions --------------------------------------------------------------------------------

constexpr char kFormatQuery[] =
    "SELECT user_version, (SELECT count(*) FROM sqlite_schema), page_count * page_size"
    " FROM pragma_user_version, pragma_page_count, pragma_page_size";

// Whether the tables are there, whole, and of a form that we know; made in an empty file when
// writing.
LSTATUS RegistryStore::CheckFormat(bool write) {
    if (hasTables_) return ERROR_SUCCESS;
    sqlite3_stmt* query = nullptr;
    int code = Sqlite().prepare_v2(db_, kFormatQuery, -1, &query, nullptr);
    if (code == SQLITE_OK) code = Sqlite().step(query);
    const int format = code == SQLITE_ROW ? Sqlite().column_int(query, 0) : 0;
    const int tables = code == SQLITE_ROW ? Sqlite().column_int(query, 1) : 0;
    const std::int64_t size = code == SQLITE_ROW ? Sqlite().column_int64(query, 2) : 0;
    Sqlite().finalize(query);
    if (code != SQLITE_ROW) return Failed(code);
    if (format != (tables == 0 ? 0 : kFormat)) return Failed(SQLITE_NOTADB);
    if (tables == 0 && !write) return ERROR_FILE_NOT_FOUND;
    if (tables == 0) {
        const LSTATUS status = Run(kTables);
        if (status != ERROR_SUCCESS) return status;
    } else {
        // SQLite would take a page that is cut off for zeros.
        struct stat facts;
        if (stat(path_.c_str(), &facts) != 0 || facts.st_size < size) return Failed(SQLITE_CORRUPT);
    }
    hasTables_ = true;
    return ERROR_SUCCESS;
}

std::uint64_t RegistryStore::Epoch() {
    StoreQuery query(*this, StoreSql::DataVersion);
    const std::int64_t version = query.Next() ? query.Number(0) : -1;
    if (version == -1 || version != dataVersion_) ++epoch_;
    dataVersion_ = version;
    return epoch_;
}

LSTATUS RegistryStore::Begin(bool write) {
    if (depth_ > 0) {
        if (db_ == nullptr) return ERROR_INVALID_HANDLE;
        if (write && broken_ != ERROR_SUCCESS) return broken_;
        if (write && !writing_) return ERROR_ACCESS_DENIED;
        ++depth_;
        return ERROR_SUCCESS;
    }
    LSTATUS status = Connect(write);
    if (status != ERROR_SUCCESS) return status;
    if (write && !IsCurrent()) return ERROR_KEY_DELETED;
    if (!hasTables_) Forget();
    status = RunStatement(write ? StoreSql::BeginWrite : StoreSql::BeginRead);
    if (status != ERROR_SUCCESS) return status;
    depth_ = 1;
    ++now_;
    writing_ = write;
    broken_ = ERROR_SUCCESS;
    status = CheckFormat(write);
    if (status == ERROR_SUCCESS) return status;
    depth_ = 0;
    TakeBack();
    return status;
}

LSTATUS RegistryStore::End(LSTATUS status) {
    if (--depth_ > 0) return status;
    if (db_ == nullptr) return ERROR_INVALID_HANDLE;
    if (writing_ && broken_ != ERROR_SUCCESS) {
        TakeBack();
        return broken_;
    }
    const LSTATUS ended = RunStatement(StoreSql::Commit);
    if (ended == ERROR_SUCCESS) return status;
    TakeBack();
    return ended;
}

// SQLite itself takes a transaction back after some failures; what cannot be taken back in place
// is when the connection ends.
void RegistryStore::TakeBack() {
    ++epoch_;
    if (Sqlite().get_autocommit(db_) == 0 && RunStatement(StoreSql::Rollback) != ERROR_SUCCESS)
        Sqlite().exec(db_, "ROLLBACK", nullptr, nullptr, nullptr);
    if (Sqlite().get_autocommit(db_) == 0) Disconnect();
    hasTables_ = false;
}

// --- statements ----------------------------------------------------------------------------------

StoreQuery::StoreQuery(RegistryStore& store, StoreSql which) : store_(store) {
    const int index = static_cast<int>(which);
    sqlite3_stmt*& kept = store.statements_[index];
    if (kept == nullptr) {
        status_ = store.Failed(Sqlite().prepare_v3(store.db_, kStatements[index], -1,
                                                   SQLITE_PREPARE_PERSISTENT, &kept, nullptr));
    }
    statement_ = kept;
}

StoreQuery::~StoreQuery() {
    if (statement_ == nullptr) return;
    Sqlite().reset(statement_);
    Sqlite().clear_bindings(statement_);
}

StoreQuery& StoreQuery::Bind(int place, std::int64_t number) {
    if (status_ == ERROR_SUCCESS)
        status_ = store_.Failed(Sqlite().bind_int64(statement_, place, number));
    return *this;
}

StoreQuery& StoreQuery::Bind(int place, std::string_view text) {
    if (status_ == ERROR_SUCCESS) {
        status_ = store_.Failed(Sqlite().bind_text64(statement_, place, text.data(), text.size(),
                                                     SQLITE_STATIC, SQLITE_UTF8));
    }
    return *this;
}

StoreQuery& StoreQuery::BindData(int place, const void* data, std::size_t size) {
    if (status_ == ERROR_SUCCESS) {
        const void* const bytes = size != 0 ? data : "";
        status_ =
            store_.Failed(Sqlite().bind_blob64(statement_, place, bytes, size, SQLITE_STATIC));
    }
    return *this;
}

bool StoreQuery::Next() {
    if (status_ != ERROR_SUCCESS) return false;
    const int code = Sqlite().step(statement_);
    if (code == SQLITE_ROW) return true;
    if (code != SQLITE_DONE) status_ = store_.Failed(code);
    return false;
}

LSTATUS StoreQuery::Run() {
    while (Next()) {
    }
    return status_;
}

std::string_view StoreQuery::Text(int column) {
    const auto* const text = static_cast<const char*>(Sqlite().column_blob(statement_, column));
    const int size = Sqlite().column_bytes(statement_, column);
    if (text == nullptr && Sqlite().errcode(store_.db_) == SQLITE_NOMEM)
        status_ = store_.Failed(SQLITE_NOMEM);
    return text != nullptr ? std::string_view(text, static_cast<std::size_t>(size))
                           : std::string_view();
}

}  // namespace brcore8
