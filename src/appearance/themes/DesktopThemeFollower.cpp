// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "appearance/themes/DesktopThemeFollower.h"

#include "appearance/themes/AppearanceThemeLibrary.h"

namespace orvane {

DesktopThemeFollower::DesktopThemeFollower(UserDefaults& defaults, AppearanceThemeLibrary& library,
                                           const DesktopColorScheme& desktop, QObject* parent)
    : QObject(parent)
    , m_defaults(defaults)
    , m_library(library)
    , m_desktop(desktop)
{
    connect(&desktop, &DesktopColorScheme::changed, this, &DesktopThemeFollower::follow);
    connect(&defaults, &UserDefaults::changed, this, [this](const QString& key) {
        if (key == followDesktopSetting.keyText())
            follow();
    });
    follow();
}

void DesktopThemeFollower::follow()
{
    const auto mode = m_desktop.scheme() == ColorScheme::Dark ? AppearanceThemeMode::Dark
                                                              : AppearanceThemeMode::Light;
    if (!followDesktopSetting.read(m_defaults) || mode == m_library.activeMode())
        return;
    if (m_library.lookIsActiveTheme())
        m_library.applyTheme(*m_library.activeThemeID(), mode);
}

} // namespace orvane
