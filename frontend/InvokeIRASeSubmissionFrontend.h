// The one entry into the year-end e-submission module, with C linkage so
// that a host finds it by its plain name (dlsym(module,
// "InvokeIRASeSubmissionFrontend")). The host hands its session and a mode
// text: "Direct Submit" (exactly) opens the form for direct submission, any
// other text for file generation. The answer is the path of the summary file
// of the session's last run, "" when there is none; the text stays valid
// until the next call. The module must be built with the same compiler as the
// host, which owns the session object.
#pragma once

namespace iras {
class BQueryViewTable;
}

#define IRAS_FRONTEND_ENTRY __attribute__((visibility("default")))

extern "C" IRAS_FRONTEND_ENTRY const char* InvokeIRASeSubmissionFrontend(iras::BQueryViewTable* session,
                                                                          const char* mode);

using InvokeIRASeSubmissionFrontendFunction = const char* (*)(iras::BQueryViewTable*, const char*);
