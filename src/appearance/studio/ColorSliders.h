// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QAbstractSlider>
#include <QGradientStops>

namespace orvane {

class Look;

/// A slider whose track shows the colours that it chooses from. Arrow keys move it, Page Up and
/// Page Down by larger steps, Home and End to its ends.
class GradientSlider : public QAbstractSlider {
    Q_OBJECT
public:
    GradientSlider(Look& look, int maximum, const QString& name, QWidget* parent = nullptr);

    /// The colours of the track from its left to its right end; translucent ones show a pattern
    /// of squares beneath.
    void setStops(const QGradientStops& stops);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void sliderChange(SliderChange change) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    [[nodiscard]] QRectF track() const;
    void moveTo(double x);

    Look& m_look;
    QGradientStops m_stops;
};

/// Saturation from left to right and brightness from bottom to top of one hue, each 0 to 255.
class SaturationField : public QWidget {
    Q_OBJECT
public:
    explicit SaturationField(Look& look, QWidget* parent = nullptr);

    /// Hue from 0 to 359.
    void setColor(int hue, int saturation, int brightness);
    [[nodiscard]] int saturation() const { return m_saturation; }
    [[nodiscard]] int brightness() const { return m_brightness; }

    [[nodiscard]] QSize sizeHint() const override { return {256, 128}; }

signals:
    void chosen(int saturation, int brightness);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void choose(int saturation, int brightness);
    void moveTo(QPointF position);

    Look& m_look;
    int m_hue = 0;
    int m_saturation = 0;
    int m_brightness = 0;
};

/// Squares that show through translucent colours.
void drawTransparencyPattern(QPainter& painter, const QRectF& rect);

} // namespace orvane
