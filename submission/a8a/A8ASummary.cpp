// The Appendix 8A summary: a short plain-text account of the file just
// written (which file, whose, which year, how many records) that the user
// prints or keeps beside it.
#include <string>

#include "submission/a8a/RA8AeSubmission.h"

namespace iras {

void RA8AeSubmission::GenerateA8ASummaryTextFile(StringList& summary) {
    AppendSummaryBanner(summary, "SUMMARY OF FILE - Appendix 8A    ");
    summary.push_back("File Name:         " + OutputFilePath);
    // Without a known organisation id type the number means nothing to IRAS.
    if (YEKeywordRecLocate(EmployerText("PayerID"))) {
        summary.push_back("Organisation ID:   " + EmployerText("TaxRefNo"));
    }
    summary.push_back("Organisation Name: " + EmployerText("EmployerName"));
    summary.push_back("Form Type:         A8A");
    summary.push_back("Basis Year:        " + std::to_string(BasisYear));
    summary.push_back(std::string("Batch Indicator:   ") + (Params.original ? "O" : "A"));
    summary.push_back("No of Records:     " + std::to_string(RecordsSucceeded));
    summary.push_back("");
    summary.push_back("");
}

}  // namespace iras
