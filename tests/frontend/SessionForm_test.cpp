// The session form on the offscreen platform, on the sample payroll database,
// with scripted dialogs: the captions and panels of both modes, a refused
// module right, a whole "&Generate" run, the direct-submission dialogue with
// its proceed button, the progress window during a run, a database lost while
// the form is open, and the entry's answer when the form closes. Captions are
// the ones the clerk reads, written out by hand.
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QStackedWidget>
#include <QTimer>
#include <QtTest>

#include <deque>
#include <fstream>

#include "frontend/SessionEntry.h"
#include "frontend/TForm_CRProgressBar.h"
#include "frontend/TIRASeSubmissionFrontend_Form.h"
#include "platform/database/Query.h"
#include "platform/database/Schema.h"

namespace fs = std::filesystem;
using namespace iras;

namespace {

class ScriptedDialogs : public FormDialogs {
public:
    QStringList shown;  // "Warning: text"
    QStringList questions;
    std::deque<bool> answers;  // unscripted questions are answered No
    std::optional<std::string> folderAnswer;
    QStringList folderAsked;  // "title | start folder"
    std::vector<fs::path> opened;

    void Show(MessageKind kind, const std::string& text) override {
        const char* kinds[] = {"Warning: ", "Error: ", "Information: "};
        shown << QString::fromLatin1(kinds[static_cast<int>(kind)]) + QString::fromStdString(text);
    }
    bool Confirm(const std::string& question) override {
        questions << QString::fromStdString(question);
        if (answers.empty()) return false;
        const bool answer = answers.front();
        answers.pop_front();
        return answer;
    }
    std::optional<std::string> ChooseFolder(const std::string& title, const std::string& start) override {
        folderAsked << QString::fromStdString(title + " | " + start);
        return folderAnswer;
    }
    std::optional<std::string> AskSavePath(const std::string& proposed) override { return proposed; }
    void OpenInEditor(const fs::path& file) override { opened.push_back(file); }
};

// A return whose passes follow a script, and that can look at the screen while it is processed.
class ScriptedJob : public RSubmissionJob {
public:
    bool errors = false, warnings = false;
    std::function<void()> duringProcessing;
    void SetLogMemo(LogSink* log) override { log_ = log; }
    void SetInternalMemo(LogSink*) override {}
    void SetEmployeeErrorLog(StringList*) override {}
    void SetSaveDialog(SaveFilePrompt*) override {}
    void SetBasisYear(int) override {}
    std::string SummaryFileName() const override { return "IRASSummaryFile"; }
    int ValidateFile() override {
        log_->Append("scripted validation");
        return 1;
    }
    int ProcessFile() override {
        if (duringProcessing) duringProcessing();
        return 1;
    }
    void GenerateSummary(StringList& summary) override { summary.push_back("scripted summary"); }
    bool GetHasErrors() const override { return errors; }
    bool GetHasWarnings() const override { return warnings; }

private:
    LogSink* log_ = nullptr;
};

class ScriptedJobs : public JobFactory {
public:
    std::deque<std::pair<bool, bool>> flags;  // errors, warnings of each job built, in turn
    std::function<void()> duringProcessing;
    bool Available(FileType) const override { return true; }
    std::unique_ptr<RSubmissionJob> Create(FileType, const JobSetup&) override {
        auto job = std::make_unique<ScriptedJob>();
        if (!flags.empty()) {
            std::tie(job->errors, job->warnings) = flags.front();
            flags.pop_front();
        }
        job->duringProcessing = duringProcessing;
        return job;
    }
};

template <typename W>
W* Child(QWidget* form, const char* name) {
    W* widget = form->findChild<W*>(QString::fromLatin1(name));
    if (widget == nullptr) qFatal("the form has no %s", name);
    return widget;
}

// Shown on its page: neither it nor a panel around it is hidden by the form.
bool Showing(QWidget* form, const char* name) {
    for (QWidget* widget = Child<QWidget>(form, name); widget != nullptr && widget != form;
         widget = widget->parentWidget()) {
        // A page out of sight is the page control's doing, not the form's.
        if (qobject_cast<QStackedWidget*>(widget->parentWidget()) != nullptr) return true;
        if (widget->isHidden()) return false;
    }
    return true;
}

}  // namespace

