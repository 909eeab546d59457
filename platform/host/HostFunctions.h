// The host's common functions that concern the session, the database and the
// installation: rights by module id, per-user view table names, the database
// server's date and the report directory.
#pragma once

#include <filesystem>
#include <string>

#include "platform/common/Date.h"

namespace iras {

// Nonzero when the user holds the right to the module (rights table of the
// payroll database). The two trailing arguments are the host's and are 0.
int _IsUserModuleAccessible(const std::string& userId, const std::string& moduleId, int, int);

// The per-user, per-workstation table name for a base name ("ViewYEEmployee"):
// a safe SQL identifier for any user id and address (quotes, blanks,
// non-ASCII), never the same for two different users or workstations.
std::string _GetViewTableName(const std::string& baseName, const std::string& ipAddress,
                              const std::string& userId);

// Today's date on the database server ("kovadb"), not the workstation's.
// While the clock is fixed for testing (SetClockForTesting) it is that date.
Date _GetDBServerCurrentDate();

// The host's folder for a sub-folder name ("Report"), created when missing.
// Root: SetHRPCurrentDirectory, else $IRAS_YEAREND_HOME, else
// $XDG_DATA_HOME/iras-yearend (~/.local/share/iras-yearend).
std::filesystem::path _GetHRPCurrentDirectory(const std::string& subFolder);
void SetHRPCurrentDirectory(const std::filesystem::path& root);

}  // namespace iras
