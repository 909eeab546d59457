// Field encodings of the IR8A records (see IR8AFields.h).
#include "submission/ir8a/IR8AFields.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdint>

#include "platform/common/CommonLibrary.h"
#include "submission/common/RYESubmissionCommon.h"

namespace iras::ir8a {

namespace {

std::optional<std::string> Fitting(std::string text, int width) {
    if (static_cast<int>(text.size()) > width) return std::nullopt;
    return text;
}

}  // namespace

std::optional<std::string> DollarsField(double value, int width) {
    if (_IsZeroValue(value)) return std::string("0");
    try {
        return Fitting(DecodeAmount(value, false, true, 0, width), width);
    } catch (const std::exception&) {
        // AmountRangeError, or a text the sign code cannot be put on: either
        // way the amount is beyond what the field holds.
        return std::nullopt;
    }
}

std::optional<std::string> UnroundedDollarsField(double value, int width) {
    try {
        return Fitting(DecodeAmount(value, false, true, 0, width), width);
    } catch (const std::exception&) {
        return std::nullopt;
    }
}

std::optional<std::string> CentsField(double value, int width) {
    if (_IsZeroValue(value)) return _PadLeadingZeroes("", width);
    try {
        return Fitting(DecodeAmount(value, true, true, 2, width), width);
    } catch (const std::exception&) {
        return std::nullopt;
    }
}

double DollarsValue(double value) { return _Trunc(_Round(value, 2), 0); }

double DonationDollars(double value) { return std::ceil(_Round(value, 2)); }

bool IsDirector(const std::string& designation) {
    std::string upper = designation;
    std::transform(upper.begin(), upper.end(), upper.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return upper.find("DIRECTOR") != std::string::npos;
}

std::string Section45Indicator(const std::string& designation, const std::string& section45) {
    if (!IsDirector(designation)) return "";
    if (section45 == "Y" || section45 == "N") return section45;
    return "";
}

std::string IndicatorCode(bool located, const std::string& code) {
    if (!located || code == "N") return "";
    return code;
}

std::string IncomeBorneCode(const std::string& status, const std::string& keywordCode,
                            double fixedAmtBorneByEE) {
    if (status == "Full") return "F";
    if (keywordCode.empty() && !_IsZeroValue(fixedAmtBorneByEE)) return "H";
    return keywordCode;
}

std::string FormatThousands(double value) {
    const double rounded = std::round(value);
    if (rounded == 0.0) return "";
    const std::uint64_t magnitude = static_cast<std::uint64_t>(std::fabs(rounded));
    std::string digits = std::to_string(magnitude);
    std::string grouped;
    const int count = static_cast<int>(digits.size());
    for (int i = 0; i < count; ++i) {
        if (i > 0 && (count - i) % 3 == 0) grouped += ',';
        grouped += digits[i];
    }
    return rounded < 0 ? "-" + grouped : grouped;
}

}  // namespace iras::ir8a
