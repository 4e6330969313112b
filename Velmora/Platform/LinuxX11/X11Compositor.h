// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>

#include "Velmora/Platform/Compositor.h"

namespace velmora {

/// A compositing manager runs while somebody owns the selection that stands for one. Its coming and
/// going arrives as events. Main thread; needs its event loop.
class X11Compositor : public Compositor {
  public:
    /// The display's name is empty for that of the environment.
    explicit X11Compositor(const std::string& display = {});
    ~X11Compositor() override;

    bool isCompositing() const override;
    void sendChanges() override;
    void whenAnswered(std::function<void()> step) override;
    void observe(Observer observer) override;

  private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

}  // namespace velmora
