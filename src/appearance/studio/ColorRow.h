// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/studio/StudioColors.h"

#include <QAbstractButton>

#include <optional>

namespace orvane {

class Look;
struct InkContrast;

/// One colour of the look in the studio: its name, its contrast where it is an ink, a swatch and
/// its hex text. Pressing it asks for the colour to be edited.
class ColorRow : public QAbstractButton {
    Q_OBJECT
public:
    ColorRow(const StudioColor& color, Look& look, QWidget* parent = nullptr);

    [[nodiscard]] const StudioColor& color() const { return m_color; }
    /// Shows the colour as the values have it, and as the look's tokens show it.
    void showValues(const AppearanceValues& values, const std::optional<InkContrast>& contrast);
    /// Where the swatch lies, for a popover to open at.
    [[nodiscard]] QRect swatchRect() const;
    [[nodiscard]] const QString& hexText() const { return m_hex; }
    [[nodiscard]] const QString& contrastText() const { return m_contrast; }

    [[nodiscard]] QSize sizeHint() const override { return {320, 40}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const StudioColor& m_color;
    Look& m_look;
    QColor m_shown;
    QString m_hex;
    QString m_contrast;
    bool m_enough = true;
};

} // namespace orvane
