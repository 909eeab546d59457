// iras-yearend as a user meets it: what the arguments mean, which mistakes
// are refused before anything runs, and which exit status each ending gives.
#include <gtest/gtest.h>

#include <sstream>

#include "apps/run/CommandLine.h"
#include "apps/run/YearEndTool.h"
#include "platform/ais/AisFileChecker.h"
#include "platform/database/Schema.h"
#include "tests/run/RunFakes.h"

namespace iras::testing {
namespace {

using Args = std::vector<std::string>;

TEST(ParseCommandLine, ReadsEveryRunOptionInBothSpellings) {
    const auto parsed = ParseCommandLine({"generate", "--db=pay.db", "--user", "ADMIN", "--employer=IR8AYA2025",
                                          "--year", "2023", "--type=sup-ir8a", "--amendment", "--out", "files",
                                          "--no-excess-cpf", "--overseas-cpf", "--percent-ord-wage",
                                          "--report-dir=rep", "--yes"});
    ASSERT_TRUE(parsed.options) << parsed.error;
    const ToolOptions& options = *parsed.options;
    EXPECT_EQ(options.command, ToolCommand::Generate);
    EXPECT_EQ(options.database, "pay.db");
    EXPECT_EQ(options.user, "ADMIN");
    EXPECT_EQ(options.employer, "IR8AYA2025");
    EXPECT_EQ(options.year, 2023);
    EXPECT_EQ(options.type, FileType::SupplementaryIR8A);
    EXPECT_TRUE(options.amendment);
    EXPECT_EQ(options.out, "files");
    EXPECT_FALSE(options.ir8s.excessCPF);
    EXPECT_TRUE(options.ir8s.overseasCPF);
    EXPECT_TRUE(options.ir8s.percentOrdWage);
    EXPECT_EQ(options.reportDir, "rep");
    EXPECT_TRUE(options.yes);
}

const Args kBase = {"--db", "p.db", "--user", "ADMIN", "--employer", "E", "--year", "2024"};

Args With(Args head, const Args& tail = kBase) {
    head.insert(head.end(), tail.begin(), tail.end());
    return head;
}

TEST(ParseCommandLine, DefaultsFollowTheForm) {
    const auto generate = ParseCommandLine(With({"generate"}));
    ASSERT_TRUE(generate.options) << generate.error;
    EXPECT_EQ(generate.options->type, FileType::All);  // generation opens on "All"
    EXPECT_EQ(generate.options->out, ".");
    EXPECT_TRUE(generate.options->ir8s.excessCPF);     // "Excess CPF" starts checked
    EXPECT_FALSE(generate.options->amendment);
    const auto submit = ParseCommandLine(With({"submit", "--user-id-type", "SINGPASS", "--proceed-with-warnings"}));
    ASSERT_TRUE(submit.options) << submit.error;
    EXPECT_EQ(submit.options->type, FileType::CurrentIR8A);  // direct submission opens on "Current IR8A"
    EXPECT_TRUE(submit.options->proceedWithWarnings);
    EXPECT_EQ(submit.options->userIdType, "SINGPASS");
}

TEST(ParseCommandLine, RefusesMistakesWithAMessageNamingThem) {
    const std::vector<std::pair<Args, std::string>> cases = {
        {{"generate", "--user", "ADMIN", "--employer", "E", "--year", "2024"}, "--db"},
        {{"generate", "--db", "p.db", "--user", "ADMIN", "--employer", "E"}, "--year"},
        {With({"generate"}, {"--db", "p.db", "--user", "A", "--employer", "E", "--year", "24"}), "four-digit"},
        {With({"generate"}, {"--db", "p.db", "--user", "A", "--employer", "E", "--year", "20x4"}), "20x4"},
        {{"generate", "--type", "ir9"}, "ir9"},
        {{"generate", "--colour"}, "--colour"},
        {{"generate", "--amendment=yes"}, "--amendment"},
        {{"generate", "--db"}, "--db needs a value"},
        {{"generate", "--user-id", "S1"}, "--user-id"},  // a direct-submission option
        {{"validate", "--proceed-with-warnings"}, "--proceed-with-warnings"},
        {{"init-db"}, "FILE"},
        {{"check"}, "FILE"},
        {{"publish"}, "publish"},
        {With({"generate", "--type", "all", "--amendment"}), "Original"},
        {With({"submit", "--type", "all"}), "one return"},
        {With({"reset"}), "--type"},
        {With({"trial", "stray"}), "stray"},
    };
    for (const auto& [args, mention] : cases) {
        const auto parsed = ParseCommandLine(args);
        EXPECT_FALSE(parsed.options) << mention;
        EXPECT_NE(parsed.error.find(mention), std::string::npos) << parsed.error;
    }
}

// The tool on a small payroll database: employer IR8AYA2025 with year-end
// years 2023 and 2024, user ADMIN with every right, CLERK with the module and
// the current IR8A only, GUEST with none.
class YearEndToolTest : public PayrollDatabaseTest {
protected:
    void SetUp() override {
        PayrollDatabaseTest::SetUp();
        Exec("INSERT INTO YEEmployer (YEEmployerId) VALUES ('IR8AYA2025')");
        Exec("INSERT INTO YEEmployee (YEEmployerId, YEYear, PersonalSysId) VALUES ('IR8AYA2025', 2023, 1), "
             "('IR8AYA2025', 2024, 1), ('IR8AYA2025', 92024, 1)");
        Grant("ADMIN", {"YEIRASDirect", "YEDirectCurIR8ARpt", "YEDirectSupIR8ARpt", "YEDirectIR8SRpt",
                        "YEDirectA8ARpt", "YEDirectA8BRpt"});
        Grant("CLERK", {"YEIRASDirect", "YEDirectCurIR8ARpt"});
        db::ConnectionRegistry::Unregister("kovadb");
        report_ = folder_ / "report";
    }

