// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/AppCommandEvents.h"

/// Formatting of the selection in a rich note, or of what is typed next at a caret. Toolbars and
/// menus post them; the text view that is meant acts, in rich notes only.
namespace orvane::EditorFormatNotifications {

inline constexpr Notification<CommandTarget> bold{"OrvaneWorkspace.EditorFormat.Bold"};
inline constexpr Notification<CommandTarget> italic{"OrvaneWorkspace.EditorFormat.Italic"};
inline constexpr Notification<CommandTarget> underline{"OrvaneWorkspace.EditorFormat.Underline"};
inline constexpr Notification<CommandTarget> strikethrough{
    "OrvaneWorkspace.EditorFormat.Strikethrough"};
inline constexpr Notification<CommandTarget> alignLeft{"OrvaneWorkspace.EditorFormat.AlignLeft"};
inline constexpr Notification<CommandTarget> alignCenter{
    "OrvaneWorkspace.EditorFormat.AlignCenter"};
inline constexpr Notification<CommandTarget> alignRight{"OrvaneWorkspace.EditorFormat.AlignRight"};
inline constexpr Notification<CommandTarget> alignJustified{
    "OrvaneWorkspace.EditorFormat.AlignJustified"};
inline constexpr Notification<CommandTarget> bulletList{"OrvaneWorkspace.EditorFormat.BulletList"};
inline constexpr Notification<CommandTarget> numberedList{
    "OrvaneWorkspace.EditorFormat.NumberedList"};
inline constexpr Notification<CommandTarget> removeCustomBullet{
    "OrvaneWorkspace.EditorFormat.RemoveCustomBullet"};
inline constexpr Notification<CommandTarget> paragraphBody{
    "OrvaneWorkspace.EditorFormat.ParagraphBody"};

} // namespace orvane::EditorFormatNotifications
