// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

namespace velmora::test {

/// Ends what a test has started should the test itself be ended before it can. A process of its own
/// waits for that, made when it is first needed; the kernel ends only the programs that a test
/// started itself, not those that these started in turn.
class SessionKeeper {
  public:
    /// Every process of this session ends with the test from now on.
    static void watch(pid_t session);

    /// The session has ended.
    static void forget(pid_t session);
};

}  // namespace velmora::test
