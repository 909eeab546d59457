// The lists behind the session form's pick lists, read from the payroll
// database under the alias "kovadb" with the payroll's own SQL texts: the tax
// employers, the basis years of one employer for a file type (the
// supplementary IR8A lists the year before each year-end year), the
// employer's last generation of a return, and the submitter's User ID Types.
// The session form and the command-line tool list the same rows from here; a
// test of the form's reactions hands it rows of its own instead.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "apps/run/FileType.h"

namespace iras {

// One tax employer: "Employer ID" and "Description".
struct EmployerRow {
    std::string id;
    std::string description;
};

// One row of the "Basis Year" list: the year-end year and the year shown
// (one less for the supplementary IR8A).
struct YearRow {
    int yeYear = 0;
    int year = 0;
};

// The employer's last generation of one return.
struct LastGenerationRow {
    bool original = true;
    std::string submitUserId;
    std::string submittedDate;  // as the database formats it: dd/mm/yyyy hh:mm:ss
};

// A submitter's "User ID Type": the value handed to the engine and its description.
struct UserIdTypeRow {
    std::string id;
    std::string description;
};

class SessionFormData {
public:
    virtual ~SessionFormData() = default;
    // All may throw db::DatabaseError.
    virtual std::vector<EmployerRow> Employers() = 0;
    virtual std::vector<YearRow> Years(const std::string& employerId, FileType type) = 0;
    virtual std::optional<LastGenerationRow> LastGeneration(const std::string& employerId,
                                                            FileType type) = 0;
    virtual std::vector<UserIdTypeRow> UserIdTypes() = 0;
};

// The lists as the payroll database under "kovadb" holds them.
class DatabaseSessionFormData : public SessionFormData {
public:
    std::vector<EmployerRow> Employers() override;
    std::vector<YearRow> Years(const std::string& employerId, FileType type) override;
    std::optional<LastGenerationRow> LastGeneration(const std::string& employerId,
                                                    FileType type) override;
    std::vector<UserIdTypeRow> UserIdTypes() override;
};

// The SQL of the year list for a file type, exactly as the payroll writes it.
std::string YearListSql(FileType type);
// The SQL of the last-generation query for a file type (two lines).
std::string LastGenerationSql(FileType type);

}  // namespace iras
