// The payroll's common functions that every return relies on.
//
// Money arrives from the database as binary doubles, but IRAS checks the
// returns against the decimal amounts on the payslips. So rounding works on the
// decimal value as written (the shortest text that reads back as the same
// double, taken to the 15 significant digits a double holds for certain, so
// that arithmetic noise such as 0.29 * 100 = 28.999999999999996 reads as 29):
// 1.005 to two places is 1.01 and 2.675 is 2.68, although their binary
// approximations lie just below the half. Rounding is half away from zero
// (-0.125 -> -0.13); truncation cuts toward zero. Both live here and nowhere
// else, and the database layer's ROUND, TRUNCNUM and money cast call them, so
// that a total computed in SQL equals the sum of the fields the records print.
#pragma once

#include <filesystem>
#include <string>

#include "platform/common/Date.h"

namespace iras {

double _Round(double value, int places);
double _Trunc(double value, int places);

// "0" characters in front of text until it is width characters long; a text
// already as long or longer comes back unchanged.
std::string _PadLeadingZeroes(const std::string& text, int width);

// True when the amount is zero to the cent (|value| < 0.005).
bool _IsZeroValue(double value);

// Decimal text to integer; surrounding blanks are ignored. Text that is not a
// whole number gives 0.
int _CStrToInt(const std::string& text);

// Copies source over target. False (and target untouched) when it cannot.
bool _FileCopy(const std::filesystem::path& source, const std::filesystem::path& target);

}  // namespace iras
