// dbisql: the payroll database's SQL tool, as the script runner starts it:
//
//     dbisql -c "uid=USER;pwd=PASSWORD;dsn=DATASOURCE" [-q] SCRIPT
//
// The data source is the payroll database: an SQLite file, or a URI whose
// scheme names the database driver ("postgresql://host/payroll" once that
// driver is built in). The script runs as one transaction: when any statement
// fails, nothing of the script is applied (a script that issues its own BEGIN,
// COMMIT or ROLLBACK keeps those in its own hands). The payroll's SQL dialect
// is understood, as in every query of the module.
//
// Everything the tool does, and every error, is appended to a log beside the
// script: the script's path with ".log" added ("load.sql" -> "load.sql.log").
// Without -q the same lines also go to the terminal. The exit status says how
// it ended (DbIsqlStatus). The connection keys are read without regard to case
// in their short or long form (uid/UserID, pwd/Password, dsn/DataSourceName);
// an SQLite file has no login, so the user is only written to the log, and the
// password never is.
#pragma once

#include <filesystem>
#include <iosfwd>
#include <string>
#include <vector>

#include "platform/database/Query.h"

namespace iras {

enum DbIsqlStatus : int {
    DbIsqlDone = 0,
    DbIsqlBadCommandLine = 1,  // unknown option, no -c or no data source, not exactly one script
    DbIsqlNoScript = 2,        // the script file is missing or cannot be read
    DbIsqlNoDatabase = 3,      // the data source cannot be opened
    DbIsqlScriptFailed = 4,    // a statement failed; nothing of the script was applied
    DbIsqlNoLog = 5,           // the log beside the script cannot be written; nothing was run
};

// The log of a run of script.
std::filesystem::path DbIsqlLogFile(const std::filesystem::path& script);

// What the driver of a data source opens: a text with a scheme
// ("postgresql://...") names the driver of that scheme, anything else is an
// SQLite file. Never creates a database.
db::ConnectionConfig DataSourceConfig(const std::string& dataSource);

// Runs the tool with its command-line words (without the program name);
// returns the exit status. Terminal lines go to out, command-line errors that
// have no log to go to (no script named) to err. Never throws.
int RunDbIsql(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

}  // namespace iras
