// What a run needs from whoever shows it, kept free of any window toolkit: the
// message boxes and Yes/No questions (RunDialogs), the progress window shown
// while a return is processed (ProgressWindow), and the few effects a run has
// on the form around it (RunView: the log page, the proceed button, focus).
// The session form backs them with widgets, the command-line tool with the
// terminal, tests with scripted answers.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

namespace iras {

enum class MessageKind { Warning, Error, Information };

// Modal messages with an OK button, and confirmations with Yes and No.
class RunDialogs {
public:
    virtual ~RunDialogs() = default;
    virtual void Show(MessageKind kind, const std::string& text) = 0;
    virtual bool Confirm(const std::string& question) = 0;  // true for Yes
};

// The small window with one line of text over a bar of 0 to 100. The run
// drives it in a fixed order: caption, label, position, step, show, repaint,
// one step, then (after the return is processed) position 100; destroying the
// object closes the window.
class ProgressWindow {
public:
    virtual ~ProgressWindow() = default;
    virtual void SetCaption(const std::string& caption) = 0;
    virtual void SetLabelText(const std::string& text) = 0;
    virtual void SetPosition(const std::int32_t& position) = 0;
    virtual void SetStep(std::int32_t step) = 0;
    virtual void Show() = 0;
    virtual void Repaint() = 0;
    virtual void Step() = 0;
};

// Makes a progress window for one processing; an empty factory shows none.
using ProgressFactory = std::function<std::unique_ptr<ProgressWindow>()>;

// The form around the runs. Every hook does nothing unless a front end says
// otherwise, so a batch run needs none of them.
class RunView {
public:
    virtual ~RunView() = default;
    virtual void ShowLogPage() {}                   // switch to the "Log File" page
    virtual bool LogPageShowing() const { return false; }
    virtual void FocusPreviewLog() {}               // "Preview &Log"
    virtual void RestoreApplication() {}            // bring the application window back
    virtual void SetProceedVisible(bool /*visible*/) {}  // "Proceed with Direct Submission"
    virtual void FocusUserIdType() {}
    virtual void FocusUserId() {}
    virtual void OpenInEditor(const std::filesystem::path& /*file*/) {}  // a saved log or report
};

}  // namespace iras
