// iras-yearend: the year-end returns without a window.
#include <iostream>

int main() {
    std::cout << "iras-yearend: not yet wired\n";
    return 0;
}
