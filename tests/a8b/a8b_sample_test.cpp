// The Appendix 8B return end to end over the sample payroll with the
// reference engine: the clean employer's Original, then, after it was
// submitted, an Amendment for two changed employees. Every record is 9300
// bytes and CR LF, and IRAS's file checks pass, among them a trailer count
// and 26 totals equal to the sums of the detail records.
#include "platform/ais/AisFileChecker.h"
#include "tests/a8b/A8BFixture.h"

namespace iras::testing {
namespace {

// Processing in February 2025, after the last exercise of the sample's 2024.
DateTime SampleClock() { return DateTime{Date{2025, 2, 14}, 10, 0, 0}; }

class A8BSample : public A8BTest {
protected:
    void SetUp() override {
        A8BTest::SetUp();
        SetClockForTesting(&SampleClock);
        db::ConnectionRegistry::Unregister("kovadb");
        db::CreateDatabase(folder.Path() / "sample.db", true);
        db::ConnectionRegistry::Register("kovadb", {"sqlite", (folder.Path() / "sample.db").string(), false});
        session.SetEngineFactory(nullptr);  // the reference engine
        params.employerId = "IR8AYA2025";
    }
    std::vector<std::string> Run() {
        auto job = MakeJob(2024);
        EXPECT_NE(job->ValidateA8BFile(), 0) << ::testing::PrintToString(employeeErrors);
        EXPECT_NE(job->ProcessA8BeSubmission(), 0) << ::testing::PrintToString(log.View());
        const std::string bytes = ReadBytes(job->GetOutputFilePath());
        const auto records = Records(bytes);
        EXPECT_EQ(bytes.size(), records.size() * 9302);
        const AisCheckResult check = CheckAisFile(job->GetOutputFilePath(), AisKind::A8B);
        EXPECT_FALSE(check.HasErrors()) << ::testing::PrintToString(check.Describe());
        return records;
    }
};

TEST_F(A8BSample, OriginalThenAnAmendmentOfTwoChangedEmployees) {
    params.actualRun = true;
    const auto original = Run();
    // David Fernandez, Goh Siew Lan, Lim Wei Jie and Tan Boon Huat, by name.
    ASSERT_EQ(original.size(), 6u);
    EXPECT_EQ(Span(original[1], 3, 11) + Span(original[2], 3, 11) + Span(original[3], 3, 11) +
                  Span(original[4], 3, 11),
              "F7654321Q" "S8123987H" "S8012345J" "S6912345G");
    // Not qualifying before the cut-off (3000 + 1500 + 600) + 1500 = 6600.00;
    // gains after it 1100 + 19900 + 2450 + (3100 + 2500 + 8000) = 37050.00.
    EXPECT_EQ(Span(original[5], 2, 7) + Span(original[5], 330, 357), "000004" "0000000066000{" "0000000370500{");

    // After the submission Lim's shares were worth 2.28, not 2.18 (gains +250),
    // and David's 2002 plan gave 3500 shares, not 3000 (+250, before 2003).
    Sql("UPDATE A8BRecord SET MktValueExerciseStock = 2.28, NoTaxExempt = 2700, StockGains = 2700"
        " WHERE PersonalSysId = 1001 AND YEYear = 2024;"
        "UPDATE A8B SET TotalESOPNoTaxExempt = 2700, TotalESOPStockGains = 2700, GrandTotalStockGains = 2700"
        " WHERE PersonalSysId = 1001 AND YEYear = 2024;"
        "UPDATE A8BRecord SET SharesAcquired = 3500, NoTaxExempt = 1750, StockGains = 1750"
        " WHERE PersonalSysId = 1010 AND YEYear = 2024 AND A8BRecordSysId = 1;"
        "UPDATE A8B SET TotalESOPNoTaxExempt = 2850, TotalESOPNoTaxExemptBef = 1750, TotalESOPStockGains = 2850,"
        " TotalESOPStockGainsBef = 1750, GrandTotalStockGains = 2850 WHERE PersonalSysId = 1010 AND YEYear = 2024;");
    params.original = false;
    const auto amendment = Run();
    ASSERT_EQ(amendment.size(), 4u);
    EXPECT_EQ(Span(amendment[0], 222, 222), "A");
    // David: his 2019 plan (first, the later grant) unchanged; the 2002 plan
    // +250.00 with its 3500 shares; totals +250.00 before the cut-off.
    const std::string& david = amendment[1];
    EXPECT_EQ(Span(david, 3, 11), "F7654321Q");
    EXPECT_EQ(Span(david, 216, 245), "00020000000{" "000000000" "000000000");
    EXPECT_EQ(Span(david, 355, 384), "00035000000{" "00002500{" "00002500{");
    EXPECT_EQ(Span(david, 2192, 2231), "0000000000" "000002500{" "0000000000" "000002500{");
    // Lim: +250.00 after the cut-off, with the price as it is now.
    const std::string& lim = amendment[2];
    EXPECT_EQ(Span(lim, 3, 11), "S8012345J");
    EXPECT_EQ(Span(lim, 204, 245), "000000228000" "00025000000{" "00002500{" "00002500{");
    EXPECT_EQ(Span(lim, 2192, 2231), "000002500{" "0000000000" "000002500{" "0000000000");
    EXPECT_EQ(Span(amendment[3], 2, 63), "000002" "0000000002500{" "0000000002500{" "0000000002500{" "0000000002500{");
}

}  // namespace
}  // namespace iras::testing
