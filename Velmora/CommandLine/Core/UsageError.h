// SPDX-License-Identifier: MIT
#pragma once

#include <stdexcept>

namespace velmora {

/// A call that cannot be answered as it stands: wrong options, text that is not UTF-8, input that
/// cannot be read. The message is one line for people; the exit status is 2.
class UsageError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

}  // namespace velmora
