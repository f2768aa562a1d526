// SQLite's functions. Its library is loaded when a program first asks for a setting: most never do,
// and all would wait for it as they start.
//
// Threads: any.
#ifndef BRCORE8_SRC_PLATFORM_POSIX_SQLITE_CALLS_H
#define BRCORE8_SRC_PLATFORM_POSIX_SQLITE_CALLS_H

#include <sqlite3.h>

namespace brcore8 {

#define BRCORE8_SQLITE_CALLS(X) \
    X(bind_blob64)              \
    X(bind_int64)               \
    X(bind_text64)              \
    X(busy_timeout)             \
    X(changes)                  \
    X(clear_bindings)           \
    X(close)                    \
    X(column_blob)              \
    X(column_bytes)             \
    X(column_int)               \
    X(column_int64)             \
    X(db_config)                \
    X(db_readonly)              \
    X(errcode)                  \
    X(exec)                     \
    X(extended_result_codes)    \
    X(finalize)                 \
    X(get_autocommit)           \
    X(last_insert_rowid)        \
    X(libversion)               \
    X(open_v2)                  \
    X(prepare_v2)               \
    X(prepare_v3)               \
    X(reset)                    \
    X(step)

struct SqliteCalls {
#define BRCORE8_SQLITE_CALL(Name) decltype(&::sqlite3_##Name) Name = nullptr;
    BRCORE8_SQLITE_CALLS(BRCORE8_SQLITE_CALL)
#undef BRCORE8_SQLITE_CALL
};

// All of them null where the system has no SQLite.
const SqliteCalls& Sqlite() noexcept;

}  // namespace brcore8

#endif