class SessionFormTest : public QObject {
    Q_OBJECT

private:
    fs::path folder_;
    std::string database_;
    BQueryViewTable admin_{SessionSettings{"ADMIN", "127.0.0.1", 2024}};
    ScriptedDialogs dialogs_;

    SessionFormServices Services(JobFactory* jobs = nullptr) {
        SessionFormServices services;
        services.dialogs = &dialogs_;
        services.jobs = jobs;
        services.reportDirectory = [this] { return folder_ / "report"; };
        services.desktopFolder = (folder_ / "Desktop").string();
        return services;
    }
    std::unique_ptr<TIRASeSubmissionFrontend_Form> Form(const std::string& mode, JobFactory* jobs = nullptr) {
        auto form = std::make_unique<TIRASeSubmissionFrontend_Form>(nullptr, mode, &admin_, Services(jobs));
        form->show();
        return form;
    }
    static QString Text(QWidget* form, const char* name) {
        QWidget* widget = Child<QWidget>(form, name);
        if (auto* button = qobject_cast<QAbstractButton*>(widget)) return button->text();
        if (auto* label = qobject_cast<QLabel*>(widget)) return label->text();
        if (auto* edit = qobject_cast<QLineEdit*>(widget)) return edit->text();
        if (auto* box = qobject_cast<QGroupBox*>(widget)) return box->title();
        if (auto* combo = qobject_cast<QComboBox*>(widget)) return combo->currentText();
        return widget->windowTitle();
    }

private slots:
    void initTestCase() {
        folder_ = fs::temp_directory_path() / ("iras-form-" + std::to_string(QCoreApplication::applicationPid()));
        fs::remove_all(folder_);
        fs::create_directories(folder_ / "Desktop");
    }
    // Each test on a sample database of its own: runs record their choices and generations.
    void init() {
        static int count = 0;
        database_ = (folder_ / ("payroll-" + std::to_string(++count) + ".db")).string();
        db::CreateDatabase(database_, true);
        db::ConnectionRegistry::Register("kovadb", {"sqlite", database_, false});
        dialogs_ = ScriptedDialogs{};
    }
    void cleanup() { db::ConnectionRegistry::Unregister("kovadb"); }
    void cleanupTestCase() { fs::remove_all(folder_); }

