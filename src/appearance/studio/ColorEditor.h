// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/themes/AppearanceValues.h"

#include <QFrame>

#include <optional>

class QCheckBox;
class QLabel;
class QLineEdit;

namespace orvane {

class ContrastChip;
class GradientSlider;
class Look;
class SaturationField;

/// A popover that edits one colour by field, sliders and hex text, and where the part has one its
/// glass. Every step is told at once, so that the look follows while one drags. Return or a click
/// outside keeps the colour, Escape brings back the one it began with.
class ColorEditor : public QFrame {
    Q_OBJECT
public:
    struct Subject {
        QString name;
        AppearanceColor color;
        std::optional<AppearanceGlass> glass;
        /// Whether the colour may be left to the program; then it has no alpha of its own either.
        bool canBeAutomatic = true;
    };

    ColorEditor(const Subject& subject, Look& look, QWidget* parent);

    [[nodiscard]] const AppearanceColor& color() const { return m_color; }
    [[nodiscard]] const std::optional<AppearanceGlass>& glass() const { return m_glass; }

    /// Shows a contrast, or none.
    void setContrast(double ratio, double minimum, bool madeReadable);
    void hideContrast();

    /// Opens beside `anchor`, on its screen as a whole.
    void popUpAt(const QRect& globalAnchor);

signals:
    void edited();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void build();
    QWidget* makeSliderRow(const QString& letter, GradientSlider* slider, QLabel*& figure);
    void connectParts();
    void chooseHsv();
    void chooseChannels();
    void chooseHex();
    void choose(const QColor& color);
    void showColor();
    void revert();

    Look& m_look;
    Subject m_start;
    AppearanceColor m_color;
    std::optional<AppearanceGlass> m_glass;
    int m_hue = 0;
    int m_saturation = 0;
    int m_brightness = 0;
    bool m_showing = false;

    QCheckBox* m_automatic = nullptr;
    SaturationField* m_field = nullptr;
    GradientSlider* m_hueSlider = nullptr;
    GradientSlider* m_channels[3] = {};
    QLabel* m_channelFigures[3] = {};
    GradientSlider* m_alpha = nullptr;
    QLabel* m_alphaFigure = nullptr;
    QCheckBox* m_glassOn = nullptr;
    GradientSlider* m_strength = nullptr;
    QLabel* m_strengthFigure = nullptr;
    QLineEdit* m_hex = nullptr;
    ContrastChip* m_chip = nullptr;
};

} // namespace orvane
