// The named connections of the process, the drivers they open, scripts and
// transactions on an alias.
//
// An alias is registered once (the host registers "kovadb" at start) and its
// database opens on first use, so that a program that never touches the
// database never fails on it. Registering an alias again points it at the new
// database; queries already open keep the rows they have read.

#include <map>
#include <mutex>

#include "platform/common/Text.h"
#include "platform/database/Connection.h"
#include "platform/database/PostgresConnection.h"
#include "platform/database/SqliteConnection.h"

namespace iras::db {
namespace {

struct Entry {
    ConnectionConfig config;
    std::shared_ptr<Connection> connection;
};

struct Registry {
    std::mutex mutex;
    std::map<std::string, Entry> aliases;
    std::map<std::string, DriverFactory> drivers{{"sqlite", OpenSqliteConnection},
                                                 {PostgresDriver, OpenPostgresConnection},
                                                 {"postgres", OpenPostgresConnection}};
};

Registry& TheRegistry() {
    static Registry registry;
    return registry;
}

// A whole result handed over row by row, each row moved out as it goes, so
// that the reader holds one row more than the driver read.
class WholeResultCursor final : public RowCursor {
public:
    explicit WholeResultCursor(ResultSet result) : result_(std::move(result)) {}
    const std::vector<ResultColumn>& Columns() const override { return result_.columns; }
    bool Read(std::vector<Value>& row) override {
        if (next_ >= result_.rows.size()) {
            result_.rows.clear();
            result_.rows.shrink_to_fit();
            return false;
        }
        row = std::move(result_.rows[next_++]);
        return true;
    }

private:
    ResultSet result_;
    std::size_t next_ = 0;
};

}  // namespace

std::unique_ptr<RowCursor> Connection::SelectForward(const std::string& sql, const Parameters& parameters) {
    return std::make_unique<WholeResultCursor>(Select(sql, parameters));
}

void RegisterDriver(const std::string& driver, DriverFactory factory) {
    Registry& registry = TheRegistry();
    std::lock_guard lock(registry.mutex);
    registry.drivers[AsciiLower(driver)] = std::move(factory);
}

std::shared_ptr<Connection> OpenConnection(const ConnectionConfig& config) {
    DriverFactory factory;
    {
        Registry& registry = TheRegistry();
        std::lock_guard lock(registry.mutex);
        const auto found = registry.drivers.find(AsciiLower(config.driver));
        if (found == registry.drivers.end()) {
            throw DatabaseError("There is no database driver \"" + config.driver + "\" for the database \"" +
                                config.location + "\".");
        }
        factory = found->second;
    }
    return factory(config);
}

void ConnectionRegistry::Register(const std::string& alias, const ConnectionConfig& config) {
    Registry& registry = TheRegistry();
    std::lock_guard lock(registry.mutex);
    registry.aliases[AsciiLower(alias)] = Entry{config, nullptr};
}

void ConnectionRegistry::Unregister(const std::string& alias) {
    Registry& registry = TheRegistry();
    std::lock_guard lock(registry.mutex);
    registry.aliases.erase(AsciiLower(alias));
}

std::shared_ptr<Connection> ConnectionRegistry::Get(const std::string& alias) {
    ConnectionConfig config;
    {
        Registry& registry = TheRegistry();
        std::lock_guard lock(registry.mutex);
        const auto found = registry.aliases.find(AsciiLower(alias));
        if (found == registry.aliases.end()) {
            throw DatabaseError("No database is set up under the alias \"" + alias + "\".");
        }
        if (found->second.connection) return found->second.connection;
        config = found->second.config;
    }
    // Opened outside the lock: a locked file may keep the driver waiting.
    std::shared_ptr<Connection> connection = OpenConnection(config);
    Registry& registry = TheRegistry();
    std::lock_guard lock(registry.mutex);
    const auto found = registry.aliases.find(AsciiLower(alias));
    if (found == registry.aliases.end()) {
        throw DatabaseError("The database alias \"" + alias + "\" was removed while it was being opened.");
    }
    if (!found->second.connection) found->second.connection = connection;
    return found->second.connection;
}

void ExecScript(const std::string& alias, const std::string& script) {
    ConnectionRegistry::Get(alias)->ExecScript(script);
}

Transaction::Transaction(const std::string& alias) : connection_(ConnectionRegistry::Get(alias)) {
    connection_->Begin();
}

Transaction::~Transaction() {
    if (!done_) connection_->Rollback();
}

void Transaction::Commit() {
    if (done_) return;
    connection_->Commit();
    done_ = true;
}

}  // namespace iras::db
