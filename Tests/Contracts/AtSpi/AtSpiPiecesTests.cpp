// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <thread>

#include "Velmora/Platform/Linux/AtSpi/AtSpiBudget.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiPermission.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiTerminal.h"
#include "Velmora/Platform/Linux/AtSpi/AtSpiTextContent.h"

namespace velmora {
namespace {

TEST(AtSpiPieces, countsCodePointsInUtf16Units) {
    const AtSpiTextContent content(QStringLiteral("😀a😀字"), 0, AtSpiToolkit::gtk3);
    EXPECT_EQ(content.positionOf(0), 0);
    EXPECT_EQ(content.positionOf(1), 2);
    EXPECT_EQ(content.positionOf(3), 5);
    EXPECT_EQ(content.positionOf(4), 6);
    EXPECT_EQ(content.positionOf(5), std::nullopt);
    EXPECT_EQ(content.offsetOf(5), 3);
    EXPECT_EQ(content.offsetOf(1), 0);  // Inside a pair: the pair.
    EXPECT_EQ(content.offsetOf(6), 4);
    EXPECT_EQ(content.offsetOf(7), std::nullopt);
    EXPECT_EQ(content.offsetOf(-1), std::nullopt);
    EXPECT_EQ(content.unitsAt(0), 2);
    EXPECT_EQ(content.unitsAt(2), 1);
}

TEST(AtSpiPieces, keepsUtf16OffsetsAsTheyAre) {
    const AtSpiTextContent content(QStringLiteral("😀a字"), 0, AtSpiToolkit::qt);
    EXPECT_EQ(content.positionOf(2), 2);
    EXPECT_EQ(content.positionOf(1), 0);
    EXPECT_TRUE(content.isSecondHalf(1));
    EXPECT_FALSE(content.isSecondHalf(0));
    EXPECT_FALSE(content.isSecondHalf(2));
    EXPECT_EQ(content.offsetOf(3), 3);
}

TEST(AtSpiPieces, takesFillersBehindPairsOut) {
    const AtSpiTextContent content(QStringLiteral("😀\uFEFFa😀\uFEFF字"), 0, AtSpiToolkit::gecko);
    EXPECT_EQ(content.text(), QStringLiteral("😀a😀字"));
    EXPECT_EQ(content.positionOf(2), 2);
    EXPECT_EQ(content.positionOf(5), 5);
    EXPECT_EQ(content.offsetOf(5), 5);
}

TEST(AtSpiPieces, countsOnFromTheBeginningOfAStretch) {
    const AtSpiTextContent content(QStringLiteral("😀字"), 30000, AtSpiToolkit::gtk3);
    EXPECT_EQ(content.start(), 30000);
    EXPECT_EQ(content.positionOf(30001), 30002);
    EXPECT_EQ(content.positionOf(29999), std::nullopt);
    EXPECT_EQ(content.part(29990, 30003), QStringLiteral("😀字"));
}

TEST(AtSpiPieces, replacesHalvesOfPairs) {
    const AtSpiTextContent content(QStringLiteral("a😀b"), 0, AtSpiToolkit::qt);
    EXPECT_EQ(content.part(0, 2), QStringLiteral("a\uFFFD"));
    EXPECT_EQ(content.part(2, 4), QStringLiteral("\uFFFDb"));
    EXPECT_EQ(content.part(3, 1), QString());
}

TEST(AtSpiPieces, knowsTheToolkits) {
    EXPECT_EQ(atSpiToolkit(u"gtk"_qs, u"3.24.38"_qs, u"mousepad"_qs), AtSpiToolkit::gtk3);
    EXPECT_EQ(atSpiToolkit(u"GTK"_qs, u"4.8.3"_qs, u"editor"_qs), AtSpiToolkit::gtk4);
    EXPECT_EQ(atSpiToolkit(u"gtk"_qs, u"3.24.38"_qs, u"soffice"_qs), AtSpiToolkit::libreOffice);
    EXPECT_EQ(atSpiToolkit(u"Qt"_qs, u"6.4.2"_qs, u"x"_qs), AtSpiToolkit::qt);
    EXPECT_EQ(atSpiToolkit(u"Gecko"_qs, u"115"_qs, u"Firefox"_qs), AtSpiToolkit::gecko);
    EXPECT_EQ(atSpiToolkit(u"Chromium"_qs, u"1.0"_qs, u"Chromium"_qs), AtSpiToolkit::chromium);
    EXPECT_EQ(atSpiToolkit(QString(), QString(), QString()), AtSpiToolkit::other);
}

TEST(AtSpiPieces, countsTerminalCells) {
    EXPECT_EQ(AtSpiTerminal::cellsOf(U'a'), 1);
    EXPECT_EQ(AtSpiTerminal::cellsOf(U'字'), 2);
    EXPECT_EQ(AtSpiTerminal::cellsOf(U'，'), 2);
    EXPECT_EQ(AtSpiTerminal::cellsOf(U'\U0001F600'), 2);
    EXPECT_EQ(AtSpiTerminal::cellsOf(U'\u0301'), 0);
}

TEST(AtSpiPieces, spendsABudgetTogetherWithItsShare) {
    const auto whole = std::make_shared<AtSpiBudget>();
    AtSpiBudget share(whole);
    EXPECT_EQ(whole->left(), AtSpiBudget::perQuery);
    EXPECT_EQ(share.left(), AtSpiBudget::forFocus);
    share.spend(std::chrono::milliseconds(30));
    EXPECT_EQ(share.left(), std::chrono::milliseconds(20));
    EXPECT_EQ(whole->left(), std::chrono::milliseconds(270));
    whole->spend(std::chrono::milliseconds(265));
    EXPECT_EQ(share.left(), std::chrono::milliseconds(5));
    EXPECT_TRUE(whole->isMine());
    std::thread([&] { EXPECT_FALSE(whole->isMine()); }).join();
}

TEST(AtSpiPieces, opensTheDesktopsOwnSettings) {
    using Commands = std::vector<std::vector<std::string>>;
    EXPECT_EQ(AtSpiPermission::commandsFor("Privacy_Accessibility", "ubuntu:GNOME", "help"),
              (Commands{{"gnome-control-center", "universal-access"}, {"xdg-open", "help"}}));
    EXPECT_EQ(AtSpiPermission::commandsFor("Privacy_Accessibility", "KDE", "help").front(),
              (std::vector<std::string>{"systemsettings", "kcm_access"}));
    EXPECT_EQ(AtSpiPermission::commandsFor("Privacy_ScreenCapture", "GNOME", "help"),
              (Commands{{"xdg-open", "help"}}));
    EXPECT_EQ(AtSpiPermission::commandsFor("Privacy_Camera", "GNOME", "help"), Commands{});

    Commands tried;
    AtSpiPermission::openPrivacyPane("Privacy_Accessibility", "GNOME", "help",
                                     [&](const std::vector<std::string>& command) {
                                         tried.push_back(command);
                                         return tried.size() == 2;
                                     });
    EXPECT_EQ(tried.size(), 2U);
    EXPECT_EQ(tried.back().front(), "xdg-open");
}

}  // namespace
}  // namespace velmora
