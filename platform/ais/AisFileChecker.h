// Reads an AIS return file of any of the five kinds (IR8A current or
// supplementary, IR8S, Appendix 8A, Appendix 8B) and reports, with line and
// column, what IRAS would reject: a record of the wrong type, order or length,
// a trailer count or total that does not match the details, a malformed amount
// (digits with an optional overpunch letter), an impossible date. Amounts are
// decoded back to values, so totals are compared as numbers.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace iras {

enum class AisKind { IR8A, IR8S, A8A, A8B };

struct AisFinding {
    int line = 0;    // 1-based record number; 0 for the file as a whole
    int column = 0;  // 1-based position in the record; 0 for the whole record
    std::string message;
    bool warning = false;  // a warning lets a submission go ahead with consent
    int count = 1;         // the findings this one stands for (the closing count of a repeated kind)
};

struct AisCheckResult {
    std::optional<AisKind> kind;  // as read from the header (or given)
    int detailRecords = 0;
    std::vector<AisFinding> findings;

    bool HasErrors() const;
    bool HasWarnings() const;
    // "line 3, column 263: ..." for each finding, in file order; "line 3: ..."
    // for a whole record, the message alone for the file as a whole, and
    // "warning: " before the message of a warning.
    std::vector<std::string> Describe() const;
};

// "IR8A", "IR8S", "A8A" or "A8B": the form name a header record carries.
const char* AisKindName(AisKind kind);

// How many findings of one kind (the same message but for its values) are
// listed; the rest are counted in one finding at the end.
inline constexpr int kMaxFindingsOfAKind = 20;

// Checks the file; kind given or, when not, recognised from the header record.
// A file that cannot be read gives one finding that names it.
AisCheckResult CheckAisFile(const std::filesystem::path& file,
                            std::optional<AisKind> kind = std::nullopt);

// The value of an amount field: digits, the last one optionally an overpunch
// letter ("{", "A".."I" positive; "}", "J".."R" negative), with `decimals`
// implied decimal places. Leading blanks are not allowed. Nothing when
// malformed.
std::optional<double> DecodeAisAmount(const std::string& field, int decimals);

}  // namespace iras
