// Appendix 8A files from hand-made employees, compared with records worked
// out by hand from the layout: the 800-character header and 700-character
// details of an Original (partly, fully and otherwise furnished quarters, a
// missing occupation date, zero amounts as nine zeros, counts zero-filled),
// an Amendment's header and negative corrections, and the file names.
#include "tests/a8a/A8AFixture.h"

namespace iras::testing {
namespace {

std::string Zeros(int count) { return std::string(static_cast<std::size_t>(count), '0'); }

// Alice: partly furnished quarters from February, shared by two, with
// utilities, holidays and a car. Bob: fully furnished, no occupation dates,
// zero days. Charlie: a hotel stay, a furnished status IRAS does not know,
// only the from date.
const char* const kEmployees =
    "INSERT INTO Employee (EmployeeSysId, EmployeeCode, PersonalSysId) VALUES (1, 'E001', 101), (2, 'E002', 102),"
    " (3, 'E003', 103);"
    "INSERT INTO YEEmployee (YEEmployerId, YEYear, PersonalSysId, CurrentYEGlobalId, PayeeIDType, TaxNo, EEName1,"
    " EEName2) VALUES ('ACME', 2023, 101, 1, 'NRIC', 'S1234567D', 'ALICE TAN', 'BINTI ABU'),"
    " ('ACME', 2023, 102, 1, 'FIN', 'G7654321N', 'BOB LIM', ''),"
    " ('ACME', 2023, 103, 1, 'NRIC', 'S7654321A', 'CHARLIE ONG', '');"
    "INSERT INTO A8A (PersonalSysId, YEYear, ResidenceAddress1, ResidenceAddress2, ResidenceAddress3,"
    " OccupationFrom, OccupationTo, OccupationDays, NoOfEESharingQtr, OHQStatus, Holidays, CarBenefit,"
    " TotalBenefitInKind) VALUES"
    " (101, 2023, 'Blk 1 Marine Parade', '#01-01', 'Singapore 440001', '2023-02-01', '2023-12-31', 334, 2, 'N',"
    "  1500, 2000.07, 27824.01),"
    " (102, 2023, '', '', '', '1899-12-30', '1899-12-30', 0, 1, '', 0, 0, 18000),"
    " (103, 2023, '', '', '', '2023-03-01', '1899-12-30', 0, 1, 'Y', 0, 0, 600);"
    "INSERT INTO A8AS2S3 (PersonalSysId, YEYear, AnnualValue, FurnishedStatus, FurnitureFittingsValue,"
    " ResidenceValue, RentPaidByEmployee, TotalTaxableResidenceValue, UtilityTelPagerValue,"
    " TotalValueofUtilities, HotelAccommodation, HotelAmtPaidByEmployee, TotalHotelAccommodation) VALUES"
    " (101, 2023, 24000, 'Partially Furnished', 1200.50, 25200.50, 1000.01, 24200.49, 123.45, 123.45, 0, 0, 0),"
    " (102, 2023, 12000, 'Fully Furnished', 6000, 0, 0, 18000, 0, 0, 0, 0, 0),"
    " (103, 2023, 0, 'fully furnished', 0, 0, 0, 0, 0, 0, 800, 200, 600);";

using A8ARecords = A8ATest;

TEST_F(A8ARecords, OriginalFileMatchesTheHandWorkedRecords) {
    Sql(kEmployees);
    auto job = MakeJob();
    const std::string bytes = [&] {
        EXPECT_NE(job->ValidateA8AFile(), 0) << ::testing::PrintToString(employeeErrors);
        EXPECT_NE(job->ProcessA8AeSubmission(), 0) << ::testing::PrintToString(log.View());
        return ReadBytes(job->GetOutputFilePath());
    }();
    const auto records = Records(bytes);
    ASSERT_EQ(records.size(), 4u);
    // An 800-byte header, three 700-byte details, each ended by CR LF; no trailer.
    EXPECT_EQ(bytes.size(), 802u + 3 * 702u);
    EXPECT_EQ(std::filesystem::path(job->GetOutputFilePath()).filename(), "TEST2023eA8A_Submission(O).txt");

    // The employer's name loses its apostrophe, semicolon and caret.
    EXPECT_EQ(records[0], Header({{1, "0"}, {2, "6"}, {3, "2023"}, {7, "7"}, {8, "201912345K"}, {20, "Tan Ah Kow"},
                                  {50, "Finance Manager"}, {80, "OBrienTrading Pte. Ltd."}, {140, "61234567"},
                                  {160, "payroll@acme.com.sg"}, {220, "O"}, {221, "20240301"},
                                  {229, "Head Office"}, {259, "A8A"}}));
    // Alice: 24000.00 -> 2400000 cents, "00240000{"; 1200.50 -> "00012005{";
    // 25200.50 -> "00252005{"; 1000.01 -> "00010000A"; 24200.49 ->
    // "00242004I"; 123.45 -> "00001234E"; 1500 -> "00015000{"; 2000.07 ->
    // "00020000G"; 27824.01 -> "00278240A".
    EXPECT_EQ(records[1],
              Detail({{1, "1"}, {2, "1"}, {3, "S1234567D"}, {15, "ALICE TAN"}, {55, "BINTI ABU"},
                      {95, "Blk 1 Marine Parade"}, {125, "#01-01"}, {155, "Singapore 440001"},
                      {185, "20230201" "20231231" "334" "02" "00240000{" "P" "00012005{" + Zeros(9) + "00252005{"
                            "00010000A" "00242004I" "00001234E" + Zeros(18) + "00001234E" + Zeros(36) + "000000"},
                      {340, Zeros(18) + "00015000{" + Zeros(45) + "00020000G"},
                      {430, "00278240A"}}));
    // Bob: FIN is id type 2; no occupation dates; zero days are "000".
    EXPECT_EQ(records[2],
              Detail({{1, "1"}, {2, "2"}, {3, "G7654321N"}, {15, "BOB LIM"},
                      {201, "000" "01" "00120000{" "F" "00060000{" + Zeros(27) + "00180000{" + Zeros(72) + "000000"},
                      {340, Zeros(81)},
                      {430, "00180000{"}}));
    // Charlie: "fully furnished" in lower case is not a status IRAS knows.
    EXPECT_EQ(records[3],
              Detail({{1, "1"}, {2, "1"}, {3, "S7654321A"}, {15, "CHARLIE ONG"},
                      {185, "20230301" "        " "000" "01" + Zeros(9) + " " + Zeros(81) +
                                "00008000{" "00002000{" "00006000{" + Zeros(9) + "000000"},
                      {340, Zeros(81)},
                      {430, "00006000{"}}));
    EXPECT_EQ(job->GetRecordsSucceeded(), 3);
}

TEST_F(A8ARecords, AmendmentCarriesSignedCorrectionsAndAnAInTheHeader) {
    Sql(kEmployees);
    // A correction that lowers Alice's holidays by 50.00 and her total by
    // the same; an employer source without a keyword row is not checked in
    // an Amendment and leaves its position blank.
    Sql("DELETE FROM A8A WHERE PersonalSysId <> 101; DELETE FROM A8AS2S3;"
        "UPDATE A8A SET Holidays = -50, CarBenefit = 0, TotalBenefitInKind = -50 WHERE PersonalSysId = 101;"
        "UPDATE YEEmployer SET EmployerSource = 'Nowhere';");
    params.original = false;
    params.actualRun = true;
    auto job = MakeJob();
    const auto records = Generate(*job);
    ASSERT_EQ(records.size(), 2u);
    EXPECT_EQ(std::filesystem::path(job->GetOutputFilePath()).filename(), "2023eA8A_Submission(A).txt");
    EXPECT_EQ(Span(records[0], 1, 7) + Span(records[0], 220, 228), "0 20237" "A20240301");
    // -50.00 -> 5000 cents, the last 0 negative: "00000500}".
    EXPECT_EQ(Span(records[1], 358, 366) + Span(records[1], 430, 438), "00000500}" "00000500}");
    EXPECT_EQ(Span(records[1], 206, 214) + Span(records[1], 215, 215), Zeros(9) + " ");
}

TEST_F(A8ARecords, NullsReadAsEmptyTextZeroAndTheEmptyDate) {
    Sql(kEmployees);
    Sql("DELETE FROM A8A WHERE PersonalSysId <> 102; DELETE FROM A8AS2S3 WHERE PersonalSysId <> 102;");
    // The engine's view tables carry no NOT NULL: every column of Bob's rows NULL.
    script->buildViews = [this](int year, const std::string& employer, const std::string&) {
        CopyViews(year, employer);
        std::string a8a = "UPDATE " + View("ViewA8A") + " SET ResidenceAddress1 = NULL, OccupationFrom = NULL,"
                          " OccupationTo = NULL, OccupationDays = NULL, NoOfEESharingQtr = NULL, OHQStatus = NULL,";
        a8a += " TotalBenefitInKind = NULL; UPDATE " + View("ViewA8AS2S3") +
               " SET AnnualValue = NULL, FurnishedStatus = NULL, FurnitureFittingsValue = NULL,"
               " TotalTaxableResidenceValue = NULL; UPDATE " + View("ViewYEEmployee") + " SET EEName2 = NULL;";
        Sql(a8a);
    };
    params.original = false;
    auto job = MakeJob();
    const auto records = Generate(*job);
    ASSERT_EQ(records.size(), 2u);
    EXPECT_EQ(records[1], Detail({{1, "1"}, {2, "2"}, {3, "G7654321N"}, {15, "BOB LIM"},
                                  {201, "000" "00" + Zeros(9) + " " + Zeros(117) + "000000"},
                                  {340, Zeros(81)},
                                  {430, Zeros(9)}}));
}

TEST_F(A8ARecords, AnAmountWiderThanItsFieldIsAFindingForTheEmployeeNotARecord) {
    Sql(kEmployees);
    // 9,999,999.99 is nine digits of cents and fits; 10,000,000.00 does not.
    Sql("UPDATE A8A SET TotalBenefitInKind = 9999999.99 WHERE PersonalSysId = 101;"
        "UPDATE A8A SET TotalBenefitInKind = -10000000 WHERE PersonalSysId = 102;"
        "UPDATE A8A SET OccupationDays = 1000 WHERE PersonalSysId = 103;");
    params.original = false;  // checked in an Amendment too
    auto job = MakeJob();
    EXPECT_EQ(job->ValidateA8AFile(), 0);
    EXPECT_EQ(employeeErrors,
              (StringList{"Identity No: G7654321N", "Employee ID: E002",
                          "Amount too large for the A8A record. Total benefits in kind of -10000000.00 does not fit "
                          "in its 9-character field.",
                          "", "Identity No: S7654321A", "Employee ID: E003",
                          "Number too large for the A8A record. No. of Days of 1000 does not fit in its 3-character "
                          "field.",
                          ""}));
    EXPECT_EQ(job->GetRecordsFailed(), 2);
    EXPECT_FALSE(std::filesystem::exists(root / "run" / "TEST2023eA8A_Submission(A).txt"));
}

TEST_F(A8ARecords, SectionsAreReadForEachEmployeeOfBothPasses) {
    Sql(kEmployees);
    auto job = MakeJob();
    Generate(*job);
    EXPECT_EQ(script->calls.at(2), "SetYESubmissionType(A8A)");
    const auto lines = debug.Lines();
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "   PROCESSING A8A SECTION 2 AND 3 INFORMATION   "), 6)
        << "three employees in each of the two passes";
}

TEST_F(A8ARecords, AFailedViewGenerationStopsTheRunWithItsDebugLine) {
    Sql(kEmployees);
    script->generate = 0;
    auto job = MakeJob();
    EXPECT_EQ(job->ValidateA8AFile(), 0);
    EXPECT_TRUE(Has(debug, "RA8AeSubmission::RefreshQuery(): Error in generating view tables."));
}

}  // namespace
}  // namespace iras::testing
