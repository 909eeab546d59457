// Running iras-yearend against the test server: in this process through
// RunYearEndTool (with the clock fixed, so both databases print one batch
// date), or as a separate program, as a second payroll user would.
#pragma once

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>

#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "apps/cli/YearEndTool.h"
#include "platform/common/Date.h"
#include "tests/postgres/postgres_server.h"

extern char** environ;

namespace iras::testing {

struct ToolResult {
    int status = -1;
    std::string out;
    std::string err;
};

inline DateTime FixedRunClock() { return DateTime{Date{2025, 2, 14}, 9, 30, 0}; }

// Runs the tool in this process with the clock fixed.
inline ToolResult RunTool(const std::vector<std::string>& args, std::ostream* out = nullptr) {
    std::ostringstream capturedOut;
    std::ostringstream err;
    std::istringstream in;
    SetClockForTesting(&FixedRunClock);
    ToolResult result;
    result.status = RunYearEndTool(args, ToolStreams{out ? *out : capturedOut, err, in});
    SetClockForTesting(nullptr);
    result.out = capturedOut.str();
    result.err = err.str();
    return result;
}

// The regular files of a folder (not below it), by name, with their bytes.
inline std::map<std::string, std::string> FilesIn(const fs::path& folder) {
    std::map<std::string, std::string> files;
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(folder, error)) {
        if (!entry.is_regular_file()) continue;
        std::ifstream in(entry.path(), std::ios::binary);
        std::stringstream bytes;
        bytes << in.rdbuf();
        files[entry.path().filename().string()] = bytes.str();
    }
    return files;
}

// "generate --db DB --user USER --employer E --year Y --type T [--amendment]"
// writing its return files to out and its logs below it.
inline std::vector<std::string> GenerateArgs(const std::string& database, const std::string& user,
                                             const std::string& employer, int year, const std::string& type,
                                             bool amendment, const fs::path& out) {
    std::vector<std::string> args = {"generate", "--db",   database, "--user", user, "--employer", employer,
                                     "--year",   std::to_string(year), "--type", type, "--out", (out / "files").string(),
                                     "--report-dir", (out / "reports").string(), "--yes"};
    if (amendment) args.push_back("--amendment");
    return args;
}

// A running iras-yearend program, its output in a file.
class ToolProcess {
public:
    ToolProcess(const std::vector<std::string>& args, const fs::path& log) {
        std::vector<std::string> all = {IRAS_YEAREND_TOOL};
        all.insert(all.end(), args.begin(), args.end());
        std::vector<char*> argv;
        for (auto& arg : all) argv.push_back(arg.data());
        argv.push_back(nullptr);
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_addopen(&actions, 1, log.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
        posix_spawn_file_actions_adddup2(&actions, 1, 2);
        posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
        if (posix_spawn(&pid_, argv[0], &actions, nullptr, argv.data(), environ) != 0) pid_ = -1;
        posix_spawn_file_actions_destroy(&actions);
    }

    // The exit status; -1 when the program could not run.
    int Wait() {
        if (pid_ < 0) return -1;
        int status = 0;
        ::waitpid(pid_, &status, 0);
        pid_ = -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    ~ToolProcess() { Wait(); }
    ToolProcess(const ToolProcess&) = delete;
    ToolProcess& operator=(const ToolProcess&) = delete;

private:
    pid_t pid_ = -1;
};

}  // namespace iras::testing
