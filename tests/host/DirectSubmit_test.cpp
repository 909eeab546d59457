// Direct submission through the reference engine: a faulty file is refused
// with the line named, a good one is recorded (and only when actually
// submitted), and the engine's record reaches both the memo and the log file.
#include <gtest/gtest.h>

#include <algorithm>

#include "platform/common/Date.h"
#include "platform/host/BQueryViewTable.h"
#include "platform/host/ReferenceEngine.h"
#include "tests/host/HostTestDatabase.h"

namespace iras {
namespace {

// A record of the given width with texts placed at 1-based positions.
std::string Record(std::size_t width, const std::vector<std::pair<std::size_t, std::string>>& fields) {
    std::string record(width, ' ');
    for (const auto& [position, text] : fields) record.replace(position - 1, text.size(), text);
    return record;
}

// An IR8A original for basis year 2023 with one employee earning a gross
// salary of 5000 (whole dollars "500{": the last digit 0 carries the plus
// sign), laid out by hand from the IR8A record tables.
std::string Ir8aHeader() {
    return Record(1200, {{1, "0"}, {2, "6"}, {3, "2023"}, {7, "08"}, {9, "7"}, {10, "201912345K"},
                         {22, "TAN AH KOW"}, {52, "DIRECTOR"}, {82, "ALPHA PTE LTD"}, {142, "61234567"},
                         {162, "hr@alpha.sg"}, {222, "O"}, {223, "20240115"}, {261, "IR8A"}});
}

std::string Ir8aDetail() {
    std::vector<std::pair<std::size_t, std::string>> fields = {
        {1, "1"},           {2, "1"},           {3, "S1234567D"},  {15, "TAN AH KOW"}, {251, "301"},
        {254, "M"},         {255, "19800101"},  {263, "00000500{"}, {272, "20230101"},  {280, "20231231"},
        {288, "00000"},     {293, "00000"},     {298, "0000000"},   {305, "00000"},     {310, "00000500{"},
        {319, "000000000"}, {328, "000000000"}, {337, "000000000"}, {346, "000000000"}, {355, "000000000"},
        {364, "000000000"}, {373, "000000000"}};
    for (std::size_t position : {400, 428, 439, 450, 461, 472, 483, 494, 505, 516, 527, 538, 549})
        fields.push_back({position, "00000000000"});
    return Record(1200, fields);
}

std::string Ir8aTrailer(const std::string& grossTotal) {
    std::vector<std::pair<std::size_t, std::string>> fields = {{1, "2"}, {2, "000001"}, {8, "500{"}, {20, grossTotal}};
    for (std::size_t position = 32; position <= 140; position += 12) fields.push_back({position, "0"});
    return Record(1200, fields);
}

class DirectSubmitTest : public testing::HostDatabaseTest {
protected:
    void SetUp() override {
        HostDatabaseTest::SetUp();
        reportPath_ = folder_ / "run";
        std::filesystem::create_directories(reportPath_);
        engine_.SetYEYear(2023);
        engine_.SetYEEmployerId("ALPHA");
        engine_.SetYESubmissionType("CurIR8A");
        engine_.SetSubmitUserIDType("NRIC");
        engine_.SetSubmitUserID("S7654321A");
        engine_.SetSubmitReportPath(reportPath_.string());
    }

    void WriteFile(const std::string& name, const std::vector<std::string>& records) {
        std::ofstream out(reportPath_ / name, std::ios::binary);
        for (const auto& record : records) out << record << "\r\n";
    }

    bool LogNamesLine(int line) const {
        const std::string prefix = "line " + std::to_string(line);
        for (const auto& entry : engine_.Log())
            if (entry.rfind(prefix + ",", 0) == 0 || entry.rfind(prefix + ":", 0) == 0) return true;
        return false;
    }

