// The session form's dialogs as Qt shows them. Message titles follow the kind
// of message ("Warning", "Error", "Information", "Confirm"); a question's
// default answer is No, so that Enter never submits or resets by accident.
#include <QDesktopServices>
#include <QFileDialog>
#include <QMessageBox>
#include <QUrl>

#include "frontend/FormDialogs.h"

namespace iras {

void QtFormDialogs::Show(MessageKind kind, const std::string& text) {
    const QString message = QString::fromStdString(text);
    switch (kind) {
        case MessageKind::Warning: QMessageBox::warning(parent_, QStringLiteral("Warning"), message); break;
        case MessageKind::Error: QMessageBox::critical(parent_, QStringLiteral("Error"), message); break;
        case MessageKind::Information:
            QMessageBox::information(parent_, QStringLiteral("Information"), message);
            break;
    }
}

bool QtFormDialogs::Confirm(const std::string& question) {
    return QMessageBox::question(parent_, QStringLiteral("Confirm"), QString::fromStdString(question),
                                 QMessageBox::Yes | QMessageBox::No, QMessageBox::No) == QMessageBox::Yes;
}

std::optional<std::string> QtFormDialogs::ChooseFolder(const std::string& title, const std::string& startFolder) {
    const QString folder = QFileDialog::getExistingDirectory(parent_, QString::fromStdString(title),
                                                             QString::fromStdString(startFolder),
                                                             QFileDialog::ShowDirsOnly);
    if (folder.isEmpty()) return std::nullopt;
    return folder.toStdString();
}

std::optional<std::string> QtFormDialogs::AskSavePath(const std::string& proposedPath) {
    const QString file = QFileDialog::getSaveFileName(parent_, QStringLiteral("Save As"),
                                                      QString::fromStdString(proposedPath),
                                                      QStringLiteral("Text files (*.txt);;All files (*)"));
    if (file.isEmpty()) return std::nullopt;
    return file.toStdString();
}

void QtFormDialogs::OpenInEditor(const std::filesystem::path& file) {
    QDesktopServices::openUrl(QUrl::fromLocalFile(QString::fromStdString(file.string())));
}

}  // namespace iras
