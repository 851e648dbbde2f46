// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/commands/CommandPaletteDelegate.h"

#include "appearance/Drawing.h"

#include <QPainter>
#include <QTextLayout>

namespace orvane {

namespace {

constexpr int lineHeight = 38;
constexpr int headHeight = 32;
constexpr int margin = 18;
constexpr int symbolSize = 16;
constexpr int titleLeft = margin + symbolSize + 12;
constexpr int gap = 12;

void drawCommand(QPainter& painter, const QRect& rect, const QString& drawing, const QColor& color)
{
    const int pixels = int(std::ceil(symbolSize * deviceRatio(painter)));
    drawCentred(painter, rect,
                themeDrawingPixmap(QStringLiteral("actions"), drawing, pixels, color), symbolSize);
}

} // namespace

CommandPaletteDelegate::CommandPaletteDelegate(Look& look, QObject* parent)
    : QStyledItemDelegate(parent)
    , m_look(look)
{}

QSize CommandPaletteDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex& index) const
{
    const bool isHead = !(index.flags() & Qt::ItemIsSelectable);
    return {0, isHead ? headHeight : lineHeight};
}

void CommandPaletteDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                   const QModelIndex& index) const
{
    const auto* model = static_cast<const CommandPaletteModel*>(index.model());
    const PaletteLine line = model->line(index);
    if (!(index.flags() & Qt::ItemIsSelectable))
        return paintHead(*painter, option.rect, line.title);
    const SurfaceTokens& t = m_look.tokens().on(Surface::Card);
    const bool marked = option.state.testFlag(QStyle::State_Selected);
    if (marked) {
        painter->fillRect(option.rect, t.selectedRow);
        painter->fillRect(QRect(option.rect.topLeft(), QSize(2, option.rect.height())), t.accent);
    }
    const QColor ink = marked ? t.textOnSelectedRow : t.text;
    const QColor secondary = marked ? t.textSecondaryOnSelectedRow : t.textSecondary;
    const QRect symbol(option.rect.left() + margin, option.rect.top(), symbolSize, lineHeight);
    if (line.drawing.isEmpty())
        drawSymbol(*painter, symbol, line.symbol, symbolSize, t.icon);
    else
        drawCommand(*painter, symbol, line.drawing, t.icon);

    QRect room = option.rect.adjusted(titleLeft, 0, -margin, 0);
    if (!line.key.isEmpty())
        room.setRight(drawKeyChip(*painter, room, line.key, secondary, t.border) - gap);
    room.setLeft(paintTitle(*painter, room, line, ink) + gap);
    if (line.place.isEmpty() || room.width() < 40)
        return;
    const QFont small = interfaceFont(TextStyle::Label);
    painter->setFont(small);
    painter->setPen(secondary);
    painter->drawText(room, Qt::AlignLeft | Qt::AlignVCenter,
                      QFontMetrics(small).elidedText(line.place, Qt::ElideRight, room.width()));
}

void CommandPaletteDelegate::paintHead(QPainter& painter, const QRect& rect,
                                       const QString& title) const
{
    painter.setFont(interfaceFont(TextStyle::SectionHead));
    painter.setPen(m_look.tokens().on(Surface::Card).textSecondary);
    painter.drawText(rect.adjusted(margin, 6, -margin, 0), Qt::AlignLeft | Qt::AlignVCenter, title);
}

int CommandPaletteDelegate::paintTitle(QPainter& painter, const QRect& rect,
                                       const PaletteLine& line, const QColor& ink) const
{
    const QFont font = interfaceFont(TextStyle::BodyMedium);
    const QString shown = QFontMetrics(font).elidedText(line.title, Qt::ElideRight, rect.width());
    QTextLayout layout(shown, font);
    QList<QTextLayout::FormatRange> formats;
    for (const qsizetype place : line.found) {
        if (place >= shown.size() || shown[place] != line.title[place])
            break;
        QTextLayout::FormatRange range;
        range.start = int(place);
        range.length = 1;
        range.format.setForeground(m_look.tokens().on(Surface::Card).accent);
        formats.append(range);
    }
    layout.setFormats(formats);
    layout.beginLayout();
    QTextLine textLine = layout.createLine();
    textLine.setLineWidth(rect.width() + 1);
    layout.endLayout();
    painter.setPen(ink);
    const double top = rect.top() + (rect.height() - textLine.height()) / 2;
    layout.draw(&painter, QPointF(rect.left(), top));
    return rect.left() + int(std::ceil(textLine.naturalTextWidth()));
}

} // namespace orvane
