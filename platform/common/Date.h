// Calendar dates as the payroll database keeps them.
//
// The database stores a date as text "YYYY-MM-DD" (a date-time as
// "YYYY-MM-DD HH:MM:SS"), and 1899-12-30 stands for "no date": the payroll
// writes it where a date was never entered. A NULL read from the database is
// treated the same way, so every rule that asks "is the date blank?" asks
// _IsDateNull and nothing else.
#pragma once

#include <compare>
#include <optional>
#include <string>
#include <string_view>

namespace iras {

struct Date {
    int year = 1899;
    int month = 12;
    int day = 30;

    // The database's empty date, 1899-12-30.
    static constexpr Date Empty() { return Date{}; }

    // Reads "YYYY-MM-DD", optionally followed by a time ("YYYY-MM-DD HH:MM:SS"
    // or "YYYY-MM-DDTHH:MM:SS"), which is ignored. Nothing for any other text or
    // an impossible day (2023-02-30).
    static std::optional<Date> Parse(std::string_view text);

    std::string ToIso() const;      // "YYYY-MM-DD"
    std::string ToCompact() const;  // "YYYYMMDD", the form of the AIS records

    bool IsValid() const;           // a real calendar day
    auto operator<=>(const Date&) const = default;
};

// True for the database's empty date 1899-12-30.
bool _IsDateNull(const Date& date);

}  // namespace iras

namespace iras {

// A moment of the local clock, for log lines and run-folder names.
struct DateTime {
    Date date;
    int hour = 0;
    int minute = 0;
    int second = 0;

    std::string ToLogText() const;  // "dd/mm/yyyy hh:mm:ss", the form of every log line
    std::string ToStamp() const;    // "YYYYMMDDHHMMSS", the form of run-folder names
};

// The workstation's local time. Tests fix it with SetClockForTesting.
DateTime Now();
void SetClockForTesting(DateTime (*clock)());  // nullptr restores the real clock

// The workstation's own clock, never the test clock: for telling how far a
// fixed clock is from real time.
DateTime SystemNow();

}  // namespace iras
