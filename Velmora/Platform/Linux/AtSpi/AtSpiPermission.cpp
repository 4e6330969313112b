// SPDX-License-Identifier: MIT
#include "Velmora/Platform/Linux/AtSpi/AtSpiPermission.h"

#include <QProcess>
#include <QStandardPaths>
#include <QThreadPool>
#include <cstdlib>

#include "Velmora/Platform/Linux/AtSpi/AtSpiService.h"

namespace velmora {

namespace {

/// Whether a list separated by colons names a desktop.
bool names(const std::string& desktops, const std::string& name) {
    const QStringList list = QString::fromStdString(desktops).split(u':');
    return list.contains(QString::fromStdString(name), Qt::CaseInsensitive);
}

bool launchDetached(const std::vector<std::string>& command) {
    const QString program = QString::fromStdString(command.front());
    if (QStandardPaths::findExecutable(program).isEmpty()) {
        return false;
    }
    QStringList arguments;
    for (std::size_t i = 1; i < command.size(); ++i) {
        arguments.append(QString::fromStdString(command[i]));
    }
    return QProcess::startDetached(program, arguments);
}

}  // namespace

AtSpiPermission::AtSpiPermission(std::shared_ptr<AtSpiService> service)
    : service_(std::move(service)) {}

bool AtSpiPermission::accessibilityTrusted() const {
    return service_->grant().isGiven();
}

bool AtSpiPermission::promptForAccessibility() {
    return service_->switchOn();
}

std::vector<std::vector<std::string>> AtSpiPermission::commandsFor(const std::string& anchor,
                                                                   const std::string& desktop,
                                                                   const std::string& help) {
    const bool isAccessibility = anchor == "Privacy_Accessibility";
    if (!isAccessibility && anchor != "Privacy_ScreenCapture") {
        return {};
    }
    std::vector<std::vector<std::string>> commands;
    // Neither desktop has a page for screen capture; the help tells what can be done.
    if (isAccessibility && (names(desktop, "GNOME") || names(desktop, "Unity"))) {
        commands.push_back({"gnome-control-center", "universal-access"});
    }
    if (isAccessibility && names(desktop, "KDE")) {
        commands.push_back({"systemsettings", "kcm_access"});
        commands.push_back({"systemsettings5", "kcm_access"});
    }
    commands.push_back({"xdg-open", help});
    return commands;
}

void AtSpiPermission::openPrivacyPane(const std::string& anchor, const std::string& desktop,
                                      const std::string& help, const Launcher& launcher) {
    for (const std::vector<std::string>& command : commandsFor(anchor, desktop, help)) {
        if (launcher(command)) {
            return;
        }
    }
}

void AtSpiPermission::openPrivacyPane(const std::string& anchor, const std::string& help) {
    const char* const variable = std::getenv("XDG_CURRENT_DESKTOP");
    // To start a program means to wait until the system has loaded it.
    QThreadPool::globalInstance()->start(
        [anchor, desktop = std::string(variable == nullptr ? "" : variable), help] {
            openPrivacyPane(anchor, desktop, help, launchDetached);
        });
}

}  // namespace velmora
