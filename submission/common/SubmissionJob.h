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
#include <vector>

#include "platform/common/LogSink.h"
#include "platform/host/BQueryViewTable.h"
#include "submission/common/IRASSubmissionParameters.h"
#include "submission/common/RecordLayout.h"

namespace iras {

// Where a single-type run saves its file: proposes a file name, answers a
// full path or nothing when the user cancels. Keeps the jobs free of any
// window toolkit.
class SaveFilePrompt {
public:
    virtual ~SaveFilePrompt() = default;
    virtual std::optional<std::string> AskSavePath(const std::string& proposedFileName) = 0;
};

// Which rows a job reads when it only builds its records (the verification
// report): the live rows as an Original would hold them, the rows as they
// were last submitted, or the corrections an Amendment would send.
enum class RecordSource { Live, Submitted, Amendment };

// A field of the detail record that an Amendment corrects, named as on the
// form; decimals: 2 for a field of whole cents, 0 for whole dollars.
struct AmendmentField {
    RecordField field;
    int decimals = 0;
    std::string caption;
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

    // The money fields of the detail record in record order, each with its
    // name on the form: what the verification report compares. Empty for a
    // return that names none.
    virtual std::vector<AmendmentField> AmendmentFields() const { return {}; }
    // The return's records from source, built as the generation pass builds
    // them but neither saved nor handed on; an empty list when there is no
    // employee, nothing when they cannot be built (the logs say why). A job
    // builds once, as it runs once.
    virtual std::optional<StringList> BuildRecords(RecordSource /*source*/) { return std::nullopt; }

    virtual bool GetHasErrors() const = 0;
    virtual bool GetHasWarnings() const = 0;
};

}  // namespace iras