    std::filesystem::path reportPath_;
    BQueryViewTable session_{{"HRADMIN", "10.0.0.1", 2023}};
    ReferenceEngine engine_{&session_};
};

TEST_F(DirectSubmitTest, TruncatedDetailRecordIsAnErrorNamingItsLine) {
    WriteFile("CUR_Submission(O).txt", {Ir8aHeader(), Ir8aDetail().substr(0, 600), Ir8aTrailer("500{")});
    EXPECT_EQ(engine_.ExecuteDirectSubmit("CUR_Submission(O).txt", "CurIR8A", 1), 0);
    EXPECT_TRUE(engine_.HasErrors());
    EXPECT_TRUE(LogNamesLine(2));
}

TEST_F(DirectSubmitTest, TrailerTotalThatDisagreesWithTheDetailsIsAnErrorNamingTheTrailer) {
    // The same file with the right total passes, so the total is the fault.
    WriteFile("CUR_Submission(O).txt", {Ir8aHeader(), Ir8aDetail(), Ir8aTrailer("500{")});
    EXPECT_NE(engine_.ExecuteDirectSubmit("CUR_Submission(O).txt", "CurIR8A", 1), 0) << engine_.LastError();
    EXPECT_FALSE(engine_.HasErrors());

    WriteFile("CUR_Submission(O).txt", {Ir8aHeader(), Ir8aDetail(), Ir8aTrailer("600{")});
    EXPECT_EQ(engine_.ExecuteDirectSubmit("CUR_Submission(O).txt", "CurIR8A", 0), 0);
    EXPECT_TRUE(engine_.HasErrors());
    EXPECT_TRUE(LogNamesLine(3));
    EXPECT_EQ(Text("SELECT COUNT(*) FROM SubmittedReturnFile"), "0");
}

TEST_F(DirectSubmitTest, MissingFileIsAnErrorNotACrash) {
    EXPECT_EQ(engine_.ExecuteDirectSubmit("nowhere.txt", "CurIR8A", 1), 0);
    EXPECT_TRUE(engine_.HasErrors());
}

// The checker's verdict stands in for a file that IRAS would take with one
// warning, so that these cases test the engine, not the layout.
AisCheckResult OneWarning(const std::filesystem::path&, std::optional<AisKind>) {
    AisCheckResult result;
    result.kind = AisKind::IR8A;
    result.detailRecords = 1;
    result.findings.push_back({2, 15, "Name longer than 40 characters is cut.", true});
    return result;
}

DateTime SubmitClock() { return DateTime{Date{2024, 2, 28}, 16, 30, 5}; }

TEST_F(DirectSubmitTest, ActualSubmissionWithWarningsIsRecordedOnceAndValidationIsNot) {
    WriteFile("CUR_Submission(O).txt", {Ir8aHeader(), Ir8aDetail(), Ir8aTrailer("500{")});
    engine_.SetFileCheck(&OneWarning);
    SetClockForTesting(&SubmitClock);

    EXPECT_NE(engine_.ExecuteDirectSubmit("CUR_Submission(O).txt", "CurIR8A", 1), 0);
    EXPECT_TRUE(engine_.HasWarnings());
    EXPECT_FALSE(engine_.HasErrors());
    EXPECT_EQ(Text("SELECT COUNT(*) FROM SubmittedReturnFile"), "0");

    EXPECT_NE(engine_.ExecuteDirectSubmit("CUR_Submission(O).txt", "CurIR8A", 0), 0) << engine_.LastError();
    SetClockForTesting(nullptr);
    // Three records of 1200 characters and CR LF each: 3 * 1202 bytes.
    EXPECT_EQ(Text("SELECT FileName || '|' || FormType || '|' || YEEmployerId || '|' || YEYear || '|' || "
                     "SubmitUserId || '|' || SessionUserId || '|' || SubmittedDateTime || '|' || FileSize || '|' "
                     "|| DetailRecordCount FROM SubmittedReturnFile"),
              "CUR_Submission(O).txt|CurIR8A|ALPHA|2023|S7654321A|HRADMIN|2024-02-28 16:30:05|3606|1");
}

TEST_F(DirectSubmitTest, AppendLogWritesTheRecordToTheMemoAndAppendsItToTheNamedFile) {
    WriteFile("CUR_Submission(O).txt", {Ir8aHeader(), Ir8aDetail(), Ir8aTrailer("500{")});
    engine_.SetFileCheck(&OneWarning);
    ASSERT_NE(engine_.ExecuteDirectSubmit("CUR_Submission(O).txt", "CurIR8A", 1), 0);

    MemoryLog memo;
    engine_.DirectSubmitAppendLog(&memo, "IRASDirectSubmit.log");
    engine_.DirectSubmitAppendLog(nullptr, "IRASDirectSubmit.log");
    const auto lines = memo.Lines();
    auto has = [&](const std::string& text) {
        return std::find(lines.begin(), lines.end(), text) != lines.end();
    };
    EXPECT_TRUE(has("Mode: Validate only"));
    EXPECT_TRUE(has("line 2, column 15: warning: Name longer than 40 characters is cut."));
    EXPECT_TRUE(has("Form Type: CurIR8A"));

    // Appended twice, never overwritten.
    std::string expected;
    for (int i = 0; i < 2; ++i)
        for (const auto& line : lines) expected += line + "\n";
    EXPECT_EQ(testing::ReadText(reportPath_ / "IRASDirectSubmit.log"), expected);
}

}  // namespace
}  // namespace iras
