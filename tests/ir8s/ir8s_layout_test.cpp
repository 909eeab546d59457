// The IR8S layout tables cover their records exactly: every position of the
// header and of the detail record belongs to one field, and the month and
// payment blocks fall where IRAS's layout puts them.
#include "tests/ir8s/IR8SFixture.h"

namespace iras::testing {
namespace {

namespace d = ir8s::detail;

TEST(IR8SLayout, HeaderFieldsTileTheRecord) {
    const EmployerHeaderFields& h = ir8s::kHeader;
    ExpectFieldsTile({h.recordType, h.source, h.basisYear, h.organisationIdType, h.organisationIdNo,
                      h.authorisedName, h.authorisedDesignation, h.employerName, h.telephone, h.email,
                      h.batchIndicator, h.batchDate, h.divisionBranch, h.formName, h.filler},
                     1, ir8s::kRecordWidth);
}

TEST(IR8SLayout, DetailFieldsAndBlocksTileTheRecord) {
    std::vector<RecordField> fields{d::kRecordType, d::kIdType, d::kIdNo, d::kName1, d::kName2,
                                    d::kTotalOrdWages, d::kTotalContriOrdERCPF, d::kTotalContriOrdEECPF,
                                    d::kTotalAddWages, d::kTotalContriAddERCPF, d::kTotalContriAddEECPF,
                                    d::kFiller785, d::kRecentSPR, d::kFullCPFApproval, d::kERVolCPF, d::kEEVolCPF,
                                    d::kFiller1044, d::kFiller1151};
    for (int month = 0; month < d::kMonths; ++month)
        for (const RecordField& f : {d::kOrdWages, d::kContriOrdERCPF, d::kContriOrdEECPF, d::kAddWages,
                                     d::kContriAddERCPF, d::kContriAddEECPF})
            fields.push_back(d::kMonthBlocks.Field(month, f));
    for (int payment = 0; payment < d::kSectionBRows; ++payment)
        for (const RecordField& f : {d::kAddWageAmt, d::kAddWageFrom, d::kAddWageTo, d::kAddWagePaidDate,
                                     d::kERContribution, d::kERInterest, d::kERDate, d::kEEContribution,
                                     d::kEEInterest, d::kEEDate})
            fields.push_back(d::kSectionBBlocks.Field(payment, f));
    ExpectFieldsTile(fields, 1, ir8s::kRecordWidth);

    // Month 2 occupies 149-202 and month 12 689-742; the third payment ends at 1043.
    EXPECT_EQ(d::kMonthBlocks.Field(1, d::kOrdWages).start, 149);
    EXPECT_EQ(d::kMonthBlocks.Field(11, d::kContriAddEECPF).Last(), 742);
    EXPECT_EQ(d::kSectionBBlocks.Field(2, d::kEEDate).Last(), 1043);
    // A fourth payment moves the closing fillers back by one block.
    EXPECT_EQ(d::AfterSectionB(d::kFiller1044, 4).start, 1119);
    EXPECT_EQ(d::AfterSectionB(d::kFiller1151, 4).Last(), 1275);
    EXPECT_EQ(d::AfterSectionB(d::kFiller1151, 2).start, 1151);
}

}  // namespace
}  // namespace iras::testing
