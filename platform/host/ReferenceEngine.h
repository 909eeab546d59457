// Our year-end submission engine, for installations whose host has none: it
// works on the payroll database alone.
//
// - The per-user view tables that the return queries read are real tables,
//   one set per user and workstation (_GetViewTableName), rebuilt on every
//   GenerateViewTables. An Original holds the employees of the employer and
//   year who have a row of the return's main table; an Amendment only the employees whose
//   return data differ from what was last submitted, with each amount as the
//   correction (new minus submitted). GenerateSubmittedViewTables fills the
//   same tables from the submitted copy, for the verification report. Only
//   the return's own tables are compared and copied: the
//   year-end employee table has one row per person and year for all returns,
//   so a change there alone (a corrected name) does not make an amendment.
// - What was submitted is kept in the return tables themselves under the year
//   key 9<basis year> (the IR8A query reads the submitted income-borne status
//   there); the state before the last submission is kept under 8<basis year>
//   so that CopyRecords(8, 9) can undo that submission.
// - ExecuteDirectSubmit checks the file with the AIS checker and, for an
//   actual submission, records it in SubmittedReturnFile and hands it to the
//   transport (by default one that sends nothing).
//
// No call throws: a failure is a return value of 0, a line of the engine's
// log and LastError().
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/ais/AisFileChecker.h"
#include "platform/common/LogSink.h"
#include "platform/host/BYESubmissionEngine.h"
#include "platform/host/SubmissionTransport.h"

namespace iras {

// How a return file is checked before it goes anywhere; CheckAisFile unless a
// host (or a test) supplies another.
using AisFileCheck =
    std::function<AisCheckResult(const std::filesystem::path&, std::optional<AisKind>)>;

class ReferenceEngine : public BYESubmissionEngine {
public:
    explicit ReferenceEngine(BQueryViewTable* session, std::string alias = "kovadb",
                             std::shared_ptr<SubmissionTransport> transport = nullptr);
    ReferenceEngine(const ReferenceEngine&) = delete;
    ReferenceEngine& operator=(const ReferenceEngine&) = delete;

    void SetYEYear(int year) override { year_ = year; }
    void SetYEEmployerId(const std::string& employerId) override { employerId_ = employerId; }
    void SetYESubmissionType(const std::string& type) override { type_ = type; }
    void SetYEIgnoreChanges(bool ignoreChanges) override { ignoreChanges_ = ignoreChanges; }
    void SetIsDirectSubmit(bool directSubmit) override { directSubmit_ = directSubmit; }
    void SetSubmitUserIDType(const std::string& type) override { submitUserIdType_ = type; }
    void SetSubmitUserID(const std::string& userId) override { submitUserId_ = userId; }
    void SetSubmitReportPath(const std::string& path) override { reportPath_ = path; }

    int GenerateViewTables() override;
    int GenerateSubmittedViewTables() override;
    int ExecuteDirectSubmit(const std::string& file, const std::string& formType,
                            int validateOnly) override;
    bool HasErrors() const override { return hasErrors_; }
    bool HasWarnings() const override { return hasWarnings_; }
    void DirectSubmitAppendLog(LogSink* memo, const std::string& name) override;
    int SubmitRecords(bool original, bool allRun) override;
    int CopyRecords(int from, int to) override;
    std::string LastDatabaseFault() const override { return lastDatabaseFault_; }
    std::vector<AmountFault> AmountFaults() const override { return amountFaults_; }

    void SetTransport(std::shared_ptr<SubmissionTransport> transport);
    void SetFileCheck(AisFileCheck check);

    // The engine's log since it was made (every call's failures included) and
    // the last failure alone ("" when the last call succeeded).
    const StringList& Log() const { return log_; }
    const std::string& LastError() const { return lastError_; }

private:
    enum class Views { Live, Amendment, Submitted };
    int BuildViews(const char* call, Views kind);
    int Fail(const std::string& message);
    // Fail, for a fault of the database: LastDatabaseFault() tells it too.
    int FailDatabase(const std::string& message);
    bool CheckSetUp(const char* call, bool needType);
    int BasisYear() const;

    BQueryViewTable* session_;
    std::string alias_;
    std::shared_ptr<SubmissionTransport> transport_;
    AisFileCheck fileCheck_;

    int year_ = 0;
    std::string employerId_;
    std::string type_;
    bool ignoreChanges_ = true;
    bool directSubmit_ = false;
    std::string submitUserIdType_;
    std::string submitUserId_;
    std::string reportPath_;

    bool hasErrors_ = false;
    bool hasWarnings_ = false;
    StringList submissionRecord_;  // the last ExecuteDirectSubmit, for DirectSubmitAppendLog
    StringList log_;
    std::string lastError_;
    std::string lastDatabaseFault_;
    std::vector<AmountFault> amountFaults_;
};

}  // namespace iras
