// The session form's reactions without a display: what each mode opens with,
// what a change of file type, employer or generation type shows, which
// employer is put first, and what a database failure leaves behind. Captions
// and texts are the ones a clerk reads on the form, written out by hand.
#include <gtest/gtest.h>

#include <map>
#include <utility>

#include "apps/run/SessionFormLogic.h"
#include "platform/database/Query.h"
#include "tests/run/RunFakes.h"

namespace iras::testing {
namespace {

// Lists handed out by (employer, file type); every read fails while lost.
class FakeFormData : public SessionFormData {
public:
    std::vector<EmployerRow> employers;
    std::map<std::pair<std::string, FileType>, std::vector<YearRow>> years;
    std::map<std::pair<std::string, FileType>, LastGenerationRow> last;
    std::vector<UserIdTypeRow> userIdTypes = {{"CORPORATE", "Corporate Digital Identity"},
                                              {"PERSONAL", "Personal Digital Identity"}};
    bool lost = false;

    std::vector<EmployerRow> Employers() override {
        Fail();
        return employers;
    }
    std::vector<YearRow> Years(const std::string& employerId, FileType type) override {
        Fail();
        const auto found = years.find({employerId, type});
        return found == years.end() ? std::vector<YearRow>{} : found->second;
    }
    std::optional<LastGenerationRow> LastGeneration(const std::string& employerId, FileType type) override {
        Fail();
        const auto found = last.find({employerId, type});
        if (found == last.end()) return std::nullopt;
        return found->second;
    }
    std::vector<UserIdTypeRow> UserIdTypes() override {
        Fail();
        return userIdTypes;
    }

private:
    void Fail() const {
        if (lost) throw db::DatabaseError("The database /tmp/gone.db cannot be opened: no such file.");
    }
};

const std::string kDesktop = "/home/clerk/Desktop";

class SessionFormLogicTest : public ::testing::Test {
protected:
    SessionFormLogicTest() {
        data_.employers = {{"ACME", "Acme"}, {"IR8AYA2025", "Lion City"}, {"ZEN", "Zen"}};
        for (FileType type : {FileType::CurrentIR8A, FileType::IR8S, FileType::Appendix8A,
                              FileType::Appendix8B, FileType::All}) {
            data_.years[{"IR8AYA2025", type}] = {{2023, 2023}, {2024, 2024}};
        }
        data_.years[{"IR8AYA2025", FileType::SupplementaryIR8A}] = {{2023, 2022}, {2024, 2023}};
        data_.years[{"ZEN", FileType::CurrentIR8A}] = {{2022, 2022}};
        data_.last[{"IR8AYA2025", FileType::CurrentIR8A}] = {true, "ADMIN", "26/02/2024 10:15:00"};
        data_.last[{"IR8AYA2025", FileType::Appendix8A}] = {false, "CLERK", "11/03/2024 09:02:47"};
    }

    SessionFormLogic& Open(RunMode mode, int yeYear = 2024) {
        logic_ = std::make_unique<SessionFormLogic>(mode, yeYear, data_, dialogs_, kDesktop);
        logic_->Open();
        return *logic_;
    }

