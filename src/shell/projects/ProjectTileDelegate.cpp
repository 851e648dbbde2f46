// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/projects/ProjectTileDelegate.h"

#include "appearance/Contrast.h"
#include "appearance/CoverColors.h"
#include "appearance/Drawing.h"
#include "appearance/IconChoices.h"
#include "shell/projects/ProjectTilesModel.h"

#include <QPainter>
#include <QPainterPath>

namespace orvane {

namespace {

constexpr int artHeight = 131;
constexpr double corner = 10;

/// The ring of the selected tile: strong while the keyboard is in the list.
void drawSelection(QPainter& painter, const QRectF& tile, const QStyleOptionViewItem& option,
                   const Tokens& t)
{
    if (!option.state.testFlag(QStyle::State_Selected))
        return;
    const bool focused = option.state.testFlag(QStyle::State_HasFocus);
    const QColor& ring = t.on(Surface::Window).accent;
    drawFocusRing(painter, tile, corner,
                  focused ? ring : blended(ring, 0.6, t.on(Surface::Window).ground));
}

/// The cover of a project that is not there: stripes without colour.
void drawHatching(QPainter& painter, const QRectF& art, const SurfaceTokens& card)
{
    constexpr double stripe = 8;
    painter.save();
    painter.setClipRect(art, Qt::IntersectClip);
    painter.setPen(QPen(blended(card.text, 0.05, card.ground), stripe));
    for (double x = art.left() - art.height(); x < art.right(); x += 2.8 * stripe)
        painter.drawLine(QPointF(x, art.bottom() + stripe),
                         QPointF(x + art.height() + 2 * stripe, art.top() - stripe));
    painter.restore();
}

/// A small label in the cover's upper corner, where reading begins.
void drawLabel(QPainter& painter, const QRectF& art, const QString& text,
               Qt::LayoutDirection direction, const SurfaceTokens& card,
               std::optional<Symbol> symbol = {})
{
    constexpr int height = 24;
    constexpr int padding = 8;
    constexpr int inset = 12;
    const QFont font = interfaceFont(TextStyle::Label);
    const int room = symbol ? 20 : 0; // the symbol's
    const int width = QFontMetrics(font).horizontalAdvance(text) + 2 * padding + room;
    const QRect place =
        QStyle::visualRect(direction, art.toRect(),
                           QRect(int(art.left()) + inset, int(art.top()) + inset, width, height));
    drawPanel(painter, place, 4, card.ground, card.border);
    painter.setFont(font);
    painter.setPen(card.text);
    const QRect inside = place.adjusted(padding, 0, -padding, 0);
    if (symbol)
        drawSymbol(painter,
                   QStyle::visualRect(direction, inside,
                                      QRect(inside.left(), inside.top(), 12, inside.height())),
                   *symbol, 12, card.icon);
    painter.drawText(QStyle::visualRect(direction, inside, inside.adjusted(room, 0, 0, 0)),
                     Qt::AlignCenter | Qt::TextSingleLine, text);
}

} // namespace

ProjectTileDelegate::ProjectTileDelegate(const Look& look, QObject* parent)
    : QStyledItemDelegate(parent)
    , m_look(look)
{}

QSize ProjectTileDelegate::sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const
{
    return {m_tileWidth + gap, tileHeight + gap};
}

void ProjectTileDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                const QModelIndex& index) const
{
    const QRect tile(option.rect.topLeft(), QSize(m_tileWidth, tileHeight));
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    if (index.data(ProjectTilesModel::ProjectFolderRole).toString().isEmpty())
        paintNewProject(*painter, tile, option, index.data(Qt::DisplayRole).toString());
    else
        paintProject(*painter, tile, option, index);
    painter->restore();
}

