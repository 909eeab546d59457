// IR8S files from hand-made employees, compared with records worked out by
// hand from the IR8S layout: the header, a month of 1,234.56 beside zero
// months with the totals from the thirteenth row, fewer than thirteen rows
// repeating the last one, the recent permanent resident indicator on both
// sides of its cut-off, voluntary contributions in an Original and an
// Amendment, no to four Section B payments, and the summary.
#include "tests/ir8s/IR8SFixture.h"

namespace iras::testing {
namespace {

const std::string kZeroMonth(54, '0');
const std::string kBlank7 = "0      ";

// Alice: one month of 1,234.56 and eleven zero months, totals of 1,234.99
// in the thirteenth row, a resident since the cut-off day, one payment.
// Bob: three Section A rows, resident one day before the cut-off, no payment.
void AddAliceAndBob() {
    IR8STest::AddEmployee(101, "NRIC", "S1234567D", "ALICE TAN", "CHLOE",
                          "DateOfPRGranted = '2021-01-01', ApprovalForFullCPF = 'Y', EEVolCPF = -50");
    IR8STest::AddMonth(101, 1, "1234.56, 209.88, 246.91, 0, 0, 0");
    for (int order = 2; order <= 12; ++order) IR8STest::AddMonth(101, order, "0, 0, 0, 0, 0, 0");
    IR8STest::AddMonth(101, 13, "1234.99, 209.88, 246.91, 0, 0, 0");
    IR8STest::AddPayment(101, 1, "3500.99, '2023-01-01', '2023-12-31', '2023-12-20', 120, 1.25, '2023-12-28', 140, 0,"
                                 " '1899-12-30'");
    IR8STest::AddEmployee(102, "FIN", "G7654321N", "BOB LIM", "",
                          "DateOfPRGranted = '2020-12-31', ApprovalForFullCPF = 'N', ERVolCPF = 75.5");
    IR8STest::AddMonth(102, 1, "100, 0, 0, 0, 0, 0");
    IR8STest::AddMonth(102, 2, "200, 0, 0, 0, 0, 0");
    IR8STest::AddMonth(102, 3, "300, 51, 60, 0, 0, 0");
}

// An empty payment block at 1-based position start: "0" in each money field.
std::vector<std::pair<int, std::string>> EmptyPayment(int start) {
    return {{start, "0"}, {start + 31, "0"}, {start + 38, "0"}, {start + 53, "0"}, {start + 60, "0"}};
}

std::string WithFields(std::string record, const std::vector<std::pair<int, std::string>>& fields) {
    for (const auto& [position, text] : fields) record.replace(position - 1, text.size(), text);
    return record;
}

std::string AliceRecord(const std::string& eeVolCPF) {
    std::string month2to12;
    for (int m = 2; m <= 12; ++m) month2to12 += kZeroMonth;
    std::string record = RecordOf(1200, {{1, "1"}, {2, "1"}, {3, "S1234567D"}, {15, "ALICE TAN"}, {55, "CHLOE"},
                                         {95, "00012345F" "00002098H" "00002469A" "000000000000000000000000000"},
                                         {149, month2to12},
                                         {743, "123D   " "20I    " "24F    " "0      " "0      " "0      "},
                                         {803, "Y"}, {804, "Y"}, {805, kBlank7}, {812, eeVolCPF},
                                         {819, "350{   " "20230101" "20231231" "20231220" "12{    " "000000A"
                                               "20231228" "14{    " "0      "}});
    return WithFields(WithFields(record, EmptyPayment(894)), EmptyPayment(969));
}

std::string BobRecord() {
    const std::string row3 = "00003000{" "00000510{" "00000600{" "000000000000000000000000000";
    std::string months = "00001000{" + std::string(45, '0') + "00002000{" + std::string(45, '0');
    for (int m = 3; m <= 12; ++m) months += row3;
    std::string record = RecordOf(1200, {{1, "1"}, {2, "2"}, {3, "G7654321N"}, {15, "BOB LIM"}, {95, months},
                                         {743, "30{    " "5A     " "6{     " "0      " "0      " "0      "},
                                         {804, "N"}, {805, "7E     "}, {812, kBlank7}});
    return WithFields(WithFields(WithFields(record, EmptyPayment(819)), EmptyPayment(894)), EmptyPayment(969));
}

using IR8SRecords = IR8STest;

TEST_F(IR8SRecords, OriginalHeaderAndDetailsMatchTheLayout) {
    AddAliceAndBob();
    auto job = MakeJob();
    const auto records = Generate(*job);
    EXPECT_EQ(std::filesystem::path(job->GetOutputFilePath()).filename(), "TEST2023eIR8S_Submission(O).txt");
    ASSERT_EQ(records.size(), 3u) << "a header and two details, no trailer";
    EXPECT_EQ(records[0], RecordOf(1200, {{1, "0"}, {2, "6"}, {3, "2023"}, {7, "7"}, {8, "201912345K"},
                                          {20, "Tan Ah Kow"}, {50, "Finance Manager"},
                                          {80, "OBrien Trading Pte. Ltd."}, {140, "61234567"},
                                          {160, "payroll@acme.com.sg"}, {220, "O"}, {221, "20240301"},
                                          {229, "Head Office"}, {259, "IR8S"}}));
    // The negative voluntary contribution is no correction in an Original.
    EXPECT_EQ(records[1], AliceRecord(kBlank7));
    EXPECT_EQ(records[2], BobRecord());
}

TEST_F(IR8SRecords, AmendmentCarriesANegativeVoluntaryContribution) {
    AddAliceAndBob();
    auto job = MakeJob(false);
    const auto records = Generate(*job);
    EXPECT_EQ(std::filesystem::path(job->GetOutputFilePath()).filename(), "TEST2023eIR8S_Submission(A).txt");
    ASSERT_EQ(records.size(), 3u);
    EXPECT_EQ(Span(records[0], 220, 220), "A");
    EXPECT_EQ(records[1], AliceRecord("5}     "));
}

TEST_F(IR8SRecords, PaymentsBeyondThreeLengthenAnAmendmentRecord) {
    AddEmployee(103, "NRIC", "S3333333C", "CARL");
    AddMonths(103, 13);
    for (int refund = 1; refund <= 4; ++refund) {
        AddPayment(103, refund, std::to_string(1000 * refund) + ", '2023-01-01', '2023-12-31', '2023-12-29', 0, 0, "
                                "'1899-12-30', 0, 0, '1899-12-30'");
    }
    const auto records = Generate(*MakeJob(false));
    ASSERT_EQ(records.size(), 2u);
    const std::string& carl = records[1];
    ASSERT_EQ(carl.size(), 1275u);
    EXPECT_EQ(Span(carl, 819, 825) + Span(carl, 894, 900) + Span(carl, 969, 975), "100{   " "200{   " "300{   ");
    EXPECT_EQ(Span(carl, 1044, 1074), "400{   " "20230101" "20231231" "20231229");
    const std::string noDate(8, ' ');
    EXPECT_EQ(Span(carl, 1075, 1118), "0      0      " + noDate + "0      0      " + noDate);
    EXPECT_EQ(Span(carl, 1119, 1275), std::string(157, ' '));
}

TEST_F(IR8SRecords, SummaryNamesTheFileAndCountsTheRecords) {
    AddAliceAndBob();
    auto job = MakeJob();
    Generate(*job);
    StringList summary;
    job->GenerateIR8SSummaryTextFile(summary);
    const std::string stars(48, '*');
    EXPECT_EQ(summary, (StringList{stars, "SUMMARY OF FILE - IR8S    ", stars,
                                   "File Name:         " + job->GetOutputFilePath(),
                                   "Organisation ID:   201912345K", "Organisation Name: OBrien Trading Pte. Ltd.",
                                   "Form Type:         IR8S", "Basis Year:        2023", "Batch Indicator:   O",
                                   "No of Records:     2", "", ""}));
    EXPECT_EQ(job->SummaryFileName(), "IR8SSummaryFile");
}

}  // namespace
}  // namespace iras::testing
