// A log that goes to its file as the run writes it, so that a run of many
// thousand employees keeps none of its millions of log lines in memory; the
// records of a return file are written the same way.
//
// The lines are written under a temporary name beside the log file (the
// ".iras-log-" files of AtomicFile.h; ".iras-tmp-" for the records of a return
// file) and the log takes its own name only when it is saved at the end of the
// run: the file the user opens is always a whole log, while a run that is
// killed leaves the temporary file with what it did, up to the last lines still
// in the buffer (at most its flush size), and the next run in that folder gives
// it a visible name. A killed run's records are removed instead.
#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>

#include "platform/common/AtomicFile.h"
#include "platform/common/LogSink.h"

namespace iras {

class StreamingLog : public LogSink {
public:
    static constexpr std::size_t kFlushBytes = 64 * 1024;

    // target answers the log file's path when the first line comes, so that
    // its folder may be made after the log is. Each line is ended by
    // lineEnd ("\r\n" for the records of a return file). The lines are
    // written out whenever flushBytes of them gather: 0 writes each line at
    // once (the run log, a few lines a phase, which a killed run must keep
    // whole), the default suits the debug log's millions of lines. kind is
    // Scratch for the records of a return file, which are nothing until whole.
    explicit StreamingLog(std::function<std::filesystem::path()> target, std::string lineEnd = "\n",
                          std::size_t flushBytes = kFlushBytes, TemporaryKind kind = TemporaryKind::Log);
    ~StreamingLog() override;
    StreamingLog(const StreamingLog&) = delete;
    StreamingLog& operator=(const StreamingLog&) = delete;

    void Append(std::string_view line) override;
    StringList Lines() const override;  // read back from the file
    void Clear() override;              // a new run: the lines so far are dropped
    bool IsEmpty() const override { return count_ == 0; }
    // Saving to the log's own path renames the temporary file there (the
    // lines that follow go on into it); any other path gets a copy.
    std::string SaveTo(const std::filesystem::path& file) override;

private:
    void Open();
    void Flush();

    std::function<std::filesystem::path()> target_;
    std::string lineEnd_;
    std::size_t flushBytes_;
    TemporaryKind kind_;
    std::filesystem::path targetPath_;
    std::filesystem::path path_;  // where the lines are: the temporary file, or the target once saved
    int descriptor_ = -1;
    bool opened_ = false;
    bool saved_ = false;   // path_ is the target
    std::string failure_;  // why the file cannot take the lines; they stay in buffer_
    std::string buffer_;   // lines not yet written
    std::size_t count_ = 0;
};

}  // namespace iras
