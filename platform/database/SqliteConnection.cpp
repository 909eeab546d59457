// The SQLite driver (see SqliteConnection.h): statements, row reading, the
// translation cache, savepoint transactions and messages in plain words.

#include "platform/database/SqliteConnection.h"

#include <sqlite3.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <map>
#include <string>
#include <mutex>
#include <system_error>
#include <thread>

#include "platform/common/Text.h"
#include "platform/database/CHandle.h"
#include "platform/database/DatabaseFunctions.h"
#include "platform/database/SqlDialect.h"

namespace iras::db {
namespace {

using DatabasePtr = CHandle<sqlite3, sqlite3_close_v2>;
using StatementPtr = CHandle<sqlite3_stmt, sqlite3_finalize>;

// The hidden result column that carries the row key of an editable result.
constexpr const char* RowKeyColumn = "iras_row_key_";

// A translated text is kept for the next run of the same text; the jobs run
// the same few texts for every employee.
constexpr std::size_t TranslationCacheSize = 512;
// Statements of selects kept for the next run of the same text.
constexpr std::size_t KeptStatements = 64;

class SqliteConnection final : public Connection {
public:
    explicit SqliteConnection(const ConnectionConfig& config) : config_(config) { OpenFile(); }

    const ConnectionConfig& Config() const override { return config_; }

    ResultSet Select(const std::string& sql, const Parameters& parameters, const std::string& keyTable) override {
        std::lock_guard lock(mutex_);
        bool keyed = false;
        Prepared prepared = PrepareSelect(sql, parameters, keyTable, &keyed);
        sqlite3_stmt* statement = prepared.statement.get();
        ResultSet result;
        // The row key, when asked for, is the last column.
        int columnCount = 0;
        for (bool first = true;; first = false) {
            const int rc = sqlite3_step(statement);
            // The columns are read after the first step: a kept statement
            // whose tables have changed since is prepared again by that step.
            if (first) {
                columnCount = sqlite3_column_count(statement) - (keyed ? 1 : 0);
                result.columns = ColumnsOf(statement, columnCount);
            }
            if (rc == SQLITE_DONE) break;
            if (rc != SQLITE_ROW) throw Failure(rc, sql);
            std::vector<Value> row;
            row.reserve(static_cast<std::size_t>(columnCount));
            for (int c = 0; c < columnCount; ++c) row.push_back(ColumnValue(statement, c));
            result.rows.push_back(std::move(row));
            if (keyed) result.rowKeys.push_back(ColumnValue(statement, columnCount));
        }
        Keep(std::move(prepared));
        return result;
    }

    // SQLite steps one statement while others run on the same connection
    // (the section queries of each employee, the look-up functions), so the
    // rows come straight from the statement.
    std::unique_ptr<RowCursor> SelectForward(const std::string& sql, const Parameters& parameters) override {
        std::lock_guard lock(mutex_);
        bool keyed = false;
        return std::make_unique<Cursor>(*this, PrepareSelect(sql, parameters, "", &keyed), sql);
    }

    std::int64_t Execute(const std::string& sql, const Parameters& parameters) override {
        std::lock_guard lock(mutex_);
        EndHold();
        return RunEach(Translate(sql), &parameters, sql,
                       [&](int rc, int, std::string_view) { return Failure(rc, sql); });
    }

    void ExecScript(const std::string& script) override {
        ReleaseReads();
        InTransactionIf(sqlite3_get_autocommit(db_.get()) && !ScriptControlsTransactions(script), [&] {
            std::lock_guard lock(mutex_);
            // A failing statement is named by its number and its start.
            RunEach(TranslateForSqlite(script), nullptr, script, [&](int, int number, std::string_view statement) {
                const int code = sqlite3_extended_errcode(db_.get());
                const auto first = statement.find_first_not_of(" \t\r\n");
                std::string text(first == std::string_view::npos ? std::string_view() : statement.substr(first));
                if (text.size() > 300) text = text.substr(0, 300) + "...";
                return DatabaseError(Describe(code, sqlite3_errmsg(db_.get()),
                                              "statement " + std::to_string(number) + " of the script: " + text),
                                     code);
            });
        });
    }

