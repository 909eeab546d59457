// The payroll database as the returns see it: a connection reached through an
// alias ("kovadb"), and a query object with SQL text, named parameters, a
// cursor over the rows, and fields read by name.
//
// SQL texts are written in the payroll's server dialect (IF ... ENDIF, aliases
// reused later in the same select list, TRUNCNUM, CAST(... AS Money)); the
// driver of the connection rewrites them for the engine behind it, so that the
// jobs never know which engine that is. The SQLite driver is the embedded
// default; another engine (PostgreSQL) is one more driver behind the same
// interface.
//
// A result is read whole when the query opens, so the cursor can go to the
// first and last row and the record count is known; a query set to read
// forward only instead holds one row at a time, whatever the size of the
// result (see SetForwardOnly). Cursor rules are the
// payroll's: Next() on the last row sets Eof() and stays on that row; First()
// and Last() clear Eof() unless there is no row. A column name that appears
// twice in a join (both sides of "A JOIN B" carry PersonalSysId) resolves to
// its first occurrence.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <stdexcept>
#include <functional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/common/Date.h"

namespace iras::db {

// Every failure of the database layer: the message names the database file
// and, where one is concerned, the SQL, table or field.
class DatabaseError : public std::runtime_error {
public:
    explicit DatabaseError(const std::string& message, int nativeCode = 0)
        : std::runtime_error(message), nativeCode_(nativeCode) {}
    int NativeCode() const { return nativeCode_; }

private:
    int nativeCode_;
};

// One value of a row or of a parameter.
using Value = std::variant<std::monostate, std::int64_t, double, std::string>;

class Query;
class Connection;
class RowCursor;

// A column of the query's current row. NULL reads as "", 0, 0.0 or the empty
// date, never as an error.
class Field {
public:
    std::string AsString() const;
    double AsFloat() const;
    // The value as a number, or nothing for NULL and for a text that is not
    // a number ("abc", ""): AsFloat() would read both as 0.
    std::optional<double> AsNumber() const;
    std::int64_t AsInteger() const;
    Date AsDate() const;  // NULL or unreadable text: the empty date
    bool IsNull() const;
    const std::string& Name() const;

    // Between Query::Edit() and Query::Post() only.
    void SetAsString(const std::string& value);
    void SetAsFloat(double value);
    void SetAsInteger(std::int64_t value);
    void SetNull();

private:
    friend class Query;
    Field(Query* query, std::size_t column) : query_(query), column_(column) {}
    Query* query_;
    std::size_t column_;
};

class Query {
public:
    explicit Query(std::string alias = "kovadb");
    ~Query();
    Query(const Query&) = delete;
    Query& operator=(const Query&) = delete;
    Query(Query&&) noexcept;
    Query& operator=(Query&&) noexcept;

    // SQL text; AddSQL appends one line (lines are joined with a line end).
    void ClearSQL();
    void SetSQL(const std::string& text);
    void AddSQL(const std::string& line);
    std::string SQLText() const;

    // A named parameter of the text, ":YEEmployerId" set as "YEEmployerId".
    void SetParam(const std::string& name, Value value);

    // Forward only: the rows are handed over one at a time as the database
    // steps the statement, and none is kept once the cursor has left it, so
    // that an employer of any size costs the reader one row. First() is
    // allowed until the first Next(), Next() and Eof() as ever; what needs
    // the whole result (going back, Last, MoveTo, RecordCount, Edit) throws
    // DatabaseError. Takes effect at the next Open().
    void SetForwardOnly(bool forwardOnly);
    bool ForwardOnly() const;
    // Spooled (forward only): each row read goes on to a temporary file as
    // well, so that Reread() can hand the same rows over again, forward
    // only, without running the statement again; the validation pass's
    // employees are the generation pass's. The spool stays through Close()
    // once the rows were read to the end; a new text, parameter or Open()
    // drops it.
    void SetSpooled(bool spooled);
    // Opens the query on the rows of its last read, from its spool; false
    // (nothing changed) when that read did not reach its end or its spool
    // could not be written (a full disk).
    bool Reread();

    void Open();     // runs the text and reads the rows; throws DatabaseError
    void ExecSQL();  // runs a statement without rows (UPDATE, CREATE TABLE ...)
    void Close();
    bool Active() const;

    void First();
    void Next();
    void Last();
    // Straight to a row, 0 for the first: what First() and as many Next()
    // reach, without stepping. A row beyond the last sets Eof().
    void MoveTo(int row);
    bool Eof() const;
    bool IsEmpty() const;
    int RecordCount() const;

    // The name is matched without regard to letter case and is not copied:
    // the jobs read over a hundred fields an employee.
    bool HasField(std::string_view name) const;
    Field FieldByName(std::string_view name);  // throws DatabaseError for an unknown name
    std::vector<std::string> FieldNames() const;

    // Editable result: the text must select from one table. Post writes the
    // changed fields of the current row back; Cancel drops them.
    void Edit();
    void Post();
    void Cancel();

    struct State;  // rows, columns, cursor; defined by the implementation

private:
    friend class Field;
    static void StartForward(State& state, std::unique_ptr<RowCursor> cursor);
    std::string alias_;
    std::unique_ptr<State> state_;
};

// What a database alias opens.
struct ConnectionConfig {
    std::string driver = "sqlite";  // the embedded default; "postgresql" for a server
    std::string location;           // a file for SQLite, a connection URI for PostgreSQL
    bool create = false;            // make a new, empty database where none exists
    // How long a statement waits for a lock another run holds before it
    // gives up with "locked"; and who is told, once per wait, that it waits
    // (nobody when empty).
    int lockWaitMs = 2000;
    std::function<void(const std::string&)> onLockWait = nullptr;
};

// The named connections of the process. Register("kovadb", {..}) makes every
// Query on "kovadb" use that database; the connection opens on first use.
class ConnectionRegistry {
public:
    static void Register(const std::string& alias, const ConnectionConfig& config);
    static void Unregister(const std::string& alias);
    static std::shared_ptr<Connection> Get(const std::string& alias);  // throws DatabaseError
};

// Runs a script of several statements separated by ";" (schema, sample data).
void ExecScript(const std::string& alias, const std::string& script);

// A transaction on an alias: rolls back in its destructor unless committed.
class Transaction {
public:
    explicit Transaction(const std::string& alias = "kovadb");
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    void Commit();

private:
    std::shared_ptr<Connection> connection_;
    bool done_ = false;
};

}  // namespace iras::db
