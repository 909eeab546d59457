// Banners and the two logs of a run.
#include "submission/common/RunLogs.h"

#include <gtest/gtest.h>

namespace iras {
namespace {

// The five lines of a banner around its title line.
StringList Banner(const std::string& titleLine) {
    return {std::string(48, '*'), std::string(48, ' '), titleLine, std::string(48, ' '), std::string(48, '*')};
}

TEST(RunLogs, ShortBannerTitleIsCentredWithOddBlankRightAndFullTitleKept) {
    MemoryLog debugLog;
    RunLogs logs;
    logs.SetInternalMemo(&debugLog);
    const std::string full = "     VALIDATING CURRENT IR8A FILE               ";
    logs.WriteInternalBanner("ABC");  // 45 blanks to share: 22 left, 23 right
    logs.WriteInternalBanner("ABCD");
    logs.WriteInternalBanner(full);
    StringList expected = Banner(std::string(22, ' ') + "ABC" + std::string(23, ' '));
    for (const auto& line : Banner(std::string(22, ' ') + "ABCD" + std::string(22, ' '))) expected.push_back(line);
    for (const auto& line : Banner(full)) expected.push_back(line);
    EXPECT_EQ(debugLog.View(), expected);
}

TEST(RunLogs, RunLogLinesAlsoReachDebugLogInOrderAndMissingSinkDropsLines) {
    MemoryLog runLog;
    MemoryLog debugLog;
    RunLogs logs;
    logs.WriteAllMemo("lost");
    logs.SetInternalMemo(&debugLog);
    logs.WriteAllMemo("a");
    logs.SetLogMemo(&runLog);
    logs.WriteAllMemo("b");
    logs.WriteInternalMemo("c");
    logs.WriteInternalBanner("U");
    logs.WriteAllBanner("T");

    const std::string u = std::string(23, ' ') + "U" + std::string(24, ' ');
    const std::string t = std::string(23, ' ') + "T" + std::string(24, ' ');
    StringList expectedRun{"b"};
    StringList expectedDebug{"a", "b", "c"};
    for (const auto& line : Banner(u)) expectedDebug.push_back(line);
    for (const auto& line : Banner(t)) {
        expectedRun.push_back(line);
        expectedDebug.push_back(line);
    }
    EXPECT_EQ(runLog.View(), expectedRun);
    EXPECT_EQ(debugLog.View(), expectedDebug);
}

}  // namespace
}  // namespace iras
