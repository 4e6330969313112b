// SPDX-License-Identifier: MIT
#pragma once

#include "Velmora/Diagnostics/LookupRecord.h"

namespace velmora {

/// Takes down what each hover led to.
class LookupRecording {
  public:
    virtual ~LookupRecording() = default;

    /// Returns at once; what the record refers to is not needed afterwards.
    virtual void record(const LookupRecord& record) = 0;
};

}  // namespace velmora
