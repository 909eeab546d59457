// A PostgreSQL server of the test program's own: made with initdb in a
// temporary folder, listening on a free loopback port, started once for the
// whole program (a GoogleTest environment) and stopped at its end. As root
// it runs under the unprivileged account "nobody", since PostgreSQL refuses
// to run as root. Where the server binaries are not installed, every test
// skips, saying why.
//
// The server asks for a password over TCP (scram-sha-256): the superuser
// "payroll" has the password "payroll-secret". Its collation is English (ICU
// en-US), as on a real server, so that any text the returns sort by the
// server's language rules instead of byte by byte shows up.
#pragma once

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <pwd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "platform/database/Connection.h"
#include "platform/database/PostgresConnection.h"
#include "platform/database/Schema.h"

namespace iras::testing {

namespace fs = std::filesystem;

inline constexpr const char* kPostgresUser = "payroll";
inline constexpr const char* kPostgresPassword = "payroll-secret";

// The newest /usr/lib/postgresql/<version>/bin holding initdb and pg_ctl;
// empty when there is none.
inline fs::path PostgresBinaries() {
    fs::path best;
    std::error_code error;
    for (const auto& entry : fs::directory_iterator("/usr/lib/postgresql", error)) {
        const fs::path bin = entry.path() / "bin";
        if (fs::exists(bin / "initdb", error) && fs::exists(bin / "pg_ctl", error) &&
            (best.empty() || entry.path().filename().string() > best.parent_path().filename().string())) {
            best = bin;
        }
    }
    return best;
}

inline int FreeLoopbackPort() {
    const int fd = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = 0;
    socklen_t length = sizeof address;
    int port = 0;
    if (::bind(fd, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0 &&
        ::getsockname(fd, reinterpret_cast<sockaddr*>(&address), &length) == 0) {
        port = ntohs(address.sin_port);
    }
    ::close(fd);
    return port;
}

inline std::string ShellQuoted(const std::string& text) {
    std::string quoted = "'";
    for (char c : text) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return quoted + "'";
}

class PostgresServer {
public:
    // Makes and starts the server; false with Problem() set when it cannot.
    bool Start() {
        bin_ = PostgresBinaries();
        if (bin_.empty()) {
            problem_ = "the PostgreSQL server binaries (initdb, pg_ctl) are not installed under "
                       "/usr/lib/postgresql/*/bin; scripts/setup.sh installs them";
            return false;
        }
        char pattern[] = "/tmp/iras_pg_XXXXXX";
        if (!::mkdtemp(pattern)) {
            problem_ = "no temporary folder for the server";
            return false;
        }
        folder_ = pattern;
        asRoot_ = ::geteuid() == 0;
        if (asRoot_) {
            const passwd* nobody = ::getpwnam("nobody");
            if (!nobody || ::chown(folder_.c_str(), nobody->pw_uid, nobody->pw_gid) != 0) {
                problem_ = "cannot hand " + folder_.string() + " to the account nobody";
                return false;
            }
        }
        {
            std::ofstream password(folder_ / "password");
            password << kPostgresPassword << "\n";
        }
        if (asRoot_) Run("chown nobody " + ShellQuoted((folder_ / "password").string()), false);
        if (!Run(Tool("initdb") + " -D " + ShellQuoted(Data()) + " -U " + kPostgresUser + " --pwfile=" +
                     ShellQuoted((folder_ / "password").string()) +
                     " --auth-local=trust --auth-host=scram-sha-256 -E UTF8 --locale=C.UTF-8"
                     " --locale-provider=icu --icu-locale=en-US -N",
                 true)) {
            problem_ = "initdb failed: " + Log();
            return false;
        }
        port_ = FreeLoopbackPort();
        return Resume();
    }

    // Starts the stopped server again on the same port.
    bool Resume() {
        const std::string options = "-p " + std::to_string(port_) + " -k " + folder_.string() +
                                    " -c listen_addresses=127.0.0.1 -c fsync=off -c synchronous_commit=off"
                                    " -c full_page_writes=off";
        if (!Run(Tool("pg_ctl") + " -D " + ShellQuoted(Data()) + " -o " + ShellQuoted(options) + " -l " +
                     ShellQuoted((folder_ / "server.log").string()) + " -w -t 30 start",
                 true)) {
            problem_ = "the server did not start: " + Log();
            return false;
        }
        running_ = true;
        return true;
    }

    // Stops the server at once; connections open on it break.
    void Stop() {
        if (!running_) return;
        Run(Tool("pg_ctl") + " -D " + ShellQuoted(Data()) + " -m fast -w stop", true);
        running_ = false;
    }

    void Remove() {
        Stop();
        std::error_code ignored;
        if (!folder_.empty()) fs::remove_all(folder_, ignored);
    }

    const std::string& Problem() const { return problem_; }
    int Port() const { return port_; }

    std::string Uri(const std::string& database, const std::string& password = kPostgresPassword) const {
        return std::string("postgresql://") + kPostgresUser + ":" + password + "@127.0.0.1:" + std::to_string(port_) +
               "/" + database;
    }

    // A new database on the server: empty, or a copy of another that no one
    // is connected to.
    void CreateDatabase(const std::string& name, const std::string& copyOf = "") const {
        auto connection = db::OpenConnection({db::PostgresDriver, Uri("postgres"), false});
        connection->Execute("CREATE DATABASE " + name + (copyOf.empty() ? "" : " TEMPLATE " + copyOf), {});
    }

private:
    std::string Data() const { return (folder_ / "data").string(); }
    std::string Tool(const char* name) const { return ShellQuoted((bin_ / name).string()); }

    // Runs a command, as nobody when root; its output goes to a log file.
    bool Run(const std::string& command, bool asServerAccount) const {
        std::string line = command + " > " + ShellQuoted((folder_ / "command.log").string()) + " 2>&1";
        if (asRoot_ && asServerAccount) line = "runuser -u nobody -- sh -c " + ShellQuoted(line);
        if (asRoot_ && asServerAccount) {
            // The log file must be writable by nobody.
            std::ofstream(folder_ / "command.log").close();
            Run("chown nobody " + ShellQuoted((folder_ / "command.log").string()), false);
        }
        return std::system(line.c_str()) == 0;
    }

    std::string Log() const {
        std::ifstream in(folder_ / "command.log");
        std::stringstream text;
        text << in.rdbuf();
        std::ifstream server(folder_ / "server.log");
        text << server.rdbuf();
        return text.str();
    }

    fs::path bin_;
    fs::path folder_;
    bool asRoot_ = false;
    bool running_ = false;
    int port_ = 0;
    std::string problem_;
};

// The program's one server and what it holds: the databases "sample" (made by
// init-db with the sample data) and a SQLite file of the same sample data.
class PostgresEnvironment : public ::testing::Environment {
public:
    static PostgresEnvironment& Get() {
        static PostgresEnvironment* environment = new PostgresEnvironment;
        return *environment;
    }

    void SetUp() override {
        available_ = server_.Start();
        if (!available_) {
            // Binaries present but no server is a failure, not a skip.
            if (!PostgresBinaries().empty()) FAIL() << server_.Problem();
            return;
        }
        folder_ = fs::temp_directory_path() / ("iras_pg_sample_" + std::to_string(::getpid()));
        fs::remove_all(folder_);
        fs::create_directories(folder_);
        db::CreateDatabase(SqliteSample(), true);
        server_.CreateDatabase("sample");
        db::CreateDatabase(server_.Uri("sample"), true);
    }

    void TearDown() override {
        server_.Remove();
        std::error_code ignored;
        if (!folder_.empty()) fs::remove_all(folder_, ignored);
    }

    bool Available() const { return available_; }
    std::string Problem() const { return server_.Problem(); }
    PostgresServer& Server() { return server_; }
    std::string SqliteSample() const { return (folder_ / "sample.db").string(); }
    std::string PostgresSample() const { return server_.Uri("sample"); }
    const fs::path& Folder() const { return folder_; }

private:
    PostgresServer server_;
    bool available_ = false;
    fs::path folder_;
};

inline ::testing::Environment* const kPostgresEnvironment =
    ::testing::AddGlobalTestEnvironment(&PostgresEnvironment::Get());

// Skips the test where there is no server to test against.
#define IRAS_REQUIRE_POSTGRES()                                                                       \
    do {                                                                                              \
        if (!::iras::testing::PostgresEnvironment::Get().Available())                                 \
            GTEST_SKIP() << "No PostgreSQL server: " << ::iras::testing::PostgresEnvironment::Get().Problem(); \
    } while (false)

}  // namespace iras::testing
