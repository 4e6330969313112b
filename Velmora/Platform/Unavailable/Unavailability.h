// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <utility>

namespace velmora {

/// Why something is not to be had here, in words for the user. The classes of this folder stand in
/// for parts of the platform that are missing: they find nothing, show nothing and do nothing.
class Unavailability {
  public:
    explicit Unavailability(std::string reason) : reason_(std::move(reason)) {}

    const std::string& reason() const { return reason_; }

  protected:
    ~Unavailability() = default;

  private:
    std::string reason_;
};

}  // namespace velmora
