// The Appendix 8A return end to end over the sample payroll with the
// reference engine: the clean employer's Original, then an Amendment after
// it was submitted that holds only the two changed employees with signed
// differences, undone by a reset. Every file passes IRAS's file checks.
#include "platform/ais/AisFileChecker.h"
#include "tests/a8a/A8AFixture.h"

namespace iras::testing {
namespace {

// An 800-byte header and 700-byte details, each ended by CR LF, and IRAS's
// file checks pass.
std::vector<std::string> ExpectWellFormed(const std::string& path) {
    const std::string bytes = ReadBytes(path);
    const auto records = Records(bytes);
    EXPECT_EQ(bytes.size(), records.empty() ? 0u : 802 + (records.size() - 1) * 702);
    const AisCheckResult check = CheckAisFile(path, AisKind::A8A);
    EXPECT_FALSE(check.HasErrors()) << ::testing::PrintToString(check.Describe());
    return records;
}

class A8ASample : public A8ATest {
protected:
    void SetUp() override {
        A8ATest::SetUp();
        db::ConnectionRegistry::Unregister("kovadb");
        OpenPayroll(root / "sample.db", true);
        session.SetEngineFactory(nullptr);  // the reference engine
        params.employerId = "IR8AYA2025";
        params.year = 2024;
        params.actualRun = true;
    }
    std::vector<std::string> Run() {
        IRASSubmissionParameters p = params;
        p.ignoreChanges = p.original;
        RA8AeSubmission job(&session, p, (root / "run").string(), "");
        job.SetLogMemo(&log), job.SetInternalMemo(&debug), job.SetEmployeeErrorLog(&employeeErrors);
        job.SetBasisYear(2024);
        EXPECT_NE(job.ValidateA8AFile(), 0) << ::testing::PrintToString(employeeErrors);
        EXPECT_NE(job.ProcessA8AeSubmission(), 0) << ::testing::PrintToString(log.View());
        EXPECT_EQ(std::filesystem::path(job.GetOutputFilePath()).filename(),
                  params.original ? "2024eA8A_Submission(O).txt" : "2024eA8A_Submission(A).txt");
        return ExpectWellFormed(job.GetOutputFilePath());
    }
};

TEST_F(A8ASample, OriginalHoldsEveryEmployeeWithBenefits) {
    const auto records = Run();
    ASSERT_EQ(records.size(), 9u);  // 1001, 1004, 1006 and five generated employees
    // Chen Xiaoling's quarters, fully furnished, all of 2024: annual value
    // 24000.00, furniture 12000.00, residence 36000.00 less 6000.00 paid by
    // her = 30000.00, utilities 1800.00; total 31800.00.
    const auto chen = std::find_if(records.begin(), records.end(),
                                   [](const std::string& r) { return Span(r, 3, 11) == "S8856781A"; });
    ASSERT_NE(chen, records.end());
    EXPECT_EQ(Span(*chen, 185, 296), "20240101" "20241231" "366" "01" "00240000{" "F" "00120000{" "000000000"
                                     "00360000{" "00060000{" "00300000{" "00018000{" + std::string(18, '0') +
                                         "00018000{");
    EXPECT_EQ(Span(*chen, 430, 438), "00318000{");
}

TEST_F(A8ASample, AmendmentHoldsOnlyTheChangedEmployeesAndResetUndoesIt) {
    Run();
    // Lim Wei Jie's education rises by 500.00; Tan Boon Huat's club falls by 600.00.
    Sql("UPDATE A8A SET Education = 3500, TotalBenefitInKind = 5900 WHERE PersonalSysId = 1001 AND YEYear = 2024;"
        "UPDATE A8A SET Clubs = 3000, TotalBenefitInKind = 12850 WHERE PersonalSysId = 1006 AND YEYear = 2024;");
    params.original = false;
    const auto amendment = Run();
    ASSERT_EQ(amendment.size(), 3u);
    EXPECT_EQ(Span(amendment[0], 220, 220), "A");
    // By name: Lim Wei Jie, then Tan Boon Huat. +500.00 is "00005000{",
    // -600.00 is "00006000}".
    EXPECT_EQ(Span(amendment[1], 3, 11) + Span(amendment[1], 367, 375) + Span(amendment[1], 430, 438),
              "S8012345J" "00005000{" "00005000{");
    EXPECT_EQ(Span(amendment[2], 3, 11) + Span(amendment[2], 385, 393) + Span(amendment[2], 430, 438),
              "S6912345G" "00006000}" "00006000}");

    // Reset undoes the Amendment's submission: the same corrections are
    // still to be sent.
    auto engine = session.CreateSubmissionEngine();
    engine->SetYEYear(2024);
    engine->SetYEEmployerId("IR8AYA2025");
    engine->SetYESubmissionType("A8A");
    ASSERT_NE(engine->CopyRecords(8, 9), 0);
    EXPECT_EQ(Run(), amendment);
}

}  // namespace
}  // namespace iras::testing
