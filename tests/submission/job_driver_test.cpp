// The two drivers that every return shares, run on a minimal return of the
// tests' own (one text column per employee, a header and a trailer): the
// failures that a real run meets at the edges of the job — the engine cannot
// make the view tables, the File Directory refuses the copy, the output of
// records is switched off, the summary cannot be written, the disk is full,
// the year was never set — each end with a clear line in the run log and no
// file, whole or partial, where a file would have been.
#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>

#include "platform/common/AtomicFile.h"
#include "platform/database/Query.h"
#include "submission/common/RYESubmissionJob.h"
#include "tests/support/ReturnTestSupport.h"

namespace iras::testing {
namespace {

namespace fs = std::filesystem;

namespace layout {
inline constexpr RecordField kRecordType{1, 1, FieldKind::Text};
inline constexpr RecordField kName{2, 10, FieldKind::Text};
inline constexpr RecordField kCount{2, 3, FieldKind::Integer};
}  // namespace layout

class FakeReturn : public RYESubmissionJob {
public:
    using RYESubmissionJob::RYESubmissionJob;

    int ValidateFile() override { return RunValidation(); }
    int ProcessFile() override { return RunGeneration(); }
    void GenerateSummary(StringList& summary) override { AppendSummaryBanner(summary, "SUMMARY OF FAKE"); }
    std::string SummaryFileName() const override { return "FakeSummaryFile"; }

protected:
    const JobTexts& Texts() const override {
        static const JobTexts texts = [] {
            JobTexts t;
            t.validateTitle = "VALIDATING FAKE FILE";
            t.processTitle = "PROCESSING FAKE FILE";
            t.cancelledMessage = "FAKE File is cancelled.";
            return t;
        }();
        return texts;
    }
    int RefreshQuery() override {
        if (OpenSources("SELECT * FROM Employer WHERE Id = '", "FAKE", "RFakeSubmission") == 0) return 0;
        MainQuery.Close();
        MainQuery.SetSQL("SELECT * FROM People ORDER BY Name");
        MainQuery.Open();
        return 1;
    }
    int HeaderValidation() override { return 1; }
    int DetailsValidation() override { return 1; }
    void PrepareHeader() override { Put(*Output, layout::kRecordType, "0"); }
    void PrepareDetails() override {
        if (!Params.check) return;
        Output->SetNew();
        Put(*Output, layout::kRecordType, "1");
        Put(*Output, layout::kName, Text("Name"));
        Output->SetEnd(1);
        Output->ListOutput(OutputLines);
        ++RecordsSucceeded;
    }
    bool HasTrailer() const override { return true; }
    void PrepareTrailer() override {
        Put(*Output, layout::kRecordType, "2");
        Put(*Output, layout::kCount, RecordsSucceeded);
    }
    int RecordWidth() const override { return 20; }
    std::string FormName() const override { return "FAKE"; }
};

class JobDriver : public ::testing::Test {
public:
    void SetUp() override {
        db::ConnectionRegistry::Register("kovadb", {"sqlite", (folder.Path() / "fake.db").string(), true});
        db::ExecScript("kovadb",
                       "CREATE TABLE YEKeyWord (YEKeyWordId TEXT, YEKeyWordCategory TEXT, YEProperty1 TEXT);"
                       "CREATE TABLE Employer (Id TEXT); INSERT INTO Employer VALUES ('ACME');"
                       "CREATE TABLE People (Name TEXT); INSERT INTO People VALUES ('TAN'), ('LIM');");
        session.SetEngineFactory([this](BQueryViewTable*) -> std::unique_ptr<BYESubmissionEngine> {
            return std::make_unique<RecordingEngine>(script);
        });
        fs::create_directories(runFolder());
    }
    void TearDown() override {
        SetFileFaultForTesting(nullptr);
        db::ConnectionRegistry::Unregister("kovadb");
    }