    FakeFormData data_;
    ScriptedDialogs dialogs_;
    std::unique_ptr<SessionFormLogic> logic_;
};

TEST_F(SessionFormLogicTest, EachModeOpensWithItsCaptionsListsAndPanels) {
    struct Case {
        RunMode mode;
        std::string caption, preview, trial, message, originalLabel;
        std::size_t fileTypeCount;
        FileType fileType;
        std::vector<std::string> generationTypes;
        bool directPanel, empErrorButton, filePathPanel, ir8sPanel;
    };
    const std::vector<Case> cases = {
        {RunMode::Generation, "IRAS File Generation", "&Generate", "Trial",
         "If you are participating IRAS Trial Exercise, click                to generate Trial File to "
         "submit to IRAS.",
         "Pls view tax report - All before sending to IRAS.", 6, FileType::All, {"Original"}, false, true,
         true, true},
        {RunMode::DirectSubmission, "IRAS Direct File Submission", "&Direct Submit", "&Validate",
         "Click Validate to send file for validation only",
         "Pls view tax report - Current IR8A before sending to IRAS.", 5, FileType::CurrentIR8A,
         {"Original", "Amendment"}, true, false, false, false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.caption);
        const SessionFormState& s = Open(c.mode).State();
        EXPECT_EQ(s.caption, c.caption);
        EXPECT_EQ(s.previewCaption, c.preview);
        EXPECT_EQ(s.trialCaption, c.trial);
        EXPECT_EQ(s.messageLabel, c.message);
        EXPECT_EQ(s.originalWarningLabel, c.originalLabel);
        ASSERT_EQ(s.fileTypes.size(), c.fileTypeCount);
        EXPECT_EQ(s.fileTypes[0], "Current IR8A");
        EXPECT_EQ(s.fileTypes[4], "Appendix 8B");
        EXPECT_EQ(s.fileType, c.fileType);
        EXPECT_EQ(s.generationTypes, c.generationTypes);
        EXPECT_TRUE(s.original);
        EXPECT_EQ(s.directSubmitPanelVisible, c.directPanel);
        EXPECT_EQ(s.previewEmpErrorLogButtonVisible, c.empErrorButton);
        EXPECT_EQ(s.filePathPanelVisible, c.filePathPanel);
        EXPECT_EQ(s.ir8sOptPanelVisible, c.ir8sPanel);
        EXPECT_EQ(s.filePath, c.filePathPanel ? kDesktop : "");
        EXPECT_TRUE(s.originalWarningPanelVisible);
        EXPECT_FALSE(s.amendmentWarningPanelVisible);
        EXPECT_FALSE(s.resetButtonVisible);
        EXPECT_FALSE(s.debugModeLabelVisible);
        EXPECT_TRUE(s.ir8s.excessCPF);
        EXPECT_FALSE(s.ir8s.overseasCPF);
        EXPECT_FALSE(s.ir8s.percentOrdWage);
        EXPECT_EQ(s.employerId, "IR8AYA2025");
        EXPECT_EQ(s.basisYear, "2024");
        EXPECT_EQ(s.userIdTypes.size(), 2u);
        EXPECT_EQ(s.userIdType, "");  // the submitter must pick one
    }
}

TEST_F(SessionFormLogicTest, FileTypeChangeSetsPanelsGenerationTypesYearsAndLastGeneration) {
    struct Case {
        FileType type;
        bool filePath, ir8s;
        std::vector<std::string> generationTypes;
        std::string basisYear;  // the latest listed
        std::string lastType, lastUser, lastDate;
    };
    const std::vector<Case> cases = {
        {FileType::CurrentIR8A, false, false, {"Original", "Amendment"}, "2024", "Original", "ADMIN",
         "26/02/2024 10:15:00"},
        {FileType::SupplementaryIR8A, false, false, {"Original", "Amendment"}, "2023", "", "", ""},
        {FileType::IR8S, false, true, {"Original", "Amendment"}, "2024", "", "", ""},
        {FileType::Appendix8A, false, false, {"Original", "Amendment"}, "2024", "Amendment", "CLERK",
         "11/03/2024 09:02:47"},
        {FileType::Appendix8B, false, false, {"Original", "Amendment"}, "2024", "", "", ""},
        {FileType::All, true, true, {"Original"}, "2024", "", "", ""},
    };
    SessionFormLogic& logic = Open(RunMode::Generation);
    for (const Case& c : cases) {
        SCOPED_TRACE(FileTypeText(c.type));
        logic.GenerationTypeChanged(false);  // a change of type always comes back to "Original"
        logic.FileTypeChanged(c.type);
        const SessionFormState& s = logic.State();
        EXPECT_EQ(s.filePathPanelVisible, c.filePath);
        EXPECT_EQ(s.ir8sOptPanelVisible, c.ir8s);
        EXPECT_EQ(s.generationTypes, c.generationTypes);
        EXPECT_TRUE(s.original);
        EXPECT_EQ(s.originalWarningLabel, "Pls view tax report - " + FileTypeText(c.type) + " before sending to IRAS.");
        EXPECT_EQ(s.basisYear, c.basisYear);
        EXPECT_EQ(s.lastType, c.lastType);
        EXPECT_EQ(s.lastUserId, c.lastUser);
        EXPECT_EQ(s.lastDate, c.lastDate);
        EXPECT_EQ(logic.Choices().YearEndYear(), 2024);  // the supplementary list shows 2023 for 2024
    }
}

TEST_F(SessionFormLogicTest, GenerationTypeShowsRemindersAndResetOnlyForAnAmendmentOfOneReturnWhenGenerating) {
    struct Case {
        RunMode mode;
        FileType type;
        bool original;
        bool originalPanel, originalLabel, amendmentPanel, reset;
    };
    const std::vector<Case> cases = {
        {RunMode::Generation, FileType::CurrentIR8A, true, true, true, false, false},
        {RunMode::Generation, FileType::CurrentIR8A, false, false, true, true, true},
        {RunMode::Generation, FileType::Appendix8B, false, false, true, true, true},
        {RunMode::Generation, FileType::All, true, true, true, false, false},
        {RunMode::DirectSubmission, FileType::CurrentIR8A, true, true, true, false, false},
        // "&Validate" stays reachable, without the original's reminder; no reset here.
        {RunMode::DirectSubmission, FileType::IR8S, false, true, false, true, false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(FileTypeText(c.type) + (c.original ? " Original" : " Amendment") +
                     (c.mode == RunMode::Generation ? " generating" : " submitting"));
        SessionFormLogic& logic = Open(c.mode);
        logic.FileTypeChanged(c.type);
        logic.GenerationTypeChanged(c.original);
        const SessionFormState& s = logic.State();
        EXPECT_EQ(s.original, c.original);
        EXPECT_EQ(s.originalWarningPanelVisible, c.originalPanel);
        EXPECT_EQ(s.originalWarningLabelVisible, c.originalLabel);
        EXPECT_EQ(s.amendmentWarningPanelVisible, c.amendmentPanel);
        EXPECT_EQ(s.resetButtonVisible, c.reset);
        EXPECT_EQ(logic.Choices().original, c.original);
    }
}

TEST_F(SessionFormLogicTest, PreselectsTheYearAfterTheYearEndsEmployerElseTheLastOne) {
    struct Case {
        std::vector<std::string> ids;
        int yeYear;
        std::string expected;
    };
    const std::vector<Case> cases = {
        {{"ACME", "IR8AYA2025", "ZEN"}, 2024, "IR8AYA2025"},
        {{"ACME", "IR8AYA2025", "ZEN"}, 2023, "ZEN"},      // IR8AYA2024 is not listed
        {{"ACME", "ir8aya2025", "ZEN"}, 2024, "ZEN"},      // the match is case-sensitive
        {{"ACME", "IR8AYA20250", "BETA"}, 2024, "BETA"},   // and exact
        {{"IR8AYA2025"}, 2024, "IR8AYA2025"},
        {{}, 2024, ""},
    };
    for (const Case& c : cases) {
        std::vector<EmployerRow> employers;
        for (const std::string& id : c.ids) employers.push_back({id, ""});
        EXPECT_EQ(SessionFormLogic::PreselectedEmployer(employers, c.yeYear), c.expected)
            << c.expected << " for year-end year " << c.yeYear;
    }
}

TEST_F(SessionFormLogicTest, EmployerChangeShowsItsLatestYearAndEmptiesWhatItLacks) {
    SessionFormLogic& logic = Open(RunMode::Generation);
    logic.FileTypeChanged(FileType::CurrentIR8A);
    logic.EmployerChanged("ZEN");
    EXPECT_EQ(logic.State().basisYear, "2022");
    EXPECT_EQ(logic.State().years.size(), 1u);
    EXPECT_EQ(logic.State().lastType, "");
    EXPECT_EQ(logic.State().lastDate, "");

    logic.EmployerChanged("ACME");  // no years, no generation
    EXPECT_EQ(logic.State().basisYear, "");
    EXPECT_TRUE(logic.State().years.empty());

    // A change of type puts the preselected employer back.
    logic.FileTypeChanged(FileType::CurrentIR8A);
    EXPECT_EQ(logic.State().employerId, "IR8AYA2025");
    EXPECT_EQ(logic.State().lastUserId, "ADMIN");
}

TEST_F(SessionFormLogicTest, ChosenFolderStaysTheFileDirectoryWhenAllIsChosenAgain) {
    SessionFormLogic& logic = Open(RunMode::Generation);
    logic.FolderChosen("/srv/returns");
    EXPECT_EQ(logic.Choices().fileDirectory, "/srv/returns");
    logic.FileTypeChanged(FileType::CurrentIR8A);
    logic.FileTypeChanged(FileType::All);
    EXPECT_EQ(logic.State().filePath, "/srv/returns");
    EXPECT_EQ(logic.FolderDialogDirectory(), "/srv/returns");
}

TEST_F(SessionFormLogicTest, ChoicesCarryEverythingARunNeeds) {
    SessionFormLogic& logic = Open(RunMode::DirectSubmission);
    logic.FileTypeChanged(FileType::SupplementaryIR8A);
    logic.BasisYearChanged("2022");
    logic.GenerationTypeChanged(false);
    logic.UserIdTypeChanged("PERSONAL");
    logic.UserIdChanged("S1234567D");
    logic.IR8SOptionsChanged({false, true, true});
    const RunChoices choices = logic.Choices();
    EXPECT_EQ(choices.fileType, FileType::SupplementaryIR8A);
    EXPECT_EQ(choices.employerId, "IR8AYA2025");
    EXPECT_EQ(choices.basisYear, "2022");
    EXPECT_EQ(choices.YearEndYear(), 2023);
    EXPECT_FALSE(choices.original);
    EXPECT_EQ(choices.submitUserIdType, "PERSONAL");
    EXPECT_EQ(choices.submitUserId, "S1234567D");
    EXPECT_FALSE(choices.ir8s.excessCPF);
    EXPECT_TRUE(choices.ir8s.overseasCPF);
    EXPECT_TRUE(choices.ir8s.percentOrdWage);
}

TEST_F(SessionFormLogicTest, EmptyEmployerListPreselectsNothingAndLeavesYearsEmpty) {
    data_.employers.clear();
    const SessionFormState& s = Open(RunMode::Generation).State();
    EXPECT_EQ(s.employerId, "");
    EXPECT_EQ(s.basisYear, "");
    EXPECT_EQ(s.lastType, "");
    EXPECT_TRUE(dialogs_.shown.empty());
}

TEST_F(SessionFormLogicTest, LostDatabaseIsShownAsAnErrorAndTheFormStaysUsable) {
    SessionFormLogic& logic = Open(RunMode::Generation);
    data_.lost = true;
    logic.FileTypeChanged(FileType::CurrentIR8A);
    // One message for the change, not one per list.
    EXPECT_EQ(dialogs_.shown, Lines{"Error: The database /tmp/gone.db cannot be opened: no such file."});
    EXPECT_EQ(logic.State().basisYear, "");
    EXPECT_EQ(logic.State().lastType, "");
    EXPECT_EQ(logic.State().fileType, FileType::CurrentIR8A);

    // Back again, the next change reads the lists as before.
    data_.lost = false;
    dialogs_.shown.clear();
    logic.FileTypeChanged(FileType::CurrentIR8A);
    EXPECT_TRUE(dialogs_.shown.empty());
    EXPECT_EQ(logic.State().basisYear, "2024");

    // Lost from the start: the form still opens, with empty lists.
    data_.lost = true;
    dialogs_.shown.clear();
    const SessionFormState& s = Open(RunMode::DirectSubmission).State();
    EXPECT_EQ(dialogs_.shown.size(), 1u);
    EXPECT_TRUE(s.employers.empty());
    EXPECT_TRUE(s.userIdTypes.empty());
    EXPECT_EQ(s.caption, "IRAS Direct File Submission");
}

}  // namespace
}  // namespace iras::testing
