// What the IR8S tests share: the return fixture over IR8S, IR8SA and IR8SC
// (a new database per test with the employer ACME), and helpers that add an
// employee with its Section A and Section B rows.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "submission/ir8s/IR8SLayout.h"
#include "submission/ir8s/RIR8SeSubmission.h"
#include "tests/support/ReturnFixture.h"

namespace iras::testing {

class IR8STest : public ReturnFixture {
public:  // the helpers serve the tests' free functions too
    IR8STest()
        : ReturnFixture("ir8s-test", {"IR8S", "IR8SA", "IR8SC"},
                        EmployerRowSql("'O''Brien; Trading^'", "'Pte. Ltd.'")) {
        params.year = 2023;
    }

    // An employee of ACME in 2023 with an IR8S row (flag Excess CPF set);
    // irs8: further "column = value" settings of the IR8S row.
    static void AddEmployee(int id, const std::string& idType, const std::string& taxNo, const std::string& name1,
                            const std::string& name2 = "", const std::string& ir8s = "") {
        const std::string key = std::to_string(id);
        Sql("INSERT INTO Employee (EmployeeSysId, EmployeeCode, PersonalSysId) VALUES (" + key + ", 'E" + key +
            "', " + key + ");"
            "INSERT INTO YEEmployee (YEEmployerId, YEYear, PersonalSysId, CurrentYEGlobalId, PayeeIDType, TaxNo,"
            " EEName1, EEName2) VALUES ('ACME', 2023, " + key + ", 1, '" + idType + "', '" + taxNo + "', '" +
            name1 + "', '" + name2 + "');"
            "INSERT INTO IR8S (PersonalSysId, YEYear, FlagExcessCPF) VALUES (" + key + ", 2023, 'Y');" +
            (ir8s.empty() ? "" : "UPDATE IR8S SET " + ir8s + " WHERE PersonalSysId = " + key + ";"));
    }
    // Section A row `order` of an employee: the six amounts in column order.
    static void AddMonth(int id, int order, const std::string& amounts) {
        Sql("INSERT INTO IR8SA (PersonalSysId, YEYear, IR8SOrder, OrdWages, ContriOrdERCPF, ContriOrdEECPF, AddWages,"
            " ContriAddERCPF, ContriAddEECPF) VALUES (" + std::to_string(id) + ", 2023, " + std::to_string(order) +
            ", " + amounts + ");");
    }
    // rows Section A rows of an employee, all alike.
    static void AddMonths(int id, int rows, const std::string& amounts = "2500, 425, 500, 0, 0, 0") {
        for (int order = 1; order <= rows; ++order) AddMonth(id, order, amounts);
    }
    // A Section B payment: amount, from, to, paid, ER refund, ER interest,
    // ER date, EE refund, EE interest, EE date.
    static void AddPayment(int id, int refund, const std::string& values) {
        Sql("INSERT INTO IR8SC (PersonalSysId, YEYear, RefundSysId, AddWageAmt, AddWageFrom, AddWageTo,"
            " AddWagePaidDate, ERContribution, ERInterest, ERDate, EEContribution, EEInterest, EEDate) VALUES (" +
            std::to_string(id) + ", 2023, " + std::to_string(refund) + ", " + values + ");");
    }

    std::unique_ptr<RIR8SeSubmission> MakeJob(bool original = true, int basisYear = 2023) {
        IRASSubmissionParameters p = params;
        p.original = original;
        p.ignoreChanges = original;
        p.year = basisYear;
        auto job = Wire(std::make_unique<RIR8SeSubmission>(&session, p, (root / "run").string(), ""), basisYear);
        job->SetExcessCPF(true);
        return job;
    }

    // Validates, generates, and reads back the records of the file.
    std::vector<std::string> Generate(RIR8SeSubmission& job) {
        EXPECT_NE(job.ValidateIR8SFile(), 0) << ::testing::PrintToString(employeeErrors);
        EXPECT_NE(job.ProcessIR8SeSubmission(), 0) << ::testing::PrintToString(log.View());
        return Records(ReadBytes(job.GetOutputFilePath()));
    }
};

}  // namespace iras::testing
