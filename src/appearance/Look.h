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

    /// The ground of a surface, and the palette of what stands on it, see `surfacePalette`.
    [[nodiscard]] QColor ground(Surface surface) const;
    [[nodiscard]] QPalette palette(Surface surface) const;
    [[nodiscard]] InkPolarity polarity(Surface surface) const;

    /// The symbol in an ink of a surface, or in a colour of the whole look, following the tokens;
    /// disabled it fades.
    [[nodiscard]] QIcon icon(Symbol symbol, Surface surface = Surface::Toolbar,
                             QColor SurfaceTokens::*ink = &SurfaceTokens::icon) const;
    [[nodiscard]] QIcon icon(Symbol symbol, QColor Tokens::*ink) const;

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
