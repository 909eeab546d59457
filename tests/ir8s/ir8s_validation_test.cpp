// IRAS's checks on an original IR8S: each rule broken on an employee of its
// own, all employees validated in one pass, each reported with exactly the
// messages of the rules it breaks (clean cases just inside each limit); each
// employer rule of the header; the option switches in their fixed order; and
// the shape of the validation log.
#include <map>

#include "tests/ir8s/IR8SFixture.h"

namespace iras::testing {
namespace {

struct EmployeeCase {
    std::string employee;                // SET clause of YEEmployee, or ""
    std::string ir8s;                    // SET clause of IR8S, or ""
    int monthRows = 13;                  // Section A rows of 2,500 a month
    std::vector<std::string> payments;   // Section B rows (values of AddPayment)
    StringList messages;
};

const std::string kPaid = "'2023-01-01', '2023-12-31', '2023-12-29', 50, 0, '2024-01-10', 60, 0, '2024-01-10'";
std::string Payment(const std::string& amount, const std::string& from, const std::string& to,
                    const std::string& paid) {
    return amount + ", '" + from + "', '" + to + "', '" + paid + "', 0, 0, '1899-12-30', 0, 0, '1899-12-30'";
}
const std::string kNone = "1899-12-30";
const std::string kOccurrence1 = "Section B Occurrence 1 - Invalid ";

const std::map<int, EmployeeCase>& Cases() {
    static const std::map<int, EmployeeCase> cases{
        // Clean: thirteen rows, no approval for a resident of the day before
        // the cut-off, an empty payment, three payments, a one-month period.
        {1, {"", "", 13, {}, {}}},
        {2, {"", "DateOfPRGranted = '2020-12-31'", 13, {}, {}}},
        {3, {"", "", 13, {Payment("0", kNone, kNone, kNone)}, {}}},
        {4, {"", "ApprovalForFullCPF = 'N', CPFOverseasObligatory = 'Y', DateOfPRGranted = '2022-03-01'", 13,
             {"1000, " + kPaid, "1000, " + kPaid, Payment("500", "2023-06-01", "2023-06-01", "2023-06-30")}, {}}},
        // One rule each.
        {10, {"PayeeIDType = 'XX'", "", 13, {}, {"Invalid ID Type."}}},
        {11, {"TaxNo = ''", "", 13, {}, {"Invalid ID No. ID No cannot be blank."}}},
        {12, {"EEName1 = ''", "", 13, {}, {"Invalid Name - Line 1. Name - Line 1 cannot be blank."}}},
        {13, {"", "", 14, {},
              {"Invalid Section A - Details of monthly wages and contributions. Section A can only have a maximum "
               "of 12 records."}}},
        {14, {"", "CPFOverseasObligatory = 'X'", 13, {},
              {"Invalid Indicator for CPF contributions in respect of overseas posting which is obligatory by "
               "contract of employment."}}},
        {15, {"", "ApprovalForFullCPF = 'X'", 13, {},
              {"Invalid Approval that is obtained from CPF Board to make full contribution."}}},
        {16, {"", "DateOfPRGranted = '2021-01-01'", 13, {},
              {"Approval indicator must not be blank if Singapore Permanent Resident Status is approved on or after "
               "01.01.2021"}}},
        // Four payments, each of them wrong: only the count is reported.
        {17, {"", "", 13, std::vector<std::string>(4, Payment("0", "2022-01-01", kNone, kNone)),
              {"Invalid Section B - Details of refund claimed/to be claimed. Section B can only have a maximum of 3 "
               "records."}}},
        {18, {"", "", 13, {Payment("0", "2023-01-01", "2023-12-31", "2023-12-31")},
              {kOccurrence1 + "Additional Wages. Additional Wages cannot be zero value."}}},
        // The second occurrence is numbered as such.
        {19, {"", "", 13, {"1000, " + kPaid, Payment("100", kNone, "2023-12-31", "2023-12-31")},
              {"Section B Occurrence 2 - Invalid Period of Payment for Additional Wages From Date. Date cannot be "
               "blank."}}},
        {20, {"", "", 13, {Payment("100", "2022-12-01", "2023-12-31", "2023-12-31")},
              {kOccurrence1 + "Period of Payment for Additional Wages From Date. Date must be equal to the basis "
                              "year in the header record."}}},
        {21, {"", "", 13, {Payment("100", "2023-01-01", kNone, "2023-12-31")},
              {kOccurrence1 + "Period of Payment for Additional Wages To Date. Date cannot be blank."}}},
        {22, {"", "", 13, {Payment("100", "2023-01-01", "2024-01-31", "2023-12-31")},
              {kOccurrence1 + "Period of Payment for Additional Wages To Date. Date must be equal to the basis year "
                              "in the header record."}}},
        {23, {"", "", 13, {Payment("100", "2023-09-01", "2023-03-31", "2023-12-31")},
              {kOccurrence1 + "Period of Payment for Additional Wages From Date. From Date must be earlier than or "
                              "equal to To Date."}}},
        {24, {"", "", 13, {Payment("100", "2023-01-01", "2023-12-31", kNone)},
              {kOccurrence1 + "Date of Payment for Additional Wages. Date cannot be blank."}}},
        // A payment date alone asks for an amount and both period dates.
        {25, {"", "", 13, {Payment("0", kNone, kNone, "2023-12-31")},
              {kOccurrence1 + "Additional Wages. Additional Wages cannot be zero value.",
               kOccurrence1 + "Period of Payment for Additional Wages From Date. Date cannot be blank.",
               kOccurrence1 + "Period of Payment for Additional Wages To Date. Date cannot be blank."}}},
        // Limits of the record itself, not rules of IRAS.
        {26, {"", "", 0, {},
              {"No Section A - Details of monthly wages and contributions. The IR8S record needs the wages of the "
               "months and their total."}}},
        {27, {"", "ERVolCPF = 10000000", 13, {},
              {"Amount too large for the IR8S record. Employer's voluntary CPF of 10000000.00 does not fit in its "
               "7-character field."}}},
    };
    return cases;
}

void AddCase(int id, const EmployeeCase& c) {
    const std::string key = std::to_string(id);
    IR8STest::AddEmployee(id, "NRIC", "S" + key, "EMPLOYEE " + key, "", c.ir8s);
    if (!c.employee.empty()) IR8STest::Sql("UPDATE YEEmployee SET " + c.employee + " WHERE PersonalSysId = " + key);
    IR8STest::AddMonths(id, c.monthRows);
    for (std::size_t i = 0; i < c.payments.size(); ++i) IR8STest::AddPayment(id, static_cast<int>(i) + 1, c.payments[i]);
}

using IR8SValidation = IR8STest;

TEST_F(IR8SValidation, EachEmployeeRuleGivesItsOwnMessages) {
    for (const auto& [id, c] : Cases()) AddCase(id, c);
    params.sortOrder = 0;  // by tax number; "" (id 11) first, then S1 ... S27 as text
    auto job = MakeJob();
    EXPECT_EQ(job->ValidateIR8SFile(), 0);

    std::map<std::string, StringList> expected;  // by tax number, as the employee list orders them
    for (const auto& [id, c] : Cases()) {
        if (c.messages.empty()) continue;
        const std::string taxNo = c.employee.find("TaxNo") != std::string::npos ? "" : "S" + std::to_string(id);
        StringList& list = expected[taxNo];
        list = {"Identity No: " + taxNo, "Employee ID: E" + std::to_string(id)};
        list.insert(list.end(), c.messages.begin(), c.messages.end());
        list.push_back("");
        EXPECT_TRUE(Has(log, "Employee " + taxNo + " is not successfully processed.")) << id;
    }
    StringList all;
    for (const auto& [taxNo, list] : expected) all.insert(all.end(), list.begin(), list.end());
    EXPECT_EQ(employeeErrors, all);
    EXPECT_TRUE(Has(log, "Total No. of Records not successfully validated: " + std::to_string(expected.size())));
}

TEST_F(IR8SValidation, AnAmendmentIsNotChecked) {
    for (int id : {10, 11, 16, 17}) AddCase(id, Cases().at(id));
    Sql("UPDATE YEEmployer SET PayerID = 'GSTN', EmailAddress = ''");
    EXPECT_NE(MakeJob(false)->ValidateIR8SFile(), 0);
    EXPECT_TRUE(employeeErrors.empty()) << ::testing::PrintToString(employeeErrors);
}

TEST_F(IR8SValidation, EachEmployerRuleGivesItsMessage) {
    const std::string fifty = std::string(38, 'a') + "@example.com";  // 50 characters
    const std::vector<std::pair<std::string, std::string>> cases{
        {"EmailAddress = '" + fifty + "'", ""},
        {"EmployerSource = 'SourceRetired'", "Invalid Source."},
        {"PayerID = ''", "Invalid Organization ID Type. Organization ID Type cannot be blank."},
        {"PayerID = 'XX'", "Invalid Organization ID Type."},
        {"PayerID = 'GSTN'",
         "Invalid Organization ID Type. G is no longer applicable with effect from Year of Assessment 2013. File "
         "is not created."},
        {"TaxRefNo = ''", "Invalid Organization ID No. Organization ID No. cannot be blank."},
        {"AuthorisedName = ''", "Invalid Name of Authorised Person."},
        {"ERName1 = '''', ERName2 = ''", "Invalid employer name."},
        {"TelephoneNo = ''", "Telephone number cannot be blank."},
        {"EmailAddress = ''", "Email address cannot be blank."},
        {"EmailAddress = 'x" + fifty + "'", "Email address cannot be more than 50 characters."},
    };
    AddCase(1, Cases().at(1));
    for (const auto& [set, message] : cases) {
        Sql("DROP TABLE IF EXISTS Saved; CREATE TABLE Saved AS SELECT * FROM YEEmployer;"
            "UPDATE YEEmployer SET " + set);
        log.Clear();
        auto job = MakeJob();
        EXPECT_EQ(job->ValidateIR8SFile(), message.empty() ? 1 : 0) << set;
        if (!message.empty()) {
            // The finding straight after the header banner, one blank line
            // after it, then the details banner.
            const StringList lines = log.View();
            const auto at = std::find(lines.begin(), lines.end(), message);
            ASSERT_NE(at, lines.end()) << set;
            EXPECT_EQ(StringList(at - 2, at + 4),
                      (StringList{std::string(48, '*'), "", message, "", "", std::string(48, '*')}));
            EXPECT_TRUE(Has(log, "Total No. of Errors in IR8S Header             : 1")) << set;
            // Generated all the same, the refused header leaves no file.
            EXPECT_EQ(job->ProcessIR8SeSubmission(), 0) << set;
            EXPECT_TRUE(job->GetOutputFilePath().empty()) << set;
            EXPECT_TRUE(Has(log, "The IR8S header is not written: the employer's details fail IRAS's checks."));
        }
        Sql("DELETE FROM YEEmployer; INSERT INTO YEEmployer SELECT * FROM Saved;");
    }
}

TEST_F(IR8SValidation, SwitchesJoinInTheirFixedOrder) {
    struct Case {
        bool greater, excess, overseas, indicator, percent;
        std::string conditions;
    };
    const std::vector<Case> cases{
        {false, false, false, false, false, ""},
        {false, false, true, false, true, "AND FlagOverseasCPF = 'Y' AND FlagPercentOrdWage = 'Y' "},
        {true, true, true, true, true,
         "AND Flag100K = 'Y' AND FlagExcessCPF = 'Y' AND FlagOverseasCPF = 'Y' AND IR8SIndicator = 'Y' "
         "AND FlagPercentOrdWage = 'Y' "},
    };
    for (const Case& c : cases) {
        auto job = MakeJob();
        // Set in the reverse order: the query keeps its own.
        job->SetPercentOrdWage(c.percent), job->SetIR8SIndicator(c.indicator), job->SetOverseasCPF(c.overseas);
        job->SetExcessCPF(c.excess), job->SetGreaterThan100K(c.greater);
        EXPECT_EQ(job->EmployeeQueryText(),
                  "SELECT FGetEmployeeIdByPersonalSysId(A.PersonalSysId) AS EmployeeId, * FROM " + View("ViewYEEmployee") +
                      " A JOIN " + View("ViewIR8S") + " B ON (A.PersonalSysId = B.PersonalSysId), YEGlobal WHERE "
                      "A.CurrentYEGlobalId = YEGlobal.YEGlobalId " + c.conditions + "ORDER BY EEName1");
    }
}

TEST_F(IR8SValidation, SwitchesSelectTheFlaggedEmployees) {
    AddCase(1, Cases().at(1));
    AddCase(2, Cases().at(2));
    Sql("UPDATE IR8S SET FlagOverseasCPF = 'Y' WHERE PersonalSysId = 2");
    auto job = MakeJob();
    job->SetOverseasCPF(true);
    const auto records = Generate(*job);
    ASSERT_EQ(records.size(), 2u);
    EXPECT_EQ(Span(records[1], 3, 14), "S2          ");
}

TEST_F(IR8SValidation, LogOfAFailingEmployeeKeepsItsShape) {
    AddCase(10, Cases().at(10));
    auto job = MakeJob();
    EXPECT_EQ(job->ValidateIR8SFile(), 0);
    const StringList lines = log.View();
    ASSERT_GE(lines.size(), 12u);
    EXPECT_EQ(StringList(lines.begin() + 6, lines.begin() + 10),
              (StringList{"", "", "Start Date and Time: 01/03/2024 09:05:07", ""}));
    EXPECT_EQ(StringList(lines.end() - 6, lines.end()),
              (StringList{"Employee S10 is not successfully processed.", "Invalid ID Type.", "",
                          "Total No. of Errors in IR8S Header             : 0",
                          "Total No. of Records not successfully validated: 1",
                          "End Date and Time: 01/03/2024 09:05:07"}));
}

TEST_F(IR8SValidation, NoEmployeePassesWithoutHeaderOrDetails) {
    Sql("UPDATE YEEmployer SET PayerID = ''");
    EXPECT_EQ(MakeJob()->ValidateIR8SFile(), 1);
    EXPECT_FALSE(Has(log, "            VALIDATING IR8S HEADER              "));
    EXPECT_FALSE(Has(log, "            VALIDATING IR8S DETAILS             "));
}

TEST_F(IR8SValidation, FailedViewsEndThePassWithTheDebugLineBetweenBlanks) {
    script->generate = 0;
    EXPECT_EQ(MakeJob()->ValidateIR8SFile(), 0);
    const StringList lines = debug.View();
    const auto at = std::find(lines.begin(), lines.end(), "RIR8SeSubmission::RefreshQuery(): Error in generating view tables.");
    ASSERT_NE(at, lines.end());
    EXPECT_EQ(*(at - 1), "");
    EXPECT_EQ(*(at + 1), "");
}

}  // namespace
}  // namespace iras::testing
