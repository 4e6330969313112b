// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Loader/TrayItem.h"

#include "Velmora/Platform/Linux/StatusNotifier/StatusNotifierItem.h"
#include "Velmora/Platform/Linux/StatusNotifier/TrayHostWatch.h"
#include "Velmora/Platform/LinuxX11/Tray/EmbeddedTrayItem.h"
#include "Velmora/Platform/Loader/SwitchingStatusItem.h"

namespace velmora {
namespace {

/// Falls back for as long as the session bus has no host of tray items.
class X11StatusItem final : public SwitchingStatusItem {
  public:
    X11StatusItem(Clock& clock, const DesktopAppearance& appearance)
        : SwitchingStatusItem(std::make_unique<StatusNotifierItem>(clock),
                              std::make_unique<EmbeddedTrayItem>(appearance)),
          hosts_([this](bool isThere) { setFirstIsTaken(isThere); }) {}

  private:
    TrayHostWatch hosts_;
};

}  // namespace

std::unique_ptr<StatusItem> loadStatusItem(const PlatformChoice& choice, Clock& clock,
                                           const DesktopAppearance& appearance) {
    if (choice.kind == PlatformChoice::Kind::x11) {
        return std::make_unique<X11StatusItem>(clock, appearance);
    }
    return std::make_unique<StatusNotifierItem>(clock);
}

}  // namespace velmora
