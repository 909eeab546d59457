// The verification report: what the next Amendment of a return will tell
// IRAS, employee by employee, in words a payroll administrator can check
// before sending it. An Amendment holds signed differences in overpunched
// fields that nobody can read; the report sets each one beside the value
// last submitted and the value now, under the field's name on the form.
//
// The report never works the differences out on its own: each return job
// builds its records three times through the engine's view tables (as last
// submitted, as they are now, and as the Amendment) and the report reads the
// money fields the job names (AmendmentFields) back out of those records. So
// the report and the Amendment file cannot disagree: the difference shown is
// the one the file carries, and the totals are the sums of those fields,
// which for IR8A are the trailer's totals.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/common/LogSink.h"
#include "submission/common/SubmissionJob.h"

namespace iras {

enum class EmployeeChange { Changed, Added, Removed };

// One money field of one employee: amounts in the field's smallest unit
// (cents or dollars, AmendmentField::decimals).
struct FieldAmendment {
    std::string caption;
    int decimals = 0;
    long long submitted = 0;
    long long now = 0;
    long long difference = 0;  // what the Amendment holds
};

struct EmployeeAmendment {
    std::string idNo;
    std::string name;
    EmployeeChange change = EmployeeChange::Changed;
    std::vector<FieldAmendment> fields;  // only the fields that differ
};

struct FieldTotal {
    std::string caption;
    int decimals = 0;
    long long difference = 0;  // the sum of the field over the Amendment's records
};

// One return of the report.
struct ReturnAmendment {
    std::string title;       // "Current IR8A", "Appendix 8A", as the File Type list shows it
    bool compared = true;    // false: the return names no fields to compare (AmendmentFields)
    bool built = false;      // false: the records could not be built (problem says why)
    std::string problem;
    bool submittedBefore = false;  // the employer has submitted rows of this return
    std::vector<EmployeeAmendment> employees;
    std::vector<FieldTotal> totals;  // every field the return names, zero totals too

    // Whether there are employees to list; else Summary() stands alone.
    bool Listed() const { return compared && built && submittedBefore && !employees.empty(); }
    // One line on the return: how many employees are changed, added and
    // removed, or that there is nothing to amend and why.
    std::string Summary() const;
};

struct AmendmentReport {
    std::string employerId;
    int basisYear = 0;
    std::string madeAt;  // dd/mm/yyyy hh:mm:ss
    std::vector<ReturnAmendment> returns;
};

// Compares the detail records of one return, as last submitted, as they are
// now and as the Amendment holds them, field by field; employees are known
// by their ID number. Pure: the records are what BuildRecords gave.
ReturnAmendment CompareRecords(const std::string& title, const std::vector<AmendmentField>& fields,
                               const StringList& submitted, const StringList& now,
                               const StringList& amendment);

// Builds one return's part of the report. makeJob makes a fresh job of the
// return each time it is called (a job builds its records once); the jobs
// write their logs to whatever sinks makeJob hands them.
ReturnAmendment BuildReturnAmendment(const std::string& title,
                                     const std::function<std::unique_ptr<RSubmissionJob>()>& makeJob);

// The report as one self-contained HTML page (sortable table, print
// stylesheet, no outside resources) and as CSV (RFC 4180).
std::string ReportHtml(const AmendmentReport& report);
std::string ReportCsv(const AmendmentReport& report);

// The report's files in a folder: "IRASVerificationReport.html" and
// "IRASVerificationReport.csv".
inline constexpr const char* kVerificationReportName = "IRASVerificationReport";

// Writes both files into folder, each through a temporary file. "" when both
// are in place, else the reason.
std::string WriteReportFiles(const AmendmentReport& report, const std::filesystem::path& folder);

}  // namespace iras