void ProjectTileDelegate::paintProject(QPainter& painter, const QRect& tile,
                                       const QStyleOptionViewItem& option,
                                       const QModelIndex& index) const
{
    const Tokens& t = m_look.tokens();
    const SurfaceTokens& card = t.on(Surface::Card);
    const bool hovered = option.state.testFlag(QStyle::State_MouseOver);
    const QRectF art(tile.left(), tile.top(), tile.width(), artHeight);

    QPainterPath outline;
    outline.addRoundedRect(QRectF(tile).adjusted(0.5, 0.5, -0.5, -0.5), corner - 0.5, corner - 0.5);
    painter.fillPath(outline, hovered ? blended(card.text, 0.03, card.ground) : card.ground);
    const bool isMissing = index.data(ProjectTilesModel::IsMissingRole).toBool();
    const bool isSetAside = index.data(ProjectTilesModel::IsSetAsideRole).toBool();
    const QString stored = index.data(ProjectTilesModel::IconNameRole).toString();
    const CoverColors cover =
        coverColors(index.data(ProjectTilesModel::CoverColorRole).toString(), stored, t,
                    hovered ? CoverState::Hovered : CoverState::Plain);
    QLinearGradient wash(art.topLeft(), QPointF(art.left() + art.width() * 0.6, art.bottom()));
    wash.setColorAt(0, cover.washStart);
    wash.setColorAt(0.85, cover.washEnd);
    wash.setColorAt(1, card.ground);
    painter.save();
    painter.setClipPath(outline);
    if (isMissing)
        drawHatching(painter, art, card);
    else
        painter.fillRect(art, wash);
    painter.fillRect(QRectF(art.left(), art.bottom() - 1, art.width(), 1), card.border);
    painter.restore();
    painter.setPen(QPen(card.border, 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(outline);

    const QColor ink = isMissing ? card.textSecondary : cover.ink;
    if (hasIconDrawing(stored))
        drawStoredIcon(painter, art, stored, 40, ink);
    else
        drawSymbol(painter, art, projectSymbol(stored), 40, ink);
    if (isMissing)
        drawLabel(painter, art, tr("Not there"), option.direction, card);
    else if (index.data(ProjectTilesModel::IsHeldRole).toBool())
        drawLabel(painter, art, tr("Open elsewhere"), option.direction, card, Symbol::Locked);
    else if (isSetAside)
        drawLabel(painter, art, tr("Set aside"), option.direction, card);

    const QRect words = tile.adjusted(17, artHeight, -17, 0);
    const QFont titleFont = interfaceFont(TextStyle::BodyStrong);
    const QFont labelFont = interfaceFont(TextStyle::Label);
    const QString title = QFontMetrics(titleFont).elidedText(
        index.data(Qt::DisplayRole).toString().simplified(), Qt::ElideRight, words.width());
    const QString details = QFontMetrics(labelFont).elidedText(
        index.data(ProjectTilesModel::DetailsRole).toString(), Qt::ElideRight, words.width());
    painter.setFont(titleFont);
    painter.setPen(isMissing ? card.textSecondary : card.text);
    painter.drawText(QRect(words.left(), words.top() + 12, words.width(), 20),
                     Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine, title);
    painter.setFont(labelFont);
    painter.setPen(card.textSecondary);
    painter.drawText(QRect(words.left(), words.top() + 33, words.width(), 18),
                     Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine, details);
    drawSelection(painter, tile, option, t);
}

void ProjectTileDelegate::paintNewProject(QPainter& painter, const QRect& tile,
                                          const QStyleOptionViewItem& option,
                                          const QString& text) const
{
    const Tokens& t = m_look.tokens();
    const SurfaceTokens& window = t.on(Surface::Window);
    const bool hovered = option.state.testFlag(QStyle::State_MouseOver);
    if (hovered)
        drawPanel(painter, tile, corner, blended(window.text, 0.03, window.ground));
    drawDashedEdge(painter, tile, corner,
                   blended(window.text, hovered ? 0.3 : 0.12, window.ground));
    const QRect middle(tile.left(), tile.center().y() - 28, tile.width(), 56);
    const QColor ink = hovered ? window.text : window.textSecondary;
    drawSymbol(painter, QRectF(middle.left(), middle.top(), middle.width(), 28), Symbol::Plus, 22,
               ink);
    painter.setPen(ink);
    painter.setFont(interfaceFont(TextStyle::Body));
    painter.drawText(QRect(middle.left(), middle.top() + 32, middle.width(), 22), Qt::AlignCenter,
                     text);
    drawSelection(painter, tile, option, t);
}

} // namespace orvane
