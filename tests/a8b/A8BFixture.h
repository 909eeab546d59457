// What the Appendix 8B tests share: a new payroll database per test (schema
// and keyword codes, no sample data) under "kovadb" with one hand-made
// employer incorporated on 15 April 2019; a session of year-end year 2023
// whose engine records its calls and builds the three view tables as plain
// copies of the employer's rows; a fixed clock (1 March 2024); helpers to add
// employees and share-plan rows and to read back the file.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "platform/database/Query.h"
#include "platform/database/Schema.h"
#include "platform/host/HostFunctions.h"
#include "submission/a8b/A8BLayout.h"
#include "submission/a8b/RA8BeSubmission.h"
#include "tests/support/ReturnTestSupport.h"

namespace iras::testing {

inline std::string A8BRecordOf(std::initializer_list<std::pair<int, std::string>> fields) {
    return RecordOf(a8b::kRecordWidth, fields);
}

inline DateTime A8BClock() { return DateTime{Date{2024, 3, 1}, 9, 5, 7}; }

class A8BTest : public ::testing::Test {
protected:
    void SetUp() override {
        SetClockForTesting(&A8BClock);
        db::CreateDatabase(folder.Path() / "payroll.db", false);
        db::ConnectionRegistry::Register("kovadb", {"sqlite", (folder.Path() / "payroll.db").string(), false});
        std::filesystem::create_directories(folder.Path() / "run");
        Sql("INSERT INTO YEEmployer (YEEmployerId, ERName1, ERName2, EmployerSource, PayerID, TaxRefNo,"
            " AuthorisedName, Designation, TelephoneNo, EmailAddress, DivisionBranch, DateIncorporation) VALUES"
            " ('ACME', 'O''Neil; ^Co', 'Pte', 'PrivateSector', 'UEN', '201912345K', 'Tan Ah Kow',"
            " 'Finance Manager', '61234567', 'payroll@acme.com.sg', 'Head Office', '2019-04-15');"
            "INSERT INTO YEGlobal (YEGlobalId, YEYear, YEGlobalType) VALUES (1, 2023, 'CurIR8A');");
        script->buildViews = [this](int year, const std::string& employer, const std::string&) {
            const std::string y = std::to_string(year), a = View("ViewYEEmployee"), b = View("ViewA8B"),
                              c = View("ViewA8BRecord");
            Sql("DROP TABLE IF EXISTS " + a + "; CREATE TABLE " + a +
                " AS SELECT * FROM YEEmployee WHERE YEEmployerId = '" + employer + "' AND YEYear = " + y +
                "; DROP TABLE IF EXISTS " + b + "; CREATE TABLE " + b + " AS SELECT * FROM A8B WHERE YEYear = " + y +
                "; DROP TABLE IF EXISTS " + c + "; CREATE TABLE " + c +
                " AS SELECT * FROM A8BRecord WHERE YEYear = " + y + ";");
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

    // An employee of year 2023 with its A8B row (totals as given, "" for none).
    static void Employee(int id, const std::string& taxNo, const std::string& name, const std::string& totals = "",
                         const std::string& employeeSet = "") {
        Sql(EmployeeSql(id, taxNo, name, totals, employeeSet));
    }
    static std::string EmployeeSql(int id, const std::string& taxNo, const std::string& name,
                                   const std::string& totals = "", const std::string& employeeSet = "") {
        const std::string key = std::to_string(id);
        return ("INSERT INTO Employee (EmployeeSysId, EmployeeCode, PersonalSysId) VALUES (" + key + ", 'E" + key +
            "', " + key + "); INSERT INTO YEEmployee (YEEmployerId, YEYear, PersonalSysId, CurrentYEGlobalId,"
            " PayeeIDType, TaxNo, EEName1, EEName2, IRASNationalityCode, Gender, DOB) VALUES ('ACME', 2023, " + key +
            ", 1, 'NRIC', '" + taxNo + "', '" + name + "', '', '301', 'F', '1985-07-14');"
            "INSERT INTO A8B (PersonalSysId, YEYear, GrandTotalStockGains) VALUES (" + key + ", 2023, 1000);" +
            (totals.empty() ? "" : "UPDATE A8B SET " + totals + " WHERE PersonalSysId = " + key + ";") +
            (employeeSet.empty() ? "" : "UPDATE YEEmployee SET " + employeeSet + " WHERE PersonalSysId = " + key + ";"));
    }

    // A share-plan row of employee id in the section of optionType: a clean
    // ESOP row granted in 2020 (Section D: 2010) and exercised in 2023, with
    // the SET clause `set` ("TypePlanGranted = 'ESOW', ...") over it.
    static void Row(int id, int rowId, const std::string& optionType, const std::string& set = "") {
        Sql(RowSql(id, rowId, optionType, set));
    }
    static std::string RowSql(int id, int rowId, const std::string& optionType, const std::string& set = "") {
        const std::string key = std::to_string(id), row = std::to_string(rowId);
        return ("INSERT INTO A8BRecord (PersonalSysId, YEYear, A8BRecordSysId, StockOptionType, CompanyIDType, RCBNo,"
            " CompanyName, TypePlanGranted, DateStockGranted, DateExerciseStock, ExercisePriceStock,"
            " MktValueExerciseStock, SharesAcquired, NoTaxExempt, StockGains) VALUES (" + key + ", 2023, " + row +
            ", '" + optionType + "', 'CompanyROC', '201012345Z', 'Granting Co Pte Ltd', 'ESOP', '2020-01-15',"
            " '2023-06-03', 1, 1.1, 1000, 100, 100);" +
            // A start-up's plan of 2010, granted within its first three years.
            (optionType == "NSOP" ? "UPDATE A8BRecord SET DateStockGranted = '2010-01-04', DateIncorporation ="
                                    " '2009-06-01' WHERE PersonalSysId = " + key + " AND A8BRecordSysId = " + row + ";"
                                  : "") +
            (set.empty() ? "" : "UPDATE A8BRecord SET " + set + " WHERE PersonalSysId = " + key +
                                    " AND A8BRecordSysId = " + row + ";"));
    }

    std::unique_ptr<RA8BeSubmission> MakeJob(int basisYear = 2023) {
        IRASSubmissionParameters p = params;
        p.ignoreChanges = p.original;
        p.year = basisYear;
        auto job = std::make_unique<RA8BeSubmission>(&session, p, (folder.Path() / "run").string(), "");
        job->SetLogMemo(&log), job->SetInternalMemo(&debug), job->SetEmployeeErrorLog(&employeeErrors);
        job->SetBasisYear(basisYear);
        return job;
    }

    // Validates, generates, and reads back the records of the file.
    std::vector<std::string> Generate(RA8BeSubmission& job) {
        EXPECT_NE(job.ValidateA8BFile(), 0) << "validation refused";
        EXPECT_NE(job.ProcessA8BeSubmission(), 0) << "no file made";
        return Records(ReadBytes(job.GetOutputFilePath()));
    }

    ScratchFolder folder{"a8b-test"};
    BQueryViewTable session{SessionSettings{"PAYADMIN", "192.168.1.20", 2023}};
    std::shared_ptr<RecordingEngine::Script> script = std::make_shared<RecordingEngine::Script>();
    IRASSubmissionParameters params{2, "ACME", 0, true, true, true, false, false, "", ""};
    MemoryLog log, debug;
    StringList employeeErrors;
};

}  // namespace iras::testing
