// The payroll server's SQL forms run on SQLite: conditionals, select-list
// aliases, the glued number, and rounding that agrees with the records. Each
// expected value is worked out by hand from the rows the test inserts.

#include <gtest/gtest.h>

#include "platform/database/SqlDialect.h"
#include "tests/database/query_fixture.h"

namespace iras::db::testing {
namespace {

using Values = std::vector<std::string>;

class Dialect : public ScratchDatabase {
protected:
    void SetUp() override {
        ScratchDatabase::SetUp();
        Run("CREATE TABLE t (k INTEGER, v REAL); INSERT INTO t VALUES (1, -5), (2, 0), (3, 7.5);");
    }
};

TEST_F(Dialect, IfThenElseEndifChoosesItsBranchRowByRow) {
    EXPECT_EQ(Column("SELECT (IF (v < 0) THEN 0 ELSE v ENDIF) AS c FROM t ORDER BY k", "c"), (Values{"0", "0", "7.5"}));
    // Nested, and closed with the two-word END IF.
    EXPECT_EQ(Column("SELECT IF v < 0 THEN 'neg' ELSE IF v = 0 THEN 'zero' ELSE 'pos' ENDIF END IF AS c "
                     "FROM t ORDER BY k", "c"),
              (Values{"neg", "zero", "pos"}));
    // With EXISTS, as the supplementary IR8A picks the cessation of the basis year.
    Run("CREATE TABLE Emp (PersonalSysId INTEGER, YEYear INTEGER, Cessation TEXT);"
        "INSERT INTO Emp VALUES (1, 2023, '2023-06-30'), (2, 2022, '2022-01-31');");
    EXPECT_EQ(Column("SELECT PersonalSysId, (IF EXISTS(SELECT Cessation FROM Emp WHERE PersonalSysId = "
                     "A.PersonalSysId AND YEYear = 2023) THEN (SELECT Cessation FROM Emp WHERE PersonalSysId = "
                     "A.PersonalSysId AND YEYear = 2023) ELSE '1899-12-30' ENDIF) AS SupCessation FROM Emp A "
                     "ORDER BY PersonalSysId", "SupCessation"),
              (Values{"2023-06-30", "1899-12-30"}));
    // Scripts say CREATE TABLE IF NOT EXISTS; that IF is no expression.
    Run("CREATE TABLE IF NOT EXISTS t (k INTEGER);");
    EXPECT_EQ(Scalar("SELECT count(*) AS n FROM t"), "3");
}

TEST_F(Dialect, AliasesChainThroughLaterItemsOfTheSelectList) {
    // v = 7.5: a = 7.5, b = 8.5, c = 85, d = 85 - 7.5 = 77.5; "*" after the computed items.
    Query query = Open("SELECT v AS a, a + 1 AS b, b * 10 AS c, (c - a) AS d, * FROM t WHERE k = 3");
    EXPECT_EQ(query.FieldByName("b").AsString(), "8.5");
    EXPECT_EQ(query.FieldByName("c").AsString(), "85");
    EXPECT_EQ(query.FieldByName("d").AsString(), "77.5");
    EXPECT_EQ(query.FieldByName("k").AsInteger(), 3);
    // An item without AS keeps its written name.
    EXPECT_EQ(Open("SELECT v AS a, a FROM t WHERE k = 3").FieldNames(), (Values{"a", "a"}));
    EXPECT_EQ(Open("SELECT *, v * 2 AS w FROM t WHERE k = 3").FieldByName("w").AsString(), "15");
}

TEST_F(Dialect, QualifiedNamesFunctionNamesAndLiteralsAreNotAliases) {
    // "k" is an alias here, yet t.k is the column; "t" is an alias, yet t.k
    // names the table; "Year" is an alias, yet YEAR(...) is the function.
    Query query = Open("SELECT 100 AS k, 50 AS t, t.k AS tk, 1 AS Year, YEAR('2023-05-01') AS y, k + 1 AS k1 "
                       "FROM t WHERE t.k = 2");
    EXPECT_EQ(query.FieldByName("tk").AsInteger(), 2);
    EXPECT_EQ(query.FieldByName("y").AsInteger(), 2023);
    EXPECT_EQ(query.FieldByName("k1").AsInteger(), 101);
    // A literal holding a doubled quote, IF ... ENDIF, an alias name and a
    // glued number reaches the engine exactly as written.
    Query literal = Open("SELECT 'x' AS a, 'it''s IF a ENDIF 10ORDER' AS b, a || b AS c");
    EXPECT_EQ(literal.FieldByName("b").AsString(), "it's IF a ENDIF 10ORDER");
    EXPECT_EQ(literal.FieldByName("c").AsString(), "xit's IF a ENDIF 10ORDER");
}

TEST_F(Dialect, NumberGluedToKeywordIsSeparatedButAnExponentIsNot) {
    EXPECT_EQ(Column("SELECT DISTINCT k, (k - 1) AS Year FROM t WHERE k < 10000ORDER BY k DESC", "Year"),
              (Values{"2", "1", "0"}));
    EXPECT_EQ(Scalar("SELECT 1e2 + 1.5E-1 AS x"), "100.15");
}

// --- rounding ---------------------------------------------------------------

TEST_F(Dialect, RoundAndTruncnumWorkOnTheDecimalValue) {
    struct Case {
        const char* literal;
        const char* rounded;    // ROUND(x, 2), half away from zero on the decimal
        const char* truncated;  // TRUNCNUM(x, 2), toward zero
        const char* whole;      // TRUNCNUM(x, 0)
    };
    for (const Case& c : {Case{"1.005", "1.01", "1", "1"}, Case{"2.675", "2.68", "2.67", "2"},
                          Case{"1234.565", "1234.57", "1234.56", "1234"}, Case{"-0.125", "-0.13", "-0.12", "0"}}) {
        SCOPED_TRACE(c.literal);
        const std::string x = c.literal;
        Query query = Open("SELECT ROUND(" + x + ", 2) AS r, TRUNCNUM(" + x + ", 2) AS t, TRUNCNUM(" + x + ", 0) AS w");
        EXPECT_EQ(query.FieldByName("r").AsString(), c.rounded);
        EXPECT_EQ(query.FieldByName("t").AsString(), c.truncated);
        EXPECT_EQ(query.FieldByName("w").AsString(), c.whole);
    }
    // A difference is rounded on its decimal value: 1.15 - 1 is 0.15, so 0.2
    // (binary 0.1499999999999999 would give 0.1), and 0.29 * 100 cuts to 29.
    EXPECT_EQ(Scalar("SELECT ROUND(1.15 - 1, 1) AS r"), "0.2");
    EXPECT_EQ(Scalar("SELECT TRUNCNUM(0.29 * 100, 0) AS t"), "29");
    // A stored REAL rounds the same as the literal.
    Run("INSERT INTO t VALUES (9, 2.675);");
    EXPECT_EQ(Scalar("SELECT ROUND(v, 2) AS r FROM t WHERE k = 9"), "2.68");
    EXPECT_TRUE(Open("SELECT ROUND(NULL, 2) AS r").FieldByName("r").IsNull());
}

TEST_F(Dialect, MoneyCastKeepsFourDecimals) {
    Query query = Open("SELECT CAST(1.00005 AS Money) AS m1, CAST(-2.123449 AS Money) AS m2, "
                       "CAST(2.675 AS Money) AS m3, CAST('12' AS INTEGER) + 1 AS i");
    EXPECT_EQ(query.FieldByName("m1").AsString(), "1.0001");
    EXPECT_EQ(query.FieldByName("m2").AsString(), "-2.1234");
    EXPECT_EQ(query.FieldByName("m3").AsString(), "2.675");
    EXPECT_EQ(query.FieldByName("i").AsString(), "13");  // other casts are the engine's
}

TEST_F(Dialect, TotalIncomeIsTheSumOfTheDollarFieldsPrinted) {
    Run("CREATE TABLE Pay (k INTEGER, GrossTotal REAL, ContratualBonus REAL, NonContratualBonus REAL, "
        "DirectorFee REAL, Commission REAL, Pension REAL);"
        // Row 1: gross 4999.995 -> 5000.00 -> 5000; bonus 1000.5 + 0.499 = 1000.999 -> 1001.00 -> 1001;
        // fee 0.994 -> 0.99 -> 0; commission -50 clamps to 0, others 0 + 99.995 -> 100.00 -> 100.
        // Amt = 5000 + 1001 + 0 + 100 = 6101.
        "INSERT INTO Pay VALUES (1, 4999.995, 1000.5, 0.499, 0.994, -50, 99.995);"
        // Row 2: every part 0.6 -> 0, so Amt = 0 although the parts add up to 2.4.
        "INSERT INTO Pay VALUES (2, 0.6, 0.3, 0.3, 0.6, 0.6, 0);");
    EXPECT_EQ(Column("SELECT (ContratualBonus + NonContratualBonus) AS Bonus, "
                     "(IF (Commission < 0) THEN 0 ELSE Commission ENDIF) AS CommissionAmt, "
                     "(CommissionAmt +  Pension) AS OthersAmt, "
                     "(TRUNCNUM(ROUND(CAST(GrossTotal AS Money), 2), 0) +  TRUNCNUM(ROUND(CAST(Bonus AS Money), 2), "
                     "0) +  TRUNCNUM(ROUND(CAST(DirectorFee AS Money), 2), 0) +  TRUNCNUM(ROUND(CAST(OthersAmt AS "
                     "Money), 2), 0)) AS Amt, * FROM Pay ORDER BY k", "Amt"),
              (Values{"6101", "0"}));
}

TEST(DialectText, TransactionScriptsAndEditableSelectsAreRecognised) {
    EXPECT_TRUE(ScriptControlsTransactions("BEGIN TRANSACTION; INSERT INTO t VALUES (1); COMMIT;"));
    EXPECT_FALSE(ScriptControlsTransactions(
        "CREATE TRIGGER g AFTER INSERT ON t BEGIN UPDATE t SET k = 1; END; INSERT INTO t VALUES ('BEGIN');"));
    EXPECT_EQ(SingleSourceTable("Select * from subregistry where Registryid = 'YEPRocess' and "
                                "SubRegistryId = 'TaxEmployerBasisYear'"),
              "subregistry");
    EXPECT_EQ(SingleSourceTable("SELECT a, b FROM t ORDER BY a, b"), "t");
    for (const char* sql : {"SELECT * FROM a JOIN b ON a.x = b.x", "SELECT * FROM a, b", "SELECT DISTINCT x FROM a",
                            "SELECT * FROM (SELECT * FROM a)"})
        EXPECT_FALSE(SingleSourceTable(sql)) << sql;
}


// --- PostgreSQL -------------------------------------------------------------

TEST(TranslateForPostgres, RewritesWhatTheServerReadsDifferently) {
    struct Case {
        const char* payroll;
        const char* server;
    };
    const Case cases[] = {
        // A name used twice keeps its number, whatever its letter case.
        {"SELECT * FROM t WHERE a = :Year AND b = :year OR c = :Type",
         "SELECT * FROM t WHERE a = $1 AND b = $1 OR c = $2"},
        // Quoted names ignore case as the payroll's do; a collation's name is
        // the server's own.
        {"DELETE FROM \"IR8A\" WHERE \"YEYear\" = 1", "DELETE FROM \"ir8a\" WHERE \"yeyear\" = 1"},
        {"SELECT a COLLATE \"C\" FROM t", "SELECT a COLLATE \"C\" FROM t"},
        // The payroll's ROUND and SQLite's DATE; a DATE type stays.
        {"SELECT ROUND(x, 2), DATE('2024'), CAST(y AS DATE) FROM t",
         "SELECT IRAS_ROUND(x, 2), IRAS_DATE('2024'), CAST(y AS DATE) FROM t"},
        // min of two values, not the aggregate.
        {"SELECT min(a, 3), max(b) FROM t", "SELECT LEAST(a, 3), max(b) FROM t"},
        {"CREATE TABLE t (Id INTEGER PRIMARY KEY, Amt REAL NOT NULL DEFAULT 0, Name TEXT, "
         "Code TEXT NOT NULL COLLATE NOCASE)",
         "CREATE TABLE t (Id BIGINT GENERATED BY DEFAULT AS IDENTITY PRIMARY KEY, Amt money_amount NOT NULL "
         "DEFAULT 0, Name TEXT COLLATE \"C\", Code TEXT NOT NULL COLLATE NOCASE)"},
        {"SELECT CAST(a AS REAL), CAST(b AS INTEGER) FROM t",
         "SELECT CAST(a AS DOUBLE PRECISION), CAST(b AS BIGINT) FROM t"},
        // A subquery of a FROM clause gets a name; one that has a name keeps it.
        {"SELECT x FROM (SELECT 1 AS x EXCEPT SELECT 2) UNION SELECT y FROM (SELECT 3 AS y) s",
         "SELECT x FROM (SELECT 1 AS x EXCEPT SELECT 2) AS iras_subquery_1 UNION SELECT y FROM (SELECT 3 AS y) s"},
        // The rewrites that SQLite needs too.
        {"SELECT IF a < 0 THEN 0 ELSE a ENDIF AS b, b + 1 AS c FROM t",
         "SELECT CASE WHEN a < 0 THEN 0 ELSE a END AS b, (CASE WHEN a < 0 THEN 0 ELSE a END) + 1 AS c FROM t"},
        // NULL sorts first, as on SQLite.
        {"SELECT a FROM t ORDER BY a, b DESC, c NULLS LAST LIMIT 5",
         "SELECT a FROM t ORDER BY a NULLS FIRST, b DESC NULLS LAST, c NULLS LAST LIMIT 5"},
        {"SELECT (SELECT max(x) FROM u ORDER BY 1) FROM t ORDER BY TRIM(a)",
         "SELECT (SELECT max(x) FROM u ORDER BY 1 NULLS FIRST) FROM t ORDER BY TRIM(a) NULLS FIRST"},
        // Literals reach the server as written.
        {"SELECT ':Year', 'ROUND(1)' FROM t WHERE a = :Year", "SELECT ':Year', 'ROUND(1)' FROM t WHERE a = $1"},
    };
    for (const Case& c : cases) EXPECT_EQ(TranslateForPostgres(c.payroll).text, c.server) << c.payroll;
    EXPECT_EQ(TranslateForPostgres("SELECT :B, :a, :b").parameters, (Values{"b", "a"}));
}

TEST(TranslateForPostgres, NamesLongerThanTheServerKeepsStayApart) {
    // Two view tables of users whose encoded ids differ only after the 63rd
    // byte: the server would cut both to the same name.
    const std::string common(60, 'v');
    const std::string first = TranslateForPostgres("SELECT * FROM " + common + "_first").text;
    const std::string second = TranslateForPostgres("SELECT * FROM " + common + "_second").text;
    ASSERT_EQ(first.size(), std::string("SELECT * FROM ").size() + 63);
    EXPECT_NE(first, second);
    EXPECT_EQ(first.substr(0, 14 + 50), second.substr(0, 14 + 50));
    // The same name, quoted or not, in any case, is the same table.
    EXPECT_EQ(TranslateForPostgres("SELECT * FROM \"" + common + "_FIRST\"").text,
              "SELECT * FROM \"" + first.substr(14) + "\"");
}

TEST(TranslateForPostgres, TableInfoReadsTheCatalog) {
    const std::string text = TranslateForPostgres("PRAGMA table_info(\"IR8A\")").text;
    EXPECT_TRUE(text.starts_with("SELECT ")) << text;
    EXPECT_NE(text.find("to_regclass('\"ir8a\"')"), std::string::npos) << text;
}

TEST(SplitStatements, CutsAtSemicolonsOutsideLiteralsAndComments) {
    EXPECT_EQ(SplitStatements("CREATE TABLE a (x TEXT); -- c;\nINSERT INTO a VALUES ('x;y'); ;"),
              (Values{"CREATE TABLE a (x TEXT)", " -- c;\nINSERT INTO a VALUES ('x;y')"}));
}

}  // namespace
}  // namespace iras::db::testing
