// IRAS's checks on an original Appendix 8B: each rule broken on an employee
// of its own (clean cases just inside each limit beside them), all employees
// validated in one pass and each reported with exactly the findings of the
// rules it breaks; the employer rules where this return differs; and the
// summary's money format.
#include <map>
#include <utility>

#include "submission/common/AmountFields.h"
#include "tests/a8b/A8BFixture.h"

namespace iras::testing {
namespace {

struct RowCase {
    std::string optionType;  // ESOP, EESOP, CSOP, NSOP
    std::string set;         // SET clause over the fixture's clean row
};

struct EmployeeCase {
    std::string employee;  // SET clause of YEEmployee, or ""
    std::string totals;    // SET clause of A8B, or ""
    std::vector<RowCase> rows;
    StringList messages;
};

const std::string kA = "Section A Record 1 - RCB No 201012345Z";
const std::string kB = "Section B Record 1 - RCB No 201012345Z";
const std::string kC = "Section C Record 1 - RCB No 201012345Z";
const std::string kD = "Section D Record 1 - RCB No 201012345Z";
const std::string kGrant = " - Invalid Date of Grant of ESOP/ESOW Plan.";
const std::string kExercise = " - Invalid Date of exercise of ESOP or date of investing of ESOW Plan (if applicable).";
const std::string kWithin3 = kGrant + " Invalid Date of Grant of ESOP/ESOW Plan. Date must be within 3 years' of Date of "
                                      "Incorporation.";
const std::string kAtGrant = " - Invalid Open Market Value Per Share as at the Date of Grant of ESOP/ESOW Plans. Open "
                             "Market Value Per Share as at the Date of Grant of ESOP/ESOW Plans";
const std::string kAmountRange = " Gross amount must be in the range of -9999999.99 to 9999999.99.";
const std::string kGainsRange = " Gross amount of gains must be in the range of -9999999.99 to 9999999.99.";
const std::string kGainsSign =
    " Gross amount of gains from ESOP/ESOW Plans cannot have negative values if the number of shares acquired is a "
    "positive value.";
const std::string kNationality =
    "Invalid Nationality Code. 300 or 997 has been removed from the list of Nationality Code.";

std::vector<RowCase> Rows(const std::string& type, int count, const std::string& set = "") {
    return std::vector<RowCase>(static_cast<std::size_t>(count), RowCase{type, set});
}

// The processing date is 1 March 2024 and the year-end year 2023.
const std::map<int, EmployeeCase>& Cases() {
    static const std::map<int, EmployeeCase> cases{
        // The employee.
        {10, {"PayeeIDType = 'XX'", "", {}, {"Invalid ID Type of Employee."}}},
        {11, {"TaxNo = ''", "", {}, {"Invalid ID No. of Employee. ID No. of Employee cannot be blank."}}},
        {12, {"EEName1 = ''", "", {},
              {"Invalid Name of Employee - Line 1. Name of Employee - Line 1 cannot be blank."}}},
        {13, {"IRASNationalityCode = ''", "", {}, {"Invalid Nationality Code. Nationality Code cannot be blank."}}},
        {14, {"IRASNationalityCode = '300'", "", {}, {kNationality}}},
        {15, {"IRASNationalityCode = '997'", "", {}, {kNationality}}},
        {16, {"Gender = 'X'", "", {}, {"Invalid Sex."}}},
        {17, {"DOB = '1899-12-30'", "", {}, {"Date of Birth cannot be blank."}}},
        // Zero total gains fail although every row is valid.
        {18, {"", "GrandTotalStockGains = 0", {{"ESOP", ""}},
              {"IRAS file submission will not accept zero amount for Total Gross Amount of ESOP/ESOW Gains. Please "
               "delete the Appendix 8B record or enter the amount."}}},
        // Fifteen rows are checked row by row; sixteen get only the count.
        {20, {"", "", Rows("ESOP", 15), {}}},
        {21, {"", "", Rows("ESOP", 16, "MktValueStockGrant = 2"),
              {"Invalid Section A - Employee Equity-Based Remuneration Scheme. Section A can only have a maximum of "
               "15 records."}}},
        {22, {"", "", Rows("NSOP", 16),
              {"Invalid Section D - Equity Remuneration Incentive Scheme. Section D can only have a maximum of 15 "
               "records."}}},
        {23, {"", "", Rows("EESOP", 16),
              {"Invalid Section B - Entrepreneurial Equity-Based Remuneration Scheme. Section B can only have a "
               "maximum of 15 records."}}},
        // The filled-record gate: an empty row passes; a row that holds
        // something is told each blank it has.
        {24, {"", "",
              {{"ESOP", "CompanyIDType = '', RCBNo = '', CompanyName = '', TypePlanGranted = '', DateStockGranted ="
                        " '1899-12-30', DateExerciseStock = '1899-12-30', ExercisePriceStock = 0,"
                        " MktValueExerciseStock = 0, SharesAcquired = 0, NoTaxExempt = 0, StockGains = 0"}},
              {}}},
        {25, {"", "",
              {{"ESOP", "TypePlanGranted = '', DateStockGranted = '1899-12-30', DateExerciseStock = '1899-12-30'"}},
              {kA + " - Invalid Type of Plan Granted. Type of Plan Granted cannot be blank.",
               kA + " - Date of Grant " + kGrant + " Date of Grant of ESOP/ESOW Plan cannot be blank.",
               kA + kExercise + " Date cannot be blank."}}},
        // Section A.
        {30, {"", "", {{"ESOP", "CompanyIDType = 'CompanyXYZ'"}},
              {kA + " - Invalid ID Type of company which granted the ESOP/ESOW Plans."}}},
        {31, {"", "", {{"ESOP", "TypePlanGranted = 'ESOX'"}}, {kA + " - Invalid Type of Plan Granted."}}},
        {32, {"", "", {{"ESOP", "DateStockGranted = '2024-03-01', DateExerciseStock = '2024-03-01'"}}, {}}},
        {33, {"", "", {{"ESOP", "DateStockGranted = '2024-03-02', DateExerciseStock = '2024-03-02'"}},
              {kA + " - Date of Grant 02/03/2024" + kGrant + " Date must not be later than batch file processing date.",
               kA + kExercise + " Date must not be later than batch file processing date."}}},
        {34, {"", "", {{"ESOP", "DateExerciseStock = '2020-01-14'"}},
              {kA + kExercise + " Date must be later than or equal to Date of Grant of ESOP/ESOW."}}},
        {35, {"", "", {{"ESOP", "ExercisePriceStock = -1.5, MktValueStockGrant = 0.00001, MktValueExerciseStock = -3"}},
              {kA + " - Invalid Exercise Price of ESOP/ or Price paid/payable per share under ESOW Plan. Exercise "
                    "Price of ESOP/ or Price paid/payable per share under ESOW Plan cannot have negative values.",
               kA + kAtGrant + " must be zero.",
               kA + " - Invalid Open Market Value Per Share as at the Date Reflected at Column (d) of the form. Open "
                    "Market Value Per Share as at the Date Reflected at Column (d) of the form cannot have negative "
                    "values."}}},
        {36, {"", "", {{"ESOP", "SharesAcquired = 9999999, NoTaxExempt = 9999999.99, StockGains = 9999999.99"}}, {}}},
        {37, {"", "", {{"ESOP", "SharesAcquired = -10000000, NoTaxExempt = -10000000, StockGains = 10000000"}},
              {kA + " - Invalid Number of shares acquired. Number of shares acquired must be in the range of -9999999 "
                    "to 9999999.",
               kA + " - Invalid Gross amount not qualifying for tax exemption." + kAmountRange,
               kA + " - Invalid Gross amount of gains from ESOP/ESOW Plans." + kGainsRange,
               // Beyond the range, the shares do not fit their field either.
               "Amount too large for the A8B record. Section A record 1 shares acquired of -10000000.00 does not "
               "fit in its 12-character field."}}},
        {38, {"", "", {{"ESOP", "StockGains = -0.01"}},
              {kA + " - Invalid Gross amount of gains from ESOP/ESOW Plans." + kGainsSign}}},
        {39, {"", "", {{"ESOP", "SharesAcquired = -100, StockGains = -5"}}, {}}},
        // Section B: a value at grant is allowed; options from 1 June 2000,
        // ownership plans from 2002, grants to the end of the year-end year,
        // exercises to the end of 2023.
        {40, {"", "", {{"EESOP", "MktValueStockGrant = 0.5, EESOPTaxExempt = 100, DateStockGranted = '2000-06-01',"
                                 " DateExerciseStock = '2023-12-31'"}},
              {}}},
        {41, {"", "", {{"EESOP", "MktValueStockGrant = -1"}}, {kB + kAtGrant + " cannot have negative values."}}},
        {42, {"", "", {{"EESOP", "DateStockGranted = '2000-05-31'"}},
              {kB + " - Date of Grant 31/05/2000" + kGrant + " Date must be later than or equal to 01/06/2000."}}},
        {43, {"", "", {{"EESOP", "TypePlanGranted = 'ESOW', DateStockGranted = '2001-12-31'"}},
              {kB + " - Date of Grant 31/12/2001" + kGrant + " Date must be later than or equal to 01/01/2002."}}},
        {44, {"", "", {{"EESOP", "TypePlanGranted = 'ESOW', DateStockGranted = '2002-01-01'"}}, {}}},
        {45, {"", "", {{"EESOP", "DateStockGranted = '2024-01-01', DateExerciseStock = '2024-01-02'"}},
              {kB + " - Date of Grant 01/01/2024" + kGrant + " Date must not be later than 31 Dec 2023.",
               kB + kExercise + " Date must not be later than 31 Dec 2023."}}},
        {46, {"", "", {{"EESOP", "EESOPTaxExempt = 10000000"}},
              {kB + " - Invalid Gross amount qualifying for tax exemption under EEEBR." + kAmountRange}}},
        // Section C: options from 1 April 2001; IRAS's texts for a blank plan
        // type and a late exercise are kept as they are.
        {50, {"", "", {{"CSOP", "DateStockGranted = '2001-03-31'"}},
              {kC + " - Date of Grant 31/03/2001" + kGrant + " Date must be later than or equal to 01/04/2001."}}},
        {51, {"", "", {{"CSOP", "DateStockGranted = '2001-04-01'"}}, {}}},
        {52, {"", "", {{"CSOP", "TypePlanGranted = 'ESOW', DateStockGranted = '2001-06-30'"}},
              {kC + " - Date of Grant 30/06/2001" + kGrant + " Date must be later than or equal to 01/01/2002."}}},
        {53, {"", "", {{"CSOP", "TypePlanGranted = ''"}},
              {kC + " - Invalid ID Type of company which granted the ESOP/ESOW Plans."}}},
        {54, {"", "", {{"CSOP", "DateExerciseStock = '2024-03-02'"}}, {kC + kExercise + " Date cannot be blank."}}},
        {55, {"", "", {{"CSOP", "CSOPTaxExempt = -10000000, SharesAcquired = 100, StockGains = -10"}},
              {kC + " - Invalid Gross amount qualifying for tax exemption under CEEBR." + kAmountRange,
               kC + " - Invalid Gross amount of gains from ESOP/ESOW Plans under CEEBR." + kGainsSign}}},
        {56, {"", "", {{"CSOP", "StockGains = 10000000"}},
              {kC + " - Invalid Gross amount of gains from ESOP/ESOW Plans under CEEBR." + kGainsRange}}},
        // Section D: grants from 16 Feb 2008 to 15 Feb 2013, within three
        // years of incorporation (both sides), no plan-type look-up.
        {60, {"", "", {{"NSOP", "DateStockGranted = '2008-02-16', DateIncorporation = '2008-02-16'"}}, {}}},
        {61, {"", "", {{"NSOP", "DateStockGranted = '2013-02-16', DateIncorporation = '2012-06-01'"}},
              {kD + " - Date of Grant 16/02/2013" + kGrant + " Date must be between 16 Feb 2008 to 15 Feb 2013."}}},
        {62, {"", "", {{"NSOP", "DateStockGranted = '2011-03-01', DateIncorporation = '2008-03-01'"}}, {}}},
        {63, {"", "", {{"NSOP", "DateStockGranted = '2011-03-02', DateIncorporation = '2008-03-01'"}},
              {kD + " - Date of Grant 02/03/2011" + kWithin3}}},
        {64, {"", "", {{"NSOP", "DateStockGranted = '2009-05-31', DateIncorporation = '2009-06-01'"}},
              {kD + " - Date of Grant 31/05/2009" + kWithin3}}},
        // Incorporated on 29 February: the third year ends on 28 February.
        {65, {"", "", {{"NSOP", "DateStockGranted = '2011-02-28', DateIncorporation = '2008-02-29'"}}, {}}},
        {66, {"", "", {{"NSOP", "DateStockGranted = '2011-03-01', DateIncorporation = '2008-02-29'"}},
              {kD + " - Date of Grant 01/03/2011" + kWithin3}}},
        {67, {"", "", {{"NSOP", "TypePlanGranted = 'ESOX', MktValueStockGrant = 0.3"}}, {}}},
        {68, {"", "", {{"NSOP", "ExercisePriceStock = -2"}},
              {kD + " - Invalid Date of exercise of ESOP or date of investing of ESOW Plan. Exercise Price of ESOP/ "
                    "or Price paid/payable per share under ESOW Plan cannot have negative values."}}},
        {69, {"", "", {{"NSOP", "NSOPTaxExempt = 10000000.5, SharesAcquired = 10, StockGains = -1"}},
              {kD + " - Invalid Gross amount qualifying for tax exemption under ERIS (Start-ups)." + kAmountRange,
               kD + " - Invalid Gross amount of gains from ESOP/ESOW Plans under ERIS (Start-ups)." + kGainsSign}}},
        {70, {"", "", {{"NSOP", "SharesAcquired = -5, StockGains = -10000000"}},
              {kD + " - Invalid Gross amount of gains from ESOP/ESOW Plans under ERIS (Start-ups)." + kGainsRange}}},
    };
    return cases;
}

std::string Key(int id) { return std::to_string(id); }

TEST_F(A8BTest, EveryRuleReportsItsOwnFindingsAndNoOther) {
    StringList expected;
    std::string sql = "BEGIN;";
    for (const auto& [id, c] : Cases()) {
        // Employees are listed by name, so the ids keep their order.
        sql += EmployeeSql(id, "S" + Key(id), "EMPLOYEE " + Key(id), c.totals, c.employee);
        int row = 0;
        for (const RowCase& r : c.rows) sql += RowSql(id, ++row, r.optionType, r.set);
        if (c.messages.empty()) continue;
        const bool noTaxNo = c.employee.find("TaxNo") != std::string::npos;
        expected.push_back("Identity No: " + (noTaxNo ? std::string() : "S" + Key(id)));
        expected.push_back("Employee ID: E" + Key(id));
        expected.insert(expected.end(), c.messages.begin(), c.messages.end());
        expected.push_back("");
    }
    Sql(sql + "COMMIT;");
    auto job = MakeJob();
    EXPECT_EQ(job->ValidateA8BFile(), 0);
    StringList sorted = employeeErrors;
    // Employees come by name: the one without a name (12) comes first.
    const auto at = std::find(sorted.begin(), sorted.end(), "Identity No: S12");
    ASSERT_NE(at, sorted.end());
    const StringList blankName(at, at + 4);
    sorted.erase(at, at + 4);
    const auto next = std::find(sorted.begin(), sorted.end(), "Identity No: S13");
    sorted.insert(next, blankName.begin(), blankName.end());
    EXPECT_EQ(sorted, expected);
    for (std::size_t i = 0; i < std::min(sorted.size(), expected.size()); ++i)
        if (sorted[i] != expected[i]) { ADD_FAILURE() << i << "\n" << sorted[i] << "\n" << expected[i]; break; }
    EXPECT_EQ(job->GetRecordsFailed(), static_cast<int>(std::count(expected.begin(), expected.end(), "")));
}

struct HeaderCase {
    std::string set;  // SET clause of the employer row
    StringList messages;
};

TEST_F(A8BTest, EmployerRulesOfThisReturn) {
    Employee(1, "S1", "EMPLOYEE 1");
    Row(1, 1, "ESOP");
    const std::vector<HeaderCase> cases{
        {"EmployerSource = 'SourceOthers'", {}},
        // Only private-sector employers and "others" file Appendix 8B.
        {"EmployerSource = 'Mindef'", {"Invalid Source."}},
        {"EmployerSource = ''", {"Invalid Source."}},
        {"PayerID = 'GSTN'",
         {"Invalid Organization ID Type. G is no longer applicable with effect from Year of Assessment 2013. File "
          "is not created."}},
        {"TaxRefNo = ''", {"Invalid Organization ID No. Organization ID No. cannot be blank."}},
        {"EmailAddress = '" + std::string(38, 'a') + "@acme.com.sg'", {}},
        {"EmailAddress = '" + std::string(39, 'a') + "@acme.com.sg'",
         {"Email address cannot be more than 50 characters."}},
    };
    for (const HeaderCase& c : cases) {
        SCOPED_TRACE(c.set);
        Sql("UPDATE YEEmployer SET EmployerSource = 'PrivateSector', PayerID = 'UEN', TaxRefNo = '201912345K',"
            " EmailAddress = 'payroll@acme.com.sg'; UPDATE YEEmployer SET " + c.set + ";");
        auto job = MakeJob();
        EXPECT_EQ(job->ValidateA8BFile(), c.messages.empty() ? 1 : 0);
        EXPECT_EQ(job->GetHeaderErrorCount(), static_cast<int>(c.messages.size()));
        auto direct = MakeJob();
        ASSERT_NE(direct->RefreshQuery(), 0);
        EXPECT_EQ(direct->A8BHeaderValidation(), c.messages.empty() ? 1 : 0);
        EXPECT_EQ(direct->GetErrorList(), c.messages);
    }
}

TEST(A8BSummaryMoney, GroupsThousandsWithTwoDecimals) {
    const std::vector<std::pair<double, std::string>> cases{
        {1200000.5, "1,200,000.50"}, {-1234.5, "-1,234.50"}, {0.0, "0.00"},     {999.995, "1,000.00"},
        {0.29, "0.29"},              {100, "100.00"},        {-0.004, "0.00"}, {1000, "1,000.00"}};
    for (const auto& [value, text] : cases) EXPECT_EQ(FormatThousandsAndCents(value), text) << value;
}

}  // namespace
}  // namespace iras::testing
