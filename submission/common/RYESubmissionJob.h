// The part of a return job that the four returns share: what a job holds
// (session, parameters, line builder, record lines, queries, engine, counters,
// flags), how it writes to the run and debug logs, and the two drivers that
// every return runs the same way: the validation pass (header once, then every
// employee, counting failures) and the generation pass (header, one detail
// record per employee, trailer, then the file put in its place and handed to
// the submission engine). A return derives from it and supplies its queries,
// records, rules, banner titles and file name through the hooks below; it adds
// code, it does not copy the drivers.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <unordered_set>
#include <unordered_map>
#include <vector>

#include "platform/common/StreamingLog.h"
#include "platform/database/Query.h"
#include "platform/host/BQueryViewTable.h"
#include "platform/host/BYESubmissionEngine.h"
#include "submission/common/BStringOutput.h"
#include "submission/common/IRASSubmissionParameters.h"
#include "submission/common/RecordLayout.h"
#include "submission/common/RunLogs.h"
#include "submission/common/SubmissionJob.h"

namespace iras {

// The texts by which the logs tell one return from another: banner titles
// (48 characters, kept with their blanks) and the labels of the counters.
struct JobTexts {
    std::string validateTitle;        // "     VALIDATING CURRENT IR8A FILE               "
    std::string headerValidateTitle;  // "            VALIDATING IR8A HEADER              "
    std::string detailValidateTitle;  // "            VALIDATING IR8A DETAILS             "
    std::string processTitle;         // "     PROCESSING CURRENT IR8A FILE               "
    std::string headerTitle;          // "            PROCESSING IR8A HEADER              "
    std::string detailTitle;          // "            PROCESSING IR8A DETAILS             "
    std::string trailerTitle;         // unused by a return without a trailer record
    std::string fileStepTitle;        // "       IR8A FILE GENERATION                     "
    // The header-errors label of the validation pass and of the generation
    // pass (they differ by a blank in some returns).
    std::string validationHeaderErrorsLabel;  // "Total No. of Errors in IR8A Header             : "
    std::string generationHeaderErrorsLabel;
    std::string employeeFailedSuffix = " is not successfully validated.";
    std::string cancelledMessage;     // "IR8A File is cancelled."
};

// The shape of a job's logs where returns differ. The defaults are the IR8A
// return's; a return whose logs its users know in another shape (IR8S: fewer
// blank lines, no detail banner for an empty employee list) says so here
// instead of copying the driver. All but the last concern the validation pass.
struct JobLogShape {
    bool blankLinesAroundStart = false;      // "" before and after "Start Date and Time: ..."
    bool detailBannerWithoutEmployees = true;  // detail banner even when no employee is listed
    bool blankLineBeforeHeaderErrors = true;   // "" before the header findings ("" after always)
    bool blankLinesAroundEmployee = true;      // "", "Employee ...", findings, ""
    bool blankLineAfterTotals = true;          // "" after the two "Total No. of ..." lines
    bool blankLinesAroundEnd = true;           // "" before and after "End Date and Time: ..."
    bool blankLinesAroundViewFailure = false;  // "" around the debug line of a failed view generation
};

// Where a return's employee query joins the employee rows to its own rows
// and to YEGlobal, so that the driver can name the employees the joins
// leave out of the file.
struct EmployeeJoins {
    std::string employeeView;    // the session user's view of YEEmployee (alias A)
    std::string returnView;      // the session user's view of the return's table
    std::string globalIdColumn;  // "CurrentYEGlobalId" or "SupYEGlobalId"
    std::string returnTable;     // "IR8A", "IR8S", "A8A"
    std::string returnTableFilter;  // more of the WHERE on the table ("IR8AType = 'CurIR8A'"), or ""
};

// What a return's header validation differs in; the ten employer rules
// themselves (source, organisation id type in three steps, id number,
// authorised person, name, telephone, e-mail blank and longer than 50) are
// the same for every return.
struct EmployerHeaderRules {
    std::string bannerTitle;                  // "             IR8A HEADER VALIDATION             "
    std::vector<std::string> sourceLines;     // debug lines before the source rule
    // The keyword ids a source must be ("PrivateSector", "SourceOthers");
    // empty: the source must locate any keyword row.
    std::vector<std::string> allowedSources;
    std::vector<std::string> payerIdLines;    // debug lines before the organisation id type rules
    std::string taxRefNoMessage;              // "Invalid Organization ID No. cannot be blank."
    // The blank tests of the organisation id type and number, the authorised
    // person and the employer name, and the e-mail length test, look at the
    // value as stored, blanks kept: a value of blanks is not empty and passes
    // them (Appendix 8A). Telephone and e-mail are always tested trimmed, and
    // a code is always looked up trimmed. false: every value is trimmed first.
    bool untrimmedBlankTests = false;
    // "" before and after each rule's heading lines in the debug log.
    bool blankLinesAroundHeadings = false;
};

class RYESubmissionJob : public RSubmissionJob {
public:
    RYESubmissionJob(BQueryViewTable* context, IRASSubmissionParameters params,
                     std::string runFolder, std::string copyFolder);
    ~RYESubmissionJob() override;
    RYESubmissionJob(const RYESubmissionJob&) = delete;
    RYESubmissionJob& operator=(const RYESubmissionJob&) = delete;

