// The Appendix 8A records as IRAS lays them out: an 800-character header and
// 700-character detail records, no trailer. The header's fields reach past the
// detail width, so the file's records differ in length on purpose. One row per
// field, with the layout's 1-based start, its width and how the line builder
// places it; the record code names these rows and never a column number.
#pragma once

#include "submission/common/RYESubmissionJob.h"
#include "submission/common/RecordLayout.h"

namespace iras::a8a {

inline constexpr int kRecordWidth = 700;
inline constexpr int kHeaderWidth = 800;

// The header: the employer's fields of every return, at the appendix's
// positions; the form name "A8A" at 259.
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
    .filler = {269, 532, FieldKind::Text},
};

namespace detail {
// The employee.
inline constexpr RecordField kRecordType{1, 1, FieldKind::Text};
inline constexpr RecordField kIdType{2, 1, FieldKind::Text};
inline constexpr RecordField kIdNo{3, 12, FieldKind::Text};
inline constexpr RecordField kName1{15, 40, FieldKind::Text};
inline constexpr RecordField kName2{55, 40, FieldKind::Text};

// Section 1: the place of residence and its period of occupation.
inline constexpr RecordField kAddress1{95, 30, FieldKind::Text};
inline constexpr RecordField kAddress2{125, 30, FieldKind::Text};
inline constexpr RecordField kAddress3{155, 30, FieldKind::Text};
inline constexpr RecordField kOccupationFrom{185, 8, FieldKind::Date};
inline constexpr RecordField kOccupationTo{193, 8, FieldKind::Date};
inline constexpr RecordField kOccupationDays{201, 3, FieldKind::Integer};
inline constexpr RecordField kSharing{204, 2, FieldKind::Integer};

// Section 2: accommodation and furniture.
inline constexpr RecordField kAnnualValue{206, 9, FieldKind::Amount};
inline constexpr RecordField kFurnished{215, 1, FieldKind::Text};
inline constexpr RecordField kFurnitureFittings{216, 9, FieldKind::Amount};
inline constexpr RecordField kRentToLandlord{225, 9, FieldKind::Amount};
inline constexpr RecordField kResidenceValue{234, 9, FieldKind::Amount};
inline constexpr RecordField kRentByEmployee{243, 9, FieldKind::Amount};
inline constexpr RecordField kTaxableResidence{252, 9, FieldKind::Amount};

// Section 3: utilities, staff and hotel stays.
inline constexpr RecordField kUtilities{261, 9, FieldKind::Amount};
inline constexpr RecordField kDriver{270, 9, FieldKind::Amount};
inline constexpr RecordField kServant{279, 9, FieldKind::Amount};
inline constexpr RecordField kTotalUtilities{288, 9, FieldKind::Amount};
inline constexpr RecordField kHotel{297, 9, FieldKind::Amount};
inline constexpr RecordField kHotelByEmployee{306, 9, FieldKind::Amount};
inline constexpr RecordField kTotalHotel{315, 9, FieldKind::Amount};

// Section 4: other benefits. The three reserved counts are zeros.
inline constexpr RecordField kIncidental{324, 9, FieldKind::Amount};
inline constexpr RecordField kReserved333{333, 2, FieldKind::Integer};
inline constexpr RecordField kReserved335{335, 2, FieldKind::Integer};
inline constexpr RecordField kReserved337{337, 2, FieldKind::Integer};
inline constexpr RecordField kReserved339{339, 1, FieldKind::Text};
inline constexpr RecordField kInterestLoan{340, 9, FieldKind::Amount};
inline constexpr RecordField kLifeInsurance{349, 9, FieldKind::Amount};
inline constexpr RecordField kHolidays{358, 9, FieldKind::Amount};
inline constexpr RecordField kEducation{367, 9, FieldKind::Amount};
inline constexpr RecordField kLongService{376, 9, FieldKind::Amount};

// Section 4 continued, the total of every benefit, and the filler.
inline constexpr RecordField kClubs{385, 9, FieldKind::Amount};
inline constexpr RecordField kAssets{394, 9, FieldKind::Amount};
inline constexpr RecordField kMotorVehicle{403, 9, FieldKind::Amount};
inline constexpr RecordField kCarBenefit{412, 9, FieldKind::Amount};
inline constexpr RecordField kReserved421{421, 9, FieldKind::Text};
inline constexpr RecordField kTotalBenefits{430, 9, FieldKind::Amount};
inline constexpr RecordField kFiller439{439, 212, FieldKind::Text};
inline constexpr RecordField kFiller651{651, 50, FieldKind::Text};
}  // namespace detail

}  // namespace iras::a8a
