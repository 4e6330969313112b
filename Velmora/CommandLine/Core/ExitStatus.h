// SPDX-License-Identifier: MIT
#pragma once

namespace velmora {

/// What the process tells its caller.
enum ExitStatus : int {
    exitFound = 0,    ///< Found, or done.
    exitNothing = 1,  ///< The question was clear and there is nothing to answer.
    exitUsage = 2,    ///< Wrong usage, unreadable input, or a part that is missing.
};

}  // namespace velmora
