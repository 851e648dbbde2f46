// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#include "shell/inspector/VersionListView.h"

#include "appearance/Contrast.h"
#include "appearance/Drawing.h"
#include "shell/shortcuts/KeyRouting.h"

#include <QAbstractListModel>
#include <QKeyEvent>
#include <QPainter>
#include <QStyledItemDelegate>

namespace orvane {

/// The rows as the toolkit's model; the version's line of details stands in `DetailRole`, the kind
/// of the row in `KindRole`.
class VersionListModel final : public QAbstractListModel {
public:
    enum Role { DetailRole = Qt::UserRole, KindRole };

    using QAbstractListModel::QAbstractListModel;

    void setRows(const QList<VersionRow>& rows)
    {
        if (rows.size() == m_rows.size()) {
            m_rows = rows;
            if (!rows.isEmpty())
                emit dataChanged(index(0), index(int(rows.size()) - 1));
            return;
        }
        beginResetModel();
        m_rows = rows;
        endResetModel();
    }
    [[nodiscard]] int rowCount(const QModelIndex& parent) const override
    {
        return parent.isValid() ? 0 : int(m_rows.size());
    }
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override
    {
        const VersionRow& row = m_rows.at(index.row());
        switch (role) {
        case Qt::DisplayRole:
            return row.title;
        case Qt::ToolTipRole:
            return row.difference;
        case Qt::AccessibleTextRole:
            return inWords(index.row());
        case DetailRole:
            return row.detail;
        case KindRole:
            return int(row.kind);
        default:
            return {};
        }
    }
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override
    {
        switch (m_rows.at(index.row()).kind) {
        case VersionRow::Kind::Now:
            return Qt::ItemIsEnabled;
        case VersionRow::Kind::Version:
            return Qt::ItemIsEnabled | Qt::ItemIsSelectable;
        case VersionRow::Kind::Day:
            break;
        }
        return Qt::NoItemFlags;
    }
    [[nodiscard]] int versionAt(int row) const { return m_rows.at(row).version; }
    /// The row of a version, or of the last one when it lies beyond; -1 when there is none.
    [[nodiscard]] int rowOf(int version) const
    {
        int found = -1;
        for (int row = 0; row < m_rows.size(); ++row) {
            if (m_rows.at(row).version >= 0 && m_rows.at(row).version <= version)
                found = row;
        }
        return found;
    }

private:
    /// With the day, which who hears the rows has not before the eyes.
    [[nodiscard]] QString inWords(int at) const
    {
        const VersionRow& row = m_rows.at(at);
        if (row.kind == VersionRow::Kind::Day)
            return row.title;
        QStringList parts{row.title, row.detail};
        if (!row.difference.isEmpty())
            parts.append(row.difference);
        for (int above = at; row.kind == VersionRow::Kind::Version && above >= 0; --above) {
            if (m_rows.at(above).kind == VersionRow::Kind::Day) {
                parts.prepend(m_rows.at(above).title);
                break;
            }
        }
        return parts.join(QStringLiteral(", "));
    }

    QList<VersionRow> m_rows;
};

namespace {

constexpr int inset = 8;
constexpr int dotCentre = 21;
constexpr double dotRadius = 4;
constexpr int textLeft = 36;
constexpr int dayLeft = 16;
/// Above and below what stands under the selected row.
constexpr int actionsAbove = 8;
constexpr int actionsBelow = 6;

class VersionDelegate final : public QStyledItemDelegate {
public:
    VersionDelegate(const Look& look, QObject* parent)
        : QStyledItemDelegate(parent)
        , m_look(look)
    {}

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const override
    {
        if (isDay(index))
            return {100, VersionListView::dayHeight};
        const auto* list = static_cast<const VersionListView*>(option.widget);
        const bool isSelected = list && list->selectionModel()->isSelected(index);
        return {100, VersionListView::rowHeight + (isSelected ? m_below : 0)};
    }

    /// How much room the selected row leaves below it.
    void setRoomBelow(int height) { m_below = height; }

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override
    {
        const SurfaceTokens& t = m_look.tokens().on(Surface::Inspector);
        QRect row = option.rect;
        if (isDay(index)) {
            drawTextLine(*painter, row.adjusted(dayLeft, 9, -16, -3),
                         interfaceFont(TextStyle::SectionHead), t.textSecondary,
                         index.data().toString());
            return;
        }
        row.setHeight(VersionListView::rowHeight);
        const bool selected = option.state.testFlag(QStyle::State_Selected);
        const QRect ground = row.adjusted(inset, 0, -inset, 0);
        const bool hovered = option.state.testFlag(QStyle::State_MouseOver) && index.row() > 0;
        drawRowGround(*painter, ground,
                      {selected, hovered, option.widget && option.widget->hasFocus()}, t);
        drawDot(*painter, {row.left() + dotCentre + 0.5, row.top() + 14.5}, index.row() == 0);
        const int width = row.width() - textLeft - 16;
        drawTextLine(*painter, QRect(row.left() + textLeft, row.top() + 5, width, 18),
                     interfaceFont(TextStyle::BodyMedium), selected ? t.textOnSelectedRow : t.text,
                     index.data().toString());
        drawTextLine(*painter, QRect(row.left() + textLeft, row.top() + 23, width, 15),
                     interfaceFont(TextStyle::Label),
                     selected ? t.textSecondaryOnSelectedRow : t.textSecondary,
                     index.data(VersionListModel::DetailRole).toString());
    }

private:
    [[nodiscard]] static bool isDay(const QModelIndex& index)
    {
        return index.data(VersionListModel::KindRole).toInt() == int(VersionRow::Kind::Day);
    }

