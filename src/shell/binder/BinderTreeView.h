// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/Look.h"
#include "core/binder/BinderActions.h"

#include <QBasicTimer>
#include <QTreeView>

#include <functional>

namespace orvane {

/// The Binder's tree. Rows span the whole width: a round ground with an accent bar for the
/// selected one, chevrons in line with the text. Rows are dragged within it: a line shows where
/// the dragged one would go, a lit folder what it would go into. Files from elsewhere are refused
/// by the cursor. While the rows leave room, the Trash stands at the foot of the pane.
class BinderTreeView : public QTreeView {
    Q_OBJECT
public:
    static constexpr int folderHeight = 48;
    static constexpr int noteHeight = 40;
    static constexpr int indent = 16;

    explicit BinderTreeView(Look& look, QWidget* parent = nullptr);

    /// Opens or closes the current folder, or tells `noteActivated`.
    void activateCurrent();
    void expandCurrent();
    /// Closes the current folder, or goes to the folder that the current row lies in.
    void collapseCurrent();
    void stepCurrent(int rows);
    /// Edits the title of the current row in its place.
    void renameCurrent();

    /// Says where a dragged row goes when it is dropped on a row (absent: below all of them) at a
    /// height in that row; nothing when it can't go there.
    using DropResolver = std::function<std::optional<BinderMove>(
        const BinderRowID& dragged, const std::optional<BinderRowID>& target, double y)>;
    void setDropResolver(DropResolver resolver) { m_resolveDrop = std::move(resolver); }
    /// Room left free above the Trash's row, in pixels.
    [[nodiscard]] int gapAboveTrash() const { return m_gapAboveTrash; }
    [[nodiscard]] QRect visualRect(const QModelIndex& index) const override;
    [[nodiscard]] QModelIndex indexAt(const QPoint& point) const override;

    /// The colour of a tag's dot.
    void setTagColor(std::function<QColor(const QString&)> color) { m_tagColor = std::move(color); }

signals:
    /// The person goes on to the text of the current note.
    void noteActivated();
    void dropped(const orvane::BinderMove& move);
    /// An arrow was pressed with Alt: the selected rows go that way.
    void moveRequested(Qt::Key arrow);
    /// Delete was pressed on the current row.
    void removalRequested();
    /// `row` is absent below the last row.
    void menuRequested(const std::optional<orvane::BinderRowID>& row, const QPoint& globalPosition);

protected:
    bool event(QEvent* event) override;
    void drawRow(QPainter* painter, const QStyleOptionViewItem& options,
                 const QModelIndex& index) const override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void startDrag(Qt::DropActions actions) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void updateGeometries() override;
    void initViewItemOption(QStyleOptionViewItem* option) const override;

private:
    /// What the row under a drag would do, in the viewport's coordinates.
    struct DropGuide {
        BinderMove move;
        QRect line;
        QRect folder;
    };

    [[nodiscard]] std::optional<DropGuide> guideAt(const QPoint& position,
                                                   const QMimeData& data) const;
    void showGuide(const std::optional<DropGuide>& guide);
    [[nodiscard]] QModelIndex trashIndex() const;
    [[nodiscard]] QModelIndex lastRow() const;
    [[nodiscard]] BinderRowID rowIdOf(const QModelIndex& index) const;
    void drawTrailing(QPainter& painter, QRect& row, const QModelIndex& index) const;
    void applyLook();
    [[nodiscard]] QRect chevronRect(const QRect& row, const QModelIndex& index) const;
    void drawFolder(QPainter& painter, const QRect& row, const QModelIndex& index,
                    bool selected) const;
    void drawNote(QPainter& painter, const QRect& row, const QModelIndex& index,
                  bool selected) const;

    Look& m_look;
    DropResolver m_resolveDrop;
    std::function<QColor(const QString&)> m_tagColor;
    std::optional<DropGuide> m_guide;
    int m_gapAboveTrash = 0;
    /// The height of each row is asked for, which takes nothing of fonts and colours.
    bool m_sumsHeights = false;
    /// A folder that a drag rests on opens after a while.
    QBasicTimer m_openTimer;
    QPersistentModelIndex m_restingOn;
};

} // namespace orvane
