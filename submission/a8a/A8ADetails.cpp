// The Appendix 8A detail record: one 700-character line per employee with
// identity, residence address, period of occupation of the quarters, the
// accommodation, utilities and hotel amounts of Sections 2 and 3, and the
// other benefits in kind with their total. Amounts are whole cents with the
// sign in the last character; a zero amount is nine zeros.
#include <array>
#include <cstdio>
#include <optional>

#include "platform/common/CommonLibrary.h"
#include "submission/a8a/A8ALayout.h"
#include "submission/a8a/RA8AeSubmission.h"
#include "submission/common/AmountFields.h"

namespace iras {

namespace {

namespace d = a8a::detail;

struct MoneyField {
    const char* column;
    RecordField field;
    bool fromSections;  // the Sections 2 and 3 row, else the employee row
    const char* caption;
};

// Every money field of the record, in record order.
constexpr std::array<MoneyField, 24> kMoneyFields{{
    {"AnnualValue", d::kAnnualValue, true, "Annual value of the premises"},
    {"FurnitureFittingsValue", d::kFurnitureFittings, true, "Value of furniture and fittings"},
    {"RentPaidToLandlord", d::kRentToLandlord, true, "Rent paid to the landlord"},
    {"ResidenceValue", d::kResidenceValue, true, "Residence value"},
    {"RentPaidByEmployee", d::kRentByEmployee, true, "Rent paid by the employee"},
    {"TotalTaxableResidenceValue", d::kTaxableResidence, true, "Total taxable residence value"},
    {"UtilityTelPagerValue", d::kUtilities, true, "Utilities, telephone, pager"},
    {"Driver", d::kDriver, true, "Driver"},
    {"ServantGardener", d::kServant, true, "Servant, gardener"},
    {"TotalValueofUtilities", d::kTotalUtilities, true, "Total value of utilities"},
    {"HotelAccommodation", d::kHotel, true, "Hotel accommodation"},
    {"HotelAmtPaidByEmployee", d::kHotelByEmployee, true, "Hotel amount paid by the employee"},
    {"TotalHotelAccommodation", d::kTotalHotel, true, "Total hotel accommodation"},
    {"IncidentalBenefits", d::kIncidental, false, "Incidental benefits"},
    {"InterestLoan", d::kInterestLoan, false, "Interest on loans"},
    {"LifeInsurance", d::kLifeInsurance, false, "Life insurance"},
    {"Holidays", d::kHolidays, false, "Holidays"},
    {"Education", d::kEducation, false, "Education"},
    {"LongService", d::kLongService, false, "Long service awards"},
    {"Clubs", d::kClubs, false, "Clubs"},
    {"Assets", d::kAssets, false, "Assets"},
    {"MotorVehicle", d::kMotorVehicle, false, "Motor vehicle"},
    {"CarBenefit", d::kCarBenefit, false, "Car benefit"},
    {"TotalBenefitInKind", d::kTotalBenefits, false, "Total benefits in kind"},
}};

// Whether a count fits its zero-filled field as the line builder writes it
// ("-05" for -5 in three places).
bool CountFits(std::int64_t value, int width) {
    std::int64_t limit = 1;
    for (int i = 0; i < width; ++i) limit *= 10;
    return value >= 0 ? value < limit : -value < limit / 10;
}

std::string TwoPlaces(double value) {
    char text[64];
    std::snprintf(text, sizeof text, "%.2f", value);
    return text;
}

// The furnished status IRAS knows: P partially, F fully, else blank.
const char* FurnishedCode(const std::string& status) {
    if (status == "Partially Furnished") return "P";
    if (status == "Fully Furnished") return "F";
    return "";
}

}  // namespace

// An amount or a count that needs more places than its field is not an IRAS
// rule but a limit of the record itself, so it is checked for Amendments
// too: such an employee is reported instead of being written wrongly.
int RA8AeSubmission::RecordLimitValidation() {
    bool clean = true;
    for (const MoneyField& field : kMoneyFields) {
        const double value = Amount(field.fromSections ? Sec2and3Query : MainQuery, field.column);
        if (CentsField(value, field.field.width)) continue;
        ErrorList.push_back("Amount too large for the A8A record. " + std::string(field.caption) + " of " +
                            TwoPlaces(value) + " does not fit in its " + std::to_string(field.field.width) +
                            "-character field.");
        clean = false;
    }
    const struct {
        const char* column;
        RecordField field;
        const char* caption;
    } counts[] = {{"OccupationDays", d::kOccupationDays, "No. of Days"},
                  {"NoOfEESharingQtr", d::kSharing, "No. of Employees Sharing the Quarter"}};
    for (const auto& count : counts) {
        const std::int64_t value = Integer(count.column);
        if (CountFits(value, count.field.width)) continue;
        ErrorList.push_back("Number too large for the A8A record. " + std::string(count.caption) + " of " +
                            std::to_string(value) + " does not fit in its " +
                            std::to_string(count.field.width) + "-character field.");
        clean = false;
    }
    return clean ? 1 : 0;
}

void RA8AeSubmission::PrepareA8ADetails() {
    if (!Params.check) return;

    std::array<std::string, kMoneyFields.size()> money;
    for (std::size_t i = 0; i < kMoneyFields.size(); ++i) {
        const MoneyField& field = kMoneyFields[i];
        const std::optional<std::string> text =
            CentsField(Amount(field.fromSections ? Sec2and3Query : MainQuery, field.column), field.field.width);
        if (!text) {
            // Validation reports this before a file is made; should a record
            // still get here, it is left out and the file is refused.
            WriteAllMemo("Employee " + EmployeeTaxNo() + " is not successfully processed: " + field.caption +
                         " is too large for the A8A record.");
            RecordFault = true;
            return;
        }
        money[i] = *text;
    }
    const std::int64_t days = Integer("OccupationDays");
    const std::int64_t sharing = Integer("NoOfEESharingQtr");
    if (!CountFits(days, d::kOccupationDays.width) || !CountFits(sharing, d::kSharing.width)) {
        WriteAllMemo("Employee " + EmployeeTaxNo() +
                     " is not successfully processed: a count is too large for the A8A record.");
        RecordFault = true;
        return;
    }

    BStringOutput& out = *Output;
    out.SetNew();
    Put(out, d::kRecordType, "1");
    // An id type that locates no keyword (possible in an unchecked
    // Amendment) is left blank rather than borrowing another row's code.
    if (YEKeywordRecLocate(Text("PayeeIDType"))) {
        Put(out, d::kIdType, _CStrToInt(KeywordProperty("YEProperty3")));
    } else {
        Put(out, d::kIdType, "");
    }
    Put(out, d::kIdNo, Text("TaxNo"));
    Put(out, d::kName1, Text("EEName1"));
    Put(out, d::kName2, Text("EEName2"));
    Put(out, d::kAddress1, Text("ResidenceAddress1"));
    Put(out, d::kAddress2, Text("ResidenceAddress2"));
    Put(out, d::kAddress3, Text("ResidenceAddress3"));
    PutDateOrBlank(out, d::kOccupationFrom, DateOf("OccupationFrom"));
    PutDateOrBlank(out, d::kOccupationTo, DateOf("OccupationTo"));
    if (days == 0) {
        Put(out, d::kOccupationDays, "0");
    } else {
        Put(out, d::kOccupationDays, days);
    }
    Put(out, d::kSharing, sharing);
    for (std::size_t i = 0; i < kMoneyFields.size(); ++i) Put(out, kMoneyFields[i].field, money[i]);
    Put(out, d::kFurnished, FurnishedCode(Text(Sec2and3Query, "FurnishedStatus")));
    Put(out, d::kReserved333, "");
    Put(out, d::kReserved335, "");
    Put(out, d::kReserved337, "");
    Put(out, d::kReserved339, " ");
    Put(out, d::kReserved421, "");
    Put(out, d::kFiller439, "");
    Put(out, d::kFiller651, "");
    out.SetEnd(1);
    out.ListOutput(OutputLines);
    ++RecordsSucceeded;
}

}  // namespace iras
