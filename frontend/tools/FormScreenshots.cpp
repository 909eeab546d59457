// iras-form-screenshots: takes the README's pictures of the session form on a
// real display (run under Xvfb by scripts/screenshots.sh): generation mode,
// direct-submission mode, and the "Log File" page after a "&Generate" run on
// the sample database. The windows are read back from the X server, so the
// pictures show what the clerk's screen shows.
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QThread>
#include <QTimer>

#include <filesystem>
#include <iostream>

#include "frontend/TIRASeSubmissionFrontend_Form.h"
#include "platform/database/Query.h"
#include "platform/host/HostFunctions.h"

namespace fs = std::filesystem;
using namespace iras;

namespace {

void Settle(int milliseconds) {
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < milliseconds) {
        QApplication::processEvents(QEventLoop::AllEvents, 50);
        QThread::msleep(10);
    }
}

bool Take(QWidget& form, const fs::path& file) {
    form.show();
    form.raise();
    Settle(700);
    const QPixmap picture = form.screen()->grabWindow(form.winId());
    if (picture.isNull() || !picture.save(QString::fromStdString(file.string()))) {
        std::cerr << "iras-form-screenshots: cannot take " << file << "\n";
        return false;
    }
    std::cout << file.string() << " " << picture.width() << "x" << picture.height() << "\n";
    return true;
}

}  // namespace

int main(int argc, char* argv[]) {
    if (argc != 4) {
        std::cerr << "Usage: iras-form-screenshots DATABASE WORK-FOLDER PICTURE-FOLDER\n";
        return 2;
    }
    QApplication application(argc, argv);
    const fs::path work = argv[2];
    const fs::path pictures = argv[3];
    fs::create_directories(work / "returns");
    db::ConnectionRegistry::Register("kovadb", {"sqlite", argv[1], false});
    SetHRPCurrentDirectory(work);
    BQueryViewTable session(SessionSettings{"ADMIN", "127.0.0.1", 2024});
    SessionFormServices services;
    services.desktopFolder = (work / "returns").string();

    bool ok = true;
    {
        TIRASeSubmissionFrontend_Form form(nullptr, "", &session, services);
        ok &= Take(form, pictures / "form-generation.png");
    }
    {
        TIRASeSubmissionFrontend_Form form(nullptr, "Direct Submit", &session, services);
        auto* types = form.findChild<QComboBox*>(QStringLiteral("SubmissionUserIDType_wwDBLookupCombo"));
        types->setCurrentIndex(types->findData(QStringLiteral("PERSONAL")));
        form.findChild<QLineEdit*>(QStringLiteral("SubmissionUserID_wwDBEdit"))->setText(QStringLiteral("S1234567D"));
        ok &= Take(form, pictures / "form-direct-submission.png");
    }
    {
        TIRASeSubmissionFrontend_Form form(nullptr, "", &session, services);
        form.show();
        Settle(300);
        form.findChild<QPushButton*>(QStringLiteral("Preview_Button"))->click();
        ok &= Take(form, pictures / "form-log-after-run.png");
    }
    return ok ? 0 : 1;
}
