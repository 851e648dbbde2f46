// SPDX-License-Identifier: LicenseRef-OrvaneWorkspace
#pragma once

#include <QColor>
#include <QPixmap>
#include <QString>

class QPainter;

namespace orvane {

/// A drawing of the icon theme, such as "actions" and "bookmarks", in one colour, `pixels` device
/// pixels square, transparent around it; rendered ones are kept. Empty when it is missing.
[[nodiscard]] QPixmap themeDrawingPixmap(const QString& category, const QString& name, int pixels,
                                         const QColor& color);

/// Device pixels for each logical one where the painter's strokes end up. A widget that is painted
/// into a picture has those of the picture.
[[nodiscard]] double deviceRatio(const QPainter& painter);

} // namespace orvane
