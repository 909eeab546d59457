// The run log and the debug log of a job, and the five-line banners that mark
// each phase in them. The debug log is the complete record of a run (what the
// user saw plus the internal detail), so every run-log line is copied to it.
#include "submission/common/RunLogs.h"

namespace iras {

StringList BannerLines(const std::string& title) {
    std::string titleLine = title;
    if (title.size() < kBannerStars.size()) {
        // Centred, the odd blank on the right. A longer title is not cut:
        // a whole phase name matters more than an even box.
        const std::size_t free = kBannerStars.size() - title.size();
        const std::size_t left = free / 2;
        titleLine = std::string(left, ' ') + title + std::string(free - left, ' ');
    }
    return {kBannerStars, kBannerBlank, titleLine, kBannerBlank, kBannerStars};
}

void RunLogs::WriteAllMemo(const std::string& line) {
    if (log_ != nullptr) {
        log_->Append(line);
    }
    WriteInternalMemo(line);
}

void RunLogs::WriteInternalMemo(const std::string& line) {
    if (debug_ != nullptr) {
        debug_->Append(line);
    }
}

void RunLogs::WriteAllBanner(const std::string& title) {
    for (const auto& line : BannerLines(title)) {
        WriteAllMemo(line);
    }
}

void RunLogs::WriteInternalBanner(const std::string& title) {
    for (const auto& line : BannerLines(title)) {
        WriteInternalMemo(line);
    }
}

}  // namespace iras
