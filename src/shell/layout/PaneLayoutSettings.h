// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "platform/UserDefaults.h"
#include "shell/layout/PaneArithmetic.h"

/// Which panes are shown and locked: keys of the user defaults.
namespace orvane::PaneLayoutSettings {

inline constexpr Setting<bool> binderVisible{u"settings.layout.binderVisible", true};
inline constexpr Setting<bool> inspectorVisible{u"settings.layout.inspectorVisible", true};
inline constexpr Setting<bool> binderLock{u"settings.layout.lock.binder", false};
inline constexpr Setting<bool> editorLock{u"settings.layout.lock.editor", false};
inline constexpr Setting<bool> inspectorLock{u"settings.layout.lock.inspector", false};
/// What the Inspector shows: "details" or "versions".
inline const Setting<QString> inspectorSection{u"settings.layout.inspectorSection",
                                               QStringLiteral("details")};
/// The width of the page, which also says how narrow the editor may become.
inline constexpr Setting<double> editorPageWidth{u"settings.appearance.editorPageWidth",
                                                 PaneMetrics::editorPageWidthDefault};

[[nodiscard]] inline SideVisibility readVisibility(const UserDefaults& defaults)
{
    return {binderVisible.read(defaults), inspectorVisible.read(defaults)};
}

[[nodiscard]] inline PaneLocks readLocks(const UserDefaults& defaults)
{
    return {binderLock.read(defaults), editorLock.read(defaults), inspectorLock.read(defaults)};
}

inline void writeLocks(UserDefaults& defaults, const PaneLocks& locks)
{
    binderLock.write(defaults, locks.binder);
    editorLock.write(defaults, locks.editor);
    inspectorLock.write(defaults, locks.inspector);
}

} // namespace orvane::PaneLayoutSettings
