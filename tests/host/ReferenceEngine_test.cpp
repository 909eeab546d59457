// The reference engine on a real SQLite database with hand-made rows: who sees
// which view rows, what an amendment holds after a submission, what a reset
// puts back.
#include "platform/host/ReferenceEngine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/common/Date.h"
#include "platform/host/BQueryViewTable.h"
#include "platform/host/HostFunctions.h"
#include "tests/host/HostTestDatabase.h"

namespace iras {
namespace {

using ::testing::HasSubstr;

DateTime clockNow{Date{2024, 1, 10}, 9, 0, 0};
DateTime TestClock() { return clockNow; }

class ReferenceEngineTest : public testing::HostDatabaseTest {
protected:
    void SetUp() override {
        HostDatabaseTest::SetUp();
        clockNow = DateTime{Date{2024, 1, 10}, 9, 0, 0};
        SetClockForTesting(&TestClock);
        // Employer ALPHA, year 2023: three people. Person 1 also has a 2022
        // row and a supplementary IR8A row that a current view must not show;
        // person 10 belongs to another employer, whose id holds a quote.
        Exec("INSERT INTO YEEmployee (YEEmployerId, YEYear, PersonalSysId, EEName1) VALUES "
             "('ALPHA', 2023, 1, 'TAN'), ('ALPHA', 2023, 2, 'LIM'), ('ALPHA', 2023, 3, 'NG'), "
             "('ALPHA', 2022, 1, 'TAN'), ('O''NEIL & CO', 2023, 10, 'WONG')");
        Exec("INSERT INTO IR8A (PersonalSysId, YEYear, IR8AType, GrossTotal, Commission, IncomeBorneStatus) VALUES "
             "(1, 2023, 'CurIR8A', 5000, 0, 'NotApplicable'), (2, 2023, 'CurIR8A', 6000, 0, 'NotApplicable'), "
             "(3, 2023, 'CurIR8A', 7000, 0, 'NotApplicable'), (1, 2022, 'CurIR8A', 4000, 0, 'NotApplicable'), "
             "(1, 2023, 'SupIR8A', 300, 0, 'NotApplicable'), (10, 2023, 'CurIR8A', 9000, 0, 'NotApplicable')");
    }
    void TearDown() override {
        SetClockForTesting(nullptr);
        HostDatabaseTest::TearDown();
    }

    static std::unique_ptr<ReferenceEngine> Engine(BQueryViewTable& session, const std::string& employer,
                                                   int year, const std::string& type, bool original) {
        auto engine = std::make_unique<ReferenceEngine>(&session);
        engine->SetYEYear(year);
        engine->SetYEEmployerId(employer);
        engine->SetYESubmissionType(type);
        engine->SetYEIgnoreChanges(original);
        return engine;
    }

    static std::string View(const BQueryViewTable& session, const std::string& base) {
        return _GetViewTableName("View" + base, session.sGetIPAddress(), session.sGetUserID());
    }

