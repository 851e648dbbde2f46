// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "text/layout/ParagraphPainter.h"

#include "text/layout/DimmedObject.h"
#include "text/store/TextStore.h"
#include "text/value/LayoutUnits.h"
#include "text/value/OWChartBlock.h"
#include "text/value/OrvaneNoteImageAttachment.h"

#include <QPainter>
#include <QTextDocument>

#include <cmath>

namespace orvane {

namespace {

constexpr qreal u = layoutUnitsPerPoint;
/// How far glyphs may reach out of their lines, in points.
constexpr qreal overhang = 4;

} // namespace

ParagraphPainter::ParagraphPainter(ParagraphLayout& layout, QPainter& painter,
                                   const TextPaint& paint)
    : m_layout(layout)
    , m_painter(painter)
    , m_paint(paint)
{}

QRectF ParagraphPainter::onPainter(const QRectF& points) const
{
    return {m_paint.origin.x() + points.x() * m_paint.scale,
            m_paint.origin.y() + points.y() * m_paint.scale, points.width() * m_paint.scale,
            points.height() * m_paint.scale};
}

QRectF ParagraphPainter::areaOf(const QRectF& inBox) const
{
    return {inBox.left() / u, m_top + inBox.top() / u, inBox.width() / u, inBox.height() / u};
}

void ParagraphPainter::fill(const QRectF& points, const QColor& color)
{
    // On whole pixels, so that neighbouring fills neither overlap nor leave a seam.
    const QRectF rect = onPainter(points);
    const qreal ratio = m_painter.device()->devicePixelRatioF();
    const auto snap = [ratio](qreal value) {
        return std::round(value * ratio) / ratio;
    };
    m_painter.fillRect(QRectF(QPointF(snap(rect.left()), snap(rect.top())),
                              QPointF(snap(rect.right()), snap(rect.bottom()))),
                       color);
}

void ParagraphPainter::paint(const QTextBlock& block)
{
    const ParagraphBox& box = m_layout.box(block);
    m_top = m_layout.topOf(block);
    paintBehind(block);
    if (!box.cell.isNull())
        paintBorders(block, box);
    if (isPageBreak(block))
        paintPageBreak(block, box);
    else
        for (auto [piece, past] = seenPieces(box); piece < past; ++piece)
            paintLines(block, box, piece);
}

std::pair<int, int> ParagraphPainter::seenPieces(const ParagraphBox& box) const
{
    const auto inContent = [&](qreal y) {
        return ((y - m_paint.origin.y()) / m_paint.scale - m_top) * u - box.content.top();
    };
    const int first = box.pieceAtHeight(inContent(m_paint.clip.top()) - overhang * u);
    const int last = box.pieceAtHeight(inContent(m_paint.clip.bottom()) + overhang * u);
    return {first, last + 1};
}

void ParagraphPainter::paintBorders(const QTextBlock& block, const ParagraphBox& box)
{
    const TableCellBlock& cell = *cellOf(block, m_layout.m_styles);
    const QRectF area = areaOf(box.cell);
    // Neighbours share a line, which belongs to the cell right of it or below it.
    const auto sameTable = [&](const QTextBlock& other) {
        return isCell(other, m_layout.m_styles) &&
               cellOf(other, m_layout.m_styles)->table.id == cell.table.id;
    };
    const QTextBlock under = m_layout.below(m_layout.rowStart(block));
    const bool hasRight = sameTable(block.next()) && continuesRow(block.next(), m_layout.m_styles);
    const auto width = [&](BoxEdge edge) {
        return cell.look->borderWidth[std::size_t(edge)];
    };
    const auto line = [&](BoxEdge edge, QRectF rect) {
        const QColor color = cell.look->borderColor[std::size_t(edge)].toQColor();
        if (width(edge) <= 0 || color.alpha() == 0)
            return;
        const qreal thickness =
            std::max(1 / m_painter.device()->devicePixelRatioF() / m_paint.scale, width(edge));
        if (edge == BoxEdge::top || edge == BoxEdge::bottom)
            rect.setHeight(thickness);
        else
            rect.setWidth(thickness);
        fill(rect, color);
    };
    line(BoxEdge::top, area);
    line(BoxEdge::left, area.adjusted(0, width(BoxEdge::top), 0, 0));
    if (!hasRight)
        line(BoxEdge::right, area.translated(area.width() - width(BoxEdge::right), 0));
    if (!sameTable(under))
        line(BoxEdge::bottom, area.translated(0, area.height() - width(BoxEdge::bottom)));
}

void ParagraphPainter::paintBehind(const QTextBlock& block)
{
    const ParagraphStyle& style = *m_layout.m_styles.styleOf(block.blockFormat());
    const ParagraphBox& box = m_layout.box(block);
    if (style.cell && style.cell->look->background)
        fill(areaOf(box.cell), style.cell->look->background->toQColor());
    if (style.background) {
        fill(areaOf(box.content), style.background->toQColor());
    }
    if (style.frame != ParagraphFrame::none)
        paintFrame(style, areaOf(box.content));
    const auto [first, past] = seenPieces(box);
    for (int piece = first; piece < past; ++piece)
        paintHighlights(block, box.pieces[std::size_t(piece)]);
    const TextRange& selection = m_paint.selection;
    const int end = block.position() + block.length();
    if (selection.isEmpty() || selection.location >= end || selection.end() <= block.position())
        return;
    if (!box.cell.isNull() && selection.location <= block.position() && selection.end() >= end) {
        fill(areaOf(box.cell), m_paint.colors.selection);
        return;
    }
    const auto inBlock = [&](qsizetype position) {
        return int(std::clamp<qsizetype>(position - block.position(), 0, block.length()));
    };
    const int from = inBlock(selection.location);
    const int to = inBlock(selection.end());
    for (int piece = first; piece < past; ++piece) {
        const ParagraphPiece& about = box.pieces[std::size_t(piece)];
        const bool isTouched = from <= about.end() && to >= about.start;
        if (!isTouched || !about.hasLines())
            continue;
        for (const QRectF& rect :
             m_layout.rectsInPiece(block, piece, from, to, ParagraphLayout::LineFill::wholeLines))
            fill(rect, m_paint.colors.selection);
    }
}

void ParagraphPainter::paintFrame(const ParagraphStyle& style, const QRectF& area)
{
    constexpr qreal barWidth = 3;
    constexpr qreal ruleShare = 0.25; // of the width
    const bool isMirrored = style.direction == WritingDirection::rightToLeft;
    const auto beginning = [&](qreal width, qreal height) {
        return QRectF(isMirrored ? area.right() - width : area.left(), area.top(), width, height);
    };
    switch (style.frame) {
    case ParagraphFrame::none:
        return;
    case ParagraphFrame::bar: {
        QColor color = style.background ? style.background->toQColor() : m_paint.colors.separator;
        color.setAlpha(255);
        return fill(beginning(barWidth, area.height()), color);
    }
    case ParagraphFrame::ruleAbove: {
        const qreal thin = 1 / m_painter.device()->devicePixelRatioF() / m_paint.scale;
        return fill(beginning(ruleShare * area.width(), thin), m_paint.colors.separator);
    }
    case ParagraphFrame::dashed: {
        QPen pen(m_paint.colors.separator, std::max(1.0, 0.75 * m_paint.scale));
        pen.setDashPattern({4, 3});
        m_painter.save();
        m_painter.setPen(pen);
        m_painter.setBrush(Qt::NoBrush);
        m_painter.drawRect(onPainter(area).adjusted(1, 1, -1, -1));
        m_painter.restore();
        return;
    }
    }
}

void ParagraphPainter::paintHighlights(const QTextBlock& block, const ParagraphPiece& piece)
{
    const TextRange range{block.position() + piece.start, piece.length};
    m_layout.m_store.forEachCharacterRun(
        range, [&](TextRange run, const SharedCharacterStyle& style) {
            if (!style->background)
                return;
            for (const QRectF& rect : m_layout.rectsInBlock(block, run.location, run.end(),
                                                            ParagraphLayout::LineFill::textAlone))
                fill(rect, style->background->toQColor());
        });
}

void ParagraphPainter::paintPageBreak(const QTextBlock& block, const ParagraphBox& box)
{
    const bool isSelected = m_paint.selection.location <= block.position() &&
                            m_paint.selection.end() > block.position();
    const QRectF area = onPainter(areaOf(box.content));
    m_painter.save();
    const qreal inset = 20 * m_paint.scale;
    const qreal middle = std::round(area.center().y()) + 0.5;
    QPen pen(m_paint.colors.separator, std::max(1.0, 0.5 * m_paint.scale));
    pen.setDashPattern({4, 4});
    m_painter.setPen(pen);
    m_painter.drawLine(QPointF(area.left() + inset, middle), QPointF(area.right() - inset, middle));

    QFont font = QFont();
    font.setPixelSize(std::max(1, int(std::round(9 * m_paint.scale))));
    font.setWeight(QFont::Medium);
    const QString label = ParagraphLayout::tr("Page Break");
    QRectF plate = QFontMetricsF(font).boundingRect(label);
    plate.moveCenter(QPointF(area.center().x(), middle));
    const qreal air = m_paint.scale;
    m_painter.fillRect(plate.adjusted(-6 * air, -air, 6 * air, air),
                       isSelected ? m_paint.colors.selection : m_paint.colors.page);
    m_painter.setFont(font);
    m_painter.setPen(m_paint.colors.label);
    m_painter.drawText(plate.adjusted(-2, -2, 2, 2), Qt::AlignCenter, label);
    m_painter.restore();
}

QList<QTextLayout::FormatRange> ParagraphPainter::drawnFormats(const QTextBlock& block,
                                                               const ParagraphPiece& piece) const
{
    QList<QTextLayout::FormatRange> formats;
    const auto place = [&](qsizetype from, qsizetype to, const QTextCharFormat& format) {
        if (from >= to || format.isEmpty())
            return;
        const int first = piece.layout->toLayout(int(from - block.position()));
        const int past = piece.layout->toLayout(int(to - block.position()));
        formats.append({first, past - first, format});
    };
    // Ranges must not overlap: of two the layout draws the first only.
    const TextRange everything{0, std::numeric_limits<int>::max()};
    const TextRange focus = m_paint.focus.value_or(everything);
    const TextRange range{block.position() + piece.start, piece.length};
    m_layout.m_store.forEachCharacterRun(
        range, [&](TextRange run, const SharedCharacterStyle& style) {
            QTextCharFormat shown;
            QTextCharFormat dimmed;
            dimmed.setForeground(m_paint.colors.dimmed);
            dimmed.setProperty(dimmedObjectProperty, true);
            if (!style->link.isEmpty()) {
                if (!style->foreground)
                    shown.setForeground(m_paint.colors.link);
                shown.setFontUnderline(true);
                dimmed.setFontUnderline(true);
            }
            const qsizetype from = run.location;
            const qsizetype to = run.end();
            const qsizetype focusFrom = std::clamp(focus.location, from, to);
            const qsizetype focusTo = std::clamp(focus.end(), focusFrom, to);
            place(from, focusFrom, dimmed);
            place(focusFrom, focusTo, shown);
            place(focusTo, to, dimmed);
        });
    if (const int preedit = piece.layout->preeditStart(); preedit >= 0) {
        for (QTextLayout::FormatRange format : m_layout.m_preedit.formats) {
            format.start += preedit;
            formats.append(format);
        }
    }
    return formats;
}

void ParagraphPainter::paintLines(const QTextBlock& block, const ParagraphBox& box, int index)
{
    const ParagraphPiece& piece = box.pieces[std::size_t(index)];
    if (!piece.hasLines())
        return;
    const qreal scale = m_paint.scale / u;
    const qreal top = box.content.top() + box.topOf(index);
    const QPointF corner(m_paint.origin.x() + box.content.left() * scale,
                         m_paint.origin.y() + m_top * m_paint.scale + top * scale);
    m_painter.save();
    m_painter.translate(corner);
    m_painter.scale(scale, scale);
    m_painter.setPen(m_paint.colors.text);
    const QRectF seen((m_paint.clip.topLeft() - corner) / scale, m_paint.clip.size() / scale);
    // To the toolkit a line is as high as its letters, and an object stands above them.
    qreal above = 0;
    if (piece.layout->characters().contains(QChar(QChar::ObjectReplacementCharacter))) {
        for (const BrokenLine& line : piece.lines)
            above = std::max(above, line.height);
    }
    const QRectF clip = seen.adjusted(0, -overhang * u, 0, overhang * u + above);
    piece.layout->text().draw(&m_painter, {}, drawnFormats(block, piece), clip);
    m_painter.restore();
}

void ParagraphLayout::paint(QPainter& painter, const TextPaint& paint)
{
    const qreal top = (paint.clip.top() - paint.origin.y()) / paint.scale - overhang;
    const qreal bottom = (paint.clip.bottom() - paint.origin.y()) / paint.scale + overhang;
    ParagraphPainter paragraphs(*this, painter, paint);
    for (QTextBlock block = blockAtY(top); block.isValid(); block = block.next()) {
        if (topOf(block) >= bottom)
            return;
        ensureLaidOut(block, top, bottom);
        paragraphs.paint(block);
    }
}

QSizeF attachmentSize(const CharacterStyle& style)
{
    constexpr QSizeF least(1, 1);
    constexpr QSizeF most(4000, 4000);
    QSizeF size(12, 12);
    if (const auto* image = style.imageAttachment())
        size = image->bounds();
    else if (const auto* chart = style.chartAttachment())
        size = QSizeF(chart->chartBlock.width, chart->chartBlock.height);
    return size.expandedTo(least).boundedTo(most);
}

} // namespace orvane
