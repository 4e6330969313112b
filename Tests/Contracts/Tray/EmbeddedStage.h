// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QMenu>
#include <QWindow>
#include <optional>
#include <string>
#include <vector>

#include "Tests/Contracts/Tray/TestTray.h"
#include "Tests/Contracts/Tray/TrayDesktop.h"
#include "Tests/Support/Contracts/StatusItemStage.h"
#include "Tests/Support/EventLoop.h"
#include "Velmora/Platform/LinuxX11/Tray/EmbeddedTrayItem.h"

namespace velmora::testing {

/// A light or dark desktop, or one that does not say.
class FixedAppearance final : public DesktopAppearance {
  public:
    std::optional<ColorScheme> colorScheme() const override { return scheme; }
    void observe(Observer /*observer*/) override {}

    std::optional<ColorScheme> scheme;
};

/// An X server with a panel that embeds icons, and its user's mouse and keyboard.
class EmbeddedStage final : public StatusItemStage {
  public:
    EmbeddedStage() { park(); }
    ~EmbeddedStage() override { park(); }

    StatusItem& item() override { return item_; }
    void startTray() override { tray_.emplace(server().display(), options); }
    void loseTray() override { tray_.reset(); }
    bool isInTray() override { return tray_ && tray_->icon() != XCB_WINDOW_NONE; }
    void openMenu() override { clickIcon(1); }
    void closeMenu() override { type(escapeKey); }
    bool choose(const std::string& title) override;
    std::vector<std::string> shown() override;

    test::PrivateServer& server() { return TrayDesktop::instance().server(); }
    TestTray& tray() { return *tray_; }

    void clickIcon(int button);
    void type(unsigned keysym);
    void click(const QPoint& point);

    /// The menu once it is on the screen and has the mouse and the keyboard; none where there is
    /// none.
    static QMenu* menu();

    void pointAtIcon();
    /// Where the pointer is over nothing that the test looks at.
    void park() { server().movePointer(990, 350); }

    /// What is shown beside the icon under a resting pointer; none where there is none.
    static QLabel* toolTip();

    static constexpr unsigned escapeKey = 0xFF1B;
    static constexpr unsigned returnKey = 0xFF0D;
    static constexpr unsigned downKey = 0xFF54;
    static constexpr unsigned rightKey = 0xFF53;

    TestTray::Options options;
    FixedAppearance appearance;

  private:
    static QAction* find(const QMenu& menu, const QString& text);

    std::optional<TestTray> tray_;
    EmbeddedTrayItem item_{appearance, server().display()};
};

}  // namespace velmora::testing
