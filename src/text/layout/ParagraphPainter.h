// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "text/layout/ParagraphLayout.h"

namespace orvane {

/// Draws laid-out paragraphs, each in coordinates of its own, so that numbers stay small far down a
/// long text. What stands behind the glyphs (cells, backgrounds, highlights, the selection) is
/// drawn first and by itself: a selection so never hides the colours of the text.
class ParagraphPainter {
public:
    ParagraphPainter(ParagraphLayout& layout, QPainter& painter, const TextPaint& paint);

    void paint(const QTextBlock& block);

private:
    void paintBorders(const QTextBlock& block, const ParagraphBox& box);
    void paintBehind(const QTextBlock& block);
    void paintFrame(const ParagraphStyle& style, const QRectF& area);
    void paintHighlights(const QTextBlock& block, const ParagraphPiece& piece);
    void paintPageBreak(const QTextBlock& block, const ParagraphBox& box);
    void paintLines(const QTextBlock& block, const ParagraphBox& box, int piece);
    [[nodiscard]] QList<QTextLayout::FormatRange> drawnFormats(const QTextBlock& block,
                                                               const ParagraphPiece& piece) const;
    /// The pieces that lie within the clip and have lines, from the first up to the end.
    [[nodiscard]] std::pair<int, int> seenPieces(const ParagraphBox& box) const;
    void fill(const QRectF& points, const QColor& color);
    /// A rectangle of a box, in points on the page.
    [[nodiscard]] QRectF areaOf(const QRectF& inBox) const;
    [[nodiscard]] QRectF onPainter(const QRectF& points) const;

    ParagraphLayout& m_layout;
    QPainter& m_painter;
    const TextPaint& m_paint;
    qreal m_top = 0;
};

} // namespace orvane
