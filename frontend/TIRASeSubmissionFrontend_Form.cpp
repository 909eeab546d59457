// The session form's widgets and their binding. After every reaction of
// SessionFormLogic the whole state is copied into the widgets with their
// signals blocked, so a widget never answers a change the form made itself.
// Every handler runs inside Guard: whatever fails is shown as an error
// message and the form stays open and usable.
#include "frontend/TIRASeSubmissionFrontend_Form.h"

#include <QApplication>
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QFontDatabase>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QSplitter>
#include <QStackedWidget>
#include <QStandardItemModel>
#include <QStandardPaths>
#include <QTreeView>
#include <QVBoxLayout>

#include "frontend/Artwork.h"
#include "frontend/MemoLog.h"
#include "frontend/TForm_CRProgressBar.h"

namespace iras {

namespace {

// The words before the gap that the trial button sits in.
const QString kTrialPrefix = QStringLiteral("If you are participating IRAS Trial Exercise, click ");

QString Q(const std::string& text) { return QString::fromStdString(text); }

template <typename W>
W* Named(W* widget, const char* name) {
    widget->setObjectName(QString::fromLatin1(name));
    return widget;
}

QWidget* Panel(const char* name, QWidget* content) {
    auto* panel = Named(new QWidget, name);
    auto* layout = new QVBoxLayout(panel);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(content);
    return panel;
}

QLineEdit* ReadOnlyEdit(const char* name) {
    auto* edit = Named(new QLineEdit, name);
    edit->setReadOnly(true);
    edit->setFocusPolicy(Qt::ClickFocus);
    return edit;
}

QPlainTextEdit* Memo(const char* name) {
    auto* memo = Named(new QPlainTextEdit, name);
    memo->setReadOnly(true);
    memo->setLineWrapMode(QPlainTextEdit::NoWrap);  // both scroll bars: log lines are fixed layouts
    memo->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    memo->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    memo->setFont(font);
    return memo;
}

// Replaces a combo's texts only when they differ, so an open list keeps its place.
void SetItems(QComboBox* combo, const QStringList& items) {
    QStringList current;
    for (int i = 0; i < combo->count(); ++i) current << combo->itemText(i);
    if (current == items) return;
    combo->clear();
    combo->addItems(items);
}

}  // namespace

TIRASeSubmissionFrontend_Form::TIRASeSubmissionFrontend_Form(QWidget* owner, const std::string& mode,
                                                             BQueryViewTable* session,
                                                             SessionFormServices services)
    : QDialog(owner), session_(session), services_(std::move(services)) {
    setObjectName(QStringLiteral("IRASeSubmissionFrontend_Form"));
    _LoadDefaultIcon(*this);
    if (services_.dialogs != nullptr) {
        dialogs_ = services_.dialogs;
    } else {
        ownDialogs_ = std::make_unique<QtFormDialogs>(this);
        dialogs_ = ownDialogs_.get();
    }
    SessionFormData* formData = services_.data;
    if (formData == nullptr) {
        ownData_ = std::make_unique<DatabaseSessionFormData>();
        formData = ownData_.get();
    }
    std::string desktop = services_.desktopFolder;
    if (desktop.empty()) {
        desktop = QStandardPaths::writableLocation(QStandardPaths::DesktopLocation).toStdString();
    }

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    Banner_Image = Named(new QLabel, "Banner_Image");
    Banner_Image->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    Banner_Image->setStyleSheet(QStringLiteral("background-color: #0b3954;"));
    // The band is wider than the form and is cut on the right, never stretched.
    Banner_Image->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    layout->addWidget(Banner_Image);

    IRASSubmission_PageControl = Named(new QStackedWidget, "IRASSubmission_PageControl");
    General_TabSheet = Named(new QWidget, "General_TabSheet");
    General_TabSheet->setWindowTitle(QStringLiteral("General"));
    LogFile_TabSheet = Named(new QWidget, "LogFile_TabSheet");
    LogFile_TabSheet->setWindowTitle(QStringLiteral("Log File"));
    BuildGeneralPage(General_TabSheet);
    BuildLogPage(LogFile_TabSheet);
    IRASSubmission_PageControl->addWidget(General_TabSheet);
    IRASSubmission_PageControl->addWidget(LogFile_TabSheet);
    layout->addWidget(IRASSubmission_PageControl, 1);

    logMemo_ = std::make_unique<MemoLog>(LogMemo);
    debugMemo_ = std::make_unique<MemoLog>(DebugMemo);

    const RunMode runMode = RunModeFromText(mode);
    RunServices run;
    run.session = session_;
    run.dialogs = dialogs_;
    run.view = this;
    run.jobs = services_.jobs;
    run.progress = [this]() -> std::unique_ptr<ProgressWindow> {
        return std::make_unique<TForm_CRProgressBar>(this);
    };
    run.logMemo = logMemo_.get();
    run.debugMemo = debugMemo_.get();
    run.savePrompt = this;
    run.rights = services_.rights;
    run.reportDirectory = services_.reportDirectory;
    controller_ = std::make_unique<RunController>(runMode, run);

    logic_ = std::make_unique<SessionFormLogic>(runMode, session_->iGetYEYear(), *formData, *dialogs_, desktop);
    IRASSubmission_PageControl->setCurrentWidget(General_TabSheet);
    Guard([this] { logic_->Open(); });
    Banner_Image->setPixmap(BannerPixmap(Q(logic_->State().caption)));
    Render();
    Connect();
    resize(sizeHint().expandedTo(QSize(720, 0)));
}

TIRASeSubmissionFrontend_Form::~TIRASeSubmissionFrontend_Form() = default;

void TIRASeSubmissionFrontend_Form::BuildGeneralPage(QWidget* page) {
    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(12, 12, 12, 12);
    layout->setSpacing(10);

    // The choices on the left, the last generation of the chosen return on the right.
    auto* top = new QHBoxLayout;
    auto* choices = new QGridLayout;
    choices->setHorizontalSpacing(8);
    ReportType_ComboBox = Named(new QComboBox, "ReportType_ComboBox");
    YEEmployer_wwDBLookupCombo = Named(new QComboBox, "YEEmployer_wwDBLookupCombo");
    auto* employerView = new QTreeView;
    employerView->setRootIsDecorated(false);
    employerView->setAllColumnsShowFocus(true);
    employerView->setMinimumWidth(fontMetrics().horizontalAdvance(QLatin1Char('x')) * 64);
    YEEmployer_wwDBLookupCombo->setModel(new QStandardItemModel(0, 2, YEEmployer_wwDBLookupCombo));
    YEEmployer_wwDBLookupCombo->setView(employerView);
    YEEmployer_wwDBLookupCombo->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    Year_wwDBLookupCombo = Named(new QComboBox, "Year_wwDBLookupCombo");
    const std::pair<const char*, QWidget*> rows[] = {{"File Type", ReportType_ComboBox},
                                                     {"Tax Employer", YEEmployer_wwDBLookupCombo},
                                                     {"Basis Year", Year_wwDBLookupCombo}};
    int row = 0;
    for (const auto& [text, field] : rows) {
        auto* label = new QLabel(QString::fromLatin1(text));
        label->setBuddy(field);
        choices->addWidget(label, row, 0);
        choices->addWidget(field, row, 1);
        ++row;
    }
    choices->setColumnStretch(1, 1);
    choices->setRowStretch(row, 1);
    top->addLayout(choices, 1);

    auto* last = Named(new QGroupBox(QStringLiteral("Last Generation")), "LastSubmission_GroupBox");
    auto* lastLayout = new QFormLayout(last);
    SubmissionType_Edit = ReadOnlyEdit("SubmissionType_Edit");
    UserID_Edit = ReadOnlyEdit("UserID_Edit");
    LastSubmissionDate_Edit = ReadOnlyEdit("LastSubmissionDate_Edit");
    lastLayout->addRow(QStringLiteral("Type of Generation"), SubmissionType_Edit);
    lastLayout->addRow(QStringLiteral("User ID"), UserID_Edit);
    lastLayout->addRow(QStringLiteral("Last Generation Date"), LastSubmissionDate_Edit);
    top->addWidget(last, 1);
    layout->addLayout(top);

    SubmissionType_RadioGroup = Named(new QGroupBox(QStringLiteral("Generation Type")), "SubmissionType_RadioGroup");
    auto* radios = new QGridLayout(SubmissionType_RadioGroup);
    original_ = Named(new QRadioButton(QStringLiteral("Original")), "Original_RadioButton");
    amendment_ = Named(new QRadioButton(QStringLiteral("Amendment")), "Amendment_RadioButton");
    generationTypes_ = new QButtonGroup(this);
    generationTypes_->addButton(original_, 0);
    generationTypes_->addButton(amendment_, 1);
    radios->addWidget(original_, 0, 0);
    radios->addWidget(amendment_, 0, 1);
    layout->addWidget(SubmissionType_RadioGroup);

    auto* ir8s = Named(new QGroupBox(QStringLiteral("IR8S Options")), "IR8SOpt_GroupBox");
    auto* ir8sLayout = new QHBoxLayout(ir8s);
    OverseasCPF_CheckBox = Named(new QCheckBox(QStringLiteral("Overseas CPF")), "OverseasCPF_CheckBox");
    PercentOrdWage_CheckBox = Named(new QCheckBox(QStringLiteral("Additional  Wage > 40% of Ordinary Wage")),
                                    "PercentOrdWage_CheckBox");
    ExcessCPF_CheckBox = Named(new QCheckBox(QStringLiteral("Excess CPF")), "ExcessCPF_CheckBox");
    OverseasCPF_CheckBox->hide();
    PercentOrdWage_CheckBox->hide();
    ir8sLayout->addWidget(OverseasCPF_CheckBox);
    ir8sLayout->addWidget(PercentOrdWage_CheckBox);
    ir8sLayout->addWidget(ExcessCPF_CheckBox);
    ir8sLayout->addStretch(1);
    IR8SOpt_Panel = Panel("IR8SOpt_Panel", ir8s);
    layout->addWidget(IR8SOpt_Panel);

    auto* folder = Named(new QGroupBox(QStringLiteral("File Directory")), "GroupBox3");
    auto* folderLayout = new QHBoxLayout(folder);
    FilePath_Edit = Named(new QLineEdit, "FilePath_Edit");
    FilePath_Button = Named(new QPushButton(QStringLiteral("Browse...")), "FilePath_Button");
    folderLayout->addWidget(FilePath_Edit, 1);
    folderLayout->addWidget(FilePath_Button);
    FilePath_Panel = Panel("FilePath_Panel", folder);
    layout->addWidget(FilePath_Panel);

    auto* submission = Named(new QGroupBox(QStringLiteral("Submission")), "GroupBox_DirectSubmit");
    auto* submissionLayout = new QFormLayout(submission);
    SubmissionUserIDType_wwDBLookupCombo = Named(new QComboBox, "SubmissionUserIDType_wwDBLookupCombo");
    SubmissionUserID_wwDBEdit = Named(new QLineEdit, "SubmissionUserID_wwDBEdit");
    submissionLayout->addRow(QStringLiteral("User ID Type"), SubmissionUserIDType_wwDBLookupCombo);
    submissionLayout->addRow(QStringLiteral("User ID"), SubmissionUserID_wwDBEdit);
    DirectSubmit_Panel = Panel("DirectSubmit_Panel", submission);
    layout->addWidget(DirectSubmit_Panel);

    // The reminder, and the trial button set into the gap its sentence leaves for it.
    OriginalWarning_Panel = Named(new QWidget, "OriginalWarning_Panel");
    auto* warning = new QVBoxLayout(OriginalWarning_Panel);
    warning->setContentsMargins(0, 0, 0, 0);
    OriginalWarning_Label = Named(new QLabel, "OriginalWarning_Label");
    OriginalWarning_Label->setStyleSheet(QStringLiteral("color: #b00020; font-weight: bold;"));
    Message_Label = Named(new QLabel, "Message_Label");
    Trial_Button = Named(new QPushButton(QStringLiteral("Trial"), Message_Label), "Trial_Button");
    // "click" is followed by sixteen blanks: one ends the word, fifteen hold the button.
    const QFontMetrics metrics = Message_Label->fontMetrics();
    const int gapStart = metrics.horizontalAdvance(kTrialPrefix);
    const int gapWidth = metrics.horizontalAdvance(QString(15, QLatin1Char(' ')));
    const int buttonHeight = Trial_Button->sizeHint().height();
    Message_Label->setMinimumHeight(buttonHeight);
    Trial_Button->setGeometry(gapStart, 0, gapWidth - 2, buttonHeight);
    Message_Label->setMinimumWidth(
        metrics.horizontalAdvance(QStringLiteral("If you are participating IRAS Trial Exercise, click                "
                                                 "to generate Trial File to submit to IRAS.")) + 8);
    warning->addWidget(OriginalWarning_Label);
    warning->addWidget(Message_Label);
    layout->addWidget(OriginalWarning_Panel);

    AmendmentWarning_Panel = Named(new QWidget, "AmendmentWarning_Panel");
    auto* amendmentLayout = new QVBoxLayout(AmendmentWarning_Panel);
    amendmentLayout->setContentsMargins(0, 0, 0, 0);
    auto* amendmentLabel = Named(new QLabel(QStringLiteral("Pls view the verification report before sending to IRAS.")),
                                 "AmendmentWarning_Label");
    amendmentLabel->setStyleSheet(QStringLiteral("color: #b00020; font-weight: bold;"));
    amendmentLayout->addWidget(amendmentLabel);
    layout->addWidget(AmendmentWarning_Panel);
    layout->addStretch(1);

    auto* bottom = Named(new QWidget, "Bottom_Panel");
    auto* bottomLayout = new QHBoxLayout(bottom);
    bottomLayout->setContentsMargins(0, 0, 0, 0);
    Label_DebugMode = Named(new QLabel(QStringLiteral("Sandbox Testing")), "Label_DebugMode");
    Label_DebugMode->hide();
    Reset_Button = Named(new QPushButton(QStringLiteral("Reset Last Generation")), "Reset_Button");
    Preview_Button = Named(new QPushButton(QStringLiteral("&Generate")), "Preview_Button");
    Preview_Button->setDefault(true);
    auto* close = Named(new QPushButton(QStringLiteral("&Close")), "Close_Button");
    connect(close, &QPushButton::clicked, this, &QDialog::accept);
    bottomLayout->addWidget(Label_DebugMode);
    bottomLayout->addStretch(1);
    bottomLayout->addWidget(Reset_Button);
    bottomLayout->addWidget(Preview_Button);
    bottomLayout->addWidget(close);
    layout->addWidget(bottom);
}

void TIRASeSubmissionFrontend_Form::BuildLogPage(QWidget* page) {
    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(12, 12, 12, 12);
    LogFile_Splitter = Named(new QSplitter(Qt::Vertical), "LogFile_Splitter");
    LogMemo = Memo("LogMemo");
    DebugMemo = Memo("DebugMemo");
    LogFile_Splitter->addWidget(LogMemo);
    LogFile_Splitter->addWidget(DebugMemo);
    LogFile_Splitter->setStretchFactor(0, 3);
    LogFile_Splitter->setStretchFactor(1, 2);
    layout->addWidget(LogFile_Splitter, 1);

    auto* buttons = Named(new QWidget, "LogFileBottomLeft_Panel");
    auto* buttonLayout = new QHBoxLayout(buttons);
    buttonLayout->setContentsMargins(0, 0, 0, 0);
    PreviewLog_Button = Named(new QPushButton(QStringLiteral("Preview &Log")), "PreviewLog_Button");
    PreviewDebug_Button = Named(new QPushButton(QStringLiteral("Preview &Debug")), "PreviewDebug_Button");
    PreviewEmpErrorLog_Button =
        Named(new QPushButton(QStringLiteral("Preview Employee Error Log")), "PreviewEmpErrorLog_Button");
    DirectSubmitProceed_Button =
        Named(new QPushButton(QStringLiteral("Proceed with Direct Submission")), "DirectSubmitProceed_Button");
    DirectSubmitProceed_Button->hide();
    General_Button = Named(new QPushButton(QStringLiteral("&Back")), "General_Button");
    buttonLayout->addWidget(PreviewLog_Button);
    buttonLayout->addWidget(PreviewDebug_Button);
    buttonLayout->addWidget(PreviewEmpErrorLog_Button);
    buttonLayout->addWidget(DirectSubmitProceed_Button);
    buttonLayout->addStretch(1);
    buttonLayout->addWidget(General_Button);
    layout->addWidget(buttons);
}

void TIRASeSubmissionFrontend_Form::Connect() {
    connect(ReportType_ComboBox, &QComboBox::currentIndexChanged, this, [this] { ReportType_ComboBoxChange(); });
    connect(YEEmployer_wwDBLookupCombo, &QComboBox::currentIndexChanged, this,
            [this] { YEEmployer_wwDBLookupComboChange(); });
    connect(Year_wwDBLookupCombo, &QComboBox::currentIndexChanged, this, [this] {
        Guard([this] { logic_->BasisYearChanged(Year_wwDBLookupCombo->currentText().toStdString()); });
    });
    connect(generationTypes_, &QButtonGroup::idClicked, this, [this] { SubmissionType_RadioGroupClick(); });
    connect(SubmissionUserIDType_wwDBLookupCombo, &QComboBox::currentIndexChanged, this,
            [this] { SubmissionUserIDType_wwDBLookupComboChange(); });
    connect(SubmissionUserID_wwDBEdit, &QLineEdit::textChanged, this, [this](const QString& text) {
        Guard([this, text] { logic_->UserIdChanged(text.toStdString()); });
    });
    connect(FilePath_Edit, &QLineEdit::textChanged, this, [this](const QString& text) {
        Guard([this, text] { logic_->FilePathChanged(text.toStdString()); });
    });
    for (QCheckBox* box : {ExcessCPF_CheckBox, OverseasCPF_CheckBox, PercentOrdWage_CheckBox}) {
        connect(box, &QCheckBox::toggled, this, [this] {
            Guard([this] {
                logic_->IR8SOptionsChanged({ExcessCPF_CheckBox->isChecked(), OverseasCPF_CheckBox->isChecked(),
                                            PercentOrdWage_CheckBox->isChecked()});
            });
        });
    }
    connect(FilePath_Button, &QPushButton::clicked, this, [this] { FilePath_ButtonClick(); });
    connect(Preview_Button, &QPushButton::clicked, this, [this] { Preview_ButtonClick(); });
    connect(Trial_Button, &QPushButton::clicked, this, [this] { Trial_ButtonClick(); });
    connect(Reset_Button, &QPushButton::clicked, this, [this] { Reset_ButtonClick(); });
    connect(DirectSubmitProceed_Button, &QPushButton::clicked, this, [this] { DirectSubmitProceed_ButtonClick(); });
    connect(PreviewLog_Button, &QPushButton::clicked, this, [this] { PreviewLog_ButtonClick(); });
    connect(PreviewDebug_Button, &QPushButton::clicked, this, [this] { PreviewDebug_ButtonClick(); });
    connect(PreviewEmpErrorLog_Button, &QPushButton::clicked, this, [this] { PreviewEmpErrorLog_ButtonClick(); });
    connect(General_Button, &QPushButton::clicked, this,
            [this] { IRASSubmission_PageControl->setCurrentWidget(General_TabSheet); });
}

void TIRASeSubmissionFrontend_Form::Render() {
    const SessionFormState& s = logic_->State();
    setWindowTitle(Q(s.caption));

    {
        const QSignalBlocker block(ReportType_ComboBox);
        QStringList types;
        for (const std::string& text : s.fileTypes) types << Q(text);
        SetItems(ReportType_ComboBox, types);
        ReportType_ComboBox->setCurrentIndex(static_cast<int>(s.fileType));
    }
    {
        const QSignalBlocker block(YEEmployer_wwDBLookupCombo);
        auto* model = static_cast<QStandardItemModel*>(YEEmployer_wwDBLookupCombo->model());
        bool same = model->rowCount() == static_cast<int>(s.employers.size());
        for (int i = 0; same && i < model->rowCount(); ++i) {
            same = model->item(i, 0)->text() == Q(s.employers[static_cast<std::size_t>(i)].id);
        }
        if (!same) {
            model->clear();
            model->setHorizontalHeaderLabels({QStringLiteral("Employer ID"), QStringLiteral("Description")});
            for (const EmployerRow& employer : s.employers) {
                model->appendRow({new QStandardItem(Q(employer.id)), new QStandardItem(Q(employer.description))});
            }
            auto* view = static_cast<QTreeView*>(YEEmployer_wwDBLookupCombo->view());
            const int x = fontMetrics().horizontalAdvance(QLatin1Char('x'));
            view->header()->resizeSection(0, x * 20);
            view->header()->resizeSection(1, x * 40);
        }
        YEEmployer_wwDBLookupCombo->setCurrentIndex(YEEmployer_wwDBLookupCombo->findText(Q(s.employerId)));
    }
    {
        const QSignalBlocker block(Year_wwDBLookupCombo);
        QStringList years;
        for (const YearRow& year : s.years) years << QString::number(year.year);
        SetItems(Year_wwDBLookupCombo, years);
        Year_wwDBLookupCombo->setCurrentIndex(Year_wwDBLookupCombo->findText(Q(s.basisYear)));
    }
    amendment_->setVisible(s.generationTypes.size() > 1);
    (s.original ? original_ : amendment_)->setChecked(true);

    SubmissionType_Edit->setText(Q(s.lastType));
    UserID_Edit->setText(Q(s.lastUserId));
    LastSubmissionDate_Edit->setText(Q(s.lastDate));

    for (auto [box, on] : {std::pair{ExcessCPF_CheckBox, s.ir8s.excessCPF},
                           std::pair{OverseasCPF_CheckBox, s.ir8s.overseasCPF},
                           std::pair{PercentOrdWage_CheckBox, s.ir8s.percentOrdWage}}) {
        const QSignalBlocker block(box);
        box->setChecked(on);
    }
    {
        const QSignalBlocker block(FilePath_Edit);
        if (FilePath_Edit->text() != Q(s.filePath)) FilePath_Edit->setText(Q(s.filePath));
    }
    {
        const QSignalBlocker block(SubmissionUserIDType_wwDBLookupCombo);
        if (SubmissionUserIDType_wwDBLookupCombo->count() != static_cast<int>(s.userIdTypes.size())) {
            SubmissionUserIDType_wwDBLookupCombo->clear();
            for (const UserIdTypeRow& type : s.userIdTypes) {
                SubmissionUserIDType_wwDBLookupCombo->addItem(Q(type.description), Q(type.id));
            }
        }
        SubmissionUserIDType_wwDBLookupCombo->setCurrentIndex(
            SubmissionUserIDType_wwDBLookupCombo->findData(Q(s.userIdType)));
    }
    {
        const QSignalBlocker block(SubmissionUserID_wwDBEdit);
        if (SubmissionUserID_wwDBEdit->text() != Q(s.userId)) SubmissionUserID_wwDBEdit->setText(Q(s.userId));
    }

    Preview_Button->setText(Q(s.previewCaption));
    Trial_Button->setText(Q(s.trialCaption));
    Message_Label->setText(Q(s.messageLabel));
    OriginalWarning_Label->setText(Q(s.originalWarningLabel));

    FilePath_Panel->setVisible(s.filePathPanelVisible);
    IR8SOpt_Panel->setVisible(s.ir8sOptPanelVisible);
    OriginalWarning_Panel->setVisible(s.originalWarningPanelVisible);
    OriginalWarning_Label->setVisible(s.originalWarningLabelVisible);
    AmendmentWarning_Panel->setVisible(s.amendmentWarningPanelVisible);
    DirectSubmit_Panel->setVisible(s.directSubmitPanelVisible);
    Reset_Button->setVisible(s.resetButtonVisible);
    PreviewEmpErrorLog_Button->setVisible(s.previewEmpErrorLogButtonVisible);
    Label_DebugMode->setVisible(s.debugModeLabelVisible);
}

void TIRASeSubmissionFrontend_Form::Guard(const std::function<void()>& reaction) {
    try {
        reaction();
    } catch (const std::exception& error) {
        dialogs_->Show(MessageKind::Error, error.what());
    } catch (...) {
        dialogs_->Show(MessageKind::Error, "An unexpected failure stopped the action.");
    }
}

void TIRASeSubmissionFrontend_Form::TakeChoices() { controller_->Choices() = logic_->Choices(); }

// ---- reactions -------------------------------------------------------------

void TIRASeSubmissionFrontend_Form::ReportType_ComboBoxChange() {
    Guard([this] { logic_->FileTypeChanged(static_cast<FileType>(ReportType_ComboBox->currentIndex())); });
    Render();
}

void TIRASeSubmissionFrontend_Form::YEEmployer_wwDBLookupComboChange() {
    Guard([this] { logic_->EmployerChanged(YEEmployer_wwDBLookupCombo->currentText().toStdString()); });
    Render();
}

void TIRASeSubmissionFrontend_Form::SubmissionType_RadioGroupClick() {
    Guard([this] { logic_->GenerationTypeChanged(original_->isChecked()); });
    Render();
}

void TIRASeSubmissionFrontend_Form::SubmissionUserIDType_wwDBLookupComboChange() {
    Guard([this] {
        logic_->UserIdTypeChanged(SubmissionUserIDType_wwDBLookupCombo->currentData().toString().toStdString());
    });
}

void TIRASeSubmissionFrontend_Form::FilePath_ButtonClick() {
    Guard([this] {
        const auto folder = dialogs_->ChooseFolder("Select File Generation Path", logic_->FolderDialogDirectory());
        if (folder) logic_->FolderChosen(*folder);
    });
    Render();
}

void TIRASeSubmissionFrontend_Form::Preview_ButtonClick() {
    Guard([this] {
        TakeChoices();
        controller_->PreviewClick();
    });
}

void TIRASeSubmissionFrontend_Form::Trial_ButtonClick() {
    Guard([this] {
        TakeChoices();
        controller_->TrialClick();
    });
}

void TIRASeSubmissionFrontend_Form::Reset_ButtonClick() {
    Guard([this] {
        TakeChoices();
        controller_->ResetClick();
    });
}

void TIRASeSubmissionFrontend_Form::DirectSubmitProceed_ButtonClick() {
    Guard([this] {
        TakeChoices();
        controller_->DirectSubmitProceedClick();
    });
}

void TIRASeSubmissionFrontend_Form::PreviewLog_ButtonClick() {
    Guard([this] { controller_->PreviewLogClick(LogFileKind::RunLog); });
}

void TIRASeSubmissionFrontend_Form::PreviewDebug_ButtonClick() {
    Guard([this] { controller_->PreviewLogClick(LogFileKind::DebugLog); });
}

void TIRASeSubmissionFrontend_Form::PreviewEmpErrorLog_ButtonClick() {
    Guard([this] { controller_->PreviewLogClick(LogFileKind::EmployeeErrorLog); });
}

// ---- the run's view ----------------------------------------------------------

void TIRASeSubmissionFrontend_Form::ShowLogPage() {
    IRASSubmission_PageControl->setCurrentWidget(LogFile_TabSheet);
    if (isVisible()) repaint();  // the run holds the GUI thread from here on
}

bool TIRASeSubmissionFrontend_Form::LogPageShowing() const {
    return IRASSubmission_PageControl->currentWidget() == LogFile_TabSheet;
}

void TIRASeSubmissionFrontend_Form::FocusPreviewLog() { PreviewLog_Button->setFocus(); }

void TIRASeSubmissionFrontend_Form::RestoreApplication() {
    if (isMinimized()) showNormal();
    raise();
    activateWindow();
}

void TIRASeSubmissionFrontend_Form::SetProceedVisible(bool visible) { DirectSubmitProceed_Button->setVisible(visible); }

void TIRASeSubmissionFrontend_Form::FocusUserIdType() {
    IRASSubmission_PageControl->setCurrentWidget(General_TabSheet);
    SubmissionUserIDType_wwDBLookupCombo->setFocus();
}

void TIRASeSubmissionFrontend_Form::FocusUserId() {
    IRASSubmission_PageControl->setCurrentWidget(General_TabSheet);
    SubmissionUserID_wwDBEdit->setFocus();
}

void TIRASeSubmissionFrontend_Form::OpenInEditor(const std::filesystem::path& file) { dialogs_->OpenInEditor(file); }

std::optional<std::string> TIRASeSubmissionFrontend_Form::AskSavePath(const std::string& proposedFileName) {
    return dialogs_->AskSavePath((std::filesystem::path(logic_->FolderDialogDirectory()) / proposedFileName).string());
}

}  // namespace iras
