// The payroll server's SQL dialect, and how its texts are made to run on the
// engine behind a connection.
//
// The jobs write their SQL as the payroll server understands it: conditional
// expressions IF c THEN a ELSE b ENDIF, a select-list alias reused by a later
// item of the same list ("... AS EmployeeId, FGetEmployeeSysId(EmployeeId)"),
// TRUNCNUM, CAST(x AS Money), and now and then a number glued to the keyword
// after it ("10000ORDER BY"). The translation works on tokens, so string
// literals ('''' inside them included), quoted names and comments come through
// untouched; only what the engine would misread is changed.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace iras::db {

// The payroll text rewritten for SQLite:
// - IF c THEN a ELSE b ENDIF (or END IF), nested and with EXISTS(...), becomes
//   CASE WHEN c THEN a ELSE b END;
// - an unqualified name that an earlier item of the same select list defined
//   with "AS name" is replaced by that item's expression in parentheses;
// - CAST(x AS Money) becomes IRAS_MONEY(x), the four-decimal money rounding
//   that the SQLite driver registers (ROUND and TRUNCNUM are registered under
//   their own names);
// - a blank goes between a number and a name glued to it ("10000ORDER").
// Everything else (||, replace, TRIM, DATE, "SELECT *, expr") SQLite reads as
// it stands.
std::string TranslateForSqlite(std::string_view sql);

// A payroll text rewritten for PostgreSQL, one statement, and the names of its
// parameters in the order of their numbers ($1 is parameters[0]).
struct PostgresStatement {
    std::string text;
    std::vector<std::string> parameters;
};

// The payroll text rewritten for PostgreSQL. Besides the rewrites that SQLite
// needs too (conditionals, select-list aliases, CAST(x AS Money) as
// IRAS_MONEY(x), the glued number):
// - :name (also @name, $name) becomes $1, $2, ...; a name used twice keeps
//   its number, and names match without regard to letter case;
// - names fold to lower case, quoted ones too, since the payroll's names
//   ignore case ("IR8A" and IR8A are one table); a name longer than the
//   server's 63 bytes is cut to 50 and given a hash of the whole name, so two
//   long names that differ only at the end stay two names;
// - ROUND and DATE become IRAS_ROUND and IRAS_DATE (SQLite's date, giving
//   'YYYY-MM-DD' text), min and max of several values LEAST and GREATEST;
// - INTEGER becomes BIGINT (64 bits, as SQLite's), "INTEGER PRIMARY KEY" an
//   identity column; in the columns of CREATE TABLE, REAL becomes the NUMERIC
//   domain money_amount (amounts stay exact) and TEXT compares byte by byte
//   (COLLATE "C") as SQLite's does; elsewhere REAL is DOUBLE PRECISION;
// - an ORDER BY item puts NULL first (last with DESC), as SQLite does, unless
//   it says NULLS FIRST or LAST itself;
// - "PRAGMA table_info(t)" reads the same columns (cid, name, type, notnull,
//   dflt_value, pk) from the server's catalog.
// The functions that the rewrites call are made by data/postgres_functions.sql.
PostgresStatement TranslateForPostgres(std::string_view sql);

// The statements of a script, cut at each ";" outside literals, quoted names,
// comments and parentheses; statements of nothing but blanks and comments are
// left out.
std::vector<std::string> SplitStatements(std::string_view script);

// The one table that a plain "SELECT ... FROM table [WHERE ...] [ORDER BY ...]"
// reads, as written in the text; nothing for joins, unions, DISTINCT, GROUP BY,
// an aggregate in the select list (COUNT(*)) or a select from a subquery. An
// editable result needs such a text.
std::optional<std::string> SingleSourceTable(std::string_view sql);

// The text with one more result column put last in the outermost select list
// ("SELECT * FROM t" with "rowid AS k" gives "SELECT * , rowid AS k FROM t"),
// where it moves no other column ("ORDER BY 1" still means the first). The
// text is returned unchanged when its outer select has no FROM.
std::string WithTrailingColumn(std::string_view sql, std::string_view column);

// True when a script starts, ends or undoes transactions itself (BEGIN,
// COMMIT, ROLLBACK, SAVEPOINT, RELEASE, VACUUM at the start of a statement), so
// that it must not be wrapped in one.
bool ScriptControlsTransactions(std::string_view script);

// name as a quoted SQL identifier ("a""b" for a"b), safe for any table or
// column name that the queries build in.
std::string QuoteName(std::string_view name);

}  // namespace iras::db
