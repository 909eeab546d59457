// The SQL texts of the session form and of the four returns, built exactly as
// the form and the jobs build them, run on a database made with the sample
// data. The per-user view tables that the submission engine would make are
// made here by hand, each holding one employer's rows of one year. Expected
// values are the hand-worked figures written beside the sample rows.
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <vector>

#include "platform/common/Date.h"
#include "platform/database/Query.h"
#include "platform/database/Schema.h"

namespace iras::db {
namespace {

namespace fs = std::filesystem;

constexpr const char* Alias = "sampledb";

// Pieces of the IR8A employee query, as the IR8A job joins them.
std::string IR8AQuery(const std::string& viewA, const std::string& viewB, const std::string& ir8aType,
                      const std::string& basisYear, bool original) {
    std::string sql =
        "SELECT FGetEmployeeIdByPersonalSysId(A.PersonalSysId) AS EmployeeId, FGetEmployeeSysId(EmployeeId) AS "
        "EmpSysId, FGetIRASEmployeeBank(EmpSysId) AS BankId, (ContratualBonus + NonContratualBonus) AS Bonus, ";
    if (original) {
        sql +=
            "(IF (Commission < 0) THEN 0 ELSE Commission ENDIF) AS CommissionAmt, (IF (Transport < 0) THEN 0 ELSE "
            "Transport ENDIF) AS TransportAmt, (IF (Entertainment < 0) THEN 0 ELSE Entertainment ENDIF) AS "
            "EntertainmentAmt, (IF ((OtherAllowance + OtherAllowanceAmt + CPFBorneByER) < 0) THEN 0 ELSE "
            "(OtherAllowance + OtherAllowanceAmt + CPFBorneByER) ENDIF) AS TotOtherAllowances, (IF (ERExcessContri "
            "< 0) THEN 0 ELSE ERExcessContri ENDIF) AS ERExcessContriAmt, (IF (TotalStockGainsAfter < 0) THEN 0 "
            "ELSE TotalStockGainsAfter ENDIF) AS TotalStockGainsAfterAmt, (IF ((BenefitsInKind + "
            "IR8ABenefitsInKind) < 0) THEN 0 ELSE (BenefitsInKind + IR8ABenefitsInKind) ENDIF) AS "
            "TotBenefitsInKind, ";
    } else {
        sql +=
            "Commission AS CommissionAmt, Transport AS TransportAmt, Entertainment AS EntertainmentAmt, "
            "(OtherAllowance + OtherAllowanceAmt + CPFBorneByER) AS TotOtherAllowances, ERExcessContri AS "
            "ERExcessContriAmt, TotalStockGainsAfter AS TotalStockGainsAfterAmt, (BenefitsInKind + "
            "IR8ABenefitsInKind) AS TotBenefitsInKind, ";
    }
    sql +=
        "(CommissionAmt +  Pension +  TransportAmt +  EntertainmentAmt +  TotOtherAllowances +  Gratuity +  "
        "AccruedFrom +  EROutsideContri +  ERExcessContriAmt +  TotalStockGainsAfterAmt +  TotBenefitsInKind) AS "
        "OthersAmt, (TRUNCNUM(ROUND(CAST(GrossTotal AS Money), 2), 0) +  TRUNCNUM(ROUND(CAST(Bonus AS Money), 2), "
        "0) +  TRUNCNUM(ROUND(CAST(DirectorFee AS Money), 2), 0) +  TRUNCNUM(ROUND(CAST(OthersAmt AS Money), 2), "
        "0)) AS Amt, ";
    if (ir8aType == "SupIR8A") {
        const std::string& y = basisYear;
        sql += "(IF EXISTS(SELECT Cessation FROM YEEmployee WHERE PersonalSysId = A.PersonalSysId            AND "
               "YEYear = " + y + ") THEN    (SELECT Cessation FROM YEEmployee WHERE PersonalSysId = "
               "A.PersonalSysId     AND YEYear = " + y + ")  ELSE '1899-12-30'  ENDIF) AS SupCessation, (IF "
               "YEAR(Cessation) > " + y + " OR Cessation='1899-12-30' THEN    DATE('" + y +
               "' || '-12-31')  ELSE Cessation  ENDIF) AS SupPaymentTo, ";
    }
    sql += "(Select IncomeBorneStatus from IR8A Where PersonalSysId = B.PersonalSysId  And YEYear = '9" + basisYear +
           "' And IR8AType = '" + ir8aType + "') as OrgIncomeBorneStatus,";
    sql += "* FROM " + viewA + " A JOIN " + viewB + " B ON (A.PersonalSysId = B.PersonalSysId), YEGlobal WHERE ";
    sql += ir8aType == "CurIR8A" ? "A.CurrentYEGlobalId = YEGlobal.YEGlobalId "
                                 : "A.SupYEGlobalId = YEGlobal.YEGlobalId ";
    sql +=
        " AND (GrossTotal <> 0 OR ContratualBonus <> 0 OR NonContratualBonus <> 0 OR DirectorFee <> 0 OR "
        "CPFBorneByER <> 0 OR TotalSectionD <> 0 OR  LumpSumCompensation <> 0 OR RemissionAmt <> 0 OR "
        "ExemptIncomeAmt <> 0 OR TaxBorneByER <> 0 OR FixedAmtBorneByEE <> 0 OR EECPFPension <> 0 OR Donation <> 0 "
        "OR MOSQFund <> 0 OR Insurance <> 0)";
    sql += "ORDER BY EEName1";
    return sql;
}

std::string EmployerQuery(const std::string& employerId) {
    return "Select (TRIM(replace(replace(replace(ERName1,'''',''),';',''),'^','')) || ' ' || "
           "TRIM(replace(replace(replace(ERName2,'''',''),';',''),'^',''))) AS EmployerName , *  FROM YEEmployer "
           "WHERE YEEmployerId = '" +
           employerId + "'";
}

class SampleQueries : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        folder_ = fs::temp_directory_path() / ("iras_sample_" + std::to_string(::getpid()));
        fs::remove_all(folder_);
        fs::create_directories(folder_);
        CreateDatabase(folder_ / "sample.db", true);
        ConnectionRegistry::Register(Alias, ConnectionConfig{"sqlite", (folder_ / "sample.db").string(), false});
        // What the engine would make for each run: one employer, one year.
        ExecScript(Alias, R"(
            CREATE TABLE ViewYEEmployee_t AS SELECT * FROM YEEmployee WHERE YEEmployerId='IR8AYA2025' AND YEYear=2024;
            CREATE TABLE ViewIR8A_cur AS SELECT * FROM IR8A WHERE YEYear=2024 AND IR8AType='CurIR8A'
                AND PersonalSysId IN (SELECT PersonalSysId FROM ViewYEEmployee_t);
            CREATE TABLE ViewYEEmployee_2023 AS SELECT * FROM YEEmployee WHERE YEEmployerId='IR8AYA2025' AND YEYear=2023;
            CREATE TABLE ViewIR8A_2023 AS SELECT * FROM IR8A WHERE YEYear=2023 AND IR8AType='CurIR8A'
                AND PersonalSysId IN (SELECT PersonalSysId FROM ViewYEEmployee_2023);
            CREATE TABLE ViewIR8A_sup AS SELECT * FROM IR8A WHERE YEYear=2023 AND IR8AType='SupIR8A'
                AND PersonalSysId IN (SELECT PersonalSysId FROM ViewYEEmployee_2023);
            CREATE TABLE ViewYEEmployee_oneil AS SELECT * FROM YEEmployee WHERE YEEmployerId='ONEIL' AND YEYear=2024;
            CREATE TABLE ViewIR8A_oneilsup AS SELECT * FROM IR8A WHERE YEYear=2024 AND IR8AType='SupIR8A'
                AND PersonalSysId IN (SELECT PersonalSysId FROM ViewYEEmployee_oneil);
            CREATE TABLE ViewIR8S_t AS SELECT * FROM IR8S WHERE YEYear=2024
                AND PersonalSysId IN (SELECT PersonalSysId FROM ViewYEEmployee_t);
            CREATE TABLE ViewIR8SA_t AS SELECT * FROM IR8SA WHERE YEYear=2024;
            CREATE TABLE ViewIR8SC_t AS SELECT * FROM IR8SC WHERE YEYear=2024;
            CREATE TABLE ViewA8A_t AS SELECT * FROM A8A WHERE YEYear=2024
                AND PersonalSysId IN (SELECT PersonalSysId FROM ViewYEEmployee_t);
            CREATE TABLE ViewA8AS2S3_t AS SELECT * FROM A8AS2S3 WHERE YEYear=2024;
            CREATE TABLE ViewA8B_t AS SELECT * FROM A8B WHERE YEYear=2024
                AND PersonalSysId IN (SELECT PersonalSysId FROM ViewYEEmployee_t);
            CREATE TABLE ViewA8BRecord_t AS SELECT * FROM A8BRecord WHERE YEYear=2024;
        )");
    }
    static void TearDownTestSuite() {
        ConnectionRegistry::Unregister(Alias);
        fs::remove_all(folder_);
    }