    void ExecNativeScript(const std::string& script) override {
        ReleaseReads();
        InTransactionIf(sqlite3_get_autocommit(db_.get()) && !ScriptControlsTransactions(script), [&] {
            std::lock_guard lock(mutex_);
            RunEach(script, nullptr, script, [&](int rc, int, std::string_view) { return Failure(rc, script); });
        });
    }

    void UpdateRow(const std::string& table, const Value& rowKey,
                   const std::vector<std::pair<std::string, Value>>& changes) override {
        if (changes.empty()) return;
        std::string sql = "UPDATE " + QuoteName(table) + " SET ";
        Parameters parameters;
        for (std::size_t k = 0; k < changes.size(); ++k) {
            if (k) sql += ", ";
            const std::string name = "v" + std::to_string(k);
            sql += QuoteName(changes[k].first) + " = :" + name;
            parameters.emplace_back(name, changes[k].second);
        }
        sql += " WHERE rowid = :key";
        parameters.emplace_back("key", rowKey);
        std::lock_guard lock(mutex_);
        EndHold();
        const char* tail = nullptr;
        StatementPtr statement = Prepare(sql, sql, &tail);
        Bind(statement.get(), parameters, sql);
        const int rc = sqlite3_step(statement.get());
        if (rc != SQLITE_DONE) throw Failure(rc, sql);
        if (sqlite3_changes(db_.get()) != 1) {
            throw DatabaseError("The row being edited in table " + table + " of database \"" + config_.location +
                                "\" no longer exists; nothing was written.");
        }
    }

    // A held read is a deferred transaction that has read: SQLite then
    // takes its shared lock, and checks whether the file changed, once for
    // all the statements until it ends, instead of once for each.
    void HoldReads() override {
        std::lock_guard lock(mutex_);
        if (holding_ || !sqlite3_get_autocommit(db_.get())) return;
        holding_ = sqlite3_exec(db_.get(), "BEGIN", nullptr, nullptr, nullptr) == SQLITE_OK;
    }
    void ReleaseReads() noexcept override {
        std::lock_guard lock(mutex_);
        EndHold();
    }

    void Begin() override {
        ReleaseReads();
        Control("SAVEPOINT iras_transaction");
    }
    void Commit() override { Control("RELEASE iras_transaction"); }
    void Rollback() noexcept override {
        std::lock_guard lock(mutex_);
        sqlite3_exec(db_.get(), "ROLLBACK TO iras_transaction; RELEASE iras_transaction", nullptr, nullptr, nullptr);
    }

private:
    // A prepared select and the text under which it is kept for the next
    // run of the same text (see Keep).
    struct Prepared {
        StatementPtr statement;
        std::string text;
        bool keyed = false;  // the row key is its last column
    };

    class Cursor final : public RowCursor {
    public:
        // Steps to the first row at once, so that the columns are those of
        // the statement as it runs (a kept statement whose tables changed is
        // prepared again by its first step) and a failure shows at the open.
        Cursor(SqliteConnection& connection, Prepared prepared, std::string sql)
            : connection_(connection), prepared_(std::move(prepared)), sql_(std::move(sql)) {
            sqlite3_stmt* statement = prepared_.statement.get();
            const int rc = sqlite3_step(statement);
            if (rc != SQLITE_ROW && rc != SQLITE_DONE) throw connection_.Failure(rc, sql_);
            columns_ = ColumnsOf(statement, sqlite3_column_count(statement));
            pending_ = rc == SQLITE_ROW;
            if (!pending_) Done();
        }
        ~Cursor() override {
            std::lock_guard lock(connection_.mutex_);
            Done();
        }
        const std::vector<ResultColumn>& Columns() const override { return columns_; }
        bool Read(std::vector<Value>& row) override {
            std::lock_guard lock(connection_.mutex_);
            if (!prepared_.statement) return false;
            if (!pending_) {
                const int rc = sqlite3_step(prepared_.statement.get());
                if (rc == SQLITE_DONE) {
                    // Done: the statement is reset now, so that it holds no
                    // lock while the reader writes (the submission after the
                    // records).
                    Done();
                    return false;
                }
                if (rc != SQLITE_ROW) {
                    const DatabaseError error = connection_.Failure(rc, sql_);
                    prepared_.statement.reset();
                    throw error;
                }
            }
            pending_ = false;
            const int count = static_cast<int>(columns_.size());
            row.resize(columns_.size());
            for (int c = 0; c < count; ++c) ReadColumn(prepared_.statement.get(), c, row[static_cast<std::size_t>(c)]);
            return true;
        }

