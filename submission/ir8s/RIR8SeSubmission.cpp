// The IR8S job as a whole: its two passes (run by the shared drivers), the
// texts and the shape by which its logs are known, and how the header's
// verdict decides whether a header is written.
#include "submission/ir8s/RIR8SeSubmission.h"

#include <utility>

namespace iras {

namespace {

const JobTexts kIR8STexts{
    .validateTitle = "          VALIDATING IR8S FILE                  ",
    .headerValidateTitle = "            VALIDATING IR8S HEADER              ",
    .detailValidateTitle = "            VALIDATING IR8S DETAILS             ",
    .processTitle = "          PROCESSING IR8S FILE                  ",
    .headerTitle = "            PROCESSING IR8S HEADER              ",
    .detailTitle = "            PROCESSING IR8S DETAILS             ",
    .trailerTitle = "",  // no trailer record
    .fileStepTitle = "       IR8S FILE GENERATION                     ",
    .validationHeaderErrorsLabel = "Total No. of Errors in IR8S Header             : ",
    .generationHeaderErrorsLabel = "Total No. of Errors in IR8S Header             : ",
    .employeeFailedSuffix = " is not successfully processed.",
    .cancelledMessage = "IR8S File is cancelled.",
};

// The IR8S validation log as its users know it: the start time between blank
// lines, no details banner when nobody is listed, each failing employee's
// findings straight after its line, the totals and the end time without
// blank lines around them.
const JobLogShape kIR8SLogShape{
    .blankLinesAroundStart = true,
    .detailBannerWithoutEmployees = false,
    .blankLineBeforeHeaderErrors = false,
    .blankLinesAroundEmployee = false,
    .blankLineAfterTotals = false,
    .blankLinesAroundEnd = false,
    .blankLinesAroundViewFailure = true,
};

}  // namespace

RIR8SeSubmission::RIR8SeSubmission(BQueryViewTable* context, IRASSubmissionParameters params,
                                   std::string runFolder, std::string copyFolder)
    : RYESubmissionJob(context, std::move(params), std::move(runFolder), std::move(copyFolder)) {}

RIR8SeSubmission::~RIR8SeSubmission() = default;

int RIR8SeSubmission::ValidateIR8SFile() { return RunValidation(); }
int RIR8SeSubmission::ProcessIR8SeSubmission() { return RunGeneration(); }

const JobTexts& RIR8SeSubmission::Texts() const { return kIR8STexts; }
const JobLogShape& RIR8SeSubmission::LogShape() const { return kIR8SLogShape; }

int RIR8SeSubmission::HeaderValidation() {
    HeaderValid = IR8SHeaderValidation();
    return *HeaderValid ? 1 : 0;
}

// The employer of an Original is checked before its header is written. The
// validation pass has normally done so already; its verdict is kept, so the
// generation pass neither checks twice nor writes a header it refused. A
// header refused here leaves the file unmade.
void RIR8SeSubmission::PrepareHeader() {
    if (PrepareIR8SHeader()) return;
    WriteAllMemo("The IR8S header is not written: the employer's details fail IRAS's checks.");
    RecordFault = true;
}

}  // namespace iras
