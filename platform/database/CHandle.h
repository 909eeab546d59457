// A C library's handle owned by a std::unique_ptr whose deleter is the
// library's own release function, so that no handle of SQLite or libpq is
// ever freed by hand: CHandle<sqlite3_stmt, sqlite3_finalize>,
// CHandle<PGresult, PQclear>.
#pragma once

#include <memory>

namespace iras::db {

template <auto Release>
struct ReleaseWith {
    template <typename T>
    void operator()(T* handle) const {
        Release(handle);
    }
};

template <typename T, auto Release>
using CHandle = std::unique_ptr<T, ReleaseWith<Release>>;

}  // namespace iras::db
