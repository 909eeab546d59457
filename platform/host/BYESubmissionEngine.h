// The year-end submission engine: builds the per-user view tables that the
// return queries read, checks or submits a finished return file, records a
// submission, and resets the last generation. The host supplies the engine;
// ReferenceEngine is ours, working on the payroll database alone.
//
// Every call reports failure by its return value (0) and a line of the
// engine's log; none throws into the job that calls it.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/common/LogSink.h"

namespace iras {

class BQueryViewTable;

class BYESubmissionEngine {
public:
    virtual ~BYESubmissionEngine() = default;

    // Set-up before GenerateViewTables and the submission calls.
    virtual void SetYEYear(int year) = 0;
    virtual void SetYEEmployerId(const std::string& employerId) = 0;
    virtual void SetYESubmissionType(const std::string& type) = 0;  // "CurIR8A", "SupIR8A", "IR8S", "A8A", "A8B"
    virtual void SetYEIgnoreChanges(bool ignoreChanges) = 0;         // true for an Original
    virtual void SetIsDirectSubmit(bool directSubmit) = 0;
    virtual void SetSubmitUserIDType(const std::string& type) = 0;
    virtual void SetSubmitUserID(const std::string& userId) = 0;
    virtual void SetSubmitReportPath(const std::string& path) = 0;

    // Materialises the session user's view tables for the year, employer and
    // type set before. Nonzero on success.
    virtual int GenerateViewTables() = 0;

    // The same view tables holding what was last submitted instead of the
    // live rows (every employee of the employer and year, amounts as sent),
    // so that a verification report can set what an Amendment corrects
    // beside what it corrects it from. 0 when the engine keeps no submitted
    // copy it can show.
    virtual int GenerateSubmittedViewTables() { return 0; }

    // Checks (validateOnly 1) or submits (0) the file of that name in the
    // report path. Nonzero on success; sets the two flags below.
    virtual int ExecuteDirectSubmit(const std::string& file, const std::string& formType,
                                    int validateOnly) = 0;
    virtual bool HasErrors() const = 0;
    virtual bool HasWarnings() const = 0;

    // Appends the engine's record of the last submission to the sink and to
    // the file of that name in the report path.
    virtual void DirectSubmitAppendLog(LogSink* memo, const std::string& name) = 0;

    // Records that the run's records were submitted. Nonzero on success.
    virtual int SubmitRecords(bool original, bool allRun) = 0;

    // CopyRecords(8, 9): restores the state saved before the employer's last
    // generation of the type set. Nonzero on success.
    virtual int CopyRecords(int from, int to) = 0;
};

using EngineFactory = std::function<std::unique_ptr<BYESubmissionEngine>(BQueryViewTable*)>;

}  // namespace iras
