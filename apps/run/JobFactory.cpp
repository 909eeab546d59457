// The real job factory: one maker per return, in file-type order. A return
// whose job is not written yet has no maker, and the runs report it as not
// available instead of building anything.
#include "apps/run/JobFactory.h"

#include <array>
#include <functional>

#include "submission/a8a/RA8AeSubmission.h"
#include "submission/a8b/RA8BeSubmission.h"
#include "submission/ir8a/RIR8AeSubmission.h"
#include "submission/ir8s/RIR8SeSubmission.h"

namespace iras {

namespace {

using JobMaker = std::function<std::unique_ptr<RSubmissionJob>(const JobSetup&)>;

std::unique_ptr<RSubmissionJob> MakeIR8A(const JobSetup& setup, const std::string& ir8aType) {
    auto job = std::make_unique<RIR8AeSubmission>(setup.session, setup.params, setup.runFolder,
                                                  setup.copyFolder);
    job->SetIR8AType(ir8aType);
    return job;
}

// The form never sets the greater-than-100K and IR8S-indicator switches; its
// three "IR8S Options" set the others.
std::unique_ptr<RSubmissionJob> MakeIR8S(const JobSetup& setup) {
    auto job = std::make_unique<RIR8SeSubmission>(setup.session, setup.params, setup.runFolder,
                                                  setup.copyFolder);
    job->SetGreaterThan100K(false);
    job->SetExcessCPF(setup.ir8s.excessCPF);
    job->SetOverseasCPF(setup.ir8s.overseasCPF);
    job->SetIR8SIndicator(false);
    job->SetPercentOrdWage(setup.ir8s.percentOrdWage);
    return job;
}

const std::array<JobMaker, 5>& Makers() {
    static const std::array<JobMaker, 5> makers = {
        [](const JobSetup& setup) { return MakeIR8A(setup, "CurIR8A"); },
        [](const JobSetup& setup) { return MakeIR8A(setup, "SupIR8A"); },
        MakeIR8S,
        [](const JobSetup& setup) -> std::unique_ptr<RSubmissionJob> {
            return std::make_unique<RA8AeSubmission>(setup.session, setup.params, setup.runFolder,
                                                     setup.copyFolder);
        },
        [](const JobSetup& setup) -> std::unique_ptr<RSubmissionJob> {
            return std::make_unique<RA8BeSubmission>(setup.session, setup.params, setup.runFolder,
                                                     setup.copyFolder);
        },
    };
    return makers;
}

}  // namespace

bool ReturnJobFactory::Available(FileType type) const {
    return type != FileType::All && static_cast<bool>(Makers().at(static_cast<std::size_t>(type)));
}

std::unique_ptr<RSubmissionJob> ReturnJobFactory::Create(FileType type, const JobSetup& setup) {
    if (!Available(type)) return nullptr;
    std::unique_ptr<RSubmissionJob> job = Makers().at(static_cast<std::size_t>(type))(setup);
    // Every return gets the year here, so that no maker can forget it.
    job->SetBasisYear(setup.basisYear);
    return job;
}

std::string NotAvailableMessage(FileType type) {
    return "The " + FileTypeText(type) + " return is not available in this version of the module.";
}

}  // namespace iras
