// The Appendix 8B source: the keyword table, the employer row, one row per
// employee with share-plan gains (carrying the section totals the engine
// stored, the part of each from plans after the cut-off, and the grand
// totals), and per employee the share-plan rows of each section, by company
// and, within a company, the latest grant first.
#include <cstdint>

#include "submission/a8b/A8BSections.h"
#include "submission/a8b/RA8BeSubmission.h"

namespace iras {

int RA8BeSubmission::RefreshQuery() {
    WriteInternalBanner("PROCESSING A8B INFORMATION");
    const std::string employerSql =
        "Select (TRIM(replace(replace(replace(ERName1,'''',''),';',''),'^','')) || ' ' || "
        "TRIM(replace(replace(replace(ERName2,'''',''),';',''),'^',''))) AS EmployerName , *  "
        "FROM YEEmployer WHERE YEEmployerId = '";
    if (OpenSources(employerSql, "A8B", "RA8BeSubmission") == 0) return 0;

    // The stored totals are the whole year's and the part from plans before
    // the cut-off; the part after it is their difference. The grand totals
    // never include the exempt amounts.
    const std::string select =
        "SELECT FGetPersonalName(A.PersonalSysId) AS PersonalName, "
        "FGetEmployeeIdByPersonalSysId(A.PersonalSysId) AS EmployeeId, "
        "(TotalESOPNoTaxExempt - TotalESOPNoTaxExemptBef) AS TotalESOPNoTaxExemptAfter, "
        "(TotalESOPStockGains - TotalESOPStockGainsBef) AS TotalESOPStockGainsAfter, "
        "(TotalEESOPTaxExempt - TotalEESOPTaxExemptBef) AS TotalEESOPTaxExemptAfter, "
        "(TotalEESOPNoTaxExempt - TotalEESOPNoTaxExemptBef) AS TotalEESOPNoTaxExemptAfter, "
        "(TotalEESOPStockGains - TotalEESOPStockGainsBef) AS TotalEESOPStockGainsAfter, "
        "(TotalCSOPTaxExempt - TotalCSOPTaxExemptBef) AS TotalCSOPTaxExemptAfter, "
        "(TotalCSOPNoTaxExempt - TotalCSOPNoTaxExemptBef) AS TotalCSOPNoTaxExemptAfter, "
        "(TotalCSOPStockGains - TotalCSOPStockGainsBef) AS TotalCSOPStockGainsAfter, "
        "(TotalNSOPTaxExempt - TotalNSOPTaxExemptBef) AS TotalNSOPTaxExemptAfter, "
        "(TotalNSOPNoTaxExempt - TotalNSOPNoTaxExemptBef) AS TotalNSOPNoTaxExemptAfter, "
        "(TotalNSOPStockGains - TotalNSOPStockGainsBef) AS TotalNSOPStockGainsAfter, "
        "(TotalESOPNoTaxExemptAfter + TotalEESOPNoTaxExemptAfter + TotalCSOPNoTaxExemptAfter + "
        "TotalNSOPNoTaxExemptAfter) AS TotNoTaxExemptAft, "
        "(B.TotalESOPNoTaxExemptBef + B.TotalEESOPNoTaxExemptBef + B.TotalCSOPNoTaxExemptBef + "
        "B.TotalNSOPNoTaxExemptBef) AS TotNoTaxExemptBef, "
        "(TotalESOPStockGainsAfter + TotalEESOPStockGainsAfter + TotalCSOPStockGainsAfter + "
        "TotalNSOPStockGainsAfter) AS TotStockGainsAft, "
        "(B.TotalESOPStockGainsBef + B.TotalEESOPStockGainsBef + B.TotalCSOPStockGainsBef + "
        "B.TotalNSOPStockGainsBef) AS TotStockGainsBef, * FROM ";
    MainQuery.Close();
    MainQuery.ClearSQL();
    MainQuery.SetSQL(select + ViewEmployee + " A JOIN " + ViewA8B +
                     " B ON (A.PersonalSysId = B.PersonalSysId), YEGlobal WHERE A.CurrentYEGlobalId = "
                     "YEGlobal.YEGlobalId ");
    if (!SortClause().empty()) MainQuery.AddSQL(SortClause());
    MainQuery.Open();
    return 1;
}

void RA8BeSubmission::RefreshA8BStockOptQry() {
    WriteInternalBanner("PROCESSING A8B STOCK OPTION INFORMATION");
    const std::int64_t person = MainQuery.FieldByName("PersonalSysId").AsInteger();
    for (const a8b::Section& section : a8b::kSections) {
        db::Query& query = StockOptQueries[static_cast<std::size_t>(section.Index())];
        query.Close();
        query.ClearSQL();
        // The id is a parameter: one statement for every employee.
        query.SetSQL("SELECT * FROM " + ViewA8BRecord + " WHERE PersonalSysId = :PersonalSysId" +
                     " AND StockOptionType = '" + section.planType + "' ORDER BY RCBNo, DateStockGranted DESC");
        query.SetParam("PersonalSysId", person);
        query.Open();
    }
}

}  // namespace iras
