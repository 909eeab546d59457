// iras-yearend as a new user meets it: what the arguments mean, which
// mistakes are refused before anything runs, and which exit status each
// ending gives, tried on the sample database.
#include <gtest/gtest.h>

#include <sqlite3.h>

#include <algorithm>
#include <chrono>
#include <sstream>
#include <thread>

#include "apps/cli/CommandLine.h"
#include "apps/cli/YearEndTool.h"
#include "platform/ais/AisFileChecker.h"
#include "tests/run/RunFakes.h"

namespace iras::testing {
namespace {

using Args = std::vector<std::string>;

const Args kBase = {"--db", "p.db", "--user", "ADMIN", "--employer", "E", "--year", "2024"};

Args With(Args head, const Args& tail = kBase) {
    head.insert(head.end(), tail.begin(), tail.end());
    return head;
}

TEST(ParseCommandLine, DefaultsAsTheFormOpensAndTakesBothSpellings) {
    // Generation opens on "All" with "Excess CPF" checked; direct submission on "Current IR8A".
    const auto generate = ParseCommandLine(With({"generate", "--type=sup-ir8a", "--no-excess-cpf"}, kBase));
    ASSERT_TRUE(generate.options) << generate.error;
    EXPECT_TRUE(generate.options->type == FileType::SupplementaryIR8A && !generate.options->ir8s.excessCPF);
    const auto defaults = ParseCommandLine(With({"generate"}));
    EXPECT_TRUE(defaults.options->type == FileType::All && defaults.options->ir8s.excessCPF);
    EXPECT_EQ(ParseCommandLine(With({"submit"})).options->type, FileType::CurrentIR8A);
    // Reset is the amendment's button: saying so is no mistake.
    EXPECT_TRUE(ParseCommandLine(With({"reset", "--type", "a8a", "--amendment"})).options);
}

TEST(ParseCommandLine, RefusesMistakesWithAMessageNamingThem) {
    const std::vector<std::pair<Args, std::string>> cases = {
        {{"generate", "--user", "ADMIN", "--employer", "E", "--year", "2024"}, "--db"},
        {{"generate", "--db", "p.db", "--user", "ADMIN", "--employer", "E"}, "--year"},
        {With({"generate"}, {"--db", "p.db", "--user", "A", "--employer", "E", "--year", "24"}), "four-digit"},
        {{"generate", "--type", "ir9"}, "ir9"},
        {{"generate", "--colour"}, "--colour"},
        {{"generate", "--amendment=yes"}, "--amendment"},
        {{"generate", "--db"}, "--db needs a value"},
        {{"generate", "--user-id", "S1"}, "--user-id"},  // a direct-submission option
        {{"init-db"}, "FILE"},
        {{"publish"}, "publish"},
        {With({"generate", "--type", "all", "--amendment"}), "Original"},
        {With({"submit", "--type", "all"}), "one return"},
        {With({"reset"}), "--type"},
        {With({"trial", "stray"}), "stray"},
        // A value forgotten, an option given twice: said, never guessed.
        {{"generate", "--db", "--user", "ADMIN", "--employer", "E", "--year", "2024"},
         "--db needs a value, not the option --user"},
        {With({"generate", "--year", "2023"}), "--year is given more than once; give it once"},
        {With({"generate", "--yes", "--yes"}), "--yes is given more than once; give it once"},
        {{"generate", "--db="}, "--db needs a value"},
    };
    for (const auto& [args, mention] : cases) {
        const auto parsed = ParseCommandLine(args);
        EXPECT_FALSE(parsed.options) << mention;
        EXPECT_NE(parsed.error.find(mention), std::string::npos) << parsed.error;
    }
}

// The sample database: employer IR8AYA2025 with year-end years 2022-2024
// (and the engine's copies, which no list shows), ERRCO whose data break
// IRAS's rules, ADMIN with every right, CLERK with the module and the
// current IR8A only; any other user has none.
class SampleDatabaseTool : public ::testing::Test {
protected:
    void SetUp() override {
        folder_ = UniqueFolder("iras-tool");
        database_ = folder_ / "sample.db";
        ASSERT_EQ(Run({"init-db", database_.string(), "--sample"}), kExitSuccess) << err_.str();
    }
    void TearDown() override {
        std::error_code ignored;
        fs::remove_all(folder_, ignored);
    }

