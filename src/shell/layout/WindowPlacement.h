// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "platform/Services.h"

#include <QJsonObject>
#include <QList>
#include <QMargins>
#include <QObject>
#include <QRect>

class QWidget;

namespace orvane {

/// Where a window stands, in logical pixels of the desktop: its place and size when it is neither
/// maximised nor full screen, and whether it is.
struct WindowPlacement {
    enum class State { Normal, Maximized, FullScreen };
    QRect normal; ///< without what the desktop draws round it
    /// What the desktop drew round it: a title bar, edges.
    QMargins frame;
    State state = State::Normal;

    bool operator==(const WindowPlacement&) const = default;
    [[nodiscard]] QJsonObject json() const;
    /// Nothing for an object that lacks a number or has an empty size.
    [[nodiscard]] static std::optional<WindowPlacement> fromJson(const QJsonObject& object);
};

/// `wanted` moved and shrunk into the screen on which most of it lies, the first where none of it
/// does, with room for the frame round it; never below `minimum`. A screen that can't hold
/// `minimum` says nothing: `wanted` stays.
[[nodiscard]] QRect placedOnScreens(const QRect& wanted, const QList<QRect>& screens,
                                    const QSize& minimum, const QMargins& frame = {});

/// The middle of `size` on that of `parent`, as far as the screen allows.
[[nodiscard]] QRect centredOver(const QRect& parent, const QSize& size, const QList<QRect>& screens,
                                const QSize& minimum);
/// Puts a window that has no place of its own yet over its parent's middle. Where the desktop
/// places windows (Wayland) that is left to it.
void centreOver(QWidget& window, const QWidget& parent);

/// Keeps the placement of a window under a key of the user defaults: puts the window there when it
/// is made, and writes a moment after each change and when the window closes. Lives with the
/// window.
class WindowPlacementKeeper : public QObject {
    Q_OBJECT
public:
    WindowPlacementKeeper(const Services& services, const QString& key, QWidget* window);
    ~WindowPlacementKeeper() override;

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void restore();
    void save();

    Services m_services;
    QString m_key;
    QWidget& m_window;
    std::unique_ptr<Clock::Delay> m_pending;
};

} // namespace orvane
