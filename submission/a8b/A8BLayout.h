// The Appendix 8B records as IRAS lays them out: header, detail and trailer,
// each 9300 characters. The detail record is the employee, then four
// sections of fifteen share-plan row slots, each section followed by its
// totals, then the employee's four grand totals. A row slot is described
// once (kRow) and each section is a block of fifteen slots of it: a Section A
// slot ends after its gains (139 characters), a slot of Sections B to D
// carries the exempt amount first and is 148 characters.
//
// The detail record's last declared blank field reaches position 9301; the
// line builder works in fixed width for this return, so the record is cut at
// 9300 like the header and the trailer.
#pragma once

#include <array>

#include "submission/common/SharedRecordFields.h"
#include "submission/common/RecordLayout.h"

namespace iras::a8b {

inline constexpr int kRecordWidth = 9300;
inline constexpr int kRowsPerSection = 15;

namespace header {
using namespace employer_header;  // positions 1-230, as in IR8A
inline constexpr RecordField kIncorporation{231, 8, FieldKind::Date};
inline constexpr RecordField kDivisionBranch{239, 30, FieldKind::Text};
inline constexpr RecordField kFileType{269, 10, FieldKind::Text};
inline constexpr RecordField kFiller{279, 9022, FieldKind::Text};
}  // namespace header

namespace detail {
using namespace employee_detail;  // positions 1-94, as in every return
inline constexpr RecordField kNationality{95, 3, FieldKind::Text};
inline constexpr RecordField kGender{98, 1, FieldKind::Text};
inline constexpr RecordField kDateOfBirth{99, 8, FieldKind::Date};

// One share-plan row slot, by its 1-based offset in the slot.
namespace row {
inline constexpr RecordField kCompanyIdType{1, 1, FieldKind::Text};
inline constexpr RecordField kRcbNo{2, 12, FieldKind::Text};
inline constexpr RecordField kCompanyName{14, 40, FieldKind::Text};
inline constexpr RecordField kPlanType{54, 4, FieldKind::Text};
inline constexpr RecordField kDateGranted{58, 8, FieldKind::Date};
inline constexpr RecordField kDateExercised{66, 8, FieldKind::Date};
inline constexpr RecordField kExercisePrice{74, 12, FieldKind::Amount};
inline constexpr RecordField kValueAtGrant{86, 12, FieldKind::Amount};
inline constexpr RecordField kValueAtExercise{98, 12, FieldKind::Amount};
inline constexpr RecordField kShares{110, 12, FieldKind::Amount};
// The row's amounts, in record order: Section A has two (not qualifying,
// gains), Sections B-D three (exempt, not qualifying, gains).
inline constexpr std::array<RecordField, 3> kAmounts{{
    {122, 9, FieldKind::Amount},
    {131, 9, FieldKind::Amount},
    {140, 9, FieldKind::Amount},
}};
inline constexpr int kLengthA = 139;
inline constexpr int kLengthBToD = 148;
}  // namespace row

// The row slots of each section, in record order A, B, C, D.
inline constexpr std::array<RecordBlock, 4> kSectionRows{{
    {107, row::kLengthA, kRowsPerSection},
    {2232, row::kLengthBToD, kRowsPerSection},
    {4512, row::kLengthBToD, kRowsPerSection},
    {6792, row::kLengthBToD, kRowsPerSection},
}};
// The totals after each section's rows, 10 wide each: Section A four
// (not qualifying after, before; gains after, before), Sections B-D six
// (exempt, not qualifying, gains; each after, before).
inline constexpr RecordField kSectionTotal{1, 10, FieldKind::Amount};
inline constexpr std::array<RecordBlock, 4> kSectionTotals{{
    {2192, 10, 4},
    {4452, 10, 6},
    {6732, 10, 6},
    {9012, 10, 6},
}};
// Not qualifying after, before; gains after, before; 11 wide each.
inline constexpr RecordBlock kGrandTotals{9072, 11, 4};
inline constexpr RecordField kGrandTotal{1, 11, FieldKind::Amount};
inline constexpr RecordField kFiller9116{9116, 136, FieldKind::Text};
inline constexpr RecordField kFiller9252{9252, 50, FieldKind::Text};  // declared to 9301, written to 9300
}  // namespace detail

namespace trailer {
using namespace trailer_count;  // positions 1-7, as in every trailer
// The 26 file totals, 14 wide each, in the order of the detail totals:
// Section A's four, B's, C's and D's six, the four grand totals.
inline constexpr RecordBlock kTotals{8, 14, 26};
inline constexpr RecordField kTotal{1, 14, FieldKind::Text};
inline constexpr RecordField kFiller{372, 8929, FieldKind::Text};
}  // namespace trailer

}  // namespace iras::a8b
