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

/// The rows as the toolkit's model; the version's line of details stands in `DetailRole`.
class VersionListModel final : public QAbstractListModel {
public:
    enum Role { DetailRole = Qt::UserRole };

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
        const VersionRow row = m_rows.value(index.row());
        if (role == Qt::DisplayRole)
            return row.title;
        if (role == DetailRole)
            return row.detail;
        if (role == Qt::AccessibleTextRole)
            return QString(row.title + QStringLiteral(", ") + row.detail);
        return {};
    }
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override
    {
        return index.row() == 0 ? Qt::ItemIsEnabled : Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    }

private:
    QList<VersionRow> m_rows;
};

namespace {

constexpr int inset = 8;
constexpr int dotCentre = 21;
constexpr double dotRadius = 4;
constexpr int textLeft = 36;

class VersionDelegate final : public QStyledItemDelegate {
public:
    VersionDelegate(const Look& look, QObject* parent)
        : QStyledItemDelegate(parent)
        , m_look(look)
    {}

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const override
    {
        return {100, VersionListView::rowHeight};
    }

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override
    {
        const SurfaceTokens& t = m_look.tokens().on(Surface::Inspector);
        const QRect row = option.rect;
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
    setUniformItemSizes(true);
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
}

int VersionListView::selectedVersion() const
{
    const QModelIndexList selected = selectionModel()->selectedIndexes();
    return selected.isEmpty() ? -1 : selected.first().row() - 1;
}

void VersionListView::selectVersion(int version)
{
    const int row = qMin(version + 1, m_rows->rowCount({}) - 1);
    if (version < 0 || row < 1)
        return selectionModel()->clear();
    selectionModel()->setCurrentIndex(m_rows->index(row), QItemSelectionModel::ClearAndSelect);
    scrollTo(m_rows->index(row));
}

void VersionListView::selectionChanged(const QItemSelection& selected,
                                       const QItemSelection& deselected)
{
    QListView::selectionChanged(selected, deselected);
    emit selectionMoved();
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
