// The AIS file checker: reads a return file record by record and reports what
// IRAS would reject, each finding with its line and column.
//
// Decisions a reader of a report should know:
// - A record of the wrong length is reported once, and its fields are not
//   read: with a byte missing or added, every later position is shifted, and
//   reading on would bury the one real fault under false ones. For the same
//   reason the trailer totals are not compared when a detail record has the
//   wrong length (the count still is).
// - A trailer total is not compared when one of the amounts it adds up is
//   itself malformed; that amount is already a finding.
// - Warnings, not errors: a file with a header and no detail records (a nil
//   return may be meant), and a blank date of birth or date of incorporation
//   (our own validation lets these through; IRAS may still ask for them).
//   Everything else is an error.
#include "platform/ais/AisFileChecker.h"

#include <algorithm>
#include <fstream>
#include <map>
#include <system_error>
#include <unordered_map>

#include "platform/ais/AisFields.h"
#include "platform/ais/AisRecordLayout.h"
#include "platform/ais/AisRecordReader.h"

namespace iras {
namespace {

std::string Quoted(std::string_view text) { return "\"" + Printable(text) + "\""; }

std::string RecordKindWord(char type) {
    switch (type) {
        case '0': return "a header record";
        case '1': return "a detail record";
        case '2': return "a trailer record";
        default: return "a record of type " + Quoted(std::string_view(&type, 1));
    }
}

// The form name in a header record at the place the given kind keeps it,
// without the blanks that fill its field.
std::string FormNameAt(const std::string& header, AisKind kind) {
    const AisKindFacts& facts = FactsOf(kind);
    const auto start = static_cast<std::size_t>(facts.formNameColumn - 1);
    if (header.size() <= start) return {};
    std::string name = header.substr(start, static_cast<std::size_t>(facts.formNameWidth));
    name.erase(name.find_last_not_of(' ') + 1);
    return name;
}

std::optional<AisKind> RecogniseKind(const std::string& header) {
    for (AisKind kind : {AisKind::IR8A, AisKind::IR8S, AisKind::A8A, AisKind::A8B})
        if (FormNameAt(header, kind) == FactsOf(kind).name) return kind;
    return std::nullopt;
}

// Checks the records of one file of a known kind, in the order they come.
class RecordChecker {
public:
    RecordChecker(AisKind kind, AisCheckResult& result)
        : kind_(kind), facts_(FactsOf(kind)), result_(result) {
        const std::size_t totals = TrailerFields(kind).size();
        sums_.assign(totals, 0);
        sumUsable_.assign(totals, true);
    }

    void Check(const AisRawRecord& record) {
        lastLine_ = record.line;
        if (record.length == 0) {
            Error(record.line, 0, "empty record");
            return;
        }
        const char type = record.bytes[0];
        CheckPlace(record.line, type);
        CheckControlCharacters(record);
        switch (type) {
            case '0':
                if (!headerChecked_) CheckHeader(record);
                headerChecked_ = true;
                break;
            case '1': CheckDetail(record); break;
            case '2':
                if (facts_.hasTrailer && trailerLine_ == record.line) CheckTrailer(record);
                break;
            default: break;
        }
    }

    void Finish() {
        if (lastLine_ == 0) return;
        if (facts_.hasTrailer) {
            if (trailerLine_ == 0) {
                Error(0, 0, std::string("the file has no trailer record \"2\"; ") + Article() + " file ends with one");
            } else if (trailerLine_ != lastLine_) {
                const int following = lastLine_ - trailerLine_;
                Error(trailerLine_, 1, "the trailer record must be the last record; " +
                                           std::to_string(following) +
                                           (following == 1 ? " record follows it" : " records follow it"));
            }
        }
        if (details_ == 0 && headerChecked_)
            Warning(0, 0, "the file holds no detail records");
        if (trailerLine_ != 0) CompareTrailer();
        result_.detailRecords = details_;
    }

private:
    // Every form name reads with "an": an IR8A, an IR8S, an A8A, an A8B.
    std::string Article() const { return std::string("an ") + facts_.name; }

