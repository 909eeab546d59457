// The real job factory: one maker per return, in file-type order. A return
// whose job is not written yet has no maker, and the runs report it as not
// available instead of building anything.
#include "apps/run/JobFactory.h"

#include <array>
#include <functional>

#include "submission/ir8a/RIR8AeSubmission.h"

namespace iras {

namespace {

using JobMaker = std::function<std::unique_ptr<RSubmissionJob>(const JobSetup&)>;

std::unique_ptr<RSubmissionJob> MakeIR8A(const JobSetup& setup, const std::string& ir8aType) {
    auto job = std::make_unique<RIR8AeSubmission>(setup.session, setup.params, setup.runFolder,
                                                  setup.copyFolder);
    job->SetIR8AType(ir8aType);
    return job;
}

const std::array<JobMaker, 5>& Makers() {
    static const std::array<JobMaker, 5> makers = {
        [](const JobSetup& setup) { return MakeIR8A(setup, "CurIR8A"); },
        [](const JobSetup& setup) { return MakeIR8A(setup, "SupIR8A"); },
        JobMaker{},  // IR8S: SetGreaterThan100K(false), SetExcessCPF, SetOverseasCPF,
                     // SetIR8SIndicator(false), SetPercentOrdWage from setup.ir8s
        JobMaker{},  // Appendix 8A
        JobMaker{},  // Appendix 8B
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
