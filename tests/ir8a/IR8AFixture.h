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
#include "submission/ir8a/RIR8AeSubmission.h"

namespace iras::testing {

inline std::string ReadBytes(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

// The records of a return file, split at CR LF; a last record without one fails.
inline std::vector<std::string> Records(const std::string& bytes) {
    std::vector<std::string> records;
    for (std::size_t start = 0, end; start < bytes.size(); start = end + 2) {
        end = bytes.find("\r\n", start);
        if (end == std::string::npos) { ADD_FAILURE() << "last record is not ended by CR LF"; break; }
        records.push_back(bytes.substr(start, end - start));
    }
    return records;
}

// A record of blanks with texts at 1-based positions, as the layout tables give them.
inline std::string Layout(std::initializer_list<std::pair<int, std::string>> fields) {
    std::string record(1200, ' ');
    for (const auto& [position, text] : fields) record.replace(position - 1, text.size(), text);
    return record;
}

inline std::string Span(const std::string& record, int first, int last) {
    return record.substr(first - 1, last - first + 1);
}

// Records every call in order ("SubmitRecords(true, false)") and answers as scripted.
struct RecordingEngine : BYESubmissionEngine {
    struct Script {
        std::vector<std::string> calls;
        int generate = 1, execute = 1, submit = 1;
        bool errors = false, warnings = false;
        std::function<void(int, const std::string&, const std::string&)> buildViews;
    };
    explicit RecordingEngine(std::shared_ptr<Script> s) : script(std::move(s)) {}
    void Call(const std::string& line) { script->calls.push_back(line); }
    static std::string B(bool b) { return b ? "true" : "false"; }

    void SetYEYear(int y) override { year = y, Call("SetYEYear(" + std::to_string(y) + ")"); }
    void SetYEEmployerId(const std::string& id) override { employer = id, Call("SetYEEmployerId(" + id + ")"); }
    void SetYESubmissionType(const std::string& t) override { type = t, Call("SetYESubmissionType(" + t + ")"); }
    void SetYEIgnoreChanges(bool b) override { Call("SetYEIgnoreChanges(" + B(b) + ")"); }
    void SetIsDirectSubmit(bool b) override { Call("SetIsDirectSubmit(" + B(b) + ")"); }
    void SetSubmitUserIDType(const std::string& t) override { Call("SetSubmitUserIDType(" + t + ")"); }
    void SetSubmitUserID(const std::string& id) override { Call("SetSubmitUserID(" + id + ")"); }
    void SetSubmitReportPath(const std::string& p) override { Call("SetSubmitReportPath(" + p + ")"); }
    int GenerateViewTables() override {
        Call("GenerateViewTables()");
        if (script->generate != 0 && script->buildViews) script->buildViews(year, employer, type);
        return script->generate;
    }
    int ExecuteDirectSubmit(const std::string& file, const std::string& form, int validateOnly) override {
        Call("ExecuteDirectSubmit(" + file + ", " + form + ", " + std::to_string(validateOnly) + ")");
        return script->execute;
    }
    bool HasErrors() const override { return script->errors; }
    bool HasWarnings() const override { return script->warnings; }
    void DirectSubmitAppendLog(LogSink* memo, const std::string& name) override {
        Call("DirectSubmitAppendLog(" + name + ")");
        memo->Append("engine record for " + name);
    }
    int SubmitRecords(bool original, bool allRun) override {
        Call("SubmitRecords(" + B(original) + ", " + B(allRun) + ")");
        return script->submit;
    }
    int CopyRecords(int, int) override { return 1; }

    std::shared_ptr<Script> script;
    int year = 0;
    std::string employer, type;
};

inline DateTime IR8AClock() { return DateTime{Date{2024, 3, 1}, 9, 5, 7}; }

class IR8ATest : public ::testing::Test {
protected:
    void SetUp() override {
        SetClockForTesting(&IR8AClock);
        static std::atomic<int> counter{0};
        root = std::filesystem::temp_directory_path() /
               ("ir8a-test-" + std::to_string(::getpid()) + "-" + std::to_string(counter++));
        std::filesystem::remove_all(root);
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
