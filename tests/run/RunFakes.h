// Stand-ins for what surrounds a run: scripted jobs, scripted dialogs, a form
// that records its effects, a progress window and an engine that record their
// calls, and a fresh payroll database (schema and keyword codes) in a
// temporary folder under the alias "kovadb".
#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <unistd.h>
#include <vector>

#include "apps/run/RunController.h"
#include "platform/common/Date.h"
#include "platform/database/Query.h"

namespace iras::testing {

namespace fs = std::filesystem;

inline std::string ReadFile(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
}

// What one fake return does when driven, and what was done to it.
struct JobScript {
    int validateResult = 1;
    int processResult = 1;
    bool hasErrors = false;
    bool hasWarnings = false;
    std::string summaryLine;                 // appended by GenerateSummary
    std::string fileInRunFolder;             // written into the run folder by ProcessFile
};

// The calls of all fake jobs of a run, in order: "CurIR8A:Validate", ...
struct JobJournal {
    std::vector<std::string> calls;
    std::vector<JobSetup> setups;
};

class FakeJob : public RSubmissionJob {
public:
    FakeJob(std::string name, JobScript script, JobSetup setup, JobJournal& journal)
        : name_(std::move(name)), script_(std::move(script)), setup_(std::move(setup)), journal_(journal) {}

    void SetLogMemo(LogSink* log) override { log_ = log; }
    void SetInternalMemo(LogSink*) override {}
    void SetEmployeeErrorLog(StringList* errors) override { errors_ = errors; }
    void SetSaveDialog(SaveFilePrompt*) override {}
    int ValidateFile() override {
        journal_.calls.push_back(name_ + ":Validate");
        if (log_ != nullptr) log_->Append(name_ + " validated");
        if (errors_ != nullptr && script_.validateResult == 0) errors_->push_back(name_ + " employee failed");
        return script_.validateResult;
    }
    int ProcessFile() override {
        journal_.calls.push_back(name_ + ":Process");
        if (!script_.fileInRunFolder.empty()) {
            std::ofstream(fs::path(setup_.runFolder) / script_.fileInRunFolder) << "made\n";
        }
        return script_.processResult;
    }
    void GenerateSummary(StringList& summary) override {
        journal_.calls.push_back(name_ + ":Summary");
        summary.push_back(script_.summaryLine);
    }
    bool GetHasErrors() const override { return script_.hasErrors; }
    bool GetHasWarnings() const override { return script_.hasWarnings; }

private:
    std::string name_;
    JobScript script_;
    JobSetup setup_;
    JobJournal& journal_;
    LogSink* log_ = nullptr;
    StringList* errors_ = nullptr;
};

// Makes fake jobs for the types given a script; the others are not available.
class FakeJobFactory : public JobFactory {
public:
    std::map<FileType, JobScript> scripts;
    JobJournal journal;

    bool Available(FileType type) const override { return scripts.count(type) != 0; }
    std::unique_ptr<RSubmissionJob> Create(FileType type, const JobSetup& setup) override {
        if (!Available(type)) return nullptr;
        journal.setups.push_back(setup);
        // The script of each pass in turn: a direct submission builds the job twice.
        JobScript script = scripts.at(type);
        if (auto next = later.find(type); next != later.end() && created_[type]++ > 0) script = next->second;
        return std::make_unique<FakeJob>(SubmissionTypeCode(type), script, setup, journal);
    }
    std::map<FileType, JobScript> later;  // the script of the second job of a type

private:
    std::map<FileType, int> created_;
};

class ScriptedDialogs : public RunDialogs {
public:
    struct Message {
        MessageKind kind;
        std::string text;
    };
    std::vector<Message> shown;
    std::vector<std::string> questions;
    std::deque<bool> answers;  // an unscripted question is answered No

