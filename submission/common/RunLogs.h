// The two on-screen logs of a run: the run log (the user's) and the debug log.
// Every run-log line goes to the debug log too; some lines go to the debug log
// only. Each phase is announced by a five-line banner: 48 asterisks, 48
// blanks, the title line, 48 blanks, 48 asterisks.
#pragma once

#include <string>
#include <string_view>

#include "platform/common/LogSink.h"

namespace iras {

inline const std::string kBannerStars(48, '*');
inline const std::string kBannerBlank(48, ' ');

class RunLogs {
public:
    void SetLogMemo(LogSink* log) { log_ = log; }
    void SetInternalMemo(LogSink* debug) { debug_ = debug; }
    LogSink* LogMemo() const { return log_; }
    LogSink* InternalMemo() const { return debug_; }

    void WriteAllMemo(std::string_view line);       // run log, then debug log
    void WriteInternalMemo(std::string_view line);  // debug log only
    // The five lines of a banner. A title of 48 characters is used as it
    // stands (the jobs' titles carry their own blanks); a shorter one is
    // centred in 48 columns, the odd blank going to the right.
    void WriteAllBanner(std::string_view title);
    void WriteInternalBanner(std::string_view title);

private:
    void WriteBanner(std::string_view title, void (RunLogs::*write)(std::string_view));

    LogSink* log_ = nullptr;  // not owned; a missing sink drops its lines
    LogSink* debug_ = nullptr;
};

}  // namespace iras
