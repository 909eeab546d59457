// Amounts in the AIS records: digits without a decimal point whose last digit
// also carries the sign of the whole amount (signed overpunch): "{" and "A".."I"
// stand for 0..9 of a positive amount, "}" and "J".."R" for 0..9 of a negative
// one. A zero amount carries no sign code at all.
#pragma once

#include <optional>
#include <stdexcept>
#include <string>

namespace iras {

// An amount too large for the return forms: its text would need an exponent.
class AmountRangeError : public std::range_error {
public:
    using std::range_error::range_error;
};

// The overpunch letter of a digit 0..9 (not range-checked, as callers pass digits).
std::string GetCode(int digit, bool positive);

// text with its last character (a digit) replaced by its code. A last
// character that is not a digit throws std::invalid_argument.
std::string DecodeLastDigit(const std::string& text, bool positive);

// The field text of amount. scaled: rounded to `decimals` places and written
// without the point, zero-filled to width. Unscaled: rounded to cents, cut to
// `decimals` places, and zero-filled only inside the band -10 < amount < 10;
// outside it the text comes back unpadded (the line builder places it).
// Throws AmountRangeError for an amount the forms cannot hold.
std::string DecodeAmount(double amount, bool scaled, bool signCode, int decimals, int width);

// DecodeAmount for a field of width characters, without exceptions: nothing
// where the amount is beyond the return forms (DecodeAmount would throw) or
// its text is wider than the field, so that the caller reports the employee
// instead of writing a cut, wrong amount.
std::optional<std::string> AmountField(double amount, bool scaled, bool signCode, int decimals, int width);

// The runtime's float-to-text: general format, at most 15 significant digits,
// "-" for a negative value, no thousands separator, no decimal point for a
// whole number. Throws AmountRangeError where the text would need an exponent.
std::string FloatToStr(double value);

class RYESubmissionCommon {
public:
    RYESubmissionCommon() = default;
    ~RYESubmissionCommon() = default;
};

}  // namespace iras