    void modesShowTheirCaptionsAndPanels_data() {
        QTest::addColumn<QString>("mode");
        QTest::addColumn<QString>("caption");
        QTest::addColumn<QString>("preview");
        QTest::addColumn<QString>("trial");
        QTest::addColumn<QString>("message");
        QTest::addColumn<int>("fileTypes");
        QTest::addColumn<QString>("fileType");
        QTest::addColumn<bool>("direct");
        QTest::addColumn<QString>("lastType");
        QTest::addColumn<QString>("lastDate");
        const QString trialMessage = QStringLiteral(
            "If you are participating IRAS Trial Exercise, click                to generate Trial File to submit to IRAS.");
        QTest::newRow("generation") << "" << "IRAS File Generation" << "&Generate" << "Trial" << trialMessage << 6
                                    << "All" << false << "Original" << "20/02/2024 16:45:09";
        QTest::newRow("letter case is not direct") << "direct submit" << "IRAS File Generation" << "&Generate"
                                                   << "Trial" << trialMessage << 6 << "All" << false << "Original"
                                                   << "20/02/2024 16:45:09";
        QTest::newRow("direct submission") << "Direct Submit" << "IRAS Direct File Submission" << "&Direct Submit"
                                           << "&Validate" << "Click Validate to send file for validation only" << 5
                                           << "Current IR8A" << true << "Original" << "26/02/2024 10:15:00";
    }
    void modesShowTheirCaptionsAndPanels() {
        QFETCH(QString, mode);
        QFETCH(QString, caption);
        QFETCH(QString, preview);
        QFETCH(QString, trial);
        QFETCH(QString, message);
        QFETCH(int, fileTypes);
        QFETCH(QString, fileType);
        QFETCH(bool, direct);
        QFETCH(QString, lastType);
        QFETCH(QString, lastDate);
        auto form = Form(mode.toStdString());
        QWidget* f = form.get();
        QCOMPARE(form->windowTitle(), caption);
        QCOMPARE(Text(f, "Preview_Button"), preview);
        QCOMPARE(Text(f, "Trial_Button"), trial);
        QCOMPARE(Text(f, "Message_Label"), message);
        QCOMPARE(Child<QComboBox>(f, "ReportType_ComboBox")->count(), fileTypes);
        QCOMPARE(Text(f, "ReportType_ComboBox"), fileType);
        QCOMPARE(Child<QComboBox>(f, "ReportType_ComboBox")->itemText(0), QStringLiteral("Current IR8A"));
        QCOMPARE(Text(f, "OriginalWarning_Label"), "Pls view tax report - " + fileType + " before sending to IRAS.");
        QCOMPARE(Text(f, "SubmissionType_Edit"), lastType);
        QCOMPARE(Text(f, "UserID_Edit"), QStringLiteral("ADMIN"));
        QCOMPARE(Text(f, "LastSubmissionDate_Edit"), lastDate);
        QCOMPARE(Showing(f, "DirectSubmit_Panel"), direct);
        QCOMPARE(Showing(f, "PreviewEmpErrorLog_Button"), !direct);
        QCOMPARE(Showing(f, "FilePath_Panel"), !direct);
        QCOMPARE(Showing(f, "IR8SOpt_Panel"), !direct);
        QCOMPARE(Showing(f, "Amendment_RadioButton"), direct);  // "All" has no amendment
        QVERIFY(Child<QRadioButton>(f, "Original_RadioButton")->isChecked());
        QVERIFY(Showing(f, "OriginalWarning_Panel"));
        QVERIFY(Showing(f, "Trial_Button"));
        QVERIFY(!Showing(f, "AmendmentWarning_Panel"));
        QVERIFY(!Showing(f, "Reset_Button"));
        QVERIFY(!Showing(f, "Label_DebugMode"));
        QVERIFY(!Showing(f, "DirectSubmitProceed_Button"));
        QCOMPARE(Child<QStackedWidget>(f, "IRASSubmission_PageControl")->currentWidget()->objectName(),
                 QStringLiteral("General_TabSheet"));
        QVERIFY(dialogs_.shown.isEmpty());
    }

    void everyControlBearsItsNameAndCaption() {
        auto form = Form("");
        const std::pair<const char*, const char*> captions[] = {
            {"LastSubmission_GroupBox", "Last Generation"},
            {"SubmissionType_RadioGroup", "Generation Type"},
            {"IR8SOpt_GroupBox", "IR8S Options"},
            {"OverseasCPF_CheckBox", "Overseas CPF"},
            {"PercentOrdWage_CheckBox", "Additional  Wage > 40% of Ordinary Wage"},
            {"ExcessCPF_CheckBox", "Excess CPF"},
            {"GroupBox3", "File Directory"},
            {"FilePath_Button", "Browse..."},
            {"AmendmentWarning_Label", "Pls view the verification report before sending to IRAS."},
            {"OriginalWarning_Label", "Pls view tax report - All before sending to IRAS."},
            {"GroupBox_DirectSubmit", "Submission"},
            {"Reset_Button", "Reset Last Generation"},
            {"Label_DebugMode", "Sandbox Testing"},
            {"PreviewLog_Button", "Preview &Log"},
            {"PreviewDebug_Button", "Preview &Debug"},
            {"PreviewEmpErrorLog_Button", "Preview Employee Error Log"},
            {"DirectSubmitProceed_Button", "Proceed with Direct Submission"},
            {"YEEmployer_wwDBLookupCombo", "IR8AYA2025"},
            {"Year_wwDBLookupCombo", "2024"},
            {"General_TabSheet", "General"},
            {"LogFile_TabSheet", "Log File"},
        };
        for (const auto& [name, caption] : captions) QCOMPARE(Text(form.get(), name), QString::fromLatin1(caption));
        for (const char* name : {"IRASSubmission_PageControl", "Banner_Image", "IR8SOpt_Panel", "FilePath_Panel",
                                 "OriginalWarning_Panel", "AmendmentWarning_Panel", "DirectSubmit_Panel",
                                 "Bottom_Panel", "LogFile_Splitter", "LogFileBottomLeft_Panel", "LogMemo",
                                 "DebugMemo", "SubmissionType_Edit", "UserID_Edit", "LastSubmissionDate_Edit",
                                 "SubmissionUserIDType_wwDBLookupCombo", "SubmissionUserID_wwDBEdit"}) {
            QVERIFY2(form->findChild<QWidget*>(QString::fromLatin1(name)) != nullptr, name);
        }
        QVERIFY(Child<QCheckBox>(form.get(), "ExcessCPF_CheckBox")->isChecked());
        QVERIFY(Child<QCheckBox>(form.get(), "OverseasCPF_CheckBox")->isHidden());
        QVERIFY(Child<QCheckBox>(form.get(), "PercentOrdWage_CheckBox")->isHidden());
        QCOMPARE(Text(form.get(), "FilePath_Edit"), QString::fromStdString((folder_ / "Desktop").string()));
        QVERIFY(!Child<QLabel>(form.get(), "Banner_Image")->pixmap().isNull());
    }

