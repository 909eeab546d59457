// Hand-laid AIS records and throw-away files for the tests of the checker and
// of the engine that uses it. A record starts as blanks of its width; values
// are placed at the 1-based columns of the layout tables, exactly as the test
// writer reads them there.
#pragma once

#include <unistd.h>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "platform/ais/AisFileChecker.h"

namespace iras::test {

class RecordText {
public:
    explicit RecordText(std::size_t width) : text_(width, ' ') {}
    explicit RecordText(std::string text) : text_(std::move(text)) {}
    RecordText& At(int column, std::string_view value) {
        text_.replace(static_cast<std::size_t>(column - 1), value.size(), value);
        return *this;
    }
    operator std::string() const { return text_; }  // NOLINT: records read as strings

private:
    std::string text_;
};

// record with value placed at a 1-based column.
inline std::string With(std::string record, int column, std::string_view value) {
    return RecordText(std::move(record)).At(column, value);
}

inline std::string IR8AHeader() {
    return RecordText(1200).At(1, "0").At(2, "6").At(3, "2023").At(7, "08").At(9, "7").At(10, "199912345A")
        .At(22, "TAN AH KOW").At(222, "O").At(223, "20240115").At(231, "HQ").At(261, "IR8A");
}

// A detail with every amount zero: dollar fields zero-filled, cents fields eleven zeros.
inline RecordText IR8ADetail(const char* idNo) {
    RecordText detail(1200);
    detail.At(1, "1").At(2, "1").At(3, idNo).At(15, "EMPLOYEE").At(251, "301").At(254, "M");
    detail.At(255, "19800229").At(272, "20230101").At(280, "20231231");
    for (auto [column, width] : {std::pair{263, 9}, {288, 5}, {293, 5}, {298, 7}, {305, 5}, {310, 9}, {319, 9},
                                 {328, 9}, {337, 9}, {346, 9}, {355, 9}, {364, 9}, {373, 9}})
        detail.At(column, std::string(static_cast<std::size_t>(width), '0'));
    detail.At(400, "00000000000");
    for (int column = 428; column <= 549; column += 11) detail.At(column, "00000000000");
    return detail;
}

// Two employees:
//   1: income 50,000 = salary 40,000 + bonus 8,000 + others 2,000; donation 10.01
//      rounded up to 11; CPF 6,000; mosque fund zero, placed as "0" and blanks.
//   2: income 12,345 = salary 12,345; CPF 2,469; mosque fund 2; exempt income -7.
// The trailer adds them: 62,345; 52,345; 8,000; 0; 2,000; -7; 0; 0; 11; 8,469; 0; 2.
inline std::vector<std::string> ValidIR8A() {
    RecordText first = IR8ADetail("S1234567D");
    first.At(263, "00005000{").At(288, "0    ").At(293, "0001A").At(298, "000600{");
    first.At(310, "00004000{").At(319, "00000800{").At(337, "00000200{");
    first.At(400, "0000012345{").At(411, "20230101").At(419, "20231231").At(427, "M");
    RecordText second = IR8ADetail("S7654321A");
    second.At(263, "00001234E").At(288, "0000B").At(298, "000246I").At(310, "00001234E").At(355, "00000000P");
    RecordText trailer(1200);
    trailer.At(1, "2").At(2, "000002");
    const char* totals[] = {"6234E", "5234E", "800{", "0", "200{", "00000000000P",
                            "0",     "0",     "1A",   "846I", "0", "00000000000B"};
    for (int i = 0; i < 12; ++i) trailer.At(8 + 12 * i, totals[i]);
    return {IR8AHeader(), first, second, trailer};
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
        std::ofstream(path_, std::ios::binary | std::ios::trunc) << bytes;
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
