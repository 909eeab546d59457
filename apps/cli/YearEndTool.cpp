// The commands of iras-yearend. A run command opens the database under the
// alias "kovadb", checks the module right, the employer, the basis year, the
// User ID Type, the return's right and the folders it will write to (so that a
// mistake stops it before anything is recorded), then presses the form's
// button on a RunController whose messages, questions,
// progress window and save dialog are the terminal: messages and questions on
// standard error, the run log on standard output, a progress bar on standard
// error when it is a terminal, files saved into the "File Directory".
#include "apps/cli/YearEndTool.h"

#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <memory>
#include <sstream>

#include "apps/cli/CommandLine.h"
#include "apps/run/RunController.h"
#include "apps/run/SessionFormData.h"
#include "platform/ais/AisFileChecker.h"
#include "platform/common/AtomicFile.h"
#include "platform/common/StreamingLog.h"
#include "platform/database/PostgresConnection.h"
#include "platform/database/Query.h"
#include "platform/database/Schema.h"
#include "platform/host/BQueryViewTable.h"
#include "platform/host/HostFunctions.h"

namespace iras {

namespace fs = std::filesystem;

namespace {

// Standard error shared by the messages and the progress bar: a message first
// wipes the bar's line, and the bar is drawn again after it.
class Terminal {
public:
    explicit Terminal(ToolStreams& streams) : streams_(streams) {}

    bool ProgressBar() const { return streams_.progressBar; }

    void Out(std::string_view line) {
        if (streams_.outIsTerminal) HideBar();
        streams_.out << line << '\n';
        if (streams_.outIsTerminal) {
            streams_.out.flush();
            DrawBar();
        }
    }
    void Err(const std::string& line) {
        HideBar();
        streams_.err << line << '\n';
        streams_.err.flush();
        DrawBar();
    }
    bool Ask(const std::string& question, bool assumeYes) {
        HideBar();
        bool answer = false;
        if (assumeYes) {
            streams_.err << question << " Yes (--yes)\n";
            answer = true;
        } else if (streams_.interactive) {
            streams_.err << question << " [y/N] " << std::flush;
            std::string reply;
            std::getline(streams_.in, reply);
            answer = reply == "y" || reply == "Y" || reply == "yes" || reply == "Yes" || reply == "YES";
        } else {
            streams_.err << question << " No (not confirmed; --yes answers Yes)\n";
        }
        streams_.err.flush();
        DrawBar();
        return answer;
    }

    void SetBar(const std::string& label, int percent) {
        barLabel_ = label;
        barPercent_ = std::clamp(percent, 0, 100);
        barShown_ = true;
        DrawBar();
    }
    void EndBar() {
        HideBar();
        barShown_ = false;
    }

private:
    void DrawBar() {
        if (!barShown_) return;
        constexpr int kWidth = 30;
        const int filled = barPercent_ * kWidth / 100;
        streams_.err << "\r[" << std::string(static_cast<std::size_t>(filled), '#')
                     << std::string(static_cast<std::size_t>(kWidth - filled), ' ') << "] "
                     << barPercent_ << "% " << barLabel_ << "\033[K" << std::flush;
    }
    void HideBar() {
        if (barShown_) streams_.err << "\r\033[K" << std::flush;
    }