    void aRefusedModuleRightOpensNoForm() {
        BQueryViewTable guest(SessionSettings{"GUEST", "127.0.0.1", 2024});
        const std::string answer = OpenSessionForm(guest, "", Services());
        QCOMPARE(answer, std::string());
        QCOMPARE(dialogs_.shown, QStringList{"Warning: You have no access to this module"});
        for (QWidget* window : QApplication::topLevelWidgets()) {
            QVERIFY(window->objectName() != QStringLiteral("IRASeSubmissionFrontend_Form"));
        }
    }

    void closingWithNothingRunAnswersEmpty() {
        QTimer::singleShot(0, [] {
            for (QWidget* window : QApplication::topLevelWidgets()) {
                if (window->objectName() == QStringLiteral("IRASeSubmissionFrontend_Form")) window->close();
            }
        });
        QCOMPARE(OpenSessionForm(admin_, "", Services()), std::string());
        QVERIFY(dialogs_.shown.isEmpty());
    }

    void generateWritesTheFilesAndShowsTheRunLog() {
        auto form = Form("");
        const fs::path out = folder_ / "returns";
        fs::create_directories(out);
        Child<QLineEdit>(form.get(), "FilePath_Edit")->setText(QString::fromStdString(out.string()));
        Child<QPushButton>(form.get(), "Preview_Button")->click();

        QVERIFY2(dialogs_.shown.isEmpty(), qPrintable(dialogs_.shown.join(QLatin1Char('\n'))));
        QVERIFY(fs::exists(out / "CUR_Submission(O).txt"));
        QCOMPARE(form->SummaryFilePath(), (folder_ / "report" / "IRASSummaryFile.txt").string());
        QVERIFY(fs::exists(form->SummaryFilePath()));
        auto* pages = Child<QStackedWidget>(form.get(), "IRASSubmission_PageControl");
        QCOMPARE(pages->currentWidget()->objectName(), QStringLiteral("LogFile_TabSheet"));
        const QString log = Child<QPlainTextEdit>(form.get(), "LogMemo")->toPlainText();
        QVERIFY(log.contains(QStringLiteral("All files have been SUCCESSFULLY generated to ") +
                             QString::fromStdString(out.string()) +
                             QStringLiteral(". Please use AIS Salary File Validation and Submission Application "
                                            "to validate the files.")));
        QVERIFY(!Child<QPlainTextEdit>(form.get(), "DebugMemo")->toPlainText().isEmpty());

        // "Preview &Log" saves what the memo shows and opens it.
        Child<QPushButton>(form.get(), "PreviewLog_Button")->click();
        QCOMPARE(dialogs_.opened.size(), std::size_t{1});
        QCOMPARE(dialogs_.opened[0], folder_ / "report" / "IRASSubmissionLogFile.txt");
        std::ifstream saved(dialogs_.opened[0]);
        std::string first;
        std::getline(saved, first);
        QCOMPARE(QString::fromStdString(first), log.split(QLatin1Char('\n')).first());
    }