    void Error(int line, int column, std::string message) {
        result_.findings.push_back({line, column, std::move(message), false});
    }
    void Warning(int line, int column, std::string message) {
        result_.findings.push_back({line, column, std::move(message), true});
    }

    // Record type and order: one header first, then details, then (IR8A and
    // Appendix 8B) exactly one trailer last.
    void CheckPlace(int line, char type) {
        if (line == 1 && type != '0') {
            Error(line, 1, "the file must open with the header record \"0\"; this is " + RecordKindWord(type));
        } else if (line != 1 && type == '0') {
            Error(line, 1, "a header record \"0\" may only be the first record of the file");
        }
        if (type == '1') {
            ++details_;
        } else if (type == '2') {
            if (!facts_.hasTrailer)
                Error(line, 1, std::string(facts_.name) + " files have no trailer record \"2\"");
            else if (trailerLine_ != 0)
                Error(line, 1, "a second trailer record; the trailer is on line " + std::to_string(trailerLine_));
            else
                trailerLine_ = line;
        } else if (type != '0') {
            Error(line, 1, "unknown record type " + Quoted(std::string_view(&type, 1)) + "; records are \"0\" header, \"1\" detail" +
                               (facts_.hasTrailer ? " or \"2\" trailer" : ""));
        }
    }

    // IRAS reads the file as text: a control byte inside a record is never
    // data. The first one of a record is enough to point at it.
    void CheckControlCharacters(const AisRawRecord& record) {
        for (std::size_t i = 0; i < record.bytes.size(); ++i) {
            const auto byte = static_cast<unsigned char>(record.bytes[i]);
            if (byte < 0x20 || byte == 0x7F) {
                Error(record.line, static_cast<int>(i) + 1,
                      "control character " + Printable(record.bytes.substr(i, 1)) + " in the record");
                return;
            }
        }
    }

    bool CheckLength(const AisRawRecord& record, int expected, const char* what) {
        if (record.length == static_cast<std::size_t>(expected)) return true;
        Error(record.line, 0,
              "record is " + std::to_string(record.length) + " characters long; " + Article() + " " + what +
                  " record has " + std::to_string(expected));
        return false;
    }

    void CheckHeader(const AisRawRecord& record) {
        if (!CheckLength(record, facts_.headerWidth, "header")) return;
        const std::string formName = FormNameAt(record.bytes, kind_);
        if (formName != facts_.name)
            Error(record.line, facts_.formNameColumn,
                  "form name is " + Quoted(formName) + "; " + Article() + " file has " + Quoted(facts_.name));
        CheckFields(record, HeaderFields(kind_), nullptr);
    }

    void CheckDetail(const AisRawRecord& record) {
        int extraBlocks = 0;
        if (kind_ == AisKind::IR8S) {
            // Each Section B payment beyond the third lengthens the record by one block.
            const auto base = static_cast<std::size_t>(facts_.detailWidth);
            const auto block = static_cast<std::size_t>(kIR8SSectionBBlockWidth);
            if (record.length < base || (record.length - base) % block != 0) {
                Error(record.line, 0,
                      "record is " + std::to_string(record.length) +
                          " characters long; an IR8S detail record has 1200, and 75 more for each Section B "
                          "payment beyond the third");
                detailsUsable_ = false;
                return;
            }
            extraBlocks = static_cast<int>((record.length - base) / block);
        } else if (!CheckLength(record, facts_.detailWidth, "detail")) {
            detailsUsable_ = false;
            return;
        }
        CheckIdOnce(record);
        if (extraBlocks > 0)
            CheckFields(record, DetailFields(kind_, extraBlocks), &sums_);
        else
            CheckFields(record, StandardDetailFields(kind_), &sums_);
    }

