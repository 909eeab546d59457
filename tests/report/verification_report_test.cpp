// The verification report on the sample payroll with the reference engine:
// an Original is submitted, then two employees change (one amount up, one
// down), one is added and one removed, in the current IR8A and in Appendix
// 8A; in IR8S one month's wages change. The report's rows and totals are checked against values worked out by
// hand from the sample rows, and against the Amendment file made from the
// same data, decoded with the AIS checker's own copy of the layouts.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <sstream>

#include "apps/run/JobFactory.h"
#include "apps/run/YearEndTool.h"
#include "platform/ais/AisFields.h"
#include "platform/ais/AisRecordLayout.h"
#include "platform/common/Date.h"
#include "platform/common/Text.h"
#include "submission/common/AmendmentReport.h"
#include "submission/common/RYESubmissionJob.h"
#include "tests/support/ReturnTestSupport.h"

namespace iras::testing {
namespace {

DateTime ReportClock() { return DateTime{Date{2025, 3, 3}, 10, 0, 0}; }

// The employer's rows moved in and out around the submission.
struct Scenario {
    FileType type;
    AisKind kind;
    std::string setAside;  // SQL before the Original: the employee to be added later leaves
    std::string changes;   // SQL after it was submitted
};

const std::string kIR8ARow = "FROM IR8A WHERE YEYear = 2024 AND IR8AType = 'CurIR8A' AND PersonalSysId = ";
const std::string kA8ARow = "FROM A8A WHERE YEYear = 2024 AND PersonalSysId = ";

// IR8A: Chen Xiaoling's salary rises 60000 -> 61500, Tan Boon Huat's CPF
// falls 18320 -> 17320, Nur Aisyah binte Rahman (1002) is added, Wong Kah
// Mun (1008) removed.
const Scenario kIR8A{FileType::CurrentIR8A, AisKind::IR8A,
                     "CREATE TABLE KeptIR8A AS SELECT * " + kIR8ARow + "1002; DELETE " + kIR8ARow + "1002;",
                     "UPDATE IR8A SET GrossTotal = 61500 WHERE YEYear = 2024 AND IR8AType = 'CurIR8A' AND "
                     "PersonalSysId = 1004; UPDATE IR8A SET EECPFPension = 17320 WHERE YEYear = 2024 AND "
                     "IR8AType = 'CurIR8A' AND PersonalSysId = 1006; INSERT INTO IR8A SELECT * FROM KeptIR8A; "
                     "DELETE " + kIR8ARow + "1008;"};

// Appendix 8A: Lim Wei Jie's education rises 3000 -> 3500 (total 5400 ->
// 5900), Tan Boon Huat's clubs fall 3600 -> 3000 (total 13450 -> 12850),
// Fong Pei Shan (1106) is added, Xu Mingjie (1124) removed.
const Scenario kA8A{FileType::Appendix8A, AisKind::A8A,
                    "CREATE TABLE KeptA8A AS SELECT * " + kA8ARow + "1106; DELETE " + kA8ARow + "1106;",
                    "UPDATE A8A SET Education = 3500, TotalBenefitInKind = 5900 WHERE YEYear = 2024 AND "
                    "PersonalSysId = 1001; UPDATE A8A SET Clubs = 3000, TotalBenefitInKind = 12850 WHERE "
                    "YEYear = 2024 AND PersonalSysId = 1006; INSERT INTO A8A SELECT * FROM KeptA8A; "
                    "DELETE " + kA8ARow + "1124;"};

// IR8S: Lim Wei Jie's December ordinary wages rise by 500 (7000.04 ->
// 7500.04, the year's 84000.48 -> 84500.48).
const Scenario kIR8S{FileType::IR8S, AisKind::IR8S, "SELECT 1;",
                     "UPDATE IR8SA SET OrdWages = OrdWages + 500 WHERE YEYear = 2024 AND PersonalSysId = 1001 "
                     "AND IR8SMonth IN ('Dec', 'Total');"};

class VerificationReport : public ::testing::Test {
protected:
    void SetUp() override {
        SetClockForTesting(&ReportClock);
        OpenPayroll(folder.Path() / "pay.db", true);
        std::filesystem::create_directories(folder.Path() / "run");
    }
    void TearDown() override {
        SetClockForTesting(nullptr);
        db::ConnectionRegistry::Unregister("kovadb");
    }
    static void Sql(const std::string& text) { db::ExecScript("kovadb", text); }

