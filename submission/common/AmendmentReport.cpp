// The verification report: records compared field by field, then written as
// an HTML page and as CSV. See AmendmentReport.h for where the records come
// from and why the report and the Amendment file always agree.
#include "submission/common/AmendmentReport.h"

#include <map>
#include <optional>
#include <sstream>
#include <utility>

#include "platform/ais/AisFields.h"
#include "platform/common/AtomicFile.h"
#include "platform/common/Text.h"
#include "submission/common/AmountFields.h"
#include "submission/common/BStringOutput.h"
#include "submission/common/SharedRecordFields.h"

namespace iras {

namespace {

namespace who = employee_detail;

std::string FieldText(const std::string& record, const RecordField& field) {
    if (record.size() < static_cast<std::size_t>(field.Column())) return "";
    return record.substr(static_cast<std::size_t>(field.Column()), static_cast<std::size_t>(field.width));
}

// A money field as a number of its units; a field that holds no amount (it
// cannot in a record the job built) reads as 0.
long long Units(const std::string& record, const RecordField& field) {
    return ParseAisUnits(FieldText(record, field)).value_or(0);
}

bool IsDetail(const std::string& record) { return FieldText(record, who::kRecordType) == "1"; }

std::string IdNo(const std::string& record) { return TrimSpace(FromRecordEncoding(FieldText(record, who::kIdNo))); }

std::string Name(const std::string& record) {
    const std::string first = TrimSpace(FromRecordEncoding(FieldText(record, who::kName1)));
    const std::string second = TrimSpace(FromRecordEncoding(FieldText(record, who::kName2)));
    return second.empty() ? first : first + " " + second;
}

std::map<std::string, const std::string*> DetailsById(const StringList& records) {
    std::map<std::string, const std::string*> byId;
    for (const auto& record : records)
        if (IsDetail(record)) byId.emplace(IdNo(record), &record);
    return byId;
}

double Value(long long units, int decimals) {
    double value = static_cast<double>(units);
    for (int i = 0; i < decimals; ++i) value /= 10;
    return value;
}

// As the summary files show money: "1,234.50", "-600.00".
std::string Money(long long units, int decimals) { return FormatThousandsAndCents(Value(units, decimals)); }

// As a spreadsheet reads it: "1234.50", "-600.00".
std::string PlainMoney(long long units, int decimals) {
    const std::string text = FormatAisUnits(units, decimals);
    return decimals == 0 ? text + ".00" : text;
}

const char* ChangeText(EmployeeChange change) {
    switch (change) {
        case EmployeeChange::Added: return "Added";
        case EmployeeChange::Removed: return "Removed";
        default: return "Changed";
    }
}

std::string Html(const std::string& text) {
    std::string escaped;
    for (const char c : text) {
        switch (c) {
            case '&': escaped += "&amp;"; break;
            case '<': escaped += "&lt;"; break;
            case '>': escaped += "&gt;"; break;
            case '"': escaped += "&quot;"; break;
            case '\'': escaped += "&#39;"; break;
            default: escaped += c;
        }
    }
    return escaped;
}

// RFC 4180: a field with a comma, a double quote or a line break is quoted,
// its double quotes doubled.
std::string Csv(const std::string& text) {
    if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
    std::string quoted = "\"";
    for (const char c : text) {
        quoted += c;
        if (c == '"') quoted += '"';
    }
    return quoted + "\"";
}

std::string CsvLine(std::initializer_list<std::string> fields) {
    std::string line;
    bool first = true;
    for (const auto& field : fields) {
        if (!first) line += ',';
        first = false;
        line += Csv(field);
    }
    return line + "\r\n";
}

std::string Counts(const ReturnAmendment& part) {
    int changed = 0, added = 0, removed = 0;
    for (const auto& employee : part.employees) {
        if (employee.change == EmployeeChange::Added) ++added;
        else if (employee.change == EmployeeChange::Removed) ++removed;
        else ++changed;
    }
    const auto n = part.employees.size();
    return std::to_string(n) + (n == 1 ? " employee" : " employees") + " in the Amendment: " +
           std::to_string(changed) + " changed, " + std::to_string(added) + " added, " + std::to_string(removed) +
           " removed.";
}

const char* const kStyle = R"(
body { font-family: "DejaVu Sans", Arial, sans-serif; font-size: 13px; color: #111; margin: 24px; }
h1 { font-size: 20px; margin: 0 0 4px 0; }
h2 { font-size: 16px; margin: 28px 0 6px 0; border-bottom: 2px solid #345; padding-bottom: 2px; }
p.meta { color: #444; margin: 0 0 12px 0; }
p.none { font-style: italic; }
table { border-collapse: collapse; margin: 6px 0 12px 0; }
th, td { border: 1px solid #bbb; padding: 3px 8px; text-align: left; vertical-align: top; }
th { background: #e4e9f0; }
table.sortable th { cursor: pointer; }
table.sortable th::after { content: " \2195"; color: #889; }
td.money, th.money { text-align: right; font-variant-numeric: tabular-nums; white-space: nowrap; }
td.negative { color: #a00; }
tr.added td.change { color: #060; font-weight: bold; }
tr.removed td.change { color: #a00; font-weight: bold; }
@media print {
  body { margin: 0; font-size: 10pt; }
  table.sortable th::after { content: ""; }
  th { background: none; }
  h2 { page-break-after: avoid; }
  tr { page-break-inside: avoid; }
}
)";

// Clicking a heading sorts the table by that column, again to reverse it;
// money cells sort by the amount they hold (data-sort).
const char* const kScript = R"(
document.querySelectorAll("table.sortable").forEach(function (table) {
  table.querySelectorAll("th").forEach(function (th, column) {
    th.addEventListener("click", function () {
      var body = table.tBodies[0];
      var rows = Array.prototype.slice.call(body.rows);
      var up = th.getAttribute("data-order") !== "up";
      table.querySelectorAll("th").forEach(function (h) { h.removeAttribute("data-order"); });
      th.setAttribute("data-order", up ? "up" : "down");
      function key(row) {
        var cell = row.cells[column];
        var n = cell.getAttribute("data-sort");
        return n !== null ? parseFloat(n) : cell.textContent.toLowerCase();
      }
      rows.sort(function (a, b) {
        var x = key(a), y = key(b);
        var c = x < y ? -1 : x > y ? 1 : 0;
        return up ? c : -c;
      });
      rows.forEach(function (row) { body.appendChild(row); });
    });
  });
});
)";

std::string MoneyCell(long long units, int decimals) {
    return "<td class=\"money" + std::string(units < 0 ? " negative" : "") + "\" data-sort=\"" +
           FormatAisUnits(units, decimals) + "\">" + Html(Money(units, decimals)) + "</td>";
}

}  // namespace

std::string ReturnAmendment::Summary() const {
    if (!compared) return "The " + title + " return is not compared field by field in this version of the report.";
    if (!built) return "The " + title + " part of the report could not be made: " + problem;
    if (!submittedBefore)
        return "Nothing of the " + title + " return has been submitted yet, so there is nothing to amend.";
    if (employees.empty()) return "Nothing in the " + title + " return has changed since it was last submitted.";
    return Counts(*this);
}

ReturnAmendment CompareRecords(const std::string& title, const std::vector<AmendmentField>& fields,
                               const StringList& submitted, const StringList& now,
                               const StringList& amendment) {
    ReturnAmendment part;
    part.title = title;
    part.built = true;
    const auto submittedById = DetailsById(submitted);
    const auto nowById = DetailsById(now);
    part.submittedBefore = !submittedById.empty();
    for (const auto& field : fields) part.totals.push_back({field.caption, field.decimals, 0});

    for (const auto& record : amendment) {
        if (!IsDetail(record)) continue;
        EmployeeAmendment employee;
        employee.idNo = IdNo(record);
        employee.name = Name(record);
        const auto before = submittedById.find(employee.idNo);
        const auto after = nowById.find(employee.idNo);
        const bool wasSubmitted = before != submittedById.end();
        const bool isNow = after != nowById.end();
        employee.change = wasSubmitted == isNow ? EmployeeChange::Changed
                          : isNow               ? EmployeeChange::Added
                                                : EmployeeChange::Removed;
        for (std::size_t i = 0; i < fields.size(); ++i) {
            const RecordField& field = fields[i].field;
            FieldAmendment change{fields[i].caption, fields[i].decimals,
                                  wasSubmitted ? Units(*before->second, field) : 0,
                                  isNow ? Units(*after->second, field) : 0, Units(record, field)};
            part.totals[i].difference += change.difference;
            if (change.difference != 0 || change.submitted != change.now) employee.fields.push_back(std::move(change));
        }
        part.employees.push_back(std::move(employee));
    }
    return part;
}

ReturnAmendment BuildReturnAmendment(const std::string& title,
                                     const std::function<std::unique_ptr<RSubmissionJob>()>& makeJob) {
    ReturnAmendment failed;
    failed.title = title;
    std::vector<AmendmentField> fields;
    StringList records[3];
    const std::pair<RecordSource, const char*> sources[3] = {
        {RecordSource::Submitted, "as last submitted"},
        {RecordSource::Live, "as they are now"},
        {RecordSource::Amendment, "for the Amendment"},
    };
    for (int i = 0; i < 3; ++i) {
        std::unique_ptr<RSubmissionJob> job = makeJob();
        if (!job) {
            failed.problem = "the return is not available in this version of the module.";
            return failed;
        }
        if (fields.empty()) fields = job->AmendmentFields();
        if (fields.empty()) {
            failed.compared = false;
            return failed;
        }
        std::optional<StringList> built = job->BuildRecords(sources[i].first);
        if (!built) {
            failed.problem = std::string("its records could not be built ") + sources[i].second +
                             " (the debug log says why).";
            return failed;
        }
        records[i] = std::move(*built);
    }
    return CompareRecords(title, fields, records[0], records[1], records[2]);
}

std::string ReportHtml(const AmendmentReport& report) {
    std::ostringstream out;
    const std::string heading = "Verification report: employer " + report.employerId + ", basis year " +
                                std::to_string(report.basisYear);
    out << "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n<title>" << Html(heading)
        << "</title>\n<style>" << kStyle << "</style>\n</head>\n<body>\n";
    out << "<h1>" << Html(heading) << "</h1>\n";
    out << "<p class=\"meta\">What the next Amendment will tell IRAS, made " << Html(report.madeAt)
        << ". Amounts: last submitted, now, and the difference the Amendment file carries.</p>\n";
    for (const auto& part : report.returns) {
        out << "<h2>" << Html(part.title) << "</h2>\n";
        if (!part.Listed()) {
            out << "<p class=\"none\">" << Html(part.Summary()) << "</p>\n";
            continue;
        }
        out << "<p>" << Html(part.Summary()) << "</p>\n";
        out << "<table class=\"sortable\">\n<thead><tr><th>ID number</th><th>Name</th><th>Change</th>"
               "<th>Field</th><th class=\"money\">Last submitted</th><th class=\"money\">Now</th>"
               "<th class=\"money\">Difference</th></tr></thead>\n<tbody>\n";
        for (const auto& employee : part.employees) {
            const std::string change = ChangeText(employee.change);
            const std::string start = "<tr class=\"" +
                                      std::string(employee.change == EmployeeChange::Added     ? "added"
                                       : employee.change == EmployeeChange::Removed ? "removed"
                                                                                    : "changed") +
                                      "\"><td>" + Html(employee.idNo) + "</td><td>" + Html(employee.name) +
                                      "</td><td class=\"change\">" + change + "</td>";
            if (employee.fields.empty())
                out << start << "<td>(no amount changed)</td><td></td><td></td><td></td></tr>\n";
            for (const auto& field : employee.fields)
                out << start << "<td>" << Html(field.caption) << "</td>" << MoneyCell(field.submitted, field.decimals)
                    << MoneyCell(field.now, field.decimals) << MoneyCell(field.difference, field.decimals)
                    << "</tr>\n";
        }
        out << "</tbody>\n</table>\n";
        out << "<table class=\"sortable totals\">\n<thead><tr><th>Field</th><th class=\"money\">Total difference"
               "</th></tr></thead>\n<tbody>\n";
        for (const auto& total : part.totals)
            if (total.difference != 0)
                out << "<tr><td>" << Html(total.caption) << "</td>" << MoneyCell(total.difference, total.decimals)
                    << "</tr>\n";
        out << "</tbody>\n</table>\n";
    }
    out << "<script>" << kScript << "</script>\n</body>\n</html>\n";
    return out.str();
}

std::string ReportCsv(const AmendmentReport& report) {
    std::string csv = CsvLine({"Return", "ID number", "Name", "Change", "Field", "Last submitted", "Now",
                               "Difference"});
    for (const auto& part : report.returns) {
        if (!part.Listed()) {
            csv += CsvLine({part.title, "", "", "", part.Summary(), "", "", ""});
            continue;
        }
        for (const auto& employee : part.employees) {
            const std::string change = ChangeText(employee.change);
            if (employee.fields.empty())
                csv += CsvLine({part.title, employee.idNo, employee.name, change, "", "", "", ""});
            for (const auto& field : employee.fields)
                csv += CsvLine({part.title, employee.idNo, employee.name, change, field.caption,
                                PlainMoney(field.submitted, field.decimals), PlainMoney(field.now, field.decimals),
                                PlainMoney(field.difference, field.decimals)});
        }
        for (const auto& total : part.totals)
            if (total.difference != 0)
                csv += CsvLine({part.title, "", "", "Total", total.caption, "", "",
                                PlainMoney(total.difference, total.decimals)});
    }
    return csv;
}

std::string WriteReportFiles(const AmendmentReport& report, const std::filesystem::path& folder) {
    const std::string name = kVerificationReportName;
    std::string failure = WriteFileAtomically(folder / (name + ".html"), ReportHtml(report));
    if (failure.empty()) failure = WriteFileAtomically(folder / (name + ".csv"), ReportCsv(report));
    return failure;
}

}  // namespace iras
