// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <utility>

#include "Velmora/Coordination/Updates/UpdatePresenting.h"

namespace velmora::test {

/// Keeps what the update window would show, and presses its buttons.
class FakeUpdateWindow final : public UpdatePresenting {
  public:
    void setActions(std::function<void()> install, std::function<void()> later) override {
        pressInstall = std::move(install);
        pressLater = std::move(later);
    }
    void show(const UpdateWindowState& shown) override {
        state = shown;
        isShown = true;
    }
    void update(const UpdateWindowState& shown) override { state = shown; }
    void close() override { isShown = false; }

    std::function<void()> pressInstall;
    std::function<void()> pressLater;
    UpdateWindowState state;
    bool isShown = false;
};

}  // namespace velmora::test
