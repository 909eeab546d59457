// The session form's lists read from the sample payroll database: the
// engine's saved copies (year-end years 82023 and 92023) never show, the
// supplementary IR8A lists the year before each year-end year, and the last
// generation comes with its date as the payroll shows dates.
#include <gtest/gtest.h>

#include "apps/run/SessionFormData.h"
#include "platform/database/Query.h"
#include "platform/database/Schema.h"
#include "tests/run/RunFakes.h"

namespace iras::testing {
namespace {

class SessionFormDataTest : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        folder_ = UniqueFolder("iras-form-data");
        db::CreateDatabase(folder_ / "payroll.db", true);
    }
    static void TearDownTestSuite() { fs::remove_all(folder_); }
    void SetUp() override {
        db::ConnectionRegistry::Register("kovadb", {"sqlite", (folder_ / "payroll.db").string(), false});
    }
    void TearDown() override { db::ConnectionRegistry::Unregister("kovadb"); }

    static inline fs::path folder_;
    DatabaseSessionFormData data_;
};

std::vector<int> Shown(const std::vector<YearRow>& rows) {
    std::vector<int> years;
    for (const YearRow& row : rows) years.push_back(row.year);
    return years;
}

TEST_F(SessionFormDataTest, EmployersInIdOrderWithTheirDescriptions) {
    const std::vector<EmployerRow> employers = data_.Employers();
    ASSERT_EQ(employers.size(), 4u);
    EXPECT_EQ(employers[0].id, "ERRCO");
    EXPECT_EQ(employers[1].id, "ERRHEAD");
    EXPECT_EQ(employers[2].id, "IR8AYA2025");
    EXPECT_EQ(employers[2].description, "Lion City Precision Engineering");
    EXPECT_EQ(employers[3].id, "ONEIL");
}

TEST_F(SessionFormDataTest, YearListsLeaveOutSavedCopiesAndShowTheSupplementaryBasisYear) {
    struct Case {
        std::string employer;
        FileType type;
        std::vector<int> years;
        std::vector<int> yeYears;
    };
    const std::vector<Case> cases = {
        {"IR8AYA2025", FileType::CurrentIR8A, {2022, 2023, 2024}, {2022, 2023, 2024}},
        {"IR8AYA2025", FileType::All, {2022, 2023, 2024}, {2022, 2023, 2024}},
        {"IR8AYA2025", FileType::SupplementaryIR8A, {2021, 2022, 2023}, {2022, 2023, 2024}},
        {"ONEIL", FileType::Appendix8A, {2023, 2024}, {2023, 2024}},
        {"NOBODY", FileType::CurrentIR8A, {}, {}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.employer + " " + FileTypeText(c.type));
        const std::vector<YearRow> rows = data_.Years(c.employer, c.type);
        EXPECT_EQ(Shown(rows), c.years);
        std::vector<int> yeYears;
        for (const YearRow& row : rows) yeYears.push_back(row.yeYear);
        EXPECT_EQ(yeYears, c.yeYears);
    }
}

TEST_F(SessionFormDataTest, LastGenerationOfTheChosenReturnOnly) {
    const auto current = data_.LastGeneration("IR8AYA2025", FileType::CurrentIR8A);
    ASSERT_TRUE(current);
    EXPECT_TRUE(current->original);
    EXPECT_EQ(current->submitUserId, "ADMIN");
    EXPECT_EQ(current->submittedDate, "26/02/2024 10:15:00");

    const auto all = data_.LastGeneration("IR8AYA2025", FileType::All);
    ASSERT_TRUE(all);
    EXPECT_EQ(all->submittedDate, "20/02/2024 16:45:09");

    const auto amendment = data_.LastGeneration("ONEIL", FileType::Appendix8A);
    ASSERT_TRUE(amendment);
    EXPECT_FALSE(amendment->original);
    EXPECT_EQ(amendment->submitUserId, "CLERK");

    EXPECT_FALSE(data_.LastGeneration("IR8AYA2025", FileType::SupplementaryIR8A));
    EXPECT_FALSE(data_.LastGeneration("ONEIL", FileType::CurrentIR8A));
}

TEST_F(SessionFormDataTest, UserIdTypesByDescriptionWithTheEnginesValue) {
    const std::vector<UserIdTypeRow> types = data_.UserIdTypes();
    ASSERT_EQ(types.size(), 3u);
    EXPECT_EQ(types[0].id, "CORPORATE");
    EXPECT_EQ(types[0].description, "Corporate Digital Identity");
    EXPECT_EQ(types[1].id, "PERSONAL");
    EXPECT_EQ(types[2].id, "TAXAGENT");
}

TEST_F(SessionFormDataTest, AnEmployerIdWithAQuoteIsAParameterNotSql) {
    EXPECT_TRUE(data_.Years("O'Neil", FileType::CurrentIR8A).empty());
    EXPECT_FALSE(data_.LastGeneration("O'Neil' OR '1'='1", FileType::CurrentIR8A));
}

TEST_F(SessionFormDataTest, ALostDatabaseIsADatabaseError) {
    db::ConnectionRegistry::Unregister("kovadb");
    EXPECT_THROW(data_.Employers(), db::DatabaseError);
}

}  // namespace
}  // namespace iras::testing
