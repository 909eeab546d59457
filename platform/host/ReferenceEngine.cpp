// The reference submission engine on the payroll database. The per-user view
// tables, the submitted copy (YEYear 9<basis year>), the state before the last
// submission (8<basis year>) and the records of submitted files are all plain
// tables of that database; every statement is set-based so that an employer
// of many thousand employees is handled in a few statements per table.
#include "platform/host/ReferenceEngine.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
#include <utility>
#include <vector>

#include "platform/ais/AisFileChecker.h"
#include "platform/common/Date.h"
#include "platform/common/Text.h"
#include "platform/database/Query.h"
#include "platform/database/SqlDialect.h"
#include "platform/host/BQueryViewTable.h"
#include "platform/host/HostFunctions.h"

namespace iras {

namespace {

// A column of a return table as the database describes it.
struct Column {
    std::string name;
    std::string type;
    bool key = false;
    bool amount = false;  // money: differenced in an amendment
};

struct ReturnTable {
    std::string name;
    bool typed = false;  // IR8A: current and supplementary rows share the table (IR8AType)
    std::vector<Column> columns;
    std::vector<std::string> matchColumns;  // the key without YEYear: one row of one person
};

using Params = std::map<std::string, db::Value>;

using db::QuoteName;

// "for employer E, year Y": the subject of the engine's log lines and messages.
std::string ForEmployerAndYear(const std::string& employerId, int year) {
    return "for employer " + employerId + ", year " + std::to_string(year);
}

// Money is REAL in the payroll schema; other engines call it MONEY or DECIMAL.
// Per-share prices and share counts are NUMERIC and are not amounts.
bool IsAmountType(const std::string& declared) {
    const std::string type = AsciiUpper(declared);
    for (const char* word : {"REAL", "FLOA", "DOUB", "MONEY", "DECIMAL"})
        if (type.find(word) != std::string::npos) return true;
    return false;
}

// The return tables of each submission type, the main one (one row per
// employee reported) first; the per-user employee view comes on top of them.
std::optional<std::vector<std::string>> TablesOfType(const std::string& type) {
    if (type == "CurIR8A" || type == "SupIR8A") return std::vector<std::string>{"IR8A"};
    if (type == "IR8S") return std::vector<std::string>{"IR8S", "IR8SA", "IR8SC"};
    if (type == "A8A") return std::vector<std::string>{"A8A", "A8AS2S3"};
    if (type == "A8B") return std::vector<std::string>{"A8B", "A8BRecord"};
    return std::nullopt;
}

std::optional<AisKind> KindOfFormType(const std::string& formType) {
    if (formType == "CurIR8A" || formType == "SupIR8A" || formType == "IR8A") return AisKind::IR8A;
    if (formType == "IR8S") return AisKind::IR8S;
    if (formType == "A8A") return AisKind::A8A;
    if (formType == "A8B") return AisKind::A8B;
    return std::nullopt;
}

// Sets the statement and those of the parameters it names.
void Bind(db::Query& query, const std::string& sql, const Params& params) {
    query.SetSQL(sql);
    for (const auto& [name, value] : params)
        if (sql.find(":" + name) != std::string::npos) query.SetParam(name, value);
}

void Exec(const std::string& alias, const std::string& sql, const Params& params) {
    db::Query query(alias);
    Bind(query, sql, params);
    query.ExecSQL();
}

std::vector<Column> ReadColumns(const std::string& alias, const std::string& table) {
    db::Query query(alias);
    query.SetSQL("PRAGMA table_info(" + QuoteName(table) + ")");
    query.Open();
    std::vector<Column> columns;
    for (query.First(); !query.IsEmpty() && !query.Eof(); query.Next()) {
        Column column;
        column.name = query.FieldByName("name").AsString();
        column.type = query.FieldByName("type").AsString();
        column.key = query.FieldByName("pk").AsInteger() > 0;
        column.amount = IsAmountType(column.type);
        columns.push_back(std::move(column));
    }
    if (columns.empty()) throw db::DatabaseError("table " + table + " does not exist in the database");
    return columns;
}

bool HasColumn(const std::vector<Column>& columns, const std::string& name) {
    return std::any_of(columns.begin(), columns.end(),
                       [&](const Column& c) { return SameIgnoringCase(c.name, name); });
}

ReturnTable DescribeReturnTable(const std::string& alias, const std::string& name) {
    ReturnTable table;
    table.name = name;
    table.columns = ReadColumns(alias, name);
    for (const char* needed : {"PersonalSysId", "YEYear"})
        if (!HasColumn(table.columns, needed))
            throw db::DatabaseError("table " + name + " has no column " + needed);
    table.typed = HasColumn(table.columns, "IR8AType");
    bool yearInKey = false;
    for (const auto& column : table.columns) {
        if (!column.key) continue;
        if (SameIgnoringCase(column.name, "YEYear"))
            yearInKey = true;
        else
            table.matchColumns.push_back(column.name);
    }
    // The submitted copy lives beside the live rows under another YEYear, so
    // a row is known by its key without the year.
    if (!yearInKey)
        throw db::DatabaseError("table " + name +
                                " has no primary key holding YEYear; the submitted copy cannot be kept in it");
    return table;
}

std::vector<ReturnTable> DescribeReturnTables(const std::string& alias, const std::string& type) {
    const auto names = TablesOfType(type);
    std::vector<ReturnTable> tables;
    if (names)
        for (const auto& name : *names) tables.push_back(DescribeReturnTable(alias, name));
    return tables;
}

std::string ColumnList(const std::vector<Column>& columns) {
    std::string list;
    for (const auto& column : columns) {
        if (!list.empty()) list += ", ";
        list += QuoteName(column.name);
    }
    return list;
}

// The columns with YEYear replaced by a parameter: the copy of a set of rows
// under another year key.
std::string ColumnsWithYear(const std::vector<Column>& columns, const std::string& yearParam) {
    std::string list;
    for (const auto& column : columns) {
        if (!list.empty()) list += ", ";
        list += SameIgnoringCase(column.name, "YEYear") ? yearParam : QuoteName(column.name);
    }
    return list;
}

std::string TypeFilter(const ReturnTable& table, const std::string& prefix = "") {
    return table.typed ? " AND " + prefix + "IR8AType = :Type" : "";
}

void CreateLike(const std::string& alias, const std::string& view, const std::vector<Column>& columns) {
    Exec(alias, "DROP TABLE IF EXISTS " + view, {});
    std::string definition;
    for (const auto& column : columns) {
        if (!definition.empty()) definition += ", ";
        definition += QuoteName(column.name) + (column.type.empty() ? "" : " " + column.type);
    }
    Exec(alias, "CREATE TABLE " + view + " (" + definition + ")", {});
}

// The index of a view table by person, then by the rest of its row's key
// (the month of an IR8S Section A row, the order of an Appendix 8A row): the
// jobs read an employee's rows of a section in that order.
void IndexByPerson(const std::string& alias, const std::string& view, const std::vector<std::string>& rest = {}) {
    std::string columns = "PersonalSysId";
    for (const auto& column : rest)
        if (!SameIgnoringCase(column, "PersonalSysId")) columns += ", " + QuoteName(column);
    Exec(alias, "CREATE INDEX " + view + "_Person ON " + view + " (" + columns + ")", {});
}

// The rows of a year set that belong to the employer's people (and, for
// IR8A, to the one kind). Each row asks the employee table through its key,
// so that a year set with no rows (the first submission) costs nothing.
std::string EmployerRows(const ReturnTable& table) {
    return TypeFilter(table) + " AND EXISTS (SELECT 1 FROM YEEmployee E WHERE E.PersonalSysId = " +
           QuoteName(table.name) + ".PersonalSysId AND E.YEEmployerId = :EmployerId AND E.YEYear = :Year)";
}

// The employee has a row of the return's main table (IR8A, IR8S, A8A, A8B)
// under the year key: the return's queries read only the employees they join
// to that table's view, and its other tables only for those employees, so
// the rest of the employer's people (most of them for an appendix) are not
// copied. Each employee row asks the table through its key and keeps its
// place in the employee table's order, which the listing keeps among equal
// names.
std::string HasMainRow(const ReturnTable& main, const std::string& yearParam) {
    const std::string name = QuoteName(main.name);
    return "EXISTS (SELECT 1 FROM " + name + " WHERE " + name + ".PersonalSysId = YEEmployee.PersonalSysId AND " +
           name + ".YEYear = " + yearParam + TypeFilter(main, name + ".") + ")";
}

// The people whose rows of one return table differ between the live year and
// the submitted copy, in either direction (a row added, changed or removed).
// Amounts are compared to the cent, so that a value read back through a
// binary double does not count as a change.
std::string ChangedPeople(const ReturnTable& table) {
    std::string compared;
    for (const auto& column : table.columns) {
        if (SameIgnoringCase(column.name, "YEYear")) continue;
        if (!compared.empty()) compared += ", ";
        compared += column.amount ? "ROUND(" + QuoteName(column.name) + ", 2) AS " + QuoteName(column.name)
                                  : QuoteName(column.name);
    }
    const std::string from = " FROM " + QuoteName(table.name) + " WHERE YEYear = ";
    const std::string rest = EmployerRows(table);
    const std::string live = "SELECT " + compared + from + ":Year" + rest;
    const std::string copy = "SELECT " + compared + from + ":CopyYear" + rest;
    return "SELECT PersonalSysId FROM (" + live + " EXCEPT " + copy + ") UNION SELECT PersonalSysId FROM (" +
           copy + " EXCEPT " + live + ")";
}

// An amended return row: amounts as new minus submitted, everything else as
// it is now. A row submitted but since removed comes back with its amounts
// negated, so that the correction takes it out again.
std::string AmendmentRows(const ReturnTable& table, const std::string& employeeView) {
    std::string liveSide;
    std::string removedSide;
    for (const auto& column : table.columns) {
        const std::string name = QuoteName(column.name);
        if (!liveSide.empty()) {
            liveSide += ", ";
            removedSide += ", ";
        }
        if (column.amount) {
            liveSide += "cur." + name + " - COALESCE(sub." + name + ", 0)";
            removedSide += "0 - sub." + name;
        } else {
            liveSide += "cur." + name;
            removedSide += SameIgnoringCase(column.name, "YEYear") ? ":Year" : "sub." + name;
        }
    }
    auto join = [&](const std::string& other, const std::string& self, const std::string& yearParam) {
        std::string on = other + ".YEYear = " + yearParam;
        for (const auto& key : table.matchColumns)
            on += " AND " + other + "." + QuoteName(key) + " = " + self + "." + QuoteName(key);
        return on;
    };
    const std::string source = QuoteName(table.name);
    const std::string people = " IN (SELECT PersonalSysId FROM " + employeeView + ")";
    return "SELECT " + liveSide + " FROM " + source + " cur LEFT JOIN " + source + " sub ON " +
           join("sub", "cur", ":CopyYear") + " WHERE cur.YEYear = :Year" + TypeFilter(table, "cur.") +
           " AND cur.PersonalSysId" + people + " UNION ALL SELECT " + removedSide + " FROM " + source +
           " sub LEFT JOIN " + source + " cur ON " + join("cur", "sub", ":Year") +
           " WHERE sub.YEYear = :CopyYear" + TypeFilter(table, "sub.") + " AND sub.PersonalSysId" + people +
           " AND cur.PersonalSysId IS NULL";
}

// Replaces the rows of one year key by a copy of those of another.
void CopyYearSet(const std::string& alias, const ReturnTable& table, const std::string& fromParam,
                 const std::string& toParam, const Params& params) {
    const std::string where = EmployerRows(table);
    Exec(alias, "DELETE FROM " + QuoteName(table.name) + " WHERE YEYear = " + toParam + where, params);
    Exec(alias,
         "INSERT INTO " + QuoteName(table.name) + " (" + ColumnList(table.columns) + ") SELECT " +
             ColumnsWithYear(table.columns, toParam) + " FROM " + QuoteName(table.name) + " WHERE YEYear = " +
             fromParam + where,
         params);
}

// Replaces the rows of one year key by those of another, which leave their
// key: the rows are moved, not copied and deleted.
void MoveYearSet(const std::string& alias, const ReturnTable& table, const std::string& fromParam,
                 const std::string& toParam, const Params& params) {
    const std::string where = EmployerRows(table);
    Exec(alias, "DELETE FROM " + QuoteName(table.name) + " WHERE YEYear = " + toParam + where, params);
    Exec(alias,
         "UPDATE " + QuoteName(table.name) + " SET YEYear = " + toParam + " WHERE YEYear = " + fromParam + where,
         params);
}

std::string DateTimeText(const DateTime& moment) {
    char text[32];
    std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", moment.date.year, moment.date.month,
                  moment.date.day, moment.hour, moment.minute, moment.second);
    return text;
}

// Makes a transaction that rewrites an employer's submitted copy wait for
// another one doing the same (two users generating for one employer on a
// server): a no-change update locks the employer's row until the first one
// commits, so the second deletes the rows the first inserted instead of
// colliding with them.
void LockEmployer(const std::string& alias, const Params& params) {
    Exec(alias, "UPDATE YEEmployer SET YEEmployerId = YEEmployerId WHERE YEEmployerId = :EmployerId", params);
}

// The year key of a set of rows: the digit followed by the basis year.
std::int64_t YearKey(char digit, int basisYear) {
    return std::stoll(std::string(1, digit) + std::to_string(basisYear));
}

}  // namespace