    static Query Open(const std::string& sql, const std::string& employerId = "") {
        Query query(Alias);
        query.SetSQL(sql);
        if (!employerId.empty()) query.SetParam("YEEmployerId", employerId);
        query.Open();
        return query;
    }

    // Moves the query to the row of that person; fails the test if absent.
    static bool Locate(Query& query, int personalSysId) {
        for (query.First(); !query.Eof(); query.Next()) {
            if (query.FieldByName("PersonalSysId").AsInteger() == personalSysId) return true;
        }
        ADD_FAILURE() << "no row of person " << personalSysId;
        return false;
    }

    static std::vector<std::string> Column(Query& query, const std::string& name) {
        std::vector<std::string> values;
        for (query.First(); !query.Eof(); query.Next()) values.push_back(query.FieldByName(name).AsString());
        return values;
    }

    static inline fs::path folder_;
};

TEST_F(SampleQueries, EmployerAndYearListsOfTheSessionForm) {
    Query employers = Open("SELECT * FROM YEEmployer ORDER BY YEEmployerId");
    EXPECT_EQ(Column(employers, "YEEmployerId"),
              (std::vector<std::string>{"ERRCO", "ERRHEAD", "IR8AYA2025", "ONEIL"}));

    // Year-end years and, for the supplementary return, the basis years one
    // lower; the submitted copies (92023) and backups (82023) never show.
    Query years = Open("SELECT DISTINCT YEYear, YEYear AS Year FROM YEEmployee WHERE YEEmployerId = :YEEmployerId "
                       "AND YEYear < 10000 ORDER BY YEYear",
                       "IR8AYA2025");
    EXPECT_EQ(Column(years, "Year"), (std::vector<std::string>{"2022", "2023", "2024"}));

    Query supYears = Open("SELECT DISTINCT YEYear, (YEYear - 1) AS Year FROM YEEmployee WHERE YEEmployerId = "
                          ":YEEmployerId AND YEYear < 10000ORDER BY YEYear",
                          "IR8AYA2025");
    EXPECT_EQ(Column(supYears, "YEYear"), (std::vector<std::string>{"2022", "2023", "2024"}));
    EXPECT_EQ(Column(supYears, "Year"), (std::vector<std::string>{"2021", "2022", "2023"}));

    Query errco = Open("SELECT DISTINCT YEYear, YEYear AS Year FROM YEEmployee WHERE YEEmployerId = :YEEmployerId "
                       "AND YEYear < 10000 ORDER BY YEYear",
                       "ERRCO");
    EXPECT_EQ(Column(errco, "Year"), (std::vector<std::string>{"2024"}));

    Query people = Open("SELECT DISTINCT PersonalSysId FROM YEEmployee WHERE YEYear < 10000");
    EXPECT_GE(people.RecordCount(), 60);
}

