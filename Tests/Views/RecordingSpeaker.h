// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "Velmora/Coordination/Speaking.h"

namespace velmora::test {

/// Keeps what it was asked to pronounce.
class RecordingSpeaker : public Speaking {
  public:
    void speak(const std::string& text) override { spoken.push_back(text); }

    std::vector<std::string> spoken;
};

}  // namespace velmora::test
