// The Appendix 8B job as a whole: its two passes (run by the shared drivers)
// and the texts by which its logs and files are known.
#include "submission/a8b/RA8BeSubmission.h"

#include <utility>

#include "submission/a8b/A8BLayout.h"

namespace iras {

namespace {

JobTexts A8BTexts() {
    JobTexts texts;
    texts.validateTitle = "VALIDATING A8B FILE";
    texts.headerValidateTitle = "VALIDATING A8B HEADER";
    texts.detailValidateTitle = "VALIDATING A8B DETAILS";
    texts.processTitle = "PROCESSING A8B FILE";
    texts.headerTitle = "PROCESSING A8B HEADER";
    texts.detailTitle = "PROCESSING A8B DETAILS";
    texts.trailerTitle = "PROCESSING A8B TRAILER";
    texts.fileStepTitle = "A8B FILE GENERATION";
    // The two labels differ by a blank before the colon, as users know them.
    texts.validationHeaderErrorsLabel = "Total No. of Errors in A8B Header             : ";
    texts.generationHeaderErrorsLabel = "Total No. of Errors in A8B Header              : ";
    texts.employeeFailedSuffix = " is not successfully validated.";
    texts.cancelledMessage = "A8B File is cancelled.";
    return texts;
}

}  // namespace

RA8BeSubmission::RA8BeSubmission(BQueryViewTable* context, IRASSubmissionParameters params,
                                 std::string runFolder, std::string copyFolder)
    : RYESubmissionJob(context, std::move(params), std::move(runFolder), std::move(copyFolder)) {}

RA8BeSubmission::~RA8BeSubmission() = default;

int RA8BeSubmission::ValidateA8BFile() { return RunValidation(); }
int RA8BeSubmission::ProcessA8BeSubmission() { return RunGeneration(); }

const JobTexts& RA8BeSubmission::Texts() const {
    static const JobTexts texts = A8BTexts();
    return texts;
}

int RA8BeSubmission::RecordWidth() const { return a8b::kRecordWidth; }

}  // namespace iras
