// The job contract as a return uses it: the logs of a run, where the file
// goes (save prompt, cancel, the "All" run's copy, an unwritable folder), and
// the calls to the submission engine in order.
#include <fstream>

#include "tests/ir8a/IR8AFixture.h"

namespace iras::testing {
namespace {

struct Prompt : SaveFilePrompt {
    std::optional<std::string> answer;
    std::vector<std::string> proposed;
    std::optional<std::string> AskSavePath(const std::string& name) override {
        proposed.push_back(name);
        return answer;
    }
};

class IR8AJob : public IR8ATest {
protected:
    void SetUp() override {
        IR8ATest::SetUp();
        Sql("INSERT INTO YEEmployee (YEEmployerId, YEYear, PersonalSysId, CurrentYEGlobalId, SupYEGlobalId,"
            " PayeeIDType, TaxNo, EEName1, IRASNationalityCode, Gender, PaymentFrom, PaymentTo) VALUES"
            " ('ACME', 2023, 201, 1, NULL, 'NRIC', 'S1111111A', 'IVAN', '301', 'M', '2023-01-01', '2023-12-31'),"
            " ('ACME', 2024, 201, NULL, 2, 'NRIC', 'S1111111A', 'IVAN', '301', 'M', '2023-01-01', '2023-12-31');"
            "INSERT INTO IR8A (PersonalSysId, YEYear, IR8AType, GrossTotal) VALUES (201, 2023, 'CurIR8A', 1000),"
            " (201, 2024, 'SupIR8A', 900);");
    }
    // The engine calls of the generation pass alone.
    std::vector<std::string> ProcessCalls(RIR8AeSubmission& job) {
        EXPECT_NE(job.ValidateIR8AFile(), 0);
        script->calls.clear();
        job.ProcessIR8AeSubmission();
        return script->calls;
    }
};

TEST_F(IR8AJob, DirectSubmissionCallsTheEngineInOrderWithTheCurrentFormType) {
    params.directSubmission = params.actualRun = true;
    params.submitUserIdType = "CORPORATE";
    params.submitUserId = "T08LL1234A";
    auto job = MakeJob("SupIR8A");
    ASSERT_NE(job->ValidateIR8AFile(), 0);
    ASSERT_NE(job->ProcessIR8AeSubmission(), 0);
    EXPECT_EQ(script->calls,
              (std::vector<std::string>{
                  "SetYEYear(2024)", "SetYEEmployerId(ACME)", "SetYESubmissionType(SupIR8A)",
                  "SetYEIgnoreChanges(true)", "SetIsDirectSubmit(true)", "SetSubmitUserIDType(CORPORATE)",
                  "SetSubmitUserID(T08LL1234A)", "SetSubmitReportPath(" + (root / "run").string() + ")",
                  "GenerateViewTables()", "ExecuteDirectSubmit(SUP_Submission(O).txt, CurIR8A, 0)",
                  "DirectSubmitAppendLog(IRASDirectSubmitDebug.log)", "DirectSubmitAppendLog(IRASDirectSubmit.log)",
                  "SubmitRecords(true, false)"}));
    EXPECT_TRUE(std::filesystem::exists(root / "run" / "SUP_Submission(O).txt"));
    EXPECT_FALSE(std::filesystem::exists(root / "run" / "IRASSummaryFile.txt"));  // current IR8A only
    EXPECT_TRUE(Has(log, "engine record for IRASDirectSubmit.log"));
    EXPECT_TRUE(Has(debug, "engine record for IRASDirectSubmitDebug.log"));
    // The engine's submission is told in the debug log only.
    EXPECT_EQ(StringList(debug.View().end() - 9, debug.View().end() - 3),
              (StringList{"           PROCESSING SUBMISSION                ", std::string(48, ' '),
                          std::string(48, '*'), "", "Submission is successful.", ""}));
    EXPECT_FALSE(Has(log, "           PROCESSING SUBMISSION                ") || Has(log, "Submission is successful."));
}

TEST_F(IR8AJob, ActualDirectSubmissionOfTheCurrentOriginalLeavesItsSummaryInTheRunFolder) {
    params.directSubmission = params.actualRun = true;
    auto job = MakeJob("CurIR8A");
    ASSERT_NE(job->ValidateIR8AFile(), 0);
    ASSERT_NE(job->ProcessIR8AeSubmission(), 0);
    std::ifstream summary(root / "run" / "IRASSummaryFile.txt");
    ASSERT_TRUE(summary.good());
    std::string first, second, third;
    std::getline(summary, first);
    std::getline(summary, second);
    std::getline(summary, third);
    EXPECT_EQ(first + "|" + second + "|" + third, std::string(48, '*') + "||SUMMARY OF FILE - Current IR8A    ");
}

TEST_F(IR8AJob, TrialDirectSubmissionOnlyChecksAndReportsWarningsBeforeErrors) {
    params.directSubmission = true;
    script->warnings = script->errors = true;
    auto job = MakeJob();
    EXPECT_EQ(ProcessCalls(*job), (std::vector<std::string>{"ExecuteDirectSubmit(CUR_Submission(O).txt, CurIR8A, 1)",
                                                            "DirectSubmitAppendLog(IRASDirectSubmitDebug.log)",
                                                            "DirectSubmitAppendLog(IRASDirectSubmit.log)"}));
    EXPECT_EQ(LogFrom("Record processed with warning(s).", 3),
              (StringList{"Record processed with warning(s).", "Record processed with error(s).", ""}));
    EXPECT_TRUE(job->GetHasErrors() && job->GetHasWarnings());
    EXPECT_EQ(job->FileIdentifier(), "TEST2023eIR8A");
    EXPECT_FALSE(std::filesystem::exists(root / "run" / "IRASSummaryFile.txt"));
}

TEST_F(IR8AJob, SavePromptGetsTheFileNameAndAnActualRunKeepsACopyUnlessCancelled) {
    params.actualRun = true;
    Prompt prompt;
    prompt.answer = (root / "mine.txt").string();
    auto job = MakeJob();
    job->SetSaveDialog(&prompt);
    EXPECT_EQ(ProcessCalls(*job), std::vector<std::string>{"SubmitRecords(true, false)"});
    EXPECT_EQ(prompt.proposed, std::vector<std::string>{"CUR_Submission(O).txt"});
    EXPECT_EQ(job->FileIdentifier(), "2023eIR8A");
    EXPECT_EQ(ReadBytes(root / "mine.txt"), ReadBytes(root / "run" / "CUR_Submission(O).txt"));
    EXPECT_TRUE(Has(log, "File has been successfully generated to " + (root / "mine.txt").string() + "."));
    // Counters of the run, padded so that the colons line up.
    EXPECT_EQ(LogFrom("Total No. of Errors in IR8A Header             : 0", 4),
              (StringList{"Total No. of Errors in IR8A Header             : 0",
                          "Total No. of Records processed                 : 1",
                          "Total No. of Records successfully processed    : 1",
                          "Total No. of Records not successfully processed: 0"}));
    EXPECT_EQ(log.View().end()[-2], "End Date and Time: 01/03/2024 09:05:07");

    std::filesystem::remove(root / "run" / "CUR_Submission(O).txt");
    prompt.answer.reset();  // the user cancels: no file anywhere, nothing recorded
    auto cancelled = MakeJob();
    cancelled->SetSaveDialog(&prompt);
    EXPECT_TRUE(ProcessCalls(*cancelled).empty());
    EXPECT_TRUE(Has(log, "IR8A File is cancelled."));
    EXPECT_TRUE(std::filesystem::is_empty(root / "run"));
}

TEST_F(IR8AJob, AllRunCopiesIntoTheUsersFolderAndRecordsAsAnAllRun) {
    params.actualRun = true;
    copyFolder = (root / "user").string();
    std::filesystem::create_directories(copyFolder);
    auto job = MakeJob();
    EXPECT_EQ(ProcessCalls(*job), std::vector<std::string>{"SubmitRecords(true, true)"});
    const auto copy = root / "user" / "CUR_Submission(O).txt";
    EXPECT_EQ(ReadBytes(copy), ReadBytes(root / "run" / "CUR_Submission(O).txt"));
    EXPECT_TRUE(Has(log, "File has been successfully generated to " + copy.string() + "."));
}

TEST_F(IR8AJob, UnwritableFolderIsNamedAndLeavesNoFileBehind) {
    std::ofstream(root / "plain-file") << "x";  // a path through a file cannot be written, even by root
    runFolder = (root / "plain-file" / "run").string();
    auto job = MakeJob();
    ASSERT_NE(job->ValidateIR8AFile(), 0);
    EXPECT_EQ(job->ProcessIR8AeSubmission(), 0);
    const std::string prefix = "The file " + runFolder + "/CUR_Submission(O).txt could not be written: ";
    EXPECT_TRUE(std::any_of(log.View().begin(), log.View().end(),
                            [&](const std::string& l) { return l.rfind(prefix, 0) == 0; }));
    // The file's name taken by a folder: the rename fails, and the temporary
    // file must not stay behind.
    runFolder.clear();
    std::filesystem::create_directories(root / "run" / "CUR_Submission(O).txt");
    auto blocked = MakeJob();
    ASSERT_NE(blocked->ValidateIR8AFile(), 0);
    EXPECT_EQ(blocked->ProcessIR8AeSubmission(), 0);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(root / "run"), {}), 1);
}

