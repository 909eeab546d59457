// iras-host: a Qt application playing the payroll host for the module.
#include <QApplication>
#include <cstdlib>
#include <iostream>

#include "apps/host/ReferenceHost.h"

int main(int argc, char* argv[]) {
    const std::vector<std::string> args(argv + 1, argv + argc);
    const iras::ParsedHostOptions parsed = iras::ParseHostOptions(args);
    if (!parsed.options) {
        std::cerr << "iras-host: " << parsed.error << "\nRun \"iras-host --help\" for the options.\n";
        return iras::kHostUsage;
    }
    if (parsed.options->help) {
        std::cout << iras::HostHelpText();
        return iras::kHostSuccess;
    }
    // Qt ends the process when it finds no window system; say so plainly instead.
    if (std::getenv("DISPLAY") == nullptr && std::getenv("WAYLAND_DISPLAY") == nullptr &&
        std::getenv("QT_QPA_PLATFORM") == nullptr) {
        std::cerr << "iras-host: there is no display to show the form on (DISPLAY is not set).\n";
        return iras::kHostNoDisplay;
    }
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("iras-host"));
    return iras::RunReferenceHost(*parsed.options, std::cout, std::cerr);
}
