// The payroll server's SQL functions, provided on every SQLite connection.
//
// Rounding in SQL must agree to the cent with the records the jobs print, so
// ROUND (which replaces SQLite's own), TRUNCNUM and the money cast call the
// common library's _Round and _Trunc. The look-up functions read the
// payroll's master tables on the same connection:
//   FGetEmployeeIdByPersonalSysId(personalSysId): the EmployeeCode of that
//       person's Employee row (the lowest EmployeeSysId when there are several)
//   FGetEmployeeSysId(employeeCode): the EmployeeSysId of that code
//   FGetIRASEmployeeBank(employeeSysId): the employee's IRASBankCode
//   FGetPersonalName(personalSysId): the PersonalName of that person
//   FGetDateTimeFormat('YYYY-MM-DD HH:MM:SS'): 'dd/mm/yyyy hh:mm:ss'
// Each gives NULL for a NULL argument or when there is no such row.
#pragma once

#include <memory>

struct sqlite3;

namespace iras::db {

// Registers the functions on db. The returned object must outlive every use of
// db and be destroyed before db is closed.
class DatabaseFunctions {
public:
    explicit DatabaseFunctions(sqlite3* db);
    ~DatabaseFunctions();
    DatabaseFunctions(const DatabaseFunctions&) = delete;
    DatabaseFunctions& operator=(const DatabaseFunctions&) = delete;

    struct Lookups;  // prepared look-up statements, made on first use

private:
    std::unique_ptr<Lookups> lookups_;
};

}  // namespace iras::db
