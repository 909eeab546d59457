// The record layouts of the four returns as the checker needs them: the
// positions of every amount, date and coded field, taken from the layout
// tables of the IR8A, IR8S, Appendix 8A and Appendix 8B records.
#include "platform/ais/AisRecordLayout.h"

#include <array>

namespace iras {
namespace {

AisField Amount(int column, int width, int decimals, std::string name, int total = -1) {
    AisField field;
    field.column = column;
    field.width = width;
    field.form = AisFieldForm::Amount;
    field.name = std::move(name);
    field.decimals = decimals;
    field.total = total;
    return field;
}

AisField Price(int column, std::string name) {
    AisField field = Amount(column, 12, 5, std::move(name));
    field.form = AisFieldForm::Price;
    return field;
}

AisField Integer(int column, int width, std::string name) {
    AisField field;
    field.column = column;
    field.width = width;
    field.form = AisFieldForm::Integer;
    field.name = std::move(name);
    return field;
}

AisField DateField(int column, std::string name, AisBlank blank) {
    AisField field;
    field.column = column;
    field.width = 8;
    field.form = AisFieldForm::Date;
    field.name = std::move(name);
    field.blank = blank;
    return field;
}

AisField BatchIndicator(int column) {
    AisField field;
    field.column = column;
    field.width = 1;
    field.form = AisFieldForm::Choice;
    field.name = "batch indicator";
    field.choices = "OA";
    return field;
}

// ---- IR8A ----------------------------------------------------------------

// The twelve trailer totals, in trailer order, and the detail columns they add up.
struct IR8ATotal {
    int column;
    int width;
    const char* name;
};
constexpr std::array<IR8ATotal, 12> kIR8ATotals{{
    {263, 9, "total income"},
    {310, 9, "gross salary"},
    {319, 9, "bonus"},
    {328, 9, "director's fee"},
    {337, 9, "others"},
    {355, 9, "exempt income"},
    {364, 9, "tax borne by employer"},
    {373, 9, "tax borne by employee (fixed amount)"},
    {293, 5, "donations"},
    {298, 7, "employee's CPF / pension"},
    {305, 5, "insurance"},
    {288, 5, "mosque fund"},
}};

// Every header holds the basis year, then the batch indicator ("O" or "A")
// with the day of the batch right after it.
std::vector<AisField> HeaderFields(int batchColumn, const char* dateName) {
    return {Integer(3, 4, "basis year"), BatchIndicator(batchColumn),
            DateField(batchColumn + 1, dateName, AisBlank::Error)};
}

std::vector<AisField> IR8AHeader() { return HeaderFields(222, "batch date"); }

std::vector<AisField> IR8ADetail() {
    std::vector<AisField> fields;
    fields.push_back(DateField(255, "date of birth", AisBlank::Warning));
    fields.push_back(DateField(272, "period from", AisBlank::Error));
    fields.push_back(DateField(280, "period to", AisBlank::Error));
    for (int total = 0; total < static_cast<int>(kIR8ATotals.size()); ++total) {
        const IR8ATotal& t = kIR8ATotals[static_cast<std::size_t>(total)];
        fields.push_back(Amount(t.column, t.width, 0, t.name, total));
    }
    fields.push_back(Amount(346, 9, 0, "stock gains before"));
    fields.push_back(DateField(388, "compensation approval date", AisBlank::Allowed));
    fields.push_back(DateField(411, "commission from", AisBlank::Allowed));
    fields.push_back(DateField(419, "commission to", AisBlank::Allowed));
    static constexpr std::array<const char*, 13> kCents{
        "commission",        "pension",          "transport allowance",
        "entertainment allowance", "other allowances", "gratuity",
        "compensation for loss of office", "accrued to", "accrued from",
        "contributions to funds outside", "excess employer contribution",
        "stock gains after", "benefits in kind"};
    int column = 400;
    for (const char* name : kCents) {
        fields.push_back(Amount(column, 11, 2, name));
        column += column == 400 ? 28 : 11;  // commission dates and type sit between 400 and 428
    }
    fields.push_back(DateField(597, "date of commencement", AisBlank::Allowed));
    fields.push_back(DateField(605, "date of cessation", AisBlank::Allowed));
    fields.push_back(DateField(613, "bonus declaration date", AisBlank::Allowed));
    fields.push_back(DateField(621, "director's fee approval date", AisBlank::Allowed));
    return fields;
}

std::vector<AisField> IR8ATrailer() {
    std::vector<AisField> fields;
    for (int total = 0; total < static_cast<int>(kIR8ATotals.size()); ++total) {
        AisField field = Amount(8 + 12 * total, 12, 0,
                                std::string("total of ") + kIR8ATotals[static_cast<std::size_t>(total)].name,
                                total);
        fields.push_back(field);
    }
    return fields;
}

// ---- IR8S ----------------------------------------------------------------

constexpr std::array<const char*, 6> kIR8SWages{
    "ordinary wages",   "employer CPF on ordinary wages",   "employee CPF on ordinary wages",
    "additional wages", "employer CPF on additional wages", "employee CPF on additional wages"};

std::vector<AisField> IR8SHeader() { return HeaderFields(220, "batch date"); }

std::vector<AisField> IR8SDetail(int extraBlocks) {
    std::vector<AisField> fields;
    for (int month = 1; month <= 12; ++month)
        for (int item = 0; item < 6; ++item)
            fields.push_back(Amount(95 + 54 * (month - 1) + 9 * item, 9, 2,
                                    "month " + std::to_string(month) + " " +
                                        kIR8SWages[static_cast<std::size_t>(item)]));
    for (int item = 0; item < 6; ++item)
        fields.push_back(Amount(743 + 7 * item, 7, 0,
                                std::string("total ") + kIR8SWages[static_cast<std::size_t>(item)]));
    fields.push_back(Amount(805, 7, 0, "employer voluntary CPF"));
    fields.push_back(Amount(812, 7, 0, "employee voluntary CPF"));
    for (int block = 1; block <= 3 + extraBlocks; ++block) {
        const int start = 819 + kIR8SSectionBBlockWidth * (block - 1);
        const std::string prefix = "Section B payment " + std::to_string(block) + " ";
        fields.push_back(Amount(start, 7, 0, prefix + "additional wage amount"));
        fields.push_back(DateField(start + 7, prefix + "period from", AisBlank::Allowed));
        fields.push_back(DateField(start + 15, prefix + "period to", AisBlank::Allowed));
        fields.push_back(DateField(start + 23, prefix + "date paid", AisBlank::Allowed));
        fields.push_back(Amount(start + 31, 7, 0, prefix + "employer contribution refunded"));
        fields.push_back(Amount(start + 38, 7, 0, prefix + "employer interest"));
        fields.push_back(DateField(start + 45, prefix + "employer refund date", AisBlank::Allowed));
        fields.push_back(Amount(start + 53, 7, 0, prefix + "employee contribution refunded"));
        fields.push_back(Amount(start + 60, 7, 0, prefix + "employee interest"));
        fields.push_back(DateField(start + 67, prefix + "employee refund date", AisBlank::Allowed));
    }
    return fields;
}

// ---- Appendix 8A ---------------------------------------------------------

std::vector<AisField> A8AHeader() { return HeaderFields(220, "file date"); }

std::vector<AisField> A8ADetail() {
    std::vector<AisField> fields;
    fields.push_back(DateField(185, "occupation from", AisBlank::Allowed));
    fields.push_back(DateField(193, "occupation to", AisBlank::Allowed));
    fields.push_back(Integer(201, 3, "days of occupation"));
    fields.push_back(Integer(204, 2, "employees sharing the quarters"));
    struct Item {
        int column;
        const char* name;
    };
    static constexpr std::array<Item, 24> kAmounts{{
        {206, "annual value of the premises"},
        {216, "value of furniture and fittings"},
        {225, "rent paid to the landlord"},
        {234, "residence value"},
        {243, "rent paid by the employee"},
        {252, "total taxable residence value"},
        {261, "utilities, telephone, pager"},
        {270, "driver"},
        {279, "servant, gardener"},
        {288, "total value of utilities"},
        {297, "hotel accommodation"},
        {306, "hotel amount paid by the employee"},
        {315, "total hotel accommodation"},
        {324, "incidental benefits"},
        {340, "interest on loans"},
        {349, "life insurance"},
        {358, "holidays"},
        {367, "education"},
        {376, "long service awards"},
        {385, "clubs"},
        {394, "assets"},
        {403, "motor vehicle"},
        {412, "car benefit"},
        {430, "total benefits in kind"},
    }};
    for (const Item& item : kAmounts) fields.push_back(Amount(item.column, 9, 2, item.name));
    return fields;
}

// ---- Appendix 8B ---------------------------------------------------------

struct A8BSection {
    char letter;
    int firstRow;     // column of row 1
    int rowWidth;     // 139 for Section A, 148 for the others
    int totalsColumn;
};
constexpr std::array<A8BSection, 4> kA8BSections{{
    {'A', 107, 139, 2192},
    {'B', 2232, 148, 4452},
    {'C', 4512, 148, 6732},
    {'D', 6792, 148, 9012},
}};
constexpr int kA8BRowsPerSection = 15;

// The 26 detail totals in the order of the trailer totals that add them up.
struct A8BTotal {
    int column;
    int width;
    std::string name;
};

std::vector<A8BTotal> A8BTotals() {
    std::vector<A8BTotal> totals;
    for (const A8BSection& section : kA8BSections) {
        const std::string prefix = std::string("Section ") + section.letter + " total ";
        std::vector<std::string> items;
        if (section.letter != 'A') {
            items.push_back("qualifying for exemption (after)");
            items.push_back("qualifying for exemption (before)");
        }
        items.push_back("not qualifying for exemption (after)");
        items.push_back("not qualifying for exemption (before)");
        items.push_back("gains (after)");
        items.push_back("gains (before)");
        int column = section.totalsColumn;
        for (const std::string& item : items) {
            totals.push_back({column, 10, prefix + item});
            column += 10;
        }
    }
    const std::array<const char*, 4> grand{
        "grand total not qualifying for exemption (after)",
        "grand total not qualifying for exemption (before)", "grand total gains (after)",
        "grand total gains (before)"};
    for (std::size_t i = 0; i < grand.size(); ++i)
        totals.push_back({9072 + 11 * static_cast<int>(i), 11, grand[i]});
    return totals;
}

std::vector<AisField> A8BHeader() {
    std::vector<AisField> fields = HeaderFields(222, "batch date");
    fields.push_back(DateField(231, "date of incorporation", AisBlank::Warning));
    return fields;
}

std::vector<AisField> A8BDetail() {
    std::vector<AisField> fields;
    fields.push_back(DateField(99, "date of birth", AisBlank::Warning));
    for (const A8BSection& section : kA8BSections) {
        for (int row = 1; row <= kA8BRowsPerSection; ++row) {
            const int start = section.firstRow + section.rowWidth * (row - 1);
            const std::string prefix =
                std::string("Section ") + section.letter + " row " + std::to_string(row) + " ";
            fields.push_back(DateField(start + 57, prefix + "date of grant", AisBlank::Allowed));
            fields.push_back(DateField(start + 65, prefix + "date of exercise", AisBlank::Allowed));
            fields.push_back(Price(start + 73, prefix + "exercise price"));
            fields.push_back(Price(start + 85, prefix + "market value at grant"));
            fields.push_back(Price(start + 97, prefix + "market value at exercise"));
            fields.push_back(Amount(start + 109, 12, 5, prefix + "number of shares"));
            if (section.letter == 'A') {
                fields.push_back(Amount(start + 121, 9, 2, prefix + "amount not qualifying for exemption"));
                fields.push_back(Amount(start + 130, 9, 2, prefix + "gains"));
            } else {
                fields.push_back(Amount(start + 121, 9, 2, prefix + "amount qualifying for exemption"));
                fields.push_back(Amount(start + 130, 9, 2, prefix + "amount not qualifying for exemption"));
                fields.push_back(Amount(start + 139, 9, 2, prefix + "gains"));
            }
        }
    }
    const std::vector<A8BTotal> totals = A8BTotals();
    for (std::size_t i = 0; i < totals.size(); ++i)
        fields.push_back(Amount(totals[i].column, totals[i].width, 2, totals[i].name, static_cast<int>(i)));
    return fields;
}

std::vector<AisField> A8BTrailer() {
    const std::vector<A8BTotal> totals = A8BTotals();
    std::vector<AisField> fields;
    for (std::size_t i = 0; i < totals.size(); ++i) {
        const int total = static_cast<int>(i);
        fields.push_back(Amount(8 + 14 * total, 14, 2, "total of " + totals[i].name, total));
    }
    return fields;
}

std::size_t IndexOf(AisKind kind) { return static_cast<std::size_t>(kind); }

}  // namespace

const AisKindFacts& FactsOf(AisKind kind) {
    static const std::array<AisKindFacts, 4> kFacts{{
        {"IR8A", 261, 10, true, 1200, 1200, 1200},
        {"IR8S", 259, 10, false, 1200, 1200, 0},
        {"A8A", 259, 10, false, 800, 700, 0},
        {"A8B", 269, 10, true, 9300, 9300, 9300},
    }};
    return kFacts[IndexOf(kind)];
}

const std::vector<AisField>& HeaderFields(AisKind kind) {
    static const std::array<std::vector<AisField>, 4> kHeaders{IR8AHeader(), IR8SHeader(), A8AHeader(),
                                                               A8BHeader()};
    return kHeaders[IndexOf(kind)];
}

std::vector<AisField> DetailFields(AisKind kind, int extraBlocks) {
    if (kind == AisKind::IR8S && extraBlocks > 0) return IR8SDetail(extraBlocks);
    return StandardDetailFields(kind);
}

const std::vector<AisField>& StandardDetailFields(AisKind kind) {
    static const std::array<std::vector<AisField>, 4> kDetails{IR8ADetail(), IR8SDetail(0), A8ADetail(),
                                                               A8BDetail()};
    return kDetails[IndexOf(kind)];
}

const std::vector<AisField>& TrailerFields(AisKind kind) {
    static const std::array<std::vector<AisField>, 4> kTrailers{IR8ATrailer(), {}, {}, A8BTrailer()};
    return kTrailers[IndexOf(kind)];
}

}  // namespace iras
