// What the Appendix 8A tests share: the return fixture over A8A and A8AS2S3
// (a new database per test with the employer ACME), an employee helper, and
// expected records laid out by their 1-based positions.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "submission/a8a/A8ALayout.h"
#include "submission/a8a/RA8AeSubmission.h"
#include "tests/support/ReturnFixture.h"

namespace iras::testing {

// An Appendix 8A detail record of blanks with texts at 1-based positions.
inline std::string Detail(std::initializer_list<std::pair<int, std::string>> fields) {
    return RecordOf(a8a::kRecordWidth, fields);
}
inline std::string Header(std::initializer_list<std::pair<int, std::string>> fields) {
    return RecordOf(a8a::kHeaderWidth, fields);
}

class A8ATest : public ReturnFixture {
protected:
    A8ATest()
        : ReturnFixture("a8a-test", {"A8A", "A8AS2S3"}, EmployerRowSql("'O''Brien;Trading^'", "'Pte. Ltd.'")) {
        params.year = 2023;
    }

    // One employee of 2023 (Employee, YEEmployee and A8A rows) whose A8A row
    // has a total benefit of 100 and one employee sharing the quarters.
    static void AddEmployee(int id, const std::string& taxNo, const std::string& name) {
        const std::string key = std::to_string(id);
        Sql("INSERT INTO Employee (EmployeeSysId, EmployeeCode, PersonalSysId) VALUES (" + key + ", 'E" + key +
            "', " + key + "); INSERT INTO YEEmployee (YEEmployerId, YEYear, PersonalSysId, CurrentYEGlobalId,"
            " PayeeIDType, TaxNo, EEName1) VALUES ('ACME', 2023, " + key + ", 1, 'NRIC', '" + taxNo + "', '" +
            name + "'); INSERT INTO A8A (PersonalSysId, YEYear, NoOfEESharingQtr, TotalBenefitInKind) VALUES (" +
            key + ", 2023, 1, 100);");
    }

    std::unique_ptr<RA8AeSubmission> MakeJob() {
        IRASSubmissionParameters p = params;
        p.ignoreChanges = p.original;
        return Wire(std::make_unique<RA8AeSubmission>(&session, p, (root / "run").string(), ""), 2023);
    }

    // Validates, generates, and reads back the records of the file.
    std::vector<std::string> Generate(RA8AeSubmission& job) {
        EXPECT_NE(job.ValidateA8AFile(), 0) << ::testing::PrintToString(employeeErrors);
        EXPECT_NE(job.ProcessA8AeSubmission(), 0) << ::testing::PrintToString(log.View());
        return Records(ReadBytes(job.GetOutputFilePath()));
    }
};

}  // namespace iras::testing
