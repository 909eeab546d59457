// The IR8A job as a whole: its settings, its two passes (run by the shared
// drivers), the texts by which its logs and files are known.
#include "submission/ir8a/RIR8AeSubmission.h"

#include <utility>

namespace iras {

namespace {

JobTexts IR8ATexts(bool supplementary) {
    JobTexts texts;
    texts.validateTitle = supplementary ? "   VALIDATING SUPPLEMENTARY IR8A FILE           "
                                        : "     VALIDATING CURRENT IR8A FILE               ";
    texts.headerValidateTitle = "            VALIDATING IR8A HEADER              ";
    texts.detailValidateTitle = "            VALIDATING IR8A DETAILS             ";
    texts.processTitle = supplementary ? "   PROCESSING SUPPLEMENTARY IR8A FILE           "
                                       : "     PROCESSING CURRENT IR8A FILE               ";
    texts.headerTitle = "            PROCESSING IR8A HEADER              ";
    texts.detailTitle = "            PROCESSING IR8A DETAILS             ";
    texts.trailerTitle = "            PROCESSING IR8A TRAILER             ";
    texts.fileStepTitle = "       IR8A FILE GENERATION                     ";
    texts.validationHeaderErrorsLabel = "Total No. of Errors in IR8A Header             : ";
    texts.generationHeaderErrorsLabel = "Total No. of Errors in IR8A Header             : ";
    texts.employeeFailedSuffix = " is not successfully validated.";
    texts.cancelledMessage = "IR8A File is cancelled.";
    return texts;
}

}  // namespace

RIR8AeSubmission::RIR8AeSubmission(BQueryViewTable* context, IRASSubmissionParameters params,
                                   std::string runFolder, std::string copyFolder)
    : RYESubmissionJob(context, std::move(params), std::move(runFolder), std::move(copyFolder)) {}

RIR8AeSubmission::~RIR8AeSubmission() = default;

void RIR8AeSubmission::SetIR8AType(const std::string& type) { IR8AType = type; }

int RIR8AeSubmission::ValidateIR8AFile() { return RunValidation(); }
int RIR8AeSubmission::ProcessIR8AeSubmission() { return RunGeneration(); }

const JobTexts& RIR8AeSubmission::Texts() const {
    static const JobTexts current = IR8ATexts(false);
    static const JobTexts supplementary = IR8ATexts(true);
    return Supplementary() ? supplementary : current;
}

std::string RIR8AeSubmission::FileName() const {
    return std::string(Supplementary() ? "SUP_Submission(" : "CUR_Submission(") +
           (Params.original ? "O" : "A") + ").txt";
}

// The engine knows both IR8A files under the current return's form type.
std::string RIR8AeSubmission::DirectSubmitFormType() const { return "CurIR8A"; }

std::string RIR8AeSubmission::SummaryFileName() const {
    return IR8AType == "CurIR8A" ? "IRASSummaryFile" : "";
}

}  // namespace iras
