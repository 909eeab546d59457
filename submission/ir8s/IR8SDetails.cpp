// The IR8S detail record: one line per employee with identity, the wages and
// CPF contributions of each month and their totals for the year, the recent
// permanent resident and full-contribution indicators, voluntary
// contributions, and each additional-wage payment with the refund claimed on
// it. The Section A rows are read as the view delivers them: twelve months,
// then the total row. With fewer rows the last one stands for the months
// that follow it and for the totals, as IRAS has always received them.
#include <array>
#include <cstdio>
#include <optional>

#include "platform/common/CommonLibrary.h"
#include "submission/common/AmountFields.h"
#include "submission/ir8s/IR8SLayout.h"
#include "submission/ir8s/RIR8SeSubmission.h"

namespace iras {

namespace {

namespace d = ir8s::detail;

// The twelve months and the total row of Section A.
constexpr int kSectionARows = d::kMonths + 1;

struct MoneyColumn {
    const char* column;
    RecordField month;  // in a month block, in cents
    RecordField total;  // the year's total, in whole dollars
    const char* caption;
};

constexpr std::array<MoneyColumn, 6> kSectionA{{
    {"OrdWages", d::kOrdWages, d::kTotalOrdWages, "ordinary wages"},
    {"ContriOrdERCPF", d::kContriOrdERCPF, d::kTotalContriOrdERCPF, "employer's CPF on ordinary wages"},
    {"ContriOrdEECPF", d::kContriOrdEECPF, d::kTotalContriOrdEECPF, "employee's CPF on ordinary wages"},
    {"AddWages", d::kAddWages, d::kTotalAddWages, "additional wages"},
    {"ContriAddERCPF", d::kContriAddERCPF, d::kTotalContriAddERCPF, "employer's CPF on additional wages"},
    {"ContriAddEECPF", d::kContriAddEECPF, d::kTotalContriAddEECPF, "employee's CPF on additional wages"},
}};

struct SectionBColumn {
    const char* column;
    RecordField field;  // in a payment block
    const char* caption;  // money only; nullptr for a date
};

constexpr std::array<SectionBColumn, 10> kSectionB{{
    {"AddWageAmt", d::kAddWageAmt, "additional wages"},
    {"AddWageFrom", d::kAddWageFrom, nullptr},
    {"AddWageTo", d::kAddWageTo, nullptr},
    {"AddWagePaidDate", d::kAddWagePaidDate, nullptr},
    {"ERContribution", d::kERContribution, "employer's refund"},
    {"ERInterest", d::kERInterest, "interest on the employer's refund"},
    {"ERDate", d::kERDate, nullptr},
    {"EEContribution", d::kEEContribution, "employee's refund"},
    {"EEInterest", d::kEEInterest, "interest on the employee's refund"},
    {"EEDate", d::kEEDate, nullptr},
}};

struct VoluntaryColumn {
    const char* column;
    RecordField field;
    const char* caption;
};

constexpr std::array<VoluntaryColumn, 2> kVoluntary{{
    {"ERVolCPF", d::kERVolCPF, "Employer's voluntary CPF"},
    {"EEVolCPF", d::kEEVolCPF, "Employee's voluntary CPF"},
}};

std::string TwoPlaces(double value) {
    char text[64];
    std::snprintf(text, sizeof text, "%.2f", value);
    return text;
}

std::string TooLarge(const std::string& caption, double value, int width) {
    return "Amount too large for the IR8S record. " + caption + " of " + TwoPlaces(value) +
           " does not fit in its " + std::to_string(width) + "-character field.";
}

// A negative voluntary contribution is a correction that only an Amendment
// can carry; an Original reports none.
bool VoluntaryWritten(double value, bool original) { return !(original && value < 0); }

const std::string kSectionATooMany =
    "Invalid Section A - Details of monthly wages and contributions. Section A can only have a "
    "maximum of 12 records.";

}  // namespace

// What an Amendment corrects, for the verification report: the money of
// each month (cents) and the year's totals (dollars) of Section A, the
// voluntary contributions, and the money of the three payments of Section B
// that every record holds (a payment beyond them is not compared).
std::vector<AmendmentField> RIR8SeSubmission::AmendmentFields() const {
    static const char* const kMonthNames[d::kMonths] = {"January", "February", "March",     "April",
                                                         "May",     "June",     "July",      "August",
                                                         "September", "October", "November", "December"};
    std::vector<AmendmentField> fields;
    for (int month = 0; month < d::kMonths; ++month)
        for (const MoneyColumn& money : kSectionA)
            fields.push_back({d::kMonthBlocks.Field(month, money.month), 2,
                              std::string("Section A ") + kMonthNames[month] + " " + money.caption});
    for (const MoneyColumn& money : kSectionA)
        fields.push_back({money.total, 0, std::string("Section A total ") + money.caption});
    for (const VoluntaryColumn& voluntary : kVoluntary) fields.push_back({voluntary.field, 0, voluntary.caption});
    for (int payment = 0; payment < d::kSectionBRows; ++payment)
        for (const SectionBColumn& money : kSectionB)
            if (money.caption != nullptr)
                fields.push_back({d::kSectionBBlocks.Field(payment, money.field), 0,
                                  "Section B payment " + std::to_string(payment + 1) + " " + money.caption});
    return fields;
}

StringList RIR8SeSubmission::RecordLimitFindings() {
    StringList findings;
    const int rowsA = SectionAQuery.RecordCount();
    if (rowsA == 0) {
        findings.push_back("No Section A - Details of monthly wages and contributions. The IR8S record needs "
                           "the wages of the months and their total.");
    } else if (rowsA > kSectionARows) {
        findings.push_back(kSectionATooMany);
    } else {
        // The row each month and the totals are read from, as the record reads them.
        SectionAQuery.First();
        for (int month = 1; month <= kSectionARows; ++month) {
            for (const MoneyColumn& money : kSectionA) {
                const double value = Amount(SectionAQuery, money.column);
                const bool total = month == kSectionARows;
                const RecordField& field = total ? money.total : money.month;
                if (total ? DollarsField(value, field.width) : CentsField(value, field.width)) continue;
                findings.push_back(TooLarge((total ? "Section A total " : "Section A month " +
                                             std::to_string(month) + " ") + money.caption,
                                            value, field.width));
            }
            SectionAQuery.Next();
        }
    }
    for (const VoluntaryColumn& voluntary : kVoluntary) {
        const double value = Amount(voluntary.column);
        if (VoluntaryWritten(value, Params.original) && !DollarsField(value, voluntary.field.width)) {
            findings.push_back(TooLarge(voluntary.caption, value, voluntary.field.width));
        }
    }
    int occurrence = 1;
    for (SectionBQuery.First(); !SectionBQuery.Eof(); SectionBQuery.Next(), ++occurrence) {
        for (const SectionBColumn& money : kSectionB) {
            if (money.caption == nullptr) continue;
            const double value = Amount(SectionBQuery, money.column);
            if (DollarsField(value, money.field.width)) continue;
            findings.push_back(TooLarge("Section B occurrence " + std::to_string(occurrence) + " " + money.caption,
                                        value, money.field.width));
        }
    }
    return findings;
}

// The limits of the record itself are checked for every run, Amendments
// included: an employee the record cannot hold is reported, never written
// wrongly. The Section A rule of an Original already names too many rows.
int RIR8SeSubmission::RecordLimitValidation() {
    const StringList findings = RecordLimitFindings();
    for (const std::string& finding : findings) {
        if (Params.original && finding == kSectionATooMany) continue;
        ErrorList.push_back(finding);
    }
    return findings.empty() ? 1 : 0;
}

void RIR8SeSubmission::PrepareIR8SDetails() {
    if (!Params.check) return;
    const StringList findings = RecordLimitFindings();
    if (!findings.empty()) {
        // Validation reports these before a file is made; should a record
        // still get here, it is left out and the file is refused.
        WriteAllMemo("Employee " + EmployeeTaxNo() + " is not successfully processed: " + findings.front());
        RecordFault = true;
        return;
    }

    BStringOutput& out = *Output;
    out.SetNew();
    Put(out, d::kRecordType, "1");
    // An id type that locates no keyword (possible in an unchecked
    // Amendment) is left blank rather than borrowing another row's code.
    if (YEKeywordRecLocate(Text("PayeeIDType"))) Put(out, d::kIdType, _CStrToInt(KeywordProperty("YEProperty3")));
    Put(out, d::kIdNo, Text("TaxNo"));
    Put(out, d::kName1, Text("EEName1"));
    Put(out, d::kName2, Text("EEName2"));

    // Twelve months from the rows in order, then the totals from the row the
    // cursor stands on: the thirteenth, or the last when there are fewer.
    SectionAQuery.First();
    for (int month = 0; month < d::kMonths; ++month) {
        for (const MoneyColumn& money : kSectionA) {
            Put(out, d::kMonthBlocks.Field(month, money.month),
                *CentsField(Amount(SectionAQuery, money.column), money.month.width));
        }
        SectionAQuery.Next();
    }
    for (const MoneyColumn& money : kSectionA) {
        Put(out, money.total, *DollarsField(Amount(SectionAQuery, money.column), money.total.width));
    }
    Put(out, d::kFiller785, "");

    // A permanent resident of the last two years contributes at graduated
    // rates: "Y" from 1 January of the year before last.
    const Date prGranted = DateOf("DateOfPRGranted");
    Put(out, d::kRecentSPR, _IsDateNull(prGranted) ? "" : (prGranted >= Date{BasisYear - 2, 1, 1} ? "Y" : " "));
    Put(out, d::kFullCPFApproval, Text("ApprovalForFullCPF"));
    for (const VoluntaryColumn& voluntary : kVoluntary) {
        const double value = Amount(voluntary.column);
        const RecordField& field = voluntary.field;
        Put(out, field, VoluntaryWritten(value, Params.original) ? *DollarsField(value, field.width) : "0");
    }

    // Every payment gets its block, a fourth one too; fewer than three are
    // followed by empty blocks.
    int payments = 0;
    for (SectionBQuery.First(); !SectionBQuery.Eof(); SectionBQuery.Next(), ++payments) {
        for (const SectionBColumn& item : kSectionB) {
            const RecordField field = d::kSectionBBlocks.Field(payments, item.field);
            if (item.caption != nullptr) {
                Put(out, field, *DollarsField(Amount(SectionBQuery, item.column), field.width));
            } else {
                PutDateOrBlank(out, field, DateOf(SectionBQuery, item.column));
            }
        }
    }
    for (int empty = payments; empty < d::kSectionBRows; ++empty) {
        for (const SectionBColumn& item : kSectionB) {
            Put(out, d::kSectionBBlocks.Field(empty, item.field), item.caption != nullptr ? "0" : "");
        }
    }
    Put(out, d::AfterSectionB(d::kFiller1044, payments), "");
    Put(out, d::AfterSectionB(d::kFiller1151, payments), "");
    out.SetEnd(1);
    out.ListOutput(OutputLines);
    ++RecordsSucceeded;
}

}  // namespace iras
