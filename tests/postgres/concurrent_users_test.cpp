// Several payroll users at once against one server: each user's run builds
// its own view tables (named by user and workstation) and gets the files
// that the same run gives alone, whether the two users work on different
// employers or on the same one.

#include <gtest/gtest.h>

#include <memory>

#include "platform/database/Query.h"
#include "tests/postgres/tool_runs.h"

namespace iras::testing {
namespace {

struct UserRun {
    std::string user;
    std::string employer;
};

class ConcurrentUsers : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        if (!PostgresEnvironment::Get().Available()) return;
        // Databases of their own, so that the other tests' runs do not mix in
        // (a run records its generation as the last submission): a copy of
        // the server's sample and one of the SQLite sample, as they are now.
        PostgresEnvironment::Get().Server().CreateDatabase("office", "sample");
        fs::copy_file(PostgresEnvironment::Get().SqliteSample(), OfficeAlone(), fs::copy_options::overwrite_existing);
    }

    static std::string OfficeAlone() { return (PostgresEnvironment::Get().Folder() / "office.db").string(); }

    static std::string Office() { return PostgresEnvironment::Get().Server().Uri("office"); }

    // The current IR8A of 2024 of each run, made by the tool alone on SQLite.
    std::map<std::string, std::string> Alone(const UserRun& run, const fs::path& folder) {
        fs::create_directories(folder);
        ToolProcess tool(GenerateArgs(OfficeAlone(), run.user, run.employer, 2024,
                                      "cur-ir8a", false, folder),
                         folder / "tool.log");
        EXPECT_EQ(tool.Wait(), 0) << folder;
        return FilesIn(folder / "files");
    }

    // Starts every run at once against the server, waits for all, and checks
    // each one's files against what the same run gives alone.
    void AtOnce(const std::vector<UserRun>& runs, const std::string& name) {
        const fs::path root = PostgresEnvironment::Get().Folder() / name;
        std::vector<std::map<std::string, std::string>> expected;
        for (std::size_t k = 0; k < runs.size(); ++k) expected.push_back(Alone(runs[k], root / ("alone" + std::to_string(k))));
        for (int round = 0; round < 4; ++round) {
            std::vector<std::unique_ptr<ToolProcess>> tools;
            std::vector<fs::path> folders;
            for (std::size_t k = 0; k < runs.size(); ++k) {
                folders.push_back(root / ("round" + std::to_string(round) + "_" + std::to_string(k)));
                fs::create_directories(folders.back());
                tools.push_back(std::make_unique<ToolProcess>(
                    GenerateArgs(Office(), runs[k].user, runs[k].employer, 2024, "cur-ir8a", false, folders.back()),
                    folders.back() / "tool.log"));
            }
            for (std::size_t k = 0; k < runs.size(); ++k) {
                const std::string what = runs[k].user + " on " + runs[k].employer + ", round " + std::to_string(round);
                ASSERT_EQ(tools[k]->Wait(), 0) << what << ": see " << (folders[k] / "tool.log");
                const auto files = FilesIn(folders[k] / "files");
                ASSERT_EQ(files.size(), 1u) << what;
                EXPECT_TRUE(files == expected[k]) << what << ": the file differs from the run alone";
                // Each run records its generation as the last submission; two
                // users of one employer must not make the second one fail.
                EXPECT_NE(FilesIn(folders[k] / "reports").at("IRASSubmissionDebugFile.txt").find("Submission is successful."),
                          std::string::npos)
                    << what;
            }
        }
    }

    // The people in one user's employee view table on the server.
    static std::vector<std::string> EmployersInView(const std::string& viewTable) {
        db::ConnectionRegistry::Register("officecheck", {db::PostgresDriver, Office(), false});
        db::Query query("officecheck");
        query.SetSQL("SELECT DISTINCT YEEmployerId FROM " + viewTable + " ORDER BY YEEmployerId");
        query.Open();
        std::vector<std::string> employers;
        for (query.First(); !query.Eof(); query.Next()) employers.push_back(query.FieldByName("YEEmployerId").AsString());
        query.Close();
        db::ConnectionRegistry::Unregister("officecheck");
        return employers;
    }
};

// The view tables of ADMIN and CLERK at 127.0.0.1: capitals and dots are
// escaped as "_" and two hex digits, so the server's case folding cannot
// make the two users one.
constexpr const char* AdminEmployees = "ViewYEEmployee__41_44_4D_49_4E__127_2E0_2E0_2E1";
constexpr const char* ClerkEmployees = "ViewYEEmployee__43_4C_45_52_4B__127_2E0_2E0_2E1";

TEST_F(ConcurrentUsers, TwoUsersOnDifferentEmployersEachGetTheirOwnFileAndViewTables) {
    IRAS_REQUIRE_POSTGRES();
    AtOnce({{"ADMIN", "ONEIL"}, {"CLERK", "IR8AYA2025"}}, "different_employers");
    // Neither run replaced the other's view tables.
    EXPECT_EQ(EmployersInView(AdminEmployees), std::vector<std::string>{"ONEIL"});
    EXPECT_EQ(EmployersInView(ClerkEmployees), std::vector<std::string>{"IR8AYA2025"});
}

TEST_F(ConcurrentUsers, TwoUsersOnTheSameEmployerBothGetTheFullFile) {
    IRAS_REQUIRE_POSTGRES();
    AtOnce({{"ADMIN", "IR8AYA2025"}, {"CLERK", "IR8AYA2025"}}, "same_employer");
    EXPECT_EQ(EmployersInView(AdminEmployees), std::vector<std::string>{"IR8AYA2025"});
    EXPECT_EQ(EmployersInView(ClerkEmployees), std::vector<std::string>{"IR8AYA2025"});
}

}  // namespace
}  // namespace iras::testing
