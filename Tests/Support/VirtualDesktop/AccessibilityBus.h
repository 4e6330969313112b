// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <string>

#include "Tests/Support/VirtualDesktop/VirtualDesktop.h"

namespace velmora::test {

/// Who serves accessibility on a desktop, for tests that stop or end one of them.
class AccessibilityBus {
  public:
    /// The desktop must outlive this.
    explicit AccessibilityBus(VirtualDesktop& desktop) : desktop_(desktop) {}

    /// Where the bus is. Asking starts its launcher where it does not run.
    std::string address();

    /// The unique name of the launcher on the session bus; empty where nobody is it. Starts nobody.
    std::string launcherName();

    pid_t launcher();  ///< Who tells where the bus is.
    pid_t registry();  ///< Who knows the programs on it; started where it does not run.

    /// The daemon of the bus at this address.
    pid_t daemon(const std::string& address);

    void setEnabled(bool enabled);

  private:
    std::string ask(const std::string& bus, const std::string& destination, const std::string& path,
                    const std::string& method, const std::string& argument = {});
    pid_t processOf(const std::string& bus, const std::string& name);

    VirtualDesktop& desktop_;
};

}  // namespace velmora::test
