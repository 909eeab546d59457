// The Appendix 8A job as a whole: its two passes (run by the shared drivers),
// its queries, and the texts by which its logs and files are known.
#include "submission/a8a/RA8AeSubmission.h"

#include <utility>

#include "submission/a8a/A8ALayout.h"

namespace iras {

RA8AeSubmission::RA8AeSubmission(BQueryViewTable* context, IRASSubmissionParameters params,
                                 std::string runFolder, std::string copyFolder)
    : RYESubmissionJob(context, std::move(params), std::move(runFolder), std::move(copyFolder)),
      Sec2and3Query("kovadb") {}

RA8AeSubmission::~RA8AeSubmission() = default;

int RA8AeSubmission::ValidateA8AFile() { return RunValidation(); }
int RA8AeSubmission::ProcessA8AeSubmission() { return RunGeneration(); }

const JobTexts& RA8AeSubmission::Texts() const {
    static const JobTexts texts{
        .validateTitle = "          VALIDATING A8A FILE                   ",
        .headerValidateTitle = "            VALIDATING A8A HEADER               ",
        .detailValidateTitle = "            VALIDATING A8A DETAILS              ",
        .processTitle = "          PROCESSING A8A FILE                   ",
        .headerTitle = "            PROCESSING A8A HEADER               ",
        .detailTitle = "            PROCESSING A8A DETAILS              ",
        .trailerTitle = "",
        .fileStepTitle = "       A8A FILE GENERATION                      ",
        .validationHeaderErrorsLabel = "Total No. of Errors in A8A Header              : ",
        .generationHeaderErrorsLabel = "Total No. of Errors in A8A Header              : ",
        .employeeFailedSuffix = " is not successfully validated.",
        .cancelledMessage = "A8A File is cancelled.",
    };
    return texts;
}

// The line builder grows past the 700 of a detail record to hold the
// header's fields, which reach position 800.
int RA8AeSubmission::RecordWidth() const { return a8a::kRecordWidth; }

int RA8AeSubmission::RefreshQuery() {
    WriteInternalBanner("           PROCESSING A8A INFORMATION           ");
    // Apostrophes, semicolons and carets cannot travel in an AIS record.
    const std::string employerSql =
        " Select (TRIM(replace(replace(replace(ERName1,'''',''),';',''),'^','')) || ' ' || "
        "TRIM(replace(replace(replace(ERName2,'''',''),';',''),'^',''))) AS EmployerName , * "
        "FROM YEEmployer WHERE YEEmployerId = '";
    if (OpenSources(employerSql, "A8A", "RA8AeSubmission") == 0) return 0;
    MainQuery.Close();
    MainQuery.ClearSQL();
    MainQuery.SetSQL("SELECT FGetEmployeeIdByPersonalSysId(A.PersonalSysId) AS EmployeeId, * FROM " +
                     ViewEmployee + " A JOIN " + ViewA8A +
                     " B ON (A.PersonalSysId = B.PersonalSysId), YEGlobal WHERE A.CurrentYEGlobalId = "
                     "YEGlobal.YEGlobalId " +
                     SortClause());
    MainQuery.Open();
    return 1;
}

void RA8AeSubmission::RefreshA8ASec2and3Qry() {
    WriteInternalBanner("   PROCESSING A8A SECTION 2 AND 3 INFORMATION   ");
    Sec2and3Query.Close();
    Sec2and3Query.ClearSQL();
    // The id is a parameter: one statement for every employee.
    Sec2and3Query.SetSQL("SELECT * FROM " + ViewA8AS2S3 + " WHERE PersonalSysId = :PersonalSysId ORDER BY A8AS2S3Order");
    Sec2and3Query.SetParam("PersonalSysId", Integer("PersonalSysId"));
    Sec2and3Query.Open();
}

}  // namespace iras
