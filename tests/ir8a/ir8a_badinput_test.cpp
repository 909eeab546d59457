// Bad input that payroll databases do hold: NULLs where values belong, an
// employer id with an apostrophe, texts longer than their fields. None of it
// crashes the run or spills into a neighbouring field.
#include "tests/ir8a/IR8AFixture.h"

namespace iras::testing {
namespace {

class IR8ABadInput : public IR8ATest {
protected:
    void SetUp() override {
        IR8ATest::SetUp();
        Sql("INSERT INTO YEEmployee (YEEmployerId, YEYear, PersonalSysId, CurrentYEGlobalId, PayeeIDType, TaxNo,"
            " EEName1, IRASNationalityCode, Gender, PaymentFrom, PaymentTo) VALUES"
            " ('ACME', 2023, 201, 1, 'NRIC', 'S1111111A', 'IVAN', '301', 'M', '2023-01-01', '2023-12-31');"
            "INSERT INTO IR8A (PersonalSysId, YEYear, IR8AType, GrossTotal) VALUES (201, 2023, 'CurIR8A', 1000);");
    }
    // Every column of the view tables is NULL but the keys and the salary
    // that puts the employee on file.
    void NullEverything() {
        afterViews = [this] {
            const std::vector<std::string> keep{"YEEmployerId", "YEYear", "PersonalSysId", "CurrentYEGlobalId",
                                                "IR8AType", "GrossTotal"};
            for (const std::string& view : {View("ViewIR8A"), View("ViewYEEmployee")}) {
                db::Query columns;
                columns.SetSQL("SELECT * FROM " + view);
                columns.Open();
                std::string sets;
                for (const auto& name : columns.FieldNames())
                    if (std::find(keep.begin(), keep.end(), name) == keep.end())
                        sets += (sets.empty() ? "" : ", ") + name + " = NULL";
                Sql("UPDATE " + view + " SET " + sets + ";");
            }
        };
    }
};

TEST_F(IR8ABadInput, NullsAreWrittenAsBlanksAndZerosInAnAmendment) {
    NullEverything();
    params.original = false;
    const auto records = Generate(*MakeJob());
    ASSERT_EQ(records.size(), 3u);
    // Only the salary of 1000 is written; every other amount is zeros, every
    // text and date blank. The total income is the database's sum over a
    // NULL bonus, so it is left out of the comparison.
    const std::string expected = Layout({{1, "1"}, {288, std::string(22, '0')}, {310, "00000100{"},
                                         {319, std::string(63, '0')}, {400, std::string(11, '0')},
                                         {428, std::string(12 * 11, '0')}});
    ASSERT_EQ(records[1].size(), 1200u);
    EXPECT_EQ(Span(records[1], 1, 262), Span(expected, 1, 262));
    EXPECT_EQ(Span(records[1], 272, 1200), Span(expected, 272, 1200));
}

TEST_F(IR8ABadInput, NullsInAnOriginalAreFindingsNotCrashes) {
    NullEverything();
    EXPECT_EQ(MakeJob()->ValidateIR8AFile(), 0);
    ASSERT_GE(employeeErrors.size(), 4u);
    EXPECT_EQ(StringList(employeeErrors.begin(), employeeErrors.begin() + 4),
              (StringList{"Identity No: ", "Employee ID: ", "Invalid ID Type.", "Invalid ID No. ID No cannot be blank."}));
    EXPECT_EQ(std::count(employeeErrors.begin(), employeeErrors.end(), "Invalid Section 45."), 1);
}

TEST_F(IR8ABadInput, ApostropheInTheEmployerIdFindsItsRowAndLongTextsAreCutAtTheFieldEnd) {
    Sql("UPDATE YEEmployer SET YEEmployerId = 'O''NEIL', AuthorisedName = 'Tan Ah Kow Bin Abdullah Rahman Lee',"
        " DivisionBranch = 'Head Office and Regional Operations Centre';"
        "UPDATE YEEmployee SET YEEmployerId = 'O''NEIL', Designation = 'Senior Vice President, Corporate Finance';");
    params.employerId = "O'NEIL";
    const auto records = Generate(*MakeJob());
    ASSERT_EQ(records.size(), 3u);
    EXPECT_EQ(Span(records[0], 22, 52), "Tan Ah Kow Bin Abdullah Rahman" "F");
    EXPECT_EQ(Span(records[0], 82, 141), "OBrien Trading Pte. Ltd." + std::string(36, ' '));
    EXPECT_EQ(Span(records[0], 231, 270), "Head Office and Regional Opera" "IR8A      ");
    EXPECT_EQ(Span(records[1], 567, 597), "Senior Vice President, Corpora ");
}

TEST_F(IR8ABadInput, UnknownReturnTypeIsRefusedWithItsName) {
    auto job = MakeJob("CURIR8A");
    EXPECT_EQ(job->ValidateIR8AFile(), 0);
    EXPECT_TRUE(Has(log, "Unknown IR8A type \"CURIR8A\": it must be CurIR8A or SupIR8A. No file is created."));
    EXPECT_TRUE(script->calls.empty());
}

}  // namespace
}  // namespace iras::testing
