// The Appendix 8B header and trailer records and the summary of the file:
// who the employer is and for which basis year; the record count and the 26
// totals that let IRAS check the file against its detail records; and the
// lines the user keeps of what was sent.
#include <cstdio>

#include "platform/common/CommonLibrary.h"
#include "submission/common/AmountFields.h"
#include "submission/common/RYESubmissionCommon.h"
#include "submission/a8b/A8BLayout.h"
#include "submission/a8b/A8BSections.h"
#include "submission/a8b/RA8BeSubmission.h"

namespace iras {

void RA8BeSubmission::PrepareA8BHeader() {
    if (!Params.check) return;
    namespace h = a8b::header;
    BStringOutput& out = *Output;
    Put(out, h::kRecordType, "0");
    // A code that locates no keyword (an unchecked Amendment) stays blank.
    if (YEKeywordRecLocate(EmployerText("EmployerSource"))) {
        Put(out, h::kSource, _CStrToInt(KeywordProperty("YEProperty3")));
    } else {
        Put(out, h::kSource, "");
    }
    Put(out, h::kBasisYear, BasisYear);
    Put(out, h::kPaymentType, "13");
    Put(out, h::kOrganisationIdType,
        YEKeywordRecLocate(EmployerText("PayerID")) ? KeywordProperty("YEProperty1") : "");
    PutEmployerHeaderFields();
    PutDateOrBlank(out, h::kIncorporation, DateOf(EmployerQuery, "DateIncorporation"));
    Put(out, h::kDivisionBranch, EmployerText("DivisionBranch"));
    Put(out, h::kFileType, "A8B");
    Put(out, h::kFiller, "");
}

int RA8BeSubmission::A8BHeaderValidation() {
    // Only employers of the private sector and "others" file Appendix 8B.
    static const EmployerHeaderRules rules{
        "A8B HEADER VALIDATION",
        {"Validating Source: ", "6 = Private Sector", "9 = Others"},
        {"PrivateSector", "SourceOthers"},
        {"Validating Organization ID Type: ", "7 = ROB No.", "8 = ROC No.", "A = ASGD", "I = ITR", "C = CRN",
         "M = MCST", "G = GSTN", "U = UENO"},
        "Invalid Organization ID No. Organization ID No. cannot be blank.",
    };
    return ValidateEmployerHeader(rules);
}

void RA8BeSubmission::PrepareA8BTrailer() {
    if (!Params.check) return;
    namespace t = a8b::trailer;
    BStringOutput& out = *Output;
    Put(out, t::kRecordType, "2");
    Put(out, t::kRecordCount, RecordsSucceeded);
    for (int i = 0; i < t::kTotals.count; ++i) {
        const double total = FileTotals[static_cast<std::size_t>(i)];
        std::string field(static_cast<std::size_t>(t::kTotal.width), '0');
        if (total != 0.0) {
            const auto encoded = AmountField(total, true, true, 2, t::kTotal.width);
            if (encoded) {
                field = *encoded;
            } else {
                // The sum of the records is beyond the trailer's places: the
                // file cannot be made correctly.
                char value[64];
                std::snprintf(value, sizeof value, "%.2f", total);
                WriteAllMemo(std::string("A trailer total of ") + value + " is too large for the A8B record.");
                RecordFault = true;
                field.clear();
            }
        }
        Put(out, t::kTotals.Field(i, t::kTotal), field);
    }
    Put(out, t::kFiller, "");
}

void RA8BeSubmission::GenerateA8BSummaryTextFile(StringList& summary) {
    // IRAS matches S10(1)(b) with the gains from plans after the cut-off and
    // S10(1)(g) with the amount not qualifying for exemption before it.
    const auto money = [](const std::string& label, double total) {
        return label + "$ " + FormatThousandsAndCents(total);  // "0.00" for none
    };
    const std::size_t grand = a8b::kGrandFileTotalOffset;

    AppendSummaryBanner(summary, "SUMMARY OF FILE - Appendix 8B    ");
    summary.push_back("File Name:         " + OutputFilePath);
    YEKeywordRecLocate(EmployerText("PayerID"));
    summary.push_back("Organisation ID:   " + EmployerText("TaxRefNo"));
    summary.push_back("Organisation Name: " + EmployerText("EmployerName"));
    summary.push_back("Form Type:         A8B");
    summary.push_back("No of Records:     " + std::to_string(RecordsSucceeded));
    summary.push_back("Basis Year:        " + std::to_string(BasisYear));
    summary.push_back(std::string("Batch Indicator:   ") + (Params.original ? "O" : "A"));
    summary.push_back(money("Total Gross Amount Of gains - S10(1)(b): ", FileTotals[grand + 2]));
    summary.push_back(money("Total Gross Amount Of gains - S10(1)(g): ", FileTotals[grand + 1]));
    summary.push_back("");
    summary.push_back("");
}

}  // namespace iras
