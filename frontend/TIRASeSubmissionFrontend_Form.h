// The session form: the clerk picks the file type, the tax employer, the
// basis year and the generation type, and generates, tries, validates,
// submits or resets. Its widgets carry the names the payroll's forms use
// ("Preview_Button", "YEEmployer_wwDBLookupCombo") as object names. What the
// widgets show comes from SessionFormLogic; what the buttons do is the run
// controller's. The form itself only binds the two to widgets, and is the
// run's view (log page, proceed button, focus) and save dialog.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include <QDialog>

#include "apps/run/RunController.h"
#include "apps/run/SessionFormLogic.h"
#include "frontend/FormDialogs.h"

class QButtonGroup;
class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QRadioButton;
class QSplitter;
class QStackedWidget;

namespace iras {

class MemoLog;

// What the form uses besides the session; every member has a product default.
struct SessionFormServices {
    FormDialogs* dialogs = nullptr;    // default: Qt dialogs
    SessionFormData* data = nullptr;   // default: the payroll database under "kovadb"
    JobFactory* jobs = nullptr;        // default: the returns of this version
    RightsCheck rights;                // default: the host's right check
    std::function<std::filesystem::path()> reportDirectory;  // default: the host's report directory
    std::string desktopFolder;         // default: the user's desktop folder
};

class TIRASeSubmissionFrontend_Form : public QDialog, public RunView, public SaveFilePrompt {
    Q_OBJECT
public:
    TIRASeSubmissionFrontend_Form(QWidget* owner, const std::string& mode, BQueryViewTable* session,
                                  SessionFormServices services = {});
    ~TIRASeSubmissionFrontend_Form() override;

    // The summary file of the last run, "" when none: what the entry returns.
    const std::string& SummaryFilePath() const { return controller_->SummaryFilePath(); }
    const SessionFormLogic& Logic() const { return *logic_; }
    RunController& Controller() { return *controller_; }

    // RunView
    void ShowLogPage() override;
    bool LogPageShowing() const override;
    void FocusPreviewLog() override;
    void RestoreApplication() override;
    void SetProceedVisible(bool visible) override;
    void FocusUserIdType() override;
    void FocusUserId() override;
    void OpenInEditor(const std::filesystem::path& file) override;

    // SaveFilePrompt: the save dialog of a single return's file.
    std::optional<std::string> AskSavePath(const std::string& proposedFileName) override;

private:
    void BuildGeneralPage(QWidget* page);
    void BuildLogPage(QWidget* page);
    void Connect();
    void Render();
    void Guard(const std::function<void()>& reaction);
    void TakeChoices();

    // Event handlers, named after their controls.
    void ReportType_ComboBoxChange();
    void YEEmployer_wwDBLookupComboChange();
    void SubmissionType_RadioGroupClick();
    void SubmissionUserIDType_wwDBLookupComboChange();
    void FilePath_ButtonClick();
    void Preview_ButtonClick();
    void Trial_ButtonClick();
    void Reset_ButtonClick();
    void DirectSubmitProceed_ButtonClick();
    void PreviewLog_ButtonClick();
    void PreviewDebug_ButtonClick();
    void PreviewEmpErrorLog_ButtonClick();

    BQueryViewTable* session_;
    std::unique_ptr<QtFormDialogs> ownDialogs_;
    std::unique_ptr<DatabaseSessionFormData> ownData_;
    FormDialogs* dialogs_;
    SessionFormServices services_;

    QStackedWidget* IRASSubmission_PageControl = nullptr;
    QWidget* General_TabSheet = nullptr;
    QWidget* LogFile_TabSheet = nullptr;
    QLabel* Banner_Image = nullptr;
    QComboBox* ReportType_ComboBox = nullptr;
    QComboBox* YEEmployer_wwDBLookupCombo = nullptr;
    QComboBox* Year_wwDBLookupCombo = nullptr;
    QWidget* IR8SOpt_Panel = nullptr;
    QCheckBox* OverseasCPF_CheckBox = nullptr;
    QCheckBox* PercentOrdWage_CheckBox = nullptr;
    QCheckBox* ExcessCPF_CheckBox = nullptr;
    QLineEdit* SubmissionType_Edit = nullptr;
    QLineEdit* UserID_Edit = nullptr;
    QLineEdit* LastSubmissionDate_Edit = nullptr;
    QGroupBox* SubmissionType_RadioGroup = nullptr;
    QButtonGroup* generationTypes_ = nullptr;
    QRadioButton* original_ = nullptr;
    QRadioButton* amendment_ = nullptr;
    QWidget* FilePath_Panel = nullptr;
    QLineEdit* FilePath_Edit = nullptr;
    QPushButton* FilePath_Button = nullptr;
    QWidget* OriginalWarning_Panel = nullptr;
    QLabel* OriginalWarning_Label = nullptr;
    QLabel* Message_Label = nullptr;
    QPushButton* Trial_Button = nullptr;
    QWidget* AmendmentWarning_Panel = nullptr;
    QWidget* DirectSubmit_Panel = nullptr;
    QComboBox* SubmissionUserIDType_wwDBLookupCombo = nullptr;
    QLineEdit* SubmissionUserID_wwDBEdit = nullptr;
    QPushButton* Preview_Button = nullptr;
    QPushButton* Reset_Button = nullptr;
    QLabel* Label_DebugMode = nullptr;
    QPlainTextEdit* LogMemo = nullptr;
    QSplitter* LogFile_Splitter = nullptr;
    QPlainTextEdit* DebugMemo = nullptr;
    QPushButton* PreviewLog_Button = nullptr;
    QPushButton* PreviewDebug_Button = nullptr;
    QPushButton* PreviewEmpErrorLog_Button = nullptr;
    QPushButton* DirectSubmitProceed_Button = nullptr;
    QPushButton* General_Button = nullptr;  // back to the choices after a run

    std::unique_ptr<MemoLog> logMemo_;
    std::unique_ptr<MemoLog> debugMemo_;
    std::unique_ptr<SessionFormLogic> logic_;
    std::unique_ptr<RunController> controller_;
};

}  // namespace iras
