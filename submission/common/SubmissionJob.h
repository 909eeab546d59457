// The contract that the four return jobs share (IR8A current and
// supplementary, IR8S, Appendix 8A, Appendix 8B): constructed on the session
// with the run's parameters, the run folder and the copy folder ("" in a run of
// one return, the user's "File Directory" in the "All" run); handed the run
// log, the debug log and the employee error list; then validated, processed
// and asked for its summary. After processing the caller reads the error and
// warning flags. A job serves one run and is then destroyed.
//
// The run controller and the session form drive jobs through this interface
// only; each return adds its queries, records and rules to it.
#pragma once

#include <optional>
#include <string>

#include "platform/common/LogSink.h"
#include "platform/host/BQueryViewTable.h"
#include "submission/common/IRASSubmissionParameters.h"

namespace iras {

// Where a single-type run saves its file: proposes a file name, answers a
// full path or nothing when the user cancels. Keeps the jobs free of any
// window toolkit.
class SaveFilePrompt {
public:
    virtual ~SaveFilePrompt() = default;
    virtual std::optional<std::string> AskSavePath(const std::string& proposedFileName) = 0;
};

class RSubmissionJob {
public:
    virtual ~RSubmissionJob() = default;

    virtual void SetLogMemo(LogSink* log) = 0;
    virtual void SetInternalMemo(LogSink* debug) = 0;
    virtual void SetEmployeeErrorLog(StringList* employeeErrors) = 0;
    virtual void SetSaveDialog(SaveFilePrompt* prompt) = 0;
    // The "Basis Year" of the run, set by whoever builds the job.
    virtual void SetBasisYear(int basisYear) = 0;

    // ValidateIR8AFile, ValidateIR8SFile, ...: nonzero when the run may go on.
    virtual int ValidateFile() = 0;
    // ProcessIR8AeSubmission, ...: nonzero when the file was made.
    virtual int ProcessFile() = 0;
    // GenerateSummaryTextFile, GenerateIR8SSummaryTextFile, ...: appends.
    virtual void GenerateSummary(StringList& summary) = 0;
    // The summary file's name without ".txt" ("IRASSummaryFile",
    // "IR8SSummaryFile", "A8ASummaryFile", "A8BSummaryFile"); "" for a return
    // with no summary file of its own (the supplementary IR8A, which joins
    // the shared summary of the "All" run only).
    virtual std::string SummaryFileName() const = 0;

    virtual bool GetHasErrors() const = 0;
    virtual bool GetHasWarnings() const = 0;
};

}  // namespace iras
