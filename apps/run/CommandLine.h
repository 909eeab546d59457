// The command line of iras-yearend: its subcommands, their options, the help
// texts and the exit statuses. Parsing only reads the arguments; it touches
// neither the database nor the disk, so every usage mistake is reported
// before anything runs.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "apps/run/FileType.h"
#include "apps/run/JobFactory.h"

namespace iras {

// Exit statuses of iras-yearend; scripts branch on them.
enum ExitStatus : int {
    kExitSuccess = 0,
    kExitValidation = 1,       // the data or a checked file failed IRAS's rules
    kExitUsage = 2,            // bad arguments, unknown employer or year, return not available
    kExitNoAccess = 3,         // the user lacks the module's or the return's right
    kExitDatabase = 4,         // the database or the submission engine failed
    kExitFileSystem = 5,       // a folder or file could not be made, read or written
    kExitStopped = 6,          // a question was not confirmed, or warnings wait for consent
    kExitNothingProduced = 7,  // no records to process, or the file could not be saved
};

enum class ToolCommand { Help, InitDb, Generate, Trial, Validate, Submit, Reset, Check, VerifyReport };

struct ToolOptions {
    ToolCommand command = ToolCommand::Help;
    std::optional<ToolCommand> helpFor;  // help of one command ("generate --help")

    // init-db
    std::string databaseFile;
    bool sample = false;

    // generate, trial, validate, submit, reset, verify-report
    std::string database;
    std::string user;
    std::string employer;
    int year = 0;  // the Basis Year as the form lists it
    FileType type = FileType::All;
    bool amendment = false;
    std::string out = ".";  // the "File Directory"
    IR8SOptions ir8s;
    std::string reportDir;  // "" for the host's default
    std::string userIdType;
    std::string userId;
    bool proceedWithWarnings = false;
    bool yes = false;

    // check
    std::vector<std::string> files;
};

struct ParsedCommandLine {
    std::optional<ToolOptions> options;
    std::string error;  // the usage mistake when options is empty
};

// args without the program name.
ParsedCommandLine ParseCommandLine(const std::vector<std::string>& args);

// "generate", "init-db", ...
std::string CommandName(ToolCommand command);

// The tool's help (Help) or one command's.
std::string HelpText(ToolCommand command);

}  // namespace iras
