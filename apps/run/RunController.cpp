// The runs of the session form: one return or all of them, generated, tried,
// validated or submitted, with the run folder, the parameter record, the
// employer and year recorded for the database views, the summary file and the
// flags that the direct-submission dialogue reads.
#include "apps/run/RunController.h"

#include <fstream>
#include <system_error>
#include <utility>
#include <vector>

#include "platform/common/AtomicFile.h"
#include "platform/common/CommonLibrary.h"
#include "platform/common/Date.h"
#include "platform/database/Query.h"
#include "platform/host/HostFunctions.h"
#include "submission/common/AmendmentReport.h"
#include "submission/common/RunLogs.h"

namespace iras {

namespace fs = std::filesystem;

namespace {

const std::string kErrorsBeforeRetry =
    "Error(s) have been detected. Please review them before running this again.";

// Writes lines to file, all or nothing (a failure never leaves half a file
// where the old one was); a failure names the file and the reason.
void SaveLines(const fs::path& file, const StringList& lines) {
    const std::string reason = WriteLinesAtomically(file, lines, "\n");
    if (!reason.empty()) throw RunError("Cannot write the file " + file.string() + ": " + reason + ".");
}

// A job answers a database failure with 0 and keeps the driver's message;
// the run reports it as a database failure, never as data that failed the
// rules.
void ThrowIfDatabaseFault(const RSubmissionJob& job) {
    if (const std::string fault = job.DatabaseFault(); !fault.empty()) throw db::DatabaseError(fault);
}

}  // namespace

RunMode RunModeFromText(const std::string& modeText) {
    return modeText == "Direct Submit" ? RunMode::DirectSubmission : RunMode::Generation;
}

int RunChoices::YearEndYear() const {
    return _CStrToInt(basisYear) + (fileType == FileType::SupplementaryIR8A ? 1 : 0);
}

bool ModuleAccessible(const BQueryViewTable& session, const RightsCheck& rights) {
    if (rights) return rights(session.sGetUserID(), kModuleRightId);
    return _IsUserModuleAccessible(session.sGetUserID(), kModuleRightId, 0, 0) != 0;
}

std::string LogFileName(LogFileKind kind) {
    switch (kind) {
        case LogFileKind::RunLog: return "IRASSubmissionLogFile.txt";
        case LogFileKind::DebugLog: return "IRASSubmissionDebugFile.txt";
        case LogFileKind::EmployeeErrorLog: return "IRASSubmissionEmpErrLogFile.txt";
    }
    return "";
}

RunController::RunController(RunMode mode, RunServices services)
    : mode_(mode), services_(std::move(services)) {
    if (services_.session == nullptr || services_.dialogs == nullptr) {
        throw std::invalid_argument("A run needs the host session and a way to show messages.");
    }
    logMemo_ = services_.logMemo != nullptr ? services_.logMemo : &ownLog_;
    debugMemo_ = services_.debugMemo != nullptr ? services_.debugMemo : &ownDebug_;
    view_ = services_.view != nullptr ? services_.view : &defaultView_;
    jobs_ = services_.jobs != nullptr ? services_.jobs : &defaultJobs_;
    // The form opens on "All" for generating and on "Current IR8A" for submitting.
    if (mode_ == RunMode::DirectSubmission) choices_.fileType = FileType::CurrentIR8A;
}

RunController::~RunController() = default;

// ---- buttons ---------------------------------------------------------------

RunOutcome RunController::PreviewClick() {
    return Guarded([this] {
        return mode_ == RunMode::DirectSubmission ? DirectSubmitFlow() : GenerateFlow();
    });
}

RunOutcome RunController::TrialClick() {
    return Guarded([this] { return TrialFlow(); });
}

RunOutcome RunController::DirectSubmitProceedClick() {
    return Guarded([this] { return ProceedFlow(); });
}

RunOutcome RunController::ResetClick() {
    return Guarded([this] { return ResetFlow(); });
}

RunOutcome RunController::VerificationReportClick() {
    return Guarded([this] { return VerificationReportFlow(); });
}

RunOutcome RunController::Guarded(const std::function<RunOutcome()>& flow) {
    RunOutcome outcome = RunOutcome::Failed;
    std::string message;
    try {
        return flow();
    } catch (const db::DatabaseError& error) {
        outcome = RunOutcome::DatabaseFailure;
        message = error.what();
    } catch (const fs::filesystem_error& error) {
        outcome = RunOutcome::FileFailure;
        message = "Cannot create or write " + error.path1().string() + ": " + error.code().message() + ".";
    } catch (const RunError& error) {
        outcome = RunOutcome::FileFailure;
        message = error.what();
    } catch (const std::exception& error) {
        message = error.what();
    }
    // The run stops where it failed; the logs keep what it did so far, and a
    // run folder it made but never filled does not stay behind.
    RemoveRunFolderIfEmpty();
    AppendLog({"", message, ""});
    debugMemo_->Append(message);
    Show(MessageKind::Error, message);
    return outcome;
}

bool RunController::CheckRight() {
    if (HasRightForFileType()) return true;
    Show(MessageKind::Warning, kNoAccessMessage);
    return false;
}

bool RunController::HasRightForFileType() const {
    if (choices_.fileType != FileType::All) return Allowed(ReturnModuleId(choices_.fileType));
    for (FileType type : kReturnTypes) {
        if (!Allowed(ReturnModuleId(type))) return false;
    }
    return true;
}

RunOutcome RunController::GenerateFlow() {
    if (!CheckRight()) return RunOutcome::NoAccess;
    if (choices_.fileType != FileType::All && !jobs_->Available(choices_.fileType)) {
        Show(MessageKind::Error, NotAvailableMessage(choices_.fileType));
        return RunOutcome::Unavailable;
    }
    return OutcomeOfRun(RunSubmission(false));
}

RunOutcome RunController::TrialFlow() {
    if (!CheckRight()) return RunOutcome::NoAccess;
    if (choices_.fileType != FileType::All && !jobs_->Available(choices_.fileType)) {
        Show(MessageKind::Error, NotAvailableMessage(choices_.fileType));
        return RunOutcome::Unavailable;
    }
    const bool result = RunSubmission(true);
    if (!result) return OutcomeOfRun(result);
    RestoreAndFocusLog();
    if (mode_ == RunMode::DirectSubmission) {
        if (hasErrors_) {
            Show(MessageKind::Error, "Error(s) have been detected. Please review log for more details.");
        } else if (hasWarnings_) {
            Show(MessageKind::Warning, "Warning(s) have been detected. Please review log for more details.");
        }
    }
    return OutcomeOfRun(result);
}

RunOutcome RunController::DirectSubmitFlow() {
    if (!CheckRight()) return RunOutcome::NoAccess;
    if (!jobs_->Available(choices_.fileType)) {
        Show(MessageKind::Error, NotAvailableMessage(choices_.fileType));
        return RunOutcome::Unavailable;
    }
    if (!RunSubmission(true)) return OutcomeOfRun(false);
    if (!last_.produced && !last_.validationRefused) return NothingSubmitted();

    AppendLog({"", kBannerStars, "", "           PREPARING FOR ACTUAL DIRECT SUBMISSION", "",
               kBannerStars, ""});
    RestoreAndFocusLog();

    if (hasErrors_) {
        Show(MessageKind::Error, kErrorsBeforeRetry);
        AppendLog({"", "Submission has been cancelled due to error!", ""});
        return RunOutcome::ErrorsFound;
    }
    if (hasWarnings_) {
        SetProceedVisible(true);
        Show(MessageKind::Warning,
             "Warning(s) have been detected. Please review them before you proceed.");
        AppendLog({"", "Press <Proceed with Direct Submit>, to submit with warnings.", ""});
        return RunOutcome::WarningsPending;
    }
    const std::string question = "The " + FileTypeText(choices_.fileType) + " for Year " +
                                 choices_.basisYear +
                                 " will be submitted to IRAS directly. Are you sure?";
    if (!services_.dialogs->Confirm(question)) {
        AppendLog({"", "Submission has been cancelled!", ""});
        return RunOutcome::Declined;
    }
    return ProceedFlow();
}

RunOutcome RunController::ProceedFlow() {
    SetProceedVisible(false);
    AppendLog({"", "Post Online Validation Complete. Proceeding to Direct Submission...", ""});
    if (!RunSubmission(false)) return OutcomeOfRun(false);
    RestoreAndFocusLog();
    if (hasErrors_) {
        Show(MessageKind::Error, kErrorsBeforeRetry);
        return RunOutcome::ErrorsFound;
    }
    if (!last_.produced && !last_.validationRefused) return NothingSubmitted();
    // The dialog follows the flags alone, as the form always has; a pass
    // whose validation refused without an error flag still reports its
    // outcome as refused, so that a script sees that nothing was submitted.
    if (hasWarnings_) {
        Show(MessageKind::Information, "Records have been submitted with Warning(s).");
    } else {
        Show(MessageKind::Information, "Records have been submitted successfully.");
    }
    return last_.validationRefused ? RunOutcome::ValidationRefused : RunOutcome::Done;
}

// Nothing reached the engine: no employee to report (an Amendment without a
// changed employee) or no file to hand over. Saying "submitted" would be false.
RunOutcome RunController::NothingSubmitted() {
    const std::string text = last_.noRecords
                                 ? "Nothing was submitted: there are no records to submit."
                                 : "Nothing was submitted: the file could not be made. Please review the log.";
    AppendLog({"", text, ""});
    Show(MessageKind::Information, text);
    return RunOutcome::NothingProduced;
}

RunOutcome RunController::ResetFlow() {
    if (!services_.dialogs->Confirm("Are You Sure?")) return RunOutcome::Declined;
    std::unique_ptr<BYESubmissionEngine> engine = services_.session->CreateSubmissionEngine();
    int result = 0;
    if (engine) {
        engine->SetYEYear(choices_.YearEndYear());
        engine->SetYEEmployerId(choices_.employerId);
        if (choices_.fileType != FileType::All) {
            engine->SetYESubmissionType(SubmissionTypeCode(choices_.fileType));
        }
        result = engine->CopyRecords(8, 9);
    }
    if (result != 0) {
        Show(MessageKind::Information, "Submission is successfully resetted.");
        return RunOutcome::Done;
    }
    Show(MessageKind::Error, "Submission is not successfully resetted.");
    return RunOutcome::Failed;
}

// The report is made and opened only when the user wants it; a failure is
// shown and the Amendment's own question still follows.
void RunController::OfferVerificationReport() {
    if (!services_.session->VerificationReportOffered()) return;
    if (!services_.dialogs->Confirm(kVerificationReportOffer)) return;
    Guarded([this] { return VerificationReportFlow(); });
    if (!verificationReportPath_.empty()) view_->OpenInEditor(verificationReportPath_);
}

// Each return's records are built three times (as submitted, as now, as the
// Amendment) by jobs of their own; their generation logs would bury the run
// log, so they go to the debug log only, and the run log gets the outcome.
RunOutcome RunController::VerificationReportFlow() {
    if (!CheckRight()) return RunOutcome::NoAccess;
    verificationReportPath_.clear();
    ClearLogs();
    MakeRunFolder();
    RecordEmployerAndYear();
    FillParameters(true);

    AmendmentReport report;
    report.employerId = choices_.employerId;
    report.basisYear = _CStrToInt(choices_.basisYear);
    report.madeAt = Now().ToLogText();
    std::vector<FileType> types;
    if (choices_.fileType == FileType::All) types.assign(std::begin(kReturnTypes), std::end(kReturnTypes));
    else types.push_back(choices_.fileType);
    MemoryLog jobRunLog;
    for (FileType type : types) {
        if (!jobs_->Available(type)) continue;
        report.returns.push_back(BuildReturnAmendment(FileTypeText(type), [&]() {
            std::unique_ptr<RSubmissionJob> job = jobs_->Create(type, MakeSetup(""));
            if (job) {
                PrepareJob(*job);
                job->SetLogMemo(&jobRunLog);
            }
            return job;
        }));
    }
    if (const std::string failure = WriteReportFiles(report, runFolder_); !failure.empty())
        throw RunError("The verification report cannot be written in " + runFolder_ + ": " + failure);
    verificationReportPath_ = (fs::path(runFolder_) / (std::string(kVerificationReportName) + ".html")).string();
    for (const auto& part : report.returns) AppendLog({part.title + ": " + part.Summary()});
    AppendLog({"Verification report: " + verificationReportPath_});
    for (const auto& part : report.returns)
        if (part.compared && !part.built) return RunOutcome::Failed;
    return RunOutcome::Done;
}

RunOutcome RunController::OutcomeOfRun(bool result) const {
    if (last_.stoppedMissingId) return RunOutcome::MissingUserId;
    if (last_.declined) return RunOutcome::Declined;
    if (last_.unavailable) return RunOutcome::Unavailable;
    if (!result || hasErrors_) return RunOutcome::ErrorsFound;
    if (last_.validationRefused) return RunOutcome::ValidationRefused;
    if (!last_.produced) return RunOutcome::NothingProduced;
    return RunOutcome::Done;
}

// ---- the runs --------------------------------------------------------------

bool RunController::RunSubmission(bool validateOnly) {
    hasErrors_ = false;  // the warning flag stays as the last run left it
    last_ = LastRun{};

    if (mode_ == RunMode::DirectSubmission) {
        if (choices_.submitUserIdType.empty()) {
            Show(MessageKind::Warning, "Missing User ID Type!");
            view_->FocusUserIdType();
            last_.stoppedMissingId = true;
            return false;
        }
        if (choices_.submitUserId.empty()) {
            Show(MessageKind::Warning, "Missing User ID!");
            view_->FocusUserId();
            last_.stoppedMissingId = true;
            return false;
        }
    }
    // A direct submission asks both of its passes; the report is offered
    // before the first.
    if (!choices_.original && (mode_ == RunMode::Generation || validateOnly)) OfferVerificationReport();
    if (!choices_.original &&
        !services_.dialogs->Confirm(
            "Have you viewed the verification report before sending the submission file to IRAS?")) {
        last_.declined = true;
        return false;
    }
    // A trial in generation mode writes no run folder of its own and keeps the last one.
    if (mode_ == RunMode::DirectSubmission || !validateOnly) MakeRunFolder();
    FillParameters(validateOnly);
    ClearLogs();
    RecordEmployerAndYear();
    view_->ShowLogPage();

    if (choices_.fileType == FileType::All) {
        RunAllFiles();
        return !hasErrors_;
    }

    std::unique_ptr<RSubmissionJob> job = jobs_->Create(choices_.fileType, MakeSetup(""));
    if (!job) {
        last_.unavailable = true;
        RemoveRunFolderIfEmpty();
        Show(MessageKind::Error, NotAvailableMessage(choices_.fileType));
        return !hasErrors_;
    }
    PrepareJob(*job);
    const int validated = job->ValidateFile();
    ThrowIfDatabaseFault(*job);
    if (validated == 0) {
        last_.validationRefused = true;
        RemoveRunFolderIfEmpty();
        return !hasErrors_;
    }

    std::unique_ptr<ProgressWindow> progress;
    if (services_.progress) progress = services_.progress();
    if (progress) {
        progress->SetCaption("Report generation in process. Please wait...");
        progress->SetLabelText("Processing Data...");
        progressPosition_ = 0;
        progress->SetPosition(progressPosition_);
        progress->SetStep(50);
        progress->Show();
        progress->Repaint();
        progress->Step();
    }

    const int processed = job->ProcessFile();
    ThrowIfDatabaseFault(*job);
    last_.produced = processed != 0;
    last_.noRecords = processed == 0 && job->FoundNoRecords();
    last_.recordRefused = processed == 0 && job->RefusedARecord();
    // The summary belongs to a real original return; the supplementary IR8A
    // has none of its own (it joins the shared summary of the "All" run only).
    if (processed != 0 && parameters_.actualRun && choices_.original && !job->SummaryFileName().empty()) {
        const std::string name = job->SummaryFileName() + ".txt";
        if (mode_ == RunMode::DirectSubmission) {
            // The job's own summary in the run folder, when it left one.
            const fs::path file = fs::path(runFolder_) / name;
            summaryFilePath_ = fs::exists(file) ? file.string() : "";
        } else {
            job->GenerateSummary(summaryList_);
            const fs::path file = ReportDirectory() / name;
            summaryFilePath_ = file.string();
            SaveSummary(file);
        }
    }
    if (progress) {
        progressPosition_ = 100;
        progress->SetPosition(progressPosition_);
        progress.reset();
    }
    hasErrors_ = job->GetHasErrors();
    hasWarnings_ = job->GetHasWarnings();
    return !hasErrors_;
}

void RunController::RunAllFiles() {
    RunLogs logs;
    logs.SetLogMemo(logMemo_);
    logs.SetInternalMemo(debugMemo_);

    std::vector<std::unique_ptr<RSubmissionJob>> jobs;
    for (FileType type : kReturnTypes) {
        // Every job of the "All" run, the supplementary IR8A included, gets the
        // "Basis Year" as shown and the same year in its parameters.
        JobSetup setup = MakeSetup(choices_.fileDirectory);
        std::unique_ptr<RSubmissionJob> job;
        if (jobs_->Available(type)) job = jobs_->Create(type, setup);
        if (!job) {
            logs.WriteAllMemo(NotAvailableMessage(type) + " It is left out of this run.");
            continue;
        }
        PrepareJob(*job);
        jobs.push_back(std::move(job));
    }

    // Every return is validated, even after one refused, so that one run
    // shows the user everything that needs fixing.
    bool allValidated = true;
    for (auto& job : jobs) {
        if (job->ValidateFile() == 0) allValidated = false;
        ThrowIfDatabaseFault(*job);
    }
    if (!allValidated) {
        last_.validationRefused = true;
        RemoveRunFolderIfEmpty();
        for (const std::string& line :
             {kBannerStars, kBannerBlank,
              std::string("The validation of generated files was failed. Please preview log file "
                          "and adjust the tax records accordingly."),
              kBannerBlank, kBannerStars, std::string()}) {
            logMemo_->Append(line);
        }
        return;
    }

    std::vector<int> processed;
    bool allWithoutRecords = true;
    for (auto& job : jobs) {
        processed.push_back(job->ProcessFile());
        ThrowIfDatabaseFault(*job);
        if (processed.back() == 0 && !job->FoundNoRecords()) allWithoutRecords = false;
        if (processed.back() == 0 && job->RefusedARecord()) last_.recordRefused = true;
    }
    bool anyProcessed = false;
    for (std::size_t i = 0; i < jobs.size(); ++i) {
        if (processed[i] == 0) continue;
        anyProcessed = true;
        if (parameters_.actualRun && choices_.original) jobs[i]->GenerateSummary(summaryList_);
    }

    if (anyProcessed) {
        last_.produced = true;
        if (parameters_.actualRun && choices_.original) {
            const fs::path file = ReportDirectory() / "IRASSummaryFile.txt";
            summaryFilePath_ = file.string();
            SaveSummary(file);
        }
        for (const std::string& line :
             {kBannerStars, kBannerBlank,
              "All files have been SUCCESSFULLY generated to " + choices_.fileDirectory +
                  ". Please use AIS Salary File Validation and Submission Application to "
                  "validate the files.",
              kBannerBlank, kBannerStars, std::string()}) {
            logMemo_->Append(line);
        }
    } else {
        last_.noRecords = allWithoutRecords;
        for (const std::string& line : {kBannerStars, kBannerBlank,
                                        std::string("No Records to be processed."), kBannerBlank,
                                        kBannerStars, std::string()}) {
            logMemo_->Append(line);
        }
    }
}

// ---- pieces of a run ---------------------------------------------------------

void RunController::MakeRunFolder() {
    // <report>/<year-end year>YearEnd/IRAS/<YYYYMMDDHHMMSS>, one level at a
    // time; two runs in the same second share the folder.
    const fs::path yearFolder =
        ReportDirectory() / (std::to_string(services_.session->iGetYEYear()) + "YearEnd");
    const fs::path irasFolder = yearFolder / "IRAS";
    const fs::path stampFolder = irasFolder / Now().ToStamp();
    for (const fs::path& folder : {yearFolder, irasFolder, stampFolder}) {
        if (!fs::is_directory(folder)) fs::create_directory(folder);
    }
    runFolder_ = stampFolder.string();
}

void RunController::RemoveRunFolderIfEmpty() {
    if (runFolder_.empty()) return;
    std::error_code error;
    // Removing a directory that holds files fails, and that is what we want:
    // a folder with output of an earlier run in the same second stays.
    if (fs::is_directory(runFolder_, error) && fs::is_empty(runFolder_, error)) {
        fs::remove(runFolder_, error);
    }
}

void RunController::FillParameters(bool validateOnly) {
    parameters_ = IRASSubmissionParameters{};
    parameters_.sortOrder = 2;
    parameters_.employerId = choices_.employerId;
    parameters_.year = choices_.YearEndYear();
    parameters_.original = choices_.original;
    parameters_.check = true;
    parameters_.ignoreChanges = choices_.original;
    parameters_.actualRun = !validateOnly;
    parameters_.directSubmission = mode_ == RunMode::DirectSubmission;
    parameters_.submitUserIdType = choices_.submitUserIdType;
    parameters_.submitUserId = choices_.submitUserId;
}

void RunController::ClearLogs() {
    logMemo_->Clear();
    debugMemo_->Clear();
    employeeErrorList_.clear();
    summaryList_.clear();
}

void RunController::RecordEmployerAndYear() {
    // The engine's views take the employer and basis year from this row.
    db::Query query("kovadb");
    query.SetSQL(
        "Select * from subregistry where Registryid = 'YEPRocess' and SubRegistryId = "
        "'TaxEmployerBasisYear'");
    query.Open();
    if (query.IsEmpty()) {
        throw db::DatabaseError(
            "The database has no subregistry row 'YEPRocess' / 'TaxEmployerBasisYear', where a run "
            "records its employer and basis year.");
    }
    query.Edit();
    query.FieldByName("RegProperty1").SetAsString(choices_.employerId);
    query.FieldByName("RegProperty2").SetAsString(choices_.basisYear);
    query.Post();
    query.Close();
}

JobSetup RunController::MakeSetup(const std::string& copyFolder) const {
    JobSetup setup;
    setup.session = services_.session;
    setup.params = parameters_;
    setup.runFolder = runFolder_;
    setup.copyFolder = copyFolder;
    setup.basisYear = _CStrToInt(choices_.basisYear);
    setup.ir8s = choices_.ir8s;
    return setup;
}

void RunController::PrepareJob(RSubmissionJob& job) {
    job.SetLogMemo(logMemo_);
    job.SetInternalMemo(debugMemo_);
    job.SetEmployeeErrorLog(&employeeErrorList_);
    job.SetSaveDialog(services_.savePrompt);
}

void RunController::SaveSummary(const fs::path& file) const {
    std::error_code ignored;
    fs::remove(file, ignored);
    SaveLines(file, summaryList_);
}

fs::path RunController::ReportDirectory() const {
    if (!services_.reportDirectory) return _GetHRPCurrentDirectory("Report");
    fs::path directory = services_.reportDirectory();
    fs::create_directories(directory);
    return directory;
}

bool RunController::Allowed(const std::string& moduleId) const {
    const std::string user = services_.session->sGetUserID();
    if (services_.rights) return services_.rights(user, moduleId);
    return _IsUserModuleAccessible(user, moduleId, 0, 0) != 0;
}

void RunController::Show(MessageKind kind, const std::string& text) {
    services_.dialogs->Show(kind, text);
}

void RunController::AppendLog(std::initializer_list<std::string> lines) {
    for (const std::string& line : lines) logMemo_->Append(line);
}

void RunController::RestoreAndFocusLog() {
    view_->RestoreApplication();
    if (view_->LogPageShowing()) view_->FocusPreviewLog();
}

void RunController::SetProceedVisible(bool visible) {
    proceedVisible_ = visible;
    view_->SetProceedVisible(visible);
}

// ---- logs ------------------------------------------------------------------

fs::path RunController::SaveLogFile(LogFileKind kind) const {
    const fs::path file = ReportDirectory() / LogFileName(kind);
    if (kind == LogFileKind::EmployeeErrorLog) {
        SaveLines(file, employeeErrorList_);
        return file;
    }
    // A log that streams to its file takes its name here; one in memory is written whole.
    LogSink& log = kind == LogFileKind::RunLog ? *logMemo_ : *debugMemo_;
    const std::string reason = log.SaveTo(file);
    if (!reason.empty()) throw RunError("Cannot write the file " + file.string() + ": " + reason + ".");
    return file;
}

std::optional<fs::path> RunController::PreviewLogClick(LogFileKind kind) {
    try {
        fs::path file = SaveLogFile(kind);
        view_->OpenInEditor(file);
        return file;
    } catch (const std::exception& error) {
        Show(MessageKind::Error, error.what());
        return std::nullopt;
    }
}

}  // namespace iras
