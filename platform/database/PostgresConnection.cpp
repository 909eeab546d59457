// The PostgreSQL driver (see PostgresConnection.h): libpq with its handles in
// unique_ptr, statements one at a time through the dialect layer, savepoint
// transactions, results read whole or, forward only, through a server-side
// cursor a batch at a time, with the types the SQLite driver gives (whole
// numbers as integers, amounts and other decimals as reals).

#include "platform/database/PostgresConnection.h"

#include <libpq-fe.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <map>
#include <mutex>
#include <optional>

#include "platform/common/Text.h"
#include "platform/database/CHandle.h"
#include "platform/database/SqlDialect.h"

namespace iras::db {
namespace {

using ConnectionPtr = CHandle<PGconn, PQfinish>;
using ResultPtr = CHandle<PGresult, PQclear>;
using OptionsPtr = CHandle<PQconninfoOption, PQconninfoFree>;

// Type oids of the results (pg_type.h is a server header).
constexpr Oid BoolOid = 16;
constexpr Oid Int8Oid = 20;
constexpr Oid Int2Oid = 21;
constexpr Oid Int4Oid = 23;
constexpr Oid OidOid = 26;
constexpr Oid Float4Oid = 700;
constexpr Oid Float8Oid = 701;
constexpr Oid NumericOid = 1700;

// The hidden result column that carries the row key of an editable result.
constexpr const char* RowKeyColumn = "iras_row_key_";

// Seconds to wait for a server that does not answer; a URI may say otherwise.
constexpr const char* ConnectTimeoutSeconds = "10";

constexpr std::size_t TranslationCacheSize = 512;

struct Server {
    std::string host;
    std::string port;
    std::string database;
    std::string user;
};

Server ServerOf(const std::string& uri) {
    Server server;
    char* error = nullptr;
    OptionsPtr options(PQconninfoParse(uri.c_str(), &error));
    if (error) PQfreemem(error);
    if (!options) return server;
    for (const PQconninfoOption* option = options.get(); option->keyword; ++option) {
        const std::string value = option->val ? option->val : "";
        const std::string keyword = option->keyword;
        if (keyword == "host" || (keyword == "hostaddr" && server.host.empty())) server.host = value;
        if (keyword == "port") server.port = value;
        if (keyword == "dbname") server.database = value;
        if (keyword == "user") server.user = value;
    }
    return server;
}

std::string Describe(const Server& server) {
    const std::string host = server.host.empty() ? "localhost" : server.host;
    const std::string port = server.port.empty() ? "5432" : server.port;
    std::string text = "the PostgreSQL server " + host + ":" + port;
    if (!server.database.empty()) text += ", database \"" + server.database + "\"";
    return text;
}

std::string Trimmed(const char* text) { return TrimSpace(text ? text : ""); }

// A real as its shortest text that reads back the same ("0.1", not
// "0.1000000000000000055"): the server takes it as that decimal.
std::string RealParameter(double value) {
    char buffer[64];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    return std::string(buffer, result.ptr);
}

// A NUMERIC as the SQLite driver would give it: a whole number written
// without a decimal point is an integer, anything else a real.
Value NumericValue(const char* text, int length) {
    const std::string_view view(text, static_cast<std::size_t>(length));
    if (view.find_first_of(".eEN") == std::string_view::npos) {
        std::int64_t whole = 0;
        const auto result = std::from_chars(view.data(), view.data() + view.size(), whole);
        if (result.ec == std::errc() && result.ptr == view.data() + view.size()) return whole;
    }
    double real = 0.0;
    const auto result = std::from_chars(view.data(), view.data() + view.size(), real);
    if (result.ec == std::errc()) return real;
    if (view == "NaN") return std::nan("");
    return std::string(view);
}

Value CellValue(const PGresult* result, int row, int column) {
    if (PQgetisnull(result, row, column)) return std::monostate{};
    const char* text = PQgetvalue(result, row, column);
    const int length = PQgetlength(result, row, column);
    switch (PQftype(result, column)) {
        case Int2Oid:
        case Int4Oid:
        case Int8Oid:
        case OidOid: {
            std::int64_t whole = 0;
            std::from_chars(text, text + length, whole);
            return whole;
        }
        case Float4Oid:
        case Float8Oid: {
            double real = 0.0;
            if (std::from_chars(text, text + length, real).ec != std::errc()) {
                const std::string_view special(text, static_cast<std::size_t>(length));
                if (special == "Infinity") real = HUGE_VAL;
                else if (special == "-Infinity") real = -HUGE_VAL;
                else real = std::nan("");
            }
            return real;
        }
        case NumericOid:
            return NumericValue(text, length);
        case BoolOid:
            return std::int64_t{text[0] == 't' ? 1 : 0};
        default:
            return std::string(text, static_cast<std::size_t>(length));
    }
}

class PostgresConnection final : public Connection {
public:
    explicit PostgresConnection(const ConnectionConfig& config)
        : config_(config), server_(ServerOf(config.location)), name_(Describe(server_)) {
        Connect();
    }

