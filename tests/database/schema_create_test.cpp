// Making a new database: the refusal to touch an existing file, nothing left
// behind on failure, the embedded SQL matching the data folder, the keyword
// codes and registry row of a database without sample data, and the schema
// rules that the return queries rely on.
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <string>

#include "platform/database/Query.h"
#include "platform/database/Schema.h"

namespace iras::db {
namespace {

namespace fs = std::filesystem;

class CreateDatabaseTest : public ::testing::Test {
protected:
    static constexpr const char* Alias = "schemadb";

    void SetUp() override {
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        folder_ = fs::temp_directory_path() / ("iras_schema_" + std::to_string(::getpid()) + "_" + info->name());
        fs::remove_all(folder_);
        fs::create_directories(folder_);
        path_ = folder_ / "payroll.db";
    }
    void TearDown() override {
        ConnectionRegistry::Unregister(Alias);
        fs::remove_all(folder_);
    }

    Query Open(const std::string& sql) {
        ConnectionRegistry::Register(Alias, ConnectionConfig{"sqlite", path_.string(), false});
        Query query(Alias);
        query.SetSQL(sql);
        query.Open();
        return query;
    }

    // Column names of a table, as the database reports them.
    std::set<std::string> Columns(const std::string& table) {
        std::set<std::string> names;
        Query query = Open("SELECT name FROM pragma_table_info('" + table + "')");
        for (query.First(); !query.Eof(); query.Next()) names.insert(query.FieldByName("name").AsString());
        return names;
    }

    static std::string ReadFile(const fs::path& path) {
        std::ifstream in(path, std::ios::binary);
        std::ostringstream text;
        text << in.rdbuf();
        return text.str();
    }

