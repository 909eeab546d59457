// Dates as the database writes them, and the clock as the logs show it.
#include "platform/common/Date.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>

namespace iras {
namespace {

TEST(DateParse, ReadsDatabaseDatesAndRefusesImpossibleOnes) {
    EXPECT_EQ(Date::Parse("2023-01-05 23:59:59"), (Date{2023, 1, 5}));
    EXPECT_EQ(Date::Parse("2024-02-29T08:30:00.123"), (Date{2024, 2, 29}));
    EXPECT_EQ(Date::Parse("2000-02-29"), (Date{2000, 2, 29}));
    EXPECT_TRUE(_IsDateNull(*Date::Parse("1899-12-30")));
    EXPECT_FALSE(_IsDateNull(Date{1899, 12, 31}));
    for (const char* text : {"2023-02-29", "1900-02-29", "2023-04-31", "2023-13-01", "31/12/2023", "2023-1-5", "",
                             "2023-12-31x", "2023-12-31 25:00:00"})
        EXPECT_FALSE(Date::Parse(text).has_value()) << text;
}

TEST(DateCompact, RecordDatesAreEightZeroPaddedDigits) {
    EXPECT_EQ((Date{2024, 1, 5}).ToCompact(), "20240105");
    EXPECT_EQ((Date{2023, 12, 31}).ToCompact(), "20231231");
    EXPECT_EQ((Date{987, 10, 9}).ToCompact(), "09871009");
}

DateTime FixedClock() { return DateTime{Date{2024, 3, 5}, 7, 8, 9}; }

TEST(Clock, InjectedClockGivesZeroPaddedFormsAndTheRealClockReadsLocalTime) {
    SetClockForTesting(&FixedClock);
    const DateTime fixed = Now();
    SetClockForTesting(nullptr);
    EXPECT_EQ(fixed.ToLogText(), "05/03/2024 07:08:09");
    EXPECT_EQ(fixed.ToStamp(), "20240305070809");

    ::setenv("TZ", "Asia/Singapore", 1);  // UTC+8 all year
    ::tzset();
    const std::time_t singapore = std::time(nullptr) + 8 * 3600;
    const DateTime now = Now();
    std::tm expected{};
    gmtime_r(&singapore, &expected);
    EXPECT_EQ(now.date, (Date{expected.tm_year + 1900, expected.tm_mon + 1, expected.tm_mday}));
    EXPECT_EQ(now.hour, expected.tm_hour);  // wrong only if the hour turns between the two reads
}

}  // namespace
}  // namespace iras
