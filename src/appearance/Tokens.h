// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QColor>

#include <array>

namespace orvane {

/// What a widget stands on; it decides the inks.
enum class Surface {
    Window,    ///< the ground behind everything, also the Projects browser
    Toolbar,   ///< the band at the top of the main window
    Binder,    ///< the pane at the left
    Inspector, ///< the pane at the right
    Page,      ///< the writing surface
    Card,      ///< tiles, sheets, menus and popovers
    FormattingBar,
    StatusStrip,
    BinderTopRail,
    BinderRail,
    InspectorTopRail,
    InspectorRail,
    BrainMap,
};

inline constexpr int surfaceCount = int(Surface::BrainMap) + 1;

/// Rails are capsules with round corners that lie on a pane.
[[nodiscard]] constexpr bool isRail(Surface surface)
{
    return surface >= Surface::BinderTopRail && surface <= Surface::InspectorRail;
}

/// The ground of a surface and what reads on it. Texts have a contrast of at least 4.5 to 1 on the
/// ground, the fields, the controls and the hovered rows of their surface; icons, accents and the
/// rings of the focused control at least 3 to 1, on selected rows too.
struct SurfaceTokens {
    QColor ground;
    QColor groundTop;     ///< where glass shows the backdrop's gradient: the ground at the top of
    QColor groundBottom;  ///< the window and at its bottom; else both are `ground`
    QColor text;          ///< main ink
    QColor textSecondary; ///< second lines, labels, placeholders
    QColor icon;
    QColor accent;  ///< icons, bars and focus rings in the accent colour
    QColor link;    ///< text in the accent colour
    QColor danger;  ///< text that warns
    QColor warning; ///< pictures that say that something is wrong
    QColor field;   ///< the ground of text fields
    QColor control; ///< the face of a plain button
    QColor border;  ///< lines and edges
    QColor hoveredRow;
    QColor selectedRow;
    QColor textOnSelectedRow;
    QColor textSecondaryOnSelectedRow;

    bool operator==(const SurfaceTokens&) const = default;
};

/// The inks of Markdown on the page; plain text and headings have the page's own.
struct MarkdownInks {
    QColor code;
    QColor link;
    QColor blockquote;
    QColor listMarker;
    QColor taskCheckbox;
    QColor punctuation; ///< steps back: 3 to 1, the others 4.5 to 1

    bool operator==(const MarkdownInks&) const = default;
};

/// Every colour of the interface, by what it is for.
struct Tokens {
    std::array<SurfaceTokens, surfaceCount> surfaces;

    QColor accent;          ///< the face of what is default or active
    QColor accentHovered;   ///< the same under the pointer
    QColor textOnAccent;    ///< reads on both
    QColor danger;          ///< the face of what destroys
    QColor dangerHovered;   ///< the same under the pointer
    QColor textOnDanger;    ///< reads on both
    QColor accentWash;      ///< tinted ground behind an accent icon on a card
    QColor selection;       ///< behind selected text
    QColor textOnSelection; ///< selected text outside the writing surface
    QColor backdrop;        ///< laid over the window behind a sheet; translucent

    QColor pageText; ///< the writing surface's own ink, as chosen and so perhaps hard to read
    QColor caret;
    QColor match;     ///< behind text that was found
    QColor matchEdge; ///< around it
    MarkdownInks markdown;
    QColor desk;      ///< around the paper in page view
    QColor paper;     ///< the sheet in page view
    QColor paperEdge; ///< its edge
    QColor windowTop; ///< the backdrop's gradient; both are the window's ground where it has none
    QColor windowBottom;

    [[nodiscard]] const SurfaceTokens& on(Surface surface) const { return surfaces[int(surface)]; }
    [[nodiscard]] SurfaceTokens& on(Surface surface) { return surfaces[int(surface)]; }

    bool operator==(const Tokens&) const = default;
};

} // namespace orvane
