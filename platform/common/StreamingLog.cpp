// The log that streams to its file (see StreamingLog.h). The lines gather in
// a buffer that is written out whenever it holds the flush size; a file that
// cannot be made or written keeps every line in the buffer instead, so that
// nothing is lost and saving reports why the file is missing.
#include "platform/common/StreamingLog.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <fstream>
#include <system_error>
#include <utility>

#include "platform/common/AtomicFile.h"

namespace iras {

namespace fs = std::filesystem;

StreamingLog::StreamingLog(std::function<fs::path()> target, std::string lineEnd, std::size_t flushBytes,
                           TemporaryKind kind)
    : target_(std::move(target)), lineEnd_(std::move(lineEnd)), flushBytes_(flushBytes), kind_(kind) {}

StreamingLog::~StreamingLog() {
    const bool temporary = descriptor_ >= 0 && !saved_;
    if (descriptor_ >= 0) ::close(descriptor_);
    // A log never saved goes as a log in memory goes; only a killed run
    // leaves its temporary file behind.
    std::error_code ignored;
    if (temporary) fs::remove(path_, ignored);
}

void StreamingLog::Open() {
    opened_ = true;
    targetPath_ = target_();
    if (const std::error_code fault = FileFault(FileStep::Create, targetPath_)) {
        failure_ = fault.message();
        return;
    }
    path_ = TemporaryPathBeside(targetPath_, kind_);
    descriptor_ = ::open(path_.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    if (descriptor_ < 0) failure_ = std::strerror(errno);
}

void StreamingLog::Flush() {
    if (descriptor_ < 0 || !failure_.empty()) return;
    const char* data = buffer_.data();
    std::size_t left = buffer_.size();
    while (left > 0) {
        const ssize_t written = ::write(descriptor_, data, left);
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) {
            // What was not written stays in the buffer, and so do the lines
            // that follow.
            failure_ = written < 0 ? std::strerror(errno) : "the file could not be written";
            buffer_.erase(0, buffer_.size() - left);
            return;
        }
        data += written;
        left -= static_cast<std::size_t>(written);
    }
    buffer_.clear();
}

void StreamingLog::Append(std::string_view line) {
    if (!opened_) Open();
    buffer_ += line;
    buffer_ += lineEnd_;
    ++count_;
    if (buffer_.size() >= flushBytes_) Flush();
}

StringList StreamingLog::Lines() const {
    std::string text;
    if (descriptor_ >= 0) {
        std::ifstream in(path_, std::ios::binary);
        text.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    }
    text += buffer_;
    StringList lines;
    lines.reserve(count_);
    std::size_t start = 0;
    for (std::size_t end = text.find(lineEnd_); end != std::string::npos; end = text.find(lineEnd_, start)) {
        lines.emplace_back(text, start, end - start);
        start = end + lineEnd_.size();
    }
    return lines;
}

void StreamingLog::Clear() {
    if (descriptor_ >= 0) {
        ::close(descriptor_);
        std::error_code ignored;
        if (!saved_) fs::remove(path_, ignored);
    }
    descriptor_ = -1;
    opened_ = saved_ = false;
    path_.clear();
    failure_.clear();
    buffer_.clear();
    count_ = 0;
}

std::string StreamingLog::SaveTo(const fs::path& file) {
    // Nothing written yet, or kept in memory because the file could not be made.
    if (descriptor_ < 0) return WriteLinesAtomically(file, Lines(), lineEnd_);
    Flush();
    if (!failure_.empty()) return failure_;
    if (saved_ && file == path_) return "";
    if (!saved_ && file == targetPath_) {
        if (std::string reason = MoveIntoPlace(path_, file); !reason.empty()) return reason;
        path_ = file;
        saved_ = true;
        return "";
    }
    return WriteFileAtomically(file, [this](std::ostream& out) {
        std::ifstream in(path_, std::ios::binary);
        out << in.rdbuf();
    });
}

}  // namespace iras