TEST_F(SampleQueries, LastGenerationAndSubmitterTypesOfTheSessionForm) {
    const std::string head = "SELECT *, FGetDateTimeFormat(LastSubmissionDateTime) AS SubmittedDate FROM "
                             "LastSubmission WHERE YEEmployerId = :YEEmployerId AND ";
    Query current(Alias);
    current.AddSQL(head);
    current.AddSQL("SubmissionType = 'CurIR8A'");
    current.SetParam("YEEmployerId", std::string("IR8AYA2025"));
    current.Open();
    ASSERT_EQ(current.RecordCount(), 1);
    EXPECT_NE(current.FieldByName("IsOriginal").AsInteger(), 0);
    EXPECT_EQ(current.FieldByName("SubmitUserId").AsString(), "ADMIN");
    EXPECT_EQ(current.FieldByName("SubmittedDate").AsString(), "26/02/2024 10:15:00");

    Query none(Alias);
    none.AddSQL(head);
    none.AddSQL("SubmissionType = 'SupIR8A'");
    none.SetParam("YEEmployerId", std::string("IR8AYA2025"));
    none.Open();
    EXPECT_EQ(none.RecordCount(), 0);

    Query types = Open(
        "SELECT YEProperty1 AS UserTypeID, YEKeywordDefaultName AS UserTypeDesc,  YEKeywordUserDefinedName FROM "
        "YEKeyWord WHERE YEKeywordCategory = 'SubmitUserIDType' ORDER BY YEKeywordDefaultName ");
    EXPECT_EQ(Column(types, "UserTypeDesc"),
              (std::vector<std::string>{"Corporate Digital Identity", "Personal Digital Identity", "Tax Agent"}));
    EXPECT_EQ(Column(types, "UserTypeID"), (std::vector<std::string>{"CORPORATE", "PERSONAL", "TAXAGENT"}));
}

