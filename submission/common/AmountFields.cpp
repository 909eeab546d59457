// Money field encodings of the return records (see AmountFields.h).
#include "submission/common/AmountFields.h"

#include <cmath>
#include <cstdint>

#include "platform/common/CommonLibrary.h"
#include "submission/common/RYESubmissionCommon.h"

namespace iras {

std::optional<std::string> DollarsField(double value, int width) {
    if (_IsZeroValue(value)) return std::string("0");
    return AmountField(value, false, true, 0, width);
}

std::optional<std::string> UnroundedDollarsField(double value, int width) {
    return AmountField(value, false, true, 0, width);
}

std::optional<std::string> CentsField(double value, int width) {
    if (_IsZeroValue(value)) return _PadLeadingZeroes("", width);
    return AmountField(value, true, true, 2, width);
}

double DollarsValue(double value) { return _Trunc(_Round(value, 2), 0); }

namespace {

// The digits of a whole number with a "," before every group of three.
std::string Grouped(std::uint64_t magnitude) {
    const std::string digits = std::to_string(magnitude);
    std::string grouped;
    const auto count = digits.size();
    for (std::size_t i = 0; i < count; ++i) {
        if (i > 0 && (count - i) % 3 == 0) grouped += ',';
        grouped += digits[i];
    }
    return grouped;
}

}  // namespace

std::string FormatThousands(double value) {
    const double rounded = std::round(value);
    if (rounded == 0.0) return "";
    const std::string grouped = Grouped(static_cast<std::uint64_t>(std::fabs(rounded)));
    return rounded < 0 ? "-" + grouped : grouped;
}

std::string FormatThousandsAndCents(double value) {
    // Whole cents first, so that 0.295 is 0.30 as _Round gives it.
    const double cents = std::fabs(std::round(_Round(value, 2) * 100.0));
    const auto whole = static_cast<std::uint64_t>(cents);
    const std::uint64_t fraction = whole % 100;
    const std::string text = Grouped(whole / 100) + "." + (fraction < 10 ? "0" : "") + std::to_string(fraction);
    return whole != 0 && value < 0 ? "-" + text : text;
}

}  // namespace iras
