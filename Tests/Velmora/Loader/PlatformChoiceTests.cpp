// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Loader/PlatformChoice.h"

#include <gtest/gtest.h>

#include <map>

#include "Tests/Support/TemporaryFolder.h"
#include "Velmora/Platform/Loader/PlatformLoader.h"

namespace velmora {
namespace {

using Kind = PlatformChoice::Kind;

std::optional<PlatformChoice> chosen(const std::map<std::string, std::string>& environment) {
    return PlatformChoice::fromEnvironment([&](const char* name) {
        const auto found = environment.find(name);
        return found != environment.end() ? std::optional(found->second) : std::nullopt;
    });
}

TEST(PlatformChoice, GoesByTheKindOfSession) {
    EXPECT_EQ(chosen({}), (PlatformChoice{Kind::x11, {}}));
    EXPECT_EQ(chosen({{"XDG_SESSION_TYPE", "x11"}}), (PlatformChoice{Kind::x11, {}}));
    EXPECT_EQ(chosen({{"XDG_SESSION_TYPE", "tty"}}), (PlatformChoice{Kind::x11, {}}));
    EXPECT_EQ(chosen({{"XDG_SESSION_TYPE", "wayland"}}), (PlatformChoice{Kind::wayland, {}}));
}

TEST(PlatformChoice, TheVariableWins) {
    EXPECT_EQ(chosen({{"XDG_SESSION_TYPE", "wayland"}, {"VELMORA_PLATFORM", "x11"}}),
              (PlatformChoice{Kind::x11, {}}));
    EXPECT_EQ(chosen({{"VELMORA_PLATFORM", "wayland"}}), (PlatformChoice{Kind::wayland, {}}));
    EXPECT_EQ(chosen({{"VELMORA_PLATFORM", "recorded:/a b/c:d"}}),
              (PlatformChoice{Kind::recorded, "/a b/c:d"}));
    EXPECT_EQ(chosen({{"XDG_SESSION_TYPE", "wayland"}, {"VELMORA_PLATFORM", ""}}),
              (PlatformChoice{Kind::wayland, {}}));
}

TEST(PlatformChoice, RefusesWhatItDoesNotKnow) {
    for (const char* value : {"X11", "recorded", "recorded:", "windows", " x11"}) {
        EXPECT_EQ(chosen({{"VELMORA_PLATFORM", value}}), std::nullopt) << value;
    }
}

TEST(PlatformLoader, AFolderWithoutARecordingIsAnObstacle) {
    const testing::TemporaryFolder folder;
    const auto obstacle = preparePlatform({Kind::recorded, folder.path()});
    ASSERT_TRUE(obstacle.has_value());
    EXPECT_FALSE(obstacle->empty());
    EXPECT_EQ(obstacle->find('\n'), std::string::npos);
}

TEST(PlatformLoader, WhatIsMissingIsUnavailableWithAReason) {
    const PlatformBackends backends = loadPlatform({Kind::wayland, {}});
    EXPECT_TRUE(backends.screens->all().empty());
    EXPECT_FALSE(backends.permissions->accessibilityTrusted());
    EXPECT_EQ(backends.accessibility->elementAtPosition({1, 1}), nullptr);
    EXPECT_EQ(backends.events->addGlobalMonitor(EventMask::mouseMoved, {}), 0U);
    EXPECT_FALSE(backends.textRecognizer->recognize({}, std::nullopt, 1).has_value());
}

}  // namespace
}  // namespace velmora