    void CheckTrailer(const AisRawRecord& record) {
        if (!CheckLength(record, facts_.trailerWidth, "trailer")) return;
        const std::string count = record.bytes.substr(1, 6);
        if (IsAisInteger(count) && count.front() != ' ')
            trailerCount_ = std::stoll(count);
        else
            Error(record.line, 2, "record count " + Quoted(count) + " is not a whole number");
        trailerTotals_.assign(sums_.size(), std::nullopt);
        CheckFields(record, TrailerFields(kind_), nullptr, &trailerTotals_);
        trailerFields_ = &TrailerFields(kind_);
    }

    // Every return reports an employee once: the ID type (column 2) and the
    // ID number (columns 3-14) open each detail record of all four kinds.
    void CheckIdOnce(const AisRawRecord& record) {
        std::string idNo = record.bytes.substr(2, 12);
        idNo.erase(idNo.find_last_not_of(' ') + 1);
        if (idNo.empty() || idNo.find_first_not_of(' ') == std::string::npos) return;
        const auto [first, added] = idLines_.emplace(record.bytes.substr(1, 1) + idNo, record.line);
        if (added) return;
        Error(record.line, 3,
              "ID number " + Quoted(idNo) + " is already on line " + std::to_string(first->second) +
                  "; an employee is reported once in a return");
    }

    // Reads every listed field; detail amounts that feed a trailer total are
    // added to `sums`, trailer totals are kept in `totals`.
    void CheckFields(const AisRawRecord& record, const std::vector<AisField>& fields,
                     std::vector<long long>* sums, std::vector<std::optional<long long>>* totals = nullptr) {
        for (const AisField& field : fields) {
            const auto start = static_cast<std::size_t>(field.column - 1);
            const std::string_view text =
                std::string_view(record.bytes).substr(std::min(start, record.bytes.size()),
                                                      static_cast<std::size_t>(field.width));
            switch (field.form) {
                case AisFieldForm::Amount: {
                    const std::optional<long long> units = ParseAisUnits(text);
                    if (!units) {
                        Error(record.line, field.column,
                              field.name + " " + Quoted(text) +
                                  " is not an amount (digits, the last one may carry the sign)");
                    }
                    if (field.total >= 0) {
                        const auto index = static_cast<std::size_t>(field.total);
                        if (sums && index < sums->size()) {
                            if (units)
                                AddTo(index, *units);
                            else
                                sumUsable_[index] = false;
                        }
                        if (totals && index < totals->size()) (*totals)[index] = units;
                    }
                    break;
                }
                case AisFieldForm::Price:
                    if (!IsUnsignedAisAmount(text))
                        Error(record.line, field.column, field.name + " " + Quoted(text) + " is not a price (digits only)");
                    break;
                case AisFieldForm::Integer:
                    if (!IsAisInteger(text))
                        Error(record.line, field.column, field.name + " " + Quoted(text) + " is not a whole number");
                    break;
                case AisFieldForm::Date: CheckDate(record.line, field, text); break;
                case AisFieldForm::Choice:
                    if (text.size() != 1 || field.choices.find(text[0]) == std::string::npos) {
                        std::string allowed;
                        for (std::size_t i = 0; i < field.choices.size(); ++i)
                            allowed += (i == 0 ? "" : i + 1 == field.choices.size() ? " or " : ", ") +
                                       Quoted(field.choices.substr(i, 1));
                        Error(record.line, field.column, field.name + " " + Quoted(text) + " must be " + allowed);
                    }
                    break;
            }
        }
    }

