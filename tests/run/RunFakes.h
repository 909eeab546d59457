// Stand-ins for what surrounds a run: fake return jobs that follow a script,
// dialogs with scripted answers, a form and a progress window that record
// what the run did to them, and a scratch folder per test.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <deque>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "apps/run/RunController.h"
#include "tests/support/ScratchFolder.h"

namespace iras::testing {

namespace fs = std::filesystem;
using Lines = std::vector<std::string>;

inline std::string ReadFile(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
}

inline fs::path UniqueFolder(const std::string& stem) { return UniqueTempFolder(stem); }

// What a fake return answers when driven.
struct JobScript {
    int validateResult = 1;
    int processResult = 1;
    bool hasErrors = false;
    bool hasWarnings = false;
    std::string summaryLine;      // appended by GenerateSummary
    std::string fileInRunFolder;  // written into the run folder by ProcessFile
};

// Builds fake jobs for the types that have a script (the others are not
// available) and journals every call as "CurIR8A:Validate" and every setup.
class FakeJobFactory : public JobFactory {
public:
    std::map<FileType, JobScript> scripts;
    Lines calls;
    std::vector<JobSetup> setups;

    bool Available(FileType type) const override { return scripts.count(type) != 0; }
    std::unique_ptr<RSubmissionJob> Create(FileType type, const JobSetup& setup) override {
        if (!Available(type)) return nullptr;
        setups.push_back(setup);
        return std::make_unique<Job>(*this, SubmissionTypeCode(type), scripts.at(type), setup.runFolder);
    }

private:
    struct Job : RSubmissionJob {
        Job(FakeJobFactory& owner, std::string name, JobScript script, std::string runFolder)
            : owner_(owner), name_(std::move(name)), script_(std::move(script)), runFolder_(std::move(runFolder)) {}
        void SetLogMemo(LogSink* sink) override { log_ = sink; }
        void SetInternalMemo(LogSink*) override {}
        void SetEmployeeErrorLog(StringList* list) override { errors_ = list; }
        void SetSaveDialog(SaveFilePrompt*) override {}
        void SetBasisYear(int) override {}
        std::string SummaryFileName() const override {
            if (name_ == "CurIR8A") return "IRASSummaryFile";
            return name_ == "SupIR8A" ? "" : name_ + "SummaryFile";
        }
        int ValidateFile() override {
            owner_.calls.push_back(name_ + ":Validate");
            log_->Append(name_ + " validated");
            if (script_.validateResult == 0) errors_->push_back(name_ + " employee failed");
            return script_.validateResult;
        }
        int ProcessFile() override {
            owner_.calls.push_back(name_ + ":Process");
            if (!script_.fileInRunFolder.empty()) std::ofstream(fs::path(runFolder_) / script_.fileInRunFolder) << "x\n";
            return script_.processResult;
        }
        void GenerateSummary(StringList& summary) override {
            owner_.calls.push_back(name_ + ":Summary");
            summary.push_back(script_.summaryLine);
        }
        bool GetHasErrors() const override { return script_.hasErrors; }
        bool GetHasWarnings() const override { return script_.hasWarnings; }

        FakeJobFactory& owner_;
        std::string name_;  // "CurIR8A"
        JobScript script_;
        std::string runFolder_;
        LogSink* log_ = nullptr;
        StringList* errors_ = nullptr;
    };
};

// Messages are kept as "Warning: text", "Error: text", "Information: text".
class ScriptedDialogs : public RunDialogs {
public:
    Lines shown;
    Lines questions;
    std::deque<bool> answers;  // an unscripted question is answered No

    void Show(MessageKind kind, const std::string& text) override {
        const char* kinds[] = {"Warning: ", "Error: ", "Information: "};
        shown.push_back(kinds[static_cast<int>(kind)] + text);
    }
    bool Confirm(const std::string& question) override {
        questions.push_back(question);
        const bool answer = !answers.empty() && answers.front();
        if (!answers.empty()) answers.pop_front();
        return answer;
    }
};

// The form and its progress window, recording into one list in the order the
// run touched them.
class RecordingForm : public RunView {
public:
    Lines events;
    bool logPage = false;

    void ShowLogPage() override { logPage = true; events.push_back("ShowLogPage"); }
    bool LogPageShowing() const override { return logPage; }
    void FocusPreviewLog() override { events.push_back("FocusPreviewLog"); }
    void RestoreApplication() override { events.push_back("RestoreApplication"); }
    void SetProceedVisible(bool visible) override { events.push_back(visible ? "ShowProceed" : "HideProceed"); }
    void FocusUserIdType() override { events.push_back("FocusUserIdType"); }
    void FocusUserId() override { events.push_back("FocusUserId"); }
    void OpenInEditor(const fs::path& file) override { events.push_back("Open " + file.filename().string()); }

    class Progress : public ProgressWindow {
    public:
        explicit Progress(Lines& events) : events_(events) {}
        ~Progress() override { events_.push_back("Destroy"); }
        void SetCaption(const std::string& caption) override { events_.push_back("Caption " + caption); }
        void SetLabelText(const std::string& text) override { events_.push_back("Label " + text); }
        void SetPosition(const std::int32_t& at) override { events_.push_back("Position " + std::to_string(at)); }
        void SetStep(std::int32_t step) override { events_.push_back("Step size " + std::to_string(step)); }
        void Show() override { events_.push_back("Show"); }
        void Repaint() override { events_.push_back("Repaint"); }
        void Step() override { events_.push_back("Step"); }

    private:
        Lines& events_;
    };
};

}  // namespace iras::testing
