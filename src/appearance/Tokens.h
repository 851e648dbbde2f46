// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QColor>

namespace orvane {

/// Every colour of the interface, by what it is for. The first group is a look's own choice; the
/// second is computed from it by `withDerivedInks`, so that text and icons stay readable on the
/// surface they stand on whatever the choice was.
struct Tokens {
    QColor window;        ///< the ground behind everything, also the Projects browser
    QColor pane;          ///< Binder, Inspector and the toolbar band
    QColor page;          ///< the writing surface
    QColor card;          ///< tiles, sheets, menus and popovers
    QColor band;          ///< status strip and formatting toolbar
    QColor rail;          ///< the capsules at the top and bottom of the side panes
    QColor field;         ///< search and text fields
    QColor control;       ///< the face of a plain button
    QColor border;        ///< lines between panes, edges of cards and fields
    QColor text;          ///< main ink on everything but rails
    QColor textSecondary; ///< second lines, labels, placeholders
    QColor accent;        ///< what is selected, default or active
    QColor selection;     ///< behind selected text
    QColor danger;        ///< what destroys, and what went wrong
    QColor backdrop;      ///< laid over the window behind a sheet; translucent

    QColor textOnBand;
    QColor textSecondaryOnBand;
    QColor textOnRail;
    QColor textSecondaryOnRail;
    QColor textOnAccent;
    QColor textOnDanger;
    QColor dangerText; ///< `danger` as ink on pane, page and card
    QColor dangerOnBand;
    QColor icon;        ///< icons on window, pane and card
    QColor accentIcon;  ///< `accent` as ink of icons and rings on window, pane and card
    QColor selectedRow; ///< `accent` at 16 % over the pane
    QColor hoveredRow;  ///< `text` at 6 % over the pane
    QColor textOnSelectedRow;
    QColor textSecondaryOnSelectedRow;
    QColor accentWash; ///< tinted ground behind an accent icon on a card

    bool operator==(const Tokens&) const = default;
};

/// The tokens with their second group computed: text at least 4.5 to 1, icons and large text at
/// least 3 to 1 on their surface; an ink that misses it is moved toward black or white.
[[nodiscard]] Tokens withDerivedInks(Tokens tokens);

/// The look of the first start.
[[nodiscard]] Tokens signatureDarkTokens();

} // namespace orvane
