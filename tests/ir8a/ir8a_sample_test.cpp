// The IR8A return end to end over the sample payroll with the reference
// engine: current and supplementary Originals, then an Amendment after the
// Original was submitted. Every record is 1200 bytes and CR LF, the trailer
// agrees with the details, and IRAS's file checks pass.
#include "platform/ais/AisFileChecker.h"
#include "tests/ir8a/IR8AFixture.h"

namespace iras::testing {
namespace {

// Every record 1200 bytes and CR LF, and IRAS's file checks pass: record
// order, widths, amounts, dates, and a trailer count and twelve totals equal
// to the sums of the detail fields.
std::vector<std::string> ExpectWellFormed(const std::string& path) {
    const std::string bytes = ReadBytes(path);
    const auto records = Records(bytes);
    EXPECT_EQ(bytes.size(), records.size() * 1202);
    const AisCheckResult check = CheckAisFile(path, AisKind::IR8A);
    EXPECT_FALSE(check.HasErrors()) << ::testing::PrintToString(check.Describe());
    return records;
}

std::string RecordOf(const std::vector<std::string>& records, const std::string& taxNo) {
    for (const auto& r : records)
        if (Span(r, 3, 14) == taxNo + std::string(12 - taxNo.size(), ' ')) return r;
    ADD_FAILURE() << taxNo << " not in the file";
    return std::string(1200, ' ');
}

class IR8ASample : public IR8ATest {
protected:
    void SetUp() override {
        IR8ATest::SetUp();
        db::ConnectionRegistry::Unregister("kovadb");
        db::CreateDatabase(root / "sample.db", true);
        db::ConnectionRegistry::Register("kovadb", {"sqlite", (root / "sample.db").string(), false});
        session.SetEngineFactory(nullptr);  // the reference engine
        params.employerId = "IR8AYA2025";
    }
    std::string Run(RIR8AeSubmission& job) {
        EXPECT_NE(job.ValidateIR8AFile(), 0) << ::testing::PrintToString(employeeErrors);
        EXPECT_NE(job.ProcessIR8AeSubmission(), 0) << ::testing::PrintToString(log.View());
        return job.GetOutputFilePath();
    }
};

TEST_F(IR8ASample, CurrentAndSupplementaryOriginalsAreWellFormed) {
    auto current = MakeJob("CurIR8A", 2024);
    const auto records = ExpectWellFormed(Run(*current));
    // Lim Wei Jie: salary 84000.48 -> 84000; bonus 7000 + 3500.99 -> 10500;
    // others 1200.75 + 1800.40 + 600 + 300.25 + 150.10 + 2450 + 5400
    // = 11901.50 -> 11901; total 106401; donation 36; commission 1200.75.
    const std::string lim = RecordOf(records, "S8012345J");
    EXPECT_EQ(Span(lim, 263, 271) + Span(lim, 293, 304), "00010640A" "0003F" "001842{");
    EXPECT_EQ(Span(lim, 310, 345), "00008400{" "00001050{" "000000000" "00001190A");
    EXPECT_EQ(Span(lim, 400, 427), "0000012007E" "20240101" "20241231" "O");
    // Rajesh's commission claw-back counts as nothing in an Original.
    const std::string rajesh = RecordOf(records, "S7512345J");
    EXPECT_EQ(Span(rajesh, 263, 271) + Span(rajesh, 400, 410), "00010640{" "00000000000");

    // The supplementary return for basis year 2022 (year-end year 2023).
    auto supplementary = MakeJob("SupIR8A", 2022);
    const std::string path = Run(*supplementary);
    ASSERT_EQ(std::filesystem::path(path).filename(), "SUP_Submission(O).txt");
    const auto supRecords = ExpectWellFormed(path);
    ASSERT_EQ(supRecords.size(), 4u);
    EXPECT_EQ(Span(supRecords.front(), 3, 6), "2022");
    // Tan Mei Ling left on 30 June 2022: the period ends on her cessation date.
    EXPECT_EQ(Span(RecordOf(supRecords, "S8567231B"), 280, 287), "20220630");
}

TEST_F(IR8ASample, AmendmentAfterASubmissionCarriesOnlyTheCorrection) {
    params.actualRun = true;
    Run(*MakeJob("CurIR8A", 2024));
    ASSERT_TRUE(Has(debug, "Submission is successful."));
    // Lim Wei Jie's salary rises by 100 after the submission.
    Sql("UPDATE IR8A SET GrossTotal = 84100.48 WHERE PersonalSysId = 1001 AND YEYear = 2024 AND IR8AType = 'CurIR8A';");
    params.original = false;
    auto amendment = MakeJob("CurIR8A", 2024);
    const std::string path = Run(*amendment);
    EXPECT_EQ(std::filesystem::path(path).filename(), "CUR_Submission(A).txt");
    const auto records = ExpectWellFormed(path);
    ASSERT_EQ(records.size(), 3u);
    EXPECT_EQ(Span(records[0], 222, 222) + Span(records[1], 3, 11), "A" "S8012345J");
    EXPECT_EQ(Span(records[1], 263, 271) + Span(records[1], 310, 327), "00000010{" "00000010{" "000000000");
}

}  // namespace
}  // namespace iras::testing
