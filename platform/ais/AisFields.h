// Reading single fields of an AIS record back into values: amounts in signed
// overpunch (digits whose last one may be a letter carrying the sign), whole
// numbers and YYYYMMDD dates, as the line builder placed them. A text placed
// with flag 0 is left-aligned and blank-filled, so blanks after a well-formed
// value belong to the field; blanks before or inside it do not.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace iras {

// An amount as a whole number of its smallest unit (cents when the field has
// two implied decimals). Nothing when the text is not digits with an optional
// overpunch last character and optional trailing blanks, or has more digits
// than 18.
std::optional<long long> ParseAisUnits(std::string_view field);

// True when the field is digits only (no sign letter), with optional trailing
// blanks: prices carry no sign.
bool IsUnsignedAisAmount(std::string_view field);

// True when the field is one or more digits followed by optional blanks.
bool IsAisInteger(std::string_view field);

enum class AisDateForm { Blank, Valid, NotADate, Impossible };

// Classifies an 8-character YYYYMMDD field: all blanks, a real calendar day,
// something that is not eight digits, or eight digits naming no day.
AisDateForm ClassifyAisDate(std::string_view field);

// units with `decimals` implied decimal places as text: 123456, 2 -> "1234.56".
std::string FormatAisUnits(long long units, int decimals);

// The field as it can be shown in a message: bytes below 0x20 or of 0x7F
// written as \xNN, everything else as it stands.
std::string Printable(std::string_view field);

}  // namespace iras
