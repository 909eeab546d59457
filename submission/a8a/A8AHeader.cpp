// The Appendix 8A header record: who the employer is, for which basis year,
// and whether the batch is an Original or an Amendment (the employer's fields
// every return shares, at the appendix's positions); and the checks IRAS
// makes on the employer before it accepts an original file.
#include "submission/a8a/A8ALayout.h"
#include "submission/a8a/RA8AeSubmission.h"

namespace iras {

void RA8AeSubmission::PrepareA8AHeader() {
    if (!Params.check) return;
    PutEmployerHeader(a8a::kHeader, "A8A");
}

// IRAS tests the organisation id, the authorised person and the employer
// name of an Appendix 8A for the empty text as stored: a value of blanks
// passes them (telephone and e-mail are tested trimmed).
int RA8AeSubmission::A8AHeaderValidation() {
    static const EmployerHeaderRules rules{
        "              A8A HEADER VALIDATION             ",
        {"Validating Source: ", "1 = Mindef", "4 = Government Department", "5 = Statutory Board",
         "6 = Private Sector", "9 = Others"},
        {},
        {"Validating Organization ID Type:", "7 = UEN", "8 = UEN - Local", "A = ASGD", "I = ITR", "C = CRN",
         "M = MCST", "G = GSTN", "U = UENO"},
        "Invalid Organization ID No. Organization ID No. cannot be blank.",
        /*untrimmedBlankTests=*/true,
        /*blankLinesAroundHeadings=*/true,
    };
    return ValidateEmployerHeader(rules);
}

}  // namespace iras
