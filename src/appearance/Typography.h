// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QFont>

class QWidget;

namespace orvane {

/// The kinds of text in the interface. Sizes are logical pixels.
enum class TextStyle {
    Body,        ///< 13
    BodyMedium,  ///< 13 medium: titles in lists, buttons
    BodyStrong,  ///< 13 semi-bold: titles of cards and points
    Label,       ///< 11
    SectionHead, ///< 11 medium, tracked by 0.4 px
    WindowTitle, ///< 15 medium
    SheetTitle,  ///< 24 bold
    SheetText,   ///< 14
    ScreenTitle, ///< 28 bold
};

/// Whether text is darker than its ground or lighter. The rasterizer thickens the stems of
/// PostScript outlines, which suits dark text; light text on a dark ground comes out a step too
/// heavy, so there the fonts are a step lighter for the same look.
enum class InkPolarity { DarkOnLight, LightOnDark };

/// The polarity of most of the interface.
void setInkPolarity(InkPolarity polarity);
[[nodiscard]] InkPolarity inkPolarity();

/// Inter where it is installed, else the desktop's own family; titles of 20 px and more in its
/// display cut.
[[nodiscard]] QFont interfaceFont(TextStyle style);
/// The same for a surface of its own polarity, such as a rail or a button in the accent colour.
[[nodiscard]] QFont interfaceFont(TextStyle style, InkPolarity polarity);

/// The text in one line, cut with an ellipsis where it is wider than `width` logical pixels.
/// Measured by its glyphs alone, unless kerning may decide: shaping is most of what drawing a text
/// costs, and happens once more when it is drawn.
[[nodiscard]] QString fitted(const QString& text, const QFont& font, int width);

/// Gives a widget the interface font, and again whenever the polarity changes.
void setTextStyle(QWidget* widget, TextStyle style);

/// A font of the editor at `pixels`. "Georgia" and "Menlo" fall to what this system has in their
/// place, see `installFontSubstitutions`.
[[nodiscard]] QFont editorFont(const QString& family, double pixels,
                               QFont::Weight weight = QFont::Normal);

/// Gives the families that notes name but this machine may lack something that looks like them:
/// "Georgia" falls to Charis SIL, "Menlo" to JetBrains Mono, "Times" to a font of its widths. Once,
/// at the start of the program.
void installFontSubstitutions();

} // namespace orvane