    void fileTypeAndGenerationTypeChangesReachTheWidgets() {
        auto form = Form("");
        auto* types = Child<QComboBox>(form.get(), "ReportType_ComboBox");
        types->setCurrentIndex(1);  // Supplementary IR8A lists the year before each year-end year
        QCOMPARE(Text(form.get(), "Year_wwDBLookupCombo"), QStringLiteral("2023"));
        QVERIFY(!Showing(form.get(), "FilePath_Panel"));
        QVERIFY(Showing(form.get(), "Amendment_RadioButton"));
        Child<QRadioButton>(form.get(), "Amendment_RadioButton")->click();
        QVERIFY(Showing(form.get(), "Reset_Button"));
        QVERIFY(Showing(form.get(), "AmendmentWarning_Panel"));
        QVERIFY(!Showing(form.get(), "OriginalWarning_Panel"));
        types->setCurrentIndex(2);  // IR8S: its options, and back to "Original"
        QVERIFY(Showing(form.get(), "IR8SOpt_Panel"));
        QVERIFY(Child<QRadioButton>(form.get(), "Original_RadioButton")->isChecked());
        QVERIFY(!Showing(form.get(), "Reset_Button"));
        QCOMPARE(Text(form.get(), "SubmissionType_Edit"), QStringLiteral("Original"));
        QCOMPARE(Text(form.get(), "LastSubmissionDate_Edit"), QStringLiteral("26/02/2024 10:20:31"));
        types->setCurrentIndex(5);
        QVERIFY(!Showing(form.get(), "Amendment_RadioButton"));

        dialogs_.folderAnswer = (folder_ / "chosen").string();
        Child<QPushButton>(form.get(), "FilePath_Button")->click();
        QCOMPARE(dialogs_.folderAsked,
                 QStringList{QString::fromStdString("Select File Generation Path | " + (folder_ / "Desktop").string())});
        QCOMPARE(Text(form.get(), "FilePath_Edit"), QString::fromStdString((folder_ / "chosen").string()));
    }

    void directSubmissionStopsOnWarningsUntilProceed() {
        ScriptedJobs jobs;
        jobs.flags = {{false, true}, {false, false}};  // the validation pass warns, the actual pass is clean
        auto form = Form("Direct Submit", &jobs);
        QVERIFY(Showing(form.get(), "DirectSubmit_Panel"));
        QVERIFY(!Showing(form.get(), "PreviewEmpErrorLog_Button"));
        auto* preview = Child<QPushButton>(form.get(), "Preview_Button");

        preview->click();
        QCOMPARE(dialogs_.shown, QStringList{"Warning: Missing User ID Type!"});
        auto* types = Child<QComboBox>(form.get(), "SubmissionUserIDType_wwDBLookupCombo");
        QCOMPARE(types->count(), 3);
        types->setCurrentIndex(types->findData(QStringLiteral("PERSONAL")));
        preview->click();
        QCOMPARE(dialogs_.shown.last(), QStringLiteral("Warning: Missing User ID!"));
        Child<QLineEdit>(form.get(), "SubmissionUserID_wwDBEdit")->setText(QStringLiteral("S1234567D"));

        dialogs_.shown.clear();
        preview->click();
        QCOMPARE(dialogs_.shown,
                 QStringList{"Warning: Warning(s) have been detected. Please review them before you proceed."});
        QVERIFY(dialogs_.questions.isEmpty());  // warnings never ask the confirmation
        auto* proceed = Child<QPushButton>(form.get(), "DirectSubmitProceed_Button");
        QVERIFY(Showing(form.get(), "DirectSubmitProceed_Button"));
        QVERIFY(Child<QPlainTextEdit>(form.get(), "LogMemo")->toPlainText().contains(
            QStringLiteral("Press <Proceed with Direct Submit>, to submit with warnings.")));

        dialogs_.shown.clear();
        proceed->click();
        QVERIFY(!Showing(form.get(), "DirectSubmitProceed_Button"));
        QCOMPARE(dialogs_.shown, QStringList{"Information: Records have been submitted successfully."});
        QVERIFY(dialogs_.questions.isEmpty());
    }