    std::unique_ptr<RSubmissionJob> Job(FileType type, bool original, bool actualRun) {
        JobSetup setup;
        setup.session = &session;
        setup.params = IRASSubmissionParameters{2, "IR8AYA2025", 2024, original, true, original, actualRun,
                                                false, "", ""};
        setup.runFolder = (folder.Path() / "run").string();
        setup.basisYear = 2024;
        auto job = factory.Create(type, setup);
        job->SetLogMemo(&log);
        job->SetInternalMemo(&debug);
        job->SetEmployeeErrorLog(&employeeErrors);
        return job;
    }

    // An actual Original: made and recorded as submitted.
    void Submit(FileType type) {
        auto job = Job(type, true, true);
        ASSERT_NE(job->ValidateFile(), 0) << ::testing::PrintToString(employeeErrors);
        ASSERT_NE(job->ProcessFile(), 0) << ::testing::PrintToString(log.View());
    }

    // A trial Amendment: the file an Amendment would send, nothing recorded.
    std::vector<std::string> AmendmentFile(FileType type) {
        auto job = Job(type, false, false);
        EXPECT_NE(job->ValidateFile(), 0);
        EXPECT_NE(job->ProcessFile(), 0) << ::testing::PrintToString(log.View());
        auto* base = dynamic_cast<RYESubmissionJob*>(job.get());
        return Records(ReadBytes(base->GetOutputFilePath()));
    }

    ReturnAmendment Report(FileType type) {
        return BuildReturnAmendment(FileTypeText(type), [&] { return Job(type, false, false); });
    }

    void Amend(const Scenario& scenario) {
        Sql(scenario.setAside);
        Submit(scenario.type);
        Sql(scenario.changes);
    }

