// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "Velmora/CommandLine/Application/RecognizeServices.h"
#include "Velmora/CommandLine/Core/CommandStreams.h"

namespace velmora {

/// What `velmora recognize --help` prints.
std::string_view recognizeHelp();

/// `velmora recognize`: the text in a picture file. `arguments` are those after the command's name;
/// `services` is called once they are known to be good and the picture has been read. Needs no
/// display; the letters of `--annotate` need a QGuiApplication and are left out without one.
/// Returns the exit status; throws `UsageError`.
int runRecognizeCommand(std::span<const std::string> arguments,
                        const std::function<RecognizeServices()>& services,
                        CommandStreams& streams);

}  // namespace velmora