    ToolStreams& streams_;
    bool barShown_ = false;
    std::string barLabel_;
    int barPercent_ = 0;
};

class TerminalDialogs : public RunDialogs {
public:
    TerminalDialogs(Terminal& terminal, bool assumeYes) : terminal_(terminal), assumeYes_(assumeYes) {}
    void Show(MessageKind kind, const std::string& text) override {
        switch (kind) {
            case MessageKind::Warning: terminal_.Err("Warning: " + text); break;
            case MessageKind::Error: terminal_.Err("Error: " + text); break;
            case MessageKind::Information: terminal_.Err(text); break;
        }
    }
    bool Confirm(const std::string& question) override { return terminal_.Ask(question, assumeYes_); }

private:
    Terminal& terminal_;
    bool assumeYes_;
};

class TerminalProgress : public ProgressWindow {
public:
    explicit TerminalProgress(Terminal& terminal) : terminal_(terminal) {}
    ~TerminalProgress() override { terminal_.EndBar(); }
    void SetCaption(const std::string&) override {}
    void SetLabelText(const std::string& text) override {
        label_ = text;
        Draw();
    }
    void SetPosition(const std::int32_t& position) override {
        position_ = position;
        Draw();
    }
    void SetStep(std::int32_t step) override { step_ = step; }
    void Show() override {
        shown_ = true;
        Draw();
    }
    void Repaint() override { Draw(); }
    void Step() override {
        position_ += step_;
        Draw();
    }

private:
    void Draw() {
        if (shown_) terminal_.SetBar(label_, position_);
    }
    Terminal& terminal_;
    std::string label_;
    std::int32_t position_ = 0;
    std::int32_t step_ = 10;
    bool shown_ = false;
};

// The run log on standard output as it grows, and into its log file.
class TerminalLog : public LogSink {
public:
    TerminalLog(Terminal& terminal, std::function<fs::path()> file)
        : terminal_(terminal), lines_(std::move(file), "\n", 0) {}
    void Append(std::string_view line) override {
        lines_.Append(line);
        terminal_.Out(line);
    }
    StringList Lines() const override { return lines_.Lines(); }
    void Clear() override { lines_.Clear(); }
    bool IsEmpty() const override { return lines_.IsEmpty(); }
    std::string SaveTo(const fs::path& file) override { return lines_.SaveTo(file); }

private:
    Terminal& terminal_;
    StreamingLog lines_;
};

// The save dialog of a single-return run: always the File Directory and the
// proposed name.
class DirectorySavePrompt : public SaveFilePrompt {
public:
    explicit DirectorySavePrompt(fs::path directory) : directory_(std::move(directory)) {}
    std::optional<std::string> AskSavePath(const std::string& proposedFileName) override {
        return (directory_ / proposedFileName).string();
    }

private:
    fs::path directory_;
};

int ExitStatusOf(RunOutcome outcome) {
    switch (outcome) {
        case RunOutcome::Done: return kExitSuccess;
        case RunOutcome::NoAccess: return kExitNoAccess;
        case RunOutcome::Unavailable:
        case RunOutcome::MissingUserId: return kExitUsage;
        case RunOutcome::Declined:
        case RunOutcome::WarningsPending: return kExitStopped;
        case RunOutcome::ValidationRefused:
        case RunOutcome::ErrorsFound: return kExitValidation;
        case RunOutcome::NothingProduced: return kExitNothingProduced;
        case RunOutcome::DatabaseFailure:
        case RunOutcome::Failed: return kExitDatabase;
        case RunOutcome::FileFailure: return kExitFileSystem;
    }
    return kExitDatabase;
}

int InitDatabase(const ToolOptions& options, Terminal& terminal) {
    db::CreateDatabase(options.databaseFile, options.sample);
    if (db::IsPostgresUri(options.databaseFile)) {
        terminal.Err("Created the payroll tables in " + db::PostgresServerName(options.databaseFile) +
                     (options.sample ? " with the sample data." : "."));
        return kExitSuccess;
    }
    terminal.Err("Created the database " + fs::absolute(options.databaseFile).string() +
                 (options.sample ? " with the sample data." : "."));
    return kExitSuccess;
}

int CheckFiles(const ToolOptions& options, Terminal& terminal) {
    int status = kExitSuccess;
    for (const std::string& file : options.files) {
        std::error_code error;
        if (!fs::is_regular_file(file, error)) {
            terminal.Out(file + ": cannot be read: " +
                         (fs::exists(file, error) ? "not a regular file" : "no such file"));
            status = kExitFileSystem;
            continue;
        }
        const AisCheckResult result = CheckAisFile(file);
        for (const std::string& line : result.Describe()) terminal.Out(file + ": " + line);
        int errors = 0;
        int warnings = 0;
        for (const AisFinding& finding : result.findings) (finding.warning ? warnings : errors) += finding.count;
        const std::string kind = result.kind ? std::string(AisKindName(*result.kind)) : "unknown kind";
        std::ostringstream verdict;
        verdict << file << ": " << (errors == 0 ? "OK" : "REJECTED") << " (" << kind << ", "
                << result.detailRecords << " detail record" << (result.detailRecords == 1 ? "" : "s");
        if (errors > 0) verdict << ", " << errors << " error" << (errors == 1 ? "" : "s");
        if (warnings > 0) verdict << ", " << warnings << " warning" << (warnings == 1 ? "" : "s");
        verdict << ")";
        terminal.Out(verdict.str());
        if (errors > 0 && status == kExitSuccess) status = kExitValidation;
    }
    return status;
}

// The employers, years and User ID Types as the session form lists them.
std::vector<int> ListedYears(const std::string& employer, FileType type) {
    std::vector<int> years;
    for (const YearRow& row : DatabaseSessionFormData().Years(employer, type)) years.push_back(row.year);
    return years;
}

std::vector<std::string> ListedEmployers() {
    std::vector<std::string> employers;
    for (const EmployerRow& row : DatabaseSessionFormData().Employers()) employers.push_back(row.id);
    return employers;
}

std::vector<std::pair<std::string, std::string>> ListedUserIdTypes() {
    std::vector<std::pair<std::string, std::string>> types;
    for (const UserIdTypeRow& row : DatabaseSessionFormData().UserIdTypes()) {
        types.emplace_back(row.id, row.description);
    }
    return types;
}

std::string Joined(const std::vector<std::string>& items) {
    std::string text;
    for (const std::string& item : items) text += (text.empty() ? "" : ", ") + item;
    return text.empty() ? "none" : text;
}

std::string UserIdTypeChoices(const std::vector<std::pair<std::string, std::string>>& types) {
    std::vector<std::string> items;
    for (const auto& [value, description] : types) items.push_back(value + " (" + description + ")");
    return Joined(items);
}

bool SameLetters(const std::string& a, const std::string& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](unsigned char x, unsigned char y) {
        return std::toupper(x) == std::toupper(y);
    });
}