    void Show(MessageKind kind, const std::string& text) override { shown.push_back({kind, text}); }
    bool Confirm(const std::string& question) override {
        questions.push_back(question);
        if (answers.empty()) return false;
        const bool answer = answers.front();
        answers.pop_front();
        return answer;
    }
};

class RecordingView : public RunView {
public:
    std::vector<std::string> calls;
    bool logPage = false;
    void ShowLogPage() override { logPage = true; calls.push_back("ShowLogPage"); }
    bool LogPageShowing() const override { return logPage; }
    void FocusPreviewLog() override { calls.push_back("FocusPreviewLog"); }
    void RestoreApplication() override { calls.push_back("RestoreApplication"); }
    void SetProceedVisible(bool visible) override { calls.push_back(visible ? "ShowProceed" : "HideProceed"); }
    void FocusUserIdType() override { calls.push_back("FocusUserIdType"); }
    void FocusUserId() override { calls.push_back("FocusUserId"); }
    void OpenInEditor(const fs::path& file) override { calls.push_back("Open " + file.filename().string()); }
};

class RecordingProgress : public ProgressWindow {
public:
    explicit RecordingProgress(std::vector<std::string>& calls) : calls_(calls) {}
    ~RecordingProgress() override { calls_.push_back("Destroy"); }
    void SetCaption(const std::string& caption) override { calls_.push_back("Caption " + caption); }
    void SetLabelText(const std::string& text) override { calls_.push_back("Label " + text); }
    void SetPosition(const std::int32_t& at) override { calls_.push_back("Position " + std::to_string(at)); }
    void SetStep(std::int32_t step) override { calls_.push_back("Step size " + std::to_string(step)); }
    void Show() override { calls_.push_back("Show"); }
    void Repaint() override { calls_.push_back("Repaint"); }
    void Step() override { calls_.push_back("Step"); }

private:
    std::vector<std::string>& calls_;
};

class RecordingEngine : public BYESubmissionEngine {
public:
    RecordingEngine(std::vector<std::string>& calls, int copyResult) : calls_(calls), copyResult_(copyResult) {}
    void SetYEYear(int year) override { calls_.push_back("SetYEYear " + std::to_string(year)); }
    void SetYEEmployerId(const std::string& id) override { calls_.push_back("SetYEEmployerId " + id); }
    void SetYESubmissionType(const std::string& type) override { calls_.push_back("SetYESubmissionType " + type); }
    void SetYEIgnoreChanges(bool) override {}
    void SetIsDirectSubmit(bool) override {}
    void SetSubmitUserIDType(const std::string&) override {}
    void SetSubmitUserID(const std::string&) override {}
    void SetSubmitReportPath(const std::string&) override {}
    int GenerateViewTables() override { return 1; }
    int ExecuteDirectSubmit(const std::string&, const std::string&, int) override { return 1; }
    bool HasErrors() const override { return false; }
    bool HasWarnings() const override { return false; }
    void DirectSubmitAppendLog(LogSink*, const std::string&) override {}
    int SubmitRecords(bool, bool) override { return 1; }
    int CopyRecords(int from, int to) override {
        calls_.push_back("CopyRecords " + std::to_string(from) + " " + std::to_string(to));
        return copyResult_;
    }

private:
    std::vector<std::string>& calls_;
    int copyResult_;
};

inline fs::path UniqueFolder(const std::string& stem) {
    static int counter = 0;
    fs::path folder = fs::temp_directory_path() /
                      (stem + "-" + std::to_string(::getpid()) + "-" + std::to_string(counter++));
    fs::remove_all(folder);
    fs::create_directories(folder);
    return folder;
}

// A payroll database with the schema and keyword codes (which hold the
// subregistry row of the runs) in a folder of its own.
class PayrollDatabaseTest : public ::testing::Test {
protected:
    void SetUp() override {
        folder_ = UniqueFolder("iras-run");
        databaseFile_ = folder_ / "payroll.db";
        db::ConnectionRegistry::Register("kovadb", {"sqlite", databaseFile_.string(), true});
        const fs::path data = IRAS_SOURCE_DATA_DIR;
        db::ExecScript("kovadb", ReadFile(data / "schema.sql"));
        db::ExecScript("kovadb", ReadFile(data / "keywords.sql"));
    }
    void TearDown() override {
        db::ConnectionRegistry::Unregister("kovadb");
        SetClockForTesting(nullptr);
        std::error_code ignored;
        fs::remove_all(folder_, ignored);
    }

    static void Exec(const std::string& sql) {
        db::Query query("kovadb");
        query.SetSQL(sql);
        query.ExecSQL();
    }
    static void Grant(const std::string& user, const std::vector<std::string>& modules) {
        for (const std::string& module : modules) {
            Exec("INSERT INTO UserModuleRights (UserId, ModuleId) VALUES ('" + user + "', '" + module + "')");
        }
    }

    fs::path folder_;
    fs::path databaseFile_;
};

}  // namespace iras::testing
