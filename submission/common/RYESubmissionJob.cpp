// The shared body of the return jobs: the two drivers, the log helpers, the
// keyword lookup, the engine bridge and the placing of the finished file.
// Everything here is the same for every return; what differs comes through
// the hooks of RYESubmissionJob.
#include "submission/common/RYESubmissionJob.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <system_error>
#include <unordered_map>
#include <utility>

#include "platform/common/AtomicFile.h"
#include "platform/common/CommonLibrary.h"
#include "platform/common/Date.h"
#include "platform/common/Text.h"
#include "platform/host/HostFunctions.h"
#include "submission/common/SharedRecordFields.h"

namespace iras {

namespace {

std::string Trimmed(const std::string& text) { return TrimSpace(text); }

// An apostrophe inside a quoted SQL text is written twice.
std::string QuotedForSql(const std::string& text) {
    std::string quoted;
    for (char c : text) {
        quoted += c;
        if (c == '\'') quoted += '\'';
    }
    return quoted;
}

std::string NowText() { return Now().ToLogText(); }

}  // namespace

RYESubmissionJob::RYESubmissionJob(BQueryViewTable* context, IRASSubmissionParameters params,
                                   std::string runFolder, std::string copyFolder)
    : Context(context),
      Params(std::move(params)),
      Output(std::make_unique<BStringOutput>()),
      OutputLines([this] { return RecordsFileTarget(); }, "\r\n", StreamingLog::kFlushBytes, TemporaryKind::Scratch),
      Engine(context != nullptr ? context->CreateSubmissionEngine() : nullptr),
      KeywordQuery("kovadb"),
      EmployerQuery("kovadb"),
      MainQuery("kovadb"),
      RunFolder(std::move(runFolder)),
      CopyFolder(std::move(copyFolder)) {
    // An employer's employees are read one at a time, never held whole:
    // the memory of a run does not grow with the employer. The validation
    // pass keeps them in a temporary file for the generation pass.
    MainQuery.SetForwardOnly(true);
    MainQuery.SetSpooled(true);
}

RYESubmissionJob::~RYESubmissionJob() = default;

void RYESubmissionJob::SetLogMemo(LogSink* log) { Logs.SetLogMemo(log); }
void RYESubmissionJob::SetInternalMemo(LogSink* debug) { Logs.SetInternalMemo(debug); }
void RYESubmissionJob::SetEmployeeErrorLog(StringList* employeeErrors) {
    EmployeeErrorLog = employeeErrors;
}
void RYESubmissionJob::SetSaveDialog(SaveFilePrompt* prompt) { SaveDialog = prompt; }

void RYESubmissionJob::WriteAllMemo(std::string_view line) { Logs.WriteAllMemo(line); }
void RYESubmissionJob::WriteInternalMemo(std::string_view line) { Logs.WriteInternalMemo(line); }

void RYESubmissionJob::WriteAllBanner(std::string_view title) {
    WriteAllMemo("");
    Logs.WriteAllBanner(title);
    WriteAllMemo("");
}

void RYESubmissionJob::WriteInternalBanner(std::string_view title) {
    WriteInternalMemo("");
    Logs.WriteInternalBanner(title);
    WriteInternalMemo("");
}

// ---------------------------------------------------------------- keywords

void RYESubmissionJob::OpenKeywordQuery() {
    KeywordQuery.Close();
    KeywordQuery.ClearSQL();
    KeywordQuery.SetSQL("SELECT * FROM YEKeyWord ORDER BY YEKeyWordCategory");
    KeywordQuery.Open();
    // Every record looks up several codes; an index of the small keyword
    // table keeps that from scanning it each time.
    keywordRows_.clear();
    int row = 0;
    for (KeywordQuery.First(); !KeywordQuery.Eof(); KeywordQuery.Next(), ++row) {
        keywordRows_.emplace(Trimmed(KeywordQuery.FieldByName("YEKeyWordId").AsString()), row);
    }
    KeywordQuery.First();
}

bool RYESubmissionJob::YEKeywordRecLocate(const std::string& keyword) {
    if (!KeywordQuery.Active()) return false;
    const std::string wanted = Trimmed(keyword);
    if (wanted.empty()) return false;
    const auto found = keywordRows_.find(wanted);
    if (found != keywordRows_.end()) {
        KeywordQuery.MoveTo(found->second);
        return true;
    }
    return false;  // the cursor stays on the row it stood on
}

std::string RYESubmissionJob::KeywordProperty(const char* column) {
    if (!KeywordQuery.Active() || KeywordQuery.IsEmpty()) return "";
    return Trimmed(KeywordQuery.FieldByName(column).AsString());
}

// ------------------------------------------------------------ row helpers

std::string RYESubmissionJob::Text(db::Query& query, const char* column) {
    return Trimmed(query.FieldByName(column).AsString());
}

double RYESubmissionJob::Amount(db::Query& query, const char* column) {
    const db::Field field = query.FieldByName(column);
    if (!query.Active() || query.IsEmpty()) return field.AsFloat();
    if (const std::optional<double> number = field.AsNumber()) return *number;
    // A sum the query works out (the total income) is NULL when one of its
    // parts is: the finding of that part already names the column to mend.
    if (field.IsNull() && &query == &MainQuery && !StoredAmountFaults.empty() && MainQuery.HasField("PersonalSysId") &&
        StoredAmountFaults.count(Text("PersonalSysId")) != 0) {
        return 0.0;
    }
    AddAmountFinding(column, field.AsString(), field.IsNull());
    return 0.0;
}

void RYESubmissionJob::AddAmountFinding(const std::string& column, const std::string& value, bool null) {
    const std::string taxNo = EmployeeTaxNo();
    std::string finding = "Employee " + (taxNo.empty() ? "" : taxNo + " ") + "(Employee ID " + EmployeeId() + "): " + column;
    finding += null ? " is empty (NULL) where the return needs an amount."
                    : " holds \"" + value + "\", which is not an amount.";
    for (const std::string& line : AmountFindings) {
        if (line == finding) return;
    }
    AmountFindings.push_back(finding);
}

void RYESubmissionJob::AddStoredAmountFindings() {
    if (StoredAmountFaults.empty()) return;
    const auto found = StoredAmountFaults.find(Text("PersonalSysId"));
    if (found == StoredAmountFaults.end()) return;
    for (const auto& fault : found->second) AddAmountFinding(fault.column, fault.value, fault.null);
}

Date RYESubmissionJob::DateOf(db::Query& query, const char* column) {
    const db::Field field = query.FieldByName(column);
    const Date date = field.AsDate();
    if (&query == &EmployerQuery || !query.Active() || query.IsEmpty() || !_IsDateNull(date) || field.IsNull()) {
        return date;
    }
    // A text that is no real day ("2024-02-30", "garbage") would be written
    // as a blank date, or taken for one by the rules.
    const std::string text = TrimSpace(field.AsString());
    if (text.empty() || Date::Parse(text)) return date;  // blank, or the stored empty date
    const std::string taxNo = EmployeeTaxNo();
    const std::string finding = "Employee " + (taxNo.empty() ? "" : taxNo + " ") + "(Employee ID " + EmployeeId() +
                                "): " + column + " holds \"" + text + "\", which is not a date (YYYY-MM-DD).";
    if (std::find(AmountFindings.begin(), AmountFindings.end(), finding) == AmountFindings.end()) {
        AmountFindings.push_back(finding);
    }
    return date;
}

// Only blanks are trimmed: an employer text is compared as the user typed it.
std::string RYESubmissionJob::EmployerText(const char* column) {
    if (!EmployerQuery.Active() || EmployerQuery.IsEmpty()) return "";
    const std::string text = EmployerQuery.FieldByName(column).AsString();
    const auto first = text.find_first_not_of(' ');
    if (first == std::string::npos) return "";
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::string RYESubmissionJob::PayeeIdTypeCode() {
    if (!YEKeywordRecLocate(Text("PayeeIDType"))) return "";
    return std::to_string(_CStrToInt(KeywordProperty("YEProperty3")));
}

std::string RYESubmissionJob::EmployeeTaxNo() { return Text("TaxNo"); }
std::string RYESubmissionJob::EmployeeId() { return Text("EmployeeId"); }

// --------------------------------------------------------- queries, engine

void RYESubmissionJob::OpenEmployerQuery(const std::string& sqlBeforeId) {
    EmployerQuery.Close();
    EmployerQuery.ClearSQL();
    EmployerQuery.SetSQL(sqlBeforeId + QuotedForSql(Params.employerId) + "'");
    EmployerQuery.Open();
}

namespace {

// How many times a job of this process has built the view tables. The view
// tables are the session user's, one set for every return: a job whose
// build is no longer the last one (the "All" run validates every return
// before it generates any) builds its own again before it reads them again.
std::atomic<std::uint64_t> viewTableBuilds{0};

}  // namespace

int RYESubmissionJob::GenerateViewTables(const std::string& submissionType, int year) {
    if (!Engine) return 0;
    viewSubmissionType_ = submissionType;
    viewBuild_ = 0;
    Engine->SetYEYear(year);
    Engine->SetYEEmployerId(Params.employerId);
    Engine->SetYESubmissionType(submissionType);
    Engine->SetYEIgnoreChanges(Params.ignoreChanges);
    Engine->SetIsDirectSubmit(Params.directSubmission);
    Engine->SetSubmitUserIDType(Params.submitUserIdType);
    Engine->SetSubmitUserID(Params.submitUserId);
    Engine->SetSubmitReportPath(RunFolder);
    const int built =
        source_ == RecordSource::Submitted ? Engine->GenerateSubmittedViewTables() : Engine->GenerateViewTables();
    if (built != 0) viewBuild_ = ++viewTableBuilds;
    return built;
}

int RYESubmissionJob::OpenSources(const std::string& employerSqlBeforeId, const std::string& submissionType,
                                  const std::string& jobClass) {
    OpenKeywordQuery();
    OpenEmployerQuery(employerSqlBeforeId);
    if (GenerateViewTables(submissionType, Params.year) == 0) {
        const bool blanks = LogShape().blankLinesAroundViewFailure;
        if (blanks) WriteInternalMemo("");
        WriteInternalMemo(jobClass + "::RefreshQuery(): Error in generating view tables.");
        if (blanks) WriteInternalMemo("");
        // The engine met a database failure: that is what the run reports,
        // not data to adjust.
        if (Engine) {
            if (const std::string fault = Engine->LastDatabaseFault(); !fault.empty()) throw db::DatabaseError(fault);
        }
        return 0;
    }
    KeepAmountFaults();
    return 1;
}

void RYESubmissionJob::KeepAmountFaults() {
    StoredAmountFaults.clear();
    if (Engine) {
        for (const auto& fault : Engine->AmountFaults()) {
            StoredAmountFaults[std::to_string(fault.personalSysId)].push_back(fault);
        }
    }
}

bool RYESubmissionJob::ReopenMainQuery() {
    // The rows the validation pass read, from their spool: neither the view
    // tables nor the query are made again.
    if (MainQuery.Reread()) return true;
    if (viewBuild_ == 0 || viewBuild_ != viewTableBuilds) {
        // Another job has replaced the view tables since this one read them:
        // the same build again gives the rows the validation pass saw (the
        // submissions of the other returns change only their own rows).
        if (GenerateViewTables(viewSubmissionType_, Params.year) == 0) {
            if (Engine) {
                if (const std::string fault = Engine->LastDatabaseFault(); !fault.empty()) {
                    throw db::DatabaseError(fault);
                }
            }
            return false;
        }
        KeepAmountFaults();
    }
    MainQuery.Open();
    return true;
}

std::string RYESubmissionJob::ViewName(const std::string& baseName) const {
    const std::string ip = Context != nullptr ? Context->sGetIPAddress() : "";
    const std::string user = Context != nullptr ? Context->sGetUserID() : "";
    return _GetViewTableName("View" + baseName, ip, user);
}

std::string RYESubmissionJob::SortClause() const {
    switch (Params.sortOrder) {
        case 0: return "ORDER BY TaxNo";
        case 1: return "ORDER BY EmployeeId";
        case 2: return "ORDER BY EEName1";
        default: return "";
    }
}

std::optional<std::unordered_set<std::string>> RYESubmissionJob::SharedIdNumbers() {
    const std::optional<EmployeeJoins> joins = Joins();
    if (!joins) return std::nullopt;
    std::unordered_set<std::string> numbers;
    try {
        db::Query query("kovadb");
        query.SetSQL("SELECT TaxNo FROM " + joins->employeeView + " GROUP BY TaxNo HAVING COUNT(*) > 1");
        query.Open();
        for (query.First(); !query.Eof(); query.Next()) numbers.insert(Text(query, "TaxNo"));
    } catch (const db::DatabaseError&) {
        return std::nullopt;  // then every number is remembered, as the check needs no more
    }
    return numbers;
}

void RYESubmissionJob::WarnLeftOutEmployees() {
    const std::optional<EmployeeJoins> joins = Joins();
    if (!joins || LeftOutWarned) return;
    LeftOutWarned = true;
    const std::string form = FormName();
    const std::string year = std::to_string(Params.year);
    const std::string global = "A." + joins->globalIdColumn;
    db::Query query("kovadb");
    query.SetSQL("SELECT A.TaxNo AS TaxNo, FGetEmployeeIdByPersonalSysId(A.PersonalSysId) AS EmployeeId, " + global +
                 " AS GlobalId FROM " + joins->employeeView + " A WHERE A.PersonalSysId IN (SELECT PersonalSysId FROM " +
                 joins->returnView + ") AND (" + global + " IS NULL OR " + global +
                 " NOT IN (SELECT YEGlobalId FROM YEGlobal)) ORDER BY A.TaxNo");
    query.Open();
    StringList warnings;
    for (query.First(); !query.Eof(); query.Next()) {
        const std::string globalId = Text(query, "GlobalId");
        warnings.push_back("Warning: employee " + Text(query, "TaxNo") + " (Employee ID " + Text(query, "EmployeeId") +
                           ") has " + form + " rows for the year but is left out of the file: " +
                           joins->globalIdColumn +
                           (globalId.empty() ? " is empty." : " " + globalId + " names no YEGlobal row."));
    }
    // Rows of a person with no employee row for the year belong to no
    // employer's file at all.
    db::Query orphans("kovadb");
    orphans.SetSQL("SELECT DISTINCT PersonalSysId FROM " + joins->returnTable + " WHERE YEYear = " + year +
                   (joins->returnTableFilter.empty() ? "" : " AND " + joins->returnTableFilter) +
                   " AND PersonalSysId NOT IN (SELECT PersonalSysId FROM YEEmployee WHERE YEYear = " + year +
                   ") ORDER BY PersonalSysId");
    orphans.Open();
    for (orphans.First(); !orphans.Eof(); orphans.Next()) {
        warnings.push_back("Warning: the " + form + " rows of person " + Text(orphans, "PersonalSysId") +
                           " for the year are left out of the file: the person has no employee row (YEEmployee) "
                           "for the year.");
    }
    if (warnings.empty()) return;
    WriteAllMemo("");
    for (const std::string& line : warnings) WriteAllMemo(line);
    WriteAllMemo("");
}

// ------------------------------------------------------------ the employer

int RYESubmissionJob::ValidateEmployerHeader(const EmployerHeaderRules& rules) {
    ErrorList.clear();
    WriteInternalBanner(rules.bannerTitle);
    const auto debug = [this, &rules](const std::vector<std::string>& lines) {
        if (rules.blankLinesAroundHeadings) WriteInternalMemo("");
        for (const auto& line : lines) WriteInternalMemo(line);
        if (rules.blankLinesAroundHeadings) WriteInternalMemo("");
    };
    // The value a blank test looks at: as stored, or trimmed of blanks.
    const auto tested = [this, &rules](const char* column) {
        if (!rules.untrimmedBlankTests) return EmployerText(column);
        if (!EmployerQuery.Active() || EmployerQuery.IsEmpty()) return std::string();
        return EmployerQuery.FieldByName(column).AsString();
    };

    debug(rules.sourceLines);
    const std::string source = EmployerText("EmployerSource");
    bool sourceValid = false;
    if (rules.allowedSources.empty()) {
        sourceValid = YEKeywordRecLocate(source);
    } else {
        for (const auto& allowed : rules.allowedSources) sourceValid = sourceValid || source == allowed;
    }
    if (!sourceValid) ErrorList.push_back("Invalid Source.");

    debug(rules.payerIdLines);
    if (tested("PayerID").empty()) {
        ErrorList.push_back("Invalid Organization ID Type. Organization ID Type cannot be blank.");
    } else if (!YEKeywordRecLocate(EmployerText("PayerID"))) {
        ErrorList.push_back("Invalid Organization ID Type.");
    } else if (KeywordProperty("YEProperty1") == "G") {
        // IRAS stopped taking GST numbers as the organisation id; the file
        // is refused whatever the basis year.
        ErrorList.push_back(
            "Invalid Organization ID Type. G is no longer applicable with effect from Year of "
            "Assessment 2013. File is not created.");
    }

    debug({"Validating Organization ID No."});
    if (tested("TaxRefNo").empty()) ErrorList.push_back(rules.taxRefNoMessage);
    debug({"Validating Name of Authorised Person"});
    if (tested("AuthorisedName").empty()) ErrorList.push_back("Invalid Name of Authorised Person.");
    debug({"Validating Name of Employer"});
    if (tested("EmployerName").empty()) ErrorList.push_back("Invalid employer name.");
    debug({"Validating Telephone number of Authorised Person"});
    if (EmployerText("TelephoneNo").empty()) ErrorList.push_back("Telephone number cannot be blank.");
    debug({"Validating Email Address of Authorised Person"});
    if (EmployerText("EmailAddress").empty()) ErrorList.push_back("Email address cannot be blank.");
    // The record has 60 places, but IRAS accepts no more than 50. (A trimmed
    // value that is too long is never empty, so the two rules exclude each
    // other unless the length is taken with the blanks.)
    if (CharacterCount(tested("EmailAddress")) > 50) {
        ErrorList.push_back("Email address cannot be more than 50 characters.");
    }
    return ErrorList.empty() ? 1 : 0;
}

void RYESubmissionJob::PutEmployerHeader(const EmployerHeaderFields& fields, const std::string& formName) {
    BStringOutput& out = *Output;
    Put(out, fields.recordType, "0");
    if (YEKeywordRecLocate(EmployerText("EmployerSource"))) {
        Put(out, fields.source, _CStrToInt(KeywordProperty("YEProperty3")));
    } else {
        Put(out, fields.source, "");
    }
    Put(out, fields.basisYear, BasisYear);
    if (YEKeywordRecLocate(EmployerText("PayerID"))) {
        Put(out, fields.organisationIdType, KeywordProperty("YEProperty1"));
    } else {
        Put(out, fields.organisationIdType, "");
    }
    PutEmployerTexts(fields);
    Put(out, fields.divisionBranch, EmployerText("DivisionBranch"));
    Put(out, fields.formName, formName);
    Put(out, fields.filler, "");
}

void RYESubmissionJob::PutEmployerTexts(const EmployerHeaderFields& fields) {
    BStringOutput& out = *Output;
    Put(out, fields.organisationIdNo, EmployerText("TaxRefNo"));
    Put(out, fields.authorisedName, EmployerText("AuthorisedName"));
    Put(out, fields.authorisedDesignation, EmployerText("Designation"));
    Put(out, fields.employerName, EmployerText("EmployerName"));
    Put(out, fields.telephone, EmployerText("TelephoneNo"));
    Put(out, fields.email, EmployerText("EmailAddress"));
    Put(out, fields.batchIndicator, Params.original ? "O" : "A");
    // The batch date is the database server's, not the workstation's.
    Put(out, fields.batchDate, _GetDBServerCurrentDate());
}

void RYESubmissionJob::PutEmployerHeaderFields() {
    namespace h = employer_header;
    // Only the texts' fields are read; the others stay empty.
    PutEmployerTexts({.recordType = {},
                      .source = {},
                      .basisYear = {},
                      .organisationIdType = {},
                      .organisationIdNo = h::kOrganisationIdNo,
                      .authorisedName = h::kAuthorisedName,
                      .authorisedDesignation = h::kAuthorisedDesignation,
                      .employerName = h::kEmployerName,
                      .telephone = h::kTelephone,
                      .email = h::kEmail,
                      .batchIndicator = h::kBatchIndicator,
                      .batchDate = h::kBatchDate,
                      .divisionBranch = {},
                      .formName = {},
                      .filler = {}});
}

void RYESubmissionJob::PutEmployeeDetailFields() {
    namespace d = employee_detail;
    BStringOutput& out = *Output;
    Put(out, d::kRecordType, "1");
    // An id type that locates no keyword (possible in an unchecked
    // Amendment) is left blank rather than borrowing another row's code.
    if (YEKeywordRecLocate(Text("PayeeIDType"))) {
        Put(out, d::kIdType, _CStrToInt(KeywordProperty("YEProperty3")));
    } else {
        Put(out, d::kIdType, "");
    }
    Put(out, d::kIdNo, Text("TaxNo"));
    PutText(d::kName1, "EEName1");
    PutText(d::kName2, "EEName2");
}

void RYESubmissionJob::PutText(const RecordField& field, const char* column) {
    const std::string value = Text(column);
    Put(*Output, field, value);
    // The file holds what the rules make of the text; the user learns which
    // employee's text it changed and how.
    const std::string encoded = ToRecordEncoding(value);
    const auto marks = [](const std::string& text) { return std::count(text.begin(), text.end(), '?'); };
    const bool replaced = marks(encoded) > marks(value);
    const bool cut = encoded.size() > static_cast<std::size_t>(field.width);
    if (!replaced && !cut) return;
    std::string shown = FromRecordEncoding(encoded.substr(0, static_cast<std::size_t>(field.width)));
    shown.erase(shown.find_last_not_of(' ') + 1);
    const std::string taxNo = EmployeeTaxNo();
    std::string reason = replaced ? "characters the file cannot hold are written as \"?\"" : "";
    if (cut) {
        reason += std::string(replaced ? ", and " : "") + "it is cut at its " + std::to_string(field.width) +
                  " characters";
    }
    TextChanges.push_back("Warning: employee " + (taxNo.empty() ? "" : taxNo + " ") + "(Employee ID " + EmployeeId() +
                          "): " + column + " \"" + value + "\" is written as \"" + shown + "\" (" + reason + ").");
}

void RYESubmissionJob::AppendSummaryBanner(StringList& summary, const std::string& title) {
    const std::string stars(48, '*');
    for (const std::string& line : {stars, std::string(), title, std::string(), stars, std::string()}) {
        summary.push_back(line);
    }
}

void RYESubmissionJob::AppendFileSummaryLines(StringList& summary) {
    summary.push_back("File Name:         " + OutputFilePath);
    // Without a known organisation id type the number means nothing to IRAS.
    if (YEKeywordRecLocate(EmployerText("PayerID"))) {
        summary.push_back("Organisation ID:   " + EmployerText("TaxRefNo"));
    }
    summary.push_back("Organisation Name: " + EmployerText("EmployerName"));
    summary.push_back("Form Type:         " + FormName());
    summary.push_back("Basis Year:        " + std::to_string(BasisYear));
    summary.push_back(std::string("Batch Indicator:   ") + (Params.original ? "O" : "A"));
    summary.push_back("No of Records:     " + std::to_string(RecordsSucceeded));
    summary.push_back("");
    summary.push_back("");
}

// ---------------------------------------------------------------- the file

std::string RYESubmissionJob::FileIdentifier() const {
    const std::string identifier = std::to_string(BasisYear) + "e" + FormName();
    return Params.actualRun ? identifier : "TEST" + identifier;
}

std::string RYESubmissionJob::FileName() const {
    return FileIdentifier() + "_Submission(" + (Params.original ? "O" : "A") + ").txt";
}

const JobLogShape& RYESubmissionJob::LogShape() const {
    static const JobLogShape standard;
    return standard;
}

// ------------------------------------------------------------------ passes

// Each pass opens with its banner and start time and closes with its end
// time. A database failure (a missing table or column, a locked file) ends
// the pass with its message: the job itself never throws.
int RYESubmissionJob::RunPass(const std::string& title, const std::string& failure,
                              int (RYESubmissionJob::*pass)(), const JobLogShape& shape) {
    WriteAllBanner(title);
    if (shape.blankLinesAroundStart) WriteAllMemo("");
    WriteAllMemo("Start Date and Time: " + NowText());
    if (shape.blankLinesAroundStart) WriteAllMemo("");
    int result = 0;
    try {
        if (BasisYear <= 0) {
            // A year of 0 would go into the header and the file name.
            WriteAllMemo("");
            WriteAllMemo(failure + "the basis year of the return is not set.");
        } else {
            result = (this->*pass)();
        }
    } catch (const db::DatabaseError& error) {
        // A database failure is not data that failed the rules: the caller
        // reads it from DatabaseFault() and reports it as such.
        WriteAllMemo("");
        WriteAllMemo(failure + error.what());
        WriteInternalMemo(failure + error.what());
        DatabaseFaultText = error.what();
        result = 0;
    } catch (const std::exception& error) {
        WriteAllMemo("");
        WriteAllMemo(failure + error.what());
        result = 0;
    } catch (...) {
        WriteAllMemo("");
        WriteAllMemo(failure + "an unexpected failure.");
        result = 0;
    }
    // The employee query is read again by the next pass; an unfinished
    // statement would hold the database meanwhile.
    MainQuery.Close();
    if (shape.blankLinesAroundEnd) WriteAllMemo("");
    WriteAllMemo("End Date and Time: " + NowText());
    if (shape.blankLinesAroundEnd) WriteAllMemo("");
    return result;
}

void RYESubmissionJob::WriteFindings(const StringList& findings, bool blankBefore) {
    if (blankBefore) WriteAllMemo("");
    for (const auto& line : findings) WriteAllMemo(line);
    WriteAllMemo("");
}

// -------------------------------------------------------------- validation

int RYESubmissionJob::RunValidation() {
    return RunPass(Texts().validateTitle, "The validation could not be completed: ",
                   &RYESubmissionJob::ValidationPass, LogShape());
}

int RYESubmissionJob::ValidationPass() {
    const JobTexts& texts = Texts();
    const JobLogShape& shape = LogShape();
    sourcesOpen_ = false;
    if (RefreshQuery() == 0) {
        WriteAllMemo("");
        WriteAllMemo("The data of the return could not be prepared. No file is created.");
        return 0;
    }
    sourcesOpen_ = true;
    WarnLeftOutEmployees();
    if (MainQuery.IsEmpty() && !shape.detailBannerWithoutEmployees) return Params.check ? 1 : 0;

    if (!MainQuery.IsEmpty()) {
        WriteAllBanner(texts.headerValidateTitle);
        ErrorList.clear();
        if (Params.original && HeaderValidation() == 0) {
            HeaderErrorCount = static_cast<int>(ErrorList.size());
            WriteFindings(ErrorList, shape.blankLineBeforeHeaderErrors);
        }
    }

    WriteAllBanner(texts.detailValidateTitle);
    // IRAS takes one record per employee: an ID number met again belongs to
    // two employee rows (the first one stays, the second is refused). Only
    // the numbers the employee view holds twice are remembered, so that the
    // check costs no memory for each employee of a large employer.
    const std::optional<std::unordered_set<std::string>> shared = SharedIdNumbers();
    std::unordered_map<std::string, std::string> idNumbers;
    for (MainQuery.First(); !MainQuery.Eof(); MainQuery.Next()) {
        RefreshEmployee();
        ErrorList.clear();
        AmountFindings.clear();
        AddStoredAmountFindings();
        bool passed = true;
        if (Params.original && DetailsValidation() == 0) passed = false;
        // The rules clear the list for their own messages; the record
        // limits add theirs after them, and the amounts that could not be
        // read (in an Amendment too) come last.
        StringList rules = ErrorList;
        ErrorList.clear();
        if (RecordLimitValidation() == 0) passed = false;
        rules.insert(rules.end(), ErrorList.begin(), ErrorList.end());
        if (!AmountFindings.empty()) passed = false;
        rules.insert(rules.end(), AmountFindings.begin(), AmountFindings.end());
        if (const std::string idNo = MainQuery.HasField("TaxNo") ? EmployeeTaxNo() : "";
            !idNo.empty() && (!shared || shared->count(idNo) != 0)) {
            const auto [first, added] = idNumbers.emplace(idNo, EmployeeId());
            if (!added) {
                rules.push_back("Duplicate ID No. " + idNo + " is also the ID No. of employee " + first->second +
                                " in this return.");
                passed = false;
            }
        }
        ErrorList = std::move(rules);
        if (passed) continue;

        const std::string taxNo = EmployeeTaxNo();
        if (shape.blankLinesAroundEmployee) WriteAllMemo("");
        WriteAllMemo("Employee " + taxNo + texts.employeeFailedSuffix);
        if (EmployeeErrorLog != nullptr) {
            EmployeeErrorLog->push_back("Identity No: " + taxNo);
            EmployeeErrorLog->push_back("Employee ID: " + EmployeeId());
        }
        for (const auto& line : ErrorList) {
            WriteAllMemo(line);
            if (EmployeeErrorLog != nullptr) EmployeeErrorLog->push_back(line);
        }
        if (shape.blankLinesAroundEmployee) WriteAllMemo("");
        if (EmployeeErrorLog != nullptr) EmployeeErrorLog->push_back("");
        ++RecordsFailed;
    }

    const int result = (Params.check && HeaderErrorCount == 0 && RecordsFailed == 0) ? 1 : 0;
    if (result == 0) {
        WriteAllMemo("");
        if (!Params.check) WriteAllMemo("No file is created: the output of records is switched off.");
        WriteAllMemo(texts.validationHeaderErrorsLabel + std::to_string(HeaderErrorCount));
        WriteAllMemo("Total No. of Records not successfully validated: " + std::to_string(RecordsFailed));
        if (shape.blankLineAfterTotals) WriteAllMemo("");
    }
    return result;
}

// -------------------------------------------------------------- generation

int RYESubmissionJob::RunGeneration() {
    // The generation pass keeps one log shape for every return.
    static const JobLogShape standard;
    return RunPass(Texts().processTitle, "The file could not be generated: ", &RYESubmissionJob::GenerationPass,
                   standard);
}

std::optional<StringList> RYESubmissionJob::BuildRecords(RecordSource source) {
    // The source decides the view tables and, as for a real run, whether the
    // rows are an Original's or an Amendment's.
    source_ = source;
    Params.original = Params.ignoreChanges = source != RecordSource::Amendment;
    Params.check = true;
    recordsOnly_ = true;
    const int result = RunGeneration();
    recordsOnly_ = false;
    StringList records = OutputLines.Lines();
    OutputLines.Clear();
    if (result == 0) return std::nullopt;
    return records;
}

int RYESubmissionJob::GenerationPass() {
    const JobTexts& texts = Texts();
    int result = 0;
    Output->SetMax(100, RecordWidth());
    Output->SetLeftMargin(0);
    Output->SetZeroAsNA(0);
    Output->SetFixedWidth(FixedWidthRecords());
    // A generation pass on its own (no validation pass before it in this
    // job) opens the queries itself; after one, it reads the employees
    // again from the same view tables.
    bool ready = true;
    if (RefreshBeforeGeneration() || !sourcesOpen_) {
        ready = RefreshQuery() != 0;
    } else {
        ready = ReopenMainQuery();
    }
    if (ready) WarnLeftOutEmployees();

    if (!ready) {
        WriteAllMemo("");
        WriteAllMemo("The data of the return could not be prepared. No file is created.");
    } else if (MainQuery.IsEmpty()) {
        NoRecords = true;
        WriteAllMemo("");
        WriteAllMemo("No Records to be processed.");
        if (recordsOnly_) result = 1;  // no employee is an answer too
    } else {
        WriteAllBanner(texts.headerTitle);
        if (Params.check) {
            Output->SetNew();
            PrepareHeader();
            Output->SetEnd(1);
            Output->ListOutput(OutputLines);
        }

        WriteAllBanner(texts.detailTitle);
        for (MainQuery.First(); !MainQuery.Eof(); MainQuery.Next()) {
            ++RecordsProcessed;
            RefreshEmployee();
            AmountFindings.clear();
            AddStoredAmountFindings();
            PrepareDetails();
            // A record with an amount that could not be read would say 0
            // where the database holds something else: the file is not made.
            if (!AmountFindings.empty()) {
                for (const std::string& line : AmountFindings) WriteAllMemo(line);
                RecordFault = true;
            }
        }

        if (!TextChanges.empty()) {
            WriteAllMemo("");
            for (const std::string& line : TextChanges) WriteAllMemo(line);
            TextChanges.clear();
        }

        if (HasTrailer()) {
            WriteAllBanner(texts.trailerTitle);
            if (Params.check) {
                Output->SetNew();
                PrepareTrailer();
                Output->SetEnd(1);
                Output->ListOutput(OutputLines);
            }
        }

        WriteAllMemo("");
        WriteAllMemo(texts.generationHeaderErrorsLabel + std::to_string(HeaderErrorCount));
        WriteAllMemo("Total No. of Records processed                 : " +
                     std::to_string(RecordsProcessed));
        WriteAllMemo("Total No. of Records successfully processed    : " +
                     std::to_string(RecordsSucceeded));
        WriteAllMemo("Total No. of Records not successfully processed: " +
                     std::to_string(RecordsFailed));

        WriteAllBanner(texts.fileStepTitle);
        if (!Params.check) {
            WriteAllMemo("No file is created: the output of records is switched off.");
        } else if (RecordFault) {
            WriteAllMemo("No file is created: not every record could be written.");
        } else if (recordsOnly_) {
            result = 1;
        } else {
            result = PlaceFile(FileName());
        }
    }
    // The records are in their file now; a temporary file that got no name
    // (a cancelled save, a copy elsewhere, a record that could not be built)
    // goes. BuildRecords reads them back first.
    if (!recordsOnly_) OutputLines.Clear();
    return result;
}

// A single-type run in direct-submission mode keeps the file in the run
// folder and hands it to the engine; an ordinary single-type run asks where
// to save it (without a prompt it saves into the run folder); the "All" run
// saves into the run folder and copies into the user's folder.
int RYESubmissionJob::PlaceFile(const std::string& fileName) {
    namespace fs = std::filesystem;
    const std::string runPath = (fs::path(RunFolder) / fileName).string();

    if (!CopyFolder.empty()) {
        const std::string copyPath = (fs::path(CopyFolder) / fileName).string();
        if (RunFolder.empty()) {
            // A trial "All" run may have no run folder: the user's folder
            // is then the only place for the file.
            if (!SaveOutputLines(copyPath)) return 0;
        } else {
            if (!SaveOutputLines(runPath)) return 0;
            if (!_FileCopy(runPath, copyPath)) {
                WriteAllMemo("The file could not be copied to " + copyPath + ".");
                return 0;
            }
        }
        OutputFilePath = copyPath;
        WriteAllMemo("File has been successfully generated to " + copyPath + ".");
        ProcessSubmission(true);
        return 1;
    }

    if (Params.directSubmission) {
        if (RunFolder.empty()) {
            WriteAllMemo("The file " + fileName + " is not saved: the run has no folder to save it in.");
            return 0;
        }
        if (!SaveOutputLines(runPath)) return 0;
        OutputFilePath = runPath;
        if (DirectSubmit(RunFolder, fileName, DirectSubmitFormType()) != 0) {
            ProcessSubmission(false);
            SaveDirectSubmitSummary();
        }
        return 1;
    }

    std::string chosen = runPath;
    if (SaveDialog == nullptr && RunFolder.empty()) {
        // Neither a prompt nor a run folder: there is no place the user chose,
        // and the working directory is not one.
        WriteAllMemo("The file " + fileName + " is not saved: the run has no folder to save it in.");
        return 0;
    }
    if (SaveDialog != nullptr) {
        const std::optional<std::string> answer = SaveDialog->AskSavePath(fileName);
        if (!answer) {
            WriteAllMemo(Texts().cancelledMessage);
            return 0;
        }
        chosen = *answer;
    }
    if (!SaveOutputLines(chosen)) return 0;
    // The run folder keeps a copy of what an actual run gave the user.
    if (Params.actualRun && !RunFolder.empty() && fs::path(chosen) != fs::path(runPath)) {
        std::error_code sameCheck;
        if (!fs::equivalent(chosen, runPath, sameCheck) && !_FileCopy(chosen, runPath)) {
            WriteAllMemo("The file could not be copied to " + runPath + ".");
        }
    }
    OutputFilePath = chosen;
    WriteAllMemo("File has been successfully generated to " + chosen + ".");
    ProcessSubmission(false);
    return 1;
}

void RYESubmissionJob::SaveDirectSubmitSummary() {
    if (!Params.actualRun || !Params.original || SummaryFileName().empty()) return;
    StringList summary;
    GenerateSummary(summary);
    const std::filesystem::path target = std::filesystem::path(RunFolder) / (SummaryFileName() + ".txt");
    const std::string reason = WriteLinesAtomically(target, summary, "\n");
    if (!reason.empty()) {
        WriteAllMemo("The summary file " + target.string() + " could not be written: " + reason + ".");
    }
}

std::filesystem::path RYESubmissionJob::RecordsFileTarget() const {
    // Where PlaceFile puts the file first: the run folder, else the "All"
    // run's folder; a run with neither saves where its prompt says.
    const std::string& folder = !RunFolder.empty() ? RunFolder : CopyFolder;
    const std::filesystem::path base = folder.empty() ? std::filesystem::temp_directory_path() : std::filesystem::path(folder);
    return base / FileName();
}

bool RYESubmissionJob::SaveOutputLines(const std::string& path) {
    // Return files end every record, the last one too, with CR LF.
    const std::string reason = OutputLines.SaveTo(path);
    if (reason.empty()) return true;
    OutputLines.Clear();  // a file that cannot be saved leaves nothing behind
    WriteAllMemo("The file " + path + " could not be written: " + reason + ".");
    return false;
}

// ------------------------------------------------------- engine submission

int RYESubmissionJob::DirectSubmit(const std::string& /*folder*/, const std::string& file,
                                   const std::string& formType) {
    WriteAllBanner("           PROCESSING FILE FOR DIRECT SUBMISSION");
    if (!Engine) {
        WriteAllMemo("No submission engine is available.");
        return 0;
    }
    const int validateOnly = Params.actualRun ? 0 : 1;
    const int submitted = Engine->ExecuteDirectSubmit(file, formType, validateOnly);
    WriteAllMemo("");
    // The engine writes into the sinks it is given; a job without one gives
    // it a scratch sink so that it never writes through a null pointer.
    MemoryLog scratchDebug;
    MemoryLog scratchLog;
    Engine->DirectSubmitAppendLog(Logs.InternalMemo() ? Logs.InternalMemo() : &scratchDebug,
                                  "IRASDirectSubmitDebug.log");
    Engine->DirectSubmitAppendLog(Logs.LogMemo() ? Logs.LogMemo() : &scratchLog,
                                  "IRASDirectSubmit.log");
    HasErrors = Engine->HasErrors();
    HasWarnings = Engine->HasWarnings();
    // The database could not record the submission (before or after the
    // delivery), or an earlier delivery is not recorded: the run ends as a
    // database failure with the engine's message, so that nobody files twice.
    if (const std::string fault = Engine->LastDatabaseFault(); !fault.empty()) {
        WriteAllMemo(fault);
        DatabaseFaultText = fault;
    }
    if (HasWarnings) WriteAllMemo("Record processed with warning(s).");
    if (HasErrors) WriteAllMemo("Record processed with error(s).");
    WriteAllMemo("");
    return (Params.actualRun && submitted != 0) ? 1 : 0;
}

void RYESubmissionJob::ProcessSubmission(bool allRun) {
    if (!Params.actualRun) return;
    WriteInternalBanner("           PROCESSING SUBMISSION                ");
    const int recorded = Engine ? Engine->SubmitRecords(Params.original, allRun) : 0;
    WriteInternalMemo(recorded != 0 ? "Submission is successful." : "Submission is not successful.");
    if (recorded == 0 && Engine) {
        if (const std::string fault = Engine->LastDatabaseFault(); !fault.empty()) {
            WriteAllMemo(fault);
            DatabaseFaultText = fault;
        }
    }
    WriteInternalMemo("");
}

}  // namespace iras
