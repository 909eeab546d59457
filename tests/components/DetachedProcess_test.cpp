// How a command line falls into words, and what a start that cannot happen
// tells its caller. That a started program is detached is shown with the real
// SQL tool in ExecDBISQL_test.cpp.

#include "components/DetachedProcess.h"

#include <gtest/gtest.h>

#include "tests/components/ComponentsTestSupport.h"

namespace iras::testing {
namespace {

using Words = std::vector<std::string>;

TEST(SplitCommandLine, BlanksSeparateWordsOutsideDoubleQuotes) {
    const struct {
        const char* line;
        Words words;
    } cases[] = {
        {"", {}},
        {"   \t ", {}},
        {"-q /data/load.sql", {"-q", "/data/load.sql"}},
        {"  -q \t /data/load.sql  ", {"-q", "/data/load.sql"}},
        {"-q /data/year end/load.sql", {"-q", "/data/year", "end/load.sql"}},
        {"-q \"/data/year end/load.sql\"", {"-q", "/data/year end/load.sql"}},
        {"-c \"uid=A;pwd=B;dsn=C\"", {"-c", "uid=A;pwd=B;dsn=C"}},
        {"a\"b c\"d e", {"ab cd", "e"}},  // quotes join what they touch
        {"\"\" x", {"", "x"}},            // an empty quoted word is a word
        {"\"open to the end", {"open to the end"}},
    };
    for (const auto& c : cases) EXPECT_EQ(SplitCommandLine(c.line), c.words) << c.line;
}

class StartDetachedFailure : public ScriptFolder {};

TEST_F(StartDetachedFailure, SaysWhyTheProgramDidNotStart) {
    WriteText(folder_ / "not-a-program", "plain text\n");  // no execute permission, even for root
    const struct {
        Words arguments;
        std::string message;
    } cases[] = {
        {{}, "No program was named to start."},
        {{(folder_ / "dbisql").string(), "-q"}, "The program " + (folder_ / "dbisql").string() + " does not exist."},
        {{(folder_ / "not-a-program").string()},
         "The program " + (folder_ / "not-a-program").string() + " cannot be started: Permission denied."},
    };
    for (const auto& c : cases) EXPECT_EQ(StartDetached(c.arguments), c.message);
}

}  // namespace
}  // namespace iras::testing
