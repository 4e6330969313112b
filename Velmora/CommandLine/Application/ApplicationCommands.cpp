// SPDX-License-Identifier: MIT
#include "Velmora/CommandLine/Application/ApplicationCommands.h"

#include <cstdio>

#include "Velmora/CommandLine/Application/RemoteCommands.h"

namespace velmora {

int runApplicationCommand(const std::vector<std::string>& arguments) {
    if (!arguments.empty() && isRemoteCommand(arguments.front())) {
        return runRemoteCommand(arguments);
    }
    std::fprintf(stderr, "velmora: no such command: %s\n",
                 arguments.empty() ? "" : arguments.front().c_str());
    return 2;
}

}  // namespace velmora
