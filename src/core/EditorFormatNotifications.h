// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "core/AppCommandEvents.h"
#include "text/RgbaColor.h"

namespace orvane {

/// `style` is the stored word of a list style, "upperRoman".
struct ListStyleChoice {
    QString style;
    std::optional<QUuid> noteID;

    bool operator==(const ListStyleChoice&) const = default;
};

/// A bullet of a person's own; without a colour it has that of the text.
struct CustomBulletChoice {
    QString character;
    std::optional<RgbaColor> color;
    std::optional<QUuid> noteID;

    bool operator==(const CustomBulletChoice&) const = default;
};

} // namespace orvane

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
inline constexpr Notification<ListStyleChoice> setListStyle{
    "OrvaneWorkspace.EditorFormat.SetListStyle"};
inline constexpr Notification<CustomBulletChoice> setCustomBullet{
    "OrvaneWorkspace.EditorFormat.SetCustomBullet"};
inline constexpr Notification<CommandTarget> removeCustomBullet{
    "OrvaneWorkspace.EditorFormat.RemoveCustomBullet"};
inline constexpr Notification<CommandTarget> paragraphBody{
    "OrvaneWorkspace.EditorFormat.ParagraphBody"};

} // namespace orvane::EditorFormatNotifications
