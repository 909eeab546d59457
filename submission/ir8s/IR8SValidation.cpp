// The checks IRAS makes on each employee of an original IR8S before it takes
// the file: identity, the number of Section A and Section B rows, the yes/no
// indicators, the full-contribution approval of a recent permanent resident,
// and the amount and dates of every additional-wage payment. Every rule is
// checked, so that one run tells the user everything to correct.
#include <cstdio>
#include <initializer_list>

#include "platform/common/CommonLibrary.h"
#include "platform/common/Text.h"
#include "submission/ir8s/RIR8SeSubmission.h"

namespace iras {

namespace {

// "dd.mm.yyyy", the form IRAS's message gives the cut-off date in.
std::string DottedDate(const Date& date) {
    char text[48];
    std::snprintf(text, sizeof text, "%02d.%02d.%04d", date.day, date.month, date.year);
    return text;
}

}  // namespace

bool RIR8SeSubmission::IR8SDetailsValidation() {
    ErrorList.clear();
    WriteInternalBanner("             IR8S DETAILS VALIDATION            ");
    const auto debug = [this](std::initializer_list<const char*> lines) {
        for (const char* line : lines) WriteInternalMemo(line);
    };
    const auto fail = [this](const std::string& message) { ErrorList.push_back(message); };

    debug({"Validating ID Type"});
    if (!YEKeywordRecLocate(Text("PayeeIDType"))) fail("Invalid ID Type.");
    debug({"Validating ID Nos"});
    if (Text("TaxNo").empty()) fail("Invalid ID No. ID No cannot be blank.");
    debug({"Validating Name - Line 1"});
    if (Text("EEName1").empty()) fail("Invalid Name - Line 1. Name - Line 1 cannot be blank.");

    // Twelve months and the total row: the message counts the months only.
    if (SectionAQuery.RecordCount() > 13) {
        fail("Invalid Section A - Details of monthly wages and contributions. Section A can only have a "
             "maximum of 12 records.");
    }

    debug({"Validating Indicator for CPF contributions in respect of overseas posting which is obligatory by "
           "contract of employment",
           "Y = Obligatory", "N = Not Obligatory"});
    if (!IsOneOf(Text("CPFOverseasObligatory"), {"", "Y", "N"})) {
        fail("Invalid Indicator for CPF contributions in respect of overseas posting which is obligatory by "
             "contract of employment.");
    }

    debug({"Validating Approval that is obtained from CPF Board to make full contribution",
           "Y = Approval has been obtained from CPF Board to make full contribution",
           "N = Approval has not been obtained from CPF Board to make full contribution"});
    const std::string approval = Text("ApprovalForFullCPF");
    if (!IsOneOf(approval, {"", "Y", "N"})) {
        fail("Invalid Approval that is obtained from CPF Board to make full contribution.");
    }
    // A permanent resident of the last two years contributes at graduated
    // rates unless the CPF Board approved full ones: IRAS must be told which.
    const Date cutOff{BasisYear - 2, 1, 1};
    if (approval.empty() && !(DateOf("DateOfPRGranted") < cutOff)) {
        fail("Approval indicator must not be blank if Singapore Permanent Resident Status is approved on or "
             "after " + DottedDate(cutOff));
    }

    if (SectionBQuery.RecordCount() > 3) {
        fail("Invalid Section B - Details of refund claimed/to be claimed. Section B can only have a maximum "
             "of 3 records.");
        return ErrorList.empty();
    }

    int occurrence = 1;
    for (SectionBQuery.First(); !SectionBQuery.Eof(); SectionBQuery.Next(), ++occurrence) {
        const std::string n = std::to_string(occurrence);
        WriteInternalMemo("Validating Section B Occurrence " + n);
        const auto failB = [&](const char* text) { fail("Section B Occurrence " + n + text); };
        // Zero as the payroll rounds it; non-zero as any amount at all.
        const double wages = Amount(SectionBQuery, "AddWageAmt");
        const bool zero = _IsZeroValue(wages), amount = wages != 0.0;
        const Date from = DateOf(SectionBQuery, "AddWageFrom");
        const Date to = DateOf(SectionBQuery, "AddWageTo");
        const Date paid = DateOf(SectionBQuery, "AddWagePaidDate");
        const bool hasFrom = !_IsDateNull(from), hasTo = !_IsDateNull(to), hasPaid = !_IsDateNull(paid);

        WriteInternalMemo("  Validating Additional Wages");
        if (zero && (hasFrom || hasTo || hasPaid)) {
            failB(" - Invalid Additional Wages. Additional Wages cannot be zero value.");
        }
        WriteInternalMemo("  Validating Period of Payment for Additional Wages");
        if (!hasFrom && (amount || hasTo || hasPaid)) {
            failB(" - Invalid Period of Payment for Additional Wages From Date. Date cannot be blank.");
        }
        if (hasFrom && from.year != BasisYear) {
            failB(" - Invalid Period of Payment for Additional Wages From Date. Date must be equal to the basis "
                  "year in the header record.");
        }
        if (!hasTo && (amount || hasFrom || hasPaid)) {
            failB(" - Invalid Period of Payment for Additional Wages To Date. Date cannot be blank.");
        }
        if (hasTo && to.year != BasisYear) {
            failB(" - Invalid Period of Payment for Additional Wages To Date. Date must be equal to the basis "
                  "year in the header record.");
        }
        if (hasFrom && hasTo && to < from) {
            failB(" - Invalid Period of Payment for Additional Wages From Date. From Date must be earlier than "
                  "or equal to To Date.");
        }
        WriteInternalMemo("  Validating Date of Payment for Additional Wages");
        if (!hasPaid && (amount || hasFrom || hasTo)) {
            failB(" - Invalid Date of Payment for Additional Wages. Date cannot be blank.");
        }
    }
    return ErrorList.empty();
}

}  // namespace iras
