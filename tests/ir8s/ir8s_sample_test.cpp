// The IR8S return end to end over the sample payroll with the reference
// engine: the clean employer's Original, then, after it was submitted, an
// Amendment of the two employees changed since, carrying signed differences.
// Every record is 1200 bytes and CR LF and IRAS's file checks pass.
#include <map>

#include "platform/ais/AisFileChecker.h"
#include "platform/common/Text.h"
#include "tests/ir8s/IR8SFixture.h"

namespace iras::testing {
namespace {

class IR8SSample : public IR8STest {
protected:
    void SetUp() override {
        IR8STest::SetUp();
        db::ConnectionRegistry::Unregister("kovadb");
        db::CreateDatabase(folder.Path() / "sample.db", true);
        db::ConnectionRegistry::Register("kovadb", {"sqlite", (folder.Path() / "sample.db").string(), false});
        session.SetEngineFactory(nullptr);  // the reference engine
        params.employerId = "IR8AYA2025";
        params.actualRun = true;
    }

    // Validates and generates; the file's records by identity number, after
    // checking that each is ended by CR LF, is 1200 bytes long and passes
    // IRAS's file checks. The header is filed under "".
    std::map<std::string, std::string> Run(RIR8SeSubmission& job, const std::string& fileName) {
        EXPECT_NE(job.ValidateIR8SFile(), 0) << ::testing::PrintToString(employeeErrors);
        EXPECT_NE(job.ProcessIR8SeSubmission(), 0) << ::testing::PrintToString(log.View());
        const std::filesystem::path path = job.GetOutputFilePath();
        EXPECT_EQ(path.filename(), fileName);
        const AisCheckResult check = CheckAisFile(path, AisKind::IR8S);
        EXPECT_FALSE(check.HasErrors()) << ::testing::PrintToString(check.Describe());
        std::map<std::string, std::string> byTaxNo;
        for (const std::string& record : Records(ReadBytes(path))) {
            EXPECT_EQ(record.size(), 1200u);
            byTaxNo[record[0] == '0' ? "" : TrimSpace(Span(record, 3, 14))] = record;
        }
        return byTaxNo;
    }
};

TEST_F(IR8SSample, OriginalThenAnAmendmentOfTwoEmployees) {
    auto records = Run(*MakeJob(true, 2024), "2024eIR8S_Submission(O).txt");
    ASSERT_EQ(records.size(), 11u) << "a header and the ten IR8S employees";
    // Lim Wei Jie: 7,000.04 a month, employer CPF 17% and employee CPF 20%
    // of the 6,800 ceiling; 12 x 7,000.04 = 84,000.48 in the total row.
    const std::string& lim = records["S8012345J"];
    EXPECT_EQ(Span(lim, 95, 121), "00070000D" "00011560{" "00013600{");
    EXPECT_EQ(Span(lim, 743, 749), "8400{  ");
    // Chen Xiaoling became a resident in June 2022, with full-rate approval.
    EXPECT_EQ(Span(records["S8856781A"], 803, 804), "YY");
    ASSERT_TRUE(Has(debug, "Submission is successful."));

    // After the submission: Lim's March wages rise by 100, Tan Boon Huat's
    // voluntary employer contribution falls from 1,000 to 900.
    Sql("UPDATE IR8SA SET OrdWages = OrdWages + 100 WHERE PersonalSysId = 1001 AND YEYear = 2024"
        " AND IR8SOrder IN (3, 13);"
        "UPDATE IR8S SET ERVolCPF = 900 WHERE PersonalSysId = 1006 AND YEYear = 2024;");
    auto amended = Run(*MakeJob(false, 2024), "2024eIR8S_Submission(A).txt");
    ASSERT_EQ(amended.size(), 3u);
    EXPECT_EQ(Span(amended[""], 220, 220), "A");
    const std::string& limAmended = amended["S8012345J"];
    EXPECT_EQ(Span(limAmended, 95, 148) + Span(limAmended, 203, 211), std::string(54, '0') + "00001000{");
    EXPECT_EQ(Span(limAmended, 743, 756), "10{    0      ");
    EXPECT_EQ(Span(amended["S6912345G"], 805, 811), "10}    ");
}

// The direct submission: a check of the file by the engine, then the actual
// submission, which leaves the IR8S summary in the run folder.
TEST_F(IR8SSample, DirectSubmissionChecksThenSubmitsAndKeepsTheSummary) {
    params.directSubmission = true;
    params.submitUserIdType = "PERSONAL";
    params.submitUserId = "S1234567D";
    params.actualRun = false;
    auto check = MakeJob(true, 2024);
    EXPECT_NE(check->ValidateIR8SFile(), 0);
    EXPECT_NE(check->ProcessIR8SeSubmission(), 0);
    EXPECT_FALSE(check->GetHasErrors());
    EXPECT_FALSE(std::filesystem::exists(folder.Path() / "run" / "IR8SSummaryFile.txt"));

    params.actualRun = true;
    auto submit = MakeJob(true, 2024);
    EXPECT_NE(submit->ValidateIR8SFile(), 0);
    EXPECT_NE(submit->ProcessIR8SeSubmission(), 0);
    EXPECT_FALSE(submit->GetHasErrors());
    const std::string summary = ReadBytes(folder.Path() / "run" / "IR8SSummaryFile.txt");
    EXPECT_NE(summary.find("No of Records:     10\n"), std::string::npos) << summary;
}

}  // namespace
}  // namespace iras::testing
