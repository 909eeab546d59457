// IRAS's checks on an original IR8A: each rule broken on an employee of its
// own, all employees validated in one pass, each reported with exactly the
// messages of the rules it breaks; and each employer rule of the header.
#include <map>

#include "tests/ir8a/IR8AFixture.h"

namespace iras::testing {
namespace {

struct EmployeeCase {
    std::string employee;  // SET clause of YEEmployee over a clean employee, or ""
    std::string ir8a;      // SET clause of IR8A, or ""
    StringList messages;
};

std::string Key(int id) { return (id < 10 ? "0" : "") + std::to_string(id); }

// A clean employee of basis year 2023, with whatever the case changes.
std::string EmployeeSql(int id, const EmployeeCase& c) {
    const std::string key = std::to_string(id), where = " WHERE PersonalSysId = " + key + ";";
    return "INSERT INTO Employee (EmployeeSysId, EmployeeCode, PersonalSysId) VALUES (" + key + ", 'V" + Key(id) +
           "', " + key + "); INSERT INTO YEEmployee (YEEmployerId, YEYear, PersonalSysId, CurrentYEGlobalId,"
           " PayeeIDType, TaxNo, EEName1, IRASNationalityCode, Gender, PaymentFrom, PaymentTo, Commencement) VALUES"
           " ('ACME', 2023, " + key + ", 1, 'NRIC', 'S" + key + "', 'EMPLOYEE " + key +
           "', '301', 'M', '2023-01-01', '2023-12-31', '2010-01-01');"
           " INSERT INTO IR8A (PersonalSysId, YEYear, IR8AType, GrossTotal) VALUES (" + key + ", 2023, 'CurIR8A', 1000);" +
           (c.employee.empty() ? "" : "UPDATE YEEmployee SET " + c.employee + where) +
           (c.ir8a.empty() ? "" : "UPDATE IR8A SET " + c.ir8a + where);
}

// The employee error list that the failing cases give, in employee id order.
StringList ExpectedFindings(const std::map<int, EmployeeCase>& cases) {
    StringList list;
    for (const auto& [id, c] : cases) {
        if (c.messages.empty()) continue;
        const bool noTaxNo = c.employee.find("TaxNo") != std::string::npos;
        list.push_back("Identity No: " + (noTaxNo ? std::string() : "S" + std::to_string(id)));
        list.push_back("Employee ID: V" + Key(id));
        list.insert(list.end(), c.messages.begin(), c.messages.end());
        list.push_back("");
    }
    return list;
}

const std::string kCessationYear =
    "Invalid Date of Cessation. Date Year must be equal to the basis year in the header record.";
const std::string kNationality =
    "Invalid Nationality Code. 300 or 997 has been removed from the list of Nationality Code.";

const std::map<int, EmployeeCase>& Cases() {
    static const std::map<int, EmployeeCase> cases{
        // Clean employees that come close to a rule: joined within the year,
        // fee approved the year before, joined on the last day before 1969.
        {1, {"", "", {}}},
        {2, {"PaymentFrom = '2023-04-03', Commencement = '2023-04-03'", "", {}}},
        {3, {"", "DirectorFee = 5000, DirFeeApproved = '2022-03-01'", {}}},
        {4, {"Commencement = '1968-12-31', Cessation = '2023-06-30', PaymentTo = '2023-06-30'",
             "CessationProvision = 'Y'", {}}},
        // One rule each.
        {10, {"PayeeIDType = 'XX'", "", {"Invalid ID Type."}}},
        {11, {"TaxNo = ''", "", {"Invalid ID No. ID No cannot be blank."}}},
        {12, {"EEName1 = ''", "", {"Invalid Name - Line 1. Name - Line 1 cannot be blank."}}},
        {13, {"IRASNationalityCode = ''", "", {"Invalid Nationality Code. Nationality Code cannot be blank."}}},
        {14, {"IRASNationalityCode = '300'", "", {kNationality}}},
        {15, {"IRASNationalityCode = '997'", "", {kNationality}}},
        {16, {"Gender = 'X'", "", {"Invalid Sex."}}},
        {17, {"PaymentFrom = '1899-12-30'", "", {"Invalid Period of Payment From Date. Date cannot be blank."}}},
        {18, {"PaymentFrom = '2023-02-01'", "",
              {"Invalid Period of Payment From Date. Date must be YYYY0101, where YYYY is the basis year, or equal "
               "to the commencement date if it falls within the basis year."}}},
        {19, {"PaymentFrom = '2022-06-01', Commencement = '2022-06-01'", "",
              {"Invalid Period of Payment From Date. Date that is equal to the commencement date has to fall "
               "within the basis year."}}},
        {20, {"PaymentTo = '1899-12-30'", "", {"Invalid Period of Payment To Date. Date cannot be blank."}}},
        {21, {"PaymentTo = '2023-11-30'", "",
              {"Invalid Period of Payment To Date. Date must  be YYYY1231, where YYYY is the basis year, or equal "
               "to the cessation date if it falls within the basis year."}}},
        {22, {"PaymentTo = '2024-01-15', Cessation = '2024-01-15'", "",
              {"Invalid Period of Payment To Date. Date that is equal to the cessation date has to fall within "
               "the basis year.", kCessationYear}}},
        {23, {"PaymentTo = '2023-01-01', Cessation = '2023-01-01'", "",
              {"Invalid Period of Payment From Date. From Date must be earlier than To Date."}}},
        {24, {"", "ExemptIncomeType = 'IncomeTypeOHQ'",
              {"Invalid Remission/Exempt/Non Taxable Income. Either Remission or Exempt/Non Taxable Income cannot "
               "be zero value."}}},
        {25, {"", "RemissionAmt = 100",
              {"Invalid Remission/Exempt/Non Taxable Income. Remission/Exempt/Non Taxable Income must be zero.",
               "Invalid Exempt/Remission Income Indicator. Exempt/Remission Income Indicator cannot be N."}}},
        {26, {"", "IncomeBorneStatus = 'Partial'",
              {"Invalid Amount of income tax liability for which tax is borne by employee. Amount of income tax "
               "liability for which tax is borne by employee cannot be zero value."}}},
        {27, {"", "IncomeBorneStatus = 'Full', TaxBorneByER = 50",
              {"Invalid Amount of income tax liability for which tax is borne by employee. Amount of income tax "
               "liability for which tax is borne by employee must be zero."}}},
        {28, {"", "IncomeBorneStatus = 'Fixed'",
              {"Invalid Fixed Amount of income tax liability for which tax is borne by employee. Fixed Amount of "
               "income tax liability for which tax is borne by employee cannot be zero value"}}},
        {29, {"", "IncomeBorneStatus = 'Partial', TaxBorneByER = 10, FixedAmtBorneByEE = 20",
              {"Invalid Fixed Amount of income tax liability for which tax is borne by employee. Fixed Amount of "
               "income tax liability for which tax is borne by employee must be zero."}}},
        {30, {"", "IRASSection45 = 'X'", {"Invalid Section 45."}}},
        {31, {"", "IncomeBorneStatus = 'Sometimes'", {"Invalid Employee's Income Tax borne by employer."}}},
        {32, {"", "CessationProvision = 'X'", {"Invalid Cessation Provisions."}}},
        {33, {"", "IR8SIndicator = ''", {"Invalid Form IR8S."}}},
        {34, {"", "ExemptIncomeType = 'Bogus'", {"Invalid Exempt/Remission Income Indicator."}}},
        {35, {"", "CommissionFrom = '2022-12-01', CommissionTo = '2023-12-31'",
              {"Invalid Gross Commission Payment From Date. Date must be equal to the basis year in the header "
               "record."}}},
        {36, {"", "CommissionFrom = '2023-01-01', CommissionTo = '2024-01-31'",
              {"Invalid Gross Commission Payment To Date. Date must be equal to the basis year in the header "
               "record."}}},
        {37, {"", "CommissionFrom = '2023-06-01', CommissionTo = '2023-05-01'",
              {"Invalid Gross Commission Payment From Date. From Date must be earlier than or equal to To Date."}}},
        {38, {"", "Commission = 500", {"Invalid Gross Commission Indicator."}}},
        {39, {"Commencement = '1899-12-30', Cessation = '2023-06-30', PaymentTo = '2023-06-30'",
              "CessationProvision = 'Y'", {"Invalid Date of Commencement. Date of Commencement cannot be blank."}}},
        {40, {"Commencement = '1969-01-01', Cessation = '2023-06-30', PaymentTo = '2023-06-30'",
              "CessationProvision = 'Y'",
              {"Invalid Date of Commencement. Date of Commencement must be before 01-01-1969."}}},
        {41, {"Commencement = '1960-05-01'", "CessationProvision = 'Y'",
              {"Invalid Date of Cessation. Date of Cessation cannot be blank."}}},
        {42, {"Cessation = '2022-05-01'", "", {kCessationYear}}},
        {43, {"", "BonusDeclared = '2022-12-31'",
              {"Invalid Date of declaration of bonus. Date Year must be equal to the basis year in the header "
               "record."}}},
        {44, {"", "DirectorFee = 5000", {"Invalid Date of approval of director. Date cannot be blank."}}},
        {45, {"", "DirectorFee = 5000, DirFeeApproved = '2021-12-31'",
              {"Invalid Date of approval of director. Date Year must be equal to the basis year in the header "
               "record or basis year -1."}}},
        {46, {"", "GrossTotal = -100",
              {"Negative amount. IRAS file submission will not accept negative amount for Gross Salary"}}},
        {47, {"", "Gratuity = -50",
              {"Negative amount. IRAS file submission will not accept negative amount for Lump Sum Payment."}}},
        // Beyond the record's fields: 1000000000.50 needs ten digits as
        // dollars and twelve as cents; the totals that include it overflow too.
        {49, {"", "Transport = 1000000000.5",
              {"Amount too large for the IR8A record. Total income of 1000001000.00 does not fit in its "
               "9-character field.",
               "Amount too large for the IR8A record. Others of 1000000000.50 does not fit in its 9-character field.",
               "Amount too large for the IR8A record. Transport allowance of 1000000000.50 does not fit in its "
               "11-character field."}}},
    };
    return cases;
}

using IR8AValidation = IR8ATest;

TEST_F(IR8AValidation, EachRuleReportsItsOwnMessageAndEveryEmployeeIsChecked) {
    int failing = 0;
    for (const auto& [id, c] : Cases()) {
        Sql(EmployeeSql(id, c));
        failing += c.messages.empty() ? 0 : 1;
    }
    params.sortOrder = 1;  // by employee id, the order of the cases
    auto job = MakeJob();
    EXPECT_EQ(job->ValidateIR8AFile(), 0);
    EXPECT_EQ(job->GetRecordsFailed(), failing);
    EXPECT_EQ(employeeErrors, ExpectedFindings(Cases()));
    EXPECT_EQ(LogFrom("Employee S16 is not successfully validated.", 3),
              (StringList{"Employee S16 is not successfully validated.", "Invalid Sex.", ""}));
    EXPECT_EQ(LogFrom("Total No. of Errors in IR8A Header             : 0", 2),
              (StringList{"Total No. of Errors in IR8A Header             : 0",
                          "Total No. of Records not successfully validated: " + std::to_string(failing)}));
    // A failing employee stops the file.
    EXPECT_EQ(job->ProcessIR8AeSubmission(), 0);
    EXPECT_FALSE(std::filesystem::exists(root / "run" / "CUR_Submission(O).txt"));
}

// An amount beyond its field is a limit of the record, not an IRAS rule: it
// stops an Amendment too. The largest amounts that fit are written.
TEST_F(IR8AValidation, AmountTooLargeStopsAnAmendmentButTheLargestThatFitIsWritten) {
    const std::map<int, EmployeeCase> tooLarge{
        {48, {"", "GrossTotal = 1000000000",
              {"Amount too large for the IR8A record. Total income of 1000000000.00 does not fit in its "
               "9-character field.",
               "Amount too large for the IR8A record. Gross salary of 1000000000.00 does not fit in its "
               "9-character field."}}}};
    Sql(EmployeeSql(48, tooLarge.at(48)));
    params.original = false;
    auto job = MakeJob();
    EXPECT_EQ(job->ValidateIR8AFile(), 0);
    EXPECT_EQ(employeeErrors, ExpectedFindings(tooLarge));
    EXPECT_EQ(job->ProcessIR8AeSubmission(), 0);  // even when asked, nothing is written wrongly
    EXPECT_FALSE(std::filesystem::exists(root / "run" / "CUR_Submission(A).txt"));

    Sql("DELETE FROM IR8A; DELETE FROM YEEmployee; DELETE FROM Employee;");
    Sql(EmployeeSql(60, {"", "GrossTotal = 999999999.99, Transport = -999999999.99", {}}));
    params.original = true;
    const auto records = Generate(*MakeJob());
    ASSERT_EQ(records.size(), 3u);
    EXPECT_EQ(Span(records[1], 310, 318), "99999999I");
    EXPECT_EQ(Span(records[1], 439, 449), "00000000000");  // an Original drops a negative allowance
}

TEST_F(IR8AValidation, EachEmployerRuleReportsItsMessage) {
    Sql(EmployeeSql(1, Cases().at(1)));
    const std::pair<const char*, StringList> cases[] = {
        {"EmployerSource = 'Nowhere'", {"Invalid Source."}},
        {"PayerID = ''", {"Invalid Organization ID Type. Organization ID Type cannot be blank."}},
        {"PayerID = 'XYZ'", {"Invalid Organization ID Type."}},
        // G is refused although the basis year (2010) is before 2013.
        {"PayerID = 'GSTN'", {"Invalid Organization ID Type. G is no longer applicable with effect from Year of "
                              "Assessment 2013. File is not created."}},
        {"TaxRefNo = ''", {"Invalid Organization ID No. cannot be blank."}},
        {"AuthorisedName = ''", {"Invalid Name of Authorised Person."}},
        {"ERName1 = ' ; ', ERName2 = ''''", {"Invalid employer name."}},
        {"TelephoneNo = '   '", {"Telephone number cannot be blank."}},
        {"EmailAddress = ''", {"Email address cannot be blank."}},
        {"EmailAddress = 'a23456789012345678901234567890123456789012@acme.com'",  // 51 characters
         {"Email address cannot be more than 50 characters."}}};
    const std::string clean = "EmployerSource = 'PrivateSector', PayerID = 'UEN', TaxRefNo = '201912345K',"
                              " AuthorisedName = 'Tan', ERName1 = 'Acme', TelephoneNo = '1', EmailAddress = 'a@b.sg'";
    for (const auto& [change, messages] : cases) {
        Sql("UPDATE YEEmployer SET " + clean + "; UPDATE YEEmployer SET " + change + ";");
        auto job = MakeJob("CurIR8A", 2010);
        ASSERT_NE(job->RefreshQuery(), 0);
        EXPECT_EQ(job->IR8AHeaderValidation(), 0) << change;
        EXPECT_EQ(job->GetErrorList(), messages) << change;
    }
}

// Two header errors are both reported and counted; a 50-character e-mail
// address passes and is placed left-aligned in its 60 places.
TEST_F(IR8AValidation, HeaderErrorsAreCountedAndAFiftyCharacterEmailPasses) {
    Sql(EmployeeSql(1, Cases().at(1)));
    Sql("UPDATE YEEmployer SET PayerID = 'GSTN', TelephoneNo = '';");
    auto failing = MakeJob();
    EXPECT_EQ(failing->ValidateIR8AFile(), 0);
    EXPECT_EQ(failing->GetHeaderErrorCount(), 2);
    EXPECT_EQ(LogFrom("Telephone number cannot be blank.", 2), (StringList{"Telephone number cannot be blank.", ""}));
    EXPECT_TRUE(Has(log, "Total No. of Errors in IR8A Header             : 2"));

    const std::string email = "a2345678901234567890123456789012345678901@acme.com";  // 50 characters
    Sql("UPDATE YEEmployer SET PayerID = 'UEN', TelephoneNo = '1', EmailAddress = '" + email + "';");
    const auto records = Generate(*MakeJob());
    ASSERT_FALSE(records.empty());
    EXPECT_EQ(Span(records[0], 162, 221), email + std::string(10, ' '));
}

}  // namespace
}  // namespace iras::testing
