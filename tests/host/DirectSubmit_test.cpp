// Direct submission through the reference engine: a faulty file is refused
// with the line named, a good one is recorded (and only when actually
// submitted), and the engine's record reaches both the memo and the log file.
#include <gtest/gtest.h>

#include <algorithm>

#include "platform/common/Date.h"
#include "platform/host/BQueryViewTable.h"
#include "platform/host/ReferenceEngine.h"
#include "tests/ais/AisTestFiles.h"
#include "tests/host/HostTestDatabase.h"

namespace iras {
namespace {

using test::ValidIR8A;
using test::With;

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

    // The file of these records, each ended with CR LF.
    void WriteFile(const std::vector<std::string>& records) {
        std::ofstream out(reportPath_ / File, std::ios::binary);
        for (const auto& record : records) out << record << "\r\n";
    }
    static constexpr const char* File = "CUR_Submission(O).txt";

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

// The hand-laid IR8A file of two employees (see AisTestFiles.h), with a
// detail record cut short, or the trailer's income total of 62,345 made 63,345.
TEST_F(DirectSubmitTest, FaultyFileIsAnErrorNamingItsLineAndIsNotRecorded) {
    std::vector<std::string> truncated = ValidIR8A(), misTotalled = ValidIR8A();
    truncated[1].resize(600);
    misTotalled[3] = With(misTotalled[3], 8, "6334E");
    for (const auto& [records, line] : {std::pair{truncated, 2}, {misTotalled, 4}}) {
        WriteFile(records);
        EXPECT_EQ(engine_.ExecuteDirectSubmit(File, "CurIR8A", 0), 0);
        EXPECT_TRUE(engine_.HasErrors());
        EXPECT_TRUE(LogNamesLine(line)) << line;
    }
    EXPECT_EQ(Text("SELECT COUNT(*) FROM SubmittedReturnFile"), "0");
    EXPECT_EQ(engine_.ExecuteDirectSubmit("nowhere.txt", "CurIR8A", 1), 0);
    EXPECT_TRUE(engine_.HasErrors());
    // The same file unharmed passes, so each planted fault was the cause.
    WriteFile(ValidIR8A());
    EXPECT_NE(engine_.ExecuteDirectSubmit(File, "CurIR8A", 1), 0) << engine_.LastError();
    EXPECT_FALSE(engine_.HasErrors());
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
    WriteFile(ValidIR8A());
    engine_.SetFileCheck(&OneWarning);
    SetClockForTesting(&SubmitClock);
    EXPECT_NE(engine_.ExecuteDirectSubmit(File, "CurIR8A", 1), 0);
    EXPECT_TRUE(engine_.HasWarnings());
    EXPECT_FALSE(engine_.HasErrors());
    EXPECT_EQ(Text("SELECT COUNT(*) FROM SubmittedReturnFile"), "0");

    EXPECT_NE(engine_.ExecuteDirectSubmit(File, "CurIR8A", 0), 0) << engine_.LastError();
    SetClockForTesting(nullptr);
    // Four records of 1200 characters and CR LF each: 4 * 1202 bytes.
    EXPECT_EQ(Text("SELECT FileName || '|' || FormType || '|' || YEEmployerId || '|' || YEYear || '|' || "
                   "SubmitUserId || '|' || SessionUserId || '|' || SubmittedDateTime || '|' || FileSize || '|' "
                   "|| DetailRecordCount FROM SubmittedReturnFile"),
              "CUR_Submission(O).txt|CurIR8A|ALPHA|2023|S7654321A|HRADMIN|2024-02-28 16:30:05|4808|1");
}

TEST_F(DirectSubmitTest, AppendLogWritesTheRecordToTheMemoAndAppendsItToTheNamedFile) {
    WriteFile(ValidIR8A());
    engine_.SetFileCheck(&OneWarning);
    ASSERT_NE(engine_.ExecuteDirectSubmit(File, "CurIR8A", 1), 0);
    MemoryLog memo;
    engine_.DirectSubmitAppendLog(&memo, "IRASDirectSubmit.log");
    engine_.DirectSubmitAppendLog(nullptr, "IRASDirectSubmit.log");
    const auto lines = memo.Lines();
    for (const char* line : {"Mode: Validate only", "Form Type: CurIR8A",
                             "line 2, column 15: warning: Name longer than 40 characters is cut."})
        EXPECT_NE(std::find(lines.begin(), lines.end(), line), lines.end()) << line;
    // Appended twice, never overwritten.
    std::string expected;
    for (int i = 0; i < 2; ++i)
        for (const auto& line : lines) expected += line + "\n";
    EXPECT_EQ(testing::ReadText(reportPath_ / "IRASDirectSubmit.log"), expected);
}

}  // namespace
}  // namespace iras
