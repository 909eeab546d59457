// Appendix 8A, the employer's return of the benefits in kind given to each
// employee: the place of residence and its furniture, utilities and staff,
// hotel stays, and other benefits (loans, insurance, holidays, cars ...).
// One 800-character header and one 700-character detail record per employee,
// no trailer. Accommodation and hotel amounts come from the employee's
// Sections 2 and 3 row, read per employee. Before an Original file is made,
// the employer and every employee are checked against IRAS's rules; an
// Amendment is written without those checks.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "submission/common/RYESubmissionJob.h"

namespace iras {

class RA8AeSubmission : public RYESubmissionJob {
public:
    RA8AeSubmission(BQueryViewTable* context, IRASSubmissionParameters params, std::string runFolder,
                    std::string copyFolder);
    ~RA8AeSubmission() override;

    int ValidateA8AFile();        // nonzero when the file may be made
    int ProcessA8AeSubmission();  // nonzero when the file was made
    void GenerateA8ASummaryTextFile(StringList& summary);  // appends

    // RSubmissionJob
    int ValidateFile() override { return ValidateA8AFile(); }
    int ProcessFile() override { return ProcessA8AeSubmission(); }
    void GenerateSummary(StringList& summary) override { GenerateA8ASummaryTextFile(summary); }
    std::string SummaryFileName() const override { return "A8ASummaryFile"; }
    std::vector<AmendmentField> AmendmentFields() const override;

    int RefreshQuery() override;
    // Reopens the Sections 2 and 3 rows of the employee the employee query stands on.
    void RefreshA8ASec2and3Qry();
    void PrepareA8AHeader();
    int A8AHeaderValidation();
    void PrepareA8ADetails();
    int A8ADetailsValidation();

protected:
    const JobTexts& Texts() const override;
    int HeaderValidation() override { return A8AHeaderValidation(); }
    int DetailsValidation() override { return A8ADetailsValidation(); }
    int RecordLimitValidation() override;
    void RefreshEmployee() override { RefreshA8ASec2and3Qry(); }
    void PrepareHeader() override { PrepareA8AHeader(); }
    void PrepareDetails() override { PrepareA8ADetails(); }
    int RecordWidth() const override;
    std::string FormName() const override { return "A8A"; }

private:
    // The text of a column as stored, blanks kept: IRAS's blank tests on
    // these fields look at the value as the payroll holds it.
    std::string RawText(const char* column) { return MainQuery.FieldByName(column).AsString(); }
    std::int64_t Integer(const char* column) { return MainQuery.FieldByName(column).AsInteger(); }

    std::string ViewEmployee = ViewName("YEEmployee");  // the session user's view of YEEmployee (alias A)
    std::string ViewA8A = ViewName("A8A");              // the session user's view of A8A (alias B)
    std::string ViewA8AS2S3 = ViewName("A8AS2S3");      // the session user's view of A8AS2S3
    db::Query Sec2and3Query;
};

}  // namespace iras
