// The Appendix 8B job as a whole: its two passes (run by the shared drivers)
// and the texts by which its logs and files are known.
#include "submission/a8b/RA8BeSubmission.h"

#include <utility>

#include "submission/a8b/A8BSections.h"

namespace iras {


RA8BeSubmission::RA8BeSubmission(BQueryViewTable* context, IRASSubmissionParameters params,
                                 std::string runFolder, std::string copyFolder)
    : RYESubmissionJob(context, std::move(params), std::move(runFolder), std::move(copyFolder)) {}

RA8BeSubmission::~RA8BeSubmission() = default;

int RA8BeSubmission::ValidateA8BFile() { return RunValidation(); }
int RA8BeSubmission::ProcessA8BeSubmission() { return RunGeneration(); }

const JobTexts& RA8BeSubmission::Texts() const {
    // The two header-error labels differ by a blank before the colon, as
    // users know them.
    static const JobTexts texts{
        .validateTitle = "VALIDATING A8B FILE",
        .headerValidateTitle = "VALIDATING A8B HEADER",
        .detailValidateTitle = "VALIDATING A8B DETAILS",
        .processTitle = "PROCESSING A8B FILE",
        .headerTitle = "PROCESSING A8B HEADER",
        .detailTitle = "PROCESSING A8B DETAILS",
        .trailerTitle = "PROCESSING A8B TRAILER",
        .fileStepTitle = "A8B FILE GENERATION",
        .validationHeaderErrorsLabel = "Total No. of Errors in A8B Header             : ",
        .generationHeaderErrorsLabel = "Total No. of Errors in A8B Header              : ",
        .employeeFailedSuffix = " is not successfully validated.",
        .cancelledMessage = "A8B File is cancelled.",
    };
    return texts;
}

int RA8BeSubmission::RecordWidth() const { return a8b::kRecordWidth; }

bool RA8BeSubmission::Overfull(const a8b::Section& section) const {
    return StockOptQueries[static_cast<std::size_t>(section.Index())].RecordCount() > a8b::kRowsPerSection;
}

}  // namespace iras
