// SPDX-License-Identifier: MIT
// The composition root: makes every part of the program and hands it to those that use it.
#include <QElapsedTimer>
#include <QLoggingCategory>
#include <QPointer>
#include <QSslConfiguration>
#include <QSslSocket>
#include <QThreadPool>
#include <cstdio>
#include <cstdlib>
#include <future>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Velmora/CommandLine/Application/ApplicationCommands.h"
#include "Velmora/Coordination/AppModel.h"
#include "Velmora/Coordination/HoverTimes.h"
#include "Velmora/Coordination/SingleInstanceGuard.h"
#include "Velmora/Coordination/SoftwareUpdateController.h"
#include "Velmora/Coordination/SpeechService.h"
#include "Velmora/Coordination/StatusBarController.h"
#include "Velmora/Diagnostics/AnalyticsService.h"
#include "Velmora/Diagnostics/NetworkHttpPoster.h"
#include "Velmora/Diagnostics/QALog.h"
#include "Velmora/Platform/Linux/ClipboardPasteboard.h"
#include "Velmora/Platform/Linux/DesktopSession.h"
#include "Velmora/Platform/Linux/EventLoopMainQueue.h"
#include "Velmora/Platform/Linux/IdleSteps.h"
#include "Velmora/Platform/Linux/Logging.h"
#include "Velmora/Platform/Linux/OsRelease.h"
#include "Velmora/Platform/Linux/RemoteControlService.h"
#include "Velmora/Platform/Linux/SerialWorkerQueue.h"
#include "Velmora/Platform/Linux/SettingsFile.h"
#include "Velmora/Platform/Linux/Speech/SpeechDispatcherSynthesizer.h"
#include "Velmora/Platform/Linux/SystemClock.h"
#include "Velmora/Platform/Linux/TerminationSignals.h"
#include "Velmora/Platform/Linux/Updates/DesktopPackageInstaller.h"
#include "Velmora/Platform/Linux/Updates/NetworkHttpFetcher.h"
#include "Velmora/Platform/Linux/Updates/SodiumSignatureVerifier.h"
#include "Velmora/Platform/Linux/XdgPaths.h"
#include "Velmora/Platform/Loader/DesktopLoss.h"
#include "Velmora/Platform/Loader/PlatformLoader.h"
#include "Velmora/Platform/Loader/TrayItem.h"
#include "Velmora/Presentation/HighlightOverlayController.h"
#include "Velmora/Presentation/LaunchFlashController.h"
#include "Velmora/Presentation/OnboardingWindowController.h"
#include "Velmora/Presentation/PopoverPanelController.h"
#include "Velmora/Presentation/SettingsWindowController.h"
#include "Velmora/Presentation/Theme.h"
#include "Velmora/Presentation/UpdateWindowController.h"
#include "Velmora/Presentation/ViewEngine.h"
#include "Velmora/TextCapture/AccessibilityTextExtractor.h"
#include "Velmora/TextCapture/LiveCapture.h"
#include "Velmora/WatchedApplication.h"
#include "VelmoraCore/BundledDictionary.h"
#include "VelmoraCore/resource_bundle_accessor.h"