ReferenceEngine::ReferenceEngine(BQueryViewTable* session, std::string alias,
                                 std::shared_ptr<SubmissionTransport> transport)
    : session_(session), alias_(std::move(alias)), transport_(std::move(transport)) {
    if (!transport_) transport_ = std::make_shared<RecordOnlyTransport>();
    SetFileCheck(nullptr);
}

void ReferenceEngine::SetFileCheck(AisFileCheck check) {
    if (check) {
        fileCheck_ = std::move(check);
    } else {
        fileCheck_ = [](const std::filesystem::path& file, std::optional<AisKind> kind) {
            return CheckAisFile(file, kind);
        };
    }
}

void ReferenceEngine::SetTransport(std::shared_ptr<SubmissionTransport> transport) {
    transport_ = transport ? std::move(transport) : std::make_shared<RecordOnlyTransport>();
}

int ReferenceEngine::Fail(const std::string& message) {
    lastError_ = message;
    log_.push_back(message);
    return 0;
}

int ReferenceEngine::FailDatabase(const std::string& message) {
    Fail(message);
    lastDatabaseFault_ = lastError_;
    return 0;
}

int ReferenceEngine::BasisYear() const { return type_ == "SupIR8A" ? year_ - 1 : year_; }

bool ReferenceEngine::CheckSetUp(const char* call, bool needType) {
    lastError_.clear();
    lastDatabaseFault_.clear();
    std::string missing;
    if (year_ <= 0 || year_ > 9999) missing = "a year-end year (SetYEYear gave " + std::to_string(year_) + ")";
    else if (employerId_.empty()) missing = "an employer (SetYEEmployerId)";
    else if (needType && !TablesOfType(type_))
        missing = "a submission type CurIR8A, SupIR8A, IR8S, A8A or A8B (SetYESubmissionType gave \"" + type_ +
                  "\")";
    if (missing.empty()) return true;
    Fail(std::string(call) + ": the engine needs " + missing + ".");
    return false;
}

