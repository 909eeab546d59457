// The payroll server's SQL functions on a SQLite connection (see
// DatabaseFunctions.h). A NULL argument gives NULL, as the server's functions
// do, so that a missing amount stays visible instead of turning into 0.

#include "platform/database/DatabaseFunctions.h"

#include <sqlite3.h>

#include <array>
#include <cctype>
#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>

#include "platform/common/CommonLibrary.h"
#include "platform/common/Date.h"
#include "platform/database/CHandle.h"
#include "platform/database/Query.h"

namespace iras::db {
namespace {

using StatementPtr = CHandle<sqlite3_stmt, sqlite3_finalize>;

// A look-up of one value by one key, prepared on the connection the first time
// it is called (the tables may not exist yet when the connection opens).
using ValuePtr = CHandle<sqlite3_value, sqlite3_value_free>;

struct Lookup {
    const char* function;
    const char* sql;
    StatementPtr statement;
    // The last key and what it found, while the database is as it was then:
    // a select list that reuses an alias ("FGetEmployeeSysId(EmployeeId)")
    // asks the same key two or three times a row.
    ValuePtr lastKey{};
    ValuePtr lastResult{};
    sqlite3_int64 lastChanges = -1;
    unsigned lastVersion = 0;
};

enum LookupIndex { EmployeeIdByPerson, EmployeeSysIdByCode, IrasBankByEmployee, NameByPerson };

}  // namespace

struct DatabaseFunctions::Lookups {
    sqlite3* db;
    std::array<Lookup, 4> lookups{{
        {"FGetEmployeeIdByPersonalSysId",
         "SELECT EmployeeCode FROM Employee WHERE PersonalSysId = ?1 ORDER BY EmployeeSysId LIMIT 1", nullptr},
        {"FGetEmployeeSysId",
         "SELECT EmployeeSysId FROM Employee WHERE EmployeeCode = ?1 ORDER BY EmployeeSysId LIMIT 1", nullptr},
        {"FGetIRASEmployeeBank",
         // The first account entered: min() takes the code from the row of the
         // smallest rowid, found through the key without sorting the rows.
         "SELECT IRASBankCode, min(rowid) FROM EmployeeBank WHERE EmployeeSysId = ?1", nullptr},
        {"FGetPersonalName", "SELECT PersonalName FROM Personal WHERE PersonalSysId = ?1", nullptr},
    }};
};

namespace {

using Lookups = DatabaseFunctions::Lookups;

bool IsInteger(sqlite3_value* value) { return sqlite3_value_numeric_type(value) == SQLITE_INTEGER; }

// ROUND(x [, places]) rounds half away from zero and TRUNCNUM(x [, places])
// cuts toward zero, both on the decimal value as _Round and _Trunc do;
// IRAS_MONEY(x), the server's CAST(x AS Money), keeps four decimals. NULL
// stays NULL, and an integer is already whole at any places from zero up.
template <double (*Cut)(double, int), int DefaultPlaces>
void DecimalFunction(sqlite3_context* context, int argc, sqlite3_value** argv) {
    if (sqlite3_value_type(argv[0]) == SQLITE_NULL || (argc > 1 && sqlite3_value_type(argv[1]) == SQLITE_NULL)) {
        sqlite3_result_null(context);
        return;
    }
    const int places = argc > 1 ? sqlite3_value_int(argv[1]) : DefaultPlaces;
    if (places >= 0 && IsInteger(argv[0])) {
        sqlite3_result_int64(context, sqlite3_value_int64(argv[0]));
        return;
    }
    sqlite3_result_double(context, Cut(sqlite3_value_double(argv[0]), places));
}

std::string_view TextOf(sqlite3_value* value) {
    const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
    return text ? std::string_view(text, static_cast<std::size_t>(sqlite3_value_bytes(value))) : std::string_view();
}

// YEAR('YYYY-MM-DD'): the year of a stored date; NULL for text that is not one.
void YearFunction(sqlite3_context* context, int, sqlite3_value** argv) {
    if (sqlite3_value_type(argv[0]) != SQLITE_TEXT) {
        sqlite3_result_null(context);
        return;
    }
    const auto date = Date::Parse(TextOf(argv[0]));
    if (date) {
        sqlite3_result_int(context, date->year);
    } else {
        sqlite3_result_null(context);
    }
}

bool Digits(std::string_view text, std::size_t from, std::size_t count) {
    if (from + count > text.size()) return false;
    for (std::size_t k = from; k < from + count; ++k) {
        if (!std::isdigit(static_cast<unsigned char>(text[k]))) return false;
    }
    return true;
}

// FGetDateTimeFormat('YYYY-MM-DD HH:MM:SS') -> 'dd/mm/yyyy hh:mm:ss'. A date
// without a time shows midnight; text of another form is shown as it is.
void DateTimeFormatFunction(sqlite3_context* context, int, sqlite3_value** argv) {
    if (sqlite3_value_type(argv[0]) == SQLITE_NULL) {
        sqlite3_result_null(context);
        return;
    }
    const std::string_view text = TextOf(argv[0]);
    const auto date = Date::Parse(text);
    std::string time = "00:00:00";
    bool readable = date.has_value();
    if (readable && text.size() > 10) {
        readable = (text[10] == ' ' || text[10] == 'T') && Digits(text, 11, 2) && text.size() >= 16 &&
                   text[13] == ':' && Digits(text, 14, 2);
        if (readable) {
            time = std::string(text.substr(11, 5)) + ":00";
            if (text.size() >= 19 && text[16] == ':' && Digits(text, 17, 2)) {
                time = std::string(text.substr(11, 8));
            }
        }
    }
    if (!readable) {
        sqlite3_result_value(context, argv[0]);
        return;
    }
    char formatted[32];
    std::snprintf(formatted, sizeof formatted, "%02d/%02d/%04d %s", date->day, date->month, date->year,
                  time.c_str());
    sqlite3_result_text(context, formatted, -1, SQLITE_TRANSIENT);
}

// Two keys are the same when they have one type and one value; a number and
// a text are never taken for each other, whatever the column would make of
// them.
bool SameValue(sqlite3_value* a, sqlite3_value* b) {
    const int type = sqlite3_value_type(a);
    if (type != sqlite3_value_type(b)) return false;
    switch (type) {
        case SQLITE_INTEGER: return sqlite3_value_int64(a) == sqlite3_value_int64(b);
        case SQLITE_TEXT: {
            const int bytes = sqlite3_value_bytes(a);
            return bytes == sqlite3_value_bytes(b) &&
                   std::memcmp(sqlite3_value_text(a), sqlite3_value_text(b), static_cast<std::size_t>(bytes)) == 0;
        }
        default: return false;  // reals and blobs are not kept
    }
}

// The value a look-up found, or NULL when its key found no row.
void Answer(sqlite3_context* context, sqlite3_value* found) {
    if (found) {
        sqlite3_result_value(context, found);
    } else {
        sqlite3_result_null(context);
    }
}

void RunLookup(sqlite3_context* context, LookupIndex index, sqlite3_value* key) {
    auto* state = static_cast<Lookups*>(sqlite3_user_data(context));
    Lookup& lookup = state->lookups[index];
    if (sqlite3_value_type(key) == SQLITE_NULL) {
        sqlite3_result_null(context);
        return;
    }
    if (!lookup.statement) {
        sqlite3_stmt* statement = nullptr;
        if (sqlite3_prepare_v3(state->db, lookup.sql, -1, SQLITE_PREPARE_PERSISTENT, &statement, nullptr) !=
            SQLITE_OK) {
            const std::string message = std::string(lookup.function) + ": " + sqlite3_errmsg(state->db);
            sqlite3_finalize(statement);
            sqlite3_result_error(context, message.c_str(), -1);
            return;
        }
        lookup.statement.reset(statement);
    }
    // The database is as it was at the last call when this connection has
    // changed no row since and no commit (of any connection) came between.
    // The commits of others are known only inside a read transaction (a
    // statement that reads a table), and a write transaction may yet be
    // rolled back: outside a read the look-up always reads the table.
    const bool reading = sqlite3_txn_state(state->db, "main") == SQLITE_TXN_READ;
    unsigned version = 0;
    sqlite3_file_control(state->db, "main", SQLITE_FCNTL_DATA_VERSION, &version);
    const sqlite3_int64 changes = sqlite3_total_changes64(state->db);
    if (reading && lookup.lastKey && changes == lookup.lastChanges && version == lookup.lastVersion &&
        SameValue(lookup.lastKey.get(), key)) {
        Answer(context, lookup.lastResult.get());
        return;
    }
    lookup.lastKey.reset();
    sqlite3_stmt* statement = lookup.statement.get();
    sqlite3_reset(statement);
    sqlite3_bind_value(statement, 1, key);
    const int rc = sqlite3_step(statement);
    if (rc == SQLITE_ROW || rc == SQLITE_DONE) {
        sqlite3_value* found = rc == SQLITE_ROW ? sqlite3_column_value(statement, 0) : nullptr;
        Answer(context, found);
        lookup.lastResult.reset(found ? sqlite3_value_dup(found) : nullptr);
        // (A value that could not be kept, for want of memory, is not.)
        if (reading && (lookup.lastResult || !found)) {
            lookup.lastKey.reset(sqlite3_value_dup(key));
            lookup.lastChanges = changes;
            lookup.lastVersion = version;
        }
    } else {
        const std::string message = std::string(lookup.function) + ": " + sqlite3_errmsg(state->db);
        sqlite3_result_error(context, message.c_str(), -1);
        sqlite3_result_error_code(context, rc);
    }
    sqlite3_reset(statement);
}

void EmployeeIdByPersonFunction(sqlite3_context* context, int, sqlite3_value** argv) {
    RunLookup(context, EmployeeIdByPerson, argv[0]);
}
void EmployeeSysIdFunction(sqlite3_context* context, int, sqlite3_value** argv) {
    RunLookup(context, EmployeeSysIdByCode, argv[0]);
}
void IrasBankFunction(sqlite3_context* context, int, sqlite3_value** argv) {
    RunLookup(context, IrasBankByEmployee, argv[0]);
}
void PersonalNameFunction(sqlite3_context* context, int, sqlite3_value** argv) {
    RunLookup(context, NameByPerson, argv[0]);
}

using Callback = void (*)(sqlite3_context*, int, sqlite3_value**);

void Register(sqlite3* db, const char* name, int argc, bool deterministic, Callback callback, void* state) {
    const int flags = SQLITE_UTF8 | (deterministic ? SQLITE_DETERMINISTIC : 0);
    const int rc = sqlite3_create_function_v2(db, name, argc, flags, state, callback, nullptr, nullptr, nullptr);
    if (rc != SQLITE_OK) {
        throw DatabaseError(std::string("Cannot register the database function ") + name + ": " +
                                sqlite3_errmsg(db),
                            rc);
    }
}

}  // namespace

DatabaseFunctions::DatabaseFunctions(sqlite3* db) : lookups_(std::make_unique<Lookups>()) {
    lookups_->db = db;
    void* state = lookups_.get();
    // An application function of the same name replaces SQLite's own round().
    Register(db, "ROUND", 1, true, DecimalFunction<_Round, 0>, nullptr);
    Register(db, "ROUND", 2, true, DecimalFunction<_Round, 0>, nullptr);
    Register(db, "TRUNCNUM", 1, true, DecimalFunction<_Trunc, 0>, nullptr);
    Register(db, "TRUNCNUM", 2, true, DecimalFunction<_Trunc, 0>, nullptr);
    Register(db, "IRAS_MONEY", 1, true, DecimalFunction<_Round, 4>, nullptr);
    Register(db, "YEAR", 1, true, YearFunction, nullptr);
    Register(db, "FGetDateTimeFormat", 1, true, DateTimeFormatFunction, nullptr);
    // The look-ups read tables, so they are not deterministic.
    Register(db, "FGetEmployeeIdByPersonalSysId", 1, false, EmployeeIdByPersonFunction, state);
    Register(db, "FGetEmployeeSysId", 1, false, EmployeeSysIdFunction, state);
    Register(db, "FGetIRASEmployeeBank", 1, false, IrasBankFunction, state);
    Register(db, "FGetPersonalName", 1, false, PersonalNameFunction, state);
}

DatabaseFunctions::~DatabaseFunctions() = default;

}  // namespace iras::db