    private:
        // The statement goes back to the connection, which leaves it empty here.
        void Done() {
            if (prepared_.statement) connection_.Keep(std::move(prepared_));
        }
        SqliteConnection& connection_;
        Prepared prepared_;
        std::vector<ResultColumn> columns_;
        std::string sql_;
        bool pending_ = false;
    };

    // The statement of a select, its parameters bound: the one kept from
    // the last run of the same text, else a new one. With keyTable set, the
    // row key is asked for as one more, last column where the text allows
    // it; keyed says whether it was.
    Prepared PrepareSelect(const std::string& sql, const Parameters& parameters, const std::string& keyTable,
                           bool* keyed) {
        const std::string translated = Translate(sql);
        // A statement is kept under its text and whether a key was asked for.
        const std::string keptAs = keyTable.empty() ? translated : translated + '\x01';
        Prepared prepared = TakeKept(keptAs);
        if (!prepared.statement) {
            prepared.text = keptAs;
            const char* tail = nullptr;
            // A view or a table without row ids cannot be keyed; then the
            // result is read as it is, and Edit refuses it.
            const std::string withKey = keyTable.empty()
                                            ? std::string()
                                            : WithTrailingColumn(translated, std::string("rowid AS ") + RowKeyColumn);
            if (!withKey.empty() && withKey != translated) {
                prepared.statement = TryPrepare(withKey, &tail);
                prepared.keyed = prepared.statement != nullptr;
            }
            if (!prepared.statement) prepared.statement = Prepare(translated, sql, &tail);
            if (!OnlyBlanks(tail)) {
                throw DatabaseError(Describe(SQLITE_MISUSE, "a query that reads rows holds one statement only", sql));
            }
        }
        *keyed = prepared.keyed;
        Bind(prepared.statement.get(), parameters, sql);
        return prepared;
    }

    // Statements of selects that have run are kept, reset, for the next run
    // of the same text: the jobs run the same section queries for every
    // employee with only the employee's id changed.
    Prepared TakeKept(const std::string& text) {
        const auto found = kept_.find(text);
        if (found == kept_.end()) return {};
        Prepared prepared = std::move(found->second);
        kept_.erase(found);
        sqlite3_clear_bindings(prepared.statement.get());
        return prepared;
    }

    void Keep(Prepared prepared) {
        sqlite3_reset(prepared.statement.get());
        if (kept_.size() >= KeptStatements) kept_.clear();
        std::string text = prepared.text;
        kept_.try_emplace(std::move(text), std::move(prepared));
    }

    static std::vector<ResultColumn> ColumnsOf(sqlite3_stmt* statement, int columnCount) {
        std::vector<ResultColumn> columns;
        for (int c = 0; c < columnCount; ++c) {
            ResultColumn column;
            column.name = sqlite3_column_name(statement, c);
            if (const char* table = sqlite3_column_table_name(statement, c)) column.table = table;
            if (const char* origin = sqlite3_column_origin_name(statement, c)) column.origin = origin;
            columns.push_back(std::move(column));
        }
        return columns;
    }

