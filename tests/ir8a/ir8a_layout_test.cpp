// The IR8A layout tables against IRAS's layout: each record's fields cover
// its 1200 positions exactly once, so that no field is shifted by one.
#include "submission/ir8a/IR8ALayout.h"
#include "tests/support/ReturnTestSupport.h"

namespace iras::testing {
namespace {

namespace h = ir8a::header;
namespace d = ir8a::detail;
namespace t = ir8a::trailer;

TEST(IR8ALayout, EveryRecordCoversItsTwelveHundredPositionsOnce) {
    ExpectFieldsTile({h::kRecordType, h::kSource, h::kBasisYear, h::kPaymentType, h::kOrganisationIdType,
                      h::kOrganisationIdNo, h::kAuthorisedName, h::kAuthorisedDesignation, h::kEmployerName,
                      h::kTelephone, h::kEmail, h::kBatchIndicator, h::kBatchDate, h::kDivisionBranch,
                      h::kFormName, h::kFiller},
                     1, 1200);

    std::vector<RecordField> detail{
        d::kRecordType, d::kIdType, d::kIdNo, d::kName1, d::kName2, d::kNationality, d::kGender,
        d::kDateOfBirth, d::kTotalIncome, d::kPeriodFrom, d::kPeriodTo, d::kMosqueFund, d::kDonation,
        d::kEmployeeCpf, d::kInsurance, d::kSalary, d::kBonus, d::kDirectorFee, d::kOthers,
        d::kStockGainsBefore, d::kExemptIncome, d::kTaxBorneByEmployer, d::kFixedTaxBorneByEmployee,
        d::kBenefitsInKindIndicator, d::kSection45, d::kIncomeTaxBorne, d::kGratuityIndicator,
        d::kCompensationIndicator, d::kCompensationApproval, d::kCompensationApprovalDate,
        d::kCessationProvision, d::kIR8SIndicator, d::kExemptIncomeIndicator, d::kReserved399, d::kCommission,
        d::kCommissionFrom, d::kCommissionTo, d::kCommissionType, d::kPension, d::kTransport,
        d::kEntertainment, d::kOtherAllowances, d::kGratuity, d::kCompensation, d::kAccruedTo,
        d::kAccruedFrom, d::kOutsideContributions, d::kExcessEmployerCpf, d::kStockGainsAfter,
        d::kBenefitsInKind, d::kReserved560, d::kDesignation, d::kCommencement, d::kCessation,
        d::kBonusDeclared, d::kDirectorFeeApproved, d::kRetirementDetails, d::kPensionDetails, d::kBankId,
        d::kReserved750, d::kFiller758, d::kFiller1151};
    detail.insert(detail.end(), std::begin(d::kAddress), std::end(d::kAddress));
    ExpectFieldsTile(detail, 1, 1200);

    std::vector<RecordField> trailer{t::kRecordType, t::kRecordCount, t::kFiller};
    for (int i = 0; i < t::kTotals.count; ++i) trailer.push_back(t::kTotals.Field(i, t::kTotal));
    ExpectFieldsTile(trailer, 1, 1200);
    // The twelfth total ends at 151, where IRAS's layout puts it.
    EXPECT_EQ(t::kTotals.Field(11, t::kTotal).Last(), 151);
}

}  // namespace
}  // namespace iras::testing
