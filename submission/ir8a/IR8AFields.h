// How the IR8A records turn the payroll's values into field texts: money in
// whole dollars or in cents with the sign in the last character, the donation
// rounded up to the dollar, and the one-character indicators whose meaning
// IRAS's layout fixes. A money field that cannot hold its amount is reported,
// never written: these encoders answer "nothing" and the job turns that into
// a finding for the employee.
#pragma once

#include <optional>
#include <string>

namespace iras::ir8a {

// dollars(w): "0" for a zero amount, else the whole dollars (rounded to cents,
// then truncated) with the sign in the last character. Nothing when the text
// would be wider than width.
std::optional<std::string> DollarsField(double value, int width);

// The stock gains of plans granted before 2003: DecodeAmount as it stands,
// without the zero test of dollars(w), so a positive remainder below a cent
// keeps its sign code (0.004 in nine places is "00000000{"). Nothing when
// wider than width.
std::optional<std::string> UnroundedDollarsField(double value, int width);

// cents(w): w zeros for a zero amount, else whole cents with the sign in the
// last character, zero-filled to width. Nothing when wider than width.
std::optional<std::string> CentsField(double value, int width);

// The amount a dollars field prints and adds to its trailer total.
double DollarsValue(double value);

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

// The summary file's "#,##": thousands grouped with ",", no decimals, and the
// empty text for zero.
std::string FormatThousands(double value);

}  // namespace iras::ir8a
