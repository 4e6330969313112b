// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace velmora {

/// What was found of one part that the program needs.
struct DoctorFinding {
    std::string name;    ///< Of the part, e.g. "tray".
    bool ok = false;     ///< It is there and works.
    std::string detail;  ///< What is there, or what is missing and what that means.
    std::string mend;    ///< The command that mends it; empty where it is ok or none is known.

    bool operator==(const DoctorFinding&) const = default;
};

}  // namespace velmora