TEST_F(SampleQueries, RunRecordsEmployerAndYearInTheRegistryRow) {
    const std::string text =
        "Select * from subregistry where Registryid = 'YEPRocess' and SubRegistryId = 'TaxEmployerBasisYear'";
    Query registry = Open(text);
    ASSERT_EQ(registry.RecordCount(), 1);
    EXPECT_EQ(registry.FieldByName("RegProperty1").AsString(), "IR8AYA2025");
    EXPECT_EQ(registry.FieldByName("RegProperty2").AsString(), "2024");

    registry.Edit();
    registry.FieldByName("RegProperty1").SetAsString("ONEIL");
    registry.FieldByName("RegProperty2").SetAsString("2023");
    registry.Post();

    Query again = Open(text);
    EXPECT_EQ(again.FieldByName("RegProperty1").AsString(), "ONEIL");
    EXPECT_EQ(again.FieldByName("RegProperty2").AsString(), "2023");
}

TEST_F(SampleQueries, EmployerNameLosesApostropheSemicolonAndCaret) {
    // "O'Neil; ^Holdings" + "Pte Ltd"
    EXPECT_EQ(Open(EmployerQuery("ONEIL")).FieldByName("EmployerName").AsString(), "ONeil Holdings Pte Ltd");
    // The IR8A job's own text starts with a blank and has one blank after "*".
    Query ir8a = Open(" Select (TRIM(replace(replace(replace(ERName1,'''',''),';',''),'^','')) || ' ' || "
                      "TRIM(replace(replace(replace(ERName2,'''',''),';',''),'^',''))) AS EmployerName , * FROM "
                      "YEEmployer WHERE YEEmployerId = 'IR8AYA2025'");
    EXPECT_EQ(ir8a.FieldByName("EmployerName").AsString(), "Lion City Precision Engineering Pte. Ltd.");
    EXPECT_EQ(ir8a.FieldByName("TaxRefNo").AsString(), "201912345K");
    // Two blank name lines leave only the joining blank, which the header
    // check trims away.
    EXPECT_EQ(Open(EmployerQuery("ERRHEAD")).FieldByName("EmployerName").AsString(), " ");

    Query keywords = Open("SELECT * FROM YEKeyWord ORDER BY YEKeyWordCategory");
    EXPECT_EQ(keywords.RecordCount(), 46);
}

