// SPDX-License-Identifier: MIT
#include "Velmora/Platform/LinuxX11/X11ClientRange.h"

#include <xcb/xcb.h>

#include <QGuiApplication>

namespace velmora {

X11ClientRange X11ClientRange::ofApplication() {
    if (qGuiApp == nullptr) {
        return {};
    }
    const auto* native = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (native == nullptr || native->connection() == nullptr) {
        return {};
    }
    const xcb_setup_t* setup = xcb_get_setup(native->connection());
    if (setup == nullptr) {
        return {};
    }
    return {setup->resource_id_base, setup->resource_id_mask};
}

}  // namespace velmora
