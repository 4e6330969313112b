// SPDX-License-Identifier: MIT
#include "Tests/Desktop/Support/ReadProgram.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <stdexcept>

namespace velmora::test {

namespace {

using Command = ReadProgram::Command;

std::string textFile(const VirtualDesktop& desktop, const SampleText& text) {
    return desktop.writeFile("sample.txt", text.plain()).string();
}

std::string page(const VirtualDesktop& desktop, const SampleText& text) {
    return "file://" + desktop.writeFile("sample.html", text.html()).string();
}

Command mousepad(const VirtualDesktop& desktop, const SampleText& text) {
    return {"mousepad", textFile(desktop, text)};
}

/// The same in a font that is pleasant to look at.
Command largeMousepad(const VirtualDesktop& desktop, const SampleText& text) {
    desktop.writeFile(".config/glib-2.0/settings/keyfile",
                      "[org/xfce/mousepad/preferences/view]\n"
                      "font-name='Noto Sans CJK SC 17'\nuse-default-monospace-font=false\n"
                      "[org/xfce/mousepad/preferences/window]\npath-in-title=false\n");
    return mousepad(desktop, text);
}

Command featherpad(const VirtualDesktop& desktop, const SampleText& text) {
    return {"featherpad", "--standalone", textFile(desktop, text)};
}

Command qtSample(const VirtualDesktop& desktop, const SampleText& text) {
    return {VELMORA_BUILD_FOLDER "/velmora_qt_sample", textFile(desktop, text)};
}

Command textEditor(const VirtualDesktop& desktop, const SampleText& text) {
    return {"gnome-text-editor", "--standalone", textFile(desktop, text)};
}

Command chromium(const VirtualDesktop& desktop, const SampleText& text) {
    return {"chromium",
            "--force-renderer-accessibility",
            "--no-sandbox",
            "--disable-gpu",
            "--no-first-run",
            "--disable-background-networking",
            "--disable-component-update",
            "--disable-sync",
            "--user-data-dir=" + (desktop.folder() / "chromium").string(),
            "--app=" + page(desktop, text)};
}

Command firefox(const VirtualDesktop& desktop, const SampleText& text) {
    const std::filesystem::path settings =
        desktop.writeFile("firefox/user.js",
                          "user_pref('browser.aboutwelcome.enabled', false);\n"
                          "user_pref('browser.shell.checkDefaultBrowser', false);\n"
                          "user_pref('datareporting.policy.dataSubmissionEnabled', false);\n"
                          "user_pref('datareporting.policy.firstRunURL', '');\n"
                          "user_pref('browser.startup.homepage_override.mstone', 'ignore');\n"
                          "user_pref('toolkit.telemetry.reportingpolicy.firstRun', false);\n"
                          "user_pref('browser.translations.enable', false);\n"
                          "user_pref('app.update.enabled', false);\n");
    return {"firefox-esr", "--no-remote", "--profile", settings.parent_path().string(),
            page(desktop, text)};
}

Command writer(const VirtualDesktop& desktop, const SampleText& text) {
    const std::string file = desktop.writeFile("sample.fodt", text.openDocument()).string();
    return {"soffice",
            "--norestore",
            "--nologo",
            "--nofirststartwizard",
            "-env:UserInstallation=file://" + (desktop.folder() / "office").string(),
            "--writer",
            file};
}

Command terminal(const VirtualDesktop& desktop, const SampleText& text) {
    return {"lxterminal", "-e", "sh -c 'cat " + textFile(desktop, text) + "; exec sleep 100000'"};
}

}  // namespace

ReadProgram ReadProgram::forShow() {
    return {"mousepad", "mousepad",    "GTK 3",
            true,       largeMousepad, {{"GSETTINGS_BACKEND", "keyfile"}}};
}

const std::vector<ReadProgram>& ReadProgram::all() {
    static const std::vector<ReadProgram> programs{
        {"mousepad", "mousepad", "GTK 3", true, mousepad, {}},
        {"qt-sample", VELMORA_BUILD_FOLDER "/velmora_qt_sample", "Qt 6", true, qtSample, {}},
        {"featherpad", "featherpad", "Qt 5", true, featherpad, {}},
        // Its usual way to draw takes a graphics card that a virtual desktop has not.
        {"gnome-text-editor",
         "gnome-text-editor",
         "GTK 4",
         true,
         textEditor,
         {{"GSK_RENDERER", "cairo"}}},
        {"chromium", "chromium", "Chromium", false, chromium, {}},
        {"firefox", "firefox-esr", "Firefox", false, firefox, {}},
        {"writer", "soffice", "LibreOffice", true, writer, {{"SAL_USE_VCLPLUGIN", "gtk3"}}},
        {"terminal", "lxterminal", "VTE", false, terminal, {}}};
    return programs;
}

const ReadProgram& ReadProgram::named(const std::string& name) {
    for (const ReadProgram& program : all()) {
        if (program.name == name) {
            return program;
        }
    }
    throw std::runtime_error("no program is called " + name);
}

bool ReadProgram::isInstalled() const {
    if (executable.starts_with('/')) {
        return access(executable.c_str(), X_OK) == 0;
    }
    const char* const path = std::getenv("PATH");
    std::istringstream folders(path == nullptr ? "" : path);
    std::string folder;
    while (std::getline(folders, folder, ':')) {
        if (access((folder + "/" + executable).c_str(), X_OK) == 0) {
            return true;
        }
    }
    return false;
}

}  // namespace velmora::test
