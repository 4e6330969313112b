// SPDX-License-Identifier: MIT
#include "Tests/Desktop/Tray/PanelStage.h"

#include <algorithm>
#include <fstream>

namespace velmora::test {
namespace {

constexpr int screenWidth = 1600;
constexpr int screenHeight = 1000;
constexpr int panelHeight = 32;
constexpr double menuHeight = 150;  ///< The least that a menu of ours has.

constexpr const char* tint2SettingsText = R"(panel_monitor = all
panel_position = bottom left horizontal
panel_items = S
panel_size = 300 32
panel_padding = 0 0 0
panel_background_id = 1
systray_padding = 4 4 4
systray_icon_size = 22
systray_monitor = 1
rounded = 0
border_width = 0
background_color = #202020 100
)";

constexpr const char* xfcePanelSettings = R"(<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array">
    <value type="int" value="1"/>
    <property name="dark-mode" type="bool" value="true"/>
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="p=6;x=0;y=0"/>
      <property name="length" type="uint" value="100"/>
      <property name="position-locked" type="bool" value="true"/>
      <property name="size" type="uint" value="32"/>
      <property name="plugin-ids" type="array">
        <value type="int" value="1"/>
        <value type="int" value="2"/>
      </property>
    </property>
  </property>
  <property name="plugins" type="empty">
    <property name="plugin-1" type="string" value="separator">
      <property name="expand" type="bool" value="true"/>
    </property>
    <property name="plugin-2" type="string" value="systray"/>
  </property>
</channel>
)";

}  // namespace

PanelStage::PanelStage()
    : tint2Settings_(desktop_.writeFile("tint2rc", tint2SettingsText).string()) {
    // A service of the session bus reads them for the panel.
    auto variables = desktop_.environment();
    const std::filesystem::path configuration =
        variables.contains("XDG_CONFIG_HOME")
            ? std::filesystem::path(variables["XDG_CONFIG_HOME"])
            : std::filesystem::path(variables["HOME"]) / ".config";
    const auto channels = configuration / "xfce4/xfconf/xfce-perchannel-xml";
    std::filesystem::create_directories(channels);
    std::ofstream(channels / "xfce4-panel.xml") << xfcePanelSettings;
}

PanelStage::Panel PanelStage::tint2() const {
    return {"tint2",
            {"tint2", "-c", tint2Settings_},
            {0, screenHeight - panelHeight, panelHeight, panelHeight}};
}

PanelStage::Panel PanelStage::xfce4Panel() {
    return {"xfce4-panel",
            {"xfce4-panel", "--disable-wm-check"},
            {screenWidth - panelHeight, 0, panelHeight, panelHeight}};
}

bool PanelStage::iconIsShown(const Panel& panel, bool shown) {
    const bool asExpected = desktop_.waitUntil([&] {
        const Image image = desktop_.screenshot(panel.icon);
        int white = 0;
        for (int y = 0; y < image.height(); ++y) {
            white += static_cast<int>(
                std::count_if(image.row(y), image.row(y) + image.width(),
                              [](std::uint32_t pixel) { return (pixel & 0xFFFFFFU) > 0xF0F0F0U; }));
        }
        return (white > 20) == shown;
    });
    if (!asExpected) {
        keepPicture(panel.name + (shown ? "-without-icon" : "-with-icon"));
    }
    return asExpected;
}

VirtualDesktop::Window PanelStage::openMenu(const Panel& panel, unsigned button) {
    const auto before = desktop_.windows();
    desktop_.click(static_cast<int>(panel.icon.midX()), static_cast<int>(panel.icon.midY()),
                   button);
    return desktop_.waitForWindow([&](const VirtualDesktop::Window& window) {
        const bool isNew =
            std::ranges::none_of(before, [&](const auto& old) { return old.id == window.id; });
        return isNew && window.overrideRedirect && window.client.height > menuHeight;
    });
}

bool PanelStage::menuIsGone(const VirtualDesktop::Window& menu) {
    return desktop_.waitUntil([&] {
        return std::ranges::none_of(desktop_.windows(),
                                    [&](const auto& window) { return window.id == menu.id; });
    });
}

void PanelStage::clickEntry(const VirtualDesktop::Window& menu, int y) {
    desktop_.settledScreenshot(menu.client);  // Some panels let a menu grow.
    const double top = y < 0 ? menu.client.maxY() : menu.client.minY();
    const int x = static_cast<int>(menu.client.midX());
    // As a hand does: there first, and then the button.
    desktop_.movePointer(x, static_cast<int>(top) + y - (y < 0 ? -2 : 2));
    desktop_.click(x, static_cast<int>(top) + y);
}

bool PanelStage::comesToSay(const std::string& line) {
    return desktop_.waitUntil([&] {
        return velmora().command({"diagnostics"}).output.find(line + "\n") != std::string::npos;
    });
}

void PanelStage::keepPicture(const std::string& name) {
    const std::filesystem::path folder = VELMORA_BUILD_FOLDER "/tray";
    std::filesystem::create_directories(folder);
    VirtualDesktop::savePng(desktop_.screenshot(), folder / (name + ".png"));
}

}  // namespace velmora::test
