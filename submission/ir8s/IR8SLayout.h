// The IR8S records as IRAS lays them out: the header and the detail record,
// 1200 characters each. The detail record holds twelve months of wages and
// CPF contributions (one block per month), their totals, and the
// additional-wage payments with the refunds claimed on them (one block per
// payment, three in the record). An Amendment may carry more payments than
// three: each further block lengthens the record by its 75 characters, and
// the two fillers that close the record move behind it. One row per field,
// with the layout's 1-based start, its width and how the line builder places
// it; the record code names these rows and never a column number.
#pragma once

#include "submission/common/RecordLayout.h"

namespace iras::ir8s {

// Header and detail alike; a detail record with more than three Section B
// payments is longer (see AfterSectionB).
inline constexpr int kRecordWidth = 1200;

// The header: the employer's fields of every return, at IR8S's positions;
// the form name "IR8S" at 259.
inline constexpr EmployerHeaderFields kHeader{
    .recordType = {1, 1, FieldKind::Text},
    .source = {2, 1, FieldKind::Text},
    .basisYear = {3, 4, FieldKind::Text},
    .organisationIdType = {7, 1, FieldKind::Text},
    .organisationIdNo = {8, 12, FieldKind::Text},
    .authorisedName = {20, 30, FieldKind::Text},
    .authorisedDesignation = {50, 30, FieldKind::Text},
    .employerName = {80, 60, FieldKind::Text},
    .telephone = {140, 20, FieldKind::Text},
    .email = {160, 60, FieldKind::Text},
    .batchIndicator = {220, 1, FieldKind::Text},
    .batchDate = {221, 8, FieldKind::Date},
    .divisionBranch = {229, 30, FieldKind::Text},
    .formName = {259, 10, FieldKind::Text},
    .filler = {269, 932, FieldKind::Text},
};

namespace detail {
inline constexpr RecordField kRecordType{1, 1, FieldKind::Text};
inline constexpr RecordField kIdType{2, 1, FieldKind::Text};
inline constexpr RecordField kIdNo{3, 12, FieldKind::Text};
inline constexpr RecordField kName1{15, 40, FieldKind::Text};
inline constexpr RecordField kName2{55, 40, FieldKind::Text};

// Section A: months 1 to 12, 54 characters each from position 95, six
// amounts in cents of nine characters. A zero month is nine zeros placed as
// text; any other amount is placed right-aligned.
inline constexpr int kMonths = 12;
inline constexpr RecordBlock kMonthBlocks{95, 54, kMonths};
inline constexpr RecordField kOrdWages{1, 9, FieldKind::Amount};
inline constexpr RecordField kContriOrdERCPF{10, 9, FieldKind::Amount};
inline constexpr RecordField kContriOrdEECPF{19, 9, FieldKind::Amount};
inline constexpr RecordField kAddWages{28, 9, FieldKind::Amount};
inline constexpr RecordField kContriAddERCPF{37, 9, FieldKind::Amount};
inline constexpr RecordField kContriAddEECPF{46, 9, FieldKind::Amount};

// The totals of the year in whole dollars, from the thirteenth Section A row.
inline constexpr RecordField kTotalOrdWages{743, 7, FieldKind::Text};
inline constexpr RecordField kTotalContriOrdERCPF{750, 7, FieldKind::Text};
inline constexpr RecordField kTotalContriOrdEECPF{757, 7, FieldKind::Text};
inline constexpr RecordField kTotalAddWages{764, 7, FieldKind::Text};
inline constexpr RecordField kTotalContriAddERCPF{771, 7, FieldKind::Text};
inline constexpr RecordField kTotalContriAddEECPF{778, 7, FieldKind::Text};
inline constexpr RecordField kFiller785{785, 18, FieldKind::Text};
inline constexpr RecordField kRecentSPR{803, 1, FieldKind::Text};
inline constexpr RecordField kFullCPFApproval{804, 1, FieldKind::Text};
inline constexpr RecordField kERVolCPF{805, 7, FieldKind::Text};
inline constexpr RecordField kEEVolCPF{812, 7, FieldKind::Text};

// Section B: one block of 75 characters per additional-wage payment from
// position 819; the record has room for three.
inline constexpr int kSectionBRows = 3;
inline constexpr RecordBlock kSectionBBlocks{819, 75, kSectionBRows};
inline constexpr RecordField kAddWageAmt{1, 7, FieldKind::Text};
inline constexpr RecordField kAddWageFrom{8, 8, FieldKind::Date};
inline constexpr RecordField kAddWageTo{16, 8, FieldKind::Date};
inline constexpr RecordField kAddWagePaidDate{24, 8, FieldKind::Date};
inline constexpr RecordField kERContribution{32, 7, FieldKind::Text};
inline constexpr RecordField kERInterest{39, 7, FieldKind::Text};
inline constexpr RecordField kERDate{46, 8, FieldKind::Date};
inline constexpr RecordField kEEContribution{54, 7, FieldKind::Text};
inline constexpr RecordField kEEInterest{61, 7, FieldKind::Text};
inline constexpr RecordField kEEDate{68, 8, FieldKind::Date};

// The fillers after Section B, where the record has three payment blocks.
inline constexpr RecordField kFiller1044{1044, 107, FieldKind::Text};
inline constexpr RecordField kFiller1151{1151, 50, FieldKind::Text};

// A field behind Section B, moved back by the blocks beyond the third.
constexpr RecordField AfterSectionB(RecordField field, int sectionBRows) {
    const int extra = sectionBRows > kSectionBRows ? sectionBRows - kSectionBRows : 0;
    return {field.start + extra * kSectionBBlocks.length, field.width, field.kind};
}
}  // namespace detail

}  // namespace iras::ir8s
