// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Tests/Velmora/Coordination/RecordedEvents.h"
#include "Tests/Velmora/Coordination/RecordedPermissions.h"
#include "Tests/Velmora/Coordination/RecordedPresenters.h"
#include "Velmora/Coordination/AppModel.h"
#include "Velmora/Platform/Recorded/ManualClock.h"
#include "Velmora/Platform/Recorded/ManualMainQueue.h"
#include "Velmora/Platform/Recorded/MemorySettings.h"
#include "VelmoraCore/DictionaryStore.h"
#include "VelmoraCore/LookupEngine.h"

namespace velmora::testing {

inline DictionaryEntry entryFor(const std::string& headword, const std::string& numbered) {
    EntryDefinition definition;
    definition.glosses = {"gloss"};
    return {headword, headword, numbered, {definition}};
}

/// A desktop of recording parts around one model.
class ModelWorld {
  public:
    static constexpr Rect characterRect{490, 490, 20, 20};
    static constexpr Rect wordRect{490, 490, 40, 20};

    void start() { startWith(statusBar, updates, analytics); }

    /// Starts the model with these parts in place of the recording ones.
    void startWith(StatusBarPresenting& bar, SoftwareUpdating& updating, Analytics& usage) {
        model.emplace(AppModelServices{.settings = settings,
                                       .clock = clock,
                                       .mainQueue = queue,
                                       .events = events,
                                       .screens = screens,
                                       .permissions = permissions,
                                       .pasteboard = pasteboard,
                                       .shell = shell,
                                       .textExtractor = extractor,
                                       .lookupEngine = engine,
                                       .popover = popover,
                                       .highlight = highlight,
                                       .launchFlash = flash,
                                       .onboarding = onboarding,
                                       .statusBar = bar,
                                       .speech = speech,
                                       .softwareUpdates = updating,
                                       .analytics = usage,
                                       .qaLog = lookups});
        queue.runAll();
    }

    /// As a user who has been here before, with hovering on.
    void startHovering() {
        settings.setBoolean("hoverLookupEnabled", true);
        settings.setBoolean("onboardingCompleted", true);
        start();
        journal.clear();
        analytics.captured.clear();
    }

    void moveTo(Point point) {
        events.location = point;
        events.send(RecordedEvents::Kind::global, EventMask::mouseMoved);
        queue.runAll();
    }
    void click(Point point) {
        events.location = point;
        events.send(RecordedEvents::Kind::global, EventMask::anyMouseDown);
        queue.runAll();
    }
    void setShift(bool held) {
        events.flags = {held ? ModifierFlags::shift : 0U};
        events.send(RecordedEvents::Kind::global, EventMask::flagsChanged, events.flags);
        queue.runAll();
    }

    /// Moves there and rests until the dwell.
    void restAt(Point point) {
        moveTo(point);
        clock.advance(0.25);
    }

    void answer(std::size_t index, const std::optional<TextProbe>& probe) {
        extractor.asked.at(index).completion(probe);
    }
    void answerLast(const std::optional<TextProbe>& probe) {
        answer(extractor.asked.size() - 1, probe);
    }

    static TextProbe hovered(const std::string& text, long long offset) {
        TextProbe probe;
        probe.text = text;
        probe.hoveredCharacterOffset = offset;
        probe.anchorRect = characterRect;
        probe.rangeAnchorRect = [](long long, long long) { return wordRect; };
        return probe;
    }
    static TextProbe selected(const std::string& text) {
        TextProbe probe;
        probe.text = text;
        probe.anchorRect = Rect{400, 480, 200, 30};
        probe.source = TextProbe::Source::selectedText;
        return probe;
    }

    Journal journal;
    MemorySettings settings;
    ManualClock clock;
    ManualMainQueue queue;
    RecordedEvents events;
    RecordedScreens screens;
    RecordedPermissions permissions;
    RecordedPasteboard pasteboard;
    RecordedShell shell{journal};
    RecordedExtractor extractor;
    LookupEngine engine{std::make_shared<DictionaryStore>(std::vector<DictionaryEntry>{
        entryFor("知道", "zhi1 dao4"), entryFor("知", "zhi1"), entryFor("道", "dao4"),
        entryFor("中国", "Zhong1 guo2"), entryFor("中", "zhong1"), entryFor("国", "guo2"),
        entryFor("人", "ren2"), entryFor("空", "")})};
    RecordedPopover popover{journal};
    RecordedHighlight highlight;
    RecordedFlash flash{journal};
    RecordedOnboarding onboarding{journal};
    RecordedStatusBar statusBar{journal};
    RecordedSpeech speech;
    RecordedUpdates updates;
    RecordedAnalytics analytics;
    RecordedLookups lookups;
    std::optional<AppModel> model;
};

}  // namespace velmora::testing
