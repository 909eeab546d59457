// Rounding on the decimal value as written, and the small common functions
// the returns lean on.
#include "platform/common/CommonLibrary.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cmath>
#include <fstream>
#include <iterator>

namespace iras {
namespace {

// Exact comparisons: a rounded amount must be the double of its decimal text.
TEST(Round, RoundsHalfAwayFromZeroOnTheDecimalValueNotItsBinaryApproximation) {
    EXPECT_EQ(_Round(1.005, 2), 1.01);  // binary 1.00499999...
    EXPECT_EQ(_Round(2.675, 2), 2.68);
    EXPECT_EQ(_Round(0.285, 2), 0.29);
    EXPECT_EQ(_Round(1234.565, 2), 1234.57);
    EXPECT_EQ(_Round(123456789012.345, 2), 123456789012.35);
    EXPECT_EQ(_Round(-0.125, 2), -0.13);
    EXPECT_EQ(_Round(9.995, 2), 10.0);  // carries through the nines
    EXPECT_EQ(_Round(0.0049, 2), 0.0);
    EXPECT_EQ(_Round(0.1 + 0.2, 2), 0.3);           // no arithmetic noise left behind
    EXPECT_FALSE(std::signbit(_Round(-0.004, 2)));  // "-0" would print with a minus
}

TEST(Trunc, CutsTowardZeroOnTheDecimalValue) {
    EXPECT_EQ(_Trunc(-1234.56, 0), -1234.0);
    EXPECT_EQ(_Trunc(-1.999, 2), -1.99);
    EXPECT_EQ(_Trunc(0.29 * 100, 0), 29.0);  // 28.999999999999996 in binary
}

TEST(CommonFunctions, ZeroIsUnderHalfACentAndIntegerTextMustBeWhole) {
    EXPECT_TRUE(_IsZeroValue(-0.0049));
    EXPECT_FALSE(_IsZeroValue(0.005));
    EXPECT_FALSE(_IsZeroValue(-0.005));
    EXPECT_EQ(_CStrToInt(" 42 "), 42);
    EXPECT_EQ(_CStrToInt("-7"), -7);
    for (const char* text : {"", "12a", "3.5", "+-1", "99999999999"}) EXPECT_EQ(_CStrToInt(text), 0) << text;
}

std::string Read(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

TEST(FileCopy, ReplacesTargetWholeOrLeavesItAlone) {
    namespace fs = std::filesystem;
    const fs::path folder = fs::temp_directory_path() / ("iras_filecopy_test" + std::to_string(::getpid()));
    fs::remove_all(folder);
    fs::create_directories(folder / "a-folder");
    using namespace std::string_literals;
    const std::string record = "1Zo\xEB Tan\r\n2\x00\xFF\r\n"s;
    std::ofstream(folder / "source.txt", std::ios::binary) << record;
    std::ofstream(folder / "target.txt") << "an older, longer file that must go entirely";

    EXPECT_TRUE(_FileCopy(folder / "source.txt", folder / "target.txt"));
    EXPECT_FALSE(_FileCopy(folder / "missing.txt", folder / "target.txt"));
    EXPECT_EQ(Read(folder / "target.txt"), record);
    EXPECT_FALSE(_FileCopy(folder / "source.txt", folder / "no-such-folder" / "x.txt"));
    EXPECT_FALSE(_FileCopy(folder / "source.txt", folder / "a-folder"));
    // No temporary copy is left behind, after success or failure.
    EXPECT_EQ(std::distance(fs::directory_iterator(folder), fs::directory_iterator()), 3);
    fs::remove_all(folder);
}

}  // namespace
}  // namespace iras
