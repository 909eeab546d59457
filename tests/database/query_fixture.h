// Databases for the database layer's tests: a scratch SQLite file in a folder
// of its own per test, or the sample database made once per suite, each
// reached through an alias of its own; and helpers to read results and errors.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <vector>

#include "platform/database/Query.h"
#include "platform/database/Schema.h"
#include "tests/support/ScratchFolder.h"

namespace iras::db::testing {

inline Query OpenOn(const std::string& alias, const std::string& sql) {
    Query query(alias);
    query.SetSQL(sql);
    query.Open();
    return query;
}

// One field of every row, in order, as text.
inline std::vector<std::string> Column(Query& query, const std::string& name) {
    std::vector<std::string> values;
    for (query.First(); !query.Eof(); query.Next()) values.push_back(query.FieldByName(name).AsString());
    return values;
}

// The message of the DatabaseError that action throws.
template <typename Action>
std::string ErrorOf(Action action) {
    try {
        action();
    } catch (const DatabaseError& error) {
        return error.what();
    }
    ADD_FAILURE() << "no DatabaseError";
    return "";
}

inline std::filesystem::path FreshFolder(const std::string& name) { return iras::testing::UniqueTempFolder("iras_db_" + name); }

class ScratchDatabase : public ::testing::Test {
protected:
    static constexpr const char* Alias = "scratchdb";

    void SetUp() override {
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        folder_ = FreshFolder(std::string(info->test_suite_name()) + "_" + info->name());
        path_ = (folder_ / "payroll.db").string();
        ConnectionRegistry::Register(Alias, ConnectionConfig{"sqlite", path_, true});
    }
    void TearDown() override {
        ConnectionRegistry::Unregister(Alias);
        std::filesystem::remove_all(folder_);
    }

    void Run(const std::string& script) { ExecScript(Alias, script); }
    void Exec(const std::string& sql) {
        Query statement(Alias);
        statement.SetSQL(sql);
        statement.ExecSQL();
    }
    Query Open(const std::string& sql) { return OpenOn(Alias, sql); }
    std::vector<std::string> Column(const std::string& sql, const std::string& name) {
        Query query = Open(sql);
        return testing::Column(query, name);
    }
    // The one value of a one-row, one-column query.
    std::string Scalar(const std::string& sql) {
        Query query = Open(sql);
        return query.FieldByName(query.FieldNames().at(0)).AsString();
    }

    std::filesystem::path folder_;
    std::string path_;
};

// The database made with the sample data, shared by the tests of a suite;
// they only read it.
class SampleDatabase : public ::testing::Test {
protected:
    static constexpr const char* Alias = "sampledb";

    static void SetUpTestSuite() {
        folder_ = FreshFolder("sample");
        CreateDatabase(folder_ / "sample.db", true);
        ConnectionRegistry::Register(Alias, ConnectionConfig{"sqlite", (folder_ / "sample.db").string(), false});
    }
    static void TearDownTestSuite() {
        ConnectionRegistry::Unregister(Alias);
        std::filesystem::remove_all(folder_);
    }

    static Query Open(const std::string& sql) { return OpenOn(Alias, sql); }
    static std::vector<std::string> Column(const std::string& sql, const std::string& name) {
        Query query = Open(sql);
        return testing::Column(query, name);
    }

    static inline std::filesystem::path folder_;
};

}  // namespace iras::db::testing
