// What the session form asks of the desktop, behind one interface so that a
// test can script it: message boxes and Yes/No questions (the run's
// RunDialogs), the folder dialog of the "File Directory", the save dialog of
// a single return's file, and opening a saved log in the desktop's text
// editor. QtFormDialogs is the product's: Qt dialogs and QDesktopServices.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include <QPointer>
#include <QWidget>

#include "apps/run/RunInterfaces.h"

namespace iras {

class FormDialogs : public RunDialogs {
public:
    // The folder dialog: the chosen folder, or nothing when cancelled.
    virtual std::optional<std::string> ChooseFolder(const std::string& title,
                                                    const std::string& startFolder) = 0;
    // The save dialog, starting on proposedPath: the chosen file, or nothing.
    virtual std::optional<std::string> AskSavePath(const std::string& proposedPath) = 0;
    // Opens a saved log in the desktop's text editor, without waiting for it.
    virtual void OpenInEditor(const std::filesystem::path& file) = 0;
};

class QtFormDialogs : public FormDialogs {
public:
    explicit QtFormDialogs(QWidget* parent = nullptr) : parent_(parent) {}
    // The window the dialogs are centred on (the session form once it exists).
    void SetParent(QWidget* parent) { parent_ = parent; }

    void Show(MessageKind kind, const std::string& text) override;
    bool Confirm(const std::string& question) override;
    std::optional<std::string> ChooseFolder(const std::string& title, const std::string& startFolder) override;
    std::optional<std::string> AskSavePath(const std::string& proposedPath) override;
    void OpenInEditor(const std::filesystem::path& file) override;

private:
    QPointer<QWidget> parent_;
};

}  // namespace iras
