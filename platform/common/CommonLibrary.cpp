// The common functions: decimal rounding and truncation, zero tests, text to
// integer, and the file copy that never leaves half a file behind.
//
// Rounding works on the decimal digits of a double, not on its binary value. A
// double holds 15 significant decimal digits for certain; its shortest
// round-trip text is those digits when it needs no more, and digits past the
// 15th are noise from arithmetic (0.29 * 100 is 28.999999999999996, 1.01 * 100
// is 101.00000000000001). So a value is read as its text of 15 significant
// digits, rounded or cut there as a person would on paper, and the result read
// back: 1.005 -> 1.01, 2.675 -> 2.68, _Trunc(0.29 * 100, 0) -> 29.
#include "platform/common/CommonLibrary.h"

#include "platform/common/AtomicFile.h"


#include <cctype>
#include <charconv>
#include <climits>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <system_error>

namespace iras {

namespace {

// A finite, non-zero magnitude as decimal digits: digits[0].digits[1..] x 10^exponent,
// without trailing zeros.
struct DecimalDigits {
    std::string digits;
    long long exponent = 0;
};

DecimalDigits ReadDecimal(double magnitude) {
    // d.dddddddddddddde+XX: 15 significant digits, correctly rounded.
    char text[64];
    const auto result =
        std::to_chars(text, text + sizeof text, magnitude, std::chars_format::scientific, 14);
    const std::string_view written(text, static_cast<std::size_t>(result.ptr - text));
    const auto ePos = written.find('e');

    DecimalDigits decimal;
    for (const char c : written.substr(0, ePos)) {
        if (c != '.') {
            decimal.digits.push_back(c);
        }
    }
    while (decimal.digits.size() > 1 && decimal.digits.back() == '0') {
        decimal.digits.pop_back();
    }
    std::string_view exponentText = written.substr(ePos + 1);
    if (!exponentText.empty() && exponentText.front() == '+') {
        exponentText.remove_prefix(1);
    }
    int exponent = 0;
    std::from_chars(exponentText.data(), exponentText.data() + exponentText.size(), exponent);
    decimal.exponent = exponent;
    return decimal;
}

// Cuts the digits after `places` decimal places; with roundHalfUp a first cut
// digit of 5 or more raises the kept part by one unit. Works on the magnitude,
// so rounding is half away from zero and truncation toward zero.
double RoundDecimal(double value, int places, bool roundHalfUp) {
    if (!std::isfinite(value) || value == 0.0) {
        return value == 0.0 ? 0.0 : value;
    }
    // Already on the grid of `places` decimals (an amount in cents rounded
    // to cents): value is the double nearest to n / 10^places, whose text of
    // 15 digits is that decimal, so nothing would be cut and it reads back as
    // value itself.
    static constexpr double kPowersOfTen[] = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8};
    if (places >= 0 && places < static_cast<int>(std::size(kPowersOfTen))) {
        const double scale = kPowersOfTen[places];
        const double scaled = std::nearbyint(value * scale);
        if (std::fabs(scaled) < 1e15 && scaled / scale == value) {
            return value;
        }
    }
    const bool negative = value < 0.0;
    DecimalDigits decimal = ReadDecimal(std::fabs(value));

    // Number of leading digits that lie at or above 10^-places.
    const long long keep = decimal.exponent + static_cast<long long>(places) + 1;
    if (keep < static_cast<long long>(decimal.digits.size())) {
        const bool up = roundHalfUp && keep >= 0 && decimal.digits[static_cast<std::size_t>(keep)] >= '5';
        if (keep <= 0) {
            if (!up) {
                return 0.0;
            }
            decimal.digits.assign(1, '1');  // not = "1": GCC 12 warns falsely of overlapping copies
            decimal.exponent = -static_cast<long long>(places);
        } else {
            decimal.digits.resize(static_cast<std::size_t>(keep));
            if (up) {
                std::size_t i = decimal.digits.size();
                while (i > 0 && decimal.digits[i - 1] == '9') {
                    decimal.digits[--i] = '0';
                }
                if (i == 0) {
                    decimal.digits.insert(decimal.digits.begin(), '1');
                    decimal.digits.pop_back();
                    ++decimal.exponent;
                } else {
                    ++decimal.digits[i - 1];
                }
            }
        }
    }

    std::string text = negative ? "-" : "";
    text += decimal.digits.front();
    if (decimal.digits.size() > 1) {
        text += '.';
        text.append(decimal.digits, 1, std::string::npos);
    }
    text += 'e';
    text += std::to_string(decimal.exponent);

    double result = 0.0;
    const auto parsed = std::from_chars(text.data(), text.data() + text.size(), result);
    if (parsed.ec != std::errc()) {
        // Rounding up past the largest double: keep the value rather than return infinity.
        return value;
    }
    return result;
}

bool IsBlank(char c) { return std::isspace(static_cast<unsigned char>(c)) != 0; }

}  // namespace

double _Round(double value, int places) { return RoundDecimal(value, places, true); }

double _Trunc(double value, int places) { return RoundDecimal(value, places, false); }

std::string _PadLeadingZeroes(const std::string& text, int width) {
    if (width <= 0 || text.size() >= static_cast<std::size_t>(width)) {
        return text;
    }
    return std::string(static_cast<std::size_t>(width) - text.size(), '0') + text;
}

bool _IsZeroValue(double value) { return std::fabs(value) < 0.005; }

int _CStrToInt(const std::string& text) {
    std::size_t begin = 0;
    std::size_t end = text.size();
    while (begin < end && IsBlank(text[begin])) {
        ++begin;
    }
    while (end > begin && IsBlank(text[end - 1])) {
        --end;
    }
    const char* first = text.data() + begin;
    const char* last = text.data() + end;
    if (first != last && *first == '+') {
        ++first;  // from_chars takes a minus but not a plus
        if (first != last && *first == '-') {
            return 0;
        }
    }
    int value = 0;
    const auto result = std::from_chars(first, last, value);
    if (result.ec != std::errc() || result.ptr != last) {
        return 0;  // not a whole number, or beyond the range of int
    }
    return value;
}

bool _FileCopy(const std::filesystem::path& source, const std::filesystem::path& target) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(source, error)) {
        return false;
    }
    std::ifstream in(source, std::ios::binary);
    if (!in) {
        return false;
    }
    // Written beside the target and renamed over it only when complete, so a
    // full disk or a failed read never leaves half a file where the user
    // expects a return.
    bool readWhole = false;
    const std::string reason = WriteFileAtomically(target, [&](std::ostream& out) {
        char buffer[64 * 1024];
        while (in && out) {
            in.read(buffer, sizeof buffer);
            out.write(buffer, in.gcount());
        }
        readWhole = in.eof() && !in.bad();
    });
    return reason.empty() && readWhole;
}

}  // namespace iras
