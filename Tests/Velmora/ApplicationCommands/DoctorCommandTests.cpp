// SPDX-License-Identifier: MIT
#include "Velmora/CommandLine/Application/DoctorCommand.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "Tests/Support/Files.h"
#include "Tests/Support/TemporaryFolder.h"
#include "Tests/Velmora/ApplicationCommands/CommandRun.h"
#include "Tests/Velmora/ApplicationCommands/FakeSystem.h"
#include "Velmora/CommandLine/Application/DoctorChecks.h"
#include "Velmora/CommandLine/Core/UsageError.h"

namespace velmora {
namespace {

using ::testing::HasSubstr;

class DoctorCommandTest : public ::testing::Test {
  protected:
    int doctor(const std::vector<std::string>& arguments = {}) {
        return runDoctorCommand(arguments, system, run.streams);
    }
    /// The names of what is missing.
    std::vector<std::string> missing() const {
        std::vector<std::string> names;
        for (const DoctorFinding& finding : doctor::checkAll(system)) {
            if (!finding.ok) {
                names.push_back(finding.name);
            } else {
                EXPECT_TRUE(finding.mend.empty()) << finding.name;
            }
            EXPECT_FALSE(finding.detail.empty()) << finding.name;
        }
        return names;
    }
    using Names = std::vector<std::string>;