    const ConnectionConfig& Config() const override { return config_; }

    ResultSet Select(const std::string& sql, const Parameters& parameters, const std::string& keyTable) override {
        std::lock_guard lock(mutex_);
        PostgresStatement statement = TranslateQuery(sql);
        bool keyed = false;
        if (!keyTable.empty()) {
            const std::vector<std::string> key = PrimaryKey(keyTable);
            if (!key.empty()) {
                const std::string withKey = WithTrailingColumn(statement.text, KeyExpression(key) + " AS " + RowKeyColumn);
                if (withKey != statement.text) {
                    statement.text = withKey;
                    keyed = true;
                }
            }
        }
        ResultPtr result = Run(statement, parameters, sql);
        const int columnCount = PQnfields(result.get()) - (keyed ? 1 : 0);
        const int rowCount = PQntuples(result.get());
        ResultSet rows;
        for (int c = 0; c < columnCount; ++c) {
            ResultColumn column;
            column.name = PQfname(result.get(), c);
            if (keyed) {
                // Only an editable result needs to know where its columns come from.
                const Oid table = PQftable(result.get(), c);
                const int origin = PQftablecol(result.get(), c);
                if (table != InvalidOid && origin > 0) {
                    column.table = TableName(table);
                    column.origin = ColumnName(table, origin);
                }
            }
            rows.columns.push_back(std::move(column));
        }
        rows.rows.reserve(static_cast<std::size_t>(rowCount));
        for (int r = 0; r < rowCount; ++r) {
            std::vector<Value> row;
            row.reserve(static_cast<std::size_t>(columnCount));
            for (int c = 0; c < columnCount; ++c) row.push_back(CellValue(result.get(), r, c));
            rows.rows.push_back(std::move(row));
            if (keyed) rows.rowKeys.push_back(CellValue(result.get(), r, columnCount));
        }
        return rows;
    }

    // The rows come from a cursor on the server, fetched a batch at a time,
    // so that the client holds one batch whatever the size of the result.
    // The cursor is held past the end of its transaction (WITH HOLD): the
    // jobs run other statements, and transactions, while they read.
    std::unique_ptr<RowCursor> SelectForward(const std::string& sql, const Parameters& parameters) override {
        std::lock_guard lock(mutex_);
        PostgresStatement declare = TranslateQuery(sql);
        const std::string name = "iras_rows_" + std::to_string(++cursors_);
        declare.text = "DECLARE " + name + " NO SCROLL CURSOR WITH HOLD FOR " + declare.text;
        Run(declare, parameters, sql);
        return std::make_unique<ServerCursor>(*this, name, sql);
    }

    std::int64_t Execute(const std::string& sql, const Parameters& parameters) override {
        std::lock_guard lock(mutex_);
        std::int64_t changed = 0;
        for (const std::string& text : SplitStatements(sql)) {
            ResultPtr result = Run(Translate(text), parameters, sql);
            changed += ChangedRows(result.get());
        }
        return changed;
    }