    int Run(const Args& args) {
        out_.str("");
        err_.str("");
        std::istringstream in;
        return RunYearEndTool(args, ToolStreams{out_, err_, in, false, false});
    }
    Args RunArgs(const std::string& command, const std::string& user, const std::string& type, const Args& extra = {},
                 const std::string& year = "2024", const std::string& employer = "IR8AYA2025") const {
        const auto given = [&extra](const char* option) {
            return std::find(extra.begin(), extra.end(), option) != extra.end();
        };
        Args args = {command, "--db", database_.string(), "--user", user, "--employer", employer, "--year", year,
                     "--type", type};
        if (!given("--report-dir")) args.insert(args.end(), {"--report-dir", (folder_ / "report").string()});
        if (command == "generate" && !given("--out")) args.insert(args.end(), {"--out", (folder_ / "out").string()});
        args.insert(args.end(), extra.begin(), extra.end());
        return args;
    }
    bool Said(const std::string& text) const { return err_.str().find(text) != std::string::npos; }
    bool Logged(const std::string& text) const { return out_.str().find(text) != std::string::npos; }
    // Changes the database behind the tool's back, as a user with an SQLite
    // shell can.
    void Sql(const std::string& sql) const {
        sqlite3* handle = nullptr;
        ASSERT_EQ(sqlite3_open(database_.c_str(), &handle), SQLITE_OK);
        char* error = nullptr;
        const int result = sqlite3_exec(handle, sql.c_str(), nullptr, nullptr, &error);
        const std::string message = error != nullptr ? error : "";
        sqlite3_free(error);
        sqlite3_close(handle);
        ASSERT_EQ(result, SQLITE_OK) << message;
    }
    // What a refused run must leave as it was: the records of submissions
    // and the submitted copies of the returns (year keys of five digits).
    std::string Submitted() const {
        sqlite3* handle = nullptr;
        EXPECT_EQ(sqlite3_open(database_.c_str(), &handle), SQLITE_OK);
        std::string rows;
        const auto append = [](void* out, int count, char** values, char**) {
            auto& text = *static_cast<std::string*>(out);
            for (int i = 0; i < count; ++i) text += std::string(values[i] ? values[i] : "NULL") + "|";
            return 0;
        };
        sqlite3_exec(handle,
                     "SELECT (SELECT COUNT(*) FROM SubmittedReturnFile), (SELECT COUNT(*) FROM LastSubmission), "
                     "(SELECT COUNT(*) FROM LastSubmissionBackup)",
                     append, &rows, nullptr);
        sqlite3_exec(handle, "SELECT COUNT(*), total(GrossTotal) FROM IR8A WHERE YEYear > 9999", append, &rows, nullptr);
        sqlite3_close(handle);
        return rows;
    }
    // The files of the File Directory with a final name (no hidden temporary).
    std::vector<std::string> OutFiles() const {
        std::vector<std::string> names;
        std::error_code ignored;
        for (const auto& entry : fs::directory_iterator(folder_ / "out", ignored)) {
            names.push_back(entry.path().filename().string());
        }
        return names;
    }

