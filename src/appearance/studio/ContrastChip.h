// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/Look.h"

#include <QWidget>

namespace orvane {

/// "16.9 : 1", and behind a figure that is too low what is done about it.
[[nodiscard]] QString contrastText(double ratio, double minimum, bool madeReadable);

/// How wide and high the chip of a text is drawn.
[[nodiscard]] QSize contrastChipSize(const QString& text);

/// Draws the chip at `rect`: green where the contrast is high enough, red where it is not.
void drawContrastChip(QPainter& painter, const QRectF& rect, const QString& text, bool enough,
                      const QColor& ground);

/// The chip as a widget of its own.
class ContrastChip : public QWidget {
    Q_OBJECT
public:
    ContrastChip(Look& look, Surface surface, QWidget* parent = nullptr);

    void setContrast(double ratio, double minimum, bool madeReadable);
    [[nodiscard]] const QString& text() const { return m_text; }
    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Look& m_look;
    Surface m_surface;
    QString m_text;
    bool m_enough = true;
};

} // namespace orvane
