// dbisql: runs an SQL script on the payroll database and logs what it did
// beside the script (components/DbIsqlTool.h). The script runner component
// starts it; it can as well be run by hand.
#include <iostream>
#include <string>
#include <vector>

#include "components/DbIsqlTool.h"

int main(int argc, char** argv) {
    const std::vector<std::string> args(argv + 1, argv + argc);
    return iras::RunDbIsql(args, std::cout, std::cerr);
}
