// The IR8S source: the keyword table, the employer row, the employees to
// report and, per employee, the months of Section A and the additional-wage
// payments of Section B, all read from the session user's view tables that
// the submission engine builds for the year, employer and form type.
#include <cstdint>
#include <string>

#include "submission/ir8s/RIR8SeSubmission.h"

namespace iras {

std::string RIR8SeSubmission::EmployeeQueryText() const {
    std::string sql = "SELECT FGetEmployeeIdByPersonalSysId(A.PersonalSysId) AS EmployeeId, * FROM " +
                      ViewEmployee + " A JOIN " + ViewIR8S +
                      " B ON (A.PersonalSysId = B.PersonalSysId), YEGlobal WHERE "
                      "A.CurrentYEGlobalId = YEGlobal.YEGlobalId ";
    // Every switch that is on narrows the list; they always join in this order.
    if (GreaterThan100K) sql += "AND Flag100K = 'Y' ";
    if (ExcessCPF) sql += "AND FlagExcessCPF = 'Y' ";
    if (OverseasCPF) sql += "AND FlagOverseasCPF = 'Y' ";
    if (IR8SIndicator) sql += "AND IR8SIndicator = 'Y' ";
    if (PercentOrdWage) sql += "AND FlagPercentOrdWage = 'Y' ";
    return sql + SortClause();
}

int RIR8SeSubmission::RefreshQuery() {
    WriteInternalBanner("           PROCESSING IR8S INFORMATION          ");
    const std::string employerSql =
        "Select (TRIM(replace(replace(replace(ERName1,'''',''),';',''),'^','')) || ' ' || "
        "TRIM(replace(replace(replace(ERName2,'''',''),';',''),'^',''))) AS EmployerName , *  "
        "FROM YEEmployer WHERE YEEmployerId = '";
    HeaderValid.reset();
    if (OpenSources(employerSql, "IR8S", "RIR8SeSubmission") == 0) return 0;
    MainQuery.Close();
    MainQuery.ClearSQL();
    MainQuery.SetSQL(EmployeeQueryText());
    MainQuery.Open();
    return 1;
}

void RIR8SeSubmission::RefreshIR8SSecAandCQry() {
    WriteInternalBanner("   PROCESSING IR8S SECTION A AND B INFORMATION  ");
    // A missing person id reads as 0, which no employee has: both sections
    // are then empty rather than the query failing.
    // The id is a parameter, so that the database runs one statement for
    // every employee rather than a new text each.
    const std::int64_t person = MainQuery.FieldByName("PersonalSysId").AsInteger();
    SectionAQuery.Close();
    SectionAQuery.ClearSQL();
    SectionAQuery.SetSQL("SELECT * FROM " + ViewIR8SA + " WHERE PersonalSysId = :PersonalSysId ORDER BY IR8SOrder");
    SectionAQuery.SetParam("PersonalSysId", person);
    SectionAQuery.Open();
    SectionBQuery.Close();
    SectionBQuery.ClearSQL();
    SectionBQuery.SetSQL("SELECT * FROM " + ViewIR8SC + " WHERE PersonalSysId = :PersonalSysId ORDER BY RefundSysId");
    SectionBQuery.SetParam("PersonalSysId", person);
    SectionBQuery.Open();
}

}  // namespace iras
