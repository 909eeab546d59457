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

std::string FormatThousands(double value) {
    const double rounded = std::round(value);
    if (rounded == 0.0) return "";
    const auto magnitude = static_cast<std::uint64_t>(std::fabs(rounded));
    const std::string digits = std::to_string(magnitude);
    std::string grouped;
    const auto count = digits.size();
    for (std::size_t i = 0; i < count; ++i) {
        if (i > 0 && (count - i) % 3 == 0) grouped += ',';
        grouped += digits[i];
    }
    return rounded < 0 ? "-" + grouped : grouped;
}

}  // namespace iras
