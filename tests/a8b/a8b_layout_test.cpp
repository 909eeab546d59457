// The Appendix 8B layout tables cover their records exactly: a row slot its
// 139 (Section A) or 148 characters, the detail record positions 1 to 9301
// as declared (the builder writes 9300 of them), header and trailer 1 to 9300.
#include <vector>

#include "submission/a8b/A8BLayout.h"
#include "tests/support/ReturnTestSupport.h"

namespace iras::testing {
namespace {

namespace d = a8b::detail;
namespace r = a8b::detail::row;

std::vector<RecordField> RowFields(int amounts) {
    std::vector<RecordField> fields{r::kCompanyIdType, r::kRcbNo,         r::kCompanyName,
                                    r::kPlanType,      r::kDateGranted,   r::kDateExercised,
                                    r::kExercisePrice, r::kValueAtGrant,  r::kValueAtExercise,
                                    r::kShares};
    for (int i = 0; i < amounts; ++i) fields.push_back(r::kAmounts[static_cast<std::size_t>(i)]);
    return fields;
}

TEST(A8BLayout, ARowSlotTilesItsLength) {
    ExpectFieldsTile(RowFields(2), 1, r::kLengthA);
    ExpectFieldsTile(RowFields(3), 1, r::kLengthBToD);
    EXPECT_EQ(r::kLengthA, 139);
    EXPECT_EQ(r::kLengthBToD, 148);
}

TEST(A8BLayout, DetailRecordTilesToTheDeclaredColumn9301) {
    std::vector<RecordField> fields{d::kRecordType, d::kIdType,      d::kIdNo,   d::kName1,
                                    d::kName2,      d::kNationality, d::kGender, d::kDateOfBirth,
                                    d::kFiller9116, d::kFiller9252};
    for (std::size_t s = 0; s < 4; ++s) {
        const RecordBlock rows = d::kSectionRows[s];
        for (int k = 0; k < rows.count; ++k)
            for (const RecordField& field : RowFields(s == 0 ? 2 : 3)) fields.push_back(rows.Field(k, field));
        const RecordBlock totals = d::kSectionTotals[s];
        for (int t = 0; t < totals.count; ++t) fields.push_back(totals.Field(t, d::kSectionTotal));
    }
    for (int g = 0; g < d::kGrandTotals.count; ++g) fields.push_back(d::kGrandTotals.Field(g, d::kGrandTotal));
    ExpectFieldsTile(fields, 1, 9301);
}

TEST(A8BLayout, HeaderAndTrailerTile9300) {
    namespace h = a8b::header;
    ExpectFieldsTile({h::kRecordType, h::kSource, h::kBasisYear, h::kPaymentType, h::kOrganisationIdType,
                      h::kOrganisationIdNo, h::kAuthorisedName, h::kAuthorisedDesignation, h::kEmployerName,
                      h::kTelephone, h::kEmail, h::kBatchIndicator, h::kBatchDate, h::kIncorporation,
                      h::kDivisionBranch, h::kFileType, h::kFiller},
                     1, 9300);
    namespace t = a8b::trailer;
    std::vector<RecordField> fields{t::kRecordType, t::kRecordCount, t::kFiller};
    for (int i = 0; i < t::kTotals.count; ++i) fields.push_back(t::kTotals.Field(i, t::kTotal));
    ExpectFieldsTile(fields, 1, 9300);
}

}  // namespace
}  // namespace iras::testing
