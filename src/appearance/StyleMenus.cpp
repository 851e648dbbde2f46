// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// How the style draws menus.
#include "appearance/Drawing.h"
#include "appearance/OrvaneStyle.h"
#include "appearance/Typography.h"

#include <QPainter>
#include <QStyleOption>

namespace orvane {

namespace {

constexpr int rowHeight = 28;
/// Of an item whose text has a second line, which says what it is for.
constexpr int explainedRowHeight = 42;
constexpr int separatorHeight = 9;
constexpr int sidePadding = 10;
constexpr int iconColumn = 24;

/// Pictures and the marks of chosen items share a column.
bool hasLeadingColumn(const QStyleOptionMenuItem& option)
{
    return option.maxIconWidth > 0 || option.menuHasCheckableItems;
}

} // namespace

void OrvaneStyle::drawMenuItem(const QStyleOptionMenuItem& option, QPainter& painter) const
{
    const SurfaceTokens& card = m_tokens.on(Surface::Card);
    if (option.menuItemType == QStyleOptionMenuItem::Separator) {
        painter.fillRect(QRect(option.rect.left() + sidePadding,
                               option.rect.top() + separatorHeight / 2,
                               option.rect.width() - 2 * sidePadding, 1),
                         card.border);
        return;
    }
    const bool enabled = option.state.testFlag(State_Enabled);
    if (enabled && option.state.testFlag(State_Selected)) {
        drawPanel(painter, option.rect, 6, card.selectedRow);
    }
    const bool chosen = enabled && option.state.testFlag(State_Selected);
    QColor ink = chosen ? card.textOnSelectedRow : card.text;
    QColor second = chosen ? card.textSecondaryOnSelectedRow : card.textSecondary;
    if (!enabled) {
        ink.setAlphaF(0.4F);
        second.setAlphaF(0.4F);
    }
    QRect rect = option.rect.adjusted(sidePadding, 0, -sidePadding, 0);
    if (hasLeadingColumn(option)) {
        if (option.checked) {
            drawCheckMark(
                painter, QRectF(rect.left(), rect.top() + (rect.height() - 14) / 2.0, 14, 14), ink);
        } else if (!option.icon.isNull()) {
            const QPixmap pixmap = option.icon.pixmap(QSize(16, 16), deviceRatio(painter),
                                                      enabled ? QIcon::Normal : QIcon::Disabled);
            painter.drawPixmap(rect.left(), rect.top() + (rect.height() - 16) / 2, pixmap);
        }
        rect.setLeft(rect.left() + iconColumn);
    }
    const QStringList parts = option.text.split(u'\t');
    const QStringList lines = parts.value(0).split(u'\n');
    QRect first = rect;
    if (lines.size() > 1) {
        first = QRect(rect.left(), rect.top() + 5, rect.width(), 18);
        drawTextLine(painter, QRect(rect.left(), rect.top() + 23, rect.width(), 14),
                     interfaceFont(TextStyle::Label), second, lines.at(1));
    }
    painter.setFont(option.font);
    painter.setPen(ink);
    painter.drawText(first, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextHideMnemonic, lines.first());
    if (parts.size() > 1) {
        painter.setPen(second);
        painter.drawText(rect, Qt::AlignVCenter | Qt::AlignRight, parts.at(1));
    }
    if (option.menuItemType == QStyleOptionMenuItem::SubMenu)
        drawSymbol(painter, QRectF(rect.right() - 12, rect.top(), 12, rect.height()),
                   Symbol::ChevronRight, 12, second);
}

QSize OrvaneStyle::menuItemSize(const QStyleOptionMenuItem& option) const
{
    if (option.menuItemType == QStyleOptionMenuItem::Separator)
        return {10, separatorHeight};
    const QStringList parts = option.text.split(u'\t');
    const QStringList lines = parts.value(0).split(u'\n');
    int width = option.fontMetrics.horizontalAdvance(lines.first());
    if (lines.size() > 1)
        width = qMax(width,
                     QFontMetrics(interfaceFont(TextStyle::Label)).horizontalAdvance(lines.at(1)));
    width += 2 * sidePadding;
    if (parts.size() > 1)
        width += option.fontMetrics.horizontalAdvance(parts.at(1)) + 32;
    if (hasLeadingColumn(option))
        width += iconColumn;
    if (option.menuItemType == QStyleOptionMenuItem::SubMenu)
        width += 20;
    return {qMax(width, 160), lines.size() > 1 ? explainedRowHeight : rowHeight};
}

} // namespace orvane
