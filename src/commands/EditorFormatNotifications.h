// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "commands/AppCommandEvents.h"
#include "text/value/RgbaColor.h"

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

/// A font for the selection: another family, another size in points, or both. Weight and slant
/// stay.
struct FontChoice {
    std::optional<QString> fontName;
    std::optional<double> fontSize;
    std::optional<QUuid> noteID;

    bool operator==(const FontChoice&) const = default;
};

/// A colour of text, of a highlight or behind paragraphs; none for what stands without one.
struct ColorChoice {
    std::optional<RgbaColor> color;
    std::optional<QUuid> noteID;

    bool operator==(const ColorChoice&) const = default;
};

/// `role` is the stored word of a paragraph's role, "Heading 2".
struct ParagraphRoleChoice {
    QString role;
    std::optional<QUuid> noteID;

    bool operator==(const ParagraphRoleChoice&) const = default;
};

/// What is to change about paragraphs; lengths in points. What is absent stays.
struct ParagraphMetrics {
    std::optional<double> lineSpacing;
    std::optional<double> paragraphSpacingBefore;
    std::optional<double> paragraphSpacingAfter;
    std::optional<double> firstLineHeadIndent;
    std::optional<double> headIndent;
    std::optional<double> tailIndent;
    std::optional<double> defaultTabInterval;
    std::optional<double> hyphenationFactor; ///< 0 never hyphenates, 1 always
    std::optional<bool> keepsLinesTogether;
    std::optional<bool> keepWithNext;
    std::optional<bool> widowControl;
    std::optional<QUuid> noteID;

    bool operator==(const ParagraphMetrics&) const = default;
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
inline constexpr Notification<CommandTarget> superscript{
    "OrvaneWorkspace.EditorFormat.Superscript"};
inline constexpr Notification<CommandTarget> subscript{"OrvaneWorkspace.EditorFormat.Subscript"};
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
/// Without a role, a heading of the first level.
inline constexpr Notification<ParagraphRoleChoice> paragraphHeading{
    "OrvaneWorkspace.EditorFormat.ParagraphHeading"};
inline constexpr Notification<ParagraphRoleChoice> setParagraphRole{
    "OrvaneWorkspace.EditorFormat.SetParagraphRole"};
inline constexpr Notification<ParagraphMetrics> setParagraphMetrics{
    "OrvaneWorkspace.EditorFormat.SetParagraphMetrics"};
inline constexpr Notification<ColorChoice> setParagraphBackgroundColor{
    "OrvaneWorkspace.EditorFormat.SetParagraphBackgroundColor"};
inline constexpr Notification<FontChoice> setFont{"OrvaneWorkspace.EditorFormat.SetFont"};
inline constexpr Notification<ColorChoice> foregroundNSColor{
    "OrvaneWorkspace.EditorFormat.ForegroundNSColor"};
inline constexpr Notification<ColorChoice> highlightNSColor{
    "OrvaneWorkspace.EditorFormat.HighlightNSColor"};

} // namespace orvane::EditorFormatNotifications
