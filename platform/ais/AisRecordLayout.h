// Where the checkable fields of each AIS record lie: amounts, prices, whole
// numbers, dates and one-letter choices, with the record widths of each
// return and the pairing of detail amounts with the trailer totals they add
// up to. Text fields (names, addresses, ids) are not listed: any bytes are
// acceptable there.
#pragma once

#include <string>
#include <vector>

#include "platform/ais/AisFileChecker.h"

namespace iras {

enum class AisFieldForm {
    Amount,   // digits, the last one optionally an overpunch letter
    Price,    // digits only: a price carries no sign
    Integer,  // digits (a count, a year, a number of days)
    Date,     // YYYYMMDD
    Choice,   // one of the characters in `choices`
};

// What a field that is all blanks means.
enum class AisBlank {
    Error,    // IRAS needs a value
    Allowed,  // the layout leaves the field empty when there is nothing to say
    Warning,  // the record is usable, but the value is normally there
};

struct AisField {
    int column = 0;  // 1-based
    int width = 0;
    AisFieldForm form = AisFieldForm::Amount;
    std::string name;  // as messages name it: "gross salary", "month 3 additional wages"
    int decimals = 0;
    AisBlank blank = AisBlank::Error;
    int total = -1;  // in a detail: the trailer total it adds to; in a trailer: which total it is
    std::string choices;
};

struct AisKindFacts {
    const char* name;        // "IR8A"
    int formNameColumn;      // where the header carries the form name
    int formNameWidth;
    bool hasTrailer;
    int headerWidth;
    int detailWidth;         // the IR8S detail may be longer by whole Section B blocks
    int trailerWidth;        // 0 without a trailer
};

const AisKindFacts& FactsOf(AisKind kind);

// The width of one IR8S Section B block; each block beyond the third makes
// the detail record this much longer.
inline constexpr int kIR8SSectionBBlockWidth = 75;

const std::vector<AisField>& HeaderFields(AisKind kind);
// extraBlocks: IR8S Section B blocks beyond the third (0 for other kinds).
std::vector<AisField> DetailFields(AisKind kind, int extraBlocks);
const std::vector<AisField>& StandardDetailFields(AisKind kind);
const std::vector<AisField>& TrailerFields(AisKind kind);  // totals; empty without a trailer

}  // namespace iras
