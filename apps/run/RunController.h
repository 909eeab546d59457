// The runs of the session form without the form: "&Generate", "Trial",
// the "All" run, the direct-submission dialogue ("&Direct Submit", "&Validate",
// "Proceed with Direct Submission"), "Reset Last Generation" and the saving of
// the three logs. The controller keeps what the form keeps between runs (run
// folder, summary file path, error and warning flags, the logs and lists) and
// reads the user's choices from RunChoices; the session form and the
// command-line tool both drive it, so the run logic exists once.
//
// Each "...Click" operation is one button of the form. They never throw: a
// database or file failure is shown as an error message, written to the run
// log and answered as an outcome, so that a batch caller can turn it into an
// exit status.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>

#include "apps/run/FileType.h"
#include "apps/run/JobFactory.h"
#include "apps/run/RunInterfaces.h"
#include "platform/common/LogSink.h"
#include "platform/host/BQueryViewTable.h"
#include "submission/common/IRASSubmissionParameters.h"
#include "submission/common/SubmissionJob.h"

namespace iras {

// A failure of the run layer itself (a log or summary file that cannot be
// written); the message names the file.
class RunError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// The form was opened for generating files or for submitting them directly.
enum class RunMode { Generation, DirectSubmission };

// "Direct Submit" (exactly, case-sensitive) opens direct-submission mode;
// every other text opens generation mode.
RunMode RunModeFromText(const std::string& modeText);

inline const std::string kNoAccessMessage = "You have no access to this module";

// What the controls of the form hold when a button is pressed.
struct RunChoices {
    FileType fileType = FileType::All;
    std::string employerId;     // the "Tax Employer"
    std::string basisYear;      // the "Basis Year" as listed: the year-end year, one less for Supplementary IR8A
    bool original = true;       // "Original"; false for "Amendment"
    std::string fileDirectory;  // the "File Directory" of the "All" run
    IR8SOptions ir8s;
    std::string submitUserIdType;  // direct-submission mode: the "User ID Type"
    std::string submitUserId;      // and the "User ID"

    // The year-end year of the choice: the basis year, plus one for the
    // supplementary IR8A, whose list shows the year before.
    int YearEndYear() const;
};

// Nonzero from the host's right check: may this user use that module id?
using RightsCheck = std::function<bool(const std::string& userId, const std::string& moduleId)>;

// How a button's flow ended, for callers that must branch on it.
enum class RunOutcome {
    Done,               // ran to its end; no errors
    NoAccess,           // a right was refused; nothing ran
    Unavailable,        // the return is not available in this version; nothing ran
    MissingUserId,      // "Missing User ID Type!" / "Missing User ID!"
    Declined,           // a question was answered No; stopped there
    ValidationRefused,  // the data failed validation: no file, no submission
    ErrorsFound,        // the run ended with errors (engine or job)
    WarningsPending,    // direct submission stopped on warnings, waiting for "Proceed"
    NothingProduced,    // processing made no file (no records, or it could not be saved)
    DatabaseFailure,    // the database could not be read or written
    FileFailure,        // a folder or file could not be made or written
    Failed,             // any other failure (the message says what)
};

// Everything the controller uses and does not own. Only session and dialogs
// are required; the rest have working defaults.
struct RunServices {
    BQueryViewTable* session = nullptr;
    RunDialogs* dialogs = nullptr;
    RunView* view = nullptr;               // default: no form effects
    JobFactory* jobs = nullptr;            // default: the returns of this version
    ProgressFactory progress;              // default: no progress window
    LogSink* logMemo = nullptr;            // default: a log of the controller's own
    LogSink* debugMemo = nullptr;          // default: likewise
    SaveFilePrompt* savePrompt = nullptr;  // where a single-type run saves its file
    RightsCheck rights;                    // default: the host's _IsUserModuleAccessible
    // The host's report directory; default _GetHRPCurrentDirectory("Report").
    std::function<std::filesystem::path()> reportDirectory;
};

// The module's own right ("YEIRASDirect") for the session's user.
bool ModuleAccessible(const BQueryViewTable& session, const RightsCheck& rights = {});

// The three logs that the "Log File" page saves and opens.
enum class LogFileKind { RunLog, DebugLog, EmployeeErrorLog };

// "IRASSubmissionLogFile.txt", "IRASSubmissionDebugFile.txt", "IRASSubmissionEmpErrLogFile.txt".
std::string LogFileName(LogFileKind kind);

class RunController {
public:
    RunController(RunMode mode, RunServices services);
    ~RunController();
    RunController(const RunController&) = delete;
    RunController& operator=(const RunController&) = delete;

    RunMode Mode() const { return mode_; }
    RunChoices& Choices() { return choices_; }
    const RunChoices& Choices() const { return choices_; }