TEST_F(SampleQueries, CurrentIR8AOriginalComputesBonusOthersAndTotalIncome) {
    Query query = Open(IR8AQuery("ViewYEEmployee_t", "ViewIR8A_cur", "CurIR8A", "2024", true));
    // 10 hand-written current employees (1011 and 1012 are supplementary
    // only) and 30 generated ones, in name order.
    EXPECT_EQ(query.RecordCount(), 40);
    query.First();
    EXPECT_EQ(query.FieldByName("EEName1").AsString(), "Ang Choon Seng");

    ASSERT_TRUE(Locate(query, 1001));
    EXPECT_EQ(query.FieldByName("EmployeeId").AsString(), "LCP0001");
    EXPECT_EQ(query.FieldByName("EmpSysId").AsInteger(), 51001);
    EXPECT_EQ(query.FieldByName("BankId").AsString(), "1");
    EXPECT_NEAR(query.FieldByName("Bonus").AsFloat(), 10500.99, 1e-9);  // 7000.00 + 3500.99
    // 1200.75 + 1800.40 + 600.00 + (300.25 + 150.10) + 2450.00 + 5400.00
    EXPECT_NEAR(query.FieldByName("OthersAmt").AsFloat(), 11901.50, 1e-9);
    // 84000 + 10500 + 0 + 11901, each cut to dollars before adding (the plain
    // sum would give 106402).
    EXPECT_DOUBLE_EQ(query.FieldByName("Amt").AsFloat(), 106401.0);
    EXPECT_TRUE(query.FieldByName("OrgIncomeBorneStatus").IsNull());  // 2024 was never submitted
    EXPECT_EQ(query.FieldByName("YEYear").AsInteger(), 2024);           // the employee view's, first

    // A claw-back of commission counts as nothing in an original file.
    ASSERT_TRUE(Locate(query, 1003));
    EXPECT_DOUBLE_EQ(query.FieldByName("CommissionAmt").AsFloat(), 0.0);
    EXPECT_DOUBLE_EQ(query.FieldByName("Amt").AsFloat(), 106400.0);  // 96000 + 8000 + 0 + 2400

    ASSERT_TRUE(Locate(query, 1002));
    EXPECT_NEAR(query.FieldByName("Donation").AsFloat(), 10.01, 1e-9);
    EXPECT_EQ(query.FieldByName("BankId").AsString(), "1");
}

TEST_F(SampleQueries, CurrentIR8AAmendmentKeepsNegativeCommission) {
    Query query = Open(IR8AQuery("ViewYEEmployee_t", "ViewIR8A_cur", "CurIR8A", "2024", false));
    EXPECT_EQ(query.RecordCount(), 40);
    ASSERT_TRUE(Locate(query, 1003));
    EXPECT_DOUBLE_EQ(query.FieldByName("CommissionAmt").AsFloat(), -350.0);
    EXPECT_NEAR(query.FieldByName("OthersAmt").AsFloat(), 2050.0, 1e-9);  // 2400 - 350
    EXPECT_DOUBLE_EQ(query.FieldByName("Amt").AsFloat(), 106050.0);       // 96000 + 8000 + 2050
    ASSERT_TRUE(Locate(query, 1001));
    EXPECT_DOUBLE_EQ(query.FieldByName("Amt").AsFloat(), 106401.0);
}

TEST_F(SampleQueries, CurrentIR8AReadsTheSubmittedCopyForTheOriginalTaxBorneStatus) {
    Query query = Open(IR8AQuery("ViewYEEmployee_2023", "ViewIR8A_2023", "CurIR8A", "2023", true));
    EXPECT_EQ(query.RecordCount(), 29);
    ASSERT_TRUE(Locate(query, 1009));
    EXPECT_EQ(query.FieldByName("OrgIncomeBorneStatus").AsString(), "Partial");
    EXPECT_EQ(query.FieldByName("YEYear").AsInteger(), 2023);
    ASSERT_TRUE(Locate(query, 1001));
    EXPECT_EQ(query.FieldByName("OrgIncomeBorneStatus").AsString(), "NotApplicable");
}

