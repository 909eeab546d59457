// The IR8A source: the keyword table, the employer row and one row per
// employee to report, read from the session user's view tables that the
// submission engine builds for the year, employer and form type. The query
// computes every amount the records print, so that an Original never carries
// a negative allowance while an Amendment can carry a negative correction.
#include "submission/ir8a/RIR8AeSubmission.h"

namespace iras {

std::string RIR8AeSubmission::EmployeeQueryText() const {
    std::string sql =
        "SELECT FGetEmployeeIdByPersonalSysId(A.PersonalSysId) AS EmployeeId, "
        "FGetEmployeeSysId(EmployeeId) AS EmpSysId, FGetIRASEmployeeBank(EmpSysId) AS BankId, "
        "(ContratualBonus + NonContratualBonus) AS Bonus, ";
    if (Params.original) {
        sql +=
            "(IF (Commission < 0) THEN 0 ELSE Commission ENDIF) AS CommissionAmt, "
            "(IF (Transport < 0) THEN 0 ELSE Transport ENDIF) AS TransportAmt, "
            "(IF (Entertainment < 0) THEN 0 ELSE Entertainment ENDIF) AS EntertainmentAmt, "
            "(IF ((OtherAllowance + OtherAllowanceAmt + CPFBorneByER) < 0) THEN 0 ELSE "
            "(OtherAllowance + OtherAllowanceAmt + CPFBorneByER) ENDIF) AS TotOtherAllowances, "
            "(IF (ERExcessContri < 0) THEN 0 ELSE ERExcessContri ENDIF) AS ERExcessContriAmt, "
            "(IF (TotalStockGainsAfter < 0) THEN 0 ELSE TotalStockGainsAfter ENDIF) AS "
            "TotalStockGainsAfterAmt, "
            "(IF ((BenefitsInKind + IR8ABenefitsInKind) < 0) THEN 0 ELSE "
            "(BenefitsInKind + IR8ABenefitsInKind) ENDIF) AS TotBenefitsInKind, ";
    } else {
        sql +=
            "Commission AS CommissionAmt, Transport AS TransportAmt, Entertainment AS "
            "EntertainmentAmt, (OtherAllowance + OtherAllowanceAmt + CPFBorneByER) AS "
            "TotOtherAllowances, ERExcessContri AS ERExcessContriAmt, TotalStockGainsAfter AS "
            "TotalStockGainsAfterAmt, (BenefitsInKind + IR8ABenefitsInKind) AS "
            "TotBenefitsInKind, ";
    }
    sql +=
        "(CommissionAmt +  Pension +  TransportAmt +  EntertainmentAmt +  TotOtherAllowances +  "
        "Gratuity +  AccruedFrom +  EROutsideContri +  ERExcessContriAmt +  "
        "TotalStockGainsAfterAmt +  TotBenefitsInKind) AS OthersAmt, "
        "(TRUNCNUM(ROUND(CAST(GrossTotal AS Money), 2), 0) +  "
        "TRUNCNUM(ROUND(CAST(Bonus AS Money), 2), 0) +  "
        "TRUNCNUM(ROUND(CAST(DirectorFee AS Money), 2), 0) +  "
        "TRUNCNUM(ROUND(CAST(OthersAmt AS Money), 2), 0)) AS Amt, ";
    const std::string year = std::to_string(BasisYear);
    if (Supplementary()) {
        // The cessation recorded for the basis year itself, and a period that
        // ends with the basis year unless the employee left within it.
        sql += "(IF EXISTS(SELECT Cessation FROM YEEmployee WHERE PersonalSysId = A.PersonalSysId"
               "            AND YEYear = " + year +
               ") THEN    (SELECT Cessation FROM YEEmployee WHERE PersonalSysId = "
               "A.PersonalSysId     AND YEYear = " + year +
               ")  ELSE '1899-12-30'  ENDIF) AS SupCessation, (IF YEAR(Cessation) > " + year +
               " OR Cessation='1899-12-30' THEN    DATE('" + year +
               "' || '-12-31')  ELSE Cessation  ENDIF) AS SupPaymentTo, ";
    }
    // The copy of the return that was last submitted is kept under the year
    // key 9 followed by the basis year.
    sql += "(Select IncomeBorneStatus from IR8A Where PersonalSysId = B.PersonalSysId  And YEYear = '9" +
           year + "' And IR8AType = '" + IR8AType + "') as OrgIncomeBorneStatus,";
    sql += "* FROM " + ViewEmployee + " A JOIN " + ViewIR8A +
           " B ON (A.PersonalSysId = B.PersonalSysId), YEGlobal WHERE ";
    sql += Supplementary() ? "A.SupYEGlobalId = YEGlobal.YEGlobalId "
                           : "A.CurrentYEGlobalId = YEGlobal.YEGlobalId ";
    // An employee with nothing to declare is not reported.
    sql += " AND (GrossTotal <> 0 OR ContratualBonus <> 0 OR NonContratualBonus <> 0 OR "
           "DirectorFee <> 0 OR CPFBorneByER <> 0 OR TotalSectionD <> 0 OR  "
           "LumpSumCompensation <> 0 OR RemissionAmt <> 0 OR ExemptIncomeAmt <> 0 OR "
           "TaxBorneByER <> 0 OR FixedAmtBorneByEE <> 0 OR EECPFPension <> 0 OR Donation <> 0 "
           "OR MOSQFund <> 0 OR Insurance <> 0)";
    return sql + SortClause();
}

int RIR8AeSubmission::RefreshQuery() {
    WriteAllBanner("           PROCESSING IR8A INFORMATION          ");
    if (IR8AType != "CurIR8A" && IR8AType != "SupIR8A") {
        // Any other type would silently be taken for the supplementary return.
        WriteAllMemo("Unknown IR8A type \"" + IR8AType +
                     "\": it must be CurIR8A or SupIR8A. No file is created.");
        return 0;
    }
    const std::string employerSql =
        " Select (TRIM(replace(replace(replace(ERName1,'''',''),';',''),'^','')) || ' ' || "
        "TRIM(replace(replace(replace(ERName2,'''',''),';',''),'^',''))) AS EmployerName , * "
        "FROM YEEmployer WHERE YEEmployerId = '";
    if (OpenSources(employerSql, IR8AType, "RIR8AeSubmission") == 0) return 0;
    MainQuery.Close();
    MainQuery.ClearSQL();
    MainQuery.SetSQL(EmployeeQueryText());
    MainQuery.Open();
    return 1;
}

}  // namespace iras