    int Run(Args args) {
        out_.str("");
        err_.str("");
        std::istringstream in;
        return RunYearEndTool(args, ToolStreams{out_, err_, in, false, false});
    }
    Args RunArgs(const std::string& command, const std::string& user, const std::string& type,
                 const std::string& year = "2024") const {
        Args args = {command, "--db",   databaseFile_.string(), "--user", user, "--employer", "IR8AYA2025",
                     "--year", year,   "--type", type, "--report-dir", report_.string()};
        if (command == "generate") args.insert(args.end(), {"--out", (folder_ / "out").string()});
        return args;
    }

    fs::path report_;
    std::ostringstream out_;
    std::ostringstream err_;
};

TEST_F(YearEndToolTest, HelpSucceedsAndUsageMistakesGiveTheUsageStatus) {
    EXPECT_EQ(Run({}), kExitUsage);
    EXPECT_NE(err_.str().find("Usage: iras-yearend COMMAND"), std::string::npos);
    EXPECT_EQ(Run({"submit", "--help"}), kExitSuccess);
    EXPECT_EQ(Run({"generate", "--year", "24"}), kExitUsage);
}

TEST_F(YearEndToolTest, RightsAreCheckedBeforeAnythingRuns) {
    EXPECT_EQ(Run(RunArgs("generate", "GUEST", "cur-ir8a")), kExitNoAccess);
    EXPECT_NE(err_.str().find("You have no access to this module"), std::string::npos);
    // CLERK may open the module but not every return that "All" makes.
    EXPECT_EQ(Run(RunArgs("generate", "CLERK", "all")), kExitNoAccess);
    // Reset asks only for the module right and then for confirmation, which
    // nobody gives here.
    EXPECT_EQ(Run(RunArgs("reset", "CLERK", "sup-ir8a", "2023")), kExitStopped);
    EXPECT_FALSE(fs::exists(report_ / "IRASSubmissionLogFile.txt"));
    EXPECT_FALSE(fs::exists(report_ / "2024YearEnd"));
}

TEST_F(YearEndToolTest, EmployerAndYearMustBeOnesTheFormWouldList) {
    Args unknown = RunArgs("generate", "ADMIN", "cur-ir8a");
    unknown[6] = "NOSUCHCO";
    EXPECT_EQ(Run(unknown), kExitUsage);
    EXPECT_NE(err_.str().find("NOSUCHCO"), std::string::npos);

    EXPECT_EQ(Run(RunArgs("generate", "ADMIN", "cur-ir8a", "2022")), kExitUsage);
    EXPECT_NE(err_.str().find("(listed: 2023, 2024)"), std::string::npos) << err_.str();
    // The supplementary list is one lower, and the engine's copy years never show.
    EXPECT_EQ(Run(RunArgs("generate", "ADMIN", "sup-ir8a", "2024")), kExitUsage);
    EXPECT_NE(err_.str().find("(listed: 2022, 2023)"), std::string::npos) << err_.str();
}

TEST_F(YearEndToolTest, ReturnsOfLaterVersionsAreRefusedAsArguments) {
    EXPECT_EQ(Run(RunArgs("generate", "ADMIN", "ir8s")), kExitUsage);
    EXPECT_NE(err_.str().find("The IR8S return is not available in this version"), std::string::npos);
}

TEST_F(YearEndToolTest, DatabaseProblemsGiveTheDatabaseStatus) {
    Args missing = RunArgs("generate", "ADMIN", "cur-ir8a");
    missing[2] = (folder_ / "nowhere.db").string();
    EXPECT_EQ(Run(missing), kExitDatabase);
    EXPECT_NE(err_.str().find("nowhere.db"), std::string::npos);

    std::ofstream(folder_ / "notes.db") << "these are not payroll data, just a text file of some length\n";
    missing[2] = (folder_ / "notes.db").string();
    EXPECT_EQ(Run(missing), kExitDatabase);
    EXPECT_NE(err_.str().find("notes.db"), std::string::npos) << err_.str();

    EXPECT_EQ(Run({"init-db", databaseFile_.string()}), kExitDatabase);  // never overwrites
}

TEST_F(YearEndToolTest, CheckGivesAVerdictPerFileAndTheWorstStatus) {
    EXPECT_EQ(Run({"check", (folder_ / "absent.txt").string()}), kExitFileSystem);
    EXPECT_NE(out_.str().find("absent.txt: cannot be read"), std::string::npos);

    std::ofstream(folder_ / "short.txt") << "0\r\n";
    EXPECT_EQ(Run({"check", (folder_ / "short.txt").string()}), kExitValidation);
    EXPECT_NE(out_.str().find("short.txt: REJECTED"), std::string::npos) << out_.str();
}

// The whole way on the sample database, as a new user would go.
class SampleDatabaseToolTest : public ::testing::Test {
protected:
    void SetUp() override {
        if (!db::EmbeddedSql("sample.sql")) GTEST_SKIP() << "no sample data in this build";
        folder_ = UniqueFolder("iras-sample");
        database_ = folder_ / "sample.db";
        std::istringstream in;
        ASSERT_EQ(RunYearEndTool({"init-db", database_.string(), "--sample"},
                                 ToolStreams{out_, err_, in, false, false}),
                  kExitSuccess)
            << err_.str();
    }
    void TearDown() override {
        std::error_code ignored;
        if (!folder_.empty()) fs::remove_all(folder_, ignored);
    }
    int Run(const std::string& command, const std::string& user, const std::string& type, Args extra = {}) {
        Args args = {command, "--db",   database_.string(), "--user", user,  "--employer", "IR8AYA2025",
                     "--year", "2024", "--type", type, "--report-dir", (folder_ / "report").string()};
        if (command == "generate") args.insert(args.end(), {"--out", (folder_ / "out").string()});
        args.insert(args.end(), extra.begin(), extra.end());
        out_.str("");
        err_.str("");
        std::istringstream in;
        return RunYearEndTool(args, ToolStreams{out_, err_, in, false, false});
    }

