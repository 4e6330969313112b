// SPDX-License-Identifier: MIT
// Another application for tests: windows on an X display, made and changed by lines on standard
// input, each answered by one line.

#include <iostream>
#include <string>

#include "Tests/Contracts/X11/Support/WindowCommands.h"

int main(int argc, char** argv) {
    velmora::test::WindowCommands commands(argc > 1 ? argv[1] : "");
    std::string line;
    while (std::getline(std::cin, line)) {
        std::cout << commands.run(line) << std::endl;
    }
    return 0;
}
