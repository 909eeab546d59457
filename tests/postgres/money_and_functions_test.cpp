// Amounts stay exact on the server and the payroll's SQL functions give the
// same values on both databases. Expected values are worked out by hand from
// the rules the functions follow (half away from zero on the decimal value,
// truncation toward zero, four decimals for money) and from the sample rows.

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>

#include "platform/common/Text.h"
#include "platform/database/Query.h"
#include "tests/postgres/tool_runs.h"

namespace iras::testing {
namespace {

class BothDatabases : public ::testing::Test {
protected:
    void SetUp() override {
        if (!PostgresEnvironment::Get().Available()) return;
        db::ConnectionRegistry::Register("lite", {"sqlite", PostgresEnvironment::Get().SqliteSample(), false});
        db::ConnectionRegistry::Register("server", {db::PostgresDriver, PostgresEnvironment::Get().PostgresSample(), false});
    }
    void TearDown() override {
        db::ConnectionRegistry::Unregister("lite");
        db::ConnectionRegistry::Unregister("server");
    }

    static db::Query Open(const std::string& alias, const std::string& sql) {
        db::Query query(alias);
        query.SetSQL(sql);
        query.Open();
        return query;
    }
};

TEST_F(BothDatabases, PayrollFunctionsGiveTheSameValueOnBoth) {
    IRAS_REQUIRE_POSTGRES();
    struct Case {
        const char* expression;
        const char* expected;  // as Field::AsString shows it; "" for NULL
    };
    const Case cases[] = {
        {"ROUND(2.675, 2)", "2.68"},  // the double below 2.675 still rounds up
        {"ROUND(1.005, 2)", "1.01"},
        {"ROUND(-2.5)", "-3"},
        {"ROUND(NULL, 2)", ""},
        {"TRUNCNUM(-2.99, 0)", "-2"},
        {"TRUNCNUM(1234.5678, 2)", "1234.56"},
        {"TRUNCNUM(ROUND(CAST(84000.48 AS Money), 2), 0)", "84000"},
        {"CAST(1.23456 AS Money)", "1.2346"},
        {"YEAR('2024-02-29')", "2024"},
        {"YEAR('2023-02-29')", ""},  // no such day
        {"DATE('2024' || '-12-31')", "2024-12-31"},
        {"DATE('2024-01-31', '+1 days')", "2024-02-01"},
        {"FGetDateTimeFormat('2024-03-05 07:08:09')", "05/03/2024 07:08:09"},
        {"FGetDateTimeFormat('2024-03-05')", "05/03/2024 00:00:00"},
        {"FGetPersonalName(1001)", "Lim Wei Jie"},
        {"FGetEmployeeIdByPersonalSysId(1001)", "LCP0001"},
        {"FGetEmployeeSysId('LCP0001')", "51001"},
        {"FGetIRASEmployeeBank(51001)", "1"},
        {"FGetPersonalName(999999)", ""},
        {"IF 1 < 2 THEN 'yes' ELSE 'no' ENDIF", "yes"},
        {"printf('%04d', 7)", "0007"},
        {"min(3, 5)", "3"},
        // Values read back as the records print them: a whole decimal without
        // ".00", a sum of cents without binary noise, integer division.
        {"7000.00 + 0", "7000"},
        {"0.1 + 0.2", "0.3"},
        {"10 / 4", "2"},
        {"'a' || 1", "a1"},
    };
    for (const Case& c : cases) {
        const std::string sql = std::string("SELECT ") + c.expression + " AS v";
        for (const char* alias : {"lite", "server"}) {
            db::Query query = Open(alias, sql);
            EXPECT_EQ(query.FieldByName("v").AsString(), c.expected) << c.expression << " on " << alias;
        }
    }
}

TEST_F(BothDatabases, TextFromTheFunctionsSortsByteByByteAsOnSQLite) {
    IRAS_REQUIRE_POSTGRES();
    // The test server's own collation is English (ICU en-US), which sorts
    // "_c", "a", "B"; SQLite compares bytes. Text that is no date comes back
    // from FGetDateTimeFormat as it is.
    const std::string sql =
        "SELECT FGetDateTimeFormat(x) AS v FROM (SELECT 'a' AS x UNION ALL SELECT 'B' UNION ALL SELECT '_c') "
        "ORDER BY v";
    for (const char* alias : {"lite", "server"}) {
        db::Query query = Open(alias, sql);
        std::vector<std::string> order;
        for (query.First(); !query.Eof(); query.Next()) order.push_back(query.FieldByName("v").AsString());
        EXPECT_EQ(order, (std::vector<std::string>{"B", "_c", "a"})) << alias;  // 0x42, 0x5F, 0x61
    }
}

// The REAL columns of each table of the SQLite sample, with its key.
struct AmountTable {
    std::string name;
    std::vector<std::string> key;
    std::vector<std::string> amounts;
};

std::vector<AmountTable> AmountTables() {
    std::vector<AmountTable> tables;
    db::Query names("lite");
    names.SetSQL("SELECT name FROM sqlite_master WHERE type = 'table' ORDER BY name");
    names.Open();
    for (names.First(); !names.Eof(); names.Next()) {
        AmountTable table{names.FieldByName("name").AsString(), {}, {}};
        db::Query columns("lite");
        columns.SetSQL("PRAGMA table_info(\"" + table.name + "\")");
        columns.Open();
        for (columns.First(); !columns.Eof(); columns.Next()) {
            if (columns.FieldByName("pk").AsInteger() > 0) table.key.push_back(columns.FieldByName("name").AsString());
            if (columns.FieldByName("type").AsString() == "REAL")
                table.amounts.push_back(columns.FieldByName("name").AsString());
        }
        if (!table.amounts.empty()) tables.push_back(table);
    }
    return tables;
}

TEST_F(BothDatabases, EveryAmountIsNumericOnTheServerAndTheSameToTheCent) {
    IRAS_REQUIRE_POSTGRES();
    const std::vector<AmountTable> tables = AmountTables();
    ASSERT_GE(tables.size(), 5u);  // IR8A, IR8S's sections, Appendix 8A and 8B at least
    int amounts = 0;
    for (const AmountTable& table : tables) {
        for (const std::string& column : table.amounts) {
            db::Query type = Open("server",
                                  "SELECT data_type, domain_name FROM information_schema.columns WHERE table_name = '" +
                                      AsciiLower(table.name) + "' AND column_name = '" + AsciiLower(column) + "'");
            EXPECT_EQ(type.FieldByName("data_type").AsString(), "numeric") << table.name << "." << column;
            EXPECT_EQ(type.FieldByName("domain_name").AsString(), "money_amount") << table.name << "." << column;
        }
        std::string select = "SELECT ";
        for (const auto& column : table.amounts) select += column + ", ";
        std::string order;
        for (const auto& column : table.key) order += (order.empty() ? "" : ", ") + column;
        select += "1 AS one FROM " + table.name + (order.empty() ? "" : " ORDER BY " + order);
        db::Query lite = Open("lite", select);
        db::Query server = Open("server", select);
        ASSERT_EQ(lite.RecordCount(), server.RecordCount()) << table.name;
        for (lite.First(), server.First(); !lite.Eof(); lite.Next(), server.Next()) {
            for (const auto& column : table.amounts) {
                const double expected = lite.FieldByName(column).AsFloat();
                const double actual = server.FieldByName(column).AsFloat();
                EXPECT_EQ(std::llround(expected * 100), std::llround(actual * 100)) << table.name << "." << column;
                ++amounts;
            }
        }
    }
    EXPECT_GT(amounts, 1000);
}

TEST_F(BothDatabases, ServerSumsCentsWithoutBinaryError) {
    IRAS_REQUIRE_POSTGRES();
    // Ten amounts of 0.10 add up to exactly 1.00, where a binary double makes
    // 0.9999999999999999 of them.
    db::Query sum = Open("server",
                         "SELECT CAST(SUM(GrossTotal) AS TEXT) AS total FROM (SELECT CAST(0.10 AS money_amount) AS "
                         "GrossTotal FROM generate_series(1, 10)) AS tenths");
    EXPECT_EQ(sum.FieldByName("total").AsString(), "1.00");
}

// A read forward takes its rows from the server a batch at a time, while
// the reader runs other queries and transactions on the same connection (the
// section queries and the engine's writes of each employee).
TEST_F(BothDatabases, ServerReadForwardGoesOnAcrossBatchesAndOtherStatements) {
    IRAS_REQUIRE_POSTGRES();
    db::Query rows("server");
    rows.SetForwardOnly(true);
    rows.SetSQL("SELECT i, FGetPersonalName(1001) AS name FROM generate_series(1, 2500) AS g(i) ORDER BY i");
    rows.Open();
    std::int64_t count = 0;
    std::int64_t sum = 0;
    bool inOrder = true;
    for (rows.First(); !rows.Eof(); rows.Next()) {
        const std::int64_t i = rows.FieldByName("i").AsInteger();
        inOrder = inOrder && i == count + 1;
        ++count;
        sum += i;
        if (i == 1000 || i == 2000) {
            EXPECT_EQ(Open("server", "SELECT FGetEmployeeIdByPersonalSysId(1001) AS e").FieldByName("e").AsString(),
                      "LCP0001");
            db::Transaction undone("server");
            db::Query change("server");
            change.SetSQL("UPDATE Personal SET PersonalName = 'Changed' WHERE PersonalSysId = 1001");
            change.ExecSQL();
        }  // rolled back
    }
    EXPECT_TRUE(inOrder);
    EXPECT_EQ(count, 2500);
    EXPECT_EQ(sum, 2500 * 2501 / 2);
    EXPECT_EQ(rows.FieldByName("name").AsString(), "Lim Wei Jie");

    // Left half read, the cursor goes with the query; the next read starts afresh.
    rows.Open();
    rows.Next();
    EXPECT_EQ(rows.FieldByName("i").AsInteger(), 2);
    rows.Close();
    rows.Open();
    EXPECT_EQ(rows.FieldByName("i").AsInteger(), 1);
}

}  // namespace
}  // namespace iras::testing
