// The SQL texts of the session form and of the four returns, built exactly as
// the form and the jobs build them, run on a database made with the sample
// data. The per-user view tables that the submission engine would make are
// made here by hand, each holding one employer's rows of one year. Expected
// values are the hand-worked figures written beside the sample rows.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/common/Date.h"
#include "tests/database/query_fixture.h"

namespace iras::db::testing {
namespace {

using Values = std::vector<std::string>;

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

class SampleQueries : public SampleDatabase {
protected:
    static void SetUpTestSuite() {
        SampleDatabase::SetUpTestSuite();
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
};

TEST_F(SampleQueries, EmployerYearAndSubmitterListsOfTheSessionForm) {
    EXPECT_EQ(Column("SELECT * FROM YEEmployer ORDER BY YEEmployerId", "YEEmployerId"),
              (Values{"ERRCO", "ERRHEAD", "IR8AYA2025", "ONEIL"}));
    // Year-end years and, for the supplementary return, the basis years one
    // lower; the submitted copies (92023) and backups (82023) never show.
    const std::string years = "SELECT DISTINCT YEYear, YEYear AS Year FROM YEEmployee WHERE YEEmployerId = "
                              ":YEEmployerId AND YEYear < 10000 ORDER BY YEYear";
    Query clean = Open(years, "IR8AYA2025");
    EXPECT_EQ(testing::Column(clean, "Year"), (Values{"2022", "2023", "2024"}));
    Query supYears = Open("SELECT DISTINCT YEYear, (YEYear - 1) AS Year FROM YEEmployee WHERE YEEmployerId = "
                          ":YEEmployerId AND YEYear < 10000ORDER BY YEYear",
                          "IR8AYA2025");
    EXPECT_EQ(testing::Column(supYears, "Year"), (Values{"2021", "2022", "2023"}));
    EXPECT_GE(Open("SELECT DISTINCT PersonalSysId FROM YEEmployee WHERE YEYear < 10000").RecordCount(), 60);

    const std::string last = "SELECT *, FGetDateTimeFormat(LastSubmissionDateTime) AS SubmittedDate FROM "
                             "LastSubmission WHERE YEEmployerId = :YEEmployerId AND ";
    Query current = Open(last + "SubmissionType = 'CurIR8A'", "IR8AYA2025");
    ASSERT_EQ(current.RecordCount(), 1);
    EXPECT_NE(current.FieldByName("IsOriginal").AsInteger(), 0);
    EXPECT_EQ(current.FieldByName("SubmitUserId").AsString(), "ADMIN");
    EXPECT_EQ(current.FieldByName("SubmittedDate").AsString(), "26/02/2024 10:15:00");
    EXPECT_EQ(Open(last + "SubmissionType = 'SupIR8A'", "IR8AYA2025").RecordCount(), 0);

    Query types = Open(
        "SELECT YEProperty1 AS UserTypeID, YEKeywordDefaultName AS UserTypeDesc,  YEKeywordUserDefinedName FROM "
        "YEKeyWord WHERE YEKeywordCategory = 'SubmitUserIDType' ORDER BY YEKeywordDefaultName ");
    EXPECT_EQ(testing::Column(types, "UserTypeDesc"),
              (Values{"Corporate Digital Identity", "Personal Digital Identity", "Tax Agent"}));
    EXPECT_EQ(testing::Column(types, "UserTypeID"), (Values{"CORPORATE", "PERSONAL", "TAXAGENT"}));
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
}

TEST_F(SampleQueries, CurrentIR8AOriginalComputesBonusOthersAndTotalIncome) {
    Query query = Open(IR8AQuery("ViewYEEmployee_t", "ViewIR8A_cur", "CurIR8A", "2024", true));
    // 10 hand-written current employees (1011 and 1012 are supplementary
    // only) and 30 generated ones, in name order.
    EXPECT_EQ(query.RecordCount(), 40);
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
}

TEST_F(SampleQueries, CurrentIR8AAmendmentKeepsNegativeCommission) {
    Query query = Open(IR8AQuery("ViewYEEmployee_t", "ViewIR8A_cur", "CurIR8A", "2024", false));
    EXPECT_EQ(query.RecordCount(), 40);
    ASSERT_TRUE(Locate(query, 1003));
    EXPECT_DOUBLE_EQ(query.FieldByName("CommissionAmt").AsFloat(), -350.0);
    EXPECT_NEAR(query.FieldByName("OthersAmt").AsFloat(), 2050.0, 1e-9);  // 2400 - 350
    EXPECT_DOUBLE_EQ(query.FieldByName("Amt").AsFloat(), 106050.0);       // 96000 + 8000 + 2050
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
    Query oneil = Open(IR8AQuery("ViewYEEmployee_oneil", "ViewIR8A_oneilsup", "SupIR8A", "2023", true));
    EXPECT_EQ(clean.RecordCount(), 2);
    EXPECT_EQ(oneil.RecordCount(), 3);
    struct Case {
        Query* query;
        int person;
        Date cessation;
        Date paymentTo;
    };
    const Case cases[] = {
        {&clean, 1013, {2022, 6, 30}, {2022, 6, 30}},    // left on 30 June 2022
        {&clean, 1014, {2022, 11, 15}, {2022, 11, 15}},  // left on 15 November 2022
        {&oneil, 3001, Date::Empty(), {2023, 12, 31}},  // left on 31 March 2024, after the basis year
        {&oneil, 3002, Date::Empty(), {2023, 12, 31}},  // never left
        {&oneil, 3003, {2023, 8, 31}, {2023, 8, 31}},    // left on 31 August 2023
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.person);
        ASSERT_TRUE(Locate(*c.query, c.person));
        EXPECT_EQ(c.query->FieldByName("SupCessation").AsDate(), c.cessation);
        EXPECT_EQ(c.query->FieldByName("SupPaymentTo").AsDate(), c.paymentTo);
    }
    ASSERT_TRUE(Locate(clean, 1013));  // a late bonus of 1500.00
    EXPECT_DOUBLE_EQ(clean.FieldByName("Amt").AsFloat(), 1500.0);
}

TEST_F(SampleQueries, IR8SEmployeesAndTheirSectionsAAndB) {
    const std::string head =
        "SELECT FGetEmployeeIdByPersonalSysId(A.PersonalSysId) AS EmployeeId, * FROM ViewYEEmployee_t A JOIN "
        "ViewIR8S_t B ON (A.PersonalSysId = B.PersonalSysId), YEGlobal WHERE A.CurrentYEGlobalId = "
        "YEGlobal.YEGlobalId ";
    // 1001, 1004, 1005, 1006 and every fifth generated employee; the form's
    // default switch (Excess CPF) keeps them all.
    EXPECT_EQ(Open(head + "AND FlagExcessCPF = 'Y' ORDER BY EEName1").RecordCount(), 10);
    EXPECT_EQ(Open(head + "AND Flag100K = 'Y' AND FlagExcessCPF = 'Y' ORDER BY EmployeeId").RecordCount(), 0);
    Query employees = Open(head + "ORDER BY EEName1");
    ASSERT_TRUE(Locate(employees, 1004));
    EXPECT_EQ(employees.FieldByName("DateOfPRGranted").AsDate(), (Date{2022, 6, 15}));

    Query sectionA = Open("SELECT * FROM ViewIR8SA_t WHERE PersonalSysId = 1001 ORDER BY IR8SOrder");
    ASSERT_EQ(sectionA.RecordCount(), 13);
    EXPECT_NEAR(sectionA.FieldByName("ContriOrdEECPF").AsFloat(), 1360.0, 1e-9);  // 20% of the 6800 ceiling
    sectionA.Last();
    EXPECT_NEAR(sectionA.FieldByName("OrdWages").AsFloat(), 84000.48, 1e-6);  // 12 x 7000.04
    EXPECT_NEAR(sectionA.FieldByName("AddWages").AsFloat(), 10500.99, 1e-9);  // the December bonus

    Query sectionB = Open("SELECT * FROM ViewIR8SC_t WHERE PersonalSysId = 1006 ORDER BY RefundSysId");
    EXPECT_EQ(sectionB.RecordCount(), 3);
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
    EXPECT_NEAR(employees.FieldByName("TotalBenefitInKind").AsFloat(), 31800.0, 1e-9);
    Query quarters = Open("SELECT * FROM ViewA8AS2S3_t WHERE PersonalSysId = 1004");
    ASSERT_EQ(quarters.RecordCount(), 1);
    EXPECT_NEAR(quarters.FieldByName("TotalTaxableResidenceValue").AsFloat(), 30000.0, 1e-9);
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
    EXPECT_EQ(testing::Column(main, "PersonalName"),
              (Values{"David Anthony Fernandez", "Goh Siew Lan", "Lim Wei Jie", "Tan Boon Huat"}));

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
    EXPECT_EQ(testing::Column(a, "RCBNo"), (Values{"199704512M", "201912345K"}));
    EXPECT_EQ(section("EESOP").RecordCount(), 2);
    Query d = section("NSOP");
    ASSERT_EQ(d.RecordCount(), 1);
    EXPECT_EQ(d.FieldByName("DateIncorporation").AsDate(), (Date{2009, 5, 1}));
}

}  // namespace
}  // namespace iras::db::testing
