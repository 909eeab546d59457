// IR8A files from hand-made employees, compared field by field with records
// worked out by hand from the IR8A layout: header, details and trailer of a
// current Original, the summary, an Amendment's negative commission, a
// supplementary file's period end and cessation, and the indicators whose
// meaning IRAS's layout fixes.
#include "tests/ir8a/IR8AFixture.h"

namespace iras::testing {
namespace {

// Alice: a director with salary, bonus, fee, commission, allowances,
// benefits in kind, CPF and a donation of 10.01. Bartholomew: joined in the
// year, a name longer than its field, tax fully borne by the employer,
// exempt income, small insurance and mosque fund, no cents amount at all.
const char* const kEmployees =
    "INSERT INTO Employee (EmployeeSysId, EmployeeCode, PersonalSysId) VALUES (1, 'E001', 101), (2, 'E002', 102);"
    "INSERT INTO EmployeeBank (EmployeeSysId, IRASBankCode, BankName, BankAccountNo) VALUES (1, '1', 'DBS', '1');"
    "INSERT INTO YEEmployee (YEEmployerId, YEYear, PersonalSysId, CurrentYEGlobalId, PayeeIDType, TaxNo, EEName1,"
    " EEName2, IRASNationalityCode, Gender, DOB, Designation, PaymentFrom, PaymentTo, Commencement) VALUES"
    " ('ACME', 2023, 101, 1, 'NRIC', 'S1234567D', 'ALICE TAN', 'CHLO\xC3\x89', '301', 'F', '1985-07-14',"
    "  'Managing Director', '2023-01-01', '2023-12-31', '2015-03-02'),"
    " ('ACME', 2023, 102, 1, 'FIN', 'G7654321N', 'BARTHOLOMEW ALEXANDER LIM WEI MING JUNIOR THE THIRD',"
    "  'S/O LIM AH BENG', '303', 'M', '1990-02-28', 'Clerk', '2023-04-03', '2023-12-31', '2023-04-03');"
    "INSERT INTO IR8A (PersonalSysId, YEYear, IR8AType, GrossTotal, ContratualBonus, NonContratualBonus,"
    " BonusDeclared, DirectorFee, DirFeeApproved, Commission, CommissionFrom, CommissionTo, CommissionStatus,"
    " Transport, OtherAllowance, BenefitsInKind, EECPFPension, Donation) VALUES"
    " (101, 2023, 'CurIR8A', 85000.50, 5000, 2500.75, '2023-11-30', 12000, '2022-12-15', 1234.56,"
    "  '2023-01-01', '2023-12-31', 'CommissionMonthly', 600, 100.25, 300, 20400, 10.01);"
    "INSERT INTO IR8A (PersonalSysId, YEYear, IR8AType, GrossTotal, IncomeBorneStatus, IRASSection45,"
    " ExemptIncomeType, ExemptIncomeAmt, IR8SIndicator, Insurance, MOSQFund) VALUES"
    " (102, 2023, 'CurIR8A', 24000, 'Full', 'Y', 'IncomeTypeExempt', 1500.40, 'Y', 7.5, 4.5);"
    // Aaron has commission and transport only, none of the amounts that put
    // an employee on file: he is left out.
    "INSERT INTO YEEmployee (YEEmployerId, YEYear, PersonalSysId, CurrentYEGlobalId, TaxNo, EEName1)"
    " VALUES ('ACME', 2023, 108, 1, 'S6666666F', 'AARON');"
    "INSERT INTO IR8A (PersonalSysId, YEYear, IR8AType, Commission, Transport) VALUES (108, 2023, 'CurIR8A', 300, 50);";

const std::string kZeroCents(11, '0');

using IR8ARecords = IR8ATest;

TEST_F(IR8ARecords, CurrentOriginalFileMatchesTheHandWorkedRecords) {
    Sql(kEmployees);
    auto job = MakeJob();
    const auto records = Generate(*job);
    ASSERT_EQ(records.size(), 4u);
    EXPECT_EQ(job->GetOutputFilePath(), (root / "run" / "CUR_Submission(O).txt").string());

    EXPECT_EQ(records[0], Layout({{1, "0"}, {2, "6"}, {3, "2023"}, {7, "08"}, {9, "7"}, {10, "201912345K"},
                                  {22, "Tan Ah Kow"}, {52, "Finance Manager"}, {82, "OBrien Trading Pte. Ltd."},
                                  {142, "61234567"}, {162, "payroll@acme.com.sg"}, {222, "O"},
                                  {223, "20240301"}, {231, "Head Office"}, {261, "IR8A"}}));
    // Alice: bonus 5000 + 2500.75 -> 7500; others 1234.56 + 600 + 100.25 +
    // 300 = 2234.81 -> 2234; total 85000 + 7500 + 12000 + 2234 = 106734.
    EXPECT_EQ(records[1],
              Layout({{1, "1"}, {2, "1"}, {3, "S1234567D"}, {15, "ALICE TAN"}, {55, "CHLO\xC9"}, {251, "301"},
                      {254, "F"}, {255, "19850714"}, {263, "00010673D"}, {272, "20230101"}, {280, "20231231"},
                      {288, "00000"}, {293, "0001A"}, {298, "002040{"}, {305, "00000"}, {310, "00008500{"},
                      {319, "00000750{"}, {328, "00001200{"}, {337, "00000223D"}, {346, std::string(36, '0')},
                      {382, "YN"}, {400, "0000012345F"}, {411, "20230101"}, {419, "20231231"}, {427, "M"},
                      {428, kZeroCents}, {439, "0000006000{"}, {450, kZeroCents}, {461, "0000001002E"},
                      {472, std::string(77, '0')}, {549, "0000003000{"}, {567, "Managing Director"},
                      {597, "20150302"}, {613, "20231130"}, {621, "20221215"}, {749, "1"}}));
    // Bartholomew: the name cut at 40, no section 45 for a clerk.
    EXPECT_EQ(records[2],
              Layout({{1, "1"}, {2, "2"}, {3, "G7654321N"}, {15, "BARTHOLOMEW ALEXANDER LIM WEI MING JUNIO"},
                      {55, "S/O LIM AH BENG"}, {251, "303"}, {254, "M"}, {255, "19900228"}, {263, "00002400{"},
                      {272, "20230403"}, {280, "20231231"}, {288, "0000D"}, {293, "000000000000"},
                      {305, "0000G"}, {310, "00002400{"}, {319, std::string(36, '0')}, {355, "00000150{"},
                      {364, std::string(18, '0')}, {384, "F"}, {397, "Y4"}, {400, kZeroCents},
                      {428, std::string(12 * 11, '0')}, {567, "Clerk"}, {597, "20230403"}}));
    // Totals: income 106734 + 24000, salary 85000 + 24000, insurance 7, MBMF 4.
    EXPECT_EQ(records[3], Layout({{1, "2"}, {2, "000002"}, {8, "13073D"}, {20, "10900{"}, {32, "750{"},
                                  {44, "1200{"}, {56, "223D"}, {68, "150{"}, {80, "0"}, {92, "0"}, {104, "1A"},
                                  {116, "2040{"}, {128, "00000000000G"}, {140, "00000000000D"}}));

    StringList summary{"kept"};
    job->GenerateSummaryTextFile(summary);
    const std::string stars(48, '*');
    const StringList expected{
        "kept", stars, "", "SUMMARY OF FILE - Current IR8A    ", "", stars, "",
        "File Name:         " + job->GetOutputFilePath(), "Organisation Name: OBrien Trading Pte. Ltd.",
        "Organisation ID:   201912345K", "Form Type:         IR8A", "Batch Indicator:   O",
        "Basis Year:        2023", "No of Records:     2", "", "--------------------- INCOME -------------------",
        "Salary:            $ 109,000", "Bonus:             $ 7,500", "Director's Fee:    $ 12,000",
        "Others:            $ 2,234", "", "------------------- DEDUCTION ------------------",
        "CPF/Designated Pension or Provident Fund: $ 20,400", "Donation:                                 $ 11",
        "MBMF:                                     $ 4", "", ""};
    EXPECT_EQ(summary, expected);
}

// Rajesh's commission is a claw-back of 250.50 (an Original counts it as 0:
// see the sample payroll's test). An Amendment carries it: 25050 cents with the negative zero code, others
// -250, total income 1000 - 250 = 750.
TEST_F(IR8ARecords, NegativeCommissionAppearsInAnAmendmentOnly) {
    Sql("INSERT INTO YEEmployee (YEEmployerId, YEYear, PersonalSysId, CurrentYEGlobalId, PayeeIDType, TaxNo,"
        " EEName1, IRASNationalityCode, Gender, PaymentFrom, PaymentTo) VALUES"
        " ('ACME', 2023, 104, 1, 'NRIC', 'S2222222B', 'RAJESH', '301', 'M', '2023-01-01', '2023-12-31');"
        "INSERT INTO IR8A (PersonalSysId, YEYear, IR8AType, GrossTotal, Commission, CommissionStatus)"
        " VALUES (104, 2023, 'CurIR8A', 1000, -250.50, 'CommissionOther');");
    params.original = false;
    const auto records = Generate(*MakeJob());
    ASSERT_EQ(records.size(), 3u);
    EXPECT_EQ(Span(records[1], 263, 271) + Span(records[1], 337, 345), "00000075{" "00000025}");
    EXPECT_EQ(Span(records[1], 400, 410), "0000002505}");
    EXPECT_EQ(Span(records[2], 8, 19) + Span(records[2], 56, 67), "75{         " "25}         ");
}

// Basis year 2023 in year-end year 2024. Fiona left in February 2024, after
// the basis year: her period ends 2023-12-31, and 2023 recorded no
// cessation. George left on 15 October 2023.
TEST_F(IR8ARecords, SupplementaryTakesPeriodEndAndCessationFromTheBasisYear) {
    Sql("INSERT INTO YEEmployee (YEEmployerId, YEYear, PersonalSysId, SupYEGlobalId, PayeeIDType, TaxNo, EEName1,"
        " IRASNationalityCode, Gender, PaymentFrom, PaymentTo, Cessation) VALUES"
        " ('ACME', 2023, 106, NULL, 'NRIC', 'S4444444D', 'FIONA', '301', 'F', '2023-01-01', '2023-12-31', '1899-12-30'),"
        " ('ACME', 2024, 106, 2, 'NRIC', 'S4444444D', 'FIONA', '301', 'F', '2023-01-01', '2024-02-29', '2024-02-29'),"
        " ('ACME', 2023, 107, NULL, 'NRIC', 'S5555555E', 'GEORGE', '301', 'M', '2023-01-01', '2023-10-15', '2023-10-15'),"
        " ('ACME', 2024, 107, 2, 'NRIC', 'S5555555E', 'GEORGE', '301', 'M', '2023-01-01', '2023-10-15', '2023-10-15');"
        "INSERT INTO IR8A (PersonalSysId, YEYear, IR8AType, GrossTotal) VALUES"
        " (106, 2024, 'SupIR8A', 500), (107, 2024, 'SupIR8A', 250.99), (106, 2023, 'CurIR8A', 40000);");
    auto job = MakeJob("SupIR8A");
    const auto records = Generate(*job);
    ASSERT_EQ(records.size(), 4u);
    EXPECT_EQ(Span(records[1], 3, 11) + Span(records[1], 280, 287), "S4444444D" "20231231");
    EXPECT_EQ(Span(records[1], 605, 612), "        ");
    EXPECT_EQ(Span(records[2], 280, 287) + Span(records[2], 605, 612), "20231015" "20231015");
    EXPECT_EQ(Span(records[3], 1, 31), "2000002" "75{         " "75{         ");

    StringList summary;
    job->GenerateSummaryTextFile(summary);
    ASSERT_EQ(summary.size(), 26u);
    EXPECT_EQ(summary[2] + summary[16], "SUMMARY OF FILE - Supplementary IR8A    " "Bonus:             $ 0");
}

// A chairman paid a director's fee is no director by designation: no
// section 45 indicator. Tax status "not applicable" with a fixed amount
// borne by the employee gives H. Stock gains of 0.004 are encoded as they
// stand: positive, 0 dollars, so eight zeros and the positive zero code.
TEST_F(IR8ARecords, IndicatorsAndUnroundedStockGainsInAnAmendment) {
    Sql("INSERT INTO YEEmployee (YEEmployerId, YEYear, PersonalSysId, CurrentYEGlobalId, PayeeIDType, TaxNo,"
        " EEName1, Designation, PaymentFrom, PaymentTo) VALUES"
        " ('ACME', 2023, 109, 1, 'NRIC', 'S7777777G', 'HENRY', 'Chairman', '2023-01-01', '2023-12-31');"
        "INSERT INTO IR8A (PersonalSysId, YEYear, IR8AType, DirectorFee, IRASSection45, IncomeBorneStatus,"
        " FixedAmtBorneByEE, TotalStockGainsBef) VALUES (109, 2023, 'CurIR8A', 100, 'Y', 'NotApplicable', 300, 0.004);");
    params.original = false;
    auto job = MakeJob();
    const auto records = Generate(*job);
    ASSERT_EQ(records.size(), 3u);
    EXPECT_EQ(Span(records[1], 328, 336) + Span(records[1], 346, 354), "00000010{" "00000000{");
    EXPECT_EQ(Span(records[1], 373, 384), "00000030{" " " " " "H");
    // No salary at all: the salary line of the summary ends in "$ ".
    StringList summary;
    job->GenerateSummaryTextFile(summary);
    ASSERT_EQ(summary.size(), 26u);
    EXPECT_EQ(StringList(summary.begin() + 15, summary.begin() + 19),
              (StringList{"Salary:            $ ", "Bonus:             $ 0", "Director's Fee:    $ 100",
                          "Others:            $ 0"}));
    EXPECT_EQ(summary[10], "Batch Indicator:   A");
}

}  // namespace
}  // namespace iras::testing
