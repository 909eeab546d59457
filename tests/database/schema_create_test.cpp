// Making a new database: the refusal to touch an existing file, nothing left
// behind on failure, the embedded SQL matching the data folder, the keyword
// codes and registry row of a database without sample data, and the schema
// rules that the return queries rely on.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <set>
#include <sstream>

#include "tests/database/query_fixture.h"

namespace iras::db::testing {
namespace {

namespace fs = std::filesystem;
using ::testing::AllOf;
using ::testing::HasSubstr;

std::string ReadFile(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

class CreateDatabaseTest : public ScratchDatabase {
protected:
    // Column names of a table, as the database reports them.
    std::set<std::string> Columns(const std::string& table) {
        const auto names = Column("SELECT name FROM pragma_table_info('" + table + "')", "name");
        return {names.begin(), names.end()};
    }
};

TEST_F(CreateDatabaseTest, ExistingFileMissingFolderOrFailingScriptLeaveEverythingAsItWas) {
    { std::ofstream(path_) << "last year's payroll"; }
    EXPECT_THAT(ErrorOf([this] { CreateDatabase(path_, false); }),
                AllOf(HasSubstr(path_), HasSubstr("already exists")));
    EXPECT_EQ(ReadFile(path_), "last year's payroll");
    // An empty file is an empty SQLite database, but still someone's file.
    const fs::path empty = folder_ / "empty.db";
    { std::ofstream{empty}; }
    EXPECT_THROW(CreateDatabase(empty, true), DatabaseError);
    EXPECT_EQ(fs::file_size(empty), 0u);

    const fs::path nowhere = folder_ / "no such folder" / "payroll.db";
    EXPECT_THAT(ErrorOf([&] { CreateDatabase(nowhere, false); }), HasSubstr((folder_ / "no such folder").string()));
    EXPECT_FALSE(fs::exists(nowhere));

    const fs::path fresh = folder_ / "fresh.db";
    const std::vector<NamedScript> scripts = {
        {"data/first.sql", "CREATE TABLE Kept (Id INTEGER);"},
        {"data/broken.sql", "INSERT INTO Kept VALUES (1);\nINSERT INTO NoSuchTable VALUES (2);"},
    };
    EXPECT_THAT(ErrorOf([&] { CreateDatabase(fresh, scripts); }),
                AllOf(HasSubstr("data/broken.sql"), HasSubstr(fresh.string())));
    EXPECT_FALSE(fs::exists(fresh));
    EXPECT_FALSE(fs::exists(fresh.string() + "-journal"));
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
    // Schema, engine tables, keyword codes, sample data; each main file
    // followed by the parts the returns bring ("sample_ir8s.sql").
    std::vector<std::string> order;
    for (const auto& script : DatabaseScripts(true)) {
        std::string stem = script.name.substr(std::string("data/").size());
        stem = stem.substr(0, stem.find_first_of("_."));
        if (order.empty() || order.back() != stem) order.push_back(stem);
    }
    EXPECT_EQ(order, (std::vector<std::string>{"schema", "engine", "keywords", "sample"}));
    EXPECT_EQ(DatabaseScripts(true).front().name, "data/schema.sql");
    for (const auto& script : DatabaseScripts(false)) EXPECT_EQ(script.name.find("data/sample"), std::string::npos);
}

TEST_F(CreateDatabaseTest, DatabaseWithoutSampleDataHasCodesAndRegistryRowButNoPayroll) {
    CreateDatabase(path_, false);

    // The registry row that every run writes its employer and year into.
    EXPECT_EQ(Open("Select * from subregistry where Registryid = 'YEPRocess' and SubRegistryId = "
                   "'TaxEmployerBasisYear'").RecordCount(), 1);

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
        const auto found = Column("SELECT " + codes.first + " AS Code FROM YEKeyWord WHERE YEKeyWordCategory = '" +
                                  category + "'", "Code");
        EXPECT_EQ(std::multiset<std::string>(found.begin(), found.end()), codes.second) << category;
    }

    // The ids that the rules name outright.
    EXPECT_EQ(Scalar("SELECT YEProperty3 FROM YEKeyWord WHERE YEKeyWordId = 'PrivateSector'"), "6");
    EXPECT_EQ(Scalar("SELECT YEProperty1 FROM YEKeyWord WHERE YEKeyWordId = 'Fixed'"), "H");

    for (const char* table : {"YEEmployer", "YEEmployee", "IR8A", "LastSubmission", "UserModuleRights"}) {
        EXPECT_EQ(Scalar(std::string("SELECT count(*) AS N FROM ") + table), "0") << table;
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
    for (const std::string& table : Column("SELECT name FROM sqlite_master WHERE type = 'table'", "name")) {
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
}

TEST_F(CreateDatabaseTest, CopiesOfSubmittedReturnsFitBesideTheLiveRows) {
    CreateDatabase(path_, false);
    // The engine keeps the submitted copy under 9 + basis year and the copy
    // before that under 8 + basis year, in the same tables.
    Run("INSERT INTO YEEmployee (YEEmployerId, YEYear, PersonalSysId) VALUES "
        "('E1', 2024, 7), ('E1', 92024, 7), ('E1', 82024, 7);"
        "INSERT INTO IR8A (PersonalSysId, YEYear, IR8AType) VALUES "
        "(7, 2024, 'CurIR8A'), (7, 2025, 'SupIR8A'), (7, 92024, 'CurIR8A'), (7, 82024, 'CurIR8A');"
        "INSERT INTO IR8SA (PersonalSysId, YEYear, IR8SOrder) VALUES (7, 2024, 1), (7, 92024, 1);");
    // The copy's year is compared as text by the IR8A query.
    EXPECT_EQ(Scalar("SELECT count(*) AS N FROM IR8A WHERE YEYear = '92024' AND IR8AType = 'CurIR8A'"), "1");
    // Unset dates read as the empty date, unset money as zero.
    Query row = Open("SELECT Cessation, GrossTotal FROM YEEmployee JOIN IR8A USING (PersonalSysId, YEYear) "
                     "WHERE YEYear = 2024");
    EXPECT_EQ(row.FieldByName("Cessation").AsString(), "1899-12-30");
    EXPECT_EQ(row.FieldByName("GrossTotal").AsFloat(), 0.0);
}

}  // namespace
}  // namespace iras::db::testing