// Why a folder cannot take the run's files, or "" when it can: it is made
// when missing and a file is written and removed in it. Checked before the
// run records anything, so that a run never ends halfway on a folder the
// user could have fixed first.
std::string FolderProblem(const fs::path& folder) {
    std::error_code error;
    if (fs::exists(folder, error) && !fs::is_directory(folder, error)) return "is a file, not a folder";
    fs::create_directories(folder, error);
    if (error) return "cannot be made: " + error.message();
    const fs::path probe = folder / (".iras-yearend-" + std::to_string(::getpid()) + ".probe");
    {
        std::ofstream out(probe, std::ios::binary | std::ios::trunc);
        if (!out) return "cannot be written to: " + std::string(std::strerror(errno));
    }
    fs::remove(probe, error);
    return "";
}

// Why the user may not use a module: unknown (user names are matched in
// their letter case) or without that right. Reading the rights is what the
// right check does too; a table that cannot be read throws DatabaseError
// here, so that a damaged database never passes for a refused right.
std::string NoAccessReason(const std::string& user, const std::string& moduleId) {
    db::Query query("kovadb");
    query.SetSQL("SELECT DISTINCT UserId FROM UserModuleRights");
    query.Open();
    std::string sameLetters;
    for (query.First(); !query.Eof(); query.Next()) {
        const std::string known = query.FieldByName("UserId").AsString();
        if (known == user) return "the user " + user + " does not hold the right \"" + moduleId + "\".";
        if (SameLetters(known, user)) sameLetters = known;
    }
    if (!sameLetters.empty()) {
        return "the user \"" + user + "\" is not known; user names are matched in their letter case (did you mean " +
               sameLetters + "?).";
    }
    return "the user \"" + user + "\" is not known in this database.";
}

// Why the run's database cannot be reached any more; "" while it answers.
std::string DatabaseProblem() {
    try {
        db::Query query("kovadb");
        query.SetSQL("SELECT 1 AS Alive");
        query.Open();
        return "";
    } catch (const db::DatabaseError& failure) {
        return failure.what();
    }
}