    // RSubmissionJob
    void SetLogMemo(LogSink* log) override;
    void SetInternalMemo(LogSink* debug) override;
    void SetEmployeeErrorLog(StringList* employeeErrors) override;
    // Without a prompt, a single-type run saves into the run folder.
    void SetSaveDialog(SaveFilePrompt* prompt) override;
    // The "Basis Year" of the run. A job whose year was never set refuses to
    // run rather than write year 0 into a return.
    void SetBasisYear(int basisYear) override { BasisYear = basisYear; }
    std::string SummaryFileName() const override { return ""; }
    bool GetHasErrors() const override { return HasErrors; }
    bool GetHasWarnings() const override { return HasWarnings; }
    std::string DatabaseFault() const override { return DatabaseFaultText; }
    bool FoundNoRecords() const override { return NoRecords; }
    bool RefusedARecord() const override { return RecordFault; }
    std::optional<StringList> BuildRecords(RecordSource source) override;

    void WriteAllMemo(std::string_view line);
    void WriteInternalMemo(std::string_view line);

    // Moves KeywordQuery to the YEKeyWord row whose YEKeyWordId is keyword.
    // When there is none the cursor stays where it was; the answer says which.
    bool YEKeywordRecLocate(const std::string& keyword);

    // Hands the saved file to the engine (check only in a trial run). Nonzero
    // only in an actual run that the engine accepted. folder is not used.
    int DirectSubmit(const std::string& folder, const std::string& file,
                     const std::string& formType);
    // Records the submission with the engine; nothing in a trial run.
    void ProcessSubmission(bool allRun);

    int GetHeaderErrorCount() const { return HeaderErrorCount; }
    int GetRecordsProcessed() const { return RecordsProcessed; }
    int GetRecordsFailed() const { return RecordsFailed; }
    int GetRecordsSucceeded() const { return RecordsSucceeded; }
    const StringList& GetErrorList() const { return ErrorList; }
    // Full path of the file the generation pass wrote ("" before or on failure).
    const std::string& GetOutputFilePath() const { return OutputFilePath; }
    int GetBasisYear() const { return BasisYear; }
    // "TEST" + basis year + "e" + form name in a trial run, else basis year +
    // "e" + form name: "2023eIR8S".
    std::string FileIdentifier() const;

protected:
    // The two drivers; a return's ValidateXFile and ProcessXeSubmission call them.
    int RunValidation();
    int RunGeneration();

    // Hooks of a return.
    virtual const JobTexts& Texts() const = 0;
    virtual int RefreshQuery() = 0;       // opens the queries; 0 stops the run
    virtual int HeaderValidation() = 0;   // fills ErrorList; nonzero when clean
    virtual int DetailsValidation() = 0;  // the current MainQuery row; fills ErrorList
    // Limits of the record itself (an amount wider than its field), checked
    // for every employee of every run, Amendments included: a record that
    // cannot hold a value is never written. Appends to ErrorList.
    virtual int RecordLimitValidation() { return 1; }
    // Per-employee queries (sections, stock options) before a row is used.
    virtual void RefreshEmployee() {}
    // The joins of the employee query; nothing for a return that names no
    // left-out employees.
    virtual std::optional<EmployeeJoins> Joins() const { return std::nullopt; }
    // Whether the generation pass opens the queries itself, not only when
    // the validation pass of the same job has not done it.
    virtual bool RefreshBeforeGeneration() const { return false; }
    virtual void PrepareHeader() = 0;   // between Output.SetNew() and SetEnd(1)
    // Builds and lists the record of the current row and counts it in
    // RecordsSucceeded. A record that cannot be built is logged, not listed,
    // and sets RecordFault.
    virtual void PrepareDetails() = 0;
    virtual bool HasTrailer() const { return false; }
    virtual void PrepareTrailer() {}  // sets RecordFault when it cannot be built
    virtual int RecordWidth() const { return 1200; }
    // The record width is fixed: a field placed past it is cut rather than
    // lengthening the line (Appendix 8B).
    virtual bool FixedWidthRecords() const { return false; }
    virtual const JobLogShape& LogShape() const;
    virtual std::string FormName() const = 0;  // "IR8A", "IR8S", "A8A", "A8B"
    // The file's name: FileIdentifier() + "_Submission(O).txt" ("A" for an
    // Amendment) unless a return names its files otherwise.
    virtual std::string FileName() const;
    // The form type the engine knows the file by; FormName() unless a
    // return says otherwise.
    virtual std::string DirectSubmitFormType() const { return FormName(); }
    // The employee named in the findings of a failing row.
    virtual std::string EmployeeTaxNo();
    virtual std::string EmployeeId();

