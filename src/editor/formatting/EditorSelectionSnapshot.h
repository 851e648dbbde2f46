// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "editor/formatting/EditorParagraphStyleRole.h"
#include "editor/images/SelectedImageInfo.h"
#include "platform/NotificationCenter.h"
#include "text/lists/EditorListStyle.h"
#include "text/value/ParagraphStyle.h"
#include "text/value/RgbaColor.h"

#include <QUuid>

namespace orvane {

/// The table in which the caret is.
struct EditorTableSnapshot {
    int rows = 0;
    int columns = 0;
    int selectedCells = 1; ///< the caret's, where no rectangle of them is selected
    std::optional<RgbaColor> headerFill;
    std::optional<RgbaColor> cellFill; ///< of the caret's cell

    bool operator==(const EditorTableSnapshot&) const = default;
};

/// How the text under the selection of a text view looks, for the controls that show it. Of a
/// selection it is the first character, at a caret what would be typed. Lengths are in points.
struct EditorSelectionSnapshot {
    QString fontName; ///< the family
    double fontSize = 0;
    RgbaColor foregroundColor; ///< that of the page where the text has none of its own
    std::optional<RgbaColor> highlightColor;
    EditorParagraphStyleRole paragraphRole = EditorParagraphStyleRole::body;
    TextAlignment alignment = TextAlignment::natural;
    QString listKind = rawValue(EditorListKind::none);
    std::optional<EditorListStyle> listStyle;
    double lineSpacing = 0;
    double paragraphSpacingBefore = 0;
    double paragraphSpacingAfter = 0;
    double firstLineHeadIndent = 0;
    double headIndent = 0;
    double tailIndent = 0;
    double defaultTabInterval = 0;
    double hyphenationFactor = 0;
    bool keepsLinesTogether = false;
    bool keepWithNext = false;
    bool widowControl = false;
    std::optional<RgbaColor> paragraphBackgroundColor;
    bool isBold = false;
    bool isItalic = false;
    bool isUnderlined = false;
    bool isStruckThrough = false;
    std::optional<EditorTableSnapshot> table;
    std::optional<SelectedImageInfo> selectedImage;

    bool operator==(const EditorSelectionSnapshot&) const = default;
};

/// A snapshot and the note that it is of.
struct EditorSelectionChange {
    EditorSelectionSnapshot snapshot;
    std::optional<QUuid> targetNoteID;

    bool operator==(const EditorSelectionChange&) const = default;
};

/// Another look under the selection, or another note.
inline constexpr Notification<EditorSelectionChange> editorSelectionSnapshotDidChange{
    "OrvaneWorkspace.EditorSelectionSnapshot.DidChange"};

} // namespace orvane
