// What the Appendix 8A tests share: a new payroll database per test (schema
// and keyword codes, no sample data) under "kovadb" with one hand-made
// employer; a session whose engine records its calls and builds the view
// tables as plain copies of the employer's rows; a fixed clock; and helpers
// to lay out expected records by their 1-based positions.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "platform/database/Query.h"
#include "platform/host/HostFunctions.h"
#include "submission/a8a/A8ALayout.h"
#include "submission/a8a/RA8AeSubmission.h"
#include "tests/support/ReturnTestSupport.h"

namespace iras::testing {

// An Appendix 8A detail record of blanks with texts at 1-based positions.
inline std::string Detail(std::initializer_list<std::pair<int, std::string>> fields) {
    return RecordOf(a8a::kRecordWidth, fields);
}
inline std::string Header(std::initializer_list<std::pair<int, std::string>> fields) {
    return RecordOf(a8a::kHeaderWidth, fields);
}

inline DateTime A8AClock() { return DateTime{Date{2024, 3, 1}, 9, 5, 7}; }

class A8ATest : public ::testing::Test {
protected:
    void SetUp() override {
        SetClockForTesting(&A8AClock);
        root = folder.Path();
        std::filesystem::create_directories(root / "run");
        OpenPayroll(root / "payroll.db", false);
        Sql("INSERT INTO YEEmployer (YEEmployerId, ERName1, ERName2, EmployerSource, PayerID, TaxRefNo,"
            " AuthorisedName, Designation, TelephoneNo, EmailAddress, DivisionBranch) VALUES"
            " ('ACME', 'O''Brien;Trading^', 'Pte. Ltd.', 'PrivateSector', 'UEN', '201912345K', 'Tan Ah Kow',"
            " 'Finance Manager', '61234567', 'payroll@acme.com.sg', 'Head Office');"
            "INSERT INTO YEGlobal (YEGlobalId, YEYear, YEGlobalType) VALUES (1, 2023, 'CurIR8A');");
        script->buildViews = [this](int year, const std::string& employer, const std::string&) {
            BuildViews(year, employer);
        };
        session.SetEngineFactory([this](BQueryViewTable*) -> std::unique_ptr<BYESubmissionEngine> {
            return std::make_unique<RecordingEngine>(script);
        });
    }
    void TearDown() override {
        SetClockForTesting(nullptr);
        db::ConnectionRegistry::Unregister("kovadb");
    }

    static void Sql(const std::string& text) { db::ExecScript("kovadb", text); }
    std::string View(const std::string& base) const {
        return _GetViewTableName(base, session.sGetIPAddress(), session.sGetUserID());
    }

    // The view tables as an engine makes them: the employer's rows of the year.
    void BuildViews(int year, const std::string& employer) {
        const std::string y = std::to_string(year), a = View("ViewYEEmployee"), b = View("ViewA8A"),
                          c = View("ViewA8AS2S3");
        Sql("DROP TABLE IF EXISTS " + a + "; CREATE TABLE " + a + " AS SELECT * FROM YEEmployee WHERE YEEmployerId = '" +
            employer + "' AND YEYear = " + y + "; DROP TABLE IF EXISTS " + b + "; CREATE TABLE " + b +
            " AS SELECT * FROM A8A WHERE YEYear = " + y + "; DROP TABLE IF EXISTS " + c + "; CREATE TABLE " + c +
            " AS SELECT * FROM A8AS2S3 WHERE YEYear = " + y + ";");
    }

    // One employee of 2023 (Employee, YEEmployee and A8A rows) whose A8A row
    // has a total benefit of 100 and one employee sharing the quarters.
    static void AddEmployee(int id, const std::string& taxNo, const std::string& name) {
        const std::string key = std::to_string(id);
        Sql("INSERT INTO Employee (EmployeeSysId, EmployeeCode, PersonalSysId) VALUES (" + key + ", 'E" + key +
            "', " + key + "); INSERT INTO YEEmployee (YEEmployerId, YEYear, PersonalSysId, CurrentYEGlobalId,"
            " PayeeIDType, TaxNo, EEName1) VALUES ('ACME', 2023, " + key + ", 1, 'NRIC', '" + taxNo + "', '" +
            name + "'); INSERT INTO A8A (PersonalSysId, YEYear, NoOfEESharingQtr, TotalBenefitInKind) VALUES (" +
            key + ", 2023, 1, 100);");
    }

    std::unique_ptr<RA8AeSubmission> MakeJob() {
        IRASSubmissionParameters p = params;
        p.ignoreChanges = p.original;
        auto job = std::make_unique<RA8AeSubmission>(&session, p, (root / "run").string(), "");
        job->SetLogMemo(&log), job->SetInternalMemo(&debug), job->SetEmployeeErrorLog(&employeeErrors);
        job->SetBasisYear(2023);
        return job;
    }

    // Validates, generates, and reads back the records of the file.
    std::vector<std::string> Generate(RA8AeSubmission& job) {
        EXPECT_NE(job.ValidateA8AFile(), 0) << ::testing::PrintToString(employeeErrors);
        EXPECT_NE(job.ProcessA8AeSubmission(), 0) << ::testing::PrintToString(log.View());
        return Records(ReadBytes(job.GetOutputFilePath()));
    }

    static bool Has(const LogSink& sink, const std::string& line) {
        const auto lines = sink.Lines();
        return std::find(lines.begin(), lines.end(), line) != lines.end();
    }

    ScratchFolder folder{"a8a-test"};
    std::filesystem::path root;
    BQueryViewTable session{SessionSettings{"PAYADMIN", "192.168.1.20", 2023}};
    std::shared_ptr<RecordingEngine::Script> script = std::make_shared<RecordingEngine::Script>();
    IRASSubmissionParameters params{2, "ACME", 2023, true, true, true, false, false, "", ""};
    MemoryLog log, debug;
    StringList employeeErrors;
};

}  // namespace iras::testing
