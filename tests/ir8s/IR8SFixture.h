// What the IR8S tests share: a new payroll database per test (schema and
// keyword codes, no sample data) under "kovadb" with one hand-made employer;
// a session whose engine records its calls and builds the four view tables
// as plain copies of the employer's rows of the year; a fixed clock; helpers
// that add an employee with its Section A and Section B rows.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include "platform/database/Query.h"
#include "platform/database/Schema.h"
#include "platform/host/HostFunctions.h"
#include "submission/ir8s/IR8SLayout.h"
#include "submission/ir8s/RIR8SeSubmission.h"
#include "tests/support/ReturnTestSupport.h"

namespace iras::testing {

inline DateTime IR8SClock() { return DateTime{Date{2024, 3, 1}, 9, 5, 7}; }

class IR8STest : public ::testing::Test {
public:  // the helpers serve the tests' free functions too
    void SetUp() override {
        SetClockForTesting(&IR8SClock);
        db::CreateDatabase(folder.Path() / "payroll.db", false);
        db::ConnectionRegistry::Register("kovadb", {"sqlite", (folder.Path() / "payroll.db").string(), false});
        std::filesystem::create_directories(folder.Path() / "run");
        // A scratch database: no waiting for the disk after every row.
        for (const char* pragma : {"PRAGMA synchronous = OFF", "PRAGMA journal_mode = MEMORY"}) {
            db::Query setting("kovadb");
            setting.SetSQL(pragma);
            setting.ExecSQL();
        }
        Sql("INSERT INTO YEEmployer (YEEmployerId, ERName1, ERName2, EmployerSource, PayerID, TaxRefNo,"
            " AuthorisedName, Designation, TelephoneNo, EmailAddress, DivisionBranch) VALUES"
            " ('ACME', 'O''Brien; Trading^', 'Pte. Ltd.', 'PrivateSector', 'UEN', '201912345K', 'Tan Ah Kow',"
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
        return _GetViewTableName("View" + base, session.sGetIPAddress(), session.sGetUserID());
    }

    // The view tables as an engine makes them: the employer's rows of the year.
    void BuildViews(int year, const std::string& employer) {
        const std::string y = std::to_string(year);
        const std::string people = "(SELECT PersonalSysId FROM YEEmployee WHERE YEEmployerId = '" + employer +
                                   "' AND YEYear = " + y + ")";
        std::string sql = "DROP TABLE IF EXISTS " + View("YEEmployee") + "; CREATE TABLE " + View("YEEmployee") +
                          " AS SELECT * FROM YEEmployee WHERE YEEmployerId = '" + employer + "' AND YEYear = " + y + ";";
        for (const char* table : {"IR8S", "IR8SA", "IR8SC"}) {
            sql += "DROP TABLE IF EXISTS " + View(table) + "; CREATE TABLE " + View(table) + " AS SELECT * FROM " +
                   table + " WHERE YEYear = " + y + " AND PersonalSysId IN " + people + ";";
        }
        Sql(sql);
        if (afterViews) afterViews();
    }

    // An employee of ACME in 2023 with an IR8S row (flag Excess CPF set);
    // irs8: further "column = value" settings of the IR8S row.
    static void AddEmployee(int id, const std::string& idType, const std::string& taxNo, const std::string& name1,
                            const std::string& name2 = "", const std::string& ir8s = "") {
        const std::string key = std::to_string(id);
        Sql("INSERT INTO Employee (EmployeeSysId, EmployeeCode, PersonalSysId) VALUES (" + key + ", 'E" + key +
            "', " + key + ");"
            "INSERT INTO YEEmployee (YEEmployerId, YEYear, PersonalSysId, CurrentYEGlobalId, PayeeIDType, TaxNo,"
            " EEName1, EEName2) VALUES ('ACME', 2023, " + key + ", 1, '" + idType + "', '" + taxNo + "', '" +
            name1 + "', '" + name2 + "');"
            "INSERT INTO IR8S (PersonalSysId, YEYear, FlagExcessCPF) VALUES (" + key + ", 2023, 'Y');" +
            (ir8s.empty() ? "" : "UPDATE IR8S SET " + ir8s + " WHERE PersonalSysId = " + key + ";"));
    }
    // Section A row `order` of an employee: the six amounts in column order.
    static void AddMonth(int id, int order, const std::string& amounts) {
        Sql("INSERT INTO IR8SA (PersonalSysId, YEYear, IR8SOrder, OrdWages, ContriOrdERCPF, ContriOrdEECPF, AddWages,"
            " ContriAddERCPF, ContriAddEECPF) VALUES (" + std::to_string(id) + ", 2023, " + std::to_string(order) +
            ", " + amounts + ");");
    }
    // rows Section A rows of an employee, all alike.
    static void AddMonths(int id, int rows, const std::string& amounts = "2500, 425, 500, 0, 0, 0") {
        for (int order = 1; order <= rows; ++order) AddMonth(id, order, amounts);
    }
    // A Section B payment: amount, from, to, paid, ER refund, ER interest,
    // ER date, EE refund, EE interest, EE date.
    static void AddPayment(int id, int refund, const std::string& values) {
        Sql("INSERT INTO IR8SC (PersonalSysId, YEYear, RefundSysId, AddWageAmt, AddWageFrom, AddWageTo,"
            " AddWagePaidDate, ERContribution, ERInterest, ERDate, EEContribution, EEInterest, EEDate) VALUES (" +
            std::to_string(id) + ", 2023, " + std::to_string(refund) + ", " + values + ");");
    }

    std::unique_ptr<RIR8SeSubmission> MakeJob(bool original = true, int basisYear = 2023) {
        IRASSubmissionParameters p = params;
        p.original = original;
        p.ignoreChanges = original;
        p.year = basisYear;
        auto job = std::make_unique<RIR8SeSubmission>(&session, p, (folder.Path() / "run").string(), "");
        job->SetLogMemo(&log), job->SetInternalMemo(&debug), job->SetEmployeeErrorLog(&employeeErrors);
        job->SetExcessCPF(true);
        job->SetBasisYear(basisYear);
        return job;
    }

    // Validates, generates, and reads back the records of the file.
    std::vector<std::string> Generate(RIR8SeSubmission& job) {
        EXPECT_NE(job.ValidateIR8SFile(), 0) << ::testing::PrintToString(employeeErrors);
        EXPECT_NE(job.ProcessIR8SeSubmission(), 0) << ::testing::PrintToString(log.View());
        return Records(ReadBytes(job.GetOutputFilePath()));
    }

    static bool Has(const LogSink& sink, const std::string& line) {
        const auto lines = sink.Lines();
        return std::find(lines.begin(), lines.end(), line) != lines.end();
    }

    ScratchFolder folder{"ir8s-test"};
    BQueryViewTable session{SessionSettings{"PAYADMIN", "192.168.1.20", 2023}};
    std::shared_ptr<RecordingEngine::Script> script = std::make_shared<RecordingEngine::Script>();
    std::function<void()> afterViews;
    IRASSubmissionParameters params{2, "ACME", 2023, true, true, true, false, false, "", ""};
    MemoryLog log, debug;
    StringList employeeErrors;
};

}  // namespace iras::testing