    BQueryViewTable admin_{{"HRADMIN", "10.0.0.1", 2023}};
};

TEST_F(ReferenceEngineTest, TwoUsersOnDifferentEmployersDoNotSeeOrTouchEachOthersRows) {
    BQueryViewTable obrien({"O'Brien", "10.0.0.2", 2023});
    BQueryViewTable li({"李", "10.0.0.3", 2023});
    auto first = Engine(obrien, "ALPHA", 2023, "CurIR8A", true);
    auto second = Engine(li, "O'NEIL & CO", 2023, "CurIR8A", true);
    ASSERT_NE(first->GenerateViewTables(), 0) << first->LastError();
    ASSERT_NE(second->GenerateViewTables(), 0) << second->LastError();
    // An original holds the employer's people with rows of that year and
    // type only (person 1's 2022 and supplementary rows stay out); the second
    // generation rebuilt only its own user's tables.
    EXPECT_EQ(Text("SELECT PersonalSysId FROM " + View(obrien, "YEEmployee") + " ORDER BY PersonalSysId"), "1,2,3");
    EXPECT_EQ(Text("SELECT PersonalSysId FROM " + View(obrien, "IR8A") + " ORDER BY PersonalSysId"), "1,2,3");
    EXPECT_EQ(Text("SELECT PersonalSysId FROM " + View(li, "IR8A")), "10");

    // The same user at another workstation has tables of his own.
    BQueryViewTable obrienElsewhere({"O'Brien", "10.0.0.9", 2023});
    auto third = Engine(obrienElsewhere, "O'NEIL & CO", 2023, "CurIR8A", true);
    ASSERT_NE(third->GenerateViewTables(), 0) << third->LastError();
    EXPECT_EQ(Text("SELECT PersonalSysId FROM " + View(obrien, "IR8A") + " ORDER BY PersonalSysId"), "1,2,3");
}

TEST_F(ReferenceEngineTest, EmployeeViewHoldsOnlyThePeopleWithAMainRowOfTheReturnUnderItsYearKey) {
    // IR8S: persons 1 and 2 have the main row, person 3 only a Section A
    // month (no IR8S form without its main row), person 10 is another
    // employer's. Only person 1 has a supplementary IR8A row.
    Exec("INSERT INTO IR8S (PersonalSysId, YEYear) VALUES (1, 2023), (2, 2023), (10, 2023), (3, 2022)");
    Exec("INSERT INTO IR8SA (PersonalSysId, YEYear, IR8SOrder, OrdWages) VALUES (2, 2023, 1, 800), "
         "(3, 2023, 1, 900)");
    auto ir8s = Engine(admin_, "ALPHA", 2023, "IR8S", true);
    ASSERT_NE(ir8s->GenerateViewTables(), 0) << ir8s->LastError();
    EXPECT_EQ(Text("SELECT PersonalSysId FROM " + View(admin_, "YEEmployee") + " ORDER BY PersonalSysId"), "1,2");
    EXPECT_EQ(Text("SELECT PersonalSysId FROM " + View(admin_, "IR8SA")), "2");

    auto supplementary = Engine(admin_, "ALPHA", 2023, "SupIR8A", true);
    ASSERT_NE(supplementary->GenerateViewTables(), 0) << supplementary->LastError();
    EXPECT_EQ(Text("SELECT PersonalSysId FROM " + View(admin_, "YEEmployee")), "1");

    // As submitted: the people of the submitted copy, not of the live rows.
    ASSERT_NE(ir8s->SubmitRecords(true, false), 0) << ir8s->LastError();
    Exec("DELETE FROM IR8S WHERE YEYear = 2023");
    Exec("INSERT INTO IR8S (PersonalSysId, YEYear) VALUES (3, 2023)");
    ASSERT_NE(ir8s->GenerateSubmittedViewTables(), 0) << ir8s->LastError();
    EXPECT_EQ(Text("SELECT PersonalSysId FROM " + View(admin_, "YEEmployee") + " ORDER BY PersonalSysId"), "1,2");
}

TEST_F(ReferenceEngineTest, AmendmentAfterSubmissionHoldsExactlyTheChangedEmployeesAsDifferences) {
    auto original = Engine(admin_, "ALPHA", 2023, "CurIR8A", true);
    ASSERT_NE(original->GenerateViewTables(), 0);
    ASSERT_NE(original->SubmitRecords(true, false), 0) << original->LastError();
    EXPECT_EQ(Text("SELECT printf('%.2f', GrossTotal) FROM IR8A WHERE YEYear = 92023 AND PersonalSysId = 1"),
              "5000.00");

    // Person 1 was over-declared by 500, person 3 earned a commission of
    // 250.50, person 2 is unchanged, person 4 is new since the submission.
    Exec("UPDATE IR8A SET GrossTotal = 4500, IncomeBorneStatus = 'Full' WHERE PersonalSysId = 1 AND YEYear = 2023 "
         "AND IR8AType = 'CurIR8A'");
    Exec("UPDATE IR8A SET Commission = 250.5 WHERE PersonalSysId = 3 AND YEYear = 2023");
    Exec("INSERT INTO YEEmployee (YEEmployerId, YEYear, PersonalSysId, EEName1) VALUES ('ALPHA', 2023, 4, 'ONG')");
    Exec("INSERT INTO IR8A (PersonalSysId, YEYear, IR8AType, GrossTotal) VALUES (4, 2023, 'CurIR8A', 3000)");

    auto amendment = Engine(admin_, "ALPHA", 2023, "CurIR8A", false);
    ASSERT_NE(amendment->GenerateViewTables(), 0) << amendment->LastError();
    EXPECT_EQ(Text("SELECT PersonalSysId FROM " + View(admin_, "YEEmployee") + " ORDER BY PersonalSysId"), "1,3,4");
    // Person, gross, commission; texts as they are now, with the live year and kind.
    EXPECT_EQ(Text("SELECT PersonalSysId || '|' || printf('%.2f|%.2f', GrossTotal, Commission) || '|' || "
                   "IncomeBorneStatus || '|' || YEYear || IR8AType FROM " + View(admin_, "IR8A") +
                   " ORDER BY PersonalSysId"),
              "1|-500.00|0.00|Full|2023CurIR8A,3|0.00|250.50|NotApplicable|2023CurIR8A,"
              "4|3000.00|0.00|NotApplicable|2023CurIR8A");
}

TEST_F(ReferenceEngineTest, AmendedSectionRowsAreMatchedByTheirKeyAndARemovedRowIsReversed) {
    Exec("INSERT INTO IR8S (PersonalSysId, YEYear) VALUES (1, 2023), (2, 2023)");
    Exec("INSERT INTO IR8SA (PersonalSysId, YEYear, IR8SOrder, OrdWages) VALUES "
         "(1, 2023, 1, 1000), (1, 2023, 2, 1000), (2, 2023, 1, 800)");
    Exec("INSERT INTO IR8SC (PersonalSysId, YEYear, RefundSysId, AddWageAmt) VALUES (1, 2023, 7, 500)");
    auto original = Engine(admin_, "ALPHA", 2023, "IR8S", true);
    ASSERT_NE(original->SubmitRecords(true, false), 0) << original->LastError();

    Exec("UPDATE IR8SA SET OrdWages = 1200 WHERE PersonalSysId = 1 AND YEYear = 2023 AND IR8SOrder = 2");
    Exec("DELETE FROM IR8SC WHERE YEYear = 2023");
    auto amendment = Engine(admin_, "ALPHA", 2023, "IR8S", false);
    ASSERT_NE(amendment->GenerateViewTables(), 0) << amendment->LastError();

    EXPECT_EQ(Text("SELECT PersonalSysId FROM " + View(admin_, "YEEmployee")), "1");
    EXPECT_EQ(Text("SELECT printf('%.2f', OrdWages) FROM " + View(admin_, "IR8SA") + " ORDER BY IR8SOrder"),
              "0.00,200.00");
    EXPECT_EQ(Text("SELECT RefundSysId || printf(':%.2f:', AddWageAmt) || YEYear FROM " + View(admin_, "IR8SC")),
              "7:-500.00:2023");
}

TEST_F(ReferenceEngineTest, AmendedSharePlanRowKeepsPricesAndSharesAndDiffersOnlyInGains) {
    Exec("INSERT INTO A8B (PersonalSysId, YEYear) VALUES (1, 2023)");
    Exec("INSERT INTO A8BRecord (PersonalSysId, YEYear, A8BRecordSysId, ExercisePriceStock, MktValueExerciseStock,"
         " SharesAcquired, StockGains) VALUES (1, 2023, 1, 1.2, 2.18, 2500, 2450)");
    auto original = Engine(admin_, "ALPHA", 2023, "A8B", true);
    ASSERT_NE(original->SubmitRecords(true, false), 0) << original->LastError();
    // 500 more shares were exercised at the same prices: (2.18 - 1.20) x 3000 = 2940.
    Exec("UPDATE A8BRecord SET SharesAcquired = 3000, StockGains = 2940 WHERE YEYear = 2023");
    auto amendment = Engine(admin_, "ALPHA", 2023, "A8B", false);
    ASSERT_NE(amendment->GenerateViewTables(), 0) << amendment->LastError();
    EXPECT_EQ(Text("SELECT printf('%.2f|%.2f|%d|%.2f', ExercisePriceStock, MktValueExerciseStock, SharesAcquired,"
                   " StockGains) FROM " + View(admin_, "A8BRecord")),
              "1.20|2.18|3000|490.00");
}

TEST_F(ReferenceEngineTest, SupplementaryCopyIsKeptUnderNineAndTheBasisYearBesideTheCurrentOne) {
    auto current = Engine(admin_, "ALPHA", 2023, "CurIR8A", true);
    ASSERT_NE(current->SubmitRecords(true, false), 0) << current->LastError();
    // A supplementary return of year-end year 2024 covers basis year 2023.
    Exec("INSERT INTO YEEmployee (YEEmployerId, YEYear, PersonalSysId) VALUES ('ALPHA', 2024, 1)");
    Exec("INSERT INTO IR8A (PersonalSysId, YEYear, IR8AType, GrossTotal, IncomeBorneStatus) "
         "VALUES (1, 2024, 'SupIR8A', 250, 'Partial')");
    auto supplementary = Engine(admin_, "ALPHA", 2024, "SupIR8A", true);
    ASSERT_NE(supplementary->SubmitRecords(true, false), 0) << supplementary->LastError();

    EXPECT_EQ(Text("SELECT IR8AType || printf(':%.2f', GrossTotal) FROM IR8A WHERE YEYear = 92023 AND "
                   "PersonalSysId = 1 ORDER BY IR8AType"),
              "CurIR8A:5000.00,SupIR8A:250.00");
    // The IR8A query reads the submitted income-borne status there.
    EXPECT_EQ(Text("SELECT IncomeBorneStatus FROM IR8A WHERE PersonalSysId = 1 AND YEYear = '92023' "
                   "AND IR8AType = 'SupIR8A'"),
              "Partial");
    EXPECT_EQ(Text("SELECT COUNT(*) FROM IR8A WHERE YEYear = 92024"), "0");
}

TEST_F(ReferenceEngineTest, ResetBringsBackThePreviousLastSubmissionRowAndSubmittedCopy) {
    auto first = Engine(admin_, "ALPHA", 2023, "CurIR8A", true);
    ASSERT_NE(first->SubmitRecords(true, true), 0) << first->LastError();
    EXPECT_EQ(Text("SELECT SubmissionType || '|' || IsOriginal || '|' || SubmitUserId || '|' || "
                     "LastSubmissionDateTime || '|' || YEYear FROM LastSubmission ORDER BY SubmissionType"),
              "All|1|HRADMIN|2024-01-10 09:00:00|2023,CurIR8A|1|HRADMIN|2024-01-10 09:00:00|2023");

    clockNow = DateTime{Date{2024, 2, 1}, 14, 5, 9};
    Exec("UPDATE IR8A SET GrossTotal = 5100 WHERE PersonalSysId = 1 AND YEYear = 2023");
    auto second = Engine(admin_, "ALPHA", 2023, "CurIR8A", false);
    second->SetSubmitUserID("PAYCLERK");
    ASSERT_NE(second->SubmitRecords(false, false), 0) << second->LastError();
    EXPECT_EQ(Text("SELECT IsOriginal || '|' || SubmitUserId FROM LastSubmission WHERE SubmissionType = 'CurIR8A'"),
              "0|PAYCLERK");

    auto reset = Engine(admin_, "ALPHA", 2023, "CurIR8A", false);
    ASSERT_NE(reset->CopyRecords(8, 9), 0) << reset->LastError();
    EXPECT_EQ(Text("SELECT IsOriginal || '|' || SubmitUserId || '|' || LastSubmissionDateTime || '|' || YEYear "
                   "FROM LastSubmission WHERE YEEmployerId = 'ALPHA' AND SubmissionType = 'CurIR8A'"),
              "1|HRADMIN|2024-01-10 09:00:00|2023");
    EXPECT_EQ(Text("SELECT printf('%.2f', GrossTotal) FROM IR8A WHERE YEYear = 92023 AND PersonalSysId = 1 "
                   "AND IR8AType = 'CurIR8A'"),
              "5000.00");
    // With the copy back at 5000, the next amendment corrects by +100 again.
    ASSERT_NE(reset->GenerateViewTables(), 0);
    EXPECT_EQ(Text("SELECT printf('%.2f', GrossTotal) FROM " + View(admin_, "IR8A")), "100.00");
}

TEST_F(ReferenceEngineTest, ResetOfTheFirstSubmissionRemovesTheRowAndResetWithoutOneFails) {
    auto engine = Engine(admin_, "ALPHA", 2023, "A8A", true);
    EXPECT_EQ(engine->CopyRecords(8, 9), 0);
    EXPECT_THAT(engine->LastError(), HasSubstr("no submission of A8A"));
    ASSERT_NE(engine->SubmitRecords(true, false), 0) << engine->LastError();
    ASSERT_NE(engine->CopyRecords(8, 9), 0) << engine->LastError();
    EXPECT_EQ(Text("SELECT COUNT(*) FROM LastSubmission WHERE SubmissionType = 'A8A'"), "0");
    EXPECT_EQ(engine->CopyRecords(9, 8), 0);
}

TEST_F(ReferenceEngineTest, CallsThatCannotWorkReturnZeroWithAMessageInsteadOfThrowing) {
    auto noEmployer = Engine(admin_, "", 2023, "CurIR8A", true);
    EXPECT_EQ(noEmployer->GenerateViewTables(), 0);
    EXPECT_THAT(noEmployer->LastError(), HasSubstr("employer"));
    auto noType = Engine(admin_, "ALPHA", 2023, "", true);
    EXPECT_EQ(noType->SubmitRecords(true, true), 0);
    EXPECT_THAT(noType->LastError(), HasSubstr("submission type"));
    Exec("DROP TABLE IR8SC");
    auto broken = Engine(admin_, "ALPHA", 2023, "IR8S", true);
    EXPECT_EQ(broken->GenerateViewTables(), 0);
    EXPECT_THAT(broken->LastError(), HasSubstr("IR8SC"));
    EXPECT_EQ(broken->Log().back(), broken->LastError());
}

}  // namespace
}  // namespace iras
