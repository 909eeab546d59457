// The runs of the session form driven with fake jobs and scripted answers:
// "&Generate", "Trial", the "All" run, the direct-submission dialogue, reset
// and the saved logs. Texts and folder names are the ones users and the
// engine's views rely on, written out here by hand.
#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <set>

#include "platform/common/Date.h"
#include "platform/database/Query.h"
#include "platform/database/Schema.h"
#include "platform/host/ReferenceEngine.h"
#include "tests/run/RunFakes.h"

namespace iras::testing {
namespace {

const std::string kStars(48, '*');
const std::string kBlanks(48, ' ');

// A banner of the "All" run as the user reads it at the end of the log.
Lines Banner(const std::string& text) { return {kStars, kBlanks, text, kBlanks, kStars, ""}; }
Lines Tail(const Lines& lines, std::size_t count) { return Lines(lines.end() - static_cast<long>(count), lines.end()); }

DateTime FixedClock() { return DateTime{Date{2025, 2, 28}, 14, 5, 9}; }

class RunControllerTest : public ::testing::Test {
protected:
    void SetUp() override {
        folder_ = UniqueFolder("iras-run");
        // The keyword codes hold the subregistry row that every run records its choice in.
        db::CreateDatabase(folder_ / "payroll.db", false);
        db::ConnectionRegistry::Register("kovadb", {"sqlite", (folder_ / "payroll.db").string(), false});
        SetClockForTesting(&FixedClock);
        report_ = folder_ / "report";
        out_ = folder_ / "out";
        runFolder_ = report_ / "2024YearEnd" / "IRAS" / "20250228140509";
    }
    void TearDown() override {
        db::ConnectionRegistry::Unregister("kovadb");
        SetClockForTesting(nullptr);
        fs::remove_all(folder_);
    }

    RunController& Make(RunMode mode, FileType type) {
        RunServices services{&session_, &dialogs_, &form_, &jobs_, {}, nullptr, nullptr, nullptr, {}, {}};
        services.progress = [this] { return std::make_unique<RecordingForm::Progress>(form_.events); };
        services.rights = [this](const std::string& user, const std::string& module) {
            asked_.push_back(user + " " + module);
            return refused_.count(module) == 0;
        };
        services.reportDirectory = [this] { return report_; };
        run_ = std::make_unique<RunController>(mode, services);
        run_->Choices() = {type, "IR8AYA2025", type == FileType::SupplementaryIR8A ? "2023" : "2024", true,
                           out_.string(), {}, "PERSONAL", "S1234567D"};
        return *run_;
    }

    static std::string Recorded() {
        db::Query query("kovadb");
        query.SetSQL("SELECT * FROM subregistry WHERE SubRegistryId = 'TaxEmployerBasisYear'");
        query.Open();
        return query.FieldByName("RegProperty1").AsString() + "/" + query.FieldByName("RegProperty2").AsString();
    }

