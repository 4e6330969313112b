// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace velmora {

/// The two writing systems that a line can be read in, each with a model of its own.
enum class ScriptModel { simplified = 0, traditional = 1 };

/// One character as a reader saw it.
struct ReadSymbol {
    std::string text;      ///< One character, UTF-8; never a space.
    float confidence = 0;  ///< 0…1, the reader's own opinion.
    double left = 0;       ///< Where the reader thinks it stands: rough, often beside the ink.
    double right = 0;

    bool operator==(const ReadSymbol&) const = default;
};

/// What was read of one line, from the left.
using LineReading = std::vector<ReadSymbol>;

inline ScriptModel opposite(ScriptModel model) {
    return model == ScriptModel::simplified ? ScriptModel::traditional : ScriptModel::simplified;
}

}  // namespace velmora
