// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/Look.h"

#include <QAbstractButton>

namespace orvane {

/// One tag of a note or folder: its dot and its name. A click or Space asks for its menu, Delete
/// or Backspace for its removal, the arrow keys go to its neighbours.
class TagChip : public QAbstractButton {
    Q_OBJECT
public:
    static constexpr int chipHeight = 24;

    TagChip(const QString& tag, const QColor& color, Look& look, QWidget* parent = nullptr);

    [[nodiscard]] const QString& tag() const { return m_tag; }
    void setColor(const QColor& color);
    [[nodiscard]] QSize sizeHint() const override;

signals:
    void removalRequested(const QString& tag);
    void menuRequested(const QString& tag, QPoint globalPosition);
    /// -1 to the one before, 1 to the one after.
    void stepRequested(int step);

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    QString m_tag;
    QColor m_color;
    Look& m_look;
};

/// A tag's colour as the ink of a dot on a ground: as chosen where it can be seen there, else moved
/// toward black or white.
[[nodiscard]] QColor tagDotInk(const QColor& color, const QColor& ground);

} // namespace orvane
