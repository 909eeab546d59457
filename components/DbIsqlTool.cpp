// dbisql (see DbIsqlTool.h): reading the command line, the log beside the
// script, and the run of the script through the database layer.

#include "components/DbIsqlTool.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstring>
#include <exception>
#include <fstream>
#include <iterator>
#include <ostream>
#include <system_error>

#include "platform/common/Date.h"
#include "platform/common/Text.h"
#include "platform/database/Connection.h"
#include "platform/database/PostgresConnection.h"
#include "platform/database/SqlDialect.h"

namespace iras {
namespace {

namespace fs = std::filesystem;

constexpr const char* Usage =
    "Usage: dbisql -c \"uid=USER;pwd=PASSWORD;dsn=DATASOURCE\" [-q] SCRIPT\n"
    "  Runs the SQL script SCRIPT as one transaction on the database DATASOURCE\n"
    "  (an SQLite file, or a URI such as postgresql://host/payroll) and appends\n"
    "  what it did to SCRIPT.log. -q: nothing on the terminal.\n";

struct Options {
    std::string userId;
    std::string password;
    std::string dataSource;
    bool connectionGiven = false;
    bool quiet = false;
    bool help = false;
    std::vector<std::string> scripts;
};

// Reads "uid=..;pwd=..;dsn=.." into options; "" or what is wrong with it.
std::string ReadConnection(const std::string& text, Options& options) {
    std::size_t start = 0;
    while (start <= text.size()) {
        const std::size_t end = std::min(text.find(';', start), text.size());
        const std::string part = TrimSpace(std::string_view(text).substr(start, end - start));
        start = end + 1;
        if (part.empty()) continue;
        const std::size_t equals = part.find('=');
        if (equals == std::string::npos) {
            return "the connection text has \"" + part + "\" where a key=value pair belongs.";
        }
        const std::string key = AsciiLower(TrimSpace(std::string_view(part).substr(0, equals)));
        const std::string value = TrimSpace(std::string_view(part).substr(equals + 1));
        if (key == "uid" || key == "userid") {
            options.userId = value;
        } else if (key == "pwd" || key == "password") {
            options.password = value;
        } else if (key == "dsn" || key == "datasourcename") {
            options.dataSource = value;
        } else {
            return "the connection text has the unknown key \"" + part.substr(0, equals) +
                   "\" (known: uid, pwd, dsn).";
        }
    }
    return "";
}

// Reads the command line into options; "" or the first thing wrong with it.
std::string ReadCommandLine(const std::vector<std::string>& args, Options& options) {
    std::string problem;
    for (std::size_t k = 0; k < args.size(); ++k) {
        const std::string& arg = args[k];
        std::string found;
        if (arg == "-c") {
            if (k + 1 == args.size()) {
                found = "-c needs the connection text \"uid=...;pwd=...;dsn=...\".";
            } else {
                options.connectionGiven = true;
                found = ReadConnection(args[++k], options);
            }
        } else if (arg == "-q") {
            options.quiet = true;
        } else if (arg == "-h" || arg == "--help") {
            options.help = true;
        } else if (arg.size() > 1 && arg[0] == '-') {
            found = "unknown option \"" + arg + "\".";
        } else {
            options.scripts.push_back(arg);
        }
        if (problem.empty()) problem = found;
    }
    if (!problem.empty()) return problem;
    if (!options.connectionGiven) return "no connection is given (-c \"uid=...;pwd=...;dsn=...\").";
    if (options.dataSource.empty()) return "the connection text names no data source (dsn=...).";
    if (options.scripts.empty()) return "no script file is given.";
    if (options.scripts.size() > 1) {
        std::string words;
        for (const std::string& script : options.scripts) words += " \"" + script + "\"";
        return "dbisql runs one script file, but the command line names " + std::to_string(options.scripts.size()) +
               ":" + words + ". A path with blanks must be put in double quotes.";
    }
    return "";
}

// The log beside the script: every line stamped, written through at once so
// that a run cut short still leaves what it did.
class RunLog {
public:
    RunLog(const fs::path& file, std::ostream* echo) : file_(file, std::ios::app), echo_(echo) {}
    bool IsOpen() const { return file_.is_open(); }
    // A text of several lines (an engine message with its SQL) is stamped on
    // each of them.
    void Line(const std::string& text) {
        const std::string stamp = Now().ToLogText() + ' ';
        for (std::size_t start = 0; start <= text.size();) {
            const std::size_t end = std::min(text.find('\n', start), text.size());
            file_ << stamp << std::string_view(text).substr(start, end - start) << '\n';
            start = end + 1;
        }
        file_.flush();
        if (echo_) *echo_ << text << '\n';
    }

private:
    std::ofstream file_;
    std::ostream* echo_;
};

std::string Quoted(const std::string& text) { return "\"" + text + "\""; }

// The script's text, or what keeps it from being read.
int ReadScript(const std::string& path, std::string& script, RunLog& log) {
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (!fs::exists(status)) {
        log.Line("Error: the script file " + Quoted(path) + " does not exist.");
        return DbIsqlNoScript;
    }
    if (fs::is_directory(status)) {
        log.Line("Error: the script " + Quoted(path) + " is a folder, not a script file.");
        return DbIsqlNoScript;
    }
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        log.Line("Error: the script file " + Quoted(path) + " cannot be read (" + std::strerror(errno) + ").");
        return DbIsqlNoScript;
    }
    script.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    if (in.bad()) {
        log.Line("Error: the script file " + Quoted(path) + " could not be read to its end.");
        return DbIsqlNoScript;
    }
    return DbIsqlDone;
}

// The data source as the log names it: a server without the password of its URI.
std::string DataSourceText(const std::string& dataSource) {
    return db::IsPostgresUri(dataSource) ? db::PostgresServerName(dataSource) : Quoted(dataSource);
}

int RunScript(const Options& options, RunLog& log) {
    const std::string& path = options.scripts.front();
    log.Line("Data source " + DataSourceText(options.dataSource) + ", user " + Quoted(options.userId) + ".");
    std::string script;
    if (const int status = ReadScript(path, script, log); status != DbIsqlDone) return status;

    std::shared_ptr<db::Connection> connection;
    try {
        connection = db::OpenConnection(DataSourceConfig(options.dataSource));
    } catch (const db::DatabaseError& error) {
        log.Line("Error: the data source " + DataSourceText(options.dataSource) + " cannot be opened: " + error.what());
        return DbIsqlNoDatabase;
    }
    const bool ownTransactions = db::ScriptControlsTransactions(script);
    try {
        connection->ExecScript(script);
    } catch (const db::DatabaseError& error) {
        log.Line(ownTransactions ? std::string("Error in the script, which manages its own transactions (what it "
                                               "committed before the error stays): ") +
                                       error.what()
                                 : std::string("Error in the script; nothing of it was applied: ") + error.what());
        return DbIsqlScriptFailed;
    }
    log.Line(ownTransactions ? "The script ran; it manages its own transactions."
                             : "The script ran as one transaction and was committed.");
    return DbIsqlDone;
}

}  // namespace