int ReferenceEngine::GenerateViewTables() {
    return BuildViews("GenerateViewTables", ignoreChanges_ ? Views::Live : Views::Amendment);
}

int ReferenceEngine::GenerateSubmittedViewTables() { return BuildViews("GenerateSubmittedViewTables", Views::Submitted); }

// Live: every employee's rows as they are now. Amendment: only the people
// whose rows differ from the submitted copy, amounts as corrections.
// Submitted: every employee's submitted rows, under the live year so that
// the return's queries read them as they read the live rows.
int ReferenceEngine::BuildViews(const char* call, Views kind) {
    if (!CheckSetUp(call, true)) return 0;
    const std::string user = session_ ? session_->sGetUserID() : "";
    const std::string address = session_ ? session_->sGetIPAddress() : "";
    const Params params{{"EmployerId", employerId_},
                        {"Year", std::int64_t{year_}},
                        {"CopyYear", YearKey('9', BasisYear())},
                        {"Type", type_}};
    try {
        const auto tables = DescribeReturnTables(alias_, type_);
        const auto employeeColumns = ReadColumns(alias_, "YEEmployee");

        db::Transaction transaction(alias_);
        const std::string employeeView = _GetViewTableName("ViewYEEmployee", address, user);
        CreateLike(alias_, employeeView, employeeColumns);
        std::string selection = "SELECT " + ColumnList(employeeColumns) +
                                " FROM YEEmployee WHERE YEEmployerId = :EmployerId AND YEYear = :Year";
        if (kind == Views::Amendment) {
            // An amendment reports only the people whose return data changed
            // since the last submission; someone never submitted is changed.
            std::string changed;
            for (const auto& table : tables) changed += (changed.empty() ? "" : " UNION ") + ChangedPeople(table);
            selection += " AND PersonalSysId IN (" + changed + ")";
        } else {
            selection += " AND " + HasMainRow(tables.front(), kind == Views::Live ? ":Year" : ":CopyYear");
        }
        Exec(alias_, "INSERT INTO " + employeeView + " (" + ColumnList(employeeColumns) + ") " + selection, params);
        IndexByPerson(alias_, employeeView);

        amountFaults_.clear();
        for (const auto& table : tables) {
            // The amounts are checked as stored, before an Amendment's
            // differences turn a text into a number.
            std::string amounts;
            std::string suspect;
            for (const auto& column : table.columns) {
                if (!column.amount) continue;
                const std::string name = QuoteName(column.name);
                amounts += ", " + name;
                suspect += (suspect.empty() ? "" : " OR ") + name + " IS NULL OR " + name + " <> " + name + " + 0";
            }
            if (!amounts.empty()) {
                // Read a row at a time: an employer's rows held whole
                // would cost more than the rest of the run.
                db::Query rows(alias_);
                rows.SetForwardOnly(true);
                // Only the rows where a column is NULL or holds what is not
                // a number (a text, which "+ 0" reads as another number) are
                // read; each of those is then checked as the jobs read it.
                rows.SetSQL("SELECT PersonalSysId" + amounts + " FROM " + QuoteName(table.name) +
                            " WHERE YEYear = :Year" + TypeFilter(table) + " AND PersonalSysId IN (SELECT PersonalSysId FROM " +
                            employeeView + ") AND (" + suspect + ") ORDER BY PersonalSysId");
                rows.SetParam("Year", std::int64_t{year_});
                if (table.typed) rows.SetParam("Type", type_);
                rows.Open();
                // The columns are found by name once, not on every row.
                const db::Field person = rows.FieldByName("PersonalSysId");
                std::vector<std::pair<std::string, db::Field>> fields;
                for (const auto& column : table.columns)
                    if (column.amount) fields.emplace_back(column.name, rows.FieldByName(column.name));
                for (rows.First(); !rows.IsEmpty() && !rows.Eof(); rows.Next()) {
                    for (const auto& [name, field] : fields) {
                        if (field.AsNumber()) continue;
                        amountFaults_.push_back({person.AsInteger(), name, field.AsString(), field.IsNull()});
                    }
                }
            }
            const std::string view = _GetViewTableName("View" + table.name, address, user);
            CreateLike(alias_, view, table.columns);
            const std::string people = " AND PersonalSysId IN (SELECT PersonalSysId FROM " + employeeView + ")";
            std::string rows;
            switch (kind) {
                case Views::Live:
                    rows = "SELECT " + ColumnList(table.columns) + " FROM " + QuoteName(table.name) +
                           " WHERE YEYear = :Year" + TypeFilter(table) + people;
                    break;
                case Views::Submitted:
                    rows = "SELECT " + ColumnsWithYear(table.columns, ":Year") + " FROM " + QuoteName(table.name) +
                           " WHERE YEYear = :CopyYear" + TypeFilter(table) + people;
                    break;
                case Views::Amendment: rows = AmendmentRows(table, employeeView); break;
            }
            Exec(alias_, "INSERT INTO " + view + " (" + ColumnList(table.columns) + ") " + rows, params);
            IndexByPerson(alias_, view, table.matchColumns);
        }
        transaction.Commit();
    } catch (const db::DatabaseError& error) {
        return FailDatabase("GenerateViewTables: the view tables of " + type_ + " " +
                            ForEmployerAndYear(employerId_, year_) + " could not be made: " + error.what());
    } catch (const std::exception& error) {
        return Fail(std::string(call) + ": the view tables of " + type_ + " " +
                    ForEmployerAndYear(employerId_, year_) + " could not be made: " + error.what());
    }
    const char* what = kind == Views::Live ? " (original)." : kind == Views::Amendment ? " (amendment)." : " (as submitted).";
    log_.push_back("View tables of " + type_ + " generated " + ForEmployerAndYear(employerId_, year_) + what);
    return 1;
}