    void ExecScript(const std::string& script) override {
        std::lock_guard lock(mutex_);
        InTransactionIf(depth_ == 0 && !ScriptControlsTransactions(script), [&] {
            int number = 0;
            for (const std::string& text : SplitStatements(script)) {
                ++number;
                try {
                    Run(Translate(text), {}, text);
                } catch (const DatabaseError& error) {
                    if (Lost()) throw;
                    std::string shown = TrimSpace(text);
                    if (shown.size() > 300) shown = shown.substr(0, 300) + "...";
                    throw DatabaseError(Message(LastMessage(), "statement " + std::to_string(number) +
                                                                   " of the script: " + shown),
                                        error.NativeCode());
                }
            }
        });
    }

    void ExecNativeScript(const std::string& script) override {
        std::lock_guard lock(mutex_);
        InTransactionIf(depth_ == 0, [&] {
            ResultPtr result(PQexec(connection_.get(), script.c_str()));
            Check(result, script);
        });
    }

    void UpdateRow(const std::string& table, const Value& rowKey,
                   const std::vector<std::pair<std::string, Value>>& changes) override {
        if (changes.empty()) return;
        std::lock_guard lock(mutex_);
        const std::vector<std::string> key = PrimaryKey(table);
        if (key.empty()) {
            throw DatabaseError("Table " + table + " of " + name_ + " has no primary key; its rows cannot be edited.");
        }
        PostgresStatement statement;
        statement.text = "UPDATE " + QuoteName(AsciiLower(table)) + " SET ";
        Parameters parameters;
        for (std::size_t k = 0; k < changes.size(); ++k) {
            if (k) statement.text += ", ";
            const std::string name = "v" + std::to_string(k);
            statement.text += QuoteName(AsciiLower(changes[k].first)) + " = $" + std::to_string(k + 1);
            statement.parameters.push_back(name);
            parameters.emplace_back(name, changes[k].second);
        }
        statement.text += " WHERE " + KeyExpression(key) + " = $" + std::to_string(changes.size() + 1);
        statement.parameters.push_back("key");
        parameters.emplace_back("key", rowKey);
        ResultPtr result = Run(statement, parameters, statement.text);
        if (ChangedRows(result.get()) != 1) {
            throw DatabaseError("The row being edited in table " + table + " of " + name_ +
                                " no longer exists; nothing was written.");
        }
    }

    void Begin() override {
        std::lock_guard lock(mutex_);
        Control(depth_ == 0 ? "BEGIN" : "SAVEPOINT " + Savepoint(depth_));
        ++depth_;
    }

    void Commit() override {
        std::lock_guard lock(mutex_);
        if (depth_ == 0) return;
        Control(depth_ == 1 ? "COMMIT" : "RELEASE SAVEPOINT " + Savepoint(depth_ - 1));
        --depth_;
    }

    void Rollback() noexcept override {
        std::lock_guard lock(mutex_);
        if (depth_ == 0) return;
        --depth_;
        const std::string sql = depth_ == 0 ? std::string("ROLLBACK")
                                            : "ROLLBACK TO SAVEPOINT " + Savepoint(depth_) + "; RELEASE SAVEPOINT " +
                                                  Savepoint(depth_);
        ResultPtr ignored(PQexec(connection_.get(), sql.c_str()));
    }

private:
    // The rows of a server-side cursor (see SelectForward), fetched in
    // batches; the cursor is closed once its last row has come.
    class ServerCursor final : public RowCursor {
    public:
        ServerCursor(PostgresConnection& connection, std::string name, std::string sql)
            : connection_(connection), name_(std::move(name)), sql_(std::move(sql)) {
            Fetch();  // the first batch names the columns
            const int count = PQnfields(batch_.get());
            for (int c = 0; c < count; ++c) columns_.push_back(ResultColumn{PQfname(batch_.get(), c), "", ""});
        }
        ~ServerCursor() override {
            std::lock_guard lock(connection_.mutex_);
            if (open_ && !connection_.Lost()) CloseOnServer();  // whatever the server says
        }
        const std::vector<ResultColumn>& Columns() const override { return columns_; }
        bool Read(std::vector<Value>& row) override {
            std::lock_guard lock(connection_.mutex_);
            if (next_ >= PQntuples(batch_.get())) {
                if (!open_) return false;
                Fetch();
                if (PQntuples(batch_.get()) == 0) return false;
            }
            row.resize(columns_.size());
            for (std::size_t c = 0; c < columns_.size(); ++c)
                row[c] = CellValue(batch_.get(), next_, static_cast<int>(c));
            ++next_;
            return true;
        }