    fs::path runFolder() const { return folder.Path() / "run"; }
    std::unique_ptr<FakeReturn> MakeJob(const std::string& copyFolder = "") {
        auto job = std::make_unique<FakeReturn>(&session, params, runFolder().string(), copyFolder);
        job->SetLogMemo(&log), job->SetInternalMemo(&debug);
        job->SetBasisYear(2024);
        return job;
    }
    bool Logged(const std::string& line) const {
        const auto& lines = log.View();
        return std::find(lines.begin(), lines.end(), line) != lines.end();
    }
    // Every file under the scratch folder but the database, by name.
    std::vector<std::string> FilesLeft() const {
        std::vector<std::string> names;
        for (const auto& entry : fs::recursive_directory_iterator(folder.Path())) {
            if (entry.is_regular_file() && entry.path().filename() != "fake.db")
                names.push_back(fs::relative(entry.path(), folder.Path()).string());
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    ScratchFolder folder{"iras-job-driver"};
    BQueryViewTable session{SessionSettings{"PAYADMIN", "10.0.0.1", 2024}};
    std::shared_ptr<RecordingEngine::Script> script = std::make_shared<RecordingEngine::Script>();
    IRASSubmissionParameters params{2, "ACME", 2024, true, true, true, true, false, "", ""};
    MemoryLog log, debug;
};

TEST_F(JobDriver, AWholeRunWritesHeaderDetailsInOrderAndTrailerWithCrLf) {
    auto job = MakeJob();
    ASSERT_NE(job->ValidateFile(), 0);
    ASSERT_NE(job->ProcessFile(), 0);
    EXPECT_EQ(job->GetOutputFilePath(), (runFolder() / "2024eFAKE_Submission(O).txt").string());
    EXPECT_EQ(ReadBytes(job->GetOutputFilePath()),
              "0                   \r\n1LIM                \r\n1TAN                \r\n2002                \r\n");
}

TEST_F(JobDriver, FailuresAtTheEdgesLeaveALogLineAndNoFile) {
    struct Case {
        const char* what;
        std::function<void(JobDriver&)> arrange;
        bool copyToFileDirectory;
        const char* expectedLine;  // a line of the run log; {run} stands for the run folder
    };
    const std::string run = runFolder().string();
    const std::vector<Case> cases = {
        {"engine refuses the view tables", [](JobDriver& t) { t.script->generate = 0; }, false,
         "The data of the return could not be prepared. No file is created."},
        {"output of records switched off", [](JobDriver& t) { t.params.check = false; }, false,
         "No file is created: the output of records is switched off."},
        {"disk full while writing", [](JobDriver&) {
             SetFileFaultForTesting([](FileStep step, const fs::path&) {
                 return step == FileStep::Write ? std::error_code(ENOSPC, std::generic_category())
                                                : std::error_code{};
             });
         }, false, "The file {run}/2024eFAKE_Submission(O).txt could not be written: No space left on device."},
        {"rename refused", [](JobDriver&) {
             SetFileFaultForTesting([](FileStep step, const fs::path&) {
                 return step == FileStep::Rename ? std::error_code(EACCES, std::generic_category())
                                                 : std::error_code{};
             });
         }, false, "The file {run}/2024eFAKE_Submission(O).txt could not be written: Permission denied."},
        {"File Directory refuses the copy", [](JobDriver& t) {
             // A file where the File Directory should be: nothing can be put into it.
             std::ofstream(t.folder.Path() / "out") << "not a folder";
         }, true, "The file could not be copied to {out}/2024eFAKE_Submission(O).txt."},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        fs::remove_all(runFolder());
        fs::create_directories(runFolder());
        fs::remove(folder.Path() / "out");
        log.Clear();
        params = IRASSubmissionParameters{2, "ACME", 2024, true, true, true, true, false, "", ""};
        *script = RecordingEngine::Script{};
        SetFileFaultForTesting(nullptr);
        c.arrange(*this);

        auto job = MakeJob(c.copyToFileDirectory ? (folder.Path() / "out").string() : "");
        const int validated = job->ValidateFile();
        const int made = validated != 0 ? job->ProcessFile() : 0;
        EXPECT_EQ(made, 0);
        std::string expected = c.expectedLine;
        for (auto [key, value] : {std::pair<std::string, std::string>{"{run}", run},
                                  {"{out}", (folder.Path() / "out").string()}}) {
            if (const auto at = expected.find(key); at != std::string::npos) expected.replace(at, key.size(), value);
        }
        EXPECT_TRUE(Logged(expected)) << expected;
        // The copy that failed leaves the complete file in the run folder only.
        const auto left = FilesLeft();
        if (c.copyToFileDirectory) {
            EXPECT_EQ(left, (std::vector<std::string>{"out", "run/2024eFAKE_Submission(O).txt"}));
        } else {
            EXPECT_TRUE(left.empty()) << left.front();
        }
    }
}

TEST_F(JobDriver, ASummaryThatCannotBeWrittenIsLoggedAndTheSubmittedFileStays) {
    params.directSubmission = true;
    // A folder where the summary file should go: it cannot be replaced.
    fs::create_directories(runFolder() / "FakeSummaryFile.txt");
    auto job = MakeJob();
    ASSERT_NE(job->ValidateFile(), 0);
    ASSERT_NE(job->ProcessFile(), 0);
    const std::string summary = (runFolder() / "FakeSummaryFile.txt").string();
    const auto& lines = log.View();
    EXPECT_TRUE(std::any_of(lines.begin(), lines.end(), [&](const std::string& line) {
        return line.rfind("The summary file " + summary + " could not be written: ", 0) == 0;
    }));
    EXPECT_TRUE(fs::is_regular_file(runFolder() / "2024eFAKE_Submission(O).txt"));
    EXPECT_TRUE(fs::is_directory(summary));
}

TEST_F(JobDriver, AJobWhoseYearWasNeverSetRefusesToRun) {
    auto job = std::make_unique<FakeReturn>(&session, params, runFolder().string(), "");
    job->SetLogMemo(&log);
    EXPECT_EQ(job->ValidateFile(), 0);
    EXPECT_EQ(job->ProcessFile(), 0);
    EXPECT_TRUE(Logged("The validation could not be completed: the basis year of the return is not set."));
    EXPECT_TRUE(FilesLeft().empty());
    EXPECT_TRUE(script->calls.empty()) << "the engine was asked for " << script->calls.front();
}

TEST_F(JobDriver, AFixedWidthRecordIsCutAtItsWidthAndAGrowingOneIsNot) {
    BStringOutput out;
    out.SetMax(100, 10);
    out.SetNew();
    out.PutData(0, 8, 3, "ABC", BStringOutput::kText);  // positions 9-11 of a 10-wide record
    out.SetEnd(1);
    EXPECT_EQ(out.Line(), "        ABC");
    out.SetFixedWidth(true);
    out.SetNew();
    out.PutData(0, 8, 3, "ABC", BStringOutput::kText);
    out.PutData(0, 12, 2, "ZZ", BStringOutput::kText);  // wholly past the end: nothing of it
    out.SetEnd(1);
    EXPECT_EQ(out.Line(), "        AB");
}

}  // namespace
}  // namespace iras::testing
