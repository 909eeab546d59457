// Reading an AIS file record by record in fixed-size chunks.
#include "platform/ais/AisRecordReader.h"

#include <algorithm>
#include <cstring>

namespace iras {

AisRecordReader::AisRecordReader(std::istream& in) : in_(in), buffer_(1 << 16) {}

bool AisRecordReader::Fill() {
    if (!in_.good()) return false;
    in_.read(buffer_.data(), static_cast<std::streamsize>(buffer_.size()));
    filled_ = static_cast<std::size_t>(in_.gcount());
    position_ = 0;
    if (in_.bad()) failed_ = true;
    return filled_ > 0;
}

bool AisRecordReader::Next(AisRawRecord& record) {
    record.bytes.clear();
    record.length = 0;
    bool sawAnything = false;
    char lastByte = 0;
    for (;;) {
        if (position_ == filled_ && !Fill()) {
            if (!sawAnything) return false;
            record.line = ++line_;
            record.end = AisLineEnd::None;
            return true;
        }
        sawAnything = true;
        const char* start = buffer_.data() + position_;
        const std::size_t available = filled_ - position_;
        const void* found = std::memchr(start, '\n', available);
        const std::size_t count =
            found ? static_cast<std::size_t>(static_cast<const char*>(found) - start) : available;
        if (record.bytes.size() < kMaxKeptBytes)
            record.bytes.append(start, std::min(count, kMaxKeptBytes - record.bytes.size()));
        record.length += count;
        if (count > 0) lastByte = start[count - 1];
        if (!found) {
            position_ = filled_;
            continue;
        }
        position_ += count + 1;  // past the LF
        record.line = ++line_;
        if (record.length > 0 && lastByte == '\r') {
            record.end = AisLineEnd::CrLf;
            --record.length;
            if (record.bytes.size() > record.length) record.bytes.pop_back();
        } else {
            record.end = AisLineEnd::BareLf;
        }
        return true;
    }
}

}  // namespace iras
