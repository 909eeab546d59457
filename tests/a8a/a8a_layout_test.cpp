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
    const a8a::DetailFields& d = a8a::kDetail;
    ExpectFieldsTile(
        {d.recordType,   d.idType,         d.idNo,           d.name1,          d.name2,
         d.address1,     d.address2,       d.address3,       d.occupationFrom, d.occupationTo,
         d.occupationDays, d.sharing,      d.annualValue,    d.furnished,      d.furnitureFittings,
         d.rentToLandlord, d.residenceValue, d.rentByEmployee, d.taxableResidence, d.utilities,
         d.driver,       d.servant,        d.totalUtilities, d.hotel,          d.hotelByEmployee,
         d.totalHotel,   d.incidental,     d.reserved333,    d.reserved335,    d.reserved337,
         d.reserved339,  d.interestLoan,   d.lifeInsurance,  d.holidays,       d.education,
         d.longService,  d.clubs,          d.assets,         d.motorVehicle,   d.carBenefit,
         d.reserved421,  d.totalBenefits,  d.filler439,      d.filler651},
        1, a8a::kRecordWidth);
}

}  // namespace
}  // namespace iras::testing
