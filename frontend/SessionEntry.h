// What the module's entry does, callable without the C boundary: check the
// user's right to the module, show the session form modally, and answer the
// path of the summary file of the last run ("" when none, or when the right
// is refused).
#pragma once

#include <string>

#include "frontend/TIRASeSubmissionFrontend_Form.h"

namespace iras {

std::string OpenSessionForm(BQueryViewTable& session, const std::string& mode, SessionFormServices services = {});

}  // namespace iras
