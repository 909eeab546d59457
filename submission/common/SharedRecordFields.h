// Fields that the records of several returns share at the same positions:
// the detail record's first 94 (record type and who the employee is) in
// every return; the header's first 230 (record type, source, basis year,
// payment type, who the employer is and who signs for it, the batch) in the
// returns whose header carries a payment type (IR8A, Appendix 8B); the
// trailer's first 7 (record type and count) in the returns with a trailer.
// What follows differs from return to return and stays in each return's own
// layout.
#pragma once

#include "submission/common/RecordLayout.h"

namespace iras::employer_header {

inline constexpr RecordField kRecordType{1, 1, FieldKind::Text};
inline constexpr RecordField kSource{2, 1, FieldKind::Text};
inline constexpr RecordField kBasisYear{3, 4, FieldKind::Text};
inline constexpr RecordField kPaymentType{7, 2, FieldKind::Text};
inline constexpr RecordField kOrganisationIdType{9, 1, FieldKind::Text};
inline constexpr RecordField kOrganisationIdNo{10, 12, FieldKind::Text};
inline constexpr RecordField kAuthorisedName{22, 30, FieldKind::Text};
inline constexpr RecordField kAuthorisedDesignation{52, 30, FieldKind::Text};
inline constexpr RecordField kEmployerName{82, 60, FieldKind::Text};
inline constexpr RecordField kTelephone{142, 20, FieldKind::Text};
inline constexpr RecordField kEmail{162, 60, FieldKind::Text};
inline constexpr RecordField kBatchIndicator{222, 1, FieldKind::Text};
inline constexpr RecordField kBatchDate{223, 8, FieldKind::Date};

}  // namespace iras::employer_header

namespace iras::employee_detail {

inline constexpr RecordField kRecordType{1, 1, FieldKind::Text};
inline constexpr RecordField kIdType{2, 1, FieldKind::Text};
inline constexpr RecordField kIdNo{3, 12, FieldKind::Text};
inline constexpr RecordField kName1{15, 40, FieldKind::Text};
inline constexpr RecordField kName2{55, 40, FieldKind::Text};

}  // namespace iras::employee_detail

namespace iras::trailer_count {

inline constexpr RecordField kRecordType{1, 1, FieldKind::Text};
inline constexpr RecordField kRecordCount{2, 6, FieldKind::Integer};

}  // namespace iras::trailer_count
