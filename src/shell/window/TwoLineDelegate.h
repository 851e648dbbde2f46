// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/Look.h"

#include <QStyledItemDelegate>

namespace orvane {

/// Draws a row of a short list on a card: a symbol, a title, and a quieter line below it.
class TwoLineDelegate : public QStyledItemDelegate {
    Q_OBJECT
public:
    /// The quieter line.
    static constexpr int LineRole = Qt::UserRole + 40;
    static constexpr int rowHeight = 48;

    TwoLineDelegate(Symbol symbol, Look& look, QObject* parent = nullptr);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option,
                                 const QModelIndex& index) const override;

private:
    Symbol m_symbol;
    Look& m_look;
};

} // namespace orvane
