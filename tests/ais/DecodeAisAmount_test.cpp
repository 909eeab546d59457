// Reading amount fields back: the signed-overpunch last character, implied
// decimals, and the blanks that a left-aligned placement leaves after a value.
#include <gtest/gtest.h>

#include "platform/ais/AisFileChecker.h"

namespace iras {
namespace {

TEST(DecodeAisAmount, LastLetterCarriesDigitAndSignOfTheWholeAmount) {
    EXPECT_EQ(DecodeAisAmount("0000000123D", 2), 12.34);
    EXPECT_EQ(DecodeAisAmount("0000000123M", 2), -12.34);
    EXPECT_EQ(DecodeAisAmount("0000001000{", 2), 100.0);
    EXPECT_EQ(DecodeAisAmount("0000001000}", 2), -100.0);
    EXPECT_EQ(DecodeAisAmount("00000000R", 0), -9.0);
    EXPECT_EQ(DecodeAisAmount("000000009", 0), 9.0);  // no sign code at all
    EXPECT_EQ(DecodeAisAmount("000000123456", 5), 1.23456);
}

TEST(DecodeAisAmount, ZeroAndLeftAlignedValuesWithTrailingBlanks) {
    EXPECT_EQ(DecodeAisAmount("0           ", 0), 0.0);
    EXPECT_EQ(DecodeAisAmount("0000000000{", 2), 0.0);  // a tiny positive amount rounded to zero
    EXPECT_EQ(DecodeAisAmount("123D        ", 0), 1234.0);
    EXPECT_EQ(DecodeAisAmount("123M   ", 0), -1234.0);
}

TEST(DecodeAisAmount, MalformedFieldGivesNothing) {
    for (const char* field : {"12S4", "123S", "12D4", "", "    ", " 123", "12 3", "-123", "1.23", "123D x",
                              "00\t123"})
        EXPECT_FALSE(DecodeAisAmount(field, 2).has_value()) << '"' << field << '"';
}

}  // namespace
}  // namespace iras
