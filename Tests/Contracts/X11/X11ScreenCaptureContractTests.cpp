// SPDX-License-Identifier: MIT
#include <memory>

#include "Tests/Contracts/X11/Support/PrivateServer.h"
#include "Tests/Support/Contracts/ScreenCaptureContract.h"
#include "Velmora/Platform/LinuxX11/X11ScreenCapture.h"

// What holds for the screens of every backend, over an X server of its own.
namespace velmora {
namespace {

class TwoScreens : public ScreenGeometrySource {
  public:
    ScreenGeometry current() const override {
        return ScreenGeometry({{1, {800, 200, 800, 600}, 2, {}}, {2, {0, 0, 800, 600}, 1, {}}});
    }
};

/// The server lives as long as the capture that is handed out.
struct Stage {
    test::PrivateServer server;
    TwoScreens geometry;
    X11ScreenCapture capture{geometry, X11ClientRange(), server.display()};
};

std::shared_ptr<ScreenCapture> makeCapture() {
    auto stage = std::make_shared<Stage>();
    ScreenCapture* capture = &stage->capture;
    return {std::move(stage), capture};
}

INSTANTIATE_TEST_SUITE_P(X11, ScreenCaptureContract,
                         ::testing::Values(ScreenCaptureSubject{
                             "x11", makeCapture, {10, 10, 100, 50}}));

}  // namespace
}  // namespace velmora
