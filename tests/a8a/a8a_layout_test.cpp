// The Appendix 8A layout tables cover their records exactly: the header its
// 800 positions, a detail record its 700.
#include "submission/a8a/A8ALayout.h"
#include "tests/support/ReturnTestSupport.h"

namespace iras::testing {
namespace {

TEST(A8ALayout, HeaderFieldsTileItsEightHundredPositions) {
    const EmployerHeaderFields& h = a8a::kHeader;
    ExpectFieldsTile({h.recordType, h.source, h.basisYear, h.organisationIdType, h.organisationIdNo,
                      h.authorisedName, h.authorisedDesignation, h.employerName, h.telephone, h.email,
                      h.batchIndicator, h.batchDate, h.divisionBranch, h.formName, h.filler},
                     1, a8a::kHeaderWidth);
}

TEST(A8ALayout, DetailFieldsTileItsSevenHundredPositions) {
    namespace d = a8a::detail;
    ExpectFieldsTile(
        {d::kRecordType,   d::kIdType,         d::kIdNo,           d::kName1,          d::kName2,
         d::kAddress1,     d::kAddress2,       d::kAddress3,       d::kOccupationFrom, d::kOccupationTo,
         d::kOccupationDays, d::kSharing,      d::kAnnualValue,    d::kFurnished,      d::kFurnitureFittings,
         d::kRentToLandlord, d::kResidenceValue, d::kRentByEmployee, d::kTaxableResidence, d::kUtilities,
         d::kDriver,       d::kServant,        d::kTotalUtilities, d::kHotel,          d::kHotelByEmployee,
         d::kTotalHotel,   d::kIncidental,     d::kReserved333,    d::kReserved335,    d::kReserved337,
         d::kReserved339,  d::kInterestLoan,   d::kLifeInsurance,  d::kHolidays,       d::kEducation,
         d::kLongService,  d::kClubs,          d::kAssets,         d::kMotorVehicle,   d::kCarBenefit,
         d::kReserved421,  d::kTotalBenefits,  d::kFiller439,      d::kFiller651},
        1, a8a::kRecordWidth);
}

}  // namespace
}  // namespace iras::testing