    testing::FakeSystem system;
    CommandRun run;
};

TEST_F(DoctorCommandTest, AWholeSystemIsFine) {
    EXPECT_EQ(missing(), Names{});
    EXPECT_EQ(doctor(), 0);
    EXPECT_THAT(run.out.str(), HasSubstr("ok       display"));
    EXPECT_THAT(run.out.str(), ::testing::Not(HasSubstr("missing")));
}

TEST_F(DoctorCommandTest, EveryPartIsToldByItself) {
    system.capture = false;
    EXPECT_EQ(missing(), Names{"screen capture"});
    system = {};
    system.compositor = false;
    EXPECT_EQ(missing(), Names{"compositor"});
    EXPECT_EQ(doctor::checkCompositor(system).mend, "sudo apt-get install picom");
    system.paths.insert("/usr/bin/picom");
    EXPECT_EQ(doctor::checkCompositor(system).mend, "picom --daemon");
    system = {};
    system.accessibilityBus = false;
    EXPECT_EQ(missing(), Names{"accessibility bus"});
    EXPECT_EQ(doctor::checkAccessibilityBus(system).mend, "sudo apt-get install at-spi2-core");
    system = {};
    system.accessibility = false;
    EXPECT_EQ(missing(), Names{"accessibility"});
    EXPECT_THAT(doctor::checkAccessibility(system).mend, HasSubstr("IsEnabled b true"));
    system = {};
    system.dictionary = "no such file";
    EXPECT_EQ(missing(), Names{"dictionary"});
    EXPECT_THAT(doctor::checkDictionary(system).detail,
                HasSubstr("/usr/share/velmora/cedict_ts.u8: no such file"));
}

TEST_F(DoctorCommandTest, WithoutADisplayWhatDependsOnItIsMissingToo) {
    system.display = "DISPLAY is not set";
    EXPECT_EQ(missing(), (Names{"display", "screen capture", "compositor"}));
    EXPECT_EQ(doctor(), 1);
    EXPECT_THAT(run.out.str(), HasSubstr("DISPLAY is not set"));
    EXPECT_THAT(run.out.str(), HasSubstr("cannot be told without a display"));
}

TEST_F(DoctorCommandTest, WithoutASessionBusWhatDependsOnItIsMissingToo) {
    system.sessionBus = false;
    system.tray = false;
    EXPECT_EQ(missing(), (Names{"session bus", "accessibility bus", "accessibility", "tray"}));
    EXPECT_EQ(doctor::checkTray(system).mend, "sudo apt-get install xfce4-panel");
    system.tray = true;  // A panel that embeds icons needs no bus.
    EXPECT_TRUE(doctor::checkTray(system).ok);
}

TEST_F(DoctorCommandTest, EveryFailureOfALivingDesktopNamesItsCommand) {
    system.capture = system.compositor = system.accessibilityBus = system.accessibility = false;
    system.sessionBus = true;
    system.tray = false;
    system.dictionary = "no such file";
    system.recognitionStatus.missing = {"chi_sim"};
    system.paths = {"/usr/bin/apt-get"};
    const testing::TemporaryFolder folder;
    const std::string script = folder / "mend";
    const auto findings = doctor::checkAll(system);
    for (const DoctorFinding& finding : findings) {
        EXPECT_EQ(finding.ok, finding.mend.empty()) << finding.name;
        testing::writeFile(script, finding.mend);
        EXPECT_EQ(std::system(("sh -n " + script).c_str()), 0) << finding.mend;
    }
    EXPECT_EQ(missing().size(), findings.size() - 2);  // The display and the session bus are there.
}

TEST_F(DoctorCommandTest, SoundNeedsAServerOrACard) {
    system.paths.erase("/run/user/1000/pulse/native");
    EXPECT_EQ(missing(), Names{"sound"});
    EXPECT_EQ(doctor::checkSound(system).mend, "sudo apt-get install pipewire-pulse wireplumber");
    system.paths.insert("/usr/bin/pulseaudio");
    EXPECT_EQ(doctor::checkSound(system).mend, "pulseaudio --start");
    system.paths.insert("/usr/bin/pipewire-pulse");
    EXPECT_EQ(doctor::checkSound(system).mend,
              "systemctl --user enable --now pipewire-pulse wireplumber");
    system.paths.insert("/dev/snd/controlC0");
    EXPECT_EQ(missing(), Names{});
    system.paths.erase("/dev/snd/controlC0");
    system.environment["PULSE_SERVER"] = "tcp:music.example";
    EXPECT_EQ(missing(), Names{});
}

TEST_F(DoctorCommandTest, AWaylandSessionHasItsOwnAdvice) {
    system.display = "Wayland sessions are not supported yet";
    EXPECT_THAT(doctor::checkDisplay(system).detail, HasSubstr("choose an X11 session"));
}

TEST_F(DoctorCommandTest, TheTrayAdviceFollowsTheDesktop) {
    system.tray = false;
    EXPECT_EQ(missing(), Names{"tray"});
    EXPECT_EQ(doctor::checkTray(system).mend, "sudo apt-get install xfce4-panel");
    system.environment["XDG_CURRENT_DESKTOP"] = "ubuntu:GNOME";
    EXPECT_EQ(doctor::checkTray(system).mend,
              "sudo apt-get install gnome-shell-extension-appindicator");
}

TEST_F(DoctorCommandTest, NamesTheLanguagesThatRecognitionLacks) {
    system.recognitionStatus.missing = {"chi_tra"};
    EXPECT_EQ(missing(), Names{"recognition"});
    EXPECT_THAT(doctor::checkRecognition(system).detail, HasSubstr("no data for chi_tra;"));
    EXPECT_EQ(doctor::checkRecognition(system).mend, "sudo apt-get install tesseract-ocr-chi-tra");
    system.recognitionStatus.missing = {"chi_sim", "chi_tra"};
    EXPECT_THAT(doctor::checkRecognition(system).detail,
                HasSubstr("no data for chi_sim and chi_tra;"));
    EXPECT_EQ(doctor::checkRecognition(system).mend,
              "sudo apt-get install tesseract-ocr-chi-sim tesseract-ocr-chi-tra");
}

TEST_F(DoctorCommandTest, DamagedLanguagesAreInstalledOnceMore) {
    system.recognitionStatus.damaged = {"chi_sim"};
    EXPECT_EQ(missing(), Names{"recognition"});
    EXPECT_THAT(doctor::checkRecognition(system).detail,
                HasSubstr("the data for chi_sim cannot be loaded;"));
    EXPECT_EQ(doctor::checkRecognition(system).mend,
              "sudo apt-get install --reinstall tesseract-ocr-chi-sim");
    system.paths.erase("/usr/bin/apt-get");
    system.paths.insert("/usr/bin/dnf");
    EXPECT_EQ(doctor::checkRecognition(system).mend,
              "sudo dnf reinstall tesseract-langpack-chi_sim");
}

TEST_F(DoctorCommandTest, ALanguageMayLackItsDataWhereTheOthersAreDamaged) {
    system.recognitionStatus.damaged = {"chi_sim"};
    system.recognitionStatus.missing = {"chi_tra"};
    EXPECT_THAT(doctor::checkRecognition(system).detail,
                HasSubstr("no data for chi_tra, damaged data for chi_sim;"));
    EXPECT_EQ(doctor::checkRecognition(system).mend,
              "sudo apt-get install tesseract-ocr-chi-tra && "
              "sudo apt-get install --reinstall tesseract-ocr-chi-sim");
    system.paths.erase("/usr/bin/apt-get");
    EXPECT_EQ(doctor::checkRecognition(system).mend, "");
}

TEST_F(DoctorCommandTest, RecognitionThatDoesNotGetReadyIsMissing) {
    using Stage = RecognitionStatus::Stage;
    system.recognitionStatus = {Stage::unavailable, {}, {}, "velmora-recognizer cannot be run"};
    EXPECT_EQ(missing(), Names{"recognition"});
    EXPECT_THAT(doctor::checkRecognition(system).detail,
                HasSubstr("velmora-recognizer cannot be run;"));
    system.recognitionStatus = {Stage::loading, {}, {}, "loading"};
    EXPECT_EQ(missing(), Names{"recognition"});
}

TEST_F(DoctorCommandTest, SpeechNeedsItsDaemonItsModuleAndItsVoice) {
    system.paths.erase("/usr/bin/speech-dispatcher");
    EXPECT_EQ(missing(), Names{"speech"});
    EXPECT_THAT(doctor::checkSpeech(system).detail, HasSubstr("not installed"));
    system = {};
    system.paths.erase("/usr/lib/speech-dispatcher-modules/sd_espeak-ng");
    EXPECT_EQ(missing(), Names{"speech"});
    EXPECT_THAT(doctor::checkSpeech(system).detail, HasSubstr("module"));
    system = {};
    system.paths.erase("/usr/lib/x86_64-linux-gnu/espeak-ng-data/lang/sit/cmn-Latn-pinyin");
    EXPECT_EQ(missing(), Names{"voice"});
}

TEST_F(DoctorCommandTest, TheCommandIsThatOfTheSystemsPackageManager) {
    system.accessibilityBus = false;
    system.paths.erase("/usr/bin/apt-get");
    EXPECT_EQ(doctor::checkAccessibilityBus(system).mend, "");
    system.paths.insert("/usr/bin/pacman");
    EXPECT_EQ(doctor::checkAccessibilityBus(system).mend, "sudo pacman -S at-spi2-core");
    system.paths.insert("/usr/bin/dnf");
    EXPECT_EQ(doctor::checkAccessibilityBus(system).mend, "sudo dnf install at-spi2-core");
}

TEST_F(DoctorCommandTest, JsonHoldsTheSame) {
    system.tray = false;
    EXPECT_EQ(doctor({"--json"}), 1);
    const auto report = nlohmann::json::parse(run.out.str());
    EXPECT_EQ(report.at("ok"), false);
    const auto findings = doctor::checkAll(system);
    ASSERT_EQ(report.at("checks").size(), findings.size());
    for (std::size_t place = 0; place < findings.size(); ++place) {
        const auto& check = report.at("checks").at(place);
        EXPECT_EQ(check.at("name"), findings[place].name);
        EXPECT_EQ(check.at("ok"), findings[place].ok);
        EXPECT_EQ(check.at("detail"), findings[place].detail);
        EXPECT_EQ(check.at("mend").is_null(), findings[place].mend.empty());
    }
}

TEST_F(DoctorCommandTest, TakesNoOtherArguments) {
    EXPECT_THROW(doctor({"now"}), UsageError);
    EXPECT_THROW(doctor({"--yaml"}), UsageError);
}

}  // namespace
}  // namespace velmora
