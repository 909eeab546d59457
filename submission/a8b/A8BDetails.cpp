// The Appendix 8B detail record: the employee, then for each section fifteen
// row slots (the employee's share-plan rows, then blank slots) and the
// section's totals, then the four grand totals. An Original works each row's
// amounts out from the prices per share and sums them into the totals,
// split at the cut-off date of the plans; an Amendment prints the amounts
// and totals the engine stored, which are differences from what was
// submitted. Each total is also added to the file totals of the trailer.
#include <cstdio>
#include <optional>
#include <vector>

#include "platform/common/CommonLibrary.h"
#include "submission/common/AmountFields.h"
#include "submission/common/RYESubmissionCommon.h"
#include "submission/a8b/A8BLayout.h"
#include "submission/a8b/A8BSections.h"
#include "submission/a8b/RA8BeSubmission.h"

namespace iras {

namespace {

namespace d = a8b::detail;
namespace r = a8b::detail::row;

// Plans granted from this date on (and every share ownership plan) are taxed
// under the rules after the cut-off; older option plans are reported apart.
constexpr Date kCutOff{2003, 1, 1};

constexpr int kPriceDecimals = 5;

// The same place as a field of another kind: the blank row writes its
// shares as the text "0", not as an amount.
constexpr RecordField AsText(RecordField field) { return {field.start, field.width, FieldKind::Text}; }

// Amounts are worked out to three places, rounded, then cut to cents.
double RowAmount(double value) { return _Trunc(_Round(value, 3), 2); }

std::string TwoPlaces(double value) {
    char text[64];
    std::snprintf(text, sizeof text, "%.2f", value);
    return text;
}

}  // namespace

// What an Amendment corrects, for the verification report: each section's
// totals and the four grand totals, all in cents. The rows themselves are
// share plans in slots, not fields an employee keeps from year to year, so
// they are compared through the totals they add up to.
std::vector<AmendmentField> RA8BeSubmission::AmendmentFields() const {
    auto name = [](a8b::RowAmount amount) {
        return amount == a8b::RowAmount::Exempt          ? "tax-exempt gains"
               : amount == a8b::RowAmount::NotQualifying ? "gains not qualifying for exemption"
                                                         : "gross gains";
    };
    auto plans = [](bool after) { return after ? " (plans from 2003)" : " (plans before 2003)"; };
    std::vector<AmendmentField> fields;
    for (const a8b::Section& section : a8b::kSections) {
        const RecordBlock totals = section.Totals();
        for (int t = 0; t < totals.count; ++t)
            fields.push_back({totals.Field(t, d::kSectionTotal), 2,
                              std::string("Section ") + section.letter + " total " + name(section.AmountAt(t / 2)) +
                                  plans(t % 2 == 0)});
    }
    const a8b::RowAmount grand[] = {a8b::RowAmount::NotQualifying, a8b::RowAmount::Gains};
    for (int g = 0; g < d::kGrandTotals.count; ++g)
        fields.push_back({d::kGrandTotals.Field(g, d::kGrandTotal), 2,
                          std::string("Grand total ") + name(grand[g / 2]) + plans(g % 2 == 0)});
    return fields;
}

struct RA8BeSubmission::EncodedRow {
    std::string companyIdType, rcbNo, companyName, planType;
    Date granted, exercised;
    std::array<std::string, 3> prices;  // exercise price, value at grant, value at exercise
    std::string shares;
    std::array<std::string, 3> amounts;  // the section's amounts in record order
    std::array<double, 3> values{};
    bool after = false;  // counts into the totals after the cut-off
};

struct RA8BeSubmission::EncodedRecord {
    std::array<std::vector<EncodedRow>, 4> rows;
    std::array<std::array<std::string, 6>, 4> totals;
    std::array<std::array<double, 6>, 4> totalValues{};
    std::array<std::string, 4> grand;
    std::array<double, 4> grandValues{};
    StringList tooLarge;  // values the record cannot hold
};

namespace {

// The text of a money or price field, or a finding in tooLarge (and an
// empty text) where the value does not fit its width.
class FieldTexts {
public:
    explicit FieldTexts(StringList& tooLarge) : tooLarge_(tooLarge) {}

