// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/value/TextSelection.h"

namespace orvane {

class EditorView;

/// Keeps what a person sees in its place while heights that were estimated become known.
///
/// The scroll bar's value is a distance from the top of a page that is mostly estimated, so it
/// can't say what is seen. A paragraph does: the anchor, which was in sight the last time and is
/// laid out. Scrolling moves the anchor by what the person asked for; then everything that comes
/// into sight is laid out from the anchor up and down; and last the scroll bar is set to whatever
/// value that now is, which moves nothing.
class PageScroller {
public:
    explicit PageScroller(EditorView& view);

    /// How far the view is from the top of the page, in pixels. The bar shows it rounded; what is
    /// seen so moves by whole pixels only, while heights have parts of them.
    [[nodiscard]] qreal offset() const { return m_offset; }

    /// Lays out what is in sight, brings range, value and anchor in line, and moves or draws anew
    /// what is shown. Called after anything that may have changed one of them.
    void settle();
    /// Shows the text from `top` points down the page.
    void jumpTo(qreal top);
    /// Scrolls by pixels; parts of a pixel are kept for the next time.
    void scrollBy(qreal pixels);
    /// Whether the scroll bar is being set here, so that nothing has to follow from it.
    [[nodiscard]] bool isSettling() const { return m_isSettling; }
    /// Text before the anchor moves it.
    void follow(const TextChange& change);
    /// Another text is shown, from its top.
    void reset();

private:
    struct Anchor {
        qsizetype position = 0; ///< where a paragraph or row begins, or a line of a long paragraph
        qreal top = 0;          ///< its distance from the top of the viewport, in pixels

        void follow(const TextChange& change);
    };
    enum class Hold { anchor, value, end };

    [[nodiscard]] Hold chooseHold() const;
    void placeAnchor(Hold hold);
    void layOutAround();
    void adjustBar();
    void moveShown();

    EditorView& m_view;
    Anchor m_anchor;
    Anchor m_shown; ///< a paragraph as it is on the screen
    qreal m_offset = 0;
    int m_settledValue = 0;
    bool m_isSettling = false;
    qreal m_remainder = 0;
};

} // namespace orvane
