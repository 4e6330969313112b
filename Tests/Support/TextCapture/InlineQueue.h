// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>

#include "Velmora/Platform/SerialQueue.h"

namespace velmora {

/// A queue that runs its work at once, on the calling thread.
class InlineQueue final : public SerialQueue {
  public:
    const std::string& label() const override { return label_; }
    void async(std::function<void()> work) override { work(); }

  private:
    std::string label_ = "inline";
};

}  // namespace velmora