TEST_F(SampleQueries, SupplementaryIR8ATakesCessationFromTheBasisYear) {
    // Year-end year 2023 holds the supplementary return for basis year 2022.
    Query clean = Open(IR8AQuery("ViewYEEmployee_2023", "ViewIR8A_sup", "SupIR8A", "2022", true));
    ASSERT_EQ(clean.RecordCount(), 2);
    ASSERT_TRUE(Locate(clean, 1013));  // left on 30 June 2022; a late bonus of 1500.00
    EXPECT_EQ(clean.FieldByName("SupCessation").AsDate(), (Date{2022, 6, 30}));
    EXPECT_EQ(clean.FieldByName("SupPaymentTo").AsDate(), (Date{2022, 6, 30}));
    EXPECT_DOUBLE_EQ(clean.FieldByName("Amt").AsFloat(), 1500.0);
    ASSERT_TRUE(Locate(clean, 1014));  // left on 15 November 2022; arrears of 2300.00
    EXPECT_EQ(clean.FieldByName("SupPaymentTo").AsDate(), (Date{2022, 11, 15}));
    EXPECT_DOUBLE_EQ(clean.FieldByName("Amt").AsFloat(), 2300.0);

    Query oneil = Open(IR8AQuery("ViewYEEmployee_oneil", "ViewIR8A_oneilsup", "SupIR8A", "2023", true));
    ASSERT_EQ(oneil.RecordCount(), 3);
    ASSERT_TRUE(Locate(oneil, 3001));  // left on 31 March 2024, after the basis year
    EXPECT_EQ(oneil.FieldByName("SupCessation").AsDate(), Date::Empty());
    EXPECT_EQ(oneil.FieldByName("SupPaymentTo").AsDate(), (Date{2023, 12, 31}));
    ASSERT_TRUE(Locate(oneil, 3002));  // never left
    EXPECT_EQ(oneil.FieldByName("SupCessation").AsDate(), Date::Empty());
    EXPECT_EQ(oneil.FieldByName("SupPaymentTo").AsDate(), (Date{2023, 12, 31}));
    ASSERT_TRUE(Locate(oneil, 3003));  // left on 31 August 2023
    EXPECT_EQ(oneil.FieldByName("SupCessation").AsDate(), (Date{2023, 8, 31}));
    EXPECT_EQ(oneil.FieldByName("SupPaymentTo").AsDate(), (Date{2023, 8, 31}));
}

TEST_F(SampleQueries, IR8SEmployeesAndTheirSectionsAAndB) {
    const std::string head =
        "SELECT FGetEmployeeIdByPersonalSysId(A.PersonalSysId) AS EmployeeId, * FROM ViewYEEmployee_t A JOIN "
        "ViewIR8S_t B ON (A.PersonalSysId = B.PersonalSysId), YEGlobal WHERE A.CurrentYEGlobalId = "
        "YEGlobal.YEGlobalId ";
    // 1001, 1004, 1005, 1006 and every fifth generated employee.
    // The form's default switch (Excess CPF) keeps them all.
    EXPECT_EQ(Open(head + "AND FlagExcessCPF = 'Y' ORDER BY EEName1").RecordCount(), 10);
    EXPECT_EQ(Open(head + "AND Flag100K = 'Y' AND FlagExcessCPF = 'Y' ORDER BY EmployeeId").RecordCount(), 0);

    Query employees = Open(head + "ORDER BY EEName1");
    ASSERT_TRUE(Locate(employees, 1004));
    EXPECT_EQ(employees.FieldByName("DateOfPRGranted").AsDate(), (Date{2022, 6, 15}));
    EXPECT_EQ(employees.FieldByName("ApprovalForFullCPF").AsString(), "Y");
    ASSERT_TRUE(Locate(employees, 1001));
    EXPECT_TRUE(employees.FieldByName("DateOfPRGranted").IsNull());

    Query sectionA = Open("SELECT * FROM ViewIR8SA_t WHERE PersonalSysId = 1001 ORDER BY IR8SOrder");
    ASSERT_EQ(sectionA.RecordCount(), 13);
    sectionA.First();
    EXPECT_NEAR(sectionA.FieldByName("OrdWages").AsFloat(), 7000.04, 1e-9);
    EXPECT_NEAR(sectionA.FieldByName("ContriOrdEECPF").AsFloat(), 1360.0, 1e-9);  // 20% of the 6800 ceiling
    sectionA.Last();
    EXPECT_EQ(sectionA.FieldByName("IR8SOrder").AsInteger(), 13);
    EXPECT_NEAR(sectionA.FieldByName("OrdWages").AsFloat(), 84000.48, 1e-6);       // 12 x 7000.04
    EXPECT_NEAR(sectionA.FieldByName("ContriOrdERCPF").AsFloat(), 13872.0, 1e-6);  // 12 x 1156.00
    EXPECT_NEAR(sectionA.FieldByName("AddWages").AsFloat(), 10500.99, 1e-9);       // the December bonus
    EXPECT_NEAR(sectionA.FieldByName("ContriAddEECPF").AsFloat(), 2100.0, 1e-9);

    Query sectionB = Open("SELECT * FROM ViewIR8SC_t WHERE PersonalSysId = 1006 ORDER BY RefundSysId");
    EXPECT_EQ(Column(sectionB, "AddWageAmt").size(), 3u);
    sectionB.First();
    EXPECT_EQ(sectionB.FieldByName("AddWageTo").AsDate(), (Date{2024, 3, 31}));
    EXPECT_EQ(Open("SELECT * FROM ViewIR8SC_t WHERE PersonalSysId = 1004 ORDER BY RefundSysId").RecordCount(), 0);
}

