// The four sections of Appendix 8B as one table: which share-plan rows each
// holds, where its rows and totals go in the detail record, which amounts a
// row carries, and the texts in which IRAS's checks name the section. The
// record, the checks and the totals all walk this table, so a section is
// described in one place.
#pragma once

#include <array>
#include <string>

#include "submission/a8b/A8BLayout.h"

namespace iras::a8b {

// The rows' amounts in record order. Section A has no exempt amount, so its
// first amount is the one not qualifying for exemption.
enum class RowAmount { Exempt, NotQualifying, Gains };

struct Section {
    char letter;
    const char* planType;        // StockOptionType of its rows, and its totals' infix (TotalEESOP...)
    const char* title;           // "Section B - Entrepreneurial Equity-Based Remuneration Scheme"
    const char* exemptColumn;    // the row's exempt amount (B-D), nullptr for A
    int amountCount;             // 2 for A, 3 for B-D
    int fileTotalOffset;         // its first total among the 26 file totals
    // Texts of the checks where a section differs from Section A.
    const char* planBlankText;
    const char* exerciseServerDateText;
    const char* exercisePriceText;
    const char* exemptRangeText;  // nullptr for A
    const char* gainsRangeText;
    const char* gainsSignText;

    // IRAS's finding for a section of more rows than its fifteen slots.
    std::string CountMessage() const {
        return std::string("Invalid ") + title + ". Section " + letter + " can only have a maximum of 15 records.";
    }
    RecordBlock Rows() const { return detail::kSectionRows[Index()]; }
    RecordBlock Totals() const { return detail::kSectionTotals[Index()]; }
    int Index() const { return letter - 'A'; }
    RowAmount AmountAt(int index) const {
        return static_cast<RowAmount>(amountCount == 2 ? index + 1 : index);
    }
};

// The grand totals of the record, as the employee query names them.
inline constexpr std::array<const char*, 4> kGrandTotalColumns{
    "TotNoTaxExemptAft", "TotNoTaxExemptBef", "TotStockGainsAft", "TotStockGainsBef"};
inline constexpr int kGrandFileTotalOffset = 22;

namespace text {
inline constexpr const char* kPlanBlank =
    " - Invalid Type of Plan Granted. Type of Plan Granted cannot be blank.";
inline constexpr const char* kCompanyIdType = " - Invalid ID Type of company which granted the ESOP/ESOW Plans.";
inline constexpr const char* kExerciseBlank =
    " - Invalid Date of exercise of ESOP or date of investing of ESOW Plan (if applicable). Date cannot be "
    "blank.";
inline constexpr const char* kExerciseAfterProcessing =
    " - Invalid Date of exercise of ESOP or date of investing of ESOW Plan (if applicable). Date must not be "
    "later than batch file processing date.";
inline constexpr const char* kExercisePrice =
    " - Invalid Exercise Price of ESOP/ or Price paid/payable per share under ESOW Plan. Exercise Price of ESOP/ "
    "or Price paid/payable per share under ESOW Plan cannot have negative values.";
inline constexpr const char* kGainsRange =
    " - Invalid Gross amount of gains from ESOP/ESOW Plans. Gross amount of gains must be in the range of "
    "-9999999.99 to 9999999.99.";
inline constexpr const char* kGainsSign =
    " - Invalid Gross amount of gains from ESOP/ESOW Plans. Gross amount of gains from ESOP/ESOW Plans cannot "
    "have negative values if the number of shares acquired is a positive value.";
}  // namespace text

// Section C reports a blank plan type with the company id type's text and a
// late exercise date with the blank date's text, and Section D names the
// exercise date in its exercise-price text: IRAS's texts, kept as they are.
inline constexpr std::array<Section, 4> kSections{{
    {'A', "ESOP", "Section A - Employee Equity-Based Remuneration Scheme", nullptr, 2, 0, text::kPlanBlank,
     text::kExerciseAfterProcessing, text::kExercisePrice, nullptr, text::kGainsRange, text::kGainsSign},
    {'B', "EESOP", "Section B - Entrepreneurial Equity-Based Remuneration Scheme", "EESOPTaxExempt", 3, 4,
     text::kPlanBlank, text::kExerciseAfterProcessing, text::kExercisePrice,
     " - Invalid Gross amount qualifying for tax exemption under EEEBR. Gross amount must be in the range of "
     "-9999999.99 to 9999999.99.",
     text::kGainsRange, text::kGainsSign},
    {'C', "CSOP", "Section C - Company Equity-Based Remuneration Scheme", "CSOPTaxExempt", 3, 10,
     text::kCompanyIdType, text::kExerciseBlank, text::kExercisePrice,
     " - Invalid Gross amount qualifying for tax exemption under CEEBR. Gross amount must be in the range of "
     "-9999999.99 to 9999999.99.",
     " - Invalid Gross amount of gains from ESOP/ESOW Plans under CEEBR. Gross amount of gains must be in the "
     "range of -9999999.99 to 9999999.99.",
     " - Invalid Gross amount of gains from ESOP/ESOW Plans under CEEBR. Gross amount of gains from ESOP/ESOW "
     "Plans cannot have negative values if the number of shares acquired is a positive value."},
    {'D', "NSOP", "Section D - Equity Remuneration Incentive Scheme", "NSOPTaxExempt", 3, 16, text::kPlanBlank,
     text::kExerciseAfterProcessing,
     " - Invalid Date of exercise of ESOP or date of investing of ESOW Plan. Exercise Price of ESOP/ or Price "
     "paid/payable per share under ESOW Plan cannot have negative values.",
     " - Invalid Gross amount qualifying for tax exemption under ERIS (Start-ups). Gross amount must be in the "
     "range of -9999999.99 to 9999999.99.",
     " - Invalid Gross amount of gains from ESOP/ESOW Plans under ERIS (Start-ups). Gross amount of gains must "
     "be in the range of -9999999.99 to 9999999.99.",
     " - Invalid Gross amount of gains from ESOP/ESOW Plans under ERIS (Start-ups). Gross amount of gains from "
     "ESOP/ESOW Plans cannot have negative values if the number of shares acquired is a positive value."},
}};

// The row's stored column of an amount (what an Amendment prints).
inline std::string RowColumn(const Section& section, RowAmount amount) {
    switch (amount) {
        case RowAmount::Exempt: return section.exemptColumn;
        case RowAmount::NotQualifying: return "NoTaxExempt";
        case RowAmount::Gains: return "StockGains";
    }
    return "";
}

// The employee query's total of an amount, after or before the cut-off:
// "TotalEESOPTaxExemptAfter", "TotalESOPStockGainsBef".
inline std::string TotalColumn(const Section& section, RowAmount amount, bool after) {
    const char* kind = amount == RowAmount::Exempt ? "TaxExempt"
                       : amount == RowAmount::NotQualifying ? "NoTaxExempt"
                                                              : "StockGains";
    return std::string("Total") + section.planType + kind + (after ? "After" : "Bef");
}

}  // namespace iras::a8b
