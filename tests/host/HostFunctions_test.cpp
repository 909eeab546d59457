// The host's common functions: view table names that are safe and never
// shared, user rights read from the database, the server date and the report
// folder.
#include "platform/host/HostFunctions.h"

#include <gtest/gtest.h>

#include <cctype>
#include <ctime>
#include <set>

#include "tests/host/HostTestDatabase.h"

namespace iras {
namespace {

using testing::HostDatabaseTest;

TEST(GetViewTableName, EncodesUserAndAddressReadablyAndInjectively) {
    // Worked by hand: capitals and other bytes become "_" + two hex digits,
    // lower-case letters and digits stay, "__" separates user and address.
    EXPECT_EQ(_GetViewTableName("ViewIR8A", "127.0.0.1", "O'Brien"), "ViewIR8A__4F_27_42rien__127_2E0_2E0_2E1");
    EXPECT_EQ(_GetViewTableName("ViewIR8A", "10.0.0.2", "a b"), "ViewIR8A_a_20b__10_2E0_2E0_2E2");
    EXPECT_EQ(_GetViewTableName("ViewIR8A", "::1", "李"), "ViewIR8A__E6_9D_8E___3A_3A1");

    const std::vector<std::pair<std::string, std::string>> sessions = {
        {"O'Brien", "127.0.0.1"}, {"OBrien", "127.0.0.1"}, {"a b", "127.0.0.1"},  {"a_b", "127.0.0.1"},
        {"李", "127.0.0.1"},      {"ALICE", "127.0.0.1"},  {"alice", "127.0.0.1"}, {"alice", "10.0.0.7"},
        {"", "127.0.0.1"},        {"a", "_127.0.0.1"},     {"a_", "127.0.0.1"},    {"alice\"; DROP", "1"},
    };
    std::set<std::string> names;
    for (const auto& [user, address] : sessions) {
        std::string name = _GetViewTableName("ViewYEEmployee", address, user);
        for (char& c : name) {
            EXPECT_TRUE(std::isalnum(static_cast<unsigned char>(c)) || c == '_') << name;
            // SQL identifiers ignore case, so the names must differ after folding.
            c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        }
        names.insert(name);
    }
    EXPECT_EQ(names.size(), sessions.size());
}

class HostFunctionsDatabase : public HostDatabaseTest {};

TEST_F(HostFunctionsDatabase, ModuleRightComesFromTheRightsTable) {
    Exec("INSERT INTO UserModuleRights VALUES ('O''Brien', 'YEIRASDirect')");
    EXPECT_NE(_IsUserModuleAccessible("O'Brien", "YEIRASDirect", 0, 0), 0);
    EXPECT_EQ(_IsUserModuleAccessible("O'Brien", "YEDirectA8BRpt", 0, 0), 0);
    EXPECT_EQ(_IsUserModuleAccessible("o'brien", "YEIRASDirect", 0, 0), 0);
    EXPECT_EQ(_IsUserModuleAccessible("x' OR '1'='1", "YEIRASDirect", 0, 0), 0);
    // An unreadable database means no access, and no exception.
    db::ConnectionRegistry::Register("kovadb", {"sqlite", "/nonexistent-folder/none/payroll.db", false});
    EXPECT_EQ(_IsUserModuleAccessible("O'Brien", "YEIRASDirect", 0, 0), 0);
}

DateTime FixedClock() { return DateTime{Date{2024, 2, 29}, 23, 59, 58}; }

TEST_F(HostFunctionsDatabase, ServerDateIsTheTestClockWhenFixedElseTodaysDate) {
    SetClockForTesting(&FixedClock);
    EXPECT_EQ(_GetDBServerCurrentDate(), (Date{2024, 2, 29}));
    SetClockForTesting(nullptr);
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    EXPECT_EQ(_GetDBServerCurrentDate(), (Date{local.tm_year + 1900, local.tm_mon + 1, local.tm_mday}));
}

TEST(GetHRPCurrentDirectory, CreatesTheSubFolderUnderTheChosenRoot) {
    const auto root = testing::UniqueTempFolder("iras-hrp") / "host home";
    SetHRPCurrentDirectory(root);
    EXPECT_EQ(_GetHRPCurrentDirectory("Report"), root / "Report");
    EXPECT_TRUE(std::filesystem::is_directory(root / "Report"));
    SetHRPCurrentDirectory({});
    std::filesystem::remove_all(root.parent_path());
}

}  // namespace
}  // namespace iras