TEST_F(SampleQueries, AppendixEightAEmployeesAndSections) {
    Query employees = Open(
        "SELECT FGetEmployeeIdByPersonalSysId(A.PersonalSysId) AS EmployeeId, * FROM ViewYEEmployee_t A JOIN "
        "ViewA8A_t B ON (A.PersonalSysId = B.PersonalSysId), YEGlobal WHERE A.CurrentYEGlobalId = "
        "YEGlobal.YEGlobalId ORDER BY EEName1");
    EXPECT_EQ(employees.RecordCount(), 8);  // 1001, 1004, 1006 and five generated
    ASSERT_TRUE(Locate(employees, 1004));
    EXPECT_EQ(employees.FieldByName("OccupationDays").AsInteger(), 366);
    EXPECT_NEAR(employees.FieldByName("TotalBenefitInKind").AsFloat(), 31800.0, 1e-9);

    Query quarters = Open("SELECT * FROM ViewA8AS2S3_t WHERE PersonalSysId = 1004");
    ASSERT_EQ(quarters.RecordCount(), 1);
    EXPECT_EQ(quarters.FieldByName("FurnishedStatus").AsString(), "Fully Furnished");
    EXPECT_NEAR(quarters.FieldByName("TotalTaxableResidenceValue").AsFloat(), 30000.0, 1e-9);
    EXPECT_EQ(Open("SELECT * FROM ViewA8AS2S3_t WHERE PersonalSysId = 1006").RecordCount(), 0);
}