    void drawDot(QPainter& painter, QPointF centre, bool isNow) const
    {
        const SurfaceTokens& t = m_look.tokens().on(Surface::Inspector);
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(isNow ? QPen(Qt::NoPen) : QPen(t.textSecondary, 2));
        painter.setBrush(isNow ? QBrush(t.accent) : QBrush(Qt::NoBrush));
        painter.drawEllipse(centre, isNow ? dotRadius + 0.5 : dotRadius - 0.5,
                            isNow ? dotRadius + 0.5 : dotRadius - 0.5);
        painter.restore();
    }

    const Look& m_look;
    int m_below = 0;
};

} // namespace

VersionListView::VersionListView(Look& look, QWidget* parent)
    : QListView(parent)
    , m_rows(new VersionListModel(this))
{
    setModel(m_rows);
    setItemDelegate(new VersionDelegate(look, this));
    setFrameShape(QFrame::NoFrame);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setMouseTracking(true);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setAccessibleName(tr("Version History"));
    setAttribute(Qt::WA_Hover);
    declareKeyFocus(this, KeyFocus::Control);
    const auto applyLook = [this, &look] {
        setPalette(look.palette(Surface::Inspector));
    };
    applyLook();
    connect(&look, &Look::changed, this, applyLook);
}

void VersionListView::setRows(const QList<VersionRow>& rows)
{
    m_rows->setRows(rows);
    scheduleDelayedItemsLayout();
}

void VersionListView::setActions(QWidget* actions)
{
    m_actions = actions;
    actions->setParent(viewport());
    actions->hide();
    setTabOrder(this, actions);
}

int VersionListView::contentHeight() const
{
    int height = 0;
    for (int row = 0; row < m_rows->rowCount({}); ++row)
        height += sizeHintForIndex(m_rows->index(row)).height();
    return height;
}

int VersionListView::selectedVersion() const
{
    const QModelIndexList selected = selectionModel()->selectedIndexes();
    return selected.isEmpty() ? -1 : m_rows->versionAt(selected.first().row());
}

void VersionListView::selectVersion(int version)
{
    const int row = m_rows->rowOf(version);
    if (row < 0)
        return selectionModel()->clear();
    selectionModel()->setCurrentIndex(m_rows->index(row), QItemSelectionModel::ClearAndSelect);
    scrollTo(m_rows->index(row));
}

void VersionListView::selectionChanged(const QItemSelection& selected,
                                       const QItemSelection& deselected)
{
    QListView::selectionChanged(selected, deselected);
    if (m_actions)
        static_cast<VersionDelegate*>(itemDelegate())
            ->setRoomBelow(actionsAbove + actionsHeight() + actionsBelow);
    doItemsLayout();
    emit selectionMoved();
}

void VersionListView::updateGeometries()
{
    QListView::updateGeometries();
    placeActions();
}

void VersionListView::placeActions()
{
    if (!m_actions)
        return;
    const QModelIndexList selected = selectionModel()->selectedIndexes();
    m_actions->setVisible(!selected.isEmpty());
    if (selected.isEmpty())
        return;
    const QRect row = visualRect(selected.first());
    m_actions->setGeometry(row.left(), row.top() + rowHeight + actionsAbove, row.width(),
                           actionsHeight());
}

int VersionListView::actionsHeight() const
{
    const int wrapped = m_actions->heightForWidth(viewport()->width());
    return wrapped > 0 ? wrapped : m_actions->sizeHint().height();
}

void VersionListView::focusInEvent(QFocusEvent* event)
{
    QListView::focusInEvent(event);
    const bool byKeyboard =
        event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason;
    if (byKeyboard && selectedVersion() < 0)
        selectVersion(0);
}

void VersionListView::keyPressEvent(QKeyEvent* event)
{
    const bool hasVersion = selectedVersion() >= 0;
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        if (hasVersion)
            emit versionActivated();
        return;
    case Qt::Key_Delete:
    case Qt::Key_Backspace:
        if (hasVersion)
            emit deletionRequested();
        return;
    case Qt::Key_Escape:
        selectVersion(-1);
        return;
    case Qt::Key_Home:
        return selectVersion(0);
    case Qt::Key_Up:
        if (selectedVersion() <= 0)
            return;
        [[fallthrough]];
    default:
        QListView::keyPressEvent(event);
    }
}

void VersionListView::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (indexAt(event->position().toPoint()).row() > 0)
        emit versionActivated();
}

} // namespace orvane
