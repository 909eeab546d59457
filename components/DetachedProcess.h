// Starting a program that lives on without us: the script runner hands the
// database's SQL tool a command line and goes on at once, as a program started
// from a desktop does. The started process is not our child (it runs in a
// session of its own, so no zombie is left and no terminal signal reaches it),
// reads and writes nothing of ours (stdin, stdout and stderr are /dev/null, no
// other descriptor of the caller is passed on), and is never waited for.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace iras {

// The words of a command line as a program receives them, read the way the
// payroll's command lines were always read: blanks and tabs separate words,
// a double quote opens or closes a stretch in which blanks belong to the word,
// and the quotes themselves are dropped (""" gives nothing, a"b"c gives abc).
// An unquoted path with blanks thus arrives as several words.
std::vector<std::string> SplitCommandLine(std::string_view commandLine);

// Starts arguments[0] (a path; no search of PATH) with the arguments given,
// detached as above. Returns "" once the program runs, otherwise a sentence
// saying why it could not be started ("... does not exist"); never throws on a
// failure of the system. It waits only until the program has been loaded,
// never for it to end.
std::string StartDetached(const std::vector<std::string>& arguments);

}  // namespace iras
