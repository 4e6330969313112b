// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/AtSpi/AtSpiSearch.h"

#include "Velmora/Platform/Linux/AtSpi/AtSpiFocus.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiHitTest.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiWindows.h"

namespace velmora {

namespace {

AtSpiElementState found(const AtSpiBus& bus, const AtSpiHit& hit, AtSpiToolkit toolkit) {
    AtSpiElementState state;
    state.object = hit.object;
    state.toolkit = toolkit;
    state.space = hit.space;
    state.connectionNumber = bus.connectionNumber();
    return state;
}

}  // namespace

std::optional<AtSpiElementState> findAtSpiElementAt(AtSpiService::Core& core,
                                                    const WindowInfo& window, Point capture,
                                                    const ScreenGeometry& geometry,
                                                    AtSpiDeadline& deadline) {
    core.bus.beginExtraction();
    core.bus.focus().expectAmong({});
    const auto application = core.applications.find(window.processId, deadline);
    if (!application || core.bus.isLeftAlone(application->root.bus, deadline.purpose())) {
        return std::nullopt;
    }
    core.bus.foresee(application->root.bus, capture, deadline);
    const auto frame = findAtSpiWindow(core.bus, *application, window, geometry, deadline);
    if (!frame) {
        return std::nullopt;
    }
    AtSpiHitTest test(core.bus, application->toolkit, deadline);
    const AtSpiHit hit = test.textElementAt(*frame, capture);
    core.bus.focus().expectAmong(test.path());
    // A program that fell silent on the way is not asked on; its window will do.
    return deadline.isOver() ? std::nullopt
                             : std::optional(found(core.bus, hit, application->toolkit));
}

std::optional<AtSpiElementState> findAtSpiFocusedElement(AtSpiService::Core& core,
                                                         const WindowInfo& window,
                                                         const ScreenGeometry& geometry,
                                                         AtSpiDeadline& deadline) {
    const auto application = core.applications.find(window.processId, deadline);
    if (!application || core.bus.isLeftAlone(application->root.bus, deadline.purpose())) {
        return std::nullopt;
    }
    core.bus.foresee(application->root.bus, std::nullopt, deadline);
    const auto frame = findAtSpiWindow(core.bus, *application, window, geometry, deadline);
    if (!frame) {
        return std::nullopt;
    }
    const auto object = findAtSpiFocus(core.bus, *application, frame->object, deadline);
    if (!object) {
        return std::nullopt;
    }
    AtSpiHitTest test(core.bus, application->toolkit, deadline);
    const AtSpiHit hit{*object, test.spaceOf(*object, frame->space)};
    // Without its last answers the text would be looked for at another place than it stands.
    return deadline.isOver() ? std::nullopt
                             : std::optional(found(core.bus, hit, application->toolkit));
}

}  // namespace velmora