namespace velmora {
namespace {

Q_LOGGING_CATEGORY(applicationLog, "velmora.application")

std::optional<std::string> environmentVariable(const char* name) {
    const char* const value = std::getenv(name);
    return value != nullptr ? std::optional<std::string>(value) : std::nullopt;
}

/// What the build was told about this key; nothing where it was told nothing.
std::optional<std::string> compiledIn(const std::string& key) {
    const std::map<std::string, std::string> values{
        {"CFBundleVersion", VELMORA_BUILD_NUMBER},
        {"VELMORA_POSTHOG_TOKEN", VELMORA_POSTHOG_TOKEN},
        {"VELMORA_POSTHOG_HOST", VELMORA_POSTHOG_HOST},
    };
    const auto found = values.find(key);
    return found != values.end() && !found->second.empty() ? std::optional(found->second)
                                                           : std::nullopt;
}

ProductInformation productInformation() {
    return {.shortVersion = VELMORA_VERSION,
            .buildNumber = compiledIn("CFBundleVersion"),
            .bundleIdentifier = "com.velmora.Velmora",
            .systemVersion = operatingSystemVersion(),
            .informationValue = compiledIn,
            .environmentValue = [](const std::string& name) {
                return environmentVariable(name.c_str());
            }};
}

DesktopPackageInstaller packageInstaller() {
    const auto cache = xdg::cacheHome();
    return {QCoreApplication::applicationFilePath().toStdString(),
            cache ? (*cache / "Velmora" / "updates").string() : std::string()};
}

/// The word list is read while the toolkit starts.
std::future<std::shared_ptr<const DictionaryStore>> loadDictionary() {
    // Without its folder the program ends here, on the main thread.
    ResourceBundle::module();
    return std::async(std::launch::async, [] { return BundledDictionary::store(); });
}

/// The first transfer would make the main thread wait until the toolkit has read what it needs for
/// encryption, certificates among it; another thread reads it ahead where there will be transfers.
std::future<void> prepareTransfers() {
    const ProductInformation product = productInformation();
    const char* const token = "VELMORA_POSTHOG_TOKEN";
    const bool isNeeded = !std::string(VELMORA_UPDATE_FEED_URL).empty() ||
                          product.informationValue(token) || product.environmentValue(token);
    return !isNeeded ? std::future<void>() : std::async(std::launch::async, [] {
        QSslSocket::supportsSsl();
        QSslConfiguration::defaultConfiguration();
    });
}

/// Waits, where it goes, until a queue has done what it has in hand, so that what the work uses can
/// go next.
class FinishedQueue {
  public:
    explicit FinishedQueue(SerialQueue& queue) : queue_(queue) {}
    FinishedQueue(const FinishedQueue&) = delete;
    FinishedQueue& operator=(const FinishedQueue&) = delete;
    ~FinishedQueue() {
        std::promise<void> done;
        queue_.async([&done] { done.set_value(); });
        done.get_future().wait();
    }

  private:
    SerialQueue& queue_;
};

/// Every part of the running program, in the order in which they are made; they go in reverse.
class Application {
  public:
    Application(const PlatformChoice& choice, std::shared_ptr<const DictionaryStore> dictionary)
        : backends_(loadPlatform(choice)),
          engine_(dictionary),
          statusItem_(loadStatusItem(choice, *clock_, *backends_.appearance)) {
        popover_.setFramePaintedObserver([] { noteHoverTime("painted"); });
        // What the first view that is read brings with it cannot be had in pieces, so it is read
        // before there are events that could wait for it.
        views_.load(model_.onboardingCompleted() ? QStringLiteral("LaunchFlashView")
                                                 : QStringLiteral("OnboardingView"));
        backends_.announceOwnWindows();
        // Onboarding makes its later steps by and by, and there are no hovers before its end.
        constexpr double onboardingTime = 0.5;
        if (model_.onboardingCompleted()) {
            launchFlash_.prepare();
            warmUp(std::move(dictionary));
        } else {
            warmUpTimer_ = clock_->schedule(
                onboardingTime, [this, dictionary = std::move(dictionary)] { warmUp(dictionary); });
        }
        // Right after a login the bus may come after us, and nobody else would look again.
        backends_.observeAccessibility([mainQueue = mainQueue_, model = QPointer(&model_)] {
            mainQueue->post([model] {
                if (model) {
                    model->permissions().recheck();
                }
            });
        });
        onboarding_.attach(model_);
        if (!model_.onboardingCompleted()) {
            onboarding_.prepare();
        }
        settingsWindow_.attach(model_);
    }

  private:
    /// What can be made in advance, in pieces. The first hover takes a moment to come.
    void warmUp(std::shared_ptr<const DictionaryStore> dictionary) {
        warmUp_.add({[this] { highlight_.prepare(); }});
        warmUp_.add(popover_.warmUpSteps());
        warmUp_.add({[this, dictionary = std::move(dictionary)] {
            noteHoverTime("ready");
            backends_.startRecognition(dictionary);
        }});
        for (const char* const view : {"SettingsView", "OnboardingView", "UpdateWindow"}) {
            warmUp_.add({[this, view] { views_.loadInBackground(QString::fromLatin1(view)); }});
        }
    }

