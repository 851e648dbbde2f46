// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "platform/UserDefaults.h"

namespace orvane {

/// The three ways in which a note is written. Only "Rich Text" has attributes; Markdown is plain
/// text that is coloured while it is shown.
enum class EditorMode { richText, plainText, markdown };

/// The stored word of a mode, which people also see: "Rich Text", "Plain Text" or "Markdown".
[[nodiscard]] QString editorModeName(EditorMode mode);
/// The mode that a stored word means; "Plain Text" for anything else.
[[nodiscard]] EditorMode editorModeNamed(const QString& name);

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
/// Whether the editor pane keeps its width.
inline constexpr Setting<bool> editorWidthLockSetting{u"settings.layout.lock.editor", false};

inline constexpr Setting<bool> autosaveEnabledSetting{u"settings.general.autosaveEnabled", true};
inline constexpr Setting<double> autoSaveSecondsSetting{u"settings.general.autoSaveSeconds", 1.5};

} // namespace orvane
