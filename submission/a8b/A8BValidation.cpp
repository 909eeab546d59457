// The checks IRAS makes on each employee of an original Appendix 8B and on
// every share-plan row of the four sections: the employee's identity, the
// number of rows a section can hold, and for each row the company, the plan
// type, the dates of grant and exercise against the processing date and the
// scheme's own dates, and the ranges and signs of prices and amounts. Every
// row of every section is checked, so one run tells the user everything to
// correct.
#include <cstdio>

#include "platform/common/CommonLibrary.h"
#include "platform/common/Text.h"
#include "platform/host/HostFunctions.h"
#include "submission/a8b/A8BSections.h"
#include "submission/a8b/RA8BeSubmission.h"

namespace iras {

namespace {

constexpr double kAmountLimit = 9999999.99;
constexpr double kSharesLimit = 9999999;

bool OutOfRange(double value, double limit) { return value < -limit || value > limit; }

// A date as the log shows dates, dd/mm/yyyy; nothing for the empty date.
std::string DateText(const Date& date) {
    if (_IsDateNull(date)) return "";
    char text[16];
    std::snprintf(text, sizeof text, "%02d/%02d/%04d", date.day, date.month, date.year);
    return text;
}

// The last day of an ERIS start-up's three years: the same day and month
// three years after incorporation. A company incorporated on 29 February
// has no such day three years on (never a leap year); its limit is then
// 28 February, so that no grant after the third anniversary passes.
Date ThreeYearsAfter(const Date& incorporated) {
    Date limit{incorporated.year + 3, incorporated.month, incorporated.day};
    if (limit.month == 2 && limit.day == 29 && !limit.IsValid()) limit.day = 28;
    return limit;
}

}  // namespace

int RA8BeSubmission::A8BDetailsValidation() {
    ErrorList.clear();
    WriteInternalMemo(std::string(48, '*'));
    WriteInternalMemo("             A8B DETAILS VALIDATION             ");
    WriteInternalMemo(std::string(48, '*'));
    const auto fail = [this](const char* message) { ErrorList.push_back(message); };

    WriteInternalMemo("Validating ID Type of Employee");
    if (!YEKeywordRecLocate(Text("PayeeIDType"))) fail("Invalid ID Type of Employee.");
    WriteInternalMemo("Validating ID No. of Employee");
    if (Text("TaxNo").empty()) fail("Invalid ID No. of Employee. ID No. of Employee cannot be blank.");
    WriteInternalMemo("Validating Name of Employee - Line 1");
    if (Text("EEName1").empty())
        fail("Invalid Name of Employee - Line 1. Name of Employee - Line 1 cannot be blank.");
    WriteInternalMemo("Validating Nationality Code");
    const std::string nationality = Text("IRASNationalityCode");
    if (nationality.empty()) {
        fail("Invalid Nationality Code. Nationality Code cannot be blank.");
    } else if (IsOneOf(nationality, {"300", "997"})) {
        fail("Invalid Nationality Code. 300 or 997 has been removed from the list of Nationality Code.");
    }
    WriteInternalMemo("Validating Gender: ");
    WriteInternalMemo("F = Female");
    WriteInternalMemo("M = Male");
    if (!IsOneOf(Text("Gender"), {"F", "M"})) fail("Invalid Sex.");
    WriteInternalMemo("Validating Date of Birth: ");
    if (_IsDateNull(DateOf("DOB"))) fail("Date of Birth cannot be blank.");

    // A section holds fifteen rows; one with more gets only this finding.
    for (const a8b::Section& section : a8b::kSections) {
        if (Overfull(section)) {
            ErrorList.push_back(section.CountMessage());
            continue;
        }
        switch (section.letter) {
            case 'A': A8BSecAValidation(); break;
            case 'B': A8BSecBValidation(); break;
            case 'C': A8BSecCValidation(); break;
            default: A8BSecDValidation(); break;
        }
    }

    if (_IsZeroValue(Amount("GrandTotalStockGains")))
        fail("IRAS file submission will not accept zero amount for Total Gross Amount of ESOP/ESOW Gains. Please "
             "delete the Appendix 8B record or enter the amount.");
    return ErrorList.empty() ? 1 : 0;
}

void RA8BeSubmission::A8BSecAValidation() { SectionValidation(0); }
void RA8BeSubmission::A8BSecBValidation() { SectionValidation(1); }
void RA8BeSubmission::A8BSecCValidation() { SectionValidation(2); }
void RA8BeSubmission::A8BSecDValidation() { SectionValidation(3); }

// The rules of Section A, and where Sections B, C and D differ from them.
void RA8BeSubmission::SectionValidation(int sectionIndex) {
    const a8b::Section& section = a8b::kSections[static_cast<std::size_t>(sectionIndex)];
    db::Query& query = StockOptQueries[static_cast<std::size_t>(sectionIndex)];
    const std::string letter(1, section.letter);
    WriteInternalMemo(std::string(48, '*'));
    WriteInternalMemo("            A8B SECTION " + letter + " VALIDATION            ");
    WriteInternalMemo(std::string(48, '*'));
    const Date today = _GetDBServerCurrentDate();
    const int yeYear = Context != nullptr ? Context->iGetYEYear() : BasisYear;

    int number = 0;
    for (query.First(); !query.IsEmpty() && !query.Eof(); query.Next()) {
        ++number;
        WriteInternalMemo("Validating Section " + letter + " Record No. " + std::to_string(number));
        const std::string companyIdType = Text(query, "CompanyIDType");
        const std::string plan = Text(query, "TypePlanGranted");
        const Date granted = DateOf(query, "DateStockGranted");
        const Date exercised = DateOf(query, "DateExerciseStock");
        const double exercisePrice = Amount(query, "ExercisePriceStock");
        const double atGrant = Amount(query, "MktValueStockGrant");
        const double atExercise = Amount(query, "MktValueExerciseStock");
        const double shares = Amount(query, "SharesAcquired");
        const double exempt = section.exemptColumn != nullptr ? Amount(query, section.exemptColumn) : 0.0;
        const double notQualifying = Amount(query, "NoTaxExempt");
        const double gains = Amount(query, "StockGains");
        // An entirely empty row passes: the "cannot be blank" rules ask only
        // of a row that holds something.
        const bool filled = !companyIdType.empty() || !Text(query, "RCBNo").empty() ||
                            !Text(query, "CompanyName").empty() || !plan.empty() || !_IsDateNull(granted) ||
                            !_IsDateNull(exercised) || exercisePrice != 0.0 || atGrant != 0.0 ||
                            atExercise != 0.0 || shares != 0.0 || exempt != 0.0 || notQualifying != 0.0 ||
                            gains != 0.0;

        const std::string prefix = "Section " + letter + " Record " + std::to_string(number) + " - RCB No " +
                                   Text(query, "RCBNo");
        const auto fail = [&](const std::string& text) { ErrorList.push_back(prefix + text); };
        const auto failGrant = [&](const std::string& text) {
            ErrorList.push_back(prefix + " - Date of Grant " + DateText(granted) + text);
        };

        WriteInternalMemo("Validating ID Type of company which granted the ESOP/ESOW Plans: ");
        for (const char* line : {"  7 = ROB No.", "  8 = ROC No.", "  A = ASGD", "  I = ITR", "  C = CRN",
                                 "  M = MCST", "  G = GSTN", "  U = UENO"})
            WriteInternalMemo(line);
        if (!companyIdType.empty() && !YEKeywordRecLocate(companyIdType)) fail(a8b::text::kCompanyIdType);

        WriteInternalMemo("Validating Type of Plan Granted");
        if (plan.empty() && filled) fail(section.planBlankText);
        // Section D takes the plan type as it stands.
        if (section.letter != 'D' && !plan.empty() && !YEKeywordRecLocate(plan))
            fail(" - Invalid Type of Plan Granted.");

        WriteInternalMemo("Validating Date of Grant of ESOP/ESOW Plan");
        const std::string grantText = " - Invalid Date of Grant of ESOP/ESOW Plan.";
        if (_IsDateNull(granted)) {
            if (filled) failGrant(grantText + " Date of Grant of ESOP/ESOW Plan cannot be blank.");
        } else {
            // A date that is missing is reported once, by the rule above;
            // the scheme's dates judge only a date that is there.
            if (today < granted) failGrant(grantText + " Date must not be later than batch file processing date.");
            switch (section.letter) {
                case 'B':
                    // EEEBR: options from 1 June 2000, ownership plans from 2002.
                    if (plan == "ESOP" && granted < Date{2000, 6, 1})
                        failGrant(grantText + " Date must be later than or equal to 01/06/2000.");
                    if (plan == "ESOW" && granted < Date{2002, 1, 1})
                        failGrant(grantText + " Date must be later than or equal to 01/01/2002.");
                    if (Date{yeYear, 12, 31} < granted)
                        failGrant(grantText + " Date must not be later than 31 Dec " + std::to_string(yeYear) + ".");
                    break;
                case 'C':
                    // CEEBR: options from 1 April 2001, ownership plans from 2002.
                    if (plan == "ESOP" && granted < Date{2001, 4, 1})
                        failGrant(grantText + " Date must be later than or equal to 01/04/2001.");
                    if (plan == "ESOW" && granted < Date{2002, 1, 1})
                        failGrant(grantText + " Date must be later than or equal to 01/01/2002.");
                    break;
                case 'D': {
                    // ERIS (start-ups): plans granted from 16 February 2008 to
                    // 15 February 2013, within a company's first three years.
                    if (granted < Date{2008, 2, 16} || Date{2013, 2, 15} < granted)
                        failGrant(grantText + " Date must be between 16 Feb 2008 to 15 Feb 2013.");
                    const Date incorporated = DateOf(query, "DateIncorporation");
                    if (granted < incorporated || ThreeYearsAfter(incorporated) < granted)
                        failGrant(grantText +
                                  " Invalid Date of Grant of ESOP/ESOW Plan. Date must be within 3 years' of Date of "
                                  "Incorporation.");
                    break;
                }
                default: break;
            }
        }

        WriteInternalMemo("Validating Date of exercise of ESOP or date of investing of ESOW Plan (if applicable)");
        if (_IsDateNull(exercised)) {
            if (filled) fail(a8b::text::kExerciseBlank);
        } else {
            if (today < exercised) fail(section.exerciseServerDateText);
            if (!_IsDateNull(granted) && exercised < granted)
                fail(" - Invalid Date of exercise of ESOP or date of investing of ESOW Plan (if applicable). Date "
                     "must be later than or equal to Date of Grant of ESOP/ESOW.");
            // EEEBR exempts gains from plans exercised up to the end of 2023.
            if (section.letter == 'B' && Date{2023, 12, 31} < exercised)
                fail(" - Invalid Date of exercise of ESOP or date of investing of ESOW Plan (if applicable). Date "
                     "must not be later than 31 Dec 2023.");
        }

        WriteInternalMemo("Validating Prices per share");
        if (exercisePrice < 0) fail(section.exercisePriceText);
        const std::string atGrantText =
            " - Invalid Open Market Value Per Share as at the Date of Grant of ESOP/ESOW Plans. Open Market Value "
            "Per Share as at the Date of Grant of ESOP/ESOW Plans";
        // Section A's plans have no exemption, so no value at grant.
        if (section.letter == 'A' && atGrant != 0.0) fail(atGrantText + " must be zero.");
        if (section.letter != 'A' && atGrant < 0) fail(atGrantText + " cannot have negative values.");
        if (atExercise < 0)
            fail(" - Invalid Open Market Value Per Share as at the Date Reflected at Column (d) of the form. Open "
                 "Market Value Per Share as at the Date Reflected at Column (d) of the form cannot have negative "
                 "values.");

        WriteInternalMemo("Validating Number of shares acquired and Gross amounts");
        if (OutOfRange(shares, kSharesLimit))
            fail(" - Invalid Number of shares acquired. Number of shares acquired must be in the range of -9999999 "
                 "to 9999999.");
        if (section.exemptRangeText != nullptr && OutOfRange(exempt, kAmountLimit)) fail(section.exemptRangeText);
        if (OutOfRange(notQualifying, kAmountLimit))
            fail(" - Invalid Gross amount not qualifying for tax exemption. Gross amount must be in the range of "
                 "-9999999.99 to 9999999.99.");
        if (OutOfRange(gains, kAmountLimit)) fail(section.gainsRangeText);
        if (gains < 0 && shares > 0) fail(section.gainsSignText);
    }
}

}  // namespace iras
