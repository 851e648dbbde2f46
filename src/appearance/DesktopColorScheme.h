// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QDBusConnection>
#include <QObject>

class QPalette;

namespace orvane {

/// Whether the desktop asks its programs for a light or a dark look.
enum class ColorScheme { Light, Dark };

/// The desktop's preference, as it is now and as it changes.
class DesktopColorScheme : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    [[nodiscard]] virtual ColorScheme scheme() const = 0;

signals:
    /// Told when `scheme` became another.
    void changed();
};

/// The scheme that a palette is made for, by whether its text is lighter than its ground.
[[nodiscard]] ColorScheme schemeOf(const QPalette& palette);

/// Asks the desktop's settings portal (key color-scheme of org.freedesktop.appearance) and follows
/// it. Until it answers, where there is none, and where it has no preference, the fallback stands.
class PortalColorScheme final : public DesktopColorScheme {
    Q_OBJECT
public:
    /// `fallback` is best read from the platform's palette before the program sets its own.
    explicit PortalColorScheme(ColorScheme fallback, QObject* parent = nullptr);

    [[nodiscard]] ColorScheme scheme() const override { return m_scheme; }
    /// Begins to ask. Doesn't wait for the answer, but the first use of the bus takes a moment that
    /// a program's first frame need not wait for.
    void ask(const QDBusConnection& bus = QDBusConnection::sessionBus());

private:
    void take(const QVariant& value);

    ColorScheme m_fallback;
    ColorScheme m_scheme;
};

} // namespace orvane
