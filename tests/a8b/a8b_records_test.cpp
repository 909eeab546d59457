// Appendix 8B files from hand-made employees, compared with records worked
// out by hand from the layout: an Original with rows in all four sections
// (amounts from the prices, plans before and after 1 January 2003) and an
// employee with none (sixty blank row slots), the trailer and the summary;
// an Amendment that prints the stored differences; and the limits of the
// record, which are findings and never a longer or cut record.
#include <algorithm>

#include "tests/a8b/A8BFixture.h"

namespace iras::testing {
namespace {

const std::string kZeros12(12, '0'), kZeros9(9, '0');

// A row slot from its values, each padded to its width in the layout:
// 1, 12, 40, 4, 8, 8, then the prices and shares 12 each, the amounts 9 each.
std::string Slot(const std::string& idType, const std::string& rcb, const std::string& company,
                 const std::string& plan, const std::string& granted, const std::string& exercised,
                 const std::vector<std::string>& numbers) {
    const auto pad = [](const std::string& text, std::size_t width) { return text + std::string(width - text.size(), ' '); };
    std::string slot = pad(idType, 1) + pad(rcb, 12) + pad(company, 40) + pad(plan, 4) + pad(granted, 8) + pad(exercised, 8);
    for (const std::string& number : numbers) slot += number;
    return slot;
}

// An empty slot: blanks to offset 73, zero prices, the shares "0", zero amounts.
std::string BlankSlot(int amounts) {
    std::string slot = std::string(73, ' ') + std::string(36, '0') + "0" + std::string(11, ' ');
    for (int i = 0; i < amounts; ++i) slot += kZeros9;
    return slot;
}

// Section starts and slot lengths: A 107/139, B 2232/148, C 4512/148, D 6792/148.
const int kFirstSlot[4] = {107, 2232, 4512, 6792};
const int kSlotLength[4] = {139, 148, 148, 148};

// The record of an employee with `used` slots of each section filled in by
// `fields` and blank slots after them.
std::string DetailRecord(std::initializer_list<std::pair<int, std::string>> fields, const int (&used)[4]) {
    std::string record = A8BRecordOf(fields);
    for (int s = 0; s < 4; ++s)
        for (int k = used[s]; k < 15; ++k)
            record.replace(static_cast<std::size_t>(kFirstSlot[s] - 1 + k * kSlotLength[s]),
                           static_cast<std::size_t>(kSlotLength[s]), BlankSlot(s == 0 ? 2 : 3));
    return record;
}

class A8BRecords : public A8BTest {
protected:
    // Alice: two Section A options granted 31 December 2002 and 1 January 2003,
    // an ESOW plan of 2015 in Section B, an option of 2002 in Section C and a
    // start-up's option of 2010 in Section D. The stored amounts (100) are not
    // what an Original prints: it works them out from the prices.
    static void AddAlice() {
        Employee(101, "S1234567D", "ALICE TAN");
        Row(101, 1, "ESOP",
             "RCBNo = '199700001A', CompanyName = 'Alpha Holdings Ltd', DateStockGranted = '2002-12-31',"
             " DateExerciseStock = '2023-06-01', ExercisePriceStock = 1.0, MktValueExerciseStock = 1.23456");
        Row(101, 2, "ESOP",
             "RCBNo = '199700002B', CompanyName = 'Beta Holdings Ltd', DateStockGranted = '2003-01-01',"
             " DateExerciseStock = '2023-06-01', ExercisePriceStock = 0.5, MktValueExerciseStock = 0.75,"
             " SharesAcquired = 200");
        Row(101, 3, "EESOP",
             "RCBNo = '201912345K', CompanyName = 'Lion City Pte Ltd', TypePlanGranted = 'ESOW',"
             " DateStockGranted = '2015-09-01', DateExerciseStock = '2023-10-02', ExercisePriceStock = 1.00,"
             " MktValueStockGrant = 1.50, MktValueExerciseStock = 2.25, SharesAcquired = 2000");
        Row(101, 4, "CSOP",
             "RCBNo = '199704512M', CompanyName = 'Straits Holdings Ltd', DateStockGranted = '2002-06-03',"
             " DateExerciseStock = '2023-03-11', ExercisePriceStock = 2.00, MktValueStockGrant = 2.40,"
             " MktValueExerciseStock = 3.00, SharesAcquired = 1500");
        Row(101, 5, "NSOP",
             "CompanyIDType = 'CompanyUENO', RCBNo = '200908877H', CompanyName = 'Bright Spark Pte Ltd',"
             " DateStockGranted = '2010-03-15', DateExerciseStock = '2023-07-01', ExercisePriceStock = 0.10,"
             " MktValueStockGrant = 0.30, MktValueExerciseStock = 0.90, SharesAcquired = 10000,"
             " DateIncorporation = '2009-05-01'");
    }
};

TEST_F(A8BRecords, OriginalFileMatchesTheHandWorkedRecords) {
    AddAlice();
    Employee(102, "S7654321A", "BOB LIM");  // no share-plan rows at all
    auto job = MakeJob();
    const auto records = Generate(*job);
    ASSERT_EQ(records.size(), 4u);
    EXPECT_EQ(job->GetOutputFilePath(), (folder.Path() / "run" / "TEST2023eA8B_Submission(O).txt").string());
    for (const std::string& record : records) EXPECT_EQ(record.size(), 9300u);

    EXPECT_EQ(records[0], A8BRecordOf({{1, "0"}, {2, "6"}, {3, "2023"}, {7, "13"}, {9, "7"}, {10, "201912345K"},
                                       {22, "Tan Ah Kow"}, {52, "Finance Manager"}, {82, "ONeil Co Pte"},
                                       {142, "61234567"}, {162, "payroll@acme.com.sg"}, {222, "O"},
                                       {223, "20240301"}, {231, "20190415"}, {239, "Head Office"}, {269, "A8B"}}));

    // A1: (1.23456 - 1.0) x 1000 = 234.56, before 2003. A2: (0.75 - 0.5) x
    // 200 = 50.00, after. B: exempt (2.25 - 1.50) x 2000 = 1500.00, not
    // qualifying (1.50 - 1.00) x 2000 = 1000.00, gains 2500.00, ESOW: after.
    // C: 900.00, 600.00, 1500.00, before. D: 6000.00, 2000.00, 8000.00, after.
    EXPECT_EQ(records[1],
              DetailRecord(
                  {{1, "1"}, {2, "1"}, {3, "S1234567D"}, {15, "ALICE TAN"}, {95, "301"}, {98, "F"}, {99, "19850714"},
                   {107, Slot("8", "199700001A", "Alpha Holdings Ltd", "ESOP", "20021231", "20230601",
                              {"000000100000", kZeros12, "000000123456", "00010000000{", "00002345F", "00002345F"})},
                   {246, Slot("8", "199700002B", "Beta Holdings Ltd", "ESOP", "20030101", "20230601",
                              {"000000050000", kZeros12, "000000075000", "00002000000{", "00000500{", "00000500{"})},
                   {2192, "000000500{000002345F000000500{000002345F"},
                   {2232, Slot("8", "201912345K", "Lion City Pte Ltd", "ESOW", "20150901", "20231002",
                               {"000000100000", "000000150000", "000000225000", "00020000000{", "00015000{",
                                "00010000{", "00025000{"})},
                   {4452, "000015000{0000000000000010000{0000000000000025000{0000000000"},
                   {4512, Slot("8", "199704512M", "Straits Holdings Ltd", "ESOP", "20020603", "20230311",
                               {"000000200000", "000000240000", "000000300000", "00015000000{", "00009000{",
                                "00006000{", "00015000{"})},
                   {6732, "0000000000000009000{0000000000000006000{0000000000000015000{"},
                   {6792, Slot("U", "200908877H", "Bright Spark Pte Ltd", "ESOP", "20100315", "20230701",
                               {"000000010000", "000000030000", "000000090000", "00100000000{", "00060000{",
                                "00020000{", "00080000{"})},
                   {9012, "000060000{0000000000000020000{0000000000000080000{0000000000"},
                   // Grand totals: not qualifying 50 + 1000 + 2000 after, 234.56 + 600
                   // before; gains 50 + 2500 + 8000 after, 234.56 + 1500 before.
                   {9072, "0000030500{0000008345F0000105500{0000017345F"}},
                  {2, 1, 1, 1}));

    // Bob: sixty blank slots and zero totals.
    const std::string zeroTotals(40, '0'), zeroTotals6(60, '0');
    EXPECT_EQ(records[2], DetailRecord({{1, "1"}, {2, "1"}, {3, "S7654321A"}, {15, "BOB LIM"}, {95, "301"}, {98, "F"},
                                        {99, "19850714"}, {2192, zeroTotals}, {4452, zeroTotals6}, {6732, zeroTotals6},
                                        {9012, zeroTotals6}, {9072, std::string(44, '0')}},
                                       {0, 0, 0, 0}));

    const std::string z(14, '0');
    EXPECT_EQ(records[3],
              A8BRecordOf({{1, "2"}, {2, "000002"},
                           {8, "0000000000500{0000000002345F0000000000500{0000000002345F"},
                           {64, "0000000015000{" + z + "0000000010000{" + z + "0000000025000{" + z},
                           {148, z + "0000000009000{" + z + "0000000006000{" + z + "0000000015000{"},
                           {232, "0000000060000{" + z + "0000000020000{" + z + "0000000080000{" + z},
                           {316, "0000000030500{0000000008345F0000000105500{0000000017345F"}}));

    StringList summary{"kept"};
    job->GenerateA8BSummaryTextFile(summary);
    const std::string stars(48, '*');
    const StringList expected{"kept", stars, "", "SUMMARY OF FILE - Appendix 8B    ", "", stars, "",
                              "File Name:         " + job->GetOutputFilePath(), "Organisation ID:   201912345K",
                              "Organisation Name: ONeil Co Pte", "Form Type:         A8B", "No of Records:     2",
                              "Basis Year:        2023", "Batch Indicator:   O",
                              "Total Gross Amount Of gains - S10(1)(b): $ 10,550.00",
                              "Total Gross Amount Of gains - S10(1)(g): $ 834.56", "", ""};
    EXPECT_EQ(summary, expected);
}

// An Amendment prints the row amounts and the totals as the engine stored
// them (the difference from what was submitted), even where they disagree
// with the prices, and is not checked: a value at grant in Section A passes.
TEST_F(A8BRecords, AmendmentTakesStoredAmountsAndTotals) {
    Employee(101, "S1234567D", "ALICE TAN",
             "TotalESOPNoTaxExempt = -120.5, TotalESOPStockGains = -120.5, TotalESOPStockGainsBef = 30.01");
    Row(101, 1, "ESOP", "MktValueStockGrant = 0.5, NoTaxExempt = -120.5, StockGains = -90.49");
    params.original = false;
    params.actualRun = true;
    auto job = MakeJob();
    const auto records = Generate(*job);
    ASSERT_EQ(records.size(), 3u);
    EXPECT_EQ(job->GetOutputFilePath(), (folder.Path() / "run" / "2023eA8B_Submission(A).txt").string());
    EXPECT_EQ(Span(records[0], 222, 222), "A");
    // The row as it stands: prices 1, 0.5, 1.1 and 1000 shares; amounts -120.50 and -90.49.
    EXPECT_EQ(Span(records[1], 107, 245),
              Slot("8", "201012345Z", "Granting Co Pte Ltd", "ESOP", "20200115", "20230603",
                   {"000000100000", "000000050000", "000000110000", "00010000000{", "00001205}", "00000904R"}));
    // Totals: not qualifying -120.50 after, 0 before; gains -150.51 after, 30.01 before.
    EXPECT_EQ(Span(records[1], 2192, 2231), "000001205}0000000000000001505J000000300A");
    EXPECT_EQ(Span(records[1], 9072, 9115), "0000001205}000000000000000001505J0000000300A");
    EXPECT_EQ(Span(records[2], 2, 63), "000001" + std::string("0000000001205}") + std::string(14, '0') +
                                           "0000000001505J" + "0000000000300A");
}

// More rows than a section holds is a finding, for an Amendment too: the
// record is never written longer, nor cut.
TEST_F(A8BRecords, SixteenRowsAreAFindingNotALongerRecord) {
    Employee(101, "S1234567D", "ALICE TAN");
    for (int row = 1; row <= 16; ++row) Row(101, row, "CSOP");
    for (bool original : {true, false}) {
        SCOPED_TRACE(original ? "Original" : "Amendment");
        params.original = original;
        employeeErrors.clear();
        auto job = MakeJob();
        EXPECT_EQ(job->ValidateA8BFile(), 0);
        EXPECT_EQ(employeeErrors,
                  (StringList{"Identity No: S1234567D", "Employee ID: E101",
                              "Invalid Section C - Company Equity-Based Remuneration Scheme. Section C can only have "
                              "a maximum of 15 records.",
                              ""}));
        EXPECT_EQ(job->ProcessA8BeSubmission(), 0);
        EXPECT_TRUE(job->GetOutputFilePath().empty());
    }
}

// An amount wider than its field is reported for the employee, not cut.
TEST_F(A8BRecords, AnAmountTooWideForItsFieldIsAFinding) {
    Employee(101, "S1234567D", "ALICE TAN", "TotalESOPStockGains = 123456789.5");
    params.original = false;
    auto job = MakeJob();
    EXPECT_EQ(job->ValidateA8BFile(), 0);
    EXPECT_EQ(employeeErrors,
              (StringList{"Identity No: S1234567D", "Employee ID: E101",
                          "Amount too large for the A8B record. TotalESOPStockGainsAfter of 123456789.50 does not fit "
                          "in its 10-character field.",
                          ""}));
}

// A NULL price or gain in a share-plan row is a finding for the employee,
// in an Amendment too: zeros would be a wrong return. No file is made.
TEST_F(A8BRecords, NullAmountsOfAShareRowAreFindings) {
    Employee(101, "S1234567D", "ALICE TAN");
    const std::string table = View("ViewA8BRecord");
    script->buildViews = [this, inner = script->buildViews, table](int year, const std::string& employer,
                                                                   const std::string& type) {
        inner(year, employer, type);
        Sql("INSERT INTO " + table + " (PersonalSysId, YEYear, A8BRecordSysId, StockOptionType) VALUES"
            " (101, 2023, 1, 'ESOP'); UPDATE " + table + " SET CompanyIDType = NULL, RCBNo = NULL, CompanyName = NULL,"
            " TypePlanGranted = NULL, DateStockGranted = NULL, DateExerciseStock = NULL, ExercisePriceStock = NULL,"
            " MktValueStockGrant = NULL, MktValueExerciseStock = NULL, SharesAcquired = NULL, NoTaxExempt = NULL,"
            " StockGains = NULL;");
    };
    params.original = false;
    auto job = MakeJob();
    EXPECT_EQ(job->ValidateA8BFile(), 0);
    for (const char* column : {"ExercisePriceStock", "StockGains"}) {
        const std::string finding = std::string("Employee S1234567D (Employee ID E101): ") + column +
                                    " is empty (NULL) where the return needs an amount.";
        EXPECT_EQ(std::count(employeeErrors.begin(), employeeErrors.end(), finding), 1)
            << ::testing::PrintToString(employeeErrors);
    }
    EXPECT_EQ(job->ProcessA8BeSubmission(), 0);
    EXPECT_TRUE(job->GetOutputFilePath().empty());
}

}  // namespace
}  // namespace iras::testing
