// TExecDBISQL (see ExecDBISQL.h): the command line and the start of the tool.

#include "components/ExecDBISQL.h"

#include <exception>
#include <filesystem>
#include <system_error>

#include "components/ComponentRegistry.h"
#include "components/DetachedProcess.h"

namespace iras {
namespace {

constexpr const char* ToolName = "/dbisql";

// The folder of the running program; the current folder when the system does
// not say (no /proc), "" when neither is known.
std::string RunningProgramFolder() {
    namespace fs = std::filesystem;
    std::error_code error;
    const fs::path program = fs::read_symlink("/proc/self/exe", error);
    if (!error && program.has_parent_path()) return program.parent_path().string();
    const fs::path current = fs::current_path(error);
    return error ? std::string() : current.string();
}

// Everything of the command line after the program path.
std::string ToolArguments(const std::string& userId, const std::string& password, const std::string& dataSource,
                          const std::string& scriptFile) {
    return std::string(" -c ") + '"' + "uid=" + userId + ";pwd=" + password + ";dsn=" + dataSource + '"' +
           " -q " + scriptFile;
}

}  // namespace

TExecDBISQL::TExecDBISQL(TComponent* owner)
    : TComponent(owner), programDir_(RunningProgramFolder()), starter_(StartDetached) {}

void TExecDBISQL::SetProgramDir(const std::string& value) {
    if (programDir_ != value) programDir_ = value;
}

void TExecDBISQL::SetSQLScriptFile(const std::string& value) {
    if (sqlScriptFile_ != value) sqlScriptFile_ = value;
}

void TExecDBISQL::SetUserID(const std::string& value) {
    if (userId_ != value) userId_ = value;
}

void TExecDBISQL::SetPassword(const std::string& value) {
    if (password_ != value) password_ = value;
}

void TExecDBISQL::SetDataSourceName(const std::string& value) {
    if (dataSourceName_ != value) dataSourceName_ = value;
}

void TExecDBISQL::SetExecute(bool value) {
    if (execute_ != value) execute_ = value;
    if (execute_) Run();
}

void TExecDBISQL::Register() {
    ComponentRegistry::RegisterComponent(KovaComponentsPage, "TExecDBISQL", [](TComponent* owner) {
        return std::make_unique<TExecDBISQL>(owner);
    });
}

std::string TExecDBISQL::CommandLine() const {
    return programDir_ + ToolName + ToolArguments(userId_, password_, dataSourceName_, sqlScriptFile_);
}

std::vector<std::string> TExecDBISQL::Arguments() const {
    std::vector<std::string> words{programDir_ + ToolName};
    for (std::string& word : SplitCommandLine(ToolArguments(userId_, password_, dataSourceName_, sqlScriptFile_))) {
        words.push_back(std::move(word));
    }
    return words;
}

void TExecDBISQL::Run() {
    // The caller is a form's property setter: nothing may escape it.
    try {
        lastStartError_ = starter_ ? starter_(Arguments()) : "No way to start a program is set.";
    } catch (const std::exception& error) {
        lastStartError_ = std::string("The SQL tool could not be started: ") + error.what();
    } catch (...) {
        lastStartError_ = "The SQL tool could not be started.";
    }
}

}  // namespace iras
