// SPDX-License-Identifier: MIT
#include "Velmora/CommandLine/Application/CommandDesktop.h"

#include <QByteArray>
#include <chrono>
#include <cstdlib>
#include <optional>

#include "Velmora/CommandLine/Application/AwaitedRecognizer.h"
#include "Velmora/CommandLine/Core/UsageError.h"
#include "Velmora/Platform/Loader/GeneralServices.h"
#include "VelmoraCore/BundledDictionary.h"

namespace velmora {
namespace {

constexpr auto longestLoading = std::chrono::seconds(10);
constexpr auto longestConnecting = std::chrono::seconds(2);

}  // namespace

CommandDesktop::CommandDesktop(Screen screen)
    : choice_(prepare(screen)),
      backends_(screen == Screen::needed ? loadPlatform(choice_) : loadRecognition()),
      clock_(makeClock()),
      mainQueue_(makeMainQueue()),
      queue_(makeSerialQueue(ExtractionServices::queueLabel)) {
    // Only what recognises pays for the languages.
    backends_.textRecognizer = std::make_shared<AwaitedRecognizer>(
        backends_.textRecognizer,
        [start = backends_.startRecognition, wait = backends_.waitForRecognition] {
            start(BundledDictionary::store());
            wait(longestLoading);
        });
}

CommandDesktop::~CommandDesktop() {
    // Whatever still reads does so on this queue, and with the backends.
    queue_.reset();
}

PlatformChoice CommandDesktop::prepare(Screen screen) {
    if (screen == Screen::spared) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        return {};
    }
    const auto choice = PlatformChoice::fromEnvironment();
    if (!choice) {
        throw UsageError(PlatformChoice::wrongVariable);
    }
    if (const auto obstacle = preparePlatform(*choice)) {
        throw UsageError(*obstacle);
    }
    return *choice;
}

ProbeServices CommandDesktop::probeServices() const {
    return {.extraction = {.accessibility = backends_.accessibility,
                           .screenCapture = backends_.screenCapture,
                           .textRecognizer = backends_.textRecognizer,
                           .textRectangleDetector = backends_.textRectangleDetector,
                           .screens = backends_.screens,
                           .clock = clock_,
                           .queue = queue_,
                           .mainQueue = mainQueue_},
            .screenGeometry = backends_.screenGeometry,
            .accessibilityGranted = backends_.waitForAccessibility(longestConnecting)};
}

RecognizeServices CommandDesktop::recognizeServices() const {
    return {.textRecognizer = backends_.textRecognizer,
            .textRectangleDetector = backends_.textRectangleDetector,
            .clock = clock_};
}

}  // namespace velmora
