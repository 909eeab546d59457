// Banners and the two logs of a run.
#include "submission/common/RunLogs.h"

#include <gtest/gtest.h>

namespace iras {
namespace {

TEST(BannerLines, ShortTitleIsCentredWithOddBlankRightAndFullTitleKept) {
    const StringList odd = BannerLines("ABC");  // 45 blanks to share: 22 left, 23 right
    EXPECT_EQ(odd, (StringList{std::string(48, '*'), std::string(48, ' '),
                               std::string(22, ' ') + "ABC" + std::string(23, ' '), std::string(48, ' '),
                               std::string(48, '*')}));
    EXPECT_EQ(BannerLines("ABCD")[2], std::string(22, ' ') + "ABCD" + std::string(22, ' '));
    const std::string full = "     VALIDATING CURRENT IR8A FILE               ";
    EXPECT_EQ(BannerLines(full)[2], full);
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

    StringList expectedRun{"b"};
    StringList expectedDebug{"a", "b", "c"};
    for (const auto& line : BannerLines("U")) expectedDebug.push_back(line);
    for (const auto& line : BannerLines("T")) {
        expectedRun.push_back(line);
        expectedDebug.push_back(line);
    }
    EXPECT_EQ(runLog.View(), expectedRun);
    EXPECT_EQ(debugLog.View(), expectedDebug);
}

}  // namespace
}  // namespace iras