    private:
        static constexpr int BatchRows = 1000;

        void Fetch() {
            std::lock_guard lock(connection_.mutex_);
            batch_.reset();  // the last batch goes before the next comes
            const std::string fetch = "FETCH FORWARD " + std::to_string(BatchRows) + " FROM " + name_;
            batch_.reset(PQexec(connection_.connection_.get(), fetch.c_str()));
            next_ = 0;
            try {
                connection_.Check(batch_, sql_);
            } catch (...) {
                open_ = false;
                throw;
            }
            if (PQntuples(batch_.get()) < BatchRows) {
                // The last batch: the server lets the cursor go now.
                open_ = false;
                connection_.Check(CloseOnServer(), "CLOSE " + name_);
            }
        }

        ResultPtr CloseOnServer() {
            return ResultPtr(PQexec(connection_.connection_.get(), ("CLOSE " + name_).c_str()));
        }

        PostgresConnection& connection_;
        std::string name_;
        std::string sql_;
        ResultPtr batch_;
        int next_ = 0;
        bool open_ = true;
        std::vector<ResultColumn> columns_;
    };

    // The one statement of a query's text, translated.
    PostgresStatement TranslateQuery(const std::string& sql) {
        const std::vector<std::string> statements = SplitStatements(sql);
        if (statements.size() != 1) {
            throw DatabaseError(Message(statements.empty() ? "a query needs a statement to run"
                                                           : "a query that reads rows holds one statement only",
                                        sql));
        }
        return Translate(statements.front());
    }

    void Connect() {
        if (config_.location.empty()) throw DatabaseError("No PostgreSQL server is configured for this database alias.");
        // Defaults first: what the URI says wins.
        const char* keywords[] = {"connect_timeout", "application_name", "client_encoding", "dbname", nullptr};
        const char* values[] = {ConnectTimeoutSeconds, "iras-yearend", "UTF8", config_.location.c_str(), nullptr};
        connection_.reset(PQconnectdbParams(keywords, values, 1));
        if (!connection_) throw DatabaseError("Out of memory while connecting to " + name_ + ".");
        if (PQstatus(connection_.get()) != CONNECTION_OK) {
            const std::string message = Trimmed(PQerrorMessage(connection_.get()));
            throw DatabaseError(ConnectFailure(message));
        }
        PQsetNoticeProcessor(connection_.get(), [](void*, const char*) {}, nullptr);
        // Dates as 'YYYY-MM-DD', as the payroll stores them; the payroll's
        // functions (data/postgres_functions.sql) sit in the public schema.
        ResultPtr settings(PQexec(connection_.get(), "SET DateStyle = ISO, YMD; SET extra_float_digits = 1"));
        Check(settings, "SET DateStyle");
    }

    // Why the server could not be reached or refused the connection.
    std::string ConnectFailure(const std::string& message) const {
        const std::string user = server_.user.empty() ? "" : " \"" + server_.user + "\"";
        std::string text;
        if (message.find("password authentication failed") != std::string::npos) {
            text = "The password of user" + user + " was refused by " + name_ + ".";
        } else if (message.find("no password supplied") != std::string::npos) {
            text = name_ + " asks for a password, and the connection URI gives none.";
            text[0] = 'T';
        } else if (message.find("does not exist") != std::string::npos && message.find("database") != std::string::npos) {
            text = "The database \"" + server_.database + "\" does not exist on " + name_.substr(0, name_.find(',')) +
                   ". Create it (createdb), then make the payroll tables with: iras-yearend init-db URI";
        } else if (message.find("role") != std::string::npos && message.find("does not exist") != std::string::npos) {
            text = "User" + user + " is not known to " + name_ + ".";
        } else if (message.find("Connection refused") != std::string::npos ||
                   message.find("No such file or directory") != std::string::npos ||
                   message.find("timeout expired") != std::string::npos ||
                   message.find("could not translate host name") != std::string::npos ||
                   message.find("shutting down") != std::string::npos ||
                   message.find("starting up") != std::string::npos) {
            text = "Cannot reach " + name_ + ": is the server running, and are its address and port right?";
        } else {
            text = "Cannot connect to " + name_ + ".";
        }
        return text + " (" + message + ")";
    }

