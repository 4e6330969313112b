// SPDX-License-Identifier: MIT
#pragma once

#include <QQmlEngine>
#include <QString>
#include <QVariantMap>
#include <map>
#include <memory>

class QQmlComponent;
class QQuickItem;

namespace velmora {

class Theme;

/// Makes what windows show out of the program's QML views. One per process. Main thread.
class ViewEngine {
  public:
    /// To be called once, before the application object is made: views are drawn without a
    /// graphics driver, which paints sooner and takes less memory than one.
    static void registerPresentation();

    /// The theme outlives the engine.
    explicit ViewEngine(Theme& theme);
    ~ViewEngine();

    Theme& theme() const { return theme_; }

    /// A new view of this type ("EntryPopoverView") with these properties, laid out. Null, with a
    /// warning, where the view cannot be made.
    std::unique_ptr<QQuickItem> create(const QString& type, const QVariantMap& properties);

    /// Reads a view of this type in advance, which is a good part of making the first one.
    void load(const QString& type) { component(type); }
    /// The same on the engine's own thread, without waiting for it.
    void loadInBackground(const QString& type);

    /// Lays out an item and everything in it at once instead of before the next frame.
    static void layoutSubtree(QQuickItem& item);

  private:
    QQmlComponent& component(const QString& type);

    Theme& theme_;
    QQmlEngine engine_;
    std::map<QString, std::unique_ptr<QQmlComponent>> components_;
};

}  // namespace velmora