int RunCommand(const ToolOptions& options, Terminal& terminal) {
    const bool server = db::IsPostgresUri(options.database);
    if (!server && !fs::exists(options.database)) {
        terminal.Err("Error: the database " + options.database +
                     " does not exist (create one with: iras-yearend init-db FILE --sample).");
        return kExitDatabase;
    }
    db::ConnectionConfig config;
    config.driver = server ? db::PostgresDriver : "sqlite";
    config.location = options.database;
    config.create = false;
    // A second run on the same database waits for the first (a large
    // employer's run holds its lock for a while) and says so.
    config.lockWaitMs = kLockWaitMs;
    config.onLockWait = [&terminal](const std::string& line) { terminal.Err(line); };
    db::ConnectionRegistry::Register("kovadb", config);

    // Reading the employer first makes a damaged or foreign database speak up
    // as such, instead of looking like a refused right.
    const std::vector<std::string> employers = ListedEmployers();
    const bool employerKnown =
        std::find(employers.begin(), employers.end(), options.employer) != employers.end();

    SessionSettings settings;
    settings.userId = options.user;
    settings.yeYear = options.year + (options.type == FileType::SupplementaryIR8A ? 1 : 0);
    BQueryViewTable session(settings);
    if (!ModuleAccessible(session)) {
        // As the form shows it, and why.
        terminal.Err("Warning: " + kNoAccessMessage + ": " + NoAccessReason(options.user, kModuleRightId));
        return kExitNoAccess;
    }
    if (!employerKnown) {
        terminal.Err("Error: the tax employer \"" + options.employer +
                     "\" is not in the database (listed: " + Joined(employers) + ").");
        return kExitUsage;
    }
    const std::vector<int> years = ListedYears(options.employer, options.type);
    if (std::find(years.begin(), years.end(), options.year) == years.end()) {
        std::vector<std::string> listed;
        for (int year : years) listed.push_back(std::to_string(year));
        terminal.Err("Error: basis year " + std::to_string(options.year) + " is not listed for " +
                     options.employer + " and " + FileTypeText(options.type) + " (listed: " +
                     Joined(listed) + ").");
        return kExitUsage;
    }

    const bool direct =
        options.command == ToolCommand::Validate || options.command == ToolCommand::Submit;
    const bool reset = options.command == ToolCommand::Reset;
    const bool verifyReport = options.command == ToolCommand::VerifyReport;
    // The form's User ID Type is a pick from a list; a value off the list
    // would only be refused by the engine after the whole validation.
    std::string userIdType = options.userIdType;
    if (direct && !userIdType.empty()) {
        const auto types = ListedUserIdTypes();
        const auto listed = std::find_if(types.begin(), types.end(), [&](const auto& type) {
            return SameLetters(type.first, userIdType);
        });
        if (listed == types.end()) {
            terminal.Err("Error: the User ID Type \"" + userIdType + "\" is not in the list (" +
                         UserIdTypeChoices(types) + ").");
            return kExitUsage;
        }
        userIdType = listed->first;
    }

    std::error_code error;
    const fs::path outDirectory = fs::absolute(options.out, error);
    fs::path reportDirectory;  // known once the rights are granted: the default one is made on asking

    TerminalDialogs dialogs(terminal, options.yes);
    // The logs go to their files in the report directory as the run writes
    // them (the folder is known before the run starts).
    TerminalLog log(terminal, [&reportDirectory] { return reportDirectory / LogFileName(LogFileKind::RunLog); });
    StreamingLog debug([&reportDirectory] { return reportDirectory / LogFileName(LogFileKind::DebugLog); });
    DirectorySavePrompt savePrompt(outDirectory);
    RunServices services;
    services.session = &session;
    services.dialogs = &dialogs;
    services.logMemo = &log;
    services.debugMemo = &debug;
    services.savePrompt = &savePrompt;
    services.reportDirectory = [&reportDirectory] { return reportDirectory; };
    if (terminal.ProgressBar()) {
        services.progress = [&terminal]() -> std::unique_ptr<ProgressWindow> {
            return std::make_unique<TerminalProgress>(terminal);
        };
    }

    RunController controller(direct ? RunMode::DirectSubmission : RunMode::Generation, services);
    RunChoices& choices = controller.Choices();
    choices.fileType = options.type;
    choices.employerId = options.employer;
    choices.basisYear = std::to_string(options.year);
    choices.original = !options.amendment;
    choices.fileDirectory = outDirectory.string();
    choices.ir8s = options.ir8s;
    choices.submitUserIdType = userIdType;
    choices.submitUserId = options.userId;

    // The right to the return is the button's first check; asking it here
    // too keeps a refused user from making any folder.
    if (!reset && !controller.HasRightForFileType()) {
        std::string missing;
        const std::vector<FileType> types =
            options.type == FileType::All ? std::vector<FileType>(kReturnTypes.begin(), kReturnTypes.end())
                                          : std::vector<FileType>{options.type};
        for (FileType type : types) {
            if (_IsUserModuleAccessible(options.user, ReturnModuleId(type), 0, 0) == 0) {
                missing += (missing.empty() ? "" : ", ") + std::string("\"") + ReturnModuleId(type) + "\"";
            }
        }
        terminal.Err("Warning: " + kNoAccessMessage + ": the user " + options.user +
                     " does not hold the right " + missing + " of " + FileTypeText(options.type) + ".");
        return kExitNoAccess;
    }
    if (!direct && !reset && !verifyReport) {
        if (const std::string problem = FolderProblem(outDirectory); !problem.empty()) {
            terminal.Err("Error: the File Directory (--out) " + outDirectory.string() + " " + problem + ".");
            return kExitFileSystem;
        }
    }
    if (!reset) {  // reset writes nothing there
        reportDirectory =
            options.reportDir.empty() ? _GetHRPCurrentDirectory("Report") : fs::absolute(options.reportDir);
        if (const std::string problem = FolderProblem(reportDirectory); !problem.empty()) {
            terminal.Err("Error: the report directory " +
                         std::string(options.reportDir.empty() ? "" : "(--report-dir) ") +
                         reportDirectory.string() + " " + problem +
                         (options.reportDir.empty() ? "; choose another with --report-dir." : "."));
            return kExitFileSystem;
        }
        // The logs of a run killed earlier get visible names here; say where.
        for (const std::string& kept : RemoveStaleTemporaryFiles(reportDirectory).logsKept) {
            terminal.Err("A run that was killed left this log of what it did: " + (reportDirectory / kept).string());
        }
    }

    RunOutcome outcome = RunOutcome::Done;
    switch (options.command) {
        case ToolCommand::Generate: outcome = controller.PreviewClick(); break;
        case ToolCommand::Trial:
        case ToolCommand::Validate: outcome = controller.TrialClick(); break;
        case ToolCommand::Submit:
            outcome = controller.PreviewClick();
            if (outcome == RunOutcome::WarningsPending) {
                if (options.proceedWithWarnings) {
                    terminal.Err("Proceeding with the submission despite the warnings (--proceed-with-warnings).");
                    outcome = controller.DirectSubmitProceedClick();
                } else {
                    terminal.Err("Nothing was submitted. Review the warnings, then run submit again with "
                                 "--proceed-with-warnings to submit with them.");
                }
            }
            break;
        case ToolCommand::Reset: return ExitStatusOf(controller.ResetClick());
        case ToolCommand::VerifyReport:
            outcome = controller.VerificationReportClick();
            if (!controller.VerificationReportPath().empty()) {
                terminal.Out(controller.VerificationReportPath());
                terminal.Err("Verification report (CSV): " +
                             fs::path(controller.VerificationReportPath()).replace_extension(".csv").string());
            }
            break;
        default: break;
    }

    // A direct submission goes on to its question even when the validation
    // pass refused the data; for a script that ending is a validation failure.
    if (direct && controller.LastValidationRefused()) outcome = RunOutcome::ValidationRefused;
    int status = ExitStatusOf(outcome);
    // The jobs log a database that went away in the middle of a pass and go
    // on as if the data were wrong; a script must learn that the database
    // failed, and why.
    const std::string databaseProblem = outcome == RunOutcome::Done ? "" : DatabaseProblem();
    // The form leaves these endings to its log page or its fields; a terminal
    // user gets one line that says what to do.
    if (!databaseProblem.empty()) {
        terminal.Err("Error: " + databaseProblem);
        status = kExitDatabase;
    } else if (outcome == RunOutcome::ValidationRefused) {
        terminal.Err(options.command == ToolCommand::Submit
                         ? "Error: the data failed validation, so nothing was submitted. The run log says why."
                     : direct ? "Error: the data failed validation. The run log says why."
                              : "Error: the data failed validation, so no file was made. The run log says why; "
                                "the employee error log lists the employees.");
    } else if (outcome == RunOutcome::NothingProduced) {
        const bool submit = options.command == ToolCommand::Submit;
        if (controller.LastRunFoundNoRecords()) {
            // A submission has said "Nothing was submitted: ..." already.
            if (!submit) {
                terminal.Err(std::string("No file was made: there are no records to process") +
                             (options.amendment ? " (no employee has changed since the last submission)." : "."));
            }
        } else if (controller.LastRunRefusedARecord()) {
            // Data the rules let through but a record cannot hold: the data
            // failed, as in validation.
            status = kExitValidation;
            terminal.Err(std::string(submit ? "Nothing was submitted" : "No file was made") +
                         ": not every record could be written. The run log names the employees and why.");
        } else {
            terminal.Err(std::string(submit ? "Nothing was submitted" : "No file was made") +
                         ": the file could not be saved. The run log says why.");
        }
    } else if (outcome == RunOutcome::MissingUserId) {
        terminal.Err(userIdType.empty()
                         ? "Give the submitter with --user-id-type, one of: " +
                               UserIdTypeChoices(ListedUserIdTypes()) + "."
                         : std::string("Give the submitter's User ID with --user-id."));
    }
    // Nothing ran when nothing was logged; the files of the last run stay.
    if (!controller.LogMemo().IsEmpty() || !controller.DebugMemo().IsEmpty()) {
        struct LogFile {
            LogFileKind kind;
            const char* label;
        };
        std::vector<LogFile> files = {{LogFileKind::RunLog, "Run log: "},
                                      {LogFileKind::DebugLog, "Debug log: "}};
        // Direct submission keeps its employee error list on screen only.
        if (!direct) files.push_back({LogFileKind::EmployeeErrorLog, "Employee error log: "});
        try {
            for (const LogFile& file : files) {
                terminal.Err(file.label + controller.SaveLogFile(file.kind).string());
            }
        } catch (const fs::filesystem_error& failure) {
            terminal.Err("Error: the logs cannot be saved in " + failure.path1().string() + ": " +
                         failure.code().message() + ".");
            if (status == kExitSuccess) status = kExitFileSystem;
        } catch (const std::exception& failure) {
            terminal.Err(std::string("Error: ") + failure.what());
            if (status == kExitSuccess) status = kExitFileSystem;
        }
    }
    if (!controller.SummaryFilePath().empty()) {
        terminal.Err("Summary file: " + controller.SummaryFilePath());
    }
    if (!controller.RunFolder().empty() && fs::is_directory(controller.RunFolder(), error)) {
        terminal.Err("Run folder: " + controller.RunFolder());
    }
    return status;
}