    void directSubmissionOnTheSampleAsksAndSubmits() {
        auto form = Form("Direct Submit");
        auto* types = Child<QComboBox>(form.get(), "SubmissionUserIDType_wwDBLookupCombo");
        types->setCurrentIndex(types->findData(QStringLiteral("PERSONAL")));
        Child<QLineEdit>(form.get(), "SubmissionUserID_wwDBEdit")->setText(QStringLiteral("S1234567D"));
        dialogs_.answers = {true};
        Child<QPushButton>(form.get(), "Preview_Button")->click();
        QCOMPARE(dialogs_.questions,
                 QStringList{"The Current IR8A for Year 2024 will be submitted to IRAS directly. Are you sure?"});
        QCOMPARE(dialogs_.shown, QStringList{"Information: Records have been submitted successfully."});
        QVERIFY(fs::exists(form->SummaryFilePath()));
        QCOMPARE(fs::path(form->SummaryFilePath()).filename().string(), std::string("IRASSummaryFile.txt"));
    }

    void theProgressWindowShowsAboveTheFormDuringARun() {
        ScriptedJobs jobs;
        bool seen = false;
        QWidget* formWidget = nullptr;
        jobs.duringProcessing = [&] {
            for (QWidget* window : QApplication::topLevelWidgets()) {
                auto* progress = qobject_cast<TForm_CRProgressBar*>(window);
                if (progress == nullptr || !progress->isVisible()) continue;
                seen = true;
                QCOMPARE(progress->windowTitle(), QStringLiteral("Report generation in process. Please wait..."));
                QCOMPARE(progress->Label()->text(), QStringLiteral("Processing Data..."));
                QCOMPARE(progress->Bar()->value(), 50);
                QCOMPARE(progress->size(), QSize(400, 70));
                QCOMPARE(progress->parentWidget(), formWidget);  // a tool window of the form: kept above it
            }
        };
        auto form = Form("", &jobs);
        formWidget = form.get();
        Child<QComboBox>(form.get(), "ReportType_ComboBox")->setCurrentIndex(0);
        Child<QPushButton>(form.get(), "Preview_Button")->click();
        QVERIFY(seen);
        QVERIFY(form->findChildren<TForm_CRProgressBar*>().isEmpty());  // gone after the run
    }

    void theProgressWindowStartsAsDesignedAndStepsByItsStep() {
        TForm_CRProgressBar progress;
        QCOMPARE(progress.windowTitle(), QStringLiteral("Form_CRProgressBar"));
        QCOMPARE(progress.Label()->text(), QStringLiteral("Processing Report...."));
        QCOMPARE(progress.Bar()->minimum(), 0);
        QCOMPARE(progress.Bar()->maximum(), 100);
        QVERIFY(!(progress.windowFlags() & Qt::WindowCloseButtonHint));  // no border icons
        QVERIFY(!progress.windowIcon().isNull());
        const std::int32_t position = 20;
        progress.SetPosition(position);
        progress.SetStep(30);
        progress.Step();
        QCOMPARE(progress.Bar()->value(), 50);
        progress.Step();
        progress.Step();
        QCOMPARE(progress.Bar()->value(), 100);  // never beyond the end
    }

    void aLostDatabaseIsShownAndTheFormStaysUsable() {
        auto form = Form("");
        db::ConnectionRegistry::Unregister("kovadb");
        auto* types = Child<QComboBox>(form.get(), "ReportType_ComboBox");
        types->setCurrentIndex(0);
        QVERIFY(!dialogs_.shown.isEmpty());
        QVERIFY(dialogs_.shown.first().startsWith(QStringLiteral("Error: ")));
        QVERIFY(dialogs_.shown.first().contains(QStringLiteral("kovadb")));
        QCOMPARE(Text(form.get(), "Year_wwDBLookupCombo"), QString());

        // A button pressed meanwhile: the host's right check reads a right it
        // cannot read as not held, so the run stops there with its message.
        dialogs_.shown.clear();
        Child<QPushButton>(form.get(), "Preview_Button")->click();
        QCOMPARE(dialogs_.shown, QStringList{"Warning: You have no access to this module"});
        QVERIFY(form->isVisible());

        // The database back, the next change lists the years again.
        db::ConnectionRegistry::Register("kovadb", {"sqlite", database_, false});
        dialogs_.shown.clear();
        types->setCurrentIndex(1);
        QVERIFY(dialogs_.shown.isEmpty());
        QCOMPARE(Text(form.get(), "Year_wwDBLookupCombo"), QStringLiteral("2023"));
    }
};

QTEST_MAIN(SessionFormTest)
#include "SessionForm_test.moc"
