// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace velmora {

/// How far the reading of pixels is, and what it lacks. A plain value.
struct RecognitionStatus {
    enum class Stage {
        notStarted,
        loading,      ///< Its languages are being loaded; until then nothing is read.
        ready,        ///< Reads in the languages that it has.
        unavailable,  ///< Nothing can be read.
    };

    Stage stage = Stage::ready;

    // Languages that it should have, by the names of their data files: "chi_sim".
    std::vector<std::string> missing;  ///< Without data.
    std::vector<std::string> damaged;  ///< With data that cannot be loaded.

    /// One line for people: "ready", "loading", or what is wrong and the package that mends it.
    std::string description = "ready";

    /// Something is wrong that time alone does not mend.
    bool isBroken() const {
        return stage == Stage::unavailable || !missing.empty() || !damaged.empty();
    }
};

}  // namespace velmora
