// The sample data hangs together the way a payroll's would: the clean
// employer's figures agree from one return to the other (Original files
// compute from the detail rows what Amendment files read from the totals),
// IR8S sections have their fixed shape, and the users and registry row are
// those the runs expect.
#include <gtest/gtest.h>

#include <string>

#include "tests/database/query_fixture.h"

namespace iras::db::testing {
namespace {

class SampleData : public SampleDatabase {
protected:
    // The people of a query's first column, for readable failures.
    static std::string People(const std::string& sql) {
        std::string list;
        Query query = Open(sql);
        for (const std::string& person : testing::Column(query, query.FieldNames().at(0))) list += person + " ";
        return list;
    }
};

TEST_F(SampleData, UsersRightsAndRegistryRow) {
    EXPECT_EQ(Column("SELECT ModuleId FROM UserModuleRights WHERE UserId = 'ADMIN' ORDER BY ModuleId", "ModuleId"),
              (std::vector<std::string>{"YEDirectA8ARpt", "YEDirectA8BRpt", "YEDirectCurIR8ARpt", "YEDirectIR8SRpt",
                                        "YEDirectSupIR8ARpt", "YEIRASDirect"}));
    EXPECT_EQ(Column("SELECT ModuleId FROM UserModuleRights WHERE UserId = 'CLERK' ORDER BY ModuleId", "ModuleId"),
              (std::vector<std::string>{"YEDirectCurIR8ARpt", "YEIRASDirect"}));
    // The registry's keys are matched whatever their letter case.
    EXPECT_EQ(Column("SELECT RegProperty1 || '/' || RegProperty2 AS r FROM subregistry WHERE RegistryId = "
                     "'yeprocess' AND SubRegistryId = 'TAXEMPLOYERBASISYEAR'", "r"),
              (std::vector<std::string>{"IR8AYA2025/2024"}));
}

TEST_F(SampleData, IR8SSectionAIsTwelveMonthsAndTheirTotal) {
    // Everyone has rows 1 to 13, except ERRCO's person with a fourteenth row.
    EXPECT_EQ(People("SELECT PersonalSysId FROM IR8S s WHERE (SELECT count(*) FROM IR8SA a WHERE a.PersonalSysId = "
                     "s.PersonalSysId AND a.YEYear = s.YEYear AND a.IR8SOrder BETWEEN 1 AND 13) <> 13"),
              "");
    EXPECT_EQ(People("SELECT PersonalSysId FROM IR8SA WHERE IR8SOrder > 13"), "2026 ");
    // The thirteenth row is the sum of the twelve months, column by column.
    EXPECT_EQ(People("SELECT t.PersonalSysId FROM IR8SA t JOIN (SELECT PersonalSysId, YEYear, sum(OrdWages) AS o, "
                     "sum(ContriOrdERCPF) AS oer, sum(ContriOrdEECPF) AS oee, sum(AddWages) AS w, "
                     "sum(ContriAddERCPF) AS wer, sum(ContriAddEECPF) AS wee FROM IR8SA WHERE IR8SOrder <= 12 "
                     "GROUP BY PersonalSysId, YEYear) m USING (PersonalSysId, YEYear) WHERE t.IR8SOrder = 13 AND "
                     "(abs(t.OrdWages - o) > 0.005 OR abs(t.ContriOrdERCPF - oer) > 0.005 OR "
                     "abs(t.ContriOrdEECPF - oee) > 0.005 OR abs(t.AddWages - w) > 0.005 OR "
                     "abs(t.ContriAddERCPF - wer) > 0.005 OR abs(t.ContriAddEECPF - wee) > 0.005)"),
              "");
    // The clean employer's Section B rows are complete and in 2024.
    EXPECT_EQ(People("SELECT PersonalSysId FROM IR8SC WHERE PersonalSysId < 2000 AND NOT (AddWageAmt <> 0 AND "
                     "AddWageFrom LIKE '2024-%' AND AddWageTo LIKE '2024-%' AND AddWageFrom <= AddWageTo AND "
                     "AddWagePaidDate <> '1899-12-30')"),
              "");
}

TEST_F(SampleData, CleanBenefitsInKindAgreeBetweenIR8AAndAppendix8A) {
    // Appendix 8A total = its own items + the Sections 2 and 3 totals, and
    // equals what the IR8A reports as benefits in kind.
    EXPECT_EQ(People("SELECT a.PersonalSysId FROM A8A a LEFT JOIN (SELECT PersonalSysId, YEYear, "
                     "sum(TotalTaxableResidenceValue + TotalValueofUtilities + TotalHotelAccommodation) AS s FROM "
                     "A8AS2S3 GROUP BY PersonalSysId, YEYear) q USING (PersonalSysId, YEYear) "
                     "WHERE a.PersonalSysId < 2000 AND abs(a.TotalBenefitInKind - (IncidentalBenefits + InterestLoan "
                     "+ LifeInsurance + Holidays + Education + LongService + Clubs + Assets + MotorVehicle + "
                     "CarBenefit + coalesce(q.s, 0))) > 0.005"),
              "");
    EXPECT_EQ(People("SELECT a.PersonalSysId FROM A8A a JOIN IR8A i ON i.PersonalSysId = a.PersonalSysId AND "
                     "i.YEYear = a.YEYear AND i.IR8AType = 'CurIR8A' WHERE a.PersonalSysId < 2000 AND "
                     "abs(a.TotalBenefitInKind - i.BenefitsInKind - i.IR8ABenefitsInKind) > 0.005"),
              "");
}

TEST_F(SampleData, CleanAppendix8BTotalsAreTheSumsOfTheirPlanRows) {
    // "Before" holds ESOP plans granted before 1 January 2003; ESOW and later
    // ESOP plans are "after". An Original file sums the rows, an Amendment
    // reads these totals: they must agree.
    const std::string before = "(TypePlanGranted = 'ESOP' AND DateStockGranted < '2003-01-01')";
    const std::string sums =
        "SELECT PersonalSysId, YEYear, "
        "sum(CASE WHEN StockOptionType = 'ESOP' THEN NoTaxExempt ELSE 0 END) AS aNo, "
        "sum(CASE WHEN StockOptionType = 'ESOP' AND " + before + " THEN NoTaxExempt ELSE 0 END) AS aNoBef, "
        "sum(CASE WHEN StockOptionType = 'ESOP' THEN StockGains ELSE 0 END) AS aGain, "
        "sum(CASE WHEN StockOptionType = 'ESOP' AND " + before + " THEN StockGains ELSE 0 END) AS aGainBef, "
        "sum(CASE WHEN StockOptionType = 'EESOP' THEN EESOPTaxExempt ELSE 0 END) AS bEx, "
        "sum(CASE WHEN StockOptionType = 'EESOP' AND " + before + " THEN EESOPTaxExempt ELSE 0 END) AS bExBef, "
        "sum(CASE WHEN StockOptionType = 'EESOP' THEN NoTaxExempt ELSE 0 END) AS bNo, "
        "sum(CASE WHEN StockOptionType = 'EESOP' THEN StockGains ELSE 0 END) AS bGain, "
        "sum(CASE WHEN StockOptionType = 'CSOP' THEN CSOPTaxExempt ELSE 0 END) AS cEx, "
        "sum(CASE WHEN StockOptionType = 'CSOP' AND " + before + " THEN StockGains ELSE 0 END) AS cGainBef, "
        "sum(CASE WHEN StockOptionType = 'NSOP' THEN NSOPTaxExempt ELSE 0 END) AS dEx, "
        "sum(CASE WHEN StockOptionType = 'NSOP' THEN StockGains ELSE 0 END) AS dGain, "
        "sum(StockGains) AS gains FROM A8BRecord GROUP BY PersonalSysId, YEYear";
    EXPECT_EQ(People("SELECT t.PersonalSysId FROM A8B t JOIN (" + sums + ") r USING (PersonalSysId, YEYear) "
                     "WHERE t.PersonalSysId < 2000 AND ("
                     "abs(TotalESOPNoTaxExempt - aNo) + abs(TotalESOPNoTaxExemptBef - aNoBef) + "
                     "abs(TotalESOPStockGains - aGain) + abs(TotalESOPStockGainsBef - aGainBef) + "
                     "abs(TotalEESOPTaxExempt - bEx) + abs(TotalEESOPTaxExemptBef - bExBef) + "
                     "abs(TotalEESOPNoTaxExempt - bNo) + abs(TotalEESOPStockGains - bGain) + "
                     "abs(TotalCSOPTaxExempt - cEx) + abs(TotalCSOPStockGainsBef - cGainBef) + "
                     "abs(TotalNSOPTaxExempt - dEx) + abs(TotalNSOPStockGains - dGain) + "
                     "abs(GrandTotalStockGains - gains) > 0.005)"),
              "");
    // Each row's amounts follow from its prices: A gains (X - E) x N; B to D
    // exempt (X - G) x N and not qualifying (G - E) x N.
    EXPECT_EQ(People("SELECT PersonalSysId FROM A8BRecord WHERE PersonalSysId < 2000 AND ("
                     "abs((MktValueExerciseStock - ExercisePriceStock) * SharesAcquired - StockGains) > 0.005 OR "
                     "(StockOptionType = 'ESOP' AND abs(NoTaxExempt - StockGains) > 0.005) OR "
                     "(StockOptionType <> 'ESOP' AND abs((MktValueStockGrant - ExercisePriceStock) * SharesAcquired "
                     "- NoTaxExempt) > 0.005))"),
              "");
    // The IR8A reports the same gains, split at 2003.
    Query ir8a = Open("SELECT TotalStockGainsAfter, TotalStockGainsBef FROM IR8A WHERE PersonalSysId = 1006 AND "
                      "YEYear = 2024 AND IR8AType = 'CurIR8A'");
    EXPECT_NEAR(ir8a.FieldByName("TotalStockGainsAfter").AsFloat(), 13600.0, 1e-9);
    EXPECT_NEAR(ir8a.FieldByName("TotalStockGainsBef").AsFloat(), 9000.0, 1e-9);
}

}  // namespace
}  // namespace iras::db::testing
