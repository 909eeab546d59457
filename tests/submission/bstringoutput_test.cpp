// The line builder: columns, alignment, fill and width in bytes. Expected
// lines are assembled by hand from the columns placed.
#include "submission/common/BStringOutput.h"

#include <gtest/gtest.h>

namespace iras {
namespace {

std::string Blanks(std::size_t count) { return std::string(count, ' '); }

// The IR8A trailer's start: record type, count with flag 2, then totals as
// texts with flag 0 ("0" and an unpadded whole-dollar code), one with flag 1.
TEST(BStringOutput, FieldsKeepTheirColumnsAlignmentAndFill) {
    BStringOutput out;
    out.SetMax(100, 1200);
    out.SetNew();
    out.PutData(0, 0, 1, "2", BStringOutput::kText);
    out.PutData(0, 1, 6, 3, BStringOutput::kInteger);
    out.PutData(0, 7, 12, std::string("0"), BStringOutput::kText);
    out.PutData(0, 19, 12, std::string("123D"), BStringOutput::kText);
    out.PutData(0, 31, 12, std::string("123D"), BStringOutput::kAmount);
    out.PutData(0, 43, 3, -4, BStringOutput::kInteger);
    out.PutData(0, 46, 8, Date{2023, 3, 1}, BStringOutput::kDate);
    out.PutData(0, 54, 8, Date::Empty(), BStringOutput::kDate);
    out.PutData(0, 62, 1, "|", BStringOutput::kText);
    out.SetEnd(1);
    EXPECT_EQ(out.Line().substr(0, 64), "2000003" + ("0" + Blanks(11)) + ("123D" + Blanks(8)) +
                                            "00000000123D" + "-04" + "20230301" + Blanks(8) + "| ");
    EXPECT_EQ(out.Line().size(), 1200u);
}

TEST(BStringOutput, OverlongValuesNeverShiftTheNextFieldAndLaterFieldsOverwrite) {
    BStringOutput out;
    out.SetMax(100, 10);
    out.PutData(0, 0, 5, std::string("ABCDEFG"), BStringOutput::kText);  // cut on the right
    out.PutData(0, 5, 4, std::string("12345"), BStringOutput::kAmount);  // marked, not cut
    out.PutData(0, 9, 2, 123, BStringOutput::kInteger);
    out.PutData(0, 2, 2, std::string("B"), BStringOutput::kText);        // over "CD"
    out.PutData(0, 14, 3, std::string("XYZ"), BStringOutput::kText);     // past the maximum
    out.SetEnd(1);
    EXPECT_EQ(out.Line(), "ABB E******" + Blanks(3) + "XYZ");

    StringList lines;
    out.ListOutput(lines);
    out.SetNew();
    out.PutData(0, 0, 1, "1", BStringOutput::kText);
    out.SetEnd(1);
    out.ListOutput(lines);
    EXPECT_EQ(lines, (StringList{"ABB E******" + Blanks(3) + "XYZ", "1" + Blanks(9)}));
}

// IR8A detail: name lines at 15-54 and 55-94, the address block from 95.
TEST(BStringOutput, NonAsciiNamesKeepTheRecordWidthInBytes) {
    BStringOutput out;
    out.SetMax(100, 1200);
    out.PutData(0, 14, 40, std::string("Zo\xC3\xAB Tan Wei Ling"), BStringOutput::kText);  // ë
    out.PutData(0, 54, 40, std::string("\xE6\x9D\x8E\xE6\x98\x8E"), BStringOutput::kText);  // 李明
    out.PutData(0, 94, 1, "X", BStringOutput::kText);
    out.SetEnd(1);
    ASSERT_EQ(out.Line().size(), 1200u);
    EXPECT_EQ(out.Line().substr(14, 81), "Zo\xEB Tan Wei Ling" + Blanks(24) + "??" + Blanks(38) + "X");
}

TEST(ToRecordEncoding, MapsToWindows1252AndMarksWhatItCannotHold) {
    EXPECT_EQ(ToRecordEncoding("Jos\xC3\xA9 \xE2\x82\xAC O\xE2\x80\x99Neil"), "Jos\xE9 \x80 O\x92Neil");
    EXPECT_EQ(ToRecordEncoding("\xF0\x9F\x98\x80"), "?");               // one character, one "?"
    EXPECT_EQ(ToRecordEncoding("\xC0\xAF\xED\xA0\x80\xC2\x85"), "??????");  // overlong, surrogate, C1
    EXPECT_EQ(ToRecordEncoding("Tan\r\nAh\tKow"), "Tan  Ah Kow");      // no line break in a record
}

}  // namespace
}  // namespace iras
