// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/binder/BinderTreeView.h"

#include "appearance/Contrast.h"
#include "appearance/Drawing.h"
#include "appearance/IconChoices.h"
#include "core/records/Wording.h"
#include "shell/binder/BinderModel.h"

#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>

namespace orvane {

namespace {

/// Distance of a row's ground from the edges of the pane.
constexpr int inset = 8;
constexpr int rightPadding = 16;
constexpr int leftEdge = 16;
constexpr int symbolSize = 16;

/// Rows of two heights, and a field over the title while it is edited.
class RowDelegate final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const override
    {
        const bool isFolder = index.data(BinderModel::IsFolderRole).toBool();
        const int left = leftEdge +
                         index.data(BinderModel::DepthRole).toInt() * BinderTreeView::indent +
                         (isFolder ? 38 : 18);
        const int right = editor->parentWidget()->width() - rightPadding + 4;
        editor->setGeometry(left, option.rect.center().y() - 13, right - left, 28);
    }
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem&,
                                 const QModelIndex& index) const override
    {
        if (!index.data(BinderModel::IsFolderRole).toBool())
            return {100, BinderTreeView::noteHeight};
        const auto* tree = static_cast<const BinderTreeView*>(parent());
        const bool isTrash = index.data(BinderModel::IsTrashRole).toBool();
        return {100, BinderTreeView::folderHeight + (isTrash ? tree->gapAboveTrash() : 0)};
    }
};

/// The picture that was chosen for the row, else the usual one of its kind.
void drawPicture(QPainter& painter, const QRectF& rect, const QModelIndex& index, Symbol usual,
                 const QColor& ink)
{
    const QString chosen = index.data(BinderModel::IconRole).toString();
    if (!chosen.isEmpty() && hasIconDrawing(chosen))
        drawStoredIcon(painter, rect, chosen, symbolSize, ink);
    else
        drawSymbol(painter, rect, usual, symbolSize, ink);
}

int leftOf(const QModelIndex& index)
{
    return leftEdge + index.data(BinderModel::DepthRole).toInt() * BinderTreeView::indent;
}

} // namespace

BinderTreeView::BinderTreeView(Look& look, QWidget* parent)
    : QTreeView(parent)
    , m_look(look)
{
    setHeaderHidden(true);
    setRootIsDecorated(false);
    setIndentation(0);
    setFrameShape(QFrame::NoFrame);
    setMouseTracking(true);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setExpandsOnDoubleClick(false);
    setAnimated(false);
    setItemDelegate(new RowDelegate(this));
    setDragEnabled(true);
    setAcceptDrops(true);
    setDragDropMode(QAbstractItemView::DragDrop);
    setAutoScroll(true);
    setAccessibleName(tr("Binder"));
    connect(&look, &Look::changed, this, &BinderTreeView::applyLook);
    applyLook();
}

void BinderTreeView::applyLook()
{
    setPalette(m_look.palette(Surface::Binder));
    // The backdrop's gradient runs through the whole pane, so the pane paints it.
    const SurfaceTokens& t = m_look.tokens().on(Surface::Binder);
    viewport()->setAutoFillBackground(t.groundTop == t.groundBottom);
}

QRect BinderTreeView::chevronRect(const QRect& row, const QModelIndex& index) const
{
    return {leftOf(index) - 4, row.top(), 24, row.height()};
}

QModelIndex BinderTreeView::trashIndex() const
{
    const QModelIndex last = model() ? model()->index(model()->rowCount() - 1, 0) : QModelIndex();
    return last.data(BinderModel::IsTrashRole).toBool() ? last : QModelIndex();
}

QModelIndex BinderTreeView::lastRow() const
{
    QModelIndex last = model() ? model()->index(model()->rowCount() - 1, 0) : QModelIndex();
    while (last.isValid() && isExpanded(last) && model()->rowCount(last) > 0)
        last = model()->index(model()->rowCount(last) - 1, 0, last);
    return last;
}

QRect BinderTreeView::visualRect(const QModelIndex& index) const
{
    QRect rect = QTreeView::visualRect(index);
    if (m_gapAboveTrash > 0 && rect.isValid() && index == trashIndex())
        rect.setTop(rect.top() + m_gapAboveTrash);
    return rect;
}

QModelIndex BinderTreeView::indexAt(const QPoint& point) const
{
    const QModelIndex index = QTreeView::indexAt(point);
    const bool isInGap = m_gapAboveTrash > 0 && index.isValid() && index == trashIndex() &&
                         point.y() < visualRect(index).top();
    return isInGap ? QModelIndex() : index;
}

void BinderTreeView::initViewItemOption(QStyleOptionViewItem* option) const
{
    if (!m_sumsHeights)
        QTreeView::initViewItemOption(option);
}

void BinderTreeView::updateGeometries()
{
    m_sumsHeights = true;
    QTreeView::updateGeometries();
    m_sumsHeights = false;
    const int overflow = verticalScrollBar()->maximum();
    int gap = 0;
    if (overflow > 0)
        gap = std::max(m_gapAboveTrash - overflow, 0);
    else if (trashIndex().isValid())
        gap = std::max(viewport()->height() - 1 - QTreeView::visualRect(lastRow()).bottom() +
                           m_gapAboveTrash,
                       0);
    if (gap == m_gapAboveTrash)
        return;
    m_gapAboveTrash = gap;
    scheduleDelayedItemsLayout();
}

