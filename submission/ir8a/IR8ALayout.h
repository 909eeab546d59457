// The IR8A records as IRAS lays them out: header, detail and trailer, each
// 1200 characters. One row per field, with the layout's 1-based start, its
// width and how the line builder places it; the record code names these rows
// and never a column number.
#pragma once

#include "submission/common/SharedRecordFields.h"
#include "submission/common/RecordLayout.h"

namespace iras::ir8a {

inline constexpr int kRecordWidth = 1200;

namespace header {
// Positions 1-230, the same in every return with a payment type.
using namespace employer_header;
inline constexpr RecordField kDivisionBranch{231, 30, FieldKind::Text};
inline constexpr RecordField kFormName{261, 10, FieldKind::Text};
inline constexpr RecordField kFiller{271, 930, FieldKind::Text};
}  // namespace header

namespace detail {
// Positions 1-94, the same in every return.
using namespace employee_detail;
// 95-250, the address block, is not reported: eleven empty fields.
inline constexpr RecordField kAddress[] = {
    {95, 1, FieldKind::Text},   {96, 10, FieldKind::Text},  {106, 32, FieldKind::Text},
    {138, 3, FieldKind::Text},  {141, 5, FieldKind::Text},  {146, 6, FieldKind::Text},
    {152, 30, FieldKind::Text}, {182, 30, FieldKind::Text}, {212, 30, FieldKind::Text},
    {242, 6, FieldKind::Text},  {248, 3, FieldKind::Text},
};
inline constexpr RecordField kNationality{251, 3, FieldKind::Text};
inline constexpr RecordField kGender{254, 1, FieldKind::Text};
inline constexpr RecordField kDateOfBirth{255, 8, FieldKind::Date};
inline constexpr RecordField kTotalIncome{263, 9, FieldKind::Amount};
inline constexpr RecordField kPeriodFrom{272, 8, FieldKind::Date};
inline constexpr RecordField kPeriodTo{280, 8, FieldKind::Date};
inline constexpr RecordField kMosqueFund{288, 5, FieldKind::Amount};
inline constexpr RecordField kDonation{293, 5, FieldKind::Amount};
inline constexpr RecordField kEmployeeCpf{298, 7, FieldKind::Amount};
inline constexpr RecordField kInsurance{305, 5, FieldKind::Amount};
inline constexpr RecordField kSalary{310, 9, FieldKind::Amount};
inline constexpr RecordField kBonus{319, 9, FieldKind::Amount};
inline constexpr RecordField kDirectorFee{328, 9, FieldKind::Amount};
inline constexpr RecordField kOthers{337, 9, FieldKind::Amount};
inline constexpr RecordField kStockGainsBefore{346, 9, FieldKind::Amount};
inline constexpr RecordField kExemptIncome{355, 9, FieldKind::Amount};
inline constexpr RecordField kTaxBorneByEmployer{364, 9, FieldKind::Amount};
inline constexpr RecordField kFixedTaxBorneByEmployee{373, 9, FieldKind::Amount};
inline constexpr RecordField kBenefitsInKindIndicator{382, 1, FieldKind::Text};
inline constexpr RecordField kSection45{383, 1, FieldKind::Text};
inline constexpr RecordField kIncomeTaxBorne{384, 1, FieldKind::Text};
inline constexpr RecordField kGratuityIndicator{385, 1, FieldKind::Text};
inline constexpr RecordField kCompensationIndicator{386, 1, FieldKind::Text};
inline constexpr RecordField kCompensationApproval{387, 1, FieldKind::Text};
inline constexpr RecordField kCompensationApprovalDate{388, 8, FieldKind::Date};
inline constexpr RecordField kCessationProvision{396, 1, FieldKind::Text};
inline constexpr RecordField kIR8SIndicator{397, 1, FieldKind::Text};
inline constexpr RecordField kExemptIncomeIndicator{398, 1, FieldKind::Text};
inline constexpr RecordField kReserved399{399, 1, FieldKind::Text};
inline constexpr RecordField kCommission{400, 11, FieldKind::Amount};
inline constexpr RecordField kCommissionFrom{411, 8, FieldKind::Date};
inline constexpr RecordField kCommissionTo{419, 8, FieldKind::Date};
inline constexpr RecordField kCommissionType{427, 1, FieldKind::Text};
inline constexpr RecordField kPension{428, 11, FieldKind::Amount};
inline constexpr RecordField kTransport{439, 11, FieldKind::Amount};
inline constexpr RecordField kEntertainment{450, 11, FieldKind::Amount};
inline constexpr RecordField kOtherAllowances{461, 11, FieldKind::Amount};
inline constexpr RecordField kGratuity{472, 11, FieldKind::Amount};
inline constexpr RecordField kCompensation{483, 11, FieldKind::Amount};
inline constexpr RecordField kAccruedTo{494, 11, FieldKind::Amount};
inline constexpr RecordField kAccruedFrom{505, 11, FieldKind::Amount};
inline constexpr RecordField kOutsideContributions{516, 11, FieldKind::Amount};
inline constexpr RecordField kExcessEmployerCpf{527, 11, FieldKind::Amount};
inline constexpr RecordField kStockGainsAfter{538, 11, FieldKind::Amount};
inline constexpr RecordField kBenefitsInKind{549, 11, FieldKind::Amount};
inline constexpr RecordField kReserved560{560, 7, FieldKind::Text};
inline constexpr RecordField kDesignation{567, 30, FieldKind::Text};
inline constexpr RecordField kCommencement{597, 8, FieldKind::Date};
inline constexpr RecordField kCessation{605, 8, FieldKind::Date};
inline constexpr RecordField kBonusDeclared{613, 8, FieldKind::Date};
inline constexpr RecordField kDirectorFeeApproved{621, 8, FieldKind::Date};
inline constexpr RecordField kRetirementDetails{629, 60, FieldKind::Text};
inline constexpr RecordField kPensionDetails{689, 60, FieldKind::Text};
inline constexpr RecordField kBankId{749, 1, FieldKind::Text};
inline constexpr RecordField kReserved750{750, 8, FieldKind::Text};
inline constexpr RecordField kFiller758{758, 393, FieldKind::Text};
inline constexpr RecordField kFiller1151{1151, 50, FieldKind::Text};
}  // namespace detail

namespace trailer {
// Positions 1-7, the same in every return with a trailer.
using namespace trailer_count;
// The twelve totals, 12 wide each from position 8, written as text ("0" or
// the unpadded encoded total).
inline constexpr RecordBlock kTotals{8, 12, 12};
inline constexpr RecordField kTotal{1, 12, FieldKind::Text};
inline constexpr RecordField kFiller{152, 1049, FieldKind::Text};
}  // namespace trailer

}  // namespace iras::ir8a