    ExtractionServices extractionServices() const {
        return {.accessibility = backends_.accessibility,
                .screenCapture = backends_.screenCapture,
                .textRecognizer = backends_.textRecognizer,
                .textRectangleDetector = backends_.textRectangleDetector,
                .screens = backends_.screens,
                .clock = clock_,
                .queue = extractionQueue_,
                .mainQueue = mainQueue_};
    }

    AppModelServices modelServices() {
        return {.settings = settings_,
                .clock = *clock_,
                .mainQueue = *mainQueue_,
                .events = *backends_.events,
                .screens = *backends_.screens,
                .permissions = *backends_.permissions,
                .pasteboard = pasteboard_,
                .shell = *backends_.shell,
                .textExtractor = *extractor_,
                .lookupEngine = engine_,
                .popover = popover_,
                .highlight = highlight_,
                .launchFlash = launchFlash_,
                .onboarding = onboarding_,
                .statusBar = statusBar_,
                .speech = speech_,
                .softwareUpdates = softwareUpdates_,
                .analytics = analytics_,
                .qaLog = qaLog_};
    }

    RemoteControlActions remoteControlActions() {
        return {.showSettings = [this] { settingsWindow_.showSettings(); },
                .showOnboarding = [this] { model_.presentOnboarding(false); },
                .toggleHoverLookup =
                    [this] {
                        model_.setHoverLookupEnabled(!model_.hoverLookupEnabled());
                        return model_.hoverLookupEnabled();
                    },
                .diagnostics = [this] { return diagnostics(); },
                .copyDiagnostics = [this] { model_.copyLookupDiagnostics(); },
                .quit = [this] { backends_.shell->terminate(); }};
    }

    /// What the menu copies, and what recognition lacks where it lacks something.
    std::string diagnostics() const {
        const RecognitionStatus recognition = backends_.textRecognizer->status();
        return model_.lookupDiagnostics() +
               (recognition.isBroken() ? "\nText recognition: " + recognition.description : "");
    }

    /// Captures as usual, tells the log of every one, and finds where words are on its queue.
    ExtractorConfiguration extractorConfiguration() const {
        ExtractorConfiguration configuration;
        configuration.capture = [live = LiveCapture(backends_.screenCapture)](Point pointer,
                                                                              Size size) {
            noteHoverTime("captured");
            return live(pointer, size);
        };
        configuration.wordAt = [engine = engine_](const std::string& text, long long offset) {
            const auto result = engine.lookup(text, offset);
            return result ? std::optional(result->range) : std::nullopt;
        };
        return configuration;
    }

    static QALog::Configuration qaLogConfiguration() {
        return QALog::Configuration::fromEnvironment(environmentVariable, xdg::dataHome());
    }

    static std::unique_ptr<SerialQueue> makeQueue(const std::string& label) {
        return std::make_unique<SerialWorkerQueue>(label);
    }