    // Text of a column of the current row of a query (NULL reads as ""),
    // trimmed. Without a query: MainQuery.
    static std::string Text(db::Query& query, const char* column);
    // An amount of the current row. A NULL or a text that is not a number
    // (which an SQLite column accepts) is never read as 0 in silence: it
    // reads as 0 and adds a finding naming the employee, the column and the
    // value to AmountFindings, and the drivers refuse the employee (the
    // validation pass) or the file (the generation pass) for it.
    double Amount(db::Query& query, const char* column);
    // A date of the current row. A text that is not a real day is a finding
    // naming the employee, the column and the text (as an unreadable amount
    // is), never a silent blank; NULL reads as the empty date.
    Date DateOf(db::Query& query, const char* column);
    std::string Text(const char* column) { return Text(MainQuery, column); }
    double Amount(const char* column) { return Amount(MainQuery, column); }
    Date DateOf(const char* column) { return DateOf(MainQuery, column); }
    // The IRAS code of the current employee's PayeeIDType (YEProperty3 of
    // its keyword row, as a number); "" when the type has no keyword row
    // (possible in an unchecked Amendment), rather than another row's code.
    std::string PayeeIdTypeCode();
    // A column of the employer row, trimmed of blanks; "" without a row.
    std::string EmployerText(const char* column);
    // Text of a column of the located KeywordQuery row, trimmed.
    std::string KeywordProperty(const char* column);

    // Opens KeywordQuery on "SELECT * FROM YEKeyWord ORDER BY YEKeyWordCategory"
    // and indexes it for YEKeywordRecLocate.
    void OpenKeywordQuery();
    // Opens EmployerQuery on the employer row of the run (the employer id is
    // quoted for SQL, so an id with an apostrophe still finds its row).
    void OpenEmployerQuery(const std::string& sqlBeforeId);
    // The engine set-up that every RefreshQuery makes before GenerateViewTables.
    int GenerateViewTables(const std::string& submissionType, int year);
    // What every RefreshQuery opens first: the keyword query, the employer
    // query and the engine's view tables for submissionType. On a failure
    // of the engine, "<jobClass>::RefreshQuery(): Error in generating view
    // tables." goes to the debug log and the answer is 0.
    int OpenSources(const std::string& employerSqlBeforeId, const std::string& submissionType,
                    const std::string& jobClass);
    // The session user's name of a view table: ViewName("IR8S") for the
    // user's "ViewIR8S".
    std::string ViewName(const std::string& baseName) const;
    // The ORDER BY of the employee query by Params.sortOrder: "ORDER BY TaxNo",
    // "ORDER BY EmployeeId", "ORDER BY EEName1", or "" for another value.
    std::string SortClause() const;
    // The employer rules every return checks before an Original file. Clears
    // ErrorList; nonzero when no rule failed.
    int ValidateEmployerHeader(const EmployerHeaderRules& rules);
    // Places the employer's header record in its fields on the record being
    // built: "0", the source code (YEProperty3) and organisation id type
    // (YEProperty1) of the employer's keywords, basis year, organisation id
    // number, authorised person, employer name, contacts, "O" or "A", the
    // database server's date, division, formName and a blank filler. A code
    // without a keyword row (an unchecked Amendment) leaves its position blank.
    void PutEmployerHeader(const EmployerHeaderFields& fields, const std::string& formName);
    // The header fields of the employer and the batch, organisation id number
    // to batch date (positions 10-230 of the returns with a payment type,
    // IR8A and Appendix 8B): the employer row's texts, "O" or "A", the
    // database server's date.
    void PutEmployerHeaderFields();
    // The employer's texts and the batch of a header: organisation id number
    // to batch date, at the fields' positions.
    void PutEmployerTexts(const EmployerHeaderFields& fields);
    // The detail record's opening that every return writes alike (positions
    // 1-94): record type "1", the IRAS code of the employee's id type, id
    // number and the two name lines of MainQuery's row.
    void PutEmployeeDetailFields();
    // Puts a text column of MainQuery into its field and notes, for a warning
    // in the run log, when the file cannot hold it as it stands (characters
    // written as "?", cut at the field's width).
    void PutText(const RecordField& field, const char* column);
    // The opening of every summary file: 48 "*", "", title, "", 48 "*", "".
    static void AppendSummaryBanner(StringList& summary, const std::string& title);
    // The summary's account of the file for a return without totals (IR8S,
    // Appendix 8A): file, organisation (its id only when the id type is a
    // known keyword), form, basis year, batch, record count, two blank lines.
    void AppendFileSummaryLines(StringList& summary);

