// The fixed-width line builder. Every value is first turned into the bytes
// that go into the file (Windows-1252, one byte a character), and only then
// cut and padded, so a field's width is a width in bytes and an accented or
// Chinese name can never push the fields after it out of their columns.
//
// Decisions that hold for every form:
// - A value placed where another was placed before overwrites it; a gap
//   between fields stays blank.
// - Flags 1 and 2 zero-fill on the left. An empty text so placed becomes a
//   field of zeros; a negative integer keeps its "-" in front of the zeros.
// - A value too long for a right-aligned field is not cut: cutting either end
//   would leave a different, valid-looking amount in the file. The field is
//   filled with "*" instead, which IRAS's checker rejects. The jobs check
//   their amounts before they reach the builder, so this is a last guard.
// - Control characters (a line break or tab in a name) become blanks: a line
//   break inside a record would split it in two.
#include "submission/common/BStringOutput.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>
#include <string_view>

namespace iras {

namespace {

// The Windows-1252 byte of the code points 0x80..0x9F of that code page;
// every other code point of it equals its byte (ASCII and Latin-1).
struct Cp1252Extra {
    char32_t codePoint;
    unsigned char byte;
};

constexpr Cp1252Extra kCp1252Extras[] = {
    {0x20AC, 0x80}, {0x201A, 0x82}, {0x0192, 0x83}, {0x201E, 0x84}, {0x2026, 0x85},
    {0x2020, 0x86}, {0x2021, 0x87}, {0x02C6, 0x88}, {0x2030, 0x89}, {0x0160, 0x8A},
    {0x2039, 0x8B}, {0x0152, 0x8C}, {0x017D, 0x8E}, {0x2018, 0x91}, {0x2019, 0x92},
    {0x201C, 0x93}, {0x201D, 0x94}, {0x2022, 0x95}, {0x2013, 0x96}, {0x2014, 0x97},
    {0x02DC, 0x98}, {0x2122, 0x99}, {0x0161, 0x9A}, {0x203A, 0x9B}, {0x0153, 0x9C},
    {0x017E, 0x9E}, {0x0178, 0x9F},
};

char ToCp1252(char32_t codePoint) {
    if (codePoint < 0x20 || codePoint == 0x7F) {
        return ' ';
    }
    if (codePoint < 0x80 || (codePoint >= 0xA0 && codePoint <= 0xFF)) {
        return static_cast<char>(static_cast<unsigned char>(codePoint));
    }
    for (const auto& extra : kCp1252Extras) {
        if (extra.codePoint == codePoint) {
            return static_cast<char>(extra.byte);
        }
    }
    return '?';
}

bool IsContinuation(unsigned char byte) { return (byte & 0xC0) == 0x80; }

constexpr int kFlagMask = 0xFF;

bool IsRightAligned(int flag) {
    const int alignment = flag & kFlagMask;
    return alignment == BStringOutput::kAmount || alignment == BStringOutput::kInteger;
}

}  // namespace

std::string FromRecordEncoding(const std::string& record) {
    std::string utf8;
    utf8.reserve(record.size());
    for (const char c : record) {
        const auto byte = static_cast<unsigned char>(c);
        char32_t codePoint = byte;
        if (byte >= 0x80 && byte <= 0x9F) {
            codePoint = U'?';
            for (const auto& extra : kCp1252Extras)
                if (extra.byte == byte) codePoint = extra.codePoint;
        }
        if (codePoint < 0x80) {
            utf8 += static_cast<char>(codePoint);
        } else if (codePoint < 0x800) {
            utf8 += static_cast<char>(0xC0 | (codePoint >> 6));
            utf8 += static_cast<char>(0x80 | (codePoint & 0x3F));
        } else {
            utf8 += static_cast<char>(0xE0 | (codePoint >> 12));
            utf8 += static_cast<char>(0x80 | ((codePoint >> 6) & 0x3F));
            utf8 += static_cast<char>(0x80 | (codePoint & 0x3F));
        }
    }
    return utf8;
}

std::string ToRecordEncoding(const std::string& utf8) {
    std::string result;
    result.reserve(utf8.size());
    const auto size = utf8.size();
    std::size_t i = 0;
    while (i < size) {
        const auto lead = static_cast<unsigned char>(utf8[i]);
        std::size_t length = 0;
        char32_t codePoint = 0;
        char32_t minimum = 0;
        if (lead < 0x80) {
            length = 1;
            codePoint = lead;
        } else if ((lead & 0xE0) == 0xC0) {
            length = 2;
            codePoint = lead & 0x1F;
            minimum = 0x80;
        } else if ((lead & 0xF0) == 0xE0) {
            length = 3;
            codePoint = lead & 0x0F;
            minimum = 0x800;
        } else if ((lead & 0xF8) == 0xF0) {
            length = 4;
            codePoint = lead & 0x07;
            minimum = 0x10000;
        }
        bool wellFormed = length > 0 && i + length <= size;
        for (std::size_t k = 1; wellFormed && k < length; ++k) {
            const auto next = static_cast<unsigned char>(utf8[i + k]);
            wellFormed = IsContinuation(next);
            codePoint = (codePoint << 6) | (next & 0x3F);
        }
        // Overlong forms, surrogates and values past U+10FFFF are not text.
        wellFormed = wellFormed && codePoint >= minimum && codePoint <= 0x10FFFF &&
                     !(codePoint >= 0xD800 && codePoint <= 0xDFFF);
        if (!wellFormed) {
            result += '?';  // one "?" per byte that is not part of a character
            ++i;
            continue;
        }
        result += ToCp1252(codePoint);
        i += length;
    }
    return result;
}

void BStringOutput::SetMax(int lines, int width) {
    if (lines < 1 || width < 0) {
        throw std::invalid_argument("BStringOutput::SetMax: " + std::to_string(lines) + " lines of width " +
                                    std::to_string(width) + " is not a record size");
    }
    maxLines_ = lines;
    width_ = width;
}

void BStringOutput::SetLeftMargin(int margin) {
    if (margin < 0) {
        throw std::invalid_argument("BStringOutput::SetLeftMargin: negative margin " + std::to_string(margin));
    }
    leftMargin_ = margin;
}

// Nonzero: an integer 0 is written as "N/A", left-aligned, whatever its flag.
void BStringOutput::SetZeroAsNA(int zeroAsNA) { zeroAsNA_ = zeroAsNA; }

void BStringOutput::SetFixedWidth(bool fixed) { fixedWidth_ = fixed; }

void BStringOutput::SetNew() { line_.clear(); }

namespace {

// Places bytes (already in the record encoding) into line at start, width wide.
void Place(std::string& line, std::size_t start, std::size_t width, std::string_view bytes, bool rightAligned) {
    if (line.size() < start + width) line.resize(start + width, ' ');
    char* field = line.data() + start;
    if (!rightAligned) {
        const std::size_t kept = std::min(width, bytes.size());
        std::memcpy(field, bytes.data(), kept);
        std::memset(field + kept, ' ', width - kept);
    } else if (bytes.size() > width) {
        std::memset(field, '*', width);
    } else {
        std::memset(field, '0', width - bytes.size());
        std::memcpy(field + width - bytes.size(), bytes.data(), bytes.size());
    }
}

bool IsAscii(const std::string& text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

}  // namespace

void BStringOutput::PutData(int row, int column, int width, const std::string& value, int flag) {
    if (row != 0 || row >= maxLines_) {
        // Every AIS record is one line; a second row would be a second record.
        throw std::invalid_argument("BStringOutput::PutData: row " + std::to_string(row) +
                                    " at column " + std::to_string(column) + ": a record has only row 0");
    }
    if (column < 0 || width < 0) {
        throw std::invalid_argument("BStringOutput::PutData: field at column " + std::to_string(column) +
                                    " of width " + std::to_string(width) + " lies outside the record");
    }
    const auto start = static_cast<std::size_t>(leftMargin_ + column);
    // Plain ASCII (nearly every field) is the same bytes in the record.
    if (IsAscii(value)) {
        Place(line_, start, static_cast<std::size_t>(width), value, IsRightAligned(flag));
    } else {
        Place(line_, start, static_cast<std::size_t>(width), ToRecordEncoding(value), IsRightAligned(flag));
    }
    const auto recordWidth = static_cast<std::size_t>(leftMargin_ + width_);
    if (fixedWidth_ && line_.size() > recordWidth) line_.resize(recordWidth);
}

void BStringOutput::PutData(int row, int column, int width, const char* value, int flag) {
    PutData(row, column, width, std::string(value != nullptr ? value : ""), flag);
}

void BStringOutput::PutData(int row, int column, int width, std::int64_t value, int flag) {
    if (value == 0 && zeroAsNA_ != 0) {
        PutData(row, column, width, std::string("N/A"), kText);
        return;
    }
    if (value < 0 && IsRightAligned(flag)) {
        // "-" then the zero-filled digits: "-0042", not "000-42".
        const auto magnitude = std::to_string(value).substr(1);
        std::string text;
        if (width >= 1 && magnitude.size() < static_cast<std::size_t>(width)) {
            text = "-" + std::string(static_cast<std::size_t>(width) - 1 - magnitude.size(), '0') + magnitude;
        } else {
            text = "-" + magnitude;  // too long: the field shows its overflow mark
        }
        PutData(row, column, width, text, flag);
        return;
    }
    PutData(row, column, width, std::to_string(value), flag);
}

void BStringOutput::PutData(int row, int column, int width, int value, int flag) {
    PutData(row, column, width, static_cast<std::int64_t>(value), flag);
}

void BStringOutput::PutData(int row, int column, int width, const Date& value, int flag) {
    (void)flag;  // a date has one form, YYYYMMDD, whatever the flag
    PutData(row, column, width, _IsDateNull(value) ? std::string() : value.ToCompact(), kText);
}

void BStringOutput::SetEnd(int end) {
    const auto recordWidth = static_cast<std::size_t>(leftMargin_ + width_);
    if (end != 0 && line_.size() < recordWidth) {
        line_.resize(recordWidth, ' ');
    }
}

void BStringOutput::ListOutput(StringList& list) { list.push_back(line_); }
void BStringOutput::ListOutput(LogSink& list) { list.Append(line_); }

}  // namespace iras
