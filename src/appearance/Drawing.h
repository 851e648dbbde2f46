// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
// What widgets, delegates and the style draw alike. All leave the painter as they found it, but for
// pen and font where they draw text.
#pragma once

#include "appearance/Icons.h"
#include "appearance/Tokens.h"

#include <QColor>
#include <QFont>
#include <QPixmap>
#include <QRegion>
#include <QString>

class QPainter;
class QWidget;

namespace orvane {

/// A drawing of the icon theme, such as "actions" and "bookmarks", in one colour, `pixels` device
/// pixels square, transparent around it; rendered ones are kept. Empty when it is missing.
[[nodiscard]] QPixmap themeDrawingPixmap(const QString& category, const QString& name, int pixels,
                                         const QColor& color);

/// Device pixels for each logical one where the painter's strokes end up. A widget that is painted
/// into a picture has those of the picture.
[[nodiscard]] double deviceRatio(const QPainter& painter);

/// Draws a picture into the middle of `rect`, `size` logical pixels square, on whole device
/// pixels. It must have been made for the painter's device.
void drawCentred(QPainter& painter, const QRectF& rect, QPixmap picture, double size);

/// Draws the symbol into the middle of `rect`, `size` logical pixels square.
void drawSymbol(QPainter& painter, const QRectF& rect, Symbol symbol, double size,
                const QColor& color);

/// A rectangle with round corners, its 1 px edge on the pixel grid; invalid colours are left out.
void drawPanel(QPainter& painter, const QRectF& rect, double radius, const QColor& fill,
               const QColor& edge = {});

/// The corners of popups.
inline constexpr double popupRadius = 10;
/// Every pixel that a panel of that size and radius covers, if only in part.
[[nodiscard]] QRegion panelRegion(const QSize& size, double radius);
/// Gives a popup that draws itself as a panel its corners, by `QStyle::SH_Menu_Mask`; whenever it
/// has another size.
void cutCorners(QWidget& popup);

/// The dashed 1 px edge of a place where something can be put.
void drawDashedEdge(QPainter& painter, const QRectF& rect, double radius, const QColor& color);

/// A line of 1 px inside `rect` along one edge of it.
void drawLineAt(Qt::Edge edge, QPainter& painter, const QRect& rect, const QColor& color);

/// The soft shadow below a card that floats over the window.
void drawCardShadow(QPainter& painter, const QRectF& card, double radius);

/// The 2 px ring of the focused control, inside `rect`.
void drawFocusRing(QPainter& painter, const QRectF& rect, double radius, const QColor& color);

/// Whether a control shows that it has the keyboard: after a key was used to get there.
[[nodiscard]] bool showsKeyboardFocus(const QWidget& widget);

/// What a row of a list stands on.
struct RowState {
    bool isSelected = false;
    bool isHovered = false;
    bool hasFocus = false; ///< shown where it is selected
};
void drawRowGround(QPainter& painter, const QRect& row, const RowState& state,
                   const SurfaceTokens& surface);

/// One line of text from the left, in the middle of the height, cut where it is too long.
void drawTextLine(QPainter& painter, const QRect& rect, const QFont& font, const QColor& ink,
                  const QString& text);

/// A key as it stands on a keyboard, at the right of `room`. Where its left edge is.
int drawKeyChip(QPainter& painter, const QRect& room, const QString& key, const QColor& ink,
                const QColor& edge);
/// How much of the room's width that takes.
[[nodiscard]] int keyChipWidth(const QString& key);

} // namespace orvane
