// The host's session: who is working (user id, workstation address) and on
// which year-end year. The reference host and the command-line tool fill it
// from their settings. It also hands out the host's submission engine, so
// that a job constructed on the session gets the engine the host chose (the
// reference engine unless a host or a test sets another factory).
#pragma once

#include <memory>
#include <string>

#include "platform/host/BYESubmissionEngine.h"

namespace iras {

struct SessionSettings {
    std::string userId;
    std::string ipAddress = "127.0.0.1";
    int yeYear = 0;
};

class BQueryViewTable {
public:
    explicit BQueryViewTable(SessionSettings settings);

    int iGetYEYear() const { return settings_.yeYear; }
    std::string sGetUserID() const { return settings_.userId; }
    std::string sGetIPAddress() const { return settings_.ipAddress; }

    void SetEngineFactory(EngineFactory factory);
    std::unique_ptr<BYESubmissionEngine> CreateSubmissionEngine();

    // Whether the host offers its verification report before an Amendment
    // is made, so that the user can view it before answering whether they
    // have. Off unless the host says so.
    void SetVerificationReportOffered(bool offered) { verificationReportOffered_ = offered; }
    bool VerificationReportOffered() const { return verificationReportOffered_; }

private:
    SessionSettings settings_;
    EngineFactory engineFactory_;
    bool verificationReportOffered_ = false;
};

}  // namespace iras
