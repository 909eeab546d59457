// The IR8A detail record: one 1200-character line per employee with identity,
// period of employment, every income and deduction, and the indicators IRAS
// reads to know which parts of the form apply. Money fields add what they
// print to the trailer totals, so that the trailer always agrees with the
// lines above it.
#include <array>
#include <cstdio>
#include <optional>

#include "platform/common/CommonLibrary.h"
#include "submission/ir8a/IR8AFields.h"
#include "submission/ir8a/RIR8AeSubmission.h"

namespace iras {

namespace {

// Dollars: "0" when zero, else whole dollars after rounding to cents.
// Donation: rounded up to the whole dollar first. Unrounded: the encoded
// amount as it stands, with no zero test before it, so that a remainder
// below a cent still carries its sign code. Cents: whole cents.
enum class Money { Dollars, Donation, Unrounded, Cents };

struct MoneyField {
    const char* column;
    int column0;      // first column, counted from 0
    int width;
    Money kind;
    int total;        // trailer total it adds to, -1 for none
    const char* caption;
};

// Every money field of the record, in record order.
constexpr std::array<MoneyField, 26> kMoneyFields{{
    {"Amt", 262, 9, Money::Dollars, 0, "Total income"},
    {"MOSQFund", 287, 5, Money::Dollars, 11, "Mosque Building Fund"},
    {"Donation", 292, 5, Money::Donation, 8, "Donations"},
    {"EECPFPension", 297, 7, Money::Dollars, 9, "Employee's CPF/pension"},
    {"Insurance", 304, 5, Money::Dollars, 10, "Insurance"},
    {"GrossTotal", 309, 9, Money::Dollars, 1, "Gross salary"},
    {"Bonus", 318, 9, Money::Dollars, 2, "Bonus"},
    {"DirectorFee", 327, 9, Money::Dollars, 3, "Director's fee"},
    {"OthersAmt", 336, 9, Money::Dollars, 4, "Others"},
    {"TotalStockGainsBef", 345, 9, Money::Unrounded, -1, "Stock gains (plans before 2003)"},
    {"ExemptIncomeAmt", 354, 9, Money::Dollars, 5, "Exempt income"},
    {"TaxBorneByER", 363, 9, Money::Dollars, 6, "Tax borne by employer"},
    {"FixedAmtBorneByEE", 372, 9, Money::Dollars, 7, "Fixed tax borne by employee"},
    {"CommissionAmt", 399, 11, Money::Cents, -1, "Commission"},
    {"Pension", 427, 11, Money::Cents, -1, "Pension"},
    {"TransportAmt", 438, 11, Money::Cents, -1, "Transport allowance"},
    {"EntertainmentAmt", 449, 11, Money::Cents, -1, "Entertainment allowance"},
    {"TotOtherAllowances", 460, 11, Money::Cents, -1, "Other allowances"},
    {"Gratuity", 471, 11, Money::Cents, -1, "Gratuity"},
    {"LumpSumCompensation", 482, 11, Money::Cents, -1, "Compensation for loss of office"},
    {"AccruedTo", 493, 11, Money::Cents, -1, "Retirement benefits accrued up to 1992"},
    {"AccruedFrom", 504, 11, Money::Cents, -1, "Retirement benefits accrued from 1993"},
    {"EROutsideContri", 515, 11, Money::Cents, -1, "Contributions to funds outside Singapore"},
    {"ERExcessContriAmt", 526, 11, Money::Cents, -1, "Excess employer CPF contribution"},
    {"TotalStockGainsAfterAmt", 537, 11, Money::Cents, -1, "Stock gains (plans from 2003)"},
    {"TotBenefitsInKind", 548, 11, Money::Cents, -1, "Benefits in kind"},
}};

double PrintedSource(const MoneyField& field, double value) {
    return field.kind == Money::Donation ? ir8a::DonationDollars(value) : value;
}

std::optional<std::string> Encode(const MoneyField& field, double value) {
    switch (field.kind) {
        case Money::Cents: return ir8a::CentsField(value, field.width);
        case Money::Unrounded: return ir8a::UnroundedDollarsField(value, field.width);
        default: return ir8a::DollarsField(PrintedSource(field, value), field.width);
    }
}

std::string TwoPlaces(double value) {
    char text[64];
    std::snprintf(text, sizeof text, "%.2f", value);
    return text;
}

}  // namespace

// The record holds each amount in a fixed number of characters. An amount
// that needs more is not an IRAS rule but a limit of the record itself, so it
// is checked for Amendments too: such an employee is reported instead of
// being written wrongly.
int RIR8AeSubmission::RecordLimitValidation() {
    bool clean = true;
    for (const MoneyField& field : kMoneyFields) {
        const double value = Amount(field.column);
        if (Encode(field, value)) continue;
        ErrorList.push_back("Amount too large for the IR8A record. " + std::string(field.caption) +
                            " of " + TwoPlaces(value) + " does not fit in its " +
                            std::to_string(field.width) + "-character field.");
        clean = false;
    }
    return clean ? 1 : 0;
}

void RIR8AeSubmission::PrepareIR8ADetails() {
    if (!Params.check) return;

    std::array<std::string, kMoneyFields.size()> money;
    std::array<double, kMoneyFields.size()> values{};
    for (std::size_t i = 0; i < kMoneyFields.size(); ++i) {
        values[i] = Amount(kMoneyFields[i].column);
        const std::optional<std::string> text = Encode(kMoneyFields[i], values[i]);
        if (!text) {
            // Validation reports this before a file is made; should a record
            // still get here, it is left out and the file is refused.
            WriteAllMemo("Employee " + EmployeeTaxNo() + " is not successfully processed: " +
                         kMoneyFields[i].caption + " is too large for the IR8A record.");
            RecordFault = true;
            return;
        }
        money[i] = *text;
    }

    const bool supplementary = Supplementary();
    BStringOutput& out = *Output;
    const auto text = [&out](int column0, int width, const std::string& value) {
        out.PutData(0, column0, width, value, BStringOutput::kText);
    };
    const auto date = [&out](int column0, const Date& value) {
        out.PutData(0, column0, 8, value, BStringOutput::kDate);
    };
    // Dates that IRAS wants blank rather than dated when they were never set.
    const auto optionalDate = [&](int column0, const Date& value, bool wanted) {
        if (wanted && !_IsDateNull(value)) {
            date(column0, value);
        } else {
            text(column0, 8, "");
        }
    };
    const auto flag = [&](int column0, bool on) { text(column0, 1, on ? "Y" : ""); };
    const auto keywordCode = [&](const std::string& keyword) {
        const bool located = YEKeywordRecLocate(keyword);
        return ir8a::IndicatorCode(located, located ? KeywordProperty("YEProperty1") : "");
    };

    out.SetNew();
    text(0, 1, "1");
    // An id type that locates no keyword (possible in an unchecked
    // Amendment) is left blank rather than borrowing another row's code.
    if (YEKeywordRecLocate(Text("PayeeIDType"))) {
        out.PutData(0, 1, 1, _CStrToInt(KeywordProperty("YEProperty3")), BStringOutput::kText);
    } else {
        text(1, 1, "");
    }
    text(2, 12, Text("TaxNo"));
    text(14, 40, Text("EEName1"));
    text(54, 40, Text("EEName2"));
    // The address block is not reported: eleven empty fields.
    int column0 = 94;
    for (int width : {1, 10, 32, 3, 5, 6, 30, 30, 30, 6, 3}) {
        text(column0, width, "");
        column0 += width;
    }
    text(250, 3, Text("IRASNationalityCode"));
    text(253, 1, Text("Gender"));
    date(254, DateOf("DOB"));
    date(271, DateOf("PaymentFrom"));
    date(279, DateOf(supplementary ? "SupPaymentTo" : "PaymentTo"));
    for (std::size_t i = 0; i < kMoneyFields.size(); ++i) {
        const MoneyField& field = kMoneyFields[i];
        out.PutData(0, field.column0, field.width, money[i], BStringOutput::kAmount);
        if (field.total >= 0 && !_IsZeroValue(values[i])) {
            TrailerTotals[static_cast<std::size_t>(field.total)] +=
                ir8a::DollarsValue(PrintedSource(field, values[i]));
        }
    }

    const double directorFee = Amount("DirectorFee");
    const double compensation = Amount("LumpSumCompensation");
    const Date approved = DateOf("CompensationApprovedDate");
    flag(381, !_IsZeroValue(Amount("TotBenefitsInKind")));
    // 383, section 45: whether tax is withheld on a non-resident director's
    // fees. Directors only: those whose designation names them one.
    text(382, 1, ir8a::Section45Indicator(Text("Designation"), Text("IRASSection45")));
    // 384, income tax borne by the employer: F fully, P partially, H a fixed
    // amount borne by the employee; blank when not applicable.
    const std::string borneStatus = Text("IncomeBorneStatus");
    text(383, 1, ir8a::IncomeBorneCode(borneStatus, keywordCode(borneStatus),
                                       Amount("FixedAmtBorneByEE")));
    flag(384, !_IsZeroValue(Amount("Gratuity")));
    flag(385, !_IsZeroValue(compensation));
    if (!_IsZeroValue(compensation)) {
        text(386, 1, _IsDateNull(approved) ? "N" : "Y");
    } else {
        text(386, 1, "");
    }
    optionalDate(387, approved, !_IsZeroValue(compensation));
    // 396, cessation provisions apply (an employee who joined before 1969
    // and is leaving): "Y", else blank.
    flag(395, Text("CessationProvision") == "Y");
    flag(396, Text("IR8SIndicator") == "Y" || !_IsZeroValue(Amount("DiffERCPF")));
    // 398, the exempt or remission income indicator: the IRAS code of
    // ExemptIncomeType (1 OCLA, 2 OHQ, 3 seaman, 4 exemption, ...), blank
    // when not applicable.
    text(397, 1, keywordCode(Text("ExemptIncomeType")));
    text(398, 1, "");
    optionalDate(410, DateOf("CommissionFrom"), true);
    optionalDate(418, DateOf("CommissionTo"), true);
    {
        const bool located = YEKeywordRecLocate(Text("CommissionStatus"));
        text(426, 1, located ? KeywordProperty("YEProperty1") : "");
    }
    text(559, 7, "");
    // 567-596: the employee's designation.
    text(566, 30, Text("Designation"));
    optionalDate(596, DateOf("Commencement"), true);
    optionalDate(604, DateOf(supplementary ? "SupCessation" : "Cessation"), true);
    optionalDate(612, DateOf("BonusDeclared"), !_IsZeroValue(Amount("NonContratualBonus")));
    optionalDate(620, DateOf("DirFeeApproved"), !_IsZeroValue(directorFee));
    text(628, 60, Text("RetirementDetails"));
    text(688, 60, Text("EEPensionDetails"));
    text(748, 1, Text("BankId"));
    text(749, 8, "");
    text(757, 393, "");
    text(1150, 50, "");
    out.SetEnd(1);
    out.ListOutput(OutputLines);
    ++RecordsSucceeded;
}

}  // namespace iras