fs::path DbIsqlLogFile(const fs::path& script) {
    fs::path log = script;
    log += ".log";
    return log;
}

db::ConnectionConfig DataSourceConfig(const std::string& dataSource) {
    db::ConnectionConfig config;
    config.location = dataSource;
    config.create = false;
    const std::size_t separator = dataSource.find("://");
    const std::string scheme = separator == std::string::npos ? std::string() : dataSource.substr(0, separator);
    const bool isScheme =
        !scheme.empty() && std::isalpha(static_cast<unsigned char>(scheme[0])) &&
        scheme.find_first_not_of("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789+-.") ==
            std::string::npos;
    config.driver = isScheme ? AsciiLower(scheme) : "sqlite";
    return config;
}

int RunDbIsql(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    try {
        Options options;
        const std::string problem = ReadCommandLine(args, options);
        if (options.help) {
            out << Usage;
            return DbIsqlDone;
        }
        if (options.scripts.empty()) {
            // Nowhere beside a script to write to.
            err << "dbisql: " << problem << '\n' << Usage;
            return DbIsqlBadCommandLine;
        }
        const fs::path logFile = DbIsqlLogFile(options.scripts.front());
        RunLog log(logFile, options.quiet ? nullptr : &out);
        if (!log.IsOpen()) {
            err << "dbisql: the log " << logFile.string() << " cannot be written (" << std::strerror(errno)
                << "); nothing was run.\n";
            return DbIsqlNoLog;
        }
        log.Line("dbisql started for the script " + Quoted(options.scripts.front()) + ".");
        int status = DbIsqlBadCommandLine;
        if (!problem.empty()) {
            log.Line("Error: " + problem);
        } else {
            try {
                status = RunScript(options, log);
            } catch (const std::exception& error) {
                log.Line(std::string("Error: ") + error.what());
                status = DbIsqlScriptFailed;
            }
        }
        log.Line("dbisql ended with status " + std::to_string(status) + ".");
        return status;
    } catch (const std::exception& error) {
        err << "dbisql: " << error.what() << '\n';
        return DbIsqlScriptFailed;
    }
}

}  // namespace iras
