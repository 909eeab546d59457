// What the tests of every return share: a new payroll database per test
// (schema and keyword codes, no sample data) under "kovadb" with one
// hand-made employer ACME and the YEGlobal rows of 2023 (current) and 2024
// (supplementary); a session whose engine records its calls and builds the
// view tables as plain copies of the employer's rows of the year; a fixed
// clock (1 March 2024, 09:05:07); the logs a job writes to.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/database/Query.h"
#include "platform/database/Schema.h"
#include "platform/host/HostFunctions.h"
#include "tests/support/ReturnTestSupport.h"

namespace iras::testing {

inline DateTime ReturnTestClock() { return DateTime{Date{2024, 3, 1}, 9, 5, 7}; }

// The employer row with the ten columns every return's header reads, and
// any further "column" = value pairs after them.
inline std::string EmployerRowSql(const std::string& quotedName1, const std::string& quotedName2,
                                  const std::string& extraColumns = "", const std::string& extraValues = "") {
    return "INSERT INTO YEEmployer (YEEmployerId, ERName1, ERName2, EmployerSource, PayerID, TaxRefNo,"
           " AuthorisedName, Designation, TelephoneNo, EmailAddress, DivisionBranch" + extraColumns +
           ") VALUES ('ACME', " + quotedName1 + ", " + quotedName2 +
           ", 'PrivateSector', 'UEN', '201912345K', 'Tan Ah Kow', 'Finance Manager', '61234567',"
           " 'payroll@acme.com.sg', 'Head Office'" + extraValues + ");";
}

class ReturnFixture : public ::testing::Test {
public:  // the helpers serve tests' free functions too
    // returnTables: the return's own tables, copied into view tables named
    // "View" + table; employerSql: the employer row (EmployerRowSql).
    ReturnFixture(const std::string& scratchName, std::vector<std::string> returnTables, std::string employerSql)
        : folder(scratchName), root(folder.Path()), returnTables_(std::move(returnTables)),
          employerSql_(std::move(employerSql)) {}

    void SetUp() override {
        SetClockForTesting(&ReturnTestClock);
        std::filesystem::create_directories(root / "run");
        db::CreateDatabase(root / "payroll.db", false);
        db::ConnectionRegistry::Register("kovadb", {"sqlite", (root / "payroll.db").string(), false});
        // A scratch database: no waiting for the disk after every row.
        db::Query pragma("kovadb");
        pragma.SetSQL("PRAGMA synchronous = OFF");
        pragma.ExecSQL();
        Sql(employerSql_ +
            "INSERT INTO YEGlobal (YEGlobalId, YEYear, YEGlobalType) VALUES (1, 2023, 'CurIR8A'), (2, 2024, 'SupIR8A');");
        script->buildViews = [this](int year, const std::string& employer, const std::string& type) {
            BuildViews(year, employer, type);
            if (afterViews) afterViews();
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
    // The session user's view table of a base name such as "ViewIR8S".
    std::string View(const std::string& base) const {
        return _GetViewTableName(base, session.sGetIPAddress(), session.sGetUserID());
    }

    // The view tables as an engine makes them: the employer's people of the
    // year, and their rows of each return table (rowFilter narrows them).
    void CopyViews(int year, const std::string& employer, const std::string& rowFilter = "") {
        const std::string y = std::to_string(year);
        std::string quoted = employer;
        for (auto at = quoted.find('\''); at != std::string::npos; at = quoted.find('\'', at + 2)) quoted.insert(at, "'");
        const std::string people =
            "SELECT PersonalSysId FROM YEEmployee WHERE YEEmployerId = '" + quoted + "' AND YEYear = " + y;
        std::string sql = "DROP TABLE IF EXISTS " + View("ViewYEEmployee") + "; CREATE TABLE " +
                          View("ViewYEEmployee") + " AS SELECT * FROM YEEmployee WHERE YEEmployerId = '" + quoted +
                          "' AND YEYear = " + y + ";";
        for (const auto& table : returnTables_)
            sql += "DROP TABLE IF EXISTS " + View("View" + table) + "; CREATE TABLE " + View("View" + table) +
                   " AS SELECT * FROM " + table + " WHERE YEYear = " + y + " AND PersonalSysId IN (" + people + ")" +
                   rowFilter + ";";
        Sql(sql);
    }
    virtual void BuildViews(int year, const std::string& employer, const std::string& /*type*/) {
        CopyViews(year, employer);
    }

    // A job of the fixture's session writing to the fixture's logs.
    template <class Job>
    std::unique_ptr<Job> Wire(std::unique_ptr<Job> job, int basisYear) {
        job->SetLogMemo(&log), job->SetInternalMemo(&debug), job->SetEmployeeErrorLog(&employeeErrors);
        job->SetBasisYear(basisYear);
        return job;
    }

    static bool Has(const LogSink& sink, const std::string& line) {
        const auto lines = sink.Lines();
        return std::find(lines.begin(), lines.end(), line) != lines.end();
    }

    ScratchFolder folder;
    std::filesystem::path root;
    BQueryViewTable session{SessionSettings{"PAYADMIN", "192.168.1.20", 2023}};
    std::shared_ptr<RecordingEngine::Script> script = std::make_shared<RecordingEngine::Script>();
    std::function<void()> afterViews;
    IRASSubmissionParameters params{2, "ACME", 0, true, true, true, false, false, "", ""};
    MemoryLog log, debug;
    StringList employeeErrors;

private:
    std::vector<std::string> returnTables_;
    std::string employerSql_;
};

}  // namespace iras::testing
