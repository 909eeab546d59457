// The IR8A header record: who the employer is, for which basis year, and
// whether the batch is an Original or an Amendment; and the checks IRAS makes
// on the employer before it accepts an original file.
#include "platform/common/CommonLibrary.h"
#include "submission/ir8a/IR8ALayout.h"
#include "submission/ir8a/RIR8AeSubmission.h"

namespace iras {

void RIR8AeSubmission::PrepareIR8AHeader() {
    if (!Params.check) return;
    namespace h = ir8a::header;
    BStringOutput& out = *Output;
    Put(out, h::kRecordType, "0");
    // For an Amendment the employer was not checked: a code that locates no
    // keyword takes the row the keyword query stands on.
    YEKeywordRecLocate(EmployerText("EmployerSource"));
    Put(out, h::kSource, _CStrToInt(KeywordProperty("YEProperty3")));
    Put(out, h::kBasisYear, BasisYear);
    Put(out, h::kPaymentType, "08");
    YEKeywordRecLocate(EmployerText("PayerID"));
    Put(out, h::kOrganisationIdType, KeywordProperty("YEProperty1"));
    PutEmployerHeaderFields();
    Put(out, h::kDivisionBranch, EmployerText("DivisionBranch"));
    Put(out, h::kFormName, "IR8A");
    Put(out, h::kFiller, "");
}

int RIR8AeSubmission::IR8AHeaderValidation() {
    static const EmployerHeaderRules rules{
        "             IR8A HEADER VALIDATION             ",
        {"Validating Source: ", "1 = Mindef", "4 = Government Department", "5 = Statutory Board",
         "6 = Private Sector", "9 = Others"},
        {},
        {"Validating Organization ID Type: ", "7 = UEN", "8 = UEN - Local", "A = ASGD", "I = ITR",
         "C = CRN", "M = MCST", "G = GSTN", "U = UENO"},
        "Invalid Organization ID No. cannot be blank.",
    };
    return ValidateEmployerHeader(rules);
}

}  // namespace iras
