// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// The part of BinderTreeView that drags rows and shows where they would go.
#include "appearance/Drawing.h"
#include "shell/binder/BinderModel.h"
#include "shell/binder/BinderTreeView.h"

#include <QDrag>
#include <QDragMoveEvent>
#include <QMimeData>
#include <QPainter>

namespace orvane {

namespace {

// Only the Binder itself reads it: a row dropped into another program would mean nothing there.
const QString rowMimeType = QStringLiteral("application/x-orvaneworkspace-binder-row");
constexpr int restBeforeOpening = 700;
constexpr int guideInset = 8;

std::optional<BinderRowID> draggedRow(const QMimeData& data)
{
    return BinderDragPayload::parse(QString::fromUtf8(data.data(rowMimeType)));
}

} // namespace

BinderRowID BinderTreeView::rowIdOf(const QModelIndex& index) const
{
    const bool isFolder = index.data(BinderModel::IsFolderRole).toBool();
    return {isFolder ? BinderRowID::Kind::Folder : BinderRowID::Kind::Note,
            index.data(BinderModel::IdRole).toUuid()};
}

void BinderTreeView::startDrag(Qt::DropActions)
{
    const QModelIndex index = currentIndex();
    if (!index.isValid() || !index.flags().testFlag(Qt::ItemIsDragEnabled))
        return;
    auto* data = new QMimeData;
    data->setData(rowMimeType, BinderDragPayload::text(rowIdOf(index)).toUtf8());
    auto* drag = new QDrag(this);
    drag->setMimeData(data);
    const QRect row = visualRect(index);
    QPixmap picture(QSize(std::min(viewport()->width(), 240), row.height()) * devicePixelRatioF());
    picture.setDevicePixelRatio(devicePixelRatioF());
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setOpacity(0.85);
    const QRect ground(0, 0, int(picture.width() / devicePixelRatioF()), row.height());
    const SurfaceTokens& card = m_look.tokens().on(Surface::Card);
    drawPanel(painter, ground, 6, card.ground, card.border);
    painter.setFont(interfaceFont(TextStyle::BodyMedium));
    painter.setPen(card.text);
    painter.drawText(ground.adjusted(12, 0, -12, 0), Qt::AlignVCenter,
                     painter.fontMetrics().elidedText(index.data().toString(), Qt::ElideRight,
                                                      ground.width() - 24));
    painter.end();
    drag->setPixmap(picture);
    drag->setHotSpot({12, row.height() / 2});
    drag->exec(Qt::MoveAction);
    showGuide(std::nullopt);
}

std::optional<BinderTreeView::DropGuide> BinderTreeView::guideAt(const QPoint& position,
                                                                 const QMimeData& data) const
{
    const auto dragged = draggedRow(data);
    if (!dragged || !m_resolveDrop)
        return std::nullopt;
    const QModelIndex index = indexAt(position);
    const QRect row = index.isValid() ? visualRect(index) : QRect();
    const auto target = index.isValid() ? std::optional(rowIdOf(index)) : std::nullopt;
    const double y = position.y() - row.top();
    const auto move = m_resolveDrop(*dragged, target, y);
    if (!move)
        return std::nullopt;
    DropGuide guide{*move, {}, {}};
    const QRect wide(guideInset, row.top(), viewport()->width() - 2 * guideInset, row.height());
    const bool goesInto = target && target->kind == BinderRowID::Kind::Folder &&
                          move->container == target->id &&
                          (dragged->kind == BinderRowID::Kind::Folder || !move->before);
    if (goesInto) {
        guide.folder = wide;
    } else if (!index.isValid()) {
        // Below the last row, which is the one before the gap where there is one.
        const int bottom = m_gapAboveTrash > 0 ? QTreeView::visualRect(trashIndex()).top()
                                               : visualRect(lastRow()).bottom();
        guide.line = QRect(guideInset, bottom, wide.width(), 2);
    } else {
        const bool isNote = target->kind == BinderRowID::Kind::Note;
        const bool above = y < (isNote ? noteHeight / 2 : folderHeight / 2);
        guide.line = QRect(wide.left(), above ? row.top() - 1 : row.bottom(), wide.width(), 2);
    }
    return guide;
}

void BinderTreeView::showGuide(const std::optional<DropGuide>& guide)
{
    m_guide = guide;
    viewport()->update();
}

void BinderTreeView::dragEnterEvent(QDragEnterEvent* event)
{
    if (draggedRow(*event->mimeData()))
        event->acceptProposedAction();
    else
        event->ignore();
}

void BinderTreeView::dragMoveEvent(QDragMoveEvent* event)
{
    QAbstractItemView::dragMoveEvent(event); // NOLINT(bugprone-parent-virtual-call): scrolls only
    const QPoint position = event->position().toPoint();
    showGuide(guideAt(position, *event->mimeData()));
    const QModelIndex index = indexAt(position);
    if (m_restingOn != index) {
        m_restingOn = index;
        const bool opens = index.isValid() && !isExpanded(index) && model()->hasChildren(index);
        if (opens)
            m_openTimer.start(restBeforeOpening, this);
        else
            m_openTimer.stop();
    }
    if (m_guide) {
        event->setDropAction(Qt::MoveAction);
        event->accept();
    } else {
        event->ignore();
    }
}

void BinderTreeView::dragLeaveEvent(QDragLeaveEvent* event)
{
    QAbstractItemView::dragLeaveEvent(event);
    m_openTimer.stop();
    showGuide(std::nullopt);
}

void BinderTreeView::dropEvent(QDropEvent* event)
{
    m_openTimer.stop();
    stopAutoScroll();
    setState(NoState);
    const auto guide = guideAt(event->position().toPoint(), *event->mimeData());
    showGuide(std::nullopt);
    if (!guide) {
        event->ignore();
        return;
    }
    event->setDropAction(Qt::MoveAction);
    event->accept();
    emit dropped(guide->move);
}

void BinderTreeView::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_openTimer.timerId())
        return QTreeView::timerEvent(event);
    m_openTimer.stop();
    if (m_restingOn.isValid())
        expand(m_restingOn);
}

void BinderTreeView::paintEvent(QPaintEvent* event)
{
    QTreeView::paintEvent(event);
    if (!m_guide)
        return;
    QPainter painter(viewport());
    const QColor& accent = m_look.tokens().on(Surface::Binder).accent;
    if (m_guide->folder.isValid())
        drawFocusRing(painter, m_guide->folder, 6, accent);
    else
        painter.fillRect(m_guide->line, accent);
}

} // namespace orvane
