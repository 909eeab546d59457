// Field encodings of the IR8A records (see IR8AFields.h).
#include "submission/ir8a/IR8AFields.h"

#include <cmath>

#include "platform/common/CommonLibrary.h"
#include "platform/common/Text.h"

namespace iras::ir8a {

double DonationDollars(double value) { return std::ceil(_Round(value, 2)); }

bool IsDirector(const std::string& designation) {
    return AsciiUpper(designation).find("DIRECTOR") != std::string::npos;
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

}  // namespace iras::ir8a
