// The Appendix 8A detail record: one 700-character line per employee with
// identity, residence address, period of occupation of the quarters, the
// accommodation, utilities and hotel amounts of Sections 2 and 3, and the
// other benefits in kind with their total. Amounts are whole cents with the
// sign in the last character; a zero amount is nine zeros.
#include <array>
#include <cstdio>
#include <optional>

#include "submission/a8a/A8ALayout.h"
#include "submission/a8a/RA8AeSubmission.h"
#include "submission/common/AmountFields.h"

namespace iras {

namespace {

constexpr const a8a::DetailFields& d = a8a::kDetail;

struct MoneyField {
    const char* column;
    RecordField field;
    bool fromSections;  // the Sections 2 and 3 row, else the employee row
    const char* caption;
};

// Every money field of the record, in record order.
constexpr std::array<MoneyField, 24> kMoneyFields{{
    {"AnnualValue", d.annualValue, true, "Annual value of the premises"},
    {"FurnitureFittingsValue", d.furnitureFittings, true, "Value of furniture and fittings"},
    {"RentPaidToLandlord", d.rentToLandlord, true, "Rent paid to the landlord"},
    {"ResidenceValue", d.residenceValue, true, "Residence value"},
    {"RentPaidByEmployee", d.rentByEmployee, true, "Rent paid by the employee"},
    {"TotalTaxableResidenceValue", d.taxableResidence, true, "Total taxable residence value"},
    {"UtilityTelPagerValue", d.utilities, true, "Utilities, telephone, pager"},
    {"Driver", d.driver, true, "Driver"},
    {"ServantGardener", d.servant, true, "Servant, gardener"},
    {"TotalValueofUtilities", d.totalUtilities, true, "Total value of utilities"},
    {"HotelAccommodation", d.hotel, true, "Hotel accommodation"},
    {"HotelAmtPaidByEmployee", d.hotelByEmployee, true, "Hotel amount paid by the employee"},
    {"TotalHotelAccommodation", d.totalHotel, true, "Total hotel accommodation"},
    {"IncidentalBenefits", d.incidental, false, "Incidental benefits"},
    {"InterestLoan", d.interestLoan, false, "Interest on loans"},
    {"LifeInsurance", d.lifeInsurance, false, "Life insurance"},
    {"Holidays", d.holidays, false, "Holidays"},
    {"Education", d.education, false, "Education"},
    {"LongService", d.longService, false, "Long service awards"},
    {"Clubs", d.clubs, false, "Clubs"},
    {"Assets", d.assets, false, "Assets"},
    {"MotorVehicle", d.motorVehicle, false, "Motor vehicle"},
    {"CarBenefit", d.carBenefit, false, "Car benefit"},
    {"TotalBenefitInKind", d.totalBenefits, false, "Total benefits in kind"},
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

// What an Amendment corrects, for the verification report: every money
// field, all in whole cents.
std::vector<AmendmentField> RA8AeSubmission::AmendmentFields() const {
    std::vector<AmendmentField> fields;
    for (const MoneyField& money : kMoneyFields) fields.push_back({money.field, 2, money.caption});
    return fields;
}

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
    } counts[] = {{"OccupationDays", d.occupationDays, "No. of Days"},
                  {"NoOfEESharingQtr", d.sharing, "No. of Employees Sharing the Quarter"}};
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
    if (!CountFits(days, d.occupationDays.width) || !CountFits(sharing, d.sharing.width)) {
        WriteAllMemo("Employee " + EmployeeTaxNo() +
                     " is not successfully processed: a count is too large for the A8A record.");
        RecordFault = true;
        return;
    }

    BStringOutput& out = *Output;
    out.SetNew();
    Put(out, d.recordType, "1");
    Put(out, d.idType, PayeeIdTypeCode());
    Put(out, d.idNo, Text("TaxNo"));
    Put(out, d.name1, Text("EEName1"));
    Put(out, d.name2, Text("EEName2"));
    Put(out, d.address1, Text("ResidenceAddress1"));
    Put(out, d.address2, Text("ResidenceAddress2"));
    Put(out, d.address3, Text("ResidenceAddress3"));
    PutDateOrBlank(out, d.occupationFrom, DateOf("OccupationFrom"));
    PutDateOrBlank(out, d.occupationTo, DateOf("OccupationTo"));
    if (days == 0) {
        Put(out, d.occupationDays, "0");
    } else {
        Put(out, d.occupationDays, days);
    }
    Put(out, d.sharing, sharing);
    for (std::size_t i = 0; i < kMoneyFields.size(); ++i) Put(out, kMoneyFields[i].field, money[i]);
    Put(out, d.furnished, FurnishedCode(Text(Sec2and3Query, "FurnishedStatus")));
    Put(out, d.reserved333, "");
    Put(out, d.reserved335, "");
    Put(out, d.reserved337, "");
    Put(out, d.reserved339, " ");
    Put(out, d.reserved421, "");
    Put(out, d.filler439, "");
    Put(out, d.filler651, "");
    out.SetEnd(1);
    out.ListOutput(OutputLines);
    ++RecordsSucceeded;
}

}  // namespace iras