// Forgets the database when the command ends, so that the next command of
// the same process (a test) opens its own.
struct DatabaseAliasGuard {
    ~DatabaseAliasGuard() { db::ConnectionRegistry::Unregister("kovadb"); }
};

}  // namespace

int RunYearEndTool(const std::vector<std::string>& args, ToolStreams streams) {
    Terminal terminal(streams);
    if (args.empty()) {
        streams.err << HelpText(ToolCommand::Help);
        return kExitUsage;
    }
    const ParsedCommandLine parsed = ParseCommandLine(args);
    if (!parsed.options) {
        terminal.Err("iras-yearend: " + parsed.error);
        terminal.Err("Run \"iras-yearend --help\" for the commands and their options.");
        return kExitUsage;
    }
    const ToolOptions& options = *parsed.options;
    try {
        switch (options.command) {
            case ToolCommand::Help:
                streams.out << HelpText(options.helpFor.value_or(ToolCommand::Help));
                return kExitSuccess;
            case ToolCommand::InitDb: return InitDatabase(options, terminal);
            case ToolCommand::Check: return CheckFiles(options, terminal);
            default: {
                DatabaseAliasGuard guard;
                return RunCommand(options, terminal);
            }
        }
    } catch (const db::DatabaseError& failure) {
        terminal.Err(std::string("Error: ") + failure.what());
        return kExitDatabase;
    } catch (const fs::filesystem_error& failure) {
        terminal.Err("Error: cannot create or write " + failure.path1().string() + ": " +
                     failure.code().message() + ".");
        return kExitFileSystem;
    } catch (const RunError& failure) {
        terminal.Err(std::string("Error: ") + failure.what());
        return kExitFileSystem;
    } catch (const std::exception& failure) {
        terminal.Err(std::string("Error: ") + failure.what());
        return kExitDatabase;
    }
}

}  // namespace iras
