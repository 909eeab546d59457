// IRAS's checks on an original Appendix 8A: each employee rule broken on an
// employee of its own (clean cases just inside each limit beside them), all
// employees validated in one pass; each employer rule of the header on its
// own; and the summary of the file with and without the organisation id.
#include <map>

#include "tests/a8a/A8AFixture.h"

namespace iras::testing {
namespace {

struct EmployeeCase {
    std::string employee;  // SET clause of YEEmployee over a clean employee, or ""
    std::string a8a;       // SET clause of A8A, or ""
    StringList messages;
};

const char* const kFromYear =
    "Invalid Period of Occupation From Date. Date must be equal to the basis year in the header record.";
const char* const kToYear =
    "Invalid Period of Occupation To Date. Date must be equal to the basis year in the header record.";
const char* const kFromAfterTo =
    "Invalid Period of Occupation From Date. From Date must be earlier than or equal to To Date.";
const char* const kSharingZero =
    "Invalid No. of Employees Sharing the Quarter. No. of Employees Sharing the Quarter cannot be zero.";
const char* const kSharingNegative =
    "Invalid No. of Employees Sharing the Quarter. No. of Employees Sharing the Quarter cannot be a negative "
    "value.";
const char* const kZeroBenefit =
    "IRAS file submission will not accept zero amount for Benefit-In-Kind. Please delete the Appendix 8A record "
    "or enter the amount.";

const std::map<int, EmployeeCase>& Cases() {
    static const std::map<int, EmployeeCase> cases{
        // Clean employees that come close to a rule.
        {10, {"", "", {}}},
        {11, {"TaxNo = '   '", "", {}}},    // blanks are not the empty text
        {12, {"EEName1 = '  '", "", {}}},   // likewise
        {13, {"", "OccupationFrom = '2023-01-01'", {}}},  // one date only: no order test
        {14, {"", "OccupationFrom = '2023-06-01', OccupationTo = '2023-06-01', OccupationDays = 366", {}}},
        {15, {"", "OHQStatus = ' Y '", {}}},  // trimmed before the test
        {16, {"", "TotalBenefitInKind = 0.001", {}}},  // not exactly zero
        // One rule each.
        {20, {"PayeeIDType = 'XX', TaxNo = ''", "", {"Invalid ID Type."}}},  // no ID number test
        {21, {"TaxNo = ''", "", {"Invalid ID No. ID No cannot be blank."}}},
        {22, {"EEName1 = ''", "", {"Invalid Name - Line 1. Name - Line 1 cannot be blank."}}},
        {23, {"", "OccupationFrom = '2022-12-31'", {kFromYear}}},
        {24, {"", "OccupationTo = '2024-01-01'", {kToYear}}},
        {25, {"", "OccupationFrom = '2023-06-02', OccupationTo = '2023-06-01'", {kFromAfterTo}}},
        {26, {"", "OccupationDays = 367", {"Invalid No. of Days. No. of Days cannot be more than 366."}}},
        {27, {"", "OccupationDays = -1", {"Invalid No. of Days. No. of Days cannot be a negative value."}}},
        {28, {"", "OHQStatus = 'y'", {"Invalid OHQ Status."}}},
        {29, {"", "NoOfEESharingQtr = 0", {kSharingZero}}},
        {30, {"", "NoOfEESharingQtr = -1", {kSharingNegative}}},
        {31, {"", "TotalBenefitInKind = 0", {kZeroBenefit}}},
        // Several rules on one employee: every one reported, in rule order.
        {40, {"PayeeIDType = '', EEName1 = ''",
              "OccupationFrom = '2024-02-01', OccupationTo = '2022-01-01', OHQStatus = 'X', NoOfEESharingQtr = 0,"
              " TotalBenefitInKind = 0",
              {"Invalid ID Type.", "Invalid Name - Line 1. Name - Line 1 cannot be blank.", kFromYear, kToYear,
               kFromAfterTo, "Invalid OHQ Status.", kSharingZero, kZeroBenefit}}},
    };
    return cases;
}

using A8AValidation = A8ATest;

TEST_F(A8AValidation, EachRuleReportsItsOwnMessageAndEveryEmployeeIsChecked) {
    params.sortOrder = 1;  // by employee id, so the error list is in case order
    for (const auto& [id, c] : Cases()) {
        AddEmployee(id, "S" + std::to_string(id), "EMPLOYEE " + std::to_string(id));
        const std::string where = " WHERE PersonalSysId = " + std::to_string(id) + ";";
        if (!c.employee.empty()) Sql("UPDATE YEEmployee SET " + c.employee + where);
        if (!c.a8a.empty()) Sql("UPDATE A8A SET " + c.a8a + where);
    }
    auto job = MakeJob();
    EXPECT_EQ(job->ValidateA8AFile(), 0);

    StringList expected;
    int failing = 0;
    for (const auto& [id, c] : Cases()) {
        if (c.messages.empty()) continue;
        const bool noTaxNo = c.employee.find("TaxNo = ''") != std::string::npos;
        expected.push_back("Identity No: " + (noTaxNo ? std::string() : "S" + std::to_string(id)));
        expected.push_back("Employee ID: E" + std::to_string(id));
        expected.insert(expected.end(), c.messages.begin(), c.messages.end());
        expected.push_back("");
        ++failing;
    }
    EXPECT_EQ(employeeErrors, expected);
    EXPECT_EQ(job->GetRecordsFailed(), failing);
    EXPECT_EQ(job->GetHeaderErrorCount(), 0);
}

struct HeaderCase {
    const char* set;  // SET clause of YEEmployer
    StringList messages;
};

TEST_F(A8AValidation, EachEmployerRuleOnItsOwn) {
    const std::string email50(50, 'e');
    const std::vector<HeaderCase> cases{
        {"EmployerSource = EmployerSource", {}},
        {"EmployerSource = 'Nowhere'", {"Invalid Source."}},
        {"PayerID = ''", {"Invalid Organization ID Type. Organization ID Type cannot be blank."}},
        // Blanks are not the empty text, but locate no code.
        {"PayerID = '   '", {"Invalid Organization ID Type."}},
        {"PayerID = 'XYZ'", {"Invalid Organization ID Type."}},
        {"PayerID = 'GSTN'",
         {"Invalid Organization ID Type. G is no longer applicable with effect from Year of Assessment 2013. File "
          "is not created."}},
        {"TaxRefNo = ''", {"Invalid Organization ID No. Organization ID No. cannot be blank."}},
        {"TaxRefNo = '   '", {}},
        {"AuthorisedName = ''", {"Invalid Name of Authorised Person."}},
        {"AuthorisedName = '  '", {}},
        // The name is the two lines joined by a blank, so only a missing
        // (NULL) line leaves it empty.
        {"ERName1 = NULL", {"Invalid employer name."}},
        {"ERName1 = '', ERName2 = ''", {}},
        {"TelephoneNo = '  '", {"Telephone number cannot be blank."}},
        {"EmailAddress = '  '", {"Email address cannot be blank."}},
        {"EmailAddress = NULL", {"Email address cannot be blank."}},
        {"EmailAddress = 'e50'", {}},
        {"EmailAddress = 'e50' || 'x'", {"Email address cannot be more than 50 characters."}},
        // Trailing blanks count towards the 50.
        {"EmailAddress = 'e48' || '   '", {"Email address cannot be more than 50 characters."}},
    };
    // A copy of the employer table without NOT NULL, so that NULLs can be tried.
    Sql("CREATE TABLE Kept AS SELECT * FROM YEEmployer; DROP TABLE YEEmployer;"
        "CREATE TABLE YEEmployer AS SELECT * FROM Kept; DELETE FROM Kept;");
    AddEmployee(1, "S1", "A");
    for (const HeaderCase& c : cases) {
        std::string set = c.set;
        for (const auto& [token, text] : {std::pair<std::string, std::string>{"'e50'", "'" + email50 + "'"},
                                          {"'e48'", "'" + std::string(48, 'e') + "'"}}) {
            if (const auto at = set.find(token); at != std::string::npos) set.replace(at, token.size(), text);
        }
        Sql("DELETE FROM Kept; INSERT INTO Kept SELECT * FROM YEEmployer; UPDATE YEEmployer SET " + set + ";");
        employeeErrors.clear();
        log.Clear();
        auto job = MakeJob();
        const int passed = job->ValidateA8AFile();
        EXPECT_EQ(passed != 0, c.messages.empty()) << c.set;
        EXPECT_EQ(job->GetHeaderErrorCount(), static_cast<int>(c.messages.size())) << c.set;
        for (const auto& message : c.messages) EXPECT_TRUE(Has(log, message)) << c.set << ": " << message;
        Sql("DELETE FROM YEEmployer; INSERT INTO YEEmployer SELECT * FROM Kept;");
    }
}

TEST_F(A8AValidation, HeaderHeadingsStandBetweenBlankLinesInTheDebugLog) {
    AddEmployee(1, "S1", "A");
    auto job = MakeJob();
    ASSERT_NE(job->ValidateA8AFile(), 0);
    const auto lines = debug.Lines();
    const auto at = std::find(lines.begin(), lines.end(), "Validating Organization ID Type:");
    ASSERT_NE(at, lines.end());
    EXPECT_EQ(StringList(at - 1, at + 10),
              (StringList{"", "Validating Organization ID Type:", "7 = UEN", "8 = UEN - Local", "A = ASGD",
                          "I = ITR", "C = CRN", "M = MCST", "G = GSTN", "U = UENO", ""}));
    const auto name = std::find(lines.begin(), lines.end(), "Validating Name of Employer");
    ASSERT_NE(name, lines.end());
    EXPECT_EQ(StringList(name - 1, name + 2), (StringList{"", "Validating Name of Employer", ""}));
}

StringList Summary(const std::string& file, bool withId, const std::string& batch) {
    const std::string stars(48, '*');
    StringList lines{stars, "", "SUMMARY OF FILE - Appendix 8A    ", "", stars, "", "File Name:         " + file};
    if (withId) lines.push_back("Organisation ID:   201912345K");
    for (const std::string& line : {std::string("Organisation Name: OBrienTrading Pte. Ltd."),
                                    std::string("Form Type:         A8A"), std::string("Basis Year:        2023"),
                                    "Batch Indicator:   " + batch, std::string("No of Records:     2"),
                                    std::string(), std::string()})
        lines.push_back(line);
    return lines;
}

TEST_F(A8AValidation, SummaryNamesTheFileAndCountsItsRecords) {
    AddEmployee(1, "S1", "A");
    AddEmployee(2, "S2", "B");
    auto job = MakeJob();
    ASSERT_NE(job->ValidateA8AFile(), 0);
    ASSERT_NE(job->ProcessA8AeSubmission(), 0);
    StringList summary;
    job->GenerateA8ASummaryTextFile(summary);
    EXPECT_EQ(summary, Summary(job->GetOutputFilePath(), true, "O"));
}

TEST_F(A8AValidation, SummaryLeavesOutTheOrganisationIdOfAnUnknownIdType) {
    AddEmployee(1, "S1", "A");
    AddEmployee(2, "S2", "B");
    Sql("UPDATE YEEmployer SET PayerID = 'XYZ';");
    params.original = false;
    auto job = MakeJob();
    ASSERT_NE(job->ValidateA8AFile(), 0);
    ASSERT_NE(job->ProcessA8AeSubmission(), 0);
    StringList summary{"kept"};
    job->GenerateA8ASummaryTextFile(summary);
    StringList expected{"kept"};
    const StringList lines = Summary(job->GetOutputFilePath(), false, "A");
    expected.insert(expected.end(), lines.begin(), lines.end());
    EXPECT_EQ(summary, expected);
    EXPECT_EQ(summary.size(), 15u);  // the kept line and fourteen
}

}  // namespace
}  // namespace iras::testing
