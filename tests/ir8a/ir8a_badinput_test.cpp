// Bad input that payroll databases do hold: NULLs where values belong, an
// employer id with an apostrophe, texts longer than their fields. None of it
// crashes the run or spills into a neighbouring field.
#include <algorithm>

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
    void NullEverything(const std::vector<std::string>& alsoKept = {}) {
        afterViews = [this, alsoKept] {
            std::vector<std::string> keep{"YEEmployerId", "YEYear", "PersonalSysId", "CurrentYEGlobalId",
                                          "IR8AType", "GrossTotal"};
            keep.insert(keep.end(), alsoKept.begin(), alsoKept.end());
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

// A NULL amount would be written as zeros where the database holds no
// figure: in an Amendment too it is a finding naming the employee and the
// column, and no file is made.
TEST_F(IR8ABadInput, NullAmountsAreFindingsInAnAmendmentAndNoFileIsMade) {
    NullEverything({"TaxNo"});
    params.original = false;
    auto job = MakeJob();
    EXPECT_EQ(job->ValidateIR8AFile(), 0);
    for (const char* column : {"DirectorFee", "Gratuity", "FixedAmtBorneByEE"}) {
        const std::string suffix = std::string("): ") + column + " is empty (NULL) where the return needs an amount.";
        EXPECT_EQ(std::count_if(employeeErrors.begin(), employeeErrors.end(),
                                [&](const std::string& line) {
                                    return line.rfind("Employee S1111111A (Employee ID ", 0) == 0 &&
                                           line.size() > suffix.size() &&
                                           line.compare(line.size() - suffix.size(), suffix.size(), suffix) == 0;
                                }),
                  1)
            << column << ::testing::PrintToString(employeeErrors);
    }
    EXPECT_EQ(job->ProcessIR8AeSubmission(), 0);
    EXPECT_TRUE(job->GetOutputFilePath().empty());
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
