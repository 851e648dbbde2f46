// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "editor/view/EditorLook.h"
#include "editor/view/EditorSettings.h"
#include "text/value/HeadingSizes.h"

#include <QMarginsF>
#include <QString>
#include <QUuid>

#include <optional>

namespace orvane {

/// All that decides how the text host shows a note, beside the text. Made anew whenever something
/// of it changes, and handed to the host as a whole.
struct RichTextViewRepresentable {
    std::optional<QUuid> noteID;
    QString fontName;
    double fontSize = 16; ///< in points, before the zoom
    HeadingSizes headingSizes;
    EditorLook look;
    EditorMode editorMode = EditorMode::plainText;
    /// Empty space below the last line, in points.
    double bottomDocumentPadding = 220;
    double visualZoom = 1; ///< pixels for a point
    /// Width of the column of text, in logical pixels; it stands in the middle of the host.
    int columnWidth = 680;
    /// The text on a sheet of paper instead of the open column.
    bool pageViewEnabled = false;
    QMarginsF pageMargins{72, 72, 72, 72}; ///< in points, in page view
    bool rulerVisible = false;
    bool isEditable = true;

    bool operator==(const RichTextViewRepresentable&) const = default;
};

} // namespace orvane
