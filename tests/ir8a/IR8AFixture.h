// What the IR8A tests share: the return fixture over IR8A (a new database
// per test with the employer ACME), expected records laid out by their
// 1-based positions, and reading back the file and the run log.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "submission/ir8a/IR8ALayout.h"
#include "submission/ir8a/RIR8AeSubmission.h"
#include "tests/support/ReturnFixture.h"

namespace iras::testing {

// An IR8A record of blanks with texts at 1-based positions.
inline std::string Layout(std::initializer_list<std::pair<int, std::string>> fields) {
    return RecordOf(ir8a::kRecordWidth, fields);
}

class IR8ATest : public ReturnFixture {
protected:
    IR8ATest() : ReturnFixture("ir8a-test", {"IR8A"}, EmployerRowSql("'O''Brien Trading'", "'Pte. Ltd.'")) {}

    // The view tables as an engine makes them: the employer's rows of the
    // year and of the one kind of IR8A.
    void BuildViews(int year, const std::string& employer, const std::string& type) override {
        CopyViews(year, employer, " AND IR8AType = '" + type + "'");
    }

    std::unique_ptr<RIR8AeSubmission> MakeJob(const std::string& type = "CurIR8A", int basisYear = 2023) {
        IRASSubmissionParameters p = params;
        p.ignoreChanges = p.original;
        p.year = type == "SupIR8A" ? basisYear + 1 : basisYear;
        auto job = Wire(std::make_unique<RIR8AeSubmission>(
                            &session, p, runFolder.empty() ? (root / "run").string() : runFolder, copyFolder),
                        basisYear);
        job->SetIR8AType(type);
        return job;
    }

    // Validates, generates, and reads back the records of the file.
    std::vector<std::string> Generate(RIR8AeSubmission& job) {
        EXPECT_NE(job.ValidateIR8AFile(), 0) << "validation refused";
        EXPECT_NE(job.ProcessIR8AeSubmission(), 0) << "no file made";
        return Records(ReadBytes(job.GetOutputFilePath()));
    }

    // The lines of the run log from the first one equal to line.
    StringList LogFrom(const std::string& line, std::ptrdiff_t count) const {
        const auto at = std::find(log.View().begin(), log.View().end(), line);
        return StringList(at, at + std::min(count, log.View().end() - at));
    }

    std::string runFolder, copyFolder;
};

}  // namespace iras::testing
