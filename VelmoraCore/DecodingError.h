// SPDX-License-Identifier: MIT
#pragma once

#include <stdexcept>

namespace velmora {

/// A JSON text or value is not what it is read as. The message names the key and what is wrong with
/// it, in one line without quoting the input.
class DecodingError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

}  // namespace velmora
