// The IR8A trailer record, which lets IRAS check the file (the number of
// detail records and twelve column totals), and the summary that the user
// keeps of what was sent.
#include <cstdio>

#include "platform/common/CommonLibrary.h"
#include "submission/common/RYESubmissionCommon.h"
#include "submission/ir8a/IR8AFields.h"
#include "submission/ir8a/RIR8AeSubmission.h"

namespace iras {

void RIR8AeSubmission::PrepareIR8ATrailer() {
    if (!Params.check) return;
    BStringOutput& out = *Output;
    out.PutData(0, 0, 1, "2", BStringOutput::kText);
    out.PutData(0, 1, 6, RecordsSucceeded, BStringOutput::kInteger);
    int column0 = 7;
    for (double total : TrailerTotals) {
        std::string field = "0";
        if (total != 0.0) {
            try {
                field = DecodeAmount(total, false, true, 0, 12);
            } catch (const std::exception&) {
                field.clear();
            }
            if (field.empty() || field.size() > 12) {
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
        out.PutData(0, column0, 12, field, BStringOutput::kText);
        column0 += 12;
    }
    out.PutData(0, 151, 1049, "", BStringOutput::kText);
}

void RIR8AeSubmission::GenerateSummaryTextFile(StringList& summary) {
    const std::string stars(48, '*');
    const auto employer = [this](const char* column) -> std::string {
        if (!EmployerQuery.Active() || EmployerQuery.IsEmpty()) return "";
        std::string text = EmployerQuery.FieldByName(column).AsString();
        const auto first = text.find_first_not_of(' ');
        if (first == std::string::npos) return "";
        return text.substr(first, text.find_last_not_of(' ') - first + 1);
    };
    // Every line but the salary shows a zero total as "$ 0"; the salary line
    // ends in "$ " then, as the users' summaries always have.
    const auto money = [](const std::string& label, double total) {
        const std::string grouped = ir8a::FormatThousands(total);
        return label + "$ " + (grouped.empty() ? "0" : grouped);
    };

    summary.push_back(stars);
    summary.push_back("");
    summary.push_back(Supplementary() ? "SUMMARY OF FILE - Supplementary IR8A    "
                                      : "SUMMARY OF FILE - Current IR8A    ");
    summary.push_back("");
    summary.push_back(stars);
    summary.push_back("");
    summary.push_back("File Name:         " + OutputFilePath);
    summary.push_back("Organisation Name: " + employer("EmployerName"));
    YEKeywordRecLocate(employer("PayerID"));
    summary.push_back("Organisation ID:   " + employer("TaxRefNo"));
    summary.push_back("Form Type:         IR8A");
    summary.push_back(std::string("Batch Indicator:   ") + (Params.original ? "O" : "A"));
    summary.push_back("Basis Year:        " + std::to_string(BasisYear));
    summary.push_back("No of Records:     " + std::to_string(RecordsSucceeded));
    summary.push_back("");
    summary.push_back("--------------------- INCOME -------------------");
    summary.push_back("Salary:            $ " + ir8a::FormatThousands(TrailerTotals[1]));
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
