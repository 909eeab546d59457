// iras-yearend: the year-end returns without a window. Everything happens in
// the run library; this only hands it the process's arguments and terminal.
#include <unistd.h>

#include <iostream>
#include <string>
#include <vector>

#include "apps/cli/YearEndTool.h"

int main(int argc, char** argv) {
    const std::vector<std::string> args(argv + 1, argv + argc);
    return iras::RunYearEndTool(args, iras::ToolStreams{std::cout, std::cerr, std::cin,
                                                        isatty(STDIN_FILENO) != 0,
                                                        isatty(STDERR_FILENO) != 0,
                                                        isatty(STDOUT_FILENO) != 0});
}
