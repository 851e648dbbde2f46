// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/Look.h"

#include <QStyledItemDelegate>

namespace orvane {

/// Draws a project's tile: its icon on a tinted ground, its title and what is said of it.
class ProjectTileDelegate : public QStyledItemDelegate {
    Q_OBJECT
public:
    /// Between two tiles, to the right and below.
    static constexpr int gap = 20;
    static constexpr int tileHeight = 196;

    explicit ProjectTileDelegate(const Look& look, QObject* parent = nullptr);

    void setTileWidth(int width) { m_tileWidth = width; }

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const override;

private:
    void paintProject(QPainter& painter, const QRect& tile, const QStyleOptionViewItem& option,
                      const QModelIndex& index) const;
    void paintNewProject(QPainter& painter, const QRect& tile, const QStyleOptionViewItem& option,
                         const QString& text) const;

    const Look& m_look;
    int m_tileWidth = 312;
};

} // namespace orvane
