// The shared body of the return jobs: the two drivers, the log helpers, the
// keyword lookup, the engine bridge and the placing of the finished file.
// Everything here is the same for every return; what differs comes through
// the hooks of RYESubmissionJob.
#include "submission/common/RYESubmissionJob.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <system_error>
#include <utility>

#include "platform/common/CommonLibrary.h"
#include "platform/common/Date.h"

namespace iras {

namespace {

std::string Trimmed(const std::string& text) {
    const auto first = text.find_first_not_of(" \t\r\n");
    if (first == std::string::npos) return "";
    const auto last = text.find_last_not_of(" \t\r\n");
    return text.substr(first, last - first + 1);
}

// An apostrophe inside a quoted SQL text is written twice.
std::string QuotedForSql(const std::string& text) {
    std::string quoted;
    for (char c : text) {
        quoted += c;
        if (c == '\'') quoted += '\'';
    }
    return quoted;
}

std::string NowText() { return Now().ToLogText(); }

}  // namespace

RYESubmissionJob::RYESubmissionJob(BQueryViewTable* context, IRASSubmissionParameters params,
                                   std::string runFolder, std::string copyFolder)
    : Context(context),
      Params(std::move(params)),
      Output(std::make_unique<BStringOutput>()),
      Engine(context != nullptr ? context->CreateSubmissionEngine() : nullptr),
      KeywordQuery("kovadb"),
      EmployerQuery("kovadb"),
      MainQuery("kovadb"),
      RunFolder(std::move(runFolder)),
      CopyFolder(std::move(copyFolder)) {}

RYESubmissionJob::~RYESubmissionJob() = default;

void RYESubmissionJob::SetLogMemo(LogSink* log) { Logs.SetLogMemo(log); }
void RYESubmissionJob::SetInternalMemo(LogSink* debug) { Logs.SetInternalMemo(debug); }
void RYESubmissionJob::SetEmployeeErrorLog(StringList* employeeErrors) {
    EmployeeErrorLog = employeeErrors;
}
void RYESubmissionJob::SetSaveDialog(SaveFilePrompt* prompt) { SaveDialog = prompt; }

void RYESubmissionJob::WriteAllMemo(const std::string& line) { Logs.WriteAllMemo(line); }
void RYESubmissionJob::WriteInternalMemo(const std::string& line) { Logs.WriteInternalMemo(line); }

void RYESubmissionJob::WriteAllBanner(const std::string& title) {
    WriteAllMemo("");
    Logs.WriteAllBanner(title);
    WriteAllMemo("");
}

void RYESubmissionJob::WriteInternalBanner(const std::string& title) {
    WriteInternalMemo("");
    Logs.WriteInternalBanner(title);
    WriteInternalMemo("");
}

// ---------------------------------------------------------------- keywords

void RYESubmissionJob::OpenKeywordQuery() {
    KeywordQuery.Close();
    KeywordQuery.ClearSQL();
    KeywordQuery.SetSQL("SELECT * FROM YEKeyWord ORDER BY YEKeyWordCategory");
    KeywordQuery.Open();
    // Every record looks up several codes; an index of the small keyword
    // table keeps that from scanning it each time.
    keywordRows_.clear();
    int row = 0;
    for (KeywordQuery.First(); !KeywordQuery.Eof(); KeywordQuery.Next(), ++row) {
        keywordRows_.emplace(Trimmed(KeywordQuery.FieldByName("YEKeyWordId").AsString()), row);
    }
    KeywordQuery.First();
}

bool RYESubmissionJob::YEKeywordRecLocate(const std::string& keyword) {
    if (!KeywordQuery.Active()) return false;
    const std::string wanted = Trimmed(keyword);
    if (wanted.empty()) return false;
    const auto found = keywordRows_.find(wanted);
    if (found != keywordRows_.end()) {
        KeywordQuery.First();
        for (int i = 0; i < found->second; ++i) KeywordQuery.Next();
        return true;
    }
    return false;  // the cursor stays on the row it stood on
}

std::string RYESubmissionJob::KeywordProperty(const char* column) {
    if (!KeywordQuery.Active() || KeywordQuery.IsEmpty()) return "";
    return Trimmed(KeywordQuery.FieldByName(column).AsString());
}

// ------------------------------------------------------------ row helpers

std::string RYESubmissionJob::Text(const char* column) {
    return Trimmed(MainQuery.FieldByName(column).AsString());
}

double RYESubmissionJob::Amount(const char* column) {
    return MainQuery.FieldByName(column).AsFloat();
}

Date RYESubmissionJob::DateOf(const char* column) {
    return MainQuery.FieldByName(column).AsDate();
}

std::string RYESubmissionJob::EmployeeTaxNo() { return Text("TaxNo"); }
std::string RYESubmissionJob::EmployeeId() { return Text("EmployeeId"); }

// --------------------------------------------------------- queries, engine

void RYESubmissionJob::OpenEmployerQuery(const std::string& sqlBeforeId) {
    EmployerQuery.Close();
    EmployerQuery.ClearSQL();
    EmployerQuery.SetSQL(sqlBeforeId + QuotedForSql(Params.employerId) + "'");
    EmployerQuery.Open();
}

int RYESubmissionJob::GenerateViewTables(const std::string& submissionType, int year) {
    if (!Engine) return 0;
    Engine->SetYEYear(year);
    Engine->SetYEEmployerId(Params.employerId);
    Engine->SetYESubmissionType(submissionType);
    Engine->SetYEIgnoreChanges(Params.ignoreChanges);
    Engine->SetIsDirectSubmit(Params.directSubmission);
    Engine->SetSubmitUserIDType(Params.submitUserIdType);
    Engine->SetSubmitUserID(Params.submitUserId);
    Engine->SetSubmitReportPath(RunFolder);
    return Engine->GenerateViewTables();
}

// ------------------------------------------------------------------ passes

// Each pass opens with its banner and start time and closes with its end
// time. A database failure (a missing table or column, a locked file) ends
// the pass with its message: the job itself never throws.
int RYESubmissionJob::RunPass(const std::string& title, const std::string& failure,
                              int (RYESubmissionJob::*pass)()) {
    WriteAllBanner(title);
    WriteAllMemo("Start Date and Time: " + NowText());
    int result = 0;
    try {
        result = (this->*pass)();
    } catch (const std::exception& error) {
        WriteAllMemo("");
        WriteAllMemo(failure + error.what());
        result = 0;
    } catch (...) {
        WriteAllMemo("");
        WriteAllMemo(failure + "an unexpected failure.");
        result = 0;
    }
    WriteAllMemo("");
    WriteAllMemo("End Date and Time: " + NowText());
    WriteAllMemo("");
    return result;
}

// -------------------------------------------------------------- validation

int RYESubmissionJob::RunValidation() {
    return RunPass(Texts().validateTitle, "The validation could not be completed: ",
                   &RYESubmissionJob::ValidationPass);
}

int RYESubmissionJob::ValidationPass() {
    const JobTexts& texts = Texts();
    int result = 0;
    if (RefreshQuery() != 0) {
        if (!MainQuery.IsEmpty()) {
            WriteAllBanner(texts.headerValidateTitle);
            ErrorList.clear();
            if (Params.original && HeaderValidation() == 0) {
                HeaderErrorCount = static_cast<int>(ErrorList.size());
                WriteAllMemo("");
                for (const auto& line : ErrorList) WriteAllMemo(line);
                WriteAllMemo("");
            }
        }

        WriteAllBanner(texts.detailValidateTitle);
        for (MainQuery.First(); !MainQuery.Eof(); MainQuery.Next()) {
            RefreshEmployee();
            ErrorList.clear();
            bool passed = true;
            if (Params.original && DetailsValidation() == 0) passed = false;
            // The rules clear the list for their own messages; the record
            // limits add theirs after them.
            StringList rules = ErrorList;
            ErrorList.clear();
            if (RecordLimitValidation() == 0) passed = false;
            rules.insert(rules.end(), ErrorList.begin(), ErrorList.end());
            ErrorList = std::move(rules);
            if (passed) continue;

            const std::string taxNo = EmployeeTaxNo();
            WriteAllMemo("");
            WriteAllMemo("Employee " + taxNo + texts.employeeFailedSuffix);
            if (EmployeeErrorLog != nullptr) {
                EmployeeErrorLog->push_back("Identity No: " + taxNo);
                EmployeeErrorLog->push_back("Employee ID: " + EmployeeId());
            }
            for (const auto& line : ErrorList) {
                WriteAllMemo(line);
                if (EmployeeErrorLog != nullptr) EmployeeErrorLog->push_back(line);
            }
            WriteAllMemo("");
            if (EmployeeErrorLog != nullptr) EmployeeErrorLog->push_back("");
            ++RecordsFailed;
        }

        result = (Params.check && HeaderErrorCount == 0 && RecordsFailed == 0) ? 1 : 0;
        if (result == 0) {
            WriteAllMemo("");
            WriteAllMemo(texts.validationHeaderErrorsLabel + std::to_string(HeaderErrorCount));
            WriteAllMemo("Total No. of Records not successfully validated: " +
                         std::to_string(RecordsFailed));
            WriteAllMemo("");
        }
    }
    return result;
}

// -------------------------------------------------------------- generation

int RYESubmissionJob::RunGeneration() {
    return RunPass(Texts().processTitle, "The file could not be generated: ", &RYESubmissionJob::GenerationPass);
}

int RYESubmissionJob::GenerationPass() {
    const JobTexts& texts = Texts();
    int result = 0;
    Output->SetMax(100, RecordWidth());
    Output->SetLeftMargin(0);
    Output->SetZeroAsNA(0);
    // A generation pass on its own (no validation pass before it in this
    // job) opens the queries itself.
    bool ready = true;
    if (RefreshBeforeGeneration() || !MainQuery.Active()) ready = RefreshQuery() != 0;

    if (!ready) {
        WriteAllMemo("");
        WriteAllMemo("The data of the return could not be prepared. No file is created.");
    } else if (MainQuery.IsEmpty()) {
        WriteAllMemo("");
        WriteAllMemo("No Records to be processed.");
    } else {
        WriteAllBanner(texts.headerTitle);
        if (Params.check) {
            Output->SetNew();
            PrepareHeader();
            Output->SetEnd(1);
            Output->ListOutput(OutputLines);
        }

        WriteAllBanner(texts.detailTitle);
        for (MainQuery.First(); !MainQuery.Eof(); MainQuery.Next()) {
            ++RecordsProcessed;
            RefreshEmployee();
            PrepareDetails();
        }

        if (HasTrailer()) {
            WriteAllBanner(texts.trailerTitle);
            if (Params.check) {
                Output->SetNew();
                PrepareTrailer();
                Output->SetEnd(1);
                Output->ListOutput(OutputLines);
            }
        }

        WriteAllMemo("");
        WriteAllMemo(texts.generationHeaderErrorsLabel + std::to_string(HeaderErrorCount));
        WriteAllMemo("Total No. of Records processed                 : " +
                     std::to_string(RecordsProcessed));
        WriteAllMemo("Total No. of Records successfully processed    : " +
                     std::to_string(RecordsSucceeded));
        WriteAllMemo("Total No. of Records not successfully processed: " +
                     std::to_string(RecordsFailed));

        WriteAllBanner(texts.fileStepTitle);
        if (!Params.check) {
            WriteAllMemo("No file is created: the output of records is switched off.");
        } else if (RecordFault) {
            WriteAllMemo("No file is created: not every record could be written.");
        } else {
            result = PlaceFile(FileName());
        }
    }
    return result;
}

// A single-type run in direct-submission mode keeps the file in the run
// folder and hands it to the engine; an ordinary single-type run asks where
// to save it (without a prompt it saves into the run folder); the "All" run
// saves into the run folder and copies into the user's folder.
int RYESubmissionJob::PlaceFile(const std::string& fileName) {
    namespace fs = std::filesystem;
    const std::string runPath = (fs::path(RunFolder) / fileName).string();

    if (!CopyFolder.empty()) {
        const std::string copyPath = (fs::path(CopyFolder) / fileName).string();
        if (RunFolder.empty()) {
            // A trial "All" run may have no run folder: the user's folder
            // is then the only place for the file.
            if (!SaveOutputLines(copyPath)) return 0;
        } else {
            if (!SaveOutputLines(runPath)) return 0;
            if (!_FileCopy(runPath, copyPath)) {
                WriteAllMemo("The file could not be copied to " + copyPath + ".");
                return 0;
            }
        }
        OutputFilePath = copyPath;
        WriteAllMemo("File has been successfully generated to " + copyPath + ".");
        ProcessSubmission(true);
        return 1;
    }

    if (Params.directSubmission) {
        if (RunFolder.empty()) {
            WriteAllMemo("The file " + fileName + " is not saved: the run has no folder to save it in.");
            return 0;
        }
        if (!SaveOutputLines(runPath)) return 0;
        OutputFilePath = runPath;
        if (DirectSubmit(RunFolder, fileName, DirectSubmitFormType()) != 0) {
            ProcessSubmission(false);
            SaveDirectSubmitSummary();
        }
        return 1;
    }

    std::string chosen = runPath;
    if (SaveDialog == nullptr && RunFolder.empty()) {
        // Neither a prompt nor a run folder: there is no place the user chose,
        // and the working directory is not one.
        WriteAllMemo("The file " + fileName + " is not saved: the run has no folder to save it in.");
        return 0;
    }
    if (SaveDialog != nullptr) {
        const std::optional<std::string> answer = SaveDialog->AskSavePath(fileName);
        if (!answer) {
            WriteAllMemo(Texts().cancelledMessage);
            return 0;
        }
        chosen = *answer;
    }
    if (!SaveOutputLines(chosen)) return 0;
    // The run folder keeps a copy of what an actual run gave the user.
    if (Params.actualRun && !RunFolder.empty() && fs::path(chosen) != fs::path(runPath)) {
        std::error_code sameCheck;
        if (!fs::equivalent(chosen, runPath, sameCheck) && !_FileCopy(chosen, runPath)) {
            WriteAllMemo("The file could not be copied to " + runPath + ".");
        }
    }
    OutputFilePath = chosen;
    WriteAllMemo("File has been successfully generated to " + chosen + ".");
    ProcessSubmission(false);
    return 1;
}

namespace {

// Writes the lines to a temporary file beside path and renames it over path,
// so that a failure never leaves a half-written file. "" or the reason.
std::string WriteLinesAtomically(const std::filesystem::path& target, const StringList& lines,
                                 std::string_view lineEnd) {
    namespace fs = std::filesystem;
    fs::path folder = target.parent_path();
    if (folder.empty()) folder = ".";
    const fs::path temporary =
        folder / ("." + target.filename().string() + "." + std::to_string(getpid()) + ".tmp");
    std::string reason;
    {
        std::ofstream out(temporary, std::ios::binary | std::ios::trunc);
        if (!out) {
            reason = std::strerror(errno);
        } else {
            for (const auto& line : lines) {
                out.write(line.data(), static_cast<std::streamsize>(line.size()));
                out.write(lineEnd.data(), static_cast<std::streamsize>(lineEnd.size()));
            }
            out.flush();
            if (!out) reason = std::strerror(errno);
        }
    }
    if (reason.empty()) {
        std::error_code renameError;
        fs::rename(temporary, target, renameError);
        if (!renameError) return "";
        reason = renameError.message();
    }
    std::error_code ignored;
    fs::remove(temporary, ignored);
    return reason;
}

}  // namespace

void RYESubmissionJob::SaveDirectSubmitSummary() {
    if (!Params.actualRun || !Params.original || SummaryFileName().empty()) return;
    StringList summary;
    GenerateSummary(summary);
    const std::filesystem::path target = std::filesystem::path(RunFolder) / (SummaryFileName() + ".txt");
    const std::string reason = WriteLinesAtomically(target, summary, "\n");
    if (!reason.empty()) {
        WriteAllMemo("The summary file " + target.string() + " could not be written: " + reason + ".");
    }
}

bool RYESubmissionJob::SaveOutputLines(const std::string& path) {
    // Return files end every record, the last one too, with CR LF.
    const std::string reason = WriteLinesAtomically(path, OutputLines, "\r\n");
    if (reason.empty()) return true;
    WriteAllMemo("The file " + path + " could not be written: " + reason + ".");
    return false;
}

// ------------------------------------------------------- engine submission

int RYESubmissionJob::DirectSubmit(const std::string& /*folder*/, const std::string& file,
                                   const std::string& formType) {
    WriteAllBanner("           PROCESSING FILE FOR DIRECT SUBMISSION");
    if (!Engine) {
        WriteAllMemo("No submission engine is available.");
        return 0;
    }
    const int validateOnly = Params.actualRun ? 0 : 1;
    const int submitted = Engine->ExecuteDirectSubmit(file, formType, validateOnly);
    WriteAllMemo("");
    // The engine writes into the sinks it is given; a job without one gives
    // it a scratch sink so that it never writes through a null pointer.
    MemoryLog scratchDebug;
    MemoryLog scratchLog;
    Engine->DirectSubmitAppendLog(Logs.InternalMemo() ? Logs.InternalMemo() : &scratchDebug,
                                  "IRASDirectSubmitDebug.log");
    Engine->DirectSubmitAppendLog(Logs.LogMemo() ? Logs.LogMemo() : &scratchLog,
                                  "IRASDirectSubmit.log");
    HasErrors = Engine->HasErrors();
    HasWarnings = Engine->HasWarnings();
    if (HasWarnings) WriteAllMemo("Record processed with warning(s).");
    if (HasErrors) WriteAllMemo("Record processed with error(s).");
    WriteAllMemo("");
    return (Params.actualRun && submitted != 0) ? 1 : 0;
}

void RYESubmissionJob::ProcessSubmission(bool allRun) {
    if (!Params.actualRun) return;
    WriteInternalBanner("           PROCESSING SUBMISSION                ");
    const int recorded = Engine ? Engine->SubmitRecords(Params.original, allRun) : 0;
    WriteInternalMemo(recorded != 0 ? "Submission is successful." : "Submission is not successful.");
    WriteInternalMemo("");
}

}  // namespace iras