    // Saves OutputLines, each ended by CR LF, to path through a temporary
    // file in the same folder; false (and a log line naming the path) when
    // it cannot, leaving no file behind.
    bool SaveOutputLines(const std::string& path);
    std::filesystem::path RecordsFileTarget() const;
    int RunPass(const std::string& title, const std::string& failure, int (RYESubmissionJob::*pass)(),
                const JobLogShape& shape);
    int ValidationPass();
    int GenerationPass();
    void SaveDirectSubmitSummary();

    // A warning in the run log for every employee with rows of the return
    // for the year that the joins of the employee query leave out (no
    // YEGlobal row, no employee row): the file stays as the rules make it,
    // and the user learns whom it does not list. Once per job.
    void WarnLeftOutEmployees();
    // The ID numbers that the employee view holds more than once: the only
    // ones the employee query can meet twice. Nothing when the job has no
    // employee view to ask.
    std::optional<std::unordered_set<std::string>> SharedIdNumbers();
    void WriteAllBanner(std::string_view title);       // "", banner, ""
    void WriteFindings(const StringList& findings, bool blankBefore);
    void WriteInternalBanner(std::string_view title);  // "", banner, ""

    BQueryViewTable* Context;
    IRASSubmissionParameters Params;
    std::unique_ptr<BStringOutput> Output;
    // The records go to a temporary file beside the file's place in the run
    // folder as they are made; SaveOutputLines gives it its name.
    StreamingLog OutputLines;
    StringList ErrorList;
    RunLogs Logs;
    StringList* EmployeeErrorLog = nullptr;
    int BasisYear = 0;
    SaveFilePrompt* SaveDialog = nullptr;
    std::unique_ptr<BYESubmissionEngine> Engine;
    db::Query KeywordQuery;
    db::Query EmployerQuery;
    db::Query MainQuery;
    int HeaderErrorCount = 0;
    int RecordsProcessed = 0;
    int RecordsFailed = 0;
    int RecordsSucceeded = 0;
    bool HasWarnings = false;
    bool HasErrors = false;
    std::string RunFolder;
    std::string CopyFolder;
    std::string OutputFilePath;
    // A record of this run could not be built: the file is not made, so
    // that no employee is silently left out of it.
    bool RecordFault = false;
    // The amounts and dates of the current employee that could not be read
    // (see Amount, DateOf); cleared by the drivers before each employee.
    StringList AmountFindings;
    // The texts of this generation that the file holds changed (see PutText).
    StringList TextChanges;
    // The amounts of the return's rows, by PersonalSysId, that the engine
    // found not to be numbers when it made the view tables.
    std::unordered_map<std::string, std::vector<BYESubmissionEngine::AmountFault>> StoredAmountFaults;
    // Adds to AmountFindings those of StoredAmountFaults for the current employee.
    void AddStoredAmountFindings();
    void AddAmountFinding(const std::string& column, const std::string& value, bool null);
    // The database failure that stopped a pass ("" when none).
    std::string DatabaseFaultText;
    // The generation pass found no employee to report.
    bool NoRecords = false;
    bool LeftOutWarned = false;

private:
    int PlaceFile(const std::string& fileName);
    // StoredAmountFaults from the engine's last build of the view tables.
    void KeepAmountFaults();
    // The generation pass after a validation pass: reads the validation
    // pass's rows again from MainQuery's spool; without one (the disk was
    // full), opens MainQuery again, building the view tables again first
    // when another job has replaced them since. False when the engine
    // cannot build them.
    bool ReopenMainQuery();
    // The validation pass of this job opened the queries.
    bool sourcesOpen_ = false;
    // The submission type of this job's view tables, and which build of the
    // process they are (0: none).
    std::string viewSubmissionType_;
    std::uint64_t viewBuild_ = 0;
    // BuildRecords: where the view tables come from, and that the generation
    // pass stops once the records are built.
    RecordSource source_ = RecordSource::Live;
    bool recordsOnly_ = false;
    std::unordered_map<std::string, int> keywordRows_;  // trimmed YEKeyWordId -> first row
};

}  // namespace iras
