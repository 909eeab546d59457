// Amount encoding for the AIS records: a money value becomes digits without a
// decimal point whose last digit is replaced by its overpunch code, so that a
// fixed-width field carries the sign without a column of its own.
//
// Two modes exist because the forms print amounts two ways: "scaled" gives
// cents (or whatever `decimals` says) as a whole number zero-filled to the
// field; "unscaled" gives whole dollars with the cents dropped, and only an
// amount strictly between -10 and 10 is zero-filled here. A larger one leaves
// unpadded and the line builder places it. IRAS's files were always made this
// way and the totals in the trailers depend on it, so the band stays.
#include "submission/common/RYESubmissionCommon.h"

#include <array>
#include <charconv>
#include <cmath>
#include <stdexcept>
#include <string_view>

#include "platform/common/CommonLibrary.h"

namespace iras {

namespace {

// Compile-time tables, so that a job built during static initialisation can
// already encode.
constexpr std::array<std::string_view, 10> kPositiveCodes = {"{", "A", "B", "C", "D", "E", "F", "G", "H", "I"};
constexpr std::array<std::string_view, 10> kNegativeCodes = {"}", "J", "K", "L", "M", "N", "O", "P", "Q", "R"};

// A double needs an exponent in its 15-digit general form from 10^15 on.
constexpr int kSignificantDigits = 15;

// The amount as a person reads it in a message: plain digits where they fit
// on a line, the exponent form only for absurd magnitudes.
std::string AmountForMessage(double value) {
    if (std::isnan(value)) {
        return "NaN";
    }
    if (std::isinf(value)) {
        return value > 0 ? "infinity" : "-infinity";
    }
    char text[400];
    const auto format = std::fabs(value) < 1e21 ? std::chars_format::fixed : std::chars_format::general;
    const auto result = std::to_chars(text, text + sizeof text, value, format);
    return std::string(text, result.ptr);
}

}  // namespace

std::string GetCode(int digit, bool positive) {
    // at(): a digit outside 0..9 is a caller's error and must not read past the table.
    return std::string(positive ? kPositiveCodes.at(static_cast<std::size_t>(digit))
                                : kNegativeCodes.at(static_cast<std::size_t>(digit)));
}

namespace {

// Replaces the last digit of text by its code, in place: every amount of
// every record comes this way.
void PutSignCode(std::string& text, bool positive) {
    if (text.empty() || text.back() < '0' || text.back() > '9') {
        throw std::invalid_argument("DecodeLastDigit: \"" + text +
                                    "\" does not end in a digit, so it cannot carry a sign code");
    }
    const auto digit = static_cast<std::size_t>(text.back() - '0');
    text.back() = (positive ? kPositiveCodes : kNegativeCodes)[digit].front();
}

}  // namespace

std::string DecodeLastDigit(const std::string& text, bool positive) {
    std::string coded = text;
    PutSignCode(coded, positive);
    return coded;
}

std::string FloatToStr(double value) {
    if (!std::isfinite(value)) {
        throw AmountRangeError("Amount " + AmountForMessage(value) +
                               " is not a number the return forms can hold");
    }
    if (value == 0.0) {
        return "0";  // also for -0.0: a zero amount never carries a minus
    }
    // A whole number of at most 15 digits, as every amount in cents or whole
    // dollars is by the time it gets here: its digits are the integer's.
    if (std::fabs(value) < 1e15 && value == std::trunc(value)) {
        return std::to_string(static_cast<long long>(value));
    }

    // d.dddddddddddddde+XX, correctly rounded to 15 significant digits.
    char text[64];
    const auto written = std::to_chars(text, text + sizeof text, std::fabs(value),
                                       std::chars_format::scientific, kSignificantDigits - 1);
    const std::string_view scientific(text, static_cast<std::size_t>(written.ptr - text));
    const auto ePos = scientific.find('e');
    std::string digits;
    for (const char c : scientific.substr(0, ePos)) {
        if (c != '.') {
            digits.push_back(c);
        }
    }
    while (digits.size() > 1 && digits.back() == '0') {
        digits.pop_back();
    }
    std::string_view exponentText = scientific.substr(ePos + 1);
    if (exponentText.front() == '+') {
        exponentText.remove_prefix(1);
    }
    int exponent = 0;
    std::from_chars(exponentText.data(), exponentText.data() + exponentText.size(), exponent);

    if (exponent >= kSignificantDigits) {
        throw AmountRangeError("Amount " + AmountForMessage(value) +
                               " is too large for the return forms: they hold at most 15 digits");
    }

    // Plain decimal notation. A tiny value is written with its leading zeros
    // rather than an exponent; amounts are rounded to cents before they get
    // here, so this only serves other callers.
    std::string result = value < 0.0 ? "-" : "";
    if (exponent >= 0) {
        const auto integerDigits = static_cast<std::size_t>(exponent) + 1;
        if (digits.size() <= integerDigits) {
            result += digits;
            result.append(integerDigits - digits.size(), '0');
        } else {
            result.append(digits, 0, integerDigits);
            result += '.';
            result.append(digits, integerDigits, std::string::npos);
        }
    } else {
        result += "0.";
        result.append(static_cast<std::size_t>(-exponent - 1), '0');
        result += digits;
    }
    return result;
}

std::string DecodeAmount(double amount, bool scaled, bool signCode, int decimals, int width) {
    if (!std::isfinite(amount)) {
        throw AmountRangeError("Amount " + AmountForMessage(amount) +
                               " is not a number the return forms can hold");
    }
    const bool positive = amount > 0.0;

    double printed = 0.0;
    if (scaled) {
        printed = _Round(amount, decimals);
        for (int i = 0; i < decimals; ++i) {
            printed *= 10.0;
        }
    } else {
        printed = _Trunc(_Round(amount, 2), decimals);
    }

    std::string text;
    try {
        text = FloatToStr(printed);
    } catch (const AmountRangeError&) {
        // Name the amount the user knows, not the scaled value.
        const std::string unit = !scaled        ? "whole dollars"
                                 : decimals == 2 ? "cents"
                                                 : std::to_string(decimals) + " implied decimal places";
        throw AmountRangeError("Amount " + AmountForMessage(amount) +
                               " is too large for the return forms: written in " + unit +
                               " it needs more than 15 digits");
    }

    if (signCode) {
        PutSignCode(text, positive);
    }
    if (!positive) {
        // A negative amount's "-" goes; its sign now lives in the last
        // character. For zero this drops the lone code and leaves nothing,
        // so a zero amount never carries a sign.
        text.erase(0, 1);
    }
    if ((scaled || (amount > -10.0 && amount < 10.0)) && width > 0 && text.size() < static_cast<std::size_t>(width)) {
        text.insert(0, static_cast<std::size_t>(width) - text.size(), '0');  // as _PadLeadingZeroes
    }
    return text;
}

std::optional<std::string> AmountField(double amount, bool scaled, bool signCode, int decimals, int width) {
    try {
        std::string text = DecodeAmount(amount, scaled, signCode, decimals, width);
        if (static_cast<int>(text.size()) > width) return std::nullopt;
        return text;
    } catch (const std::exception&) {
        // AmountRangeError, or a text the sign code cannot be put on: either
        // way the amount is beyond what the field holds.
        return std::nullopt;
    }
}

}  // namespace iras
