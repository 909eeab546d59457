// How the IR8A records turn the payroll's values into field texts of their
// own: the donation rounded up to the dollar, and the one-character
// indicators whose meaning IRAS's layout fixes. The money encodings every
// return shares are in submission/common/AmountFields.h.
#pragma once

#include <string>

namespace iras::ir8a {

// IRAS takes donations in whole dollars rounded up: 10.01 is 11. The amount
// is first rounded to cents so that a stored 10.000000001 stays 10.
double DonationDollars(double value);

// Whether the employee is a director, for the section 45 indicator: the
// employee's designation contains "DIRECTOR" in any letter case.
bool IsDirector(const std::string& designation);

// Position 383: "Y" or "N" as IRASSection45 holds it, for directors only;
// blank for everyone else and for a value that is neither.
std::string Section45Indicator(const std::string& designation, const std::string& section45);

// Position 384: "F" for a status of "Full" even when its keyword is missing;
// otherwise the keyword's code (blank for "N"), and "H" when that leaves the
// field blank although the employee bears a fixed amount of the tax.
std::string IncomeBorneCode(const std::string& status, const std::string& keywordCode,
                            double fixedAmtBorneByEE);

// A keyword's IRAS code for a one-character indicator: blank when the code is
// "N" (not applicable) or the payroll code located no keyword.
std::string IndicatorCode(bool located, const std::string& code);

}  // namespace iras::ir8a