TEST_F(IR8AJob, NoEmployeeToReportMakesNoFileNotEvenATrailer) {
    Sql("DELETE FROM IR8A;");
    auto job = MakeJob();
    EXPECT_NE(job->ValidateIR8AFile(), 0);
    EXPECT_EQ(job->ProcessIR8AeSubmission(), 0);
    EXPECT_TRUE(Has(log, "No Records to be processed."));
    EXPECT_FALSE(Has(log, "            PROCESSING IR8A TRAILER             "));
    EXPECT_TRUE(std::filesystem::is_empty(root / "run"));
}

TEST_F(IR8AJob, ValidationLogOpensWithItsBannersAndFailuresBeforeTheQueryStopIt) {
    ASSERT_NE(MakeJob()->ValidateIR8AFile(), 0);
    const std::string stars(48, '*'), blanks(48, ' ');
    EXPECT_EQ(StringList(log.View().begin(), log.View().begin() + 15),
              (StringList{"", stars, blanks, "     VALIDATING CURRENT IR8A FILE               ", blanks, stars, "",
                          "Start Date and Time: 01/03/2024 09:05:07", "", stars, blanks,
                          "           PROCESSING IR8A INFORMATION          ", blanks, stars, ""}));

    script->generate = 0;
    EXPECT_EQ(MakeJob()->ValidateIR8AFile(), 0);
    EXPECT_TRUE(Has(debug, "RIR8AeSubmission::RefreshQuery(): Error in generating view tables."));
    EXPECT_FALSE(Has(log, "RIR8AeSubmission::RefreshQuery(): Error in generating view tables."));

    script->generate = 1;
    Sql("DROP TABLE YEGlobal;");  // a database failure is a message, not an exception
    EXPECT_EQ(MakeJob()->ValidateIR8AFile(), 0);
    EXPECT_TRUE(std::any_of(log.View().begin(), log.View().end(), [](const std::string& l) {
        return l.rfind("The validation could not be completed: ", 0) == 0 && l.find("YEGlobal") != std::string::npos;
    }));
}

}  // namespace
}  // namespace iras::testing
