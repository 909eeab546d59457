// The runs of the session form driven with scripted answers and fake jobs:
// "&Generate", "Trial", the "All" run, the direct-submission dialogue, reset
// and the saved logs. Texts and folder names are the ones users and the
// engine's views rely on, written out here by hand.
#include <gtest/gtest.h>

#include "tests/run/RunFakes.h"

namespace iras::testing {
namespace {

const std::string kStars(48, '*');
const std::string kBlanks(48, ' ');

DateTime FixedClock() { return DateTime{Date{2025, 2, 28}, 14, 5, 9}; }

class RunControllerTest : public PayrollDatabaseTest {
protected:
    void SetUp() override {
        PayrollDatabaseTest::SetUp();
        Grant("ADMIN", {"YEIRASDirect", "YEDirectCurIR8ARpt", "YEDirectSupIR8ARpt", "YEDirectIR8SRpt",
                        "YEDirectA8ARpt", "YEDirectA8BRpt"});
        SetClockForTesting(&FixedClock);
        reportDir_ = folder_ / "report";
        runFolder_ = reportDir_ / "2024YearEnd" / "IRAS" / "20250228140509";
    }

    std::unique_ptr<RunController> Make(RunMode mode, FileType type, int sessionYear = 2024) {
        session_ = std::make_unique<BQueryViewTable>(SessionSettings{"ADMIN", "127.0.0.1", sessionYear});
        RunServices services;
        services.session = session_.get();
        services.dialogs = &dialogs_;
        services.view = &view_;
        services.jobs = &jobs_;
        services.progress = [this]() -> std::unique_ptr<ProgressWindow> {
            return std::make_unique<RecordingProgress>(progress_);
        };
        const fs::path reportDir = reportDir_;
        services.reportDirectory = [reportDir] { return reportDir; };
        auto controller = std::make_unique<RunController>(mode, services);
        controller->Choices().fileType = type;
        controller->Choices().employerId = "IR8AYA2025";
        controller->Choices().basisYear = type == FileType::SupplementaryIR8A ? "2023" : "2024";
        controller->Choices().fileDirectory = (folder_ / "out").string();
        controller->Choices().submitUserIdType = "SINGPASS";
        controller->Choices().submitUserId = "S1234567D";
        return controller;
    }

    std::vector<std::string> Texts() const {
        std::vector<std::string> texts;
        for (const auto& message : dialogs_.shown) texts.push_back(message.text);
        return texts;
    }