TEST_F(SampleQueries, AppendixEightBDerivesTheTotalsFromPlansSince2003) {
    Query main(Alias);
    main.AddSQL(
        "SELECT FGetPersonalName(A.PersonalSysId) AS PersonalName, FGetEmployeeIdByPersonalSysId(A.PersonalSysId) "
        "AS EmployeeId, (TotalESOPNoTaxExempt - TotalESOPNoTaxExemptBef) AS TotalESOPNoTaxExemptAfter, "
        "(TotalESOPStockGains - TotalESOPStockGainsBef) AS TotalESOPStockGainsAfter, (TotalEESOPTaxExempt - "
        "TotalEESOPTaxExemptBef) AS TotalEESOPTaxExemptAfter, (TotalEESOPNoTaxExempt - TotalEESOPNoTaxExemptBef) "
        "AS TotalEESOPNoTaxExemptAfter, (TotalEESOPStockGains - TotalEESOPStockGainsBef) AS "
        "TotalEESOPStockGainsAfter, (TotalCSOPTaxExempt - TotalCSOPTaxExemptBef) AS TotalCSOPTaxExemptAfter, "
        "(TotalCSOPNoTaxExempt - TotalCSOPNoTaxExemptBef) AS TotalCSOPNoTaxExemptAfter, (TotalCSOPStockGains - "
        "TotalCSOPStockGainsBef) AS TotalCSOPStockGainsAfter, (TotalNSOPTaxExempt - TotalNSOPTaxExemptBef) AS "
        "TotalNSOPTaxExemptAfter, (TotalNSOPNoTaxExempt - TotalNSOPNoTaxExemptBef) AS TotalNSOPNoTaxExemptAfter, "
        "(TotalNSOPStockGains - TotalNSOPStockGainsBef) AS TotalNSOPStockGainsAfter, (TotalESOPNoTaxExemptAfter + "
        "TotalEESOPNoTaxExemptAfter + TotalCSOPNoTaxExemptAfter + TotalNSOPNoTaxExemptAfter) AS TotNoTaxExemptAft, "
        "(B.TotalESOPNoTaxExemptBef + B.TotalEESOPNoTaxExemptBef + B.TotalCSOPNoTaxExemptBef + "
        "B.TotalNSOPNoTaxExemptBef) AS TotNoTaxExemptBef, (TotalESOPStockGainsAfter + TotalEESOPStockGainsAfter + "
        "TotalCSOPStockGainsAfter + TotalNSOPStockGainsAfter) AS TotStockGainsAft, (B.TotalESOPStockGainsBef + "
        "B.TotalEESOPStockGainsBef + B.TotalCSOPStockGainsBef + B.TotalNSOPStockGainsBef) AS TotStockGainsBef, * "
        "FROM ViewYEEmployee_t A JOIN ViewA8B_t B ON (A.PersonalSysId = B.PersonalSysId), YEGlobal WHERE "
        "A.CurrentYEGlobalId = YEGlobal.YEGlobalId ");
    main.AddSQL("ORDER BY EEName1");
    main.Open();
    EXPECT_EQ(Column(main, "PersonalName"),
              (std::vector<std::string>{"David Anthony Fernandez", "Lim Wei Jie", "Tan Boon Huat"}));

    ASSERT_TRUE(Locate(main, 1006));
    EXPECT_EQ(main.FieldByName("EmployeeId").AsString(), "LCP0006");
    // Section totals less their part from plans before 2003 (see the rows).
    EXPECT_NEAR(main.FieldByName("TotalESOPNoTaxExemptAfter").AsFloat(), 3100.0, 1e-9);  // 6100 - 3000
    EXPECT_NEAR(main.FieldByName("TotalEESOPTaxExemptAfter").AsFloat(), 1500.0, 1e-9);   // 4500 - 3000
    EXPECT_NEAR(main.FieldByName("TotalEESOPStockGainsAfter").AsFloat(), 2500.0, 1e-9);  // 7000 - 4500
    EXPECT_NEAR(main.FieldByName("TotalCSOPStockGainsAfter").AsFloat(), 0.0, 1e-9);      // 1500 - 1500
    EXPECT_NEAR(main.FieldByName("TotalNSOPTaxExemptAfter").AsFloat(), 6000.0, 1e-9);    // 6000 - 0
    // Grand totals: not qualifying A 3100 + B 1000 + C 0 + D 2000, before
    // 3000 + 1500 + 600 + 0; gains after 3100 + 2500 + 0 + 8000, before
    // 3000 + 4500 + 1500 + 0. Exempt amounts are in none of them.
    EXPECT_NEAR(main.FieldByName("TotNoTaxExemptAft").AsFloat(), 6100.0, 1e-9);
    EXPECT_NEAR(main.FieldByName("TotNoTaxExemptBef").AsFloat(), 5100.0, 1e-9);
    EXPECT_NEAR(main.FieldByName("TotStockGainsAft").AsFloat(), 13600.0, 1e-9);
    EXPECT_NEAR(main.FieldByName("TotStockGainsBef").AsFloat(), 9000.0, 1e-9);
    EXPECT_NEAR(main.FieldByName("GrandTotalStockGains").AsFloat(), 22600.0, 1e-9);

    const auto section = [](const std::string& type) {
        return Open("SELECT * FROM ViewA8BRecord_t WHERE PersonalSysId = 1006 AND StockOptionType = '" + type +
                    "' ORDER BY RCBNo, DateStockGranted DESC");
    };
    Query a = section("ESOP");
    EXPECT_EQ(Column(a, "RCBNo"), (std::vector<std::string>{"199704512M", "201912345K"}));
    EXPECT_EQ(section("EESOP").RecordCount(), 2);
    EXPECT_EQ(section("CSOP").RecordCount(), 1);
    Query d = section("NSOP");
    ASSERT_EQ(d.RecordCount(), 1);
    EXPECT_EQ(d.FieldByName("DateIncorporation").AsDate(), (Date{2009, 5, 1}));
}

}  // namespace
}  // namespace iras::db
