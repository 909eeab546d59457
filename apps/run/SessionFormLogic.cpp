// The session form's reactions. Each change runs in the order the payroll
// clerk sees its effects: a new file type resets the generation types and the
// panels, then picks the employer again, which reloads the basis years (the
// latest one chosen) and the last generation.
#include "apps/run/SessionFormLogic.h"

#include <utility>

#include "platform/database/Query.h"

namespace iras {

SessionFormLogic::SessionFormLogic(RunMode mode, int yeYear, SessionFormData& data, RunDialogs& dialogs,
                                   std::string desktopFolder)
    : mode_(mode), yeYear_(yeYear), data_(data), dialogs_(dialogs),
      folderDialogDirectory_(std::move(desktopFolder)) {}

template <typename Read>
bool SessionFormLogic::Guarded(Read read) {
    try {
        read();
        return true;
    } catch (const db::DatabaseError& error) {
        dialogs_.Show(MessageKind::Error, error.what());
        return false;
    }
}

void SessionFormLogic::Open() {
    const bool direct = mode_ == RunMode::DirectSubmission;
    state_ = SessionFormState{};
    state_.caption = direct ? kDirectSubmissionCaption : kGenerationCaption;
    state_.originalWarningLabel = "Pls view standard report before sending to IRAS.";
    state_.messageLabel =
        "If you are participating IRAS Trial Exercise, click                to generate Trial File "
        "to submit to IRAS.";
    state_.previewCaption = "&Generate";
    state_.trialCaption = "Trial";

    const bool readable = Guarded([this] { state_.employers = data_.Employers(); });

    for (FileType type : kReturnTypes) state_.fileTypes.push_back(FileTypeText(type));
    state_.fileTypes.push_back(FileTypeText(FileType::All));
    if (direct) {
        // One return at a time is submitted: "All" is not offered.
        state_.fileTypes.pop_back();
        state_.previewCaption = "&Direct Submit";
        state_.trialCaption = "&Validate";
        state_.messageLabel = "Click Validate to send file for validation only";
        state_.directSubmitPanelVisible = true;
        state_.previewEmpErrorLogButtonVisible = false;
    }
    FileTypeChanged(direct ? FileType::CurrentIR8A : FileType::All);
    GenerationTypeChanged(true);
    // A database that failed on the employers has said so once already.
    if (readable && !Guarded([this] { state_.userIdTypes = data_.UserIdTypes(); })) state_.userIdTypes.clear();
}

void SessionFormLogic::FileTypeChanged(FileType type) {
    state_.fileType = type;
    state_.years.clear();

    ShowGenerationTypes();

    const bool ir8s = type == FileType::IR8S;
    const bool all = type == FileType::All;
    state_.filePathPanelVisible = all;
    state_.ir8sOptPanelVisible = ir8s || all;
    if (all) state_.filePath = folderDialogDirectory_;

    if (state_.employers.empty()) {
        state_.employerId.clear();
        state_.basisYear.clear();
        state_.lastType.clear();
        state_.lastUserId.clear();
        state_.lastDate.clear();
        return;
    }
    EmployerChanged(PreselectedEmployer(state_.employers, yeYear_));
}

void SessionFormLogic::ShowGenerationTypes() {
    // "All" is generated as an original only.
    state_.generationTypes = {"Original"};
    if (state_.fileType != FileType::All) state_.generationTypes.push_back("Amendment");
    GenerationTypeChanged(true);
}

std::string SessionFormLogic::PreselectedEmployer(const std::vector<EmployerRow>& employers, int yeYear) {
    if (employers.empty()) return "";
    const std::string wanted = "IR8AYA" + std::to_string(yeYear + 1);
    for (const EmployerRow& row : employers) {
        if (row.id == wanted) return row.id;
    }
    return employers.back().id;
}

void SessionFormLogic::EmployerChanged(const std::string& employerId) {
    state_.employerId = employerId;
    state_.years.clear();
    state_.basisYear.clear();
    state_.lastType.clear();
    state_.lastUserId.clear();
    state_.lastDate.clear();
    if (employerId.empty()) return;
    // One message for one change: a database that failed once is not asked again.
    if (!Guarded([this] { state_.years = data_.Years(state_.employerId, state_.fileType); })) return;
    // The latest year is the one a clerk works on.
    if (!state_.years.empty()) state_.basisYear = std::to_string(state_.years.back().year);
    ReadLastGeneration();
}

void SessionFormLogic::ReadLastGeneration() {
    std::optional<LastGenerationRow> last;
    Guarded([this, &last] { last = data_.LastGeneration(state_.employerId, state_.fileType); });
    if (!last) return;
    state_.lastType = last->original ? "Original" : "Amendment";
    state_.lastUserId = last->submitUserId;
    state_.lastDate = last->submittedDate;
}

void SessionFormLogic::BasisYearChanged(const std::string& basisYear) { state_.basisYear = basisYear; }

void SessionFormLogic::GenerationTypeChanged(bool original) {
    // "All" offers no amendment.
    state_.original = original || state_.fileType == FileType::All;
    state_.resetButtonVisible = false;
    state_.originalWarningLabelVisible = true;
    if (!state_.original) {
        state_.originalWarningPanelVisible = false;
        state_.amendmentWarningPanelVisible = true;
        if (state_.fileType != FileType::All) {
            if (mode_ == RunMode::DirectSubmission) {
                // "&Validate" stays available, without the original's reminder.
                state_.originalWarningLabelVisible = false;
                state_.originalWarningPanelVisible = true;
            } else {
                // Only an amendment of one return can be undone.
                state_.resetButtonVisible = true;
            }
        }
        return;
    }
    state_.originalWarningPanelVisible = true;
    state_.amendmentWarningPanelVisible = false;
    state_.originalWarningLabel =
        "Pls view tax report - " + FileTypeText(state_.fileType) + " before sending to IRAS.";
}

void SessionFormLogic::UserIdTypeChanged(const std::string& userTypeId) { state_.userIdType = userTypeId; }
void SessionFormLogic::UserIdChanged(const std::string& userId) { state_.userId = userId; }
void SessionFormLogic::FilePathChanged(const std::string& path) { state_.filePath = path; }
void SessionFormLogic::IR8SOptionsChanged(const IR8SOptions& options) { state_.ir8s = options; }

void SessionFormLogic::FolderChosen(const std::string& folder) {
    folderDialogDirectory_ = folder;
    state_.filePath = folder;
}

RunChoices SessionFormLogic::Choices() const {
    RunChoices choices;
    choices.fileType = state_.fileType;
    choices.employerId = state_.employerId;
    choices.basisYear = state_.basisYear;
    choices.original = state_.original;
    choices.fileDirectory = state_.filePath;
    choices.ir8s = state_.ir8s;
    choices.submitUserIdType = state_.userIdType;
    choices.submitUserId = state_.userId;
    return choices;
}

}  // namespace iras