    fs::path folder_, report_, out_, runFolder_;
    BQueryViewTable session_{SessionSettings{"ADMIN", "127.0.0.1", 2024}};
    ScriptedDialogs dialogs_;
    RecordingForm form_;
    FakeJobFactory jobs_;
    std::set<std::string> refused_;
    Lines asked_;
    std::unique_ptr<RunController> run_;
};

TEST_F(RunControllerTest, GenerateOriginalCurrentIR8AFillsParametersRecordsChoiceAndWritesSummary) {
    jobs_.scripts[FileType::CurrentIR8A] = {1, 1, false, true, "IR8A summary", ""};
    RunController& run = Make(RunMode::Generation, FileType::CurrentIR8A);
    run.LogMemo().Append("line of an earlier run");

    EXPECT_EQ(run.PreviewClick(), RunOutcome::Done);

    EXPECT_EQ(jobs_.calls, (Lines{"CurIR8A:Validate", "CurIR8A:Process", "CurIR8A:Summary"}));
    const IRASSubmissionParameters& p = jobs_.setups.at(0).params;
    EXPECT_EQ(std::to_string(p.sortOrder) + " " + p.employerId + " " + std::to_string(p.year), "2 IR8AYA2025 2024");
    EXPECT_TRUE(p.original && p.check && p.ignoreChanges && p.actualRun && !p.directSubmission);
    EXPECT_EQ(jobs_.setups[0].runFolder + "|" + jobs_.setups[0].copyFolder, runFolder_.string() + "|");
    EXPECT_EQ(Recorded(), "IR8AYA2025/2024");
    EXPECT_EQ(run.LogMemo().Lines(), (Lines{"CurIR8A validated"}));
    EXPECT_EQ(run.SummaryFilePath(), (report_ / "IRASSummaryFile.txt").string());
    EXPECT_EQ(ReadFile(report_ / "IRASSummaryFile.txt"), "IR8A summary\n");
    EXPECT_EQ(form_.events, (Lines{"ShowLogPage", "Caption Report generation in process. Please wait...",
                                   "Label Processing Data...", "Position 0", "Step size 50", "Show", "Repaint",
                                   "Step", "Position 100", "Destroy"}));
    EXPECT_TRUE(run.HasWarnings());
}

TEST_F(RunControllerTest, SupplementaryIR8AAndAmendmentsNeverWriteASummaryFile) {
    jobs_.scripts[FileType::SupplementaryIR8A] = {1, 1, false, false, "SUP summary", ""};
    jobs_.scripts[FileType::CurrentIR8A] = {1, 1, false, false, "CUR summary", ""};
    RunController& run = Make(RunMode::Generation, FileType::SupplementaryIR8A);
    EXPECT_EQ(run.PreviewClick(), RunOutcome::Done);
    // The list shows the year before the year-end year; the job gets the year-end year.
    EXPECT_EQ(jobs_.setups.at(0).params.year, 2024);
    EXPECT_EQ(jobs_.setups.at(0).basisYear, 2023);
    EXPECT_EQ(Recorded(), "IR8AYA2025/2023");

    // An amendment asks first: No stops before any folder is made.
    fs::remove_all(report_ / "2024YearEnd");
    run.Choices().fileType = FileType::CurrentIR8A;
    run.Choices().basisYear = "2024";
    run.Choices().original = false;
    dialogs_.answers = {false, true};
    EXPECT_EQ(run.PreviewClick(), RunOutcome::Declined);
    EXPECT_FALSE(fs::exists(report_ / "2024YearEnd"));
    EXPECT_EQ(run.PreviewClick(), RunOutcome::Done);
    EXPECT_EQ(dialogs_.questions,
              Lines(2, "Have you viewed the verification report before sending the submission file to IRAS?"));
    EXPECT_FALSE(jobs_.setups.at(1).params.original || jobs_.setups.at(1).params.ignoreChanges);
    EXPECT_EQ(Tail(jobs_.calls, 2), (Lines{"CurIR8A:Validate", "CurIR8A:Process"}));
    EXPECT_EQ(run.SummaryFilePath(), "");
    EXPECT_FALSE(fs::exists(report_ / "IRASSummaryFile.txt"));
}

// A host that offers its verification report gets it asked before the
// Amendment's own question: Yes makes the report and opens it, No goes
// straight on; the question itself is unchanged and still decides.
TEST_F(RunControllerTest, OfferedVerificationReportIsMadeAndOpenedBeforeTheAmendmentQuestion) {
    jobs_.scripts[FileType::CurrentIR8A] = {1, 1, false, false, "", ""};
    session_.SetVerificationReportOffered(true);
    RunController& run = Make(RunMode::Generation, FileType::CurrentIR8A);
    run.Choices().original = false;
    const std::string viewed = "Have you viewed the verification report before sending the submission file to IRAS?";
    struct Case {
        std::deque<bool> answers;
        RunOutcome outcome;
        bool opened;
    };
    for (const Case& c : {Case{{true, true}, RunOutcome::Done, true}, Case{{false, false}, RunOutcome::Declined, false}}) {
        dialogs_.answers = c.answers;
        dialogs_.questions.clear();
        form_.events.clear();
        EXPECT_EQ(run.PreviewClick(), c.outcome);
        EXPECT_EQ(dialogs_.questions, (Lines{RunController::kVerificationReportOffer, viewed}));
        const bool opened = std::find(form_.events.begin(), form_.events.end(), "Open IRASVerificationReport.html") !=
                            form_.events.end();
        EXPECT_EQ(opened, c.opened);
    }
    EXPECT_TRUE(fs::exists(fs::path(run.VerificationReportPath())));
    EXPECT_TRUE(fs::exists(fs::path(run.VerificationReportPath()).replace_extension(".csv")));
}

TEST_F(RunControllerTest, RefusedValidationRemovesOnlyAnEmptyRunFolderAndLeavesTheErrorFlagCleared) {
    jobs_.scripts[FileType::CurrentIR8A] = {1, 1, true, true, "", ""};
    RunController& run = Make(RunMode::Generation, FileType::CurrentIR8A);
    EXPECT_EQ(run.PreviewClick(), RunOutcome::ErrorsFound);
    fs::remove_all(runFolder_);
    form_.events.clear();

    // The next run clears the error flag first and keeps the warning flag; a
    // refused validation copies neither, so the run itself answers true.
    jobs_.scripts[FileType::CurrentIR8A] = {0, 1, false, false, "", ""};
    EXPECT_TRUE(run.RunSubmission(false));
    EXPECT_TRUE(!run.HasErrors() && run.HasWarnings());
    EXPECT_EQ(jobs_.calls.back(), "CurIR8A:Validate");
    EXPECT_FALSE(fs::exists(runFolder_));
    EXPECT_TRUE(fs::is_directory(runFolder_.parent_path()));
    EXPECT_EQ(form_.events, (Lines{"ShowLogPage"}));  // no progress window
    EXPECT_EQ(run.EmployeeErrorList(), (StringList{"CurIR8A employee failed"}));

    // A run in the same second reuses the folder; holding a file of the
    // earlier run, it stays.
    fs::create_directories(runFolder_);
    std::ofstream(runFolder_ / "CUR_Submission(O).txt") << "earlier\n";
    EXPECT_EQ(run.PreviewClick(), RunOutcome::ValidationRefused);
    EXPECT_EQ(jobs_.setups.back().runFolder, runFolder_.string());
    EXPECT_TRUE(fs::exists(runFolder_ / "CUR_Submission(O).txt"));
}

TEST_F(RunControllerTest, TrialAndARunWithoutRecordsWriteNoSummary) {
    jobs_.scripts[FileType::CurrentIR8A] = {1, 1, false, false, "summary", ""};
    RunController& run = Make(RunMode::Generation, FileType::CurrentIR8A);

    // A trial writes no run folder of its own and focuses the log afterwards.
    EXPECT_EQ(run.TrialClick(), RunOutcome::Done);
    EXPECT_FALSE(jobs_.setups.at(0).params.actualRun);
    EXPECT_EQ(jobs_.setups.at(0).runFolder, "");
    EXPECT_FALSE(fs::exists(report_ / "2024YearEnd"));
    EXPECT_EQ(Tail(form_.events, 2), (Lines{"RestoreApplication", "FocusPreviewLog"}));

    // Processing that makes no file: no summary, but the flags are still copied.
    jobs_.scripts[FileType::CurrentIR8A] = {1, 0, false, true, "summary", ""};
    EXPECT_EQ(run.PreviewClick(), RunOutcome::NothingProduced);
    EXPECT_TRUE(run.HasWarnings());
    EXPECT_FALSE(fs::exists(report_ / "IRASSummaryFile.txt"));
}

TEST_F(RunControllerTest, RefusedRightOrMissingReturnStopsBeforeAnythingIsRecorded) {
    refused_ = {"YEDirectSupIR8ARpt"};
    jobs_.scripts[FileType::SupplementaryIR8A] = {};
    RunController& run = Make(RunMode::Generation, FileType::SupplementaryIR8A);
    EXPECT_EQ(run.PreviewClick(), RunOutcome::NoAccess);

    run.Choices().fileType = FileType::Appendix8A;  // no job in this version
    EXPECT_EQ(run.PreviewClick(), RunOutcome::Unavailable);
    EXPECT_EQ(dialogs_.shown, (Lines{"Warning: You have no access to this module",
                                     "Error: The Appendix 8A return is not available in this version of the module."}));
    EXPECT_TRUE(jobs_.calls.empty());
    EXPECT_EQ(Recorded(), "/");

    // "All" asks the five rights in file-type order and stops at the first refusal.
    asked_.clear();
    run.Choices().fileType = FileType::All;
    EXPECT_EQ(run.TrialClick(), RunOutcome::NoAccess);
    EXPECT_EQ(asked_, (Lines{"ADMIN YEDirectCurIR8ARpt", "ADMIN YEDirectSupIR8ARpt"}));
}

TEST_F(RunControllerTest, AllValidatesEveryReturnBeforeRefusingAndSaysWhenNoneHadRecords) {
    for (FileType type : kReturnTypes) jobs_.scripts[type] = {1, 0, false, false, "", ""};
    jobs_.scripts[FileType::CurrentIR8A].validateResult = 0;
    RunController& run = Make(RunMode::Generation, FileType::All);

    EXPECT_EQ(run.PreviewClick(), RunOutcome::ValidationRefused);
    EXPECT_EQ(jobs_.calls, (Lines{"CurIR8A:Validate", "SupIR8A:Validate", "IR8S:Validate", "A8A:Validate",
                                  "A8B:Validate"}));
    EXPECT_FALSE(fs::exists(runFolder_));
    EXPECT_EQ(Tail(run.LogMemo().Lines(), 6),
              Banner("The validation of generated files was failed. Please preview log file and adjust the tax "
                     "records accordingly."));

    jobs_.scripts[FileType::CurrentIR8A].validateResult = 1;
    EXPECT_EQ(run.PreviewClick(), RunOutcome::NothingProduced);
    EXPECT_EQ(Tail(run.LogMemo().Lines(), 6), Banner("No Records to be processed."));
    EXPECT_FALSE(fs::exists(report_ / "IRASSummaryFile.txt"));
}

TEST_F(RunControllerTest, AllGathersEverySummaryInOneFileAndNamesTheFileDirectory) {
    jobs_.scripts[FileType::CurrentIR8A] = {1, 1, false, false, "cur", ""};
    jobs_.scripts[FileType::SupplementaryIR8A] = {1, 1, true, true, "sup", ""};
    jobs_.scripts[FileType::IR8S] = {1, 0, false, false, "ir8s", ""};  // no records
    jobs_.scripts[FileType::Appendix8B] = {1, 1, false, false, "a8b", ""};
    RunController& run = Make(RunMode::Generation, FileType::All);

    // The jobs' error and warning flags are not read by the "All" run.
    EXPECT_EQ(run.PreviewClick(), RunOutcome::Done);
    EXPECT_FALSE(run.HasErrors() || run.HasWarnings());

    for (const JobSetup& setup : jobs_.setups) {
        EXPECT_EQ(setup.copyFolder + " " + setup.runFolder, out_.string() + " " + runFolder_.string());
        EXPECT_EQ(setup.params.year, 2024);
        EXPECT_EQ(setup.basisYear, 2024);  // the supplementary IR8A too
    }
    EXPECT_EQ(ReadFile(report_ / "IRASSummaryFile.txt"), "cur\nsup\na8b\n");
    EXPECT_EQ(run.SummaryFilePath(), (report_ / "IRASSummaryFile.txt").string());
    EXPECT_EQ(run.LogMemo().Lines().front(),
              "The Appendix 8A return is not available in this version of the module. It is left out of this run.");
    EXPECT_EQ(Tail(run.LogMemo().Lines(), 6),
              Banner("All files have been SUCCESSFULLY generated to " + out_.string() +
                     ". Please use AIS Salary File Validation and Submission Application to validate the files."));
    EXPECT_EQ(form_.events, (Lines{"ShowLogPage"}));  // no progress window

    // A trial of all returns gathers no summary.
    fs::remove(report_ / "IRASSummaryFile.txt");
    jobs_.calls.clear();
    EXPECT_EQ(run.TrialClick(), RunOutcome::Done);
    EXPECT_EQ(std::count(jobs_.calls.begin(), jobs_.calls.end(), "CurIR8A:Summary"), 0);
    EXPECT_FALSE(fs::exists(report_ / "IRASSummaryFile.txt"));
}

TEST_F(RunControllerTest, DirectModeNeedsTheSubmitterIdentityFirst) {
    jobs_.scripts[FileType::CurrentIR8A] = {};
    RunController& run = Make(RunMode::DirectSubmission, FileType::CurrentIR8A);
    run.Choices().submitUserIdType = "";
    EXPECT_EQ(run.PreviewClick(), RunOutcome::MissingUserId);
    run.Choices().submitUserIdType = "PERSONAL";
    run.Choices().submitUserId = "";
    EXPECT_EQ(run.TrialClick(), RunOutcome::MissingUserId);

    EXPECT_EQ(dialogs_.shown, (Lines{"Warning: Missing User ID Type!", "Warning: Missing User ID!"}));
    EXPECT_EQ(form_.events, (Lines{"FocusUserIdType", "FocusUserId"}));
    EXPECT_TRUE(jobs_.calls.empty());
}

TEST_F(RunControllerTest, DirectSubmitValidatesAsksAndSubmitsInTwoPassesOrCancelsOnNo) {
    jobs_.scripts[FileType::Appendix8A] = {1, 1, false, false, "", "A8ASummaryFile.txt"};
    RunController& run = Make(RunMode::DirectSubmission, FileType::Appendix8A);
    dialogs_.answers = {true, false};

    EXPECT_EQ(run.PreviewClick(), RunOutcome::Done);

    ASSERT_EQ(jobs_.setups.size(), 2u);
    const IRASSubmissionParameters& check = jobs_.setups[0].params;
    EXPECT_TRUE(!check.actualRun && check.directSubmission);
    EXPECT_EQ(check.submitUserIdType + " " + check.submitUserId, "PERSONAL S1234567D");
    EXPECT_EQ(jobs_.setups[0].runFolder, runFolder_.string());  // made for the validation pass too
    EXPECT_TRUE(jobs_.setups[1].params.actualRun);
    EXPECT_EQ(dialogs_.questions,
              (Lines{"The Appendix 8A for Year 2024 will be submitted to IRAS directly. Are you sure?"}));
    EXPECT_EQ(dialogs_.shown, (Lines{"Information: Records have been submitted successfully."}));
    // The actual pass cleared the log; the job's summary in the run folder is the one kept.
    EXPECT_EQ(run.LogMemo().Lines(), (StringList{"A8A validated"}));
    EXPECT_EQ(run.SummaryFilePath(), (runFolder_ / "A8ASummaryFile.txt").string());

    // Answered No: the validation pass's log stays, with the cancellation.
    EXPECT_EQ(run.PreviewClick(), RunOutcome::Declined);
    EXPECT_EQ(jobs_.setups.size(), 3u);
    EXPECT_EQ(run.LogMemo().Lines(),
              (StringList{"A8A validated", "", kStars, "", "           PREPARING FOR ACTUAL DIRECT SUBMISSION", "",
                          kStars, "", "", "Submission has been cancelled!", ""}));

    // An actual pass whose job leaves no summary file empties the path.
    fs::remove_all(runFolder_);
    jobs_.scripts[FileType::Appendix8A].fileInRunFolder = "";
    dialogs_.answers = {true};
    EXPECT_EQ(run.PreviewClick(), RunOutcome::Done);
    EXPECT_EQ(run.SummaryFilePath(), "");
}

TEST_F(RunControllerTest, WarningsWaitForProceedWhichSubmitsWithoutAsking) {
    jobs_.scripts[FileType::CurrentIR8A] = {1, 1, false, true, "", ""};
    RunController& run = Make(RunMode::DirectSubmission, FileType::CurrentIR8A);

    EXPECT_EQ(run.PreviewClick(), RunOutcome::WarningsPending);
    EXPECT_TRUE(run.ProceedVisible());
    EXPECT_EQ(Tail(run.LogMemo().Lines(), 3),
              (Lines{"", "Press <Proceed with Direct Submit>, to submit with warnings.", ""}));

    EXPECT_EQ(run.DirectSubmitProceedClick(), RunOutcome::Done);
    EXPECT_FALSE(run.ProceedVisible());
    EXPECT_TRUE(jobs_.setups.back().params.actualRun);
    EXPECT_EQ(Tail(form_.events, 2), (Lines{"RestoreApplication", "FocusPreviewLog"}));

    // A warning left by "&Validate" still stops a submission whose own
    // validation refuses without an error flag: the flags stand as they were.
    EXPECT_EQ(run.TrialClick(), RunOutcome::Done);
    jobs_.scripts[FileType::CurrentIR8A] = {0, 1, false, false, "", ""};
    EXPECT_EQ(run.PreviewClick(), RunOutcome::WarningsPending);

    EXPECT_TRUE(dialogs_.questions.empty());
    EXPECT_EQ(dialogs_.shown, (Lines{"Warning: Warning(s) have been detected. Please review them before you proceed.",
                                     "Information: Records have been submitted with Warning(s).",
                                     "Warning: Warning(s) have been detected. Please review log for more details.",
                                     "Warning: Warning(s) have been detected. Please review them before you proceed."}));
}

// The reference engine with its reset calls recorded.
class RecordingEngine : public ReferenceEngine {
public:
    RecordingEngine(BQueryViewTable* session, Lines& calls, int result)
        : ReferenceEngine(session), calls_(calls), result_(result) {}
    void SetYEYear(int year) override { calls_.push_back("year " + std::to_string(year)); }
    void SetYEEmployerId(const std::string& id) override { calls_.push_back("employer " + id); }
    void SetYESubmissionType(const std::string& type) override { calls_.push_back("type " + type); }
    int CopyRecords(int from, int to) override {
        calls_.push_back("copy " + std::to_string(from) + " " + std::to_string(to));
        return result_;
    }

private:
    Lines& calls_;
    int result_;
};

TEST_F(RunControllerTest, ResetAsksThenHandsTheYearEndYearEmployerAndTypeToTheEngine) {
    RunController& run = Make(RunMode::Generation, FileType::SupplementaryIR8A);
    Lines calls;
    int result = 1;
    session_.SetEngineFactory([&](BQueryViewTable* session) -> std::unique_ptr<BYESubmissionEngine> {
        return std::make_unique<RecordingEngine>(session, calls, result);
    });

    dialogs_.answers = {false, true, true};
    EXPECT_EQ(run.ResetClick(), RunOutcome::Declined);
    EXPECT_TRUE(calls.empty());
    EXPECT_EQ(run.ResetClick(), RunOutcome::Done);
    EXPECT_EQ(calls, (Lines{"year 2024", "employer IR8AYA2025", "type SupIR8A", "copy 8 9"}));
    result = 0;
    EXPECT_EQ(run.ResetClick(), RunOutcome::Failed);
    EXPECT_EQ(dialogs_.questions, Lines(3, "Are You Sure?"));
    EXPECT_EQ(dialogs_.shown, (Lines{"Information: Submission is successfully resetted.",
                                     "Error: Submission is not successfully resetted."}));
}

TEST_F(RunControllerTest, FailuresOfDatabaseAndDiskAreShownNotThrownAndLeaveNoEmptyRunFolder) {
    jobs_.scripts[FileType::CurrentIR8A] = {};
    RunController& run = Make(RunMode::Generation, FileType::CurrentIR8A);
    db::Query query("kovadb");
    query.SetSQL("DELETE FROM subregistry");
    query.ExecSQL();
    EXPECT_EQ(run.PreviewClick(), RunOutcome::DatabaseFailure);
    EXPECT_NE(dialogs_.shown.back().find("subregistry"), std::string::npos);
    EXPECT_FALSE(fs::exists(runFolder_));

    // The report directory is a file: no run folder can be made under it.
    fs::remove_all(report_);
    std::ofstream(report_) << "not a folder";
    EXPECT_EQ(run.PreviewClick(), RunOutcome::FileFailure);
    EXPECT_TRUE(jobs_.calls.empty());
}

}  // namespace
}  // namespace iras::testing
