// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/Look.h"

#include <QToolButton>

#include <optional>

namespace orvane {

/// A button of the formatting bar that opens something below it: the control shows that with a
/// small arrow, and the Down key opens it, too. Its default action says what it is.
class BarMenuButton : public QToolButton {
    Q_OBJECT
public:
    /// What the button shows beside its arrow.
    enum class Shape {
        symbol, ///< a picture
        arrow,  ///< the arrow alone, as the second half of the button before it
        choice, ///< a text in a frame
        color,  ///< a picture with a strip of colour below
    };
    BarMenuButton(Shape shape, Look& look, QWidget* parent);

    void setSymbol(Symbol symbol);
    /// What is chosen now, as a frame shows it.
    void setChoice(const QString& text);
    /// The strip; none for an empty one.
    void setColor(const std::optional<QColor>& color);
    /// The width of a frame.
    void setChoiceWidth(int width) { setFixedWidth(width); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void paintSymbol(QPainter& painter, const QColor& ink);
    void paintChoice(QPainter& painter, const QColor& ink);
    void paintColor(QPainter& painter, const QColor& ink);

    Look& m_look;
    Shape m_shape;
    Symbol m_symbol = Symbol::More;
    QString m_choice;
    std::optional<QColor> m_color;
};

/// A thin line between groups of the bar.
class BarSeparator final : public QWidget {
public:
    BarSeparator(Look& look, QWidget* parent);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Look& m_look;
};

} // namespace orvane
