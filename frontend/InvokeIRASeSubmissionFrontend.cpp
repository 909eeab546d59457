// The module's exported entry. Nothing may cross the C boundary but the
// answer: every exception is caught here and the host gets "". A host
// without a Qt application of its own gets one for the time of the call.
#include "frontend/InvokeIRASeSubmissionFrontend.h"

#include <QApplication>
#include <cstdio>
#include <memory>
#include <string>

#include "frontend/SessionEntry.h"

extern "C" IRAS_FRONTEND_ENTRY const char* InvokeIRASeSubmissionFrontend(iras::BQueryViewTable* session,
                                                                          const char* mode) {
    static thread_local std::string answer;
    answer.clear();
    try {
        if (session == nullptr) {
            std::fputs("InvokeIRASeSubmissionFrontend: the host gave no session.\n", stderr);
            return answer.c_str();
        }
        static int argc = 1;
        static char name[] = "iras-yearend-module";
        static char* argv[] = {name, nullptr};
        std::unique_ptr<QApplication> ownApplication;
        if (QCoreApplication::instance() == nullptr) {
            ownApplication = std::make_unique<QApplication>(argc, argv);
        } else if (qobject_cast<QApplication*>(QCoreApplication::instance()) == nullptr) {
            std::fputs("InvokeIRASeSubmissionFrontend: the host runs without a window system "
                       "(a QCoreApplication); the form cannot be shown.\n", stderr);
            return answer.c_str();
        }
        answer = iras::OpenSessionForm(*session, mode != nullptr ? mode : "");
    } catch (const std::exception& error) {
        std::fprintf(stderr, "InvokeIRASeSubmissionFrontend: %s\n", error.what());
        answer.clear();
    } catch (...) {
        std::fputs("InvokeIRASeSubmissionFrontend: an unexpected failure ended the session.\n", stderr);
        answer.clear();
    }
    return answer.c_str();
}
