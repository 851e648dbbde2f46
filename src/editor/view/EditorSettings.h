// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "platform/StoredWords.h"
#include "platform/UserDefaults.h"

namespace orvane {

/// The three ways in which a note is written. Only "Rich Text" has attributes; Markdown is plain
/// text that is coloured while it is shown.
enum class EditorMode { richText, plainText, markdown };

/// The words of the modes, which people also see.
template <>
inline constexpr auto storedWords<EditorMode> =
    std::to_array<QStringView>({u"Rich Text", u"Plain Text", u"Markdown"});
/// The mode that a stored word means; plain text for anything else.
[[nodiscard]] inline EditorMode editorModeNamed(const QString& name)
{
    return fromRawValue<EditorMode>(name).value_or(EditorMode::plainText);
}

// The working values of the note that is shown; each note remembers its own in its profile.
inline const Setting<QString> editorModeSetting{u"settings.editor.mode",
                                                QStringLiteral("Plain Text")};
inline const Setting<QString> editorFontFamilySetting{u"settings.editor.fontFamily",
                                                      QStringLiteral("Georgia")};
inline constexpr Setting<double> editorFontSizeSetting{u"settings.editor.fontSize", 16};

inline constexpr Setting<double> editorDisplayZoomSetting{u"settings.appearance.editor.displayZoom",
                                                          1.25};
inline constexpr Setting<double> bottomDocumentPaddingSetting{
    u"settings.editor.bottomDocumentPadding", 220};

/// The strip of formatting controls above the text of a rich note.
inline constexpr Setting<bool> showFormattingToolbarSetting{
    u"settings.editor.showFormattingToolbar", true};

// Sizes of headings in points, largest first. The names are one behind the headings that they are
// for: a heading of the first level has the size of a title.
inline constexpr Setting<double> headingTitleSizeSetting{u"settings.editor.headingTitle", 32};
inline constexpr Setting<double> heading1SizeSetting{u"settings.editor.heading1", 28};
inline constexpr Setting<double> heading2SizeSetting{u"settings.editor.heading2", 25};
inline constexpr Setting<double> heading3SizeSetting{u"settings.editor.heading3", 22};
inline constexpr Setting<double> heading4SizeSetting{u"settings.editor.heading4", 20};
inline constexpr Setting<double> heading5SizeSetting{u"settings.editor.heading5", 18};

inline constexpr Setting<bool> pageViewEnabledSetting{u"settings.editor.pageViewEnabled", false};
/// The stored word of a `PageSizePreset`.
inline const Setting<QString> pageSizePresetSetting{u"settings.editor.pageSizePreset",
                                                    QStringLiteral("US Letter")};
// In points.
inline constexpr Setting<double> pageMarginTopSetting{u"settings.editor.pageMarginTop", 72};
inline constexpr Setting<double> pageMarginBottomSetting{u"settings.editor.pageMarginBottom", 72};
inline constexpr Setting<double> pageMarginLeftSetting{u"settings.editor.pageMarginLeft", 72};
inline constexpr Setting<double> pageMarginRightSetting{u"settings.editor.pageMarginRight", 72};
inline constexpr Setting<bool> rulerVisibleSetting{u"settings.editor.rulerVisible", false};

inline constexpr Setting<bool> typewriterModeSetting{u"settings.editor.typewriterModeEnabled",
                                                     false};
inline constexpr Setting<bool> focusModeSetting{u"settings.editor.focusMode.enabled", false};
/// "paragraph" or "sentence".
inline const Setting<QString> focusModeGranularitySetting{u"settings.editor.focusMode.granularity",
                                                          QStringLiteral("paragraph")};
/// How much of its ink the text out of focus keeps, 0 to 1.
inline constexpr Setting<double> focusModeDimOpacitySetting{u"settings.editor.focusMode.dimOpacity",
                                                            0.3};
inline constexpr Setting<bool> smartPasteSetting{u"settings.editor.smartPaste.enabled", true};
inline constexpr Setting<bool> autoBracketingSetting{u"settings.editor.autoBracketing.enabled",
                                                     true};

/// Whether the editor pane keeps its width.
inline constexpr Setting<bool> editorWidthLockSetting{u"settings.layout.lock.editor", false};

inline constexpr Setting<bool> autosaveEnabledSetting{u"settings.general.autosaveEnabled", true};
inline constexpr Setting<double> autoSaveSecondsSetting{u"settings.general.autoSaveSeconds", 1.5};

} // namespace orvane
