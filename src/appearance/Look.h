// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include "appearance/Icons.h"
#include "appearance/Tokens.h"
#include "appearance/Typography.h"

#include <QIcon>
#include <QObject>
#include <QPalette>

class QLabel;
class QWidget;

namespace orvane {

/// What a widget stands on; it decides the inks.
enum class Surface { Window, Pane, Page, Card, Band, Rail };

/// The look that every widget of the program wears: one set of tokens, and what is made from it.
/// Lives as long as the program. Widgets read it while painting and hold no colour of their own,
/// so that other tokens restyle every open window at once.
class Look : public QObject {
    Q_OBJECT
public:
    explicit Look(const Tokens& tokens, QObject* parent = nullptr);

    [[nodiscard]] const Tokens& tokens() const { return m_tokens; }
    /// Tells `changed`; does nothing when they are equal to those in force.
    void setTokens(const Tokens& tokens);

    /// The ground of a surface, and the palette of what stands on it: `WindowText` and `Text` are
    /// its ink, `PlaceholderText` its secondary ink, `Highlight` the accent.
    [[nodiscard]] QColor ground(Surface surface) const;
    [[nodiscard]] QPalette palette(Surface surface) const;
    [[nodiscard]] InkPolarity polarity(Surface surface) const;

    /// The symbol in a token's colour, following the tokens; disabled it fades.
    [[nodiscard]] QIcon icon(Symbol symbol, QColor Tokens::*ink = &Tokens::icon) const;
    /// Draws the symbol into the middle of `rect`, `size` logical pixels square.
    static void drawSymbol(QPainter& painter, const QRectF& rect, Symbol symbol, double size,
                           const QColor& color);

    /// Makes the application wear this look: style, palette and fonts. The look must outlive it.
    void wear();

signals:
    void changed();

private:
    Tokens m_tokens;
};

/// Which ink of its surface a label uses.
enum class LabelInk { Primary, Secondary };

/// A label in one of the text styles that follows the palette of the surface it stands on.
QLabel* makeLabel(const QString& text, TextStyle style, LabelInk ink = LabelInk::Primary,
                  QWidget* parent = nullptr);

} // namespace orvane
