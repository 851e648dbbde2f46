// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/DesktopColorScheme.h"
#include "platform/UserDefaults.h"

#include <QObject>

namespace orvane {

class AppearanceThemeLibrary;

/// Whether the active theme changes between its Light and Dark variant with the desktop.
inline constexpr Setting<bool> followDesktopSetting{u"appearance.themes.followDesktop", false};

/// Applies the variant of the active theme that fits the desktop, while the setting asks for it:
/// at once when it is switched on, and whenever the desktop changes. It leaves alone a look that
/// was edited since the active theme was applied, because switching would lose the edits.
class DesktopThemeFollower : public QObject {
    Q_OBJECT
public:
    DesktopThemeFollower(UserDefaults& defaults, AppearanceThemeLibrary& library,
                         const DesktopColorScheme& desktop, QObject* parent = nullptr);

    void follow();

private:
    UserDefaults& m_defaults;
    AppearanceThemeLibrary& m_library;
    const DesktopColorScheme& m_desktop;
};

} // namespace orvane
