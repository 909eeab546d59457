// The checker on IR8S, Appendix 8A and Appendix 8B files laid out by hand: the
// widths that differ from IR8A (a longer IR8S detail for extra Section B
// payments, the 800-wide Appendix 8A header over 700-wide details, 9300-wide
// Appendix 8B records) and fields far into the records.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/ais/AisFileChecker.h"
#include "tests/ais/AisTestFiles.h"

namespace iras {
namespace {

using test::CheckRecords;
using test::RecordText;
using test::With;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

// ---- IR8S: header and details, no trailer ----------------------------------

std::string IR8SHeader() {
    return RecordText(1200).At(1, "0").At(2, "6").At(3, "2023").At(7, "7").At(8, "199912345A")
        .At(20, "TAN AH KOW").At(220, "O").At(221, "20240115").At(259, "IR8S");
}

// Month 1 ordinary wages 1,234.56 (cents, zero-filled), total 1,234 (whole dollars,
// left-aligned); three empty Section B blocks and a fourth with a payment of 500.
RecordText IR8SDetailWithFourPayments() {
    RecordText detail(1275);
    detail.At(1, "1").At(2, "1").At(3, "S1234567D").At(15, "LIM BOON KENG");
    detail.At(95, std::string(648, '0')).At(95, "00012345F");
    detail.At(743, "123D").At(750, "0").At(757, "0").At(764, "0").At(771, "0").At(778, "0");
    detail.At(805, "0").At(812, "0");
    for (int start : {819, 894, 969}) detail.At(start, "0").At(start + 31, "0").At(start + 38, "0")
                                          .At(start + 53, "0").At(start + 60, "0");
    detail.At(1044, "50{").At(1051, "20230301").At(1059, "20230331").At(1067, "20230415");
    detail.At(1075, "0").At(1082, "0").At(1097, "0").At(1104, "0");
    return detail;
}

TEST(CheckIR8SFile, DetailIs75LongerPerExtraPaymentAndItsFieldsAreRead) {
    const AisCheckResult result = CheckRecords({IR8SHeader(), IR8SDetailWithFourPayments()});
    EXPECT_THAT(result.Describe(), IsEmpty());
    EXPECT_EQ(result.kind, AisKind::IR8S);

    RecordText detail = IR8SDetailWithFourPayments();
    detail.At(1067, "20230229");  // payment 4, date paid: 2023 is no leap year
    detail.At(734, "00000012S");  // month 12, employee CPF on additional wages (95 + 11*54 + 45)
    EXPECT_THAT(CheckRecords({IR8SHeader(), detail}).Describe(),
                ElementsAre("line 2, column 734: month 12 employee CPF on additional wages \"00000012S\" is not "
                            "an amount (digits, the last one may carry the sign)",
                            "line 2, column 1067: Section B payment 4 date paid \"20230229\" is not a real date"));
    std::string trailer(1200, ' ');
    trailer[0] = '2';
    EXPECT_THAT(CheckRecords({IR8SHeader(), std::string(detail).substr(0, 1250), trailer}).Describe(),
                ElementsAre("line 2: record is 1250 characters long; an IR8S detail record has 1200, and 75 "
                            "more for each Section B payment beyond the third",
                            "line 3, column 1: IR8S files have no trailer record \"2\""));
}

// ---- Appendix 8A: an 800-wide header over 700-wide details -----------------

std::string A8AHeader(std::size_t width = 800) {
    return RecordText(width).At(1, "0").At(2, "6").At(3, "2023").At(7, "7").At(8, "199912345A")
        .At(220, "A").At(221, "20240115").At(259, "A8A");
}

RecordText A8ADetail() {
    RecordText detail(700);
    detail.At(1, "1").At(2, "1").At(3, "S1234567D").At(15, "LIM BOON KENG").At(95, "1 MAIN ROAD");
    detail.At(185, "20230101").At(193, "20231231").At(201, "365").At(204, "01");
    for (int column : {206, 216, 225, 234, 243, 252, 261, 270, 279, 288, 297, 306, 315, 324, 340, 349, 358,
                       367, 376, 385, 394, 403, 412, 430})
        detail.At(column, "000000000");
    detail.At(206, "00240000{").At(215, "F");  // annual value 24,000.00, fully furnished
    return detail;
}

TEST(CheckA8AFile, HeaderIs800WideOverDetailsOf700) {
    EXPECT_THAT(CheckRecords({A8AHeader(), A8ADetail()}).Describe(), IsEmpty());
    RecordText detail = A8ADetail();
    detail.At(201, "3 5").At(193, "        ");  // a blank occupation end is allowed
    EXPECT_THAT(CheckRecords({A8AHeader(700), detail}).Describe(),
                ElementsAre("line 1: record is 700 characters long; an A8A header record has 800",
                            "line 2, column 201: days of occupation \"3 5\" is not a whole number"));
}

// ---- Appendix 8B: 9300-wide records, 26 trailer totals ----------------------

std::string A8BHeader() {
    return RecordText(9300).At(1, "0").At(2, "6").At(3, "2023").At(7, "13").At(9, "7").At(10, "199912345A")
        .At(222, "O").At(223, "20240115").At(231, "20100301").At(269, "A8B");
}

// One ESOP row in Section A: exercise price 1.00000, market value 1.10000 at grant and
// 1.23456 at exercise, 1,000 shares: gains (1.23456 - 1) x 1000 = 234.56, granted in
// 2023, so "after". Every other row slot is a blank row.
RecordText A8BDetail() {
    RecordText detail(9300);
    detail.At(1, "1").At(2, "1").At(3, "S1234567D").At(15, "LIM BOON KENG").At(95, "301").At(98, "M");
    detail.At(99, "19800101");
    const std::pair<int, int> sections[] = {{107, 139}, {2232, 148}, {4512, 148}, {6792, 148}};
    for (const auto& [first, width] : sections) {
        for (int row = 0; row < 15; ++row) {
            const int start = first + width * row;
            detail.At(start + 73, "000000000000").At(start + 85, "000000000000").At(start + 97, "000000000000");
            detail.At(start + 109, "0").At(start + 121, "000000000").At(start + 130, "000000000");
            if (width == 148) detail.At(start + 139, "000000000");
        }
    }
    for (int column = 2192; column < 2232; column += 10) detail.At(column, "0000000000");
    for (int first : {4452, 6732, 9012})
        for (int column = first; column < first + 60; column += 10) detail.At(column, "0000000000");
    for (int column = 9072; column < 9116; column += 11) detail.At(column, "00000000000");

    detail.At(107, "7").At(108, "199900001K").At(120, "EXAMPLE HOLDINGS LTD").At(160, "ESOP");
    detail.At(164, "20230315").At(172, "20231115");
    detail.At(180, "000000100000").At(192, "000000110000").At(204, "000000123456").At(216, "00010000000{");
    detail.At(228, "00002345F").At(237, "00002345F");
    detail.At(2192, "000002345F").At(2212, "000002345F");  // Section A not qualifying, gains (after)
    detail.At(9072, "0000002345F").At(9094, "0000002345F");  // grand totals (after)
    return detail;
}

// Trailer totals 1 and 3 (Section A), 23 and 25 (grand totals) carry 234.56.
RecordText A8BTrailer() {
    RecordText trailer(9300);
    trailer.At(1, "2").At(2, "000001");
    for (int i = 0; i < 26; ++i) trailer.At(8 + 14 * i, "00000000000000");
    for (int column : {8, 36, 316, 344}) trailer.At(column, "0000000002345F");
    return trailer;
}

TEST(CheckA8BFile, HandLaidFileWithOneShareOptionPassesAndTotalsCompareInCents) {
    const AisCheckResult result = CheckRecords({A8BHeader(), A8BDetail(), A8BTrailer()});
    EXPECT_THAT(result.Describe(), IsEmpty());
    EXPECT_EQ(result.kind, AisKind::A8B);
    EXPECT_EQ(result.detailRecords, 1);
    EXPECT_THAT(CheckRecords({A8BHeader(), A8BDetail(), A8BTrailer().At(344, "0000000002345G")}).Describe(),
                ElementsAre("line 3, column 344: total of grand total gains (after) is 234.57 but the detail "
                            "records add up to 234.56"));
}

TEST(CheckA8BFile, SignedPriceLastRowSlotAndBlankIncorporationDateAreNamed) {
    RecordText detail = A8BDetail();
    detail.At(204, "00000012345F");  // prices carry no sign
    detail.At(9003, "0000000A0");    // Section D row 15 gains: 6792 + 14 * 148 + 139
    const AisCheckResult result =
        CheckRecords({With(A8BHeader(), 231, "        "), detail, A8BTrailer()});
    EXPECT_THAT(result.Describe(),
                ElementsAre("line 1, column 231: warning: date of incorporation is blank",
                            "line 2, column 204: Section A row 1 market value at exercise \"00000012345F\" is "
                            "not a price (digits only)",
                            "line 2, column 9003: Section D row 15 gains \"0000000A0\" is not an amount (digits, "
                            "the last one may carry the sign)"));
}

}  // namespace
}  // namespace iras
