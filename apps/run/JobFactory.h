// Which return job a run builds for a file type. The run controller asks a
// JobFactory and drives what it gets through RSubmissionJob only, so a test can
// hand it fake jobs and each return that joins later is one more entry in the
// real factory's table.
#pragma once

#include <memory>
#include <string>

#include "apps/run/FileType.h"
#include "platform/host/BQueryViewTable.h"
#include "submission/common/IRASSubmissionParameters.h"
#include "submission/common/SubmissionJob.h"
#include "submission/ir8s/IR8SOptions.h"

namespace iras {

// Everything a job is built with: job(session, parameters, run folder, copy
// folder) plus the settings the form makes for its type.
struct JobSetup {
    BQueryViewTable* session = nullptr;  // not owned
    IRASSubmissionParameters params;
    std::string runFolder;
    std::string copyFolder;  // "" in a run of one return; the "File Directory" in the "All" run
    int basisYear = 0;       // the "Basis Year" as the list shows it
    IR8SOptions ir8s;
};

class JobFactory {
public:
    virtual ~JobFactory() = default;
    // False for a return that this version cannot produce.
    virtual bool Available(FileType type) const = 0;
    // The job of one return (never All), with its type's settings made;
    // nullptr when the return is not available.
    virtual std::unique_ptr<RSubmissionJob> Create(FileType type, const JobSetup& setup) = 0;
};

// The returns of this version: both IR8A returns and IR8S. Appendix 8A and
// Appendix 8B join as their jobs are written.
class ReturnJobFactory : public JobFactory {
public:
    bool Available(FileType type) const override;
    std::unique_ptr<RSubmissionJob> Create(FileType type, const JobSetup& setup) override;
};

// "The IR8S return is not available in this version of the module."
std::string NotAvailableMessage(FileType type);

}  // namespace iras
