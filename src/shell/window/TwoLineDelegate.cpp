// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/window/TwoLineDelegate.h"

#include "appearance/Drawing.h"

#include <QPainter>

namespace orvane {

namespace {

constexpr int margin = 12;
constexpr int symbolSize = 16;
constexpr int symbolGap = 10;
constexpr int titleTop = 6;
constexpr int lineTop = 25;
constexpr int lineHeight = 18;
constexpr double corner = 6;

} // namespace

TwoLineDelegate::TwoLineDelegate(Symbol symbol, Look& look, QObject* parent)
    : QStyledItemDelegate(parent)
    , m_symbol(symbol)
    , m_look(look)
{}

QSize TwoLineDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const
{
    return {0, rowHeight};
}

void TwoLineDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const
{
    const SurfaceTokens& t = m_look.tokens().on(Surface::Card);
    const bool isSelected = option.state.testFlag(QStyle::State_Selected);
    const bool hasFocus = isSelected && option.state.testFlag(QStyle::State_HasFocus);
    if (isSelected)
        drawPanel(*painter, option.rect.adjusted(1, 1, -1, -1), corner, t.selectedRow,
                  hasFocus ? t.accent : QColor());
    const auto placed = [&](const QRect& rect) {
        return QStyle::visualRect(option.direction, option.rect, rect);
    };
    const QRect row = option.rect;
    drawSymbol(*painter, placed({row.left() + margin, row.top(), symbolSize, row.height()}),
               m_symbol, symbolSize, t.icon);
    const int left = margin + symbolSize + symbolGap;
    const int width = row.width() - left - margin;
    const auto draw = [&](TextStyle style, const QColor& ink, int top, const QString& text) {
        const QFont font = interfaceFont(style);
        painter->setFont(font);
        painter->setPen(ink);
        painter->drawText(
            placed({row.left() + left, row.top() + top, width, lineHeight}),
            QStyle::visualAlignment(option.direction, Qt::AlignLeft | Qt::AlignVCenter),
            QFontMetrics(font).elidedText(text, Qt::ElideRight, width));
    };
    draw(TextStyle::BodyMedium, isSelected ? t.textOnSelectedRow : t.text, titleTop,
         index.data(Qt::DisplayRole).toString());
    draw(TextStyle::Label, isSelected ? t.textSecondaryOnSelectedRow : t.textSecondary, lineTop,
         index.data(LineRole).toString());
}

} // namespace orvane