    void CheckDate(int line, const AisField& field, std::string_view text) {
        switch (ClassifyAisDate(text)) {
            case AisDateForm::Valid: return;
            case AisDateForm::Blank:
                if (field.blank == AisBlank::Error)
                    Error(line, field.column, field.name + " is blank");
                else if (field.blank == AisBlank::Warning)
                    Warning(line, field.column, field.name + " is blank");
                return;
            case AisDateForm::NotADate:
                Error(line, field.column, field.name + " " + Quoted(text) + " is not a date in the form YYYYMMDD");
                return;
            case AisDateForm::Impossible:
                Error(line, field.column, field.name + " " + Quoted(text) + " is not a real date");
                return;
        }
    }

    void AddTo(std::size_t index, long long units) {
        if (__builtin_add_overflow(sums_[index], units, &sums_[index])) sumUsable_[index] = false;
    }

    void CompareTrailer() {
        if (trailerCount_ && *trailerCount_ != details_)
            Error(trailerLine_, 2,
                  "record count is " + std::to_string(*trailerCount_) + " but the file has " +
                      std::to_string(details_) + (details_ == 1 ? " detail record" : " detail records"));
        if (!detailsUsable_ || !trailerFields_) return;
        for (const AisField& field : *trailerFields_) {
            const auto index = static_cast<std::size_t>(field.total);
            if (index >= trailerTotals_.size() || !trailerTotals_[index] || !sumUsable_[index]) continue;
            if (*trailerTotals_[index] == sums_[index]) continue;
            Error(trailerLine_, field.column,
                  field.name + " is " + FormatAisUnits(*trailerTotals_[index], field.decimals) +
                      " but the detail records add up to " + FormatAisUnits(sums_[index], field.decimals));
        }
    }

