// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/StatusNotifier/MenuSession.h"

#include <gtest/gtest.h>

#include <vector>

#include "Velmora/Platform/Recorded/ManualClock.h"

namespace velmora {
namespace {

constexpr const char* host = ":1.5";
constexpr const char* other = ":1.9";

class MenuSessionTest : public ::testing::Test {
  protected:
    /// Seconds of the next minutes during which the menu counts as open.
    int blockedSeconds(int seconds, const std::function<void(int)>& eachSecond) {
        int blocked = 0;
        for (int second = 0; second < seconds; ++second) {
            eachSecond(second);
            blocked += session.isOpen() ? 1 : 0;
            clock.advance(1);
        }
        return blocked;
    }

    ManualClock clock;
    std::vector<bool> changes;
    MenuSession session{clock, [this](bool open) { changes.push_back(open); }};
};

TEST_F(MenuSessionTest, LastsFromOpenedToClosed) {
    session.opened(host);
    EXPECT_TRUE(session.isOpen());
    EXPECT_EQ(session.owner(), host);
    session.closed(host);
    EXPECT_FALSE(session.isOpen());
    EXPECT_EQ(changes, (std::vector<bool>{true, false}));
}

TEST_F(MenuSessionTest, AskingForTheMenuOpensItUntilTheHostIsKnownToTellMore) {
    session.aboutToShow(host);
    EXPECT_TRUE(session.isOpen());
    session.opened(host);
    EXPECT_EQ(changes, std::vector<bool>{true});
    session.closed(host);

    session.aboutToShow(host);
    EXPECT_FALSE(session.isOpen());
    session.opened(host);
    EXPECT_TRUE(session.isOpen());
}

TEST_F(MenuSessionTest, AHostWithoutClosedEndsWithTheFirstPress) {
    session.opened(host);
    session.mousePressed();
    EXPECT_FALSE(session.isOpen());
}

TEST_F(MenuSessionTest, APressMayBeOnTheMenuOfAHostThatTellsWhenItIsGone) {
    session.opened(host);
    session.closed(host);
    session.opened(host);
    session.mousePressed();  // On the entry with the submenu.
    EXPECT_TRUE(session.isOpen());
    clock.advance(MenuSession::pressedLimit - 1);
    EXPECT_TRUE(session.isOpen());
    session.closed(host);
    EXPECT_FALSE(session.isOpen());
}

TEST_F(MenuSessionTest, APressLeavesLittleTimeToAHostThatStopsTelling) {
    session.opened(host);
    session.closed(host);
    session.opened(host);
    session.mousePressed();
    clock.advance(MenuSession::pressedLimit / 2);
    session.mousePressed();  // Does not make it longer.
    clock.advance(MenuSession::pressedLimit / 2 + 1);
    EXPECT_FALSE(session.isOpen());
}

TEST_F(MenuSessionTest, APressDoesNotLengthenWhatAHostWasAllowed) {
    session.opened(host);
    session.closed(host);
    session.opened(host);
    clock.advance(MenuSession::openLimit - 2);
    session.mousePressed();
    clock.advance(3);
    EXPECT_FALSE(session.isOpen());
}

TEST_F(MenuSessionTest, AHostThatReturnsUnderItsNameIsNotKnownAnyMore) {
    session.opened(host);
    session.closed(host);
    session.hostLeft(host);
    session.opened(host);
    session.mousePressed();
    EXPECT_FALSE(session.isOpen());
}

TEST_F(MenuSessionTest, EndsWithAnEntryTriggered) {
    session.opened(host);
    session.triggered(host);
    EXPECT_FALSE(session.isOpen());
}

TEST_F(MenuSessionTest, EndsWithItsHost) {
    session.opened(host);
    session.hostLeft(other);
    EXPECT_TRUE(session.isOpen());
    session.hostLeft(host);
    EXPECT_FALSE(session.isOpen());
}

TEST_F(MenuSessionTest, OnlyItsOwnHostClosesIt) {
    session.opened(host);
    session.closed(other);
    EXPECT_TRUE(session.isOpen());
    session.opened(other);
    EXPECT_EQ(session.owner(), other);
    session.closed(host);
    EXPECT_TRUE(session.isOpen());
}

TEST_F(MenuSessionTest, DoesNotLastForEver) {
    session.opened(host);
    clock.advance(MenuSession::openLimit - 1);
    EXPECT_TRUE(session.isOpen());
    clock.advance(2);
    EXPECT_FALSE(session.isOpen());
}

TEST_F(MenuSessionTest, AHostThatOnlyPrefetchesIsFoundOut) {
    const int blocked = blockedSeconds(600, [this](int) { session.aboutToShow(host); });
    EXPECT_LE(blocked, static_cast<int>(MenuSession::askedLimit) + 1);
}

TEST_F(MenuSessionTest, AHostThatWasFoundOutIsTrustedAgainOnceItIsUsed) {
    session.aboutToShow(host);
    clock.advance(MenuSession::askedLimit + 1);
    session.aboutToShow(host);
    EXPECT_FALSE(session.isOpen());
    session.triggered(host);
    session.aboutToShow(host);
    EXPECT_TRUE(session.isOpen());
}

TEST_F(MenuSessionTest, AHostThatOpensAgainAndAgainLeavesHalfOfTheTime) {
    const int blocked = blockedSeconds(1200, [this](int) { session.opened(host); });
    EXPECT_LE(blocked, 1200 / 2 + static_cast<int>(MenuSession::openLimit));
    const int alternating = blockedSeconds(1200, [this](int second) {
        second % 20 == 19 ? session.closed(host) : session.opened(host);
    });
    EXPECT_LE(alternating, 1200 / 2 + static_cast<int>(MenuSession::openLimit));
}

TEST_F(MenuSessionTest, AnOrdinaryDayOfMenusIsNeverCutShort) {
    for (int opening = 0; opening < 200; ++opening) {
        session.aboutToShow(host);
        session.opened(host);
        EXPECT_TRUE(session.isOpen());
        clock.advance(5);
        EXPECT_TRUE(session.isOpen());
        session.closed(host);
        clock.advance(30);
    }
}

TEST_F(MenuSessionTest, ACrowdOfHostsIsForgotten) {
    for (int number = 0; number < 10000; ++number) {
        session.opened(":1." + std::to_string(number));
    }
    EXPECT_EQ(session.owner(), ":1.9999");
    session.mousePressed();
    EXPECT_FALSE(session.isOpen());
}

}  // namespace
}  // namespace velmora
