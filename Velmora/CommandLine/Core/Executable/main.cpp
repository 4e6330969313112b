// SPDX-License-Identifier: MIT
#include <iostream>
#include <string>
#include <vector>

#include "Velmora/CommandLine/Core/CommandLine.h"

int main(int count, char** arguments) {
    std::ios::sync_with_stdio(false);
    std::cin.tie(nullptr);
    velmora::CommandStreams streams{.in = std::cin,
                                    .out = std::cout,
                                    .err = std::cerr,
                                    .style = velmora::TextStyle::ofStandardOutput()};
    const std::vector<std::string> texts(arguments + (count > 0 ? 1 : 0), arguments + count);
    return velmora::runCommandLine(texts, streams);
}
