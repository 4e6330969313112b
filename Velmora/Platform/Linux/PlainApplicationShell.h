// SPDX-License-Identifier: MIT
#pragma once

#include "Velmora/Platform/ApplicationShell.h"

namespace velmora {

/// A program that the desktop knows nothing particular about: it can end, no more.
class PlainApplicationShell final : public ApplicationShell {
  public:
    void setActivationPolicy(ActivationPolicy /*policy*/) override {}
    void activateIgnoringOtherApplications() override {}
    void terminate() override;
};

}  // namespace velmora
