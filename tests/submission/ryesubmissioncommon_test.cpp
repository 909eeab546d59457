// Amount fields of the AIS records. Every expected text is worked out by hand:
// round, scale or cut, then replace the last digit by its code ({ A..I for
// 0..9 of a positive amount, } J..R for a negative one).
#include "submission/common/RYESubmissionCommon.h"

#include <gtest/gtest.h>

#include <cmath>
#include <stdexcept>

namespace iras {
namespace {

// Cents, 11 wide, as in the IR8A detail record: 12.3d is 123d cents, so the
// last digit runs through 0..9 and each of the 20 codes is seen once.
TEST(DecodeAmount, EveryDigitGetsItsOverpunchCodeForEachSign) {
    const char positive[] = "{ABCDEFGHI";
    const char negative[] = "}JKLMNOPQR";
    const double amounts[] = {12.30, 12.31, 12.32, 12.33, 12.34, 12.35, 12.36, 12.37, 12.38, 12.39};
    for (int digit = 0; digit < 10; ++digit) {
        EXPECT_EQ(DecodeAmount(amounts[digit], true, true, 2, 11), std::string("0000000123") + positive[digit]);
        EXPECT_EQ(DecodeAmount(-amounts[digit], true, true, 2, 11), std::string("0000000123") + negative[digit]);
    }
}

TEST(DecodeAmount, ScaledCentsRoundTheDecimalValueAsWritten) {
    EXPECT_EQ(DecodeAmount(0.285, true, true, 2, 11), "0000000002I");     // 29 cents
    EXPECT_EQ(DecodeAmount(1.005, true, true, 2, 11), "0000000010A");     // 101
    EXPECT_EQ(DecodeAmount(2.675, true, true, 2, 11), "0000000026H");     // 268
    EXPECT_EQ(DecodeAmount(1234.565, true, true, 2, 11), "0000012345G");  // 123457
    EXPECT_EQ(DecodeAmount(-0.125, true, true, 2, 11), "0000000001L");    // -13
}

TEST(DecodeAmount, NegativeAmountLosesMinusAndKeepsSignInLastLetter) {
    EXPECT_EQ(DecodeAmount(-7.0, false, true, 0, 9), "00000000P");
    EXPECT_EQ(DecodeAmount(-1234.56, false, true, 0, 9), "123M");
    EXPECT_EQ(DecodeAmount(-1234.56, false, false, 0, 9), "1234");
}

TEST(DecodeAmount, ZeroHasNoSignCodeButSlightlyPositiveKeepsPositiveZero) {
    EXPECT_EQ(DecodeAmount(0.0, true, true, 2, 11), "00000000000");
    EXPECT_EQ(DecodeAmount(-0.001, true, true, 2, 11), "00000000000");
    EXPECT_EQ(DecodeAmount(-0.4, false, true, 0, 9), "000000000");
    EXPECT_EQ(DecodeAmount(0.001, true, true, 2, 11), "0000000000{");
}

// Unscaled whole dollars are zero-filled only strictly inside -10 < amount < 10.
TEST(DecodeAmount, UnscaledDollarsArePaddedOnlyInsideTheTenDollarBand) {
    EXPECT_EQ(DecodeAmount(9.99, false, false, 0, 9), "000000009");
    EXPECT_EQ(DecodeAmount(-9.99, false, true, 0, 9), "00000000R");
    EXPECT_EQ(DecodeAmount(10.00, false, false, 0, 9), "10");
    EXPECT_EQ(DecodeAmount(10.00, false, true, 0, 9), "1{");
    EXPECT_EQ(DecodeAmount(-10.00, false, true, 0, 9), "1}");
    EXPECT_EQ(DecodeAmount(9.995, false, true, 0, 9), "00000001{");  // the band tests the amount, not its 10
    EXPECT_EQ(DecodeAmount(1234.999, false, true, 0, 9), "123E");     // 1235.00, then 1235
}

TEST(DecodeAmount, AmountBeyondFifteenDigitsOrTextWithoutLastDigitIsRefused) {
    EXPECT_EQ(DecodeAmount(9999999999999.99, true, true, 2, 11), "99999999999999I");
    try {
        DecodeAmount(10000000000000.0, true, true, 2, 11);  // 10^15 cents
        FAIL() << "no AmountRangeError";
    } catch (const AmountRangeError& error) {
        EXPECT_NE(std::string(error.what()).find("10000000000000"), std::string::npos) << error.what();
    }
    EXPECT_THROW(DecodeAmount(-1e15, false, true, 0, 12), AmountRangeError);
    EXPECT_THROW(DecodeAmount(std::nan(""), true, true, 2, 11), AmountRangeError);
    EXPECT_THROW(DecodeLastDigit("12.", true), std::invalid_argument);
    EXPECT_THROW(DecodeLastDigit("", true), std::invalid_argument);
}

TEST(FloatToStr, WritesFifteenSignificantDigitsWithoutExponent) {
    EXPECT_EQ(FloatToStr(-0.25), "-0.25");
    EXPECT_EQ(FloatToStr(-0.0), "0");
    EXPECT_EQ(FloatToStr(1e14), "100000000000000");
    EXPECT_EQ(FloatToStr(0.00001), "0.00001");
    EXPECT_THROW(FloatToStr(999999999999999.9), AmountRangeError);  // 1e15 at 15 digits
}

}  // namespace
}  // namespace iras