int ReferenceEngine::ExecuteDirectSubmit(const std::string& file, const std::string& formType,
                                         int validateOnly) {
    hasErrors_ = false;
    hasWarnings_ = false;
    lastError_.clear();
    lastDatabaseFault_.clear();
    submissionRecord_.clear();
    const std::filesystem::path path = std::filesystem::path(file).is_absolute() || reportPath_.empty()
                                           ? std::filesystem::path(file)
                                           : std::filesystem::path(reportPath_) / file;
    const DateTime now = Now();
    submissionRecord_.push_back("Date and Time: " + now.ToLogText());
    submissionRecord_.push_back("File: " + path.string());
    submissionRecord_.push_back("Form Type: " + formType);
    submissionRecord_.push_back(validateOnly ? "Mode: Validate only" : "Mode: Submit");

    AisCheckResult check;
    try {
        check = fileCheck_(path, KindOfFormType(formType));
    } catch (const std::exception& error) {
        check.findings.push_back({0, 0, "the file could not be checked: " + std::string(error.what()), false});
    }
    hasErrors_ = check.HasErrors();
    hasWarnings_ = check.HasWarnings();
    const auto described = check.Describe();
    int errors = 0;
    int warnings = 0;
    std::string firstError;
    for (std::size_t i = 0; i < described.size(); ++i) {
        const bool warning = i < check.findings.size() && check.findings[i].warning;
        (warning ? warnings : errors) += check.findings[i].count;
        if (!warning && firstError.empty()) firstError = described[i];
        submissionRecord_.push_back(described[i]);
        log_.push_back(described[i]);
    }
    submissionRecord_.push_back("Detail records: " + std::to_string(check.detailRecords));

    if (hasErrors_) {
        submissionRecord_.push_back("Result: rejected with " + std::to_string(errors) + " error(s) and " +
                                    std::to_string(warnings) + " warning(s).");
        lastError_ = "ExecuteDirectSubmit: " + path.filename().string() + " has " + std::to_string(errors) +
                     " error(s); first: " + firstError;
        return 0;
    }
    if (validateOnly) {
        submissionRecord_.push_back("Result: valid" +
                                    (warnings ? " with " + std::to_string(warnings) + " warning(s)." : "."));
        return 1;
    }

    SubmittedFile record;
    record.fileName = path.filename().string();
    record.formType = formType;
    record.submissionType = type_;
    record.employerId = employerId_;
    record.year = year_;
    record.userIdType = submitUserIdType_;
    record.userId = submitUserId_;
    record.submittedAt = DateTimeText(now);
    std::error_code sizeError;
    const auto size = std::filesystem::file_size(path, sizeError);
    record.sizeBytes = sizeError ? 0 : static_cast<long long>(size);
    record.recordCount = check.detailRecords;

    // A return must never reach IRAS twice. The intent is recorded before
    // the file is handed over (an empty DeliveryReference) and marked with
    // the reference after; a row still without one is a delivery nobody
    // recorded, and it blocks the next submission of that return.
    const std::string subject = type_ + " " + ForEmployerAndYear(employerId_, year_);
    std::int64_t intent = 0;
    const Params ofReturn{{"EmployerId", employerId_}, {"Year", std::int64_t{year_}}, {"Type", type_}};
    const std::string undelivered =
        " FROM SubmittedReturnFile WHERE YEEmployerId = :EmployerId AND YEYear = :Year AND SubmissionType = :Type "
        "AND DeliveryReference = ''";
    try {
        db::Query pending(alias_);
        Bind(pending, "SELECT SubmittedReturnFileId, FileName, SubmittedDateTime" + undelivered +
                          " ORDER BY SubmittedReturnFileId",
             ofReturn);
        pending.Open();
        if (!pending.IsEmpty()) {
            const std::string id = pending.FieldByName("SubmittedReturnFileId").AsString();
            hasErrors_ = true;
            submissionRecord_.push_back("Result: not submitted; an earlier delivery is not recorded.");
            return FailDatabase(
                "ExecuteDirectSubmit: nothing was submitted. The submission of " + subject + " made on " +
                pending.FieldByName("SubmittedDateTime").AsString() + " (file " +
                pending.FieldByName("FileName").AsString() + ", SubmittedReturnFileId " + id +
                ") was handed over for delivery, but its delivery was never recorded, so it may have reached "
                "IRAS. Record that delivery first with its delivery reference: UPDATE SubmittedReturnFile SET "
                "DeliveryReference = '<reference>' WHERE SubmittedReturnFileId = " + id +
                "; or, if IRAS never received it, remove the row: DELETE FROM SubmittedReturnFile WHERE "
                "SubmittedReturnFileId = " + id + ".");
        }
        pending.Close();
        db::Query insert(alias_);
        insert.SetSQL(
            "INSERT INTO SubmittedReturnFile (FileName, FormType, SubmissionType, YEEmployerId, YEYear, "
            "SubmitUserIdType, SubmitUserId, SessionUserId, SubmittedDateTime, FileSize, DetailRecordCount, "
            "DeliveryReference) VALUES (:FileName, :FormType, :SubmissionType, :EmployerId, :Year, "
            ":UserIdType, :UserId, :SessionUserId, :SubmittedAt, :FileSize, :RecordCount, '')");
        insert.SetParam("FileName", record.fileName);
        insert.SetParam("FormType", record.formType);
        insert.SetParam("SubmissionType", record.submissionType);
        insert.SetParam("EmployerId", record.employerId);
        insert.SetParam("Year", std::int64_t{record.year});
        insert.SetParam("UserIdType", record.userIdType);
        insert.SetParam("UserId", record.userId);
        insert.SetParam("SessionUserId", session_ ? session_->sGetUserID() : std::string());
        insert.SetParam("SubmittedAt", record.submittedAt);
        insert.SetParam("FileSize", std::int64_t{record.sizeBytes});
        insert.SetParam("RecordCount", std::int64_t{record.recordCount});
        insert.ExecSQL();
        db::Query last(alias_);
        Bind(last, "SELECT MAX(SubmittedReturnFileId) AS Id" + undelivered, ofReturn);
        last.Open();
        intent = last.FieldByName("Id").AsInteger();
    } catch (const std::exception& error) {
        hasErrors_ = true;
        submissionRecord_.push_back("Result: not submitted; the submission could not be recorded beforehand.");
        return FailDatabase("ExecuteDirectSubmit: nothing was submitted: the submission of " + subject +
                            " could not be recorded before delivery: " + error.what());
    }
    const auto forget = [this, intent] {
        try {
            db::Query remove(alias_);
            remove.SetSQL("DELETE FROM SubmittedReturnFile WHERE SubmittedReturnFileId = :Id");
            remove.SetParam("Id", intent);
            remove.ExecSQL();
        } catch (const std::exception& error) {
            log_.push_back("ExecuteDirectSubmit: the record of the undelivered file could not be removed: " +
                           std::string(error.what()));
        }
    };

    DeliveryResult delivery;
    try {
        delivery = transport_->Deliver(record, path);
    } catch (const std::exception& error) {
        delivery = {false, "", error.what()};
    }
    if (!delivery.message.empty()) submissionRecord_.push_back(delivery.message);
    if (!delivery.accepted) {
        forget();
        hasErrors_ = true;
        submissionRecord_.push_back("Result: not submitted.");
        return Fail("ExecuteDirectSubmit: " + record.fileName + " was not delivered: " + delivery.message);
    }
    if (delivery.reference.empty()) delivery.reference = "(no reference given)";
    try {
        db::Query mark(alias_);
        mark.SetSQL("UPDATE SubmittedReturnFile SET DeliveryReference = :Reference WHERE SubmittedReturnFileId = :Id");
        mark.SetParam("Reference", delivery.reference);
        mark.SetParam("Id", intent);
        mark.ExecSQL();
    } catch (const std::exception& error) {
        hasErrors_ = true;
        submissionRecord_.push_back("Result: delivered as " + delivery.reference +
                                    " but not recorded in the database.");
        return FailDatabase("ExecuteDirectSubmit: " + record.fileName + " was delivered with the delivery reference " +
                            delivery.reference + ", but the delivery could not be recorded: " + error.what() +
                            ". Do not submit it again: record the delivery first with UPDATE SubmittedReturnFile SET "
                            "DeliveryReference = '" + delivery.reference +
                            "' WHERE SubmittedReturnFileId = " + std::to_string(intent) + ".");
    }
    submissionRecord_.push_back("Result: submitted" +
                                (warnings ? " with " + std::to_string(warnings) + " warning(s)" : std::string()) +
                                ", reference " + delivery.reference + ".");
    return 1;
}