    fs::path reportDir_;
    fs::path runFolder_;
    std::unique_ptr<BQueryViewTable> session_;
    ScriptedDialogs dialogs_;
    RecordingView view_;
    FakeJobFactory jobs_;
    std::vector<std::string> progress_;
};

using Calls = std::vector<std::string>;

std::string Recorded(const std::string& column) {
    db::Query query("kovadb");
    query.SetSQL("SELECT " + column + " FROM subregistry WHERE SubRegistryId = 'TaxEmployerBasisYear'");
    query.Open();
    return query.FieldByName(column).AsString();
}

TEST_F(RunControllerTest, GenerateOriginalCurrentIR8AFillsParametersRecordsChoiceAndWritesSummary) {
    jobs_.scripts[FileType::CurrentIR8A] = {1, 1, false, true, "IR8A summary", ""};
    auto run = Make(RunMode::Generation, FileType::CurrentIR8A);
    run->LogMemo().Append("line of an earlier run");

    EXPECT_EQ(run->PreviewClick(), RunOutcome::Done);

    EXPECT_EQ(jobs_.journal.calls, (Calls{"CurIR8A:Validate", "CurIR8A:Process", "CurIR8A:Summary"}));
    const JobSetup& setup = jobs_.journal.setups.at(0);
    EXPECT_EQ(setup.params.sortOrder, 2);
    EXPECT_EQ(setup.params.employerId, "IR8AYA2025");
    EXPECT_EQ(setup.params.year, 2024);
    EXPECT_TRUE(setup.params.original && setup.params.check && setup.params.ignoreChanges);
    EXPECT_TRUE(setup.params.actualRun);
    EXPECT_FALSE(setup.params.directSubmission);
    EXPECT_EQ(setup.runFolder, runFolder_.string());
    EXPECT_EQ(setup.copyFolder, "");
    EXPECT_EQ(setup.basisYear, 2024);
    EXPECT_TRUE(fs::is_directory(runFolder_));

    EXPECT_EQ(Recorded("RegProperty1"), "IR8AYA2025");
    EXPECT_EQ(Recorded("RegProperty2"), "2024");

    EXPECT_EQ(run->LogMemo().Lines(), (StringList{"CurIR8A validated"}));
    EXPECT_EQ(run->SummaryFilePath(), (reportDir_ / "IRASSummaryFile.txt").string());
    EXPECT_EQ(ReadFile(reportDir_ / "IRASSummaryFile.txt"), "IR8A summary\n");
    EXPECT_EQ(progress_, (Calls{"Caption Report generation in process. Please wait...", "Label Processing Data...",
                                "Position 0", "Step size 50", "Show", "Repaint", "Step", "Position 100",
                                "Destroy"}));
    EXPECT_TRUE(run->HasWarnings());
    EXPECT_EQ(view_.calls.front(), "ShowLogPage");
}

TEST_F(RunControllerTest, SupplementaryIR8AGetsTheYearEndYearAndNeverASummaryFile) {
    jobs_.scripts[FileType::SupplementaryIR8A] = {1, 1, false, false, "SUP summary", ""};
    auto run = Make(RunMode::Generation, FileType::SupplementaryIR8A, 2024);

    EXPECT_EQ(run->PreviewClick(), RunOutcome::Done);

    EXPECT_EQ(jobs_.journal.setups.at(0).params.year, 2024);
    EXPECT_EQ(jobs_.journal.setups.at(0).basisYear, 2023);
    EXPECT_EQ(Recorded("RegProperty2"), "2023");
    EXPECT_EQ(jobs_.journal.calls, (Calls{"SupIR8A:Validate", "SupIR8A:Process"}));
    EXPECT_EQ(run->SummaryFilePath(), "");
    EXPECT_FALSE(fs::exists(reportDir_ / "IRASSummaryFile.txt"));
}

TEST_F(RunControllerTest, AmendmentAsksFirstAndStopsOnNoAndWritesNoSummaryOnYes) {
    jobs_.scripts[FileType::CurrentIR8A] = {1, 1, false, false, "summary", ""};
    auto run = Make(RunMode::Generation, FileType::CurrentIR8A);
    run->Choices().original = false;

    dialogs_.answers = {false};
    EXPECT_EQ(run->PreviewClick(), RunOutcome::Declined);
    EXPECT_EQ(dialogs_.questions,
              (Calls{"Have you viewed the verification report before sending the submission file to IRAS?"}));
    EXPECT_TRUE(jobs_.journal.calls.empty());
    EXPECT_FALSE(fs::exists(reportDir_ / "2024YearEnd"));

    dialogs_.answers = {true};
    EXPECT_EQ(run->PreviewClick(), RunOutcome::Done);
    EXPECT_FALSE(jobs_.journal.setups.at(0).params.original);
    EXPECT_FALSE(jobs_.journal.setups.at(0).params.ignoreChanges);
    EXPECT_EQ(jobs_.journal.calls, (Calls{"CurIR8A:Validate", "CurIR8A:Process"}));
    EXPECT_FALSE(fs::exists(reportDir_ / "IRASSummaryFile.txt"));
}

TEST_F(RunControllerTest, RefusedValidationRemovesTheEmptyRunFolderAndProcessesNothing) {
    jobs_.scripts[FileType::CurrentIR8A] = {0, 1, false, false, "", ""};
    auto run = Make(RunMode::Generation, FileType::CurrentIR8A);

    // A refused validation leaves the error flag alone, so the run itself reports true.
    EXPECT_TRUE(run->RunSubmission(false));
    EXPECT_EQ(jobs_.journal.calls, (Calls{"CurIR8A:Validate"}));
    EXPECT_FALSE(fs::exists(runFolder_));
    EXPECT_TRUE(fs::is_directory(runFolder_.parent_path()));
    EXPECT_TRUE(progress_.empty());
    EXPECT_EQ(run->EmployeeErrorList(), (StringList{"CurIR8A employee failed"}));

    // A folder that already holds a file of a run in the same second stays.
    fs::create_directories(runFolder_);
    std::ofstream(runFolder_ / "CUR_Submission(O).txt") << "earlier\n";
    EXPECT_EQ(run->PreviewClick(), RunOutcome::ValidationRefused);
    EXPECT_TRUE(fs::exists(runFolder_ / "CUR_Submission(O).txt"));
}

TEST_F(RunControllerTest, TrialMakesNoRunFolderNoSummaryAndFocusesTheLog) {
    jobs_.scripts[FileType::CurrentIR8A] = {1, 1, false, false, "summary", ""};
    auto run = Make(RunMode::Generation, FileType::CurrentIR8A);

    EXPECT_EQ(run->TrialClick(), RunOutcome::Done);

    EXPECT_FALSE(jobs_.journal.setups.at(0).params.actualRun);
    EXPECT_EQ(jobs_.journal.setups.at(0).runFolder, "");
    EXPECT_FALSE(fs::exists(reportDir_ / "2024YearEnd"));
    EXPECT_FALSE(fs::exists(reportDir_ / "IRASSummaryFile.txt"));
    EXPECT_EQ(view_.calls, (Calls{"ShowLogPage", "RestoreApplication", "FocusPreviewLog"}));
}

TEST_F(RunControllerTest, ProcessingThatMakesNoFileLeavesNoSummaryButStillCopiesTheFlags) {
    jobs_.scripts[FileType::CurrentIR8A] = {1, 0, false, true, "summary", ""};
    auto run = Make(RunMode::Generation, FileType::CurrentIR8A);

    EXPECT_EQ(run->PreviewClick(), RunOutcome::NothingProduced);
    EXPECT_FALSE(fs::exists(reportDir_ / "IRASSummaryFile.txt"));
    EXPECT_TRUE(run->HasWarnings());
}

TEST_F(RunControllerTest, RefusedRightShowsNoAccessAndRunsNothing) {
    Exec("DELETE FROM UserModuleRights WHERE ModuleId = 'YEDirectSupIR8ARpt'");
    jobs_.scripts[FileType::SupplementaryIR8A] = {};
    auto run = Make(RunMode::Generation, FileType::SupplementaryIR8A);

    EXPECT_EQ(run->PreviewClick(), RunOutcome::NoAccess);
    ASSERT_EQ(dialogs_.shown.size(), 1u);
    EXPECT_EQ(dialogs_.shown[0].kind, MessageKind::Warning);
    EXPECT_EQ(dialogs_.shown[0].text, "You have no access to this module");
    EXPECT_TRUE(jobs_.journal.calls.empty());
    EXPECT_EQ(Recorded("RegProperty1"), "");

    // "All" needs every return's right: the missing supplementary one refuses it too.
    run->Choices().fileType = FileType::All;
    EXPECT_EQ(run->PreviewClick(), RunOutcome::NoAccess);
}

TEST_F(RunControllerTest, AllValidatesEveryReturnBeforeRefusingAndProcessesNone) {
    for (FileType type : kReturnTypes) jobs_.scripts[type] = {1, 1, false, false, "", ""};
    jobs_.scripts[FileType::CurrentIR8A].validateResult = 0;
    auto run = Make(RunMode::Generation, FileType::All);

    run->PreviewClick();

    EXPECT_EQ(jobs_.journal.calls, (Calls{"CurIR8A:Validate", "SupIR8A:Validate", "IR8S:Validate",
                                          "A8A:Validate", "A8B:Validate"}));
    EXPECT_FALSE(fs::exists(runFolder_));
    const StringList log = run->LogMemo().Lines();
    const StringList tail(log.end() - 6, log.end());
    EXPECT_EQ(tail, (StringList{kStars, kBlanks,
                                "The validation of generated files was failed. Please preview log file and "
                                "adjust the tax records accordingly.",
                                kBlanks, kStars, ""}));
}

TEST_F(RunControllerTest, AllGathersEverySummaryInOneFileAndNamesTheFileDirectory) {
    jobs_.scripts[FileType::CurrentIR8A] = {1, 1, false, false, "cur", ""};
    jobs_.scripts[FileType::SupplementaryIR8A] = {1, 1, false, false, "sup", ""};
    jobs_.scripts[FileType::IR8S] = {1, 0, false, false, "ir8s", ""};  // no records
    jobs_.scripts[FileType::Appendix8B] = {1, 1, false, false, "a8b", ""};
    auto run = Make(RunMode::Generation, FileType::All);

    EXPECT_EQ(run->PreviewClick(), RunOutcome::Done);

    for (const JobSetup& setup : jobs_.journal.setups) {
        EXPECT_EQ(setup.copyFolder, (folder_ / "out").string());
        EXPECT_EQ(setup.params.year, 2024);
    }
    // "All" hands every return the shown basis year, the supplementary IR8A
    // included (a single supplementary run gets the year-end year minus one).
    EXPECT_EQ(jobs_.journal.setups.at(0).basisYear, 2024);
    EXPECT_EQ(jobs_.journal.setups.at(1).basisYear, 2024);
    EXPECT_EQ(ReadFile(reportDir_ / "IRASSummaryFile.txt"), "cur\nsup\na8b\n");
    const StringList log = run->LogMemo().Lines();
    EXPECT_EQ(log.front(), "The Appendix 8A return is not available in this version of the module. "
                           "It is left out of this run.");
    const StringList tail(log.end() - 6, log.end());
    EXPECT_EQ(tail, (StringList{kStars, kBlanks,
                                "All files have been SUCCESSFULLY generated to " + (folder_ / "out").string() +
                                    ". Please use AIS Salary File Validation and Submission Application to "
                                    "validate the files.",
                                kBlanks, kStars, ""}));
    EXPECT_TRUE(progress_.empty());
}

TEST_F(RunControllerTest, AllTrialWritesNoSummaryAndAllWithoutRecordsSaysSo) {
    jobs_.scripts[FileType::CurrentIR8A] = {1, 1, false, false, "cur", ""};
    auto run = Make(RunMode::Generation, FileType::All);
    EXPECT_EQ(run->TrialClick(), RunOutcome::Done);
    EXPECT_TRUE(jobs_.journal.calls == (Calls{"CurIR8A:Validate", "CurIR8A:Process"}));
    EXPECT_FALSE(fs::exists(reportDir_ / "IRASSummaryFile.txt"));

    jobs_.scripts[FileType::CurrentIR8A].processResult = 0;
    EXPECT_EQ(run->PreviewClick(), RunOutcome::NothingProduced);
    const StringList log = run->LogMemo().Lines();
    EXPECT_EQ(StringList(log.end() - 6, log.end()),
              (StringList{kStars, kBlanks, "No Records to be processed.", kBlanks, kStars, ""}));
}

TEST_F(RunControllerTest, DirectModeNeedsTheSubmitterIdentityFirst) {
    jobs_.scripts[FileType::CurrentIR8A] = {};
    auto run = Make(RunMode::DirectSubmission, FileType::CurrentIR8A);
    run->Choices().submitUserIdType = "";
    EXPECT_EQ(run->PreviewClick(), RunOutcome::MissingUserId);
    run->Choices().submitUserIdType = "SINGPASS";
    run->Choices().submitUserId = "";
    EXPECT_EQ(run->TrialClick(), RunOutcome::MissingUserId);

    EXPECT_EQ(Texts(), (Calls{"Missing User ID Type!", "Missing User ID!"}));
    EXPECT_EQ(view_.calls, (Calls{"FocusUserIdType", "FocusUserId"}));
    EXPECT_TRUE(jobs_.journal.calls.empty());
}

TEST_F(RunControllerTest, DirectSubmitValidatesAsksAndSubmitsInTwoPasses) {
    jobs_.scripts[FileType::Appendix8A] = {1, 1, false, false, "", "A8ASummaryFile.txt"};
    auto run = Make(RunMode::DirectSubmission, FileType::Appendix8A);
    dialogs_.answers = {true};

    EXPECT_EQ(run->PreviewClick(), RunOutcome::Done);

    ASSERT_EQ(jobs_.journal.setups.size(), 2u);
    EXPECT_FALSE(jobs_.journal.setups[0].params.actualRun);
    EXPECT_TRUE(jobs_.journal.setups[0].params.directSubmission);
    EXPECT_EQ(jobs_.journal.setups[0].params.submitUserIdType, "SINGPASS");
    EXPECT_EQ(jobs_.journal.setups[0].params.submitUserId, "S1234567D");
    EXPECT_EQ(jobs_.journal.setups[0].runFolder, runFolder_.string());  // made for a validation too
    EXPECT_TRUE(jobs_.journal.setups[1].params.actualRun);
    EXPECT_EQ(dialogs_.questions,
              (Calls{"The Appendix 8A for Year 2024 will be submitted to IRAS directly. Are you sure?"}));
    EXPECT_EQ(Texts(), (Calls{"Records have been submitted successfully."}));
    EXPECT_EQ(dialogs_.shown[0].kind, MessageKind::Information);
    // The actual pass cleared the log; the job's summary in the run folder is the one kept.
    EXPECT_EQ(run->LogMemo().Lines(), (StringList{"A8A validated"}));
    EXPECT_EQ(run->SummaryFilePath(), (runFolder_ / "A8ASummaryFile.txt").string());
    EXPECT_FALSE(fs::exists(reportDir_ / "A8ASummaryFile.txt"));
}

TEST_F(RunControllerTest, DirectSubmitAnsweredNoKeepsTheValidationLogAndCancels) {
    jobs_.scripts[FileType::CurrentIR8A] = {};
    auto run = Make(RunMode::DirectSubmission, FileType::CurrentIR8A);
    dialogs_.answers = {false};

    EXPECT_EQ(run->PreviewClick(), RunOutcome::Declined);

    EXPECT_EQ(run->LogMemo().Lines(),
              (StringList{"CurIR8A validated", "", kStars, "", "           PREPARING FOR ACTUAL DIRECT SUBMISSION",
                          "", kStars, "", "", "Submission has been cancelled!", ""}));
    EXPECT_EQ(jobs_.journal.setups.size(), 1u);
}

TEST_F(RunControllerTest, WarningsWaitForProceedWhichSubmitsWithoutAsking) {
    jobs_.scripts[FileType::CurrentIR8A] = {1, 1, false, true, "", ""};
    auto run = Make(RunMode::DirectSubmission, FileType::CurrentIR8A);

    EXPECT_EQ(run->PreviewClick(), RunOutcome::WarningsPending);
    EXPECT_TRUE(run->ProceedVisible());
    EXPECT_EQ(Texts(), (Calls{"Warning(s) have been detected. Please review them before you proceed."}));
    const StringList log = run->LogMemo().Lines();
    EXPECT_EQ(StringList(log.end() - 3, log.end()),
              (StringList{"", "Press <Proceed with Direct Submit>, to submit with warnings.", ""}));

    EXPECT_EQ(run->DirectSubmitProceedClick(), RunOutcome::Done);
    EXPECT_FALSE(run->ProceedVisible());
    EXPECT_TRUE(dialogs_.questions.empty());
    EXPECT_EQ(Texts().back(), "Records have been submitted with Warning(s).");
    EXPECT_TRUE(jobs_.journal.setups.back().params.actualRun);
    EXPECT_EQ(view_.calls[view_.calls.size() - 2], "RestoreApplication");
}

TEST_F(RunControllerTest, WarningLeftFromAnEarlierRunStillStopsTheSubmission) {
    jobs_.scripts[FileType::CurrentIR8A] = {1, 1, false, true, "", ""};
    jobs_.later[FileType::CurrentIR8A] = {0, 1, false, false, "", ""};
    auto run = Make(RunMode::DirectSubmission, FileType::CurrentIR8A);
    run->TrialClick();  // "&Validate" finds warnings
    EXPECT_EQ(Texts(), (Calls{"Warning(s) have been detected. Please review log for more details."}));

    // This validation refuses without an error flag, so the run goes on with
    // the flags as the last run left them: the old warning stops it.
    EXPECT_EQ(run->PreviewClick(), RunOutcome::WarningsPending);
    EXPECT_TRUE(dialogs_.questions.empty());
}

TEST_F(RunControllerTest, ResetAsksThenHandsTheYearEndYearEmployerAndTypeToTheEngine) {
    std::vector<std::string> engineCalls;
    int copyResult = 1;
    auto run = Make(RunMode::Generation, FileType::SupplementaryIR8A);
    session_->SetEngineFactory([&](BQueryViewTable*) -> std::unique_ptr<BYESubmissionEngine> {
        return std::make_unique<RecordingEngine>(engineCalls, copyResult);
    });

    dialogs_.answers = {false};
    EXPECT_EQ(run->ResetClick(), RunOutcome::Declined);
    EXPECT_TRUE(engineCalls.empty());

    dialogs_.answers = {true, true};
    EXPECT_EQ(run->ResetClick(), RunOutcome::Done);
    EXPECT_EQ(engineCalls, (Calls{"SetYEYear 2024", "SetYEEmployerId IR8AYA2025", "SetYESubmissionType SupIR8A",
                                  "CopyRecords 8 9"}));
    copyResult = 0;
    EXPECT_EQ(run->ResetClick(), RunOutcome::Failed);
    EXPECT_EQ(dialogs_.questions, (Calls{"Are You Sure?", "Are You Sure?", "Are You Sure?"}));
    EXPECT_EQ(Texts(), (Calls{"Submission is successfully resetted.", "Submission is not successfully resetted."}));
    EXPECT_EQ(dialogs_.shown[1].kind, MessageKind::Error);
}

TEST_F(RunControllerTest, LogsAreSavedUnderTheirNamesInTheReportDirectory) {
    auto run = Make(RunMode::Generation, FileType::CurrentIR8A);
    run->LogMemo().Append("run line");
    run->DebugMemo().Append("debug line");

    EXPECT_EQ(run->PreviewLogClick(LogFileKind::RunLog), reportDir_ / "IRASSubmissionLogFile.txt");
    run->PreviewLogClick(LogFileKind::DebugLog);
    run->PreviewLogClick(LogFileKind::EmployeeErrorLog);

    EXPECT_EQ(ReadFile(reportDir_ / "IRASSubmissionLogFile.txt"), "run line\n");
    EXPECT_EQ(ReadFile(reportDir_ / "IRASSubmissionDebugFile.txt"), "debug line\n");
    EXPECT_EQ(ReadFile(reportDir_ / "IRASSubmissionEmpErrLogFile.txt"), "");
    EXPECT_EQ(view_.calls, (Calls{"Open IRASSubmissionLogFile.txt", "Open IRASSubmissionDebugFile.txt",
                                  "Open IRASSubmissionEmpErrLogFile.txt"}));
}

TEST_F(RunControllerTest, FailuresOfDatabaseAndDiskAreShownNotThrown) {
    jobs_.scripts[FileType::CurrentIR8A] = {};
    auto run = Make(RunMode::Generation, FileType::CurrentIR8A);
    Exec("DELETE FROM subregistry");
    EXPECT_EQ(run->PreviewClick(), RunOutcome::DatabaseFailure);
    EXPECT_NE(Texts().back().find("subregistry"), std::string::npos);

    // The report directory is a file: no run folder can be made under it.
    fs::remove_all(reportDir_);
    std::ofstream(reportDir_) << "not a folder";
    EXPECT_EQ(run->PreviewClick(), RunOutcome::FileFailure);
    EXPECT_TRUE(jobs_.journal.calls.empty());
}

}  // namespace
}  // namespace iras::testing