    void OpenFile() {
        namespace fs = std::filesystem;
        const std::string& location = config_.location;
        if (location.empty()) {
            throw DatabaseError("No database file is configured for this database alias.");
        }
        std::error_code error;
        const auto status = fs::status(location, error);
        if (fs::is_directory(status)) {
            throw DatabaseError("The database file \"" + location + "\" is a folder, not a database file.");
        }
        if (!fs::exists(status) && !config_.create) {
            throw DatabaseError("The database file \"" + location + "\" does not exist.", SQLITE_CANTOPEN);
        }
        // A connection is used by one thread at a time (the one that runs the
        // job), so SQLite need not lock it around every call; nor count the
        // memory it takes, which costs a lock on every allocation. The count
        // can only be switched off before SQLite's first use in the process.
        static const bool configured = [] {
            sqlite3_config(SQLITE_CONFIG_MEMSTATUS, 0);
            return true;
        }();
        (void)configured;
        sqlite3* raw = nullptr;
        const int flags =
            SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | (config_.create ? SQLITE_OPEN_CREATE : 0);
        const int rc = sqlite3_open_v2(location.c_str(), &raw, flags, nullptr);
        db_.reset(raw);
        if (rc != SQLITE_OK) {
            const fs::path folder = fs::path(location).parent_path();
            if (!fs::exists(status) && !folder.empty() && !fs::is_directory(folder, error)) {
                throw DatabaseError("The database file \"" + location +
                                        "\" cannot be created: its folder does not exist.",
                                    rc);
            }
            throw DatabaseError(Describe(rc, raw ? sqlite3_errmsg(raw) : sqlite3_errstr(rc), ""), rc);
        }
        sqlite3_extended_result_codes(db_.get(), 1);
        sqlite3_busy_handler(db_.get(), &SqliteConnection::WaitForLock, this);
        functions_ = std::make_unique<DatabaseFunctions>(db_.get());
        // SQLite reads the file only at the first statement: read it now, so
        // that a file that is not a database, or one locked by another
        // program, is reported when the alias opens.
        const int probe = sqlite3_exec(db_.get(), "SELECT count(*) FROM sqlite_master", nullptr, nullptr, nullptr);
        if (probe != SQLITE_OK) {
            const int code = sqlite3_extended_errcode(db_.get());
            const std::string message = Describe(code, sqlite3_errmsg(db_.get()), "");
            functions_.reset();
            db_.reset();
            throw DatabaseError(message, code);
        }
    }

    // Another connection holds the lock: wait, in steps of up to a quarter
    // of a second, until it is free or the configured limit has passed. The
    // first call of a wait tells whoever asked that the run waits.
    static int WaitForLock(void* self, int attempt) {
        auto& connection = *static_cast<SqliteConnection*>(self);
        const auto now = std::chrono::steady_clock::now();
        if (attempt == 0) {
            connection.waitStart_ = now;
            if (connection.config_.onLockWait && connection.config_.lockWaitMs >= 1000) {
                connection.config_.onLockWait("The database \"" + connection.config_.location +
                                              "\" is in use by another run; waiting for it (at most " +
                                              std::to_string(connection.config_.lockWaitMs / 1000) + " seconds).");
            }
        }
        const auto waited =
            std::chrono::duration_cast<std::chrono::milliseconds>(now - connection.waitStart_).count();
        if (waited >= connection.config_.lockWaitMs) return 0;
        const long step = std::min<long>({250L, 5L * (attempt + 1), connection.config_.lockWaitMs - waited});
        std::this_thread::sleep_for(std::chrono::milliseconds(std::max(1L, step)));
        return 1;
    }

