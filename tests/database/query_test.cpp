// The query object and the connections behind an alias: cursor rules, field
// reading, parameters, editing the subregistry row, scripts, transactions,
// the payroll's database functions, and the bad databases an administrator
// meets (missing, not a database, locked by another program).

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <chrono>
#include <cstdint>
#include <functional>
#include <fstream>
#include <tuple>

#include "tests/database/query_fixture.h"

namespace iras::db::testing {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;

// --- opening a database -----------------------------------------------------

class BadDatabase : public ScratchDatabase {
protected:
    void TearDown() override {
        ConnectionRegistry::Unregister("baddb");
        ScratchDatabase::TearDown();
    }
    std::string OpenError(const std::string& path) {
        ConnectionRegistry::Register("baddb", ConnectionConfig{"sqlite", path, false});
        return ErrorOf([] { OpenOn("baddb", "SELECT 1 AS x"); });
    }
};

struct SqliteCloser {
    void operator()(sqlite3* db) const { sqlite3_close(db); }
};

// Another program's connection holding a lock on the file.
std::unique_ptr<sqlite3, SqliteCloser> LockFile(const std::string& path, const char* begin) {
    sqlite3* raw = nullptr;
    EXPECT_EQ(sqlite3_open(path.c_str(), &raw), SQLITE_OK);
    std::unique_ptr<sqlite3, SqliteCloser> db(raw);
    EXPECT_EQ(sqlite3_exec(raw, begin, nullptr, nullptr, nullptr), SQLITE_OK) << sqlite3_errmsg(raw);
    return db;
}

TEST_F(BadDatabase, MissingFileOrFileThatIsNotADatabaseIsNamed) {
    const std::string absent = (folder_ / "absent.db").string();
    EXPECT_THAT(OpenError(absent), AllOf(HasSubstr(absent), HasSubstr("does not exist")));
    EXPECT_FALSE(std::filesystem::exists(absent));

    const std::string notes = (folder_ / "notes.db").string();
    std::ofstream(notes) << std::string(2048, 'x') << "\nThis is a text file, not a payroll database.\n";
    EXPECT_THAT(OpenError(notes), AllOf(HasSubstr(notes), HasSubstr("not a database")));
    EXPECT_THAT(ErrorOf([] { OpenOn("nosuchalias", "SELECT 1 AS x"); }), HasSubstr("nosuchalias"));
}

TEST_F(BadDatabase, DatabaseLockedByAnotherProgramIsNamedWithinSeconds) {
    Run("CREATE TABLE t (k INTEGER); INSERT INTO t VALUES (1);");
    {
        // Held before the alias opens: even reading is refused.
        auto other = LockFile(path_, "BEGIN EXCLUSIVE; UPDATE t SET k = 2;");
        const auto start = std::chrono::steady_clock::now();
        EXPECT_THAT(OpenError(path_), AllOf(HasSubstr(path_), HasSubstr("locked")));
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
    }
    // Held while the alias is open: reading goes on, writing is refused.
    auto other = LockFile(path_, "BEGIN IMMEDIATE; UPDATE t SET k = 3;");
    EXPECT_EQ(Scalar("SELECT k FROM t"), "1");
    EXPECT_THAT(ErrorOf([this] { Exec("UPDATE t SET k = 4"); }), AllOf(HasSubstr(path_), HasSubstr("locked")));
}

// --- reading a result -------------------------------------------------------

class Reading : public ScratchDatabase {
protected:
    void SetUp() override {
        ScratchDatabase::SetUp();
        Run("CREATE TABLE t (k INTEGER, name TEXT, amount REAL, year INTEGER, day TEXT);"
            "INSERT INTO t VALUES (1, 'Ann', 1234.5, 2023.0, '2023-12-31'), (2, 'Bob', NULL, NULL, NULL),"
            " (3, 'Cy', 0.1, 7, 'not a date');");
    }
};

TEST_F(Reading, NextOnTheLastRowSetsEofAndStaysThere) {
    Query query = Open("SELECT k FROM t ORDER BY k");
    EXPECT_EQ(query.RecordCount(), 3);
    query.Next();
    query.Next();
    EXPECT_FALSE(query.Eof());
    query.Next();
    EXPECT_TRUE(query.Eof());
    query.Next();
    EXPECT_EQ(query.FieldByName("k").AsInteger(), 3);
    query.First();
    EXPECT_EQ(query.FieldByName("k").AsInteger(), 1);
    query.Last();
    EXPECT_FALSE(query.Eof());
    EXPECT_EQ(query.FieldByName("k").AsInteger(), 3);

    // MoveTo lands where First() and as many Next() land; past the end it
    // stays on the last row with Eof set, as Next() does.
    for (const auto& [row, k, eof] : {std::tuple{0, 1, false}, {2, 3, false}, {1, 2, false}, {3, 3, true}}) {
        query.MoveTo(row);
        EXPECT_EQ(query.FieldByName("k").AsInteger(), k) << "row " << row;
        EXPECT_EQ(query.Eof(), eof) << "row " << row;
    }

    Query empty = Open("SELECT k, name FROM t WHERE k > 10");
    EXPECT_TRUE(empty.IsEmpty());
    empty.MoveTo(0);
    EXPECT_TRUE(empty.Eof());
    empty.Last();
    EXPECT_TRUE(empty.Eof());
    EXPECT_TRUE(empty.FieldByName("name").IsNull());
}

TEST_F(Reading, NullReadsAsEmptyZeroAndTheEmptyDate) {
    Query query = Open("SELECT * FROM t WHERE k = 2");
    EXPECT_EQ(query.FieldByName("amount").AsString(), "");
    EXPECT_EQ(query.FieldByName("amount").AsFloat(), 0.0);
    EXPECT_EQ(query.FieldByName("year").AsInteger(), 0);
    EXPECT_EQ(query.FieldByName("day").AsDate(), Date::Empty());
    EXPECT_FALSE(query.FieldByName("name").IsNull());
}

TEST_F(Reading, ValuesReadAsTheDatabaseShowsThem) {
    Query query = Open("SELECT *, amount + 0.2 AS more, amount * 2 AS twice FROM t ORDER BY k");
    EXPECT_EQ(query.FieldByName("amount").AsString(), "1234.5");
    EXPECT_EQ(query.FieldByName("year").AsString(), "2023");   // 2023.0 in an integer column
    EXPECT_EQ(query.FieldByName("twice").AsString(), "2469");  // a whole REAL has no ".0"
    EXPECT_EQ(query.FieldByName("day").AsDate(), (Date{2023, 12, 31}));
    query.Last();
    EXPECT_EQ(query.FieldByName("more").AsString(), "0.3");  // 0.1 + 0.2, not 0.30000000000000004
    EXPECT_EQ(query.FieldByName("day").AsDate(), Date::Empty());
    Query text = Open("SELECT '  42 ' AS i, '12.5' AS f, 'abc' AS n");
    EXPECT_EQ(text.FieldByName("i").AsString(), "  42 ");
    EXPECT_EQ(text.FieldByName("i").AsInteger(), 42);
    EXPECT_EQ(text.FieldByName("f").AsFloat(), 12.5);
    EXPECT_EQ(text.FieldByName("n").AsFloat(), 0.0);
}

TEST_F(Reading, FieldNamesIgnoreCaseAndTheFirstOfTwoEqualNamesWins) {
    Run("CREATE TABLE A (PersonalSysId INTEGER, EEName1 TEXT); CREATE TABLE B (PersonalSysId INTEGER, RefId INTEGER);"
        "INSERT INTO A VALUES (10, 'Ann'); INSERT INTO B VALUES (99, 10);");
    Query query = Open("SELECT * FROM A JOIN B ON (A.PersonalSysId = B.RefId)");
    EXPECT_EQ(query.FieldNames(), (std::vector<std::string>{"PersonalSysId", "EEName1", "PersonalSysId", "RefId"}));
    EXPECT_EQ(query.FieldByName("personalsysid").AsInteger(), 10);
    EXPECT_TRUE(query.HasField("EENAME1"));
    EXPECT_THAT(ErrorOf([&] { query.FieldByName("EEName2"); }), HasSubstr("EEName2"));

    // The same query on another text finds the names of its new result.
    query.Close();
    query.SetSQL("SELECT RefId, EEName1 AS PersonalSysId FROM A JOIN B ON (A.PersonalSysId = B.RefId)");
    query.Open();
    EXPECT_EQ(query.FieldByName("PERSONALsysID").AsString(), "Ann");
    EXPECT_FALSE(query.HasField("EEName1"));
}

TEST_F(Reading, LinesAddedOneByOneRunAsOneText) {
    // The session form's year list comes in design-time lines with no blank
    // between them.
    Query query(Alias);
    query.AddSQL("SELECT DISTINCT year, year AS Year FROM t");
    query.AddSQL("WHERE year IS NOT NULL");
    query.AddSQL("ORDER BY year");
    query.Open();
    EXPECT_EQ(query.RecordCount(), 2);
}

TEST_F(Reading, KeyOfAnEditableResultShiftsNoColumnAndOneStatementOnlyRuns) {
    // The key an editable result carries must not shift "ORDER BY 1".
    EXPECT_EQ(Column("SELECT amount, k FROM t ORDER BY 1 DESC", "k"), (std::vector<std::string>{"1", "3", "2"}));
    EXPECT_EQ(Open("SELECT amount, k FROM t").FieldNames(), (std::vector<std::string>{"amount", "k"}));
    EXPECT_THROW(Open("SELECT k FROM t; DELETE FROM t"), DatabaseError);
    EXPECT_EQ(Scalar("SELECT count(*) AS n FROM t -- trailing remark"), "3");
}

TEST_F(Reading, QuoteInAParameterNeitherBreaksNorAltersTheQuery) {
    Run("CREATE TABLE YEEmployer (YEEmployerId TEXT, YEEmployerDesc TEXT);"
        "INSERT INTO YEEmployer VALUES ('O''Neil'' OR ''1''=''1', 'quoted'), ('ACME', 'plain');");
    Query query(Alias);
    query.SetSQL("SELECT * FROM YEEmployer WHERE YEEmployerId = :YEEmployerId");
    query.SetParam("YEEmployerId", std::string("O'Neil' OR '1'='1"));
    query.Open();
    ASSERT_EQ(query.RecordCount(), 1);
    EXPECT_EQ(query.FieldByName("YEEmployerDesc").AsString(), "quoted");
    query.SetParam(":yeemployerid", std::string("x'; DROP TABLE YEEmployer; --"));
    query.Open();
    EXPECT_TRUE(query.IsEmpty());
    EXPECT_EQ(Scalar("SELECT count(*) AS n FROM YEEmployer"), "2");
    EXPECT_THAT(ErrorOf([this] { Open("SELECT * FROM t WHERE k = :PersonalSysId"); }), HasSubstr(":PersonalSysId"));
}

// --- reading forward only ---------------------------------------------------

class ForwardReading : public Reading {
protected:
    Query OpenForward(const std::string& sql) {
        Query query(Alias);
        query.SetForwardOnly(true);
        query.SetSQL(sql);
        query.Open();
        return query;
    }
};

TEST_F(ForwardReading, RowsComeOnceInOrderAndEofStaysOnTheLastRow) {
    Query query = OpenForward("SELECT k, name FROM t ORDER BY k DESC");
    EXPECT_FALSE(query.IsEmpty());
    std::vector<std::string> names;
    for (query.First(); !query.Eof(); query.Next()) names.push_back(query.FieldByName("name").AsString());
    EXPECT_EQ(names, (std::vector<std::string>{"Cy", "Bob", "Ann"}));
    // Next() at the end changes nothing: the last row is still readable.
    query.Next();
    EXPECT_TRUE(query.Eof());
    EXPECT_EQ(query.FieldByName("k").AsInteger(), 1);
    EXPECT_EQ(query.FieldByName("name").AsString(), "Ann");

    // Opened again, it reads the rows again from the first (the generation
    // pass after the validation pass).
    query.Open();
    EXPECT_EQ(iras::db::testing::Column(query, "k"), (std::vector<std::string>{"3", "2", "1"}));

    Query empty = OpenForward("SELECT k, name FROM t WHERE k > 10");
    EXPECT_TRUE(empty.IsEmpty());
    EXPECT_TRUE(empty.Eof());
    empty.First();
    empty.Next();
    EXPECT_TRUE(empty.Eof());
    EXPECT_TRUE(empty.FieldByName("name").IsNull());
}

TEST_F(ForwardReading, RowsAreReadAsTheStatementStepsNotAtOpen) {
    // The fourth row overflows (abs of the smallest integer): a query read
    // whole fails at Open; one read forward gives three rows first.
    const std::string sql =
        "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 5) "
        "SELECT CASE WHEN i < 4 THEN i ELSE abs(-9223372036854775807 - 1) END AS v FROM n";
    EXPECT_THAT(ErrorOf([&] { Open(sql); }), HasSubstr("overflow"));
    Query query = OpenForward(sql);
    std::vector<std::int64_t> seen;
    const std::string error = ErrorOf([&] {
        for (query.First(); !query.Eof(); query.Next()) seen.push_back(query.FieldByName("v").AsInteger());
    });
    EXPECT_EQ(seen, (std::vector<std::int64_t>{1, 2, 3}));
    EXPECT_THAT(error, HasSubstr("overflow"));
}

TEST_F(ForwardReading, WhatNeedsTheWholeResultIsRefusedWithTheQueryNamed) {
    struct Case {
        const char* what;
        int nexts;  // Next() calls before the call
        std::function<void(Query&)> call;
    };
    const Case cases[] = {
        {"Last", 0, [](Query& q) { q.Last(); }},
        {"MoveTo first row", 0, [](Query& q) { q.MoveTo(0); }},
        {"MoveTo later row", 0, [](Query& q) { q.MoveTo(2); }},
        {"RecordCount", 0, [](Query& q) { (void)q.RecordCount(); }},
        {"Edit", 0, [](Query& q) { q.Edit(); }},
        {"First after Next", 1, [](Query& q) { q.First(); }},
        {"First at the end", 3, [](Query& q) { q.First(); }},
    };
    for (const Case& c : cases) {
        Query query = OpenForward("SELECT * FROM t ORDER BY k");
        for (int k = 0; k < c.nexts; ++k) query.Next();
        EXPECT_THAT(ErrorOf([&] { c.call(query); }),
                    AllOf(HasSubstr("forward only"), HasSubstr("SELECT * FROM t ORDER BY k")))
            << c.what;
    }
    // First() before any Next() is the start of every read, not going back.
    Query query = OpenForward("SELECT k FROM t ORDER BY k");
    query.First();
    query.First();
    EXPECT_EQ(query.FieldByName("k").AsInteger(), 1);
}

TEST_F(ForwardReading, OtherQueriesRunMeanwhileAndTheTableIsFreeOnceDoneOrClosed) {
    // Look-ups on the same database while the rows are read (the section
    // queries of each employee).
    Query query = OpenForward("SELECT k FROM t ORDER BY k");
    std::vector<std::string> names;
    for (query.First(); !query.Eof(); query.Next()) {
        names.push_back(Scalar("SELECT name FROM t WHERE k = " + query.FieldByName("k").AsString()));
    }
    EXPECT_EQ(names, (std::vector<std::string>{"Ann", "Bob", "Cy"}));
    // Read to the end, the statement holds nothing: the table can be
    // replaced, as the engine replaces the view tables between two passes.
    Exec("DROP TABLE t");
    Run("CREATE TABLE t (k INTEGER); INSERT INTO t VALUES (7), (8);");

    Query halfway = OpenForward("SELECT k FROM t ORDER BY k");
    EXPECT_EQ(halfway.FieldByName("k").AsInteger(), 7);
    halfway.Close();
    Exec("DROP TABLE t");
}

// The section queries of each employee run one text with another id each
// time; the database keeps its statement from one run to the next.
TEST_F(ForwardReading, ATextRunAgainGetsItsOwnRowsAndTheColumnsOfTheTableAsItIsNow) {
    const std::string sql = "SELECT * FROM t WHERE k >= :k ORDER BY k";
    auto open = [&](std::int64_t k, bool forward) {
        Query query(Alias);
        query.SetForwardOnly(forward);
        query.SetSQL(sql);
        query.SetParam("k", k);
        query.Open();
        return query;
    };
    // Two reads of the one text at once, one of them half read: each has
    // its own rows.
    Query first = open(2, true);
    Query second = open(1, true);
    EXPECT_EQ(iras::db::testing::Column(second, "name"), (std::vector<std::string>{"Ann", "Bob", "Cy"}));
    EXPECT_EQ(iras::db::testing::Column(first, "name"), (std::vector<std::string>{"Bob", "Cy"}));
    Query whole = open(3, false);
    EXPECT_EQ(iras::db::testing::Column(whole, "name"), (std::vector<std::string>{"Cy"}));
    first.Close();
    second.Close();

    // The table replaced by one of other columns (the engine's view tables
    // between two returns): the same text reads the new columns.
    Exec("DROP TABLE t");
    Run("CREATE TABLE t (k INTEGER, label TEXT); INSERT INTO t VALUES (5, 'five'), (6, 'six');");
    for (const bool forward : {false, true}) {
        Query query = open(6, forward);
        EXPECT_EQ(query.FieldNames(), (std::vector<std::string>{"k", "label"})) << forward;
        EXPECT_EQ(query.FieldByName("label").AsString(), "six") << forward;
        EXPECT_FALSE(query.HasField("name")) << forward;
    }
}

TEST_F(ForwardReading, ASpooledReadGivesTheSameRowsAgainWithoutRunningTheStatement) {
    Query query(Alias);
    query.SetForwardOnly(true);
    query.SetSpooled(true);
    query.SetSQL("SELECT k, name, amount, year, day FROM t ORDER BY k");
    query.Open();
    EXPECT_FALSE(query.Reread()) << "not read to the end yet";
    query.Open();
    while (!query.Eof()) query.Next();
    query.Close();
    // Changed behind the query: the rows read again are those read before.
    Exec("DELETE FROM t WHERE k = 2");
    Exec("UPDATE t SET name = 'Zed'");
    for (int pass = 1; pass <= 2; ++pass) {
        ASSERT_TRUE(query.Reread()) << "pass " << pass;
        std::vector<std::string> rows;
        for (query.First(); !query.Eof(); query.Next()) {
            rows.push_back(query.FieldByName("k").AsString() + "|" + query.FieldByName("name").AsString() + "|" +
                           query.FieldByName("amount").AsString() + "|" + query.FieldByName("year").AsString() + "|" +
                           query.FieldByName("day").AsString() + "|" +
                           (query.FieldByName("amount").IsNull() ? "null" : "value"));
        }
        // Types kept: 2023.0 stays a real shown as "2023", NULL stays NULL.
        EXPECT_EQ(rows, (std::vector<std::string>{"1|Ann|1234.5|2023|2023-12-31|value", "2|Bob||||null",
                                                  "3|Cy|0.1|7|not a date|value"}))
            << "pass " << pass;
    }

    // A text, a parameter or another Open drops the spool.
    query.SetParam("x", std::int64_t{1});
    EXPECT_FALSE(query.Reread());
    query.Open();
    while (!query.Eof()) query.Next();
    query.SetSQL("SELECT k FROM t");
    EXPECT_FALSE(query.Reread());

    // Read again, the rows and the look-ups made for each of them are one
    // read of the file: another program cannot commit meanwhile, and can
    // once the last row is read. A write of our own ends that read first and
    // is committed at once.
    query.Open();
    while (!query.Eof()) query.Next();
    auto other = LockFile(path_, "SELECT 1");
    const auto otherWrites = [&](const char* name) {
        const std::string sql = std::string("UPDATE t SET name = '") + name + "' WHERE k = 3";
        return sqlite3_exec(other.get(), sql.c_str(), nullptr, nullptr, nullptr);
    };
    ASSERT_TRUE(query.Reread());
    EXPECT_EQ(Scalar("SELECT count(*) FROM t"), "2");
    EXPECT_EQ(otherWrites("Busy"), SQLITE_BUSY);
    while (!query.Eof()) query.Next();
    EXPECT_EQ(otherWrites("Free"), SQLITE_OK);

    ASSERT_TRUE(query.Reread());
    EXPECT_EQ(Scalar("SELECT count(*) FROM t"), "2");
    Exec("UPDATE t SET name = 'Own' WHERE k = 1");
    EXPECT_EQ(otherWrites("Other"), SQLITE_OK);
    EXPECT_EQ(Column("SELECT name FROM t ORDER BY k", "name"), (std::vector<std::string>{"Own", "Other"}));
    query.Close();

    // An empty result read is a spool of no rows.
    query.SetSQL("SELECT k FROM t WHERE k > 10");
    query.Open();
    ASSERT_TRUE(query.Reread());
    EXPECT_TRUE(query.IsEmpty());
    EXPECT_TRUE(query.Eof());
}

// --- editing, scripts and transactions --------------------------------------

class Editing : public ScratchDatabase {
protected:
    static constexpr const char* RowSql =
        "Select * from subregistry where Registryid = 'YEPRocess' and SubRegistryId = 'TaxEmployerBasisYear'";

