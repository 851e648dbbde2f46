// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QList>
#include <QTextLayout>

#include <utility>

namespace orvane {

/// One line of a laid out text, with what its carets need to know about it. All x are layout units
/// from where the text's layout stands.
///
/// A line that was wrapped does not draw the blanks at its end, and what it draws closes up there.
/// The toolkit's caret counts them nevertheless, wherever they would stand once letters of both
/// directions are in their order, so in such lines it is a blank's width off; its hit test leaves
/// out yet another correction. Here both are where the letters are drawn.
class LineGeometry {
public:
    /// `text` is all of the layout's text, an input method's included.
    LineGeometry(const QTextLayout& layout, const QTextLine& line, QStringView text);

    /// Where the caret before the character at `place` stands.
    [[nodiscard]] qreal caretX(int place) const;
    /// The place in the line whose caret stands nearest to `x`; of several the first.
    [[nodiscard]] int placeAt(qreal x) const;
    /// The stretches that the glyphs and tabs of [from, to) form, left and right, as few
    /// as can be.
    [[nodiscard]] QList<std::pair<qreal, qreal>> stretchesOf(int from, int to) const;

private:
    void findUndrawnBlanks();
    [[nodiscard]] std::pair<qreal, qreal> stretchOfTab(int tab) const;

    const QTextLayout& m_layout;
    QTextLine m_line;
    QStringView m_lineText;
    bool m_runsRightToLeft;
    bool m_hasBothDirections; ///< something in it runs against the paragraph
    qreal m_undrawn = 0;      ///< the width of the blanks that aren't drawn
    qreal m_undrawnRight = 0; ///< up to where the toolkit's caret has them
};

} // namespace orvane
