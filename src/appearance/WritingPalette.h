// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QColor>
#include <QList>
#include <QString>

namespace orvane {

/// A colour that a person can give to text, with what it is called.
struct WritingColor {
    QString name;
    QColor color;
};

/// How many colours stand in a row of either palette.
inline constexpr int writingPaletteColumns = 8;

/// Colours for text in rows: greys, then one hue a column in deep, clear and light.
[[nodiscard]] QList<WritingColor> textPalette();

/// Colours for highlights, opaque; one hue each.
[[nodiscard]] QList<WritingColor> highlightPalette();

} // namespace orvane