    fs::path folder_;
    fs::path database_;
    std::ostringstream out_;
    std::ostringstream err_;
};

TEST_F(SampleDatabaseToolTest, GenerateAllWritesCleanIR8AFilesAndTheSummary) {
    ASSERT_EQ(Run("generate", "ADMIN", "all"), kExitSuccess) << err_.str() << out_.str();
    const fs::path current = folder_ / "out" / "CUR_Submission(O).txt";
    ASSERT_TRUE(fs::exists(current));
    EXPECT_FALSE(CheckAisFile(current).HasErrors());
    // The clean employer has no supplementary IR8A in year-end year 2024.
    EXPECT_FALSE(fs::exists(folder_ / "out" / "SUP_Submission(O).txt"));
    EXPECT_NE(out_.str().find("No Records to be processed."), std::string::npos);
    EXPECT_TRUE(fs::exists(folder_ / "report" / "IRASSummaryFile.txt"));
    EXPECT_NE(err_.str().find("Debug log: " + (folder_ / "report" / "IRASSubmissionDebugFile.txt").string()),
              std::string::npos);
}

TEST_F(SampleDatabaseToolTest, SubmitWithoutConsentSubmitsNothing) {
    const Args identity = {"--user-id-type", "1", "--user-id", "S1234567D"};
    EXPECT_EQ(Run("submit", "CLERK", "cur-ir8a", identity), kExitStopped) << err_.str();
    EXPECT_NE(err_.str().find("will be submitted to IRAS directly. Are you sure? No"), std::string::npos)
        << err_.str();
    EXPECT_EQ(Run("submit", "CLERK", "cur-ir8a"), kExitUsage);  // no submitter identity
    EXPECT_NE(err_.str().find("Missing User ID Type!"), std::string::npos);
}

}  // namespace
}  // namespace iras::testing