    void SetUp() override {
        ScratchDatabase::SetUp();
        Run("CREATE TABLE subregistry (RegistryId TEXT, SubRegistryId TEXT, RegProperty1 TEXT, RegProperty2 TEXT);"
            "INSERT INTO subregistry VALUES ('YEPRocess', 'TaxEmployerBasisYear', 'OLD', '2022'),"
            " ('YEPRocess', 'Other', 'KEEP', 'KEEP');");
    }
    std::vector<std::string> Rows() {
        return Column("SELECT RegProperty1 || '/' || RegProperty2 AS r FROM subregistry ORDER BY SubRegistryId", "r");
    }
};

TEST_F(Editing, PostWritesTheChangedFieldsOfTheRowAndCancelDropsThem) {
    Query query = Open(RowSql);
    EXPECT_THROW(query.FieldByName("RegProperty1").SetAsString("X"), DatabaseError);  // not in Edit
    query.Edit();
    query.FieldByName("RegProperty1").SetAsString("X");
    query.Cancel();
    EXPECT_EQ(query.FieldByName("RegProperty1").AsString(), "OLD");
    EXPECT_EQ(Rows(), (std::vector<std::string>{"KEEP/KEEP", "OLD/2022"}));

    query.Edit();
    query.FieldByName("RegProperty1").SetAsString("IR8AYA2024");
    query.FieldByName("RegProperty2").SetAsString("2023");
    EXPECT_EQ(query.FieldByName("RegProperty1").AsString(), "IR8AYA2024");
    query.Post();
    EXPECT_EQ(Rows(), (std::vector<std::string>{"KEEP/KEEP", "IR8AYA2024/2023"}));
}

TEST_F(Editing, ResultsThatAreNotOneTableRowAreRefused) {
    Query join = Open("SELECT * FROM subregistry a JOIN subregistry b ON a.RegistryId = b.RegistryId");
    EXPECT_THROW(join.Edit(), DatabaseError);
    Query none = Open("SELECT * FROM subregistry WHERE RegistryId = 'none'");
    EXPECT_THAT(ErrorOf([&] { none.Edit(); }), HasSubstr("subregistry"));
    Query computed = Open("SELECT RegProperty1 || 'x' AS p FROM subregistry");
    computed.Edit();
    computed.FieldByName("p").SetAsString("Y");
    EXPECT_THROW(computed.Post(), DatabaseError);
}

TEST_F(Editing, FailingScriptAppliesNothingAndNamesTheStatement) {
    EXPECT_THAT(ErrorOf([this] { Run("INSERT INTO subregistry VALUES ('A', 'B', 'C', 'D');\n"
                                     "UPDATE nosuchtable SET x = 1;\n"); }),
                AllOf(HasSubstr("statement 2"), HasSubstr("nosuchtable")));
    EXPECT_EQ(Scalar("SELECT count(*) AS n FROM subregistry"), "2");
}

TEST_F(Editing, TransactionRollsBackUnlessCommitted) {
    for (bool commit : {false, true}) {
        Transaction transaction(Alias);
        Exec("INSERT INTO subregistry (RegistryId) VALUES ('T')");
        if (commit) transaction.Commit();
    }
    EXPECT_EQ(Scalar("SELECT count(*) AS n FROM subregistry"), "3");
}

// --- the payroll's database functions ---------------------------------------

class Functions : public ScratchDatabase {
protected:
    void SetUp() override {
        ScratchDatabase::SetUp();
        Run("CREATE TABLE Personal (PersonalSysId INTEGER PRIMARY KEY, PersonalName TEXT);"
            "CREATE TABLE Employee (EmployeeSysId INTEGER PRIMARY KEY, EmployeeCode TEXT, PersonalSysId INTEGER);"
            "CREATE TABLE EmployeeBank (EmployeeSysId INTEGER, IRASBankCode TEXT);"
            "CREATE TABLE ViewYEEmployee (PersonalSysId INTEGER, EEName1 TEXT);"
            "INSERT INTO Personal VALUES (1, 'Tan Ah Kow'), (2, 'Siti binte Ali'), (3, 'No Job');"
            // Person 1 was employed twice: the lower EmployeeSysId (7, 'E007') is the one reported.
            "INSERT INTO Employee VALUES (9, 'E009', 1), (7, 'E007', 1), (8, 'E008', 2);"
            "INSERT INTO EmployeeBank VALUES (7, '7171');"
            "INSERT INTO ViewYEEmployee VALUES (1, 'Tan'), (2, 'Siti'), (3, 'Nobody');");
    }
};

TEST_F(Functions, EmployeeIdSysIdAndBankChainThroughAliases) {
    // NULL sorts first: person 3 has no Employee row; person 2 has no bank row.
    const std::string sql =
        "SELECT FGetEmployeeIdByPersonalSysId(A.PersonalSysId) AS EmployeeId, FGetEmployeeSysId(EmployeeId) AS "
        "EmpSysId, FGetIRASEmployeeBank(EmpSysId) AS BankId, FGetPersonalName(A.PersonalSysId) AS PersonalName, "
        "* FROM ViewYEEmployee A ORDER BY EmployeeId";
    EXPECT_EQ(Column(sql, "EmployeeId"), (std::vector<std::string>{"", "E007", "E008"}));
    EXPECT_EQ(Column(sql, "EmpSysId"), (std::vector<std::string>{"", "7", "8"}));
    EXPECT_EQ(Column(sql, "BankId"), (std::vector<std::string>{"", "7171", ""}));
    EXPECT_EQ(Column(sql, "PersonalName"), (std::vector<std::string>{"No Job", "Tan Ah Kow", "Siti binte Ali"}));
}

// A look-up asked the same key again answers from what it found last only
// while nothing has been written since, here or by another program.
TEST_F(Functions, ALookUpOfTheSameKeySeesEveryChangeOfItsTable) {
    // Read beside a table, as the returns' queries do: the look-ups run
    // inside the statement's read of the database.
    const std::string bank = "SELECT FGetIRASEmployeeBank(7) AS b FROM Personal WHERE PersonalSysId = 1";
    EXPECT_EQ(Scalar(bank), "7171");
    Exec("UPDATE EmployeeBank SET IRASBankCode = '7339' WHERE EmployeeSysId = 7");
    EXPECT_EQ(Scalar(bank), "7339");
    {
        Transaction transaction(Alias);
        Exec("UPDATE EmployeeBank SET IRASBankCode = '7375' WHERE EmployeeSysId = 7");
        EXPECT_EQ(Scalar(bank), "7375");
    }  // rolled back
    EXPECT_EQ(Scalar(bank), "7339");

    auto other = LockFile(path_, "UPDATE EmployeeBank SET IRASBankCode = '9465' WHERE EmployeeSysId = 7;");
    other.reset();
    EXPECT_EQ(Scalar(bank), "9465");
    // Another key, of another type or value, is looked up anew.
    const std::string sysId = "SELECT FGetEmployeeSysId(%) AS s FROM Personal WHERE PersonalSysId = 1";
    for (const auto& [key, found] : {std::pair{"'E007'", "7"}, {"7", ""}, {"'E007'", "7"}, {"'E008'", "8"}})
        EXPECT_EQ(Scalar(std::string(sysId).replace(sysId.find('%'), 1, key)), found) << key;
}

TEST_F(Functions, DateTimeFormatAndMissingLookupTable) {
    EXPECT_EQ(Scalar("SELECT FGetDateTimeFormat('2024-03-05 14:07:09') AS d"), "05/03/2024 14:07:09");
    EXPECT_EQ(Scalar("SELECT FGetDateTimeFormat('2024-03-05') AS d"), "05/03/2024 00:00:00");
    EXPECT_TRUE(Open("SELECT FGetDateTimeFormat(NULL) AS d").FieldByName("d").IsNull());
    EXPECT_EQ(Scalar("SELECT FGetIRASEmployeeBank(7) AS b"), "7171");
    Run("DROP TABLE EmployeeBank;");
    EXPECT_THAT(ErrorOf([this] { Open("SELECT FGetIRASEmployeeBank(7) AS b"); }),
                AllOf(HasSubstr("FGetIRASEmployeeBank"), HasSubstr("EmployeeBank")));
}

}  // namespace
}  // namespace iras::db::testing
