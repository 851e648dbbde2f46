// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/Look.h"

#include <QTreeView>

namespace orvane {

/// The Binder's tree. Rows span the whole width: a round ground with an accent bar for the
/// selected one, chevrons in line with the text.
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

signals:
    /// The person goes on to the text of the current note.
    void noteActivated();

protected:
    void drawRow(QPainter* painter, const QStyleOptionViewItem& options,
                 const QModelIndex& index) const override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void applyLook();
    [[nodiscard]] QRect chevronRect(const QRect& row, const QModelIndex& index) const;
    void drawGround(QPainter& painter, const QRect& row, bool selected, bool hovered) const;
    void drawFolder(QPainter& painter, const QRect& row, const QModelIndex& index,
                    bool selected) const;
    void drawNote(QPainter& painter, const QRect& row, const QModelIndex& index,
                  bool selected) const;

    Look& m_look;
};

} // namespace orvane
