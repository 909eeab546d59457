// The Appendix 8A summary: a short plain-text account of the file just
// written (which file, whose, which year, how many records) that the user
// prints or keeps beside it.
#include <string>

#include "submission/a8a/RA8AeSubmission.h"

namespace iras {

void RA8AeSubmission::GenerateA8ASummaryTextFile(StringList& summary) {
    AppendSummaryBanner(summary, "SUMMARY OF FILE - Appendix 8A    ");
    AppendFileSummaryLines(summary);
}

}  // namespace iras
