// SPDX-License-Identifier: MIT
#include "Velmora/Platform/LinuxX11/X11Screens.h"

#include <QGuiApplication>
#include <QScreen>
#include <QThreadPool>
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <future>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <utility>

#include "Velmora/Platform/LinuxX11/X11Connection.h"
#include "Velmora/Platform/LinuxX11/X11EventPump.h"
#include "Velmora/Platform/LinuxX11/X11Monitors.h"
#include "Velmora/Platform/LinuxX11/X11Struts.h"

namespace velmora {
namespace {

/// Stands apart from the server's identifiers, which have 32 bits.
constexpr std::uint64_t unnamedScreen = 1ULL << 32;

constexpr const char* telling[] = {"_NET_CLIENT_LIST", "_NET_WORKAREA", "_NET_WM_STRUT_PARTIAL",
                                   "_NET_WM_STRUT"};

QList<QScreen*> screensPrimaryFirst() {
    QList<QScreen*> screens = QGuiApplication::screens();
    std::stable_partition(screens.begin(), screens.end(), [](const QScreen* screen) {
        return screen == QGuiApplication::primaryScreen();
    });
    return screens;
}

/// The server's monitor behind a screen of Qt's: they share the native corner, and the name where
/// several do.
const X11Monitor* monitorOf(const QScreen& screen, const std::vector<X11Monitor>& monitors) {
    const X11Monitor* found = nullptr;
    for (const X11Monitor& monitor : monitors) {
        const bool sharesCorner =
            monitor.native.x == screen.geometry().x() && monitor.native.y == screen.geometry().y();
        const bool sharesName = monitor.name == screen.name().toStdString();
        if (sharesCorner && (found == nullptr || sharesName)) {
            found = &monitor;
        }
    }
    return found;
}

ScreenLayout layoutOf(const QScreen& screen, const std::vector<X11Monitor>& monitors,
                      std::uint64_t number) {
    const double ratio = screen.devicePixelRatio();
    const QRect logical = screen.geometry();
    const X11Monitor* const monitor = monitorOf(screen, monitors);
    ScreenLayout layout;
    layout.ratio = ratio;
    layout.id = monitor != nullptr ? monitor->id : unnamedScreen + number;
    layout.nativeFrame =
        monitor != nullptr
            ? monitor->native
            : Rect{static_cast<double>(logical.x()), static_cast<double>(logical.y()),
                   std::round(logical.width() * ratio), std::round(logical.height() * ratio)};
    layout.nativeWorkArea = layout.nativeFrame;
    return layout;
}

/// What the server knows and the toolkit does not tell.
struct Facts {
    std::vector<X11Monitor> monitors;
    X11Struts struts;
};

/// Nothing where the server is gone or did not take the connection.
std::optional<Facts> factsOf(X11Connection& connection) {
    if (!connection.isOpen()) {
        return std::nullopt;
    }
    Facts facts{x11Monitors(connection), x11Struts(connection)};
    return connection.isOpen() ? std::optional(std::move(facts)) : std::nullopt;
}

}  // namespace

struct X11Screens::Parts {
    explicit Parts(std::string name)
        : display(std::move(name)),
          connection(display),
          pump(
              connection, [this](const xcb_generic_event_t& event) { note(event); },
              [this] { askIfStale(); }) {
        worker.setMaxThreadCount(1);
        worker.setExpiryTimeout(-1);  // It sleeps instead of waking up once more to end.
        learnNames();
        select(connection.root(), XCB_EVENT_MASK_PROPERTY_CHANGE);
        followQt();
        refresh();
    }

    void learnNames();
    void followQt();
    void followScreen(QScreen* screen);
    void refresh();
    void askIfStale();
    std::optional<Facts> askInBackground();
    void take(std::uint64_t question);
    void apply(const Facts& facts);
    void followPanels(const std::set<xcb_window_t>& windows);
    void note(const xcb_generic_event_t& event);
    void select(xcb_window_t window, std::uint32_t events) const;