    AisKind kind_;
    const AisKindFacts& facts_;
    AisCheckResult& result_;
    int lastLine_ = 0;
    int details_ = 0;
    int trailerLine_ = 0;
    bool headerChecked_ = false;  // only the first header is read: a second one is already an error
    bool detailsUsable_ = true;
    std::vector<long long> sums_;
    std::vector<bool> sumUsable_;
    std::optional<long long> trailerCount_;
    std::vector<std::optional<long long>> trailerTotals_;
    const std::vector<AisField>* trailerFields_ = nullptr;
    std::unordered_map<std::string, int> idLines_;  // ID type and number -> first line
};

// The line-end faults are the same for every kind, so they are found while
// reading, before the kind is known.
void CheckLineEnd(const AisRawRecord& record, AisCheckResult& result) {
    const int column = static_cast<int>(std::min<std::size_t>(record.length, 1u << 30)) + 1;
    if (record.end == AisLineEnd::BareLf)
        result.findings.push_back({record.line, column, "record ends with a bare LF; records end with CR LF", false});
    else if (record.end == AisLineEnd::None)
        result.findings.push_back({record.line, column, "the last record does not end with CR LF", false});
}

// The first record of type "0", for telling the kind of a file whose header is
// not where it belongs.
std::optional<std::string> FindHeader(std::istream& in) {
    AisRecordReader reader(in);
    AisRawRecord record;
    while (reader.Next(record))
        if (!record.bytes.empty() && record.bytes[0] == '0') return record.bytes;
    return std::nullopt;
}

// The kind of a finding: its message without the values that differ from
// record to record (quoted texts, numbers).
std::string KindOfFinding(const AisFinding& finding) {
    std::string kind = finding.warning ? "w" : "e";
    bool quoted = false;
    for (char c : finding.message) {
        if (c == '"') {
            quoted = !quoted;
            if (quoted) kind += "\"\"";
        } else if (!quoted && !(c >= '0' && c <= '9')) {
            kind += c;
        }
    }
    return kind;
}

// A file with one fault in every record (bare LF line ends, a shifted field)
// would list it thousands of times: each kind is listed for its first
// kMaxFindingsOfAKind records, then counted in one closing finding.
void CapRepeatedFindings(std::vector<AisFinding>& findings) {
    std::map<std::string, int> seen;
    std::vector<AisFinding> kept;
    std::vector<std::pair<std::string, AisFinding>> firstOfKind;
    for (AisFinding& finding : findings) {
        const std::string kind = KindOfFinding(finding);
        const int count = ++seen[kind];
        if (count == 1) firstOfKind.emplace_back(kind, finding);
        if (count <= kMaxFindingsOfAKind) kept.push_back(std::move(finding));
    }
    for (const auto& [kind, first] : firstOfKind) {
        const int more = seen[kind] - kMaxFindingsOfAKind;
        if (more <= 0) continue;
        kept.push_back({0, 0,
                        std::to_string(more) + " more finding" + (more == 1 ? "" : "s") + " like line " +
                            std::to_string(first.line) + "'s (" + first.message + ") are not listed",
                        first.warning, more});
    }
    findings = std::move(kept);
}

}  // namespace

bool AisCheckResult::HasErrors() const {
    return std::any_of(findings.begin(), findings.end(), [](const AisFinding& f) { return !f.warning; });
}

bool AisCheckResult::HasWarnings() const {
    return std::any_of(findings.begin(), findings.end(), [](const AisFinding& f) { return f.warning; });
}

std::vector<std::string> AisCheckResult::Describe() const {
    std::vector<std::string> lines;
    lines.reserve(findings.size());
    for (const AisFinding& finding : findings) {
        std::string text;
        if (finding.line > 0) {
            text = "line " + std::to_string(finding.line);
            if (finding.column > 0) text += ", column " + std::to_string(finding.column);
            text += ": ";
        }
        if (finding.warning) text += "warning: ";
        lines.push_back(text + finding.message);
    }
    return lines;
}

const char* AisKindName(AisKind kind) { return FactsOf(kind).name; }

AisCheckResult CheckAisFile(const std::filesystem::path& file, std::optional<AisKind> kind) {
    AisCheckResult result;
    result.kind = kind;
    auto fileFinding = [&](std::string message) { result.findings.push_back({0, 0, std::move(message), false}); };

    std::error_code error;
    const auto status = std::filesystem::status(file, error);
    if (!std::filesystem::exists(status)) {
        fileFinding("file not found: " + file.string());
        return result;
    }
    if (std::filesystem::is_directory(status)) {
        fileFinding(file.string() + " is a folder, not an AIS file");
        return result;
    }
    std::ifstream in(file, std::ios::binary);
    if (!in) {
        fileFinding("cannot read " + file.string());
        return result;
    }
    if (in.peek() == std::ifstream::traits_type::eof()) {
        if (in.bad()) {
            fileFinding("cannot read " + file.string());
        } else {
            fileFinding("the file is empty: " + file.string());
        }
        return result;
    }

    if (!result.kind) {
        const std::optional<std::string> header = FindHeader(in);
        if (header) result.kind = RecogniseKind(*header);
        in.clear();
        in.seekg(0);
        if (!result.kind) {
            fileFinding(header ? "cannot tell which return " + file.string() +
                                     " holds: its header record carries none of the form names IR8A (columns "
                                     "261-270), IR8S or A8A (259-268), A8B (269-278)"
                               : file.string() + " has no header record \"0\"; cannot tell which return it holds");
        }
    }

    std::optional<RecordChecker> checker;
    if (result.kind) checker.emplace(*result.kind, result);
    AisRecordReader reader(in);
    AisRawRecord record;
    while (reader.Next(record)) {
        CheckLineEnd(record, result);
        if (checker) checker->Check(record);
    }
    if (reader.ReadFailed()) fileFinding("reading " + file.string() + " failed after line " + std::to_string(record.line));
    if (checker) checker->Finish();

    // In file order; the findings on the file as a whole come first.
    std::stable_sort(result.findings.begin(), result.findings.end(), [](const AisFinding& a, const AisFinding& b) {
        return a.line != b.line ? a.line < b.line : a.column < b.column;
    });
    CapRepeatedFindings(result.findings);
    return result;
}

}  // namespace iras
