// The embedded default engine: a SQLite 3 database file.
//
// Opening never creates a file unless the configuration asks for it, waits at
// most two seconds for a database that another program holds locked, and turns
// every engine failure into a DatabaseError that names the file and says in
// plain words what is wrong with it. Each connection carries the payroll
// server's functions (ROUND and TRUNCNUM with the payroll's own rounding, the
// money cast, YEAR, and the FGet... look-ups), see DatabaseFunctions.h.
#pragma once

#include <memory>

#include "platform/database/Connection.h"

namespace iras::db {

std::shared_ptr<Connection> OpenSqliteConnection(const ConnectionConfig& config);

}  // namespace iras::db
