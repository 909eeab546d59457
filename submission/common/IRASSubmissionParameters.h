// The settings of one run, filled by the session form (or the command-line
// tool) before every run and handed by value to each return job.
#pragma once

#include <cstdint>
#include <string>

namespace iras {

struct IRASSubmissionParameters {
    std::int32_t sortOrder = 2;    // 0 by tax number, 1 by employee id, 2 by name
    std::string employerId;        // the tax employer (key of the year-end tables)
    std::int32_t year = 0;         // the year-end year (basis year + 1 for a supplementary IR8A)
    bool original = true;          // Original file; false for an Amendment
    bool check = true;             // always true from the form; false makes the passes fail
    bool ignoreChanges = true;     // same as original; handed to the engine
    bool actualRun = false;        // Generate / Proceed; false for a trial or validation-only run
    bool directSubmission = false; // the session works in direct-submission mode
    std::string submitUserIdType;  // user id type chosen for direct submission
    std::string submitUserId;      // user id typed for direct submission
};

}  // namespace iras
