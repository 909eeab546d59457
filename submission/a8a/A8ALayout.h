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

// The detail record, one row per field in record order.
struct DetailFields {
    RecordField recordType, idType, idNo, name1, name2, address1, address2, address3, occupationFrom,
        occupationTo, occupationDays, sharing, annualValue, furnished, furnitureFittings, rentToLandlord,
        residenceValue, rentByEmployee, taxableResidence, utilities, driver, servant, totalUtilities, hotel,
        hotelByEmployee, totalHotel, incidental, reserved333, reserved335, reserved337, reserved339,
        interestLoan, lifeInsurance, holidays, education, longService, clubs, assets, motorVehicle,
        carBenefit, reserved421, totalBenefits, filler439, filler651;
};

inline constexpr DetailFields kDetail{
    // The employee.
    .recordType = {1, 1, FieldKind::Text},
    .idType = {2, 1, FieldKind::Text},
    .idNo = {3, 12, FieldKind::Text},
    .name1 = {15, 40, FieldKind::Text},
    .name2 = {55, 40, FieldKind::Text},

    // Section 1: the place of residence and its period of occupation.
    .address1 = {95, 30, FieldKind::Text},
    .address2 = {125, 30, FieldKind::Text},
    .address3 = {155, 30, FieldKind::Text},
    .occupationFrom = {185, 8, FieldKind::Date},
    .occupationTo = {193, 8, FieldKind::Date},
    .occupationDays = {201, 3, FieldKind::Integer},
    .sharing = {204, 2, FieldKind::Integer},

    // Section 2: accommodation and furniture.
    .annualValue = {206, 9, FieldKind::Amount},
    .furnished = {215, 1, FieldKind::Text},
    .furnitureFittings = {216, 9, FieldKind::Amount},
    .rentToLandlord = {225, 9, FieldKind::Amount},
    .residenceValue = {234, 9, FieldKind::Amount},
    .rentByEmployee = {243, 9, FieldKind::Amount},
    .taxableResidence = {252, 9, FieldKind::Amount},

    // Section 3: utilities, staff and hotel stays.
    .utilities = {261, 9, FieldKind::Amount},
    .driver = {270, 9, FieldKind::Amount},
    .servant = {279, 9, FieldKind::Amount},
    .totalUtilities = {288, 9, FieldKind::Amount},
    .hotel = {297, 9, FieldKind::Amount},
    .hotelByEmployee = {306, 9, FieldKind::Amount},
    .totalHotel = {315, 9, FieldKind::Amount},

    // Section 4: other benefits (the three reserved counts are zeros), the
    // total of every benefit, and the filler.
    .incidental = {324, 9, FieldKind::Amount},
    .reserved333 = {333, 2, FieldKind::Integer},
    .reserved335 = {335, 2, FieldKind::Integer},
    .reserved337 = {337, 2, FieldKind::Integer},
    .reserved339 = {339, 1, FieldKind::Text},
    .interestLoan = {340, 9, FieldKind::Amount},
    .lifeInsurance = {349, 9, FieldKind::Amount},
    .holidays = {358, 9, FieldKind::Amount},
    .education = {367, 9, FieldKind::Amount},
    .longService = {376, 9, FieldKind::Amount},
    .clubs = {385, 9, FieldKind::Amount},
    .assets = {394, 9, FieldKind::Amount},
    .motorVehicle = {403, 9, FieldKind::Amount},
    .carBenefit = {412, 9, FieldKind::Amount},
    .reserved421 = {421, 9, FieldKind::Text},
    .totalBenefits = {430, 9, FieldKind::Amount},
    .filler439 = {439, 212, FieldKind::Text},
    .filler651 = {651, 50, FieldKind::Text},
};

}  // namespace iras::a8a
