// The checks IRAS makes on each employee of an original IR8A before it takes
// the file: identity, period of payment, exempt income, tax borne by the
// employer, the yes/no indicators, commission, cessation, bonus and director's
// fee dates, and no negative salary or lump sum. Every rule is checked, so
// that one run tells the user everything to correct for the employee.
#include <initializer_list>

#include "platform/common/CommonLibrary.h"
#include "platform/common/Text.h"
#include "submission/ir8a/RIR8AeSubmission.h"

namespace iras {

int RIR8AeSubmission::IR8ADetailsValidation() {
    ErrorList.clear();
    WriteInternalBanner("             IR8A DETAILS VALIDATION            ");
    const auto debug = [this](std::initializer_list<const char*> lines) {
        for (const char* line : lines) WriteInternalMemo(line);
    };
    const auto fail = [this](const char* message) { ErrorList.push_back(message); };

    const int year = BasisYear;
    const bool supplementary = Supplementary();
    const Date paymentFrom = DateOf("PaymentFrom");
    const Date paymentTo = DateOf(supplementary ? "SupPaymentTo" : "PaymentTo");
    const Date commencement = DateOf("Commencement");
    const Date cessation = DateOf(supplementary ? "SupCessation" : "Cessation");
    const std::string cessationProvision = Text("CessationProvision");
    const std::string exemptType = Text("ExemptIncomeType");
    const std::string borneStatus = Text("IncomeBorneStatus");
    const double remission = Amount("RemissionAmt");
    const double exempt = Amount("ExemptIncomeAmt");

    debug({"Validating ID Type"});
    if (!YEKeywordRecLocate(Text("PayeeIDType"))) fail("Invalid ID Type.");

    debug({"Validating ID Nos"});
    if (Text("TaxNo").empty()) fail("Invalid ID No. ID No cannot be blank.");

    debug({"Validating Name - Line 1"});
    if (Text("EEName1").empty()) fail("Invalid Name - Line 1. Name - Line 1 cannot be blank.");

    debug({"Validating Nationality Code"});
    const std::string nationality = Text("IRASNationalityCode");
    if (nationality.empty()) {
        fail("Invalid Nationality Code. Nationality Code cannot be blank.");
    } else if (IsOneOf(nationality, {"300", "997"})) {
        fail("Invalid Nationality Code. 300 or 997 has been removed from the list of Nationality "
             "Code.");
    }

    debug({"Validating Gender: ", "F = Female", "M = Male"});
    if (!IsOneOf(Text("Gender"), {"F", "M"})) fail("Invalid Sex.");

    debug({"Validating Period of Payment"});
    if (_IsDateNull(paymentFrom)) {
        fail("Invalid Period of Payment From Date. Date cannot be blank.");
    } else if (paymentFrom != Date{year, 1, 1}) {
        if (paymentFrom != commencement) {
            fail("Invalid Period of Payment From Date. Date must be YYYY0101, where YYYY is the "
                 "basis year, or equal to the commencement date if it falls within the basis "
                 "year.");
        } else if (commencement.year != year) {
            fail("Invalid Period of Payment From Date. Date that is equal to the commencement "
                 "date has to fall within the basis year.");
        }
    }
    if (_IsDateNull(paymentTo)) {
        fail("Invalid Period of Payment To Date. Date cannot be blank.");
    } else if (paymentTo != Date{year, 12, 31}) {
        if (paymentTo != cessation) {
            fail("Invalid Period of Payment To Date. Date must  be YYYY1231, where YYYY is the "
                 "basis year, or equal to the cessation date if it falls within the basis year.");
        } else if (cessation.year != year) {
            fail("Invalid Period of Payment To Date. Date that is equal to the cessation date "
                 "has to fall within the basis year.");
        }
    }
    if (!_IsDateNull(paymentFrom) && !_IsDateNull(paymentTo) && !(paymentFrom < paymentTo)) {
        fail("Invalid Period of Payment From Date. From Date must be earlier than To Date.");
    }

    debug({"Validating Exempt Income/Income subject to Tax Remission"});
    if (IsOneOf(exemptType, {"IncomeTypeOCLA", "IncomeTypeOHQ", "IncomeTypeSeaman",
                             "IncomeTypeExempt", "IncomeTypeOPFTC", "IncomeTypeOEOPFTC"}) &&
        _IsZeroValue(remission) && _IsZeroValue(exempt)) {
        fail("Invalid Remission/Exempt/Non Taxable Income. Either Remission or Exempt/Non Taxable "
             "Income cannot be zero value.");
    }
    if (exemptType == "IncomeTypeNA" && (!_IsZeroValue(remission) || !_IsZeroValue(exempt))) {
        fail("Invalid Remission/Exempt/Non Taxable Income. Remission/Exempt/Non Taxable Income "
             "must be zero.");
    }

    debug({"Validating Amount of income tax liability for which tax is borne by employee"});
    const bool taxBorneZero = _IsZeroValue(Amount("TaxBorneByER"));
    if (borneStatus == "Partial" && taxBorneZero) {
        fail("Invalid Amount of income tax liability for which tax is borne by employee. Amount "
             "of income tax liability for which tax is borne by employee cannot be zero value.");
    }
    if (IsOneOf(borneStatus, {"Full", "Fixed"}) && !taxBorneZero) {
        fail("Invalid Amount of income tax liability for which tax is borne by employee. Amount "
             "of income tax liability for which tax is borne by employee must be zero.");
    }

    debug({"Validating Fixed Amount of income tax liability for which tax is borne by employee"});
    const bool fixedZero = _IsZeroValue(Amount("FixedAmtBorneByEE"));
    if (borneStatus == "Fixed" && fixedZero) {
        fail("Invalid Fixed Amount of income tax liability for which tax is borne by employee. "
             "Fixed Amount of income tax liability for which tax is borne by employee cannot be "
             "zero value");
    }
    if (IsOneOf(borneStatus, {"Full", "Partial"}) && !fixedZero) {
        fail("Invalid Fixed Amount of income tax liability for which tax is borne by employee. "
             "Fixed Amount of income tax liability for which tax is borne by employee must be "
             "zero.");
    }

    debug({"Validating Section 45 applicable:", "Y = S45 applicable", "N = S45 not applicable"});
    if (!IsOneOf(Text("IRASSection45"), {"Y", "N"})) fail("Invalid Section 45.");

    debug({"Validating Employee's Income Tax borne by employer: ",
           "F = Tax fully borne by employer on employment income only",
           "P = Tax partially borne by employer on certain employment income items",
           "H = A fixed amount of income tax liability borne by employee",
           "N = Not Applicable"});
    if (!YEKeywordRecLocate(borneStatus)) fail("Invalid Employee's Income Tax borne by employer.");

    debug({"Validating Cessation Provisions: ", "Y = Cessation Provisions applicable",
           "N = Cessation Provisions not applicable"});
    if (!IsOneOf(cessationProvision, {"Y", "N"})) fail("Invalid Cessation Provisions.");

    debug({"Validating Form IR8S: ", "Y = IR8S is applicable", "N = IR8S is applicable"});
    if (!IsOneOf(Text("IR8SIndicator"), {"Y", "N"})) fail("Invalid Form IR8S.");

    debug({"Validating Exempt/Remission Income Indicator:",
           "1 = Tax Remission on Overseas Cost of Living Allowance (OCLA)",
           "2 = Tax Remission on Operation Headquarters (OHQ)", "3 = Seaman", "4 = Exemption",
           "N = Not Applicable"});
    if (!YEKeywordRecLocate(exemptType)) {
        fail("Invalid Exempt/Remission Income Indicator.");
    } else if (KeywordProperty("YEProperty1") == "N" &&
               (!_IsZeroValue(remission) || !_IsZeroValue(exempt))) {
        fail("Invalid Exempt/Remission Income Indicator. Exempt/Remission Income Indicator cannot "
             "be N.");
    }

    debug({"Validating Period of Gross Commission payment"});
    const Date commissionFrom = DateOf("CommissionFrom");
    const Date commissionTo = DateOf("CommissionTo");
    if (!_IsDateNull(commissionFrom) && commissionFrom.year != year) {
        fail("Invalid Gross Commission Payment From Date. Date must be equal to the basis year in "
             "the header record.");
    }
    if (!_IsDateNull(commissionTo) && commissionTo.year != year) {
        fail("Invalid Gross Commission Payment To Date. Date must be equal to the basis year in "
             "the header record.");
    }
    if (!_IsDateNull(commissionFrom) && !_IsDateNull(commissionTo) &&
        commissionTo < commissionFrom) {
        fail("Invalid Gross Commission Payment From Date. From Date must be earlier than or equal "
             "to To Date.");
    }

    debug({"Validating Gross Commission Indicator: ", "M = Monthly", "O = Other than monthly",
           "B = Both"});
    if (!_IsZeroValue(Amount("Commission")) && !YEKeywordRecLocate(Text("CommissionStatus"))) {
        fail("Invalid Gross Commission Indicator.");
    }

    debug({"Validating Date of Commencement"});
    if (cessationProvision == "Y") {
        if (_IsDateNull(commencement)) {
            fail("Invalid Date of Commencement. Date of Commencement cannot be blank.");
        } else if (!(commencement < Date{1969, 1, 1})) {
            fail("Invalid Date of Commencement. Date of Commencement must be before 01-01-1969.");
        }
    }

    debug({"Validating Date of Cessation"});
    if (cessationProvision == "Y" && _IsDateNull(cessation)) {
        fail("Invalid Date of Cessation. Date of Cessation cannot be blank.");
    }
    if (!_IsDateNull(cessation) && cessation.year != year) {
        fail("Invalid Date of Cessation. Date Year must be equal to the basis year in the header "
             "record.");
    }

    debug({"Validating Date of declaration of bonus"});
    const Date bonusDeclared = DateOf("BonusDeclared");
    if (!_IsDateNull(bonusDeclared) && bonusDeclared.year != year) {
        fail("Invalid Date of declaration of bonus. Date Year must be equal to the basis year in "
             "the header record.");
    }

    debug({"Validating Date of approval of director's fee"});
    const Date feeApproved = DateOf("DirFeeApproved");
    if (!_IsZeroValue(Amount("DirectorFee")) && _IsDateNull(feeApproved)) {
        fail("Invalid Date of approval of director. Date cannot be blank.");
    }
    if (!_IsDateNull(feeApproved) && feeApproved.year != year && feeApproved.year != year - 1) {
        fail("Invalid Date of approval of director. Date Year must be equal to the basis year in "
             "the header record or basis year -1.");
    }

    debug({"Validating Gross Salary"});
    if (Amount("GrossTotal") < 0 && !_IsZeroValue(Amount("GrossTotal"))) {
        fail("Negative amount. IRAS file submission will not accept negative amount for Gross "
             "Salary");
    }

    debug({"Validating Lump Sum Payment"});
    if (Amount("Gratuity") < 0 && !_IsZeroValue(Amount("Gratuity"))) {
        fail("Negative amount. IRAS file submission will not accept negative amount for Lump Sum "
             "Payment.");
    }

    return ErrorList.empty() ? 1 : 0;
}

}  // namespace iras