    bool Lost() const { return PQstatus(connection_.get()) != CONNECTION_OK; }

    std::string LastMessage() const { return lastMessage_; }

    std::string Message(const std::string& engineMessage, const std::string& sql) const {
        std::string text = "Error in " + name_ + ". (" + engineMessage + ")";
        if (!sql.empty()) text += "\nSQL: " + sql;
        return text;
    }

    // Throws for a result that is not a success, naming the server; a
    // connection that went away says so first.
    void Check(const ResultPtr& result, const std::string& sql) {
        const ExecStatusType status = result ? PQresultStatus(result.get()) : PGRES_FATAL_ERROR;
        if (status == PGRES_COMMAND_OK || status == PGRES_TUPLES_OK || status == PGRES_EMPTY_QUERY) return;
        std::string message = result ? Trimmed(PQresultErrorField(result.get(), PG_DIAG_MESSAGE_PRIMARY)) : "";
        if (message.empty()) message = Trimmed(PQerrorMessage(connection_.get()));
        lastMessage_ = message;
        const std::string state = result ? Trimmed(PQresultErrorField(result.get(), PG_DIAG_SQLSTATE)) : "";
        if (Lost() || state.starts_with("57P") || state.starts_with("08")) {
            throw DatabaseError("The connection to " + name_ +
                                " was lost: the server stopped or cannot be reached. Nothing more was written to "
                                "the database; what this run had not committed was undone. (" +
                                message + ")");
        }
        throw DatabaseError(Message(message, sql));
    }

    ResultPtr Run(const PostgresStatement& statement, const Parameters& parameters, const std::string& sql) {
        std::vector<std::optional<std::string>> texts;
        texts.reserve(statement.parameters.size());
        for (const std::string& name : statement.parameters) {
            const auto found = std::find_if(parameters.begin(), parameters.end(),
                                            [&](const auto& p) { return SameIgnoringCase(p.first, name); });
            if (found == parameters.end()) {
                throw DatabaseError(Message("no value was given for parameter :" + name, sql));
            }
            const Value& value = found->second;
            if (std::holds_alternative<std::monostate>(value)) {
                texts.emplace_back(std::nullopt);
            } else if (const auto* whole = std::get_if<std::int64_t>(&value)) {
                texts.emplace_back(std::to_string(*whole));
            } else if (const auto* real = std::get_if<double>(&value)) {
                texts.emplace_back(RealParameter(*real));
            } else {
                texts.emplace_back(std::get<std::string>(value));
            }
        }
        std::vector<const char*> values;
        for (const auto& text : texts) values.push_back(text ? text->c_str() : nullptr);
        ResultPtr result(PQexecParams(connection_.get(), statement.text.c_str(), static_cast<int>(values.size()),
                                      nullptr, values.data(), nullptr, nullptr, 0));
        Check(result, sql);
        return result;
    }

    static std::int64_t ChangedRows(PGresult* result) {
        const char* text = PQcmdTuples(result);
        std::int64_t count = 0;
        if (text && *text) std::from_chars(text, text + std::char_traits<char>::length(text), count);
        return count;
    }

    PostgresStatement Translate(const std::string& sql) {
        const auto found = translations_.find(sql);
        if (found != translations_.end()) return found->second;
        if (translations_.size() >= TranslationCacheSize) translations_.clear();
        return translations_.emplace(sql, TranslateForPostgres(sql)).first->second;
    }

