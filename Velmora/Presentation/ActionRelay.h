// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <functional>
#include <utility>

namespace velmora {

/// Calls a function when a signal of a view is emitted. Lives as long as the view.
class ActionRelay : public QObject {
    Q_OBJECT

  public:
    ActionRelay(std::function<void()> action, QObject* parent)
        : QObject(parent), action_(std::move(action)) {}

    /// `viewSignal` as SIGNAL() writes it.
    static void connectSignal(QObject& view, const char* viewSignal, std::function<void()> action) {
        auto* relay = new ActionRelay(std::move(action), &view);
        connect(&view, viewSignal, relay, SLOT(trigger()));
    }

  public slots:
    void trigger() { action_(); }

  private:
    std::function<void()> action_;
};

}  // namespace velmora
