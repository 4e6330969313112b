// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace velmora {

/// Pronounces Chinese words and sentences; the newest request always wins. Main thread.
class Speaking {
  public:
    virtual ~Speaking() = default;
    virtual void speak(const std::string& text) = 0;
};

}  // namespace velmora
