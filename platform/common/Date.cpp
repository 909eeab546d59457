// Calendar dates and clock readings in the forms the database, the AIS records
// and the logs use. Parsing is strict: a date the payroll cannot have entered
// (2023-02-30, "30/12/2023") is reported as no date rather than guessed at, so
// that a damaged column surfaces as a validation finding instead of a wrong
// date in a return.
#include "platform/common/Date.h"

#include <atomic>
#include <cstdio>
#include <ctime>

namespace iras {

namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// The value of text[pos, pos+count) when every character is a digit.
std::optional<int> ReadDigits(std::string_view text, std::size_t pos, std::size_t count) {
    if (pos + count > text.size()) {
        return std::nullopt;
    }
    int value = 0;
    for (std::size_t i = pos; i < pos + count; ++i) {
        if (!IsDigit(text[i])) {
            return std::nullopt;
        }
        value = value * 10 + (text[i] - '0');
    }
    return value;
}

bool IsLeapYear(int year) { return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0; }

int DaysInMonth(int year, int month) {
    static constexpr int kDays[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (month == 2 && IsLeapYear(year)) {
        return 29;
    }
    return kDays[month - 1];
}

// "HH:MM", "HH:MM:SS" or "HH:MM:SS.fff": the time part the database may append
// to a date. Its value is not used, but anything else means the text is not a
// date of ours.
bool IsTimeText(std::string_view text) {
    const auto hour = ReadDigits(text, 0, 2);
    const auto minute = ReadDigits(text, 3, 2);
    if (!hour || !minute || text[2] != ':' || *hour > 23 || *minute > 59) {
        return false;
    }
    if (text.size() == 5) {
        return true;
    }
    const auto second = ReadDigits(text, 6, 2);
    if (text[5] != ':' || !second || *second > 59) {
        return false;
    }
    if (text.size() == 8) {
        return true;
    }
    if (text[8] != '.' || text.size() == 9) {
        return false;
    }
    for (std::size_t i = 9; i < text.size(); ++i) {
        if (!IsDigit(text[i])) {
            return false;
        }
    }
    return true;
}

std::string_view TrimBlanks(std::string_view text) {
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) {
        text.remove_prefix(1);
    }
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) {
        text.remove_suffix(1);
    }
    return text;
}

std::atomic<DateTime (*)()> testClock{nullptr};

}  // namespace

DateTime SystemNow() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    DateTime result;
    result.date = Date{local.tm_year + 1900, local.tm_mon + 1, local.tm_mday};
    result.hour = local.tm_hour;
    result.minute = local.tm_min;
    // A leap second (tm_sec 60) is shown as the last second of its minute.
    result.second = local.tm_sec > 59 ? 59 : local.tm_sec;
    return result;
}

std::optional<Date> Date::Parse(std::string_view text) {
    text = TrimBlanks(text);
    if (text.size() < 10 || text[4] != '-' || text[7] != '-') {
        return std::nullopt;
    }
    const auto year = ReadDigits(text, 0, 4);
    const auto month = ReadDigits(text, 5, 2);
    const auto day = ReadDigits(text, 8, 2);
    if (!year || !month || !day) {
        return std::nullopt;
    }
    if (text.size() > 10) {
        if ((text[10] != ' ' && text[10] != 'T') || !IsTimeText(text.substr(11))) {
            return std::nullopt;
        }
    }
    const Date date{*year, *month, *day};
    if (!date.IsValid()) {
        return std::nullopt;
    }
    return date;
}

std::string Date::ToIso() const {
    char text[32];
    std::snprintf(text, sizeof text, "%04d-%02d-%02d", year, month, day);
    return text;
}

std::string Date::ToCompact() const {
    if (year >= 0 && year <= 9999 && month >= 0 && month <= 99 && day >= 0 && day <= 99) {
        // The digits written out directly: a record holds several dates for
        // every employee.
        std::string text(8, '0');
        int rest = year;
        for (int k = 3; k >= 0; --k, rest /= 10) text[static_cast<std::size_t>(k)] = static_cast<char>('0' + rest % 10);
        text[4] = static_cast<char>('0' + month / 10);
        text[5] = static_cast<char>('0' + month % 10);
        text[6] = static_cast<char>('0' + day / 10);
        text[7] = static_cast<char>('0' + day % 10);
        return text;
    }
    char text[32];
    std::snprintf(text, sizeof text, "%04d%02d%02d", year, month, day);
    return text;
}

bool Date::IsValid() const {
    return year >= 1 && year <= 9999 && month >= 1 && month <= 12 && day >= 1 &&
           day <= DaysInMonth(year, month);
}

bool _IsDateNull(const Date& date) { return date == Date::Empty(); }

std::string DateTime::ToLogText() const {
    char text[64];
    std::snprintf(text, sizeof text, "%02d/%02d/%04d %02d:%02d:%02d", date.day, date.month,
                  date.year, hour, minute, second);
    return text;
}

std::string DateTime::ToStamp() const {
    char text[64];
    std::snprintf(text, sizeof text, "%04d%02d%02d%02d%02d%02d", date.year, date.month, date.day,
                  hour, minute, second);
    return text;
}

DateTime Now() {
    if (const auto clock = testClock.load()) {
        return clock();
    }
    return SystemNow();
}

void SetClockForTesting(DateTime (*clock)()) { testClock.store(clock); }

}  // namespace iras
