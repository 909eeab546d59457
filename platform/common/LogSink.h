// Where a run writes its lines: the run log, the debug log, and the employee
// error list. The session form backs a sink with a text view, the command-line
// tool with a file or the terminal, tests with memory.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace iras {

using StringList = std::vector<std::string>;

class LogSink {
public:
    virtual ~LogSink() = default;
    virtual void Append(std::string_view line) = 0;
    virtual StringList Lines() const = 0;
    virtual void Clear() = 0;
    virtual bool IsEmpty() const { return Lines().empty(); }
    // Writes the lines to file, each ended by "\n", all or nothing: "" when
    // the file is in place, else the reason.
    virtual std::string SaveTo(const std::filesystem::path& file);
};

// Keeps the lines in memory; the default sink of runs and tests.
class MemoryLog : public LogSink {
public:
    void Append(std::string_view line) override { lines_.emplace_back(line); }
    StringList Lines() const override { return lines_; }
    void Clear() override { lines_.clear(); }
    bool IsEmpty() const override { return lines_.empty(); }
    const StringList& View() const { return lines_; }

private:
    StringList lines_;
};

}  // namespace iras
