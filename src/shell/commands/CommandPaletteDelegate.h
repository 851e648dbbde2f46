// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/Look.h"
#include "shell/commands/CommandPaletteModel.h"

#include <QStyledItemDelegate>

namespace orvane {

/// Draws a line of the palette: picture, title with the found letters in the accent, place, and
/// the key at the right; or the head of a section.
class CommandPaletteDelegate : public QStyledItemDelegate {
    Q_OBJECT
public:
    explicit CommandPaletteDelegate(Look& look, QObject* parent = nullptr);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const override;

private:
    void paintHead(QPainter& painter, const QRect& rect, const QString& title) const;
    [[nodiscard]] int paintTitle(QPainter& painter, const QRect& rect, const PaletteLine& line,
                                 const QColor& ink) const;

    Look& m_look;
};

} // namespace orvane
