// SPDX-License-Identifier: MIT
#include "Velmora/Platform/LinuxX11/X11EventPump.h"

#include <utility>

namespace velmora {

X11EventPump::X11EventPump(X11Connection& connection, Handler handle, std::function<void()> finish)
    : connection_(connection), handle_(std::move(handle)), finish_(std::move(finish)) {
    if (!connection_.isOpen()) {
        return;
    }
    notifier_ = std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(connection_.get()),
                                                  QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, this, [this] { drain(); });
}

XcbOwned<xcb_generic_event_t> X11EventPump::nextRead() {
    if (early_.empty()) {
        return xcbOwned(xcb_poll_for_queued_event(connection_.get()));
    }
    auto event = std::move(early_.front());
    early_.pop_front();
    return event;
}

XcbOwned<xcb_generic_event_t> X11EventPump::next() {
    auto event = nextRead();
    return event ? std::move(event) : xcbOwned(xcb_poll_for_event(connection_.get()));
}

void X11EventPump::drain() {
    auto event = next();
    do {
        for (; event; event = next()) {
            handle_(*event);
        }
        finish_();
        // What came while the batch was being finished. Nothing more is read: an answer that is
        // read without an event would find nobody who looks for it.
        event = nextRead();
    } while (event);
    if (!connection_.isOpen()) {
        notifier_->setEnabled(false);  // The end of a connection stays readable for ever.
    }
}

void X11EventPump::keepEarlyEvents() {
    const bool isScheduled = !early_.empty();
    while (auto event = xcbOwned(xcb_poll_for_queued_event(connection_.get()))) {
        early_.push_back(std::move(event));
    }
    if (!isScheduled && !early_.empty()) {
        finishSoon();
    }
}

void X11EventPump::finishSoon() {
    QMetaObject::invokeMethod(
        this, [this] { drain(); }, Qt::QueuedConnection);
}

}  // namespace velmora