void ReferenceEngine::DirectSubmitAppendLog(LogSink* memo, const std::string& name) {
    StringList lines = submissionRecord_;
    if (lines.empty()) lines.push_back("No file has been checked or submitted by this engine.");
    if (memo)
        for (const auto& line : lines) memo->Append(line);
    if (name.empty()) return;
    const std::filesystem::path path =
        reportPath_.empty() ? std::filesystem::path(name) : std::filesystem::path(reportPath_) / name;
    std::ofstream out(path, std::ios::app);
    for (const auto& line : lines) out << line << '\n';
    out.flush();
    if (!out) Fail("DirectSubmitAppendLog: the log could not be written to " + path.string() + ".");
}

int ReferenceEngine::SubmitRecords(bool original, bool allRun) {
    if (!CheckSetUp("SubmitRecords", true)) return 0;
    const DateTime now = Now();
    const std::string user = !submitUserId_.empty() ? submitUserId_ : session_ ? session_->sGetUserID() : "";
    const Params params{{"EmployerId", employerId_},
                        {"Year", std::int64_t{year_}},
                        {"CopyYear", YearKey('9', BasisYear())},
                        {"BackupYear", YearKey('8', BasisYear())},
                        {"Type", type_},
                        {"Now", DateTimeText(now)},
                        {"UserId", user},
                        {"IsOriginal", std::int64_t{original ? 1 : 0}}};
    try {
        const auto tables = DescribeReturnTables(alias_, type_);

        db::Transaction transaction(alias_);
        LockEmployer(alias_, params);
        // What was submitted before becomes the reset point, then the live
        // data become the submitted copy.
        for (const auto& table : tables) {
            MoveYearSet(alias_, table, ":CopyYear", ":BackupYear", params);
            CopyYearSet(alias_, table, ":Year", ":CopyYear", params);
        }
        Exec(alias_,
             "DELETE FROM LastSubmissionBackup WHERE YEEmployerId = :EmployerId AND SubmissionType = :Type "
             "AND YEYear = :Year",
             params);
        Exec(alias_,
             "INSERT INTO LastSubmissionBackup (YEEmployerId, SubmissionType, YEYear, SavedDateTime, "
             "HadLastSubmission, IsOriginal, SubmitUserId, LastSubmissionDateTime, LastYEYear) "
             "SELECT :EmployerId, :Type, :Year, :Now, COUNT(*), MAX(IsOriginal), MAX(SubmitUserId), "
             "MAX(LastSubmissionDateTime), MAX(YEYear) FROM LastSubmission "
             "WHERE YEEmployerId = :EmployerId AND SubmissionType = :Type",
             params);
        std::vector<std::string> types{type_};
        if (allRun) types.push_back("All");
        for (const auto& type : types) {
            Params row = params;
            row["Type"] = type;
            Exec(alias_, "DELETE FROM LastSubmission WHERE YEEmployerId = :EmployerId AND SubmissionType = :Type",
                 row);
            Exec(alias_,
                 "INSERT INTO LastSubmission (YEEmployerId, SubmissionType, IsOriginal, SubmitUserId, "
                 "LastSubmissionDateTime, YEYear) VALUES (:EmployerId, :Type, :IsOriginal, :UserId, :Now, :Year)",
                 row);
        }
        transaction.Commit();
    } catch (const db::DatabaseError& error) {
        return FailDatabase("SubmitRecords: the submission of " + type_ + " " + ForEmployerAndYear(employerId_, year_) +
                            " could not be recorded: " + error.what());
    } catch (const std::exception& error) {
        return Fail("SubmitRecords: the submission of " + type_ + " " + ForEmployerAndYear(employerId_, year_) +
                    " could not be recorded: " + error.what());
    }
    log_.push_back("Submission of " + type_ + " recorded " + ForEmployerAndYear(employerId_, year_) + ".");
    return 1;
}

