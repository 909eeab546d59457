// Appendix 8B, the employer's return of each employee's gains from share
// plans: share options (ESOP) and share ownership (ESOW) plans, in four
// sections by the tax scheme that applies to the plan: A no exemption, B the
// entrepreneurial scheme (EEEBR), C the company-wide scheme (CEEBR), D the
// scheme for start-ups (ERIS). One header record, one 9300-character detail
// record per employee with fifteen row slots per section and the section
// totals, and a trailer with the record count and 26 file totals. Before an
// Original file is made the employer, each employee and every share-plan row
// are checked against IRAS's rules; an Amendment is written without them and
// takes its amounts and totals as the submission engine stored them.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "submission/common/RYESubmissionJob.h"

namespace iras {

namespace a8b {
struct Section;
}

class RA8BeSubmission : public RYESubmissionJob {
public:
    static constexpr int kFileTotalCount = 26;

    RA8BeSubmission(BQueryViewTable* context, IRASSubmissionParameters params, std::string runFolder,
                    std::string copyFolder);
    ~RA8BeSubmission() override;

    int ValidateA8BFile();        // nonzero when the file may be made
    int ProcessA8BeSubmission();  // nonzero when the file was made
    void GenerateA8BSummaryTextFile(StringList& summary);  // appends

    // RSubmissionJob
    int ValidateFile() override { return ValidateA8BFile(); }
    int ProcessFile() override { return ProcessA8BeSubmission(); }
    void GenerateSummary(StringList& summary) override { GenerateA8BSummaryTextFile(summary); }
    std::string SummaryFileName() const override { return "A8BSummaryFile"; }
    std::vector<AmendmentField> AmendmentFields() const override;

    int RefreshQuery() override;
    // Reopens the four section queries for the employee of MainQuery's row.
    void RefreshA8BStockOptQry();
    void PrepareA8BHeader();
    int A8BHeaderValidation();
    void PrepareA8BDetails();
    int A8BDetailsValidation();
    void A8BSecAValidation();
    void A8BSecBValidation();
    void A8BSecCValidation();
    void A8BSecDValidation();
    void PrepareA8BTrailer();

    // The 26 file totals in trailer order.
    const std::array<double, kFileTotalCount>& GetFileTotals() const { return FileTotals; }

protected:
    const JobTexts& Texts() const override;
    int HeaderValidation() override { return A8BHeaderValidation(); }
    int DetailsValidation() override { return A8BDetailsValidation(); }
    int RecordLimitValidation() override;
    void RefreshEmployee() override { RefreshA8BStockOptQry(); }
    void PrepareHeader() override { PrepareA8BHeader(); }
    void PrepareDetails() override { PrepareA8BDetails(); }
    bool HasTrailer() const override { return true; }
    void PrepareTrailer() override { PrepareA8BTrailer(); }
    int RecordWidth() const override;
    // The detail record's last declared field reaches one column past 9300.
    bool FixedWidthRecords() const override { return true; }
    std::string FormName() const override { return "A8B"; }

private:
    struct EncodedRow;
    struct EncodedRecord;
    // Everything the detail record of the current employee prints, worked
    // out once for the record and for the check that it fits.
    EncodedRecord EncodeRecord();
    // The share-plan row `number` that a section query stands on.
    EncodedRow EncodeRow(int section, int number, StringList& tooLarge);
    // More rows in a section's query than the record has slots for.
    bool Overfull(const a8b::Section& section) const;
    void SectionValidation(int section);

    std::string ViewEmployee = ViewName("YEEmployee");  // alias A of the employee query
    std::string ViewA8B = ViewName("A8B");              // alias B: the employee's section totals
    std::string ViewA8BRecord = ViewName("A8BRecord");  // the share-plan rows
    // The section queries A, B, C, D (plan types ESOP, EESOP, CSOP, NSOP).
    std::array<db::Query, 4> StockOptQueries{db::Query("kovadb"), db::Query("kovadb"), db::Query("kovadb"),
                                             db::Query("kovadb")};
    std::array<double, kFileTotalCount> FileTotals{};
};

}  // namespace iras