    // "&Generate" (generation mode) or "&Direct Submit" (direct-submission mode).
    RunOutcome PreviewClick();
    // "Trial" (generation mode) or "&Validate" (direct-submission mode).
    RunOutcome TrialClick();
    // "Proceed with Direct Submission".
    RunOutcome DirectSubmitProceedClick();
    // "Reset Last Generation": undoes the employer's last generation of the return.
    RunOutcome ResetClick();

    // The verification report of the chosen return ("All": of every return)
    // before an Amendment: what the next Amendment would tell IRAS, written
    // as HTML and CSV into a new run folder. Needs the rights a generation of
    // the same choice needs; asks nothing and sends nothing.
    RunOutcome VerificationReportClick();
    // Asked before an Amendment when the host offers the report (Yes makes
    // it and opens it); the question that follows stays the form's own.
    static inline const std::string kVerificationReportOffer =
        "Do you want to view the verification report of this Amendment now?";
    // The HTML file of the last report ("" before one was made).
    const std::string& VerificationReportPath() const { return verificationReportPath_; }

    // "Preview &Log", "Preview &Debug", "Preview Employee Error Log": save the
    // lines to the report directory (overwriting) and open the file. The saved
    // path, or nothing when it could not be written (an error was shown).
    std::optional<std::filesystem::path> PreviewLogClick(LogFileKind kind);
    // Saves one log to its file in the report directory; throws RunError.
    std::filesystem::path SaveLogFile(LogFileKind kind) const;

    // The run of one return or, for "All", of every return. True when it
    // ended without errors. May throw db::DatabaseError,
    // std::filesystem::filesystem_error or RunError; the Click operations catch them.
    bool RunSubmission(bool validateOnly);
    void RunAllFiles();

    // The right to the chosen file type ("All": every return's, in order).
    bool HasRightForFileType() const;

    // State kept from run to run.
    const std::string& RunFolder() const { return runFolder_; }
    const std::string& SummaryFilePath() const { return summaryFilePath_; }
    bool HasErrors() const { return hasErrors_; }
    bool HasWarnings() const { return hasWarnings_; }
    bool ProceedVisible() const { return proceedVisible_; }
    // The last run's validation refused the data (no file, nothing submitted).
    bool LastValidationRefused() const { return last_.validationRefused; }
    const StringList& EmployeeErrorList() const { return employeeErrorList_; }
    const StringList& SummaryList() const { return summaryList_; }
    const IRASSubmissionParameters& SubmissionParameters() const { return parameters_; }
    LogSink& LogMemo() const { return *logMemo_; }
    LogSink& DebugMemo() const { return *debugMemo_; }

private:
    // What the last RunSubmission saw beyond its result, for the outcomes.
    struct LastRun {
        bool stoppedMissingId = false;
        bool declined = false;
        bool unavailable = false;
        bool validationRefused = false;
        bool produced = false;
    };

    RunOutcome Guarded(const std::function<RunOutcome()>& flow);
    bool CheckRight();
    RunOutcome GenerateFlow();
    RunOutcome TrialFlow();
    RunOutcome DirectSubmitFlow();
    RunOutcome ValidateFlow();
    RunOutcome ProceedFlow();
    RunOutcome ResetFlow();
    RunOutcome VerificationReportFlow();
    void OfferVerificationReport();
    RunOutcome OutcomeOfRun(bool result) const;

    void MakeRunFolder();
    void RemoveRunFolderIfEmpty();
    void FillParameters(bool validateOnly);
    void ClearLogs();
    void RecordEmployerAndYear();
    JobSetup MakeSetup(const std::string& copyFolder) const;
    void PrepareJob(RSubmissionJob& job);
    void SaveSummary(const std::filesystem::path& file) const;
    std::filesystem::path ReportDirectory() const;
    bool Allowed(const std::string& moduleId) const;
    void Show(MessageKind kind, const std::string& text);
    void AppendLog(std::initializer_list<std::string> lines);
    void RestoreAndFocusLog();
    void SetProceedVisible(bool visible);

    RunMode mode_;
    RunServices services_;
    RunView defaultView_;
    ReturnJobFactory defaultJobs_;
    MemoryLog ownLog_;
    MemoryLog ownDebug_;
    LogSink* logMemo_;
    LogSink* debugMemo_;
    RunView* view_;
    JobFactory* jobs_;

    RunChoices choices_;
    IRASSubmissionParameters parameters_;
    StringList employeeErrorList_;
    StringList summaryList_;
    std::string summaryFilePath_;
    std::string runFolder_;
    std::string verificationReportPath_;
    std::int32_t progressPosition_ = 0;
    bool hasErrors_ = false;
    bool hasWarnings_ = false;
    bool proceedVisible_ = false;
    LastRun last_;
};

}  // namespace iras
