// The session form's lists from the payroll database. The SQL texts are the
// payroll's own and stay as they are written, the missing blank before the
// supplementary year list's "ORDER BY" included: the database layer reads
// them as the payroll's server does.
#include "apps/run/SessionFormData.h"

#include "platform/database/Query.h"

namespace iras {

std::string YearListSql(FileType type) {
    if (type == FileType::SupplementaryIR8A) {
        return "SELECT DISTINCT YEYear, (YEYear - 1) AS Year FROM YEEmployee WHERE YEEmployerId = "
               ":YEEmployerId AND YEYear < 10000ORDER BY YEYear";
    }
    return "SELECT DISTINCT YEYear, YEYear AS Year FROM YEEmployee WHERE YEEmployerId = "
           ":YEEmployerId AND YEYear < 10000 ORDER BY YEYear";
}

std::string LastGenerationSql(FileType type) {
    const std::string code = type == FileType::All ? "All" : SubmissionTypeCode(type);
    return "SELECT *, FGetDateTimeFormat(LastSubmissionDateTime) AS SubmittedDate FROM LastSubmission "
           "WHERE YEEmployerId = :YEEmployerId AND \n"
           "SubmissionType = '" + code + "'";
}

std::vector<EmployerRow> DatabaseSessionFormData::Employers() {
    db::Query query("kovadb");
    query.SetSQL("SELECT * FROM YEEmployer ORDER BY YEEmployerId");
    query.Open();
    std::vector<EmployerRow> rows;
    for (query.First(); !query.Eof(); query.Next()) {
        rows.push_back({query.FieldByName("YEEmployerId").AsString(),
                        query.FieldByName("YEEmployerDesc").AsString()});
    }
    return rows;
}

std::vector<YearRow> DatabaseSessionFormData::Years(const std::string& employerId, FileType type) {
    db::Query query("kovadb");
    query.SetSQL(YearListSql(type));
    query.SetParam("YEEmployerId", employerId);
    query.Open();
    std::vector<YearRow> rows;
    for (query.First(); !query.Eof(); query.Next()) {
        rows.push_back({static_cast<int>(query.FieldByName("YEYear").AsInteger()),
                        static_cast<int>(query.FieldByName("Year").AsInteger())});
    }
    return rows;
}

std::optional<LastGenerationRow> DatabaseSessionFormData::LastGeneration(const std::string& employerId,
                                                                         FileType type) {
    db::Query query("kovadb");
    query.SetSQL(LastGenerationSql(type));
    query.SetParam("YEEmployerId", employerId);
    query.Open();
    if (query.IsEmpty()) return std::nullopt;
    query.First();
    return LastGenerationRow{query.FieldByName("IsOriginal").AsInteger() != 0,
                             query.FieldByName("SubmitUserId").AsString(),
                             query.FieldByName("SubmittedDate").AsString()};
}

std::vector<UserIdTypeRow> DatabaseSessionFormData::UserIdTypes() {
    db::Query query("kovadb");
    query.SetSQL(
        "SELECT YEProperty1 AS UserTypeID, YEKeywordDefaultName AS UserTypeDesc,  "
        "YEKeywordUserDefinedName FROM YEKeyWord WHERE YEKeywordCategory = 'SubmitUserIDType' "
        "ORDER BY YEKeywordDefaultName ");
    query.Open();
    std::vector<UserIdTypeRow> rows;
    for (query.First(); !query.Eof(); query.Next()) {
        rows.push_back({query.FieldByName("UserTypeID").AsString(),
                        query.FieldByName("UserTypeDesc").AsString()});
    }
    return rows;
}

}  // namespace iras
