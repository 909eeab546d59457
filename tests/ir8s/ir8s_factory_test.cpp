// The job factory makes the IR8S job with the form's three "IR8S Options"
// (the other two switches always off) and the run's basis year: each option
// narrows the file to the employees carrying its flag.
#include "apps/run/JobFactory.h"
#include "platform/common/Text.h"
#include "tests/ir8s/IR8SFixture.h"

namespace iras::testing {
namespace {

using IR8SFactory = IR8STest;

TEST_F(IR8SFactory, OptionsOfTheFormChooseTheEmployees) {
    // 1 excess CPF only; 2 also overseas CPF; 3 also additional wage above
    // 40%; 4 no flag; 5 the two flags the form never asks for.
    const char* const flags[] = {"", "FlagOverseasCPF = 'Y'", "FlagPercentOrdWage = 'Y'", "FlagExcessCPF = 'N'",
                                 "Flag100K = 'Y', IR8SIndicator = 'Y'"};
    for (int id = 1; id <= 5; ++id) {
        AddEmployee(id, "NRIC", "S" + std::to_string(id), "EMPLOYEE " + std::to_string(id), "", flags[id - 1]);
        AddMonths(id, 13);
    }
    struct Case {
        IR8SOptions options;
        std::string listed;  // identity numbers in the file
    };
    const std::vector<Case> cases{
        {{true, false, false}, "S1 S2 S3 S5 "},
        {{false, false, false}, "S1 S2 S3 S4 S5 "},
        {{true, true, false}, "S2 "},
        {{false, false, true}, "S3 "},
    };
    for (const Case& c : cases) {
        const ScratchFolder run("ir8s-factory");
        ReturnJobFactory factory;
        ASSERT_TRUE(factory.Available(FileType::IR8S));
        auto job = factory.Create(FileType::IR8S, JobSetup{&session, params, run.Path().string(), "", 2023, c.options});
        ASSERT_NE(job, nullptr);
        EXPECT_NE(job->ValidateFile(), 0);
        EXPECT_NE(job->ProcessFile(), 0);
        std::string listed;
        for (const std::string& record : Records(ReadBytes(run.Path() / "TEST2023eIR8S_Submission(O).txt")))
            if (record[0] == '1') listed += TrimSpace(Span(record, 3, 14)) + " ";
        EXPECT_EQ(listed, c.listed);
        EXPECT_EQ(job->SummaryFileName(), "IR8SSummaryFile");
    }
}

}  // namespace
}  // namespace iras::testing