    fs::path folder_;
    fs::path path_;
};

TEST_F(CreateDatabaseTest, RefusesAnExistingFileAndLeavesItUntouched) {
    { std::ofstream(path_) << "last year's payroll"; }
    try {
        CreateDatabase(path_, false);
        FAIL() << "an existing file was accepted";
    } catch (const DatabaseError& error) {
        EXPECT_NE(std::string(error.what()).find(path_.string()), std::string::npos) << error.what();
        EXPECT_NE(std::string(error.what()).find("already exists"), std::string::npos) << error.what();
    }
    EXPECT_EQ(ReadFile(path_), "last year's payroll");

    // An empty file is an empty SQLite database, but still someone's file.
    const fs::path empty = folder_ / "empty.db";
    { std::ofstream{empty}; }
    EXPECT_THROW(CreateDatabase(empty, true), DatabaseError);
    EXPECT_EQ(fs::file_size(empty), 0u);
}

TEST_F(CreateDatabaseTest, MissingFolderIsNamedAndNothingIsCreated) {
    const fs::path nowhere = folder_ / "no such folder" / "payroll.db";
    try {
        CreateDatabase(nowhere, false);
        FAIL() << "a database was made in a missing folder";
    } catch (const DatabaseError& error) {
        EXPECT_NE(std::string(error.what()).find((folder_ / "no such folder").string()), std::string::npos)
            << error.what();
    }
    EXPECT_FALSE(fs::exists(nowhere));
}

TEST_F(CreateDatabaseTest, FailingScriptNamesItselfAndLeavesNoFile) {
    const std::vector<NamedScript> scripts = {
        {"data/first.sql", "CREATE TABLE Kept (Id INTEGER);"},
        {"data/broken.sql", "INSERT INTO Kept VALUES (1);\nINSERT INTO NoSuchTable VALUES (2);"},
    };
    try {
        CreateDatabase(path_, scripts);
        FAIL() << "a failing script was accepted";
    } catch (const DatabaseError& error) {
        const std::string message = error.what();
        EXPECT_NE(message.find("data/broken.sql"), std::string::npos) << message;
        EXPECT_NE(message.find(path_.string()), std::string::npos) << message;
    }
    EXPECT_FALSE(fs::exists(path_));
    EXPECT_FALSE(fs::exists(path_.string() + "-journal"));
}

TEST_F(CreateDatabaseTest, BuiltInSqlIsTheDataFolderAsBuilt) {
    // A stale build would make databases from an older schema than the one
    // in the repository.
    for (const char* name : {"schema.sql", "keywords.sql", "sample.sql"}) {
        const auto text = EmbeddedSql(name);
        ASSERT_TRUE(text.has_value()) << name;
        EXPECT_EQ(std::string(*text), ReadFile(fs::path(IRAS_SOURCE_DATA_DIR) / name)) << name;
    }
    EXPECT_FALSE(EmbeddedSql("no_such_file.sql").has_value());

    // The engine's tables come right after the schema when the engine has them.
    const auto scripts = DatabaseScripts(true);
    ASSERT_GE(scripts.size(), 3u);
    EXPECT_EQ(scripts.front().name, "data/schema.sql");
    EXPECT_EQ(scripts.back().name, "data/sample.sql");
    EXPECT_EQ(scripts[scripts.size() - 2].name, "data/keywords.sql");
    EXPECT_EQ(DatabaseScripts(false).back().name, "data/keywords.sql");
}

TEST_F(CreateDatabaseTest, DatabaseWithoutSampleDataHasCodesAndRegistryRowButNoPayroll) {
    CreateDatabase(path_, false);

    // The registry row that every run writes its employer and year into.
    Query registry = Open(
        "Select * from subregistry where Registryid = 'YEPRocess' and SubRegistryId = 'TaxEmployerBasisYear'");
    EXPECT_EQ(registry.RecordCount(), 1);

    // Every category with IRAS's own codes, typed from IRAS's lists.
    const std::map<std::string, std::pair<std::string, std::multiset<std::string>>> expected = {
        {"EmployerSource", {"YEProperty3", {"1", "4", "5", "6", "9"}}},
        {"OrganisationIDType", {"YEProperty1", {"7", "8", "A", "I", "C", "M", "G", "U"}}},
        {"PayeeIDType", {"YEProperty3", {"1", "2", "3", "4", "5", "6"}}},
        {"IncomeBorneStatus", {"YEProperty1", {"F", "P", "H", "N"}}},
        {"ExemptIncomeType", {"YEProperty1", {"1", "2", "3", "4", "5", "6", "N"}}},
        {"CommissionType", {"YEProperty1", {"M", "O", "B"}}},
        {"PlanType", {"YEProperty1", {"ESOP", "ESOW"}}},
        {"CompanyIDType", {"YEProperty1", {"7", "8", "A", "I", "C", "M", "G", "U"}}},
    };
    for (const auto& [category, codes] : expected) {
        Query query = Open("SELECT " + codes.first + " AS Code FROM YEKeyWord WHERE YEKeyWordCategory = '" +
                           category + "'");
        std::multiset<std::string> found;
        for (query.First(); !query.Eof(); query.Next()) found.insert(query.FieldByName("Code").AsString());
        EXPECT_EQ(found, codes.second) << category;
    }

    // The ids that the rules name outright.
    Query privateSector = Open("SELECT YEProperty3 FROM YEKeyWord WHERE YEKeyWordId = 'PrivateSector'");
    EXPECT_EQ(privateSector.FieldByName("YEProperty3").AsString(), "6");
    Query fixed = Open("SELECT YEProperty1 FROM YEKeyWord WHERE YEKeyWordId = 'Fixed'");
    EXPECT_EQ(fixed.FieldByName("YEProperty1").AsString(), "H");

    for (const char* table : {"YEEmployer", "YEEmployee", "IR8A", "LastSubmission", "UserModuleRights"}) {
        EXPECT_EQ(Open(std::string("SELECT count(*) AS N FROM ") + table).FieldByName("N").AsInteger(), 0)
            << table;
    }
}

TEST_F(CreateDatabaseTest, NoColumnIsNamedLikeAQueryAliasOrSharedWithTheEmployeeTable) {
    CreateDatabase(path_, false);

    // A column named like an alias of the return queries resolves differently
    // from one database engine to another.
    const std::set<std::string> aliases = {
        "EmployeeId", "EmpSysId", "BankId", "Bonus", "CommissionAmt", "TransportAmt", "EntertainmentAmt",
        "TotOtherAllowances", "ERExcessContriAmt", "TotalStockGainsAfterAmt", "TotBenefitsInKind", "OthersAmt",
        "Amt", "SupCessation", "SupPaymentTo", "OrgIncomeBorneStatus", "EmployerName", "PersonalName",
        "UserTypeID", "UserTypeDesc", "SubmittedDate", "Year", "TotNoTaxExemptAft", "TotNoTaxExemptBef",
        "TotStockGainsAft", "TotStockGainsBef", "TotalESOPNoTaxExemptAfter", "TotalESOPStockGainsAfter",
        "TotalEESOPTaxExemptAfter", "TotalEESOPNoTaxExemptAfter", "TotalEESOPStockGainsAfter",
        "TotalCSOPTaxExemptAfter", "TotalCSOPNoTaxExemptAfter", "TotalCSOPStockGainsAfter",
        "TotalNSOPTaxExemptAfter", "TotalNSOPNoTaxExemptAfter", "TotalNSOPStockGainsAfter"};
    Query tables = Open("SELECT name FROM sqlite_master WHERE type = 'table'");
    for (tables.First(); !tables.Eof(); tables.Next()) {
        const std::string table = tables.FieldByName("name").AsString();
        for (const std::string& column : Columns(table)) {
            // The look-up table of FGetPersonalName keeps the name under the
            // function's own word; no return query reads that table.
            if (table == "Personal" && column == "PersonalName") continue;
            EXPECT_EQ(aliases.count(column), 0u) << table << "." << column;
        }
    }

    // The return queries join the employee table, a return table and YEGlobal
    // and name most columns without a table: only the join keys may be shared.
    const std::set<std::string> employee = Columns("YEEmployee");
    const std::set<std::string> global = Columns("YEGlobal");
    for (const char* table : {"IR8A", "IR8S", "A8A", "A8B"}) {
        for (const std::string& column : Columns(table)) {
            if (column == "PersonalSysId" || column == "YEYear") continue;
            EXPECT_EQ(employee.count(column), 0u) << table << "." << column << " is also in YEEmployee";
            EXPECT_EQ(global.count(column), 0u) << table << "." << column << " is also in YEGlobal";
        }
    }
    for (const std::string& column : global) {
        if (column == "YEYear") continue;
        EXPECT_EQ(employee.count(column), 0u) << "YEGlobal." << column << " is also in YEEmployee";
    }
}

TEST_F(CreateDatabaseTest, CopiesOfSubmittedReturnsFitBesideTheLiveRows) {
    CreateDatabase(path_, false);
    ConnectionRegistry::Register(Alias, ConnectionConfig{"sqlite", path_.string(), false});
    // The engine keeps the submitted copy under 9 + basis year and the copy
    // before that under 8 + basis year, in the same tables.
    ExecScript(Alias,
               "INSERT INTO YEEmployee (YEEmployerId, YEYear, PersonalSysId) VALUES "
               "('E1', 2024, 7), ('E1', 92024, 7), ('E1', 82024, 7);"
               "INSERT INTO IR8A (PersonalSysId, YEYear, IR8AType) VALUES "
               "(7, 2024, 'CurIR8A'), (7, 2025, 'SupIR8A'), (7, 92024, 'CurIR8A'), (7, 82024, 'CurIR8A');"
               "INSERT INTO IR8SA (PersonalSysId, YEYear, IR8SOrder) VALUES (7, 2024, 1), (7, 92024, 1);");
    // The copy's year is compared as text by the IR8A query.
    Query copy = Open("SELECT count(*) AS N FROM IR8A WHERE YEYear = '92024' AND IR8AType = 'CurIR8A'");
    EXPECT_EQ(copy.FieldByName("N").AsInteger(), 1);
    // Unset dates read as the empty date, unset money as zero.
    Query row = Open("SELECT Cessation, GrossTotal FROM YEEmployee JOIN IR8A USING (PersonalSysId, YEYear) "
                     "WHERE YEYear = 2024");
    EXPECT_EQ(row.FieldByName("Cessation").AsString(), "1899-12-30");
    EXPECT_EQ(row.FieldByName("GrossTotal").AsFloat(), 0.0);
}

}  // namespace
}  // namespace iras::db