    // What went wrong, in plain words, naming the file and, where there is
    // one, the SQL.
    std::string Describe(int code, const std::string& engineMessage, const std::string& sql) const {
        const std::string file = "\"" + config_.location + "\"";
        std::string text;
        switch (code & 0xff) {
            case SQLITE_BUSY:
            case SQLITE_LOCKED:
                text = "The database " + file + " is locked by another program (still busy after " +
                       std::to_string(config_.lockWaitMs / 1000) +
                       " seconds). Close the other program or try again later.";
                break;
            case SQLITE_NOTADB:
                text = "The file " + file + " is not a database (it may be damaged or a file of another kind).";
                break;
            case SQLITE_CORRUPT:
                text = "The database " + file + " is damaged.";
                break;
            case SQLITE_READONLY:
                text = "The database " + file + " can only be read: nothing can be written to it.";
                break;
            case SQLITE_CANTOPEN:
                text = "The database file " + file + " cannot be opened.";
                break;
            case SQLITE_FULL:
                text = "The disk holding the database " + file + " is full.";
                break;
            case SQLITE_PERM:
            case SQLITE_AUTH:
                text = "Access to the database " + file + " is not permitted.";
                break;
            case SQLITE_IOERR:
                text = "The database " + file + " could not be read or written (input/output error).";
                break;
            default:
                text = "Error in database " + file + ".";
                break;
        }
        text += " (" + engineMessage + ")";
        if (!sql.empty()) text += "\nSQL: " + sql;
        return text;
    }

    DatabaseError Failure(int rc, const std::string& sql) const {
        const int code = sqlite3_extended_errcode(db_.get());
        return DatabaseError(Describe(code ? code : rc, sqlite3_errmsg(db_.get()), sql), code ? code : rc);
    }

    // Runs each statement of a translated text in turn, with the parameters
    // when there are any, and returns the rows changed. A statement that fails
    // to prepare or to run throws what failed(code, its number, its text) gives.
    template <typename Failed>
    std::int64_t RunEach(const std::string& translated, const Parameters* parameters, const std::string& sql,
                         Failed failed) {
        std::int64_t changed = 0;
        int number = 0;
        const char* next = translated.c_str();
        while (*next) {
            const char* start = next;
            const char* tail = nullptr;
            sqlite3_stmt* raw = nullptr;
            int rc = sqlite3_prepare_v2(db_.get(), start, -1, &raw, &tail);
            StatementPtr statement(raw);
            next = tail ? tail : start + std::char_traits<char>::length(start);
            if (rc == SQLITE_OK && !statement) continue;  // only blanks or comments were left
            ++number;
            if (rc == SQLITE_OK) {
                if (parameters) Bind(statement.get(), *parameters, sql);
                while ((rc = sqlite3_step(statement.get())) == SQLITE_ROW) {
                }
                if (rc == SQLITE_DONE) {
                    changed += sqlite3_changes64(db_.get());
                    continue;
                }
            }
            throw failed(rc, number, std::string_view(start, static_cast<std::size_t>(next - start)));
        }
        return changed;
    }

    std::string Translate(const std::string& sql) {
        const auto found = translations_.find(sql);
        if (found != translations_.end()) return found->second;
        if (translations_.size() >= TranslationCacheSize) translations_.clear();
        return translations_.emplace(sql, TranslateForSqlite(sql)).first->second;
    }

    // Prepares the first statement of text (translated); original is the text
    // as the caller wrote it, for messages. Null when only blanks were left.
    StatementPtr Prepare(const std::string& text, const std::string& original, const char** tail) {
        sqlite3_stmt* raw = nullptr;
        const int rc = sqlite3_prepare_v2(db_.get(), text.c_str(), -1, &raw, tail);
        StatementPtr statement(raw);
        if (rc != SQLITE_OK) throw Failure(rc, original);
        return statement;
    }

    // True when what follows a statement is nothing but blanks, ";" and comments.
    bool OnlyBlanks(const char* tail) {
        if (!tail || !*tail) return true;
        sqlite3_stmt* raw = nullptr;
        const int rc = sqlite3_prepare_v2(db_.get(), tail, -1, &raw, nullptr);
        sqlite3_finalize(raw);
        return rc == SQLITE_OK && raw == nullptr;
    }

    StatementPtr TryPrepare(const std::string& text, const char** tail) {
        sqlite3_stmt* raw = nullptr;
        if (sqlite3_prepare_v2(db_.get(), text.c_str(), -1, &raw, tail) != SQLITE_OK) {
            sqlite3_finalize(raw);
            return nullptr;
        }
        return StatementPtr(raw);
    }

