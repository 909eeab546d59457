// The driver behind a database alias: one open database of one engine.
//
// Queries, scripts and transactions reach the engine only through this small
// interface, so that another engine (PostgreSQL) is one more implementation
// registered under its driver name, and no query changes. A driver takes the
// payroll's SQL texts as the jobs write them and translates them for its
// engine itself; it reads a result whole, which is what lets the query go to
// the first and last row and know its record count, or, for a query read
// forward only, hands the rows over as the statement steps.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "platform/database/Query.h"

namespace iras::db {

// Named parameter values, name without the ":" ("YEEmployerId"). Names match
// without regard to letter case.
using Parameters = std::vector<std::pair<std::string, Value>>;

// Puts a text into a slot of a row being read in, into the slot's own text
// when it holds one: a forward read reads each row into one of the same two
// rows in turn, so the texts of a long result need no new memory.
inline void AssignText(Value& slot, std::string_view text) {
    if (auto* held = std::get_if<std::string>(&slot)) {
        held->assign(text);
    } else {
        slot = std::string(text);
    }
}

struct ResultColumn {
    std::string name;    // as the engine names the column of the result
    std::string table;   // the table it was read from; "" for a computed column
    std::string origin;  // its column in that table; "" for a computed column
};

// The rows of a statement handed over one at a time as the engine steps it:
// nothing is kept behind. Read() fills row with the next row's values and
// says whether there was one; after the last row the statement is done and
// its resources are given back.
class RowCursor {
public:
    virtual ~RowCursor() = default;
    virtual const std::vector<ResultColumn>& Columns() const = 0;
    virtual bool Read(std::vector<Value>& row) = 0;
};

struct ResultSet {
    std::vector<ResultColumn> columns;
    std::vector<std::vector<Value>> rows;
    // One key per row when the result came from one table and was asked for
    // with a row key (see Connection::Select); empty otherwise.
    std::vector<Value> rowKeys;
};

class Connection {
public:
    virtual ~Connection() = default;
    Connection() = default;
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    virtual const ConnectionConfig& Config() const = 0;

    // Runs one statement and reads all its rows. With keyTable set to the one
    // table the text reads, each row also carries the key by which UpdateRow
    // finds it again; a text whose rows cannot be keyed gives no keys.
    virtual ResultSet Select(const std::string& sql, const Parameters& parameters,
                             const std::string& keyTable = "") = 0;

    // Runs one statement and hands its rows over one at a time. A driver
    // that cannot step a statement while others run on the same connection
    // reads the result whole and hands it over row by row, dropping each.
    virtual std::unique_ptr<RowCursor> SelectForward(const std::string& sql, const Parameters& parameters);

    // Runs every statement of the text in turn; the number of rows changed.
    virtual std::int64_t Execute(const std::string& sql, const Parameters& parameters) = 0;

    // Runs a script of many statements. All of it or none of it is applied,
    // unless the script manages transactions itself.
    virtual void ExecScript(const std::string& script) = 0;

    // Runs a script written for this engine itself, untranslated (the
    // PostgreSQL functions of data/postgres_functions.sql), in one transaction.
    virtual void ExecNativeScript(const std::string& script) = 0;

    // Writes changed columns of one row, found by its key, back to its table.
    virtual void UpdateRow(const std::string& table, const Value& rowKey,
                           const std::vector<std::pair<std::string, Value>>& changes) = 0;

    // Reads the database as one read from the next statement until
    // ReleaseReads(), for a reader that runs a few small queries for each of
    // many rows it already has (the rows read again from a spool): an engine
    // that locks and checks its file for every read then does so once. A
    // write, or a transaction begun, ends the hold first. Nothing is held
    // within a transaction, nor by an engine without that cost.
    virtual void HoldReads() {}
    virtual void ReleaseReads() noexcept {}

    // Transactions nest: an inner one commits into the outer one.
    virtual void Begin() = 0;
    virtual void Commit() = 0;
    virtual void Rollback() noexcept = 0;

protected:
    // Runs body in a transaction of its own when wrap is true: committed when
    // body returns, rolled back when it throws.
    template <typename Body>
    void InTransactionIf(bool wrap, Body body) {
        if (wrap) Begin();
        try {
            body();
        } catch (...) {
            if (wrap) Rollback();
            throw;
        }
        if (wrap) Commit();
    }
};

// Opens the database a configuration describes, by its driver name ("sqlite",
// "postgresql").
// Throws DatabaseError naming the database when it cannot.
std::shared_ptr<Connection> OpenConnection(const ConnectionConfig& config);

// Makes another engine available under a driver name (case-insensitive).
using DriverFactory = std::function<std::shared_ptr<Connection>(const ConnectionConfig&)>;
void RegisterDriver(const std::string& driver, DriverFactory factory);

}  // namespace iras::db
