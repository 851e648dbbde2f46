// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/Tokens.h"
#include "text/layout/TextPaint.h"

#include <QColor>

#include <optional>

namespace orvane {

/// The colours of a sheet of paper on a desk.
struct PageSheetLook {
    QColor desk;
    QColor paper;
    QColor edge;

    bool operator==(const PageSheetLook&) const = default;
};

/// What a text is written on.
enum class WritingGround {
    openPage, ///< the column on the ground of the page
    paper,    ///< the sheet of the page view
};

/// Every colour of a text and of what the tools of its view draw round it. Painters ask the view
/// for it and hold none of it.
struct EditorLook {
    TextColors text;
    QColor background;
    QColor caret;
    QColor inactiveSelection;           ///< while the keyboard is elsewhere
    QColor match;                       ///< behind what was found
    QColor matchEdge;                   ///< around it
    QColor selectedMatch;               ///< around the match that is selected
    QColor misspelling;                 ///< the mark under a word
    std::optional<PageSheetLook> sheet; ///< on paper

    bool operator==(const EditorLook&) const = default;
};

/// The one way from the tokens of a look to a text. `dimmedShare` is how much of its ink the text
/// out of focus keeps, 0 to 1. Pure.
[[nodiscard]] EditorLook editorLook(const Tokens& tokens, WritingGround ground, double dimmedShare);
/// With a text that keeps `share` of its ink, 0 to 1, as far as it still reads on the page. Pure.
[[nodiscard]] EditorLook withInkShare(EditorLook look, double share);

} // namespace orvane
