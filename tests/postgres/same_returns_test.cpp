// The same sample data gives the same return files, byte for byte, on SQLite
// and on PostgreSQL: for every return the job factory makes, Original and
// Amendment, every employer and year of the sample. A return added to the
// factory later is compared here without a new test. Each case works on fresh
// copies of the sample, because an Original records what it made as submitted
// and would leave the Amendment of the same case with nothing to report.

#include <gtest/gtest.h>

#include <algorithm>
#include <tuple>

#include "apps/run/FileType.h"
#include "apps/run/JobFactory.h"
#include "platform/database/Query.h"
#include "tests/postgres/tool_runs.h"

namespace iras::testing {
namespace {

std::vector<FileType> FactoryReturns() {
    std::vector<FileType> types;
    ReturnJobFactory factory;
    for (FileType type : kReturnTypes)
        if (factory.Available(type)) types.push_back(type);
    return types;
}

// Every employer and year-end year of the sample.
std::vector<std::pair<std::string, int>> SampleEmployerYears() {
    db::ConnectionRegistry::Register("samplelist", {"sqlite", PostgresEnvironment::Get().SqliteSample(), false});
    db::Query query("samplelist");
    query.SetSQL("SELECT DISTINCT YEEmployerId, YEYear FROM YEEmployee WHERE YEYear < 10000 ORDER BY 1, 2");
    query.Open();
    std::vector<std::pair<std::string, int>> list;
    for (query.First(); !query.Eof(); query.Next())
        list.emplace_back(query.FieldByName("YEEmployerId").AsString(),
                          static_cast<int>(query.FieldByName("YEYear").AsInteger()));
    query.Close();
    db::ConnectionRegistry::Unregister("samplelist");
    return list;
}

class SameReturnsOnBothDatabases : public ::testing::TestWithParam<std::tuple<FileType, bool>> {};

TEST_P(SameReturnsOnBothDatabases, EveryEmployerAndYearGivesTheSameExitStatusAndFileBytes) {
    IRAS_REQUIRE_POSTGRES();
    const auto [type, amendment] = GetParam();
    PostgresEnvironment& environment = PostgresEnvironment::Get();
    std::string caseName = "same_" + FileTypeOption(type) + (amendment ? "_amend" : "_orig");
    std::replace(caseName.begin(), caseName.end(), '-', '_');
    const fs::path root = environment.Folder() / caseName;
    fs::create_directories(root);
    const std::string sqlite = (root / "sample.db").string();
    fs::copy_file(environment.SqliteSample(), sqlite, fs::copy_options::overwrite_existing);
    environment.Server().CreateDatabase(caseName, "sample");
    const std::string server = environment.Server().Uri(caseName);
    int filesCompared = 0;
    for (const auto& [employer, yeYear] : SampleEmployerYears()) {
        // The form lists the supplementary return under the year before.
        const int year = type == FileType::SupplementaryIR8A ? yeYear - 1 : yeYear;
        const fs::path run = root / (employer + "_" + std::to_string(year));
        const ToolResult onSqlite = RunTool(GenerateArgs(sqlite, "ADMIN", employer, year,
                                                         FileTypeOption(type), amendment, run / "sqlite"));
        const ToolResult onServer = RunTool(GenerateArgs(server, "ADMIN", employer, year,
                                                         FileTypeOption(type), amendment, run / "postgres"));
        const std::string what = employer + " " + std::to_string(year);
        ASSERT_EQ(onSqlite.status, onServer.status) << what << "\nSQLite:\n" << onSqlite.err << "\nPostgreSQL:\n"
                                                    << onServer.err;
        const auto expected = FilesIn(run / "sqlite" / "files");
        const auto actual = FilesIn(run / "postgres" / "files");
        ASSERT_EQ(expected.size(), actual.size()) << what;
        for (const auto& [name, bytes] : expected) {
            ASSERT_TRUE(actual.count(name)) << what << ": " << name << " only on SQLite";
            EXPECT_TRUE(actual.at(name) == bytes) << what << ": " << name << " differs";
            ++filesCompared;
        }
    }
    // A comparison of nothing would pass for any driver.
    EXPECT_GT(filesCompared, 0) << "the sample data gives no " << (amendment ? "Amendment" : "Original") << " of "
                                << FileTypeText(type) << " on either database; add sample rows for it";
}

INSTANTIATE_TEST_SUITE_P(EveryReturn, SameReturnsOnBothDatabases,
                         ::testing::Combine(::testing::ValuesIn(FactoryReturns()), ::testing::Bool()),
                         [](const auto& instance) {
                             std::string name = FileTypeOption(std::get<0>(instance.param));
                             std::replace(name.begin(), name.end(), '-', '_');
                             return name + (std::get<1>(instance.param) ? "_Amendment" : "_Original");
                         });

}  // namespace
}  // namespace iras::testing
