// The session form's behaviour without its widgets: what the form shows when
// it opens in each mode, and how it answers a change of file type, tax
// employer, generation type, User ID Type or folder. The state is plain data
// (texts, lists, which panels and buttons show); the Qt form copies it into
// its widgets after every reaction and hands the user's choices to the run
// controller when a button is pressed. The buttons' runs are the run
// controller's, not this class's.
//
// The lists come from SessionFormData. A database failure while the form is
// open is shown as an error message and leaves the lists it concerns empty;
// the form stays usable.
#pragma once

#include <string>
#include <vector>

#include "apps/run/FileType.h"
#include "apps/run/RunController.h"
#include "apps/run/RunInterfaces.h"
#include "apps/run/SessionFormData.h"

namespace iras {

inline const std::string kGenerationCaption = "IRAS File Generation";
inline const std::string kDirectSubmissionCaption = "IRAS Direct File Submission";

// Everything the form's widgets show. Names follow the controls.
struct SessionFormState {
    std::string caption;  // the window's

    // "File Type": the list's texts and the chosen entry (index 0-5 as FileType).
    std::vector<std::string> fileTypes;
    FileType fileType = FileType::All;

    std::vector<EmployerRow> employers;
    std::string employerId;  // "" when the list is empty
    std::vector<YearRow> years;
    std::string basisYear;   // the "Basis Year" text, "" when the list is empty

    // "Generation Type": "Original" and, unless the file type is "All", "Amendment".
    std::vector<std::string> generationTypes;
    bool original = true;

    // "Last Generation".
    std::string lastType;  // "Original", "Amendment" or ""
    std::string lastUserId;
    std::string lastDate;

    IR8SOptions ir8s;           // "IR8S Options": Excess CPF starts checked
    std::string filePath;       // "File Directory"
    std::vector<UserIdTypeRow> userIdTypes;
    std::string userIdType;     // the chosen UserTypeID, "" until one is picked
    std::string userId;

    // Captions that differ between the modes or follow the choices.
    std::string previewCaption;          // "&Generate" / "&Direct Submit"
    std::string trialCaption;            // "Trial" / "&Validate"
    std::string messageLabel;
    std::string originalWarningLabel;

    // Which panels and buttons show.
    bool filePathPanelVisible = false;
    bool ir8sOptPanelVisible = false;
    bool originalWarningPanelVisible = true;
    bool originalWarningLabelVisible = true;
    bool amendmentWarningPanelVisible = false;
    bool directSubmitPanelVisible = false;
    bool resetButtonVisible = false;
    bool previewEmpErrorLogButtonVisible = true;
    bool debugModeLabelVisible = false;  // "Sandbox Testing": a sandbox build only
};

class SessionFormLogic {
public:
    // desktopFolder: where the folder dialog starts and the "All" run's
    // "File Directory" points until the user picks another folder.
    SessionFormLogic(RunMode mode, int yeYear, SessionFormData& data, RunDialogs& dialogs,
                     std::string desktopFolder);

    RunMode Mode() const { return mode_; }
    const SessionFormState& State() const { return state_; }

    // The form opens: employers read, the mode's captions, the default file
    // type and "Original" chosen, the User ID Types read.
    void Open();

    void FileTypeChanged(FileType type);
    void EmployerChanged(const std::string& employerId);
    void BasisYearChanged(const std::string& basisYear);
    void GenerationTypeChanged(bool original);
    void UserIdTypeChanged(const std::string& userTypeId);
    void UserIdChanged(const std::string& userId);
    void FilePathChanged(const std::string& path);
    void IR8SOptionsChanged(const IR8SOptions& options);
    // The folder dialog was confirmed: the "File Directory" and the dialog's
    // next starting folder become the chosen one.
    void FolderChosen(const std::string& folder);
    const std::string& FolderDialogDirectory() const { return folderDialogDirectory_; }

    // What a run is to use, as RunController::Choices() takes it.
    RunChoices Choices() const;

    // The employer the form puts first: "IR8AYA" + the year after the
    // session's year-end year when listed, else the last (highest) id.
    static std::string PreselectedEmployer(const std::vector<EmployerRow>& employers, int yeYear);

private:
    template <typename Read>
    bool Guarded(Read read);
    void ShowGenerationTypes();
    void ReadLastGeneration();

    RunMode mode_;
    int yeYear_;
    SessionFormData& data_;
    RunDialogs& dialogs_;
    std::string folderDialogDirectory_;
    SessionFormState state_;
};

}  // namespace iras
