// Making a new payroll database from the embedded SQL files. The file is
// claimed first with an exclusive create, so that two programs making the same
// database, or a file appearing in between, can never lead to writing into a
// database that was already there; the scripts then run in one transaction,
// and any failure removes the file again.
#include "platform/database/Schema.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <memory>
#include <system_error>

#include "platform/database/Connection.h"
#include "platform/database/PostgresConnection.h"
#include "platform/database/Query.h"

namespace iras::db {

namespace fs = std::filesystem;

std::optional<std::string_view> EmbeddedSql(std::string_view name) {
    for (const EmbeddedSqlFile& file : EmbeddedSqlFiles()) {
        if (file.name == name) return file.text;
    }
    return std::nullopt;
}

std::vector<NamedScript> DatabaseScripts(bool withSampleData, bool postgres) {
    std::vector<NamedScript> scripts;
    auto add = [&scripts](std::string_view name, bool required, bool native = false) {
        const auto text = EmbeddedSql(name);
        if (!text) {
            if (required) {
                throw DatabaseError("The SQL file data/" + std::string(name) +
                                    " was not built into this program; it cannot make a database.");
            }
            return;
        }
        scripts.push_back({"data/" + std::string(name), std::string(*text), native});
    };
    // Each return may bring its own part of a file ("sample_ir8s.sql" after
    // "sample.sql"), run after the main part in the order of their names.
    auto addParts = [&scripts](std::string_view stem) {
        const std::string prefix = std::string(stem) + "_";
        for (const EmbeddedSqlFile& file : EmbeddedSqlFiles()) {
            if (file.name.substr(0, prefix.size()) == prefix) {
                scripts.push_back({"data/" + std::string(file.name), std::string(file.text)});
            }
        }
    };
    if (postgres) add("postgres_functions.sql", true, true);
    add("schema.sql", true);
    addParts("schema");
    add("engine_schema.sql", false);  // the submission engine's tables, once they exist
    add("keywords.sql", true);
    addParts("keywords");
    if (withSampleData) {
        add("sample.sql", true);
        addParts("sample");
    }
    return scripts;
}

namespace {

// Removes the file it was given unless released: a database that failed half
// way is never left for someone to open.
class CreatedFile {
public:
    explicit CreatedFile(fs::path path) : path_(std::move(path)) {}
    ~CreatedFile() {
        if (path_.empty()) return;
        std::error_code ignored;
        fs::remove(path_, ignored);
        fs::remove(fs::path(path_.string() + "-journal"), ignored);
        fs::remove(fs::path(path_.string() + "-wal"), ignored);
        fs::remove(fs::path(path_.string() + "-shm"), ignored);
    }
    CreatedFile(const CreatedFile&) = delete;
    CreatedFile& operator=(const CreatedFile&) = delete;
    void Release() { path_.clear(); }

private:
    fs::path path_;
};

// Runs the scripts in one transaction; a failure undoes all of them and is
// reported as what failed (doing: "Creating the database \"x.db\"") and where.
void RunInOneTransaction(Connection& connection, const std::vector<NamedScript>& scripts, const std::string& doing) {
    connection.Begin();
    for (const NamedScript& script : scripts) {
        try {
            if (script.native) {
                connection.ExecNativeScript(script.text);
            } else {
                connection.ExecScript(script.text);
            }
        } catch (const DatabaseError& error) {
            connection.Rollback();
            throw DatabaseError(doing + " failed in " + script.name + ": " + error.what() + "\nNothing was created.",
                                error.NativeCode());
        }
    }
    try {
        connection.Commit();
    } catch (const DatabaseError& error) {
        connection.Rollback();
        throw DatabaseError(doing + " failed when saving it: " + error.what() + "\nNothing was created.",
                            error.NativeCode());
    }
}

// Creates the empty file, failing if anything of that name exists. An empty
// file is an empty SQLite database.
void ClaimNewFile(const fs::path& path) {
    const std::string shown = "\"" + path.string() + "\"";
    std::error_code error;
    if (fs::exists(fs::symlink_status(path, error))) {
        throw DatabaseError("The database file " + shown +
                            " already exists. A new database is only made where there is no file, so that no "
                            "payroll data is overwritten; choose another name or remove the file first.");
    }
    const int descriptor = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
    if (descriptor < 0) {
        const int code = errno;
        if (code == EEXIST) {
            throw DatabaseError("The database file " + shown +
                                " already exists. A new database is only made where there is no file, so that no "
                                "payroll data is overwritten; choose another name or remove the file first.");
        }
        const fs::path folder = path.parent_path();
        if (code == ENOENT && !folder.empty()) {
            throw DatabaseError("The database file " + shown + " cannot be created: its folder \"" +
                                folder.string() + "\" does not exist.");
        }
        throw DatabaseError("The database file " + shown + " cannot be created: " + std::strerror(code) + ".");
    }
    ::close(descriptor);
}

}  // namespace

void CreateDatabase(const fs::path& path, const std::vector<NamedScript>& scripts) {
    if (path.empty()) throw DatabaseError("No file name was given for the new database.");
    ClaimNewFile(path);
    CreatedFile guard(path);

    {
        std::shared_ptr<Connection> connection = OpenConnection(ConnectionConfig{"sqlite", path.string(), false});
        RunInOneTransaction(*connection, scripts, "Creating the database \"" + path.string() + "\"");
    }  // the connection closes here, before the file is kept or removed
    guard.Release();
}

void CreateDatabase(const fs::path& path, bool withSampleData) {
    CreateDatabase(path, DatabaseScripts(withSampleData));
}

namespace {

void CreateOnServer(const std::string& uri, bool withSampleData) {
    const std::string server = PostgresServerName(uri);
    std::shared_ptr<Connection> connection = OpenConnection(ConnectionConfig{PostgresDriver, uri, false});
    const ResultSet present = connection->Select(
        "SELECT count(*) AS n FROM pg_catalog.pg_tables WHERE schemaname = current_schema() AND tablename = "
        "'yeemployer'",
        {});
    if (!present.rows.empty() && std::get_if<std::int64_t>(&present.rows[0][0]) &&
        std::get<std::int64_t>(present.rows[0][0]) > 0) {
        throw DatabaseError("The payroll tables already exist in " + server +
                            ". They are only made in a database that holds none, so that no payroll data is "
                            "overwritten; use another database or drop the tables first.");
    }
    RunInOneTransaction(*connection, DatabaseScripts(withSampleData, true), "Creating the payroll tables in " + server);
}

}  // namespace

void CreateDatabase(const std::string& location, bool withSampleData) {
    if (IsPostgresUri(location)) {
        CreateOnServer(location, withSampleData);
    } else {
        CreateDatabase(fs::path(location), withSampleData);
    }
}

}  // namespace iras::db
