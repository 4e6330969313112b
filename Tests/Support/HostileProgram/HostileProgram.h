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

    /// Whether a program that is busy until `turn` leaves this one question unanswered: an office
    /// suite that of who it is (busyOffice) or that of where its own elements begin (busyCorner);
    /// any other that of what kind its text is (busyText, busyPassword).
    bool isBusy(const QDBusMessage& message) const;
    bool isOffice() const;
    uint roleOf(const QDBusMessage& message) const;
    /// An office suite's own elements stand in one that fills the window, and count from another
    /// corner.
    QString childOf(const QString& path) const;
    QString parentOf(const QString& path) const;
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
