// A fresh payroll database for each host test, made as the product makes it
// (schema, the engine's own tables, keywords) in a temporary SQLite file under
// the alias "kovadb", with helpers to put hand-made rows in and read them back.
#pragma once

#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <unistd.h>

#include "platform/database/Query.h"
#include "platform/database/Schema.h"
#include "tests/support/ScratchFolder.h"

namespace iras::testing {

inline std::string ReadText(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::stringstream text;
    text << in.rdbuf();
    return text.str();
}

class HostDatabaseTest : public ::testing::Test {
protected:
    void SetUp() override {
        folder_ = UniqueTempFolder("iras-host");
        db::CreateDatabase(folder_ / "payroll.db", false);
        db::ConnectionRegistry::Register("kovadb", {"sqlite", (folder_ / "payroll.db").string(), false});
    }

    void TearDown() override {
        db::ConnectionRegistry::Unregister("kovadb");
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }

    static void Exec(const std::string& sql) {
        db::Query query("kovadb");
        query.SetSQL(sql);
        query.ExecSQL();
    }

    // One column of every row, joined with "," in the order of the text.
    static std::string Text(const std::string& sql) {
        db::Query query("kovadb");
        query.SetSQL(sql);
        query.Open();
        std::string joined;
        if (query.IsEmpty()) return joined;
        const std::string name = query.FieldNames().front();
        for (query.First(); !query.Eof(); query.Next()) {
            if (!joined.empty()) joined += ",";
            joined += query.FieldByName(name).AsString();
        }
        return joined;
    }

    std::filesystem::path folder_;
};

}  // namespace iras::testing