void BinderTreeView::drawRow(QPainter* painter, const QStyleOptionViewItem& options,
                             const QModelIndex& index) const
{
    QRect row(0, options.rect.top(), viewport()->width(), options.rect.height());
    if (m_gapAboveTrash > 0 && index == trashIndex())
        row.setTop(row.top() + m_gapAboveTrash);
    const bool selected = selectionModel()->isSelected(index);
    const QPoint mouse = viewport()->mapFromGlobal(QCursor::pos());
    const bool hovered = viewport()->underMouse() && row.contains(mouse);
    drawRowGround(*painter, row.adjusted(inset, 0, -inset, 0), {selected, hovered, hasFocus()},
                  m_look.tokens().on(Surface::Binder));
    if (index.data(BinderModel::IsFolderRole).toBool())
        drawFolder(*painter, row, index, selected);
    else
        drawNote(*painter, row, index, selected);
}

void BinderTreeView::drawFolder(QPainter& painter, const QRect& row, const QModelIndex& index,
                                bool selected) const
{
    const SurfaceTokens& t = m_look.tokens().on(Surface::Binder);
    const QColor ink = selected ? t.textOnSelectedRow : t.text;
    const QColor second = selected ? t.textSecondaryOnSelectedRow : t.textSecondary;
    const int left = leftOf(index);
    if (model()->hasChildren(index))
        drawSymbol(painter, QRectF(left, row.top(), 12, row.height()),
                   isExpanded(index) ? Symbol::ChevronDown : Symbol::ChevronRight, 12, second);
    const bool isTrash = index.data(BinderModel::IsTrashRole).toBool();
    drawPicture(painter, QRectF(left + 20, row.top(), symbolSize, row.height()), index,
                isTrash ? Symbol::Trash : Symbol::Folder, t.icon);
    const QString count = grouped(index.data(BinderModel::CountRole).toInt());
    const QFont label = interfaceFont(TextStyle::Label);
    const int countWidth = QFontMetrics(label).horizontalAdvance(count);
    const QRect right(row.width() - rightPadding - countWidth, row.top(), countWidth, row.height());
    drawTextLine(painter, right.adjusted(0, 0, 2, 0), label, second, count);
    QRect rest(row.left(), row.top(), right.left() - 8 - row.left(), row.height());
    drawTrailing(painter, rest, index);
    const int titleLeft = left + 44;
    drawTextLine(painter, QRect(titleLeft, row.top(), rest.right() - titleLeft, row.height()),
                 interfaceFont(TextStyle::BodyMedium), ink, index.data().toString());
}

void BinderTreeView::drawNote(QPainter& painter, const QRect& row, const QModelIndex& index,
                              bool selected) const
{
    const SurfaceTokens& t = m_look.tokens().on(Surface::Binder);
    const int left = leftOf(index);
    const bool isPdf = index.data(BinderModel::IsPdfRole).toBool();
    const QColor second = selected ? t.textSecondaryOnSelectedRow : t.textSecondary;
    drawPicture(painter, QRectF(left, row.top(), symbolSize, row.height()), index,
                isPdf ? Symbol::PdfNote : Symbol::Note, second);
    const int textLeft = left + 24;
    QRect rest(row.left(), row.top(), row.width() - rightPadding - row.left(), row.height());
    drawTrailing(painter, rest, index);
    const int width = rest.right() + 1 - textLeft;
    drawTextLine(painter, QRect(textLeft, row.top() + 3, width, 18),
                 interfaceFont(TextStyle::BodyMedium), selected ? t.textOnSelectedRow : t.text,
                 index.data().toString());
    drawTextLine(painter, QRect(textLeft, row.top() + 20, width, 15),
                 interfaceFont(TextStyle::Label), second,
                 index.data(BinderModel::SecondLineRole).toString());
}

// Pin and tag dots from the right; `row` is cut to what is left of them.
void BinderTreeView::drawTrailing(QPainter& painter, QRect& row, const QModelIndex& index) const
{
    constexpr int dot = 6;
    constexpr int mostDots = 4;
    const QStringList tags = index.data(BinderModel::TagsRole).toStringList();
    const SurfaceTokens& t = m_look.tokens().on(Surface::Binder);
    if (m_tagColor) {
        painter.setPen(Qt::NoPen);
        painter.setRenderHint(QPainter::Antialiasing);
        for (qsizetype i = std::min<qsizetype>(tags.size(), mostDots); i-- > 0;) {
            painter.setBrush(readableInk(m_tagColor(tags.at(i)),
                                         {t.ground, t.hoveredRow, t.selectedRow}, iconContrast));
            painter.drawEllipse(
                QRectF(row.right() + 1 - dot, row.center().y() - dot / 2.0 + 1, dot, dot));
            row.setRight(row.right() - dot - 6);
        }
    }
    if (index.data(BinderModel::IsPinnedRole).toBool()) {
        drawSymbol(painter, QRectF(row.right() - 11, row.top(), 12, row.height()), Symbol::Pin, 12,
                   t.textSecondary);
        row.setRight(row.right() - 16);
    }
}

