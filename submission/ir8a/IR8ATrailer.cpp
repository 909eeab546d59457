// The IR8A trailer record, which lets IRAS check the file (the number of
// detail records and twelve column totals), and the summary that the user
// keeps of what was sent.
#include <cstdio>

#include "platform/common/CommonLibrary.h"
#include "submission/common/AmountFields.h"
#include "submission/common/RYESubmissionCommon.h"
#include "submission/ir8a/IR8ALayout.h"
#include "submission/ir8a/RIR8AeSubmission.h"

namespace iras {

void RIR8AeSubmission::PrepareIR8ATrailer() {
    if (!Params.check) return;
    namespace t = ir8a::trailer;
    BStringOutput& out = *Output;
    Put(out, t::kRecordType, "2");
    Put(out, t::kRecordCount, RecordsSucceeded);
    for (int i = 0; i < t::kTotals.count; ++i) {
        const double total = TrailerTotals[static_cast<std::size_t>(i)];
        std::string field = "0";
        if (total != 0.0) {
            const auto encoded = AmountField(total, false, true, 0, t::kTotal.width);
            if (encoded) {
                field = *encoded;
            } else {
                // The sum of the records is beyond the 12 places of the
                // trailer: the file cannot be made correctly.
                char value[64];
                std::snprintf(value, sizeof value, "%.0f", total);
                WriteAllMemo(std::string("A trailer total of ") + value +
                             " is too large for the IR8A record.");
                RecordFault = true;
                field = "";
            }
        }
        Put(out, t::kTotals.Field(i, t::kTotal), field);
    }
    Put(out, t::kFiller, "");
}

void RIR8AeSubmission::GenerateSummaryTextFile(StringList& summary) {
    // Every line but the salary shows a zero total as "$ 0"; the salary line
    // ends in "$ " then, as the users' summaries always have.
    const auto money = [](const std::string& label, double total) {
        const std::string grouped = FormatThousands(total);
        return label + "$ " + (grouped.empty() ? "0" : grouped);
    };

    AppendSummaryBanner(summary, Supplementary() ? "SUMMARY OF FILE - Supplementary IR8A    "
                                                 : "SUMMARY OF FILE - Current IR8A    ");
    summary.push_back("File Name:         " + OutputFilePath);
    summary.push_back("Organisation Name: " + EmployerText("EmployerName"));
    YEKeywordRecLocate(EmployerText("PayerID"));
    summary.push_back("Organisation ID:   " + EmployerText("TaxRefNo"));
    summary.push_back("Form Type:         IR8A");
    summary.push_back(std::string("Batch Indicator:   ") + (Params.original ? "O" : "A"));
    summary.push_back("Basis Year:        " + std::to_string(BasisYear));
    summary.push_back("No of Records:     " + std::to_string(RecordsSucceeded));
    summary.push_back("");
    summary.push_back("--------------------- INCOME -------------------");
    summary.push_back("Salary:            $ " + FormatThousands(TrailerTotals[1]));
    summary.push_back(money("Bonus:             ", TrailerTotals[2]));
    summary.push_back(money("Director's Fee:    ", TrailerTotals[3]));
    summary.push_back(money("Others:            ", TrailerTotals[4]));
    summary.push_back("");
    summary.push_back("------------------- DEDUCTION ------------------");
    summary.push_back(money("CPF/Designated Pension or Provident Fund: ", TrailerTotals[9]));
    summary.push_back(money("Donation:                                 ", TrailerTotals[8]));
    summary.push_back(money("MBMF:                                     ", TrailerTotals[11]));
    summary.push_back("");
    summary.push_back("");
}

}  // namespace iras