    fs::path folder_, database_;
    std::ostringstream out_, err_;
};

TEST_F(SampleDatabaseTool, UsageMistakesAndRefusedRightsStopBeforeAnythingRuns) {
    EXPECT_EQ(Run({}), kExitUsage);
    EXPECT_TRUE(Said("Usage: iras-yearend COMMAND"));
    EXPECT_EQ(Run({"submit", "--help"}), kExitSuccess);
    EXPECT_NE(out_.str().find("--proceed-with-warnings"), std::string::npos);
    EXPECT_EQ(Run({"generate", "--year", "24"}), kExitUsage);

    EXPECT_EQ(Run(RunArgs("generate", "GUEST", "cur-ir8a")), kExitNoAccess);
    EXPECT_TRUE(Said("You have no access to this module"));
    // CLERK may open the module but not every return that "All" makes.
    EXPECT_EQ(Run(RunArgs("generate", "CLERK", "all")), kExitNoAccess);
    // Reset asks only for the module right, then for a confirmation nobody gives here.
    EXPECT_EQ(Run(RunArgs("reset", "CLERK", "sup-ir8a", {}, "2023")), kExitStopped);
    EXPECT_TRUE(Said("Are You Sure? No"));
    EXPECT_FALSE(fs::exists(folder_ / "report"));
}

TEST_F(SampleDatabaseTool, WhatTheFormWouldNotListOrAnUnusableFileStopsTheRunBeforeItStarts) {
    EXPECT_EQ(Run(RunArgs("generate", "ADMIN", "cur-ir8a", {}, "2024", "NOSUCHCO")), kExitUsage);
    EXPECT_TRUE(Said("\"NOSUCHCO\" is not in the database (listed: ERRCO, ERRHEAD, IR8AYA2025, ONEIL)"));
    EXPECT_EQ(Run(RunArgs("generate", "ADMIN", "cur-ir8a", {}, "2021")), kExitUsage);
    EXPECT_TRUE(Said("(listed: 2022, 2023, 2024)")) << err_.str();
    EXPECT_EQ(Run(RunArgs("generate", "ADMIN", "sup-ir8a", {}, "2024")), kExitUsage);
    EXPECT_TRUE(Said("(listed: 2021, 2022, 2023)")) << err_.str();

    const std::string types = "CORPORATE (Corporate Digital Identity), PERSONAL (Personal Digital Identity), "
                              "TAXAGENT (Tax Agent)";
    EXPECT_EQ(Run(RunArgs("validate", "ADMIN", "cur-ir8a")), kExitUsage);
    EXPECT_TRUE(Said("Missing User ID Type!") && Said(types)) << err_.str();
    EXPECT_EQ(Run(RunArgs("validate", "ADMIN", "cur-ir8a", {"--user-id-type", "SINGPASS", "--user-id", "S1"})),
              kExitUsage);
    EXPECT_TRUE(Said("\"SINGPASS\" is not in the list (" + types + ")")) << err_.str();

    // An unusable database or folder stops the run the same way.
    Args args = RunArgs("generate", "ADMIN", "cur-ir8a");
    args[2] = (folder_ / "nowhere.db").string();
    EXPECT_EQ(Run(args), kExitDatabase);
    EXPECT_TRUE(Said("nowhere.db does not exist"));
    std::ofstream(folder_ / "notes.db") << "not a folder\n";

    EXPECT_EQ(Run(RunArgs("generate", "ADMIN", "cur-ir8a", {"--out", (folder_ / "notes.db").string()})),
              kExitFileSystem);
    EXPECT_TRUE(Said("the File Directory (--out) " + (folder_ / "notes.db").string() + " is a file, not a folder."));
    EXPECT_EQ(Run(RunArgs("trial", "ADMIN", "cur-ir8a", {"--report-dir", (folder_ / "notes.db").string()})),
              kExitFileSystem);
    EXPECT_TRUE(Said("the report directory (--report-dir) " + (folder_ / "notes.db").string())) << err_.str();
    EXPECT_FALSE(fs::exists(folder_ / "report" / "2024YearEnd"));  // no run folder was made
}

TEST_F(SampleDatabaseTool, GenerateAllWritesCleanFilesTheSummaryAndTheLogs) {
    ASSERT_EQ(Run(RunArgs("generate", "ADMIN", "all")), kExitSuccess) << err_.str() << out_.str();
    const fs::path current = folder_ / "out" / "CUR_Submission(O).txt";
    ASSERT_TRUE(fs::exists(current));
    EXPECT_FALSE(CheckAisFile(current).HasErrors());
    // The clean employer's supplementary rows of year-end year 2024 pass
    // under the "All" run's basis year, 2024.
    for (const char* name : {"SUP_Submission(O).txt", "2024eA8B_Submission(O).txt"}) {
        SCOPED_TRACE(name);
        ASSERT_TRUE(fs::exists(folder_ / "out" / name));
        EXPECT_FALSE(CheckAisFile(folder_ / "out" / name).HasErrors());
    }
    // The current and the supplementary IR8A read one view table, which the
    // supplementary return's validation replaces before the current one is
    // generated: each file still holds its own employees (the sample employer
    // has 40 current IR8A rows for 2024 and 2 supplementary ones, T0123456G
    // and S9912345A), not the other return's.
    EXPECT_EQ(CheckAisFile(current).detailRecords, 40);
    EXPECT_NE(ReadFile(current).find("1S8029772F   Ang Choon Seng"), std::string::npos);
    EXPECT_EQ(CheckAisFile(folder_ / "out" / "SUP_Submission(O).txt").detailRecords, 2);
    EXPECT_EQ(out_.str().find("No Records to be processed."), std::string::npos);
    const fs::path report = folder_ / "report";
    EXPECT_TRUE(Said("Summary file: " + (report / "IRASSummaryFile.txt").string()));
    EXPECT_TRUE(Said("Run log: " + (report / "IRASSubmissionLogFile.txt").string()));
    EXPECT_TRUE(Said("Debug log: " + (report / "IRASSubmissionDebugFile.txt").string()));
    EXPECT_EQ(ReadFile(report / "IRASSubmissionEmpErrLogFile.txt"), "");  // nobody failed: an empty log

    EXPECT_EQ(Run({"check", current.string()}), kExitSuccess);
    EXPECT_NE(out_.str().find("CUR_Submission(O).txt: OK (IR8A"), std::string::npos) << out_.str();
    EXPECT_EQ(Run({"check", (folder_ / "absent.txt").string()}), kExitFileSystem);
    std::ofstream(folder_ / "short.txt") << "0\r\n";
    EXPECT_EQ(Run({"check", (folder_ / "short.txt").string()}), kExitValidation);
    EXPECT_NE(out_.str().find("short.txt: REJECTED"), std::string::npos) << out_.str();
}

TEST_F(SampleDatabaseTool, AKilledRunsLogsAreKeptUnderNamesTheUserSeesAndItsRecordsRemoved) {
    // What a run killed while it wrote leaves: its logs so far, and a
    // return file's records half made.
    const std::string dead = std::to_string(testing::DeadProcess());
    const fs::path report = folder_ / "report";
    fs::create_directories(report);
    fs::create_directories(folder_ / "out");
    std::ofstream(report / (".iras-log-" + dead + "-0-IRASSubmissionLogFile.txt")) << "Generating IR8A\n";
    std::ofstream(folder_ / "out" / (".iras-tmp-" + dead + "-2-CUR_Submission(O).txt")) << "0IR8A\r\n";

    ASSERT_EQ(Run(RunArgs("generate", "ADMIN", "all")), kExitSuccess) << err_.str();
    const fs::path kept = report / ("IRASSubmissionLogFile-killed-" + dead + ".txt");
    EXPECT_TRUE(Said("A run that was killed left this log of what it did: " + kept.string())) << err_.str();
    EXPECT_EQ(ReadFile(kept), "Generating IR8A\n");
    for (const std::string& name : OutFiles()) EXPECT_FALSE(name.starts_with(".iras-")) << name;
    EXPECT_TRUE(fs::exists(folder_ / "out" / "CUR_Submission(O).txt"));
}

TEST_F(SampleDatabaseTool, SubmitWithoutConsentOrWithRefusedDataSubmitsNothing) {
    const Args identity = {"--user-id-type", "personal", "--user-id", "S1234567D"};
    EXPECT_EQ(Run(RunArgs("submit", "CLERK", "cur-ir8a", identity)), kExitStopped) << err_.str();
    EXPECT_TRUE(Said("The Current IR8A for Year 2024 will be submitted to IRAS directly. Are you sure? No"));

    // The form goes on to its question after a refused validation; answered
    // No or Yes (the actual pass refuses again), the status says refused.
    Args broken = RunArgs("submit", "ADMIN", "cur-ir8a", identity, "2024", "ERRCO");
    EXPECT_EQ(Run(broken), kExitValidation) << err_.str();
    broken.push_back("--yes");
    EXPECT_EQ(Run(broken), kExitValidation) << err_.str();
    EXPECT_TRUE(Said("the data failed validation, so nothing was submitted"));
}

// Bad data and database faults, each done to a fresh copy of the sample as a
// user with an SQLite shell can: every one ends with its own message and
// status, and no file under a final name in the File Directory.
struct BadDataCase {
    const char* what;
    std::string sql;
    Args extra;
    int status;
    std::string logged;  // in the run log (standard output)
    std::string said;    // on standard error
};

TEST_F(SampleDatabaseTool, BadDataAndDatabaseFaultsAreToldAndWriteNoFile) {
    const std::string lim = "Employee S8012345J (Employee ID LCP0001): ";
    const std::string person1001 = " WHERE PersonalSysId = 1001 AND YEYear = 2024";
    // IR8A without its NOT NULL constraints, as an older database may have it.
    const std::string looseIR8A =
        "PRAGMA writable_schema = ON; UPDATE sqlite_schema SET sql = replace(sql, 'NOT NULL', '') WHERE name = "
        "'IR8A'; PRAGMA writable_schema = RESET; ";
    const std::vector<BadDataCase> cases = {
        {"text in a money column", "UPDATE IR8A SET GrossTotal = 'abc'" + person1001, {}, kExitValidation,
         lim + "GrossTotal holds \"abc\", which is not an amount.", "the data failed validation"},
        {"a NULL part of the total income", looseIR8A + "UPDATE IR8A SET Transport = NULL" + person1001, {},
         kExitValidation, lim + "Transport is empty (NULL) where the return needs an amount.", "the data failed validation"},
        {"text in a money column of an Amendment", "UPDATE IR8A SET GrossTotal = 'abc'" + person1001,
         {"--amendment", "--yes"}, kExitValidation, lim + "GrossTotal holds \"abc\", which is not an amount.",
         "the data failed validation"},
        {"two employees with the same ID number",
         "UPDATE YEEmployee SET TaxNo = 'S8012345J' WHERE PersonalSysId = 1002 AND YEYear = 2024", {},
         kExitValidation, "Duplicate ID No. S8012345J is also the ID No. of employee LCP0001 in this return.",
         "the data failed validation"},
        {"a day that does not exist", "UPDATE YEEmployee SET PaymentTo = '2024-02-30'" + person1001, {},
         kExitValidation, lim + "PaymentTo holds \"2024-02-30\", which is not a date (YYYY-MM-DD).",
         "the data failed validation"},
        {"a text that is no date", "UPDATE YEEmployee SET PaymentTo = 'garbage'" + person1001, {},
         kExitValidation, lim + "PaymentTo holds \"garbage\", which is not a date (YYYY-MM-DD).",
         "the data failed validation"},
        {"a month that does not exist", "UPDATE YEEmployee SET PaymentFrom = '2024-13-01'" + person1001, {},
         kExitValidation, lim + "PaymentFrom holds \"2024-13-01\", which is not a date (YYYY-MM-DD).",
         "the data failed validation"},
        {"a return table that is missing", "ALTER TABLE IR8A RENAME TO IR8AOld", {}, kExitDatabase, "IR8A",
         "Error: GenerateViewTables: the view tables of CurIR8A"},
        {"a column the query needs is dropped", "ALTER TABLE YEEmployee DROP COLUMN Designation", {}, kExitDatabase,
         "Designation", "Designation"},
        {"the rights table is missing", "DROP TABLE UserModuleRights", {}, kExitDatabase, "", "UserModuleRights"},
        {"the run's subregistry row is missing", "DELETE FROM subregistry", {}, kExitDatabase, "", "subregistry"},
    };
    for (const BadDataCase& c : cases) {
        SCOPED_TRACE(c.what);
        TearDown();  // a fresh copy of the sample for each case
        SetUp();
        Sql(c.sql);
        const std::string before = Submitted();
        EXPECT_EQ(Run(RunArgs("generate", "ADMIN", "cur-ir8a", c.extra)), c.status) << err_.str() << out_.str();
        EXPECT_TRUE(Logged(c.logged)) << out_.str();
        EXPECT_TRUE(Said(c.said)) << err_.str();
        EXPECT_EQ(OutFiles(), std::vector<std::string>{});
        EXPECT_EQ(Submitted(), before);
    }
}


TEST_F(SampleDatabaseTool, ARefusedUserIsToldWhy) {
    const std::vector<std::tuple<std::string, std::string, std::string>> cases = {
        {"GUEST", "cur-ir8a", "You have no access to this module: the user \"GUEST\" is not known in this database."},
        {"admin", "cur-ir8a", "the user \"admin\" is not known; user names are matched in their letter case (did "
                              "you mean ADMIN?)."},
        {"CLERK", "ir8s", "You have no access to this module: the user CLERK does not hold the right "
                          "\"YEDirectIR8SRpt\" of IR8S."},
    };
    for (const auto& [user, type, message] : cases) {
        EXPECT_EQ(Run(RunArgs("generate", user, type)), kExitNoAccess);
        EXPECT_TRUE(Said(message)) << err_.str();
    }
}

TEST_F(SampleDatabaseTool, AnAmendmentWithNothingChangedSaysSoWithStatusSeven) {
    const Args identity = {"--user-id-type", "PERSONAL", "--user-id", "S1234567D", "--yes"};
    ASSERT_EQ(Run(RunArgs("submit", "ADMIN", "cur-ir8a", identity)), kExitSuccess) << err_.str() << out_.str();
    Args amendment = identity;
    amendment.push_back("--amendment");
    EXPECT_EQ(Run(RunArgs("submit", "ADMIN", "cur-ir8a", amendment)), kExitNothingProduced) << err_.str();
    EXPECT_TRUE(Said("Nothing was submitted: there are no records to submit.")) << err_.str();
    EXPECT_FALSE(Said("submitted successfully"));
    EXPECT_EQ(Run(RunArgs("generate", "ADMIN", "cur-ir8a", {"--amendment", "--yes"})), kExitNothingProduced);
    EXPECT_TRUE(Said("No file was made: there are no records to process (no employee has changed since the last "
                     "submission)."))
        << err_.str();
}

// A return that reached IRAS but is not recorded would be submitted again by
// a user who trusts the database. Each step of the delivery is tried with
// the database refusing to write at that moment.
TEST_F(SampleDatabaseTool, ADeliveryThatCannotBeRecordedIsAnErrorAndBlocksTheNextSubmission) {
    const Args identity = {"--user-id-type", "PERSONAL", "--user-id", "S1234567D", "--yes"};
    const std::string count = "SELECT COUNT(*) FROM SubmittedReturnFile";
    // Marking the delivery fails: delivered, not recorded.
    Sql("CREATE TRIGGER NoMark BEFORE UPDATE ON SubmittedReturnFile BEGIN SELECT RAISE(ABORT, 'disk is full'); END;");
    EXPECT_EQ(Run(RunArgs("submit", "ADMIN", "cur-ir8a", identity)), kExitDatabase) << out_.str();
    EXPECT_TRUE(Said("was delivered with the delivery reference LOCAL-")) << err_.str();
    EXPECT_TRUE(Said("but the delivery could not be recorded: ")) << err_.str();
    EXPECT_TRUE(Said("(disk is full)")) << err_.str();
    EXPECT_FALSE(Said("submitted successfully"));
    EXPECT_TRUE(Logged("but the delivery could not be recorded")) << out_.str();
    // The next submission is refused and says how to record the first.
    Sql("DROP TRIGGER NoMark;");
    EXPECT_EQ(Run(RunArgs("submit", "ADMIN", "cur-ir8a", identity)), kExitDatabase) << out_.str();
    EXPECT_TRUE(Said("was handed over for delivery, but its delivery was never recorded")) << err_.str();
    EXPECT_TRUE(Said("UPDATE SubmittedReturnFile SET DeliveryReference = '<reference>' WHERE "
                     "SubmittedReturnFileId = 1"))
        << err_.str();
    // Recorded as the message says, the return can go again.
    Sql("UPDATE SubmittedReturnFile SET DeliveryReference = 'LOCAL-1' WHERE SubmittedReturnFileId = 1;");
    EXPECT_EQ(Run(RunArgs("submit", "ADMIN", "cur-ir8a", identity)), kExitSuccess) << err_.str() << out_.str();
}

TEST_F(SampleDatabaseTool, ASubmissionThatCannotBeRecordedBeforehandIsNotDelivered) {
    const Args identity = {"--user-id-type", "PERSONAL", "--user-id", "S1234567D", "--yes"};
    Sql("CREATE TRIGGER NoIntent BEFORE INSERT ON SubmittedReturnFile BEGIN SELECT RAISE(ABORT, 'disk is full'); "
        "END;");
    EXPECT_EQ(Run(RunArgs("submit", "ADMIN", "cur-ir8a", identity)), kExitDatabase) << out_.str();
    EXPECT_TRUE(Said("nothing was submitted: the submission of CurIR8A for employer IR8AYA2025, year 2024 could "
                     "not be recorded before delivery: "))
        << err_.str();
    EXPECT_TRUE(Said("(disk is full)")) << err_.str();
    EXPECT_FALSE(Logged("File recorded locally")) << out_.str();
}

// A second run waits for the lock of the first instead of failing at once,
// and says that it waits.
TEST_F(SampleDatabaseTool, ASecondRunWaitsForTheLockOfTheFirst) {
    sqlite3* other = nullptr;
    ASSERT_EQ(sqlite3_open(database_.c_str(), &other), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(other, "BEGIN EXCLUSIVE; UPDATE subregistry SET RegDesc = RegDesc;", nullptr,
                           nullptr, nullptr),
              SQLITE_OK)
        << sqlite3_errmsg(other);
    std::thread release([other] {
        std::this_thread::sleep_for(std::chrono::milliseconds(2500));  // longer than the old limit of 2 s
        sqlite3_exec(other, "COMMIT;", nullptr, nullptr, nullptr);
        sqlite3_close(other);
    });
    const int status = Run(RunArgs("generate", "ADMIN", "cur-ir8a"));
    release.join();
    EXPECT_EQ(status, kExitSuccess) << err_.str();
    EXPECT_TRUE(Said("is in use by another run; waiting for it (at most 120 seconds).")) << err_.str();
}

// What the file does not say as the database has it, a warning says: the
// employees the joins leave out, and the names written changed to fit. The
// file is made all the same, as the rules make it.
TEST_F(SampleDatabaseTool, WarningsNameTheEmployeesTheFileDoesNotShowAsTheDatabaseHasThem) {
    const std::string year = " AND YEYear = 2024;";
    struct Case {
        const char* what;
        std::string sql;
        std::vector<std::string> logged;
    };
    const std::vector<Case> cases = {
        {"left out by the joins",
         "UPDATE YEEmployee SET CurrentYEGlobalId = NULL WHERE PersonalSysId = 1001" + year +
             "UPDATE YEEmployee SET CurrentYEGlobalId = 77 WHERE PersonalSysId = 1002" + year +
             "DELETE FROM YEEmployee WHERE PersonalSysId = 1003" + year,
         {"Warning: employee S8012345J (Employee ID LCP0001) has IR8A rows for the year but is left out of the file: "
          "CurrentYEGlobalId is empty.",
          "(Employee ID LCP0002) has IR8A rows for the year but is left out of the file: CurrentYEGlobalId 77 names "
          "no YEGlobal row.",
          "Warning: the IR8A rows of person 1003 for the year are left out of the file: the person has no employee "
          "row (YEEmployee) for the year."}},
        // "Ł" and "ś" are not in the file's code page; the second name has
        // 45 characters, and its first 40 end in "Abdulla".
        {"names changed to fit",
         "UPDATE YEEmployee SET EEName1 = 'Łukasz Wiśniewski' WHERE PersonalSysId = 1001" + year +
             "UPDATE YEEmployee SET EEName1 = 'Muhammad Abdul Rahman bin Ismail Abdullah Tan' WHERE PersonalSysId = "
             "1002" + year,
         {"Warning: employee S8012345J (Employee ID LCP0001): EEName1 \"Łukasz Wiśniewski\" is written as "
          "\"?ukasz Wi?niewski\" (characters the file cannot hold are written as \"?\").",
          "(Employee ID LCP0002): EEName1 \"Muhammad Abdul Rahman bin Ismail Abdullah Tan\" is written as "
          "\"Muhammad Abdul Rahman bin Ismail Abdulla\" (it is cut at its 40 characters)."}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        TearDown();  // a fresh copy of the sample for each case
        SetUp();
        Sql(c.sql);
        ASSERT_EQ(Run(RunArgs("generate", "ADMIN", "cur-ir8a")), kExitSuccess) << err_.str() << out_.str();
        for (const std::string& line : c.logged) EXPECT_TRUE(Logged(line)) << line << "\n" << out_.str();
        EXPECT_EQ(OutFiles(), std::vector<std::string>{"CUR_Submission(O).txt"});
    }
}

}  // namespace
}  // namespace iras::testing
