// What the IR8A tests share: a new payroll database per test (schema and
// keyword codes, no sample data) under "kovadb" with one hand-made employer;
// a session whose engine records its calls and builds the view tables as
// plain copies of the employer's rows; a fixed clock; and helpers to lay out
// expected records by their 1-based positions and read back the file.
#pragma once

#include <gtest/gtest.h>

#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "platform/database/Query.h"
#include "platform/database/Schema.h"
#include "platform/host/HostFunctions.h"
#include "submission/ir8a/IR8ALayout.h"
#include "submission/ir8a/RIR8AeSubmission.h"
#include "tests/support/ReturnTestSupport.h"

namespace iras::testing {

// An IR8A record of blanks with texts at 1-based positions.
inline std::string Layout(std::initializer_list<std::pair<int, std::string>> fields) {
    return RecordOf(ir8a::kRecordWidth, fields);
}

inline DateTime IR8AClock() { return DateTime{Date{2024, 3, 1}, 9, 5, 7}; }

class IR8ATest : public ::testing::Test {
protected:
    void SetUp() override {
        SetClockForTesting(&IR8AClock);
        root = UniqueTempFolder("ir8a-test");
        std::filesystem::create_directories(root / "run");
        db::CreateDatabase(root / "payroll.db", false);
        db::ConnectionRegistry::Register("kovadb", {"sqlite", (root / "payroll.db").string(), false});
        Sql("INSERT INTO YEEmployer (YEEmployerId, ERName1, ERName2, EmployerSource, PayerID, TaxRefNo,"
            " AuthorisedName, Designation, TelephoneNo, EmailAddress, DivisionBranch) VALUES"
            " ('ACME', 'O''Brien Trading', 'Pte. Ltd.', 'PrivateSector', 'UEN', '201912345K', 'Tan Ah Kow',"
            " 'Finance Manager', '61234567', 'payroll@acme.com.sg', 'Head Office');"
            "INSERT INTO YEGlobal (YEGlobalId, YEYear, YEGlobalType) VALUES (1, 2023, 'CurIR8A'), (2, 2024, 'SupIR8A');");
        script->buildViews = [this](int year, const std::string& employer, const std::string& type) {
            BuildViews(year, employer, type);
        };
        session.SetEngineFactory([this](BQueryViewTable*) -> std::unique_ptr<BYESubmissionEngine> {
            return std::make_unique<RecordingEngine>(script);
        });
    }
    void TearDown() override {
        SetClockForTesting(nullptr);
        db::ConnectionRegistry::Unregister("kovadb");
        std::error_code ignored;
        std::filesystem::remove_all(root, ignored);
    }

    static void Sql(const std::string& text) { db::ExecScript("kovadb", text); }
    std::string View(const std::string& base) const {
        return _GetViewTableName(base, session.sGetIPAddress(), session.sGetUserID());
    }

    // The view tables as an engine makes them: the employer's rows of the year.
    void BuildViews(int year, std::string employer, const std::string& type) {
        for (auto at = employer.find('\''); at != std::string::npos; at = employer.find('\'', at + 2))
            employer.insert(at, "'");
        const std::string y = std::to_string(year), a = View("ViewYEEmployee"), b = View("ViewIR8A");
        Sql("DROP TABLE IF EXISTS " + a + "; CREATE TABLE " + a + " AS SELECT * FROM YEEmployee WHERE YEEmployerId = '" +
            employer + "' AND YEYear = " + y + "; DROP TABLE IF EXISTS " + b + "; CREATE TABLE " + b +
            " AS SELECT * FROM IR8A WHERE YEYear = " + y + " AND IR8AType = '" + type + "';");
        if (afterViews) afterViews();
    }

    std::unique_ptr<RIR8AeSubmission> MakeJob(const std::string& type = "CurIR8A", int basisYear = 2023) {
        IRASSubmissionParameters p = params;
        p.ignoreChanges = p.original;
        p.year = type == "SupIR8A" ? basisYear + 1 : basisYear;
        auto job = std::make_unique<RIR8AeSubmission>(
            &session, p, runFolder.empty() ? (root / "run").string() : runFolder, copyFolder);
        job->SetLogMemo(&log), job->SetInternalMemo(&debug), job->SetEmployeeErrorLog(&employeeErrors);
        job->SetIR8AType(type), job->SetBasisYear(basisYear);
        return job;
    }

    // Validates, generates, and reads back the records of the file.
    std::vector<std::string> Generate(RIR8AeSubmission& job) {
        EXPECT_NE(job.ValidateIR8AFile(), 0) << "validation refused";
        EXPECT_NE(job.ProcessIR8AeSubmission(), 0) << "no file made";
        return Records(ReadBytes(job.GetOutputFilePath()));
    }

    static bool Has(const LogSink& sink, const std::string& line) {
        const auto lines = sink.Lines();
        return std::find(lines.begin(), lines.end(), line) != lines.end();
    }
    // The lines of the run log from the first one equal to line.
    StringList LogFrom(const std::string& line, std::ptrdiff_t count) const {
        const auto at = std::find(log.View().begin(), log.View().end(), line);
        return StringList(at, at + std::min(count, log.View().end() - at));
    }

    std::filesystem::path root;
    BQueryViewTable session{SessionSettings{"PAYADMIN", "192.168.1.20", 2023}};
    std::shared_ptr<RecordingEngine::Script> script = std::make_shared<RecordingEngine::Script>();
    std::function<void()> afterViews;
    IRASSubmissionParameters params{2, "ACME", 0, true, true, true, false, false, "", ""};
    std::string runFolder, copyFolder;
    MemoryLog log, debug;
    StringList employeeErrors;
};

}  // namespace iras::testing