    void Control(const std::string& sql) {
        ResultPtr result(PQexec(connection_.get(), sql.c_str()));
        Check(result, sql);
    }

    static std::string Savepoint(int level) { return "iras_transaction_" + std::to_string(level); }

    // The primary-key columns of a table, in key order; none when it has no key.
    std::vector<std::string> PrimaryKey(const std::string& table) {
        const std::string lower = AsciiLower(table);
        const auto found = keys_.find(lower);
        if (found != keys_.end()) return found->second;
        PostgresStatement statement;
        statement.text =
            "SELECT a.attname FROM pg_index i JOIN pg_attribute a ON a.attrelid = i.indrelid AND a.attnum = "
            "ANY(i.indkey) WHERE i.indrelid = to_regclass($1) AND i.indisprimary "
            "ORDER BY array_position(i.indkey::int2[], a.attnum)";
        statement.parameters = {"table"};
        ResultPtr result = Run(statement, {{"table", QuoteName(PostgresNameOf(lower))}}, statement.text);
        std::vector<std::string> key;
        for (int r = 0; r < PQntuples(result.get()); ++r) key.push_back(PQgetvalue(result.get(), r, 0));
        return keys_.emplace(lower, key).first->second;
    }

    static std::string PostgresNameOf(const std::string& name) {
        // The dialect layer's name for it: the quoted form comes back folded.
        const std::string quoted = TranslateForPostgres(QuoteName(name)).text;
        return quoted.size() >= 2 ? quoted.substr(1, quoted.size() - 2) : name;
    }

    static std::string KeyExpression(const std::vector<std::string>& key) {
        std::string columns;
        for (const std::string& column : key) columns += (columns.empty() ? "" : ", ") + QuoteName(column);
        return "CAST(ROW(" + columns + ") AS text)";
    }

    std::string TableName(Oid table) {
        const auto found = tableNames_.find(table);
        if (found != tableNames_.end()) return found->second;
        PostgresStatement statement{"SELECT relname FROM pg_class WHERE oid = $1", {"oid"}};
        ResultPtr result = Run(statement, {{"oid", std::int64_t{table}}}, statement.text);
        const std::string name = PQntuples(result.get()) ? PQgetvalue(result.get(), 0, 0) : "";
        return tableNames_.emplace(table, name).first->second;
    }

    std::string ColumnName(Oid table, int column) {
        const auto key = std::make_pair(table, column);
        const auto found = columnNames_.find(key);
        if (found != columnNames_.end()) return found->second;
        PostgresStatement statement{"SELECT attname FROM pg_attribute WHERE attrelid = $1 AND attnum = $2",
                                    {"oid", "column"}};
        ResultPtr result =
            Run(statement, {{"oid", std::int64_t{table}}, {"column", std::int64_t{column}}}, statement.text);
        const std::string name = PQntuples(result.get()) ? PQgetvalue(result.get(), 0, 0) : "";
        return columnNames_.emplace(key, name).first->second;
    }

    ConnectionConfig config_;
    Server server_;
    std::string name_;
    std::recursive_mutex mutex_;
    ConnectionPtr connection_;
    int depth_ = 0;
    int cursors_ = 0;  // server-side cursors declared, for their names
    std::string lastMessage_;
    std::map<std::string, PostgresStatement> translations_;
    std::map<std::string, std::vector<std::string>> keys_;
    std::map<Oid, std::string> tableNames_;
    std::map<std::pair<Oid, int>, std::string> columnNames_;
};

}  // namespace

bool IsPostgresUri(std::string_view location) {
    const std::string lower = AsciiLower(std::string(location.substr(0, 13)));
    return lower.starts_with("postgresql://") || lower.starts_with("postgres://");
}

std::string PostgresServerName(const std::string& uri) { return Describe(ServerOf(uri)); }

std::shared_ptr<Connection> OpenPostgresConnection(const ConnectionConfig& config) {
    return std::make_shared<PostgresConnection>(config);
}

}  // namespace iras::db