int ReferenceEngine::CopyRecords(int from, int to) {
    if (from != 8 || to != 9)
        return Fail("CopyRecords(" + std::to_string(from) + ", " + std::to_string(to) +
                    "): only 8 to 9 (undo the last submission) is known.");
    if (!CheckSetUp("CopyRecords", true)) return 0;
    const Params params{{"EmployerId", employerId_},
                        {"Year", std::int64_t{year_}},
                        {"CopyYear", YearKey('9', BasisYear())},
                        {"BackupYear", YearKey('8', BasisYear())},
                        {"Type", type_}};
    try {
        db::Query point(alias_);
        point.SetSQL(
            "SELECT HadLastSubmission, IsOriginal, SubmitUserId, LastSubmissionDateTime, LastYEYear "
            "FROM LastSubmissionBackup WHERE YEEmployerId = :EmployerId AND SubmissionType = :Type "
            "AND YEYear = :Year");
        point.SetParam("EmployerId", employerId_);
        point.SetParam("Type", type_);
        point.SetParam("Year", std::int64_t{year_});
        point.Open();
        if (point.IsEmpty())
            return Fail("CopyRecords: there is no submission of " + type_ + " " +
                        ForEmployerAndYear(employerId_, year_) + " to reset.");
        const bool hadRow = point.FieldByName("HadLastSubmission").AsInteger() > 0;
        Params previous = params;
        previous["IsOriginal"] = point.FieldByName("IsOriginal").AsInteger();
        previous["UserId"] = point.FieldByName("SubmitUserId").AsString();
        previous["When"] = point.FieldByName("LastSubmissionDateTime").AsString();
        previous["LastYear"] = point.FieldByName("LastYEYear").AsInteger();
        point.Close();

        const auto tables = DescribeReturnTables(alias_, type_);

        db::Transaction transaction(alias_);
        LockEmployer(alias_, params);
        for (const auto& table : tables) CopyYearSet(alias_, table, ":BackupYear", ":CopyYear", params);
        // The LastSubmission row goes back only when it still is the one this
        // submission wrote: a later submission of another year stands.
        Exec(alias_,
             "DELETE FROM LastSubmission WHERE YEEmployerId = :EmployerId AND SubmissionType = :Type "
             "AND YEYear = :Year",
             params);
        if (hadRow)
            Exec(alias_,
                 "INSERT INTO LastSubmission (YEEmployerId, SubmissionType, IsOriginal, SubmitUserId, "
                 "LastSubmissionDateTime, YEYear) SELECT :EmployerId, :Type, :IsOriginal, :UserId, :When, :LastYear "
                 "WHERE NOT EXISTS (SELECT 1 FROM LastSubmission WHERE YEEmployerId = :EmployerId "
                 "AND SubmissionType = :Type)",
                 previous);
        transaction.Commit();
    } catch (const std::exception& error) {
        return Fail("CopyRecords: the last submission of " + type_ + " " + ForEmployerAndYear(employerId_, year_) +
                    " could not be reset: " + error.what());
    }
    log_.push_back("Last submission of " + type_ + " reset " + ForEmployerAndYear(employerId_, year_) + ".");
    return 1;
}

}  // namespace iras
