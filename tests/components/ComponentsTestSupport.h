// What the script runner's tests share: a scratch folder per test with a small
// SQLite database in it, the log of a dbisql run, and waiting with a generous
// limit for a process that runs on its own.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <thread>

#include "components/DbIsqlTool.h"
#include "platform/database/Connection.h"

namespace iras::testing {

namespace fs = std::filesystem;

// dbisql runs on its own; on a loaded machine it may take a while to start.
inline constexpr std::chrono::seconds ProcessPatience{60};

template <typename Condition>
bool WaitFor(Condition condition, std::chrono::milliseconds limit = ProcessPatience) {
    const auto until = std::chrono::steady_clock::now() + limit;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > until) return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    return true;
}

// "{dir}" in a text stands for a test's folder.
inline std::string InFolder(std::string text, const fs::path& folder) {
    for (std::size_t at; (at = text.find("{dir}")) != std::string::npos;) text.replace(at, 5, folder.string());
    return text;
}

inline std::string ReadText(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

inline void WriteText(const fs::path& file, const std::string& text) {
    std::ofstream(file, std::ios::binary) << text;
}

// A folder of its own per test, holding payroll.db with an empty table
// Staff(Id, Name).
class ScriptFolder : public ::testing::Test {
protected:
    void SetUp() override {
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        folder_ = fs::temp_directory_path() / ("iras_components_" + std::to_string(::getpid()) + "_" +
                                               info->test_suite_name() + "_" + info->name());
        fs::remove_all(folder_);
        fs::create_directories(folder_);
        database_ = (folder_ / "payroll.db").string();
        db::OpenConnection(db::ConnectionConfig{"sqlite", database_, true})
            ->ExecScript("CREATE TABLE Staff (Id INTEGER PRIMARY KEY, Name TEXT NOT NULL);");
    }
    void TearDown() override { fs::remove_all(folder_); }

    // The names in Staff, by Id, joined with ",".
    std::string StaffNames() const {
        const db::ResultSet result = db::OpenConnection(db::ConnectionConfig{"sqlite", database_, false})
                                         ->Select("SELECT Name FROM Staff ORDER BY Id", {});
        std::string names;
        for (const auto& row : result.rows) names += (names.empty() ? "" : ",") + std::get<std::string>(row[0]);
        return names;
    }

    // The log of a dbisql run of script, once that run has ended (its last
    // line is written after everything else); "" when it did not end in time.
    static std::string LogWhenEnded(const fs::path& log) {
        std::string text;
        WaitFor([&] {
            text = ReadText(log);
            return text.find("dbisql ended with status") != std::string::npos;
        });
        return text.find("dbisql ended with status") != std::string::npos ? text : "";
    }

    fs::path folder_;
    std::string database_;
};

}  // namespace iras::testing
