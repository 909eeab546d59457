// The fixed-width line builder of the AIS records.
//
// A record is built by placing values at 0-based columns in given widths:
//   flag 0       text, left-aligned, blank-filled, cut on the right;
//   flag 1       amount text, right-aligned, zero-filled;
//   flag 2       integer, right-aligned, zero-filled;
//   flag 0x8000  date, written YYYYMMDD (the empty date writes blanks).
// The line grows to hold every field placed, even past the maximum width (the
// Appendix 8A header reaches column 800 of a 700 record; extra IR8S Section B
// blocks lengthen a record), and SetEnd blank-pads it to the maximum. In the
// fixed-width mode a record chooses instead (SetFixedWidth), the line is cut
// at the maximum: the Appendix 8B detail record stays 9300 bytes although
// its last declared field reaches column 9301.
// A field keeps its width whatever it is given: a value too long for a flag 1
// or 2 field fills it with "*" (cutting it would leave a wrong but valid-looking
// amount; the jobs check amounts first), an empty text with flag 1 or 2 gives
// zeros, a negative integer with flag 2 is written "-0042". A record is one
// line: only row 0 exists.
//
// Records are fixed width in bytes. Text from the database is UTF-8; the
// builder writes it in Windows-1252, one byte a character, so a name with
// accents keeps its record's width. A character that Windows-1252 cannot hold,
// and each byte that is not valid UTF-8, is written as "?"; a control character
// (a line break in a name) as a blank.
#pragma once

#include <cstdint>
#include <string>

#include "platform/common/Date.h"
#include "platform/common/LogSink.h"

namespace iras {

class BStringOutput {
public:
    static constexpr int kText = 0;
    static constexpr int kAmount = 1;
    static constexpr int kInteger = 2;
    static constexpr int kDate = 0x8000;

    void SetMax(int lines, int width);
    void SetLeftMargin(int margin);
    void SetZeroAsNA(int zeroAsNA);
    // true: nothing is written past the maximum width; false (the default):
    // the line grows to hold every field placed.
    void SetFixedWidth(bool fixed);

    void SetNew();  // starts a new, empty record

    void PutData(int row, int column, int width, const std::string& value, int flag);
    void PutData(int row, int column, int width, const char* value, int flag);
    void PutData(int row, int column, int width, std::int64_t value, int flag);
    void PutData(int row, int column, int width, int value, int flag);
    void PutData(int row, int column, int width, const Date& value, int flag);

    void SetEnd(int end);            // closes the record: blank-pads it to the maximum width
    void ListOutput(StringList& list);  // appends the closed record to list
    void ListOutput(LogSink& list);     // or to a file that takes it as it comes

    const std::string& Line() const { return line_; }  // the record as built so far

private:
    int maxLines_ = 1;
    int width_ = 0;
    int leftMargin_ = 0;
    int zeroAsNA_ = 0;
    bool fixedWidth_ = false;
    std::string line_;
};

// UTF-8 text in Windows-1252, one byte a character; "?" for what it cannot hold.
std::string ToRecordEncoding(const std::string& utf8);

// A record's Windows-1252 text back in UTF-8, for showing it to a person (the
// verification report); the five bytes the code page leaves unassigned become
// "?".
std::string FromRecordEncoding(const std::string& record);

}  // namespace iras
