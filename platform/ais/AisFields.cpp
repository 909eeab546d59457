// Field readers of the AIS file checker: the reverse of the amount encoding
// and the date form of the line builder, strict about what IRAS rejects.
#include "platform/ais/AisFields.h"

#include <cstdio>
#include <cstdlib>

#include "platform/ais/AisFileChecker.h"

namespace iras {
namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// The digit and sign an overpunch character stands for; digit -1 when the
// character is none of "{", "}", "A".."R".
struct Overpunch {
    int digit = -1;
    bool negative = false;
};

Overpunch ReadOverpunch(char c) {
    if (c == '{') return {0, false};
    if (c == '}') return {0, true};
    if (c >= 'A' && c <= 'I') return {c - 'A' + 1, false};
    if (c >= 'J' && c <= 'R') return {c - 'J' + 1, true};
    return {};
}

// The digits of a well-formed amount (the overpunch replaced by its digit)
// and its sign; nothing when malformed.
struct AmountText {
    std::string digits;
    bool negative = false;
};

std::optional<AmountText> ScanAmount(std::string_view field) {
    std::size_t end = field.size();
    while (end > 0 && field[end - 1] == ' ') --end;  // blanks after the value are fill
    if (end == 0) return std::nullopt;
    AmountText text;
    text.digits.reserve(end);
    for (std::size_t i = 0; i + 1 < end; ++i) {
        if (!IsDigit(field[i])) return std::nullopt;
        text.digits.push_back(field[i]);
    }
    const char last = field[end - 1];
    if (IsDigit(last)) {
        text.digits.push_back(last);
    } else {
        const Overpunch overpunch = ReadOverpunch(last);
        if (overpunch.digit < 0) return std::nullopt;
        text.digits.push_back(static_cast<char>('0' + overpunch.digit));
        text.negative = overpunch.negative;
    }
    return text;
}

bool IsLeapYear(int year) { return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0; }

int DaysInMonth(int year, int month) {
    static constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return month == 2 && IsLeapYear(year) ? 29 : kDays[month - 1];
}

}  // namespace

std::optional<long long> ParseAisUnits(std::string_view field) {
    const auto text = ScanAmount(field);
    if (!text) return std::nullopt;
    const std::size_t first = text->digits.find_first_not_of('0');
    if (first == std::string::npos) return 0;
    if (text->digits.size() - first > 18) return std::nullopt;  // beyond a 64-bit count
    long long units = 0;
    for (std::size_t i = first; i < text->digits.size(); ++i) units = units * 10 + (text->digits[i] - '0');
    return text->negative ? -units : units;
}

bool IsUnsignedAisAmount(std::string_view field) {
    return IsAisInteger(field);
}

bool IsAisInteger(std::string_view field) {
    std::size_t end = field.size();
    while (end > 0 && field[end - 1] == ' ') --end;
    if (end == 0) return false;
    for (std::size_t i = 0; i < end; ++i)
        if (!IsDigit(field[i])) return false;
    return true;
}

AisDateForm ClassifyAisDate(std::string_view field) {
    if (field.find_first_not_of(' ') == std::string_view::npos) return AisDateForm::Blank;
    if (field.size() != 8) return AisDateForm::NotADate;
    for (char c : field)
        if (!IsDigit(c)) return AisDateForm::NotADate;
    auto number = [&](std::size_t from, std::size_t count) {
        int value = 0;
        for (std::size_t i = from; i < from + count; ++i) value = value * 10 + (field[i] - '0');
        return value;
    };
    const int year = number(0, 4);
    const int month = number(4, 2);
    const int day = number(6, 2);
    if (year < 1 || month < 1 || month > 12 || day < 1 || day > DaysInMonth(year, month))
        return AisDateForm::Impossible;
    return AisDateForm::Valid;
}

std::string FormatAisUnits(long long units, int decimals) {
    const bool negative = units < 0;
    // Through unsigned arithmetic so that the most negative count has a magnitude too.
    unsigned long long magnitude = negative ? 0ULL - static_cast<unsigned long long>(units)
                                            : static_cast<unsigned long long>(units);
    std::string digits = std::to_string(magnitude);
    if (decimals > 0) {
        const auto places = static_cast<std::size_t>(decimals);
        if (digits.size() <= places) digits.insert(0, places + 1 - digits.size(), '0');
        digits.insert(digits.size() - places, ".");
    }
    return negative ? "-" + digits : digits;
}

std::string Printable(std::string_view field) {
    std::string shown;
    shown.reserve(field.size());
    for (char c : field) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 || byte == 0x7F) {
            char escaped[8];
            std::snprintf(escaped, sizeof escaped, "\\x%02X", byte);
            shown += escaped;
        } else {
            shown.push_back(c);
        }
    }
    return shown;
}

std::optional<double> DecodeAisAmount(const std::string& field, int decimals) {
    if (decimals < 0) return std::nullopt;
    const auto text = ScanAmount(field);
    if (!text) return std::nullopt;
    // Put the point back and let strtod round the decimal text once, so that
    // "0000000123D" with two decimals is the double nearest 12.34.
    std::string decimal = text->digits;
    const auto places = static_cast<std::size_t>(decimals);
    if (decimal.size() <= places) decimal.insert(0, places + 1 - decimal.size(), '0');
    if (places > 0) decimal.insert(decimal.size() - places, ".");
    const double value = std::strtod(decimal.c_str(), nullptr);
    if (value == 0.0) return 0.0;  // a zero carries no sign
    return text->negative ? -value : value;
}

}  // namespace iras