void BinderTreeView::mousePressEvent(QMouseEvent* event)
{
    const QModelIndex index = indexAt(event->pos());
    const bool opens = event->button() == Qt::LeftButton && index.isValid() &&
                       model()->hasChildren(index) &&
                       chevronRect(visualRect(index), index).contains(event->pos());
    if (opens) {
        setExpanded(index, !isExpanded(index));
        event->accept();
        return;
    }
    QTreeView::mousePressEvent(event);
}

void BinderTreeView::mouseDoubleClickEvent(QMouseEvent* event)
{
    const QModelIndex index = indexAt(event->pos());
    if (event->button() != Qt::LeftButton || !index.isValid())
        return;
    if (index.data(BinderModel::IsFolderRole).toBool())
        setExpanded(index, !isExpanded(index));
    else
        emit noteActivated();
}

namespace {

bool movesRows(const QKeyEvent& event)
{
    const bool isArrow = event.key() == Qt::Key_Up || event.key() == Qt::Key_Down ||
                         event.key() == Qt::Key_Left || event.key() == Qt::Key_Right;
    // Arrows of a number pad say so, too.
    return isArrow && (event.modifiers() & ~Qt::KeypadModifier) == Qt::AltModifier;
}

} // namespace

// Who comes with the keyboard finds a row that shows where they are.
void BinderTreeView::focusInEvent(QFocusEvent* event)
{
    QTreeView::focusInEvent(event);
    const bool isByKey =
        event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason ||
        event->reason() == Qt::OtherFocusReason || event->reason() == Qt::ShortcutFocusReason;
    if (isByKey && currentIndex().isValid() && !selectionModel()->hasSelection())
        selectionModel()->setCurrentIndex(currentIndex(), QItemSelectionModel::ClearAndSelect);
}

bool BinderTreeView::event(QEvent* event)
{
    // Before the window goes back and forward by the same keys.
    if (event->type() == QEvent::ShortcutOverride && movesRows(*static_cast<QKeyEvent*>(event))) {
        event->accept();
        return true;
    }
    return QTreeView::event(event);
}

void BinderTreeView::keyPressEvent(QKeyEvent* event)
{
    if (movesRows(*event)) {
        emit moveRequested(Qt::Key(event->key()));
        return;
    }
    const bool isPlain = event->modifiers() == Qt::NoModifier;
    switch (isPlain ? event->key() : 0) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return activateCurrent();
    case Qt::Key_Left:
        return collapseCurrent();
    case Qt::Key_Right:
        return expandCurrent();
    case Qt::Key_F2:
        return renameCurrent();
    case Qt::Key_Delete:
        emit removalRequested();
        return;
    default:
        QTreeView::keyPressEvent(event);
    }
}

void BinderTreeView::renameCurrent()
{
    const QModelIndex index = currentIndex();
    if (index.isValid() && index.flags().testFlag(Qt::ItemIsEditable))
        edit(index);
}

void BinderTreeView::contextMenuEvent(QContextMenuEvent* event)
{
    const bool byKey = event->reason() == QContextMenuEvent::Keyboard;
    const QModelIndex index = byKey ? currentIndex() : indexAt(event->pos());
    if (index.isValid() && !selectionModel()->isSelected(index))
        selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect);
    const QPoint place =
        byKey && index.isValid()
            ? viewport()->mapToGlobal(visualRect(index).bottomLeft() + QPoint(24, 0))
            : event->globalPos();
    emit menuRequested(index.isValid() ? std::optional(rowIdOf(index)) : std::nullopt, place);
}

void BinderTreeView::activateCurrent()
{
    const QModelIndex index = currentIndex();
    if (!index.isValid())
        return;
    if (index.data(BinderModel::IsFolderRole).toBool())
        setExpanded(index, !isExpanded(index));
    else
        emit noteActivated();
}

void BinderTreeView::expandCurrent()
{
    const QModelIndex index = currentIndex();
    if (!index.isValid() || !model()->hasChildren(index))
        return;
    if (isExpanded(index))
        stepCurrent(1);
    else
        setExpanded(index, true);
}

void BinderTreeView::collapseCurrent()
{
    const QModelIndex index = currentIndex();
    if (index.isValid() && isExpanded(index))
        setExpanded(index, false);
    else if (index.parent().isValid())
        selectionModel()->setCurrentIndex(index.parent(), QItemSelectionModel::ClearAndSelect);
}

void BinderTreeView::stepCurrent(int rows)
{
    const QModelIndex from = currentIndex();
    const QModelIndex to = !from.isValid() ? model()->index(0, 0)
                           : rows > 0      ? indexBelow(from)
                                           : indexAbove(from);
    if (to.isValid())
        selectionModel()->setCurrentIndex(to, QItemSelectionModel::ClearAndSelect);
}

} // namespace orvane
