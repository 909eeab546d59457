// Form IR8A, the employer's return of every employee's income for a basis
// year, in its two flavours: the current return ("CurIR8A") and the
// supplementary return ("SupIR8A", the changes found after the current one
// went in). One header record, one 1200-character detail record per employee
// and a trailer with the record count and twelve money totals. Before an
// Original file is made, the employer and every employee are checked against
// IRAS's rules; an Amendment is written without those checks.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "submission/common/RYESubmissionJob.h"

namespace iras {

class RIR8AeSubmission : public RYESubmissionJob {
public:
    RIR8AeSubmission(BQueryViewTable* context, IRASSubmissionParameters params,
                     std::string runFolder, std::string copyFolder);
    ~RIR8AeSubmission() override;

    void SetIR8AType(const std::string& type);  // "CurIR8A" or "SupIR8A"

    int ValidateIR8AFile();        // nonzero when the file may be made
    int ProcessIR8AeSubmission();  // nonzero when the file was made
    void GenerateSummaryTextFile(StringList& summary);  // appends

    // RSubmissionJob
    int ValidateFile() override { return ValidateIR8AFile(); }
    int ProcessFile() override { return ProcessIR8AeSubmission(); }
    void GenerateSummary(StringList& summary) override { GenerateSummaryTextFile(summary); }
    std::string SummaryFileName() const override;  // "IRASSummaryFile", current IR8A only
    std::vector<AmendmentField> AmendmentFields() const override;

    int RefreshQuery() override;
    void PrepareIR8AHeader();
    int IR8AHeaderValidation();
    void PrepareIR8ADetails();
    int IR8ADetailsValidation();
    void PrepareIR8ATrailer();

    const std::string& GetIR8AType() const { return IR8AType; }
    // The twelve trailer totals in trailer order (Amt, GrossTotal, Bonus, ...).
    const std::array<double, 12>& GetTrailerTotals() const { return TrailerTotals; }

protected:
    const JobTexts& Texts() const override;
    int HeaderValidation() override { return IR8AHeaderValidation(); }
    int DetailsValidation() override { return IR8ADetailsValidation(); }
    int RecordLimitValidation() override;
    void PrepareHeader() override { PrepareIR8AHeader(); }
    void PrepareDetails() override { PrepareIR8ADetails(); }
    bool HasTrailer() const override { return true; }
    void PrepareTrailer() override { PrepareIR8ATrailer(); }
    std::string FormName() const override { return "IR8A"; }
    std::string FileName() const override;
    std::string DirectSubmitFormType() const override;

private:
    bool Supplementary() const { return IR8AType != "CurIR8A"; }
    std::string EmployeeQueryText() const;

    std::string IR8AType = "CurIR8A";
    std::string ViewEmployee = ViewName("YEEmployee");  // the session user's view of YEEmployee (alias A)
    std::string ViewIR8A = ViewName("IR8A");            // the session user's view of IR8A (alias B)
    std::array<double, 12> TrailerTotals{};
};

}  // namespace iras
