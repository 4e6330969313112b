// SPDX-License-Identifier: MIT
#include "Velmora/CommandLine/Application/DoctorChecks.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "Velmora/CommandLine/Application/PackageCommand.h"

namespace velmora::doctor {

namespace {

DoctorFinding fine(std::string name, std::string detail) {
    return {.name = std::move(name), .ok = true, .detail = std::move(detail), .mend = {}};
}

DoctorFinding missing(std::string name, std::string detail, std::string mend) {
    return {
        .name = std::move(name), .ok = false, .detail = std::move(detail), .mend = std::move(mend)};
}

constexpr const char* noDisplay = "cannot be told without a display";
constexpr const char* noSessionBus = "cannot be told without a session bus";

/// The folders of this name below the library folders, where distributions put them.
std::vector<std::string> libraryFolders(const SystemInspection& system, const std::string& name) {
    std::vector<std::string> folders{"/usr/share/" + name,       "/usr/lib/" + name,
                                     "/usr/lib64/" + name,       "/usr/libexec/" + name,
                                     "/usr/local/share/" + name, "/usr/local/lib/" + name};
    for (const std::string& sub : system.namesIn("/usr/lib")) {
        if (sub.ends_with("-linux-gnu")) {
            folders.push_back(std::string("/usr/lib/").append(sub).append("/").append(name));
        }
    }
    std::erase_if(folders, [&](const std::string& folder) { return !system.canRead(folder); });
    return folders;
}

bool anyHolds(const SystemInspection& system, const std::vector<std::string>& folders,
              const std::string& file) {
    return std::ranges::any_of(
        folders, [&](const std::string& folder) { return system.canRead(folder + "/" + file); });
}

bool isGnome(const SystemInspection& system) {
    return system.environmentValue("XDG_CURRENT_DESKTOP").value_or("").find("GNOME") !=
           std::string::npos;
}

const PackageNames espeak{.apt = "speech-dispatcher speech-dispatcher-espeak-ng espeak-ng-data",
                          .dnf = "speech-dispatcher speech-dispatcher-espeak-ng espeak-ng",
                          .pacman = "speech-dispatcher espeak-ng"};

std::string listed(const std::vector<std::string>& languages) {
    std::string text;
    for (const std::string& language : languages) {
        text += (text.empty() ? "" : " and ") + language;
    }
    return text;
}

/// The packages with the data of these languages.
PackageNames languagePackages(const std::vector<std::string>& languages) {
    PackageNames names;
    for (const std::string& language : languages) {
        const std::string blank = names.apt.empty() ? "" : " ";
        std::string dashed = language;
        std::ranges::replace(dashed, '_', '-');
        names.apt.append(blank).append("tesseract-ocr-").append(dashed);
        names.dnf.append(blank).append("tesseract-langpack-").append(language);
        names.pacman.append(blank).append("tesseract-data-").append(language);
    }
    return names;
}

}  // namespace

DoctorFinding checkDisplay(const SystemInspection& system) {
    if (const auto problem = system.displayProblem()) {
        const bool wayland = problem->starts_with("Wayland");
        return missing("display",
                       *problem + (wayland ? "; choose an X11 session at the login" : ""),
                       wayland ? "" : "run velmora doctor in a terminal of the desktop session");
    }
    return fine("display", "an X server answers on " +
                               system.environmentValue("DISPLAY").value_or("the default display"));
}

DoctorFinding checkScreenCapture(const SystemInspection& system) {
    if (system.displayProblem()) {
        return missing("screen capture", noDisplay, "");
    }
    return system.canCaptureScreen()
               ? fine("screen capture", "the X server can compose windows")
               : missing("screen capture",
                         "the X server lacks its Composite extension; text in pictures cannot be "
                         "read",
                         "sudo mkdir -p /etc/X11/xorg.conf.d && "
                         "printf 'Section \"Extensions\"\\nOption \"Composite\" \"Enable\"\\n"
                         "EndSection\\n' | sudo tee /etc/X11/xorg.conf.d/10-composite.conf");
}

DoctorFinding checkCompositor(const SystemInspection& system) {
    if (system.displayProblem()) {
        return missing("compositor", noDisplay, "");
    }
    return system.hasCompositor()
               ? fine("compositor", "windows can be translucent")
               : missing("compositor", "none runs; panels come without shadow and fading",
                         system.canRead("/usr/bin/picom")
                             ? "picom --daemon"
                             : installCommand(system, {"picom", "picom", "picom"}));
}

DoctorFinding checkSessionBus(const SystemInspection& system) {
    return system.hasSessionBus()
               ? fine("session bus", "connected")
               : missing("session bus", "none; no tray, no accessibility, no remote commands",
                         installCommand(system, {"dbus-user-session", "dbus-daemon", "dbus"}));
}

DoctorFinding checkAccessibilityBus(const SystemInspection& system) {
    constexpr const char* name = "accessibility bus";
    if (!system.hasSessionBus()) {
        return missing(name, noSessionBus, "");
    }
    return system.hasAccessibilityBus()
               ? fine(name, "reachable")
               : missing(name, "not reachable; other programs' texts cannot be read",
                         installCommand(system, {"at-spi2-core", "at-spi2-core", "at-spi2-core"}));
}

DoctorFinding checkAccessibility(const SystemInspection& system) {
    constexpr const char* name = "accessibility";
    if (!system.hasSessionBus()) {
        return missing(name, noSessionBus, "");
    }
    return system.isAccessibilityEnabled()
               ? fine(name, "switched on")
               : missing(name, "switched off; programs do not offer their texts",
                         "busctl --user set-property org.a11y.Bus /org/a11y/bus org.a11y.Status "
                         "IsEnabled b true");
}

DoctorFinding checkTray(const SystemInspection& system) {
    if (system.hasTrayHost()) {
        return fine("tray", "the desktop shows tray items");
    }
    if (!system.hasSessionBus() && system.displayProblem()) {
        return missing("tray", noSessionBus, "");
    }
    const PackageNames extension{"gnome-shell-extension-appindicator",
                                 "gnome-shell-extension-appindicator",
                                 "gnome-shell-extension-appindicator"};
    const PackageNames panel{"xfce4-panel", "xfce4-panel", "xfce4-panel"};
    return missing("tray",
                   "nothing shows tray items; velmora settings, toggle, onboarding, diagnostics "
                   "and quit do what the menu does",
                   installCommand(system, isGnome(system) ? extension : panel));
}

DoctorFinding checkDictionary(const SystemInspection& system) {
    if (const auto problem = system.dictionaryProblem()) {
        return missing(
            "dictionary",
            system.dictionaryPath() + ": " + *problem + "; only a few built-in words are found",
            "scripts/fetch-dictionary && scripts/build && sudo cmake --install build/release  "
            "# in the folder of the sources");
    }
    return fine("dictionary", system.dictionaryPath());
}

DoctorFinding checkRecognition(const SystemInspection& system) {
    const RecognitionStatus status = system.recognition();
    if (!status.missing.empty() && !status.damaged.empty()) {
        const std::string install = installCommand(system, languagePackages(status.missing));
        const std::string reinstall = reinstallCommand(system, languagePackages(status.damaged));
        return missing("recognition",
                       "no data for " + listed(status.missing) + ", damaged data for " +
                           listed(status.damaged) + "; text in pictures is not read",
                       install + (install.empty() ? "" : " && ") + reinstall);
    }
    if (!status.missing.empty()) {
        return missing(
            "recognition",
            "no data for " + listed(status.missing) + "; its text in pictures is not read",
            installCommand(system, languagePackages(status.missing)));
    }
    if (!status.damaged.empty()) {
        return missing("recognition",
                       "the data for " + listed(status.damaged) +
                           " cannot be loaded; its text in pictures is not read",
                       reinstallCommand(system, languagePackages(status.damaged)));
    }
    if (status.stage != RecognitionStatus::Stage::ready) {
        return missing("recognition", status.description + "; text in pictures is not read", "");
    }
    return fine("recognition", "the languages chi_sim and chi_tra are loaded");
}

DoctorFinding checkSpeech(const SystemInspection& system) {
    if (!system.canRead("/usr/bin/speech-dispatcher") &&
        !system.canRead("/usr/local/bin/speech-dispatcher")) {
        return missing("speech", "speech-dispatcher is not installed; words are not spoken",
                       installCommand(system, espeak));
    }
    if (!anyHolds(system, libraryFolders(system, "speech-dispatcher-modules"), "sd_espeak-ng") &&
        !anyHolds(system, libraryFolders(system, "speech-dispatcher"), "modules/sd_espeak-ng")) {
        return missing("speech", "speech-dispatcher lacks its espeak-ng module",
                       installCommand(system, espeak));
    }
    return fine("speech", "speech-dispatcher with its espeak-ng module");
}

DoctorFinding checkVoice(const SystemInspection& system) {
    const auto folders = libraryFolders(system, "espeak-ng-data");
    const bool there = anyHolds(system, folders, "cmn_dict") &&
                       anyHolds(system, folders, "lang/sit/cmn-Latn-pinyin");
    return there ? fine("voice", "Mandarin that reads characters and pinyin")
                 : missing("voice", "espeak-ng lacks its Mandarin voice",
                           installCommand(system, espeak));
}

DoctorFinding checkSound(const SystemInspection& system) {
    const auto runtime = system.environmentValue("XDG_RUNTIME_DIR").value_or("");
    const bool named = !system.environmentValue("PULSE_SERVER").value_or("").empty();
    const bool serves = !runtime.empty() && (system.canRead(runtime + "/pulse/native") ||
                                             system.canRead(runtime + "/pipewire-0"));
    if (named || serves) {
        return fine("sound", "a sound server runs");
    }
    if (system.canRead("/dev/snd/controlC0")) {
        return fine("sound", "a sound card without a sound server");
    }
    std::string mend =
        installCommand(system, {"pipewire-pulse wireplumber", "pipewire-pulseaudio wireplumber",
                                "pipewire-pulse wireplumber"});
    if (system.canRead("/usr/bin/pipewire-pulse")) {
        mend = "systemctl --user enable --now pipewire-pulse wireplumber";
    } else if (system.canRead("/usr/bin/pulseaudio")) {
        mend = "pulseaudio --start";
    }
    return missing("sound", "no sound server runs; words are not heard", mend);
}

std::vector<DoctorFinding> checkAll(const SystemInspection& system) {
    return {checkDisplay(system),
            checkScreenCapture(system),
            checkCompositor(system),
            checkSessionBus(system),
            checkAccessibilityBus(system),
            checkAccessibility(system),
            checkTray(system),
            checkDictionary(system),
            checkRecognition(system),
            checkSpeech(system),
            checkVoice(system),
            checkSound(system)};
}

}  // namespace velmora::doctor