    std::string display;
    X11Connection connection;
    std::set<xcb_atom_t> properties;  ///< Those that tell of screens and panels.
    std::set<xcb_window_t> panels;
    bool isStale = false;   ///< Something has changed since the last question.
    bool isAsking = false;  ///< The other thread asks the server.
    std::uint64_t question = 0;
    /// The other thread's own.
    std::unique_ptr<X11Connection> background;
    mutable std::mutex mutex;
    ScreenGeometry geometry;
    QObject context;
    X11EventPump pump;
    std::future<std::optional<Facts>> answer;  ///< There when the other thread has told of it.
    QThreadPool worker;  ///< One thread; waits for it when this goes, and never before.
};

/// Now, since whoever hears of the first change of a property must not wait for them.
void X11Screens::Parts::learnNames() {
    if (connection.isOpen()) {
        for (const char* const name : telling) {
            properties.insert(connection.atom(name));
        }
    }
}

void X11Screens::Parts::followQt() {
    QObject::connect(qGuiApp, &QGuiApplication::screenAdded, &context, [this](QScreen* screen) {
        followScreen(screen);
        refresh();
    });
    QObject::connect(qGuiApp, &QGuiApplication::screenRemoved, &context, [this] { refresh(); });
    QObject::connect(qGuiApp, &QGuiApplication::primaryScreenChanged, &context,
                     [this] { refresh(); });
    for (QScreen* screen : QGuiApplication::screens()) {
        followScreen(screen);
    }
}

void X11Screens::Parts::followScreen(QScreen* screen) {
    QObject::connect(screen, &QScreen::geometryChanged, &context, [this] { refresh(); });
    QObject::connect(screen, &QScreen::logicalDotsPerInchChanged, &context, [this] { refresh(); });
}

/// At once: whoever hears of new screens from the toolkit may ask for them next.
void X11Screens::Parts::refresh() {
    ++question;  // What is being asked is older.
    apply(factsOf(connection).value_or(Facts()));
    askIfStale();
}

/// Every window that opens and closes changes what the server tells, just when it is busy drawing;
/// another thread waits for its answers.
void X11Screens::Parts::askIfStale() {
    if (!isStale || isAsking) {
        return;
    }
    isStale = false;
    isAsking = true;
    const auto facts = std::make_shared<std::promise<std::optional<Facts>>>();
    answer = facts->get_future();
    worker.start([this, facts, number = ++question] {
        facts->set_value(askInBackground());
        QMetaObject::invokeMethod(
            &context, [this, number] { take(number); }, Qt::QueuedConnection);
    });
}

std::optional<Facts> X11Screens::Parts::askInBackground() {
    if (!background || !background->isOpen()) {
        background = std::make_unique<X11Connection>(display);
    }
    auto facts = factsOf(*background);
    background->discardEvents();  // Some are sent to everybody, and nobody else takes these.
    return facts;
}

void X11Screens::Parts::take(std::uint64_t number) {
    const auto facts = answer.get();
    isAsking = false;
    if (number == question && facts) {
        apply(*facts);
    } else if (number == question) {
        refresh();  // The connection that there is tells as well; it has to be waited for.
    }
    askIfStale();
}

void X11Screens::Parts::apply(const Facts& facts) {
    followPanels(facts.struts.windows);
    pump.keepEarlyEvents();  // Also what is sent reads what comes.
    std::vector<ScreenLayout> layouts;
    std::vector<Rect> frames;
    for (const QScreen* screen : screensPrimaryFirst()) {
        layouts.push_back(layoutOf(*screen, facts.monitors, layouts.size()));
        frames.push_back(layouts.back().nativeFrame);
    }
    for (ScreenLayout& layout : layouts) {
        layout.nativeWorkArea = x11WorkArea(layout.nativeFrame, frames, facts.struts.struts);
    }
    ScreenGeometry fresh(std::move(layouts));
    const std::lock_guard<std::mutex> lock(mutex);
    geometry = std::move(fresh);
}

void X11Screens::Parts::followPanels(const std::set<xcb_window_t>& windows) {
    for (const xcb_window_t window : windows) {
        if (panels.count(window) == 0) {
            select(window, XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY);
            isStale = true;  // It may have changed before it was followed.
        }
    }
    for (const xcb_window_t window : panels) {
        if (windows.count(window) == 0) {
            select(window, XCB_EVENT_MASK_NO_EVENT);
        }
    }
    panels = windows;
    xcb_flush(connection.get());
}

void X11Screens::Parts::select(xcb_window_t window, std::uint32_t events) const {
    if (connection.isOpen()) {
        xcb_change_window_attributes(connection.get(), window, XCB_CW_EVENT_MASK, &events);
    }
}

void X11Screens::Parts::note(const xcb_generic_event_t& event) {
    switch (event.response_type & 0x7F) {
        case XCB_PROPERTY_NOTIFY: {
            const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
            isStale = isStale || properties.count(change.atom) > 0;
            break;
        }
        case XCB_CONFIGURE_NOTIFY:
        case XCB_MAP_NOTIFY:
        case XCB_UNMAP_NOTIFY:
        case XCB_DESTROY_NOTIFY:
            isStale = true;
            break;
        default:
            break;
    }
}

X11Screens::X11Screens(const std::string& display) : parts_(std::make_unique<Parts>(display)) {}

X11Screens::~X11Screens() = default;

ScreenGeometry X11Screens::current() const {
    const std::lock_guard<std::mutex> lock(parts_->mutex);
    return parts_->geometry;
}

std::vector<Screen> X11Screens::all() const {
    return current().screens();
}

}  // namespace velmora
