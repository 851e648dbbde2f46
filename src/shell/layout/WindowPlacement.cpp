// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/layout/WindowPlacement.h"

#include <QEvent>
#include <QGuiApplication>
#include <QJsonArray>
#include <QScreen>
#include <QWidget>

#include <algorithm>

namespace orvane {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto saveDelay = 500ms;
constexpr int farthest = 1'000'000;
constexpr int widestFrame = 200;
// A title bar, before a window system has told what it draws.
constexpr QMargins frameBeforeItIsKnown(0, 40, 0, 0);
// Wayland tells neither where its panels stand nor what is drawn round a window.
constexpr QMargins frameAndPanels(0, 40, 0, 56);

struct StateName {
    WindowPlacement::State state;
    QLatin1String name;
};
constexpr StateName stateNames[] = {
    {WindowPlacement::State::Normal, "normal"_L1},
    {WindowPlacement::State::Maximized, "maximized"_L1},
    {WindowPlacement::State::FullScreen, "fullScreen"_L1},
};

qint64 area(const QRect& rect)
{
    return rect.isEmpty() ? 0 : qint64(rect.width()) * rect.height();
}

WindowPlacement::State stateOf(const QWidget& window)
{
    if (window.isFullScreen())
        return WindowPlacement::State::FullScreen;
    return window.isMaximized() ? WindowPlacement::State::Maximized
                                : WindowPlacement::State::Normal;
}

bool isPlacedByDesktop()
{
    return QGuiApplication::platformName().startsWith("wayland"_L1);
}

QMargins firstFrame()
{
    return isPlacedByDesktop() ? frameAndPanels : frameBeforeItIsKnown;
}

QList<QRect> availableScreens()
{
    QList<QRect> screens;
    for (const QScreen* screen : QGuiApplication::screens())
        screens.append(screen->availableGeometry());
    return screens;
}

} // namespace

QJsonObject WindowPlacement::json() const
{
    const auto* named = std::ranges::find(stateNames, state, &StateName::state);
    return {{u"x"_s, normal.x()},
            {u"y"_s, normal.y()},
            {u"width"_s, normal.width()},
            {u"height"_s, normal.height()},
            {u"frame"_s, QJsonArray{frame.left(), frame.top(), frame.right(), frame.bottom()}},
            {u"state"_s, named->name}};
}

std::optional<WindowPlacement> WindowPlacement::fromJson(const QJsonObject& object)
{
    int numbers[4];
    const QLatin1String names[] = {"x"_L1, "y"_L1, "width"_L1, "height"_L1};
    for (int i = 0; i < 4; ++i) {
        const QJsonValue value = object.value(names[i]);
        if (!value.isDouble())
            return std::nullopt;
        numbers[i] = int(std::clamp<double>(value.toDouble(), -farthest, farthest));
    }
    WindowPlacement placement{{numbers[0], numbers[1], numbers[2], numbers[3]}, {}, State::Normal};
    const QJsonArray frame = object.value("frame"_L1).toArray();
    if (frame.size() == 4) {
        const auto side = [&](int i) {
            return std::clamp(frame.at(i).toInt(), 0, widestFrame);
        };
        placement.frame = {side(0), side(1), side(2), side(3)};
    }
    if (placement.normal.isEmpty())
        return std::nullopt;
    const QString name = object.value("state"_L1).toString();
    for (const StateName& each : stateNames) {
        if (name == each.name)
            placement.state = each.state;
    }
    return placement;
}

QRect placedOnScreens(const QRect& wanted, const QList<QRect>& screens, const QSize& minimum,
                      const QMargins& frame)
{
    if (screens.isEmpty())
        return wanted;
    const QRect screen = std::ranges::max_element(screens, {}, [&](const QRect& each) {
                             return area(each & wanted);
                         })->marginsRemoved(frame);
    if (screen.width() < minimum.width() || screen.height() < minimum.height())
        return wanted;
    const QSize size = wanted.size().boundedTo(screen.size()).expandedTo(minimum);
    QRect placed(wanted.topLeft(), size);
    placed.moveLeft(std::clamp(placed.left(), screen.left(), screen.right() + 1 - size.width()));
    placed.moveTop(std::clamp(placed.top(), screen.top(), screen.bottom() + 1 - size.height()));
    return placed;
}

QRect centredOver(const QRect& parent, const QSize& size, const QList<QRect>& screens,
                  const QSize& minimum)
{
    const QPoint corner = parent.center() - QPoint(size.width() / 2, size.height() / 2);
    return placedOnScreens({corner, size}, screens, minimum, frameBeforeItIsKnown);
}

void centreOver(QWidget& window, const QWidget& parent)
{
    window.setGeometry(
        centredOver(parent.geometry(), window.size(), availableScreens(), window.minimumSize()));
}

WindowPlacementKeeper::WindowPlacementKeeper(const Services& services, const QString& key,
                                             QWidget* window)
    : QObject(window)
    , m_services(services)
    , m_key(key)
    , m_window(*window)
{
    restore();
    window->installEventFilter(this);
}

WindowPlacementKeeper::~WindowPlacementKeeper() = default;

void WindowPlacementKeeper::restore()
{
    const auto stored = m_services.defaults.get<QJsonObject>(m_key);
    const auto placement = stored ? WindowPlacement::fromJson(*stored) : std::nullopt;
    const QList<QRect> screens = availableScreens();
    if (!placement) {
        // The desktop chooses the place; only the size has to fit.
        if (!screens.isEmpty()) {
            const QRect wanted(screens.first().topLeft(), m_window.size());
            m_window.resize(
                placedOnScreens(wanted, screens, m_window.minimumSize(), firstFrame()).size());
        }
        return;
    }
    const QMargins frame =
        placement->frame.isNull() && isPlacedByDesktop() ? firstFrame() : placement->frame;
    m_window.setGeometry(
        placedOnScreens(placement->normal, screens, m_window.minimumSize(), frame));
    if (placement->state == WindowPlacement::State::Maximized)
        m_window.setWindowState(Qt::WindowMaximized);
    else if (placement->state == WindowPlacement::State::FullScreen)
        m_window.setWindowState(Qt::WindowFullScreen);
}

void WindowPlacementKeeper::save()
{
    m_pending.reset();
    const bool isNormal = stateOf(m_window) == WindowPlacement::State::Normal;
    const QRect normal = isNormal ? m_window.geometry() : m_window.normalGeometry();
    const QRect inner = m_window.geometry();
    const QRect outer = m_window.frameGeometry();
    const QMargins frame(inner.left() - outer.left(), inner.top() - outer.top(),
                         outer.right() - inner.right(), outer.bottom() - inner.bottom());
    if (!normal.isEmpty())
        m_services.defaults.set(m_key, WindowPlacement{normal, frame, stateOf(m_window)}.json());
}

bool WindowPlacementKeeper::eventFilter(QObject*, QEvent* event)
{
    switch (event->type()) {
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::WindowStateChange:
        if (m_window.isVisible() && !m_window.isMinimized() && !m_pending)
            m_pending = m_services.clock.after(saveDelay, [this] { save(); });
        break;
    case QEvent::Close:
        if (!m_window.isMinimized())
            save();
        break;
    default:
        break;
    }
    return false;
}

} // namespace orvane
