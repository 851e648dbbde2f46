// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/PortalSetting.h"
#include "platform/UserDefaults.h"

#include <array>

namespace orvane {

/// Whether things move on the screen: "reduced", "full", or what the desktop asks for when unset
/// or anything else.
inline const Setting<QString> motionSetting{u"settings.general.motion", QString()};

/// Whether the person wants no movement on the screen, by the setting, else by the desktop: its
/// settings portal is asked for org.freedesktop.appearance's reduced-motion and for the older
/// switches of the two large desktops. Until it answers, things move. Nothing here waits.
class DesktopMotion : public QObject {
    Q_OBJECT
public:
    explicit DesktopMotion(const UserDefaults& defaults,
                           const QDBusConnection& bus = QDBusConnection::sessionBus(),
                           QObject* parent = nullptr);

    [[nodiscard]] bool isReduced() const;

private:
    const UserDefaults& m_defaults;
    /// One for each place where a desktop may say it.
    std::array<bool, 3> m_asked{};
};

} // namespace orvane
