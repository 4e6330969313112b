// SPDX-License-Identifier: MIT
#pragma once

#include <QApplication>
#include <memory>

#include "Tests/Contracts/X11/Support/PrivateServer.h"
#include "Tests/Support/PrivateBus.h"

namespace velmora::testing {

/// An X server and a session bus, and the toolkit on them, from the first test to the last.
class TrayDesktop {
  public:
    TrayDesktop();
    ~TrayDesktop();
    TrayDesktop(const TrayDesktop&) = delete;
    TrayDesktop& operator=(const TrayDesktop&) = delete;

    static TrayDesktop& instance();

    test::PrivateServer& server() { return server_; }

  private:
    test::PrivateServer server_{1000, 700};
    PrivateBus bus_;
    std::unique_ptr<QApplication> application_;
};

}  // namespace velmora::testing