    // Zero as `width` zeros when zeroTest, else the encoded value.
    std::string Encode(double value, bool zeroTest, bool signCode, int decimals, int width,
                       const std::string& caption) {
        if (zeroTest) return std::string(static_cast<std::size_t>(width), '0');
        if (auto text = AmountField(value, true, signCode, decimals, width)) return *text;
        tooLarge_.push_back("Amount too large for the A8B record. " + caption + " of " + TwoPlaces(value) +
                            " does not fit in its " + std::to_string(width) + "-character field.");
        return "";
    }

private:
    StringList& tooLarge_;
};

}  // namespace

RA8BeSubmission::EncodedRow RA8BeSubmission::EncodeRow(int sectionIndex, int number, StringList& tooLarge) {
    const a8b::Section& section = a8b::kSections[static_cast<std::size_t>(sectionIndex)];
    db::Query& query = StockOptQueries[static_cast<std::size_t>(sectionIndex)];
    FieldTexts texts(tooLarge);
    const std::string where = std::string("Section ") + section.letter + " record " + std::to_string(number) + " ";
    EncodedRow row;
    row.companyIdType = YEKeywordRecLocate(Text(query, "CompanyIDType")) ? KeywordProperty("YEProperty1") : "";
    row.rcbNo = Text(query, "RCBNo");
    row.companyName = Text(query, "CompanyName");
    row.planType = Text(query, "TypePlanGranted");
    row.granted = DateOf(query, "DateStockGranted");
    row.exercised = DateOf(query, "DateExerciseStock");
    row.after = row.planType == "ESOW" || (row.planType == "ESOP" && !(row.granted < kCutOff));

    // Prices per share count to five places; what lies beyond is cut.
    const std::array<double, 3> prices{_Trunc(Amount(query, "ExercisePriceStock"), kPriceDecimals),
                                       _Trunc(Amount(query, "MktValueStockGrant"), kPriceDecimals),
                                       _Trunc(Amount(query, "MktValueExerciseStock"), kPriceDecimals)};
    const std::array<const char*, 3> priceNames{"exercise price", "value at grant", "value at exercise"};
    for (std::size_t p = 0; p < prices.size(); ++p) {
        // The market values, and Section B's exercise price, write a price
        // below half a cent as zero.
        const bool zeroTest = (p > 0 || section.letter == 'B') && _IsZeroValue(prices[p]);
        row.prices[p] = texts.Encode(prices[p], zeroTest, false, kPriceDecimals, r::kExercisePrice.width,
                                     where + priceNames[p]);
    }
    const double shares = Amount(query, "SharesAcquired");
    row.shares = texts.Encode(shares, _IsZeroValue(shares), true, kPriceDecimals, r::kShares.width,
                              where + "shares acquired");

    const double exercisePrice = prices[0], atGrant = prices[1], atExercise = prices[2];
    if (Params.original) {
        if (section.amountCount == 2) {
            const double gains = RowAmount((atExercise - exercisePrice) * shares);
            row.values = {gains, gains, 0.0};
        } else {
            const double exempt = RowAmount((atExercise - atGrant) * shares);
            const double notQualifying = RowAmount((atGrant - exercisePrice) * shares);
            row.values = {exempt, notQualifying, _Trunc(exempt + notQualifying, 2)};
        }
    } else {
        for (int i = 0; i < section.amountCount; ++i)
            row.values[static_cast<std::size_t>(i)] = Amount(query, RowColumn(section, section.AmountAt(i)).c_str());
    }
    for (int i = 0; i < section.amountCount; ++i) {
        const auto a = static_cast<std::size_t>(i);
        row.amounts[a] = texts.Encode(row.values[a], _IsZeroValue(row.values[a]), true, 2, r::kAmounts[a].width,
                                      where + RowColumn(section, section.AmountAt(i)));
    }
    return row;
}

RA8BeSubmission::EncodedRecord RA8BeSubmission::EncodeRecord() {
    EncodedRecord record;
    FieldTexts texts(record.tooLarge);
    std::array<double, 4> grand{};  // not qualifying after, before; gains after, before
    for (const a8b::Section& section : a8b::kSections) {
        const auto s = static_cast<std::size_t>(section.Index());
        db::Query& query = StockOptQueries[s];
        std::array<double, 6> sums{};  // per amount: after, before
        int number = 0;
        for (query.First(); !query.IsEmpty() && !query.Eof(); query.Next()) {
            EncodedRow row = EncodeRow(section.Index(), ++number, record.tooLarge);
            for (int i = 0; i < section.amountCount; ++i)
                sums[static_cast<std::size_t>(i * 2 + (row.after ? 0 : 1))] += row.values[static_cast<std::size_t>(i)];
            record.rows[s].push_back(std::move(row));
        }

        const int totalCount = section.Totals().count;
        for (int t = 0; t < totalCount; ++t) {
            const auto i = static_cast<std::size_t>(t);
            const a8b::RowAmount amount = section.AmountAt(t / 2);
            const std::string column = a8b::TotalColumn(section, amount, t % 2 == 0);
            const double value = Params.original ? sums[i] : Amount(column.c_str());
            record.totalValues[s][i] = value;
            record.totals[s][i] = texts.Encode(value, value == 0.0, true, 2, d::kSectionTotal.width, column);
            if (amount == a8b::RowAmount::NotQualifying) grand[static_cast<std::size_t>(t % 2)] += value;
            if (amount == a8b::RowAmount::Gains) grand[static_cast<std::size_t>(2 + t % 2)] += value;
        }
    }

    for (std::size_t g = 0; g < grand.size(); ++g) {
        const double value = Params.original ? grand[g] : Amount(a8b::kGrandTotalColumns[g]);
        record.grandValues[g] = value;
        record.grand[g] = texts.Encode(value, value == 0.0, true, 2, d::kGrandTotal.width, a8b::kGrandTotalColumns[g]);
    }
    return record;
}

// The record holds fifteen rows a section and each amount in a fixed number
// of characters. These are limits of the record, not IRAS's rules, so they
// are checked for Amendments too: such an employee is reported instead of
// being written wrongly.
int RA8BeSubmission::RecordLimitValidation() {
    const std::size_t before = ErrorList.size();
    if (!Params.original) {
        // An Original has had this finding from the section checks already.
        for (const a8b::Section& section : a8b::kSections)
            if (Overfull(section)) ErrorList.push_back(section.CountMessage());
    }
    const EncodedRecord record = EncodeRecord();
    ErrorList.insert(ErrorList.end(), record.tooLarge.begin(), record.tooLarge.end());
    return ErrorList.size() == before ? 1 : 0;
}

void RA8BeSubmission::PrepareA8BDetails() {
    if (!Params.check) return;
    const std::string taxNo = EmployeeTaxNo();
    for (const a8b::Section& section : a8b::kSections) {
        if (Overfull(section)) {
            // Validation reports this before a file is made; should a record
            // still get here, it is left out and the file is refused.
            WriteAllMemo("Employee " + taxNo + " is not successfully processed: " + section.title +
                         " has more than 15 records.");
            RecordFault = true;
            return;
        }
    }
    const EncodedRecord record = EncodeRecord();
    if (!record.tooLarge.empty()) {
        WriteAllMemo("Employee " + taxNo + " is not successfully processed: " + record.tooLarge.front());
        RecordFault = true;
        return;
    }

    BStringOutput& out = *Output;
    out.SetNew();
    PutEmployeeDetailFields();
    Put(out, d::kNationality, Text("IRASNationalityCode"));
    Put(out, d::kGender, Text("Gender"));
    Put(out, d::kDateOfBirth, DateOf("DOB"));

    for (const a8b::Section& section : a8b::kSections) {
        const auto s = static_cast<std::size_t>(section.Index());
        const RecordBlock slots = section.Rows();
        const auto& rows = record.rows[s];
        for (int k = 0; k < slots.count; ++k) {
            const auto at = [&](RecordField field) { return slots.Field(k, field); };
            if (k < static_cast<int>(rows.size())) {
                const EncodedRow& row = rows[static_cast<std::size_t>(k)];
                Put(out, at(r::kCompanyIdType), row.companyIdType);
                Put(out, at(r::kRcbNo), row.rcbNo);
                Put(out, at(r::kCompanyName), row.companyName);
                Put(out, at(r::kPlanType), row.planType);
                PutDateOrBlank(out, at(r::kDateGranted), row.granted);
                PutDateOrBlank(out, at(r::kDateExercised), row.exercised);
                Put(out, at(r::kExercisePrice), row.prices[0]);
                Put(out, at(r::kValueAtGrant), row.prices[1]);
                Put(out, at(r::kValueAtExercise), row.prices[2]);
                Put(out, at(r::kShares), row.shares);
                for (int i = 0; i < section.amountCount; ++i)
                    Put(out, at(r::kAmounts[static_cast<std::size_t>(i)]), row.amounts[static_cast<std::size_t>(i)]);
            } else {
                // A blank slot: blanks, zero prices and amounts, and its
                // shares as the one character "0" in a blank field, unlike
                // its prices: an empty slot keeps this form on purpose.
                for (RecordField field : {r::kCompanyIdType, r::kRcbNo, r::kCompanyName, r::kPlanType,
                                          AsText(r::kDateGranted), AsText(r::kDateExercised)})
                    Put(out, at(field), "");
                for (RecordField field : {r::kExercisePrice, r::kValueAtGrant, r::kValueAtExercise})
                    Put(out, at(field), std::string(static_cast<std::size_t>(field.width), '0'));
                Put(out, at(AsText(r::kShares)), "0");
                for (int i = 0; i < section.amountCount; ++i) {
                    const RecordField field = r::kAmounts[static_cast<std::size_t>(i)];
                    Put(out, at(field), std::string(static_cast<std::size_t>(field.width), '0'));
                }
            }
        }
        const RecordBlock totals = section.Totals();
        for (int t = 0; t < totals.count; ++t) {
            const auto i = static_cast<std::size_t>(t);
            Put(out, totals.Field(t, d::kSectionTotal), record.totals[s][i]);
            if (record.totalValues[s][i] != 0.0)
                FileTotals[static_cast<std::size_t>(section.fileTotalOffset + t)] += record.totalValues[s][i];
        }
    }
    for (int g = 0; g < d::kGrandTotals.count; ++g) {
        const auto i = static_cast<std::size_t>(g);
        Put(out, d::kGrandTotals.Field(g, d::kGrandTotal), record.grand[i]);
        double value = record.grandValues[i];
        // The last grand total is rounded to cents before it is summed.
        if (g == d::kGrandTotals.count - 1) value = _Round(value, 2);
        if (value != 0.0) FileTotals[a8b::kGrandFileTotalOffset + i] += value;
    }
    Put(out, d::kFiller9116, "");
    Put(out, d::kFiller9252, "");
    out.SetEnd(1);
    out.ListOutput(OutputLines);
    WriteAllMemo("");
    WriteAllMemo("Employee " + taxNo + " is successfully processed.");
    ++RecordsSucceeded;
}

}  // namespace iras