    ScratchFolder folder{"verification-report"};
    BQueryViewTable session{SessionSettings{"ADMIN", "127.0.0.1", 2024}};
    ReturnJobFactory factory;
    MemoryLog log, debug;
    StringList employeeErrors;
};

// One row of the report as the test writes it: amounts in cents.
std::string Row(const std::string& id, const std::string& change, const std::string& field, long long submitted,
                long long now, long long difference) {
    return id + " " + change + " " + field + ": " + std::to_string(submitted) + " " + std::to_string(now) + " " +
           std::to_string(difference);
}

long long InCents(long long units, int decimals) { return decimals == 2 ? units : units * 100; }

std::vector<std::string> RowsOf(const ReturnAmendment& part) {
    std::vector<std::string> rows;
    for (const auto& employee : part.employees) {
        const std::string change = employee.change == EmployeeChange::Added     ? "added"
                                   : employee.change == EmployeeChange::Removed ? "removed"
                                                                                : "changed";
        for (const auto& field : employee.fields)
            rows.push_back(Row(employee.idNo, change, field.caption, InCents(field.submitted, field.decimals),
                               InCents(field.now, field.decimals), InCents(field.difference, field.decimals)));
    }
    return rows;
}

std::map<std::string, long long> NonZeroTotals(const ReturnAmendment& part) {
    std::map<std::string, long long> totals;
    for (const auto& total : part.totals)
        if (total.difference != 0) totals[total.caption] = InCents(total.difference, total.decimals);
    return totals;
}

TEST_F(VerificationReport, RowsAndTotalsAsWorkedOutByHand) {
    struct Case {
        const Scenario* scenario;
        std::vector<std::string> rows;  // in the Amendment's order: by name, fields in record order
        std::map<std::string, long long> totals;
        std::string summary = "4 employees in the Amendment: 2 changed, 1 added, 1 removed.";
    };
    const std::vector<Case> cases{
        {&kIR8A,
         {
             // Chen Xiaoling: total income 60000 + 5000 bonus + 31800 benefits
             // in kind (others) = 96800, now 98300.
             Row("S8856781A", "changed", "Total income", 9680000, 9830000, 150000),
             Row("S8856781A", "changed", "Gross salary", 6000000, 6150000, 150000),
             // Nur Aisyah: 42000 + 3500 + transport 1200 = 46700; the donation
             // of 10.01 goes in rounded up to 11 dollars.
             Row("T0123456G", "added", "Total income", 0, 4670000, 4670000),
             Row("T0123456G", "added", "Mosque Building Fund", 0, 6000, 6000),
             Row("T0123456G", "added", "Donations", 0, 1100, 1100),
             Row("T0123456G", "added", "Employee's CPF/pension", 0, 910000, 910000),
             Row("T0123456G", "added", "Gross salary", 0, 4200000, 4200000),
             Row("T0123456G", "added", "Bonus", 0, 350000, 350000),
             Row("T0123456G", "added", "Others", 0, 120000, 120000),
             Row("T0123456G", "added", "Transport allowance", 0, 120000, 120000),
             Row("S6912345G", "changed", "Employee's CPF/pension", 1832000, 1732000, -100000),
             // Wong Kah Mun: 67500 + gratuity 5000 (others) = 72500; her
             // compensation for loss of office is not income of the year.
             Row("S7876543G", "removed", "Total income", 7250000, 0, -7250000),
             Row("S7876543G", "removed", "Employee's CPF/pension", 1224000, 0, -1224000),
             Row("S7876543G", "removed", "Gross salary", 6750000, 0, -6750000),
             Row("S7876543G", "removed", "Others", 500000, 0, -500000),
             Row("S7876543G", "removed", "Gratuity", 500000, 0, -500000),
             Row("S7876543G", "removed", "Compensation for loss of office", 2000000, 0, -2000000),
         },
         {{"Total income", 150000 + 4670000 - 7250000},
          {"Mosque Building Fund", 6000},
          {"Donations", 1100},
          {"Employee's CPF/pension", 910000 - 100000 - 1224000},
          {"Gross salary", 150000 + 4200000 - 6750000},
          {"Bonus", 350000},
          {"Others", 120000 - 500000},
          {"Transport allowance", 120000},
          {"Gratuity", -500000},
          {"Compensation for loss of office", -2000000}}},
        {&kA8A,
         {
             Row("S8817602B", "added", "Holidays", 0, 150000, 150000),
             Row("S8817602B", "added", "Clubs", 0, 60000, 60000),
             Row("S8817602B", "added", "Total benefits in kind", 0, 210000, 210000),
             Row("S8012345J", "changed", "Education", 300000, 350000, 50000),
             Row("S8012345J", "changed", "Total benefits in kind", 540000, 590000, 50000),
             Row("S6912345G", "changed", "Clubs", 360000, 300000, -60000),
             Row("S6912345G", "changed", "Total benefits in kind", 1345000, 1285000, -60000),
             Row("S7384830Z", "removed", "Holidays", 150000, 0, -150000),
             Row("S7384830Z", "removed", "Clubs", 60000, 0, -60000),
             Row("S7384830Z", "removed", "Total benefits in kind", 210000, 0, -210000),
         },
         // Holidays: +1500 - 1500 nets to nothing.
         {{"Education", 50000}, {"Clubs", 60000 - 60000 - 60000}, {"Total benefits in kind", 50000 - 60000}}},
        // The month in cents; the year's total in dollars, 84000.48 and
        // 84500.48 cut to 84000 and 84500.
        {&kIR8S,
         {Row("S8012345J", "changed", "Section A December ordinary wages", 700004, 750004, 50000),
          Row("S8012345J", "changed", "Section A total ordinary wages", 8400000, 8450000, 50000)},
         {{"Section A December ordinary wages", 50000}, {"Section A total ordinary wages", 50000}},
         "1 employee in the Amendment: 1 changed, 0 added, 0 removed."},
    };
    for (const Case& c : cases) {
        Amend(*c.scenario);
        const ReturnAmendment part = Report(c.scenario->type);
        SCOPED_TRACE(part.title);
        ASSERT_TRUE(part.Listed()) << part.Summary();
        EXPECT_EQ(RowsOf(part), c.rows);
        EXPECT_EQ(NonZeroTotals(part), c.totals);
        EXPECT_EQ(part.Summary(), c.summary);
    }
}

// Every difference the report shows is the one the Amendment file carries,
// read at the position the AIS checker's own layout gives that field; no
// amount of the file is left out of the report; and the report's totals are
// the file's trailer totals where it has a trailer.
TEST_F(VerificationReport, AgreesWithTheAmendmentFileFieldByField) {
    for (const Scenario* scenario : {&kIR8A, &kA8A, &kIR8S}) {
        Amend(*scenario);
        const ReturnAmendment part = Report(scenario->type);
        ASSERT_TRUE(part.Listed()) << part.Summary();
        const auto file = AmendmentFile(scenario->type);
        const auto fields = Job(scenario->type, false, false)->AmendmentFields();
        SCOPED_TRACE(part.title);

        std::map<std::string, int> columnOf;  // caption -> start
        for (const auto& field : fields) columnOf[field.caption] = field.field.start;
        std::map<std::string, const EmployeeAmendment*> byId;
        for (const auto& employee : part.employees) byId[employee.idNo] = &employee;

        std::map<int, long long> detailSums;  // AIS column -> sum
        std::size_t details = 0;
        for (const auto& record : file) {
            if (record[0] != '1') continue;
            ++details;
            const std::string id = TrimSpace(record.substr(2, 12));
            ASSERT_EQ(byId.count(id), 1u) << id << " is in the file but not in the report";
            std::map<int, long long> reported;  // column -> difference
            for (const auto& field : byId[id]->fields) reported[columnOf.at(field.caption)] = field.difference;
            for (const AisField& ais : StandardDetailFields(scenario->kind)) {
                if (ais.form != AisFieldForm::Amount) continue;
                const auto value = ParseAisUnits(record.substr(ais.column - 1, ais.width));
                ASSERT_TRUE(value) << id << " " << ais.name;
                detailSums[ais.column] += *value;
                const auto shown = reported.find(ais.column);
                EXPECT_EQ(shown == reported.end() ? 0 : shown->second, *value) << id << " " << ais.name;
                if (shown != reported.end()) reported.erase(shown);
            }
            EXPECT_TRUE(reported.empty()) << id << ": the report shows a field the checker knows no amount at";
        }
        EXPECT_EQ(details, part.employees.size());

        for (const auto& total : part.totals) EXPECT_EQ(detailSums[columnOf.at(total.caption)], total.difference);
        if (!FactsOf(scenario->kind).hasTrailer) continue;
        const std::string& trailer = file.back();
        int checked = 0;
        for (const AisField& sum : TrailerFields(scenario->kind)) {
            for (const AisField& detail : StandardDetailFields(scenario->kind)) {
                if (detail.total != sum.total) continue;
                const auto reported = std::find_if(part.totals.begin(), part.totals.end(), [&](const FieldTotal& t) {
                    return columnOf.at(t.caption) == detail.column;
                });
                ASSERT_NE(reported, part.totals.end()) << detail.name;
                EXPECT_EQ(ParseAisUnits(trailer.substr(sum.column - 1, sum.width)).value_or(-1), reported->difference)
                    << sum.name;
                ++checked;
            }
        }
        EXPECT_EQ(checked, 12);  // the twelve IR8A trailer totals
    }
}

TEST_F(VerificationReport, NothingSubmittedOrNothingChangedIsOneLine) {
    struct Case {
        bool submit;
        std::string line;
        std::string csvField;  // quoted when it holds a comma
    };
    const std::vector<Case> cases{
        {false, "Nothing of the Appendix 8A return has been submitted yet, so there is nothing to amend.",
         "\"Nothing of the Appendix 8A return has been submitted yet, so there is nothing to amend.\""},
        {true, "Nothing in the Appendix 8A return has changed since it was last submitted.",
         "Nothing in the Appendix 8A return has changed since it was last submitted."},
    };
    for (const Case& c : cases) {
        if (c.submit) Submit(FileType::Appendix8A);
        const ReturnAmendment part = Report(FileType::Appendix8A);
        EXPECT_FALSE(part.Listed());
        EXPECT_EQ(part.Summary(), c.line);
        EXPECT_NE(ReportHtml({"IR8AYA2025", 2024, "", {part}}).find("<p class=\"none\">" + c.line + "</p>"),
                  std::string::npos);
        EXPECT_NE(ReportCsv({"IR8AYA2025", 2024, "", {part}}).find("Appendix 8A,,,," + c.csvField + ",,,\r\n"),
                  std::string::npos);
    }
}

// A name reaches the page and the spreadsheet as typed: markup is escaped,
// a comma or a quote is quoted; amounts keep their sign and cents.
TEST(VerificationReportFiles, TextsAreEscapedAndAmountsFormatted) {
    ReturnAmendment part;
    part.title = "Current IR8A";
    part.built = part.submittedBefore = true;
    part.employees.push_back({"S1234567D", "O'Neil <Sean>, \"Jr\" & co", EmployeeChange::Changed,
                              {{"Gratuity", 2, 123456, 3456, -120000}, {"Bonus", 0, 0, 1234567, 1234567}}});
    part.totals = {{"Gratuity", 2, -120000}, {"Bonus", 0, 1234567}};
    const AmendmentReport report{"ER&1", 2024, "03/03/2025 10:00:00", {part}};

    const std::string html = ReportHtml(report);
    for (const char* expected :
         {"<h1>Verification report: employer ER&amp;1, basis year 2024</h1>",
          "<td>O&#39;Neil &lt;Sean&gt;, &quot;Jr&quot; &amp; co</td>",
          "<td class=\"money\" data-sort=\"1234.56\">1,234.56</td>",
          "<td class=\"money negative\" data-sort=\"-1200.00\">-1,200.00</td>",
          "<td class=\"money\" data-sort=\"1234567\">1,234,567.00</td>", "@media print"}) {
        EXPECT_NE(html.find(expected), std::string::npos) << expected;
    }
    EXPECT_EQ(html.find("src="), std::string::npos);  // nothing from outside
    EXPECT_EQ(html.find("href="), std::string::npos);

    EXPECT_EQ(ReportCsv(report),
              "Return,ID number,Name,Change,Field,Last submitted,Now,Difference\r\n"
              "Current IR8A,S1234567D,\"O'Neil <Sean>, \"\"Jr\"\" & co\",Changed,Gratuity,1234.56,34.56,-1200.00\r\n"
              "Current IR8A,S1234567D,\"O'Neil <Sean>, \"\"Jr\"\" & co\",Changed,Bonus,0.00,1234567.00,1234567.00\r\n"
              "Current IR8A,,,Total,Gratuity,,,-1200.00\r\n"
              "Current IR8A,,,Total,Bonus,,,1234567.00\r\n");
}

// verify-report writes both files into a run folder and prints the page's path.
TEST_F(VerificationReport, CommandWritesBothFilesAndPrintsThePath) {
    Amend(kA8A);
    db::ConnectionRegistry::Unregister("kovadb");
    std::ostringstream out, err;
    std::istringstream in;
    const int status = RunYearEndTool({"verify-report", "--db", (folder.Path() / "pay.db").string(), "--user",
                                       "ADMIN", "--employer", "IR8AYA2025", "--year", "2024", "--type", "a8a",
                                       "--report-dir", (folder.Path() / "report").string()},
                                      ToolStreams{out, err, in});
    ASSERT_EQ(status, 0) << err.str();
    std::string last, line;
    for (std::istringstream lines(out.str()); std::getline(lines, line);) last = line;
    EXPECT_EQ(std::filesystem::path(last).filename(), "IRASVerificationReport.html");
    EXPECT_NE(ReadBytes(last).find("S7384830Z"), std::string::npos);
    EXPECT_NE(ReadBytes(std::filesystem::path(last).replace_extension(".csv")).find("Appendix 8A,S8817602B"),
              std::string::npos);
    EXPECT_NE(out.str().find("Appendix 8A: 4 employees in the Amendment: 2 changed, 1 added, 1 removed."),
              std::string::npos);
    // The command asks nothing and sends nothing: the next report is the same.
    db::ConnectionRegistry::Register("kovadb", {"sqlite", (folder.Path() / "pay.db").string(), false});
    EXPECT_EQ(RowsOf(Report(FileType::Appendix8A)).size(), 10u);
}

}  // namespace
}  // namespace iras::testing
