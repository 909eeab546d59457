// What the Appendix 8B tests share: the return fixture over A8B and
// A8BRecord (a new database per test with the employer ACME, incorporated on
// 15 April 2019), and helpers to add employees and share-plan rows.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "submission/a8b/A8BLayout.h"
#include "submission/a8b/RA8BeSubmission.h"
#include "tests/support/ReturnFixture.h"

namespace iras::testing {

inline std::string A8BRecordOf(std::initializer_list<std::pair<int, std::string>> fields) {
    return RecordOf(a8b::kRecordWidth, fields);
}

class A8BTest : public ReturnFixture {
protected:
    A8BTest()
        : ReturnFixture("a8b-test", {"A8B", "A8BRecord"},
                        EmployerRowSql("'O''Neil; ^Co'", "'Pte'", ", DateIncorporation", ", '2019-04-15'")) {}

    // An employee of year 2023 with its A8B row (totals as given, "" for none).
    static void Employee(int id, const std::string& taxNo, const std::string& name, const std::string& totals = "",
                         const std::string& employeeSet = "") {
        Sql(EmployeeSql(id, taxNo, name, totals, employeeSet));
    }
    static std::string EmployeeSql(int id, const std::string& taxNo, const std::string& name,
                                   const std::string& totals = "", const std::string& employeeSet = "") {
        const std::string key = std::to_string(id);
        return ("INSERT INTO Employee (EmployeeSysId, EmployeeCode, PersonalSysId) VALUES (" + key + ", 'E" + key +
            "', " + key + "); INSERT INTO YEEmployee (YEEmployerId, YEYear, PersonalSysId, CurrentYEGlobalId,"
            " PayeeIDType, TaxNo, EEName1, EEName2, IRASNationalityCode, Gender, DOB) VALUES ('ACME', 2023, " + key +
            ", 1, 'NRIC', '" + taxNo + "', '" + name + "', '', '301', 'F', '1985-07-14');"
            "INSERT INTO A8B (PersonalSysId, YEYear, GrandTotalStockGains) VALUES (" + key + ", 2023, 1000);" +
            (totals.empty() ? "" : "UPDATE A8B SET " + totals + " WHERE PersonalSysId = " + key + ";") +
            (employeeSet.empty() ? "" : "UPDATE YEEmployee SET " + employeeSet + " WHERE PersonalSysId = " + key + ";"));
    }

    // A share-plan row of employee id in the section of optionType: a clean
    // ESOP row granted in 2020 (Section D: 2010) and exercised in 2023, with
    // the SET clause `set` ("TypePlanGranted = 'ESOW', ...") over it.
    static void Row(int id, int rowId, const std::string& optionType, const std::string& set = "") {
        Sql(RowSql(id, rowId, optionType, set));
    }
    static std::string RowSql(int id, int rowId, const std::string& optionType, const std::string& set = "") {
        const std::string key = std::to_string(id), row = std::to_string(rowId);
        return ("INSERT INTO A8BRecord (PersonalSysId, YEYear, A8BRecordSysId, StockOptionType, CompanyIDType, RCBNo,"
            " CompanyName, TypePlanGranted, DateStockGranted, DateExerciseStock, ExercisePriceStock,"
            " MktValueExerciseStock, SharesAcquired, NoTaxExempt, StockGains) VALUES (" + key + ", 2023, " + row +
            ", '" + optionType + "', 'CompanyROC', '201012345Z', 'Granting Co Pte Ltd', 'ESOP', '2020-01-15',"
            " '2023-06-03', 1, 1.1, 1000, 100, 100);" +
            // A start-up's plan of 2010, granted within its first three years.
            (optionType == "NSOP" ? "UPDATE A8BRecord SET DateStockGranted = '2010-01-04', DateIncorporation ="
                                    " '2009-06-01' WHERE PersonalSysId = " + key + " AND A8BRecordSysId = " + row + ";"
                                  : "") +
            (set.empty() ? "" : "UPDATE A8BRecord SET " + set + " WHERE PersonalSysId = " + key +
                                    " AND A8BRecordSysId = " + row + ";"));
    }

    std::unique_ptr<RA8BeSubmission> MakeJob(int basisYear = 2023) {
        IRASSubmissionParameters p = params;
        p.ignoreChanges = p.original;
        p.year = basisYear;
        return Wire(std::make_unique<RA8BeSubmission>(&session, p, (root / "run").string(), ""), basisYear);
    }

    // Validates, generates, and reads back the records of the file.
    std::vector<std::string> Generate(RA8BeSubmission& job) {
        EXPECT_NE(job.ValidateA8BFile(), 0) << "validation refused";
        EXPECT_NE(job.ProcessA8BeSubmission(), 0) << "no file made";
        return Records(ReadBytes(job.GetOutputFilePath()));
    }
};

}  // namespace iras::testing
