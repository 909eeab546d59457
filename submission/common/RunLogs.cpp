// The run log and the debug log of a job, and the five-line banners that mark
// each phase in them. The debug log is the complete record of a run (what the
// user saw plus the internal detail), so every run-log line is copied to it.
#include "submission/common/RunLogs.h"

namespace iras {

void RunLogs::WriteAllMemo(std::string_view line) {
    if (log_ != nullptr) {
        log_->Append(line);
    }
    WriteInternalMemo(line);
}

void RunLogs::WriteInternalMemo(std::string_view line) {
    if (debug_ != nullptr) {
        debug_->Append(line);
    }
}

namespace {

// The title line of a banner: centred, the odd blank on the right. A longer
// title is not cut: a whole phase name matters more than an even box.
std::string BannerTitleLine(std::string_view title) {
    if (title.size() >= kBannerStars.size()) return std::string(title);
    const std::size_t free = kBannerStars.size() - title.size();
    const std::size_t left = free / 2;
    std::string line(left, ' ');
    line += title;
    line.append(free - left, ' ');
    return line;
}

}  // namespace

void RunLogs::WriteAllBanner(std::string_view title) { WriteBanner(title, &RunLogs::WriteAllMemo); }

void RunLogs::WriteInternalBanner(std::string_view title) { WriteBanner(title, &RunLogs::WriteInternalMemo); }

// Written line by line, not made into a list first: the jobs write a banner
// for every employee to the debug log.
void RunLogs::WriteBanner(std::string_view title, void (RunLogs::*write)(std::string_view)) {
    const std::string titleLine = BannerTitleLine(title);
    for (const std::string* line : {&kBannerStars, &kBannerBlank, &titleLine, &kBannerBlank, &kBannerStars})
        (this->*write)(*line);
}

}  // namespace iras
