// Form IR8S, the details of an employee's CPF contributions for a basis year:
// the wages and contributions of every month and their totals (Section A),
// voluntary contributions, and the additional wages on which a refund of
// contributions is claimed (Section B). One header record and one
// 1200-character detail record per employee; no trailer. The employees are
// chosen by the flags the payroll sets on them (the five option switches).
// Before an Original file is made, the employer and every employee are checked
// against IRAS's rules; an Amendment is written without those checks.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "submission/common/RYESubmissionJob.h"

namespace iras {

// The job of one tax employer's IR8S for one basis year, run once.
class RIR8SeSubmission : public RYESubmissionJob {
public:
    RIR8SeSubmission(BQueryViewTable* context, IRASSubmissionParameters params,
                     std::string runFolder, std::string copyFolder);
    ~RIR8SeSubmission() override;

    // Which employees the return lists: only those carrying every flag
    // switched on; with none on, every employee of the IR8S view.
    void SetGreaterThan100K(bool on) { GreaterThan100K = on; }
    void SetExcessCPF(bool on) { ExcessCPF = on; }
    void SetOverseasCPF(bool on) { OverseasCPF = on; }
    void SetIR8SIndicator(bool on) { IR8SIndicator = on; }
    void SetPercentOrdWage(bool on) { PercentOrdWage = on; }

    int ValidateIR8SFile();        // nonzero when the file may be made
    int ProcessIR8SeSubmission();  // nonzero when the file was made
    void GenerateIR8SSummaryTextFile(StringList& summary);  // appends

    // RSubmissionJob
    int ValidateFile() override { return ValidateIR8SFile(); }
    int ProcessFile() override { return ProcessIR8SeSubmission(); }
    void GenerateSummary(StringList& summary) override { GenerateIR8SSummaryTextFile(summary); }
    std::string SummaryFileName() const override { return "IR8SSummaryFile"; }
    std::vector<AmendmentField> AmendmentFields() const override;

    int RefreshQuery() override;
    void RefreshIR8SSecAandCQry();
    bool PrepareIR8SHeader();
    bool IR8SHeaderValidation();
    void PrepareIR8SDetails();
    bool IR8SDetailsValidation();

    // The employee query's text as the switches and the sort order make it.
    std::string EmployeeQueryText() const;

protected:
    const JobTexts& Texts() const override;
    const JobLogShape& LogShape() const override;
    int HeaderValidation() override;
    int DetailsValidation() override { return IR8SDetailsValidation() ? 1 : 0; }
    int RecordLimitValidation() override;
    void RefreshEmployee() override { RefreshIR8SSecAandCQry(); }
    void PrepareHeader() override;
    void PrepareDetails() override { PrepareIR8SDetails(); }
    std::string FormName() const override { return "IR8S"; }

private:
    // What keeps the current employee's rows out of the record: no Section A
    // row, more rows than the record holds, an amount wider than its field.
    StringList RecordLimitFindings();

    bool GreaterThan100K = false;
    bool ExcessCPF = false;
    bool OverseasCPF = false;
    bool IR8SIndicator = false;
    bool PercentOrdWage = false;
    // The verdict of this job's header validation, once it has run.
    std::optional<bool> HeaderValid;

    std::string ViewEmployee = ViewName("YEEmployee");  // alias A of the employee query
    std::string ViewIR8S = ViewName("IR8S");            // alias B of the employee query
    std::string ViewIR8SA = ViewName("IR8SA");          // Section A: the months and their total
    std::string ViewIR8SC = ViewName("IR8SC");          // Section B: additional wages and refunds
    db::Query SectionAQuery{"kovadb"};
    db::Query SectionBQuery{"kovadb"};
};

}  // namespace iras
