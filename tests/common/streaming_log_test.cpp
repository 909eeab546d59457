// The log that goes to its file as the run writes it: the saved file holds
// the lines exactly as a log kept in memory would have written them, the
// lines are on disk under a temporary name while the run goes, and a file
// that cannot be made loses nothing.
#include "platform/common/StreamingLog.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "platform/common/AtomicFile.h"
#include "tests/support/ScratchFolder.h"

namespace iras {
namespace {

namespace fs = std::filesystem;

std::string Read(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

std::vector<fs::path> TemporaryFiles(const fs::path& folder) {
    std::vector<fs::path> found;
    for (const auto& entry : fs::directory_iterator(folder)) {
        const std::string name = entry.path().filename().string();
        if (name.starts_with(kTemporaryFilePrefix) || name.starts_with(kLogTemporaryFilePrefix)) {
            found.push_back(entry.path());
        }
    }
    return found;
}

TEST(StreamingLog, SavedFileHoldsEveryLineEndedByALineEndAsALogInMemoryWritesIt) {
    testing::ScratchFolder folder("streaming-log");
    const fs::path target = folder.Path() / "IRASSubmissionDebugFile.txt";
    StreamingLog log([&] { return target; });
    MemoryLog memory;
    // Empty lines, blanks kept, and enough lines to pass the buffer several times.
    const std::string longLine(200, 'x');
    for (int i = 0; i < 2000; ++i) {
        for (const std::string& line : {std::string(), std::string("  Employee S1234567D  "), longLine}) {
            log.Append(line);
            memory.Append(line);
        }
    }
    EXPECT_EQ(log.Lines(), memory.Lines());
    ASSERT_EQ(log.SaveTo(target), "");
    // Each group: "\n", the 22 characters of the blank-edged line and "\n", 200 x and "\n".
    EXPECT_EQ(Read(target).size(), 2000u * (1 + 23 + 201));
    EXPECT_EQ(Read(target).substr(0, 25), "\n  Employee S1234567D  \nx");
    EXPECT_TRUE(TemporaryFiles(folder.Path()).empty());
}

TEST(StreamingLog, LinesAreOnDiskUnderATemporaryNameWhileTheRunGoes) {
    testing::ScratchFolder folder("streaming-log");
    const fs::path target = folder.Path() / "IRASSubmissionLogFile.txt";
    {
        std::ofstream old(target);
        old << "the last run's log\n";
    }
    StreamingLog log([&] { return target; });
    const std::string line(1000, 'a');
    for (std::size_t written = 0; written < 2 * StreamingLog::kFlushBytes; written += line.size() + 1) log.Append(line);
    const auto temporary = TemporaryFiles(folder.Path());
    ASSERT_EQ(temporary.size(), 1u);
    // Whole buffers are on disk; the user's file is still the last run's.
    EXPECT_GE(fs::file_size(temporary[0]), StreamingLog::kFlushBytes);
    EXPECT_EQ(Read(target), "the last run's log\n");
}

TEST(StreamingLog, ARunLogWrittenLineByLineHasEachLineOnDiskAtOnce) {
    testing::ScratchFolder folder("streaming-log");
    StreamingLog log([&] { return folder.Path() / "IRASSubmissionLogFile.txt"; }, "\n", 0);
    log.Append("Start Date and Time: 23/11/2026 12:00:00");
    const auto temporary = TemporaryFiles(folder.Path());
    ASSERT_EQ(temporary.size(), 1u);
    EXPECT_EQ(Read(temporary[0]), "Start Date and Time: 23/11/2026 12:00:00\n");
}

TEST(StreamingLog, LinesAfterSavingGoOnIntoTheFileAndACopyElsewhereHasThemAll) {
    testing::ScratchFolder folder("streaming-log");
    const fs::path target = folder.Path() / "log.txt";
    StreamingLog log([&] { return target; });
    log.Append("Start");
    ASSERT_EQ(log.SaveTo(target), "");
    log.Append("End");
    ASSERT_EQ(log.SaveTo(target), "");
    EXPECT_EQ(Read(target), "Start\nEnd\n");
    ASSERT_EQ(log.SaveTo(folder.Path() / "copy.txt"), "");
    EXPECT_EQ(Read(folder.Path() / "copy.txt"), "Start\nEnd\n");
    EXPECT_EQ(log.Lines(), (StringList{"Start", "End"}));
}

TEST(StreamingLog, ClearStartsANewRunAndDropsTheUnsavedLines) {
    testing::ScratchFolder folder("streaming-log");
    const fs::path target = folder.Path() / "log.txt";
    StreamingLog log([&] { return target; });
    log.Append("first run");
    log.Clear();
    EXPECT_TRUE(log.IsEmpty());
    EXPECT_TRUE(TemporaryFiles(folder.Path()).empty());
    log.Append("second run");
    ASSERT_EQ(log.SaveTo(target), "");
    EXPECT_EQ(Read(target), "second run\n");
}

TEST(StreamingLog, AFolderThatCannotTakeTheFileLosesNoLineAndSavingSaysWhy) {
    testing::ScratchFolder folder("streaming-log");
    const fs::path missing = folder.Path() / "no-such-folder" / "log.txt";
    StreamingLog log([&] { return missing; });
    log.Append("kept");
    log.Append("");
    EXPECT_EQ(log.Lines(), (StringList{"kept", ""}));
    EXPECT_NE(log.SaveTo(missing), "");
    // Saved elsewhere, every line is there.
    ASSERT_EQ(log.SaveTo(folder.Path() / "log.txt"), "");
    EXPECT_EQ(Read(folder.Path() / "log.txt"), "kept\n\n");
}

TEST(StreamingLog, RecordsEndedByCrLfReadBackAsTheyWereListed) {
    testing::ScratchFolder folder("streaming-log");
    const fs::path target = folder.Path() / "CUR_Submission(O).txt";
    StreamingLog records([&] { return target; }, "\r\n");
    // A line feed alone inside a record is data; only the pair ends a record.
    records.Append("0HEADER");
    records.Append("1A\nB");
    records.Append("2");
    EXPECT_EQ(records.Lines(), (StringList{"0HEADER", "1A\nB", "2"}));
    ASSERT_EQ(records.SaveTo(target), "");
    EXPECT_EQ(Read(target), "0HEADER\r\n1A\nB\r\n2\r\n");
}

TEST(StreamingLog, ARefusedRenameKeepsTheLinesForAnotherPlace) {
    testing::ScratchFolder folder("streaming-log");
    const fs::path target = folder.Path() / "log.txt";
    StreamingLog log([&] { return target; });
    log.Append("line");
    SetFileFaultForTesting([&](FileStep step, const fs::path& file) {
        return step == FileStep::Rename && file == target ? std::error_code(EACCES, std::generic_category())
                                                          : std::error_code{};
    });
    EXPECT_EQ(log.SaveTo(target), "Permission denied");
    EXPECT_FALSE(fs::exists(target));
    EXPECT_EQ(log.SaveTo(folder.Path() / "elsewhere.txt"), "");
    SetFileFaultForTesting(nullptr);
    EXPECT_EQ(Read(folder.Path() / "elsewhere.txt"), "line\n");
}

TEST(StreamingLog, ALogNeverWrittenToSavesAnEmptyFile) {
    testing::ScratchFolder folder("streaming-log");
    StreamingLog log([&] { return folder.Path() / "log.txt"; });
    EXPECT_TRUE(log.IsEmpty());
    ASSERT_EQ(log.SaveTo(folder.Path() / "log.txt"), "");
    EXPECT_EQ(Read(folder.Path() / "log.txt"), "");
}

}  // namespace
}  // namespace iras
