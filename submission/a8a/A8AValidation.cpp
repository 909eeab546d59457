// The checks IRAS makes on each employee of an original Appendix 8A before
// it takes the file: identity, the period of occupation of the quarters and
// its days, the OHQ status, the number of employees sharing the quarters,
// and a total benefit in kind. Every rule is checked, so that one run tells
// the user everything to correct for the employee.
#include <string>

#include "platform/common/CommonLibrary.h"
#include "platform/common/Text.h"
#include "submission/a8a/RA8AeSubmission.h"

namespace iras {

int RA8AeSubmission::A8ADetailsValidation() {
    ErrorList.clear();
    WriteInternalBanner("             A8A DETAILS VALIDATION             ");
    const auto group = [this](const char* line) {
        WriteInternalMemo("");
        WriteInternalMemo(line);
        WriteInternalMemo("");
    };
    const auto fail = [this](const char* message) { ErrorList.push_back(message); };

    group("Validating ID Type");
    const bool idTypeKnown = YEKeywordRecLocate(Text("PayeeIDType"));
    if (!idTypeKnown) fail("Invalid ID Type.");

    // The ID number and the name are tested as stored: IRAS takes a value
    // of blanks here as given.
    if (idTypeKnown) {
        group("Validating ID Nos");
        if (RawText("TaxNo").empty()) fail("Invalid ID No. ID No cannot be blank.");
    }

    group("Validating Name - Line 1");
    if (RawText("EEName1").empty()) fail("Invalid Name - Line 1. Name - Line 1 cannot be blank.");

    group("Validating Period of Occupation");
    const Date from = DateOf("OccupationFrom");
    const Date to = DateOf("OccupationTo");
    if (!_IsDateNull(from) && from.year != BasisYear) {
        fail("Invalid Period of Occupation From Date. Date must be equal to the basis year in the header "
             "record.");
    }
    if (!_IsDateNull(to) && to.year != BasisYear) {
        fail("Invalid Period of Occupation To Date. Date must be equal to the basis year in the header "
             "record.");
    }
    if (!_IsDateNull(from) && !_IsDateNull(to) && to < from) {
        fail("Invalid Period of Occupation From Date. From Date must be earlier than or equal to To Date.");
    }

    const std::int64_t days = Integer("OccupationDays");
    if (days > 366) {
        fail("Invalid No. of Days. No. of Days cannot be more than 366.");
    } else if (days < 0) {
        fail("Invalid No. of Days. No. of Days cannot be a negative value.");
    }

    // Upper case only: IRAS reads the status as given.
    if (!IsOneOf(Text("OHQStatus"), {"", "Y", "N"})) fail("Invalid OHQ Status.");

    const std::int64_t sharing = Integer("NoOfEESharingQtr");
    if (sharing == 0) {
        fail("Invalid No. of Employees Sharing the Quarter. No. of Employees Sharing the Quarter cannot be "
             "zero.");
    }
    if (sharing < 0) {
        fail("Invalid No. of Employees Sharing the Quarter. No. of Employees Sharing the Quarter cannot be a "
             "negative value.");
    }

    if (Amount("TotalBenefitInKind") == 0.0) {
        fail("IRAS file submission will not accept zero amount for Benefit-In-Kind. Please delete the "
             "Appendix 8A record or enter the amount.");
    }
    return ErrorList.empty() ? 1 : 0;
}

}  // namespace iras
