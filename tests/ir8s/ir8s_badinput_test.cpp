// Data an IR8S run must survive: NULL in every column the records and rules
// read (empty text, zero, the empty date), an employee without Section A
// rows or with more than the record holds, and an amount wider than its
// field, in an Amendment too, where no rule of IRAS is checked.
#include "tests/ir8s/IR8SFixture.h"

namespace iras::testing {
namespace {

using IR8SBadInput = IR8STest;

class IR8SNulls : public IR8STest {
protected:
    void SetUp() override {
        IR8STest::SetUp();
        AddEmployee(1, "NRIC", "S1111111A", "ANNE");
        AddMonths(1, 13);
        AddPayment(1, 1, "100, '2023-01-01', '2023-12-31', '2023-12-29', 5, 0, '2024-01-10', 6, 0, '2024-01-10'");
        afterViews = [this] { NullEverything(); };
    }
    // Every column the IR8S job reads, NULL in the views.
    void NullEverything() {
        Sql("UPDATE " + View("ViewYEEmployee") + " SET PayeeIDType = NULL, TaxNo = NULL, EEName1 = NULL, EEName2 = NULL;"
            "UPDATE " + View("ViewIR8S") + " SET DateOfPRGranted = NULL, ApprovalForFullCPF = NULL,"
            " CPFOverseasObligatory = NULL, ERVolCPF = NULL, EEVolCPF = NULL;"
            "UPDATE " + View("ViewIR8SA") + " SET OrdWages = NULL, ContriOrdERCPF = NULL, ContriOrdEECPF = NULL,"
            " AddWages = NULL, ContriAddERCPF = NULL, ContriAddEECPF = NULL;"
            "UPDATE " + View("ViewIR8SC") + " SET AddWageAmt = NULL, AddWageFrom = NULL, AddWageTo = NULL,"
            " AddWagePaidDate = NULL, ERContribution = NULL, ERInterest = NULL, ERDate = NULL,"
            " EEContribution = NULL, EEInterest = NULL, EEDate = NULL;");
    }
};

TEST_F(IR8SNulls, ReadAsEmptyInAnOriginal) {
    auto job = MakeJob();
    EXPECT_EQ(job->ValidateIR8SFile(), 0);
    EXPECT_EQ(employeeErrors, (StringList{"Identity No: ", "Employee ID: E1", "Invalid ID Type.",
                                          "Invalid ID No. ID No cannot be blank.",
                                          "Invalid Name - Line 1. Name - Line 1 cannot be blank.", ""}));
}

TEST_F(IR8SNulls, WriteZerosAndBlanksInAnAmendment) {
    const auto records = Generate(*MakeJob(false));
    ASSERT_EQ(records.size(), 2u);
    std::string expected = RecordOf(1200, {{1, "1"}, {95, std::string(648, '0')},
                                           {743, "0      0      0      0      0      0      "},
                                           {805, "0      0      "}});
    for (int start : {819, 894, 969})
        for (int offset : {0, 31, 38, 53, 60}) expected[static_cast<std::size_t>(start + offset - 1)] = '0';
    EXPECT_EQ(records[1], expected);
}

TEST_F(IR8SBadInput, SectionARowsTheRecordCannotHoldAreFindingsInAnAmendment) {
    AddEmployee(1, "NRIC", "S1111111A", "ANNE");
    AddEmployee(2, "NRIC", "S2222222B", "BEN");
    AddMonths(2, 14);
    AddEmployee(3, "NRIC", "S3333333C", "CAT");
    AddMonths(3, 12);
    AddMonth(3, 13, "10000000, 0, 0, 0, 0, 0");
    auto job = MakeJob(false);
    EXPECT_EQ(job->ValidateIR8SFile(), 0);
    EXPECT_EQ(employeeErrors,
              (StringList{"Identity No: S1111111A", "Employee ID: E1",
                          "No Section A - Details of monthly wages and contributions. The IR8S record needs the "
                          "wages of the months and their total.",
                          "",
                          "Identity No: S2222222B", "Employee ID: E2",
                          "Invalid Section A - Details of monthly wages and contributions. Section A can only have a "
                          "maximum of 12 records.",
                          "",
                          "Identity No: S3333333C", "Employee ID: E3",
                          "Amount too large for the IR8S record. Section A total ordinary wages of 10000000.00 does "
                          "not fit in its 7-character field.",
                          ""}));
    // Generated all the same, the file is refused rather than made without them.
    EXPECT_EQ(job->ProcessIR8SeSubmission(), 0);
    EXPECT_TRUE(Has(log, "No file is created: not every record could be written."));
}

}  // namespace
}  // namespace iras::testing
