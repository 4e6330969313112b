// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVirtualObject>
#include <array>
#include <functional>
#include <optional>

namespace velmora::test {

/// An object of a program, as the accessibility bus writes it.
struct BusReference {
    QString bus;
    QDBusObjectPath path;
};

/// An accessible program with one window and one text in it, whose characters stand in cells of
/// 20 × 24 pixels from (40, 40) of the window on. It answers rightly until `turn` is called, and
/// from then on in the way of its mode.
class HostileProgram : public QDBusVirtualObject {
    Q_OBJECT

  public:
    using Extents = std::function<std::array<int, 4>()>;

    HostileProgram(QDBusConnection bus, QString mode, QString title, Extents window);

    /// Begins to lie. May be called in a signal handler.
    static void turn();

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override;
    QString introspect(const QString&) const override { return {}; }

  private:
    std::optional<QVariantList> honest(const QDBusMessage& message) const;
    std::optional<QVariantList> honestProperty(const QDBusMessage& message) const;
    QVariantList honestText(const QDBusMessage& message) const;

    /// The lie to this question; nothing where this mode answers it rightly.
    std::optional<QVariantList> lie(const QDBusMessage& message);
    std::optional<QVariantList> lieAboutTree(const QDBusMessage& message);
    std::optional<QVariantList> lieAboutText(const QDBusMessage& message);
    std::optional<QVariantList> lieAboutPlaces(const QDBusMessage& message);

    /// An office suite that says which toolkit it uses and, until `turn`, not who it is.
    bool isBusy(const QDBusMessage& message) const;
    bool isText(const QDBusMessage& message) const;
    BusReference reference(const QString& path) const;
    QVariantList next(const QDBusMessage& message) const;

    QDBusConnection bus_;
    QString mode_;
    QString title_;
    Extents window_;
    int asked_ = 0;
};

}  // namespace velmora::test

Q_DECLARE_METATYPE(velmora::test::BusReference)
