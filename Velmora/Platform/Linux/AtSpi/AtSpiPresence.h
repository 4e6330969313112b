// SPDX-License-Identifier: MIT
#pragma once

namespace velmora {

/// How those stand to us who bring programs and their assistive programs together.
enum class AtSpiPresence {
    absent,    ///< There is no accessibility bus; one may come later.
    silent,    ///< Somebody has its name, or is on it, and does not answer in time.
    answering  ///< Its launcher, the bus and the registry on it all answered.
};

}  // namespace velmora