    // Binds every named parameter of the statement; a parameter without a
    // value is an error rather than a silent NULL.
    void Bind(sqlite3_stmt* statement, const Parameters& parameters, const std::string& sql) {
        const int count = sqlite3_bind_parameter_count(statement);
        for (int index = 1; index <= count; ++index) {
            const char* rawName = sqlite3_bind_parameter_name(statement, index);
            if (!rawName) {
                throw DatabaseError(Describe(SQLITE_RANGE, "a parameter without a name (\"?\") cannot be set", sql));
            }
            const std::string_view name = rawName + 1;
            const auto found = std::find_if(parameters.begin(), parameters.end(),
                                            [&](const auto& p) { return SameIgnoringCase(p.first, name); });
            if (found == parameters.end()) {
                throw DatabaseError(Describe(SQLITE_RANGE, std::string("no value was given for parameter ") + rawName,
                                             sql));
            }
            int rc = SQLITE_OK;
            const Value& value = found->second;
            if (std::holds_alternative<std::monostate>(value)) {
                rc = sqlite3_bind_null(statement, index);
            } else if (const auto* integer = std::get_if<std::int64_t>(&value)) {
                rc = sqlite3_bind_int64(statement, index, *integer);
            } else if (const auto* real = std::get_if<double>(&value)) {
                rc = sqlite3_bind_double(statement, index, *real);
            } else {
                const auto& text = std::get<std::string>(value);
                rc = sqlite3_bind_text64(statement, index, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
            }
            if (rc != SQLITE_OK) throw Failure(rc, sql);
        }
    }

    static Value ColumnValue(sqlite3_stmt* statement, int column) {
        Value value;
        ReadColumn(statement, column, value);
        return value;
    }

    // A column of the current row into a row being read in, reusing the
    // slot's text. The column's value is looked up once for its type and
    // its contents.
    static void ReadColumn(sqlite3_stmt* statement, int column, Value& slot) {
        sqlite3_value* value = sqlite3_column_value(statement, column);
        switch (sqlite3_value_type(value)) {
            case SQLITE_INTEGER: slot = static_cast<std::int64_t>(sqlite3_value_int64(value)); return;
            case SQLITE_FLOAT: slot = sqlite3_value_double(value); return;
            case SQLITE_NULL: slot = std::monostate{}; return;
            case SQLITE_TEXT: {
                const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
                AssignText(slot, std::string_view(text ? text : "", static_cast<std::size_t>(sqlite3_value_bytes(value))));
                return;
            }
            default: {
                const auto* bytes = static_cast<const char*>(sqlite3_value_blob(value));
                AssignText(slot, std::string_view(bytes ? bytes : "", static_cast<std::size_t>(sqlite3_value_bytes(value))));
                return;
            }
        }
    }

    // Ends a held read (under the lock); it wrote nothing, so it is simply
    // ended.
    void EndHold() noexcept {
        if (!holding_) return;
        holding_ = false;
        if (sqlite3_exec(db_.get(), "COMMIT", nullptr, nullptr, nullptr) != SQLITE_OK)
            sqlite3_exec(db_.get(), "ROLLBACK", nullptr, nullptr, nullptr);
    }

    void Control(const char* sql) {
        std::lock_guard lock(mutex_);
        if (sqlite3_exec(db_.get(), sql, nullptr, nullptr, nullptr) != SQLITE_OK) throw Failure(SQLITE_ERROR, sql);
    }

    ConnectionConfig config_;
    std::chrono::steady_clock::time_point waitStart_;
    std::recursive_mutex mutex_;
    bool holding_ = false;  // a held read is open (HoldReads)
    std::map<std::string, std::string> translations_;
    // Declared after db_ so that the functions' statements are finalized
    // before the database closes.
    DatabasePtr db_;
    std::unique_ptr<DatabaseFunctions> functions_;
    std::map<std::string, Prepared> kept_;
};

}  // namespace

std::shared_ptr<Connection> OpenSqliteConnection(const ConnectionConfig& config) {
    return std::make_shared<SqliteConnection>(config);
}

}  // namespace iras::db
