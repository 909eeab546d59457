// IRAS's checks on an original IR8A: each rule broken on an employee of its
// own, all employees validated in one pass, each reported with exactly the
// messages of the rules it breaks; and each employer rule of the header.
#include <map>

#include "tests/ir8a/IR8AFixture.h"

namespace iras::testing {
namespace {

using Columns = std::map<std::string, std::string>;  // column -> SQL literal

struct EmployeeCase {
    Columns employee;  // YEEmployee columns that differ from a clean employee
    Columns ir8a;      // IR8A columns that differ
    StringList messages;
};

std::string Insert(const std::string& table, const Columns& columns) {
    std::string names;
    std::string values;
    for (const auto& [name, value] : columns) {
        names += (names.empty() ? "" : ", ") + name;
        values += (values.empty() ? "" : ", ") + value;
    }
    return "INSERT INTO " + table + " (" + names + ") VALUES (" + values + ");";
}

// A clean employee of basis year 2023, with whatever the case changes.
std::string EmployeeSql(int id, const EmployeeCase& c) {
    const std::string key = std::to_string(id);
    Columns employee{{"YEEmployerId", "'ACME'"}, {"YEYear", "2023"}, {"PersonalSysId", key},
                     {"CurrentYEGlobalId", "1"}, {"PayeeIDType", "'NRIC'"},
                     {"TaxNo", "'S" + key + "'"}, {"EEName1", "'EMPLOYEE " + key + "'"},
                     {"IRASNationalityCode", "'301'"}, {"Gender", "'M'"},
                     {"PaymentFrom", "'2023-01-01'"}, {"PaymentTo", "'2023-12-31'"},
                     {"Commencement", "'2010-01-01'"}, {"Cessation", "'1899-12-30'"}};
    Columns ir8a{{"PersonalSysId", key}, {"YEYear", "2023"}, {"IR8AType", "'CurIR8A'"}, {"GrossTotal", "1000"}};
    for (const auto& [name, value] : c.employee) employee[name] = value;
    for (const auto& [name, value] : c.ir8a) ir8a[name] = value;
    return "INSERT INTO Employee (EmployeeSysId, EmployeeCode, PersonalSysId) VALUES (" + key + ", 'V" + key +
           "', " + key + ");" + Insert("YEEmployee", employee) + Insert("IR8A", ir8a);
}

// The employee error list, by employee id: the messages of each.
std::map<std::string, StringList> FindingsById(const StringList& list) {
    std::map<std::string, StringList> findings;
    std::string current;
    for (std::size_t i = 0; i < list.size(); ++i) {
        if (list[i].rfind("Identity No: ", 0) == 0) {
            current = list.at(i + 1).substr(std::string("Employee ID: ").size());
            findings[current];
            ++i;
        } else if (!list[i].empty()) {
            findings[current].push_back(list[i]);
        }
    }
    return findings;
}

const std::map<int, EmployeeCase>& Cases() {
    static const std::map<int, EmployeeCase> cases{
        // Clean employees that come close to a rule.
        {1, {{}, {}, {}}},
        {2, {{{"PaymentFrom", "'2023-04-03'"}, {"Commencement", "'2023-04-03'"}}, {}, {}}},
        {3, {{}, {{"DirectorFee", "5000"}, {"DirFeeApproved", "'2022-03-01'"}}, {}}},
        {4, {{{"Commencement", "'1968-12-31'"}, {"Cessation", "'2023-06-30'"}, {"PaymentTo", "'2023-06-30'"}},
             {{"CessationProvision", "'Y'"}}, {}}},
        // One rule each.
        {10, {{{"PayeeIDType", "'XX'"}}, {}, {"Invalid ID Type."}}},
        {11, {{{"TaxNo", "''"}}, {}, {"Invalid ID No. ID No cannot be blank."}}},
        {12, {{{"EEName1", "''"}}, {}, {"Invalid Name - Line 1. Name - Line 1 cannot be blank."}}},
        {13, {{{"IRASNationalityCode", "''"}}, {}, {"Invalid Nationality Code. Nationality Code cannot be blank."}}},
        {14, {{{"IRASNationalityCode", "'300'"}}, {},
              {"Invalid Nationality Code. 300 or 997 has been removed from the list of Nationality Code."}}},
        {15, {{{"IRASNationalityCode", "'997'"}}, {},
              {"Invalid Nationality Code. 300 or 997 has been removed from the list of Nationality Code."}}},
        {16, {{{"Gender", "'X'"}}, {}, {"Invalid Sex."}}},
        {17, {{{"PaymentFrom", "'1899-12-30'"}}, {}, {"Invalid Period of Payment From Date. Date cannot be blank."}}},
        {18, {{{"PaymentFrom", "'2023-02-01'"}}, {},
              {"Invalid Period of Payment From Date. Date must be YYYY0101, where YYYY is the basis year, or equal "
               "to the commencement date if it falls within the basis year."}}},
        {19, {{{"PaymentFrom", "'2022-06-01'"}, {"Commencement", "'2022-06-01'"}}, {},
              {"Invalid Period of Payment From Date. Date that is equal to the commencement date has to fall "
               "within the basis year."}}},
        {20, {{{"PaymentTo", "'1899-12-30'"}}, {}, {"Invalid Period of Payment To Date. Date cannot be blank."}}},
        {21, {{{"PaymentTo", "'2023-11-30'"}}, {},
              {"Invalid Period of Payment To Date. Date must  be YYYY1231, where YYYY is the basis year, or equal "
               "to the cessation date if it falls within the basis year."}}},
        {22, {{{"PaymentTo", "'2024-01-15'"}, {"Cessation", "'2024-01-15'"}}, {},
              {"Invalid Period of Payment To Date. Date that is equal to the cessation date has to fall within "
               "the basis year.",
               "Invalid Date of Cessation. Date Year must be equal to the basis year in the header record."}}},
        {23, {{{"PaymentTo", "'2023-01-01'"}, {"Cessation", "'2023-01-01'"}}, {},
              {"Invalid Period of Payment From Date. From Date must be earlier than To Date."}}},
        {24, {{}, {{"ExemptIncomeType", "'IncomeTypeOHQ'"}},
              {"Invalid Remission/Exempt/Non Taxable Income. Either Remission or Exempt/Non Taxable Income cannot "
               "be zero value."}}},
        {25, {{}, {{"RemissionAmt", "100"}},
              {"Invalid Remission/Exempt/Non Taxable Income. Remission/Exempt/Non Taxable Income must be zero.",
               "Invalid Exempt/Remission Income Indicator. Exempt/Remission Income Indicator cannot be N."}}},
        {26, {{}, {{"IncomeBorneStatus", "'Partial'"}},
              {"Invalid Amount of income tax liability for which tax is borne by employee. Amount of income tax "
               "liability for which tax is borne by employee cannot be zero value."}}},
        {27, {{}, {{"IncomeBorneStatus", "'Full'"}, {"TaxBorneByER", "50"}},
              {"Invalid Amount of income tax liability for which tax is borne by employee. Amount of income tax "
               "liability for which tax is borne by employee must be zero."}}},
        {28, {{}, {{"IncomeBorneStatus", "'Fixed'"}},
              {"Invalid Fixed Amount of income tax liability for which tax is borne by employee. Fixed Amount of "
               "income tax liability for which tax is borne by employee cannot be zero value"}}},
        {29, {{}, {{"IncomeBorneStatus", "'Partial'"}, {"TaxBorneByER", "10"}, {"FixedAmtBorneByEE", "20"}},
              {"Invalid Fixed Amount of income tax liability for which tax is borne by employee. Fixed Amount of "
               "income tax liability for which tax is borne by employee must be zero."}}},
        {30, {{}, {{"IRASSection45", "'X'"}}, {"Invalid Section 45."}}},
        {31, {{}, {{"IncomeBorneStatus", "'Sometimes'"}}, {"Invalid Employee's Income Tax borne by employer."}}},
        {32, {{}, {{"CessationProvision", "'X'"}}, {"Invalid Cessation Provisions."}}},
        {33, {{}, {{"IR8SIndicator", "''"}}, {"Invalid Form IR8S."}}},
        {34, {{}, {{"ExemptIncomeType", "'Bogus'"}}, {"Invalid Exempt/Remission Income Indicator."}}},
        {35, {{}, {{"CommissionFrom", "'2022-12-01'"}, {"CommissionTo", "'2023-12-31'"}},
              {"Invalid Gross Commission Payment From Date. Date must be equal to the basis year in the header "
               "record."}}},
        {36, {{}, {{"CommissionFrom", "'2023-01-01'"}, {"CommissionTo", "'2024-01-31'"}},
              {"Invalid Gross Commission Payment To Date. Date must be equal to the basis year in the header "
               "record."}}},
        {37, {{}, {{"CommissionFrom", "'2023-06-01'"}, {"CommissionTo", "'2023-05-01'"}},
              {"Invalid Gross Commission Payment From Date. From Date must be earlier than or equal to To Date."}}},
        {38, {{}, {{"Commission", "500"}}, {"Invalid Gross Commission Indicator."}}},
        {39, {{{"Commencement", "'1899-12-30'"}, {"Cessation", "'2023-06-30'"}, {"PaymentTo", "'2023-06-30'"}},
              {{"CessationProvision", "'Y'"}},
              {"Invalid Date of Commencement. Date of Commencement cannot be blank."}}},
        {40, {{{"Commencement", "'1969-01-01'"}, {"Cessation", "'2023-06-30'"}, {"PaymentTo", "'2023-06-30'"}},
              {{"CessationProvision", "'Y'"}},
              {"Invalid Date of Commencement. Date of Commencement must be before 01-01-1969."}}},
        {41, {{{"Commencement", "'1960-05-01'"}}, {{"CessationProvision", "'Y'"}},
              {"Invalid Date of Cessation. Date of Cessation cannot be blank."}}},
        {42, {{{"Cessation", "'2022-05-01'"}}, {},
              {"Invalid Date of Cessation. Date Year must be equal to the basis year in the header record."}}},
        {43, {{}, {{"BonusDeclared", "'2022-12-31'"}},
              {"Invalid Date of declaration of bonus. Date Year must be equal to the basis year in the header "
               "record."}}},
        {44, {{}, {{"DirectorFee", "5000"}}, {"Invalid Date of approval of director. Date cannot be blank."}}},
        {45, {{}, {{"DirectorFee", "5000"}, {"DirFeeApproved", "'2021-12-31'"}},
              {"Invalid Date of approval of director. Date Year must be equal to the basis year in the header "
               "record or basis year -1."}}},
        {46, {{}, {{"GrossTotal", "-100"}},
              {"Negative amount. IRAS file submission will not accept negative amount for Gross Salary"}}},
        {47, {{}, {{"Gratuity", "-50"}},
              {"Negative amount. IRAS file submission will not accept negative amount for Lump Sum Payment."}}},
        // Beyond the record's fields: 1e9 dollars needs ten digits, and as
        // cents twelve; the totals that include it overflow too.
        {48, {{}, {{"GrossTotal", "1000000000"}},
              {"Amount too large for the IR8A record. Total income of 1000000000.00 does not fit in its "
               "9-character field.",
               "Amount too large for the IR8A record. Gross salary of 1000000000.00 does not fit in its "
               "9-character field."}}},
        {49, {{}, {{"Transport", "1000000000.5"}},
              {"Amount too large for the IR8A record. Total income of 1000001000.00 does not fit in its "
               "9-character field.",
               "Amount too large for the IR8A record. Others of 1000000000.50 does not fit in its "
               "9-character field.",
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
        if (!c.messages.empty()) ++failing;
    }
    auto job = MakeJob();
    EXPECT_EQ(job->ValidateIR8AFile(), 0);
    EXPECT_EQ(job->GetRecordsFailed(), failing);
    EXPECT_TRUE(Has(log, "Total No. of Records not successfully validated: " + std::to_string(failing)));

    const auto findings = FindingsById(employeeErrors);
    for (const auto& [id, c] : Cases()) {
        const std::string employeeId = "V" + std::to_string(id);
        const auto found = findings.find(employeeId);
        if (c.messages.empty()) {
            EXPECT_EQ(found, findings.end()) << employeeId << " should pass";
        } else if (found == findings.end()) {
            ADD_FAILURE() << employeeId << " was not reported";
        } else {
            EXPECT_EQ(found->second, c.messages) << employeeId;
        }
    }
    // A failing employee stops the file.
    EXPECT_EQ(job->ProcessIR8AeSubmission(), 0);
    EXPECT_FALSE(std::filesystem::exists(root / "run" / "CUR_Submission(O).txt"));
}

TEST_F(IR8AValidation, FailingEmployeeIsNamedInTheLogsWithItsMessages) {
    Sql(EmployeeSql(16, Cases().at(16)) + EmployeeSql(1, Cases().at(1)));
    EXPECT_EQ(MakeJob()->ValidateIR8AFile(), 0);
    EXPECT_EQ(employeeErrors, (StringList{"Identity No: S16", "Employee ID: V16", "Invalid Sex.", ""}));
    const auto lines = log.Lines();
    const auto at = std::find(lines.begin(), lines.end(), "Employee S16 is not successfully validated.");
    ASSERT_NE(at, lines.end());
    EXPECT_EQ(StringList(at - 1, at + 3), (StringList{"", *at, "Invalid Sex.", ""}));
    const auto counts = std::find(lines.begin(), lines.end(), "Total No. of Errors in IR8A Header             : 0");
    ASSERT_NE(counts, lines.end());
    EXPECT_EQ(*(counts + 1), "Total No. of Records not successfully validated: 1");
}

// An amount beyond its field is a limit of the record, not an IRAS rule.
TEST_F(IR8AValidation, AmountTooLargeStopsAnAmendmentToo) {
    Sql(EmployeeSql(48, Cases().at(48)));
    params.original = false;
    auto job = MakeJob();
    EXPECT_EQ(job->ValidateIR8AFile(), 0);
    EXPECT_EQ(FindingsById(employeeErrors)["V48"], Cases().at(48).messages);
    EXPECT_EQ(job->ProcessIR8AeSubmission(), 0);  // even when asked, nothing is written wrongly
    EXPECT_FALSE(std::filesystem::exists(root / "run" / "CUR_Submission(A).txt"));
}

TEST_F(IR8AValidation, LargestAmountsThatFitAreWritten) {
    Sql(EmployeeSql(60, {{}, {{"GrossTotal", "999999999.99"}, {"Transport", "-999999999.99"}}, {}}));
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
         {"Email address cannot be more than 50 characters."}},
        {"EmployerSource = '', PayerID = '', TaxRefNo = '', AuthorisedName = '', ERName1 = '', ERName2 = '',"
         " TelephoneNo = '', EmailAddress = ''",
         {"Invalid Source.", "Invalid Organization ID Type. Organization ID Type cannot be blank.",
          "Invalid Organization ID No. cannot be blank.", "Invalid Name of Authorised Person.",
          "Invalid employer name.", "Telephone number cannot be blank.", "Email address cannot be blank."}}};
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

TEST_F(IR8AValidation, HeaderErrorsAreCountedAndAFiftyCharacterEmailPasses) {
    Sql(EmployeeSql(1, Cases().at(1)));
    Sql("UPDATE YEEmployer SET PayerID = 'GSTN', TelephoneNo = '';");
    auto failing = MakeJob();
    EXPECT_EQ(failing->ValidateIR8AFile(), 0);
    EXPECT_EQ(failing->GetHeaderErrorCount(), 2);
    EXPECT_TRUE(Has(log, "Total No. of Errors in IR8A Header             : 2"));
    EXPECT_TRUE(Has(log, "Telephone number cannot be blank."));

    const std::string email = "a2345678901234567890123456789012345678901@acme.com";  // 50 characters
    Sql("UPDATE YEEmployer SET PayerID = 'UEN', TelephoneNo = '1', EmailAddress = '" + email + "';");
    const auto records = Generate(*MakeJob());
    ASSERT_FALSE(records.empty());
    EXPECT_EQ(Span(records[0], 162, 221), email + std::string(10, ' '));
}

}  // namespace
}  // namespace iras::testing
