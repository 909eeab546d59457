// A scratch SQLite database for the database layer's tests: a fresh file in a
// folder of its own under the temporary directory, reached through an alias
// of its own, removed after each test.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include "platform/database/Query.h"

namespace iras::db::testing {

class ScratchDatabase : public ::testing::Test {
protected:
    static constexpr const char* Alias = "scratchdb";

    void SetUp() override {
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        folder_ = std::filesystem::temp_directory_path() /
                  ("iras_db_" + std::to_string(::getpid()) + "_" + info->test_suite_name() + "_" + info->name());
        std::filesystem::remove_all(folder_);
        std::filesystem::create_directories(folder_);
        path_ = (folder_ / "payroll.db").string();
        ConnectionRegistry::Register(Alias, ConnectionConfig{"sqlite", path_, true});
    }

    void TearDown() override {
        ConnectionRegistry::Unregister(Alias);
        std::filesystem::remove_all(folder_);
    }

    void Run(const std::string& script) { ExecScript(Alias, script); }

    Query Open(const std::string& sql) {
        Query query(Alias);
        query.SetSQL(sql);
        query.Open();
        return query;
    }

    // The one value of a one-row, one-column query.
    std::string Scalar(const std::string& sql) {
        Query query = Open(sql);
        return query.FieldByName(query.FieldNames().at(0)).AsString();
    }

    std::filesystem::path folder_;
    std::string path_;
};

}  // namespace iras::db::testing
