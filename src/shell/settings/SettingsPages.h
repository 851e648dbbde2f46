// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "platform/Services.h"

class QWidget;

namespace orvane {

class AppearanceThemeLibrary;
class Look;
class ShortcutCenter;
class ThemeFilePicker;

/// The pages in the order in which they are listed.
enum class SettingsPageId {
    General,
    Editor,
    Bullets,
    Appearance,
    VersionHistory,
    Shortcuts,
    Projects,
};
inline constexpr int settingsPageCount = 7;

/// What the pages work with; all of it outlives them. Questions are asked in the settings window.
struct SettingsServices {
    Services services;
    Look& look;
    ShortcutCenter& shortcuts;
    AppearanceThemeLibrary& themes;
    ThemeFilePicker& files;
};

[[nodiscard]] QString title(SettingsPageId id);
[[nodiscard]] QWidget* makeSettingsPage(SettingsPageId id, const SettingsServices& services);

} // namespace orvane
