// Splits an AIS file into records as bytes, without loading the whole file:
// an Appendix 8B return of a large employer runs to hundreds of megabytes.
// Records end with CR LF; the reader also reports a record that ends with a
// bare LF or that the file ends in without any line end, so that the checker
// can name them.
#pragma once

#include <cstddef>
#include <istream>
#include <string>
#include <vector>

namespace iras {

enum class AisLineEnd { CrLf, BareLf, None };

struct AisRawRecord {
    int line = 0;             // 1-based
    std::string bytes;        // the record without its line end (at most kMaxKeptBytes of it)
    std::size_t length = 0;   // the record's true length in bytes
    AisLineEnd end = AisLineEnd::CrLf;
};

class AisRecordReader {
public:
    // Records longer than this are only measured: no return has records
    // anywhere near this long, so their fields are never read.
    static constexpr std::size_t kMaxKeptBytes = 1 << 20;

    explicit AisRecordReader(std::istream& in);
    AisRecordReader(const AisRecordReader&) = delete;
    AisRecordReader& operator=(const AisRecordReader&) = delete;

    // The next record; false at the end of the file (or on a read error).
    bool Next(AisRawRecord& record);
    // True when the stream failed for another reason than reaching its end.
    bool ReadFailed() const { return failed_; }

private:
    bool Fill();

    std::istream& in_;
    std::vector<char> buffer_;
    std::size_t position_ = 0;
    std::size_t filled_ = 0;
    int line_ = 0;
    bool failed_ = false;
};

}  // namespace iras
