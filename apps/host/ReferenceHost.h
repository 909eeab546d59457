// iras-host, the reference host: what the payroll application does to open
// the year-end e-submission module. It opens the payroll database under the
// alias "kovadb", builds the session (user, workstation, year-end year) and
// the report folder from its options, loads the module at run time by path,
// calls its entry with the mode of its command line, and prints the answer
// (the summary file of the last run, or an empty line).
#pragma once

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace iras {

struct HostOptions {
    bool help = false;
    std::string database;       // --db FILE
    std::string user;           // --user USER
    std::string workstation = "127.0.0.1";  // --workstation ADDRESS
    std::optional<int> year;    // --year YEAR: the year-end year; default the database's latest
    std::string home;           // --home DIR: reports go to DIR/Report
    std::string module;         // --module PATH; default beside the program
    std::string mode;           // --mode TEXT, or "Direct Submit" for --direct-submit
};

struct ParsedHostOptions {
    std::optional<HostOptions> options;
    std::string error;
};

// args without the program name.
ParsedHostOptions ParseHostOptions(const std::vector<std::string>& args);
std::string HostHelpText();

// Where the module is looked for when --module is not given: beside the
// program, then in ../lib of its folder.
std::string DefaultModulePath();

// Exit statuses of iras-host.
enum HostExit : int {
    kHostSuccess = 0,
    kHostUsage = 2,
    kHostNoDisplay = 3,  // no window system to show the form on
    kHostDatabase = 4,
    kHostModule = 5,  // the module could not be loaded or has no entry
};

// Runs the host's session: needs a QApplication when the module is to show
// its form. Prints the entry's answer on out, problems on err. Never throws.
int RunReferenceHost(const HostOptions& options, std::ostream& out, std::ostream& err);

}  // namespace iras
