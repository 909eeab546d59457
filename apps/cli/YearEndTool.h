// iras-yearend as a library call: takes the arguments and the terminal's
// streams, runs the command through the same run controller as the session
// form, and answers the exit status. main() only hands it the process's
// streams; tests hand it string streams.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace iras {

struct ToolStreams {
    std::ostream& out;        // the run log, check findings
    std::ostream& err;        // messages, questions, paths of the files written, progress
    std::istream& in;         // answers to questions when interactive
    bool interactive = false; // standard input is a terminal: questions may be asked
    bool progressBar = false; // standard error is a terminal: draw a progress bar
    bool outIsTerminal = false;  // standard output shares the screen with the bar
};

// How long a run waits for the database while another run holds its lock.
inline constexpr int kLockWaitMs = 120000;

// args without the program name. Never throws.
int RunYearEndTool(const std::vector<std::string>& args, ToolStreams streams);

}  // namespace iras
