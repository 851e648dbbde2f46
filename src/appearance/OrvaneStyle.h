// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/Tokens.h"

#include <QProxyStyle>

class QAbstractButton;
class QComboBox;
class QStyleOptionButton;
class QStyleOptionComboBox;
class QStyleOptionMenuItem;
class QStyleOptionSlider;
class QStyleOptionSpinBox;

namespace orvane {

/// What a push button means. A default button is `Accent` unless told otherwise; `DangerText` is a
/// plain button whose words warn.
enum class ButtonTone { Plain, Accent, Danger, DangerText };

/// Lets a combo box with many entries open a list of limited height below it, with a scroll bar, in
/// place of a menu over it. Before its first opening.
void setLongList(QComboBox* combo);

/// Gives a button its tone and repaints it.
void setButtonTone(QAbstractButton* button, ButtonTone tone);

/// How much larger than its face a button is on each side that keeps its focus ring around the
/// face. Such a button shows the ring whenever it has the focus.
inline constexpr int ringRoom = 4;
void setRingAroundFace(QAbstractButton* button);

/// The style of every stock widget: drawn from tokens, over Fusion's behaviour and
/// measures. Tool buttons, fields and scroll bars take their inks from the palette of the surface
/// that they stand on.
class OrvaneStyle final : public QProxyStyle {
    Q_OBJECT
public:
    /// The tokens outlive it; it draws by what they are at the moment of drawing.
    explicit OrvaneStyle(const Tokens& tokens);

    using QProxyStyle::polish;
    void polish(QWidget* widget) override;
    void polish(QPalette& palette) override;
    /// Popups take the palette of cards each time they open.
    bool eventFilter(QObject* watched, QEvent* event) override;
    [[nodiscard]] QPalette standardPalette() const override;

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                            QPainter* painter, const QWidget* widget) const override;
    [[nodiscard]] int pixelMetric(PixelMetric metric, const QStyleOption* option,
                                  const QWidget* widget) const override;
    [[nodiscard]] int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                                QStyleHintReturn* returnData) const override;
    [[nodiscard]] QSize sizeFromContents(ContentsType type, const QStyleOption* option,
                                         const QSize& size, const QWidget* widget) const override;
    [[nodiscard]] QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option,
                                       SubControl part, const QWidget* widget) const override;
    [[nodiscard]] QRect subElementRect(SubElement element, const QStyleOption* option,
                                       const QWidget* widget) const override;

private:
    void drawButtonFace(const QStyleOptionButton& option, QPainter& painter,
                        const QWidget* widget) const;
    void drawButtonLabel(const QStyleOptionButton& option, QPainter& painter,
                         const QWidget* widget) const;
    void drawToolButtonFace(const QStyleOption& option, QPainter& painter) const;
    void drawFieldFrame(const QStyleOption& option, QPainter& painter) const;
    void drawCheckBoxMark(const QStyleOption& option, QPainter& painter) const;
    static void drawValueFace(const QStyleOption& option, QPainter& painter);
    void drawComboBox(const QStyleOptionComboBox& option, QPainter& painter) const;
    void drawSpinBox(const QStyleOptionSpinBox& option, QPainter& painter,
                     const QWidget* widget) const;
    static void drawCheckMark(QPainter& painter, const QRectF& rect, const QColor& color);
    void drawMenuItem(const QStyleOptionMenuItem& option, QPainter& painter) const;
    void drawScrollBar(const QStyleOptionSlider& option, QPainter& painter,
                       const QWidget* widget) const;
    [[nodiscard]] static QRect spinBoxPart(const QRect& rect, SubControl part);
    [[nodiscard]] QSize menuItemSize(const QStyleOptionMenuItem& option) const;

    const Tokens& m_tokens;
};

} // namespace orvane
