// TExecDBISQL: runs an SQL script file against the payroll database by
// starting the database's SQL tool, dbisql, as a process of its own. A form
// drops it in, sets the folder of the tool, the script, the login and the data
// source, and sets Execute to true: the tool starts with
//
//     <ProgramDir>/dbisql -c "uid=<UserID>;pwd=<Password>;dsn=<DataSourceName>" -q <SQLScriptFile>
//
// and the component goes on at once. It neither waits for the tool nor looks
// at its result: the tool writes what it did, and any error, to a log beside
// the script (see DbIsqlTool.h). Execute stays true after a run, and every
// assignment of true runs the script again.
//
// The values are put into the command line as they stand. The script path is
// not quoted, so a path with blanks reaches the tool as several words: give a
// path without blanks, or put it in double quotes yourself. A semicolon or a
// double quote in the login or the data source breaks the connection text.
//
// ProgramDir starts as the folder of the running program, where dbisql is
// installed beside the payroll's programs; the program path is used whole,
// blanks and all, and only the rest of the command line is split into words.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "components/TComponent.h"

namespace iras {

class TExecDBISQL : public TComponent {
public:
    // Starts a program with the given words (the program path first); returns
    // "" when it started, otherwise why not. StartDetached by default.
    using ProcessStarter = std::function<std::string(const std::vector<std::string>& arguments)>;

    explicit TExecDBISQL(TComponent* owner = nullptr);

    std::string GetProgramDir() const { return programDir_; }
    void SetProgramDir(const std::string& value);
    std::string GetSQLScriptFile() const { return sqlScriptFile_; }
    void SetSQLScriptFile(const std::string& value);
    std::string GetUserID() const { return userId_; }
    void SetUserID(const std::string& value);
    std::string GetPassword() const { return password_; }
    void SetPassword(const std::string& value);
    std::string GetDataSourceName() const { return dataSourceName_; }
    void SetDataSourceName(const std::string& value);
    bool GetExecute() const { return execute_; }
    // Stores the value; true runs the script. Never throws and never waits for
    // the tool.
    void SetExecute(bool value);

    // Puts TExecDBISQL on the palette page "Kova Components".
    static void Register();

    // The command line that a run starts, as one text.
    std::string CommandLine() const;
    // The words the tool receives, its path first.
    std::vector<std::string> Arguments() const;
    // Why the last run could not start the tool ("" when it started). The
    // component itself ignores it; a form may show it.
    const std::string& LastStartError() const { return lastStartError_; }
    // Replaces how the tool is started (tests record the words instead).
    void SetProcessStarter(ProcessStarter starter) { starter_ = std::move(starter); }

private:
    void Run();

    std::string programDir_;
    std::string sqlScriptFile_;
    std::string userId_;
    std::string password_;
    std::string dataSourceName_;
    bool execute_ = false;
    std::string lastStartError_;
    ProcessStarter starter_;
};

}  // namespace iras
