// Temporary files a killed run left beside its targets are removed by the
// next write in that folder, its logs are kept under a visible name; those of
// a run still going on are not touched.
#include <gtest/gtest.h>

#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "platform/common/AtomicFile.h"
#include "tests/support/ScratchFolder.h"

namespace iras {
namespace {

namespace fs = std::filesystem;

TEST(StaleTemporaryFiles, OnlyThoseOfAnEndedWriterAreRemoved) {
    const fs::path folder = fs::temp_directory_path() / ("iras-atomic-" + std::to_string(::getpid()));
    fs::remove_all(folder);
    fs::create_directories(folder);
    const std::string dead = std::to_string(testing::DeadProcess());
    const std::string parent = std::to_string(::getppid());  // alive: the process that started this test
    struct Case {
        std::string name;
        bool removed;
    };
    const std::vector<Case> cases = {
        {".iras-tmp-" + dead + "-0-2023eIR8A_Submission(O).txt", true},
        {".iras-tmp-" + dead + "-7-IRASSummaryFile.txt", true},
        {".iras-tmp-" + parent + "-0-2023eIR8S_Submission(O).txt", false},          // a live run
        {".iras-log-" + parent + "-1-IRASSubmissionLogFile.txt", false},
        {".iras-tmp-" + std::to_string(::getpid()) + "-99-mine.txt", false},         // this process
        {".iras-tmp-notapid-0-x.txt", false},                                        // not our pattern
        {".iras-tmp--0-x.txt", false},
        {"iras-tmp-" + dead + "-0-users-own.txt", false},                            // the user's own file
        {"2023eIR8A_Submission(O).txt", false},
    };
    for (const Case& c : cases) std::ofstream(folder / c.name) << "x";
    // The logs of a killed run: what it did stays readable, under names the
    // user sees; a second log of the same name does not overwrite the first.
    std::ofstream(folder / (".iras-log-" + dead + "-3-IRASSubmissionLogFile.txt")) << "Processing employee 17\n";
    std::ofstream(folder / (".iras-log-" + dead + "-4-IRASSubmissionDebugFile.txt")) << "SQL: SELECT\n";
    std::ofstream(folder / ("IRASSubmissionLogFile-killed-" + dead + ".txt")) << "an earlier one\n";

    // The first write into the folder cleans it.
    ASSERT_EQ(WriteFileAtomically(folder / "summary.txt", "done\n"), "");
    for (const Case& c : cases) EXPECT_EQ(fs::exists(folder / c.name), !c.removed) << c.name;
    EXPECT_TRUE(fs::exists(folder / "summary.txt"));
    auto read = [&](const std::string& name) {
        std::ifstream in(folder / name);
        return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    };
    EXPECT_EQ(read("IRASSubmissionLogFile-killed-" + dead + ".txt"), "an earlier one\n");
    EXPECT_EQ(read("IRASSubmissionLogFile-killed-" + dead + "-2.txt"), "Processing employee 17\n");
    EXPECT_EQ(read("IRASSubmissionDebugFile-killed-" + dead + ".txt"), "SQL: SELECT\n");
    EXPECT_FALSE(fs::exists(folder / (".iras-log-" + dead + "-3-IRASSubmissionLogFile.txt")));
    fs::remove_all(folder);
}

}  // namespace
}  // namespace iras
