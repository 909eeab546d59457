// Hand-laid AIS records and throw-away files for the checker's tests. A record
// starts as blanks of its width; values are placed at the 1-based columns of
// the layout tables, exactly as the test writer reads them there.
#pragma once

#include <atomic>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include <unistd.h>

#include "platform/ais/AisFileChecker.h"

namespace iras::test {

class RecordText {
public:
    explicit RecordText(std::size_t width) : text_(width, ' ') {}
    RecordText& At(int column, std::string_view value) {
        text_.replace(static_cast<std::size_t>(column - 1), value.size(), value);
        return *this;
    }
    std::string& Text() { return text_; }
    operator std::string() const { return text_; }  // NOLINT: records read as strings

private:
    std::string text_;
};

// record with value placed at a 1-based column.
inline std::string With(std::string record, int column, std::string_view value) {
    record.replace(static_cast<std::size_t>(column - 1), value.size(), value);
    return record;
}

// A file in the temporary folder that is removed when the test ends.
class TempFile {
public:
    TempFile() {
        static std::atomic<int> counter{0};
        path_ = std::filesystem::temp_directory_path() /
                ("ais_checker_test_" + std::to_string(::getpid()) + "_" + std::to_string(counter++) + ".txt");
    }
    ~TempFile() {
        std::error_code ignored;
        std::filesystem::remove(path_, ignored);
    }
    TempFile(const TempFile&) = delete;
    TempFile& operator=(const TempFile&) = delete;

    const std::filesystem::path& Path() const { return path_; }

    void WriteBytes(const std::string& bytes) const {
        std::ofstream out(path_, std::ios::binary | std::ios::trunc);
        out << bytes;
    }
    // Every record, the last one too, ended with CR LF.
    void WriteRecords(const std::vector<std::string>& records) const {
        std::string bytes;
        for (const std::string& record : records) bytes += record + "\r\n";
        WriteBytes(bytes);
    }

private:
    std::filesystem::path path_;
};

// The checker's verdict on a file made of these records.
inline AisCheckResult CheckRecords(const std::vector<std::string>& records,
                                   std::optional<AisKind> kind = std::nullopt) {
    TempFile file;
    file.WriteRecords(records);
    return CheckAisFile(file.Path(), kind);
}

}  // namespace iras::test
