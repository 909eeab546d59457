// iras-host's steps with the real module: the shared library is loaded by
// path with dlopen, its entry found by its plain name and called on the
// sample payroll database. The form it shows is driven from a timer, as a
// clerk would: "&Generate" then close; the entry answers the summary file.
// A user without the module right gets the module's own message box and "".
#include <QApplication>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <QtTest>

#include <dlfcn.h>

#include <filesystem>
#include <sstream>

#include "apps/host/ReferenceHost.h"
#include "platform/database/Schema.h"

namespace fs = std::filesystem;
using namespace iras;

namespace {

QWidget* TopLevel(const QString& name) {
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window->objectName() == name && window->isVisible()) return window;
    }
    return nullptr;
}

}  // namespace

class ModuleLoadTest : public QObject {
    Q_OBJECT

private:
    fs::path folder_;
    HostOptions options_;

private slots:
    void initTestCase() {
        folder_ = fs::temp_directory_path() / ("iras-module-" + std::to_string(QCoreApplication::applicationPid()));
        fs::remove_all(folder_);
        fs::create_directories(folder_ / "returns");
        db::CreateDatabase(folder_ / "payroll.db", true);
        options_.database = (folder_ / "payroll.db").string();
        options_.user = "ADMIN";
        options_.year = 2024;
        options_.home = (folder_ / "home").string();
        options_.module = IRAS_MODULE_PATH;
    }
    void cleanupTestCase() { fs::remove_all(folder_); }

    void theModuleExportsItsEntryByItsPlainName() {
        void* module = ::dlopen(IRAS_MODULE_PATH, RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
        QVERIFY2(module != nullptr, ::dlerror());
        QVERIFY(::dlsym(module, "InvokeIRASeSubmissionFrontend") != nullptr);
        // The form's own code stays inside the module.
        QVERIFY(::dlsym(module, "_ZN4iras15OpenSessionFormERNS_15BQueryViewTableERKNSt7__cxx1112basic_stringIcSt11char_"
                                "traitsIcESaIcEEENS_19SessionFormServicesE") == nullptr);
        ::dlclose(module);
    }

    void aGenerateRunFromTheLoadedFormAnswersItsSummaryFile() {
        bool ran = false;
        QTimer::singleShot(0, [&] {
            QWidget* form = TopLevel(QStringLiteral("IRASeSubmissionFrontend_Form"));
            if (form == nullptr) return;
            form->findChild<QLineEdit*>(QStringLiteral("FilePath_Edit"))
                ->setText(QString::fromStdString((folder_ / "returns").string()));
            form->findChild<QPushButton*>(QStringLiteral("Preview_Button"))->click();
            ran = true;
            form->close();
        });
        std::ostringstream out, err;
        QCOMPARE(RunReferenceHost(options_, out, err), 0);
        QVERIFY(ran);
        const fs::path summary = folder_ / "home" / "Report" / "IRASSummaryFile.txt";
        QCOMPARE(out.str(), summary.string() + "\n");
        QVERIFY(fs::exists(summary));
        QVERIFY(fs::exists(folder_ / "returns" / "CUR_Submission(O).txt"));
        QCOMPARE(err.str(), std::string());
    }

    void aUserWithoutTheModuleRightGetsTheMessageAndAnEmptyAnswer() {
        QString message;
        QTimer::singleShot(0, [&] {
            if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
                message = box->text();
                box->accept();
            }
        });
        HostOptions guest = options_;
        guest.user = "GUEST";
        std::ostringstream out, err;
        QCOMPARE(RunReferenceHost(guest, out, err), 0);
        QCOMPARE(message, QStringLiteral("You have no access to this module"));
        QCOMPARE(out.str(), std::string("\n"));
        QVERIFY(TopLevel(QStringLiteral("IRASeSubmissionFrontend_Form")) == nullptr);
    }

    void aMissingModuleOrDatabaseIsReportedNotCrashed() {
        struct Case {
            std::string database, module;
            int status;
            std::string says;
        };
        const std::vector<Case> cases = {
            {options_.database, (folder_ / "nowhere.so").string(), kHostModule, "cannot load the module"},
            {(folder_ / "missing.db").string(), IRAS_MODULE_PATH, kHostDatabase, "does not exist"},
        };
        for (const Case& c : cases) {
            HostOptions broken = options_;
            broken.database = c.database;
            broken.module = c.module;
            std::ostringstream out, err;
            QCOMPARE(RunReferenceHost(broken, out, err), c.status);
            QVERIFY2(err.str().find(c.says) != std::string::npos, err.str().c_str());
            QCOMPARE(out.str(), std::string());
        }
    }

    void hostOptionsAreCheckedBeforeAnythingOpens() {
        struct Case {
            std::vector<std::string> args;
            std::string error;
        };
        const std::vector<Case> cases = {
            {{"--user", "ADMIN"}, "--db FILE is required"},
            {{"--db", "x.db"}, "--user USER is required"},
            {{"--db", "x.db", "--user", "ADMIN", "--year", "24x"}, "--year takes a year such as 2024, not \"24x\""},
            {{"--db", "x.db", "--user"}, "--user needs a value"},
            {{"--db", "x.db", "--user", "ADMIN", "--colour"}, "unknown option \"--colour\""},
        };
        for (const Case& c : cases) {
            const ParsedHostOptions parsed = ParseHostOptions(c.args);
            QVERIFY(!parsed.options);
            QCOMPARE(parsed.error, c.error);
        }
        const ParsedHostOptions direct = ParseHostOptions(
            {"--db", "x.db", "--user", "CLERK", "--direct-submit", "--year", "2024", "--workstation", "10.0.0.7"});
        QVERIFY(direct.options);
        QCOMPARE(direct.options->mode, std::string("Direct Submit"));
        QCOMPARE(direct.options->year.value_or(0), 2024);
        QCOMPARE(direct.options->workstation, std::string("10.0.0.7"));
    }
};

QTEST_MAIN(ModuleLoadTest)
#include "ModuleLoad_test.moc"