    std::shared_ptr<SystemClock> clock_ = std::make_shared<SystemClock>();
    std::shared_ptr<EventLoopMainQueue> mainQueue_ = std::make_shared<EventLoopMainQueue>();
    std::shared_ptr<SerialWorkerQueue> extractionQueue_ =
        std::make_shared<SerialWorkerQueue>(ExtractionServices::queueLabel);
    PlatformBackends backends_;
    FinishedQueue finishedExtractions_{*extractionQueue_};
    SettingsFile settings_{SettingsFile::standardPath()};
    ClipboardPasteboard pasteboard_;
    QALog qaLog_{qaLogConfiguration(), *clock_, makeQueue};
    NetworkHttpPoster poster_;
    AnalyticsService analytics_{settings_, poster_, *clock_, productInformation()};
    SpeechDispatcherSynthesizer synthesizer_;
    SpeechService speech_{synthesizer_};
    LookupEngine engine_;
    std::shared_ptr<AccessibilityTextExtractor> extractor_ =
        AccessibilityTextExtractor::create(extractionServices(), extractorConfiguration());
    Theme theme_{*backends_.appearance, *backends_.compositor};
    ViewEngine views_{theme_};
    PopoverPanelController popover_{speech_, *backends_.screenGeometry, views_};
    HighlightOverlayController highlight_{*backends_.screenGeometry, theme_};
    LaunchFlashController launchFlash_{*clock_, *backends_.screenGeometry, views_};
    OnboardingWindowController onboarding_{views_, *backends_.screenGeometry};
    SettingsWindowController settingsWindow_{views_, *backends_.screenGeometry, *backends_.shell,
                                             settings_};
    UpdateWindowController updateWindow_{views_, *backends_.screenGeometry, *backends_.shell};
    NetworkHttpFetcher fetcher_;
    SodiumSignatureVerifier verifier_;
    DesktopPackageInstaller installer_ = packageInstaller();
    SerialWorkerQueue updateQueue_{"com.velmora.updates"};
    SoftwareUpdateController softwareUpdates_{
        {VELMORA_UPDATE_FEED_URL, VELMORA_UPDATE_PUBLIC_KEY, VELMORA_VERSION, VELMORA_BUILD_NUMBER},
        {fetcher_, verifier_, installer_, *clock_, updateWindow_, updateQueue_, *mainQueue_}};
    FinishedQueue finishedUpdates_{updateQueue_};
    std::unique_ptr<StatusItem> statusItem_;
    StatusBarController statusBar_{{.item = *statusItem_,
                                    .settings = settingsWindow_,
                                    .shell = *backends_.shell,
                                    .events = *backends_.events,
                                    .clock = *clock_}};
    AppModel model_{modelServices()};
    RemoteControlService remoteControl_{remoteControlActions()};
    TerminationSignals signals_{[this] { backends_.shell->terminate(); }};
    DesktopSession session_{[this] { backends_.shell->terminate(); }};
    IdleSteps warmUp_;
    std::unique_ptr<OneShotTimer> warmUpTimer_;
};

int runApplication(int& argumentCount, char** arguments) {
    QElapsedTimer sinceStart;
    sinceStart.start();
    SingleInstanceGuard guard(xdg::dataHome());
    if (!guard.acquire()) {
        return EXIT_SUCCESS;
    }
    constexpr int cannotStart = 2;
    const auto choice = PlatformChoice::fromEnvironment();
    if (!choice) {
        std::fprintf(stderr, "velmora: %s\n", PlatformChoice::wrongVariable);
        return cannotStart;
    }
    if (const auto obstacle = preparePlatform(*choice)) {
        std::fprintf(stderr, "velmora: %s\n", obstacle->c_str());
        return cannotStart;
    }
    auto dictionary = loadDictionary();
    qputenv("QSG_RENDER_LOOP", "basic");
    ViewEngine::registerPresentation();
    QGuiApplication::setDesktopFileName(QStringLiteral("com.velmora.Velmora"));
    QGuiApplication::setQuitOnLastWindowClosed(false);
    // The tray menu of panels that embed icons is made of the toolkit's widgets.
    const WatchedApplication application(argumentCount, arguments);
    QGuiApplication::setApplicationName(QStringLiteral("Velmora"));
    const DesktopLoss desktopLoss(*choice);
    // The toolkit's helpers sleep instead of waking up once more to end.
    QThreadPool::globalInstance()->setExpiryTimeout(-1);
    const std::future<void> transfers = prepareTransfers();
    const Application parts(*choice, dictionary.get());
    qCDebug(applicationLog) << "ready after" << sinceStart.elapsed() << "ms";
    return QGuiApplication::exec();
}

}  // namespace
}  // namespace velmora

int main(int argumentCount, char** arguments) {
    velmora::installLogging();
    if (argumentCount > 1) {
        return velmora::runApplicationCommand(
            std::vector<std::string>(arguments + 1, arguments + argumentCount));
    }
    return velmora::runApplication(argumentCount, arguments);
}
