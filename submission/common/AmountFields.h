// How the return records turn the payroll's amounts into field texts, shared
// by every return: whole dollars or cents with the sign in the last
// character, and the thousands grouping of the summary files. A money field
// that cannot hold its amount is reported, never written: these encoders
// answer "nothing" and the job turns that into a finding for the employee.
#pragma once

#include <optional>
#include <string>

namespace iras {

// dollars(w): "0" for a zero amount, else the whole dollars (rounded to cents,
// then truncated) with the sign in the last character. Nothing when the text
// would be wider than width.
std::optional<std::string> DollarsField(double value, int width);

// The whole dollars as DecodeAmount gives them, without the zero test of
// DollarsField, so a positive remainder below a cent keeps its sign code
// (0.004 in nine places is "00000000{"). Nothing when wider than width.
std::optional<std::string> UnroundedDollarsField(double value, int width);

// cents(w): w zeros for a zero amount, else whole cents with the sign in the
// last character, zero-filled to width. Nothing when wider than width.
std::optional<std::string> CentsField(double value, int width);

// The amount a dollars field prints and adds to its file total: rounded to
// cents, then cut to whole dollars.
double DollarsValue(double value);

// The summary files' "#,##": thousands grouped with ",", no decimals, and the
// empty text for zero.
std::string FormatThousands(double value);

// The summary files' "#,##0.00": rounded to cents, thousands grouped with
// ",", always two decimals ("0.00" for zero, "-1,234.50" below zero).
std::string FormatThousandsAndCents(double value);

}  // namespace iras
