// The IR8A detail record: one 1200-character line per employee with identity,
// period of employment, every income and deduction, and the indicators IRAS
// reads to know which parts of the form apply. Money fields add what they
// print to the trailer totals, so that the trailer always agrees with the
// lines above it.
#include <array>
#include <cstdio>
#include <optional>

#include "platform/common/CommonLibrary.h"
#include "submission/common/AmountFields.h"
#include "submission/ir8a/IR8AFields.h"
#include "submission/ir8a/IR8ALayout.h"
#include "submission/ir8a/RIR8AeSubmission.h"

namespace iras {

namespace {

namespace d = ir8a::detail;

// Dollars: "0" when zero, else whole dollars after rounding to cents.
// Donation: rounded up to the whole dollar first. Unrounded: the encoded
// amount as it stands, with no zero test before it, so that a remainder
// below a cent still carries its sign code. Cents: whole cents.
enum class Money { Dollars, Donation, Unrounded, Cents };

struct MoneyField {
    const char* column;
    RecordField field;
    Money kind;
    int total;        // trailer total it adds to, -1 for none
    const char* caption;
};

// Every money field of the record, in record order.
constexpr std::array<MoneyField, 26> kMoneyFields{{
    {"Amt", d::kTotalIncome, Money::Dollars, 0, "Total income"},
    {"MOSQFund", d::kMosqueFund, Money::Dollars, 11, "Mosque Building Fund"},
    {"Donation", d::kDonation, Money::Donation, 8, "Donations"},
    {"EECPFPension", d::kEmployeeCpf, Money::Dollars, 9, "Employee's CPF/pension"},
    {"Insurance", d::kInsurance, Money::Dollars, 10, "Insurance"},
    {"GrossTotal", d::kSalary, Money::Dollars, 1, "Gross salary"},
    {"Bonus", d::kBonus, Money::Dollars, 2, "Bonus"},
    {"DirectorFee", d::kDirectorFee, Money::Dollars, 3, "Director's fee"},
    {"OthersAmt", d::kOthers, Money::Dollars, 4, "Others"},
    {"TotalStockGainsBef", d::kStockGainsBefore, Money::Unrounded, -1, "Stock gains (plans before 2003)"},
    {"ExemptIncomeAmt", d::kExemptIncome, Money::Dollars, 5, "Exempt income"},
    {"TaxBorneByER", d::kTaxBorneByEmployer, Money::Dollars, 6, "Tax borne by employer"},
    {"FixedAmtBorneByEE", d::kFixedTaxBorneByEmployee, Money::Dollars, 7, "Fixed tax borne by employee"},
    {"CommissionAmt", d::kCommission, Money::Cents, -1, "Commission"},
    {"Pension", d::kPension, Money::Cents, -1, "Pension"},
    {"TransportAmt", d::kTransport, Money::Cents, -1, "Transport allowance"},
    {"EntertainmentAmt", d::kEntertainment, Money::Cents, -1, "Entertainment allowance"},
    {"TotOtherAllowances", d::kOtherAllowances, Money::Cents, -1, "Other allowances"},
    {"Gratuity", d::kGratuity, Money::Cents, -1, "Gratuity"},
    {"LumpSumCompensation", d::kCompensation, Money::Cents, -1, "Compensation for loss of office"},
    {"AccruedTo", d::kAccruedTo, Money::Cents, -1, "Retirement benefits accrued up to 1992"},
    {"AccruedFrom", d::kAccruedFrom, Money::Cents, -1, "Retirement benefits accrued from 1993"},
    {"EROutsideContri", d::kOutsideContributions, Money::Cents, -1, "Contributions to funds outside Singapore"},
    {"ERExcessContriAmt", d::kExcessEmployerCpf, Money::Cents, -1, "Excess employer CPF contribution"},
    {"TotalStockGainsAfterAmt", d::kStockGainsAfter, Money::Cents, -1, "Stock gains (plans from 2003)"},
    {"TotBenefitsInKind", d::kBenefitsInKind, Money::Cents, -1, "Benefits in kind"},
}};

double PrintedSource(const MoneyField& field, double value) {
    return field.kind == Money::Donation ? ir8a::DonationDollars(value) : value;
}

std::optional<std::string> Encode(const MoneyField& field, double value) {
    const int width = field.field.width;
    switch (field.kind) {
        case Money::Cents: return CentsField(value, width);
        case Money::Unrounded: return UnroundedDollarsField(value, width);
        default: return DollarsField(PrintedSource(field, value), width);
    }
}

std::string TwoPlaces(double value) {
    char text[64];
    std::snprintf(text, sizeof text, "%.2f", value);
    return text;
}

}  // namespace

// What an Amendment corrects, for the verification report: every money
// field, whole cents or whole dollars as the record writes it.
std::vector<AmendmentField> RIR8AeSubmission::AmendmentFields() const {
    std::vector<AmendmentField> fields;
    for (const MoneyField& money : kMoneyFields)
        fields.push_back({money.field, money.kind == Money::Cents ? 2 : 0, money.caption});
    return fields;
}

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
                            std::to_string(field.field.width) + "-character field.");
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
    const auto flag = [&](const RecordField& field, bool on) { Put(out, field, on ? "Y" : ""); };
    const auto keywordCode = [&](const std::string& keyword) {
        const bool located = YEKeywordRecLocate(keyword);
        return ir8a::IndicatorCode(located, located ? KeywordProperty("YEProperty1") : "");
    };

    out.SetNew();
    PutEmployeeDetailFields();
    for (const RecordField& field : d::kAddress) Put(out, field, "");
    Put(out, d::kNationality, Text("IRASNationalityCode"));
    Put(out, d::kGender, Text("Gender"));
    Put(out, d::kDateOfBirth, DateOf("DOB"));
    Put(out, d::kPeriodFrom, DateOf("PaymentFrom"));
    Put(out, d::kPeriodTo, DateOf(supplementary ? "SupPaymentTo" : "PaymentTo"));
    for (std::size_t i = 0; i < kMoneyFields.size(); ++i) {
        const MoneyField& field = kMoneyFields[i];
        Put(out, field.field, money[i]);
        if (field.total >= 0 && !_IsZeroValue(values[i])) {
            TrailerTotals[static_cast<std::size_t>(field.total)] += DollarsValue(PrintedSource(field, values[i]));
        }
    }

    const double directorFee = Amount("DirectorFee");
    const double compensation = Amount("LumpSumCompensation");
    const Date approved = DateOf("CompensationApprovedDate");
    flag(d::kBenefitsInKindIndicator, !_IsZeroValue(Amount("TotBenefitsInKind")));
    // Section 45: whether tax is withheld on a non-resident director's fees.
    // Directors only: those whose designation names them one.
    Put(out, d::kSection45, ir8a::Section45Indicator(Text("Designation"), Text("IRASSection45")));
    // Income tax borne by the employer: F fully, P partially, H a fixed
    // amount borne by the employee; blank when not applicable.
    const std::string borneStatus = Text("IncomeBorneStatus");
    Put(out, d::kIncomeTaxBorne,
        ir8a::IncomeBorneCode(borneStatus, keywordCode(borneStatus), Amount("FixedAmtBorneByEE")));
    flag(d::kGratuityIndicator, !_IsZeroValue(Amount("Gratuity")));
    flag(d::kCompensationIndicator, !_IsZeroValue(compensation));
    if (!_IsZeroValue(compensation)) {
        Put(out, d::kCompensationApproval, _IsDateNull(approved) ? "N" : "Y");
    } else {
        Put(out, d::kCompensationApproval, "");
    }
    PutDateOrBlank(out, d::kCompensationApprovalDate, approved, !_IsZeroValue(compensation));
    // Cessation provisions apply (an employee who joined before 1969 and is
    // leaving): "Y", else blank.
    flag(d::kCessationProvision, Text("CessationProvision") == "Y");
    flag(d::kIR8SIndicator, Text("IR8SIndicator") == "Y" || !_IsZeroValue(Amount("DiffERCPF")));
    // The exempt or remission income indicator: the IRAS code of
    // ExemptIncomeType (1 OCLA, 2 OHQ, 3 seaman, 4 exemption, ...), blank
    // when not applicable.
    Put(out, d::kExemptIncomeIndicator, keywordCode(Text("ExemptIncomeType")));
    Put(out, d::kReserved399, "");
    PutDateOrBlank(out, d::kCommissionFrom, DateOf("CommissionFrom"));
    PutDateOrBlank(out, d::kCommissionTo, DateOf("CommissionTo"));
    {
        const bool located = YEKeywordRecLocate(Text("CommissionStatus"));
        Put(out, d::kCommissionType, located ? KeywordProperty("YEProperty1") : "");
    }
    Put(out, d::kReserved560, "");
    Put(out, d::kDesignation, Text("Designation"));
    PutDateOrBlank(out, d::kCommencement, DateOf("Commencement"));
    PutDateOrBlank(out, d::kCessation, DateOf(supplementary ? "SupCessation" : "Cessation"));
    PutDateOrBlank(out, d::kBonusDeclared, DateOf("BonusDeclared"), !_IsZeroValue(Amount("NonContratualBonus")));
    PutDateOrBlank(out, d::kDirectorFeeApproved, DateOf("DirFeeApproved"), !_IsZeroValue(directorFee));
    Put(out, d::kRetirementDetails, Text("RetirementDetails"));
    Put(out, d::kPensionDetails, Text("EEPensionDetails"));
    Put(out, d::kBankId, Text("BankId"));
    Put(out, d::kReserved750, "");
    Put(out, d::kFiller758, "");
    Put(out, d::kFiller1151, "");
    out.SetEnd(1);
    out.ListOutput(OutputLines);
    ++RecordsSucceeded;
}

}  // namespace iras
