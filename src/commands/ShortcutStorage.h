// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "commands/ShortcutAction.h"
#include "platform/NotificationCenter.h"
#include "platform/UserDefaults.h"

#include <QMap>

namespace orvane {

using ShortcutOverrides = QMap<ShortcutAction, ShortcutData>;

/// The keys that a person has chosen in place of the defaults: one JSON object in the user
/// defaults, from an action's raw value to its key.
namespace ShortcutStorage {

inline const QString defaultsKey = QStringLiteral("shortcuts.custom");

/// The overrides were removed: every action has its default key again.
inline constexpr Notification<NoPayload> shortcutsDidReset{"OrvaneWorkspace.ShortcutsDidReset"};

/// Read anew at each call. Data that can't be decoded as a whole counts as none; an entry whose
/// name is no action of this version is left out.
[[nodiscard]] ShortcutOverrides loadOverrides(const UserDefaults& defaults);
void saveOverrides(UserDefaults& defaults, const ShortcutOverrides& overrides);
/// Removes them and posts `shortcutsDidReset`.
void clearOverrides(UserDefaults& defaults, NotificationCenter& notifications);

} // namespace ShortcutStorage

} // namespace orvane
