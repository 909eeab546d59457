// The IR8S header record (who the employer is, for which basis year, Original
// or Amendment), the employer checks IRAS makes before it accepts an original
// file, and the summary the user keeps of what was sent.
#include "platform/common/CommonLibrary.h"
#include "platform/host/HostFunctions.h"
#include "submission/ir8s/IR8SLayout.h"
#include "submission/ir8s/RIR8SeSubmission.h"

namespace iras {

bool RIR8SeSubmission::IR8SHeaderValidation() {
    static const EmployerHeaderRules ir8sEmployerRules{
        .bannerTitle = "             IR8S HEADER VALIDATION             ",
        .sourceLines = {"Validating Source: ", "1 = Mindef", "4 = Government Department",
                        "5 = Statutory Board", "6 = Private Sector", "9 = Others"},
        .allowedSources = {},
        .payerIdLines = {"Validating Organization ID Type: ", "7 = UEN", "8 = UEN - Local", "A = ASGD",
                         "I = ITR", "C = CRN", "M = MCST", "G = GSTN", "U = UENO"},
        .taxRefNoMessage = "Invalid Organization ID No. Organization ID No. cannot be blank.",
    };
    return ValidateEmployerHeader(ir8sEmployerRules) != 0;
}

// An Amendment header is written unchecked. An Original's is written only
// when the employer passed; the verdict of this job's validation pass is
// used when there is one, so the checks are not logged twice.
bool RIR8SeSubmission::PrepareIR8SHeader() {
    if (Params.original) {
        if (!HeaderValid) HeaderValid = IR8SHeaderValidation();
        if (!*HeaderValid) return false;
    }
    if (!Params.check) return true;

    PutEmployerHeader(ir8s::kHeader, "IR8S");
    return true;
}

void RIR8SeSubmission::GenerateIR8SSummaryTextFile(StringList& summary) {
    const std::string stars(48, '*');
    summary.push_back(stars);
    summary.push_back("SUMMARY OF FILE - IR8S    ");
    summary.push_back(stars);
    AppendFileSummaryLines(summary);
}

}  // namespace iras
